// The published calls on events: they check their arguments and call the record.
#include "Host.h"
#include "events/Coercions.h"
#include "events/EventRecord.h"

#include <cstring>

using namespace lampblack;
using namespace lampblack::events;

OSStatus CreateEvent(CFAllocatorRef, OSType inClassID, UInt32 inKind, EventTime inWhen,
                     EventAttributes inAttributes, EventRef* outEvent)
{
    if (!outEvent)
        return paramErr;
    Event* event = NewEvent(inClassID, inKind, inWhen != 0 ? inWhen : host::Now(), inAttributes);
    *outEvent = event ? ReferenceTo(event) : nullptr;
    return event ? OSStatus{ noErr } : OSStatus{ memFullErr };
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

OSStatus SetEventParameter(EventRef inEvent, EventParamName inName, EventParamType inType, ByteCount inSize,
                           const void* inDataPtr)
{
    Event* event = FindEvent(inEvent);
    if (!event || (inSize && !inDataPtr))
        return paramErr;
    Found old;
    const bool isPlain = inType != typeEventRef && !FindParameter(*event, inName, &old);
    if (isPlain && AddWithin(*event, inName, inType, inSize, inDataPtr)) [[likely]]
        return noErr;
    return SetParameter(*event, inName, inType, inSize, inDataPtr);
}

static inline void CopyOut(void* outData, const Found& inFound, size_t inBufferSize)
{
    if (inFound.size == 4 && inBufferSize >= 4)
        memcpy(outData, inFound.data, 4);
    else if (inFound.size == 8 && inBufferSize >= 8)
        memcpy(outData, inFound.data, 8);
    else if (const size_t count = inFound.size < inBufferSize ? inFound.size : inBufferSize)
        memcpy(outData, inFound.data, count);
}

// Kept out of the common path, which then needs no stack.
[[gnu::noinline]] static OSStatus GetCoerced(const Found& inFound, EventParamType inDesiredType,
                                             EventParamType* outActualType, ByteCount inBufferSize,
                                             ByteCount* outActualSize, void* outData)
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

OSStatus GetEventParameter(EventRef inEvent, EventParamName inName, EventParamType inDesiredType,
                           EventParamType* outActualType, ByteCount inBufferSize, ByteCount* outActualSize,
                           void* outData)
{
    const Event* event = FindEvent(inEvent);
    if (!event)
        return paramErr;
    Found found;
    if (!FindParameter(*event, inName, &found))
        return eventParameterNotFoundErr;
    if (found.type != inDesiredType && inDesiredType != typeWildCard) [[unlikely]]
        return GetCoerced(found, inDesiredType, outActualType, inBufferSize, outActualSize, outData);
    if (outData)
        CopyOut(outData, found, inBufferSize);
    if (outActualSize)
        *outActualSize = found.size;
    if (outActualType)
        *outActualType = found.type;
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
