// The Appearance Manager: the fonts, colours, cursors and sounds of the theme, and the drawing of its
// buttons, tracks, frames, windows and menus. Every drawing call draws in the current port, in local
// coordinates; bounds hold their left and top edge and not their right and bottom edge. Begin at
// DrawThemeButton, DrawThemeTrack, DrawThemeWindowFrame.
#ifndef LAMPBLACK_CARBON_APPEARANCE_H
#define LAMPBLACK_CARBON_APPEARANCE_H

#include <Carbon/CFString.h>
#include <Carbon/MacErrors.h>
#include <Carbon/MacTypes.h>
#include <Carbon/Quickdraw.h>

typedef unsigned long URefCon; // holds a pointer, where the published 32 bits cannot
typedef long SRefCon;

// Colours

typedef SInt16 ThemeBrush;
enum {
    kThemeBrushDialogBackgroundActive = 1,
    kThemeBrushDialogBackgroundInactive = 2,
    kThemeBrushAlertBackgroundActive = 3,
    kThemeBrushAlertBackgroundInactive = 4,
    kThemeBrushModelessDialogBackgroundActive = 5,
    kThemeBrushModelessDialogBackgroundInactive = 6,
    kThemeBrushUtilityWindowBackgroundActive = 7,
    kThemeBrushUtilityWindowBackgroundInactive = 8,
    kThemeBrushListViewSortColumnBackground = 9,
    kThemeBrushListViewBackground = 10,
    kThemeBrushIconLabelBackground = 11,
    kThemeBrushListViewSeparator = 12,
    kThemeBrushChasingArrows = 13,
    kThemeBrushDragHilite = 14,
    kThemeBrushDocumentWindowBackground = 15,
    kThemeBrushFinderWindowBackground = 16,
    kThemeBrushScrollBarDelimiterActive = 17,
    kThemeBrushScrollBarDelimiterInactive = 18,
    kThemeBrushFocusHighlight = 19,
    kThemeBrushPopupArrowActive = 20,
    kThemeBrushPopupArrowPressed = 21,
    kThemeBrushPopupArrowInactive = 22,
    kThemeBrushAppleGuideCoachmark = 23,
    kThemeBrushIconLabelBackgroundSelected = 24,
    kThemeBrushStaticAreaFill = 25,
    kThemeBrushActiveAreaFill = 26,
    kThemeBrushButtonFrameActive = 27,
    kThemeBrushButtonFrameInactive = 28,
    kThemeBrushButtonFaceActive = 29,
    kThemeBrushButtonFaceInactive = 30,
    kThemeBrushButtonFacePressed = 31,
    kThemeBrushButtonActiveDarkShadow = 32,
    kThemeBrushButtonActiveDarkHighlight = 33,
    kThemeBrushButtonActiveLightShadow = 34,
    kThemeBrushButtonActiveLightHighlight = 35,
    kThemeBrushButtonInactiveDarkShadow = 36,
    kThemeBrushButtonInactiveDarkHighlight = 37,
    kThemeBrushButtonInactiveLightShadow = 38,
    kThemeBrushButtonInactiveLightHighlight = 39,
    kThemeBrushButtonPressedDarkShadow = 40,
    kThemeBrushButtonPressedDarkHighlight = 41,
    kThemeBrushButtonPressedLightShadow = 42,
    kThemeBrushButtonPressedLightHighlight = 43,
    kThemeBrushBevelActiveLight = 44,
    kThemeBrushBevelActiveDark = 45,
    kThemeBrushBevelInactiveLight = 46,
    kThemeBrushBevelInactiveDark = 47,
    kThemeBrushNotificationWindowBackground = 48,
    kThemeBrushMovableModalBackground = 49,
    kThemeBrushSheetBackgroundOpaque = 50,
    kThemeBrushDrawerBackground = 51,
    kThemeBrushToolbarBackground = 52,
    kThemeBrushSheetBackgroundTransparent = 53,
    kThemeBrushMenuBackground = 54,
    kThemeBrushMenuBackgroundSelected = 55,
    kThemeBrushSheetBackground = kThemeBrushSheetBackgroundOpaque,
    kThemeBrushBlack = -1,
    kThemeBrushWhite = -2,
    kThemeBrushPrimaryHighlightColor = -3,
    kThemeBrushSecondaryHighlightColor = -4
};

typedef SInt16 ThemeTextColor;
enum {
    kThemeTextColorDialogActive = 1,
    kThemeTextColorDialogInactive = 2,
    kThemeTextColorAlertActive = 3,
    kThemeTextColorAlertInactive = 4,
    kThemeTextColorModelessDialogActive = 5,
    kThemeTextColorModelessDialogInactive = 6,
    kThemeTextColorWindowHeaderActive = 7,
    kThemeTextColorWindowHeaderInactive = 8,
    kThemeTextColorPlacardActive = 9,
    kThemeTextColorPlacardInactive = 10,
    kThemeTextColorPlacardPressed = 11,
    kThemeTextColorPushButtonActive = 12,
    kThemeTextColorPushButtonInactive = 13,
    kThemeTextColorPushButtonPressed = 14,
    kThemeTextColorBevelButtonActive = 15,
    kThemeTextColorBevelButtonInactive = 16,
    kThemeTextColorBevelButtonPressed = 17,
    kThemeTextColorPopupButtonActive = 18,
    kThemeTextColorPopupButtonInactive = 19,
    kThemeTextColorPopupButtonPressed = 20,
    kThemeTextColorIconLabel = 21,
    kThemeTextColorListView = 22,
    kThemeTextColorDocumentWindowTitleActive = 23,
    kThemeTextColorDocumentWindowTitleInactive = 24,
    kThemeTextColorMovableModalWindowTitleActive = 25,
    kThemeTextColorMovableModalWindowTitleInactive = 26,
    kThemeTextColorUtilityWindowTitleActive = 27,
    kThemeTextColorUtilityWindowTitleInactive = 28,
    kThemeTextColorPopupWindowTitleActive = 29,
    kThemeTextColorPopupWindowTitleInactive = 30,
    kThemeTextColorRootMenuActive = 31,
    kThemeTextColorRootMenuSelected = 32,
    kThemeTextColorRootMenuDisabled = 33,
    kThemeTextColorMenuItemActive = 34,
    kThemeTextColorMenuItemSelected = 35,
    kThemeTextColorMenuItemDisabled = 36,
    kThemeTextColorPopupLabelActive = 37,
    kThemeTextColorPopupLabelInactive = 38,
    kThemeTextColorTabFrontActive = 39,
    kThemeTextColorTabNonFrontActive = 40,
    kThemeTextColorTabNonFrontPressed = 41,
    kThemeTextColorTabFrontInactive = 42,
    kThemeTextColorTabNonFrontInactive = 43,
    kThemeTextColorIconLabelSelected = 44,
    kThemeTextColorBevelButtonStickyActive = 45,
    kThemeTextColorBevelButtonStickyInactive = 46,
    kThemeTextColorNotification = 47,
    kThemeTextColorSystemDetail = 48,
    kThemeTextColorBlack = -1,
    kThemeTextColorWhite = -2
};

