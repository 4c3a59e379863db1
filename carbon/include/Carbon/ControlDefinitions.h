// The kinds of controls: definition IDs, kinds, data tags and the calls that make them.
// Begin at the block of the kind that you use; Controls.h has what all kinds share.
#ifndef LAMPBLACK_CARBON_CONTROLDEFINITIONS_H
#define LAMPBLACK_CARBON_CONTROLDEFINITIONS_H

#include <Carbon/Controls.h>
#include <Carbon/TextEdit.h>

// Definition IDs for NewControl and 'CNTL' resources.
enum {
    // The first buttons. Adding 8 asks for the window's font; they look like their successors.
    pushButProc = 0,
    checkBoxProc = 1,
    radioButProc = 2,
    scrollBarProc = 16,
    popupMenuProc = 1008,
    kControlUsesOwningWindowsFontVariant = 1 << 3,

    kControlPushButtonProc = 368,
    kControlCheckBoxProc = 369,
    kControlRadioButtonProc = 370,
    kControlCheckBoxAutoToggleProc = 371,
    kControlRadioButtonAutoToggleProc = 372,

    kControlScrollBarProc = 384,
    kControlScrollBarLiveProc = 386,

    kControlStaticTextProc = 288,
    kControlEditTextProc = 272,
    kControlEditTextPasswordProc = 274,
    kControlProgressBarProc = 80,
    kControlUserPaneProc = 256,
    kControlSeparatorLineProc = 144,
    kControlGroupBoxTextTitleProc = 160,
    kControlGroupBoxCheckBoxProc = 161,
    kControlGroupBoxSecondaryTextTitleProc = 164,
    kControlGroupBoxSecondaryCheckBoxProc = 165,
    kControlPopupButtonProc = 400,
    kControlPopupFixedWidthVariant = 1 << 0,
    kControlPopupVariableWidthVariant = 1 << 1,
    kControlPopupUseAddResMenuVariant = 1 << 2,
    kControlPopupUseWFontVariant = kControlUsesOwningWindowsFontVariant
};

// Definition IDs of the smaller kinds, and their data
enum {
    kControlSliderProc = 48,
    kControlSliderLiveFeedback = 1 << 0,
    kControlSliderHasTickMarks = 1 << 1,
    kControlSliderReverseDirection = 1 << 2,
    kControlSliderNonDirectional = 1 << 3,
    kControlTriangleProc = 64,
    kControlTriangleLeftFacingProc = 65,
    kControlTriangleAutoToggleProc = 66,
    kControlTriangleLeftFacingAutoToggleProc = 67,
    kControlLittleArrowsProc = 96,
    kControlChasingArrowsProc = 112,
    kControlPlacardProc = 224,
    kControlWindowHeaderProc = 336,
    kControlWindowListViewHeaderProc = 337,
    kControlBevelButtonSmallBevelProc = 32,
    kControlBevelButtonNormalBevelProc = 33,
    kControlBevelButtonLargeBevelProc = 34,

    kControlKindSlider = 'sldr',
    kControlKindDisclosureTriangle = 'dist',
    kControlKindLittleArrows = 'larr',
    kControlKindChasingArrows = 'carr',
    kControlKindPlacard = 'plac',
    kControlKindWindowHeader = 'whed',
    kControlKindBevelButton = 'bevl',

    kControlTriangleLastValueTag = 'last',     // SInt16
    kControlChasingArrowsAnimatingTag = 'anim' // Boolean
};

// How a bevel button behaves: the high byte of the minimum that it is made with.
enum { kControlBehaviorPushbutton = 0, kControlBehaviorToggles = 0x0100, kControlBehaviorSticky = 0x0200 };

// What it shows beside its title: the low byte of that minimum. The maximum is the ID of the resource.
typedef SInt16 ControlContentType;
enum {
    kControlContentTextOnly = 0,
    kControlContentIconSuiteRes = 1,
    kControlContentCIconRes = 2,
    kControlContentPictRes = 3,
    kControlContentICONRes = 4
};

// Push buttons
enum {
    kControlKindPushButton = 'push',
    kControlPushButtonDefaultTag = 'dflt', // Boolean
    kControlPushButtonCancelTag = 'cncl'   // Boolean
};

