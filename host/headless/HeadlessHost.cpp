// The table of the headless machine.
#include "HeadlessHost.h"
#include "../Parts.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace lampblack::host {

namespace {

// A loop that asks for the time again and again waits too: from this many questions on, each one moves the
// clock.
constexpr long kPollsThatAreAWait = 100000;
constexpr double kSecondsPerPoll = 1.0 / 60000;

} // namespace

double VirtualClock::Now()
{
    if (++fPolls > kPollsThatAreAWait)
        fNow += kSecondsPerPoll;
    return fNow;
}

void VirtualClock::MoveTo(double inSecond)
{
    fPolls = 0;
    if (inSecond > fNow)
        fNow = inSecond;
}

HeadlessHost& TheHeadlessHost()
{
    static HeadlessHost* host = new HeadlessHost; // left alive for exit handlers
    return *host;
}

namespace {

bool OpenScreen(int inWidth, int inHeight, const char*)
{
    HeadlessScreen& screen = TheHeadlessHost().screen;
    if (inWidth < 1 || inHeight < 1)
        return false;
    screen.open = true;
    screen.width = inWidth;
    screen.height = inHeight;
    screen.pixels.assign(static_cast<size_t>(inWidth) * inHeight, 0);
    return true;
}

void CloseScreen()
{
    TheHeadlessHost().screen = HeadlessScreen();
}

void ScreenSize(int* outWidth, int* outHeight)
{
    const HeadlessScreen& screen = TheHeadlessHost().screen;
    *outWidth = screen.open ? screen.width : CurrentSettings().width;
    *outHeight = screen.open ? screen.height : CurrentSettings().height;
}

void CopyRectangle(HeadlessScreen& ioScreen, const Frame& inFrame, const Rect& inDamaged)
{
    const int left = std::max<int>(inDamaged.left, 0), top = std::max<int>(inDamaged.top, 0);
    const int right = std::min({ static_cast<int>(inDamaged.right), inFrame.width, ioScreen.width });
    const int bottom = std::min({ static_cast<int>(inDamaged.bottom), inFrame.height, ioScreen.height });
    for (int y = top; y < bottom && left < right; ++y)
        memcpy(&ioScreen.pixels[static_cast<size_t>(y) * ioScreen.width + left],
               inFrame.pixels + static_cast<ptrdiff_t>(y) * inFrame.rowPixels + left,
               static_cast<size_t>(right - left) * sizeof(uint32_t));
}

void Present(const Frame& inFrame, const Rect* inDamaged, int inCount)
{
    HeadlessScreen& screen = TheHeadlessHost().screen;
    if (!screen.open || !inFrame.pixels)
        return;
    for (int i = 0; i < inCount; ++i)
        CopyRectangle(screen, inFrame, inDamaged[i]);
}

bool ReadScreen(Frame* outFrame)
{
    const HeadlessScreen& screen = TheHeadlessHost().screen;
    if (!screen.open)
        return false;
    *outFrame = { screen.pixels.data(), screen.width, screen.width, screen.height };
    return true;
}

double HeadlessNow()
{
    HeadlessHost& host = TheHeadlessHost();
    return host.isVirtual ? host.clock.Now() : RealNow();
}

void WaitOnVirtualClock(HeadlessHost& ioHost, double inUntil)
{
    if (ioHost.waiter.TakeWake())
        return;
    if (inUntil == kForever) {
        fputs("lampblack: waiting for ever on the virtual clock, with no input and no timer to end it\n",
              stderr);
        abort();
    }
    ioHost.clock.MoveTo(inUntil);
}

bool Wait(double inUntil)
{
    HeadlessHost& host = TheHeadlessHost();
    if (host.user.HasQueued())
        return true;
    host.user.Rest();
    if (host.isVirtual) {
        WaitOnVirtualClock(host, inUntil);
    } else {
        host.waiter.Block(inUntil);
        host.waiter.TakeWake();
    }
    return host.user.HasQueued();
}

bool SetClipboardText(std::string_view inText)
{
    TheHeadlessHost().desk.clipboard = inText;
    return true;
}

bool OpenUrl(std::string_view inText)
{
    if (!HasScheme(inText))
        return false;
    TheHeadlessHost().desk.urls.emplace_back(inText);
    return true;
}

bool Speak(std::string_view inText)
{
    TheHeadlessHost().desk.spoken.emplace_back(inText);
    return true;
}

void SetThemeCursor(SInt32 inCursor)
{
    HeadlessScreen& screen = TheHeadlessHost().screen;
    screen.themeCursor = inCursor;
    const bool visible = screen.cursor.visible;
    screen.cursor = {};
    screen.cursor.visible = visible;
}

void SetCursorImage(const CursorImage& inImage)
{
    ShownCursor& cursor = TheHeadlessHost().screen.cursor;
    const size_t count = (size_t)inImage.width * (size_t)inImage.height;
    cursor = { inImage.width, inImage.height, std::vector<UInt32>(inImage.pixels, inImage.pixels + count),
               inImage.hotSpot, cursor.visible };
}

void FillScreen(Table& table)
{
    table.openScreen = OpenScreen;
    table.closeScreen = CloseScreen;
    table.screenSize = ScreenSize;
    table.refreshInterval = [] { return 1.0 / 60; };
    table.present = Present;
    table.readScreen = ReadScreen;
    table.setThemeCursor = SetThemeCursor;
    table.setCursorImage = SetCursorImage;
    table.showCursor = [](bool visible) { TheHeadlessHost().screen.cursor.visible = visible; };
    table.setTitle = [](const char*) {};
    table.setTextInputArea = [](const Rect&) {};
    table.active = [] { return TheHeadlessHost().user.IsActive(); };
    table.activate = [] {
        if (!TheHeadlessHost().user.IsActive())
            SwitchProgram(true);
    };
}

void FillClockAndInput(Table& table)
{
    table.now = HeadlessNow;
    table.wait = Wait;
    table.takeInput = [](Input* out) { return TheHeadlessHost().user.Take(HeadlessNow(), out); };
    table.letGo = [] { return TheHeadlessHost().user.LetGo(); };
    table.wake = [] { TheHeadlessHost().waiter.Wake(); };
    table.mouse = [] { return TheHeadlessHost().user.Mouse(); };
    table.modifiers = [] { return TheHeadlessHost().user.Modifiers(); };
    table.buttons = [] { return TheHeadlessHost().user.Buttons(); };
    table.keyIsDown = [](UInt16 key) { return TheHeadlessHost().user.KeyIsDown(key); };
}

void FillDesk(Table& table)
{
    table.hasClipboardText = [] { return !TheHeadlessHost().desk.clipboard.empty(); };
    table.clipboardText = [] { return TheHeadlessHost().desk.clipboard; };
    table.setClipboardText = SetClipboardText;
    table.clipboardSerial = [] { return TheHeadlessHost().desk.clipboardSerial; };
    table.beep = [] { TheHeadlessHost().desk.sounds.push_back('beep'); };
    table.playThemeSound = [](OSType sound) { TheHeadlessHost().desk.sounds.push_back(sound); };
    table.openURL = OpenUrl;
    table.speak = Speak;
}

} // namespace

Table HeadlessTable(const Settings& inSettings)
{
    TheHeadlessHost().isVirtual = inSettings.clock == Clock::Virtual;
    Table table;
    table.name = "headless";
    FillScreen(table);
    FillClockAndInput(table);
    FillDesk(table);
    return table;
}

} // namespace lampblack::host
