// Timers, and the published calls on them.
#include "events/Timers.h"
#include "Host.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <utility>

namespace lampblack::events {

using host::kForever;

constinit TimerPool gTimerPool;
TimerList gTimers;

void TimerList::Arm(size_t inPosition, double inTime)
{
    fTimes[inPosition] = inTime;
    double& bound = fBounds[inPosition / kBlock];
    if (inTime < bound)
        bound = inTime;
    if (inTime < fBound)
        fBound = inTime;
}

UInt32 TimerList::TakePosition()
{
    if (!fGaps.empty()) {
        const UInt32 position = fGaps.back();
        fGaps.pop_back();
        return position;
    }
    if (fTimes.size() % kBlock == 0)
        fBounds.push_back(kForever);
    fTimes.push_back(kForever);
    fTimers.push_back(nullptr);
    fGaps.reserve(fTimes.capacity());
    return (UInt32)fTimes.size() - 1;
}

Timer* TimerList::Install(double inTime)
{
    Timer* timer = gTimerPool.Take();
    if (!timer)
        return nullptr;
    timer->position = TakePosition();
    ++fCount;
    timer->isFiring = false;
    timer->idle = Timer::Idle::No;
    fTimers[timer->position] = gTimerPool.ReferenceTo(timer);
    Arm(timer->position, inTime);
    return timer;
}

void TimerList::Clear()
{
    fTimes.clear();
    fTimers.clear();
    fGaps.clear();
    fBounds.clear();
    fBound = kForever;
}

void TimerList::Remove(Timer* inTimer)
{
    if (inTimer->idle != Timer::Idle::No) [[unlikely]]
        std::erase(fIdle, gTimerPool.ReferenceTo(inTimer));
    fTimes[inTimer->position] = kForever;
    fGaps.push_back(inTimer->position);
    gTimerPool.GiveBack(inTimer);
    if (!--fCount) [[unlikely]]
        Clear();
}

void TimerList::SetTime(Timer* inTimer, double inTime)
{
    if (inTimer->isFiring)
        inTimer->next = inTime;
    else
        Arm(inTimer->position, inTime);
}

// Four at a time, which do not wait for each other.
double TimerList::ExactBound(size_t inBlock) const
{
    const double* time = fTimes.data() + inBlock * kBlock;
    const double* end = fTimes.data() + std::min(fTimes.size(), (inBlock + 1) * kBlock);
    double bounds[4] = { kForever, kForever, kForever, kForever };
    for (; end - time >= 4; time += 4)
        for (int i = 0; i < 4; ++i)
            bounds[i] = time[i] < bounds[i] ? time[i] : bounds[i];
    for (; time != end; ++time)
        bounds[0] = std::min(bounds[0], *time);
    return std::min(std::min(bounds[0], bounds[1]), std::min(bounds[2], bounds[3]));
}

// Bounds are made exact from the lowest upwards, until the lowest is.
double TimerList::Next()
{
    while (!fBounds.empty()) {
        const auto lowest = std::min_element(fBounds.begin(), fBounds.end());
        const double exact = ExactBound((size_t)(lowest - fBounds.begin()));
        const bool wasExact = exact == *lowest;
        *lowest = exact;
        if (wasExact)
            return fBound = exact;
    }
    return fBound = kForever;
}

void TimerList::CollectDue(size_t inBlock, double inNow)
{
    const size_t end = std::min(fTimes.size(), (inBlock + 1) * kBlock);
    Due due[kBlock];
    size_t count = 0;
    for (size_t i = inBlock * kBlock; i < end; ++i) {
        due[count] = { fTimes[i], fTimers[i] };
        count += fTimes[i] <= inNow;
    }
    fDue.insert(fDue.end(), due, due + count);
}

// The bits of times, which are not negative, stand in the order of the times, and those of one pass are close
// to each other: so few of their digits differ.
void TimerList::SortByDigits(Due* ioFirst, size_t inCount)
{
    constexpr int kBits = 11;
    const auto earlier = [](const Due& a, const Due& b) { return a.time < b.time; };
    const auto [least, most] = std::minmax_element(ioFirst, ioFirst + inCount, earlier);
    const UInt64 base = std::bit_cast<UInt64>(least->time);
    const UInt64 range = std::bit_cast<UInt64>(most->time) - base;
    fSorting.resize(std::max(fSorting.size(), inCount));
    Due *from = ioFirst, *to = fSorting.data();
    for (int shift = 0; shift < 64 && range >> shift; shift += kBits) {
        const auto digit = [=](const Due& inDue) {
            return (std::bit_cast<UInt64>(inDue.time) - base) >> shift & ((1u << kBits) - 1);
        };
        UInt32 places[1 << kBits] = {};
        for (size_t i = 0; i < inCount; ++i)
            ++places[digit(from[i])];
        UInt32 place = 0;
        for (UInt32& each : places)
            place += std::exchange(each, place);
        for (size_t i = 0; i < inCount; ++i)
            to[places[digit(from[i])]++] = from[i];
        std::swap(from, to);
    }
    if (from != ioFirst)
        std::copy(from, from + inCount, ioFirst);
}

// Few are moved into place where they stand; equal times keep their order.
void TimerList::SortDue(size_t inFirst)
{
    constexpr ptrdiff_t kFew = 32, kMany = 512;
    const auto earlier = [](const Due& a, const Due& b) { return a.time < b.time; };
    const auto begin = fDue.begin() + (ptrdiff_t)inFirst, end = fDue.end();
    if (std::is_sorted(begin, end, earlier))
        return;
    if (end - begin >= kMany)
        SortByDigits(&*begin, (size_t)(end - begin));
    else if (end - begin > kFew)
        std::stable_sort(begin, end, earlier);
    else
        for (auto next = begin + 1; next != end; ++next)
            std::rotate(std::upper_bound(begin, next, *next, earlier), next, next + 1);
}

// Until they are fired, the due ones count for the bounds: a callback may run a loop of its own, which fires
// the rest.
bool TimerList::FireDue(double inNow)
{
    constexpr size_t kAhead = 8; // the records are fetched while others' procedures run
    if (inNow < fBound)
        return false;
    const size_t first = fDue.size();
    for (size_t block = 0; block < fBounds.size(); ++block)
        if (fBounds[block] <= inNow)
            CollectDue(block, inNow);
    const size_t end = fDue.size();
    SortDue(first);
    struct StDue { // a callback may throw through the pass
        std::vector<Due>& due;
        size_t first;
        ~StDue() { due.resize(first); }
    } const shrink{ fDue, first };
    for (size_t i = first; i < end; ++i) {
        if (i + kAhead < end)
            __builtin_prefetch((const void*)fDue[i + kAhead].timer);
        Fire(Due(fDue[i]), inNow);
    }
    for (size_t block = 0; block < fBounds.size(); ++block)
        if (fBounds[block] <= inNow)
            fBounds[block] = ExactBound(block);
    Next();
    return end > first;
}

// A repeating timer keeps its phase, and skips the firings that it missed.
double TimerList::TimeAfter(const Timer& inTimer, double inDue, double inNow)
{
    if (!(inTimer.interval > 0))
        return kForever;
    const double next = inDue + inTimer.interval;
    if (next > inNow)
        return next;
    const double later = inDue + inTimer.interval * (std::floor((inNow - inDue) / inTimer.interval) + 1);
    return later > inNow ? later : std::nextafter(inNow, kForever);
}

static EventLoopIdleTimerMessage StepIdle(Timer& ioTimer, double inNow)
{
    if (ioTimer.idle == Timer::Idle::Stopping) {
        ioTimer.idle = Timer::Idle::Waiting;
        ioTimer.next = inNow + ioTimer.idleDelay;
        return kEventLoopIdleTimerStopped;
    }
    const bool starts = ioTimer.idle == Timer::Idle::Waiting;
    ioTimer.idle = Timer::Idle::Idling;
    return starts ? kEventLoopIdleTimerStarted : kEventLoopIdleTimerIdling;
}

static void CallTimer(EventLoopTimerRef inReference, Timer& ioTimer, double inNow)
{
    if (ioTimer.idle == Timer::Idle::No) {
        ioTimer.proc(inReference, ioTimer.data);
        return;
    }
    const EventLoopIdleTimerMessage message = StepIdle(ioTimer, inNow);
    ioTimer.idleProc(inReference, message, ioTimer.data);
}

// While its procedure runs the timer sleeps: a loop inside the procedure does not call it again.
void TimerList::Fire(const Due& inDue, double inNow)
{
    Timer* timer = gTimerPool.Find(inDue.timer);
    if (!timer || timer->isFiring || fTimes[timer->position] != inDue.time) [[unlikely]]
        return;
    struct StFiring {
        TimerList& list;
        EventLoopTimerRef reference;
        ~StFiring()
        {
            if (Timer* fired = gTimerPool.Find(reference)) {
                fired->isFiring = false;
                if (fired->next != kForever)
                    list.Arm(fired->position, fired->next);
            }
        }
    } const firing{ *this, inDue.timer };
    timer->next = TimeAfter(*timer, inDue.time, inNow);
    timer->isFiring = true;
    fTimes[timer->position] = kForever;
    CallTimer(inDue.timer, *timer, inNow);
}

void TimerList::MakeIdle(Timer* inTimer, double inDelay, EventLoopIdleTimerProcPtr inProc)
{
    inTimer->idle = Timer::Idle::Waiting;
    inTimer->idleDelay = inDelay;
    inTimer->idleProc = inProc;
    fIdle.push_back(gTimerPool.ReferenceTo(inTimer));
}

void TimerList::NoteActivity(double inNow)
{
    for (EventLoopTimerRef reference : fIdle) {
        Timer* timer = gTimerPool.Find(reference);
        if (!timer)
            continue;
        if (timer->idle == Timer::Idle::Waiting) {
            SetTime(timer, inNow + timer->idleDelay);
        } else {
            timer->idle = Timer::Idle::Stopping;
            SetTime(timer, inNow);
        }
    }
}

} // namespace lampblack::events

