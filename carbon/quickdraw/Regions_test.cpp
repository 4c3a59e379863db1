// Regions against sets of pixels.
#include "TestPort.h"

#include <Carbon/MacErrors.h>

#include <algorithm>
#include <bitset>
#include <ctime>
#include <ostream>

using namespace lampblack::quickdraw;

static constexpr int kSide = 24;
using Pixels = std::bitset<kSide * kSide>;

struct StRegion {
    StRegion() : ref(NewRgn()) {}
    ~StRegion() { DisposeRgn(ref); }
    RgnHandle ref;
};

static Pixels PixelsOf(RgnHandle inRegion)
{
    Pixels pixels;
    for (short v = 0; v < kSide; ++v)
        for (short h = 0; h < kSide; ++h)
            pixels[(size_t)(v * kSide + h)] = PtInRgn({ v, h }, inRegion);
    return pixels;
}

static void MakeRandom(RgnHandle outRegion, std::mt19937& ioRandom)
{
    StRegion piece;
    SetEmptyRgn(outRegion);
    for (int i = 0; i < 5; ++i) {
        const auto number = [&] { return (short)(ioRandom() % kSide); };
        SetRectRgn(piece.ref, number(), number(), number(), number());
        if (i % 2)
            XorRgn(outRegion, piece.ref, outRegion);
        else
            UnionRgn(outRegion, piece.ref, outRegion);
    }
}

TEST_CASE("UnionRgn, SectRgn, DiffRgn, XorRgn: are what they are for sets of pixels")
{
    std::mt19937 random(3);
    for (int round = 0; round < 50; ++round) {
        StRegion a, b, result;
        MakeRandom(a.ref, random);
        MakeRandom(b.ref, random);
        const Pixels pa = PixelsOf(a.ref), pb = PixelsOf(b.ref);
        UnionRgn(a.ref, b.ref, result.ref);
        CHECK(PixelsOf(result.ref) == (pa | pb));
        SectRgn(a.ref, b.ref, result.ref);
        CHECK(PixelsOf(result.ref) == (pa & pb));
        DiffRgn(a.ref, b.ref, result.ref);
        CHECK(PixelsOf(result.ref) == (pa & ~pb));
        XorRgn(a.ref, b.ref, b.ref);
        CHECK(PixelsOf(b.ref) == (pa ^ pb));
    }
}

TEST_CASE("InsetRgn: keeps the pixels that stay inside when moved by the inset, and grows the other way")
{
    std::mt19937 random(5);
    for (int round = 0; round < 30; ++round) {
        StRegion region;
        MakeRandom(region.ref, random);
        const Pixels before = PixelsOf(region.ref);
        const auto at = [&](int h, int v) {
            return h >= 0 && v >= 0 && h < kSide && v < kSide && before[(size_t)(v * kSide + h)];
        };
        const int dh = (int)(random() % 3), dv = (int)(random() % 3), sign = round % 2 ? 1 : -1;
        InsetRgn(region.ref, (short)(sign * dh), (short)(sign * dv));
        Pixels expected;
        for (int v = 0; v < kSide; ++v)
            for (int h = 0; h < kSide; ++h) {
                bool all = true, any = false;
                for (int y = -dv; y <= dv; ++y)
                    for (int x = -dh; x <= dh; ++x) {
                        all = all && at(h + x, v + y);
                        any = any || at(h + x, v + y);
                    }
                expected[(size_t)(v * kSide + h)] = sign > 0 ? all : any;
            }
        CHECK(PixelsOf(region.ref) == expected);
    }
}

TEST_CASE("InsetRgn: a region of as many rows as there are is inset in bounded time")
{
    TestPort port;
    const StRegion chevron;
    OpenRgn();
    MoveTo(0, -32000);
    LineTo(20000, 0);
    LineTo(0, 32000);
    LineTo(10000, 0);
    LineTo(0, -32000);
    CloseRgn(chevron.ref);
    const std::clock_t start = std::clock();
    InsetRgn(chevron.ref, 0, 32767);
    CHECK(EmptyRgn(chevron.ref));
    CHECK((double)(std::clock() - start) / CLOCKS_PER_SEC < 2); // as many steps as rows take twice as long
}

