// Which windows the mouse cannot reach, and the loops that run meanwhile.
#ifndef LAMPBLACK_WINDOWS_MODALITY_H
#define LAMPBLACK_WINDOWS_MODALITY_H

#include "Surface.h"
#include "WindowRecord.h"

namespace lampblack::windows {

// Behind a modal window, or under a sheet.
bool IsBlocked(WindowRecord& inWindow);
// The window goes away: its modal state and its loop end.
void LeaveModality(WindowRef inWindow);

} // namespace lampblack::windows

#endif
