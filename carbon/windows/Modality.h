// Which windows the mouse cannot reach, and the loops that run meanwhile.
#ifndef LAMPBLACK_WINDOWS_MODALITY_H
#define LAMPBLACK_WINDOWS_MODALITY_H

#include "WindowRecord.h"

namespace lampblack::windows {

// Behind a modal window, or under a sheet.
bool IsBlocked(WindowRecord& inWindow);
// Whether any window keeps the others, and with them most of the menus, from the user.
bool IsAppModal();
// The window goes away: its modal state and its loop end.
void LeaveModality(WindowRef inWindow);

} // namespace lampblack::windows

#endif
