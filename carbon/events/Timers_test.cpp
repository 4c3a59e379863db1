// Timers, to the exact second of the virtual clock.
#include "events/TestSupport.h"
#include "events/Timers.h"

#include <memory>
#include <optional>
#include <random>

using namespace lampblack::events::test;
namespace host = lampblack::host;

namespace {

using Times = std::vector<double>;

// Writes down the times of firing, from when it was made.
struct Recorder {
    double start = GetCurrentEventTime();
    Times times;
    std::function<void()> Body()
    {
        return [this] { times.push_back(GetCurrentEventTime() - start); };
    }
};

void CheckTimes(const Times& inTimes, const Times& inExpected)
{
    REQUIRE(inTimes.size() == inExpected.size());
    for (size_t i = 0; i < inTimes.size(); ++i)
        CHECK(inTimes[i] == doctest::Approx(inExpected[i]));
}

// The virtual clock moves while the program does not look.
void LoseTime(double inSeconds)
{
    UInt32 ticks = 0;
    Delay((UInt32)(inSeconds * 60), &ticks);
}

void Nothing(EventLoopTimerRef, void*) {}

} // namespace

TEST_CASE("InstallEventLoopTimer: the delay, then the interval")
{
    StartClean();
    Recorder recorder;
    const StTimer timer(0.5, 0.25, recorder.Body());
    host::RunFor(1.1);
    CheckTimes(recorder.times, { 0.5, 0.75, 1.0 });
}

TEST_CASE("InstallEventLoopTimer: a delay of 0 fires at the next pass, -1 never, an interval of 0 once")
{
    StartClean();
    Recorder soon, never, once;
    const StTimer soonTimer(0, 0, soon.Body());
    const StTimer neverTimer(kEventDurationForever, 0.5, never.Body());
    const StTimer onceTimer(1, 0, once.Body());
    host::RunFor(3);
    CheckTimes(soon.times, { 0 });
    CheckTimes(never.times, {});
    CheckTimes(once.times, { 1 });
    SetEventLoopTimerNextFireTime(onceTimer.Reference(), 0.5); // is still installed
    SetEventLoopTimerNextFireTime(neverTimer.Reference(), 0.5);
    host::RunFor(1.2);
    CheckTimes(once.times, { 1, 3.5 });
    CheckTimes(never.times, { 3.5, 4 });
}

TEST_CASE("InstallEventLoopTimer: bad arguments")
{
    EventLoopTimerRef timer = nullptr;
    CHECK(InstallEventLoopTimer(nullptr, 0, 0, Nothing, nullptr, &timer) == paramErr);
    CHECK(InstallEventLoopTimer(GetMainEventLoop(), 0, 0, nullptr, nullptr, &timer) == paramErr);
    CHECK(timer == nullptr);
    CHECK(RemoveEventLoopTimer(nullptr) == paramErr);
    CHECK(SetEventLoopTimerNextFireTime(nullptr, 1) == paramErr);
    REQUIRE(InstallEventLoopTimer(GetMainEventLoop(), 9, 0, Nothing, nullptr, &timer) == noErr);
    CHECK(RemoveEventLoopTimer(timer) == noErr);
    CHECK(RemoveEventLoopTimer(timer) == paramErr);
    CHECK(SetEventLoopTimerNextFireTime(timer, 1) == paramErr);
}

TEST_CASE(
    "SetEventLoopTimerNextFireTime: sooner, later, never, at once; then the interval goes on from there")
{
    StartClean();
    Recorder recorder;
    const StTimer timer(1, 1, recorder.Body());
    SetEventLoopTimerNextFireTime(timer.Reference(), 0.25);
    host::RunFor(1.5);
    CheckTimes(recorder.times, { 0.25, 1.25 });
    SetEventLoopTimerNextFireTime(timer.Reference(), kEventDurationForever);
    host::RunFor(3);
    CHECK(recorder.times.size() == 2);
    SetEventLoopTimerNextFireTime(timer.Reference(), kEventDurationNoWait);
    host::RunFor(1);
    CheckTimes(recorder.times, { 0.25, 1.25, 4.5, 5.5 });
}

