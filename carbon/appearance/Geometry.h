// Small rectangle arithmetic that the drawing calls share. Results are pinned to the range of a coordinate.
#ifndef LAMPBLACK_APPEARANCE_GEOMETRY_H
#define LAMPBLACK_APPEARANCE_GEOMETRY_H

#include "appearance/Look.h"

#include <Carbon/Appearance.h>

#include <algorithm>

namespace lampblack::appearance {

inline short Pinned(long inCoordinate)
{
    return (short)std::clamp(inCoordinate, -32768L, 32767L);
}

inline int WidthOf(const Rect& inRect)
{
    return inRect.right - inRect.left;
}

inline int HeightOf(const Rect& inRect)
{
    return inRect.bottom - inRect.top;
}

inline bool IsEmpty(const Rect& inRect)
{
    return inRect.right <= inRect.left || inRect.bottom <= inRect.top;
}

inline Rect MakeRect(long inLeft, long inTop, long inWidth, long inHeight)
{
    return { Pinned(inTop), Pinned(inLeft), Pinned(inTop + inHeight), Pinned(inLeft + inWidth) };
}

// Each side moved inwards; a rectangle never turns inside out.
inline Rect Inset(const Rect& inRect, int inLeft, int inTop, int inRight, int inBottom)
{
    Rect inner = { Pinned(inRect.top + inTop), Pinned(inRect.left + inLeft), Pinned(inRect.bottom - inBottom),
                   Pinned(inRect.right - inRight) };
    inner.right = std::max(inner.left, inner.right);
    inner.bottom = std::max(inner.top, inner.bottom);
    return inner;
}

inline Rect Inset(const Rect& inRect, int inBy)
{
    return Inset(inRect, inBy, inBy, inBy, inBy);
}

inline Rect Outset(const Rect& inRect, int inBy)
{
    return Inset(inRect, -inBy);
}

// A rectangle of this size amid another; odd pixels go to the right and below.
inline Rect Centered(const Rect& inRect, int inWidth, int inHeight)
{
    return MakeRect(inRect.left + (WidthOf(inRect) - inWidth) / 2,
                    inRect.top + (HeightOf(inRect) - inHeight) / 2, inWidth, inHeight);
}

inline bool Holds(const Rect& inRect, Point inPoint)
{
    return inPoint.h >= inRect.left && inPoint.h < inRect.right && inPoint.v >= inRect.top &&
           inPoint.v < inRect.bottom;
}

// A rectangle seen along its length, whichever way it lies; `along` and `across` are its near edges.
struct Lane {
    Lane(const Rect& inRect, bool inHorizontal)
        : horizontal(inHorizontal),
          along(inHorizontal ? inRect.left : inRect.top),
          across(inHorizontal ? inRect.top : inRect.left),
          length(std::max(0, inHorizontal ? WidthOf(inRect) : HeightOf(inRect))),
          thickness(std::max(0, inHorizontal ? HeightOf(inRect) : WidthOf(inRect)))
    {
    }

    // From `inStart` along, `inLength` long, over the whole thickness.
    Rect Part(int inStart, int inLength) const { return Part(inStart, inLength, 0, thickness); }

    Rect Part(int inStart, int inLength, int inDepth, int inThickness) const
    {
        return horizontal ? MakeRect(along + inStart, across + inDepth, inLength, inThickness)
                          : MakeRect(across + inDepth, along + inStart, inThickness, inLength);
    }

    bool horizontal;
    int along, across, length, thickness;
};

inline Tone ToneOf(ThemeDrawState inState)
{
    switch (inState) {
    case kThemeStateInactive: return Tone::Inactive;
    case kThemeStatePressed:
    case kThemeStatePressedDown: return Tone::Pressed;
    case kThemeStateUnavailable:
    case kThemeStateUnavailableInactive: return Tone::Dim;
    default: return Tone::Active;
    }
}

// The depth that drawing procedures of the application are told; the theme draws at full depth everywhere.
inline constexpr SInt16 kDepth = 32;

} // namespace lampblack::appearance

#endif
