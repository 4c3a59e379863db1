// The loop: one place where the process waits.
#ifndef LAMPBLACK_EVENTS_LOOP_H
#define LAMPBLACK_EVENTS_LOOP_H

#include "events/Queue.h"
#include "events/Runs.h"

#include <atomic>

namespace lampblack::events {

// The second of the machine's clock at which a wait of that length is over; a negative one never is.
double DeadlineAfter(EventTimeout inTimeout);

// Waits for an event in the queue. Timers fire and wait hooks run meanwhile. *outEvent stays in the queue.
// Answers eventLoopTimedOutErr or eventLoopQuitErr when there is none.
OSStatus Await(Matcher inMatcher, double inDeadline, Event** outEvent);

// Takes it from the queue; the queue's reference is the caller's.
void Take(Event* inEvent);

// Sends an event, with the reference that Take gave, to the dispatcher, and releases it.
OSStatus Dispatch(Event* inEvent);

// Receives and dispatches until the run ends (eventLoopQuitErr) or the time is over (eventLoopTimedOutErr).
OSStatus DispatchUntil(double inDeadline);

// Lets the wait hooks do what is due, and answers when they want to be called again.
double RunWaitHooks(double inNow);

// Ends a wait that is going on.
void EndWait();
extern std::atomic<bool> gIsWaiting;
inline void WakeLoop()
{
    if (gIsWaiting) [[unlikely]]
        EndWait();
}

} // namespace lampblack::events

#endif
