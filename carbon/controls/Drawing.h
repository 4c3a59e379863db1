// Putting controls on their window: the whole tree, one control, or whatever lies in an area.
#ifndef LAMPBLACK_CONTROLS_DRAWING_H
#define LAMPBLACK_CONTROLS_DRAWING_H

#include "controls/ControlRecord.h"

#include <Carbon/Quickdraw.h>

namespace lampblack::controls {

// Keeps the font, colours and pen of the current port, which stays the current one.
class StPortState {
public:
    [[nodiscard]] StPortState();
    ~StPortState();
    StPortState(const StPortState&) = delete;
    StPortState& operator=(const StPortState&) = delete;

private:
    CGrafPtr fPort = nullptr;
    SInt16 fFont = 0, fSize = 0, fMode = 0;
    Style fFace = 0;
    RGBColor fFore = {}, fBack = {};
    PenState fPen = {};
};

// The control's window port is current, with a normal pen; on leaving, the port that was current is so again,
// and the window's port is as it was.
class StDrawing {
public:
    [[nodiscard]] explicit StDrawing(const Control& inControl) : StDrawing(inControl.window) {}
    [[nodiscard]] explicit StDrawing(WindowRef inWindow);
    StDrawing(const StDrawing&) = delete;
    StDrawing& operator=(const StDrawing&) = delete;

private:
    class StPort {
    public:
        [[nodiscard]] explicit StPort(WindowRef inWindow);
        ~StPort();
        StPort(const StPort&) = delete;
        StPort& operator=(const StPort&) = delete;

    private:
        GrafPtr fPort = nullptr;
        GDHandle fDevice = nullptr;
    };
    StPort fPort;
    StPortState fState; // after the port, so that it is restored before
};

// Limits drawing to a rectangle within the clip that was, until it leaves.
class StClip {
public:
    [[nodiscard]] explicit StClip(const Rect& inRect);
    ~StClip();
    StClip(const StClip&) = delete;
    StClip& operator=(const StClip&) = delete;

private:
    RgnHandle fOld;
};

constexpr SInt16 kScreenDepth = 32;

bool CanDraw(const Control& inControl); // it and its window are visible

// In the current port, the control and what it contains, as far as they are visible.
void DrawTree(Control& inControl);
// In its window, at once, with what is behind it drawn first.
void RedrawErased(Control& inControl);
// Erases an area of the window, and draws the controls that reach into it.
void RedrawArea(WindowControls& inControls, const Rect& inArea);

} // namespace lampblack::controls

#endif
