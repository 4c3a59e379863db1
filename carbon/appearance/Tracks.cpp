// Scroll bars, sliders and progress bars: drawing, hit testing and dragging.
#include "appearance/Painters.h"
#include "appearance/TrackGeometry.h"

namespace lampblack::appearance {

namespace {

constexpr UInt8 kLowerArrowPressed = kThemeLeftOutsideArrowPressed | kThemeRightInsideArrowPressed;
constexpr UInt8 kHigherArrowPressed = kThemeRightOutsideArrowPressed | kThemeLeftInsideArrowPressed;

Tone ToneOfTrack(ThemeTrackEnableState inState)
{
    static constexpr Tone kTones[] = { Tone::Active, Tone::Dim, Tone::Dim, Tone::Inactive };
    return inState <= kThemeTrackInactive ? kTones[inState] : Tone::Active;
}

Tone PressedWhen(bool inPressed, Tone inTone)
{
    return inPressed && inTone == Tone::Active ? Tone::Pressed : inTone;
}

// Slices of something that lies or stands: margins at both ends of its length.
Slices Lengthwise(bool inHorizontal, short inFirst, short inLast)
{
    return inHorizontal ? Slices{ inFirst, 0, inLast, 0 } : Slices{ 0, inFirst, 0, inLast };
}

// Tracks whose thickness is 2 or less and whose ends meet are still drawn, at exact size.
Slices RoundEnds(const Rect& inRect, bool inHorizontal)
{
    const short end = (short)(Lane(inRect, inHorizontal).thickness / 2 + 2);
    return Lengthwise(inHorizontal, end, end);
}

void DrawArrows(const ScrollArrows& inArrows, bool inHorizontal, Tone inTone, ThemeTrackPressState inPressed)
{
    const uint16_t lies = inHorizontal ? 1 : 0;
    DrawPiece(PaintScrollArrow, Look{ PressedWhen(inPressed & kLowerArrowPressed, inTone), 0, lies },
              inArrows.lower);
    DrawPiece(PaintScrollArrow,
              Look{ PressedWhen(inPressed & kHigherArrowPressed, inTone), 0, (uint16_t)(lies | 2) },
              inArrows.higher);
}

struct TrackDrawing {
    const ThemeTrackDrawInfo& info;
    const TrackGeometry& at;
    Tone tone;
    uint16_t lies; // 1: horizontal
};

void DrawScrollBar(const TrackDrawing& in)
{
    const ThemeTrackPressState pressed = in.info.trackInfo.scrollbar.pressState;
    DrawPiece(PaintScrollTrack, Look{ in.tone, 0, in.lies }, in.at.Track(), Lengthwise(in.lies, 1, 1));
    if (!IsEmpty(in.at.Arrows().lower))
        DrawArrows(in.at.Arrows(), in.lies, in.tone, pressed);
    if (!in.at.HasThumb())
        return;
    const Rect thumb = in.at.Thumb();
    DrawPiece(PaintScrollThumb, Look{ PressedWhen(pressed & kThemeThumbPressed, in.tone), 1, in.lies }, thumb,
              RoundEnds(thumb, in.lies));
}

void DrawSlider(const TrackDrawing& in)
{
    const Lane lane(in.at.Bounds(), in.lies);
    const bool pressed = in.info.trackInfo.slider.pressState & kThemeThumbPressed;
    const int groove = std::min(lane.thickness, lane.thickness >= 16 ? 6 : 5);
    const Rect track = lane.Part(0, lane.length, (lane.thickness - groove) / 2, groove);
    DrawPiece(PaintSliderTrack, Look{ in.tone, 0, in.lies }, track, Lengthwise(in.lies, 4, 4));
    if (!in.at.HasThumb())
        return;
    const uint8_t direction = std::min<uint8_t>(in.info.trackInfo.slider.thumbDir, kThemeThumbDownward);
    DrawPiece(PaintSliderThumb, Look{ PressedWhen(pressed, in.tone), direction, in.lies }, in.at.Thumb());
}

void DrawProgress(const TrackDrawing& in)
{
    const Rect& bounds = in.at.Bounds();
    const Slices ends = RoundEnds(bounds, in.lies);
    DrawPiece(PaintProgressTrough, Look{ in.tone, 0, in.lies }, bounds, ends);
    const Lane lane(bounds, in.lies);
    const int filled = in.at.Filled(lane.length);
    if (filled <= 0)
        return;
    // A fill shorter than its own round ends is the beginning of one that has them.
    const int whole = std::max(filled, lane.thickness);
    const int wholeStart = in.at.IsReversed() ? lane.length - whole : 0;
    const int filledStart = in.at.IsReversed() ? lane.length - filled : 0;
    const Look look = { in.tone, 1, in.lies };
    if (whole == filled)
        DrawPiece(PaintProgressFill, look, lane.Part(filledStart, filled), ends);
    else
        DrawPiecePart(PaintProgressFill, look, lane.Part(wholeStart, whole), lane.Part(filledStart, filled));
}

void DrawIndeterminate(const TrackDrawing& in)
{
    const int phase = in.info.trackInfo.progress.phase % (kStripePeriod / 2) * 2;
    const int moved = in.at.IsReversed() ? kStripePeriod - phase : phase;
    DrawPiece(PaintIndeterminate, Look{ in.tone, 0, (uint16_t)moved }, in.at.Bounds());
}

void DrawRelevance(const TrackDrawing& in)
{
    const Lane lane(in.at.Bounds(), true);
    const int filled = in.at.Filled(lane.length) & ~1; // a bar and its gap are two pixels
    DrawPiece(PaintRelevance, Look{ in.tone, 0, 0 }, lane.Part(0, filled), { 2, 0, 2, 0 });
}

using DrawProc = void (*)(const TrackDrawing&);
constexpr DrawProc kDraw[] = { DrawScrollBar, DrawSlider, DrawProgress, DrawIndeterminate, DrawRelevance };

bool HasParts(const TrackKind& inKind)
{
    return inKind.family == TrackFamily::ScrollBar || inKind.family == TrackFamily::Slider;
}

AppearancePartCode PartAt(const TrackGeometry& inTrack, Point inPoint)
{
    const bool lies = inTrack.IsHorizontal();
    if (Holds(inTrack.Arrows().lower, inPoint))
        return lies ? kAppearancePartLeftButton : kAppearancePartUpButton;
    if (Holds(inTrack.Arrows().higher, inPoint))
        return lies ? kAppearancePartRightButton : kAppearancePartDownButton;
    if (!inTrack.HasThumb() || !Holds(inTrack.Track(), inPoint))
        return kAppearancePartMetaNone;
    const Rect thumb = inTrack.Thumb();
    if (Holds(thumb, inPoint))
        return kAppearancePartIndicator;
    if (lies)
        return inPoint.h < thumb.left ? kAppearancePartPageLeftArea : kAppearancePartPageRightArea;
    return inPoint.v < thumb.top ? kAppearancePartPageUpArea : kAppearancePartPageDownArea;
}

// The part that a disabled or inactive track reports wherever it is hit.
AppearancePartCode MetaPartOf(ThemeTrackEnableState inState)
{
    return inState == kThemeTrackActive     ? kAppearancePartMetaNone
           : inState == kThemeTrackInactive ? kAppearancePartMetaInactive
                                            : kAppearancePartMetaDisabled;
}

// The thumb's way from the beginning of the track, when its near edge is at this coordinate.
SInt32 RelativePosition(const TrackGeometry& inTrack, const Rect& inThumb)
{
    const int start = inTrack.IsHorizontal() ? inTrack.Track().left : inTrack.Track().top;
    const int edge = inTrack.IsHorizontal() ? inThumb.left : inThumb.top;
    return std::clamp(edge - start, 0, inTrack.Travel());
}

} // namespace

} // namespace lampblack::appearance

