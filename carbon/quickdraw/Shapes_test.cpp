// Shapes to the pixel, against their definitions tried on every pixel.
#include "TestPort.h"

#include <Carbon/MacMemory.h>

#include <cmath>
#include <cstdlib>

using namespace lampblack::quickdraw;

// A pixel is in an oval when its centre is in the mathematical one.
static bool IsInOval(const Rect& r, int h, int v)
{
    if (!IsInside(r, h, v))
        return false;
    const int64_t width = r.right - r.left, height = r.bottom - r.top;
    const int64_t dh = 2 * h + 1 - r.left - r.right, dv = 2 * v + 1 - r.top - r.bottom;
    return dh * dh * height * height + dv * dv * width * width <= width * width * height * height;
}

static Rect Inner(const Rect& r, int width, int height)
{
    return { (short)(r.top + height), (short)(r.left + width), (short)(r.bottom - height),
             (short)(r.right - width) };
}

// Each corner belongs to an oval of the given diameters in that corner.
static bool IsInRoundRect(const Rect& r, int ovalWidth, int ovalHeight, int h, int v)
{
    if (!IsInside(r, h, v))
        return false;
    const int left = h - r.left, right = r.right - 1 - h, top = v - r.top, bottom = r.bottom - 1 - v;
    if (std::min(left, right) >= ovalWidth / 2 || std::min(top, bottom) >= ovalHeight / 2)
        return true;
    return IsInOval(MakeRect(0, 0, ovalWidth, ovalHeight), std::min(left, right), std::min(top, bottom));
}

TEST_CASE("PaintRect: the right and bottom edges are outside")
{
    TestPort port;
    const Rect r = MakeRect(3, 4, 10, 12);
    PaintRect(&r);
    CHECK(BlackDifferences(port, [&](int h, int v) { return IsInside(r, h, v); }) == 0);
}

TEST_CASE("FrameRect: the pen stays inside, and a pen too thick fills")
{
    for (const int width : { 1, 2, 5, 30 })
        for (const int height : { 1, 3, 4, 30 }) {
            TestPort port;
            const Rect r = MakeRect(3, 4, 30, 22);
            PenSize((short)width, (short)height);
            FrameRect(&r);
            CHECK(BlackDifferences(port, [&](int h, int v) {
                      return IsInside(r, h, v) && !IsInside(Inner(r, width, height), h, v);
                  }) == 0);
        }
}

TEST_CASE("PaintOval: every size up to 24 by 24 has the pixels whose centres are inside")
{
    int wrong = 0;
    for (int width = 1; width <= 24; ++width)
        for (int height = 1; height <= 24; ++height) {
            TestPort port;
            const Rect r = MakeRect(2, 3, 2 + width, 3 + height);
            PaintOval(&r);
            wrong += BlackDifferences(port, [&](int h, int v) { return IsInOval(r, h, v); });
        }
    CHECK(wrong == 0);
}

TEST_CASE("FrameOval: the oval without the one that the pen leaves inside")
{
    int wrong = 0;
    for (int width = 1; width <= 24; ++width)
        for (const int pen : { 1, 2, 4 }) {
            TestPort port;
            const Rect r = MakeRect(1, 1, 1 + width, 20);
            PenSize((short)pen, (short)pen);
            FrameOval(&r);
            wrong += BlackDifferences(
                port, [&](int h, int v) { return IsInOval(r, h, v) && !IsInOval(Inner(r, pen, pen), h, v); });
        }
    CHECK(wrong == 0);
}

TEST_CASE("PaintOval: the largest rectangle there is neither overflows nor hangs")
{
    TestPort port;
    const Rect r = MakeRect(-32768, -32768, 32767, 32767);
    PaintOval(&r);
    CHECK(BlackDifferences(port, [](int, int) { return true; }) == 0);
}

