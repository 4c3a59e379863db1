// The main queue: one list a priority, first in first out within each.
#ifndef LAMPBLACK_EVENTS_QUEUE_H
#define LAMPBLACK_EVENTS_QUEUE_H

#include "events/EventRecord.h"

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
Matcher MatchTypes(const TypeList& inList);

class Queue {
public:
    void Post(Event* inEvent, EventPriority inPriority); // takes a reference
    void Remove(Event* inEvent);                         // the queue's reference goes to the caller
    Event* First(const Matcher& inMatcher) const;
    void Flush(const Matcher& inMatcher);
    ItemCount Count() const { return fCount; }
    bool IsEmpty() const { return fCount == 0; }

    // Visits a copy, so that the visitor may post and remove. inVisit(Event*) answers true to stop.
    template <class Visitor>
    void ForEach(Visitor&& inVisit) const
    {
        std::vector<EventRef> all;
        all.reserve(fCount);
        for (int priority = kEventPriorityHigh; priority >= kEventPriorityLow; --priority)
            for (const Event* event = fLists[priority].first; event; event = event->next)
                all.push_back(ReferenceTo(event));
        for (EventRef reference : all) {
            Event* event = FindEvent(reference);
            if (event && event->isQueued && inVisit(event))
                return;
        }
    }

private:
    struct List {
        Event* first = nullptr;
        Event* last = nullptr;
    };
    List fLists[kEventPriorityHigh + 1];
    ItemCount fCount = 0;
};

extern Queue gQueue;

} // namespace lampblack::events

#endif
