// The timers. Those that are armed stand in a line, in the order in which they were armed: whoever arms
// timers with like delays arms them in the order of their times, and then there is nothing to sort. One that
// goes leaves a gap; now and then the line closes up. Each 64 places have a lower bound of their times, so
// that arming is a store at the end, and looking for what is due reads one number a block.
#ifndef LAMPBLACK_EVENTS_TIMERS_H
#define LAMPBLACK_EVENTS_TIMERS_H

#include <Carbon/CarbonEventsCore.h>

#include <limits>
#include <vector>

namespace lampblack::events {

struct Timer {
    enum class Kind : UInt8 { Once, Repeating, Idle };

    union {
        EventLoopTimerProcPtr proc;
        EventLoopIdleTimerProcPtr idleProc; // of an idle timer
    };
    void* data;
    double interval; // not above 0: fires once
    Kind kind;

    Timer(EventLoopTimerProcPtr inProc, void* inData, double inInterval)
        : proc(inProc),
          data(inData),
          interval(inInterval),
          kind(inInterval > 0 ? Kind::Repeating : Kind::Once)
    {
    }
    Timer(EventLoopIdleTimerProcPtr inProc, void* inData, double inInterval)
        : idleProc(inProc), data(inData), interval(inInterval), kind(Kind::Idle)
    {
    }
};
static_assert(sizeof(Timer) == 32);

class TimerList {
public:
    // At a time of host::kForever the timer is there but not armed. Null when a million timers are there.
    EventLoopTimerRef Install(const Timer& inTimer, double inTime);
    // An idle timer starts when the user has been idle so long.
    EventLoopTimerRef InstallIdle(const Timer& inTimer, double inDelay, double inNow);
    // False for a reference that is not alive.
    bool Remove(EventLoopTimerRef inTimer);
    bool SetTime(EventLoopTimerRef inTimer, double inTime);
    bool IsEmpty() const { return fCount == 0; }

    // The earliest time of any timer.
    double Next();

    // Fires what is due, in the order of its times, each timer once. Answers whether any was. A timer that a
    // callback arms for now fires in the next pass.
    bool FireDue(double inNow);

    // The user did something: idle timers stop, and start to count again.
    void NoteActivity(double inNow);

private:
    static constexpr size_t kBlock = 64;
    static constexpr UInt32 kNowhere = 0xFFFFFFFF;
    static constexpr double kNever = std::numeric_limits<double>::infinity(); // host::kForever

    // References are told as in a SlotPool: an index below, the number of the use above. The tag is the live
    // reference; of a free one, its next reference plus one, which would be its neighbour's.
    struct Side {
        UInt64 tag;
        UInt32 position; // in the line, if the reference stands there; of a free one, the index of the next
    };
    struct Armed {
        double time; // host::kForever in a gap
        UInt64 timer;
    };
    // A timer whose procedure is being called.
    struct Firing {
        Firing(TimerList& inList, UInt64 inTimer, double inNext)
            : list(inList), timer(inTimer), next(inNext), outer(inList.fFiring)
        {
            list.fFiring = this;
        }
        ~Firing()
        {
            list.fFiring = outer;
            if (next != kNever) [[unlikely]]
                list.ArmAgain(*this);
        }
        Firing(const Firing&) = delete;
        Firing& operator=(const Firing&) = delete;

        TimerList& list;
        UInt64 timer;
        double next; // when it fires again
        Firing* outer;
    };
    // A timer that waits for the user to be idle.
    struct IdleTimer {
        enum class State : UInt8 { Waiting, Idling, Stopping };

        UInt64 timer;
        double delay;
        State state;
    };

    Side* Find(UInt64 inTimer);
    Firing* FindFiring(UInt64 inTimer) const;
    Side* TakeSide(const Timer& inTimer);
    void Disarm(const Side& inSide);
    void Arm(Side& ioSide, double inTime);
    void MakeRoom();
    void CloseUp();
    void ClearLine();
    double ExactBound(size_t inBlock) const;
    bool CollectDue(double inNow);
    void SortDue(size_t inFirst);
    void SortByDigits(size_t inFirst);
    void Fire(UInt32 inPosition, double inNow);
    void FireRepeating(const Timer& inTimer, const Armed& inDue, double inNow);
    void FireIdle(const Timer& inTimer, const Armed& inDue, double inNow);
    void ArmAgain(const Firing& inFiring);
    IdleTimer& IdleOf(UInt64 inTimer);

    std::vector<Side> fSides;   // by the index of the reference
    std::vector<Timer> fTimers; // the same
    UInt32 fFree = kNowhere;    // an index
    size_t fCount = 0;

    std::vector<Armed> fLine;
    std::vector<double> fBounds; // no time of the block is earlier
    double fBound = kNever;      // no time at all is earlier
    size_t fArmed = 0;           // of the line
    size_t fRoom = 0;            // places of the line before it closes up

    std::vector<UInt32> fDue; // positions, a stack: passes nest
    std::vector<Armed> fSorting, fSorted;
    Firing* fFiring = nullptr;
    std::vector<IdleTimer> fIdle;
};

// Not destroyed at the end of the process: objects that are destroyed then may still remove their timers.
union TimerStorage {
    TimerList timers;
    constexpr TimerStorage() : timers() {}
    ~TimerStorage() {}
};
extern constinit TimerStorage gTimerStorage;
inline constexpr TimerList& gTimers = gTimerStorage.timers;

} // namespace lampblack::events

#endif
