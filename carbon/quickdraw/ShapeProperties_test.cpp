// What holds for shapes whatever their size: symmetry, wedges that meet, frames and insides, drawing twice;
// and shapes at the ends of the coordinates.
#include "TestPort.h"

#include <Carbon/MacMemory.h>

#include <cmath>

using namespace lampblack::quickdraw;

static Rect RandomRect(std::mt19937& ioRandom)
{
    const int left = (int)(ioRandom() % 30) - 4, top = (int)(ioRandom() % 20) - 4;
    return MakeRect(left, top, left + 1 + (int)(ioRandom() % 30), top + 1 + (int)(ioRandom() % 24));
}

static int CountBlack(const TestPort& port)
{
    return BlackDifferences(port, [](int, int) { return false; });
}

TEST_CASE("InvertArc: the wedges of a whole turn touch each pixel of the oval once")
{
    std::mt19937 random(31);
    int wrong = 0;
    for (int round = 0; round < 300; ++round) {
        const Rect r = RandomRect(random);
        TestPort wedges, oval;
        PaintOval(&r);
        SetPort(wedges.port);
        int angle = (int)(random() % 720) - 360;
        for (int rest = 360; rest > 0;) {
            const int extent = std::min(rest, 1 + (int)(random() % 270));
            const bool backwards = random() % 2;
            InvertArc(&r, (short)(backwards ? angle + extent : angle), (short)(backwards ? -extent : extent));
            angle += extent;
            rest -= extent;
        }
        wrong += Differences(wedges, [&](int h, int v) { return oval.At(h, v); });
    }
    CHECK(wrong == 0);
}

TEST_CASE("InvertArc: no arc has no extent, and no more than all of it")
{
    const Rect r = MakeRect(2, 3, 37, 24);
    TestPort port;
    InvertArc(&r, 45, 0);
    CHECK(CountBlack(port) == 0);
    TestPort oval;
    PaintOval(&r);
    for (const short extent : { 360, -360, 361, 720, 32767, -32768 }) {
        TestPort whole;
        InvertArc(&r, 123, extent);
        CHECK(Differences(whole, [&](int h, int v) { return oval.At(h, v); }) == 0);
    }
}

TEST_CASE("FrameArc: is what PaintArc and FrameOval have in common, with any pen")
{
    std::mt19937 random(33);
    int wrong = 0;
    for (int round = 0; round < 200; ++round) {
        const Rect r = RandomRect(random);
        const short start = (short)(random() % 360), extent = (short)(random() % 720 - 360);
        const short width = (short)(1 + random() % 9), height = (short)(1 + random() % 9);
        TestPort arc, frame, framedArc;
        PenSize(width, height);
        FrameArc(&r, start, extent);
        SetPort(frame.port);
        PenSize(width, height);
        FrameOval(&r);
        SetPort(arc.port);
        PaintArc(&r, start, extent);
        wrong += Differences(framedArc, [&](int h, int v) { return arc.At(h, v) | frame.At(h, v); });
    }
    CHECK(wrong == 0);
}

TEST_CASE("FrameArc: a pen thicker than the box fills the wedge; without a pen nothing is drawn")
{
    const Rect r = MakeRect(2, 3, 37, 24);
    TestPort wedge, framed;
    PenSize(50, 50);
    FrameArc(&r, 10, 100);
    SetPort(wedge.port);
    PaintArc(&r, 10, 100);
    CHECK(Differences(framed, [&](int h, int v) { return wedge.At(h, v); }) == 0);
    TestPort none;
    PenSize(0, 5);
    FrameArc(&r, 10, 100);
    FrameOval(&r);
    FrameRect(&r);
    CHECK(CountBlack(none) == 0);
}

TEST_CASE("PaintOval, PaintRoundRect: are the same seen from every side")
{
    std::mt19937 random(35);
    int wrong = 0;
    for (int round = 0; round < 200; ++round) {
        const int width = 1 + (int)(random() % 36), height = 1 + (int)(random() % 26);
        const Rect r = MakeRect(2, 2, 2 + width, 2 + height);
        TestPort port;
        if (round % 2)
            PaintOval(&r);
        else
            PaintRoundRect(&r, (short)(random() % 20), (short)(random() % 20));
        for (int v = 0; v < height; ++v)
            for (int h = 0; h < width; ++h) {
                wrong += port.At(2 + h, 2 + v) != port.At(1 + width - h, 2 + v);
                wrong += port.At(2 + h, 2 + v) != port.At(2 + h, 1 + height - v);
            }
    }
    CHECK(wrong == 0);
}

using ShapeCall = void (*)(const Rect*);

