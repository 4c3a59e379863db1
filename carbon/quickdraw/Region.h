// A set of pixels with value semantics, on pixman. Begin with Region and Boxes().
#ifndef LAMPBLACK_QUICKDRAW_REGION_H
#define LAMPBLACK_QUICKDRAW_REGION_H

#include <Carbon/Quickdraw.h>

#include <pixman.h>

#include <span>
#include <vector>

namespace lampblack::quickdraw {

using Box = pixman_box32_t; // x1, y1 inside; x2, y2 not

inline Box BoxOf(const Rect& r)
{
    return { r.left, r.top, r.right, r.bottom };
}
inline bool IsEmpty(const Rect& r)
{
    return r.left >= r.right || r.top >= r.bottom;
}
inline bool IsEmpty(const Box& b)
{
    return b.x1 >= b.x2 || b.y1 >= b.y2;
}
inline Box Intersection(const Box& a, const Box& b)
{
    return { a.x1 > b.x1 ? a.x1 : b.x1, a.y1 > b.y1 ? a.y1 : b.y1, a.x2 < b.x2 ? a.x2 : b.x2,
             a.y2 < b.y2 ? a.y2 : b.y2 };
}
inline bool Contains(const Box& outer, const Box& inner)
{
    return outer.x1 <= inner.x1 && outer.y1 <= inner.y1 && outer.x2 >= inner.x2 && outer.y2 >= inner.y2;
}
inline short Clamped(int value)
{
    return (short)(value < -32768 ? -32768 : value > 32767 ? 32767 : value);
}
inline Rect RectOf(const Box& b)
{
    return { Clamped(b.y1), Clamped(b.x1), Clamped(b.y2), Clamped(b.x2) };
}

class Region {
public:
    Region() { pixman_region32_init(&fRegion); }
    explicit Region(const Rect& r) : Region() { SetRect(r); }
    explicit Region(const Box& b) : Region() { SetBox(b); }
    // Any boxes, in any order, overlapping or not.
    explicit Region(const std::vector<Box>& boxes)
    {
        pixman_region32_init_rects(&fRegion, boxes.data(), (int)boxes.size());
    }
    Region(const Region& other) : Region() { *this = other; }
    ~Region() { pixman_region32_fini(&fRegion); }
    Region& operator=(const Region& other)
    {
        if (this != &other)
            pixman_region32_copy(&fRegion, other.Get());
        return *this;
    }

    void Clear() { pixman_region32_clear(&fRegion); }
    void SetRect(const Rect& r) { SetBox(BoxOf(r)); }
    void SetBox(const Box& b)
    {
        Box box = b;
        if (quickdraw::IsEmpty(b))
            Clear();
        else
            pixman_region32_reset(&fRegion, &box);
    }
    void Offset(int dh, int dv) { pixman_region32_translate(&fRegion, dh, dv); }
    void Union(const Region& a, const Region& b) { pixman_region32_union(&fRegion, a.Get(), b.Get()); }
    void Union(const Box& b)
    {
        if (!quickdraw::IsEmpty(b))
            pixman_region32_union_rect(&fRegion, &fRegion, b.x1, b.y1, (unsigned)(b.x2 - b.x1),
                                       (unsigned)(b.y2 - b.y1));
    }
    void Intersect(const Region& a, const Region& b)
    {
        pixman_region32_intersect(&fRegion, a.Get(), b.Get());
    }
    void Intersect(const Box& b)
    {
        if (quickdraw::IsEmpty(b))
            return Clear();
        pixman_region32_intersect_rect(&fRegion, &fRegion, b.x1, b.y1, (unsigned)(b.x2 - b.x1),
                                       (unsigned)(b.y2 - b.y1));
    }
    void Subtract(const Region& a, const Region& b) { pixman_region32_subtract(&fRegion, a.Get(), b.Get()); }
    void Xor(const Region& a, const Region& b)
    {
        Region onlyA, onlyB;
        onlyA.Subtract(a, b);
        onlyB.Subtract(b, a);
        Union(onlyA, onlyB);
    }

    bool IsEmpty() const { return !pixman_region32_not_empty(Get()); }
    bool IsRectangle() const { return pixman_region32_n_rects(Get()) == 1; }
    bool Contains(int h, int v) const { return pixman_region32_contains_point(Get(), h, v, nullptr); }
    bool Touches(const Box& b) const
    {
        Box box = b;
        return !quickdraw::IsEmpty(b) && pixman_region32_contains_rectangle(Get(), &box) != PIXMAN_REGION_OUT;
    }
    // Nothing is the same wherever it was moved to.
    bool operator==(const Region& other) const
    {
        return (IsEmpty() && other.IsEmpty()) || pixman_region32_equal(Get(), other.Get());
    }
    Box Extents() const { return fRegion.extents; }

    // From top to bottom in bands of equal height, each from left to right.
    std::span<const Box> Boxes() const
    {
        int count = 0;
        const Box* boxes = pixman_region32_rectangles(Get(), &count);
        return { boxes, (size_t)count };
    }

private:
    // pixman asks for a mutable region even where it only reads.
    pixman_region32_t* Get() const { return const_cast<pixman_region32_t*>(&fRegion); }

    pixman_region32_t fRegion;
};

// Regions behind references.
Region* FindRegion(RgnHandle);
RgnHandle ReferenceOf(Region*);

} // namespace lampblack::quickdraw

#endif
