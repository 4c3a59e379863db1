// The queue, the loop and the loops within it, on the virtual clock.
#include "Host.h"
#include "events/ModalLoop.h"
#include "events/MouseTracking.h"
#include "events/Queue.h"
#include "events/TestSupport.h"
#include "events/WaitHooks.h"

#include <utility>

using namespace lampblack::events;
using namespace lampblack::events::test;
namespace host = lampblack::host;

namespace {

constexpr EventTypeSpec kTest = { 'test', 1 };

EventQueueRef Main()
{
    return GetMainEventQueue();
}

void Post(UInt32 inKind, EventPriority inPriority = kEventPriorityStandard, OSType inClass = 'test')
{
    const StEvent event(inClass, inKind);
    REQUIRE(PostEventToQueue(Main(), event, inPriority) == noErr);
}

std::vector<UInt32> ReceiveAll()
{
    std::vector<UInt32> kinds;
    EventRef event = nullptr;
    while (ReceiveNextEvent(0, NULL, kEventDurationNoWait, true, &event) == noErr) {
        kinds.push_back(GetEventKind(event));
        ReleaseEvent(event);
    }
    return kinds;
}

} // namespace

TEST_CASE("ReceiveNextEvent: higher priorities first, within each the order of posting")
{
    StartClean();
    Post(1, kEventPriorityLow);
    Post(2);
    Post(3, kEventPriorityHigh);
    Post(4);
    Post(5, kEventPriorityHigh);
    CHECK(GetNumEventsInQueue(Main()) == 5);
    CHECK(ReceiveAll() == std::vector<UInt32>{ 3, 5, 2, 4, 1 });
}

TEST_CASE("PostEventToQueue: the queue keeps the event; posting twice and bad arguments are refused")
{
    StartClean();
    EventRef event = nullptr;
    CreateEvent(NULL, 'test', 1, 0, kEventAttributeNone, &event);
    CHECK(PostEventToQueue(Main(), event, 3) == paramErr);
    CHECK(PostEventToQueue(nullptr, event, kEventPriorityStandard) == paramErr);
    CHECK(PostEventToQueue(Main(), event, kEventPriorityStandard) == noErr);
    CHECK(PostEventToQueue(Main(), event, kEventPriorityHigh) == eventAlreadyPostedErr);
    CHECK(IsEventInQueue(Main(), event));
    CHECK(GetEventRetainCount(event) == 2);
    ReleaseEvent(event);
    ReleaseEvent(event); // once too often: the queue's own
    CHECK(GetEventRetainCount(event) == 1);
    CHECK(RemoveEventFromQueue(Main(), event) == noErr);
    CHECK(RemoveEventFromQueue(Main(), event) == paramErr); // it is gone
    const StEvent never;
    CHECK(RemoveEventFromQueue(Main(), never) == eventNotInQueueErr);
    CHECK(!IsEventInQueue(Main(), never));
}

TEST_CASE("ReceiveNextEvent: only the types of the list; an event that is not pulled stays")
{
    StartClean();
    Post(1);
    Post(2);
    const EventTypeSpec second = { 'test', 2 };
    EventRef event = nullptr;
    CHECK(ReceiveNextEvent(1, &second, kEventDurationNoWait, false, &event) == noErr);
    CHECK(GetEventKind(event) == 2);
    CHECK(IsEventInQueue(Main(), event));
    CHECK(ReceiveNextEvent(1, &second, kEventDurationNoWait, true, &event) == noErr);
    CHECK(!IsEventInQueue(Main(), event));
    CHECK(GetEventRetainCount(event) == 1);
    ReleaseEvent(event);
    CHECK(ReceiveNextEvent(1, &second, kEventDurationNoWait, true, &event) == eventLoopTimedOutErr);
    CHECK(event == nullptr);
    CHECK(ReceiveNextEvent(1, nullptr, 0, true, &event) == paramErr);
    CHECK(ReceiveNextEvent(0, nullptr, 0, true, nullptr) == paramErr);
    CHECK(ReceiveAll() == std::vector<UInt32>{ 1 });
}

TEST_CASE("ReceiveNextEvent: waits as long as it is told, to the clock")
{
    StartClean();
    const double start = GetCurrentEventTime();
    EventRef event = nullptr;
    CHECK(ReceiveNextEvent(0, NULL, 2.5, true, &event) == eventLoopTimedOutErr);
    CHECK(GetCurrentEventTime() - start == doctest::Approx(2.5));
}

