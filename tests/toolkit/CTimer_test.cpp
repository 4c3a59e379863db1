// CTimer: which platform calls it makes, what fires when, and the global list.
#include <doctest/doctest.h>
#include <lampblack/host.h>
#include <lampblack/lampblack.h>

#include <vector>

#include "FreshProcess.h"
#include "Interpose.h"

using lampblack::host::RunFor;

namespace {

std::vector<double> gNextFires; // each delay asked for
int gRemoved = 0, gMenuHandlers = 0;

struct Install {
    EventLoopRef loop;
    double delay, interval;
    EventLoopTimerUPP proc;
    void* data;
};
std::vector<Install> gInstalls;
OSStatus gInstallError = noErr; // what the next ones answer instead

struct Counter : CTimer {
    Counter(double inDelay, double inInterval) : CTimer(nullptr, inDelay, inInterval, nullptr) {}
    void DoTimer(EventLoopTimerRef, void*) override { ++fCount; }
    int fCount = 0;
};

void CountInto(EventLoopTimerRef, void* inCount)
{
    ++*static_cast<int*>(inCount);
}

int ListLength()
{
    int length = 0;
    for (CTimer* timer = CTimer::cgHead; timer; timer = timer->fNext)
        ++length;
    return length;
}

void SendMenuEvent(UInt32 inKind)
{
    EventRef event = nullptr;
    CreateEvent(nullptr, kEventClassMenu, inKind, GetCurrentEventTime(), kEventAttributeNone, &event);
    SendEventToEventTarget(event, GetApplicationEventTarget());
    ReleaseEvent(event);
}

} // namespace

LAMPBLACK_INTERPOSE OSStatus SetEventLoopTimerNextFireTime(EventLoopTimerRef timer, EventTimerInterval delay)
{
    gNextFires.push_back(delay);
    return Next<decltype(SetEventLoopTimerNextFireTime)>("SetEventLoopTimerNextFireTime")(timer, delay);
}

LAMPBLACK_INTERPOSE OSStatus InstallEventLoopTimer(EventLoopRef loop, EventTimerInterval delay,
                                                   EventTimerInterval interval, EventLoopTimerUPP proc,
                                                   void* data, EventLoopTimerRef* out)
{
    gInstalls.push_back({ loop, delay, interval, proc, data });
    if (gInstallError != noErr)
        return gInstallError;
    return Next<decltype(InstallEventLoopTimer)>("InstallEventLoopTimer")(loop, delay, interval, proc, data,
                                                                          out);
}

LAMPBLACK_INTERPOSE OSStatus RemoveEventLoopTimer(EventLoopTimerRef timer)
{
    ++gRemoved;
    return Next<decltype(RemoveEventLoopTimer)>("RemoveEventLoopTimer")(timer);
}

LAMPBLACK_INTERPOSE OSStatus InstallEventHandler(EventTargetRef target, EventHandlerUPP handler,
                                                 ItemCount count, const EventTypeSpec* list, void* data,
                                                 EventHandlerRef* out)
{
    if (count == 2 && list[0].eventClass == kEventClassMenu && list[0].eventKind == kEventMenuBeginTracking &&
        list[1].eventKind == kEventMenuEndTracking)
        ++gMenuHandlers;
    return Next<decltype(InstallEventHandler)>("InstallEventHandler")(target, handler, count, list, data,
                                                                      out);
}

// Stands first: the answer to which system this is lasts as long as the process, forks included.
TEST_CASE(
    "CTimer: before Mac OS X menu tracking and Navigation dialogs suspend every timer, one handler for all")
{
    CHECK(InFreshProcess([] {
              lampblack::host::SetGestalt('sysv', 0x0922);
              CTimer* a = new Counter(1, 1);
              CTimer* b = new Counter(1, 1);
              bool good = gMenuHandlers == 1;
              SendMenuEvent(kEventMenuBeginTracking);
              good = good && a->fSuspendCount == 1 && b->fSuspendCount == 1;
              CTimer::NavDialogOpen();
              good = good && a->fSuspendCount == 2 && b->fSuspendCount == 2;
              CTimer::NavDialogClosed();
              SendMenuEvent(kEventMenuEndTracking);
              good = good && a->fSuspendCount == 0 && b->fSuspendCount == 0;
              delete a;
              delete b;
              return static_cast<int>(good);
          }) == 1);
}

TEST_CASE("CTimer: a repeating timer fires after its delay, then at its interval")
{
    Counter* timer = new Counter(0.5, 0.25);
    RunFor(0.4);
    CHECK(timer->fCount == 0);
    RunFor(0.2);
    CHECK(timer->fCount == 1);
    RunFor(0.5);
    CHECK(timer->fCount == 3);
    delete timer;
}

