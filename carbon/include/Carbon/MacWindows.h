// The Window Manager: windows and their order, bounds, regions and properties, their mouse actions, and the
// modality that an application can ask for. Begin at CreateNewWindow.
#ifndef LAMPBLACK_CARBON_MACWINDOWS_H
#define LAMPBLACK_CARBON_MACWINDOWS_H

#include <Carbon/Appearance.h>
#include <Carbon/CFString.h>
#include <Carbon/CarbonEvents.h>
#include <Carbon/MacErrors.h>
#include <Carbon/MacTypes.h>
#include <Carbon/Quickdraw.h>

// What a window is. Groups of classes lie above one another: floating windows above documents, modal ones
// above those, the menu classes above everything.
typedef UInt32 WindowClass;
enum {
    kAlertWindowClass = 1,
    kMovableAlertWindowClass = 2,
    kModalWindowClass = 3,
    kMovableModalWindowClass = 4,
    kFloatingWindowClass = 5,
    kDocumentWindowClass = 6,
    kUtilityWindowClass = 8,
    kHelpWindowClass = 10,
    kSheetWindowClass = 11,
    kToolbarWindowClass = 12,
    kPlainWindowClass = 13,
    kSheetAlertWindowClass = 15,
    kAltPlainWindowClass = 16,
    kSimpleWindowClass = 18,
    kAllWindowClasses = 0xFFFFFFFFU
};

// What a window has. GetAvailableWindowAttributes answers which of them a class takes.
typedef OptionBits WindowAttributes;
enum {
    kWindowNoAttributes = 0,
    kWindowCloseBoxAttribute = 1U << 0,
    kWindowHorizontalZoomAttribute = 1U << 1,
    kWindowVerticalZoomAttribute = 1U << 2,
    kWindowFullZoomAttribute = kWindowHorizontalZoomAttribute | kWindowVerticalZoomAttribute,
    kWindowCollapseBoxAttribute = 1U << 3,
    kWindowResizableAttribute = 1U << 4,
    kWindowSideTitlebarAttribute = 1U << 5,
    kWindowMetalAttribute = 1U << 8,
    kWindowNoTitleBarAttribute = 1U << 9,
    kWindowDoesNotCycleAttribute = 1U << 15,
    kWindowNoUpdatesAttribute = 1U << 16,
    kWindowNoActivatesAttribute = 1U << 17,
    kWindowOpaqueForEventsAttribute = 1U << 18,
    kWindowCompositingAttribute = 1U << 19,
    kWindowNoShadowAttribute = 1U << 21,
    kWindowHideOnSuspendAttribute = 1U << 24,
    kWindowStandardHandlerAttribute = 1U << 25,
    kWindowHideOnFullScreenAttribute = 1U << 26,
    kWindowInWindowMenuAttribute = 1U << 27,
    kWindowLiveResizeAttribute = 1U << 28,
    kWindowIgnoreClicksAttribute = 1U << 29,
    kWindowNoConstrainAttribute = 1U << 31,
    kWindowStandardDocumentAttributes = kWindowCloseBoxAttribute | kWindowFullZoomAttribute |
                                        kWindowCollapseBoxAttribute | kWindowResizableAttribute,
    kWindowStandardFloatingAttributes = kWindowCloseBoxAttribute | kWindowCollapseBoxAttribute
};

