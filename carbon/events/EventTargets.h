// Targets for the floors whose objects receive events.
#ifndef LAMPBLACK_EVENTS_EVENTTARGETS_H
#define LAMPBLACK_EVENTS_EVENTTARGETS_H

#include <Carbon/CarbonEventsCore.h>

namespace lampblack::events {

// A target for the owner's events. `next` names who hears an event that this target did not handle, asked
// each time; null, or an answer of null, ends the way.
EventTargetRef NewEventTarget(void* inOwner, EventTargetRef (*inNext)(void* inOwner));

// Ends the target and its handlers, also from inside one of them: an event on its way goes no further here,
// and on to whoever was next when the handler was called.
void DisposeEventTarget(EventTargetRef inTarget);

// Whose target it is; null for one that is not alive.
void* EventTargetOwner(EventTargetRef inTarget);

// A handler that runs after every handler that an application installed, whenever that was; of several
// defaults the newest runs first. A procedure may be a default twice with different data.
OSStatus InstallDefaultHandler(EventTargetRef inTarget, ItemCount inCount, const EventTypeSpec* inList,
                               EventHandlerProcPtr inProc, void* inUserData);

} // namespace lampblack::events

#endif