using namespace lampblack::appearance;

OSStatus DrawThemeTrack(const ThemeTrackDrawInfo* inDrawInfo, RgnHandle inGhostRgn, ThemeEraseUPP inEraseProc,
                        URefCon inEraseData)
{
    const TrackKind* kind = inDrawInfo ? FindTrackKind(inDrawInfo->kind) : nullptr;
    if (!kind)
        return paramErr;
    const TrackGeometry at(*inDrawInfo, *kind);
    if (inEraseProc)
        inEraseProc(&inDrawInfo->bounds, inEraseData, kDepth, true);
    const Tone tone = ToneOfTrack(inDrawInfo->enableState);
    kDraw[(int)kind->family]({ *inDrawInfo, at, tone, (uint16_t)at.IsHorizontal() });
    if (inGhostRgn && HasParts(*kind)) {
        Rect ghost = {};
        GetRegionBounds(inGhostRgn, &ghost);
        DrawPiece(PaintScrollThumb, Look{ Tone::Inactive, 0, (uint16_t)at.IsHorizontal() }, ghost,
                  RoundEnds(ghost, at.IsHorizontal()));
    }
    if (inDrawInfo->attributes & kThemeTrackHasFocus)
        DrawThemeFocusRect(&at.Bounds(), true);
    return noErr;
}

