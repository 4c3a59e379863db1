// The record behind an EventRef: what the event is, and its parameters, which lie within the record as long
// as they fit.
#ifndef LAMPBLACK_EVENTS_EVENTRECORD_H
#define LAMPBLACK_EVENTS_EVENTRECORD_H

#include "events/SlotPool.h"

#include <Carbon/CarbonEventsCore.h>

namespace lampblack::events {

// A value of at most eight bytes lies in the parameter itself.
struct Parameter {
    static constexpr size_t kInside = 8;

    EventParamName name;
    EventParamType type;
    UInt32 size;
    UInt32 room; // of the bytes
    union {
        UInt64 value;
        UInt8* bytes; // with a larger size: in the record's data, or on their own
    };

    const UInt8* Data() const { return size <= kInside ? reinterpret_cast<const UInt8*>(&value) : bytes; }
};
static_assert(sizeof(Parameter) == 24);

// What an event is, as one number.
inline UInt64 TypeKey(OSType inClass, UInt32 inKind)
{
    return (UInt64)inClass << 32 | inKind;
}

// A place in one of the queue's lists, which are rings. Of an event that is not queued, next is null.
struct QueueLink {
    QueueLink* next;
    QueueLink* previous;
};

struct Event : Slot, QueueLink {
    static constexpr size_t kParameters = 12;
    static constexpr size_t kDataBytes = 128;

    UInt64 type;
    EventTime time;
    UInt32 retains;
    EventAttributes attributes;
    Parameter* parameters; // `inside`, or a table of their own
    Parameter* end;
    Parameter* limit;
    UInt16 dataBytes; // of the data, that are taken
    bool holds;       // a parameter is a retained event, or something of them does not lie within the record
    Parameter inside[kParameters];
    alignas(8) UInt8 data[kDataBytes];

    Event() : QueueLink{}, parameters(inside), limit(inside + kParameters), holds(false) {}

    OSType Class() const { return (OSType)(type >> 32); }
    UInt32 Kind() const { return (UInt32)type; }
    bool IsQueued() const { return next; }
};
static_assert(sizeof(Event) <= 512);

using EventPool = SlotPool<Event, EventRef, 1 << 19>;
extern constinit EventPool gEvents;

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
    event->type = TypeKey(inClass, inKind);
    event->time = inTime;
    event->attributes = inAttributes;
    event->retains = 1;
    event->end = event->inside;
    event->dataBytes = 0;
    return event;
}

// Ends an event whose parameters hold something beyond the record.
void EndWithParameters(Event* inEvent);

inline void End(Event* inEvent)
{
    if (inEvent->holds) [[unlikely]]
        EndWithParameters(inEvent);
    else
        gEvents.GiveBack(inEvent);
}

void EndRetained(Event* inEvent); // the same, where it is rare

inline void Release(Event* inEvent)
{
    if (!--inEvent->retains)
        End(inEvent);
}

// Null when there is none of the name.
inline Parameter* FindParameter(const Event& inEvent, EventParamName inName)
{
    for (Parameter* parameter = inEvent.parameters; parameter != inEvent.end; ++parameter)
        if (parameter->name == inName) [[likely]]
            return parameter;
    return nullptr;
}

// A parameter's value, as it is read and converted.
struct Found {
    EventParamType type;
    const UInt8* data;
    size_t size;
};
inline Found ValueOf(const Parameter& inParameter)
{
    return { inParameter.type, inParameter.Data(), inParameter.size };
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
    const Parameter* parameter = FindParameter(inEvent, inName);
    if (parameter && parameter->type == inType && parameter->size == sizeof(Value))
        __builtin_memcpy(&inElse, parameter->Data(), sizeof(Value));
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

// Keeps an event alive while somebody else's code runs, who hardly ever ends it.
class StRetained {
public:
    [[nodiscard]] explicit StRetained(Event* inEvent) : fEvent(inEvent) { ++inEvent->retains; }
    ~StRetained()
    {
        if (!--fEvent->retains) [[unlikely]]
            EndRetained(fEvent);
    }
    StRetained(const StRetained&) = delete;
    StRetained& operator=(const StRetained&) = delete;

private:
    Event* fEvent;
};

} // namespace lampblack::events

#endif
