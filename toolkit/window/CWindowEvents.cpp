// CWindow's event handling: one table from event class and kind to a small handler, and what the base class
// does for each event.
#include "window/CWindow.h"

#include <iterator>

#include "controls/ControlData.h"
#include "controls/Focus.h"
#include "graphics/StateSavers.h"
#include "util/CarbonEventHelpers.h"

namespace {

constexpr PropertyTag kHitTag = 'HIT ';

// What a table entry works with. fPort made the window's port current; Restore gives the caller's back early.
struct Dispatch {
    CWindow* fObject;
    EventHandlerCallRef fCallRef;
    EventRef fEvent;
    const StPortSaver& fPort;
};

using Handler = OSStatus (*)(const Dispatch&);

Point MouseLocation(EventRef inEvent)
{
    Point mouse = { 0, 0 };
    if (GetEventParameter(inEvent, kEventParamMouseLocation, typeQDPoint, nullptr, sizeof mouse, nullptr,
                          &mouse) != noErr)
        GetGlobalMouse(&mouse);
    return mouse;
}

bool IsOKCommand(EventRef inEvent)
{
    HICommand command = {};
    return GetEventParameter(inEvent, kEventParamDirectObject, typeHICommand, nullptr, sizeof command,
                             nullptr, &command) == noErr &&
           command.commandID == kHICommandOK;
}

ControlRef UsableDefaultButton(WindowRef inWindow)
{
    ControlRef button = nullptr;
    if (GetWindowDefaultButton(inWindow, &button) != noErr || !button || !IsControlVisible(button) ||
        !IsControlEnabledX(button))
        return nullptr;
    return button;
}

EventRef CreateHitEvent(ControlRef inButton)
{
    EventRef hit = nullptr;
    if (CreateEvent(nullptr, kEventClassControl, kEventControlHit, GetCurrentEventTime(), kEventAttributeNone,
                    &hit) != noErr)
        return nullptr;
    const ControlPartCode part = kControlButtonPart;
    const UInt32 modifiers = 0;
    SetEventParameter(hit, kEventParamDirectObject, typeControlRef, sizeof inButton, &inButton);
    SetEventParameter(hit, kEventParamControlPart, typeControlPartCode, sizeof part, &part);
    SetEventParameter(hit, kEventParamKeyModifiers, typeUInt32, sizeof modifiers, &modifiers);
    return hit;
}

// Return presses the default button. The command's kind is not looked at: an update-status event for OK
// presses it as well, as it always did.
OSStatus SimulateDefaultButton(const Dispatch& in)
{
    const ControlRef button = IsOKCommand(in.fEvent) ? UsableDefaultButton(in.fObject->fWindow) : nullptr;
    if (!button)
        return eventNotHandledErr;
    FlashControl(button, kControlButtonPart);
    const EventRef hit = CreateHitEvent(button);
    const OSStatus result = in.fObject->DoControlHit(hit);
    if (hit)
        ReleaseEvent(hit);
    return result;
}

OSStatus MouseMoved(const Dispatch& in)
{
    const OSStatus result = in.fObject->DoMouseMoved(in.fEvent);
    if (result != eventNotHandledErr)
        return result;
    SetArrowCursor(false);
    return noErr;
}

OSStatus ControlHit(const Dispatch& in)
{
    const ControlRef control = GetCarbonEventControl(in.fEvent);
    const Boolean mark = true;
    if (control)
        SetControlProperty(control, kEventClassToolkit, kHitTag, sizeof mark, &mark);
    return in.fObject->DoControlHit(in.fEvent);
}

// The standard tracking runs first; a hit during it leaves its mark on the control.
OSStatus ControlClick(const Dispatch& in)
{
    in.fPort.Restore();
    const ControlRef control = GetCarbonEventControl(in.fEvent);
    const OSStatus result = CallNextEventHandler(in.fCallRef, in.fEvent);
    if (result != noErr || !IsControlEnabledX(control))
        return result;
    Boolean mark = false;
    if (GetControlProperty(control, kEventClassToolkit, kHitTag, sizeof mark, nullptr, &mark) == noErr)
        RemoveControlProperty(control, kEventClassToolkit, kHitTag);
    else
        in.fObject->DoControlNoTrackHit(in.fEvent);
    return result;
}

OSStatus ClickContentRgn(const Dispatch& in)
{
    in.fPort.Restore();
    return in.fObject->DoWindowClickContentRgn(in.fCallRef, in.fEvent);
}

OSStatus ContextualMenuSelect(const Dispatch& in)
{
    return in.fObject->DoWindowContextualMenuSelect(in.fEvent, MouseLocation(in.fEvent));
}

OSStatus Showing(const Dispatch& in)
{
    in.fObject->DoWindowShowing(in.fEvent);
    return eventNotHandledErr;
}

// The result is ignored on purpose: other handlers shall hear of the change too.
OSStatus TextValidation(const Dispatch& in)
{
    in.fObject->DoControlTextCutCopyPasteValidation(in.fEvent);
    return eventNotHandledErr;
}

// An event that only calls its operation.
template <auto kOperation>
OSStatus Call(const Dispatch& in)
{
    return (in.fObject->*kOperation)(in.fEvent);
}

struct Entry {
    UInt32 fClass;
    UInt32 fKind;
    Handler fHandler;
};

constexpr UInt32 kAnyKind = 0xFFFFFFFF;

constexpr Entry kEntries[] = {
    { kEventClassCommand, kAnyKind, SimulateDefaultButton },
    { kEventClassMouse, kAnyKind, MouseMoved },
    { kEventClassToolkit, kEventTextAboutToChange, Call<&CWindow::DoControlTextAboutToChange> },
    { kEventClassToolkit, kEventTextChanged, Call<&CWindow::DoControlTextChanged> },
    { kEventClassToolkit, kEventTextCutCopyPasteValidation, TextValidation },
    { kEventClassControl, kEventControlHit, ControlHit },
    { kEventClassControl, kEventControlClick, ControlClick },
    { kEventClassWindow, kEventWindowDrawContent, Call<&CWindow::DoWindowDrawContent> },
    { kEventClassWindow, kEventWindowActivated, Call<&CWindow::DoWindowActivated> },
    { kEventClassWindow, kEventWindowDeactivated, Call<&CWindow::DoWindowDeactivated> },
    { kEventClassWindow, kEventWindowShowing, Showing },
    { kEventClassWindow, kEventWindowHiding, Call<&CWindow::DoWindowHiding> },
    { kEventClassWindow, kEventWindowResizeCompleted, Call<&CWindow::DoWindowResizeCompleted> },
    { kEventClassWindow, kEventWindowClickContentRgn, ClickContentRgn },
    { kEventClassWindow, kEventWindowClose, Call<&CWindow::DoWindowClose> },
    { kEventClassWindow, kEventWindowZoom, Call<&CWindow::DoWindowZoom> },
    { kEventClassWindow, kEventWindowZoomed, Call<&CWindow::DoWindowZoomed> },
    { kEventClassWindow, kEventWindowZoomAll, Call<&CWindow::DoWindowZoomAll> },
    { kEventClassWindow, kEventWindowContextualMenuSelect, ContextualMenuSelect },
    { kEventClassWindow, kEventWindowGetIdealSize, Call<&CWindow::DoWindowGetIdealSize> },
    { kEventClassWindow, kEventWindowGetMinimumSize, Call<&CWindow::DoWindowGetMinimumSize> },
    { kEventClassWindow, kEventWindowGetMaximumSize, Call<&CWindow::DoWindowGetMaximumSize> },
    { kEventClassWindow, kEventWindowHandleContentClick, Call<&CWindow::DoWindowHandleContentClick> },
};

Handler FindHandler(UInt32 inClass, UInt32 inKind)
{
    for (const Entry& entry : kEntries) {
        if (entry.fClass == inClass && (entry.fKind == inKind || entry.fKind == kAnyKind))
            return entry.fHandler;
    }
    return nullptr;
}

void ShowCursorOver(ControlRef inControl, WindowRef inWindow)
{
    if (!IsControlEnabledX(inControl))
        SetArrowCursor(false);
    else if (IsControlURL(inControl))
        SetPointingHandCursor(false);
    else if (IsEditTextDefID(GetControlDefProcID(inControl)) && IsControlKeyboardFocus(inWindow, inControl))
        SetIBeamCursor(false);
    else
        SetArrowCursor(false); // Not yet: the I-beam over a focused list (wants the list box control)
}

} // namespace

