// The entry of every doctest program: headless screen, virtual clock and a home of its own, so that no test
// needs a display or time, or touches the files of whoever runs it.
#define DOCTEST_CONFIG_IMPLEMENT
#include <doctest/doctest.h>
#include <lampblack/host.h>

#include "ScratchHome.h"

int main(int argc, char** argv)
{
    lampblack::host::Settings settings;
    settings.screen = lampblack::host::Screen::Headless;
    settings.clock = lampblack::host::Clock::Virtual;
    settings.home = gHome.Path();
    if (!lampblack::host::Configure(settings))
        return 2;
    return doctest::Context(argc, argv).run();
}
