// What a dialog shows among its controls without being one of them: an icon, a picture. It has its place in the
// order of drawing, so that controls may lie on it and be redrawn without harm, and the mouse passes through it.
#ifndef LAMPBLACK_CONTROLS_ITEMVIEW_H
#define LAMPBLACK_CONTROLS_ITEMVIEW_H

#include <Carbon/Controls.h>

namespace lampblack::controls {

using ItemViewDrawProc = void (*)(ControlRef);

// Hidden at first; embedded in the window's root, and disposed of like any control. The procedure draws in the
// window's port. Null for an invalid window.
ControlRef NewItemView(WindowRef inWindow, const Rect& inBounds, ItemViewDrawProc inDraw);

} // namespace lampblack::controls

#endif
