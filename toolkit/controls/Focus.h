// What depends on where the user is: keyboard focus, the cursor, idling carets.
#ifndef LAMPBLACK_CONTROLS_FOCUS_H
#define LAMPBLACK_CONTROLS_FOCUS_H

#include <Carbon/Carbon.h>

#include "util/Visibility.h"

LAMPBLACK_BEGIN

typedef OSType FocusChangeMethod;
enum : FocusChangeMethod { kFocusAdvance = 'fADV', kFocusReverse = 'fREV' };

// ChangeKeyboardFocus (by method)
//
// Moves the focus on or back; any other method clears it. Always noErr.
OSErr ChangeKeyboardFocus(WindowRef inWindow, FocusChangeMethod inMethod);

// ChangeKeyboardFocus (to a control)
//
// Gives the control the focus unless it has it, and may then select all text of an edit field.
// Errors: paramErr for a null window or control, else what SetKeyboardFocus answers.
OSErr ChangeKeyboardFocus(WindowRef inWindow, ControlRef inControl, bool inSelectAll);

// SetPointingHandCursor, SetIBeamCursor, SetWatchCursor, SetArrowCursor
//
// Show a theme cursor. The kind shown last is remembered, and without inForce asking for it again costs
// nothing.
void SetPointingHandCursor(bool inForce);
void SetIBeamCursor(bool inForce);
void SetWatchCursor(bool inForce);
void SetArrowCursor(bool inForce);

// SetCursorUnknown
//
// Forgets which cursor is shown, so that the next setter acts.
void SetCursorUnknown();

// InstallIdleControlsTimer, RemoveIdleControlsTimer, IdleControlsTimer
//
// A timer that idles a window's controls so that carets blink; on Mac OS X, which does so itself, all of them
// do nothing. A window keeps the mark of its timer after removal, so a second install does nothing.
// Errors: what InstallEventLoopTimer and GetWindowProperty answer.
OSStatus InstallIdleControlsTimer(WindowRef inWindow);
OSStatus RemoveIdleControlsTimer(WindowRef inWindow);
void IdleControlsTimer(EventLoopTimerRef inTimer, void* inWindow);

LAMPBLACK_END

#endif
