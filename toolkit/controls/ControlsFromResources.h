// A window's controls from its resources: a 'CTL#' list names them, a 'CNTL' makes each, and side resources
// with the control's own ID add what a 'CNTL' cannot say.
#ifndef LAMPBLACK_CONTROLS_CONTROLSFROMRESOURCES_H
#define LAMPBLACK_CONTROLS_CONTROLSFROMRESOURCES_H

#include <Carbon/Carbon.h>

#include "util/Visibility.h"

LAMPBLACK_BEGIN

// GetNewControls
//
// Creates every control of a 'CTL#' list in the window, in its order. Each gets its resource ID as its
// control ID, is embedded in the control that its refCon names (else in the root), and is hidden when it was
// parked 16384 pixels to the right. The first edit field gets the keyboard focus.
//
// Shape:      'CTL#' is a run of 16-bit 'CNTL' IDs. Read beside each 'CNTL': 'xBTN' (push buttons: bit 0
//             cancel, bit 1 default), 'PBAR' (progress bars: byte 0 indeterminate), 'CNTS' (16-bit control
//             size), 'CNTF' (a ControlFontStyleRec); the last two fall back to the window's ID.
//             Byte layout in docs/formats/CTLlist.md.
// Errors:     the embedding status of the last control; a missing list or control is no error.
OSErr GetNewControls(WindowRef inWindow, SInt16 inListID);

// GetNewControlEnhanced
//
// GetNewControl, then the resource ID as control ID. NULL when there is no such 'CNTL'.
ControlRef GetNewControlEnhanced(SInt16 inID, WindowRef inWindow);

// GetControlFontStyleFromResource
//
// Reads a 'CNTF'. Font -5 means bold 14-point Lucida Grande on Mac OS X, 12345 Monaco and 12346 Geneva; a
// record that does not ask for a font gets the big system font.
//
// Shape:      24 bytes, host byte order.
// Errors:     resNotFound  no such resource, or one shorter than the record.
OSErr GetControlFontStyleFromResource(SInt32 inID, ControlFontStyleRec* outStyle);

// SetupNewControlFontStyle
//
// Applies the control's 'CNTF', else the window's, unless the control is a Unicode edit field.
void SetupNewControlFontStyle(WindowRef inWindow, ControlRef inControl, SInt32 inID);

// ControlColorProc
//
// The colour procedure of styled controls: their own colour, style and mode over the platform's.
OSStatus ControlColorProc(ControlRef inControl, SInt16 inMessage, SInt16 inDepth, Boolean inIsColor);

LAMPBLACK_END

#endif
