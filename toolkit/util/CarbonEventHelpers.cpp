// Common parameters of Carbon events.
#include "util/CarbonEventHelpers.h"

namespace {

template <typename Value>
Value EventParameter(EventRef inEvent, EventParamName inName, EventParamType inType, Value inDefault)
{
    Value value = inDefault;
    if (!inEvent ||
        GetEventParameter(inEvent, inName, inType, nullptr, sizeof value, nullptr, &value) != noErr)
        return inDefault;
    return value;
}

UInt32 ModifiersOf(EventRef inEvent)
{
    return inEvent ? EventParameter<UInt32>(inEvent, kEventParamKeyModifiers, typeUInt32, 0)
                   : GetCurrentKeyModifiers();
}

} // namespace

ControlRef GetCarbonEventControl(EventRef inEvent)
{
    return EventParameter<ControlRef>(inEvent, kEventParamDirectObject, typeControlRef, nullptr);
}

WindowRef GetCarbonEventWindow(EventRef inEvent)
{
    return EventParameter<WindowRef>(inEvent, kEventParamDirectObject, typeWindowRef, nullptr);
}

UInt32 GetCarbonEventClickCount(EventRef inEvent)
{
    return EventParameter<UInt32>(inEvent, kEventParamClickCount, typeUInt32, 0);
}

bool ShiftKeyIsDown()
{
    return ShiftKeyIsDown(static_cast<EventRef>(nullptr));
}

bool ShiftKeyIsDown(EventRef inEvent)
{
    return (ModifiersOf(inEvent) & shiftKey) != 0;
}

bool OptionKeyIsDown()
{
    return OptionKeyIsDown(static_cast<EventRef>(nullptr));
}

bool OptionKeyIsDown(EventRef inEvent)
{
    return (ModifiersOf(inEvent) & optionKey) != 0;
}
