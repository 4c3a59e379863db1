// The Control Manager: making, embedding, drawing, tracking and asking controls. Kinds of controls, their
// data tags and the calls that make them are in ControlDefinitions.h. Begin at CreateRootControl, NewControl
// and GetNewControl.
#ifndef LAMPBLACK_CARBON_CONTROLS_H
#define LAMPBLACK_CARBON_CONTROLS_H

#include <Carbon/CarbonEvents.h>
#include <Carbon/Events.h>
#include <Carbon/Files.h>
#include <Carbon/MacErrors.h>
#include <Carbon/MacTypes.h>
#include <Carbon/Menus.h>
#include <Carbon/Quickdraw.h>

typedef SInt16 ControlPartCode;
typedef ControlPartCode ControlFocusPart;
typedef SInt16 ControlKeyFilterResult;
typedef SInt16 ControlSize;

// Part codes. A kind uses those of its own parts; the first two groups are understood by every control.
enum {
    kControlNoPart = 0,
    kControlIndicatorPart = 129,
    kControlDisabledPart = 254,
    kControlInactivePart = 255,

    kControlEntireControl = 0,
    kControlStructureMetaPart = -1,
    kControlContentMetaPart = -2,

    kControlFocusNoPart = 0,
    kControlFocusNextPart = -1,
    kControlFocusPrevPart = -2,

    kControlLabelPart = 1,
    kControlMenuPart = 2,
    kControlTrianglePart = 4,
    kControlEditTextPart = 5,
    kControlPicturePart = 6,
    kControlIconPart = 7,
    kControlButtonPart = 10,
    kControlCheckBoxPart = 11,
    kControlRadioButtonPart = 11,
    kControlUpButtonPart = 20,
    kControlDownButtonPart = 21,
    kControlPageUpPart = 22,
    kControlPageDownPart = 23,

    inLabel = kControlLabelPart,
    inMenu = kControlMenuPart,
    inTriangle = kControlTrianglePart,
    inButton = kControlButtonPart,
    inCheckBox = kControlCheckBoxPart,
    inUpButton = kControlUpButtonPart,
    inDownButton = kControlDownButtonPart,
    inPageUp = kControlPageUpPart,
    inPageDown = kControlPageDownPart,
    inThumb = kControlIndicatorPart
};

// Messages that a colour procedure hears.
enum { kControlMsgSetUpBackground = 23, kControlMsgApplyTextColor = 30 };

// What GetControlFeatures answers.
enum {
    kControlSupportsEmbedding = 1 << 1,
    kControlSupportsFocus = 1 << 2,
    kControlSupportsDataAccess = 1 << 6,
    kControlGetsFocusOnClick = 1 << 8,
    kControlSupportsCalcBestRect = 1 << 10,
    kControlHandlesTracking = 1 << 5,
    kControlWantsActivate = 1 << 4,
    kControlWantsIdle = 1 << 3,
    kControlSupportsLiveFeedback = 1 << 9
};

// A control's font: which fields count, and where a font number may also be one of the meta fonts.
enum {
    kControlUseFontMask = 0x0001,
    kControlUseFaceMask = 0x0002,
    kControlUseSizeMask = 0x0004,
    kControlUseForeColorMask = 0x0008,
    kControlUseBackColorMask = 0x0010,
    kControlUseModeMask = 0x0020,
    kControlUseJustMask = 0x0040,
    kControlUseAllMask = 0x00FF,
    kControlUseThemeFontIDMask = 0x0080,
    kControlAddFontSizeMask = 0x0100,
    kControlAddToMetaFontMask = 0x0200
};
enum {
    kControlFontBigSystemFont = -1,
    kControlFontSmallSystemFont = -2,
    kControlFontSmallBoldSystemFont = -3,
    kControlFontViewSystemFont = -4
};
struct ControlFontStyleRec {
    SInt16 flags;
    SInt16 font;
    SInt16 size;
    SInt16 style;
    SInt16 mode;
    SInt16 just;
    RGBColor foreColor;
    RGBColor backColor;
};
typedef struct ControlFontStyleRec ControlFontStyleRec;
typedef ControlFontStyleRec* ControlFontStylePtr;
static_assert(sizeof(ControlFontStyleRec) == 24, "the published size");