TEST_CASE("ReceiveNextEvent: a timer that posts ends the wait")
{
    StartClean();
    const double start = GetCurrentEventTime();
    const StTimer timer(1, 0, [] { Post(7); });
    EventRef event = nullptr;
    CHECK(ReceiveNextEvent(1, &kTest, 3, true, &event) == eventLoopTimedOutErr); // of another kind
    CHECK(ReceiveAll() == std::vector<UInt32>{ 7 });
    const StTimer again(1, 0, [] { Post(1); });
    CHECK(ReceiveNextEvent(1, &kTest, kEventDurationForever, true, &event) == noErr);
    CHECK(GetCurrentEventTime() - start == doctest::Approx(4));
    ReleaseEvent(event);
}

TEST_CASE("FlushEventsMatchingListFromQueue: takes what is listed and leaves the rest")
{
    StartClean();
    for (UInt32 kind : { 1, 2, 1, 3 })
        Post(kind);
    CHECK(FlushEventsMatchingListFromQueue(Main(), 1, &kTest) == noErr);
    CHECK(ReceiveAll() == std::vector<UInt32>{ 2, 3 });
    CHECK(FlushEventsMatchingListFromQueue(Main(), 1, nullptr) == paramErr);
    CHECK(FlushEventsMatchingListFromQueue(nullptr, 1, &kTest) == paramErr);
}

TEST_CASE("FindSpecificEventInQueue, FlushSpecificEventsFromQueue: by a comparator of the caller's")
{
    StartClean();
    for (UInt32 kind : { 1, 2, 3, 4 })
        Post(kind);
    const EventComparatorUPP isEven = NewEventComparatorUPP(
        [](EventRef event, void* wanted) -> Boolean { return GetEventKind(event) % *(UInt32*)wanted == 0; });
    UInt32 two = 2, nine = 9;
    CHECK(GetEventKind(FindSpecificEventInQueue(Main(), isEven, &two)) == 2);
    CHECK(FindSpecificEventInQueue(Main(), isEven, &nine) == nullptr);
    CHECK(FlushSpecificEventsFromQueue(Main(), isEven, &two) == noErr);
    CHECK(ReceiveAll() == std::vector<UInt32>{ 1, 3 });
    CHECK(FlushSpecificEventsFromQueue(Main(), nullptr, &two) == paramErr);
    CHECK(FindSpecificEventInQueue(nullptr, isEven, &two) == nullptr);
    DisposeEventComparatorUPP(isEven);
}

TEST_CASE("FlushSpecificEventsFromQueue: a comparator that flushes the queue itself")
{
    StartClean();
    for (UInt32 kind : { 1, 2, 3 })
        Post(kind);
    CHECK(FlushSpecificEventsFromQueue(
              Main(),
              [](EventRef, void*) -> Boolean { return FlushEventQueue(GetMainEventQueue()) == noErr; },
              nullptr) == noErr);
    CHECK(GetNumEventsInQueue(Main()) == 0);
}

TEST_CASE("AcquireFirstMatchingEventInQueue: takes the event without waiting")
{
    StartClean();
    CHECK(AcquireFirstMatchingEventInQueue(Main(), 1, &kTest, kEventQueueOptionsNone) == nullptr);
    Post(2);
    Post(1);
    const EventRef event = AcquireFirstMatchingEventInQueue(Main(), 1, &kTest, kEventQueueOptionsNone);
    CHECK(GetEventKind(event) == 1);
    ReleaseEvent(event);
    CHECK(ReceiveAll() == std::vector<UInt32>{ 2 });
}

TEST_CASE("RunApplicationEventLoop: dispatches until QuitApplicationEventLoop, then says that it ends")
{
    StartClean();
    std::vector<std::string> log;
    const StHandler handler(GetApplicationEventTarget(), { kTest }, [&](EventHandlerCallRef, EventRef) {
        log.push_back("event");
        return noErr;
    });
    const StHandler quit(GetApplicationEventTarget(), { { kEventClassApplication, kEventAppQuit } },
                         [&](EventHandlerCallRef, EventRef) {
                             log.push_back("quit");
                             return noErr;
                         });
    Post(1);
    const StTimer timer(1, 0, [] { QuitApplicationEventLoop(); });
    RunApplicationEventLoop();
    CHECK(log == std::vector<std::string>{ "event", "quit" });
    QuitApplicationEventLoop(); // before it runs
    RunApplicationEventLoop();
    CHECK(log.size() == 3);
}

