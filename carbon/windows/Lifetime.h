// Making and ending windows.
#ifndef LAMPBLACK_WINDOWS_LIFETIME_H
#define LAMPBLACK_WINDOWS_LIFETIME_H

#include "WindowRecord.h"

namespace lampblack::windows {

// Drops one owner; the last one ends the window.
void Release(WindowRef inWindow);

} // namespace lampblack::windows

#endif
