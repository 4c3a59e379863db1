// Reading the common parameters of Carbon events in one call.
#ifndef LAMPBLACK_UTIL_CARBONEVENTHELPERS_H
#define LAMPBLACK_UTIL_CARBONEVENTHELPERS_H

#include <Carbon/Carbon.h>

#include "util/Visibility.h"

LAMPBLACK_BEGIN

// GetCarbonEventControl, GetCarbonEventWindow
//
// The direct object of an event as a control or a window; NULL for a null event or when it has none.
ControlRef GetCarbonEventControl(EventRef inEvent);
WindowRef GetCarbonEventWindow(EventRef inEvent);

// GetCarbonEventClickCount
//
// The click count of a mouse event; 0 for a null event or when it has none.
UInt32 GetCarbonEventClickCount(EventRef inEvent);

// ShiftKeyIsDown, OptionKeyIsDown
//
// The modifier as the event recorded it; without an argument, or for a null event, as the keyboard has it
// now.
bool ShiftKeyIsDown();
bool ShiftKeyIsDown(EventRef inEvent);
bool OptionKeyIsDown();
bool OptionKeyIsDown(EventRef inEvent);

LAMPBLACK_END

#endif
