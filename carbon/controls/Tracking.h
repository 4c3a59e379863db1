// Finding the control under a point and taking a click to its end.
#ifndef LAMPBLACK_CONTROLS_TRACKING_H
#define LAMPBLACK_CONTROLS_TRACKING_H

#include "controls/Kind.h"

namespace lampblack::controls {

// The topmost visible control there, usable or not; never the root.
Control* ControlAt(WindowControls& inControls, Point inPoint);
// The part there of a control that can be used, else none.
ControlPartCode PartAt(Control& inControl, Point inPoint);
bool IsContainer(const Control& inControl);

// Gives the focus, tracks, and sends the hit; answers the part that was hit.
ControlPartCode ClickIn(Control& inControl, const TrackInfo& inInfo);

} // namespace lampblack::controls

#endif
