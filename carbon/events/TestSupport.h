// What the tests of this folder share: events that release themselves, handlers that write down what they
// hear.
#ifndef LAMPBLACK_EVENTS_TESTSUPPORT_H
#define LAMPBLACK_EVENTS_TESTSUPPORT_H

#include <Carbon/CarbonEvents.h>
#include <doctest/doctest.h>
#include <lampblack/host.h>

#include <functional>
#include <string>
#include <vector>

namespace lampblack::events::test {

class StEvent {
public:
    explicit StEvent(OSType inClass = 'test', UInt32 inKind = 1)
    {
        REQUIRE(CreateEvent(NULL, inClass, inKind, 0, kEventAttributeNone, &fEvent) == noErr);
    }
    ~StEvent() { ReleaseEvent(fEvent); }
    StEvent(const StEvent&) = delete;
    StEvent& operator=(const StEvent&) = delete;
    operator EventRef() const { return fEvent; }

private:
    EventRef fEvent = nullptr;
};

// A handler made of a lambda, removed at the end of its scope.
class StHandler {
public:
    using Body = std::function<OSStatus(EventHandlerCallRef, EventRef)>;

    StHandler(EventTargetRef inTarget, std::vector<EventTypeSpec> inTypes, Body inBody)
        : fBody(std::move(inBody))
    {
        REQUIRE(InstallEventHandler(inTarget, Run, inTypes.size(), inTypes.data(), this, &fReference) ==
                noErr);
    }
    ~StHandler() { RemoveEventHandler(fReference); }
    StHandler(const StHandler&) = delete;
    StHandler& operator=(const StHandler&) = delete;
    EventHandlerRef Reference() const { return fReference; }

private:
    static OSStatus Run(EventHandlerCallRef inCallRef, EventRef inEvent, void* inSelf)
    {
        return static_cast<StHandler*>(inSelf)->fBody(inCallRef, inEvent);
    }

    Body fBody;
    EventHandlerRef fReference = nullptr;
};

class StTimer {
public:
    StTimer(double inDelay, double inInterval, std::function<void()> inBody) : fBody(std::move(inBody))
    {
        REQUIRE(InstallEventLoopTimer(GetMainEventLoop(), inDelay, inInterval, Run, this, &fReference) ==
                noErr);
    }
    ~StTimer() { Remove(); }
    void Remove() { RemoveEventLoopTimer(fReference); }
    StTimer(const StTimer&) = delete;
    StTimer& operator=(const StTimer&) = delete;
    EventLoopTimerRef Reference() const { return fReference; }

private:
    static void Run(EventLoopTimerRef, void* inSelf) { static_cast<StTimer*>(inSelf)->fBody(); }

    std::function<void()> fBody;
    EventLoopTimerRef fReference = nullptr;
};

// Nothing that an earlier case left behind: input, events.
inline void StartClean()
{
    FlushEventQueue(GetMainEventQueue());
}

} // namespace lampblack::events::test

#endif
