// Points and rectangles. Coordinates wrap at 16 bits, as the machine's arithmetic did.
#include "Mapping.h"
#include "Region.h"

#include <algorithm>
#include <cmath>

using namespace lampblack::quickdraw;

namespace lampblack::quickdraw {

// value * numerator / denominator, rounded to the nearest; half away from zero. Far outside the coordinates
// it may be anything as far.
static int Scaled(int inValue, int inNumerator, int inDenominator)
{
    if (inDenominator == 0)
        return 0;
    const int64_t product = (int64_t)inValue * inNumerator;
    const int64_t half = std::abs(inDenominator) / 2;
    return (int)std::clamp<int64_t>((product + (product < 0 ? -half : half)) / inDenominator, -100000,
                                    100000);
}

// A width or height that is there stays there: a pen does not vanish in a smaller picture.
static short ScaledExtent(int inExtent, int inNumerator, int inDenominator)
{
    const int scaled = Scaled(inExtent, inNumerator, inDenominator);
    return Clamped(scaled == 0 && inExtent > 0 && inNumerator > 0 && inDenominator > 0 ? 1 : scaled);
}

Point Mapped(Point inPoint, const Rect& from, const Rect& to)
{
    const int h = Scaled(inPoint.h - from.left, to.right - to.left, from.right - from.left);
    const int v = Scaled(inPoint.v - from.top, to.bottom - to.top, from.bottom - from.top);
    return { Clamped(to.top + v), Clamped(to.left + h) };
}

Rect Mapped(const Rect& inRect, const Rect& from, const Rect& to)
{
    const Point topLeft = Mapped(Point{ inRect.top, inRect.left }, from, to);
    const Point bottomRight = Mapped(Point{ inRect.bottom, inRect.right }, from, to);
    return { topLeft.v, topLeft.h, bottomRight.v, bottomRight.h };
}

static constexpr Rect kEmptyRect = { 0, 0, 0, 0 };

} // namespace lampblack::quickdraw

void SetPt(Point* pt, short h, short v)
{
    if (pt)
        *pt = { v, h };
}

void AddPt(Point src, Point* dst)
{
    if (dst)
        *dst = { (short)(dst->v + src.v), (short)(dst->h + src.h) };
}

void SubPt(Point src, Point* dst)
{
    if (dst)
        *dst = { (short)(dst->v - src.v), (short)(dst->h - src.h) };
}

Boolean EqualPt(Point pt1, Point pt2)
{
    return pt1.v == pt2.v && pt1.h == pt2.h;
}

SInt32 DeltaPoint(Point ptA, Point ptB)
{
    const UInt16 v = (UInt16)(ptA.v - ptB.v), h = (UInt16)(ptA.h - ptB.h);
    return (SInt32)((UInt32)v << 16 | h);
}

void ScalePt(Point* pt, const Rect* srcRect, const Rect* dstRect)
{
    if (!pt || !srcRect || !dstRect)
        return;
    pt->h = ScaledExtent(pt->h, dstRect->right - dstRect->left, srcRect->right - srcRect->left);
    pt->v = ScaledExtent(pt->v, dstRect->bottom - dstRect->top, srcRect->bottom - srcRect->top);
}

void MapPt(Point* pt, const Rect* srcRect, const Rect* dstRect)
{
    if (pt && srcRect && dstRect)
        *pt = Mapped(*pt, *srcRect, *dstRect);
}

void MapRect(Rect* r, const Rect* srcRect, const Rect* dstRect)
{
    if (r && srcRect && dstRect)
        *r = Mapped(*r, *srcRect, *dstRect);
}

void SetRect(Rect* r, short left, short top, short right, short bottom)
{
    if (r)
        *r = { top, left, bottom, right };
}

void OffsetRect(Rect* r, short dh, short dv)
{
    if (r)
        *r = { (short)(r->top + dv), (short)(r->left + dh), (short)(r->bottom + dv), (short)(r->right + dh) };
}

void InsetRect(Rect* r, short dh, short dv)
{
    if (!r)
        return;
    const int left = r->left + dh, top = r->top + dv, right = r->right - dh, bottom = r->bottom - dv;
    *r = left < right && top < bottom ? RectOf({ left, top, right, bottom }) : kEmptyRect;
}

Boolean SectRect(const Rect* src1, const Rect* src2, Rect* dstRect)
{
    const Box box = src1 && src2 ? Intersection(BoxOf(*src1), BoxOf(*src2)) : Box{ 0, 0, 0, 0 };
    const bool meets = !IsEmpty(box);
    if (dstRect)
        *dstRect = meets ? RectOf(box) : kEmptyRect;
    return meets;
}

// An empty rectangle adds nothing.
void UnionRect(const Rect* src1, const Rect* src2, Rect* dstRect)
{
    if (!src1 || !src2 || !dstRect)
        return;
    if (EmptyRect(src1) || EmptyRect(src2)) {
        *dstRect = EmptyRect(src1) ? *src2 : *src1;
        return;
    }
    *dstRect = { std::min(src1->top, src2->top), std::min(src1->left, src2->left),
                 std::max(src1->bottom, src2->bottom), std::max(src1->right, src2->right) };
}

Boolean EqualRect(const Rect* rect1, const Rect* rect2)
{
    return rect1 && rect2 && rect1->top == rect2->top && rect1->left == rect2->left &&
           rect1->bottom == rect2->bottom && rect1->right == rect2->right;
}

Boolean EmptyRect(const Rect* r)
{
    return !r || IsEmpty(*r);
}

Boolean PtInRect(Point pt, const Rect* r)
{
    return r && pt.h >= r->left && pt.h < r->right && pt.v >= r->top && pt.v < r->bottom;
}

void Pt2Rect(Point pt1, Point pt2, Rect* dstRect)
{
    if (dstRect)
        *dstRect = { std::min(pt1.v, pt2.v), std::min(pt1.h, pt2.h), std::max(pt1.v, pt2.v),
                     std::max(pt1.h, pt2.h) };
}

// The angle is that of the circle which the rectangle's oval is a squeezed picture of.
void PtToAngle(const Rect* r, Point pt, short* angle)
{
    if (!r || !angle)
        return;
    *angle = 0;
    if (IsEmpty(*r))
        return;
    const double h = (2.0 * pt.h - r->left - r->right) / (r->right - r->left);
    const double v = (2.0 * pt.v - r->top - r->bottom) / (r->bottom - r->top);
    const int degrees = (int)std::lround(std::atan2(h, -v) * 180.0 / 3.14159265358979323846);
    *angle = (short)((degrees + 360) % 360);
}

Fixed SlopeFromAngle(short angle)
{
    const int degrees = (angle % 180 + 180) % 180;
    if (degrees == 90)
        return INT32_MIN;
    return (Fixed)std::lround(-std::tan(degrees * 3.14159265358979323846 / 180.0) * 65536);
}

short AngleFromSlope(Fixed slope)
{
    const double radians = std::atan2((double)slope, -65536.0);
    const int degrees = (int)std::lround(radians * 180.0 / 3.14159265358979323846);
    return (short)((degrees + 359) % 180 + 1);
}
