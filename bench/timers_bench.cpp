// Ten thousand timers: installed, re-armed, removed, and passes in which all or ten are due. The limit keeps
// them in a flat array that each pass reads from end to end. Every row does its work on all ten thousand (the
// last on ten), so that rows compare with their namesakes.
#include <Carbon/CarbonEvents.h>
#include <benchmark/benchmark.h>
#include <lampblack/host.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <random>
#include <vector>

#ifdef LAMPBLACK_BENCH_LIBEVENT
#include <event2/event.h>
#endif
#ifdef LAMPBLACK_BENCH_ASIO
#include <asio.hpp>
#endif

namespace {

constexpr int kTimers = 10000;
constexpr double kFar = 1000; // seconds: none of these fires while the bench runs
constexpr int kFew = 10;

long gFired = 0;

double Now()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

// Delays between one and two times kFar, by chance but the same in each run.
const std::vector<double>& Delays()
{
    static const std::vector<double> delays = [] {
        std::vector<double> all;
        std::mt19937 random(1);
        for (int i = 0; i < kTimers; ++i)
            all.push_back(kFar + (double)(random() % 1000000) * kFar / 1000000);
        return all;
    }();
    return delays;
}

// The limit

struct FlatTimer {
    double time;
    double interval;
    void (*proc)(void*);
    void* data;
};

struct Flat {
    std::vector<FlatTimer> timers;

    void Install(double inDelay)
    {
        timers.push_back({ Now() + inDelay, 0, [](void*) { ++gFired; }, nullptr });
    }
    void SetDelay(size_t inIndex, double inDelay) { timers[inIndex].time = Now() + inDelay; }
    void Remove(size_t inIndex)
    {
        timers[inIndex] = timers.back();
        timers.pop_back();
    }
    void Pass()
    {
        const double now = Now();
        for (FlatTimer& timer : timers)
            if (timer.time <= now) {
                timer.time = timer.interval > 0 ? timer.time + timer.interval : 1e300;
                timer.proc(timer.data);
            }
    }
};

// The same, firing in the order of the times, as whoever installs timers may rely on: what is due is
// collected, sorted unless it happens to lie in order, and checked again before it fires, since the one
// before it may have re-armed it.
struct FlatInOrder : Flat {
    struct Due {
        double time;
        size_t index;
    };
    std::vector<Due> due;

    void Pass()
    {
        const double now = Now();
        const auto earlier = [](const Due& a, const Due& b) { return a.time < b.time; };
        due.clear();
        for (size_t i = 0; i < timers.size(); ++i)
            if (timers[i].time <= now)
                due.push_back({ timers[i].time, i });
        if (!std::is_sorted(due.begin(), due.end(), earlier))
            std::sort(due.begin(), due.end(), earlier);
        for (const Due& each : due) {
            FlatTimer& timer = timers[each.index];
            if (timer.time != each.time)
                continue;
            timer.time = timer.interval > 0 ? timer.time + timer.interval : 1e300;
            timer.proc(timer.data);
        }
    }
};

// This project

struct Carbon {
    std::vector<EventLoopTimerRef> timers;

    ~Carbon()
    {
        while (!timers.empty())
            Remove(0);
    }
    void Install(double inDelay)
    {
        EventLoopTimerRef timer = nullptr;
        InstallEventLoopTimer(
            GetMainEventLoop(), inDelay, 0, [](EventLoopTimerRef, void*) { ++gFired; }, nullptr, &timer);
        timers.push_back(timer);
    }
    void SetDelay(size_t inIndex, double inDelay) { SetEventLoopTimerNextFireTime(timers[inIndex], inDelay); }
    void Remove(size_t inIndex)
    {
        RemoveEventLoopTimer(timers[inIndex]);
        timers[inIndex] = timers.back();
        timers.pop_back();
    }
    void Pass() { RunCurrentEventLoop(kEventDurationNoWait); }
};

#ifdef LAMPBLACK_BENCH_LIBEVENT
struct Libevent {
    event_base* base = NewBase();
    std::vector<event*> timers;

    ~Libevent()
    {
        while (!timers.empty())
            Remove(0);
        event_base_free(base);
    }
    static event_base* NewBase() // without this flag its clock moves every few milliseconds
    {
        event_config* config = event_config_new();
        event_config_set_flag(config, EVENT_BASE_FLAG_PRECISE_TIMER);
        event_base* base = event_base_new_with_config(config);
        event_config_free(config);
        return base;
    }
    static timeval Time(double inDelay)
    {
        return { (time_t)inDelay, (suseconds_t)((inDelay - (double)(time_t)inDelay) * 1e6) };
    }
    void Install(double inDelay)
    {
        event* timer = evtimer_new(
            base, [](evutil_socket_t, short, void*) { ++gFired; }, nullptr);
        const timeval time = Time(inDelay);
        evtimer_add(timer, &time);
        timers.push_back(timer);
    }
    void SetDelay(size_t inIndex, double inDelay)
    {
        const timeval time = Time(inDelay);
        evtimer_add(timers[inIndex], &time);
    }
    void Remove(size_t inIndex)
    {
        event_free(timers[inIndex]);
        timers[inIndex] = timers.back();
        timers.pop_back();
    }
    void Pass() { event_base_loop(base, EVLOOP_NONBLOCK); }
};
#endif

#ifdef LAMPBLACK_BENCH_ASIO
struct Asio {
    asio::io_context context;
    std::vector<std::unique_ptr<asio::steady_timer>> timers;

