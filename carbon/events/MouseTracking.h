// Following the mouse while a button is down, in global coordinates. windows/ puts the published calls, which
// speak of ports and regions, on top.
#ifndef LAMPBLACK_EVENTS_MOUSETRACKING_H
#define LAMPBLACK_EVENTS_MOUSETRACKING_H

#include <Carbon/CarbonEvents.h>

namespace lampblack::events {

// Waits until the mouse is pressed, released, moved or dragged, the modifier keys change, or the time is over
// (outResult kMouseTrackingTimedOut, eventLoopTimedOutErr). Timers fire meanwhile. Without a mouse button
// down and no release waiting in the queue it answers kMouseTrackingMouseUp at once. Each out parameter may
// be null.
//
// kTrackMouseLocationOptionDontConsumeMouseUp leaves the release in the queue.
OSStatus TrackMouseGlobal(OptionBits inOptions, EventTimeout inTimeout, Point* outGlobal,
                          UInt32* outModifiers, MouseTrackingResult* outResult);

// Waits until the mouse is pressed or released, or crosses the border of an area (`inside` answers for a
// global point). *ioWasInside says where it was, and where it is afterwards.
OSStatus TrackMouseArea(bool (*inInside)(Point global, void* context), void* inContext, bool* ioWasInside,
                        MouseTrackingResult* outResult);

} // namespace lampblack::events

#endif