// Window definitions by number, for NewCWindow and for 'WIND' resources.
enum {
    documentProc = 0,
    dBoxProc = 1,
    plainDBox = 2,
    altDBoxProc = 3,
    noGrowDocProc = 4,
    movableDBoxProc = 5,
    zoomDocProc = 8,
    zoomNoGrow = 12,
    rDocProc = 16, // to 23: eight ways to round its corners
    floatProc = 1985,
    floatGrowProc = 1987,
    floatZoomProc = 1989,
    floatZoomGrowProc = 1991,
    floatSideProc = 1993,
    floatSideGrowProc = 1995,
    floatSideZoomProc = 1997,
    floatSideZoomGrowProc = 1999,
    kWindowDocumentProc = 1024,
    kWindowGrowDocumentProc = 1025,
    kWindowVertZoomDocumentProc = 1026,
    kWindowVertZoomGrowDocumentProc = 1027,
    kWindowHorizZoomDocumentProc = 1028,
    kWindowHorizZoomGrowDocumentProc = 1029,
    kWindowFullZoomDocumentProc = 1030,
    kWindowFullZoomGrowDocumentProc = 1031,
    kWindowPlainDialogProc = 1040,
    kWindowShadowDialogProc = 1041,
    kWindowModalDialogProc = 1042,
    kWindowMovableModalDialogProc = 1043,
    kWindowAlertProc = 1044,
    kWindowMovableAlertProc = 1045,
    kWindowMovableModalGrowProc = 1046,
    kWindowFloatProc = 1057,
    kWindowFloatGrowProc = 1059,
    kWindowFloatVertZoomProc = 1061,
    kWindowFloatVertZoomGrowProc = 1063,
    kWindowFloatHorizZoomProc = 1065,
    kWindowFloatHorizZoomGrowProc = 1067,
    kWindowFloatFullZoomProc = 1069,
    kWindowFloatFullZoomGrowProc = 1071,
    kWindowFloatSideProc = 1073,
    kWindowFloatSideGrowProc = 1075,
    kWindowFloatSideVertZoomProc = 1077,
    kWindowFloatSideVertZoomGrowProc = 1079,
    kWindowFloatSideHorizZoomProc = 1081,
    kWindowFloatSideHorizZoomGrowProc = 1083,
    kWindowFloatSideFullZoomProc = 1085,
    kWindowFloatSideFullZoomGrowProc = 1087,
    kWindowSheetProc = 1088,
    kWindowSimpleProc = 1104,
    kWindowSimpleFrameProc = 1105,
    kWindowSheetAlertProc = 1120
};

enum { dialogKind = 2, userKind = 8, kDialogWindowKind = 2, kApplicationWindowKind = 8 };

typedef UInt16 WindowRegionCode;
enum {
    kWindowTitleBarRgn = 0,
    kWindowTitleTextRgn = 1,
    kWindowCloseBoxRgn = 2,
    kWindowZoomBoxRgn = 3,
    kWindowDragRgn = 5,
    kWindowGrowRgn = 6,
    kWindowCollapseBoxRgn = 7,
    kWindowTitleProxyIconRgn = 8,
    kWindowStructureRgn = 32,
    kWindowContentRgn = 33,
    kWindowUpdateRgn = 34,
    kWindowOpaqueRgn = 35,
    kWindowGlobalPortRgn = 40
};

typedef SInt16 WindowPartCode;
enum {
    inDesk = 0,
    inNoWindow = 0,
    inMenuBar = 1,
    inSysWindow = 2,
    inContent = 3,
    inDrag = 4,
    inGrow = 5,
    inGoAway = 6,
    inZoomIn = 7,
    inZoomOut = 8,
    inCollapseBox = 11,
    inProxyIcon = 12,
    inStructure = 15
};

// Where 'WIND', 'DLOG' and 'ALRT' resources ask to be put.
enum {
    kWindowNoPosition = 0x0000,
    kWindowDefaultPosition = 0x0000,
    kWindowCenterMainScreen = 0x280A,
    kWindowAlertPositionMainScreen = 0x300A,
    kWindowStaggerMainScreen = 0x380A,
    kWindowCenterParentWindow = 0xA80A,
    kWindowAlertPositionParentWindow = 0xB00A,
    kWindowStaggerParentWindow = 0xB80A,
    kWindowCenterParentWindowScreen = 0x680A,
    kWindowAlertPositionParentWindowScreen = 0x700A,
    kWindowStaggerParentWindowScreen = 0x780A
};

typedef UInt32 WindowPositionMethod;
enum {
    kWindowCenterOnMainScreen = 1,
    kWindowCenterOnParentWindow = 2,
    kWindowCenterOnParentWindowScreen = 3,
    kWindowCascadeOnMainScreen = 4,
    kWindowCascadeOnParentWindow = 5,
    kWindowCascadeOnParentWindowScreen = 6,
    kWindowAlertPositionOnMainScreen = 7,
    kWindowAlertPositionOnParentWindow = 8,
    kWindowAlertPositionOnParentWindowScreen = 9,
    kWindowCascadeStartAtParentWindowScreen = 10
};

