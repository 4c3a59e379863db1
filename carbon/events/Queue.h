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
        List& list = fLists[inPriority];
        inEvent->next = nullptr;
        inEvent->previous = list.last;
        (list.last ? list.last->next : list.first) = inEvent;
        list.last = inEvent;
        inEvent->priority = (UInt8)inPriority;
        inEvent->isQueued = true;
        ++inEvent->retains;
        ++fCount;
    }
    // The queue's reference goes to the caller.
    void Remove(Event* inEvent)
    {
        List& list = fLists[inEvent->priority];
        (inEvent->previous ? inEvent->previous->next : list.first) = inEvent->next;
        (inEvent->next ? inEvent->next->previous : list.last) = inEvent->previous;
        inEvent->isQueued = false;
        --fCount;
    }
    Event* First(const Matcher& inMatcher) const
    {
        if (!fCount)
            return nullptr;
        return inMatcher.matches ? FirstMatching(inMatcher) : FirstOfAll();
    }
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

    Event* FirstMatching(const Matcher& inMatcher) const;
    Event* FirstOfAll() const
    {
        for (int priority = kEventPriorityHigh; priority > kEventPriorityLow; --priority)
            if (Event* event = fLists[priority].first)
                return event;
        return fLists[kEventPriorityLow].first;
    }

    List fLists[kEventPriorityHigh + 1];
    ItemCount fCount = 0;
};

extern Queue gQueue;

} // namespace lampblack::events

#endif