// Check boxes and radio buttons: value 0 off, 1 on, 2 mixed
enum {
    kControlKindCheckBox = 'cbox',
    kControlKindRadioButton = 'rdio',
    kControlCheckBoxUncheckedValue = 0,
    kControlCheckBoxCheckedValue = 1,
    kControlCheckBoxMixedValue = 2,
    kControlRadioButtonUncheckedValue = 0,
    kControlRadioButtonCheckedValue = 1,
    kControlRadioButtonMixedValue = 2
};

// Scroll bars
enum {
    kControlKindScrollBar = 'sbar',
    kControlScrollBarShowsArrowsTag = 'arro' // Boolean
};

// Static text
enum {
    kControlKindStaticText = 'stxt',
    kControlStaticTextStyleTag = kControlFontStyleTag,
    kControlStaticTextTextTag = 'text',      // characters
    kControlStaticTextTextHeightTag = 'thei' // SInt16, read only
};

// Edit text, on a TextEdit record
enum {
    kControlKindEditText = 'etxt',
    kControlEditTextStyleTag = kControlFontStyleTag,
    kControlEditTextTextTag = 'text',     // characters
    kControlEditTextTEHandleTag = 'than', // TEHandle, read only
    kControlEditTextKeyFilterTag = kControlKeyFilterTag,
    kControlEditTextSelectionTag = 'sele',      // ControlEditTextSelectionRec
    kControlEditTextPasswordTag = 'pass',       // characters; the text behind the bullets
    kControlEditTextLockedTag = 'lock',         // Boolean
    kControlEditTextValidationProcTag = 'vali', // ControlEditTextValidationUPP
    kControlEditTextSingleLineTag = 'sglc'      // Boolean
};
struct ControlEditTextSelectionRec {
    SInt16 selStart;
    SInt16 selEnd;
};
typedef struct ControlEditTextSelectionRec ControlEditTextSelectionRec;
typedef ControlEditTextSelectionRec* ControlEditTextSelectionPtr;
typedef void (*ControlEditTextValidationProcPtr)(ControlRef inControl);
typedef ControlEditTextValidationProcPtr ControlEditTextValidationUPP;

// Progress bars
enum {
    kControlKindProgressBar = 'prgb',
    kControlProgressBarIndeterminateTag = 'inde', // Boolean
    kControlProgressBarAnimatingTag = 'anim'      // Boolean
};

// Separators and group boxes
enum {
    kControlKindSeparator = 'sepa',
    kControlKindGroupBox = 'grpb',
    kControlKindCheckGroupBox = 'cgrp',
    kControlGroupBoxFontStyleTag = kControlFontStyleTag,
    kControlGroupBoxTitleRectTag = 'trec' // Rect, read only
};

// Popup buttons
enum {
    kControlKindPopupButton = 'popb',
    kControlPopupButtonMenuHandleTag = 'mhan',   // MenuRef
    kControlPopupButtonMenuRefTag = 'mhan',      // MenuRef
    kControlPopupButtonMenuIDTag = 'mnid',       // SInt16
    kControlPopupButtonOwnedMenuRefTag = 'omrf', // MenuRef, disposed with the control
    kControlPopupButtonCheckCurrentTag = 'chck'  // Boolean
};

// User panes: the application's procedures do the work
enum {
    kControlKindUserPane = 'upan',
    kControlUserPaneDrawProcTag = 'draw',
    kControlUserPaneHitTestProcTag = 'hitt',
    kControlUserPaneTrackingProcTag = 'trak',
    kControlUserPaneIdleProcTag = 'idle',
    kControlUserPaneKeyDownProcTag = 'keyd',
    kControlUserPaneActivateProcTag = 'acti',
    kControlUserPaneFocusProcTag = 'foci',
    kControlUserPaneBackgroundProcTag = 'back'
};
struct ControlBackgroundRec {
    SInt16 depth;
    Boolean colorDevice;
};
typedef struct ControlBackgroundRec ControlBackgroundRec;
typedef ControlBackgroundRec* ControlBackgroundPtr;
typedef void (*ControlUserPaneDrawProcPtr)(ControlRef inControl, SInt16 inPart);
typedef ControlPartCode (*ControlUserPaneHitTestProcPtr)(ControlRef inControl, Point inWhere);
typedef ControlPartCode (*ControlUserPaneTrackingProcPtr)(ControlRef inControl, Point inStart,
                                                          ControlActionUPP inAction);
typedef void (*ControlUserPaneIdleProcPtr)(ControlRef inControl);
typedef ControlPartCode (*ControlUserPaneKeyDownProcPtr)(ControlRef inControl, SInt16 inKeyCode,
                                                         SInt16 inCharCode, SInt16 inModifiers);
