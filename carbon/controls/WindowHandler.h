// The controls' part of the standard window handler.
#ifndef LAMPBLACK_CONTROLS_WINDOWHANDLER_H
#define LAMPBLACK_CONTROLS_WINDOWHANDLER_H

#include <Carbon/MacTypes.h>

namespace lampblack::controls {

// Called once for each window that gets controls.
void InstallWindowHandler(WindowRef inWindow);

} // namespace lampblack::controls

#endif
