// Timers for controls that move by themselves: carets, indeterminate progress. They are started by whoever
// draws; a control that cannot be seen any longer, or is disposed of, loses its timer and costs no wake-up.
#ifndef LAMPBLACK_CONTROLS_IDLING_H
#define LAMPBLACK_CONTROLS_IDLING_H

#include "controls/ControlRecord.h"

namespace lampblack::controls {

// Calls the kind's Idle every so many seconds, with its window's port current. A second start changes the
// interval.
void StartIdling(Control& inControl, double inInterval);
void StopIdling(Control& inControl);
bool IsIdling(const Control& inControl);

} // namespace lampblack::controls

#endif