typedef UInt32 WindowTransitionEffect;
enum {
    kWindowZoomTransitionEffect = 1,
    kWindowSheetTransitionEffect = 2,
    kWindowSlideTransitionEffect = 3,
    kWindowFadeTransitionEffect = 4
};

typedef UInt32 WindowTransitionAction;
enum {
    kWindowShowTransitionAction = 1,
    kWindowHideTransitionAction = 2,
    kWindowMoveTransitionAction = 3,
    kWindowResizeTransitionAction = 4
};

// What a transition tells when it starts and when it is completed.
enum {
    kEventParamWindowTransitionAction = 'wtac',
    kEventParamWindowTransitionEffect = 'wtef',
    typeWindowTransitionAction = 'wtac',
    typeWindowTransitionEffect = 'wtef'
};

typedef OptionBits WindowConstrainOptions;
enum {
    kWindowConstrainMayResize = 1U << 0,
    kWindowConstrainMoveRegardlessOfFit = 1U << 1,
    kWindowConstrainAllowPartial = 1U << 2,
    kWindowConstrainCalcOnly = 1U << 3,
    kWindowConstrainStandardOptions = kWindowConstrainMoveRegardlessOfFit
};

typedef UInt32 WindowModality;
enum {
    kWindowModalityNone = 0,
    kWindowModalitySystemModal = 1,
    kWindowModalityAppModal = 2,
    kWindowModalityWindowModal = 3
};

typedef UInt32 WindowActivationScope;
enum { kWindowActivationScopeNone = 0, kWindowActivationScopeIndependent = 1, kWindowActivationScopeAll = 2 };

// The answer to kEventWindowGetClickActivation.
typedef UInt32 ClickActivationResult;
enum {
    kDoNotActivateAndIgnoreClick = 0,
    kDoNotActivateAndHandleClick = 1,
    kActivateAndIgnoreClick = 2,
    kActivateAndHandleClick = 3
};

enum { kWindowPropertyPersistent = 0x00000001 };

// The bits of kEventParamAttributes of the bounds-changing events.
enum {
    kWindowBoundsChangeUserDrag = 1U << 0,
    kWindowBoundsChangeUserResize = 1U << 1,
    kWindowBoundsChangeSizeChanged = 1U << 2,
    kWindowBoundsChangeOriginChanged = 1U << 3,
    kWindowBoundsChangeZoom = 1U << 4
};

// Where NewCWindow and its kin put a window.
#define kFirstWindowOfClass ((WindowRef)(intptr_t)-1)
#define kLastWindowOfClass ((WindowRef)0)

// SetUserFocusWindow: the front window that takes activation has the focus.
#define kUserFocusAuto ((WindowRef)(intptr_t)-1)

LAMPBLACK_BEGIN_C

// --- Life of a window

// CreateNewWindow
//
// Makes a hidden window in front of the others of its class.
//
// Units:      inContentBounds is the content region in global pixels.
// Ownership:  the caller owns *outWindow; release it with DisposeWindow or ReleaseWindow.
// Errors:     paramErr  a null pointer or empty bounds; errUnrecognizedWindowClass;
//             errUnsupportedWindowAttributesForClass.
OSStatus CreateNewWindow(WindowClass inClass, WindowAttributes inAttributes, const Rect* inContentBounds,
                         WindowRef* outWindow);

// GetNewCWindow / GetNewWindow / NewCWindow / NewWindow
//
// A window from a 'WIND' resource, or by definition number. inStorage is ignored. inBehind is NULL for the
// back, (WindowRef)-1 for the front of its class. NULL when the resource or the definition is unknown.
WindowRef GetNewCWindow(short inWindowID, void* inStorage, WindowRef inBehind);
WindowRef GetNewWindow(short inWindowID, void* inStorage, WindowRef inBehind);
WindowRef NewCWindow(void* inStorage, const Rect* inBounds, ConstStr255Param inTitle, Boolean inVisible,
                     short inProcID, WindowRef inBehind, Boolean inGoAway, SInt32 inRefCon);
WindowRef NewWindow(void* inStorage, const Rect* inBounds, ConstStr255Param inTitle, Boolean inVisible,
                    short inProcID, WindowRef inBehind, Boolean inGoAway, SInt32 inRefCon);

