// Timers, and the published calls on them.
#include "events/Timers.h"
#include "Host.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <utility>

namespace lampblack::events {

using host::kForever;

constinit TimerStorage gTimerStorage;

namespace {

constexpr UInt64 kUse = UInt64{ 1 } << 32;      // one use in a reference
constexpr UInt64 kFirstUse = UInt64{ 1 } << 63; // a bit that no address has
constexpr size_t kMost = 1 << 20;

size_t IndexOf(UInt64 inTimer)
{
    return (UInt32)inTimer;
}

UInt64 Key(EventLoopTimerRef inTimer)
{
    return (UInt64)(uintptr_t)inTimer;
}

EventLoopTimerRef ReferenceOf(UInt64 inTimer)
{
    return (EventLoopTimerRef)(uintptr_t)inTimer;
}

// A repeating timer keeps its phase, and skips the firings that it missed.
double TimeAfter(const Timer& inTimer, double inDue, double inNow)
{
    if (!(inTimer.interval > 0))
        return kForever;
    const double next = inDue + inTimer.interval;
    if (next > inNow)
        return next;
    const double later = inDue + inTimer.interval * (std::floor((inNow - inDue) / inTimer.interval) + 1);
    return later > inNow ? later : std::nextafter(inNow, kForever);
}

} // namespace

// References

inline TimerList::Side* TimerList::Find(UInt64 inTimer)
{
    const size_t index = IndexOf(inTimer);
    return index < fSides.size() && fSides[index].tag == inTimer ? &fSides[index] : nullptr;
}

TimerList::Side* TimerList::TakeSide(const Timer& inTimer)
{
    if (fFree != kNowhere) {
        const UInt32 index = fFree;
        fFree = fSides[index].position;
        fSides[index] = { fSides[index].tag - 1, kNowhere };
        fTimers[index] = inTimer;
        return &fSides[index];
    }
    const size_t index = fSides.size();
    if (index == kMost)
        return nullptr;
    fTimers.push_back(inTimer);
    fSides.push_back({ kFirstUse + index, kNowhere });
    return &fSides.back();
}

EventLoopTimerRef TimerList::Install(const Timer& inTimer, double inTime)
{
    Side* side = TakeSide(inTimer);
    if (!side)
        return nullptr;
    ++fCount;
    Arm(*side, inTime);
    return ReferenceOf(side->tag);
}

EventLoopTimerRef TimerList::InstallIdle(const Timer& inTimer, double inDelay, double inNow)
{
    const EventLoopTimerRef timer = Install(inTimer, inNow + inDelay);
    if (timer)
        fIdle.push_back({ Key(timer), inDelay, IdleTimer::State::Waiting });
    return timer;
}

bool TimerList::Remove(EventLoopTimerRef inTimer)
{
    const UInt64 key = Key(inTimer);
    Side* side = Find(key);
    if (!side)
        return false;
    if (fFiring) [[unlikely]]
        if (Firing* firing = FindFiring(key))
            firing->next = kForever;
    if (!fIdle.empty()) [[unlikely]]
        std::erase_if(fIdle, [=](const IdleTimer& idle) { return idle.timer == key; });
    Disarm(*side);
    *side = { key + kUse + 1, std::exchange(fFree, (UInt32)IndexOf(key)) };
    --fCount;
    if (!fArmed && fDue.empty())
        ClearLine();
    return true;
}

bool TimerList::SetTime(EventLoopTimerRef inTimer, double inTime)
{
    const UInt64 key = Key(inTimer);
    Side* side = Find(key);
    if (!side)
        return false;
    Firing* firing = fFiring ? FindFiring(key) : nullptr;
    if (firing) {
        firing->next = inTime;
        return true;
    }
    Disarm(*side);
    Arm(*side, inTime);
    return true;
}

// The line

// A position that is out of date shows by another reference there, or by a gap.
inline void TimerList::Disarm(const Side& inSide)
{
    if (inSide.position >= fLine.size())
        return;
    Armed& armed = fLine[inSide.position];
    if (armed.timer != inSide.tag || armed.time == kForever)
        return;
    armed.time = kForever;
    --fArmed;
}

inline void TimerList::Arm(Side& ioSide, double inTime)
{
    if (!(inTime < kForever))
        return;
    if (fLine.size() == fRoom) [[unlikely]]
        MakeRoom();
    const size_t position = fLine.size();
    ioSide.position = (UInt32)position;
    fLine.push_back({ inTime, ioSide.tag });
    ++fArmed;
    if (position % kBlock == 0)
        fBounds.push_back(inTime);
    else if (inTime < fBounds.back())
        fBounds.back() = inTime;
    if (inTime < fBound)
        fBound = inTime;
}

[[gnu::noinline]] void TimerList::MakeRoom()
{
    if (fArmed <= fLine.size() / 2)
        CloseUp();
    fRoom = std::max(kBlock * 4, fArmed * 2 + kBlock);
    fLine.reserve(fRoom);
}

// Positions that passes still hold go along, by way of the timers' own.
void TimerList::CloseUp()
{
    for (UInt32& due : fDue)
        if (due != kNowhere)
            due = fLine[due].time == kForever ? kNowhere : (UInt32)IndexOf(fLine[due].timer);
    size_t count = 0;
    for (const Armed& armed : fLine)
        if (armed.time != kForever) {
            fSides[IndexOf(armed.timer)].position = (UInt32)count;
            fLine[count++] = armed;
        }
    fLine.resize(count);
    for (UInt32& due : fDue)
        if (due != kNowhere)
            due = fSides[due].position;
    fBounds.resize((count + kBlock - 1) / kBlock);
    for (size_t block = 0; block < fBounds.size(); ++block)
        fBounds[block] = ExactBound(block);
}

void TimerList::ClearLine()
{
    fLine.clear();
    fBounds.clear();
    fBound = kForever;
}

// Four at a time, which do not wait for each other.
double TimerList::ExactBound(size_t inBlock) const
{
    const Armed* armed = fLine.data() + inBlock * kBlock;
    const Armed* end = fLine.data() + std::min(fLine.size(), (inBlock + 1) * kBlock);
    double bounds[4] = { kForever, kForever, kForever, kForever };
    for (; end - armed >= 4; armed += 4)
        for (int i = 0; i < 4; ++i)
            bounds[i] = armed[i].time < bounds[i] ? armed[i].time : bounds[i];
    for (; armed != end; ++armed)
        bounds[0] = std::min(bounds[0], armed->time);
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

// What is due

// Answers whether it stands in the order of its times already.
bool TimerList::CollectDue(double inNow)
{
    bool isInOrder = true;
    double last = 0;
    for (size_t block = 0; block < fBounds.size(); ++block) {
        if (fBounds[block] > inNow)
            continue;
        UInt32 due[kBlock];
        size_t count = 0;
        const size_t end = std::min(fLine.size(), (block + 1) * kBlock);
        for (size_t i = block * kBlock; i < end; ++i)
            if (fLine[i].time <= inNow) {
                isInOrder &= last <= fLine[i].time;
                last = fLine[i].time;
                due[count++] = (UInt32)i;
            }
        fDue.insert(fDue.end(), due, due + count);
    }
    return isInOrder;
}

// The bits of times, which are not negative, stand in the order of the times, and those of one pass are close
// to each other: so few of their digits differ. A position takes the place of the reference.
void TimerList::SortByDigits(size_t inFirst)
{
    constexpr int kBits = 11;
    const size_t count = fDue.size() - inFirst;
    fSorting.resize(count);
    fSorted.resize(count);
    UInt64 least = ~UInt64{ 0 }, most = 0;
    for (size_t i = 0; i < count; ++i) {
        fSorting[i] = { fLine[fDue[inFirst + i]].time, fDue[inFirst + i] };
        least = std::min(least, std::bit_cast<UInt64>(fSorting[i].time));
        most = std::max(most, std::bit_cast<UInt64>(fSorting[i].time));
    }
    for (int shift = 0; shift < 64 && (most - least) >> shift; shift += kBits) {
        const auto digit = [=](const Armed& inArmed) {
            return (std::bit_cast<UInt64>(inArmed.time) - least) >> shift & ((1u << kBits) - 1);
        };
        UInt32 places[1 << kBits] = {};
        for (const Armed& armed : fSorting)
            ++places[digit(armed)];
        UInt32 place = 0;
        for (UInt32& each : places)
            place += std::exchange(each, place);
        for (const Armed& armed : fSorting)
            fSorted[places[digit(armed)]++] = armed;
        fSorting.swap(fSorted);
    }
    for (size_t i = 0; i < count; ++i)
        fDue[inFirst + i] = (UInt32)fSorting[i].timer;
}

// Few are moved into place where they stand; equal times keep their order.
void TimerList::SortDue(size_t inFirst)
{
    constexpr ptrdiff_t kFew = 32, kMany = 512;
    const auto earlier = [this](UInt32 a, UInt32 b) { return fLine[a].time < fLine[b].time; };
    const auto begin = fDue.begin() + (ptrdiff_t)inFirst, end = fDue.end();
    if (end - begin >= kMany)
        SortByDigits(inFirst);
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
    if (inNow < fBound)
        return false;
    const size_t first = fDue.size();
    if (!CollectDue(inNow))
        SortDue(first);
    const size_t end = fDue.size();
    {
        struct StDue { // a callback may throw through the pass
            std::vector<UInt32>& due;
            size_t first;
            ~StDue() { due.resize(first); }
        } const shrink{ fDue, first };
        for (size_t i = first; i < end; ++i)
            Fire(fDue[i], inNow);
    }
    if (!fArmed && fDue.empty())
        ClearLine();
    for (size_t block = 0; block < fBounds.size(); ++block)
        if (fBounds[block] <= inNow)
            fBounds[block] = ExactBound(block);
    Next();
    return end > first;
}

// Firing

// It is alive: of a timer that was removed, next is never.
[[gnu::noinline]] void TimerList::ArmAgain(const Firing& inFiring)
{
    Arm(*Find(inFiring.timer), inFiring.next);
}

TimerList::Firing* TimerList::FindFiring(UInt64 inTimer) const
{
    for (Firing* firing = fFiring; firing; firing = firing->outer)
        if (firing->timer == inTimer)
            return firing;
    return nullptr;
}

// While its procedure runs the timer is not in the line: a loop inside the procedure does not call it again.
// The record may be gone when the procedure returns.
inline void TimerList::Fire(UInt32 inPosition, double inNow)
{
    if (inPosition == kNowhere) [[unlikely]]
        return;
    const Armed due = fLine[inPosition];
    if (std::bit_cast<UInt64>(due.time) == std::bit_cast<UInt64>(kForever)) [[unlikely]]
        return; // it was removed or re-armed
    fLine[inPosition].time = kForever;
    --fArmed;
    const Timer& timer = fTimers[IndexOf(due.timer)];
    if (timer.kind == Timer::Kind::Once) [[likely]] {
        const Firing firing(*this, due.timer, kForever);
        timer.proc(ReferenceOf(due.timer), timer.data);
    } else if (timer.kind == Timer::Kind::Repeating) {
        FireRepeating(timer, due, inNow);
    } else {
        FireIdle(timer, due, inNow);
    }
}

[[gnu::noinline]] void TimerList::FireRepeating(const Timer& inTimer, const Armed& inDue, double inNow)
{
    const Firing firing(*this, inDue.timer, TimeAfter(inTimer, inDue.time, inNow));
    inTimer.proc(ReferenceOf(inDue.timer), inTimer.data);
}

// Idle timers

TimerList::IdleTimer& TimerList::IdleOf(UInt64 inTimer)
{
    return *std::find_if(fIdle.begin(), fIdle.end(),
                         [=](const IdleTimer& idle) { return idle.timer == inTimer; });
}

[[gnu::noinline]] void TimerList::FireIdle(const Timer& inTimer, const Armed& inDue, double inNow)
{
    using State = IdleTimer::State;
    IdleTimer& idle = IdleOf(inDue.timer);
    const bool stops = idle.state == State::Stopping, starts = idle.state == State::Waiting;
    idle.state = stops ? State::Waiting : State::Idling;
    const double next = stops ? inNow + idle.delay : TimeAfter(inTimer, inDue.time, inNow);
    const EventLoopIdleTimerMessage message = stops    ? kEventLoopIdleTimerStopped
                                              : starts ? kEventLoopIdleTimerStarted
                                                       : kEventLoopIdleTimerIdling;
    const Firing firing(*this, inDue.timer, next);
    inTimer.idleProc(ReferenceOf(inDue.timer), message, inTimer.data);
}

void TimerList::NoteActivity(double inNow)
{
    for (IdleTimer& idle : fIdle) {
        const bool waits = idle.state == IdleTimer::State::Waiting;
        if (!waits)
            idle.state = IdleTimer::State::Stopping;
        SetTime(ReferenceOf(idle.timer), waits ? inNow + idle.delay : inNow);
    }
}

} // namespace lampblack::events

using namespace lampblack;
using namespace lampblack::events;

static double TimeIn(EventTimerInterval inDelay)
{
    return inDelay >= 0 ? host::Now() + inDelay : host::kForever;
}

static OSStatus Installed(EventLoopTimerRef inTimer, EventLoopTimerRef* outTimer)
{
    if (outTimer)
        *outTimer = inTimer;
    return inTimer ? OSStatus{ noErr } : OSStatus{ memFullErr };
}

OSStatus InstallEventLoopTimer(EventLoopRef inEventLoop, EventTimerInterval inFireDelay,
                               EventTimerInterval inInterval, EventLoopTimerUPP inTimerProc,
                               void* inTimerData, EventLoopTimerRef* outTimer)
{
    if (outTimer)
        *outTimer = nullptr;
    if (inEventLoop != GetMainEventLoop() || !inTimerProc)
        return paramErr;
    const Timer timer(inTimerProc, inTimerData, inInterval);
    return Installed(gTimers.Install(timer, TimeIn(inFireDelay)), outTimer);
}

OSStatus InstallEventLoopIdleTimer(EventLoopRef inEventLoop, EventTimerInterval inDelay,
                                   EventTimerInterval inInterval, EventLoopIdleTimerUPP inTimerProc,
                                   void* inTimerData, EventLoopTimerRef* outTimer)
{
    if (outTimer)
        *outTimer = nullptr;
    if (inEventLoop != GetMainEventLoop() || !inTimerProc || !(inDelay >= 0))
        return paramErr;
    const Timer timer(inTimerProc, inTimerData, inInterval);
    return Installed(gTimers.InstallIdle(timer, inDelay, host::Now()), outTimer);
}

OSStatus RemoveEventLoopTimer(EventLoopTimerRef inTimer)
{
    return gTimers.Remove(inTimer) ? OSStatus{ noErr } : OSStatus{ paramErr };
}

OSStatus SetEventLoopTimerNextFireTime(EventLoopTimerRef inTimer, EventTimerInterval inNextFire)
{
    return gTimers.SetTime(inTimer, TimeIn(inNextFire)) ? OSStatus{ noErr } : OSStatus{ paramErr };
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
