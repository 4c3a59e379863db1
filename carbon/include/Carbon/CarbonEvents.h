// The events that the platform sends: their classes, kinds and parameters, commands, the application's event
// loop, and tracking of the mouse. The machine that carries them is in CarbonEventsCore.h.
#ifndef LAMPBLACK_CARBON_CARBONEVENTS_H
#define LAMPBLACK_CARBON_CARBONEVENTS_H

#include <Carbon/CarbonEventsCore.h>
#include <Carbon/Events.h>
#include <Carbon/HIGeometry.h>
#include <Carbon/MacTypes.h>

enum {
    kEventClassMouse = 'mous',
    kEventClassKeyboard = 'keyb',
    kEventClassTextInput = 'text',
    kEventClassApplication = 'appl',
    kEventClassMenu = 'menu',
    kEventClassWindow = 'wind',
    kEventClassControl = 'cntl',
    kEventClassCommand = 'cmds'
};

// Types of parameters beyond those of AEDataModel.h.
enum {
    typeWindowRef = 'wind',
    typeControlRef = 'ctrl',
    typeMenuRef = 'menu',
    typeGrafPtr = 'graf',
    typeGWorldPtr = 'gwld',
    typeQDRgnHandle = 'rgnh',
    typeQDPoint = 'QDpt',     // Point
    typeQDRectangle = 'qdrt', // Rect
    typeHIPoint = 'hipt',
    typeHISize = 'hisz',
    typeHIRect = 'hirc',
    typeVoidPtr = 'void',
    typeHICommand = 'hcmd',
    typeMouseButton = 'mbtn',    // EventMouseButton
    typeMouseWheelAxis = 'mwax', // EventMouseWheelAxis
    typeWindowPartCode = 'wpar',
    typeWindowDefPartCode = 'wdpt',
    typeWindowRegionCode = 'wshp',
    typeWindowModality = 'wmod',
    typeClickActivationResult = 'clac',
    typeControlPartCode = 'cprt',
    typeControlActionUPP = 'caup',
    typeIndicatorDragConstraint = 'cidc',
    typeMenuItemIndex = 'midx',
    typeMenuCommand = 'mcmd',
    typeMenuTrackingMode = 'mtmd',
    typeMenuEventOptions = 'meop',
    typeThemeMenuState = 'tmns',
    typeThemeMenuItemType = 'tmit'
};

// Parameters of several classes.
enum {
    kEventParamWindowRef = 'wind',
    kEventParamControlRef = 'ctrl',
    kEventParamMenuRef = 'menu',
    kEventParamGrafPort = 'graf',
    kEventParamEventRef = 'evnt',
    kEventParamRgnHandle = 'rgnh',
    kEventParamEnabled = 'enab',
    kEventParamDimensions = 'dims',
    kEventParamBounds = 'boun',
    kEventParamAvailableBounds = 'avlb',
    kEventParamCurrentBounds = 'crct',
    kEventParamOriginalBounds = 'orct',
    kEventParamPreviousBounds = 'prct',
    kEventParamMinimumSize = 'mnsz',
    kEventParamMaximumSize = 'mxsz',
    kEventParamAttributes = 'attr',
    kEventParamReason = 'why?',
    kEventParamResult = 'ansr',
    kEventParamIndex = 'indx',
    kEventParamUserData = 'usrd',
    kEventParamProcessID = 'psn '
};

// 'mous'
enum {
    kEventMouseDown = 1,
    kEventMouseUp = 2,
    kEventMouseMoved = 5,
    kEventMouseDragged = 6,
    kEventMouseEntered = 8,
    kEventMouseExited = 9,
    kEventMouseWheelMoved = 10
};
typedef UInt16 EventMouseButton;
enum { kEventMouseButtonPrimary = 1, kEventMouseButtonSecondary = 2, kEventMouseButtonTertiary = 3 };
typedef UInt16 EventMouseWheelAxis;
enum { kEventMouseWheelAxisX = 0, kEventMouseWheelAxisY = 1 };
enum {
    kEventParamMouseLocation = 'mloc',       // typeQDPoint, global; converts to typeHIPoint
    kEventParamWindowMouseLocation = 'wmou', // typeQDPoint, from the window's top left
    kEventParamMouseButton = 'mbtn',         // typeMouseButton
    kEventParamClickCount = 'ccnt',          // typeUInt32
    kEventParamMouseChord = 'chor',          // typeUInt32, the buttons that are down, bit 0 primary
    kEventParamMouseDelta = 'mdta',          // typeQDPoint, since the last event of the mouse
    kEventParamMouseWheelAxis = 'mwax',      // typeMouseWheelAxis
    kEventParamMouseWheelDelta = 'mwdl',     // typeSInt32, lines; positive is up or left
    kEventParamWindowPartCode = 'wpar',      // typeWindowPartCode
    kEventParamClickActivation = 'clac'      // typeClickActivationResult
};

