// Frames, groups, separators, placards, tabs, arrows and grow boxes.
#include "appearance/Geometry.h"
#include "appearance/Painters.h"

namespace lampblack::appearance {

namespace {

constexpr int kGrowSide = 15, kSmallGrowSide = 11;

OSStatus DrawFramed(const Rect* inRect, int inOutset, Painter inPainter, Look inLook, Slices inSlices)
{
    if (!inRect)
        return paramErr;
    DrawPiece(inPainter, inLook, Outset(*inRect, inOutset), inSlices);
    return noErr;
}

Look LookOf(ThemeDrawState inState, int inValue = 0, int inVariant = 0)
{
    return { ToneOf(inState), (uint8_t)inValue, (uint16_t)inVariant };
}

bool IsFrontTab(ThemeTabStyle inStyle)
{
    return inStyle == kThemeTabFront || inStyle == kThemeTabFrontInactive ||
           inStyle == kThemeTabFrontUnavailable;
}

Tone ToneOfTab(ThemeTabStyle inStyle)
{
    static constexpr Tone kTones[] = { Tone::Active,   Tone::Pressed, Tone::Inactive, Tone::Active,
                                       Tone::Inactive, Tone::Dim,     Tone::Dim };
    return kTones[inStyle];
}

bool IsTab(ThemeTabStyle inStyle, ThemeTabDirection inDirection)
{
    return inStyle <= kThemeTabFrontUnavailable && inDirection <= kThemeTabWest;
}

// The title stands clear of the rounded corners and of the edge that the pane covers.
Rect TitleOfTab(const Rect& inRect, ThemeTabDirection inDirection)
{
    static constexpr short kSide = 6, kPane = kThemeTabPaneOverlap;
    switch (inDirection) {
    case kThemeTabSouth: return Inset(inRect, kSide, kPane, kSide, 1);
    case kThemeTabEast: return Inset(inRect, kPane, kSide, 1, kSide);
    case kThemeTabWest: return Inset(inRect, 1, kSide, kPane, kSide);
    default: return Inset(inRect, kSide, 1, kSide, kPane);
    }
}

Rect GrowBoxAt(Point inOrigin, ThemeGrowDirection inDirection, bool inSmall)
{
    const int side = inSmall ? kSmallGrowSide : kGrowSide;
    return MakeRect(inOrigin.h - (inDirection & kThemeGrowLeft ? side : 0),
                    inOrigin.v - (inDirection & kThemeGrowUp ? side : 0), side, side);
}

void DrawLine(const Rect& inRect, ThemeDrawState inState, int inValue)
{
    const bool vertical = HeightOf(inRect) > WidthOf(inRect);
    const Lane lane(inRect, !vertical);
    const int thickness = std::min(2, lane.thickness);
    DrawPiece(PaintSeparator, LookOf(inState, inValue, vertical),
              lane.Part(0, lane.length, (lane.thickness - thickness) / 2, thickness),
              vertical ? Slices{ 0, 1, 0, 1 } : Slices{ 1, 0, 1, 0 });
}

} // namespace

} // namespace lampblack::appearance

using namespace lampblack::appearance;

OSStatus DrawThemeEditTextFrame(const Rect* inRect, ThemeDrawState inState)
{
    return DrawFramed(inRect, 1, PaintEditFrame, LookOf(inState), { 2, 2, 2, 2, true });
}

OSStatus DrawThemeListBoxFrame(const Rect* inRect, ThemeDrawState inState)
{
    return DrawFramed(inRect, 1, PaintEditFrame, LookOf(inState, 1), { 2, 2, 2, 2, true });
}

OSStatus DrawThemeFocusRect(const Rect* inRect, Boolean inHasFocus)
{
    if (!inRect)
        return paramErr;
    const short margin = kFocusWidth + 3;
    return inHasFocus
               ? DrawFramed(inRect, kFocusWidth, PaintFocusRing, {}, { margin, margin, margin, margin, true })
               : (OSStatus)noErr;
}

OSStatus DrawThemeFocusRegion(RgnHandle inRegion, Boolean inHasFocus)
{
    if (!inRegion)
        return paramErr;
    if (!inHasFocus)
        return noErr;
    ThemeDrawingState state = nullptr;
    GetThemeDrawingState(&state);
    NormalizeThemeDrawingState();
    RgnHandle inner = NewRgn(), ring = NewRgn();
    CopyRgn(inRegion, inner);
    // One pixel after the other outwards, the paler the farther.
    static constexpr RGBColor kRings[] = { { 0x5A5A, 0x9B9B, 0xECEC },
                                           { 0x9595, 0xC0C0, 0xF2F2 },
                                           { 0xC9C9, 0xDEDE, 0xF6F6 } };
    for (const RGBColor& color : kRings) {
        CopyRgn(inner, ring);
        InsetRgn(ring, -1, -1);
        DiffRgn(ring, inner, ring);
        RGBForeColor(&color);
        PaintRgn(ring);
        UnionRgn(inner, ring, inner);
    }
    DisposeRgn(ring);
    DisposeRgn(inner);
    return SetThemeDrawingState(state, true);
}

OSStatus DrawThemePrimaryGroup(const Rect* inRect, ThemeDrawState inState)
{
    return DrawFramed(inRect, 0, PaintGroup, LookOf(inState), { 7, 7, 7, 7 });
}

OSStatus DrawThemeSecondaryGroup(const Rect* inRect, ThemeDrawState inState)
{
    return DrawFramed(inRect, 0, PaintGroup, LookOf(inState, 1), { 7, 7, 7, 7 });
}