enum {
    kControlSizeNormal = 0,
    kControlSizeSmall = 1,
    kControlSizeLarge = 2,
    kControlSizeMini = 3,
    kControlSizeAuto = 0xFFFF
};

// Data tags of every kind that has the feature.
enum {
    kControlFontStyleTag = 'font', // ControlFontStyleRec
    kControlKeyFilterTag = 'fltr', // ControlKeyFilterUPP
    kControlKindTag = 'kind',      // ControlKind, read only
    kControlSizeTag = 'size'       // ControlSize
};

enum { kControlKeyFilterBlockKey = 0, kControlKeyFilterPassKey = 1 };

struct ControlID {
    OSType signature;
    SInt32 id;
};
typedef struct ControlID ControlID;
typedef ControlID* ControlIDPtr;

enum { kControlKindSignatureApple = 'appl' };
struct ControlKind {
    OSType signature;
    OSType kind;
};
typedef struct ControlKind ControlKind;
static_assert(sizeof(ControlID) == 8 && sizeof(ControlKind) == 8, "the published sizes");

enum { kControlPropertyPersistent = 0x00000001 };

// Callbacks
typedef void (*ControlActionProcPtr)(ControlRef inControl, ControlPartCode inPart);
typedef ControlKeyFilterResult (*ControlKeyFilterProcPtr)(ControlRef inControl, SInt16* ioKeyCode,
                                                          SInt16* ioCharCode, EventModifiers* ioModifiers);
typedef OSStatus (*ControlColorProcPtr)(ControlRef inControl, SInt16 inMessage, SInt16 inDrawDepth,
                                        Boolean inDrawInColor);
typedef ControlActionProcPtr ControlActionUPP;
typedef ControlKeyFilterProcPtr ControlKeyFilterUPP;
typedef ControlColorProcPtr ControlColorUPP;

LAMPBLACK_BEGIN_C

ControlActionUPP NewControlActionUPP(ControlActionProcPtr inProc);
void DisposeControlActionUPP(ControlActionUPP inUPP);
void InvokeControlActionUPP(ControlRef inControl, ControlPartCode inPart, ControlActionUPP inUPP);
ControlKeyFilterUPP NewControlKeyFilterUPP(ControlKeyFilterProcPtr inProc);
void DisposeControlKeyFilterUPP(ControlKeyFilterUPP inUPP);
ControlKeyFilterResult InvokeControlKeyFilterUPP(ControlRef inControl, SInt16* ioKeyCode, SInt16* ioCharCode,
                                                 EventModifiers* ioModifiers, ControlKeyFilterUPP inUPP);
ControlColorUPP NewControlColorUPP(ControlColorProcPtr inProc);
void DisposeControlColorUPP(ControlColorUPP inUPP);
OSStatus InvokeControlColorUPP(ControlRef inControl, SInt16 inMessage, SInt16 inDrawDepth,
                               Boolean inDrawInColor, ControlColorUPP inUPP);

// NewControl
//
// Makes a control in a window; with a root control in the window it is embedded in the root, else the window
// keeps a flat list. NULL when the window is invalid or no kind has this definition ID.
//
// Units:      bounds are local to the window, half open.
ControlRef NewControl(WindowRef inWindow, const Rect* inBounds, ConstStr255Param inTitle, Boolean inVisible,
                      SInt16 inValue, SInt16 inMinimum, SInt16 inMaximum, SInt16 inProcID, long inReference);

// GetNewControl
//
// Makes a control from a 'CNTL' resource: bounds, value, visible, maximum, minimum, definition ID, reference
// constant, Pascal title. NULL when the resource is missing (ResError tells), too short to hold its fixed
// fields, or of a definition ID that no kind has.
ControlRef GetNewControl(SInt16 inResourceID, WindowRef inWindow);
void DisposeControl(ControlRef inControl);
void KillControls(WindowRef inWindow);
Boolean IsValidControlHandle(ControlRef inControl);

// The hierarchy
OSErr CreateRootControl(WindowRef inWindow, ControlRef* outControl);
OSErr GetRootControl(WindowRef inWindow, ControlRef* outControl);
OSErr EmbedControl(ControlRef inControl, ControlRef inContainer);
OSErr AutoEmbedControl(ControlRef inControl, WindowRef inWindow);
OSErr GetSuperControl(ControlRef inControl, ControlRef* outParent);
OSErr CountSubControls(ControlRef inControl, UInt16* outCount);
OSErr GetIndexedSubControl(ControlRef inControl, UInt16 inIndex, ControlRef* outSubControl); // from 1
OSErr SetControlSupervisor(ControlRef inControl, ControlRef inBoss);

