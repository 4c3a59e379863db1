// Where an event goes that was taken from the queue, and what the application does with commands by default.
#include "events/EventTargets.h"
#include "events/Routing.h"
#include "events/Runs.h"
#include "events/TargetRecord.h"

#include <Carbon/CarbonEvents.h>

namespace lampblack::events {

Routing& EventRouting()
{
    static Routing routing;
    return routing;
}

namespace {

EventRef gCurrentEvent = nullptr;

EventTargetRef OrApplication(EventTargetRef inTarget)
{
    return gTargets.Find(inTarget) ? inTarget : GetApplicationEventTarget();
}

EventTargetRef FocusFor(EventRef inEvent)
{
    const auto ask = EventRouting().keyboardTarget;
    return OrApplication(ask ? ask(inEvent) : nullptr);
}

EventTargetRef MouseTargetFor(EventRef inEvent)
{
    const auto ask = EventRouting().mouseTarget;
    return OrApplication(ask ? ask(inEvent) : nullptr);
}

// The target of the object that an event is about.
template <class Object>
EventTargetRef TargetOf(EventTargetRef (*inAsk)(Object), const Event& inEvent, EventParamType inType)
{
    const Object object = Get(inEvent, kEventParamDirectObject, inType, Object{});
    return OrApplication(inAsk && object ? inAsk(object) : nullptr);
}

EventTargetRef MenuTargetFor(EventRef inEvent, const Event& inRecord)
{
    const auto ask = EventRouting().menuTarget;
    const MenuRef menu = Get(inRecord, kEventParamDirectObject, typeMenuRef, MenuRef{});
    const EventTargetRef target = ask && menu ? ask(menu) : nullptr;
    return gTargets.Find(target) ? target : FocusFor(inEvent);
}

EventTargetRef TargetByClass(EventRef inEvent, const Event& inRecord)
{
    switch (inRecord.Class()) {
    case kEventClassMouse: return MouseTargetFor(inEvent);
    case kEventClassKeyboard:
    case kEventClassTextInput:
    case kEventClassCommand: return FocusFor(inEvent);
    case kEventClassMenu: return MenuTargetFor(inEvent, inRecord);
    case kEventClassWindow: return TargetOf(EventRouting().windowTarget, inRecord, typeWindowRef);
    case kEventClassControl: return TargetOf(EventRouting().controlTarget, inRecord, typeControlRef);
    default: return GetApplicationEventTarget();
    }
}

bool IsTypingKey(const Event& inEvent)
{
    return inEvent.Class() == kEventClassKeyboard &&
           (inEvent.Kind() == kEventRawKeyDown || inEvent.Kind() == kEventRawKeyRepeat);
}

// A key that nobody took as a key is offered as the text that it types.
OSStatus SendTextOf(EventRef inKey, const Event& inRecord, EventTargetRef inTarget)
{
    const Parameter* text = FindParameter(inRecord, kEventParamKeyUnicodes);
    if (!text || !text->size)
        return eventNotHandledErr;
    Event* event = NewEvent(kEventClassTextInput, kEventTextInputUnicodeForKeyEvent, inRecord.time,
                            kEventAttributeUserEvent);
    if (!event)
        return eventNotHandledErr;
    SetParameter(*event, kEventParamTextInputSendText, typeUnicodeText, text->size, text->Data());
    Set(*event, kEventParamTextInputSendKeyboardEvent, typeEventRef, inKey);
    Set(*event, kEventParamKeyModifiers, typeUInt32,
        Get(inRecord, kEventParamKeyModifiers, typeUInt32, UInt32{ 0 }));
    const StOwned owned(event);
    return Send(event, OrApplication(inTarget), kNilOptions);
}

OSStatus SendKey(EventRef inEvent, Event& ioRecord, EventTargetRef inTarget)
{
    const OSStatus status = Send(&ioRecord, inTarget, kNilOptions);
    return status == eventNotHandledErr ? SendTextOf(inEvent, ioRecord, inTarget) : status;
}

class StCurrentEvent {
public:
    [[nodiscard]] explicit StCurrentEvent(EventRef inEvent, const Event& inRecord) : fOuter(gCurrentEvent)
    {
        if (inRecord.attributes & kEventAttributeUserEvent)
            gCurrentEvent = inEvent;
    }
    ~StCurrentEvent() { gCurrentEvent = fOuter; }
    StCurrentEvent(const StCurrentEvent&) = delete;
    StCurrentEvent& operator=(const StCurrentEvent&) = delete;

private:
    EventRef fOuter;
};

OSStatus DispatchByRoute(EventHandlerCallRef, EventRef inEvent, void*)
{
    Event& record = *FindEvent(inEvent);
    const StCurrentEvent current(inEvent, record);
    const EventTargetRef posted = Get(record, kEventParamPostTarget, typeEventTargetRef, EventTargetRef{});
    if (gTargets.Find(posted))
        return Send(&record, posted, kNilOptions);
    if (!IsTypingKey(record))
        return Send(&record, TargetByClass(inEvent, record), kNilOptions);
    if (EventRouting().filterKey && EventRouting().filterKey(inEvent))
        return noErr;
    return SendKey(inEvent, record, FocusFor(inEvent));
}

Target* MakeTarget()
{
    return gTargets.Find(NewEventTarget(nullptr, nullptr));
}

Target* MakeDispatcher()
{
    Target* target = MakeTarget();
    target->catchAll = DispatchByRoute;
    return target;
}

// A loop that takes events with WaitNextEvent is no run of its own.
bool IsApplicationDispatching()
{
    for (const LoopRun* run = InnermostRun(); run; run = run->outer)
        if (run->kind != LoopRun::Kind::Current)
            return true;
    return false;
}

// An application around WaitNextEvent ends its loop itself, when its own Quit item is chosen. Every one takes
// Command-Q to MenuKey, which finds that item, so it hears of the desktop's wish as this key.
void PostQuitKey()
{
    Event* key =
        NewEvent(kEventClassKeyboard, kEventRawKeyDown, GetCurrentEventTime(), kEventAttributeUserEvent);
    if (!key)
        return;
    Set(*key, kEventParamKeyCode, typeUInt32, UInt32{ kVK_ANSI_Q });
    Set(*key, kEventParamKeyMacCharCodes, typeChar, 'q');
    Set(*key, kEventParamKeyModifiers, typeUInt32, UInt32{ cmdKey });
    PostEventToQueue(GetMainEventQueue(), ReferenceTo(key), kEventPriorityStandard);
    Release(key);
}

OSStatus DoCommand(EventHandlerCallRef, EventRef inEvent, void*)
{
    HICommand command = {};
    GetEventParameter(inEvent, kEventParamDirectObject, typeHICommand, nullptr, sizeof command, nullptr,
                      &command);
    if (command.commandID != kHICommandQuit)
        return eventNotHandledErr;
    if (IsApplicationDispatching())
        QuitApplicationEventLoop();
    else if (command.attributes & kHICommandFromMenu)
        return eventNotHandledErr; // what MenuSelect and MenuKey answer tells
    else
        PostQuitKey();
    return noErr;
}

Target* MakeApplication()
{
    Target* target = MakeTarget();
    const EventTypeSpec command = { kEventClassCommand, kEventCommandProcess };
    InstallDefaultHandler(gTargets.ReferenceTo(target), 1, &command, DoCommand, nullptr);
    return target;
}

} // namespace

} // namespace lampblack::events

