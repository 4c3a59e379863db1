// The Appearance Manager: the fonts, colours, cursors and sounds of the theme, and the drawing of its
// buttons, tracks, frames, windows and menus. Every drawing call draws in the current port, in local
// coordinates; bounds hold their left and top edge and not their right and bottom edge. Begin at
// DrawThemeButton, DrawThemeTrack, DrawThemeWindowFrame.
#ifndef LAMPBLACK_CARBON_APPEARANCE_H
#define LAMPBLACK_CARBON_APPEARANCE_H

#include <Carbon/AppearanceTypes.h>
#include <Carbon/CFString.h>
#include <Carbon/MacErrors.h>
#include <Carbon/MacTypes.h>
#include <Carbon/Quickdraw.h>

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