TEST_CASE("A repeating timer: keeps its phase, and makes up for missed firings with one")
{
    StartClean();
    Recorder recorder;
    const StTimer timer(1, 1, recorder.Body());
    LoseTime(3.5);
    host::RunFor(1);
    CheckTimes(recorder.times, { 3.5, 4 });
    host::RunFor(1000);
    CHECK(recorder.times.size() == 2 + 1000);
    CHECK(recorder.times.back() == doctest::Approx(1004).epsilon(1e-9));
}

TEST_CASE("A timer: removes itself, and another, in its own procedure")
{
    StartClean();
    int fired = 0, otherFired = 0;
    std::optional<StTimer> other;
    std::unique_ptr<StTimer> self;
    self = std::make_unique<StTimer>(1, 1, [&] {
        ++fired;
        other.reset();
        RemoveEventLoopTimer(self->Reference());
    });
    other.emplace(1, 1, [&] { ++otherFired; });
    host::RunFor(5);
    CHECK(fired == 1);
    CHECK(otherFired == 0);
}

TEST_CASE("A timer: re-arms itself in its own procedure")
{
    StartClean();
    Recorder recorder;
    EventLoopTimerRef reference = nullptr;
    const StTimer timer(1, 10, [&] {
        recorder.Body()();
        SetEventLoopTimerNextFireTime(reference, recorder.times.size() < 3 ? 0.5 : kEventDurationForever);
    });
    reference = timer.Reference();
    host::RunFor(30);
    CheckTimes(recorder.times, { 1, 1.5, 2 });
}

TEST_CASE("A timer: armed for now by another of the same pass, fires in the next")
{
    StartClean();
    std::vector<int> order;
    std::optional<StTimer> second;
    const StTimer first(1, 0, [&] {
        order.push_back(1);
        SetEventLoopTimerNextFireTime(second->Reference(), 0);
    });
    second.emplace(1.5, 0, [&] { order.push_back(2); });
    LoseTime(2);
    host::RunFor(0);
    CHECK(order == std::vector<int>{ 1 });
    host::RunFor(3);
    CHECK(order == std::vector<int>{ 1, 2 });
}

TEST_CASE("Timers: of those that are due together, the earlier first, and equal ones in their order")
{
    StartClean();
    std::vector<int> order;
    std::vector<std::unique_ptr<StTimer>> timers;
    for (int i = 0; i < 100; ++i)
        timers.push_back(std::make_unique<StTimer>(1 + (i * 37 % 100) * 0.001, 0,
                                                   [&order, i] { order.push_back(i * 37 % 100); }));
    LoseTime(2);
    host::RunFor(0);
    REQUIRE(order.size() == 100);
    CHECK(std::is_sorted(order.begin(), order.end()));
}

TEST_CASE("A timer whose procedure runs a loop: is not called within, the others are")
{
    StartClean();
    int outer = 0, other = 0, depth = 0;
    const StTimer timer(1, 1, [&] {
        ++outer;
        CHECK(++depth == 1);
        RunCurrentEventLoop(3.2);
        --depth;
    });
    const StTimer second(1.5, 1, [&] { ++other; });
    host::RunFor(4.5);
    CHECK(outer == 2); // at 1; what it missed meanwhile at 4.2
    CHECK(other >= 3);
}

TEST_CASE("A timer that throws: goes on")
{
    StartClean();
    int fired = 0;
    const StTimer timer(1, 1, [&] {
        if (++fired == 1)
            throw 1L;
    });
    CHECK_THROWS_AS(host::RunFor(2.5), long);
    host::RunFor(1.5);
    CHECK(fired >= 2);
}