using namespace lampblack;
using namespace lampblack::events;

static double TimeIn(EventTimerInterval inDelay)
{
    return inDelay >= 0 ? host::Now() + inDelay : host::kForever;
}

static Timer* NewTimer(EventTimerInterval inFireDelay, EventTimerInterval inInterval, void* inData,
                       EventLoopTimerRef* outTimer)
{
    Timer* timer = gTimers.Install(TimeIn(inFireDelay));
    if (!timer)
        return nullptr;
    timer->interval = inInterval;
    timer->data = inData;
    if (outTimer)
        *outTimer = gTimerPool.ReferenceTo(timer);
    return timer;
}

OSStatus InstallEventLoopTimer(EventLoopRef inEventLoop, EventTimerInterval inFireDelay,
                               EventTimerInterval inInterval, EventLoopTimerUPP inTimerProc,
                               void* inTimerData, EventLoopTimerRef* outTimer)
{
    if (outTimer)
        *outTimer = nullptr;
    if (inEventLoop != GetMainEventLoop() || !inTimerProc)
        return paramErr;
    Timer* timer = NewTimer(inFireDelay, inInterval, inTimerData, outTimer);
    if (!timer)
        return memFullErr;
    timer->proc = inTimerProc;
    return noErr;
}

OSStatus InstallEventLoopIdleTimer(EventLoopRef inEventLoop, EventTimerInterval inDelay,
                                   EventTimerInterval inInterval, EventLoopIdleTimerUPP inTimerProc,
                                   void* inTimerData, EventLoopTimerRef* outTimer)
{
    if (outTimer)
        *outTimer = nullptr;
    if (inEventLoop != GetMainEventLoop() || !inTimerProc || !(inDelay >= 0))
        return paramErr;
    Timer* timer = NewTimer(inDelay, inInterval, inTimerData, outTimer);
    if (!timer)
        return memFullErr;
    gTimers.MakeIdle(timer, inDelay, inTimerProc);
    return noErr;
}

