// The control events: sending each to a control's target, and the default handlers that stand behind every
// target. A control that nobody ever asked a target of has no handlers, and its kind is called directly.
#ifndef LAMPBLACK_CONTROLS_CONTROLEVENTS_H
#define LAMPBLACK_CONTROLS_CONTROLEVENTS_H

#include "controls/Kind.h"

namespace lampblack::controls {

EventTargetRef TargetOf(Control& ioControl); // made on the first call

// These reach the control alone.
void SendDraw(Control& inControl, ControlPartCode inPart);
ControlPartCode SendHitTest(Control& inControl, Point inPoint);
ControlPartCode SendTrack(Control& inControl, const TrackInfo& inInfo);
// The part that took the focus; *outStatus tells why none did.
ControlFocusPart SendSetFocusPart(Control& inControl, ControlFocusPart inPart, OSStatus* outStatus);
void Notify(Control& inControl, UInt32 inEventKind); // something of the control changed
void NotifyDispose(Control& inControl);

// These climb from the control to its window and the application.
OSStatus SendClick(Control& inControl, EventRef inMouseDown, Point inLocal);
OSStatus SendContextualClick(Control& inControl, EventRef inMouseDown, Point inLocal);
bool SendSetCursor(Control& inControl, Point inLocal, UInt32 inModifiers);
// A hit that no handler took becomes the control's command, when it has one.
OSStatus SendHit(Control& inControl, ControlPartCode inPart, UInt32 inModifiers);

// Presses a button as the keyboard does: flashes it, then hits it.
void SimulateHit(Control& inControl, UInt32 inModifiers);

} // namespace lampblack::controls

#endif
