// The queue, and the published calls on it.
#include "events/Queue.h"
#include "events/Input.h"
#include "events/Loop.h"

namespace lampblack::events {

constinit Queue gQueue;

bool IsOfTypes(const Event& inEvent, const void* inTypeList)
{
    const TypeList& list = *static_cast<const TypeList*>(inTypeList);
    for (ItemCount i = 0; i < list.count; ++i)
        if (TypeKey(list.types[i].eventClass, list.types[i].eventKind) == inEvent.type)
            return true;
    return false;
}

Event* Queue::FirstMatching(const Matcher& inMatcher) const
{
    for (int priority = kEventPriorityHigh; priority >= kEventPriorityLow; --priority)
        for (QueueLink* link = fLists[priority].next; link != &fLists[priority]; link = link->next)
            if (inMatcher(*static_cast<Event*>(link)))
                return static_cast<Event*>(link);
    return nullptr;
}

std::vector<EventRef> Queue::All() const
{
    std::vector<EventRef> all;
    for (int priority = kEventPriorityHigh; priority >= kEventPriorityLow; --priority)
        for (const QueueLink* link = fLists[priority].next; link != &fLists[priority]; link = link->next)
            all.push_back(ReferenceTo(static_cast<const Event*>(link)));
    return all;
}

ItemCount Queue::Count() const
{
    ItemCount count = 0;
    for (const QueueLink& list : fLists)
        for (const QueueLink* link = list.next; link != &list; link = link->next)
            ++count;
    return count;
}

void Queue::Flush(const Matcher& inMatcher)
{
    while (Event* event = First(inMatcher)) {
        Remove(event);
        Release(event);
    }
}

static bool IsMainQueue(EventQueueRef inQueue)
{
    return inQueue == reinterpret_cast<EventQueueRef>(&gQueue);
}

} // namespace lampblack::events

using namespace lampblack::events;

EventQueueRef GetMainEventQueue(void)
{
    return reinterpret_cast<EventQueueRef>(&gQueue);
}

EventQueueRef GetCurrentEventQueue(void)
{
    return GetMainEventQueue();
}

OSStatus PostEventToQueue(EventQueueRef inQueue, EventRef inEvent, EventPriority inPriority)
{
    Event* event = IsMainQueue(inQueue) ? FindEvent(inEvent) : nullptr;
    if (!event || inPriority > kEventPriorityHigh)
        return paramErr;
    if (event->IsQueued())
        return eventAlreadyPostedErr;
    gQueue.Post(event, inPriority);
    WakeLoop();
    return noErr;
}

OSStatus RemoveEventFromQueue(EventQueueRef inQueue, EventRef inEvent)
{
    Event* event = FindEvent(inEvent);
    if (!event || !IsMainQueue(inQueue))
        return paramErr;
    if (!event->IsQueued())
        return eventNotInQueueErr;
    gQueue.Remove(event);
    Release(event);
    return noErr;
}

OSStatus FlushEventQueue(EventQueueRef inQueue)
{
    if (!IsMainQueue(inQueue))
        return paramErr;
    TakeAllInput();
    gQueue.Flush({});
    return noErr;
}

OSStatus FlushEventsMatchingListFromQueue(EventQueueRef inQueue, ItemCount inNumTypes,
                                          const EventTypeSpec* inList)
{
    if (!IsMainQueue(inQueue) || !inNumTypes || !inList)
        return paramErr;
    TakeAllInput();
    const TypeList list = { inNumTypes, inList };
    gQueue.Flush(MatchTypes(list));
    return noErr;
}

OSStatus FlushSpecificEventsFromQueue(EventQueueRef inQueue, EventComparatorUPP inComparator,
                                      void* inCompareData)
{
    if (!IsMainQueue(inQueue) || !inComparator)
        return paramErr;
    TakeAllInput();
    gQueue.ForEach([=](Event* event) {
        const StRetained alive(event);
        if (inComparator(ReferenceTo(event), inCompareData) && event->IsQueued()) {
            gQueue.Remove(event);
            Release(event);
        }
        return false;
    });
    return noErr;
}

EventRef FindSpecificEventInQueue(EventQueueRef inQueue, EventComparatorUPP inComparator, void* inCompareData)
{
    if (!IsMainQueue(inQueue) || !inComparator)
        return nullptr;
    TakeAllInput();
    EventRef found = nullptr;
    gQueue.ForEach([&](Event* event) {
        const StRetained alive(event);
        if (inComparator(ReferenceTo(event), inCompareData) && event->IsQueued())
            found = ReferenceTo(event);
        return found != nullptr;
    });
    return found;
}

ItemCount GetNumEventsInQueue(EventQueueRef inQueue)
{
    if (!IsMainQueue(inQueue))
        return 0;
    TakeAllInput();
    return gQueue.Count();
}

Boolean IsEventInQueue(EventQueueRef inQueue, EventRef inEvent)
{
    const Event* event = FindEvent(inEvent);
    return event && IsMainQueue(inQueue) && event->IsQueued();
}

EventRef AcquireFirstMatchingEventInQueue(EventQueueRef inQueue, ItemCount inNumTypes,
                                          const EventTypeSpec* inList, OptionBits)
{
    if (!IsMainQueue(inQueue) || (inNumTypes && !inList))
        return nullptr;
    const TypeList list = { inNumTypes, inList };
    Event* event = gQueue.First(MatchTypes(list));
    while (!event && TakeInput())
        event = gQueue.First(MatchTypes(list));
    if (!event)
        return nullptr;
    gQueue.Remove(event);
    NoteTaken(*event);
    return ReferenceTo(event);
}

EventComparatorUPP NewEventComparatorUPP(EventComparatorProcPtr inProc)
{
    return inProc;
}

void DisposeEventComparatorUPP(EventComparatorUPP) {}

Boolean InvokeEventComparatorUPP(EventRef inEvent, void* inCompareData, EventComparatorUPP inUPP)
{
    return inUPP && inUPP(inEvent, inCompareData);
}
