// The seam: all that the managers know of the machine. A host fills one Table; an empty slot means "cannot",
// and the caller holds the fallback. A host never calls application code: it reports through TakeInput, which
// only the event loop calls. Begin at Machine().
#ifndef LAMPBLACK_HOST_SEAM_H
#define LAMPBLACK_HOST_SEAM_H

#include <Carbon/MacTypes.h>
#include <lampblack/host.h>

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

namespace lampblack::host {

// Seconds of the machine's monotonic clock that never come.
inline constexpr double kForever = std::numeric_limits<double>::infinity();

// One thing that the user or the desktop did. Coordinates are Macintosh screen pixels, whatever the scale.
struct Input {
    enum class Kind : uint8_t {
        MouseMoved,
        MouseDown,
        MouseUp,
        MouseWheel,
        KeyDown,
        KeyRepeat,
        KeyUp,
        ModifiersChanged,
        TextCommitted, // from an input method; text holds it, no key belongs to it
        ScreenResized, // where.h, where.v: the new size
        ScreenExposed, // the whole screen must be presented again
        Activated,     // the desktop gave this process the keyboard
        Deactivated,
        QuitRequested
    };
    Kind kind = Kind::MouseMoved;
    double time = 0;        // seconds, the clock of Now()
    Point where = { 0, 0 }; // global
    UInt32 modifiers = 0;   // published modifier bits, after this input
    UInt16 button = 1;      // 1 primary, 2 secondary, 3 middle
    UInt32 clickCount = 1;
    SInt32 wheelH = 0, wheelV = 0; // lines, positive is left and up
    UInt16 virtualKey = 0;
    UInt16 textLength = 0; // UTF-16 units in text
    // What the key types in the user's layout; empty for keys that type nothing. Keys without a letter carry
    // the published control character: Return 13, Enter 3, Tab 9, Delete 8, Escape 27, arrows 28 to 31.
    UniChar text[16] = {};
};

// 32-bit pixels 0x00RRGGBB, top left first.
struct Frame {
    const uint32_t* pixels = nullptr;
    int rowPixels = 0;
    int width = 0, height = 0;
};

// A cursor picture: premultiplied 0xAARRGGBB.
struct CursorImage {
    const uint32_t* pixels = nullptr;
    int width = 0, height = 0;
    Point hotSpot = { 0, 0 };
};

struct Table {
    const char* name = "";

    // Screen. openScreen is called before anything else of this block, once, when a window is first needed.
    bool (*openScreen)(int width, int height, const char* utf8Title) = nullptr;
    void (*closeScreen)() = nullptr;
    void (*screenSize)(int* width, int* height) = nullptr;
    double (*refreshInterval)() = nullptr; // seconds between two frames worth presenting
    // The memory that the screen shows, row by row from its top left, for composing straight into it; null
    // while it is scaled or has other pixels. It stays until the next call, or that of readScreen or
    // closeScreen.
    uint32_t* (*screenMemory)(int* rowPixels) = nullptr;
    // Shows the damaged rectangles of the frame, which may lie in the screen's own memory. The pixels are the
    // caller's and are read before this returns.
    void (*present)(const Frame&, const Rect* damaged, int count) = nullptr;
    void (*setThemeCursor)(SInt32 themeCursor) = nullptr;
    void (*setCursorImage)(const CursorImage&) = nullptr; // shown until the next set call
    void (*showCursor)(bool visible) = nullptr;
    void (*setTitle)(const char* utf8Title) = nullptr;
    // Where text is being typed, for the input method's window; an empty rectangle when nowhere.
    void (*setTextInputArea)(const Rect& global) = nullptr;
    // What the screen shows, for pictures of it; the pixels stay until the next call of this block.
    bool (*readScreen)(Frame* out) = nullptr;
    bool (*active)() = nullptr;   // whether this process has the keyboard; true before a screen is open
    void (*activate)() = nullptr; // asks for it

    // Clock and input
    double (*now)() = nullptr; // monotonic seconds
    // Blocks until input is there, wake() is called or the clock reaches `until`. Answers whether input is
    // there.
    bool (*wait)(double until) = nullptr;
    bool (*takeInput)(Input* out) = nullptr; // the oldest input, without blocking
    bool (*letGo)() = nullptr;       // the user, who acts by calls, lets go of a button; false: none is held
    void (*wake)() = nullptr;        // the one call that any thread may make
    Point (*mouse)() = nullptr;      // where the pointer is now, global
    UInt32 (*modifiers)() = nullptr; // down now, published bits
    UInt32 (*buttons)() = nullptr;   // bit 0 primary
    bool (*keyIsDown)(UInt16 virtualKey) = nullptr;

    // The rest of the desk
    bool (*hasClipboardText)() = nullptr;
    std::string (*clipboardText)() = nullptr; // UTF-8
    bool (*setClipboardText)(std::string_view utf8) = nullptr;
    UInt32 (*clipboardSerial)() = nullptr; // how often another program has taken the clipboard
    void (*beep)() = nullptr;
    void (*playThemeSound)(OSType sound) = nullptr;
    bool (*openURL)(std::string_view utf8) = nullptr;
    bool (*speak)(std::string_view utf8) = nullptr;
};

// Machine
//
// The host of this process, chosen on the first call (which ends the time for Configure). Never null; with
// Screen::Automatic and no display the first call of openScreen ends the process with its one line.
const Table& Machine();

// The settings in force, completed with their defaults (application and home are never empty).
const Settings& CurrentSettings();

// What SetGestalt and FailGestalt asked for. Answers false when the selector has no override; otherwise
// *outFails says whether it is unknown, and *outValue holds the answer when it is known.
bool GestaltOverride(OSType selector, bool* outFails, SInt32* outValue);

inline double Now()
{
    return Machine().now();
}

// Hooks that the managers fill so that the control interface can reach up without knowing them.
struct Upward {
    void (*runCurrentEventLoop)(double seconds) = nullptr; // set by events/
    void (*updateScreen)() = nullptr;                      // set by windows/: compose and present all damage
};
Upward& UpwardHooks();

} // namespace lampblack::host

#endif
