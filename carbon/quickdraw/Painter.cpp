#include "Painter.h"

#include <algorithm>

namespace lampblack::quickdraw {

Painter::Painter(PortRecord& inPort, const Ink& inInk, const Box& inBounds) : fPort(inPort), fInk(inInk)
{
    const Region& drawable = inPort.Drawable();
    fBounds = Intersection(inBounds, drawable.Extents());
    if (IsEmpty(fBounds) || !inInk.Draws())
        fBounds = { 0, 0, 0, 0 };
    else
        fClip = drawable.Boxes();
}

Painter::~Painter()
{
    fPort.Damage(fBounds);
}

void Painter::Span(int v, int left, int right)
{
    if (v < fBounds.y1 || v >= fBounds.y2 || left >= right)
        return;
    if (v < fRow)
        fFirst = 0;
    fRow = v;
    while (fFirst < fClip.size() && fClip[fFirst].y2 <= v)
        ++fFirst;
    left = std::max(left, fBounds.x1);
    right = std::min(right, fBounds.x2);
    for (size_t i = fFirst; i < fClip.size() && fClip[i].y1 <= v; ++i) {
        const int first = std::max(left, fClip[i].x1), end = std::min(right, fClip[i].x2);
        if (first < end)
            fInk.Row(first, v, end - first);
    }
}

void Painter::Fill(const Box& inBox)
{
    const Box wanted = Intersection(inBox, fBounds);
    if (IsEmpty(wanted))
        return;
    for (const Box& clip : fClip) {
        if (clip.y1 >= wanted.y2)
            break;
        const Box box = Intersection(wanted, clip);
        if (!IsEmpty(box))
            fInk.Block(box);
    }
}

// One box meets only the clip boxes between its rows: two sorted lists are walked together.
void Painter::Fill(const Region& inRegion)
{
    size_t first = 0;
    for (const Box& box : inRegion.Boxes()) {
        const Box wanted = Intersection(box, fBounds);
        if (IsEmpty(wanted))
            continue;
        while (first < fClip.size() && fClip[first].y2 <= wanted.y1)
            ++first;
        for (size_t i = first; i < fClip.size() && fClip[i].y1 < wanted.y2; ++i) {
            const Box part = Intersection(wanted, fClip[i]);
            if (!IsEmpty(part))
                fInk.Block(part);
        }
    }
}

} // namespace lampblack::quickdraw
