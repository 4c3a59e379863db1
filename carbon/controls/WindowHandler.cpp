// The controls' part of the standard window handler: default handlers on the window's target that draw,
// click, focus, press the default button and tell controls what becomes of their window. All but the last is
// left alone in a window without kWindowStandardHandlerAttribute, whose application does it.
#include "controls/WindowHandler.h"

#include "controls/ControlEvents.h"
#include "controls/Drawing.h"
#include "controls/Focus.h"
#include "controls/Kind.h"
#include "controls/Tracking.h"
#include "events/EventTargets.h"
#include "events/Routing.h"

#include <Carbon/CarbonEvents.h>
#include <Carbon/MacWindows.h>

namespace lampblack::controls {

namespace {

enum : UInt32 { kEnter = 3, kTab = 9, kReturn = 13, kEscape = 27 };

bool HasStandardHandler(WindowRef inWindow)
{
    WindowAttributes attributes = 0;
    return GetWindowAttributes(inWindow, &attributes) == noErr &&
           (attributes & kWindowStandardHandlerAttribute);
}

UInt32 ModifiersOf(EventRef inEvent)
{
    UInt32 modifiers = 0;
    GetEventParameter(inEvent, kEventParamKeyModifiers, typeUInt32, nullptr, sizeof modifiers, nullptr,
                      &modifiers);
    return modifiers;
}

// --- Drawing and activation

OSStatus DrawContent(WindowControls& inControls, EventRef)
{
    DrawControls(inControls.window);
    return noErr;
}

// Without a root, an application dims its controls as it likes.
OSStatus SetActive(WindowControls& inControls, bool inActive)
{
    if (inControls.root)
        inActive ? ActivateControl(inControls.root->Ref()) : DeactivateControl(inControls.root->Ref());
    return eventNotHandledErr;
}

OSStatus Activated(WindowControls& inControls, EventRef)
{
    return SetActive(inControls, true);
}
OSStatus Deactivated(WindowControls& inControls, EventRef)
{
    return SetActive(inControls, false);
}

OSStatus BoundsChanged(WindowControls& inControls, EventRef)
{
    if (inControls.root)
        GetWindowPortBounds(inControls.window, &inControls.root->bounds);
    return eventNotHandledErr;
}

OSStatus Disposed(WindowControls& inControls, EventRef)
{
    ForgetWindow(&inControls);
    return eventNotHandledErr;
}

// --- The mouse

bool LocalPoint(WindowRef inWindow, EventRef inEvent, Point* outPoint)
{
    if (GetEventParameter(inEvent, kEventParamMouseLocation, typeQDPoint, nullptr, sizeof *outPoint, nullptr,
                          outPoint) != noErr)
        return false;
    StDrawing drawing(inWindow);
    GlobalToLocal(outPoint);
    return true;
}

bool IsContextualClick(EventRef inEvent)
{
    EventMouseButton button = kEventMouseButtonPrimary;
    GetEventParameter(inEvent, kEventParamMouseButton, typeMouseButton, nullptr, sizeof button, nullptr,
                      &button);
    return button == kEventMouseButtonSecondary || (ModifiersOf(inEvent) & controlKey);
}

// A click that activates the window, and one for a menu that nobody here shows, are the window's own; what is
// left of them comes back as a click that it has no use for.
OSStatus ClickContent(WindowControls& inControls, EventRef inEvent)
{
    Point where = { 0, 0 };
    if (!IsWindowHilited(inControls.window) || !LocalPoint(inControls.window, inEvent, &where))
        return eventNotHandledErr;
    Control* control = ControlAt(inControls, where);
    if (!control)
        return eventNotHandledErr;
    if (IsContextualClick(inEvent))
        return SendContextualClick(*control, inEvent, where);
    SelectWindow(inControls.window);
    return SendClick(*control, inEvent, where);
}

OSStatus HandleContentClick(WindowControls& inControls, EventRef inEvent)
{
    Point where = { 0, 0 };
    if (!LocalPoint(inControls.window, inEvent, &where))
        return eventNotHandledErr;
    Control* control = ControlAt(inControls, where);
    if (!control || (IsContainer(*control) && PartAt(*control, where) == kControlNoPart))
        return eventNotHandledErr;
    return SendClick(*control, inEvent, where);
}

Control* ControlOf(EventRef inEvent)
{
    ControlRef reference = nullptr;
    GetEventParameter(inEvent, kEventParamDirectObject, typeControlRef, nullptr, sizeof reference, nullptr,
                      &reference);
    return Find(reference);
}

// What lies in a container without being a part of it is content of the window.
OSStatus ControlClick(WindowControls&, EventRef inEvent)
{
    Control* control = ControlOf(inEvent);
    TrackInfo info;
    if (!control || GetEventParameter(inEvent, kEventParamMouseLocation, typeQDPoint, nullptr,
                                      sizeof info.where, nullptr, &info.where) != noErr)
        return eventNotHandledErr;
    if (IsContainer(*control) && PartAt(*control, info.where) == kControlNoPart)
        return eventNotHandledErr;
    info.modifiers = (EventModifiers)ModifiersOf(inEvent);
    info.action = (ControlActionUPP)(intptr_t)-1;
    GetEventParameter(inEvent, kEventParamClickCount, typeUInt32, nullptr, sizeof info.clickCount, nullptr,
                      &info.clickCount);
    ClickIn(*control, info);
    return noErr;
}

OSStatus CursorChange(WindowControls& inControls, EventRef inEvent)
{
    Point where = { 0, 0 };
    if (!LocalPoint(inControls.window, inEvent, &where))
        return eventNotHandledErr;
    Control* control = ControlAt(inControls, where);
    return control && SendSetCursor(*control, where, ModifiersOf(inEvent)) ? noErr : eventNotHandledErr;
}

// --- Keys

OSStatus SendCommand(WindowRef inWindow, UInt32 inCommandID)
{
    EventRef event = nullptr;
    if (CreateEvent(nullptr, kEventClassCommand, kEventCommandProcess, GetCurrentEventTime(),
                    kEventAttributeNone, &event) != noErr)
        return eventNotHandledErr;
    HICommand command = {};
    command.commandID = inCommandID;
    SetEventParameter(event, kEventParamDirectObject, typeHICommand, sizeof command, &command);
    const OSStatus status = SendEventToEventTarget(event, GetWindowEventTarget(inWindow));
    ReleaseEvent(event);
    return status;
}

// Return and Escape are commands first, to whoever takes them, and then a press of the button that stands for
// them.
OSStatus PressButton(WindowControls& inControls, UInt32 inCommandID, Control* WindowControls::*inButton)
{
    const WindowRef window = inControls.window;
    if (SendCommand(window, inCommandID) == noErr)
        return noErr;
    WindowControls* controls = FindWindowControls(window);
    Control* button = controls ? controls->*inButton : nullptr;
    if (!button || !IsVisible(*button) || !IsUsable(*button))
        return eventNotHandledErr;
    SimulateHit(*button, 0);
    return noErr;
}

struct Key {
    UInt32 character = 0, code = 0, modifiers = 0;
};

bool ReadKey(EventRef inRawKey, Key* outKey)
{
    char character = 0;
    if (GetEventParameter(inRawKey, kEventParamKeyMacCharCodes, typeChar, nullptr, sizeof character, nullptr,
                          &character) != noErr)
        return false;
    outKey->character = (UInt8)character;
    outKey->modifiers = ModifiersOf(inRawKey);
    GetEventParameter(inRawKey, kEventParamKeyCode, typeUInt32, nullptr, sizeof outKey->code, nullptr,
                      &outKey->code);
    return true;
}

bool KeyOf(EventRef inTextInput, Key* outKey)
{
    EventRef raw = nullptr;
    return GetEventParameter(inTextInput, kEventParamTextInputSendKeyboardEvent, typeEventRef, nullptr,
                             sizeof raw, nullptr, &raw) == noErr &&
           ReadKey(raw, outKey);
}

OSStatus PressCancel(WindowControls& inControls)
{
    return PressButton(inControls, kHICommandCancel, &WindowControls::cancelButton);
}

// With the Command key down a key types no text, so that this one is taken as a key.
OSStatus RawKey(WindowControls& inControls, EventRef inEvent)
{
    Key key;
    const bool isCancel = ReadKey(inEvent, &key) && key.character == '.' && (key.modifiers & cmdKey);
    return isCancel ? PressCancel(inControls) : (OSStatus)eventNotHandledErr;
}

OSStatus KeyToFocus(WindowControls& inControls, const Key& inKey)
{
    if (!inControls.focus)
        return eventNotHandledErr;
    const SInt16 part = HandleControlKey(inControls.focus->Ref(), (SInt16)inKey.code, (SInt16)inKey.character,
                                         (EventModifiers)inKey.modifiers);
    return part == kControlNoPart ? (OSStatus)eventNotHandledErr : (OSStatus)noErr;
}

OSStatus TextInput(WindowControls& inControls, EventRef inEvent)
{
    Key key;
    if (!KeyOf(inEvent, &key))
        return eventNotHandledErr;
    const WindowRef window = inControls.window;
    OSStatus status = eventNotHandledErr;
    if (key.character == kEscape)
        return PressCancel(inControls);
    if (key.character == kReturn || key.character == kEnter)
        status = PressButton(inControls, kHICommandOK, &WindowControls::defaultButton);
    if (key.character == kTab)
        return MoveFocus(inControls, !(key.modifiers & shiftKey)) == noErr ? (OSStatus)noErr
                                                                           : (OSStatus)eventNotHandledErr;
    WindowControls* controls = FindWindowControls(window);
    return status == noErr || !controls ? status : KeyToFocus(*controls, key);
}

// --- Dispatch

struct WindowEvent {
    UInt32 eventClass;
    UInt32 kind;
    OSStatus (*handle)(WindowControls&, EventRef);
};

constexpr WindowEvent kStandard[] = {
    { kEventClassWindow, kEventWindowDrawContent, DrawContent },
    { kEventClassWindow, kEventWindowClickContentRgn, ClickContent },
    { kEventClassWindow, kEventWindowHandleContentClick, HandleContentClick },
    { kEventClassWindow, kEventWindowCursorChange, CursorChange },
    { kEventClassControl, kEventControlClick, ControlClick },
    { kEventClassKeyboard, kEventRawKeyDown, RawKey },
    { kEventClassTextInput, kEventTextInputUnicodeForKeyEvent, TextInput },
};

constexpr WindowEvent kAlways[] = {
    { kEventClassWindow, kEventWindowActivated, Activated },
    { kEventClassWindow, kEventWindowDeactivated, Deactivated },
    { kEventClassWindow, kEventWindowBoundsChanged, BoundsChanged },
    { kEventClassWindow, kEventWindowDispose, Disposed },
};

template <size_t Count>
OSStatus Dispatch(const WindowEvent (&inEvents)[Count], EventRef inEvent, WindowRef inWindow)
{
    WindowControls* controls = FindWindowControls(inWindow);
    const UInt32 eventClass = GetEventClass(inEvent), kind = GetEventKind(inEvent);
    for (const WindowEvent& entry : inEvents)
        if (controls && entry.eventClass == eventClass && entry.kind == kind)
            return entry.handle(*controls, inEvent);
    return eventNotHandledErr;
}

OSStatus HandleStandard(EventHandlerCallRef, EventRef inEvent, void* inWindow)
{
    if (!HasStandardHandler((WindowRef)inWindow))
        return eventNotHandledErr;
    return Dispatch(kStandard, inEvent, (WindowRef)inWindow);
}

OSStatus HandleAlways(EventHandlerCallRef, EventRef inEvent, void* inWindow)
{
    return Dispatch(kAlways, inEvent, (WindowRef)inWindow);
}

template <size_t Count>
void Install(EventTargetRef inTarget, const WindowEvent (&inEvents)[Count], EventHandlerProcPtr inProc,
             WindowRef inWindow)
{
    EventTypeSpec specs[Count];
    for (size_t i = 0; i < Count; ++i)
        specs[i] = { inEvents[i].eventClass, inEvents[i].kind };
    events::InstallDefaultHandler(inTarget, Count, specs, inProc, inWindow);
}

// --- The keyboard's target: the focused control of the window that has the user focus

EventTargetRef (*gWindowsKeyboardTarget)(EventRef) = nullptr;

EventTargetRef KeyboardTarget(EventRef inEvent)
{
    WindowControls* controls = FindWindowControls(GetUserFocusWindow());
    if (controls && controls->focus && IsUsable(*controls->focus))
        return TargetOf(*controls->focus);
    return gWindowsKeyboardTarget ? gWindowsKeyboardTarget(inEvent) : nullptr;
}

void RouteToControls()
{
    auto& routing = events::EventRouting();
    routing.controlTarget = GetControlEventTarget;
    if (routing.keyboardTarget == KeyboardTarget)
        return;
    gWindowsKeyboardTarget = routing.keyboardTarget;
    routing.keyboardTarget = KeyboardTarget;
}

} // namespace

void InstallWindowHandler(WindowRef inWindow)
{
    RouteToControls();
    const EventTargetRef target = GetWindowEventTarget(inWindow);
    Install(target, kStandard, HandleStandard, inWindow);
    Install(target, kAlways, HandleAlways, inWindow);
}

} // namespace lampblack::controls