TEST_CASE("CTimer: a procedure is called with the user data instead of DoTimer")
{
    int count = 0;
    CTimer* timer = new CTimer(CountInto, 0.1, 0.0, &count);
    CHECK_FALSE(timer->fFired);
    RunFor(1);
    CHECK(count == 1);
    CHECK(timer->fFired);
    delete timer;
}

TEST_CASE(
    "CTimer: suspended twice and resumed once it stays suspended; the second resume re-arms, a third again")
{
    Counter* timer = new Counter(1.0, 1.0);
    gNextFires.clear();
    timer->Suspend();
    timer->Suspend();
    CHECK(gNextFires == std::vector<double>{ -1.0 });
    timer->Resume();
    CHECK(gNextFires.size() == 1);
    RunFor(5);
    CHECK(timer->fCount == 0);
    timer->Resume();
    CHECK(gNextFires == std::vector<double>{ -1.0, 0.0 });
    RunFor(0.01);
    CHECK(timer->fCount == 1);
    timer->Resume();
    CHECK(timer->fSuspendCount == 0);
    CHECK(gNextFires == std::vector<double>{ -1.0, 0.0, 0.0 });
    RunFor(0.01);
    CHECK(timer->fCount == 2);
    delete timer;
}

TEST_CASE("CTimer: resumed, a repeating timer keeps its interval")
{
    Counter* timer = new Counter(1.0, 1.0);
    timer->Suspend();
    RunFor(3.3);
    timer->Resume();
    RunFor(0.01);
    CHECK(timer->fCount == 1);
    RunFor(2.5);
    CHECK(timer->fCount == 3);
    delete timer;
}

TEST_CASE("CTimer: resuming a one-shot timer that fired does not re-arm it")
{
    Counter* timer = new Counter(0.1, 0.0);
    RunFor(0.2);
    CHECK(timer->fCount == 1);
    timer->Suspend();
    gNextFires.clear();
    timer->Resume();
    CHECK(gNextFires.empty());
    RunFor(1);
    CHECK(timer->fCount == 1);
    delete timer;
}

TEST_CASE("CTimer: resuming a one-shot timer arms it for the time still left, or at once")
{
    Counter* timer = new Counter(2.0, 0.0);
    RunFor(0.5);
    timer->Suspend();
    RunFor(0.5);
    gNextFires.clear();
    timer->Resume();
    REQUIRE(gNextFires.size() == 1);
    CHECK(gNextFires[0] == doctest::Approx(1.0));
    timer->Suspend();
    RunFor(5);
    gNextFires.clear();
    timer->Resume();
    CHECK(gNextFires == std::vector<double>{ 0.0 });
    RunFor(0.01);
    CHECK(timer->fCount == 1);
    delete timer;
}

TEST_CASE("CTimer: what is left of a one-shot timer is measured against the delay of construction")
{
    Counter* timer = new Counter(2.0, 0.0);
    timer->SetNextFireTime(10.0);
    RunFor(0.5);
    timer->Suspend();
    gNextFires.clear();
    timer->Resume();
    REQUIRE(gNextFires.size() == 1);
    CHECK(gNextFires[0] == doctest::Approx(1.5));
    delete timer;
}

TEST_CASE("CTimer: a timer parked at never is not re-armed by Resume")
{
    Counter* timer = new Counter(1.0, 1.0);
    timer->SetNextFireTime(kEventDurationForever);
    timer->Suspend();
    gNextFires.clear();
    timer->Resume();
    CHECK(gNextFires.empty());
    RunFor(5);
    CHECK(timer->fCount == 0);
    delete timer;
}

TEST_CASE("CTimer: SetNextFireTime re-arms a suspended timer and forgets that it fired")
{
    Counter* timer = new Counter(0.1, 0.0);
    RunFor(0.2);
    timer->Suspend();
    timer->SetNextFireTime(0.3);
    CHECK_FALSE(timer->fFired);
    RunFor(0.5);
    CHECK(timer->fCount == 2);
    CHECK(timer->fSuspendCount == 1);
    delete timer;
}

TEST_CASE("CTimer: the list is in creation order; deleting the head leaves its successor without predecessor")
{
    REQUIRE(CTimer::cgHead == nullptr);
    CTimer* a = new Counter(1, 1);
    CTimer* b = new Counter(1, 1);
    CTimer* c = new Counter(1, 1);
    CHECK(CTimer::cgHead == a);
    CHECK(a->fNext == b);
    CHECK(b->fNext == c);
    delete a;
    CHECK(CTimer::cgHead == b);
    CHECK(b->fPrev == nullptr);
    delete c;
    CHECK(b->fNext == nullptr);
    delete b;
    CHECK(CTimer::cgHead == nullptr);
}

