// Surfaces for the floor above: windows of the top layers that no application sees, for menus and their bar.
// Every published call takes them. All of this floor that menus/ knows is here, in
// WindowEvents.h, PortSaver.h, PropertyList.h and Rects.h.
#ifndef LAMPBLACK_WINDOWS_SURFACE_H
#define LAMPBLACK_WINDOWS_SURFACE_H

#include "WindowClasses.h"

namespace lampblack::windows {

WindowRef NewSurface(Layer inLayer, const Rect& inBounds, bool inShadow);
// Round corners, in pixels; 0 for square ones.
void SetSurfaceCorners(WindowRef inSurface, short inTopRadius, short inBottomRadius);

struct SurfaceHooks {
    void (*started)() = nullptr;       // the first window was asked for
    void (*screenChanged)() = nullptr; // another size
    void (*beforeFrame)() = nullptr;   // the last chance to draw for the frame about to be composed
};
SurfaceHooks& TheSurfaceHooks();

// Opens the screen when it is not open yet.
Rect ScreenBounds();
// The screen without the menu bar while there is one.
Rect AvailableBounds();
// How much of the top of the screen the menu bar takes.
void SetMenuBarInset(short inHeight);
// Whether a window keeps the others, and with them most of the menus, from the user.
bool IsAppModal();

// All of the surface will be drawn anew before the next frame.
void SurfaceIsStale(WindowRef inSurface);

} // namespace lampblack::windows

#endif
