// Showing and hiding.
#ifndef LAMPBLACK_WINDOWS_VISIBILITY_H
#define LAMPBLACK_WINDOWS_VISIBILITY_H

#include "WindowRecord.h"

namespace lampblack::windows {

// Sends the events, changes what is seen, leaves order and activation alone. The window may be gone
// afterwards.
void SetVisible(WindowRef inWindow, bool inVisible);

} // namespace lampblack::windows

#endif