typedef UInt32 ThemeBackgroundKind;
enum {
    kThemeBackgroundTabPane = 1,
    kThemeBackgroundPlacard = 2,
    kThemeBackgroundWindowHeader = 3,
    kThemeBackgroundListViewWindowHeader = 4,
    kThemeBackgroundSecondaryGroupBox = 5
};

// States

typedef UInt32 ThemeDrawState;
enum {
    kThemeStateInactive = 0,
    kThemeStateActive = 1,
    kThemeStatePressed = 2,
    kThemeStatePressedUp = 2,   // the upper half of little arrows
    kThemeStatePressedDown = 3, // the lower half
    kThemeStateRollover = 6,
    kThemeStateUnavailable = 7,
    kThemeStateUnavailableInactive = 8,
    kThemeStateDisabled = 0
};

// Fonts, cursors, sounds

typedef UInt16 ThemeFontID;
enum {
    kThemeSystemFont = 0,
    kThemeSmallSystemFont = 1,
    kThemeSmallEmphasizedSystemFont = 2,
    kThemeViewsFont = 3,
    kThemeEmphasizedSystemFont = 4,
    kThemeApplicationFont = 5,
    kThemeLabelFont = 6,
    kThemeSystemFontDetail = 7,
    kThemeSystemFontDetailEmphasized = 8,
    kThemeMenuTitleFont = 100,
    kThemeMenuItemFont = 101,
    kThemeMenuItemMarkFont = 102,
    kThemeMenuItemCmdKeyFont = 103,
    kThemeWindowTitleFont = 104,
    kThemePushButtonFont = 105,
    kThemeUtilityWindowTitleFont = 106,
    kThemeAlertHeaderFont = 107,
    kThemeToolbarFont = 108,
    kThemeMiniSystemFont = 109,
    kThemeCurrentPortFont = 200
};

typedef UInt32 ThemeCursor;
enum {
    kThemeArrowCursor = 0,
    kThemeCopyArrowCursor = 1,
    kThemeAliasArrowCursor = 2,
    kThemeContextualMenuArrowCursor = 3,
    kThemeIBeamCursor = 4,
    kThemeCrossCursor = 5,
    kThemePlusCursor = 6,
    kThemeWatchCursor = 7,
    kThemeClosedHandCursor = 8,
    kThemeOpenHandCursor = 9,
    kThemePointingHandCursor = 10,
    kThemeCountingUpHandCursor = 11,
    kThemeCountingDownHandCursor = 12,
    kThemeCountingUpAndDownHandCursor = 13,
    kThemeSpinningCursor = 14,
    kThemeResizeLeftCursor = 15,
    kThemeResizeRightCursor = 16,
    kThemeResizeLeftRightCursor = 17,
    kThemeNotAllowedCursor = 18,
    kThemeResizeUpCursor = 19,
    kThemeResizeDownCursor = 20,
    kThemeResizeUpDownCursor = 21,
    kThemePoofCursor = 22
};

