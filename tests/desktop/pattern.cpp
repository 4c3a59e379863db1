// A window with a colour of its own for each square of it, drawn again sixty times a second, and a button.
// With a path it writes what its screen must look like to that file, without a display, and ends.
#include <Carbon/Carbon.h>
#include <lampblack/host.h>

#include <cstdio>

namespace {

constexpr short kWidth = 640, kHeight = 480, kSquare = 20, kMenuBar = 22;
constexpr Rect kButton = { 200, 270, 220, 370 }; // its middle is at 320, 232 of the screen

RGBColor ColorOf(int inColumn, int inRow)
{
    return { (UInt16)(inColumn * 0x0707), (UInt16)(inRow * 0x0A0A),
             (UInt16)((inColumn ^ inRow) & 1 ? 0xFFFF : 0) };
}

void DrawSquares()
{
    for (short row = 0; row * kSquare < kHeight; ++row)
        for (short column = 0; column * kSquare < kWidth; ++column) {
            const RGBColor color = ColorOf(column, row);
            const Rect square = { (short)(row * kSquare), (short)(column * kSquare),
                                  (short)((row + 1) * kSquare), (short)((column + 1) * kSquare) };
            RGBForeColor(&color);
            PaintRect(&square);
        }
}

OSStatus Draw(EventHandlerCallRef inNext, EventRef inEvent, void*)
{
    WindowRef window = nullptr;
    GetEventParameter(inEvent, kEventParamDirectObject, typeWindowRef, nullptr, sizeof window, nullptr,
                      &window);
    SetPortWindowPort(window);
    DrawSquares();
    ForeColor(blackColor);
    return CallNextEventHandler(inNext, inEvent); // the button
}

OSStatus Hit(EventHandlerCallRef, EventRef, void*)
{
    printf("hit\n");
    fflush(stdout);
    return noErr;
}

void DrawAgain(EventLoopTimerRef, void* inWindow)
{
    const Rect all = { 0, 0, kHeight, kWidth };
    InvalWindowRect((WindowRef)inWindow, &all);
}

WindowRef OpenWindow()
{
    const Rect bounds = { kMenuBar, 0, kHeight, kWidth };
    WindowRef window = nullptr;
    ControlRef root = nullptr;
    if (CreateNewWindow(kPlainWindowClass, kWindowStandardHandlerAttribute, &bounds, &window) != noErr ||
        CreateRootControl(window, &root) != noErr)
        return nullptr;
    constexpr EventTypeSpec kDraw = { kEventClassWindow, kEventWindowDrawContent },
                            kHit = { kEventClassControl, kEventControlHit };
    NewControl(window, &kButton, (ConstStringPtr) "\003Hit", true, 0, 0, 1, kControlPushButtonProc, 0);
    InstallWindowEventHandler(window, Draw, 1, &kDraw, nullptr, nullptr);
    InstallWindowEventHandler(window, Hit, 1, &kHit, nullptr, nullptr);
    ShowWindow(window);
    return window;
}

} // namespace

int main(int argc, char** argv)
{
    namespace host = lampblack::host;
    host::Settings settings;
    settings.width = kWidth;
    settings.height = kHeight;
    settings.screen = argc > 1 ? host::Screen::Headless : host::Screen::Desktop;
    host::Configure(settings);
    const WindowRef window = OpenWindow();
    if (!window)
        return 1;
    if (argc > 1) {
        host::RunFor(0.1);
        return host::SaveScreenshot(argv[1]) ? 0 : 1;
    }
    InstallEventLoopTimer(GetMainEventLoop(), 0, kEventDurationSecond / 60, DrawAgain, window, nullptr);
    RunApplicationEventLoop();
    return 0;
}