TEST_CASE("Invert: every shape twice leaves the port as it was")
{
    static const ShapeCall kShapes[] = {
        InvertRect,
        InvertOval,
        [](const Rect* r) { InvertRoundRect(r, 9, 7); },
        [](const Rect* r) { InvertArc(r, 40, 200); },
    };
    std::mt19937 random(37);
    for (const ShapeCall shape : kShapes)
        for (int round = 0; round < 40; ++round) {
            const Rect r = RandomRect(random), ground = RandomRect(random);
            TestPort port;
            PaintOval(&ground);
            TestPort before;
            PaintOval(&ground);
            SetPort(port.port);
            shape(&r);
            shape(&r);
            CHECK(Differences(port, [&](int h, int v) { return before.At(h, v); }) == 0);
        }
}

TEST_CASE("Frame: a shape is its frame and what the frame leaves inside, each pixel once")
{
    static const struct {
        ShapeCall frame, invert;
    } kShapes[] = {
        { FrameRect, InvertRect },
        { FrameOval, InvertOval },
        { [](const Rect* r) { FrameRoundRect(r, 12, 10); },
          [](const Rect* r) { InvertRoundRect(r, 12, 10); } },
    };
    const Rect r = MakeRect(1, 2, 38, 27);
    for (const auto& shape : kShapes) {
        TestPort whole;
        shape.invert(&r);
        TestPort parts;
        PenSize(3, 2);
        PenMode(patXor);
        shape.frame(&r);
        const Rect inner = MakeRect(4, 4, 35, 25);
        if (shape.frame == FrameRect || shape.frame == FrameOval)
            shape.invert(&inner);
        else
            InvertRoundRect(&inner, 12 - 2 * 3, 10 - 2 * 2);
        CHECK(Differences(parts, [&](int h, int v) { return whole.At(h, v); }) == 0);
    }
}

TEST_CASE("Shapes: rectangles without extent, inside out or at the ends of the coordinates do no harm")
{
    static const short kEnds[] = { -32768, -32767, -1, 0, 1, 32766, 32767 };
    TestPort port;
    for (const short left : kEnds)
        for (const short top : kEnds)
            for (const short right : kEnds)
                for (const short bottom : kEnds) {
                    const Rect r = { top, left, bottom, right };
                    PenSize(32767, 32767);
                    FrameOval(&r);
                    PenNormal();
                    FrameRect(&r);
                    PaintArc(&r, left, top);
                    FrameRoundRect(&r, right, bottom);
                    FrameArc(&r, top, right);
                }
    PenSize(32767, 32767);
    MoveTo(-32768, -32768);
    LineTo(32767, 32767);
    Line(32767, 32767);
    CHECK(port.At(0, 0) == 0);
}

TEST_CASE("PaintPoly: thousands of edges as high as the coordinates cost only what the port shows")
{
    TestPort port;
    PolyHandle polygon = OpenPoly();
    MoveTo(-32768, -32768);
    for (int i = 1; i < 8000; ++i)
        LineTo((short)(-32768 + 8 * i), i % 2 ? 32767 : -32768);
    ClosePoly();
    PaintPoly(polygon);
    KillPoly(polygon);
    CHECK(CountBlack(port) > 0);
}

TEST_CASE("CloseRgn: an outline of millions of rectangles is refused")
{
    TestPort port;
    RgnHandle region = NewRgn();
    SetRectRgn(region, 0, 0, 5, 5);
    OpenRgn();
    MoveTo(-32768, -32768);
    for (int i = 1; i < 8000; ++i)
        LineTo((short)(-32768 + 8 * i), i % 2 ? 32767 : -32768);
    LineTo(-32768, -32768);
    CloseRgn(region);
    CHECK(QDError() == rgnOverflowErr);
    CHECK(EmptyRgn(region));
    DisposeRgn(region);
}

TEST_CASE("OpenRgn: shown again, the pen draws what it frames as well")
{
    TestPort port;
    RgnHandle region = NewRgn();
    const Rect r = MakeRect(5, 5, 20, 15);
    OpenRgn();
    ShowPen();
    FrameRect(&r);
    HidePen();
    CloseRgn(region);
    CHECK(port.At(5, 5) == 0);
    CHECK(port.At(6, 6) != 0);
    CHECK(PtInRgn({ 10, 10 }, region));
    CHECK(GetPortPenVisibility(port.port) == 0);
    DisposeRgn(region);
}