typedef FourCharCode ThemeSoundKind;
enum {
    kThemeSoundNone = 0,
    kThemeSoundMenuOpen = 'mnuo',
    kThemeSoundMenuClose = 'mnuc',
    kThemeSoundMenuItemHilite = 'mnui',
    kThemeSoundMenuItemRelease = 'mnus',
    kThemeSoundWindowClosePress = 'wclp',
    kThemeSoundWindowCloseEnter = 'wcle',
    kThemeSoundWindowCloseExit = 'wclx',
    kThemeSoundWindowCloseRelease = 'wclr',
    kThemeSoundWindowZoomPress = 'wzmp',
    kThemeSoundWindowZoomEnter = 'wzme',
    kThemeSoundWindowZoomExit = 'wzmx',
    kThemeSoundWindowZoomRelease = 'wzmr',
    kThemeSoundWindowCollapsePress = 'wcop',
    kThemeSoundWindowCollapseEnter = 'wcoe',
    kThemeSoundWindowCollapseExit = 'wcox',
    kThemeSoundWindowCollapseRelease = 'wcor',
    kThemeSoundWindowDragBoundary = 'wdbd',
    kThemeSoundUtilWinClosePress = 'uclp',
    kThemeSoundUtilWinCloseEnter = 'ucle',
    kThemeSoundUtilWinCloseExit = 'uclx',
    kThemeSoundUtilWinCloseRelease = 'uclr',
    kThemeSoundUtilWinZoomPress = 'uzmp',
    kThemeSoundUtilWinZoomEnter = 'uzme',
    kThemeSoundUtilWinZoomExit = 'uzmx',
    kThemeSoundUtilWinZoomRelease = 'uzmr',
    kThemeSoundUtilWinCollapsePress = 'ucop',
    kThemeSoundUtilWinCollapseEnter = 'ucoe',
    kThemeSoundUtilWinCollapseExit = 'ucox',
    kThemeSoundUtilWinCollapseRelease = 'ucor',
    kThemeSoundUtilWinDragBoundary = 'udbd',
    kThemeSoundWindowOpen = 'wopn',
    kThemeSoundWindowClose = 'wcls',
    kThemeSoundWindowZoomIn = 'wzmi',
    kThemeSoundWindowZoomOut = 'wzmo',
    kThemeSoundWindowCollapseUp = 'wcol',
    kThemeSoundWindowCollapseDown = 'wexp',
    kThemeSoundWindowActivate = 'wact',
    kThemeSoundUtilWindowOpen = 'uopn',
    kThemeSoundUtilWindowClose = 'ucls',
    kThemeSoundUtilWindowZoomIn = 'uzmi',
    kThemeSoundUtilWindowZoomOut = 'uzmo',
    kThemeSoundUtilWindowCollapseUp = 'ucol',
    kThemeSoundUtilWindowCollapseDown = 'uexp',
    kThemeSoundUtilWindowActivate = 'uact',
    kThemeSoundDialogOpen = 'dopn',
    kThemeSoundDialogClose = 'dlgc',
    kThemeSoundAlertOpen = 'aopn',
    kThemeSoundAlertClose = 'altc',
    kThemeSoundPopupWindowOpen = 'pwop',
    kThemeSoundPopupWindowClose = 'pwcl',
    kThemeSoundButtonPress = 'btnp',
    kThemeSoundButtonEnter = 'btne',
    kThemeSoundButtonExit = 'btnx',
    kThemeSoundButtonRelease = 'btnr',
    kThemeSoundDefaultButtonPress = 'dbtp',
    kThemeSoundDefaultButtonEnter = 'dbte',
    kThemeSoundDefaultButtonExit = 'dbtx',
    kThemeSoundDefaultButtonRelease = 'dbtr',
    kThemeSoundCancelButtonPress = 'cbtp',
    kThemeSoundCancelButtonEnter = 'cbte',
    kThemeSoundCancelButtonExit = 'cbtx',
    kThemeSoundCancelButtonRelease = 'cbtr',
    kThemeSoundCheckboxPress = 'chkp',
    kThemeSoundCheckboxEnter = 'chke',
    kThemeSoundCheckboxExit = 'chkx',
    kThemeSoundCheckboxRelease = 'chkr',
    kThemeSoundRadioPress = 'radp',
    kThemeSoundRadioEnter = 'rade',
    kThemeSoundRadioExit = 'radx',
    kThemeSoundRadioRelease = 'radr',
    kThemeSoundScrollArrowPress = 'sbap',
    kThemeSoundScrollArrowEnter = 'sbae',
    kThemeSoundScrollArrowExit = 'sbax',
    kThemeSoundScrollArrowRelease = 'sbar',
    kThemeSoundScrollEndOfTrack = 'sbte',
    kThemeSoundScrollTrackPress = 'sbtp',
    kThemeSoundSliderEndOfTrack = 'slte',
    kThemeSoundSliderTrackPress = 'sltp',
    kThemeSoundBalloonOpen = 'blno',
    kThemeSoundBalloonClose = 'blnc',
    kThemeSoundBevelPress = 'bevp',
    kThemeSoundBevelEnter = 'beve',
    kThemeSoundBevelExit = 'bevx',
    kThemeSoundBevelRelease = 'bevr',
    kThemeSoundLittleArrowUpPress = 'laup',
    kThemeSoundLittleArrowDnPress = 'ladp',
    kThemeSoundLittleArrowEnter = 'lare',
    kThemeSoundLittleArrowExit = 'larx',
    kThemeSoundLittleArrowUpRelease = 'laur',
    kThemeSoundLittleArrowDnRelease = 'ladr',
    kThemeSoundPopupPress = 'popp',
    kThemeSoundPopupEnter = 'pope',
    kThemeSoundPopupExit = 'popx',
    kThemeSoundPopupRelease = 'popr',
    kThemeSoundDisclosurePress = 'dscp',
    kThemeSoundDisclosureEnter = 'dsce',
    kThemeSoundDisclosureExit = 'dscx',
    kThemeSoundDisclosureRelease = 'dscr',
    kThemeSoundTabPressed = 'tabp',
    kThemeSoundTabEnter = 'tabe',
    kThemeSoundTabExit = 'tabx',
    kThemeSoundTabRelease = 'tabr',
    kThemeSoundDragTargetHilite = 'dthi',
    kThemeSoundDragTargetUnhilite = 'dtuh',
    kThemeSoundDragTargetDrop = 'dtdr',
    kThemeSoundEmptyTrash = 'ftrs',
    kThemeSoundSelectItem = 'fsel',
    kThemeSoundNewItem = 'fnew',
    kThemeSoundReceiveDrop = 'fdrp',
    kThemeSoundCopyDone = 'fcpd',
    kThemeSoundResolveAlias = 'fral',
    kThemeSoundLaunchApp = 'flap',
    kThemeSoundDiskInsert = 'dski',
    kThemeSoundDiskEject = 'dske',
    kThemeSoundFinderDragOnIcon = 'fdon',
    kThemeSoundFinderDragOffIcon = 'fdof'
};

// Buttons

typedef UInt16 ThemeButtonKind;
enum {
    kThemePushButton = 0,
    kThemeCheckBox = 1,
    kThemeRadioButton = 2,
    kThemeBevelButton = 3,
    kThemeArrowButton = 4,
    kThemePopupButton = 5,
    kThemeDisclosureTriangle = 6,
    kThemeDisclosureButton = 6,
    kThemeIncDecButton = 7,
    kThemeSmallBevelButton = 8,
    kThemeMediumBevelButton = 3,
    kThemeLargeBevelButton = 9,
    kThemeListHeaderButton = 10,
    kThemeRoundButton = 11,
    kThemeLargeRoundButton = 12,
    kThemeSmallCheckBox = 13,
    kThemeSmallRadioButton = 14,
    kThemeRoundedBevelButton = 15,
    kThemeNormalCheckBox = kThemeCheckBox,
    kThemeNormalRadioButton = kThemeRadioButton,
    kThemeComboBox = 16,
    kThemeComboBoxSmall = 17,
    kThemeComboBoxMini = 18,
    kThemeMiniCheckBox = 19,
    kThemeMiniRadioButton = 20,
    kThemeIncDecButtonSmall = 21,
    kThemeIncDecButtonMini = 22,
    kThemePushButtonSmall = 23,
    kThemePushButtonMini = 24,
    kThemePopupButtonSmall = 25,
    kThemePopupButtonMini = 26,
    kThemePushButtonNormal = kThemePushButton,
    kThemePopupButtonNormal = kThemePopupButton
};

typedef UInt16 ThemeButtonValue;
enum {
    kThemeButtonOff = 0,
    kThemeButtonOn = 1,
    kThemeButtonMixed = 2,
    kThemeDisclosureRight = 0,
    kThemeDisclosureDown = 1,
    kThemeDisclosureLeft = 2
};

typedef UInt16 ThemeButtonAdornment;
enum {
    kThemeAdornmentNone = 0,
    kThemeAdornmentDefault = 1 << 0,
    kThemeAdornmentFocus = 1 << 2,
    kThemeAdornmentRightToLeft = 1 << 4,
    kThemeAdornmentDrawIndicatorOnly = 1 << 5,
    kThemeAdornmentHeaderButtonLeftNeighborSelected = 1 << 6,
    kThemeAdornmentHeaderButtonRightNeighborSelected = 1 << 7,
    kThemeAdornmentHeaderButtonSortUp = 1 << 8,
    kThemeAdornmentHeaderMenuButton = 1 << 9,
    kThemeAdornmentHeaderButtonNoShadow = 1 << 10,
    kThemeAdornmentHeaderButtonShadowOnly = 1 << 11,
    kThemeAdornmentNoShadow = kThemeAdornmentHeaderButtonNoShadow,
    kThemeAdornmentShadowOnly = kThemeAdornmentHeaderButtonShadowOnly,
    kThemeAdornmentArrowLeftArrow = 1 << 6,
    kThemeAdornmentArrowDownArrow = 1 << 7,
    kThemeAdornmentArrowDoubleArrow = 1 << 8,
    kThemeAdornmentArrowUpArrow = 1 << 9
};

