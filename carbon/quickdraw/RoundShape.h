// Rectangles with round corners, ovals among them: a pixel belongs to an oval when its centre is inside the
// mathematical one. And the wedges that arcs are made of.
#ifndef LAMPBLACK_QUICKDRAW_ROUNDSHAPE_H
#define LAMPBLACK_QUICKDRAW_ROUNDSHAPE_H

#include "Region.h"

namespace lampblack::quickdraw {

class RoundShape {
public:
    RoundShape(const Box&, int ovalWidth, int ovalHeight);

    const Box& Bounds() const { return fBox; }
    bool IsRectangle() const { return fOvalWidth == 0 || fOvalHeight == 0; }
    // The shape that a pen of this size leaves inside a frame; may be empty.
    RoundShape Inside(int penWidth, int penHeight) const;

    // The pixels of row v are left to right - 1; an empty span outside the shape.
    void Row(int v, int* left, int* right) const;

    Region AsRegion() const;

private:
    int InsetOf(int rowFromEdge) const;

    Box fBox;
    int fOvalWidth, fOvalHeight;
};

// A sector of a rectangle's oval, both angles in degrees clockwise from straight up. Sectors that make a
// whole turn have each pixel exactly once.
class Wedge {
public:
    Wedge(const Box&, int startAngle, int arcAngle);

    // Cuts [left, right) of row v down to what is in the wedge: at most two spans. Answers how many.
    int Cut(int v, int left, int right, int outSpans[2][2]) const;

private:
    struct Ray {
        int64_t h, v;
    };
    static Ray RayAt(int degrees, int width, int height);
    // The columns on one side of a line through the centre, where a * dh + b * dv is positive; clamped to
    // [left, right).
    void HalfLine(int64_t a, int64_t b, int v, int* left, int* right) const;

    Box fBox;
    Ray fStart, fEnd;
    bool fWhole, fNone, fReflex; // reflex: more than half of the circle
};

} // namespace lampblack::quickdraw

#endif
