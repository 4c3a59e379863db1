// Work that has to be done before the loop blocks.
#ifndef LAMPBLACK_EVENTS_WAITHOOKS_H
#define LAMPBLACK_EVENTS_WAITHOOKS_H

namespace lampblack::events {

// Called before each wait with the time now; answers when it must be called again at the latest
// (host::kForever: never). In a loop that is too busy to wait it is called all the same, sixty times a
// second, between two events. A hook may post events, install and remove timers; it must not run a loop.
void AddWaitHook(double (*inHook)(double inNow));

// How often the process has waited so far, for tests of what wakes an application that is idle.
unsigned long WaitsSoFar();

} // namespace lampblack::events

#endif
