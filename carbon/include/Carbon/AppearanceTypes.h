// What the theme is made of: its colours, states, fonts, cursors, sounds, the kinds of its elements and their
// metrics. The calls that take these are in Appearance.h.
#ifndef LAMPBLACK_CARBON_APPEARANCETYPES_H
#define LAMPBLACK_CARBON_APPEARANCETYPES_H

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

#endif
