// Following the mouse while a button is down.
#include "events/MouseTracking.h"
#include "Host.h"
#include "events/Input.h"
#include "events/Loop.h"

namespace lampblack::events {

namespace {

constexpr EventTypeSpec kTracked[] = {
    { kEventClassMouse, kEventMouseDown },
    { kEventClassMouse, kEventMouseUp },
    { kEventClassMouse, kEventMouseMoved },
    { kEventClassMouse, kEventMouseDragged },
    { kEventClassKeyboard, kEventRawKeyModifiersChanged },
};
constexpr TypeList kTrackedList = { GetEventTypeCount(kTracked), kTracked };

struct Tracked {
    OSStatus status = noErr;
    Point where = { 0, 0 };
    UInt32 modifiers = 0;
    MouseTrackingResult result = kMouseTrackingMouseUp;
};

Tracked FromMachine(OSStatus inStatus, MouseTrackingResult inResult)
{
    return { inStatus, host::Machine().mouse(), host::Machine().modifiers(), inResult };
}

MouseTrackingResult ResultOf(const Event& inEvent)
{
    if (inEvent.Class() == kEventClassKeyboard)
        return kMouseTrackingKeyModifiersChanged;
    switch (inEvent.Kind()) {
    case kEventMouseDown: return kMouseTrackingMouseDown;
    case kEventMouseUp: return kMouseTrackingMouseUp;
    case kEventMouseDragged: return kMouseTrackingMouseDragged;
    default: return kMouseTrackingMouseMoved;
    }
}

Tracked Track(OptionBits inOptions, double inDeadline)
{
    // With the button up, and nothing in the queue to tell when it was released, nobody will ever tell.
    while (!host::Machine().buttons() && !gQueue.First(MatchTypes(kTrackedList)))
        if (!TakeInput())
            return FromMachine(noErr, kMouseTrackingMouseUp);
    Event* event = nullptr;
    const OSStatus status = Await(MatchTypes(kTrackedList), inDeadline, &event);
    if (status)
        return FromMachine(status, status == eventLoopTimedOutErr ? kMouseTrackingTimedOut
                                                                  : kMouseTrackingUserCancelled);
    Tracked tracked = FromMachine(noErr, ResultOf(*event));
    tracked.where = Get(*event, kEventParamMouseLocation, typeQDPoint, tracked.where);
    tracked.modifiers = Get(*event, kEventParamKeyModifiers, typeUInt32, tracked.modifiers);
    const bool stays =
        tracked.result == kMouseTrackingMouseUp && (inOptions & kTrackMouseLocationOptionDontConsumeMouseUp);
    if (!stays) {
        Take(event);
        Release(event);
    }
    return tracked;
}

} // namespace

OSStatus TrackMouseGlobal(OptionBits inOptions, EventTimeout inTimeout, Point* outGlobal,
                          UInt32* outModifiers, MouseTrackingResult* outResult)
{
    const Tracked tracked = Track(inOptions, DeadlineAfter(inTimeout));
    if (outGlobal)
        *outGlobal = tracked.where;
    if (outModifiers)
        *outModifiers = tracked.modifiers;
    if (outResult)
        *outResult = tracked.result;
    return tracked.status;
}

OSStatus TrackMouseArea(bool (*inInside)(Point global, void* context), void* inContext, bool* ioWasInside,
                        MouseTrackingResult* outResult)
{
    if (!inInside || !ioWasInside || !outResult)
        return paramErr;
    Tracked tracked = FromMachine(noErr, kMouseTrackingMouseMoved);
    while (true) {
        const bool inside = inInside(tracked.where, inContext);
        const bool crossed = inside != *ioWasInside;
        *ioWasInside = inside;
        const bool moved =
            tracked.result == kMouseTrackingMouseMoved || tracked.result == kMouseTrackingMouseDragged;
        *outResult = tracked.result;
        if (crossed && moved)
            *outResult = inside ? kMouseTrackingMouseEntered : kMouseTrackingMouseExited;
        if (!moved || crossed || tracked.status)
            return tracked.status;
        tracked = Track(kNilOptions, host::kForever);
    }
}

} // namespace lampblack::events
