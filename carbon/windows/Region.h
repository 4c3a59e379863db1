// A region as a value, in global pixels: what the window list and the compositor compute with.
#ifndef LAMPBLACK_WINDOWS_REGION_H
#define LAMPBLACK_WINDOWS_REGION_H

#include "Rects.h"

#include <Carbon/MacTypes.h>

#include <pixman.h>

#include <span>

namespace lampblack::windows {

class Region {
public:
    Region() { pixman_region32_init(&fRegion); }
    explicit Region(const Rect& inRect) : Region() { Add(inRect); }
    Region(const Region& inOther) : Region() { *this = inOther; }
    Region& operator=(const Region& inOther)
    {
        pixman_region32_copy(&fRegion, const_cast<pixman_region32_t*>(&inOther.fRegion));
        return *this;
    }
    ~Region() { pixman_region32_fini(&fRegion); }

    void Clear() { pixman_region32_clear(&fRegion); }
    bool IsEmpty() const { return !pixman_region32_not_empty(Raw()); }

    void Add(const Rect& inRect)
    {
        if (inRect.left < inRect.right && inRect.top < inRect.bottom)
            pixman_region32_union_rect(&fRegion, &fRegion, inRect.left, inRect.top,
                                       inRect.right - inRect.left, inRect.bottom - inRect.top);
    }
    void Add(const Region& inOther) { pixman_region32_union(&fRegion, &fRegion, inOther.Raw()); }
    void Subtract(const Region& inOther) { pixman_region32_subtract(&fRegion, &fRegion, inOther.Raw()); }
    void Subtract(const Rect& inRect) { Subtract(Region(inRect)); }
    void Clip(const Region& inOther) { pixman_region32_intersect(&fRegion, &fRegion, inOther.Raw()); }
    void Clip(const Rect& inRect)
    {
        if (inRect.left >= inRect.right || inRect.top >= inRect.bottom)
            return Clear();
        pixman_region32_intersect_rect(&fRegion, &fRegion, inRect.left, inRect.top,
                                       inRect.right - inRect.left, inRect.bottom - inRect.top);
    }
    // This region becomes the intersection of the two, without a temporary.
    void SetIntersection(const Region& inFirst, const Region& inSecond)
    {
        pixman_region32_intersect(&fRegion, inFirst.Raw(), inSecond.Raw());
    }
    void Offset(int inH, int inV) { pixman_region32_translate(&fRegion, inH, inV); }

    bool Contains(Point inPoint) const
    {
        return pixman_region32_contains_point(Raw(), inPoint.h, inPoint.v, nullptr);
    }
    Rect Bounds() const
    {
        const pixman_box32_t* box = pixman_region32_extents(Raw());
        return { (short)box->y1, (short)box->x1, (short)box->y2, (short)box->x2 };
    }
    // Rectangles in order from top to bottom and left to right, without overlap.
    std::span<const pixman_box32_t> Boxes() const
    {
        int count = 0;
        const pixman_box32_t* boxes = pixman_region32_rectangles(Raw(), &count);
        return { boxes, (size_t)count };
    }

private:
    pixman_region32_t* Raw() const { return const_cast<pixman_region32_t*>(&fRegion); }

    pixman_region32_t fRegion;
};

// To and from the Graphics regions of the published interface.
Region FromRgn(RgnHandle inRegion);
void ToRgn(const Region& inRegion, RgnHandle ioRegion);

} // namespace lampblack::windows

#endif
