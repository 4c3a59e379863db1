// The control interface of the machine below the managers: which screen and clock a process uses, what the
// machine says of itself, and, on the headless machine, the user who sits at it. Begin with Configure.
#ifndef LAMPBLACK_HOST_H
#define LAMPBLACK_HOST_H

#include <Carbon/MacTypes.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#pragma GCC visibility push(default)
namespace lampblack::host {

enum class Screen { Automatic, Desktop, Headless };
enum class Clock { Real, Virtual };

struct Settings {
    Screen screen = Screen::Automatic;
    Clock clock = Clock::Real;
    int width = 1024, height = 768;    // pixels
    std::filesystem::path application; // default: the running executable
    std::filesystem::path home;        // default: $HOME
};

// Configure
//
// Chooses the machine. Answers false, and changes nothing, once any platform call has been made. With
// Screen::Automatic the desktop opens when a display is there; without one the process stops with a line
// that says how to run headless (LAMPBLACK_SCREEN=headless does so from outside).
bool Configure(const Settings&);

// SetGestalt / FailGestalt
//
// Override what Gestalt answers for one selector, at any time: a value, or gestaltUndefSelectorErr.
void SetGestalt(OSType selector, SInt32 value);
void FailGestalt(OSType selector);

// The user at the headless machine. Actions are queued and consumed in order by the event loop; on the
// desktop host they do nothing. Modifiers are the published event modifier bits (cmdKey and so on) and are
// held down for the one action. Virtual keys are the published kVK codes.
void MoveMouse(Point global);
void PressMouse(Point global, UInt32 modifiers = 0, UInt32 clickCount = 1);
void ReleaseMouse(Point global, UInt32 modifiers = 0);
void Click(Point global, UInt32 modifiers = 0, UInt32 clickCount = 1);
void PressKey(UInt16 virtualKey, UniChar character, UInt32 modifiers = 0); // down and up
void HoldKey(UInt16 virtualKey, bool down);
void TypeText(std::string_view utf8);
void TurnWheel(Point global, SInt32 linesUp, UInt32 modifiers = 0);
void SwitchProgram(bool toThisOne); // the desktop takes the keyboard away, or gives it back
void RequestQuit();                 // as when the desktop asks the program to end

// CopyElsewhere / PasteElsewhere
//
// Another program takes the clipboard with this text, at once; or reads what the clipboard holds.
void CopyElsewhere(std::string_view utf8);
std::string PasteElsewhere();

// RunFor
//
// Runs the current event loop for that many seconds of the machine's clock. With the virtual clock the time
// passes as fast as the work in it allows. When the time is over and something inside still follows the mouse,
// the user lets go of the button; a menu or a modal loop inside that would wait for ever ends as if the
// application did.
void RunFor(double seconds);

// What that user sees and hears.

// SaveScreenshot
//
// Brings the screen up to date and writes it as a PNG file, cursor excluded. Answers false when the file
// cannot be written or no screen is open.
bool SaveScreenshot(const std::filesystem::path& png);

// ScreenPixel
//
// The colour on screen at a global point after all drawing so far, as 0x00RRGGBB; 0 outside the screen.
UInt32 ScreenPixel(Point global);

SInt32 CurrentThemeCursor(); // a ThemeCursor, kThemeArrowCursor at first

// The picture that an application's own cursor shows; no pixels while a theme cursor is shown.
struct ShownCursor {
    int width = 0, height = 0;
    std::vector<UInt32> pixels; // premultiplied 0xAARRGGBB
    Point hotSpot = { 0, 0 };
    bool visible = true;
};
ShownCursor CurrentCursor();

std::vector<OSType> PlayedSounds();     // 'beep' for the system beep, else theme sound codes
std::vector<std::string> OpenedURLs();  // UTF-8
std::vector<std::string> SpokenTexts(); // UTF-8

} // namespace lampblack::host
#pragma GCC visibility pop

#endif
