#include "controls/ControlEvents.h"

#include "controls/Drawing.h"
#include "controls/Focus.h"
#include "events/EventTargets.h"

#include <Carbon/Appearance.h>
#include <Carbon/MacWindows.h>

namespace lampblack::controls {

namespace {

constexpr OptionBits kPropagate = 0;
constexpr UInt32 kFlashTicks = 8; // how long a button that the keyboard pressed stays down

// A control event while it is built, sent and read again.
class StEvent {
public:
    [[nodiscard]] StEvent(UInt32 inKind, Control& inControl) : fControl(inControl)
    {
        if (CreateEvent(nullptr, kEventClassControl, inKind, GetCurrentEventTime(), kEventAttributeNone,
                        &fEvent) != noErr)
            fEvent = nullptr;
        Add(kEventParamDirectObject, typeControlRef, inControl.Ref());
    }
    ~StEvent()
    {
        if (fEvent)
            ReleaseEvent(fEvent);
    }
    StEvent(const StEvent&) = delete;
    StEvent& operator=(const StEvent&) = delete;

    template <class T>
    StEvent& Add(EventParamName inName, EventParamType inType, const T& inValue)
    {
        if (fEvent)
            SetEventParameter(fEvent, inName, inType, sizeof inValue, &inValue);
        return *this;
    }
    ControlPartCode Part() const
    {
        ControlPartCode part = kControlNoPart;
        GetEventParameter(fEvent, kEventParamControlPart, typeControlPartCode, nullptr, sizeof part, nullptr,
                          &part);
        return part;
    }
    OSStatus Send(OptionBits inOptions)
    {
        return fEvent ? SendEventToEventTargetWithOptions(fEvent, TargetOf(fControl), inOptions)
                      : (OSStatus)memFullErr;
    }
    OSStatus SendToControl() { return Send(kEventTargetDontPropagate); }

private:
    Control& fControl;
    EventRef fEvent = nullptr;
};

// --- What stands behind every target

Point PointOf(EventRef inEvent)
{
    Point point = { 0, 0 };
    GetEventParameter(inEvent, kEventParamMouseLocation, typeQDPoint, nullptr, sizeof point, nullptr, &point);
    return point;
}

UInt32 ModifiersOf(EventRef inEvent)
{
    UInt32 modifiers = 0;
    GetEventParameter(inEvent, kEventParamKeyModifiers, typeUInt32, nullptr, sizeof modifiers, nullptr,
                      &modifiers);
    return modifiers;
}

ControlPartCode PartOf(EventRef inEvent)
{
    ControlPartCode part = kControlNoPart;
    GetEventParameter(inEvent, kEventParamControlPart, typeControlPartCode, nullptr, sizeof part, nullptr,
                      &part);
    return part;
}

void SetPart(EventRef ioEvent, ControlPartCode inPart)
{
    SetEventParameter(ioEvent, kEventParamControlPart, typeControlPartCode, sizeof inPart, &inPart);
}

OSStatus DrawByDefault(Control& inControl, EventRef inEvent)
{
    inControl.kind->Draw(PartOf(inEvent));
    return noErr;
}

OSStatus HitTestByDefault(Control& inControl, EventRef ioEvent)
{
    SetPart(ioEvent, inControl.kind->HitTest(PointOf(ioEvent)));
    return noErr;
}

OSStatus TrackByDefault(Control& inControl, EventRef ioEvent)
{
    TrackInfo info;
    info.where = PointOf(ioEvent);
    info.modifiers = (EventModifiers)ModifiersOf(ioEvent);
    GetEventParameter(ioEvent, kEventParamControlAction, typeControlActionUPP, nullptr, sizeof info.action,
                      nullptr, &info.action);
    GetEventParameter(ioEvent, kEventParamClickCount, typeUInt32, nullptr, sizeof info.clickCount, nullptr,
                      &info.clickCount);
    SetPart(ioEvent, inControl.kind->Track(info));
    return noErr;
}

OSStatus SetFocusPartByDefault(Control& inControl, EventRef ioEvent)
{
    const ControlFocusPart wanted = PartOf(ioEvent);
    const ControlFocusPart taken = inControl.kind->Focus(wanted);
    SetPart(ioEvent, taken);
    return taken == kControlFocusNoPart && wanted != kControlFocusNoPart ? (OSStatus)errCouldntSetFocus
                                                                         : (OSStatus)noErr;
}

OSStatus GetFocusPartByDefault(Control& inControl, EventRef ioEvent)
{
    SetPart(ioEvent,
            inControl.owner->focus == &inControl ? inControl.owner->focusPart : (SInt16)kControlFocusNoPart);
    return noErr;
}

OSStatus SetCursorByDefault(Control& inControl, EventRef inEvent)
{
    return inControl.kind->SetCursor(PointOf(inEvent), (EventModifiers)ModifiersOf(inEvent))
               ? noErr
               : eventNotHandledErr;
}

OSStatus SimulateHitByDefault(Control& inControl, EventRef inEvent)
{
    SimulateHit(inControl, ModifiersOf(inEvent));
    return noErr;
}

struct DefaultHandler {
    UInt32 eventClass;
    UInt32 kind;
    OSStatus (*handle)(Control&, EventRef);
};

constexpr DefaultHandler kDefaults[] = {
    { kEventClassControl, kEventControlDraw, DrawByDefault },
    { kEventClassControl, kEventControlHitTest, HitTestByDefault },
    { kEventClassControl, kEventControlTrack, TrackByDefault },
    { kEventClassControl, kEventControlSetFocusPart, SetFocusPartByDefault },
    { kEventClassControl, kEventControlGetFocusPart, GetFocusPartByDefault },
    { kEventClassControl, kEventControlSetCursor, SetCursorByDefault },
    { kEventClassControl, kEventControlSimulateHit, SimulateHitByDefault },
};

// Keys and commands come only to the control that has the focus.
constexpr DefaultHandler kKeyDefaults[] = {
    { kEventClassKeyboard, kEventRawKeyDown,
      [](Control& inControl, EventRef inEvent) { return inControl.kind->RawKey(inEvent); } },
    { kEventClassKeyboard, kEventRawKeyRepeat,
      [](Control& inControl, EventRef inEvent) { return inControl.kind->RawKey(inEvent); } },
    { kEventClassTextInput, kEventTextInputUnicodeForKeyEvent,
      [](Control& inControl, EventRef inEvent) { return inControl.kind->TextInput(inEvent); } },
    { kEventClassCommand, kEventCommandProcess,
      [](Control& inControl, EventRef inEvent) { return inControl.kind->Command(inEvent); } },
    { kEventClassCommand, kEventCommandUpdateStatus,
      [](Control& inControl, EventRef inEvent) { return inControl.kind->Command(inEvent); } },
};

template <size_t Count>
OSStatus Dispatch(const DefaultHandler (&inHandlers)[Count], EventRef inEvent, void* inData)
{
    Control* control = Find((ControlRef)inData);
    if (!control)
        return eventNotHandledErr;
    StPin pin(control);
    const UInt32 eventClass = GetEventClass(inEvent), kind = GetEventKind(inEvent);
    for (const DefaultHandler& entry : inHandlers)
        if (entry.eventClass == eventClass && entry.kind == kind)
            return entry.handle(*control, inEvent);
    return eventNotHandledErr;
}

OSStatus HandleByDefault(EventHandlerCallRef, EventRef inEvent, void* inData)
{
    return Dispatch(kDefaults, inEvent, inData);
}

OSStatus HandleKeysByDefault(EventHandlerCallRef, EventRef inEvent, void* inData)
{
    return Dispatch(kKeyDefaults, inEvent, inData);
}

template <size_t Count>
void Install(EventTargetRef inTarget, const DefaultHandler (&inHandlers)[Count], EventHandlerProcPtr inProc,
             ControlRef inControl)
{
    EventTypeSpec specs[Count];
    for (size_t i = 0; i < Count; ++i)
        specs[i] = { inHandlers[i].eventClass, inHandlers[i].kind };
    events::InstallDefaultHandler(inTarget, Count, specs, inProc, inControl);
}

// A control's events go on to the container that holds it, and from the outermost one to the window.
EventTargetRef NextTarget(void* inOwner)
{
    Control* control = Find((ControlRef)inOwner);
    if (!control)
        return nullptr;
    for (Control* outer = control->parent; outer; outer = outer->parent)
        if (outer->target)
            return outer->target;
    return GetWindowEventTarget(control->window);
}

UInt32 ClickCountOf(EventRef inEvent)
{
    UInt32 count = 1;
    if (inEvent)
        GetEventParameter(inEvent, kEventParamClickCount, typeUInt32, nullptr, sizeof count, nullptr, &count);
    return count;
}

StEvent& CopyMouse(StEvent& ioEvent, EventRef inMouseDown, Point inLocal)
{
    EventMouseButton button = kEventMouseButtonPrimary;
    if (inMouseDown)
        GetEventParameter(inMouseDown, kEventParamMouseButton, typeMouseButton, nullptr, sizeof button,
                          nullptr, &button);
    return ioEvent.Add(kEventParamMouseLocation, typeQDPoint, inLocal)
        .Add(kEventParamKeyModifiers, typeUInt32, inMouseDown ? ModifiersOf(inMouseDown) : (UInt32)0)
        .Add(kEventParamMouseButton, typeMouseButton, button)
        .Add(kEventParamClickCount, typeUInt32, ClickCountOf(inMouseDown));
}

} // namespace

EventTargetRef TargetOf(Control& ioControl)
{
    if (ioControl.target)
        return ioControl.target;
    ioControl.target = events::NewEventTarget(ioControl.Ref(), NextTarget);
    Install(ioControl.target, kDefaults, HandleByDefault, ioControl.Ref());
    if (ioControl.kind->WantsKeyEvents())
        Install(ioControl.target, kKeyDefaults, HandleKeysByDefault, ioControl.Ref());
    return ioControl.target;
}

void SendDraw(Control& inControl, ControlPartCode inPart)
{
    if (!inControl.target) {
        inControl.kind->Draw(inPart);
        return;
    }
    CGrafPtr port = nullptr;
    GDHandle device = nullptr;
    GetGWorld(&port, &device);
    StEvent(kEventControlDraw, inControl)
        .Add(kEventParamControlPart, typeControlPartCode, inPart)
        .Add(kEventParamGrafPort, typeGrafPtr, port)
        .SendToControl();
}

ControlPartCode SendHitTest(Control& inControl, Point inPoint)
{
    if (!inControl.target)
        return inControl.kind->HitTest(inPoint);
    StEvent event(kEventControlHitTest, inControl);
    event.Add(kEventParamMouseLocation, typeQDPoint, inPoint);
    return event.SendToControl() == noErr ? event.Part() : (SInt16)kControlNoPart;
}

ControlPartCode SendTrack(Control& inControl, const TrackInfo& inInfo)
{
    if (!inControl.target)
        return inControl.kind->Track(inInfo);
    StEvent event(kEventControlTrack, inControl);
    event.Add(kEventParamMouseLocation, typeQDPoint, inInfo.where)
        .Add(kEventParamKeyModifiers, typeUInt32, (UInt32)inInfo.modifiers)
        .Add(kEventParamClickCount, typeUInt32, inInfo.clickCount)
        .Add(kEventParamControlAction, typeControlActionUPP, inInfo.action);
    return event.SendToControl() == noErr ? event.Part() : (SInt16)kControlNoPart;
}

ControlFocusPart SendSetFocusPart(Control& inControl, ControlFocusPart inPart, OSStatus* outStatus)
{
    StEvent event(kEventControlSetFocusPart, inControl);
    event.Add(kEventParamControlPart, typeControlPartCode, inPart);
    *outStatus = event.SendToControl();
    return *outStatus == noErr ? event.Part() : (SInt16)kControlFocusNoPart;
}

void Notify(Control& inControl, UInt32 inEventKind)
{
    if (inControl.target)
        StEvent(inEventKind, inControl).SendToControl();
}

void NotifyDispose(Control& inControl)
{
    Notify(inControl, kEventControlDispose);
}

OSStatus SendClick(Control& inControl, EventRef inMouseDown, Point inLocal)
{
    StEvent event(kEventControlClick, inControl);
    return CopyMouse(event, inMouseDown, inLocal).Send(kPropagate);
}

OSStatus SendContextualClick(Control& inControl, EventRef inMouseDown, Point inLocal)
{
    StEvent event(kEventControlContextualMenuClick, inControl);
    return CopyMouse(event, inMouseDown, inLocal).Send(kPropagate);
}

bool SendSetCursor(Control& inControl, Point inLocal, UInt32 inModifiers)
{
    return StEvent(kEventControlSetCursor, inControl)
               .Add(kEventParamMouseLocation, typeQDPoint, inLocal)
               .Add(kEventParamKeyModifiers, typeUInt32, inModifiers)
               .Send(kPropagate) == noErr;
}

OSStatus SendHit(Control& inControl, ControlPartCode inPart, UInt32 inModifiers)
{
    StPin pin(&inControl);
    const UInt32 commandID = inControl.commandID;
    const OSStatus status = StEvent(kEventControlHit, inControl)
                                .Add(kEventParamControlPart, typeControlPartCode, inPart)
                                .Add(kEventParamKeyModifiers, typeUInt32, inModifiers)
                                .Send(kPropagate);
    if (status != eventNotHandledErr || commandID == 0 || !pin.Alive())
        return status;
    HICommand command = {};
    command.commandID = commandID;
    EventRef event = nullptr;
    if (CreateEvent(nullptr, kEventClassCommand, kEventCommandProcess, GetCurrentEventTime(),
                    kEventAttributeNone, &event) != noErr)
        return status;
    SetEventParameter(event, kEventParamDirectObject, typeHICommand, sizeof command, &command);
    const OSStatus result = SendEventToEventTarget(event, TargetOf(inControl));
    ReleaseEvent(event);
    return result;
}

void SimulateHit(Control& inControl, UInt32 inModifiers)
{
    StPin pin(&inControl);
    const ControlPartCode part = inControl.kind->DefaultPart();
    const ControlPartCode before = inControl.hilite;
    inControl.hilite = part;
    RedrawErased(inControl);
    UInt32 ended = 0;
    Delay(kFlashTicks, &ended);
    if (!pin.Alive())
        return;
    inControl.hilite = before;
    RedrawErased(inControl);
    inControl.kind->WasHit(part);
    SendHit(inControl, part, inModifiers);
}

} // namespace lampblack::controls