TEST_CASE("CTimer: deleting one in the middle joins its neighbours")
{
    CTimer* a = new Counter(1, 1);
    CTimer* b = new Counter(1, 1);
    CTimer* c = new Counter(1, 1);
    delete b;
    CHECK(a->fNext == c);
    CHECK(c->fPrev == a);
    CHECK(ListLength() == 2);
    delete a;
    delete c;
}

TEST_CASE("CTimer::Link: joins two timers either of which may be null, and answers the second")
{
    CTimer* a = new Counter(1, 1);
    CTimer* b = new Counter(1, 1);
    CHECK(CTimer::Link(nullptr, a) == a);
    CHECK(a->fPrev == nullptr);
    CHECK(CTimer::Link(b, nullptr) == nullptr);
    CHECK(b->fNext == nullptr);
    CHECK(CTimer::Link(a, b) == b);
    CHECK(a->fNext == b);
    CHECK(b->fPrev == a);
    delete a;
    delete b;
}

TEST_CASE("CTimer: deleting it removes the event-loop timer, also from its own callback")
{
    struct SelfDeleting : CTimer {
        SelfDeleting() : CTimer(nullptr, 0.1, 0.1, nullptr) {}
        void DoTimer(EventLoopTimerRef, void*) override { delete this; }
    };
    gRemoved = 0;
    new SelfDeleting;
    RunFor(1);
    CHECK(gRemoved == 1);
    CHECK(CTimer::cgHead == nullptr);
}

TEST_CASE("CTimer: on Mac OS X no menu handler is installed and Navigation dialogs leave timers alone")
{
    gMenuHandlers = 0;
    CTimer* timer = new Counter(1, 1);
    gNextFires.clear();
    CTimer::NavDialogOpen();
    CTimer::NavDialogClosed();
    SendMenuEvent(kEventMenuBeginTracking);
    CHECK(gMenuHandlers == 0);
    CHECK(gNextFires.empty());
    CHECK(timer->fSuspendCount == 0);
    delete timer;
}

TEST_CASE("CTimerMenuEventHandler: leaves the event to other handlers")
{
    EventRef event = nullptr;
    CreateEvent(nullptr, kEventClassMenu, kEventMenuBeginTracking, 0, kEventAttributeNone, &event);
    CHECK(CTimerMenuEventHandler(nullptr, event, nullptr) == eventNotHandledErr);
    ReleaseEvent(event);
}

TEST_CASE("CTimer: suspending and resuming all reaches every live timer")
{
    Counter* a = new Counter(1, 1);
    Counter* b = new Counter(1, 1);
    CTimer::SuspendAll();
    RunFor(3);
    CHECK(a->fCount == 0);
    CHECK(b->fCount == 0);
    CTimer::ResumeAll();
    RunFor(0.01);
    CHECK(a->fCount == 1);
    CHECK(b->fCount == 1);
    delete a;
    delete b;
}

TEST_CASE(
    "CTimer: is installed in the current loop with its times, one procedure for all, itself as the data")
{
    gInstalls.clear();
    CTimer* a = new Counter(0.5, 0.25);
    CTimer* b = new Counter(kEventDurationForever, 0);
    REQUIRE(gInstalls.size() == 2);
    CHECK(gInstalls[0].loop == GetCurrentEventLoop());
    CHECK(gInstalls[0].delay == 0.5);
    CHECK(gInstalls[0].interval == 0.25);
    CHECK(gInstalls[0].data == a);
    CHECK(gInstalls[1].delay == kEventDurationForever);
    CHECK(gInstalls[1].data == b);
    CHECK((gInstalls[0].proc == gInstalls[1].proc));
    CHECK(a->fNextFire == 0.25);
    CHECK(b->fNextFire == 0);
    delete a;
    delete b;
}

TEST_CASE("CTimer: one that could not be installed is in the list, and its calls fail silently")
{
    gInstallError = memFullErr;
    CTimer* timer = new Counter(0.1, 0.1);
    gInstallError = noErr;
    CHECK(timer->fTimerRef == nullptr);
    CHECK(CTimer::cgHead == timer);
    timer->Suspend();
    timer->Resume();
    timer->SetNextFireTime(0.1);
    gRemoved = 0;
    delete timer;
    CHECK(gRemoved == 0);
    CHECK(CTimer::cgHead == nullptr);
}
