// Reads its own resource and shows a window headless: what an installed package must allow.
#include <lampblack/host.h>
#include <lampblack/lampblack.h>

static pascal void Tick(EventLoopTimerRef, void* inCount) // as sources of that time write it
{
    if (inCount != nil)
        ++*static_cast<int*>(inCount);
}

#ifdef __clang__
static ConstStr255Param kTitle = "\pOutside";
#else
static const unsigned char kTitle[] = { 7, 'O', 'u', 't', 's', 'i', 'd', 'e' };
#endif

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
    SetWTitle(window.fWindow, kTitle);
    Str255 title;
    GetWTitle(window.fWindow, title);
    int ticks = 0;
    InstallEventLoopTimer(GetMainEventLoop(), 0.01, 0, NewEventLoopTimerUPP(Tick), &ticks, nil);
    lampblack::host::RunFor(0.1);
    return GetApplicationResFile() > 0 && IsWindowVisible(window.fWindow) && ticks == 1 && title[0] == 7 ? 0
                                                                                                         : 1;
}