struct ThemeButtonDrawInfo {
    ThemeDrawState state;
    ThemeButtonValue value;
    ThemeButtonAdornment adornment;
};
typedef struct ThemeButtonDrawInfo ThemeButtonDrawInfo;
typedef ThemeButtonDrawInfo* ThemeButtonDrawInfoPtr;

// Tracks: scroll bars, sliders, progress bars

typedef UInt16 ThemeTrackKind;
enum {
    kThemeScrollBarMedium = 0,
    kThemeScrollBarSmall = 1,
    kThemeSliderMedium = 2,
    kThemeProgressBarMedium = 3,
    kThemeIndeterminateBarMedium = 4,
    kThemeRelevanceBar = 5,
    kThemeSliderSmall = 6,
    kThemeProgressBarLarge = 7,
    kThemeIndeterminateBarLarge = 8,
    kThemeScrollBarMini = 9,
    kThemeSliderMini = 10,
    kThemeProgressBarMini = 11,
    kThemeIndeterminateBarMini = 12,
    kThemeMediumScrollBar = kThemeScrollBarMedium,
    kThemeSmallScrollBar = kThemeScrollBarSmall,
    kThemeMediumSlider = kThemeSliderMedium,
    kThemeMediumProgressBar = kThemeProgressBarMedium,
    kThemeMediumIndeterminateBar = kThemeIndeterminateBarMedium,
    kThemeSmallSlider = kThemeSliderSmall,
    kThemeLargeProgressBar = kThemeProgressBarLarge,
    kThemeLargeIndeterminateBar = kThemeIndeterminateBarLarge,
    kThemeMiniScrollBar = kThemeScrollBarMini,
    kThemeMiniSlider = kThemeSliderMini,
    kThemeMiniProgressBar = kThemeProgressBarMini,
    kThemeMiniIndeterminateBar = kThemeIndeterminateBarMini
};

typedef UInt8 ThemeTrackEnableState;
enum {
    kThemeTrackActive = 0,
    kThemeTrackDisabled = 1,
    kThemeTrackNothingToScroll = 2,
    kThemeTrackInactive = 3
};

typedef UInt8 ThemeTrackPressState;
enum {
    kThemeLeftOutsideArrowPressed = 0x01,
    kThemeLeftInsideArrowPressed = 0x02,
    kThemeLeftTrackPressed = 0x04,
    kThemeThumbPressed = 0x08,
    kThemeRightTrackPressed = 0x10,
    kThemeRightInsideArrowPressed = 0x20,
    kThemeRightOutsideArrowPressed = 0x40,
    kThemeTopOutsideArrowPressed = kThemeLeftOutsideArrowPressed,
    kThemeTopInsideArrowPressed = kThemeLeftInsideArrowPressed,
    kThemeTopTrackPressed = kThemeLeftTrackPressed,
    kThemeBottomTrackPressed = kThemeRightTrackPressed,
    kThemeBottomInsideArrowPressed = kThemeRightInsideArrowPressed,
    kThemeBottomOutsideArrowPressed = kThemeRightOutsideArrowPressed
};

typedef UInt8 ThemeThumbDirection;
enum { kThemeThumbPlain = 0, kThemeThumbUpward = 1, kThemeThumbDownward = 2 };

typedef UInt16 ThemeTrackAttributes;
enum {
    kThemeTrackHorizontal = 1 << 0,
    kThemeTrackRightToLeft = 1 << 1,
    kThemeTrackShowThumb = 1 << 2,
    kThemeTrackThumbRgnIsNotGhost = 1 << 3,
    kThemeTrackNoScrollBarArrows = 1 << 4,
    kThemeTrackHasFocus = 1 << 5
};

typedef UInt16 ThemeScrollBarArrowStyle;
enum { kThemeScrollBarArrowsSingle = 0, kThemeScrollBarArrowsLowerRight = 1 };
typedef UInt16 ThemeScrollBarThumbStyle;
enum { kThemeScrollBarThumbNormal = 0, kThemeScrollBarThumbProportional = 1 };

#pragma pack(push, 2)
struct ScrollBarTrackInfo {
    SInt32 viewsize; // in units of the value; 0: a thumb of fixed length
    ThemeTrackPressState pressState;
};
struct SliderTrackInfo {
    ThemeThumbDirection thumbDir;
    ThemeTrackPressState pressState;
};
struct ProgressTrackInfo {
    UInt8 phase; // of the animation; each step is one frame
};
struct ThemeTrackDrawInfo {
    ThemeTrackKind kind;
    Rect bounds;
    SInt32 min;
    SInt32 max;
    SInt32 value;
    UInt32 reserved;
    ThemeTrackAttributes attributes;
    ThemeTrackEnableState enableState;
    UInt8 filler1;
    union {
        struct ScrollBarTrackInfo scrollbar;
        struct SliderTrackInfo slider;
        struct ProgressTrackInfo progress;
    } trackInfo;
};
#pragma pack(pop)
typedef struct ScrollBarTrackInfo ScrollBarTrackInfo;
typedef struct SliderTrackInfo SliderTrackInfo;
typedef struct ProgressTrackInfo ProgressTrackInfo;
typedef struct ThemeTrackDrawInfo ThemeTrackDrawInfo;

static_assert(sizeof(ThemeTrackDrawInfo) == 36 && sizeof(ThemeButtonDrawInfo) == 8, "the published sizes");

typedef SInt16 AppearancePartCode;
enum {
    kAppearancePartMetaNone = 0,
    kAppearancePartMetaDisabled = 254,
    kAppearancePartMetaInactive = 255,
    kAppearancePartIndicator = 129,
    kAppearancePartUpButton = 20,
    kAppearancePartDownButton = 21,
    kAppearancePartPageUpArea = 22,
    kAppearancePartPageDownArea = 23,
    kAppearancePartLeftButton = 24,
    kAppearancePartRightButton = 25,
    kAppearancePartPageLeftArea = 26,
    kAppearancePartPageRightArea = 27
};

// Tabs, arrows, grow boxes

typedef UInt16 ThemeTabStyle;
enum {
    kThemeTabNonFront = 0,
    kThemeTabNonFrontPressed = 1,
    kThemeTabNonFrontInactive = 2,
    kThemeTabFront = 3,
    kThemeTabFrontInactive = 4,
    kThemeTabNonFrontUnavailable = 5,
    kThemeTabFrontUnavailable = 6
};
typedef UInt16 ThemeTabDirection;
enum { kThemeTabNorth = 0, kThemeTabSouth = 1, kThemeTabEast = 2, kThemeTabWest = 3 };
enum {
    kThemeSmallTabHeight = 16,
    kThemeLargeTabHeight = 21,
    kThemeTabPaneOverlap = 3,
    kThemeSmallTabHeightMax = 18,
    kThemeLargeTabHeightMax = 24
};

