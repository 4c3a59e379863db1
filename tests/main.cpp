// The entry of every doctest program: headless screen, virtual clock, so that no test needs a display or
// time.
#define DOCTEST_CONFIG_IMPLEMENT
#include <doctest/doctest.h>
#include <lampblack/host.h>

int main(int argc, char** argv)
{
    lampblack::host::Settings settings;
    settings.screen = lampblack::host::Screen::Headless;
    settings.clock = lampblack::host::Clock::Virtual;
    if (!lampblack::host::Configure(settings))
        return 2;
    return doctest::Context(argc, argv).run();
}