// A window lives until as many calls released it as made and retained it. The last one hides it, sends
// kEventWindowClosed and kEventWindowDispose and ends the reference; inside the window's own handler too.
void DisposeWindow(WindowRef inWindow);
OSStatus ReleaseWindow(WindowRef inWindow);
OSStatus RetainWindow(WindowRef inWindow);
OSStatus CloneWindow(WindowRef inWindow);
ItemCount GetWindowRetainCount(WindowRef inWindow);
OSStatus GetWindowOwnerCount(WindowRef inWindow, ItemCount* outCount);
Boolean IsValidWindowPtr(WindowRef inWindow);

// --- Class, attributes, kind, title, properties

OSStatus GetWindowClass(WindowRef inWindow, WindowClass* outClass);
OSStatus SetWindowClass(WindowRef inWindow, WindowClass inClass); // before it is shown first
OSStatus GetWindowAttributes(WindowRef inWindow, WindowAttributes* outAttributes);
OSStatus ChangeWindowAttributes(WindowRef inWindow, WindowAttributes inSet, WindowAttributes inClear);
WindowAttributes GetAvailableWindowAttributes(WindowClass inClass);
OSStatus GetWindowModality(WindowRef inWindow, WindowModality* outModality, WindowRef* outUnavailableWindow);
OSStatus SetWindowModality(WindowRef inWindow, WindowModality inModality, WindowRef inUnavailableWindow);
OSStatus GetWindowActivationScope(WindowRef inWindow, WindowActivationScope* outScope);
OSStatus SetWindowActivationScope(WindowRef inWindow, WindowActivationScope inScope);

void SetWRefCon(WindowRef inWindow, long inData);
long GetWRefCon(WindowRef inWindow);
void SetWindowKind(WindowRef inWindow, short inKind);
short GetWindowKind(WindowRef inWindow);
void SetWTitle(WindowRef inWindow, ConstStr255Param inTitle);
void GetWTitle(WindowRef inWindow, Str255 outTitle); // empty for no window
// The same title. Characters that Mac Roman lacks become question marks. The caller releases the copy.
OSStatus SetWindowTitleWithCFString(WindowRef inWindow, CFStringRef inTitle);
OSStatus CopyWindowTitleAsCFString(WindowRef inWindow, CFStringRef* outTitle);
OSStatus SetWindowModified(WindowRef inWindow, Boolean inModified);
Boolean IsWindowModified(WindowRef inWindow);

// Errors: errWindowPropertyNotFound; errInvalidWindowProperty for creators that the system reserves for
// itself.
OSStatus SetWindowProperty(WindowRef inWindow, PropertyCreator inCreator, PropertyTag inTag, ByteCount inSize,
                           const void* inData);
OSStatus GetWindowProperty(WindowRef inWindow, PropertyCreator inCreator, PropertyTag inTag,
                           ByteCount inBufferSize, ByteCount* outActualSize, void* outBuffer);
OSStatus GetWindowPropertySize(WindowRef inWindow, PropertyCreator inCreator, PropertyTag inTag,
                               ByteCount* outSize);
OSStatus RemoveWindowProperty(WindowRef inWindow, PropertyCreator inCreator, PropertyTag inTag);
OSStatus GetWindowPropertyAttributes(WindowRef inWindow, PropertyCreator inCreator, PropertyTag inTag,
                                     OptionBits* outAttributes);
OSStatus ChangeWindowPropertyAttributes(WindowRef inWindow, PropertyCreator inCreator, PropertyTag inTag,
                                        OptionBits inSet, OptionBits inClear);

// --- Order and activation

// The list runs from the front to the back, hidden windows included.
WindowRef GetWindowList(void);
WindowRef GetNextWindow(WindowRef inWindow);
WindowRef GetPreviousWindow(WindowRef inWindow);
WindowRef FrontWindow(void); // the first visible one
WindowRef FrontNonFloatingWindow(void);
WindowRef ActiveNonFloatingWindow(void);
WindowRef GetFrontWindowOfClass(WindowClass inClass, Boolean inMustBeVisible);
WindowRef GetNextWindowOfClass(WindowRef inWindow, WindowClass inClass, Boolean inMustBeVisible);

