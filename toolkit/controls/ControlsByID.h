// Controls addressed by window and number: the number is the control's own resource ID (see GetNewControls).
#ifndef LAMPBLACK_CONTROLS_CONTROLSBYID_H
#define LAMPBLACK_CONTROLS_CONTROLSBYID_H

#include <Carbon/Carbon.h>

#include "util/Visibility.h"

LAMPBLACK_BEGIN

// Each finds the control and forwards. Errors: paramErr for a null window or an ID that no control has; value
// getters answer 0 then, setters without a result do nothing.
OSErr EnableControl(WindowRef inWindow, SInt32 inID);
OSErr DisableControl(WindowRef inWindow, SInt32 inID);
bool IsControlEnabledX(WindowRef inWindow, SInt32 inID);
SInt16 GetControlValueByID(WindowRef inWindow, SInt32 inID);
void SetControlValueByID(WindowRef inWindow, SInt32 inID, SInt16 inValue);
SInt32 GetControl32BitValueByID(WindowRef inWindow, SInt32 inID);
void SetControl32BitValueByID(WindowRef inWindow, SInt32 inID, SInt32 inValue);
OSErr SetEditTextControlContents(WindowRef inWindow, SInt32 inID, ConstStr255Param inText);
OSErr SetEditTextControlContents(WindowRef inWindow, SInt32 inID, const char* inText);
OSErr GetEditTextControlContents(WindowRef inWindow, SInt32 inID, Str255 outText);
OSErr GetEditTextControlContents(WindowRef inWindow, SInt32 inID, char* outText);
OSErr SetEditTextControlPassword(WindowRef inWindow, SInt32 inID, const char* inText);
OSErr SetStaticTextControlTitle(WindowRef inWindow, SInt32 inID, ConstStr255Param inText);
OSErr SetStaticTextControlTitle(WindowRef inWindow, SInt32 inID, const char* inText);

// HideControlByID, ShowControlByID
//
// Errors: paramErr also when the control is already so, which callers use to tell a change.
OSErr HideControlByID(WindowRef inWindow, SInt32 inID);
OSErr ShowControlByID(WindowRef inWindow, SInt32 inID);

LAMPBLACK_END

#endif
