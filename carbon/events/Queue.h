// The main queue: one list a priority, first in first out within each.
#ifndef LAMPBLACK_EVENTS_QUEUE_H
#define LAMPBLACK_EVENTS_QUEUE_H

#include "events/EventRecord.h"

#include <vector>

namespace lampblack::events {

// Which events somebody waits for.
struct Matcher {
    bool (*matches)(const Event&, const void* data) = nullptr; // null: every event
    const void* data = nullptr;

    bool operator()(const Event& inEvent) const { return !matches || matches(inEvent, data); }
};

struct TypeList {
    ItemCount count;
    const EventTypeSpec* types;
};

// Matches the types of a list, which must outlive the matcher; an empty list matches everything.
bool IsOfTypes(const Event& inEvent, const void* inTypeList);
inline Matcher MatchTypes(const TypeList& inList)
{
    return inList.count ? Matcher{ IsOfTypes, &inList } : Matcher{};
}

class Queue {
public:
    // Takes a reference.
    void Post(Event* inEvent, EventPriority inPriority)
    {
        QueueLink* end = &fLists[inPriority];
        QueueLink* last = end->previous;
        inEvent->next = end;
        last->next = end->previous = inEvent;
        inEvent->previous = last;
        ++inEvent->retains;
    }
    // The queue's reference goes to the caller.
    static void Remove(Event* inEvent)
    {
        inEvent->previous->next = inEvent->next;
        inEvent->next->previous = inEvent->previous;
        inEvent->next = nullptr;
    }
    // Null when the queue is empty.
    Event* First() const
    {
        for (int priority = kEventPriorityHigh; priority >= kEventPriorityLow; --priority)
            if (fLists[priority].next != &fLists[priority])
                return &static_cast<Event&>(*fLists[priority].next);
        return nullptr;
    }
    Event* First(const Matcher& inMatcher) const
    {
        return inMatcher.matches ? FirstMatching(inMatcher) : First();
    }
    void Flush(const Matcher& inMatcher);
    ItemCount Count() const;

    // Visits a copy, so that the visitor may post and remove. inVisit(Event*) answers true to stop.
    template <class Visitor>
    void ForEach(Visitor&& inVisit) const
    {
        for (EventRef reference : All()) {
            Event* event = FindEvent(reference);
            if (event && event->IsQueued() && inVisit(event))
                return;
        }
    }

private:
    Event* FirstMatching(const Matcher& inMatcher) const;
    std::vector<EventRef> All() const;

    // Rings, in which the list itself is the link before the first event and behind the last.
    QueueLink fLists[kEventPriorityHigh + 1] = { { &fLists[0], &fLists[0] },
                                                 { &fLists[1], &fLists[1] },
                                                 { &fLists[2], &fLists[2] } };
};

extern constinit Queue gQueue;

} // namespace lampblack::events

#endif