OSStatus DrawThemeTrackTickMarks(const ThemeTrackDrawInfo* inDrawInfo, ItemCount inNumTicks,
                                 ThemeEraseUPP inEraseProc, URefCon inEraseData)
{
    const TrackKind* kind = inDrawInfo ? FindTrackKind(inDrawInfo->kind) : nullptr;
    if (!kind || kind->family != TrackFamily::Slider)
        return paramErr;
    const TrackGeometry at(*inDrawInfo, *kind);
    const Lane lane(at.Bounds(), at.IsHorizontal());
    const bool above = inDrawInfo->trackInfo.slider.thumbDir == kThemeThumbUpward;
    const int depth = above ? -7 : lane.thickness + 1, height = 6;
    const Rect row = lane.Part(0, lane.length, depth, height);
    if (inEraseProc)
        inEraseProc(&row, inEraseData, kDepth, true);
    // Ticks stand under the middle of the thumb at each step; more than pixels would run together.
    const long ticks = (long)std::min<ItemCount>(inNumTicks, (ItemCount)lane.length + 1);
    for (long tick = 0; tick < ticks; ++tick) {
        const long along = kind->thumb / 2 - 1 + (ticks > 1 ? at.Travel() * tick / (ticks - 1) : 0);
        DrawPiece(PaintTick, Look{ ToneOfTrack(inDrawInfo->enableState), 0, 0 },
                  lane.Part((int)along, 2, depth, height));
    }
    return noErr;
}

Boolean HitTestThemeTrack(const ThemeTrackDrawInfo* inDrawInfo, Point inMousePoint,
                          AppearancePartCode* outPartHit)
{
    const TrackKind* kind = inDrawInfo ? FindTrackKind(inDrawInfo->kind) : nullptr;
    AppearancePartCode part = kAppearancePartMetaNone;
    if (kind && HasParts(*kind) && Holds(inDrawInfo->bounds, inMousePoint)) {
        part = MetaPartOf(inDrawInfo->enableState);
        if (part == kAppearancePartMetaNone)
            part = PartAt(TrackGeometry(*inDrawInfo, *kind), inMousePoint);
    }
    if (outPartHit)
        *outPartHit = part;
    return part != kAppearancePartMetaNone;
}

OSStatus GetThemeTrackBounds(const ThemeTrackDrawInfo* inDrawInfo, Rect* outBounds)
{
    const TrackKind* kind = inDrawInfo ? FindTrackKind(inDrawInfo->kind) : nullptr;
    if (!kind || !outBounds)
        return paramErr;
    *outBounds = TrackGeometry(*inDrawInfo, *kind).Bounds();
    return noErr;
}

OSStatus GetThemeTrackThumbRgn(const ThemeTrackDrawInfo* inDrawInfo, RgnHandle outThumbRgn)
{
    const TrackKind* kind = inDrawInfo ? FindTrackKind(inDrawInfo->kind) : nullptr;
    if (!kind || !outThumbRgn)
        return paramErr;
    const TrackGeometry at(*inDrawInfo, *kind);
    const Rect thumb = at.HasThumb() ? at.Thumb() : Rect{};
    RectRgn(outThumbRgn, &thumb);
    return noErr;
}

OSStatus GetThemeTrackDragRect(const ThemeTrackDrawInfo* inDrawInfo, Rect* outDragRect)
{
    const TrackKind* kind = inDrawInfo ? FindTrackKind(inDrawInfo->kind) : nullptr;
    if (!kind || !outDragRect)
        return paramErr;
    *outDragRect = TrackGeometry(*inDrawInfo, *kind).Track();
    return noErr;
}

