// The timers: flat arrays of times in blocks of 64, each block with a lower bound of its times, so that
// arming is a store, and looking for what is due reads one number a block. A timer that goes leaves a gap,
// which the next one fills.
#ifndef LAMPBLACK_EVENTS_TIMERS_H
#define LAMPBLACK_EVENTS_TIMERS_H

#include "events/SlotPool.h"

#include <Carbon/CarbonEventsCore.h>

#include <vector>

namespace lampblack::events {

struct Timer : Slot {
    enum class Idle : UInt8 { No, Waiting, Idling, Stopping };

    UInt32 position = 0; // in the arrays
    bool isFiring = false;
    Idle idle = Idle::No;
    union {
        EventLoopTimerProcPtr proc;
        EventLoopIdleTimerProcPtr idleProc; // unless idle is No
    };
    void* data = nullptr;
    double interval = 0; // not above 0: fires once
    double next = 0;     // while it is firing: when it fires again
    double idleDelay = 0;

    Timer() : proc(nullptr) {}
};
static_assert(sizeof(Timer) <= 128);

class TimerList {
public:
    Timer* Install(double inTime);
    void Remove(Timer* inTimer);
    void SetTime(Timer* inTimer, double inTime); // host::kForever: never
    bool IsEmpty() const { return fCount == 0; }

    // The earliest time of any timer.
    double Next();

    // Fires what is due, in the order of its times, each timer once. Answers whether any was. A timer that a
    // callback arms for now fires in the next pass.
    bool FireDue(double inNow);

    // Makes a timer wait for the user to be idle.
    void MakeIdle(Timer* inTimer, double inDelay, EventLoopIdleTimerProcPtr inProc);

    // The user did something: idle timers stop, and start to count again.
    void NoteActivity(double inNow);

private:
    static constexpr size_t kBlock = 64;

    struct Due {
        double time;
        EventLoopTimerRef timer;
    };

    UInt32 TakePosition();
    void Clear();
    double ExactBound(size_t inBlock) const;
    void CollectDue(size_t inBlock, double inNow);
    void SortDue(size_t inFirst);
    void SortByDigits(Due* ioFirst, size_t inCount);
    void Arm(size_t inPosition, double inTime);
    void Fire(const Due& inDue, double inNow);
    static double TimeAfter(const Timer& inTimer, double inDue, double inNow);

    size_t fCount = 0;
    std::vector<double> fTimes; // host::kForever in a gap
    std::vector<EventLoopTimerRef> fTimers;
    std::vector<UInt32> fGaps;   // room for one a timer
    std::vector<double> fBounds; // no time of the block is earlier
    double fBound = 0;           // no time at all is earlier
    std::vector<Due> fDue;       // a stack: passes nest
    std::vector<Due> fSorting;
    std::vector<EventLoopTimerRef> fIdle;
};

using TimerPool = SlotPool<Timer, EventLoopTimerRef, 1 << 20>;
extern constinit TimerPool gTimerPool;
extern TimerList gTimers;

} // namespace lampblack::events

#endif