    static auto Time(double inDelay)
    {
        return std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::duration<double>(inDelay));
    }
    void Arm(asio::steady_timer& ioTimer, double inDelay)
    {
        ioTimer.expires_after(Time(inDelay));
        ioTimer.async_wait([](const asio::error_code& error) { gFired += !error; });
    }
    void Install(double inDelay)
    {
        timers.push_back(std::make_unique<asio::steady_timer>(context));
        Arm(*timers.back(), inDelay);
    }
    void SetDelay(size_t inIndex, double inDelay) { Arm(*timers[inIndex], inDelay); }
    void Remove(size_t inIndex)
    {
        timers[inIndex] = std::move(timers.back());
        timers.pop_back();
    }
    void Pass()
    {
        context.restart();
        context.poll();
    }
};
#endif

template <class Timers>
std::unique_ptr<Timers> AllInstalled()
{
    auto timers = std::make_unique<Timers>();
    for (double delay : Delays())
        timers->Install(delay);
    return timers;
}

template <class Timers>
void Install(benchmark::State& state)
{
    for (auto _ : state) {
        auto timers = AllInstalled<Timers>();
        state.PauseTiming();
        timers.reset();
        state.ResumeTiming();
    }
}

template <class Timers>
void Rearm(benchmark::State& state)
{
    auto timers = AllInstalled<Timers>();
    size_t shift = 0;
    for (auto _ : state) {
        ++shift;
        for (size_t i = 0; i < kTimers; ++i)
            timers->SetDelay(i, Delays()[(i + shift) % kTimers]);
        state.PauseTiming();
        timers->Pass(); // what a peer put off until its next pass
        state.ResumeTiming();
    }
}

template <class Timers>
void Remove(benchmark::State& state)
{
    for (auto _ : state) {
        state.PauseTiming();
        auto timers = AllInstalled<Timers>();
        std::mt19937 random(2);
        state.ResumeTiming();
        for (size_t left = kTimers; left; --left)
            timers->Remove(random() % left);
        state.PauseTiming();
        timers.reset();
        state.ResumeTiming();
    }
}

// The timers that are due are armed first, for now: in the order of the array, in one by chance (their times
// then follow the order of arming), or at once for times by chance.
enum class Due { InOrder, Shuffled, ByChance };

template <class Timers, int kDue, Due kOrder>
void Pass(benchmark::State& state)
{
    auto timers = AllInstalled<Timers>();
    std::vector<size_t> order(kTimers);
    for (size_t i = 0; i < kTimers; ++i)
        order[i] = i;
    std::mt19937 random(3);
    if (kOrder != Due::InOrder)
        std::shuffle(order.begin(), order.end(), random);
    constexpr double kSpan = kOrder == Due::ByChance ? 1e-3 : 0; // seconds
    for (auto _ : state) {
        state.PauseTiming();
        for (int i = 0; i < kDue; ++i)
            timers->SetDelay(order[(size_t)i], 1e-6 + kSpan * (double)(random() % 1000000) / 1e6);
        const double end = Now() + 1e-5 + kSpan;
        while (Now() < end)
            ;
        gFired = 0;
        state.ResumeTiming();
        timers->Pass();
        if (gFired != kDue)
            state.SkipWithError("not all timers fired");
    }
}

#define ROWS(Timers)                                                                                         \
    BENCHMARK(Install<Timers>)->Unit(benchmark::kMicrosecond);                                               \
    BENCHMARK(Rearm<Timers>)->Unit(benchmark::kMicrosecond);                                                 \
    BENCHMARK(Remove<Timers>)->Unit(benchmark::kMicrosecond);                                                \
    BENCHMARK(Pass<Timers, kTimers, Due::InOrder>)                                                           \
        ->Name("PassAll<" #Timers ">")                                                                       \
        ->Unit(benchmark::kMicrosecond);                                                                     \
    BENCHMARK(Pass<Timers, kTimers, Due::Shuffled>)                                                          \
        ->Name("PassAllShuffled<" #Timers ">")                                                               \
        ->Unit(benchmark::kMicrosecond);                                                                     \
    BENCHMARK(Pass<Timers, kTimers, Due::ByChance>)                                                          \
        ->Name("PassAllByChance<" #Timers ">")                                                               \
        ->Unit(benchmark::kMicrosecond);                                                                     \
    BENCHMARK(Pass<Timers, kFew, Due::Shuffled>)->Name("PassFew<" #Timers ">")->Unit(benchmark::kMicrosecond)

ROWS(Flat);
ROWS(FlatInOrder);
ROWS(Carbon);
#ifdef LAMPBLACK_BENCH_LIBEVENT
ROWS(Libevent);
#endif
#ifdef LAMPBLACK_BENCH_ASIO
ROWS(Asio);
#endif

} // namespace

int main(int argc, char** argv)
{
    lampblack::host::Settings settings;
    settings.screen = lampblack::host::Screen::Headless;
    lampblack::host::Configure(settings);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