// 'keyb'
enum { kEventRawKeyDown = 1, kEventRawKeyRepeat = 2, kEventRawKeyUp = 3, kEventRawKeyModifiersChanged = 4 };
enum { kEventKeyModifierNumLockBit = 16, kEventKeyModifierFnBit = 17 };
enum {
    kEventKeyModifierNumLockMask = 1 << kEventKeyModifierNumLockBit,
    kEventKeyModifierFnMask = 1 << kEventKeyModifierFnBit
};
enum {
    kEventParamKeyCode = 'kcod',         // typeUInt32, virtual key
    kEventParamKeyMacCharCodes = 'kchr', // typeChar, Mac Roman
    kEventParamKeyModifiers = 'kmod',    // typeUInt32; mouse events and commands carry it too
    kEventParamKeyUnicodes = 'kuni'      // typeUnicodeText; absent for a key that types nothing
};

// 'text'
enum { kEventTextInputUnicodeForKeyEvent = 2 };
enum {
    kEventParamTextInputSendText = 'tstx',         // typeUnicodeText
    kEventParamTextInputSendKeyboardEvent = 'tske' // typeEventRef, the raw key
};

// 'appl'
enum { kEventAppActivated = 1, kEventAppDeactivated = 2, kEventAppQuit = 3 };

// 'cmds'
enum { kEventProcessCommand = 1, kEventCommandProcess = 1, kEventCommandUpdateStatus = 2 };
enum {
    kHICommandOK = 'ok  ',
    kHICommandCancel = 'not!',
    kHICommandQuit = 'quit',
    kHICommandUndo = 'undo',
    kHICommandRedo = 'redo',
    kHICommandCut = 'cut ',
    kHICommandCopy = 'copy',
    kHICommandPaste = 'past',
    kHICommandClear = 'clea',
    kHICommandSelectAll = 'sall',
    kHICommandHide = 'hide',
    kHICommandHideOthers = 'hido',
    kHICommandShowAll = 'shal',
    kHICommandPreferences = 'pref',
    kHICommandZoomWindow = 'zoom',
    kHICommandMinimizeWindow = 'mini',
    kHICommandMinimizeAll = 'mina',
    kHICommandMaximizeWindow = 'maxi',
    kHICommandMaximizeAll = 'maxa',
    kHICommandArrangeInFront = 'frnt',
    kHICommandBringAllToFront = 'bfrt',
    kHICommandSelectWindow = 'swin',
    kHICommandRotateWindowsForward = 'rotw',
    kHICommandRotateWindowsBackward = 'rotb',
    kHICommandAbout = 'abou',
    kHICommandNew = 'new ',
    kHICommandOpen = 'open',
    kHICommandClose = 'clos',
    kHICommandSave = 'save',
    kHICommandSaveAs = 'svas',
    kHICommandRevert = 'rvrt',
    kHICommandPrint = 'prnt',
    kHICommandPageSetup = 'page',
    kHICommandAppHelp = 'ahlp'
};
enum { kHICommandFromMenu = 1 << 0, kHICommandFromControl = 1 << 1, kHICommandFromWindow = 1 << 2 };

struct HICommand {
    UInt32 attributes;
    UInt32 commandID;
    struct {
        MenuRef menuRef;
        UInt16 menuItemIndex;
    } menu; // with kHICommandFromMenu
};
typedef struct HICommand HICommand;

struct HICommandExtended {
    UInt32 attributes;
    UInt32 commandID;
    union {
        ControlRef control;
        WindowRef window;
        struct {
            MenuRef menuRef;
            UInt16 menuItemIndex;
        } menu;
    } source;
};
typedef struct HICommandExtended HICommandExtended;
static_assert(sizeof(HICommand) == sizeof(HICommandExtended), "typeHICommand carries either");