typedef UInt16 ThemeArrowOrientation;
enum { kThemeArrowLeft = 0, kThemeArrowDown = 1, kThemeArrowRight = 2, kThemeArrowUp = 3 };
typedef UInt16 ThemePopupArrowSize;
enum { kThemeArrow3pt = 0, kThemeArrow5pt = 1, kThemeArrow7pt = 2, kThemeArrow9pt = 3 };
typedef UInt16 ThemeGrowDirection;
enum { kThemeGrowLeft = 1, kThemeGrowRight = 2, kThemeGrowUp = 4, kThemeGrowDown = 8 };

// Windows

typedef UInt16 ThemeWindowType;
enum {
    kThemeDocumentWindow = 0,
    kThemeDialogWindow = 1,
    kThemeMovableDialogWindow = 2,
    kThemeAlertWindow = 3,
    kThemeMovableAlertWindow = 4,
    kThemePlainDialogWindow = 5,
    kThemeShadowDialogWindow = 6,
    kThemePopupWindow = 7,
    kThemeUtilityWindow = 8,
    kThemeUtilitySideWindow = 9,
    kThemeSheetWindow = 10,
    kThemeDrawerWindow = 11
};
typedef UInt16 ThemeTitleBarWidget;
enum {
    kThemeWidgetCloseBox = 0,
    kThemeWidgetZoomBox = 1,
    kThemeWidgetCollapseBox = 2,
    kThemeWidgetDirtyCloseBox = 6
};
typedef UInt32 ThemeWindowAttributes;
enum {
    kThemeWindowHasGrow = 1 << 0,
    kThemeWindowHasHorizontalZoom = 1 << 3,
    kThemeWindowHasVerticalZoom = 1 << 4,
    kThemeWindowHasFullZoom = kThemeWindowHasHorizontalZoom | kThemeWindowHasVerticalZoom,
    kThemeWindowHasCloseBox = 1 << 5,
    kThemeWindowHasCollapseBox = 1 << 6,
    kThemeWindowHasTitleText = 1 << 7,
    kThemeWindowIsCollapsed = 1 << 8,
    kThemeWindowHasDirty = 1 << 9
};
struct ThemeWindowMetrics {
    UInt16 metricSize; // sizeof this record
    SInt16 titleHeight;
    SInt16 titleWidth;
    SInt16 popupTabOffset;
    SInt16 popupTabWidth;
    UInt16 popupTabPosition;
};
typedef struct ThemeWindowMetrics ThemeWindowMetrics;
typedef ThemeWindowMetrics* ThemeWindowMetricsPtr;
static_assert(sizeof(ThemeWindowMetrics) == 12, "the published size");

typedef UInt16 AppearanceRegionCode;
enum {
    kAppearanceRegionTitleBar = 0,
    kAppearanceRegionTitleText = 1,
    kAppearanceRegionCloseBox = 2,
    kAppearanceRegionZoomBox = 3,
    kAppearanceRegionDrag = 5,
    kAppearanceRegionGrow = 6,
    kAppearanceRegionCollapseBox = 7,
    kAppearanceRegionTitleProxyIcon = 8,
    kAppearanceRegionStructure = 32,
    kAppearanceRegionContent = 33
};

// Menus

typedef UInt16 ThemeMenuBarState;
enum { kThemeMenuBarNormal = 0, kThemeMenuBarSelected = 1 };
enum { kThemeMenuSquareMenuBar = 1 << 0 };
typedef UInt16 ThemeMenuState;
enum { kThemeMenuActive = 0, kThemeMenuSelected = 1, kThemeMenuDisabled = 3 };
typedef UInt16 ThemeMenuType;
enum {
    kThemeMenuTypePullDown = 0,
    kThemeMenuTypePopUp = 1,
    kThemeMenuTypeHierarchical = 2,
    kThemeMenuTypeInactive = 0x0100
};
typedef UInt16 ThemeMenuItemType;
enum {
    kThemeMenuItemPlain = 0,
    kThemeMenuItemHierarchical = 1,
    kThemeMenuItemScrollUpArrow = 2,
    kThemeMenuItemScrollDownArrow = 3,
    kThemeMenuItemAtTop = 0x0100,
    kThemeMenuItemAtBottom = 0x0200,
    kThemeMenuItemHierBackground = 0x0400,
    kThemeMenuItemPopUpBackground = 0x0800,
    kThemeMenuItemNoBackground = 0x4000,
    kThemeMenuItemHasIcon = 0x8000
};

// Metrics