OSStatus CWindowEventHandler(EventHandlerCallRef inCallRef, EventRef inEvent, void* inUserData)
{
    CWindow* const object = static_cast<CWindow*>(inUserData);
    if (!object->fWindow)
        return eventNotHandledErr;
    const StPortSaver port(object->fWindow);
    const Handler handler = FindHandler(GetEventClass(inEvent), GetEventKind(inEvent));
    return handler ? handler({ object, inCallRef, inEvent, port })
                   : static_cast<OSStatus>(eventNotHandledErr);
}

OSStatus CWindowControlDrawHandler(EventHandlerCallRef inCallRef, EventRef inEvent, void* inUserData)
{
    return static_cast<CWindow*>(inUserData)->DoControlDraw(inCallRef, inEvent);
}

void CWindow::SetupEventHandlers() const
{
    // The command stands twice; the second entry is harmless and the list is kept as hosts know it.
    static const EventTypeSpec windowEvents[] = { { kEventClassCommand, kEventCommandProcess },
                                                  { kEventClassCommand, kEventCommandProcess },
                                                  { kEventClassWindow, kEventWindowDrawContent },
                                                  { kEventClassWindow, kEventWindowShowing },
                                                  { kEventClassWindow, kEventWindowHiding },
                                                  { kEventClassWindow, kEventWindowActivated },
                                                  { kEventClassWindow, kEventWindowDeactivated },
                                                  { kEventClassWindow, kEventWindowClickContentRgn },
                                                  { kEventClassWindow, kEventWindowHandleContentClick },
                                                  { kEventClassWindow, kEventWindowClose },
                                                  { kEventClassWindow, kEventWindowZoom },
                                                  { kEventClassWindow, kEventWindowZoomAll },
                                                  { kEventClassWindow, kEventWindowZoomed },
                                                  { kEventClassWindow, kEventWindowResizeCompleted },
                                                  { kEventClassWindow, kEventWindowGetIdealSize },
                                                  { kEventClassWindow, kEventWindowGetMinimumSize },
                                                  { kEventClassWindow, kEventWindowGetMaximumSize },
                                                  { kEventClassWindow, kEventWindowFocusAcquired },
                                                  { kEventClassWindow, kEventWindowFocusRelinquish },
                                                  { kEventClassWindow, kEventWindowContextualMenuSelect },
                                                  { kEventClassControl, kEventControlClick },
                                                  { kEventClassControl, kEventControlHit },
                                                  { kEventClassMouse, kEventMouseMoved },
                                                  { kEventClassToolkit, 'RSHT' },
                                                  { kEventClassToolkit, kEventTextAboutToChange },
                                                  { kEventClassToolkit, kEventTextChanged },
                                                  { kEventClassToolkit, kEventTextCutCopyPasteValidation } };
    static const EventHandlerUPP handlerUPP = NewEventHandlerUPP(CWindowEventHandler);
    InstallEventHandler(GetWindowEventTarget(fWindow), handlerUPP, std::size(windowEvents), windowEvents,
                        const_cast<CWindow*>(this), nullptr);
}

