// Small arithmetic on rectangles.
#ifndef LAMPBLACK_WINDOWS_RECTS_H
#define LAMPBLACK_WINDOWS_RECTS_H

#include <Carbon/MacTypes.h>

namespace lampblack::windows {

inline bool IsEmptyRect(const Rect& r)
{
    return r.left >= r.right || r.top >= r.bottom;
}
inline Rect Shifted(const Rect& r, int h, int v)
{
    return { (short)(r.top + v), (short)(r.left + h), (short)(r.bottom + v), (short)(r.right + h) };
}
inline Rect Overlap(const Rect& a, const Rect& b)
{
    const Rect both = { a.top > b.top ? a.top : b.top, a.left > b.left ? a.left : b.left,
                        a.bottom < b.bottom ? a.bottom : b.bottom, a.right < b.right ? a.right : b.right };
    return IsEmptyRect(both) ? Rect{ 0, 0, 0, 0 } : both;
}
inline bool SameRect(const Rect& a, const Rect& b)
{
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}
inline bool RectHolds(const Rect& r, Point p)
{
    return p.h >= r.left && p.h < r.right && p.v >= r.top && p.v < r.bottom;
}
inline int Width(const Rect& r)
{
    return r.right - r.left;
}
inline int Height(const Rect& r)
{
    return r.bottom - r.top;
}

} // namespace lampblack::windows

#endif
