// Which control of a window hears the keyboard.
#ifndef LAMPBLACK_CONTROLS_FOCUS_H
#define LAMPBLACK_CONTROLS_FOCUS_H

#include "controls/ControlRecord.h"

namespace lampblack::controls {

bool CanTakeFocus(const Control& inControl);
OSErr SetFocus(WindowControls& ioControls, Control* inControl, ControlFocusPart inPart);
OSErr MoveFocus(WindowControls& ioControls, bool inForward);
void DropFocus(WindowControls& ioControls); // without asking the control
void LeaveIfUnfit(Control& inControl);      // a control that went hidden or disabled passes the focus on

} // namespace lampblack::controls

#endif
