// The table of the desktop machine. Nothing of the desktop is opened before it is asked for.
#include "../Parts.h"
#include "../Waiter.h"
#include "Cursors.h"
#include "Environment.h"
#include "Sounds.h"
#include "Translator.h"
#include "Window.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace lampblack::host {

namespace {

// The clipboard, also of a process that never reaches a desktop.
struct Clipboard {
    std::string own; // what this process put there last
    UInt32 serial = 0;
    bool mayHaveChanged = false;
};

struct DesktopHost {
    Window window;
    Cursors cursors;
    Sounds sounds;
    Translator translator{ CommandKeyFromOutside() };
    Clipboard clipboard;
    Waiter waiter;
    std::atomic<bool> videoIsUp = false, wakeIsQueued = false;
    bool videoFailed = false;
    double looked = 0; // when the machine's events were last asked for
};

DesktopHost& TheHost()
{
    static DesktopHost* host = new DesktopHost; // left alive for exit handlers
    return *host;
}

// Only the video part of SDL: with joysticks or sensors it would poll.
bool EnsureVideo()
{
    DesktopHost& host = TheHost();
    if (host.videoIsUp || host.videoFailed)
        return host.videoIsUp;
    SDL_SetMainReady();
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    SDL_SetHint(SDL_HINT_VIDEODRIVER, "x11,wayland"); // a window that nobody sees is none
    SDL_SetHint(SDL_HINT_VIDEO_ALLOW_SCREENSAVER, "1");
    SDL_SetHint(SDL_HINT_VIDEO_X11_NET_WM_BYPASS_COMPOSITOR, "0");
    SDL_SetHint(SDL_HINT_MOUSE_FOCUS_CLICKTHROUGH, "1");
    SDL_SetHint(SDL_HINT_IME_SHOW_UI, "1");
    SDL_SetHint(SDL_HINT_AUTO_UPDATE_JOYSTICKS, "0");
    SDL_SetHint(SDL_HINT_AUTO_UPDATE_SENSORS, "0");
    const StVariable bus("DBUS_SESSION_BUS_ADDRESS", AddressOfNoBus());
    const StVariable compose("XCOMPOSECACHE", ComposeCacheFolder());
    host.videoIsUp = SDL_InitSubSystem(SDL_INIT_VIDEO) == 0;
    if (host.videoIsUp && SDL_GetCurrentVideoDriver() == std::string_view("x11"))
        SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0"); // plain shared memory: quick to open, small
    host.videoFailed = !host.videoIsUp;
    return host.videoIsUp;
}

bool OpenScreen(int inWidth, int inHeight, const char* inTitle)
{
    DesktopHost& host = TheHost();
    if (inWidth < 1 || inHeight < 1)
        return false;
    if (EnsureVideo() && host.window.Open(inWidth, inHeight, inTitle))
        return true;
    fprintf(stderr,
            "lampblack: cannot open a window (%s); set LAMPBLACK_SCREEN=headless to run without a display\n",
            SDL_GetError());
    exit(1);
}

void ScreenSize(int* outWidth, int* outHeight)
{
    const Window& window = TheHost().window;
    *outWidth = window.IsOpen() ? window.Width() : CurrentSettings().width;
    *outHeight = window.IsOpen() ? window.Height() : CurrentSettings().height;
}

// Mouse positions of this event in screen pixels.
void PutOnScreen(SDL_Event& ioEvent)
{
    const Window& window = TheHost().window;
    const auto convert = [&](Sint32& x, Sint32& y) {
        const Point point = window.ScreenPointAt(x, y);
        x = point.h;
        y = point.v;
    };
    if (ioEvent.type == SDL_MOUSEMOTION)
        convert(ioEvent.motion.x, ioEvent.motion.y);
    if (ioEvent.type == SDL_MOUSEBUTTONDOWN || ioEvent.type == SDL_MOUSEBUTTONUP)
        convert(ioEvent.button.x, ioEvent.button.y);
}

// F11 belongs to the desktop here, as it did where these programs come from.
bool IsFullScreenKey(const SDL_Event& inEvent)
{
    const bool key = inEvent.type == SDL_KEYDOWN || inEvent.type == SDL_KEYUP;
    return key && inEvent.key.keysym.scancode == SDL_SCANCODE_F11 &&
           !(inEvent.key.keysym.mod & (KMOD_CTRL | KMOD_ALT | KMOD_SHIFT | KMOD_GUI));
}

void TakeEvent(SDL_Event& ioEvent)
{
    DesktopHost& host = TheHost();
    if (IsFullScreenKey(ioEvent)) {
        if (ioEvent.type == SDL_KEYDOWN && !ioEvent.key.repeat)
            host.window.ToggleFullScreen();
        return;
    }
    if (ioEvent.type == SDL_USEREVENT)
        host.wakeIsQueued = false;
    if (ioEvent.type == SDL_CLIPBOARDUPDATE)
        host.clipboard.mayHaveChanged = true;
    if (ioEvent.type == SDL_WINDOWEVENT && host.window.HandleEvent(ioEvent.window))
        host.translator.Report(Input::Kind::ScreenExposed);
    PutOnScreen(ioEvent);
    host.translator.Translate(ioEvent);
}

// Programs ask where the mouse is, and for input, as fast as they can, and the display would be asked each
// time. What happened is seen a millisecond later at most.
bool IsTimeToLook()
{
    constexpr double kBetweenLooks = 0.001;
    return RealNow() - TheHost().looked >= kBetweenLooks;
}

// Brings the state of mouse and keys up to date; what happened stays in line.
void Look()
{
    TheHost().looked = RealNow();
    SDL_PumpEvents();
}

void LookAtState()
{
    if (IsTimeToLook())
        Look();
}

// Takes what is in line. State that was looked at never runs ahead of it.
void TakeSeen()
{
    DesktopHost& host = TheHost();
    SDL_Event event;
    host.translator.Begin(RealNow());
    while (SDL_PeepEvents(&event, 1, SDL_GETEVENT, SDL_FIRSTEVENT, SDL_LASTEVENT) > 0)
        if (event.type != SDL_POLLSENTINEL)
            TakeEvent(event);
    host.translator.End();
}

void TakeEvents()
{
    if (!TheHost().videoIsUp)
        return;
    LookAtState();
    TakeSeen();
}

int Milliseconds(double inSeconds)
{
    if (inSeconds > 1e6)
        return -1;
    return inSeconds <= 0 ? 0 : static_cast<int>(inSeconds * 1000) + 1;
}

// Blocks once: until an event, a wake or the second.
void BlockUntil(double inUntil)
{
    DesktopHost& host = TheHost();
    if (!host.window.IsOpen())
        return host.waiter.Block(inUntil);
    host.window.FinishOpening();
    SDL_WaitEventTimeout(nullptr, Milliseconds(inUntil - RealNow())); // looks by itself
    TakeSeen();
}

// Events that mean nothing above (a window moved, a sound came to its end) do not end the wait.
bool Wait(double inUntil)
{
    DesktopHost& host = TheHost();
    TakeEvents();
    while (!host.translator.HasInput() && !host.waiter.TakeWake()) {
        const double now = RealNow();
        host.sounds.CloseIfOver(now);
        if (now >= inUntil)
            break;
        BlockUntil(std::min(inUntil, host.sounds.End()));
    }
    return host.translator.HasInput();
}

// A window that opens is shown before anything is done about its opening: the first look follows the first
// frame, or comes with the first wait.
bool TakeInput(Input* outInput)
{
    DesktopHost& host = TheHost();
    const bool opens = host.window.IsOpen() && !host.window.WasShown();
    if (!host.translator.HasInput() && !opens)
        TakeEvents();
    return host.translator.Take(outInput);
}

// From any thread.
void Wake()
{
    DesktopHost& host = TheHost();
    host.waiter.Wake();
    if (!host.videoIsUp || host.wakeIsQueued.exchange(true))
        return;
    SDL_Event event = {};
    event.type = SDL_USEREVENT;
    SDL_PushEvent(&event);
}

Point Mouse()
{
    DesktopHost& host = TheHost();
    if (!host.window.IsOpen())
        return { 0, 0 };
    int x = 0, y = 0;
    LookAtState();
    SDL_GetMouseState(&x, &y);
    return host.window.ScreenPointAt(x, y);
}

UInt32 ModifiersNow()
{
    DesktopHost& host = TheHost();
    if (!host.videoIsUp)
        return 0;
    LookAtState();
    return host.translator.Keys().Modifiers(static_cast<Uint16>(SDL_GetModState()));
}

UInt32 ButtonsNow()
{
    if (!TheHost().videoIsUp)
        return 0;
    LookAtState();
    const Uint32 state = SDL_GetMouseState(nullptr, nullptr);
    const auto bit = [&](Uint32 mask, UInt32 out) { return state & mask ? out : 0; };
    return bit(SDL_BUTTON_LMASK, 1) | bit(SDL_BUTTON_RMASK, 2) | bit(SDL_BUTTON_MMASK, 4);
}

bool KeyIsDown(UInt16 inKey)
{
    DesktopHost& host = TheHost();
    if (!host.videoIsUp)
        return false;
    LookAtState();
    const Uint8* state = SDL_GetKeyboardState(nullptr);
    for (int code = 0; code < SDL_NUM_SCANCODES; ++code)
        if (state[code] && host.translator.Keys().VirtualKey(static_cast<SDL_Scancode>(code)) == inKey)
            return inKey != kNoKey;
    return false;
}

std::string ClipboardText()
{
    if (!EnsureVideo())
        return TheHost().clipboard.own;
    char* text = SDL_GetClipboardText();
    const std::string copy = text ? text : "";
    SDL_free(text);
    return copy;
}

bool SetClipboardText(std::string_view inText)
{
    Clipboard& clipboard = TheHost().clipboard;
    clipboard.own = inText;
    return !EnsureVideo() || SDL_SetClipboardText(clipboard.own.c_str()) == 0;
}

UInt32 ClipboardSerial()
{
    Clipboard& clipboard = TheHost().clipboard;
    TakeEvents();
    if (!clipboard.mayHaveChanged)
        return clipboard.serial;
    clipboard.mayHaveChanged = false;
    std::string text = ClipboardText();
    if (text != clipboard.own) {
        clipboard.own = std::move(text);
        ++clipboard.serial;
    }
    return clipboard.serial;
}

bool OpenUrl(std::string_view inText)
{
    return HasScheme(inText) && SDL_OpenURL(std::string(inText).c_str()) == 0;
}

void FillScreen(Table& table)
{
    table.openScreen = OpenScreen;
    table.closeScreen = [] { TheHost().window.Close(); };
    table.screenSize = ScreenSize;
    table.refreshInterval = [] { return TheHost().window.RefreshInterval(); };
    table.screenMemory = [](int* rowPixels) { return TheHost().window.Memory(rowPixels); };
    table.present = [](const Frame& frame, const Rect* rects, int count) {
        TheHost().window.Present(frame, rects, count);
    };
    table.readScreen = [](Frame* out) { return TheHost().window.Read(out); };
    table.setThemeCursor = [](SInt32 cursor) { TheHost().cursors.SetTheme(cursor); };
    table.setCursorImage = [](const CursorImage& image) {
        TheHost().cursors.SetImage(image, TheHost().window.Scale());
    };
    table.showCursor = [](bool visible) { TheHost().cursors.Show(visible); };
    table.setTitle = [](const char* title) { TheHost().window.SetTitle(title); };
    table.setTextInputArea = [](const Rect& area) { TheHost().window.SetTextInputArea(area); };
    table.active = [] { return !TheHost().window.IsOpen() || TheHost().window.HasFocus(); };
    table.activate = [] { TheHost().window.Raise(); };
}

void FillInput(Table& table)
{
    table.now = RealNow;
    table.wait = Wait;
    table.takeInput = TakeInput;
    table.wake = Wake;
    table.mouse = Mouse;
    table.modifiers = ModifiersNow;
    table.buttons = ButtonsNow;
    table.keyIsDown = KeyIsDown;
}

void FillDesk(Table& table)
{
    table.hasClipboardText = [] { return !ClipboardText().empty(); };
    table.clipboardText = ClipboardText;
    table.setClipboardText = SetClipboardText;
    table.clipboardSerial = ClipboardSerial;
    table.beep = [] { TheHost().sounds.Beep(RealNow()); };
    table.playThemeSound = [](OSType) { TheHost().sounds.Tick(RealNow()); };
    table.openURL = OpenUrl;
}

} // namespace

Table DesktopTable(const Settings&)
{
    Table table;
    table.name = "desktop";
    FillScreen(table);
    FillInput(table);
    FillDesk(table);
    return table;
}

} // namespace lampblack::host
