// Reads its own resource and shows a window headless: what an installed package must allow.
#include <lampblack/host.h>
#include <lampblack/lampblack.h>

int main()
{
    lampblack::host::Settings settings;
    settings.screen = lampblack::host::Screen::Headless;
    settings.clock = lampblack::host::Clock::Virtual;
    lampblack::host::Configure(settings);
    InitializeMacOSHelpers();
    CWindow window(128, kDocumentWindowClass);
    window.StandardSetup();
    window.Show();
    lampblack::host::RunFor(0.1);
    return GetApplicationResFile() > 0 && IsWindowVisible(window.fWindow) ? 0 : 1;
}
