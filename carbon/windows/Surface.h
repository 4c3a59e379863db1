// Surfaces for the floor above: windows of the top layers that no application sees, for menus and their bar.
// Every published call takes them.
#ifndef LAMPBLACK_WINDOWS_SURFACE_H
#define LAMPBLACK_WINDOWS_SURFACE_H

#include "WindowClasses.h"

namespace lampblack::windows {

WindowRef NewSurface(Layer inLayer, const Rect& inBounds, bool inShadow);
// Local coordinates; for corners that are not square.
void SetSurfaceShape(WindowRef inSurface, RgnHandle inShape);

} // namespace lampblack::windows

#endif