void SelectWindow(WindowRef inWindow);
void BringToFront(WindowRef inWindow);
void SendBehind(WindowRef inWindow, WindowRef inBehind); // NULL: behind all
OSStatus ActivateWindow(WindowRef inWindow, Boolean inActivate);
void HiliteWindow(WindowRef inWindow, Boolean inHilite);
Boolean IsWindowHilited(WindowRef inWindow);
Boolean IsWindowActive(WindowRef inWindow);
OSStatus SetUserFocusWindow(WindowRef inWindow); // kUserFocusAuto, or a window
WindowRef GetUserFocusWindow(void);
EventTargetRef GetWindowEventTarget(WindowRef inWindow);

// InstallStandardEventHandler
//
// Gives a window, by its target, what kWindowStandardHandlerAttribute gives it. The application's standard
// handling of events is always there.
//
// Errors:     paramErr  no target of a window or of the application.
OSStatus InstallStandardEventHandler(EventTargetRef inTarget);

// --- Showing and hiding

void ShowWindow(WindowRef inWindow);
void HideWindow(WindowRef inWindow);
void ShowHide(WindowRef inWindow, Boolean inShow); // neither reorders nor activates
Boolean IsWindowVisible(WindowRef inWindow);
OSStatus ShowFloatingWindows(void);
OSStatus HideFloatingWindows(void);
Boolean AreFloatingWindowsVisible(void);
OSStatus TransitionWindow(WindowRef inWindow, WindowTransitionEffect inEffect,
                          WindowTransitionAction inAction, const Rect* inRect);
OSStatus TransitionWindowAndParent(WindowRef inWindow, WindowRef inParent, WindowTransitionEffect inEffect,
                                   WindowTransitionAction inAction, const Rect* inRect);

// A sheet hangs from the title bar of its parent, moves with it and keeps the mouse from it.
OSStatus ShowSheetWindow(WindowRef inSheet, WindowRef inParent);
OSStatus HideSheetWindow(WindowRef inSheet);
OSStatus GetSheetWindowParent(WindowRef inSheet, WindowRef* outParent);

// --- Place and size. Rectangles are global pixels unless the name says port.

OSStatus GetWindowBounds(WindowRef inWindow, WindowRegionCode inRegion, Rect* outBounds);
OSStatus SetWindowBounds(WindowRef inWindow, WindowRegionCode inRegion, const Rect* inBounds);
OSStatus GetWindowRegion(WindowRef inWindow, WindowRegionCode inRegion, RgnHandle ioRegion);
OSStatus GetWindowStructureWidths(WindowRef inWindow, Rect* outWidths);
void MoveWindow(WindowRef inWindow, short inLeft, short inTop, Boolean inFront);
void SizeWindow(WindowRef inWindow, short inWidth, short inHeight, Boolean inUpdate);
OSStatus MoveWindowStructure(WindowRef inWindow, short inLeft, short inTop);
OSStatus RepositionWindow(WindowRef inWindow, WindowRef inParent, WindowPositionMethod inMethod);

// ConstrainWindowToScreen
//
// Moves (or, asked to, shrinks) a window so that a region of it lies on the screen. inScreenRect may be NULL
// for the screen that holds most of it; outStructure may be NULL. Errors: errWindowDoesNotFitOnscreen;
// errWindowRegionCodeInvalid.
OSStatus ConstrainWindowToScreen(WindowRef inWindow, WindowRegionCode inRegion,
                                 WindowConstrainOptions inOptions, const Rect* inScreenRect,
                                 Rect* outStructure);
OSStatus GetWindowGreatestAreaDevice(WindowRef inWindow, WindowRegionCode inRegion, GDHandle* outDevice,
                                     Rect* outDeviceRect);
OSStatus GetAvailableWindowPositioningBounds(GDHandle inDevice, Rect* outBounds);
OSStatus GetAvailableWindowPositioningRegion(GDHandle inDevice, RgnHandle ioRegion);
RgnHandle GetGrayRgn(void); // the desktop without the menu bar; the system's own
long PinRect(const Rect* inRect, Point inPoint);