TEST_CASE("RectInRgn: only a shared pixel counts, not the bounds")
{
    StRegion region, hole;
    SetRectRgn(region.ref, 0, 0, 20, 20);
    SetRectRgn(hole.ref, 5, 5, 15, 15);
    DiffRgn(region.ref, hole.ref, region.ref);
    const Rect inHole = MakeRect(6, 6, 14, 14), touching = MakeRect(6, 6, 16, 14),
               empty = MakeRect(1, 1, 1, 5);
    CHECK(!RectInRgn(&inHole, region.ref));
    CHECK(RectInRgn(&touching, region.ref));
    CHECK(!RectInRgn(&empty, region.ref));
    CHECK(!IsRegionRectangular(region.ref));
    Rect bounds;
    GetRegionBounds(region.ref, &bounds);
    CHECK(bounds.right == 20);
}

TEST_CASE("SetRectRgn: a rectangle inside out gives the empty region with bounds of zeros")
{
    StRegion region;
    SetRectRgn(region.ref, 10, 10, 5, 20);
    CHECK(EmptyRgn(region.ref));
    Rect bounds = MakeRect(1, 2, 3, 4);
    GetRegionBounds(region.ref, &bounds);
    CHECK(bounds.right == 0);
}

static OSStatus Collect(UInt16 message, RgnHandle, const Rect* rect, void* data)
{
    if (message == kQDRegionToRectsMsgParse)
        static_cast<std::vector<Rect>*>(data)->push_back(*rect);
    return noErr;
}

static OSStatus StopAtOnce(UInt16 message, RgnHandle, const Rect*, void* data)
{
    ++*static_cast<int*>(data);
    return message == kQDRegionToRectsMsgParse ? -77 : 0;
}

TEST_CASE("QDRegionToRects: rectangles cover the region once, in the wished order; an error ends the walk")
{
    StRegion region, piece;
    for (short i = 0; i < 3; ++i) {
        SetRectRgn(piece.ref, (short)(i * 8), (short)(i * 4), (short)(i * 8 + 5), (short)(i * 4 + 8));
        UnionRgn(region.ref, piece.ref, region.ref);
    }
    std::vector<Rect> down, up;
    CHECK(QDRegionToRects(region.ref, kQDParseRegionFromTopLeft, Collect, &down) == noErr);
    CHECK(QDRegionToRects(region.ref, kQDParseRegionFromBottomRight, Collect, &up) == noErr);
    CHECK(down.size() == up.size());
    CHECK(down.front().top == 0);
    CHECK(up.front().bottom == 16);
    int pixels = 0;
    for (const Rect& r : down)
        pixels += (r.right - r.left) * (r.bottom - r.top);
    CHECK(pixels == 3 * 40);
    int calls = 0;
    CHECK(QDRegionToRects(region.ref, kQDParseRegionFromTopLeft, StopAtOnce, &calls) == -77);
    CHECK(calls == 3); // the beginning, one rectangle, the end
    CHECK(QDRegionToRects(nullptr, kQDParseRegionFromTopLeft, Collect, &down) == paramErr);
}

TEST_CASE("FrameRgn: the region without its inside")
{
    TestPort port;
    StRegion region;
    SetRectRgn(region.ref, 5, 5, 20, 15);
    FrameRgn(region.ref);
    const Rect outer = MakeRect(5, 5, 20, 15), inner = MakeRect(6, 6, 19, 14);
    CHECK(BlackDifferences(
              port, [&](int h, int v) { return IsInside(outer, h, v) && !IsInside(inner, h, v); }) == 0);
}

TEST_CASE("Regions: null, disposed and foreign references do nothing")
{
    StRegion region;
    SetRectRgn(region.ref, 0, 0, 5, 5);
    RgnHandle gone = NewRgn();
    DisposeRgn(gone);
    DisposeRgn(gone);
    int something = 0;
    for (RgnHandle bad : { (RgnHandle) nullptr, gone, reinterpret_cast<RgnHandle>(&something) }) {
        CHECK(!IsValidRgnHandle(bad));
        CHECK(EmptyRgn(bad));
        UnionRgn(bad, region.ref, region.ref);
        CopyRgn(bad, region.ref);
        CopyRgn(region.ref, bad);
        OffsetRgn(bad, 1, 1);
        InsetRgn(bad, 1, 1);
        PaintRgn(bad);
        CHECK(!PtInRgn({ 0, 0 }, bad));
    }
    CHECK(PtInRgn({ 0, 0 }, region.ref));
}