TEST_CASE("PaintRoundRect: corners are quarters of the oval")
{
    int wrong = 0;
    for (const int ovalWidth : { 0, 1, 5, 8, 13 })
        for (const int ovalHeight : { 0, 2, 7, 10 }) {
            TestPort port;
            const Rect r = MakeRect(2, 2, 33, 24);
            PaintRoundRect(&r, (short)ovalWidth, (short)ovalHeight);
            wrong += BlackDifferences(
                port, [&](int h, int v) { return IsInRoundRect(r, ovalWidth, ovalHeight, h, v); });
        }
    CHECK(wrong == 0);
}

TEST_CASE("FrameRoundRect: the inner corners are rounder by the pen")
{
    TestPort port;
    const Rect r = MakeRect(2, 2, 33, 24);
    PenSize(2, 3);
    FrameRoundRect(&r, 12, 14);
    CHECK(BlackDifferences(port, [&](int h, int v) {
              return IsInRoundRect(r, 12, 14, h, v) && !IsInRoundRect(Inner(r, 2, 3), 8, 8, h, v);
          }) == 0);
}

TEST_CASE("PaintArc: quarters meet without a gap and make the whole oval")
{
    TestPort port;
    const Rect r = MakeRect(2, 2, 35, 27);
    for (const short start : { 0, 90, 180, 270 })
        PaintArc(&r, start, 90);
    CHECK(BlackDifferences(port, [&](int h, int v) { return IsInOval(r, h, v); }) == 0);
}

TEST_CASE("PaintArc: an arc is the oval within its angles, which follow the rectangle")
{
    const Rect r = MakeRect(2, 3, 37, 24);
    int wrong = 0;
    for (int start = -50; start < 360; start += 37)
        for (const int extent : { 0, 10, 89, 180, 200, 271, 360, 400, -60, -300 }) {
            TestPort port;
            PaintArc(&r, (short)start, (short)extent);
            const int first = extent < 0 ? start + extent : start, size = std::abs(extent);
            wrong += BlackDifferences(port, [&](int h, int v) {
                const double dh = (2.0 * h + 1 - r.left - r.right) / (r.right - r.left);
                const double dv = (2.0 * v + 1 - r.top - r.bottom) / (r.bottom - r.top);
                const double angle = std::atan2(dh, -dv) * 180 / M_PI - first;
                const double turned = std::fmod(angle + 1080, 360);
                const bool centre = dh == 0 && dv == 0; // on every edge
                const bool edge =
                    centre || turned < 0.01 || turned > 359.99 || std::abs(turned - size) < 0.01;
                const bool inside = size >= 360 || (size > 0 && turned <= size);
                return edge ? port.At(h, v) == 0 && IsInOval(r, h, v) : inside && IsInOval(r, h, v);
            });
        }
    CHECK(wrong == 0);
}

TEST_CASE("FrameArc: a whole turn is FrameOval")
{
    const Rect r = MakeRect(2, 3, 37, 24);
    TestPort oval;
    PenSize(3, 2);
    FrameOval(&r);
    TestPort arc;
    PenSize(3, 2);
    FrameArc(&r, 20, 360);
    CHECK(Differences(arc, [&](int h, int v) { return oval.At(h, v); }) == 0);
}

// Pixels of the path: the nearest to the mathematical line on its longer axis, from the upper end.
static std::vector<Point> PathOf(Point a, Point b)
{
    if (a.v > b.v || (a.v == b.v && a.h > b.h))
        std::swap(a, b);
    const int rows = b.v - a.v, columns = b.h - a.h, longer = std::max(rows, std::abs(columns));
    std::vector<Point> path;
    for (int i = 0; i <= longer; ++i) {
        const auto nearest = [&](int distance) {
            const int size = std::abs(distance);
            const int step = longer ? (2 * i * size + longer) / (2 * longer) : 0;
            return distance < 0 ? -step : step;
        };
        path.push_back({ (short)(a.v + nearest(rows)), (short)(a.h + nearest(columns)) });
    }
    return path;
}

