// What of a window has to be drawn again, and the events that ask for it.
#ifndef LAMPBLACK_WINDOWS_UPDATES_H
#define LAMPBLACK_WINDOWS_UPDATES_H

#include "WindowRecord.h"

namespace lampblack::windows {

// Rectangles and regions here are relative to the top left of the content.
void Invalidate(WindowRecord& ioWindow, const Region& inRegion);
void Validate(WindowRecord& ioWindow, const Region& inRegion);
// Fills with the window's background.
void EraseContent(WindowRecord& inWindow, const Region& inRegion);
// Erases and invalidates the whole content.
void RedrawContent(WindowRecord& ioWindow);
// Puts an update event into the queue when one is due and none is there.
void PostUpdate(WindowRecord& ioWindow);
void CancelUpdate(WindowRecord& ioWindow);
// Lets the window draw at once, without waiting for the queue: while it is resized, and before a modal track.
void UpdateNow(WindowRef inWindow);
// A window that is hidden or collapsed cannot be drawn in.
void UpdateVisibleRegion(WindowRecord& ioWindow);

} // namespace lampblack::windows

#endif