TEST_CASE("The quit command ends the application's loop, unless a handler takes it")
{
    StartClean();
    bool keep = true;
    const StHandler handler(
        GetApplicationEventTarget(), { { kEventClassCommand, kEventCommandProcess } },
        [&](EventHandlerCallRef, EventRef) { return keep ? OSStatus{ noErr } : eventNotHandledErr; });
    const double start = GetCurrentEventTime();
    host::RequestQuit();
    const StTimer timer(2, 0, [&] {
        keep = false;
        host::RequestQuit();
    });
    RunApplicationEventLoop();
    CHECK(GetCurrentEventTime() - start == doctest::Approx(2));
}

TEST_CASE("RunCurrentEventLoop: fires timers, leaves events in the queue, and ends by time or QuitEventLoop")
{
    StartClean();
    Post(1);
    int fired = 0;
    const StTimer timer(0.5, 0.5, [&] { ++fired; });
    CHECK(RunCurrentEventLoop(1.25) == eventLoopTimedOutErr);
    CHECK(fired == 2);
    CHECK(GetNumEventsInQueue(Main()) == 1);
    const StTimer quitter(1, 0, [] { QuitEventLoop(GetCurrentEventLoop()); });
    CHECK(RunCurrentEventLoop(kEventDurationForever) == eventLoopQuitErr);
    CHECK(RunCurrentEventLoop(kEventDurationNoWait) == eventLoopTimedOutErr);
    CHECK(QuitEventLoop(nullptr) == paramErr);
    StartClean();
}

TEST_CASE("QuitEventLoop: without a loop that runs, the next wait ends")
{
    StartClean();
    CHECK(QuitEventLoop(GetMainEventLoop()) == noErr);
    EventRef event = nullptr;
    CHECK(ReceiveNextEvent(0, NULL, kEventDurationForever, true, &event) == eventLoopQuitErr);
    CHECK(ReceiveNextEvent(0, NULL, kEventDurationNoWait, true, &event) == eventLoopTimedOutErr);
}

TEST_CASE("ModalLoop: dispatches until it is told to quit, and nests")
{
    StartClean();
    std::vector<std::string> log;
    ModalLoop outer, inner;
    const StTimer openInner(1, 0, [&] {
        CHECK(inner.Run() == noErr);
        log.push_back("inner ended");
    });
    const StTimer endInner(2, 0, [&] { inner.Quit(); });
    const StTimer endOuter(3, 0, [&] { outer.Quit(); });
    CHECK(outer.Run() == noErr);
    log.push_back("outer ended");
    CHECK(log == std::vector<std::string>{ "inner ended", "outer ended" });
    CHECK(!outer.IsRunning());
    CHECK(outer.Run(0.5) == eventLoopTimedOutErr);
    outer.Quit();
    CHECK(outer.Run() == noErr);
}

TEST_CASE("ModalLoop: quitting the outer one, or the application, ends the inner ones")
{
    StartClean();
    ModalLoop outer, inner;
    OSStatus innerStatus = noErr;
    const StTimer openInner(1, 0, [&] { innerStatus = inner.Run(); });
    {
        const StTimer end(2, 0, [&] { outer.Quit(); });
        CHECK(outer.Run() == noErr);
        CHECK(innerStatus == eventLoopQuitErr);
    }
    SetEventLoopTimerNextFireTime(openInner.Reference(), 2);
    OSStatus outerStatus = noErr;
    const StTimer openOuter(1, 0, [&] { outerStatus = outer.Run(); });
    const StTimer quit(3, 0, [] { QuitApplicationEventLoop(); });
    innerStatus = noErr;
    RunApplicationEventLoop();
    CHECK(innerStatus == eventLoopQuitErr);
    CHECK(outerStatus == eventLoopQuitErr);
}

TEST_CASE("ReceiveNextEvent: inside a loop that was told to quit, a loop of the caller's own ends too")
{
    StartClean();
    OSStatus status = noErr;
    const StTimer timer(0, 0, [&] {
        QuitApplicationEventLoop();
        EventRef event = nullptr;
        status = ReceiveNextEvent(0, NULL, kEventDurationForever, true, &event);
    });
    RunApplicationEventLoop();
    CHECK(status == eventLoopQuitErr);
}

TEST_CASE("RunFor: receives and dispatches as the application would, for that long")
{
    StartClean();
    int heard = 0;
    const StHandler handler(GetApplicationEventTarget(), { kTest }, [&](EventHandlerCallRef, EventRef) {
        ++heard;
        return noErr;
    });
    const double start = GetCurrentEventTime();
    const StTimer timer(1, 0, [] { Post(1); });
    host::RunFor(3);
    CHECK(heard == 1);
    CHECK(GetCurrentEventTime() - start == doctest::Approx(3));
}

