// Making and sending the events of windows.
#include "WindowEvents.h"

#include "WindowRecord.h"

#include <Host.h>

namespace lampblack::windows {

StEvent::StEvent(OSType inClass, UInt32 inKind)
{
    CreateEvent(nullptr, inClass, inKind, GetCurrentEventTime(), kEventAttributeNone, &fEvent);
}

StEvent::~StEvent()
{
    if (fEvent)
        ReleaseEvent(fEvent);
}

OSStatus StEvent::SendTo(EventTargetRef inTarget)
{
    return fEvent && inTarget ? SendEventToEventTarget(fEvent, inTarget) : (OSStatus)eventNotHandledErr;
}

Point EventLocation(EventRef inEvent)
{
    Point where = { 0, 0 };
    if (!GetParameter(inEvent, kEventParamMouseLocation, typeQDPoint, &where))
        where = host::Machine().mouse();
    return where;
}

UInt32 EventModifiers(EventRef inEvent)
{
    UInt32 modifiers = 0;
    if (!GetParameter(inEvent, kEventParamKeyModifiers, typeUInt32, &modifiers))
        modifiers = host::Machine().modifiers();
    return modifiers;
}

OSStatus SendWindowEvent(WindowRef inWindow, UInt32 inKind)
{
    WindowRecord* window = Find(inWindow);
    if (!window)
        return eventNotHandledErr;
    StEvent event(kEventClassWindow, inKind);
    event.Put(kEventParamDirectObject, typeWindowRef, inWindow);
    return event.SendTo(window->target);
}

OSStatus SendMouseActionEvent(WindowRef inWindow, UInt32 inKind, EventRef inMouseEvent)
{
    WindowRecord* window = Find(inWindow);
    if (!window)
        return eventNotHandledErr;
    StEvent event(kEventClassWindow, inKind);
    event.Put(kEventParamDirectObject, typeWindowRef, inWindow)
        .Put(kEventParamMouseLocation, typeQDPoint, EventLocation(inMouseEvent))
        .Put(kEventParamKeyModifiers, typeUInt32, EventModifiers(inMouseEvent));
    UInt32 count = 1;
    if (GetParameter(inMouseEvent, kEventParamClickCount, typeUInt32, &count))
        event.Put(kEventParamClickCount, typeUInt32, count);
    EventMouseButton button = kEventMouseButtonPrimary;
    if (GetParameter(inMouseEvent, kEventParamMouseButton, typeMouseButton, &button))
        event.Put(kEventParamMouseButton, typeMouseButton, button);
    WindowPartCode part = inContent;
    if (GetParameter(inMouseEvent, kEventParamWindowPartCode, typeWindowPartCode, &part))
        event.Put(kEventParamWindowPartCode, typeWindowPartCode, part);
    return event.SendTo(window->target);
}

} // namespace lampblack::windows