// DumpControlHierarchy
//
// Writes a text file, one indented line a control: kind, title, value, bounds, state. An existing file is
// replaced.
OSErr DumpControlHierarchy(WindowRef inWindow, const FSSpec* inDumpFile);

// Drawing
void DrawControls(WindowRef inWindow);
void UpdateControls(WindowRef inWindow, RgnHandle inUpdateRegion);
void Draw1Control(ControlRef inControl);
#define DrawOneControl(c) Draw1Control(c)
void DrawControlInCurrentPort(ControlRef inControl);
OSErr SetUpControlBackground(ControlRef inControl, SInt16 inDepth, Boolean inIsColorDevice);
OSErr SetUpControlTextColor(ControlRef inControl, SInt16 inDepth, Boolean inIsColorDevice);
OSStatus SetControlColorProc(ControlRef inControl, ControlColorUPP inProc);

// Finding and tracking. Points are local to the window.
ControlPartCode FindControl(Point inPoint, WindowRef inWindow, ControlRef* outControl);
ControlRef FindControlUnderMouse(Point inPoint, WindowRef inWindow, ControlPartCode* outPart);
ControlPartCode TestControl(ControlRef inControl, Point inPoint);
ControlPartCode HandleControlClick(ControlRef inControl, Point inPoint, EventModifiers inModifiers,
                                   ControlActionUPP inAction);
ControlPartCode TrackControl(ControlRef inControl, Point inPoint, ControlActionUPP inAction);
SInt16 HandleControlKey(ControlRef inControl, SInt16 inKeyCode, SInt16 inCharCode,
                        EventModifiers inModifiers);
OSStatus HandleControlSetCursor(ControlRef inControl, Point inPoint, EventModifiers inModifiers,
                                Boolean* outCursorWasSet);
void IdleControls(WindowRef inWindow);
EventTargetRef GetControlEventTarget(ControlRef inControl);
OSStatus SetControlCommandID(ControlRef inControl, UInt32 inCommandID);
OSStatus GetControlCommandID(ControlRef inControl, UInt32* outCommandID);
void SetControlAction(ControlRef inControl, ControlActionUPP inAction); // -1: the kind's own action
ControlActionUPP GetControlAction(ControlRef inControl);

// Place and size
Rect* GetControlBounds(ControlRef inControl, Rect* outBounds);
void SetControlBounds(ControlRef inControl, const Rect* inBounds);
void MoveControl(ControlRef inControl, SInt16 inH, SInt16 inV);
void SizeControl(ControlRef inControl, SInt16 inWidth, SInt16 inHeight);
OSErr GetBestControlRect(ControlRef inControl, Rect* outRect, SInt16* outBaseLineOffset);
OSStatus GetControlRegion(ControlRef inControl, ControlPartCode inPart, RgnHandle ioRegion);

// State
void ShowControl(ControlRef inControl);
void HideControl(ControlRef inControl);
Boolean IsControlVisible(ControlRef inControl);
OSErr SetControlVisibility(ControlRef inControl, Boolean inVisible, Boolean inDraw);
OSStatus EnableControl(ControlRef inControl);
OSStatus DisableControl(ControlRef inControl);
Boolean IsControlEnabled(ControlRef inControl);
OSErr ActivateControl(ControlRef inControl);
OSErr DeactivateControl(ControlRef inControl);
Boolean IsControlActive(ControlRef inControl);
void HiliteControl(ControlRef inControl, ControlPartCode inPart);
UInt16 GetControlHilite(ControlRef inControl);
Boolean IsControlHilited(ControlRef inControl);