OSStatus DrawThemeSeparator(const Rect* inRect, ThemeDrawState inState)
{
    if (!inRect)
        return paramErr;
    DrawLine(*inRect, inState, 0);
    return noErr;
}

OSStatus DrawThemeWindowHeader(const Rect* inRect, ThemeDrawState inState)
{
    return DrawFramed(inRect, 0, PaintPlacard, LookOf(inState, 1), { 2, 0, 2, 0 });
}

OSStatus DrawThemeWindowListViewHeader(const Rect* inRect, ThemeDrawState inState)
{
    return DrawFramed(inRect, 0, PaintPlacard, LookOf(inState, 2), { 2, 0, 2, 0 });
}

OSStatus DrawThemePlacard(const Rect* inRect, ThemeDrawState inState)
{
    return DrawFramed(inRect, 0, PaintPlacard, LookOf(inState), { 2, 0, 2, 0 });
}

OSStatus DrawThemeModelessDialogFrame(const Rect* inRect, ThemeDrawState inState)
{
    return DrawFramed(inRect, 0, PaintDialogFrame, LookOf(inState), { 3, 3, 3, 3, true });
}

OSStatus DrawThemeGenericWell(const Rect* inRect, ThemeDrawState inState, Boolean inFillCenter)
{
    const bool hollow = !inFillCenter;
    return DrawFramed(inRect, 0, PaintWell, LookOf(inState, inFillCenter ? 1 : 0), { 5, 5, 5, 5, hollow });
}

OSStatus DrawThemeTickMark(const Rect* inRect, ThemeDrawState inState)
{
    return DrawFramed(inRect, 0, PaintTick, LookOf(inState), {});
}

OSStatus DrawThemePopupArrow(const Rect* inBounds, ThemeArrowOrientation inOrientation,
                             ThemePopupArrowSize inSize, ThemeDrawState inState, ThemeEraseUPP inEraseProc,
                             URefCon inEraseData)
{
    if (!inBounds || inOrientation > kThemeArrowUp || inSize > kThemeArrow9pt)
        return paramErr;
    if (inEraseProc)
        inEraseProc(inBounds, inEraseData, kDepth, true);
    const int side = 3 + 2 * inSize;
    DrawPiece(PaintTriangle, LookOf(inState, 2, inOrientation), Centered(*inBounds, side, side));
    return noErr;
}

OSStatus DrawThemeChasingArrows(const Rect* inBounds, UInt32 inIndex, ThemeDrawState inState,
                                ThemeEraseUPP inEraseProc, URefCon inEraseData)
{
    if (!inBounds)
        return paramErr;
    if (inEraseProc)
        inEraseProc(inBounds, inEraseData, kDepth, true);
    const int side = std::min({ WidthOf(*inBounds), HeightOf(*inBounds), 32 });
    DrawPiece(PaintSpinner, LookOf(inState, 0, (int)(inIndex % kSpokes)), Centered(*inBounds, side, side));
    return noErr;
}

OSStatus DrawThemeStandaloneGrowBox(Point inOrigin, ThemeGrowDirection inGrowDirection, Boolean inIsSmall,
                                    ThemeDrawState inState)
{
    DrawPiece(PaintGrowBox, LookOf(inState, 0, inGrowDirection & 15),
              GrowBoxAt(inOrigin, inGrowDirection, inIsSmall));
    return noErr;
}

OSStatus DrawThemeStandaloneNoGrowBox(Point inOrigin, ThemeGrowDirection inGrowDirection, Boolean inIsSmall,
                                      ThemeDrawState inState)
{
    DrawPiece(PaintPlacard, LookOf(inState, 0), GrowBoxAt(inOrigin, inGrowDirection, inIsSmall));
    return noErr;
}

OSStatus GetThemeStandaloneGrowBoxBounds(Point inOrigin, ThemeGrowDirection inGrowDirection,
                                         Boolean inIsSmall, Rect* outBounds)
{
    if (!outBounds)
        return paramErr;
    *outBounds = GrowBoxAt(inOrigin, inGrowDirection, inIsSmall);
    return noErr;
}

OSStatus DrawThemeTabPane(const Rect* inRect, ThemeDrawState inState)
{
    return DrawFramed(inRect, 0, PaintTabPane, LookOf(inState), { 7, 7, 7, 7 });
}

OSStatus DrawThemeTab(const Rect* inRect, ThemeTabStyle inStyle, ThemeTabDirection inDirection,
                      ThemeTabTitleDrawUPP inLabelProc, URefCon inUserData)
{
    if (!inRect || !IsTab(inStyle, inDirection))
        return paramErr;
    const bool sideways = inDirection == kThemeTabEast || inDirection == kThemeTabWest;
    DrawPiece(PaintTab, Look{ ToneOfTab(inStyle), IsFrontTab(inStyle), inDirection }, *inRect,
              sideways ? Slices{ 0, 7, 0, 7 } : Slices{ 7, 0, 7, 0 });
    const Rect title = TitleOfTab(*inRect, inDirection);
    if (inLabelProc)
        inLabelProc(&title, inStyle, inDirection, kDepth, true, inUserData);
    return noErr;
}

OSStatus GetThemeTabRegion(const Rect* inRect, ThemeTabStyle inStyle, ThemeTabDirection inDirection,
                           RgnHandle ioRgn)
{
    if (!inRect || !ioRgn || !IsTab(inStyle, inDirection))
        return paramErr;
    RectRgn(ioRgn, inRect);
    return noErr;
}
