// Typed access to control data and to the toolkit's per-control properties. Every accessor answers paramErr
// for a null control unless it says otherwise; predicates answer false on any error.
#ifndef LAMPBLACK_CONTROLS_CONTROLDATA_H
#define LAMPBLACK_CONTROLS_CONTROLDATA_H

#include <Carbon/Carbon.h>

#include "util/Visibility.h"

LAMPBLACK_BEGIN

// The application's creator of per-control behaviour flags: the letters ZEMP.
enum : unsigned { kBehaviourCreator = 0x5A454D50 };

// Definition IDs that the toolkit branches on.
enum {
    kProgressBarDefID = 80,
    kEditTextDefID = 272,
    kPasswordEditTextDefID = 274,
    kStaticTextDefID = 288,
    kListBoxDefID = 352,
    kAutoSizeListBoxDefID = 353,
    kPushButtonDefID = 368,
    kUnicodeEditTextDefID = 912,
    kUnicodePasswordEditTextDefID = 914
};

// IsEditTextDefID
//
// One of the four edit-text definitions, plain or password, classic or Unicode.
bool IsEditTextDefID(SInt32 inDefID);

// GetControlDefProcID, SetControlDefProcID
//
// The definition ID that a control was made with; 0 for a null control or one without.
SInt32 GetControlDefProcID(ControlRef inControl);
OSErr SetControlDefProcID(ControlRef inControl, SInt32 inDefID);

// SetControlID, GetControlID, GetControlByID
//
// A control's number under the toolkit's signature. GetControlID answers -1 on any failure and does not look
// at the signature; GetControlByID answers NULL when there is no such control.
OSErr SetControlID(ControlRef inControl, SInt32 inID);
SInt32 GetControlID(ControlRef inControl);
ControlRef GetControlByID(WindowRef inWindow, SInt32 inID);

// InvalControl
//
// The control's bounds need drawing. Errors: paramErr also when it is in no window.
OSErr InvalControl(ControlRef inControl);

// ActivateRootControl, DeactivateRootControl
//
// All controls of a window at once. Errors: paramErr for a null window, else what GetRootControl answers.
OSErr ActivateRootControl(WindowRef inWindow);
OSErr DeactivateRootControl(WindowRef inWindow);

// IsControlKeyboardFocus, HasKeyboardFocus
//
// Whether the control is the window's focus, and whether the window has one; *outControl, which may be NULL,
// receives it. A null control matches a window without focus.
bool IsControlKeyboardFocus(WindowRef inWindow, ControlRef inControl);
bool HasKeyboardFocus(WindowRef inWindow, ControlRef* outControl);

// The text of an edit field. The Pascal form is cut at 255 bytes; the C form is not, so that its buffer must
// hold the whole text and a zero.
OSErr GetEditTextControlContents(ControlRef inControl, Str255 outText);
OSErr GetEditTextControlContents(ControlRef inControl, char* outText);
OSErr GetEditTextControlContentsLength(ControlRef inControl, UInt32* outLength);

// Set the text, Mac Roman, and redraw.
OSErr SetEditTextControlContents(ControlRef inControl, ConstStr255Param inText);
OSErr SetEditTextControlContents(ControlRef inControl, const char* inText);
OSErr SetEditTextControlPassword(ControlRef inControl, const char* inText);

// A read-only edit field.
bool IsEditTextControlLocked(ControlRef inControl);
OSErr SetEditTextControlIsLocked(ControlRef inControl, bool inIsLocked);

OSErr SetEditTextControlFontStyle(ControlRef inControl, const ControlFontStyleRec* inStyle);

// SetControlFont
//
// The font by number, or by one of the control meta fonts (-1 big system, -2 small system).
OSErr SetControlFont(ControlRef inControl, SInt16 inFont);

// Static text. The C form of the getter needs a buffer for the whole text and a zero.
OSErr GetStaticTextControlTitle(ControlRef inControl, char* outText);
OSErr SetStaticTextControlTitle(ControlRef inControl, ConstStr255Param inText);
OSErr SetStaticTextControlTitle(ControlRef inControl, const char* inText);

OSErr SetProgressBarControlIsIndeterminate(ControlRef inControl, bool inIsIndeterminate);
OSErr SetPushButtonControlAsCancel(ControlRef inControl, bool inIsCancel);
OSErr SetPushButtonControlAsDefault(ControlRef inControl, bool inIsDefault);

// A control that works as a web link.
bool IsControlURL(ControlRef inControl);

// A control that handles its own clicks.
bool IsControlHandlingClicks(ControlRef inControl);
OSErr SetControlIsHandlingClicks(ControlRef inControl, bool inIsHandling);

// IsControlEnabledX, EnableControlX, DisableControlX
//
// With Aqua a control's enabled state; without, its active state, which was all that earlier systems had. A
// control already in that state is left alone.
bool IsControlEnabledX(ControlRef inControl);
OSErr EnableControlX(ControlRef inControl);
OSErr DisableControlX(ControlRef inControl);

// FlashControl
//
// Shows an enabled control pressed in that part for 8 ticks.
void FlashControl(ControlRef inControl, SInt16 inPart);

LAMPBLACK_END

#endif