using namespace lampblack::controls;

namespace {

OSStatus SetButton(WindowRef inWindow, ControlRef inControl, Control* WindowControls::*inRole)
{
    if (!inWindow)
        return paramErr;
    WindowControls* controls = WindowControlsFor(inWindow);
    if (!controls)
        return errInvalidWindowRef;
    Control* control = Find(inControl);
    if (inControl && !control)
        return InvalidControl(inControl);
    if (control && control->owner != controls)
        return errControlNotFound;
    controls->*inRole = control;
    return noErr;
}

OSStatus GetButton(WindowRef inWindow, ControlRef* outControl, Control* WindowControls::*inRole)
{
    if (!inWindow || !outControl)
        return paramErr;
    if (!IsValidWindowPtr(inWindow))
        return errInvalidWindowRef;
    const WindowControls* controls = FindWindowControls(inWindow);
    *outControl = controls && controls->*inRole ? (controls->*inRole)->Ref() : nullptr;
    return noErr;
}

} // namespace

LAMPBLACK_BEGIN_C

OSStatus SetWindowDefaultButton(WindowRef inWindow, ControlRef inControl)
{
    ControlRef old = nullptr;
    GetWindowDefaultButton(inWindow, &old);
    const OSStatus status = SetButton(inWindow, inControl, &WindowControls::defaultButton);
    if (status != noErr || old == inControl)
        return status;
    const Boolean off = false, on = true;
    if (old)
        SetControlData(old, kControlEntireControl, kControlPushButtonDefaultTag, sizeof off, &off);
    if (inControl)
        SetControlData(inControl, kControlEntireControl, kControlPushButtonDefaultTag, sizeof on, &on);
    return noErr;
}

OSStatus GetWindowDefaultButton(WindowRef inWindow, ControlRef* outControl)
{
    return GetButton(inWindow, outControl, &WindowControls::defaultButton);
}

OSStatus SetWindowCancelButton(WindowRef inWindow, ControlRef inControl)
{
    return SetButton(inWindow, inControl, &WindowControls::cancelButton);
}

OSStatus GetWindowCancelButton(WindowRef inWindow, ControlRef* outControl)
{
    return GetButton(inWindow, outControl, &WindowControls::cancelButton);
}

LAMPBLACK_END_C
