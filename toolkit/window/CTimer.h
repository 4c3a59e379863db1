// CTimer: an event-loop timer that can be suspended and resumed, alone or together with all the others.
//
//     class Ball : public CTimer {
//         Ball() : CTimer(nullptr, 0.0, 1.0 / 60, nullptr) {}
//         void DoTimer(EventLoopTimerRef, void*) override { Step(); }
//     };
#ifndef LAMPBLACK_WINDOW_CTIMER_H
#define LAMPBLACK_WINDOW_CTIMER_H

#include <Carbon/Carbon.h>

#include "util/Visibility.h"

LAMPBLACK_BEGIN

// CTimer
//
// Made on the heap by its owner and running from construction; deleting it removes it from the event loop.
// Times are seconds; kEventDurationForever (-1.0) never comes. A procedure of NULL has each firing call the
// virtual DoTimer instead.
class CTimer {
public:
    CTimer(EventLoopTimerProcPtr inProc, double inDelay, double inInterval, void* inUserData);

    CTimer(const CTimer&) = delete;
    CTimer& operator=(const CTimer&) = delete;

    virtual ~CTimer();

    // Called at each firing of a timer without a procedure.
    virtual void DoTimer(EventLoopTimerRef inTimer, void* inUserData);

    // Suspensions nest; the first one stops the timer.
    virtual void Suspend();

    // The last Resume starts the timer again: a repeating one fires at once, a one-shot one that has not
    // fired after what is left of the delay given at construction. Calling it once too often re-arms the
    // timer again.
    virtual void Resume();

    // Fires next after this many seconds, even while suspended.
    virtual void SetNextFireTime(double inDelay);

    // Every live timer, in the order of creation. None may be made or deleted during the walk.
    static void SuspendAll();
    static void ResumeAll();

    // To be called around a Navigation Services dialog: before Mac OS X its loop starved timers, so all of
    // them rest meanwhile. On Mac OS X nothing happens.
    static void NavDialogOpen();
    static void NavDialogClosed();

    // Makes inB follow inA, either of which may be NULL; answers inB.
    static CTimer* Link(CTimer* inA, CTimer* inB);

    void CommonInit(EventLoopTimerProcPtr inProc, double inDelay, double inInterval, void* inUserData);
    void Insert();
    void Remove();

    EventLoopTimerProcPtr fProc;
    EventLoopTimerRef fTimerRef;
    double fDelay;
    double fInterval;
    double fNextFire;
    void* fUserData;
    SInt32 fSuspendCount;
    bool fFired;
    EventTime fStartTime;
    CTimer* fNext;
    CTimer* fPrev;

    static CTimer* cgHead;
};

// The procedure behind every CTimer; its user data is the timer.
void CTimerCallback(EventLoopTimerRef inTimer, void* inUserData);

// Suspends every timer while a menu is tracked; installed on systems before Mac OS X only.
OSStatus CTimerMenuEventHandler(EventHandlerCallRef inCallRef, EventRef inEvent, void* inUserData);

LAMPBLACK_END

#endif