OSStatus GetThemeTrackThumbPositionFromOffset(const ThemeTrackDrawInfo* inDrawInfo, Point inThumbOffset,
                                              SInt32* outRelativePosition)
{
    const TrackKind* kind = inDrawInfo ? FindTrackKind(inDrawInfo->kind) : nullptr;
    if (!kind || !outRelativePosition)
        return paramErr;
    const TrackGeometry at(*inDrawInfo, *kind);
    const int moved = at.IsHorizontal() ? inThumbOffset.h : inThumbOffset.v;
    *outRelativePosition = std::clamp(at.Position() + moved, 0, at.Travel());
    return noErr;
}

OSStatus GetThemeTrackThumbPositionFromBounds(const ThemeTrackDrawInfo* inDrawInfo, const Rect* inThumbBounds,
                                              SInt32* outRelativePosition)
{
    const TrackKind* kind = inDrawInfo ? FindTrackKind(inDrawInfo->kind) : nullptr;
    if (!kind || !inThumbBounds || !outRelativePosition)
        return paramErr;
    *outRelativePosition = RelativePosition(TrackGeometry(*inDrawInfo, *kind), *inThumbBounds);
    return noErr;
}

OSStatus GetThemeTrackThumbPositionFromRegion(const ThemeTrackDrawInfo* inDrawInfo, RgnHandle inThumbRgn,
                                              SInt32* outRelativePosition)
{
    if (!inThumbRgn)
        return paramErr;
    Rect bounds = {};
    GetRegionBounds(inThumbRgn, &bounds);
    return GetThemeTrackThumbPositionFromBounds(inDrawInfo, &bounds, outRelativePosition);
}

OSStatus GetThemeTrackLiveValue(const ThemeTrackDrawInfo* inDrawInfo, SInt32 inRelativePosition,
                                SInt32* outValue)
{
    const TrackKind* kind = inDrawInfo ? FindTrackKind(inDrawInfo->kind) : nullptr;
    if (!kind || !outValue)
        return paramErr;
    *outValue = TrackGeometry(*inDrawInfo, *kind).ValueAt(inRelativePosition);
    return noErr;
}

OSStatus DrawThemeScrollBarArrows(const Rect* inBounds, ThemeTrackEnableState inEnableState,
                                  ThemeTrackPressState inPressState, Boolean inIsHoriz, Rect* outTrackBounds)
{
    const OSStatus status =
        GetThemeScrollBarTrackRect(inBounds, inEnableState, inPressState, inIsHoriz, outTrackBounds);
    if (status == noErr)
        DrawArrows(ArrowsOf(*inBounds, inIsHoriz), inIsHoriz, ToneOfTrack(inEnableState), inPressState);
    return status;
}

OSStatus GetThemeScrollBarTrackRect(const Rect* inBounds, ThemeTrackEnableState, ThemeTrackPressState,
                                    Boolean inIsHoriz, Rect* outTrackBounds)
{
    if (!inBounds || !outTrackBounds)
        return paramErr;
    *outTrackBounds = ArrowsOf(*inBounds, inIsHoriz).track;
    return noErr;
}

Boolean HitTestThemeScrollBarArrows(const Rect* inScrollBarBounds, ThemeTrackEnableState inEnableState,
                                    ThemeTrackPressState, Boolean inIsHoriz, Rect* outTrackBounds,
                                    Point inMouseLoc, AppearancePartCode* outPartCode)
{
    if (!inScrollBarBounds)
        return false;
    const ScrollArrows arrows = ArrowsOf(*inScrollBarBounds, inIsHoriz);
    if (outTrackBounds)
        *outTrackBounds = arrows.track;
    AppearancePartCode part = kAppearancePartMetaNone;
    if (inEnableState == kThemeTrackActive && Holds(arrows.lower, inMouseLoc))
        part = inIsHoriz ? kAppearancePartLeftButton : kAppearancePartUpButton;
    if (inEnableState == kThemeTrackActive && Holds(arrows.higher, inMouseLoc))
        part = inIsHoriz ? kAppearancePartRightButton : kAppearancePartDownButton;
    if (outPartCode)
        *outPartCode = part;
    return part != kAppearancePartMetaNone;
}