typedef UInt32 ThemeMetric;
enum {
    kThemeMetricScrollBarWidth = 0,
    kThemeMetricSmallScrollBarWidth = 1,
    kThemeMetricCheckBoxHeight = 2,
    kThemeMetricRadioButtonHeight = 3,
    kThemeMetricEditTextWhitespace = 4,
    kThemeMetricEditTextFrameOutset = 5,
    kThemeMetricListBoxFrameOutset = 6,
    kThemeMetricFocusRectOutset = 7,
    kThemeMetricImageWellThickness = 8,
    kThemeMetricScrollBarOverlap = 9,
    kThemeMetricLargeTabHeight = 10,
    kThemeMetricLargeTabCapsWidth = 11,
    kThemeMetricTabFrameOverlap = 12,
    kThemeMetricTabIndentOrStyle = 13,
    kThemeMetricTabOverlap = 14,
    kThemeMetricSmallTabHeight = 15,
    kThemeMetricSmallTabCapsWidth = 16,
    kThemeMetricDisclosureButtonHeight = 17,
    kThemeMetricRoundButtonSize = 18,
    kThemeMetricPushButtonHeight = 19,
    kThemeMetricListHeaderHeight = 20,
    kThemeMetricSmallCheckBoxHeight = 21,
    kThemeMetricDisclosureButtonWidth = 22,
    kThemeMetricSmallDisclosureButtonHeight = 23,
    kThemeMetricSmallDisclosureButtonWidth = 24,
    kThemeMetricDisclosureTriangleHeight = 25,
    kThemeMetricDisclosureTriangleWidth = 26,
    kThemeMetricLittleArrowsHeight = 27,
    kThemeMetricLittleArrowsWidth = 28,
    kThemeMetricPaneSplitterHeight = 29,
    kThemeMetricPopupButtonHeight = 30,
    kThemeMetricSmallPopupButtonHeight = 31,
    kThemeMetricLargeProgressBarThickness = 32,
    kThemeMetricPullDownHeight = 33,
    kThemeMetricSmallPullDownHeight = 34,
    kThemeMetricSmallPushButtonHeight = 35,
    kThemeMetricSmallRadioButtonHeight = 36,
    kThemeMetricRelevanceIndicatorHeight = 37,
    kThemeMetricResizeControlHeight = 38,
    kThemeMetricSmallResizeControlHeight = 39,
    kThemeMetricLargeRoundButtonSize = 40,
    kThemeMetricHSliderHeight = 41,
    kThemeMetricHSliderTickHeight = 42,
    kThemeMetricSmallHSliderHeight = 43,
    kThemeMetricSmallHSliderTickHeight = 44,
    kThemeMetricVSliderWidth = 45,
    kThemeMetricVSliderTickWidth = 46,
    kThemeMetricSmallVSliderWidth = 47,
    kThemeMetricSmallVSliderTickWidth = 48,
    kThemeMetricTitleBarControlsHeight = 49,
    kThemeMetricCheckBoxWidth = 50,
    kThemeMetricSmallCheckBoxWidth = 51,
    kThemeMetricRadioButtonWidth = 52,
    kThemeMetricSmallRadioButtonWidth = 53,
    kThemeMetricSmallHSliderMinThumbWidth = 54,
    kThemeMetricSmallVSliderMinThumbHeight = 55,
    kThemeMetricSmallHSliderTickOffset = 56,
    kThemeMetricSmallVSliderTickOffset = 57,
    kThemeMetricNormalProgressBarThickness = 58,
    kThemeMetricProgressBarShadowOutset = 59,
    kThemeMetricSmallProgressBarShadowOutset = 60,
    kThemeMetricPrimaryGroupBoxContentInset = 61,
    kThemeMetricSecondaryGroupBoxContentInset = 62,
    kThemeMetricMenuMarkColumnWidth = 63,
    kThemeMetricMenuExcludedMarkColumnWidth = 64,
    kThemeMetricMenuMarkIndent = 65,
    kThemeMetricMenuTextLeadingEdgeMargin = 66,
    kThemeMetricMenuTextTrailingEdgeMargin = 67,
    kThemeMetricMenuIndentWidth = 68,
    kThemeMetricMenuIconTrailingEdgeMargin = 69,
    kThemeMetricLittleArrowsMiniHeight = 84,
    kThemeMetricLittleArrowsMiniWidth = 85,
    kThemeMetricLittleArrowsSmallHeight = 86,
    kThemeMetricLittleArrowsSmallWidth = 87,
    kThemeMetricMiniCheckBoxHeight = 88,
    kThemeMetricMiniCheckBoxWidth = 89,
    kThemeMetricMiniHSliderHeight = 92,
    kThemeMetricMiniHSliderMinThumbWidth = 93,
    kThemeMetricMiniHSliderTickHeight = 94,
    kThemeMetricMiniHSliderTickOffset = 95,
    kThemeMetricMiniPopupButtonHeight = 96,
    kThemeMetricMiniPullDownHeight = 97,
    kThemeMetricMiniPushButtonHeight = 98,
    kThemeMetricMiniRadioButtonHeight = 99,
    kThemeMetricMiniRadioButtonWidth = 100
};

// What an application draws inside an element. The bounds are the place left for it; the user data is the
// caller's.

typedef void (*ThemeTabTitleDrawProcPtr)(const Rect* bounds, ThemeTabStyle, ThemeTabDirection, SInt16 depth,
                                         Boolean isColorDev, URefCon userData);
typedef void (*ThemeEraseProcPtr)(const Rect* bounds, URefCon eraseData, SInt16 depth, Boolean isColorDev);
typedef void (*ThemeButtonDrawProcPtr)(const Rect* bounds, ThemeButtonKind, const ThemeButtonDrawInfo*,
                                       URefCon userData, SInt16 depth, Boolean isColorDev);
typedef void (*WindowTitleDrawingProcPtr)(const Rect* bounds, SInt16 depth, Boolean colorDevice,
                                          URefCon userData);
typedef void (*MenuTitleDrawingProcPtr)(const Rect* inBounds, SInt16 inDepth, Boolean inIsColorDevice,
                                        SRefCon inUserData);
typedef void (*MenuItemDrawingProcPtr)(const Rect* inBounds, SInt16 inDepth, Boolean inIsColorDevice,
                                       SRefCon inUserData);
typedef ThemeTabTitleDrawProcPtr ThemeTabTitleDrawUPP;
typedef ThemeEraseProcPtr ThemeEraseUPP;
typedef ThemeButtonDrawProcPtr ThemeButtonDrawUPP;
typedef WindowTitleDrawingProcPtr WindowTitleDrawingUPP;
typedef MenuTitleDrawingProcPtr MenuTitleDrawingUPP;
typedef MenuItemDrawingProcPtr MenuItemDrawingUPP;

typedef struct OpaqueThemeDrawingState* ThemeDrawingState;

LAMPBLACK_BEGIN_C

ThemeTabTitleDrawUPP NewThemeTabTitleDrawUPP(ThemeTabTitleDrawProcPtr);
ThemeEraseUPP NewThemeEraseUPP(ThemeEraseProcPtr);
ThemeButtonDrawUPP NewThemeButtonDrawUPP(ThemeButtonDrawProcPtr);
WindowTitleDrawingUPP NewWindowTitleDrawingUPP(WindowTitleDrawingProcPtr);
MenuTitleDrawingUPP NewMenuTitleDrawingUPP(MenuTitleDrawingProcPtr);
MenuItemDrawingUPP NewMenuItemDrawingUPP(MenuItemDrawingProcPtr);
void DisposeThemeTabTitleDrawUPP(ThemeTabTitleDrawUPP);
void DisposeThemeEraseUPP(ThemeEraseUPP);
void DisposeThemeButtonDrawUPP(ThemeButtonDrawUPP);
void DisposeWindowTitleDrawingUPP(WindowTitleDrawingUPP);
void DisposeMenuTitleDrawingUPP(MenuTitleDrawingUPP);
void DisposeMenuItemDrawingUPP(MenuItemDrawingUPP);

// Registering is not needed here; the second registration, and the second withdrawal, are told apart as
// published.
OSStatus RegisterAppearanceClient(void);
OSStatus UnregisterAppearanceClient(void);

// Brushes and text colours
//
// The pen, background or text colour of the current port. The theme is drawn alike at every depth.
//
// Errors: appearanceBadBrushIndexErr, appearanceBadTextColorIndexErr  no such brush, no such text colour
//         paramErr  a NULL result, an unknown background kind
OSStatus SetThemePen(ThemeBrush inBrush, SInt16 inDepth, Boolean inIsColorDevice);
OSStatus SetThemeBackground(ThemeBrush inBrush, SInt16 inDepth, Boolean inIsColorDevice);
OSStatus SetThemeTextColor(ThemeTextColor inColor, SInt16 inDepth, Boolean inIsColorDevice);
OSStatus GetThemeBrushAsColor(ThemeBrush inBrush, SInt16 inDepth, Boolean inColorDev, RGBColor* outColor);
OSStatus GetThemeTextColor(ThemeTextColor inColor, SInt16 inDepth, Boolean inColorDev, RGBColor* outColor);
OSStatus ApplyThemeBackground(ThemeBackgroundKind inKind, const Rect* inBounds, ThemeDrawState inState,
                              SInt16 inDepth, Boolean inColorDev);
