// The published calls on events: they check their arguments and call the record.
#include "Host.h"
#include "events/Coercions.h"
#include "events/EventRecord.h"

#include <cstring>

using namespace lampblack;
using namespace lampblack::events;

// What is rare or long is kept out of the calls that every event takes, which then need no stack.

static inline OSStatus CreateAt(OSType inClassID, UInt32 inKind, EventTime inWhen,
                                EventAttributes inAttributes, EventRef* outEvent)
{
    Event* event = NewEvent(inClassID, inKind, inWhen, inAttributes);
    *outEvent = event ? ReferenceTo(event) : nullptr;
    return event ? OSStatus{ noErr } : OSStatus{ memFullErr };
}

[[gnu::noinline]] static OSStatus CreateNow(OSType inClassID, UInt32 inKind, EventAttributes inAttributes,
                                            EventRef* outEvent)
{
    return CreateAt(inClassID, inKind, host::Now(), inAttributes, outEvent);
}

OSStatus CreateEvent(CFAllocatorRef, OSType inClassID, UInt32 inKind, EventTime inWhen,
                     EventAttributes inAttributes, EventRef* outEvent)
{
    if (!outEvent)
        return paramErr;
    if (inWhen == 0)
        return CreateNow(inClassID, inKind, inAttributes, outEvent);
    return CreateAt(inClassID, inKind, inWhen, inAttributes, outEvent);
}

EventRef CopyEvent(EventRef inOther)
{
    const Event* other = FindEvent(inOther);
    return other ? CopyEventAs(nullptr, inOther, other->eventClass, other->kind) : nullptr;
}

EventRef CopyEventAs(CFAllocatorRef, EventRef inOther, OSType inEventClass, UInt32 inEventKind)
{
    const Event* other = FindEvent(inOther);
    if (!other)
        return nullptr;
    Event* copy = NewEvent(inEventClass, inEventKind, other->time, other->attributes);
    if (!copy)
        return nullptr;
    CopyParameters(*other, *copy);
    return ReferenceTo(copy);
}

EventRef RetainEvent(EventRef inEvent)
{
    Event* event = FindEvent(inEvent);
    if (!event)
        return nullptr;
    ++event->retains;
    return inEvent;
}

ItemCount GetEventRetainCount(EventRef inEvent)
{
    const Event* event = FindEvent(inEvent);
    return event ? event->retains : 0;
}

// A caller who releases more often than he retained must not end an event that waits in the queue.
void ReleaseEvent(EventRef inEvent)
{
    Event* event = FindEvent(inEvent);
    if (!event || (event->isQueued && event->retains == 1))
        return;
    Release(event);
}

static inline const Parameter* FindWithin(const Event& inEvent, EventParamName inName)
{
    const Parameter* end = inEvent.parameters + inEvent.count;
    for (const Parameter* parameter = inEvent.parameters; parameter != end; ++parameter)
        if (parameter->name == inName)
            return parameter;
    return nullptr;
}

// Adds a value of four or eight bytes to an event with nothing but such; false where it takes more care.
static inline bool AddSmall(Event& ioEvent, EventParamName inName, EventParamType inType, ByteCount inSize,
                            const void* inData)
{
    const UInt16 count = ioEvent.count, offset = ioEvent.dataBytes;
    if (count == Event::kParameters || offset > Event::kDataBytes - 8 || ioEvent.large ||
        inType == typeEventRef)
        return false;
    UInt64 value = 0;
    if (inSize == 4)
        memcpy(&value, inData, 4);
    else if (inSize == 8)
        memcpy(&value, inData, 8);
    else
        return false;
    ioEvent.parameters[count] = { inName, inType, (UInt16)inSize, offset };
    ioEvent.count = (UInt16)(count + 1);
    ioEvent.dataBytes = (UInt16)(offset + 8);
    memcpy(ioEvent.data + offset, &value, 8);
    return true;
}

OSStatus SetEventParameter(EventRef inEvent, EventParamName inName, EventParamType inType, ByteCount inSize,
                           const void* inDataPtr)
{
    Event* event = FindEvent(inEvent);
    if (!event || (inSize && !inDataPtr))
        return paramErr;
    if (!FindWithin(*event, inName) && AddSmall(*event, inName, inType, inSize, inDataPtr)) [[likely]]
        return noErr;
    return SetParameter(*event, inName, inType, inSize, inDataPtr);
}

static inline void CopyOut(void* outData, const Found& inFound, size_t inBufferSize)
{
    if (const size_t count = inFound.size < inBufferSize ? inFound.size : inBufferSize)
        memcpy(outData, inFound.data, count);
}

static OSStatus GetCoerced(const Found& inFound, EventParamType inDesiredType, EventParamType* outActualType,
                           ByteCount inBufferSize, ByteCount* outActualSize, void* outData)
{
    size_t size = 0;
    if (const OSStatus status = Coerce(inFound, inDesiredType, inBufferSize, outData, &size))
        return status;
    if (outActualSize)
        *outActualSize = size;
    if (outActualType)
        *outActualType = inFound.type;
    return noErr;
}

[[gnu::noinline]] static OSStatus GetAny(const Event* inEvent, EventParamName inName,
                                         EventParamType inDesiredType, EventParamType* outActualType,
                                         ByteCount inBufferSize, ByteCount* outActualSize, void* outData)
{
    Found found;
    if (!FindParameter(*inEvent, inName, &found))
        return eventParameterNotFoundErr;
    if (found.type != inDesiredType && inDesiredType != typeWildCard)
        return GetCoerced(found, inDesiredType, outActualType, inBufferSize, outActualSize, outData);
    if (outData)
        CopyOut(outData, found, inBufferSize);
    if (outActualSize)
        *outActualSize = found.size;
    if (outActualType)
        *outActualType = found.type;
    return noErr;
}

// A value of four or eight bytes, read as the type that it is: a load and a store.
OSStatus GetEventParameter(EventRef inEvent, EventParamName inName, EventParamType inDesiredType,
                           EventParamType* outActualType, ByteCount inBufferSize, ByteCount* outActualSize,
                           void* outData)
{
    const Event* event = FindEvent(inEvent);
    if (!event)
        return paramErr;
    const Parameter* parameter = FindWithin(*event, inName);
    if (!parameter || parameter->type != inDesiredType || inBufferSize < parameter->size || !outData)
        return GetAny(event, inName, inDesiredType, outActualType, inBufferSize, outActualSize, outData);
    if (parameter->size == 4)
        memcpy(outData, event->data + parameter->offset, 4);
    else if (parameter->size == 8)
        memcpy(outData, event->data + parameter->offset, 8);
    else
        return GetAny(event, inName, inDesiredType, outActualType, inBufferSize, outActualSize, outData);
    if (outActualSize)
        *outActualSize = parameter->size;
    if (outActualType)
        *outActualType = inDesiredType;
    return noErr;
}

OSType GetEventClass(EventRef inEvent)
{
    const Event* event = FindEvent(inEvent);
    return event ? event->eventClass : 0;
}

UInt32 GetEventKind(EventRef inEvent)
{
    const Event* event = FindEvent(inEvent);
    return event ? event->kind : 0;
}

EventTime GetEventTime(EventRef inEvent)
{
    const Event* event = FindEvent(inEvent);
    return event ? event->time : 0;
}

OSStatus SetEventTime(EventRef inEvent, EventTime inTime)
{
    Event* event = FindEvent(inEvent);
    if (!event)
        return paramErr;
    event->time = inTime;
    return noErr;
}

EventTime GetCurrentEventTime(void)
{
    return host::Now();
}