// 'menu'
enum {
    kEventMenuBeginTracking = 1,
    kEventMenuEndTracking = 2,
    kEventMenuChangeTrackingMode = 3,
    kEventMenuOpening = 4,
    kEventMenuClosed = 5,
    kEventMenuTargetItem = 6,
    kEventMenuMatchKey = 7,
    kEventMenuEnableItems = 8,
    kEventMenuPopulate = 9,
    kEventMenuMeasureItemWidth = 100,
    kEventMenuMeasureItemHeight = 101,
    kEventMenuDrawItem = 102,
    kEventMenuDrawItemContent = 103,
    kEventMenuDispose = 1001
};
enum {
    kEventParamCurrentMenuTrackingMode = 'cmtm',
    kEventParamNewMenuTrackingMode = 'nmtm',
    kEventParamMenuFirstOpen = '1sto', // typeBoolean
    kEventParamMenuItemIndex = 'item',
    kEventParamMenuCommand = 'mcmd',
    kEventParamEnableMenuForKeyEvent = 'fork', // typeBoolean
    kEventParamMenuEventOptions = 'meop',
    kEventParamMenuContext = 'mctx', // typeUInt32, kMenuContext bits of Menus.h
    kEventParamMenuItemBounds = 'mitb',
    kEventParamMenuMarkBounds = 'mmkb',
    kEventParamMenuIconBounds = 'micb',
    kEventParamMenuTextBounds = 'mtxb',
    kEventParamMenuTextBaseline = 'mtbl',
    kEventParamMenuCommandKeyBounds = 'mcmb',
    kEventParamMenuVirtualTop = 'mvrt',
    kEventParamMenuVirtualBottom = 'mvrb',
    kEventParamMenuDrawState = 'mdrs',
    kEventParamMenuItemType = 'mitp',
    kEventParamMenuItemWidth = 'mitw',
    kEventParamMenuItemHeight = 'mith'
};

// 'wind'
enum {
    kEventWindowUpdate = 1,
    kEventWindowDrawContent = 2,
    kEventWindowActivated = 5,
    kEventWindowDeactivated = 6,
    kEventWindowGetClickActivation = 7,
    kEventWindowGetClickModality = 8,
    kEventWindowShowing = 22,
    kEventWindowHiding = 23,
    kEventWindowShown = 24,
    kEventWindowHidden = 25,
    kEventWindowBoundsChanging = 26,
    kEventWindowBoundsChanged = 27,
    kEventWindowResizeStarted = 28,
    kEventWindowResizeCompleted = 29,
    kEventWindowDragStarted = 30,
    kEventWindowDragCompleted = 31,
    kEventWindowClickDragRgn = 32,
    kEventWindowClickResizeRgn = 33,
    kEventWindowClickCollapseRgn = 34,
    kEventWindowClickCloseRgn = 35,
    kEventWindowClickZoomRgn = 36,
    kEventWindowClickContentRgn = 37,
    kEventWindowClickProxyIconRgn = 38,
    kEventWindowCursorChange = 40,
    kEventWindowClickToolbarButtonRgn = 41,
    kEventWindowClickStructureRgn = 42,
    kEventWindowCollapse = 66,
    kEventWindowCollapsed = 67,
    kEventWindowCollapseAll = 68,
    kEventWindowExpand = 69,
    kEventWindowExpanded = 70,
    kEventWindowExpandAll = 71,
    kEventWindowClose = 72,
    kEventWindowClosed = 73,
    kEventWindowCloseAll = 74,
    kEventWindowZoom = 75,
    kEventWindowZoomed = 76,
    kEventWindowZoomAll = 77,
    kEventWindowContextualMenuSelect = 78,
    kEventWindowPathSelect = 79,
    kEventWindowGetIdealSize = 80,
    kEventWindowGetMinimumSize = 81,
    kEventWindowGetMaximumSize = 82,
    kEventWindowConstrain = 83,
    kEventWindowHandleContentClick = 85,
    kEventWindowCollapsing = 86,
    kEventWindowExpanding = 87,
    kEventWindowTransitionStarted = 88,
    kEventWindowTransitionCompleted = 89,
    kEventWindowHandleActivate = 91,
    kEventWindowHandleDeactivate = 92,
    kEventWindowFocusAcquired = 200,
    kEventWindowFocusRelinquish = 201,
    kEventWindowFocusContent = 202,
    kEventWindowSheetOpening = 210,
    kEventWindowSheetOpened = 211,
    kEventWindowSheetClosing = 212,
    kEventWindowSheetClosed = 213,
    kEventWindowDrawFrame = 1000,
    kEventWindowDrawPart = 1001,
    kEventWindowGetRegion = 1002,
    kEventWindowHitTest = 1003,
    kEventWindowInit = 1004,
    kEventWindowDispose = 1005,
    kEventWindowDragHilite = 1006,
    kEventWindowModified = 1007,
    kEventWindowStateChanged = 1009,
    kEventWindowMeasureTitle = 1010,
    kEventWindowDrawGrowBox = 1011,
    kEventWindowPaint = 1013
};
enum {
    kEventParamWindowFeatures = 'wftr',
    kEventParamWindowDefPart = 'wdpc',
    kEventParamWindowRegionCode = 'wshp',
    kEventParamWindowModality = 'wmod',
    kEventParamModalWindow = 'mwin',
    kEventParamWindowStateChangedFlags = 'wscf',
    kEventParamWindowTitleFullWidth = 'wtfw',
    kEventParamWindowTitleTextWidth = 'wttw',
    kEventParamWindowGrowRect = 'grct',
    kEventParamWindowModifiedFlag = 'wmff',
    kEventParamWindowDragHiliteFlag = 'wdhf'
};