// Values
SInt16 GetControlValue(ControlRef inControl);
void SetControlValue(ControlRef inControl, SInt16 inValue);
SInt16 GetControlMinimum(ControlRef inControl);
void SetControlMinimum(ControlRef inControl, SInt16 inMinimum);
SInt16 GetControlMaximum(ControlRef inControl);
void SetControlMaximum(ControlRef inControl, SInt16 inMaximum);
SInt32 GetControl32BitValue(ControlRef inControl);
void SetControl32BitValue(ControlRef inControl, SInt32 inValue);
SInt32 GetControl32BitMinimum(ControlRef inControl);
void SetControl32BitMinimum(ControlRef inControl, SInt32 inMinimum);
SInt32 GetControl32BitMaximum(ControlRef inControl);
void SetControl32BitMaximum(ControlRef inControl, SInt32 inMaximum);
SInt32 GetControlViewSize(ControlRef inControl);
void SetControlViewSize(ControlRef inControl, SInt32 inViewSize);

// What a control is and carries
WindowRef GetControlOwner(ControlRef inControl);
long GetControlReference(ControlRef inControl);
void SetControlReference(ControlRef inControl, long inReference);
void GetControlTitle(ControlRef inControl, Str255 outTitle);
void SetControlTitle(ControlRef inControl, ConstStr255Param inTitle);
OSStatus GetControlKind(ControlRef inControl, ControlKind* outKind);
OSErr GetControlFeatures(ControlRef inControl, UInt32* outFeatures);
OSStatus SetControlID(ControlRef inControl, const ControlID* inID);
OSStatus GetControlID(ControlRef inControl, ControlID* outID);
OSStatus GetControlByID(const WindowRef inWindow, const ControlID* inID, ControlRef* outControl);
OSErr SetControlFontStyle(ControlRef inControl, const ControlFontStyleRec* inStyle);
MenuRef GetControlPopupMenuHandle(ControlRef inControl);
void SetControlPopupMenuHandle(ControlRef inControl, MenuRef inMenu);
#define GetControlPopupMenuRef GetControlPopupMenuHandle
#define SetControlPopupMenuRef SetControlPopupMenuHandle
short GetControlPopupMenuID(ControlRef inControl);
void SetControlPopupMenuID(ControlRef inControl, short inMenuID);

// Data: what a kind keeps under a tag. Sizes are those of the type that ControlDefinitions.h names for the
// tag.
OSErr SetControlData(ControlRef inControl, ControlPartCode inPart, ResType inTag, Size inSize,
                     const void* inData);
OSErr GetControlData(ControlRef inControl, ControlPartCode inPart, ResType inTag, Size inBufferSize,
                     void* outData,
                     Size* outActualSize); // outActualSize may be NULL
OSErr GetControlDataSize(ControlRef inControl, ControlPartCode inPart, ResType inTag, Size* outSize);

// Properties: anything, under a creator and a tag
OSStatus SetControlProperty(ControlRef inControl, OSType inCreator, OSType inTag, ByteCount inSize,
                            const void* inData);
OSStatus GetControlProperty(ControlRef inControl, OSType inCreator, OSType inTag, ByteCount inBufferSize,
                            ByteCount* outActualSize, void* outData); // outActualSize may be NULL
OSStatus GetControlPropertySize(ControlRef inControl, OSType inCreator, OSType inTag, ByteCount* outSize);
OSStatus RemoveControlProperty(ControlRef inControl, OSType inCreator, OSType inTag);
OSStatus GetControlPropertyAttributes(ControlRef inControl, OSType inCreator, OSType inTag,
                                      UInt32* outAttributes);
OSStatus ChangeControlPropertyAttributes(ControlRef inControl, OSType inCreator, OSType inTag,
                                         UInt32 inAttributesToSet, UInt32 inAttributesToClear);

// Keyboard focus
OSErr GetKeyboardFocus(WindowRef inWindow, ControlRef* outControl);
OSErr SetKeyboardFocus(WindowRef inWindow, ControlRef inControl, ControlFocusPart inPart);
OSErr AdvanceKeyboardFocus(WindowRef inWindow);
OSErr ReverseKeyboardFocus(WindowRef inWindow);
OSErr ClearKeyboardFocus(WindowRef inWindow);

// The buttons that Return and Escape stand for. A NULL button takes the role away.
OSStatus SetWindowDefaultButton(WindowRef inWindow, ControlRef inControl);
OSStatus GetWindowDefaultButton(WindowRef inWindow, ControlRef* outControl);
OSStatus SetWindowCancelButton(WindowRef inWindow, ControlRef inControl);
OSStatus GetWindowCancelButton(WindowRef inWindow, ControlRef* outControl);

LAMPBLACK_END_C

#include <Carbon/ControlDefinitions.h>

#endif
