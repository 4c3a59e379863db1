// The record behind an EventRef: what the event is, and its parameters, which lie within the record as long
// as they fit.
#ifndef LAMPBLACK_EVENTS_EVENTRECORD_H
#define LAMPBLACK_EVENTS_EVENTRECORD_H

#include "events/SlotPool.h"

#include <Carbon/CarbonEventsCore.h>

#include <memory>
#include <vector>

namespace lampblack::events {

struct Parameter {
    EventParamName name;
    EventParamType type;
    UInt16 size;
    UInt16 offset; // into the record's data
};

// A parameter that found no room within the record.
struct LargeParameter {
    EventParamName name;
    EventParamType type;
    std::vector<UInt8> data;
};

struct Event : Slot<Event> {
    static constexpr size_t kParameters = 12;
    static constexpr size_t kDataBytes = 296;

    Event* next = nullptr; // in its queue
    Event* previous = nullptr;
    OSType eventClass = 0;
    UInt32 kind = 0;
    EventTime time = 0;
    UInt32 retains = 0;
    EventAttributes attributes = 0;
    UInt16 count = 0;     // parameters within the record
    UInt16 dataBytes = 0; // of the data, that are taken
    UInt8 priority = 0;
    bool isQueued = false;
    bool holdsEvents = false; // a parameter is a retained event
    std::unique_ptr<std::vector<LargeParameter>> large;
    Parameter parameters[kParameters];
    alignas(8) UInt8 data[kDataBytes];
};
static_assert(sizeof(Event) == 512);

using EventPool = SlotPool<Event, EventRef, 1 << 19>;
extern EventPool gEvents;

inline Event* FindEvent(EventRef inEvent)
{
    return gEvents.Find(inEvent);
}
inline EventRef ReferenceTo(const Event* inEvent)
{
    return gEvents.ReferenceTo(inEvent);
}

// Null when half a million events are alive.
inline Event* NewEvent(OSType inClass, UInt32 inKind, EventTime inTime, EventAttributes inAttributes)
{
    Event* event = gEvents.Take();
    if (!event) [[unlikely]]
        return nullptr;
    event->eventClass = inClass;
    event->kind = inKind;
    event->time = inTime;
    event->attributes = inAttributes;
    event->retains = 1;
    event->count = 0;
    event->dataBytes = 0;
    return event;
}

// Lets go of what the parameters hold, beyond the record.
void EmptyParameters(Event& ioEvent);

inline void Release(Event* inEvent)
{
    if (--inEvent->retains)
        return;
    if (inEvent->holdsEvents || inEvent->large) [[unlikely]]
        EmptyParameters(*inEvent);
    gEvents.GiveBack(inEvent);
}

// Where a parameter lies; false when there is none of the name.
struct Found {
    EventParamType type;
    const UInt8* data;
    size_t size;
};
inline bool FindParameter(const Event& inEvent, EventParamName inName, Found* outFound)
{
    for (size_t i = 0; i < inEvent.count; ++i) {
        const Parameter& parameter = inEvent.parameters[i];
        if (parameter.name != inName)
            continue;
        *outFound = { parameter.type, inEvent.data + parameter.offset, parameter.size };
        return true;
    }
    if (!inEvent.large) [[likely]]
        return false;
    for (const LargeParameter& parameter : *inEvent.large) {
        if (parameter.name != inName)
            continue;
        *outFound = { parameter.type, parameter.data.data(), parameter.data.size() };
        return true;
    }
    return false;
}

// Parameters lie eight bytes apart or a multiple of that.
inline size_t RoomFor(size_t inSize)
{
    return (inSize + 7) & ~size_t{ 7 };
}

// Adds a parameter that is not there yet; false when it finds no room within the record.
inline bool AddWithin(Event& ioEvent, EventParamName inName, EventParamType inType, size_t inSize,
                      const void* inData)
{
    if (ioEvent.count == Event::kParameters || inSize > Event::kDataBytes - ioEvent.dataBytes) [[unlikely]]
        return false;
    UInt8* data = ioEvent.data + ioEvent.dataBytes;
    ioEvent.parameters[ioEvent.count++] = { inName, inType, (UInt16)inSize, ioEvent.dataBytes };
    ioEvent.dataBytes = (UInt16)(ioEvent.dataBytes + RoomFor(inSize));
    if (inSize == 4)
        __builtin_memcpy(data, inData, 4);
    else if (inSize == 8)
        __builtin_memcpy(data, inData, 8);
    else if (inSize)
        __builtin_memcpy(data, inData, inSize);
    return true;
}

// Sets any parameter, there already or not, of any size.
OSStatus SetParameter(Event& ioEvent, EventParamName inName, EventParamType inType, size_t inSize,
                      const void* inData);
void CopyParameters(const Event& inFrom, Event& ioTo);

template <class Value>
void Set(Event& ioEvent, EventParamName inName, EventParamType inType, const Value& inValue)
{
    SetParameter(ioEvent, inName, inType, sizeof inValue, &inValue);
}

// A parameter of exactly this type and size, or the value that stands for its absence.
template <class Value>
Value Get(const Event& inEvent, EventParamName inName, EventParamType inType, Value inElse)
{
    Found found;
    if (FindParameter(inEvent, inName, &found) && found.type == inType && found.size == sizeof(Value))
        __builtin_memcpy(&inElse, found.data, sizeof(Value));
    return inElse;
}

// Gives back a reference that somebody else took.
class StOwned {
public:
    [[nodiscard]] explicit StOwned(Event* inEvent) : fEvent(inEvent) {}
    ~StOwned() { Release(fEvent); }
    StOwned(const StOwned&) = delete;
    StOwned& operator=(const StOwned&) = delete;

private:
    Event* fEvent;
};

// Keeps an event alive while somebody else's code runs.
class StRetained : public StOwned {
public:
    [[nodiscard]] explicit StRetained(Event* inEvent) : StOwned(inEvent) { ++inEvent->retains; }
};

} // namespace lampblack::events

#endif
