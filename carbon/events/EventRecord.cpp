// Making and ending events, and where their parameters are put.
#include "events/EventRecord.h"
#include "Host.h"

#include <cstring>

namespace lampblack::events {

EventPool gEvents;

namespace {

EventRef EventWithin(EventParamType inType, const void* inData, size_t inSize)
{
    EventRef held = nullptr;
    if (inType == typeEventRef && inSize == sizeof held)
        memcpy(&held, inData, sizeof held);
    return held;
}

void LetGo(EventParamType inType, const void* inData, size_t inSize)
{
    if (Event* held = FindEvent(EventWithin(inType, inData, inSize)))
        Release(held);
}

void LetGoOfEvents(Event& ioEvent)
{
    ioEvent.holdsEvents = false;
    for (size_t i = 0; i < ioEvent.count; ++i) {
        const Parameter& parameter = ioEvent.parameters[i];
        LetGo(parameter.type, ioEvent.data + parameter.offset, parameter.size);
    }
    if (ioEvent.large)
        for (const LargeParameter& parameter : *ioEvent.large)
            LetGo(parameter.type, parameter.data.data(), parameter.data.size());
}

} // namespace

void EmptyParameters(Event& ioEvent)
{
    if (ioEvent.holdsEvents)
        LetGoOfEvents(ioEvent);
    ioEvent.large.reset();
}

namespace {

constexpr size_t kLargest = 1u << 30; // no parameter of an honest caller is larger

Parameter* FindWithin(Event& ioEvent, EventParamName inName)
{
    for (size_t i = 0; i < ioEvent.count; ++i)
        if (ioEvent.parameters[i].name == inName)
            return &ioEvent.parameters[i];
    return nullptr;
}

LargeParameter* FindLarge(Event& ioEvent, EventParamName inName)
{
    if (!ioEvent.large)
        return nullptr;
    for (LargeParameter& parameter : *ioEvent.large)
        if (parameter.name == inName)
            return &parameter;
    return nullptr;
}

OSStatus AddLarge(Event& ioEvent, EventParamName inName, EventParamType inType, size_t inSize,
                  const void* inData)
{
    if (inSize > kLargest)
        return memFullErr;
    const UInt8* bytes = static_cast<const UInt8*>(inData);
    try {
        if (!ioEvent.large)
            ioEvent.large = std::make_unique<std::vector<LargeParameter>>();
        ioEvent.large->push_back({ inName, inType, std::vector<UInt8>(bytes, bytes + inSize) });
    } catch (const std::bad_alloc&) {
        return memFullErr;
    }
    return noErr;
}

void RemoveParameter(Event& ioEvent, EventParamName inName)
{
    if (Parameter* parameter = FindWithin(ioEvent, inName))
        *parameter = ioEvent.parameters[--ioEvent.count];
    else if (LargeParameter* large = FindLarge(ioEvent, inName))
        ioEvent.large->erase(ioEvent.large->begin() + (large - ioEvent.large->data()));
}

OSStatus Replace(Event& ioEvent, EventParamName inName, EventParamType inType, size_t inSize,
                 const void* inData)
{
    Parameter* parameter = FindWithin(ioEvent, inName);
    if (!parameter || RoomFor(inSize) > RoomFor(parameter->size)) {
        // The bytes may be those of the parameter that is replaced.
        const UInt8* bytes = static_cast<const UInt8*>(inData);
        const std::vector<UInt8> copy(bytes, bytes + inSize);
        RemoveParameter(ioEvent, inName);
        return AddWithin(ioEvent, inName, inType, inSize, copy.data())
                   ? OSStatus{ noErr }
                   : AddLarge(ioEvent, inName, inType, inSize, copy.data());
    }
    parameter->type = inType;
    parameter->size = (UInt16)inSize;
    memmove(ioEvent.data + parameter->offset, inData, inSize);
    return noErr;
}

// A parameter that is an event: taken up before the old one is let go, since they may be the same.
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
    ioEvent.holdsEvents = true;
    return noErr;
}

} // namespace

OSStatus SetParameter(Event& ioEvent, EventParamName inName, EventParamType inType, size_t inSize,
                      const void* inData)
{
    if (inSize > kLargest)
        return memFullErr;
    if (inType == typeEventRef) [[unlikely]]
        if (const OSStatus status = HoldEvent(ioEvent, inData, inSize))
            return status;
    Found old;
    if (!FindParameter(ioEvent, inName, &old)) [[likely]]
        return AddWithin(ioEvent, inName, inType, inSize, inData)
                   ? OSStatus{ noErr }
                   : AddLarge(ioEvent, inName, inType, inSize, inData);
    const EventRef replaced = EventWithin(old.type, old.data, old.size);
    const OSStatus status = Replace(ioEvent, inName, inType, inSize, inData);
    if (Event* event = FindEvent(replaced))
        Release(event);
    return status;
}

void CopyParameters(const Event& inFrom, Event& ioTo)
{
    for (size_t i = 0; i < inFrom.count; ++i) {
        const Parameter& parameter = inFrom.parameters[i];
        SetParameter(ioTo, parameter.name, parameter.type, parameter.size, inFrom.data + parameter.offset);
    }
    if (inFrom.large)
        for (const LargeParameter& parameter : *inFrom.large)
            SetParameter(ioTo, parameter.name, parameter.type, parameter.data.size(), parameter.data.data());
}

} // namespace lampblack::events