typedef void (*ControlUserPaneActivateProcPtr)(ControlRef inControl, Boolean inActivating);
typedef ControlPartCode (*ControlUserPaneFocusProcPtr)(ControlRef inControl, ControlFocusPart inAction);
typedef void (*ControlUserPaneBackgroundProcPtr)(ControlRef inControl, ControlBackgroundPtr inInfo);
typedef ControlUserPaneDrawProcPtr ControlUserPaneDrawUPP;
typedef ControlUserPaneHitTestProcPtr ControlUserPaneHitTestUPP;
typedef ControlUserPaneTrackingProcPtr ControlUserPaneTrackingUPP;
typedef ControlUserPaneIdleProcPtr ControlUserPaneIdleUPP;
typedef ControlUserPaneKeyDownProcPtr ControlUserPaneKeyDownUPP;
typedef ControlUserPaneActivateProcPtr ControlUserPaneActivateUPP;
typedef ControlUserPaneFocusProcPtr ControlUserPaneFocusUPP;
typedef ControlUserPaneBackgroundProcPtr ControlUserPaneBackgroundUPP;

LAMPBLACK_BEGIN_C

ControlEditTextValidationUPP NewControlEditTextValidationUPP(ControlEditTextValidationProcPtr inProc);
void DisposeControlEditTextValidationUPP(ControlEditTextValidationUPP inUPP);
void InvokeControlEditTextValidationUPP(ControlRef inControl, ControlEditTextValidationUPP inUPP);
ControlUserPaneDrawUPP NewControlUserPaneDrawUPP(ControlUserPaneDrawProcPtr inProc);
void DisposeControlUserPaneDrawUPP(ControlUserPaneDrawUPP inUPP);
ControlUserPaneHitTestUPP NewControlUserPaneHitTestUPP(ControlUserPaneHitTestProcPtr inProc);
void DisposeControlUserPaneHitTestUPP(ControlUserPaneHitTestUPP inUPP);
ControlUserPaneTrackingUPP NewControlUserPaneTrackingUPP(ControlUserPaneTrackingProcPtr inProc);
void DisposeControlUserPaneTrackingUPP(ControlUserPaneTrackingUPP inUPP);
ControlUserPaneIdleUPP NewControlUserPaneIdleUPP(ControlUserPaneIdleProcPtr inProc);
void DisposeControlUserPaneIdleUPP(ControlUserPaneIdleUPP inUPP);
ControlUserPaneKeyDownUPP NewControlUserPaneKeyDownUPP(ControlUserPaneKeyDownProcPtr inProc);
void DisposeControlUserPaneKeyDownUPP(ControlUserPaneKeyDownUPP inUPP);
ControlUserPaneActivateUPP NewControlUserPaneActivateUPP(ControlUserPaneActivateProcPtr inProc);
void DisposeControlUserPaneActivateUPP(ControlUserPaneActivateUPP inUPP);
ControlUserPaneFocusUPP NewControlUserPaneFocusUPP(ControlUserPaneFocusProcPtr inProc);
void DisposeControlUserPaneFocusUPP(ControlUserPaneFocusUPP inUPP);
ControlUserPaneBackgroundUPP NewControlUserPaneBackgroundUPP(ControlUserPaneBackgroundProcPtr inProc);
void DisposeControlUserPaneBackgroundUPP(ControlUserPaneBackgroundUPP inUPP);

// The calls that make a control of one kind. The control is visible at once; paramErr for a NULL argument.
OSStatus CreateScrollBarControl(WindowRef inWindow, const Rect* inBounds, SInt32 inValue, SInt32 inMinimum,
                                SInt32 inMaximum, SInt32 inViewSize, Boolean inLiveTracking,
                                ControlActionUPP inLiveTrackingProc, ControlRef* outControl);
OSStatus CreateSeparatorControl(WindowRef inWindow, const Rect* inBounds, ControlRef* outControl);
OSStatus CreateUserPaneControl(WindowRef inWindow, const Rect* inBounds, UInt32 inFeatures,
                               ControlRef* outControl);
OSStatus CreateProgressBarControl(WindowRef inWindow, const Rect* inBounds, SInt32 inValue, SInt32 inMinimum,
                                  SInt32 inMaximum, Boolean inIndeterminate, ControlRef* outControl);

LAMPBLACK_END_C

#endif