TEST_CASE("OpenRgn: polygons, regions and pen movements make outlines, arcs and what is not framed do not")
{
    TestPort port;
    PolyHandle polygon = OpenPoly();
    MoveTo(2, 2);
    LineTo(12, 2);
    LineTo(12, 12);
    LineTo(2, 12);
    LineTo(2, 2);
    ClosePoly();
    RgnHandle piece = NewRgn(), region = NewRgn();
    SetRectRgn(piece, 20, 2, 30, 12);
    const Rect other = MakeRect(2, 20, 30, 28);
    OpenRgn();
    FramePoly(polygon);
    FrameRgn(piece);
    FrameArc(&other, 0, 360);
    PaintRect(&other);
    InvertOval(&other);
    MoveTo(32, 20);
    Line(4, 0);
    Line(0, 4);
    Move(0, 0); // no gap
    Line(-4, 0);
    Line(0, -4);
    CloseRgn(region);
    SetRectRgn(piece, 20, 2, 30, 12);
    int wrong = 0;
    for (short v = 0; v < 30; ++v)
        for (short h = 0; h < 40; ++h)
            wrong += PtInRgn({ v, h }, region) !=
                     ((v >= 2 && v < 12 && ((h >= 2 && h < 12) || (h >= 20 && h < 30))) ||
                      (v >= 20 && v < 24 && h >= 32 && h < 36));
    CHECK(wrong == 0);
    CHECK(CountBlack(port) == 0);
    KillPoly(polygon);
    DisposeRgn(piece);
    DisposeRgn(region);
}

TEST_CASE("FramePoly: draws the lines it was made of and does not close them")
{
    TestPort framed;
    PolyHandle polygon = OpenPoly();
    MoveTo(5, 5);
    LineTo(30, 5);
    LineTo(30, 20);
    ClosePoly();
    FramePoly(polygon);
    KillPoly(polygon);
    TestPort lines;
    MoveTo(5, 5);
    LineTo(30, 5);
    LineTo(30, 20);
    CHECK(Differences(framed, [&](int h, int v) { return lines.At(h, v); }) == 0);
    CHECK(framed.At(17, 12) != 0);
}

TEST_CASE("SlopeFromAngle, AngleFromSlope: slopes are columns for each row down, angles 1 to 180")
{
    CHECK(SlopeFromAngle(0) == 0);
    CHECK(SlopeFromAngle(45) == -0x10000);
    CHECK(SlopeFromAngle(135) == 0x10000);
    CHECK(SlopeFromAngle(180) == 0);
    CHECK(SlopeFromAngle(225) == -0x10000);
    CHECK(SlopeFromAngle(-45) == 0x10000);
    CHECK(AngleFromSlope(0) == 180);
    CHECK(AngleFromSlope(-0x10000) == 45);
    CHECK(AngleFromSlope(0x10000) == 135);
    CHECK(AngleFromSlope(INT32_MIN) == 90);
    CHECK(AngleFromSlope(INT32_MAX) == 90);
    for (short angle = 1; angle <= 180; ++angle)
        CHECK(AngleFromSlope(SlopeFromAngle(angle)) == angle);
}

TEST_CASE("PtToAngle: corners are at odd multiples of 45 whatever the shape of the rectangle")
{
    const Rect r = MakeRect(10, 10, 210, 50);
    static const struct {
        Point point;
        short angle;
    } kCases[] = { { { 10, 210 }, 45 }, { { 50, 210 }, 135 }, { { 50, 10 }, 225 }, { { 10, 10 }, 315 },
                   { { 10, 110 }, 0 },  { { 30, 210 }, 90 },  { { 50, 110 }, 180 } };
    for (const auto& each : kCases) {
        short angle = -1;
        PtToAngle(&r, each.point, &angle);
        CHECK(angle == each.angle);
    }
}

TEST_CASE("ScalePt, MapPt: scale as the rectangles do; results stay within the coordinates")
{
    const Rect from = MakeRect(0, 0, 10, 10), to = MakeRect(0, 0, 20, 30), none = MakeRect(5, 5, 5, 5);
    Point point = { 2, 3 };
    ScalePt(&point, &from, &to);
    CHECK(point.h == 6);
    CHECK(point.v == 6);
    point = { 0, 1 };
    ScalePt(&point, &to, &from); // 1 of 20 to 10, and nothing
    CHECK(point.h == 1);
    CHECK(point.v == 0);
    point = { 1, 4 };
    ScalePt(&point, &to, &from); // 1 of 30 to 10 would be 0
    CHECK(point.h == 2);
    CHECK(point.v == 1);
    const Rect huge = MakeRect(-32768, -32768, 32767, 32767);
    point = { 32767, -32768 };
    MapPt(&point, &from, &huge);
    CHECK(point.v == 32767);
    CHECK(point.h == -32768);
    ScalePt(&point, &none, &to);
    CHECK(point.h == 0);
    MapPt(nullptr, &from, &to);
    ScalePt(&point, nullptr, &to);
}
