// Rectangles between the coordinates of the current port and those of the screen.
#ifndef LAMPBLACK_GRAPHICS_GEOMETRY_H
#define LAMPBLACK_GRAPHICS_GEOMETRY_H

#include <Carbon/Carbon.h>

#include "util/Visibility.h"

LAMPBLACK_BEGIN

// GlobalRectToLocalRect, LocalRectToGlobalRect
//
// Convert a rectangle in place, between global coordinates and those of the current port. NULL does nothing.
void GlobalRectToLocalRect(Rect* ioRect);
void LocalRectToGlobalRect(Rect* ioRect);

LAMPBLACK_END

#endif
