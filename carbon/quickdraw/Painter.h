// Draws spans, boxes and regions with an ink into a port, clipped, and tells the port's owner in the end.
#ifndef LAMPBLACK_QUICKDRAW_PAINTER_H
#define LAMPBLACK_QUICKDRAW_PAINTER_H

#include "Ink.h"

namespace lampblack::quickdraw {

class Painter {
public:
    // Nothing will be drawn outside `bounds`.
    Painter(PortRecord&, const Ink&, const Box& bounds);
    ~Painter();
    Painter(const Painter&) = delete;
    Painter& operator=(const Painter&) = delete;

    // The rows that are worth drawing; none when Top() is Bottom().
    int Top() const { return fBounds.y1; }
    int Bottom() const { return fBounds.y2; }

    void Span(int v, int left, int right); // fastest with rows in ascending order
    void Fill(const Box&);
    void Fill(const Region&);

private:
    PortRecord& fPort;
    const Ink& fInk;
    Box fBounds;
    std::span<const Box> fClip;
    size_t fFirst = 0; // the first clip box that ends below the row of the last span
    int fRow = -100000;
};

} // namespace lampblack::quickdraw

#endif