using namespace lampblack::events;

EventTargetRef GetApplicationEventTarget(void)
{
    static const EventTargetRef target = gTargets.ReferenceTo(MakeApplication());
    return target;
}

EventTargetRef GetEventDispatcherTarget(void)
{
    static const EventTargetRef target = gTargets.ReferenceTo(MakeDispatcher());
    return target;
}

EventTargetRef GetUserFocusEventTarget(void)
{
    return FocusFor(nullptr);
}

EventRef GetCurrentEvent(void)
{
    return gCurrentEvent;
}

OSStatus ProcessHICommand(const HICommand* inCommand)
{
    if (!inCommand)
        return paramErr;
    Event* event =
        NewEvent(kEventClassCommand, kEventCommandProcess, GetCurrentEventTime(), kEventAttributeNone);
    if (!event)
        return memFullErr;
    Set(*event, kEventParamDirectObject, typeHICommand, *inCommand);
    Set(*event, kEventParamKeyModifiers, typeUInt32, GetCurrentEventKeyModifiers());
    const auto ask = EventRouting().menuTarget;
    const bool isFromMenu = (inCommand->attributes & kHICommandFromMenu) && inCommand->menu.menuRef;
    const EventTargetRef menu = ask && isFromMenu ? ask(inCommand->menu.menuRef) : nullptr;
    const StOwned owned(event);
    return Send(event, gTargets.Find(menu) ? menu : GetUserFocusEventTarget(), kNilOptions);
}