void CWindow::SetupCommandEventHandlers() const
{
    static const EventTypeSpec menuEvents[] = { { kEventClassCommand, kEventCommandProcess },
                                                { kEventClassCommand, kEventCommandUpdateStatus } };
    static const EventHandlerUPP menuHandlerUPP = NewEventHandlerUPP(CWindowEventHandler);
    InstallEventHandler(GetWindowEventTarget(fWindow), menuHandlerUPP, std::size(menuEvents), menuEvents,
                        const_cast<CWindow*>(this), nullptr);
}

void CWindow::SetupControlDrawHandler(ControlRef inControl) const
{
    static const EventTypeSpec controlEvents[] = { { kEventClassControl, kEventControlDraw } };
    static const EventHandlerUPP handlerUPP = NewEventHandlerUPP(CWindowControlDrawHandler);
    InstallEventHandler(GetControlEventTarget(inControl), handlerUPP, std::size(controlEvents), controlEvents,
                        const_cast<CWindow*>(this), nullptr);
}

OSStatus CWindow::DoMouseMoved(EventRef inEvent)
{
    Point mouse = MouseLocation(inEvent);
    const StPortSaver port(fWindow);
    GlobalToLocal(&mouse);
    ControlPartCode part = 0;
    const ControlRef control = FindControlUnderMouse(mouse, fWindow, &part);
    if (!control)
        return eventNotHandledErr;
    ShowCursorOver(control, fWindow);
    return noErr;
}

