// Making and ending events, and where their parameters are put.
#include "events/EventRecord.h"

#include <algorithm>
#include <cstring>

namespace lampblack::events {

constinit EventPool gEvents;

namespace {

constexpr size_t kLargest = 1u << 30; // no parameter of an honest caller is larger

// Events that are parameters

EventRef EventWithin(const Parameter& inParameter)
{
    EventRef held = nullptr;
    if (inParameter.type == typeEventRef && inParameter.size == sizeof held)
        memcpy(&held, &inParameter.value, sizeof held);
    return held;
}

void LetGo(EventRef inHeld)
{
    if (Event* held = FindEvent(inHeld))
        Release(held);
}

// Taken up before the old one is let go, since they may be the same.
OSStatus HoldEvent(Event& ioEvent, const void* inData, size_t inSize)
{
    EventRef reference = nullptr;
    if (inSize != sizeof reference)
        return paramErr;
    memcpy(&reference, inData, sizeof reference);
    Event* held = FindEvent(reference);
    if (!held)
        return reference ? OSStatus{ paramErr } : OSStatus{ noErr };
    if (held == &ioEvent) // would never go
        return paramErr;
    ++held->retains;
    ioEvent.holds = true;
    return noErr;
}

// Memory

bool IsWithin(const Event& inEvent, const UInt8* inBytes)
{
    return inBytes >= inEvent.data && inBytes < inEvent.data + Event::kDataBytes;
}

void FreeBytes(const Event& inEvent, const Parameter& inParameter)
{
    if (inParameter.size > Parameter::kInside && !IsWithin(inEvent, inParameter.bytes))
        delete[] inParameter.bytes;
}

// Within the record while there is room; null when there is no memory.
UInt8* NewBytes(Event& ioEvent, size_t inSize)
{
    if (inSize <= Event::kDataBytes - ioEvent.dataBytes) {
        UInt8* bytes = ioEvent.data + ioEvent.dataBytes;
        ioEvent.dataBytes = (UInt16)(ioEvent.dataBytes + ((inSize + 7) & ~size_t{ 7 }));
        return bytes;
    }
    ioEvent.holds = true;
    return new (std::nothrow) UInt8[inSize];
}

bool GrowTable(Event& ioEvent)
{
    const size_t count = (size_t)(ioEvent.end - ioEvent.parameters);
    Parameter* table = new (std::nothrow) Parameter[count * 2];
    if (!table)
        return false;
    std::copy(ioEvent.parameters, ioEvent.end, table);
    if (ioEvent.parameters != ioEvent.inside)
        delete[] ioEvent.parameters;
    ioEvent.parameters = table;
    ioEvent.end = table + count;
    ioEvent.limit = table + count * 2;
    ioEvent.holds = true;
    return true;
}

void FreeMemory(Event& ioEvent)
{
    for (const Parameter* parameter = ioEvent.parameters; parameter != ioEvent.end; ++parameter)
        FreeBytes(ioEvent, *parameter);
    if (ioEvent.parameters != ioEvent.inside)
        delete[] ioEvent.parameters;
    ioEvent.parameters = ioEvent.end = ioEvent.inside;
    ioEvent.limit = ioEvent.inside + Event::kParameters;
}

// Values

void SetInside(Parameter* outParameter, EventParamType inType, size_t inSize, const void* inData)
{
    outParameter->type = inType;
    outParameter->size = (UInt32)inSize;
    outParameter->value = 0;
    if (inSize)
        memcpy(&outParameter->value, inData, inSize);
}

bool SetBytes(Event& ioEvent, Parameter* outParameter, EventParamType inType, size_t inSize,
              const void* inData)
{
    UInt8* bytes = NewBytes(ioEvent, inSize);
    if (!bytes)
        return false;
    memcpy(bytes, inData, inSize);
    outParameter->type = inType;
    outParameter->size = outParameter->room = (UInt32)inSize;
    outParameter->bytes = bytes;
    return true;
}

bool SetValue(Event& ioEvent, Parameter* outParameter, EventParamType inType, size_t inSize,
              const void* inData)
{
    if (inSize > Parameter::kInside)
        return SetBytes(ioEvent, outParameter, inType, inSize, inData);
    SetInside(outParameter, inType, inSize, inData);
    return true;
}

OSStatus Add(Event& ioEvent, EventParamName inName, EventParamType inType, size_t inSize, const void* inData)
{
    if (ioEvent.end == ioEvent.limit && !GrowTable(ioEvent))
        return memFullErr;
    if (!SetValue(ioEvent, ioEvent.end, inType, inSize, inData))
        return memFullErr;
    ioEvent.end++->name = inName;
    return noErr;
}

// The new bytes may be some of the old.
OSStatus Replace(Event& ioEvent, Parameter* ioParameter, EventParamType inType, size_t inSize,
                 const void* inData)
{
    if (inSize > Parameter::kInside && ioParameter->size > Parameter::kInside &&
        inSize <= ioParameter->room) {
        memmove(ioParameter->bytes, inData, inSize);
        ioParameter->type = inType;
        ioParameter->size = (UInt32)inSize;
        return noErr;
    }
    Parameter parameter = *ioParameter;
    if (!SetValue(ioEvent, &parameter, inType, inSize, inData))
        return memFullErr;
    FreeBytes(ioEvent, *ioParameter);
    *ioParameter = parameter;
    return noErr;
}

} // namespace

void EndWithParameters(Event* inEvent)
{
    inEvent->holds = false;
    for (const Parameter* parameter = inEvent->parameters; parameter != inEvent->end; ++parameter)
        LetGo(EventWithin(*parameter));
    FreeMemory(*inEvent);
    gEvents.GiveBack(inEvent);
}

void EndRetained(Event* inEvent)
{
    End(inEvent);
}

OSStatus SetParameter(Event& ioEvent, EventParamName inName, EventParamType inType, size_t inSize,
                      const void* inData)
{
    if (inSize > kLargest)
        return memFullErr;
    if (inType == typeEventRef) [[unlikely]]
        if (const OSStatus status = HoldEvent(ioEvent, inData, inSize))
            return status;
    Parameter* parameter = FindParameter(ioEvent, inName);
    EventRef goes = parameter ? EventWithin(*parameter) : nullptr;
    const OSStatus status = parameter ? Replace(ioEvent, parameter, inType, inSize, inData)
                                      : Add(ioEvent, inName, inType, inSize, inData);
    if (status && inType == typeEventRef)
        memcpy(&goes, inData, sizeof goes);
    if (!status || inType == typeEventRef)
        LetGo(goes);
    return status;
}

void CopyParameters(const Event& inFrom, Event& ioTo)
{
    for (const Parameter* parameter = inFrom.parameters; parameter != inFrom.end; ++parameter)
        SetParameter(ioTo, parameter->name, parameter->type, parameter->size, parameter->Data());
}

} // namespace lampblack::events
