// What regions and polygons look like at depths 1, 8, 16 and 32: made of shapes, lines and bits, joined and cut,
// painted, framed, inverted, filled, erased, clipped to, copied through and scrolled.
#include "TestWorld.h"

#include <golden/Golden.h>

#include <string>

using namespace lampblack;
using namespace lampblack::quickdraw;

namespace {

constexpr short kCell = 28, kColumns = 6, kRows = 2;

struct Region {
    Region() : rgn(NewRgn()) {}
    ~Region() { DisposeRgn(rgn); }
    Region(const Region&) = delete;
    Region& operator=(const Region&) = delete;
    operator RgnHandle() const { return rgn; }
    const RgnHandle rgn;
};

void Fore(int red, int green, int blue)
{
    const RGBColor color = { (UInt16)(red * 257), (UInt16)(green * 257), (UInt16)(blue * 257) };
    RGBForeColor(&color);
}

Rect Cell(short inIndex, short inInset = 2)
{
    const auto left = (short)(inIndex % kColumns * kCell), top = (short)(inIndex / kColumns * kCell);
    return { (short)(top + inInset), (short)(left + inInset), (short)(top + kCell - inInset),
             (short)(left + kCell - inInset) };
}

void MakeOval(RgnHandle outRegion, const Rect& r)
{
    OpenRgn();
    FrameOval(&r);
    CloseRgn(outRegion);
}

void MakeBar(RgnHandle outRegion, const Rect& r)
{
    SetRectRgn(outRegion, (short)(r.left + 8), (short)(r.top - 1), (short)(r.left + 16),
               (short)(r.bottom + 1));
}

// A star of five points, whose middle is outside.
void DrawStar(const Rect& r)
{
    MoveTo((short)(r.left + 12), r.top);
    Line(7, 23);
    Line(-18, -14);
    Line(23, 0);
    Line(-19, 14);
    Line(7, -23);
}

void MakeStar(RgnHandle outRegion, const Rect& r)
{
    OpenRgn();
    DrawStar(r);
    CloseRgn(outRegion);
}

void Stripes(const Rect& r)
{
    static constexpr int kColours[][3] = { { 255, 0, 0 }, { 255, 204, 0 }, { 0, 153, 51 }, { 0, 102, 255 } };
    for (short i = 0; i * 3 < r.bottom - r.top; ++i) {
        const Rect stripe = { (short)(r.top + i * 3), r.left, (short)(r.top + i * 3 + 3), r.right };
        Fore(kColours[i % 4][0], kColours[i % 4][1], kColours[i % 4][2]);
        PaintRect(&stripe);
    }
    Fore(0, 0, 0);
}

void Joined(const Rect& r)
{
    const Region oval, bar;
    MakeOval(oval, r);
    MakeBar(bar, r);
    UnionRgn(oval, bar, oval);
    Fore(204, 0, 51);
    PaintRgn(oval);
}

void Framed(const Rect& r)
{
    const Region oval, bar;
    MakeOval(oval, r);
    MakeBar(bar, r);
    DiffRgn(oval, bar, oval);
    Fore(0, 0, 204);
    PenSize(2, 2);
    FrameRgn(oval);
    PenNormal();
}

void Inverted(const Rect& r)
{
    const Region oval, bar;
    Stripes(r);
    MakeOval(oval, r);
    MakeBar(bar, r);
    XorRgn(oval, bar, oval);
    InvertRgn(oval);
}

void Filled(const Rect& r)
{
    const Region star, oval;
    MakeStar(star, r);
    MakeOval(oval, r);
    SectRgn(star, oval, star);
    Pattern gray;
    Fore(102, 0, 153);
    FillRgn(star, GetQDGlobalsGray(&gray));
}

void Erased(const Rect& r)
{
    const Region ring, hole;
    Fore(51, 102, 153);
    PaintRect(&r);
    MakeOval(ring, r);
    CopyRgn(ring, hole);
    InsetRgn(hole, 4, 4);
    DiffRgn(ring, hole, ring);
    EraseRgn(ring);
}

void Clipped(const Rect& r)
{
    const Region star, before;
    GetClip(before);
    MakeStar(star, r);
    SetClip(star);
    Stripes(r);
    SetClip(before);
}

void Copied(const Rect& r, const BitMap* inBits)
{
    const Region star;
    Stripes(Cell(0));
    MakeStar(star, r);
    const Rect from = Cell(0);
    CopyBits(inBits, inBits, &from, &r, srcCopy, star);
}

void PaintedStar(const Rect& r)
{
    Fore(255, 153, 0);
    const PolyHandle star = OpenPoly();
    DrawStar(r);
    ClosePoly();
    PaintPoly(star);
    Fore(0, 0, 0);
    FramePoly(star);
    KillPoly(star);
}

void Mapped(const Rect& r)
{
    const Region star;
    MakeStar(star, r);
    const Rect half = { r.top, r.left, (short)(r.top + 24), (short)(r.left + 12) };
    MapRgn(star, &r, &half);
    Fore(0, 102, 51);
    PaintRgn(star);
    OffsetRgn(star, 12, 0);
    FrameRgn(star);
}

void OfBits(const Rect& r)
{
    static UInt8 bits[] = { 0xFF, 0x81, 0x01, 0x81, 0x7D, 0x81, 0x45, 0x81,
                            0x45, 0x81, 0x7D, 0x81, 0x01, 0x81, 0xFF, 0x81 };
    const BitMap map = { reinterpret_cast<Ptr>(bits), 2, { 0, 0, 8, 16 } };
    const Region region;
    BitMapToRegion(region, &map);
    OffsetRgn(region, (short)(r.left + 4), (short)(r.top + 2));
    Fore(153, 0, 0);
    PaintRgn(region);
    OffsetRgn(region, 0, 11);
    InsetRgn(region, -1, -1);
    FrameRgn(region);
}

void Scrolled(const Rect& r)
{
    Stripes(r);
    const Region update;
    ScrollRect(&r, 5, -4, update);
    Fore(153, 153, 153);
    PaintRgn(update);
}

void Shifted(const Rect& r)
{
    const Region star;
    MakeStar(star, r);
    Fore(0, 0, 0);
    PenMode(patXor);
    PaintRgn(star);
    OffsetRgn(star, 3, 2);
    PaintRgn(star);
    PenNormal();
}

} // namespace

TEST_CASE("Golden: regions and polygons at every depth")
{
    for (const int depth : { 1, 8, 16, 32 }) {
        const TestWorld world(depth, kColumns * kCell, kRows * kCell);
        const Rect all = { 0, 0, kRows * kCell, kColumns * kCell };
        EraseRect(&all);
        Copied(Cell(6), GetPortBitMapForCopyBits(world.world));
        const Rect first = Cell(0);
        EraseRect(&first);
        void (*const kCells[])(const Rect&) = { Joined,      Framed, Inverted, Filled,   Erased, Clipped,
                                                PaintedStar, Mapped, OfBits,   Scrolled, Shifted };
        for (short i = 0; i < 11; ++i)
            kCells[i](Cell((short)(i < 6 ? i : i + 1)));
        CHECK(golden::MatchesGolden(world.world, "quickdraw/regions." + std::to_string(depth)));
    }
}
