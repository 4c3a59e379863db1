// The published calls on events: they check their arguments and call the record.
#include "Host.h"
#include "events/Coercions.h"
#include "events/EventRecord.h"

#include <bit>
#include <cstring>

using namespace lampblack;
using namespace lampblack::events;

// What is rare or long is kept out of the calls that every event takes, and takes the same arguments: then
// they need no stack.

[[gnu::noinline]] static OSStatus CreateSlowly(CFAllocatorRef, OSType inClassID, UInt32 inKind,
                                               EventTime inWhen, EventAttributes inAttributes,
                                               EventRef* outEvent)
{
    Event* event = NewEvent(inClassID, inKind, inWhen == 0 ? host::Now() : inWhen, inAttributes);
    *outEvent = event ? ReferenceTo(event) : nullptr;
    return event ? OSStatus{ noErr } : OSStatus{ memFullErr };
}

OSStatus CreateEvent(CFAllocatorRef inAllocator, OSType inClassID, UInt32 inKind, EventTime inWhen,
                     EventAttributes inAttributes, EventRef* outEvent)
{
    if (!outEvent)
        return paramErr;
    if (inWhen == 0 || !gEvents.HasFree()) [[unlikely]]
        return CreateSlowly(inAllocator, inClassID, inKind, inWhen, inAttributes, outEvent);
    *outEvent = ReferenceTo(NewEvent(inClassID, inKind, inWhen, inAttributes));
    return noErr;
}

EventRef CopyEvent(EventRef inOther)
{
    const Event* other = FindEvent(inOther);
    return other ? CopyEventAs(nullptr, inOther, other->Class(), other->Kind()) : nullptr;
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
    if (!event)
        return;
    if (event->retains != 1)
        --event->retains;
    else if (!event->IsQueued())
        End(event);
}

[[gnu::noinline]] static OSStatus SetSlowly(EventRef inEvent, EventParamName inName, EventParamType inType,
                                            ByteCount inSize, const void* inDataPtr)
{
    Event* event = FindEvent(inEvent);
    if (!event || (inSize && !inDataPtr))
        return paramErr;
    return SetParameter(*event, inName, inType, inSize, inDataPtr);
}

// Short for a value of four or eight bytes that is not there yet.
OSStatus SetEventParameter(EventRef inEvent, EventParamName inName, EventParamType inType, ByteCount inSize,
                           const void* inDataPtr)
{
    Event* event = FindEvent(inEvent);
    if (!event || !inDataPtr || inType == typeEventRef || event->end == event->limit) [[unlikely]]
        return SetSlowly(inEvent, inName, inType, inSize, inDataPtr);
    if (FindParameter(*event, inName)) [[unlikely]]
        return SetSlowly(inEvent, inName, inType, inSize, inDataPtr);
    Parameter* parameter = event->end;
    if (inSize == 4) [[likely]]
        memcpy(&parameter->value, inDataPtr, 4);
    else if (inSize == 8)
        memcpy(&parameter->value, inDataPtr, 8);
    else
        return SetSlowly(inEvent, inName, inType, inSize, inDataPtr);
    parameter->name = inName;
    parameter->type = inType;
    parameter->size = (UInt32)inSize;
    event->end = parameter + 1;
    return noErr;
}

static OSStatus GetCoerced(const Found& inFound, EventParamType inDesiredType, ByteCount inBufferSize,
                           ByteCount* outActualSize, void* outData)
{
    size_t size = 0;
    if (const OSStatus status = Coerce(inFound, inDesiredType, inBufferSize, outData, &size))
        return status;
    if (outActualSize)
        *outActualSize = size;
    return noErr;
}

static OSStatus GetAsItIs(const Found& inFound, ByteCount inBufferSize, ByteCount* outActualSize,
                          void* outData)
{
    const size_t size = inFound.size < inBufferSize ? inFound.size : inBufferSize;
    if (outData && size)
        memcpy(outData, inFound.data, size);
    if (outActualSize)
        *outActualSize = inFound.size;
    return noErr;
}

[[gnu::noinline]] static OSStatus GetSlowly(EventRef inEvent, EventParamName inName,
                                            EventParamType inDesiredType, EventParamType* outActualType,
                                            ByteCount inBufferSize, ByteCount* outActualSize, void* outData)
{
    const Parameter* parameter = FindParameter(*FindEvent(inEvent), inName);
    if (!parameter)
        return eventParameterNotFoundErr;
    const Found found = ValueOf(*parameter);
    const bool converts = found.type != inDesiredType && inDesiredType != typeWildCard;
    const OSStatus status = converts ? GetCoerced(found, inDesiredType, inBufferSize, outActualSize, outData)
                                     : GetAsItIs(found, inBufferSize, outActualSize, outData);
    if (!status && outActualType)
        *outActualType = found.type;
    return status;
}

// A value of four or eight bytes, read as the type that it is: a load and a store.
OSStatus GetEventParameter(EventRef inEvent, EventParamName inName, EventParamType inDesiredType,
                           EventParamType* outActualType, ByteCount inBufferSize, ByteCount* outActualSize,
                           void* outData)
{
    const Event* event = FindEvent(inEvent);
    if (!event)
        return paramErr;
    const Parameter* parameter = FindParameter(*event, inName);
    if (!parameter || parameter->type != inDesiredType || !outData) [[unlikely]]
        return GetSlowly(inEvent, inName, inDesiredType, outActualType, inBufferSize, outActualSize, outData);
    if (parameter->size == 4) [[likely]] {
        if (inBufferSize < 4) [[unlikely]]
            return GetSlowly(inEvent, inName, inDesiredType, outActualType, inBufferSize, outActualSize,
                             outData);
        memcpy(outData, &parameter->value, 4);
    } else {
        if (parameter->size != 8 || inBufferSize < 8) [[unlikely]]
            return GetSlowly(inEvent, inName, inDesiredType, outActualType, inBufferSize, outActualSize,
                             outData);
        memcpy(outData, &parameter->value, 8);
    }
    if (outActualSize)
        *outActualSize = parameter->size;
    if (outActualType)
        *outActualType = inDesiredType;
    return noErr;
}

OSType GetEventClass(EventRef inEvent)
{
    const Event* event = FindEvent(inEvent);
    return event ? event->Class() : 0;
}

UInt32 GetEventKind(EventRef inEvent)
{
    const Event* event = FindEvent(inEvent);
    return event ? event->Kind() : 0;
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