// A new colour table, lightest accent first; the caller disposes of the handle.
OSStatus GetThemeAccentColors(CTabHandle* outColors);

// The port's colours, patterns, pen and text settings as one value. Errors: paramErr for a NULL or disposed
// one.
OSStatus GetThemeDrawingState(ThemeDrawingState* outState);
OSStatus SetThemeDrawingState(ThemeDrawingState inState, Boolean inDisposeNow);
OSStatus DisposeThemeDrawingState(ThemeDrawingState inState);
OSStatus NormalizeThemeDrawingState(void);

// Fonts, cursors, sounds
//
// Errors: paramErr  no such font, a NULL result;  themeBadCursorIndexErr  no such cursor, or one that does
// not move
OSStatus UseThemeFont(ThemeFontID inFontID, ScriptCode inScript);
OSStatus GetThemeFont(ThemeFontID inFontID, ScriptCode inScript, Str255 outFontName, SInt16* outFontSize,
                      Style* outStyle); // the name, size and style may each be NULL

// Theme text
//
// Unicode text in a theme font, drawn in the current port with its text colour and mode; no state has a
// colour of its own, SetThemeTextColor sets one. Lines end at returns; with inWrapToWidth also between words,
// or within a word that is wider than the box by itself. The context is not used: NULL.
//
// DrawThemeTextBox draws the lines whose top is within the box, from its top on, justified by teFlushDefault
// (left), teFlushLeft, teCenter or teFlushRight. The pen is not moved.
//
// GetThemeTextDimensions answers the size of such a box. ioBounds->h comes in as the width to wrap at;
// *outBaseline, which may be NULL, is the distance from the bottom of the box up to the baseline of the last
// line, as a negative number.
//
// TruncateThemeText shortens a string until it fits, with an ellipsis at its end or in its middle; a string
// whose ellipsis alone does not fit becomes empty. *outTruncated may not be NULL.
//
// Errors: paramErr  no such string or font, a NULL Rect, Point or result
OSStatus DrawThemeTextBox(CFStringRef inString, ThemeFontID inFontID, ThemeDrawState inState,
                          Boolean inWrapToWidth, const Rect* inBoundingBox, SInt16 inJust, void* inContext);
OSStatus GetThemeTextDimensions(CFStringRef inString, ThemeFontID inFontID, ThemeDrawState inState,
                                Boolean inWrapToWidth, Point* ioBounds, SInt16* outBaseline);
OSStatus TruncateThemeText(CFMutableStringRef inString, ThemeFontID inFontID, ThemeDrawState inState,
                           SInt16 inPixelWidthLimit, TruncCode inTruncWhere, Boolean* outTruncated);
// How far the shadow of the text reaches out of its box: nowhere, theme text has none.
OSStatus GetThemeTextShadowOutset(ThemeFontID inFontID, ThemeDrawState inState, Rect* outOutset);

OSStatus SetThemeCursor(ThemeCursor inCursor);
OSStatus SetAnimatedThemeCursor(ThemeCursor inCursor, UInt32 inAnimationStep);
OSStatus PlayThemeSound(ThemeSoundKind inKind);

OSStatus GetThemeMetric(ThemeMetric inMetric, SInt32* outMetric); // pixels
OSStatus GetThemeScrollBarThumbStyle(ThemeScrollBarThumbStyle* outStyle);
OSStatus GetThemeScrollBarArrowStyle(ThemeScrollBarArrowStyle* outStyle);

// Buttons
//
// DrawThemeButton draws the button where its kind has a fixed height centred in the bounds, then lets the
// label be drawn within GetThemeButtonContentBounds. An erase procedure is called first for the background
// bounds; without one the button is drawn over what is there.
//
// Errors: paramErr  a NULL Rect, info or region, or an unknown kind; labels and erase procedures may be NULL
OSStatus DrawThemeButton(const Rect* inBounds, ThemeButtonKind inKind, const ThemeButtonDrawInfo* inNewInfo,
                         const ThemeButtonDrawInfo* inPrevInfo, ThemeEraseUPP inEraseProc,
                         ThemeButtonDrawUPP inLabelProc, URefCon inUserData);
OSStatus GetThemeButtonRegion(const Rect* inBounds, ThemeButtonKind inKind,
                              const ThemeButtonDrawInfo* inNewInfo, RgnHandle outRegion);
OSStatus GetThemeButtonContentBounds(const Rect* inBounds, ThemeButtonKind inKind,
                                     const ThemeButtonDrawInfo* inDrawInfo, Rect* outBounds);
OSStatus GetThemeButtonBackgroundBounds(const Rect* inBounds, ThemeButtonKind inKind,
                                        const ThemeButtonDrawInfo* inDrawInfo, Rect* outBounds);

// Tracks
//
// Errors: paramErr  a NULL argument or an unknown kind. A value outside min…max is drawn at the nearer end.
OSStatus DrawThemeTrack(const ThemeTrackDrawInfo* inDrawInfo, RgnHandle inGhostRgn, ThemeEraseUPP inEraseProc,
                        URefCon inEraseData);
OSStatus DrawThemeTrackTickMarks(const ThemeTrackDrawInfo* inDrawInfo, ItemCount inNumTicks,
                                 ThemeEraseUPP inEraseProc, URefCon inEraseData);
Boolean HitTestThemeTrack(const ThemeTrackDrawInfo* inDrawInfo, Point inMousePoint,
                          AppearancePartCode* outPartHit);
OSStatus GetThemeTrackBounds(const ThemeTrackDrawInfo* inDrawInfo, Rect* outBounds);
OSStatus GetThemeTrackThumbRgn(const ThemeTrackDrawInfo* inDrawInfo, RgnHandle outThumbRgn);
OSStatus GetThemeTrackDragRect(const ThemeTrackDrawInfo* inDrawInfo, Rect* outDragRect);
OSStatus GetThemeTrackThumbPositionFromOffset(const ThemeTrackDrawInfo* inDrawInfo, Point inThumbOffset,
                                              SInt32* outRelativePosition);
OSStatus GetThemeTrackThumbPositionFromBounds(const ThemeTrackDrawInfo* inDrawInfo, const Rect* inThumbBounds,
                                              SInt32* outRelativePosition);
OSStatus GetThemeTrackThumbPositionFromRegion(const ThemeTrackDrawInfo* inDrawInfo, RgnHandle inThumbRgn,
                                              SInt32* outRelativePosition);
OSStatus GetThemeTrackLiveValue(const ThemeTrackDrawInfo* inDrawInfo, SInt32 inRelativePosition,
                                SInt32* outValue);
