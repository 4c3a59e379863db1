// The classic Event Manager on top of the queue: records, WaitNextEvent and its kin.
#include "Host.h"
#include "events/Input.h"
#include "events/Loop.h"
#include "events/Routing.h"

#include <Carbon/CarbonEvents.h>

using namespace lampblack;
using namespace lampblack::events;

namespace {

UInt32 TicksOf(EventTime inTime)
{
    return (UInt32)(SInt64)(inTime * 60);
}

struct Counterpart {
    OSType eventClass;
    UInt32 kind;
    EventKind what;
};

constexpr Counterpart kCounterparts[] = {
    { kEventClassMouse, kEventMouseDown, mouseDown },
    { kEventClassMouse, kEventMouseUp, mouseUp },
    { kEventClassKeyboard, kEventRawKeyDown, keyDown },
    { kEventClassKeyboard, kEventRawKeyRepeat, autoKey },
    { kEventClassKeyboard, kEventRawKeyUp, keyUp },
    { kEventClassWindow, kEventWindowUpdate, updateEvt },
    { kEventClassWindow, kEventWindowActivated, activateEvt },
    { kEventClassWindow, kEventWindowDeactivated, activateEvt },
    { kEventClassApplication, kEventAppActivated, osEvt },
    { kEventClassApplication, kEventAppDeactivated, osEvt },
};

EventKind WhatOf(const Event& inEvent)
{
    for (const Counterpart& counterpart : kCounterparts)
        if (counterpart.eventClass == inEvent.Class() && counterpart.kind == inEvent.Kind())
            return counterpart.what;
    return nullEvent;
}

EventMask MaskOf(EventKind inWhat)
{
    return inWhat == nullEvent ? 0 : (EventMask)(1u << inWhat);
}

// The low byte is the character, the next one the key.
unsigned long KeyMessage(const Event& inEvent)
{
    const UInt32 key = Get(inEvent, kEventParamKeyCode, typeUInt32, UInt32{ 0 });
    const UInt8 character = (UInt8)Get(inEvent, kEventParamKeyMacCharCodes, typeChar, char{ 0 });
    return (key << 8 & keyCodeMask) | character;
}

unsigned long MessageOf(const Event& inEvent, EventKind inWhat)
{
    switch (inWhat) {
    case keyDown:
    case keyUp:
    case autoKey: return KeyMessage(inEvent);
    case updateEvt:
    case activateEvt: return (unsigned long)Get(inEvent, kEventParamDirectObject, typeWindowRef, WindowRef{});
    case osEvt:
        return (unsigned long)suspendResumeMessage << 24 |
               (inEvent.Kind() == kEventAppActivated ? resumeFlag | convertClipboardFlag : 0);
    default: return 0;
    }
}

EventModifiers ClassicModifiers(UInt32 inModifiers, UInt32 inButtons)
{
    return (EventModifiers)((inModifiers & 0xFF00) | (inButtons & 1 ? 0 : btnState));
}

void FillNull(EventRecord* outEvent)
{
    const host::Table& machine = host::Machine();
    *outEvent = {};
    outEvent->what = nullEvent;
    outEvent->when = TickCount();
    outEvent->where = machine.mouse();
    outEvent->modifiers = ClassicModifiers(machine.modifiers(), machine.buttons());
}

void Fill(const Event& inEvent, EventKind inWhat, EventRecord* outEvent)
{
    FillNull(outEvent);
    const host::Table& machine = host::Machine();
    outEvent->what = inWhat;
    outEvent->message = MessageOf(inEvent, inWhat);
    outEvent->when = TicksOf(inEvent.time);
    outEvent->where = Get(inEvent, kEventParamMouseLocation, typeQDPoint, outEvent->where);
    outEvent->modifiers =
        ClassicModifiers(Get(inEvent, kEventParamKeyModifiers, typeUInt32, machine.modifiers()),
                         Get(inEvent, kEventParamMouseChord, typeUInt32, machine.buttons()));
    if (inWhat == activateEvt && inEvent.Kind() == kEventWindowActivated)
        outEvent->modifiers |= activeFlag;
}

// Events without a counterpart are for their handlers; of the others, those that are asked for.
bool IsWanted(const Event& inEvent, const void* inMask)
{
    const EventKind what = WhatOf(inEvent);
    return what == nullEvent || (MaskOf(what) & *static_cast<const EventMask*>(inMask));
}

bool IsAskedFor(const Event& inEvent, const void* inMask)
{
    return MaskOf(WhatOf(inEvent)) & *static_cast<const EventMask*>(inMask);
}

bool HasLeft(RgnHandle inMouseRegion)
{
    const auto isInside = EventRouting().pointInRegion;
    return inMouseRegion && isInside && !isInside(host::Machine().mouse(), inMouseRegion);
}

bool FillMouseMoved(EventRecord* outEvent)
{
    FillNull(outEvent);
    outEvent->what = osEvt;
    outEvent->message = (unsigned long)mouseMovedMessage << 24;
    return true;
}

// Sends an event to its handlers; true when it is the caller's, as a record.
bool Deliver(Event* inEvent, EventRecord* outEvent)
{
    const StRetained alive(inEvent);
    if (Dispatch(inEvent) != eventNotHandledErr)
        return false;
    const EventKind what = WhatOf(*inEvent);
    if (what != nullEvent)
        Fill(*inEvent, what, outEvent);
    return what != nullEvent;
}

} // namespace

