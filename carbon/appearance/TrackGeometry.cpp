#include "appearance/TrackGeometry.h"

#include <array>
#include <cmath>

namespace lampblack::appearance {

namespace {

constexpr std::array<TrackKind, 13> kTracks = { {
    { TrackFamily::ScrollBar, 0, 20 },     // medium scroll bar
    { TrackFamily::ScrollBar, 0, 16 },     // small scroll bar
    { TrackFamily::Slider, 18, 16 },       // slider
    { TrackFamily::Progress, 13, 0 },      // progress bar
    { TrackFamily::Indeterminate, 13, 0 }, // indeterminate bar
    { TrackFamily::Relevance, 12, 0 },     // relevance bar
    { TrackFamily::Slider, 14, 13 },       // small slider
    { TrackFamily::Progress, 17, 0 },      // large progress bar
    { TrackFamily::Indeterminate, 17, 0 }, // large indeterminate bar
    { TrackFamily::ScrollBar, 0, 14 },     // mini scroll bar
    { TrackFamily::Slider, 12, 11 },       // mini slider
    { TrackFamily::Progress, 10, 0 },      // mini progress bar
    { TrackFamily::Indeterminate, 10, 0 }, // mini indeterminate bar
} };

// Progress bars lie; everything else stands unless told to lie.
bool LiesDown(const ThemeTrackDrawInfo& inInfo, const TrackKind& inKind)
{
    if (inKind.family == TrackFamily::Indeterminate || inKind.family == TrackFamily::Relevance)
        return true;
    return inInfo.attributes & kThemeTrackHorizontal;
}

bool RunsBackward(const ThemeTrackDrawInfo& inInfo, const TrackKind& inKind, bool inHorizontal)
{
    if (inHorizontal)
        return inInfo.attributes & kThemeTrackRightToLeft;
    return inKind.family == TrackFamily::Slider || inKind.family == TrackFamily::Progress;
}

// Amid the bounds; a slider that points somewhere leaves the room on that side to its tick marks.
Rect OfThickness(const ThemeTrackDrawInfo& inInfo, const TrackKind& inKind, bool inHorizontal)
{
    const Lane lane(inInfo.bounds, inHorizontal);
    const int spare = lane.thickness - inKind.thickness;
    if (!inKind.thickness || spare <= 0)
        return inInfo.bounds;
    int before = spare / 2;
    if (inKind.family == TrackFamily::Slider && inInfo.trackInfo.slider.thumbDir == kThemeThumbDownward)
        before = 0;
    if (inKind.family == TrackFamily::Slider && inInfo.trackInfo.slider.thumbDir == kThemeThumbUpward)
        before = spare;
    return lane.Part(0, lane.length, before, inKind.thickness);
}

} // namespace

const TrackKind* FindTrackKind(ThemeTrackKind inKind)
{
    return inKind < kTracks.size() ? &kTracks[inKind] : nullptr;
}

ScrollArrows ArrowsOf(const Rect& inBounds, bool inHorizontal)
{
    const Lane lane(inBounds, inHorizontal);
    const int each = std::min(lane.thickness, lane.length / 2);
    const int track = lane.length - 2 * each;
    return { lane.Part(track, each), lane.Part(track + each, each), lane.Part(0, track) };
}

TrackGeometry::TrackGeometry(const ThemeTrackDrawInfo& inInfo, const TrackKind& inKind)
    : fHorizontal(LiesDown(inInfo, inKind)),
      fReversed(RunsBackward(inInfo, inKind, fHorizontal)),
      fMin(inInfo.min),
      fMax(std::max(fMin, +inInfo.max)),
      fValue(std::clamp(+inInfo.value, fMin, fMax)),
      fBounds(OfThickness(inInfo, inKind, fHorizontal)),
      fTrack(fBounds),
      fArrows{}
{
    if (inKind.family == TrackFamily::ScrollBar && !(inInfo.attributes & kThemeTrackNoScrollBarArrows)) {
        fArrows = ArrowsOf(fBounds, fHorizontal);
        fTrack = fArrows.track;
    }
    fThumbLength = ThumbLengthOf(inInfo, inKind);
    fTravel = std::max(0, Lane(fTrack, fHorizontal).length - fThumbLength);
    const double fraction = fReversed ? 1 - Fraction() : Fraction();
    fPosition = (int)std::lround(fraction * fTravel);
}

double TrackGeometry::Fraction() const
{
    const double range = (double)fMax - (double)fMin;
    return range > 0 ? ((double)fValue - (double)fMin) / range : 0;
}

int TrackGeometry::ThumbLengthOf(const ThemeTrackDrawInfo& inInfo, const TrackKind& inKind) const
{
    const int length = Lane(fTrack, fHorizontal).length;
    if (!inKind.thumb || !(inInfo.attributes & kThemeTrackShowThumb) || length < inKind.thumb)
        return 0;
    if (inInfo.enableState == kThemeTrackNothingToScroll)
        return 0;
    if (inKind.family == TrackFamily::Slider)
        return inKind.thumb;
    if (fMax <= fMin || inInfo.enableState == kThemeTrackDisabled)
        return 0;
    const double view = inInfo.trackInfo.scrollbar.viewsize;
    if (view <= 0)
        return inKind.thumb;
    const double range = (double)fMax - (double)fMin;
    return std::clamp((int)std::lround(length * (view / (range + view))), (int)inKind.thumb, length);
}

Rect TrackGeometry::Thumb() const
{
    return Lane(fTrack, fHorizontal).Part(fPosition, fThumbLength);
}

SInt32 TrackGeometry::ValueAt(SInt32 inPosition) const
{
    if (fTravel <= 0)
        return fMin;
    const double fraction = std::clamp<double>((double)inPosition / fTravel, 0, 1);
    const double range = (double)fMax - (double)fMin;
    return (SInt32)std::llround((double)fMin + (fReversed ? 1 - fraction : fraction) * range);
}

int TrackGeometry::Filled(int inLength) const
{
    return (int)std::lround(Fraction() * inLength);
}

} // namespace lampblack::appearance