// 'cntl'
enum {
    kEventControlHit = 1,
    kEventControlSimulateHit = 2,
    kEventControlHitTest = 3,
    kEventControlDraw = 4,
    kEventControlApplyBackground = 5,
    kEventControlApplyTextColor = 6,
    kEventControlSetFocusPart = 7,
    kEventControlGetFocusPart = 8,
    kEventControlActivate = 9,
    kEventControlDeactivate = 10,
    kEventControlSetCursor = 11,
    kEventControlContextualMenuClick = 12,
    kEventControlClick = 13,
    kEventControlGetNextFocusCandidate = 14,
    kEventControlGetAutoToggleValue = 15,
    kEventControlInterceptSubviewClick = 16,
    kEventControlGetClickActivation = 17,
    kEventControlInvalidateForSizeChange = 22,
    kEventControlTrackingAreaEntered = 23,
    kEventControlTrackingAreaExited = 24,
    kEventControlTrack = 51,
    kEventControlGetScrollToHereStartPoint = 52,
    kEventControlGetIndicatorDragConstraint = 53,
    kEventControlIndicatorMoved = 54,
    kEventControlGhostingFinished = 55,
    kEventControlGetActionProcPart = 56,
    kEventControlGetPartRegion = 101,
    kEventControlGetPartBounds = 102,
    kEventControlSetData = 103,
    kEventControlGetData = 104,
    kEventControlGetSizeConstraints = 105,
    kEventControlValueFieldChanged = 151,
    kEventControlAddedSubControl = 152,
    kEventControlRemovingSubControl = 153,
    kEventControlBoundsChanged = 154,
    kEventControlVisibilityChanged = 157,
    kEventControlTitleChanged = 158,
    kEventControlOwningWindowChanged = 159,
    kEventControlHiliteChanged = 160,
    kEventControlEnabledStateChanged = 161,
    kEventControlArbitraryMessage = 201,
    kEventControlInitialize = 1000,
    kEventControlDispose = 1001,
    kEventControlGetOptimalBounds = 1003
};
enum {
    kEventParamControlPart = 'cprt',
    kEventParamInitCollection = 'icol',
    kEventParamControlMessage = 'cmsg',
    kEventParamControlParam = 'cprm',
    kEventParamControlResult = 'crsl',
    kEventParamControlRegion = 'crgn',
    kEventParamControlAction = 'caup',
    kEventParamControlIndicatorDragConstraint = 'cidc',
    kEventParamControlIndicatorRegion = 'cirn',
    kEventParamControlIsGhosting = 'cgst',
    kEventParamControlIndicatorOffset = 'ciof',
    kEventParamControlClickActivationResult = 'ccar',
    kEventParamControlSubControl = 'csub',
    kEventParamControlOptimalBounds = 'cobn',
    kEventParamControlOptimalBaselineOffset = 'cobo',
    kEventParamControlDataTag = 'cdtg',
    kEventParamControlDataBuffer = 'cdbf',
    kEventParamControlDataBufferSize = 'cdbs',
    kEventParamControlDrawDepth = 'cddp',
    kEventParamControlDrawInColor = 'cdic',
    kEventParamControlFeatures = 'cftr',
    kEventParamControlPartBounds = 'cpbd',
    kEventParamControlOriginalOwningWindow = 'coow',
    kEventParamControlCurrentOwningWindow = 'ccow',
    kEventParamControlFocusEverything = 'cfev',
    kEventParamControlPreviousPart = 'copc',
    kEventParamControlCurrentPart = 'cnpc',
    kEventParamControlInvalRgn = 'civr',
    kEventParamControlValue = 'cval',
    kEventParamControlHit = 'chit'
};

