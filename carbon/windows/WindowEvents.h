// Making and sending the events of windows.
#ifndef LAMPBLACK_WINDOWS_WINDOWEVENTS_H
#define LAMPBLACK_WINDOWS_WINDOWEVENTS_H

#include <Carbon/CarbonEvents.h>
#include <Carbon/MacWindows.h>

namespace lampblack::windows {

// An event about to be sent; released at the end. An event that could not be made is sent as nothing.
class StEvent {
public:
    [[nodiscard]] StEvent(OSType inClass, UInt32 inKind);
    ~StEvent();
    StEvent(const StEvent&) = delete;
    StEvent& operator=(const StEvent&) = delete;

    template <class Value>
    StEvent& Put(EventParamName inName, EventParamType inType, const Value& inValue)
    {
        if (fEvent)
            SetEventParameter(fEvent, inName, inType, sizeof inValue, &inValue);
        return *this;
    }
    template <class Value>
    bool Get(EventParamName inName, EventParamType inType, Value* outValue) const
    {
        return fEvent && GetEventParameter(fEvent, inName, inType, nullptr, sizeof *outValue, nullptr,
                                           outValue) == noErr;
    }
    EventRef Event() const { return fEvent; }
    OSStatus SendTo(EventTargetRef inTarget);

private:
    EventRef fEvent = nullptr;
};

template <class Value>
bool GetParameter(EventRef inEvent, EventParamName inName, EventParamType inType, Value* outValue)
{
    return GetEventParameter(inEvent, inName, inType, nullptr, sizeof *outValue, nullptr, outValue) == noErr;
}

// Where an event of the mouse happened, or where the mouse is now.
Point EventLocation(EventRef inEvent);
UInt32 EventModifiers(EventRef inEvent);

// A window event with only its window. Answers what the handlers answered.
OSStatus SendWindowEvent(WindowRef inWindow, UInt32 inKind);
// The same with the place of the mouse, the modifiers and the click count of another event.
OSStatus SendMouseActionEvent(WindowRef inWindow, UInt32 inKind, EventRef inMouseEvent);

} // namespace lampblack::windows

#endif