TEST_CASE("LineTo: covers wherever the pen, hanging below and right, touches the path")
{
    std::mt19937 random(7);
    int wrong = 0;
    for (int round = 0; round < 400; ++round) {
        TestPort port;
        const auto number = [&](int limit) { return (short)(random() % (unsigned)limit); };
        const Point a = { number(30), number(40) }, b = { number(30), number(40) };
        const int width = 1 + number(4), height = 1 + number(4);
        PenSize((short)width, (short)height);
        MoveTo(a.h, a.v);
        LineTo(b.h, b.v);
        const std::vector<Point> path = PathOf(a, b);
        wrong += BlackDifferences(port, [&](int h, int v) {
            return std::any_of(path.begin(), path.end(), [&](Point p) {
                return h >= p.h && h < p.h + width && v >= p.v && v < p.v + height;
            });
        });
    }
    CHECK(wrong == 0);
}

TEST_CASE("Line: the same line backwards in patXor leaves nothing")
{
    TestPort port;
    PenMode(patXor);
    MoveTo(3, 25);
    LineTo(36, 4);
    Line(-33, 21);
    CHECK(BlackDifferences(port, [](int, int) { return false; }) == 0);
    Point pen;
    GetPen(&pen);
    CHECK(pen.h == 3);
    CHECK(pen.v == 25);
}

TEST_CASE("PenMode: each pattern mode does what it says with the set and the clear bits")
{
    const RGBColor fore = { 0x1111, 0x2222, 0x3333 }, back = { 0xAAAA, 0xBBBB, 0xCCCC },
                   old = { 0x4444, 0x5555, 0x6666 };
    const uint32_t f = 0x112233, b = 0xAABBCC, o = 0x445566, inverted = 0xBBAA99;
    const uint32_t expected[8][2] = { { f, b }, { f, o }, { inverted, o }, { b, o },
                                      { b, f }, { o, f }, { o, inverted }, { o, b } };
    for (int mode = 0; mode < 8; ++mode) {
        TestPort port;
        const Rect all = MakeRect(0, 0, 40, 30);
        RGBBackColor(&old);
        EraseRect(&all);
        RGBForeColor(&fore);
        RGBBackColor(&back);
        const Pattern stripes = { { 0xF0, 0x0F, 0xFF, 0x00, 0xAA, 0x55, 0x81, 0x18 } };
        PenPat(&stripes);
        PenMode((short)(patCopy + mode));
        PaintRect(&all);
        CHECK(Differences(port, [&](int h, int v) {
                  const bool set = stripes.pat[v & 7] >> (7 - (h & 7)) & 1;
                  return expected[mode][set ? 0 : 1];
              }) == 0);
    }
}

TEST_CASE("EraseRect: uses the background pattern in both colours")
{
    TestPort port;
    Pattern gray;
    BackPat(GetQDGlobalsGray(&gray));
    const Rect all = MakeRect(0, 0, 40, 30);
    EraseRect(&all);
    CHECK(BlackDifferences(port, [](int h, int v) { return (h + v) % 2 == 0; }) == 0);
}

TEST_CASE("ClipRect: nothing is drawn outside clip and visible region, by any shape")
{
    TestPort port;
    RgnHandle clip = NewRgn(), hole = NewRgn();
    SetRectRgn(clip, 5, 5, 30, 25);
    SetRectRgn(hole, 10, 10, 20, 15);
    DiffRgn(clip, hole, clip);
    SetClip(clip);
    const Rect oval = MakeRect(-10, -10, 45, 40), all = MakeRect(-50, -50, 90, 90);
    PaintOval(&oval);
    InvertRect(&all);
    InvertRect(&all);
    CHECK(BlackDifferences(port, [&](int h, int v) {
              return PtInRgn({ (short)v, (short)h }, clip) && IsInOval(oval, h, v);
          }) == 0);
    DisposeRgn(clip);
    DisposeRgn(hole);
}

TEST_CASE("HidePen: shapes and lines leave no mark until ShowPen")
{
    TestPort port;
    const Rect r = MakeRect(3, 4, 10, 12);
    HidePen();
    PaintRect(&r);
    MoveTo(0, 0);
    LineTo(20, 20);
    CHECK(BlackDifferences(port, [](int, int) { return false; }) == 0);
    ShowPen();
    PaintRect(&r);
    CHECK(port.At(3, 4) == 0);
}