TEST_CASE("Timers: a reference stays dead, however often another takes its place")
{
    EventLoopTimerRef first = nullptr;
    REQUIRE(InstallEventLoopTimer(GetMainEventLoop(), 9, 0, Nothing, nullptr, &first) == noErr);
    const UInt64 bits = (UInt64)(uintptr_t)first;
    for (UInt64 other :
         { UInt64{ 1 }, bits + 1, bits - 1, bits + (UInt64{ 1 } << 32), ~bits, bits & 0xFFFFFFFF })
        CHECK(SetEventLoopTimerNextFireTime((EventLoopTimerRef)(uintptr_t)other, 1) == paramErr);
    int foreign = 0;
    CHECK(RemoveEventLoopTimer(reinterpret_cast<EventLoopTimerRef>(&foreign)) == paramErr);
    REQUIRE(RemoveEventLoopTimer(first) == noErr);
    int alive = 0;
    for (int i = 0; i < 20000; ++i) {
        EventLoopTimerRef timer = nullptr;
        InstallEventLoopTimer(GetMainEventLoop(), 9, 0, Nothing, nullptr, &timer);
        alive += timer == first || RemoveEventLoopTimer(first) == noErr;
        RemoveEventLoopTimer(timer);
    }
    CHECK(alive == 0);
}

TEST_CASE("A timer: removed in its own procedure, where another takes its place")
{
    StartClean();
    int fired = 0, others = 0;
    std::optional<StTimer> timer, other;
    timer.emplace(1, 1, [&] {
        ++fired;
        timer->Remove();
        other.emplace(1, 0, [&] { ++others; });
    });
    host::RunFor(10);
    CHECK(fired == 1);
    CHECK(others == 1);
}

TEST_CASE(
    "A timer whose procedure runs a loop: others are armed so often that the line closes up, and all fire")
{
    StartClean();
    std::vector<int> order;
    std::vector<std::unique_ptr<StTimer>> timers;
    Recorder ticks;
    const StTimer ticker(0.01, 0.01, ticks.Body());
    timers.push_back(std::make_unique<StTimer>(1, 0, [&] {
        order.push_back(-1);
        for (int i = 0; i < 1000; ++i)
            SetEventLoopTimerNextFireTime(ticker.Reference(), 0.005 + i * 1e-6);
        RunCurrentEventLoop(20);
        order.push_back(-2);
    }));
    for (int i = 0; i < 100; ++i)
        timers.push_back(std::make_unique<StTimer>(1.001 + (i * 37 % 100) * 0.001, 0,
                                                   [&order, i] { order.push_back(i * 37 % 100); }));
    LoseTime(2);
    host::RunFor(0);
    REQUIRE(order.size() == 102);
    CHECK(order.front() == -1);
    CHECK(std::is_sorted(order.begin(), order.end() - 1));
    CHECK(order.back() == -2);
    CHECK(ticks.times.size() > 1900);
}

namespace {

// Arms thousands for such times, lets all be due, and answers the times in the order of firing.
std::vector<double> FiredOrder(const std::vector<double>& inTimes)
{
    struct Fired {
        std::vector<double>* times;
        double time;
    };
    std::vector<double> order;
    std::vector<Fired> all;
    for (double time : inTimes)
        all.push_back({ &order, time });
    std::vector<EventLoopTimerRef> timers(all.size());
    for (size_t i = 0; i < all.size(); ++i)
        InstallEventLoopTimer(
            GetMainEventLoop(), all[i].time, 0,
            [](EventLoopTimerRef, void* data) {
                static_cast<Fired*>(data)->times->push_back(static_cast<Fired*>(data)->time);
            },
            &all[i], &timers[i]);
    LoseTime(20);
    host::RunFor(0);
    for (EventLoopTimerRef timer : timers)
        CHECK(RemoveEventLoopTimer(timer) == noErr);
    return order;
}

} // namespace

TEST_CASE("Timers: thousands that are due together by chance fire in the order of their times")
{
    StartClean();
    std::mt19937 random(11);
    const auto even = [&] { return (double)(random() % 1000000) / 1e5; };
    for (const std::function<double(int)>& time : {
             std::function<double(int)>([&](int) { return even(); }),
             std::function<double(int)>(
                 [&](int i) { return i % 10 ? even() : 3.0; }), // equal ones among them
             std::function<double(int)>(
                 [&](int i) { return i ? 9 + even() * 1e-9 : 0; }), // crowded at the end
             std::function<double(int)>([&](int i) { return 9 - i * 1e-6; }),
             std::function<double(int)>([&](int) { return 5.0; }),
         }) {
        std::vector<double> times;
        for (int i = 0; i < 5000; ++i)
            times.push_back(time(i));
        const std::vector<double> fired = FiredOrder(times);
        std::stable_sort(times.begin(), times.end());
        REQUIRE(fired.size() == times.size());
        // Times closer than the clock tells apart may stand in the order of arming.
        for (size_t i = 0; i < fired.size(); ++i)
            REQUIRE(fired[i] == doctest::Approx(times[i]).epsilon(1e-11));
    }
}

