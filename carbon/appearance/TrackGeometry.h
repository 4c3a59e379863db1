// Where the parts of scroll bars, sliders and progress bars are; pure arithmetic, and the same for drawing,
// hit testing and dragging.
#ifndef LAMPBLACK_APPEARANCE_TRACKGEOMETRY_H
#define LAMPBLACK_APPEARANCE_TRACKGEOMETRY_H

#include "appearance/Geometry.h"

namespace lampblack::appearance {

enum class TrackFamily : uint8_t { ScrollBar, Slider, Progress, Indeterminate, Relevance };

// A kind of track: its thickness where that is fixed (0: that of the bounds) and the least length of its
// thumb.
struct TrackKind {
    TrackFamily family;
    short thickness, thumb;
};

const TrackKind* FindTrackKind(ThemeTrackKind); // null: no such kind

struct ScrollArrows {
    Rect lower, higher; // both at the right or lower end; empty when they do not fit
    Rect track;         // what is left
};

ScrollArrows ArrowsOf(const Rect& inBounds, bool inHorizontal);

class TrackGeometry {
public:
    TrackGeometry(const ThemeTrackDrawInfo& inInfo, const TrackKind& inKind);

    bool IsHorizontal() const { return fHorizontal; }
    const Rect& Bounds() const { return fBounds; } // the whole, of its own thickness
    const Rect& Track() const { return fTrack; }   // where the thumb moves
    const ScrollArrows& Arrows() const { return fArrows; }

    bool HasThumb() const { return fThumbLength > 0; }
    Rect Thumb() const;
    int Travel() const { return fTravel; }     // how far the thumb can move
    int Position() const { return fPosition; } // how far it has, from the left or top end
    SInt32 ValueAt(SInt32 inPosition) const;
    int Filled(int inLength) const; // of a progress bar

    // Values grow towards the left of a right-to-left track and towards the top of a vertical slider.
    bool IsReversed() const { return fReversed; }

private:
    double Fraction() const;
    int ThumbLengthOf(const ThemeTrackDrawInfo& inInfo, const TrackKind& inKind) const;

    bool fHorizontal, fReversed;
    SInt32 fMin, fMax, fValue;
    Rect fBounds, fTrack;
    ScrollArrows fArrows;
    int fThumbLength = 0, fTravel = 0, fPosition = 0;
};

} // namespace lampblack::appearance

#endif