OSStatus RemoveEventLoopTimer(EventLoopTimerRef inTimer)
{
    Timer* timer = gTimerPool.Find(inTimer);
    if (!timer)
        return paramErr;
    gTimers.Remove(timer);
    return noErr;
}

OSStatus SetEventLoopTimerNextFireTime(EventLoopTimerRef inTimer, EventTimerInterval inNextFire)
{
    Timer* timer = gTimerPool.Find(inTimer);
    if (!timer)
        return paramErr;
    gTimers.SetTime(timer, TimeIn(inNextFire));
    return noErr;
}

EventLoopTimerUPP NewEventLoopTimerUPP(EventLoopTimerProcPtr inProc)
{
    return inProc;
}

void DisposeEventLoopTimerUPP(EventLoopTimerUPP) {}

void InvokeEventLoopTimerUPP(EventLoopTimerRef inTimer, void* inUserData, EventLoopTimerUPP inUPP)
{
    if (inUPP)
        inUPP(inTimer, inUserData);
}

EventLoopIdleTimerUPP NewEventLoopIdleTimerUPP(EventLoopIdleTimerProcPtr inProc)
{
    return inProc;
}

void DisposeEventLoopIdleTimerUPP(EventLoopIdleTimerUPP) {}

void InvokeEventLoopIdleTimerUPP(EventLoopTimerRef inTimer, EventLoopIdleTimerMessage inState,
                                 void* inUserData, EventLoopIdleTimerUPP inUPP)
{
    if (inUPP)
        inUPP(inTimer, inState, inUserData);
}