OSStatus CWindow::DoWindowActivated(EventRef inEvent)
{
    SetArrowCursor(true);
    DoMouseMoved(inEvent);
    return eventNotHandledErr;
}

OSStatus CWindow::DoWindowClickContentRgn(EventHandlerCallRef inCallRef, EventRef inEvent)
{
    const WindowRef window = fWindow;
    ControlRef before = nullptr;
    const OSErr errBefore = GetKeyboardFocus(window, &before);
    const OSStatus result = CallNextEventHandler(inCallRef, inEvent);
    // The click may have deleted this object, and its window with it: nothing of it is read before this is
    // known.
    if (!IsValidWindowPtr(window) || !fWindow || !IsWindowVisible(fWindow))
        return result;
    ControlRef after = nullptr;
    const OSErr errAfter = GetKeyboardFocus(fWindow, &after);
    if (errBefore == noErr && errAfter == noErr && before != after)
        DoWindowFocusChange(inEvent, before, after);
    return result;
}

OSStatus CWindow::DoWindowDrawContent(EventRef)
{
    DrawControls(fWindow);
    return noErr;
}

OSStatus CWindow::DoWindowHandleContentClick(EventRef)
{
    ClearKeyboardFocus(fWindow);
    return eventNotHandledErr;
}

OSStatus CWindow::DoWindowShowing(EventRef) const
{
    SetArrowCursor(true);
    return eventNotHandledErr;
}

OSStatus CWindow::DoControlHit(EventRef)
{
    return noErr;
}

// What the base class leaves to the standard handler.
OSStatus CWindow::DoWindowClose(EventRef) const
{
    return eventNotHandledErr;
}
OSStatus CWindow::DoWindowDeactivated(EventRef)
{
    return eventNotHandledErr;
}
OSStatus CWindow::DoWindowFocusChange(EventRef, ControlRef, ControlRef)
{
    return eventNotHandledErr;
}
OSStatus CWindow::DoWindowGetIdealSize(EventRef)
{
    return eventNotHandledErr;
}
OSStatus CWindow::DoWindowGetMinimumSize(EventRef)
{
    return eventNotHandledErr;
}
OSStatus CWindow::DoWindowGetMaximumSize(EventRef)
{
    return eventNotHandledErr;
}
OSStatus CWindow::DoWindowHiding(EventRef) const
{
    return eventNotHandledErr;
}
OSStatus CWindow::DoWindowResizeCompleted(EventRef)
{
    return eventNotHandledErr;
}
OSStatus CWindow::DoWindowZoom(EventRef)
{
    return eventNotHandledErr;
}
OSStatus CWindow::DoWindowZoomAll(EventRef)
{
    return eventNotHandledErr;
}
OSStatus CWindow::DoWindowZoomed(EventRef)
{
    return eventNotHandledErr;
}
OSStatus CWindow::DoWindowContextualMenuSelect(EventRef, Point)
{
    return eventNotHandledErr;
}
OSStatus CWindow::DoControlDraw(EventHandlerCallRef, EventRef)
{
    return eventNotHandledErr;
}
OSStatus CWindow::DoControlNoTrackHit(EventRef)
{
    return eventNotHandledErr;
}
OSStatus CWindow::DoControlTextAboutToChange(EventRef)
{
    return eventNotHandledErr;
}
OSStatus CWindow::DoControlTextChanged(EventRef)
{
    return eventNotHandledErr;
}
OSStatus CWindow::DoControlTextCutCopyPasteValidation(EventRef)
{
    return eventNotHandledErr;
}
OSStatus CWindow::DoControlSetCursor(EventRef, ControlRef)
{
    return eventNotHandledErr;
}
