// Rectangles, points, colours and clip regions, the way windows and controls
// need them.
#ifndef LAMPBLACK_GRAPHICS_GEOMETRY_H
#define LAMPBLACK_GRAPHICS_GEOMETRY_H

#include <Carbon/Carbon.h>

#include "util/Visibility.h"

LAMPBLACK_BEGIN

// GlobalRectToLocalRect, LocalRectToGlobalRect
//
// Convert a rectangle in place, between global coordinates and those of the
// current port. NULL does nothing.
void GlobalRectToLocalRect(Rect* ioRect);
void LocalRectToGlobalRect(Rect* ioRect);

// The middle, each half of a size rounded down; (0,0) for NULL.
Point GetRectangleCenterPoint(const Rect* inRect);

// Moves the top left, keeping the size. Errors: paramErr  NULL.
OSErr MoveRect(Rect* ioRect, SInt32 inHorizontal, SInt32 inVertical);

// Scales width and height by myround, keeping the top left. NULL does nothing.
void ScaleRect(Rect* ioRect, float inFactor);

typedef UInt32 CenterFlags;
enum {
    kCenterDontShrink = 1 << 0, // leave alone what is wider or taller than the container
    kCenterDontEnlarge = 1 << 1 // leave alone what is smaller
};

// CenterRectInRect
//
// The rectangle scaled to fit into the container, its proportions kept, unless
// the flags forbid it, and centred there. Same sizes: the container. NULL
// counts as an empty rectangle at (0,0).
Rect CenterRectInRect(const Rect* inRect, const Rect* inContainer, CenterFlags inFlags);

// The nearest integer; kept: halves go down, and so do negative numbers with a
// fraction above -0.5 (-2.2 is -3).
SInt32 myround(float inNumber);

// HiliteRect
//
// Paints the rectangle in the user's highlight colour. The pen's mode is left
// copying (kept).
void HiliteRect(const Rect* inRect);

bool EqualRGB(const RGBColor& inA, const RGBColor& inB);

// ScreenRGBColor
//
// Lightens a colour: 100 percent and more leave it, 0 makes it white, between
// them its lightness goes that much of the way to white.
void ScreenRGBColor(RGBColor* ioColor, UInt16 inPercent);

// NormalizeClipRegion, RestoreClipRegion
//
// The first keeps the current port's clip region in *ioRegion (a new region if
// that is NULL) and clips to the window's port; the second clips to the region
// again and empties it for the next time. The caller disposes of it.
void NormalizeClipRegion(WindowRef inWindow, RgnHandle* ioRegion);
void RestoreClipRegion(RgnHandle* ioRegion);

LAMPBLACK_END

#endif