TEST_CASE("RunFor: a button that something follows when the time is over is let go of")
{
    StartClean();
    MouseTrackingResult result = kMouseTrackingMouseDown;
    int steps = 0;
    const EventTypeSpec down = { kEventClassMouse, kEventMouseDown };
    const StHandler handler(GetApplicationEventTarget(), { down }, [&](EventHandlerCallRef, EventRef) {
        while (result != kMouseTrackingMouseUp && ++steps < 100)
            TrackMouseGlobal(0, 0.1, nullptr, nullptr, &result);
        return noErr;
    });
    const double start = GetCurrentEventTime();
    host::PressMouse({ 10, 10 });
    host::RunFor(0.55);
    CHECK(result == kMouseTrackingMouseUp);
    CHECK(steps == 6);
    CHECK(GetCurrentEventTime() - start == doctest::Approx(0.55));
    CHECK(GetCurrentButtonState() == 0);
}

TEST_CASE("RunFor: a button that nothing follows stays down")
{
    StartClean();
    host::PressMouse({ 10, 10 });
    host::RunFor(0.5);
    CHECK(GetCurrentButtonState() == 1);
    host::ReleaseMouse({ 10, 10 });
    host::RunFor(0.5);
    CHECK(GetCurrentButtonState() == 0);
}

TEST_CASE("RunFor: a wait for ever inside of it ends with it, one that has an end is waited for")
{
    StartClean();
    OSStatus status = noErr;
    EventTimeout timeout = kEventDurationForever;
    const StHandler handler(GetApplicationEventTarget(), { kTest }, [&](EventHandlerCallRef, EventRef) {
        EventRef event = nullptr;
        const EventTypeSpec never = { 'none', 1 };
        status = ReceiveNextEvent(1, &never, timeout, true, &event);
        return noErr;
    });
    const double start = GetCurrentEventTime();
    Post(1);
    host::RunFor(0.5);
    CHECK(status == eventLoopQuitErr);
    CHECK(GetCurrentEventTime() - start == doctest::Approx(0.5));
    timeout = 2;
    Post(1);
    host::RunFor(0.5);
    CHECK(status == eventLoopTimedOutErr);
    CHECK(GetCurrentEventTime() - start == doctest::Approx(2.5));
}

namespace {

std::vector<double> gHookTimes;
double gNextHook = host::kForever;
bool gHookPosts = false;

double Hook(double inNow)
{
    gHookTimes.push_back(inNow);
    if (std::exchange(gHookPosts, false))
        Post(1);
    return std::exchange(gNextHook, host::kForever);
}

} // namespace

TEST_CASE("AddWaitHook: is called before each wait and at the time it asks for")
{
    StartClean();
    AddWaitHook(Hook);
    AddWaitHook(Hook); // is one hook all the same
    const double start = GetCurrentEventTime();
    gHookTimes.clear();
    gNextHook = start + 0.25;
    CHECK(RunCurrentEventLoop(1) == eventLoopTimedOutErr);
    REQUIRE(gHookTimes.size() == 3); // at the beginning, when it asked, and as the time is over
    CHECK(gHookTimes[1] - start == doctest::Approx(0.25));
    gHookPosts = true;
    EventRef event = nullptr;
    CHECK(ReceiveNextEvent(1, &kTest, kEventDurationForever, true, &event) == noErr);
    ReleaseEvent(event);
}

TEST_CASE("WaitsSoFar: nothing to do is one wait, and each firing of a timer one more")
{
    StartClean();
    unsigned long waits = WaitsSoFar();
    RunCurrentEventLoop(10);
    CHECK(WaitsSoFar() - waits == 1);
    int fired = 0;
    const StTimer timer(0.25, 0.5, [&] { ++fired; });
    waits = WaitsSoFar();
    RunCurrentEventLoop(10);
    CHECK(fired == 20);
    CHECK(WaitsSoFar() - waits == 21); // the last until the time was over
}

TEST_CASE("AddWaitHook: is called in a loop that never waits")
{
    StartClean();
    AddWaitHook(Hook);
    RunCurrentEventLoop(1); // makes the last call old
    RunCurrentEventLoop(kEventDurationNoWait);
    gHookTimes.clear();
    int left = 400000; // each asks for the time, which then moves on the virtual clock
    const StHandler handler(GetApplicationEventTarget(), { kTest }, [&](EventHandlerCallRef, EventRef) {
        GetCurrentEventTime();
        if (--left)
            Post(1);
        else
            QuitApplicationEventLoop();
        return noErr;
    });
    Post(1);
    RunApplicationEventLoop();
    CHECK(gHookTimes.size() >= 2);
}
