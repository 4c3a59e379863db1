// The data behind a ControlRef, and behind a window as far as its controls are concerned. A record stays in
// memory while anything pins it, so that a control may be disposed of inside its own handlers; Find stops
// answering at once.
#ifndef LAMPBLACK_CONTROLS_CONTROLRECORD_H
#define LAMPBLACK_CONTROLS_CONTROLRECORD_H

#include <Carbon/Controls.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace lampblack::controls {

class Kind;
struct WindowControls;

struct Property {
    OSType creator;
    OSType tag;
    UInt32 attributes;
    std::vector<uint8_t> bytes;
};

struct Control {
    WindowRef window = nullptr;
    WindowControls* owner = nullptr;
    Control* parent = nullptr;
    std::vector<Control*> children; // in the order of drawing
    Control* supervisor = nullptr;

    Rect bounds = { 0, 0, 0, 0 }; // local to the window
    std::string title;            // Mac Roman, at most 255 bytes
    SInt32 value = 0, minimum = 0, maximum = 0, viewSize = 0;
    ControlPartCode hilite = 0; // the part that is pressed; kControlInactivePart dims
    bool visible = true, enabled = true, active = true;

    SInt16 procID = 0;
    ControlSize size = kControlSizeNormal;
    ControlID id = { 0, 0 };
    UInt32 commandID = 0;
    long reference = 0;
    ControlActionUPP action = nullptr;
    ControlColorUPP colorProc = nullptr;
    ControlFontStyleRec font = {};
    std::vector<Property> properties;
    EventTargetRef target = nullptr; // made when first asked for
    std::unique_ptr<Kind> kind;

    int pins = 0;
    bool disposed = false;

    ControlRef Ref() { return (ControlRef)this; }
    bool HasTitle() const { return !title.empty(); }
};

// What one window knows of its controls. It exists from the first control until the window is disposed of.
struct WindowControls {
    WindowRef window = nullptr;
    Control* root = nullptr;
    std::vector<Control*> flat; // the controls of a window without a root, in the order of drawing
    Control* focus = nullptr;
    ControlFocusPart focusPart = kControlFocusNoPart;
    Control* defaultButton = nullptr;
    Control* cancelButton = nullptr;
};

// The live control behind a reference, or null; and what to answer for one that is not alive.
Control* Find(ControlRef inControl);
inline OSErr InvalidControl(ControlRef inControl)
{
    return inControl ? (OSErr)controlHandleInvalidErr : (OSErr)paramErr;
}

// Holds a record in memory across calls of application code. Ask Alive after each such call.
class StPin {
public:
    [[nodiscard]] explicit StPin(Control* inControl);
    ~StPin();
    StPin(const StPin&) = delete;
    StPin& operator=(const StPin&) = delete;
    bool Alive() const { return fControl && !fControl->disposed; }

private:
    Control* fControl;
};

// The window's record: null when it has none yet; WindowControlsFor makes it, and answers null for an invalid
// window.
WindowControls* FindWindowControls(WindowRef inWindow);
WindowControls* WindowControlsFor(WindowRef inWindow);
void ForgetWindow(WindowControls* inControls); // disposes of all that is left

struct NewControlInfo {
    WindowRef window = nullptr;
    Rect bounds = { 0, 0, 0, 0 };
    std::string title;
    bool visible = true;
    SInt32 value = 0, minimum = 0, maximum = 0;
    SInt16 procID = 0;
    long reference = 0;
    UInt32 features = 0; // user panes: what the application asks for
};

// Makes a control of the kind that the definition ID names, or answers null and, when asked, why.
Control* MakeControl(const NewControlInfo& inInfo, OSStatus* outWhy = nullptr);
Control* MakeRoot(WindowControls& ioOwner);
void Destroy(Control* ioControl);

// Each control of the window in the order of drawing, containers before what they contain.
template <class Visitor>
void ForEachInside(Control& inControl, Visitor&& inVisit)
{
    inVisit(inControl);
    for (Control* child : inControl.children)
        ForEachInside(*child, inVisit);
}
template <class Visitor>
void ForEachControl(WindowControls& inControls, Visitor&& inVisit)
{
    if (inControls.root)
        ForEachInside(*inControls.root, inVisit);
    for (Control* control : inControls.flat)
        ForEachInside(*control, inVisit);
}

// A control shows, is enabled and is active only when all its containers are.
bool IsVisible(const Control& inControl);
bool IsEnabled(const Control& inControl);
bool IsActive(const Control& inControl);
inline bool IsUsable(const Control& inControl)
{
    return IsEnabled(inControl) && IsActive(inControl);
}
bool HasFocus(const Control& inControl); // and the window is the one that hears the keyboard

bool IsInside(const Control& inControl, const Control& inContainer); // at any depth, or itself

} // namespace lampblack::controls

#endif
