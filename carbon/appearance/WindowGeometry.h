// Where the parts of a window's frame are, from its content rectangle; pure arithmetic, shared by drawing,
// regions and hit testing. The upper corners of a window with a title bar are round: CornerCoverage says how.
#ifndef LAMPBLACK_APPEARANCE_WINDOWGEOMETRY_H
#define LAMPBLACK_APPEARANCE_WINDOWGEOMETRY_H

#include "appearance/Geometry.h"

namespace lampblack::appearance {

// A kind of frame, in pixels. A frame without a title bar may have a border instead.
struct FrameKind {
    short title, border, radius;
    short widget, firstWidget, widgetPitch;
    bool side;         // the title bar stands at the left
    bool placeholders; // a missing widget is shown pale when others are there
};

const FrameKind* FindFrameKind(ThemeWindowType); // null: no such type

class WindowGeometry {
public:
    WindowGeometry(const FrameKind& inKind, const Rect& inContent, const ThemeWindowMetrics* inMetrics,
                   ThemeWindowAttributes inAttributes);

    const FrameKind& Kind() const { return fKind; }
    bool IsCollapsed() const { return fAttributes & kThemeWindowIsCollapsed; }
    Rect Content() const; // empty when collapsed
    Rect Structure() const;
    Rect TitleBar() const; // empty without one
    Rect TitleText() const;
    Rect Grow() const;

    bool HasWidget(ThemeTitleBarWidget) const;
    bool HasAnyWidget() const;
    Rect Widget(ThemeTitleBarWidget) const; // where it is or would be

private:
    int WidgetSlot(ThemeTitleBarWidget) const;
    int SlotCount() const;

    const FrameKind& fKind;
    Rect fContent;
    short fTitleWidth;
    ThemeWindowAttributes fAttributes;
};

// How many pixels a row of this round corner begins late.
int CornerInset(int inRadius, int inRow);

// How much of the pixel (x, y) of a top-left corner belongs to the window, 0 to 255; the right corner mirrors
// it. For a compositor that smooths the corners; 255 beyond the radius.
uint8_t CornerCoverage(int inRadius, int inX, int inY);

} // namespace lampblack::appearance

#endif