Boolean WaitNextEvent(EventMask inEventMask, EventRecord* outEvent, UInt32 inSleep, RgnHandle inMouseRegion)
{
    if (!outEvent)
        return false;
    const double deadline = DeadlineAfter(inSleep / 60.0);
    Event* event = nullptr;
    while (Await({ IsWanted, &inEventMask }, deadline, &event) == noErr) {
        const bool isMove = event->Class() == kEventClassMouse && event->Kind() == kEventMouseMoved;
        Take(event);
        if (Deliver(event, outEvent))
            return true;
        if (isMove && (inEventMask & osMask) && HasLeft(inMouseRegion))
            return FillMouseMoved(outEvent);
    }
    FillNull(outEvent);
    return false;
}

Boolean GetNextEvent(EventMask inEventMask, EventRecord* outEvent)
{
    return WaitNextEvent(inEventMask, outEvent, 0, nullptr);
}

Boolean EventAvail(EventMask inEventMask, EventRecord* outEvent)
{
    if (!outEvent)
        return false;
    TakeAllInput();
    const Event* event = gQueue.First({ IsAskedFor, &inEventMask });
    if (event)
        Fill(*event, WhatOf(*event), outEvent);
    else
        FillNull(outEvent);
    return event != nullptr;
}

void FlushEvents(EventMask inWhichMask, EventMask inStopMask)
{
    TakeAllInput();
    gQueue.ForEach([=](Event* event) {
        const EventMask mask = MaskOf(WhatOf(*event));
        if (mask & inStopMask)
            return true;
        if (mask & inWhichMask) {
            gQueue.Remove(event);
            Release(event);
        }
        return false;
    });
}

Boolean ConvertEventRefToEventRecord(EventRef inEvent, EventRecord* outEvent)
{
    const Event* event = FindEvent(inEvent);
    if (!outEvent)
        return false;
    const EventKind what = event ? WhatOf(*event) : (EventKind)nullEvent;
    if (what == nullEvent)
        FillNull(outEvent);
    else
        Fill(*event, what, outEvent);
    return what != nullEvent;
}

static bool IsUserCancel(const Event& inEvent, const void*)
{
    if (inEvent.Class() != kEventClassKeyboard ||
        (inEvent.Kind() != kEventRawKeyDown && inEvent.Kind() != kEventRawKeyRepeat))
        return false;
    const UInt32 key = Get(inEvent, kEventParamKeyCode, typeUInt32, UInt32{ 0 });
    const UInt32 modifiers = Get(inEvent, kEventParamKeyModifiers, typeUInt32, UInt32{ 0 });
    const char character = Get(inEvent, kEventParamKeyMacCharCodes, typeChar, char{ 0 });
    return key == kVK_Escape || ((modifiers & cmdKey) && character == '.');
}

Boolean IsUserCancelEventRef(EventRef inEvent)
{
    const Event* event = FindEvent(inEvent);
    return event && IsUserCancel(*event, nullptr);
}

// As published, the event that is found goes: the program acts on it now.
Boolean CheckEventQueueForUserCancel(void)
{
    TakeAllInput();
    Event* event = gQueue.First({ IsUserCancel, nullptr });
    if (!event)
        return false;
    gQueue.Remove(event);
    Release(event);
    return true;
}