OSStatus DrawThemeScrollBarArrows(const Rect* inBounds, ThemeTrackEnableState inEnableState,
                                  ThemeTrackPressState inPressState, Boolean inIsHoriz, Rect* outTrackBounds);
OSStatus GetThemeScrollBarTrackRect(const Rect* inBounds, ThemeTrackEnableState inEnableState,
                                    ThemeTrackPressState inPressState, Boolean inIsHoriz,
                                    Rect* outTrackBounds);
Boolean HitTestThemeScrollBarArrows(const Rect* inScrollBarBounds, ThemeTrackEnableState inEnableState,
                                    ThemeTrackPressState inPressState, Boolean inIsHoriz,
                                    Rect* outTrackBounds, Point inMouseLoc, AppearancePartCode* outPartCode);

// Frames, groups and other primitives. Edit-text, list-box and focus frames are drawn outside of the Rect.
OSStatus DrawThemeEditTextFrame(const Rect* inRect, ThemeDrawState inState);
OSStatus DrawThemeListBoxFrame(const Rect* inRect, ThemeDrawState inState);
OSStatus DrawThemeFocusRect(const Rect* inRect, Boolean inHasFocus); // false: nothing; the caller erases
OSStatus DrawThemeFocusRegion(RgnHandle inRegion, Boolean inHasFocus);
OSStatus DrawThemePrimaryGroup(const Rect* inRect, ThemeDrawState inState);
OSStatus DrawThemeSecondaryGroup(const Rect* inRect, ThemeDrawState inState);
OSStatus DrawThemeSeparator(const Rect* inRect, ThemeDrawState inState);
OSStatus DrawThemeWindowHeader(const Rect* inRect, ThemeDrawState inState);
OSStatus DrawThemeWindowListViewHeader(const Rect* inRect, ThemeDrawState inState);
OSStatus DrawThemePlacard(const Rect* inRect, ThemeDrawState inState);
OSStatus DrawThemeModelessDialogFrame(const Rect* inRect, ThemeDrawState inState);
OSStatus DrawThemeGenericWell(const Rect* inRect, ThemeDrawState inState, Boolean inFillCenter);
OSStatus DrawThemeTickMark(const Rect* inRect, ThemeDrawState inState);
OSStatus DrawThemePopupArrow(const Rect* inBounds, ThemeArrowOrientation inOrientation,
                             ThemePopupArrowSize inSize, ThemeDrawState inState, ThemeEraseUPP inEraseProc,
                             URefCon inEraseData);
OSStatus DrawThemeChasingArrows(const Rect* inBounds, UInt32 inIndex, ThemeDrawState inState,
                                ThemeEraseUPP inEraseProc, URefCon inEraseData);
OSStatus DrawThemeStandaloneGrowBox(Point inOrigin, ThemeGrowDirection inGrowDirection, Boolean inIsSmall,
                                    ThemeDrawState inState);
OSStatus DrawThemeStandaloneNoGrowBox(Point inOrigin, ThemeGrowDirection inGrowDirection, Boolean inIsSmall,
                                      ThemeDrawState inState);
OSStatus GetThemeStandaloneGrowBoxBounds(Point inOrigin, ThemeGrowDirection inGrowDirection,
                                         Boolean inIsSmall, Rect* outBounds);

// Tabs
OSStatus DrawThemeTabPane(const Rect* inRect, ThemeDrawState inState);
OSStatus DrawThemeTab(const Rect* inRect, ThemeTabStyle inStyle, ThemeTabDirection inDirection,
                      ThemeTabTitleDrawUPP inLabelProc, URefCon inUserData);
OSStatus GetThemeTabRegion(const Rect* inRect, ThemeTabStyle inStyle, ThemeTabDirection inDirection,
                           RgnHandle ioRgn);

// Windows
//
// All take the content rectangle and answer in its coordinates. The metrics may be NULL.
//
// Errors: paramErr  a NULL argument, an unknown window type or widget; errWindowRegionCodeInvalid  no such
// region
OSStatus DrawThemeWindowFrame(ThemeWindowType inFlavor, const Rect* inContRect, ThemeDrawState inState,
                              const ThemeWindowMetrics* inMetrics, ThemeWindowAttributes inAttributes,
                              WindowTitleDrawingUPP inTitleProc, URefCon inTitleData);
OSStatus DrawThemeTitleBarWidget(ThemeWindowType inFlavor, const Rect* inContRect, ThemeDrawState inState,
                                 const ThemeWindowMetrics* inMetrics, ThemeWindowAttributes inAttributes,
                                 ThemeTitleBarWidget inWidget);
OSStatus GetThemeWindowRegion(ThemeWindowType inFlavor, const Rect* inContRect, ThemeDrawState inState,
                              const ThemeWindowMetrics* inMetrics, ThemeWindowAttributes inAttributes,
                              AppearanceRegionCode inWinRegion, RgnHandle ioRegion);
Boolean GetThemeWindowRegionHit(ThemeWindowType inFlavor, const Rect* inContRect, ThemeDrawState inState,
                                const ThemeWindowMetrics* inMetrics, ThemeWindowAttributes inAttributes,
                                Point inPoint, AppearanceRegionCode* outRegionHit);

// Menus
OSStatus GetThemeMenuBarHeight(SInt16* outHeight);
OSStatus DrawThemeMenuBarBackground(const Rect* inBounds, ThemeMenuBarState inState, UInt32 inAttributes);
OSStatus DrawThemeMenuTitle(const Rect* inMenuBarRect, const Rect* inTitleRect, ThemeMenuState inState,
                            UInt32 inAttributes, MenuTitleDrawingUPP inTitleProc, SRefCon inTitleData);
OSStatus GetThemeMenuTitleExtra(SInt16* outWidth, Boolean inIsSquished);
OSStatus DrawThemeMenuBackground(const Rect* inMenuRect, ThemeMenuType inMenuType);
OSStatus GetThemeMenuBackgroundRegion(const Rect* inMenuRect, ThemeMenuType inMenuType, RgnHandle ioRegion);
OSStatus DrawThemeMenuItem(const Rect* inMenuRect, const Rect* inItemRect, SInt16 inVirtualMenuTop,
                           SInt16 inVirtualMenuBottom, ThemeMenuState inState, ThemeMenuItemType inItemType,
                           MenuItemDrawingUPP inDrawProc, SRefCon inUserData);
OSStatus DrawThemeMenuSeparator(const Rect* inItemRect);
OSStatus GetThemeMenuSeparatorHeight(SInt16* outHeight);
OSStatus GetThemeMenuItemExtra(ThemeMenuItemType inItemType, SInt16* outHeight, SInt16* outWidth);

LAMPBLACK_END_C

#endif