TEST_CASE("Timers: many, armed, re-armed and removed by chance, fire like those of a plain list")
{
    StartClean();
    struct Plain {
        EventLoopTimerRef timer = nullptr;
        double time = -1;
        int fired = 0, expected = 0;
    };
    std::vector<std::unique_ptr<Plain>> plain;
    std::mt19937 random(7);
    for (int round = 0; round < 3000; ++round) {
        const double delay = (double)(random() % 1000) / 100;
        const size_t index = plain.empty() ? 0 : random() % plain.size();
        switch (random() % 4) {
        case 0:
        case 1: {
            plain.push_back(std::make_unique<Plain>());
            plain.back()->time = GetCurrentEventTime() + delay;
            InstallEventLoopTimer(
                GetMainEventLoop(), delay, 0,
                [](EventLoopTimerRef, void* data) { ++static_cast<Plain*>(data)->fired; }, plain.back().get(),
                &plain.back()->timer);
            break;
        }
        case 2:
            if (plain.empty())
                break;
            SetEventLoopTimerNextFireTime(plain[index]->timer, delay);
            plain[index]->time = GetCurrentEventTime() + delay;
            break;
        default:
            if (plain.empty())
                break;
            RemoveEventLoopTimer(plain[index]->timer);
            CHECK(plain[index]->fired == plain[index]->expected);
            plain.erase(plain.begin() + (ptrdiff_t)index);
        }
        host::RunFor((double)(random() % 10) / 1000);
        for (const auto& timer : plain)
            if (timer->time >= 0 && timer->time <= GetCurrentEventTime()) {
                ++timer->expected;
                timer->time = -1;
            }
    }
    for (const auto& timer : plain) {
        CHECK(timer->fired == timer->expected);
        RemoveEventLoopTimer(timer->timer);
    }
}

TEST_CASE("InstallEventLoopIdleTimer: starts when the user is idle, goes on, and stops when he is not")
{
    StartClean();
    struct Log {
        std::vector<EventLoopIdleTimerMessage> messages;
    } log;
    EventLoopTimerRef timer = nullptr;
    const auto proc = [](EventLoopTimerRef, EventLoopIdleTimerMessage message, void* data) {
        static_cast<Log*>(data)->messages.push_back(message);
    };
    CHECK(InstallEventLoopIdleTimer(GetMainEventLoop(), 1, 0.5, nullptr, &log, &timer) == paramErr);
    REQUIRE(InstallEventLoopIdleTimer(GetMainEventLoop(), 1, 0.5, proc, &log, &timer) == noErr);
    host::RunFor(0.9);
    host::MoveMouse({ 10, 10 });
    host::RunFor(0.9);
    CHECK(log.messages.empty());
    host::RunFor(0.8); // 1.7 s after the mouse moved
    CHECK(log.messages == std::vector<EventLoopIdleTimerMessage>{ 1, 2 });
    host::PressKey(kVK_ANSI_A, 'a');
    host::RunFor(0.2);
    CHECK(log.messages == std::vector<EventLoopIdleTimerMessage>{ 1, 2, 3 });
    host::RunFor(0.9);
    CHECK(log.messages.back() == kEventLoopIdleTimerStarted);
    CHECK(RemoveEventLoopTimer(timer) == noErr);
    const size_t count = log.messages.size();
    host::MoveMouse({ 20, 10 });
    host::RunFor(5);
    CHECK(log.messages.size() == count);
}

TEST_CASE("NewEventLoopTimerUPP: is invoked with what it was given")
{
    int called = 0;
    EventLoopTimerUPP upp = NewEventLoopTimerUPP([](EventLoopTimerRef, void* data) { ++*(int*)data; });
    InvokeEventLoopTimerUPP(nullptr, &called, upp);
    CHECK(called == 1);
    DisposeEventLoopTimerUPP(upp);
}