TEST_CASE("OffsetRgn: past the ends of the coordinates and back")
{
    StRegion region;
    SetRectRgn(region.ref, 0, 0, 5, 5);
    OffsetRgn(region.ref, 32767, 32767);
    Rect bounds;
    GetRegionBounds(region.ref, &bounds);
    CHECK(bounds.right == 32767);
    OffsetRgn(region.ref, -32767, -32767);
    GetRegionBounds(region.ref, &bounds);
    CHECK(bounds.right == 5);
}

TEST_CASE("SectRect, UnionRect, InsetRect: empty rectangles")
{
    Rect a = MakeRect(0, 0, 10, 10), b = MakeRect(10, 0, 20, 10), empty = MakeRect(5, 5, 5, 5), result;
    CHECK(!SectRect(&a, &b, &result));
    CHECK(result.right == 0);
    UnionRect(&a, &empty, &result);
    CHECK(EqualRect(&result, &a));
    InsetRect(&a, 5, 1);
    CHECK(a.right == 0);
    CHECK(DeltaPoint({ 3, 4 }, { 1, 9 }) == 0x0002FFFB);
}

TEST_CASE("MapRect: corners go where the rectangle's corners go")
{
    const Rect from = MakeRect(0, 0, 10, 20), to = MakeRect(100, 100, 130, 140);
    Rect r = MakeRect(5, 10, 10, 20);
    MapRect(&r, &from, &to);
    CHECK(r.left == 115);
    CHECK(r.top == 120);
    CHECK(r.right == 130);
    CHECK(r.bottom == 140);
    const Rect none = MakeRect(0, 0, 0, 0);
    MapRect(&r, &none, &to);
}

TEST_CASE("EqualRgn: nothing is nothing, wherever it was moved to")
{
    StRegion a, b;
    SetRectRgn(a.ref, 5, 5, 5, 20);
    OffsetRgn(a.ref, 30, -7);
    CHECK(EqualRgn(a.ref, b.ref));
    SetRectRgn(b.ref, 0, 0, 1, 1);
    CHECK(!EqualRgn(a.ref, b.ref));
}

TEST_CASE("OffsetRgn: as far as one likes, again and again, without wrapping around")
{
    StRegion region;
    SetRectRgn(region.ref, -5, -5, 5, 5);
    for (int i = 0; i < 70000; ++i)
        OffsetRgn(region.ref, 32767, -32768);
    CHECK(!PtInRgn({ 0, 0 }, region.ref));
    CHECK(EmptyRgn(region.ref));
}

TEST_CASE("UnionRgn, DiffRgn, CopyRgn: the result may be one of the operands, or both")
{
    StRegion a, b;
    SetRectRgn(a.ref, 0, 0, 10, 10);
    SetRectRgn(b.ref, 5, 5, 15, 15);
    UnionRgn(a.ref, b.ref, a.ref);
    CHECK(PixelsOf(a.ref).count() == 175);
    DiffRgn(a.ref, b.ref, b.ref);
    CHECK(PixelsOf(b.ref).count() == 75);
    CopyRgn(a.ref, a.ref);
    SectRgn(a.ref, a.ref, a.ref);
    CHECK(PixelsOf(a.ref).count() == 175);
    XorRgn(a.ref, a.ref, a.ref);
    CHECK(EmptyRgn(a.ref));
}

TEST_CASE("MapRgn: rectangles go where MapRect puts them, without gaps")
{
    StRegion region, piece, expected;
    SetRectRgn(region.ref, 0, 0, 6, 3);
    SetRectRgn(piece.ref, 0, 3, 3, 6);
    UnionRgn(region.ref, piece.ref, region.ref);
    const Rect from = MakeRect(0, 0, 6, 6), to = MakeRect(2, 2, 22, 20);
    MapRgn(region.ref, &from, &to);
    SetRectRgn(expected.ref, 2, 2, 22, 11);
    SetRectRgn(piece.ref, 2, 11, 12, 20);
    UnionRgn(expected.ref, piece.ref, expected.ref);
    CHECK(EqualRgn(region.ref, expected.ref));
}
