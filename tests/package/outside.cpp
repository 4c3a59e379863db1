// Reads its own resource and shows a window headless: what an installed package must allow.
#include <lampblack/host.h>
#include <lampblack/lampblack.h>

static pascal void Tick(EventLoopTimerRef, void* inCount) // as sources of that time write it
{
    if (inCount != nil)
        ++*static_cast<int*>(inCount);
}

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
    int ticks = 0;
    InstallEventLoopTimer(GetMainEventLoop(), 0.01, 0, NewEventLoopTimerUPP(Tick), &ticks, nil);
    lampblack::host::RunFor(0.1);
    return GetApplicationResFile() > 0 && IsWindowVisible(window.fWindow) && ticks == 1 ? 0 : 1;
}