TEST_CASE("PaintPoly: a polygon along pixel edges is the rectangle")
{
    TestPort port;
    PolyHandle polygon = OpenPoly();
    MoveTo(5, 6);
    LineTo(25, 6);
    LineTo(25, 20);
    LineTo(5, 20);
    LineTo(5, 6);
    ClosePoly();
    const Rect r = MakeRect(5, 6, 25, 20);
    CHECK(EqualRect(&(*polygon)->polyBBox, &r));
    CHECK((*polygon)->polySize == 10 + 5 * 4);
    PaintPoly(polygon);
    CHECK(BlackDifferences(port, [&](int h, int v) { return IsInside(r, h, v); }) == 0);
    KillPoly(polygon);
    PaintPoly(polygon);
    PaintPoly(nullptr);
}

TEST_CASE("PaintPoly: random polygons have the pixels whose centres are inside by the even-odd rule")
{
    std::mt19937 random(11);
    int wrong = 0;
    for (int round = 0; round < 100; ++round) {
        TestPort port;
        std::vector<Point> points;
        PolyHandle polygon = OpenPoly();
        for (int i = 0; i < 6; ++i) {
            points.push_back({ (short)(random() % 30), (short)(random() % 40) });
            if (i == 0)
                MoveTo(points[0].h, points[0].v);
            else
                LineTo(points.back().h, points.back().v);
        }
        ClosePoly();
        PaintPoly(polygon);
        KillPoly(polygon);
        wrong += BlackDifferences(port, [&](int h, int v) {
            bool inside = false;
            for (size_t i = 0; i < points.size(); ++i) {
                const Point a = points[i], b = points[(i + 1) % points.size()];
                if ((a.v <= v) == (b.v <= v))
                    continue;
                const double crossing = a.h + (v + 0.5 - a.v) * (b.h - a.h) / (b.v - a.v);
                inside ^= crossing <= h + 0.5;
            }
            return inside;
        });
    }
    CHECK(wrong == 0);
}

TEST_CASE("OpenRgn: outlines that overlap make a hole, and nothing is drawn meanwhile")
{
    TestPort port;
    RgnHandle region = NewRgn();
    const Rect outer = MakeRect(5, 5, 35, 25), inner = MakeRect(10, 8, 30, 22);
    OpenRgn();
    FrameRect(&outer);
    FrameOval(&inner);
    MoveTo(0, 0);
    LineTo(4, 0);
    LineTo(4, 4);
    LineTo(0, 4);
    LineTo(0, 0);
    CloseRgn(region);
    CHECK(BlackDifferences(port, [](int, int) { return false; }) == 0);
    PaintRgn(region);
    CHECK(BlackDifferences(port, [&](int h, int v) {
              return (IsInside(outer, h, v) && !IsInOval(inner, h, v)) || (h < 4 && v < 4);
          }) == 0);
    DisposeRgn(region);
}

TEST_CASE("SetCPixel: sets one pixel, and GetCPixel reads it; outside there is white")
{
    TestPort port;
    const RGBColor color = { 0x12FF, 0x3400, 0x5678 };
    SetCPixel(7, 9, &color);
    SetCPixel(700, 9, &color);
    CHECK(port.At(7, 9) == 0x123456);
    RGBColor read;
    GetCPixel(7, 9, &read);
    CHECK(read.red == 0x1212);
    GetCPixel(700, 9, &read);
    CHECK(read.red == 0xFFFF);
    CHECK(GetPixel(7, 9));
    CHECK(!GetPixel(8, 9));
}

TEST_CASE("ForeColor: the eight classic colours, and black for any other number")
{
    TestPort port;
    RGBColor color;
    ForeColor(redColor);
    GetForeColor(&color);
    CHECK(color.red == 0xDD6B);
    BackColor(yellowColor);
    GetBackColor(&color);
    CHECK(color.green == 0xF37D);
    ForeColor(12345);
    GetForeColor(&color);
    CHECK(color.red == 0);
}