// Mouse tracking
typedef UInt16 MouseTrackingResult;
enum {
    kMouseTrackingMouseDown = 1,
    kMouseTrackingMouseUp = 2,
    kMouseTrackingMouseExited = 3,
    kMouseTrackingMouseEntered = 4,
    kMouseTrackingMouseDragged = 5,
    kMouseTrackingKeyModifiersChanged = 6,
    kMouseTrackingUserCancelled = 7,
    kMouseTrackingTimedOut = 8,
    kMouseTrackingMouseMoved = 9,
    kMouseTrackingMousePressed = kMouseTrackingMouseDown,
    kMouseTrackingMouseReleased = kMouseTrackingMouseUp
};
enum { kTrackMouseLocationOptionDontConsumeMouseUp = 1 << 0 };

LAMPBLACK_BEGIN_C

// The application's loop

// RunApplicationEventLoop
//
// Receives events and sends them to the dispatcher until QuitApplicationEventLoop, which also ends the loops
// that run inside of it. Quitting before it runs makes it return at once. As it leaves, the application
// target hears kEventAppQuit.
void RunApplicationEventLoop(void);
void QuitApplicationEventLoop(void);

// ProcessHICommand
//
// Sends kEventCommandProcess with this command: to the menu it came from, else to the user focus.
//
// Errors:     paramErr, eventNotHandledErr, else what the handler answers
OSStatus ProcessHICommand(const HICommand* inCommand);

// TrackMouseLocation
//
// Waits until the mouse does something while a button is down.
//
// Units:      the point is local to the port (NULL: the current port; (GrafPtr)-1: global).
OSStatus TrackMouseLocation(GrafPtr inPort, Point* outPt, MouseTrackingResult* outResult);
OSStatus TrackMouseLocationWithOptions(GrafPtr inPort, OptionBits inOptions, EventTimeout inTimeout,
                                       Point* outPt, UInt32* outModifiers, MouseTrackingResult* outResult);

// TrackMouseRegion
//
// Waits until the mouse enters or leaves a region (local to the port) or is released. *ioWasInRgn says where
// it was before.
OSStatus TrackMouseRegion(GrafPtr inPort, RgnHandle inRegion, Boolean* ioWasInRgn,
                          MouseTrackingResult* outResult);

LAMPBLACK_END_C

#define InstallApplicationEventHandler(h, n, l, d, r)                                                        \
    InstallEventHandler(GetApplicationEventTarget(), (h), (n), (l), (d), (r))
#define InstallWindowEventHandler(w, h, n, l, d, r)                                                          \
    InstallEventHandler(GetWindowEventTarget(w), (h), (n), (l), (d), (r))
#define InstallControlEventHandler(c, h, n, l, d, r)                                                         \
    InstallEventHandler(GetControlEventTarget(c), (h), (n), (l), (d), (r))
#define InstallMenuEventHandler(m, h, n, l, d, r)                                                            \
    InstallEventHandler(GetMenuEventTarget(m), (h), (n), (l), (d), (r))
#define SendEventToApplication(e) SendEventToEventTarget((e), GetApplicationEventTarget())
#define SendEventToWindow(e, w) SendEventToEventTarget((e), GetWindowEventTarget(w))
#define SendEventToControl(e, c) SendEventToEventTarget((e), GetControlEventTarget(c))
#define SendEventToMenu(e, m) SendEventToEventTarget((e), GetMenuEventTarget(m))
#define SendEventToUserFocus(e) SendEventToEventTarget((e), GetUserFocusEventTarget())

// Defines GetxUPP(), which makes the handler x's UPP once.
#define DEFINE_ONE_SHOT_HANDLER_GETTER(x)                                                                    \
    EventHandlerUPP Get##x##UPP()                                                                            \
    {                                                                                                        \
        static EventHandlerUPP sHandler = NewEventHandlerUPP(x);                                             \
        return sHandler;                                                                                     \
    }

#endif