// Zooming. The standard state is what the application says is best; the user state is what the user made.
void ZoomWindow(WindowRef inWindow, WindowPartCode inPart, Boolean inFront);
OSStatus ZoomWindowIdeal(WindowRef inWindow, WindowPartCode inPart, Point* ioIdealSize);
Boolean IsWindowInStandardState(WindowRef inWindow, const Point* inIdealSize, Rect* outIdealStandardState);
OSStatus GetWindowIdealUserState(WindowRef inWindow, Rect* outUserState);
OSStatus SetWindowIdealUserState(WindowRef inWindow, const Rect* inUserState);
Rect* GetWindowStandardState(WindowRef inWindow, Rect* outRect);
void SetWindowStandardState(WindowRef inWindow, const Rect* inRect);
Rect* GetWindowUserState(WindowRef inWindow, Rect* outRect);
void SetWindowUserState(WindowRef inWindow, const Rect* inRect);

// A collapsed window is its title bar alone, where it stands.
OSStatus CollapseWindow(WindowRef inWindow, Boolean inCollapse);
OSStatus CollapseAllWindows(Boolean inCollapse);
Boolean IsWindowCollapsable(WindowRef inWindow);
Boolean IsWindowCollapsed(WindowRef inWindow);

// --- Ports and drawing

CGrafPtr GetWindowPort(WindowRef inWindow);
WindowRef GetWindowFromPort(CGrafPtr inPort); // NULL for a port that is no window's
void SetPortWindowPort(WindowRef inWindow);
Rect* GetWindowPortBounds(WindowRef inWindow, Rect* outBounds); // local; answers outBounds

// Rectangles and regions are in the window's local coordinates.
OSStatus InvalWindowRect(WindowRef inWindow, const Rect* inBounds);
OSStatus InvalWindowRgn(WindowRef inWindow, RgnHandle inRegion);
OSStatus ValidWindowRect(WindowRef inWindow, const Rect* inBounds);
OSStatus ValidWindowRgn(WindowRef inWindow, RgnHandle inRegion);
Boolean IsWindowUpdatePending(WindowRef inWindow);
void BeginUpdate(WindowRef inWindow);
void EndUpdate(WindowRef inWindow);

OSStatus SetThemeWindowBackground(WindowRef inWindow, ThemeBrush inBrush, Boolean inUpdate);
OSStatus SetThemeTextColorForWindow(WindowRef inWindow, Boolean inActive, SInt16 inDepth, Boolean inColor);
OSStatus SetWindowContentColor(WindowRef inWindow, const RGBColor* inColor);
OSStatus GetWindowContentColor(WindowRef inWindow, RGBColor* outColor);
OSStatus SetWindowAlpha(WindowRef inWindow, float inAlpha); // 0 to 1
OSStatus GetWindowAlpha(WindowRef inWindow, float* outAlpha);

// --- The mouse in windows

WindowPartCode FindWindow(Point inPoint, WindowRef* outWindow);
OSStatus FindWindowOfClass(const Point* inWhere, WindowClass inClass, WindowRef* outWindow,
                           WindowPartCode* outPart);
// The following track the mouse until it is released. Bounds may be NULL for the desktop.
void DragWindow(WindowRef inWindow, Point inStart, const Rect* inBounds);
long GrowWindow(WindowRef inWindow, Point inStart, const Rect* inLimits); // height, width; 0: unchanged
// inLimits: top and left are the least height and width, bottom and right the greatest. outContent may be
// NULL.
Boolean ResizeWindow(WindowRef inWindow, Point inStart, const Rect* inLimits, Rect* outContent);
Boolean TrackBox(WindowRef inWindow, Point inStart, WindowPartCode inPart);
Boolean TrackGoAway(WindowRef inWindow, Point inStart);

// --- Modality

// RunAppModalLoopForWindow
//
// Runs the event loop until QuitAppModalLoopForWindow. Clicks outside of the window and of what lies above it
// beep. Calls nest.
OSStatus RunAppModalLoopForWindow(WindowRef inWindow);
OSStatus QuitAppModalLoopForWindow(WindowRef inWindow);
OSStatus BeginAppModalStateForWindow(WindowRef inWindow);
OSStatus EndAppModalStateForWindow(WindowRef inWindow);

LAMPBLACK_END_C

#endif
