// Small pictures of what every mode, dithering, scaling and masks look like at depths 1, 8, 16 and 32.
#include "TestPort.h"

#include <golden/Golden.h>

using namespace lampblack;
using namespace lampblack::quickdraw;

namespace {

constexpr int kCell = 26, kColumns = 7, kRows = 4;

class GoldenWorld {
public:
    GoldenWorld(int width, int height, int depth)
    {
        const Rect bounds = MakeRect(0, 0, width, height);
        REQUIRE(NewGWorld(&fWorld, (short)depth, &bounds, nullptr, nullptr, 0) == noErr);
        SetGWorld(fWorld, nullptr);
        EraseRect(&bounds);
    }
    ~GoldenWorld() { DisposeGWorld(fWorld); }
    GoldenWorld(const GoldenWorld&) = delete;
    GoldenWorld& operator=(const GoldenWorld&) = delete;

    CGrafPtr Port() const { return fWorld; }
    const BitMap* Bits() const { return GetPortBitMapForCopyBits(fWorld); }

private:
    GWorldPtr fWorld = nullptr;
};

void Color(int red, int green, int blue)
{
    const RGBColor color = { (UInt16)(red * 257), (UInt16)(green * 257), (UInt16)(blue * 257) };
    RGBForeColor(&color);
}

// A disc in colours that run into each other, on white.
void DrawSource()
{
    const Rect disc = MakeRect(2, 2, 22, 22);
    for (int h = 2; h < 22; ++h)
        for (int v = 2; v < 22; ++v) {
            Color(h * 11, v * 11, 255 - h * 11);
            const Rect dot = MakeRect(h, v, h + 1, v + 1);
            RgnHandle whole = NewRgn(), piece = NewRgn();
            OpenRgn();
            FrameOval(&disc);
            CloseRgn(whole);
            RectRgn(piece, &dot);
            SectRgn(whole, piece, piece);
            PaintRgn(piece);
            DisposeRgn(whole);
            DisposeRgn(piece);
        }
    Color(0, 0, 0);
}

// Stripes of white, black, grey, red, green and blue.
void DrawStripes(const Rect& cell)
{
    static constexpr int kStripes[6][3] = { { 255, 255, 255 }, { 0, 0, 0 },   { 128, 128, 128 },
                                            { 255, 0, 0 },     { 0, 200, 0 }, { 0, 0, 255 } };
    for (int i = 0; i < 6; ++i) {
        const Rect stripe = MakeRect(cell.left, cell.top + i * 4, cell.left + 24, cell.top + i * 4 + 4);
        Color(kStripes[i][0], kStripes[i][1], kStripes[i][2]);
        PaintRect(&stripe);
    }
    Color(0, 0, 0);
}

Rect CellAt(int index)
{
    const int h = index % kColumns * kCell + 1, v = index / kColumns * kCell + 1;
    return MakeRect(h, v, h + 24, v + 24);
}

void DrawCopies(const GoldenWorld& to, const GoldenWorld& from, const GoldenWorld& mask)
{
    static constexpr short kModes[] = { srcCopy,     srcOr,     srcXor,  srcBic, notSrcCopy, notSrcOr,
                                        notSrcXor,   notSrcBic, blend,   addPin, addOver,    subPin,
                                        transparent, addMax,    subOver, adMin,  hilite,     ditherCopy };
    const Rect all = MakeRect(0, 0, 24, 24), half = MakeRect(0, 0, 12, 12);
    SetGWorld(to.Port(), nullptr);
    const RGBColor grey = { 0x8000, 0x8000, 0x8000 }, light = { 0xFFFF, 0xFFFF, 0 };
    OpColor(&grey);
    HiliteColor(&light);
    int index = 0;
    for (const short mode : kModes) {
        const Rect cell = CellAt(index++);
        DrawStripes(cell);
        CopyBits(from.Bits(), to.Bits(), &all, &cell, mode, nullptr);
    }
    Rect cell = CellAt(index++); // twice as large
    CopyBits(from.Bits(), to.Bits(), &half, &cell, srcCopy, nullptr);
    cell = CellAt(index++); // half as large, nearest and mean
    cell.right = (short)(cell.left + 12), cell.bottom = (short)(cell.top + 12);
    CopyBits(from.Bits(), to.Bits(), &all, &cell, srcCopy, nullptr);
    OffsetRect(&cell, 12, 12);
    CopyBits(from.Bits(), to.Bits(), &all, &cell, srcCopy + ditherCopy, nullptr);
    cell = CellAt(index++); // the mask's greys
    DrawStripes(cell);
    CopyMask(from.Bits(), mask.Bits(), to.Bits(), &all, &all, &cell);
    cell = CellAt(index++);
    DrawStripes(cell);
    CopyDeepMask(from.Bits(), mask.Bits(), to.Bits(), &all, &all, &cell, srcXor, nullptr);
    static UInt8 checks[] = { 0xF0, 0xF0, 0x0F, 0x0F };
    const BitMap bits = { reinterpret_cast<Ptr>(checks), 2, MakeRect(0, 0, 12, 2) };
    cell = CellAt(index++); // a mask of bits, scaled
    DrawStripes(cell);
    CopyMask(from.Bits(), &bits, to.Bits(), &all, &bits.bounds, &cell);
    for (const short mode :
         { short(srcCopy), short(srcOr), short(notSrcCopy), short(blend) }) { // a bit map in red and yellow
        cell = CellAt(index++);
        DrawStripes(cell);
        Color(255, 0, 0);
        RGBBackColor(&light);
        CopyBits(&bits, to.Bits(), &bits.bounds, &cell, mode, nullptr);
        const RGBColor white = { 0xFFFF, 0xFFFF, 0xFFFF };
        RGBBackColor(&white);
        Color(0, 0, 0);
    }
}

void DrawRamp(const GoldenWorld& mask)
{
    SetGWorld(mask.Port(), nullptr);
    for (int h = 0; h < 24; ++h) {
        Color(h * 11, h * 11, h * 11);
        const Rect column = MakeRect(h, 0, h + 1, 24);
        PaintRect(&column);
    }
    Color(0, 0, 0);
}

} // namespace

TEST_CASE("Golden: every mode of CopyBits, dithering, scaling and masks at depths 1, 8, 16 and 32")
{
    CGrafPtr oldPort;
    GDHandle oldDevice;
    GetGWorld(&oldPort, &oldDevice);
    for (const int depth : { 1, 8, 16, 32 }) {
        GoldenWorld from(24, 24, 32), mask(24, 24, 32), to(kColumns * kCell, kRows * kCell, depth);
        SetGWorld(from.Port(), nullptr);
        DrawSource();
        DrawRamp(mask);
        DrawCopies(to, from, mask);
        CHECK(golden::MatchesGolden(to.Port(), "quickdraw/copies." + std::to_string(depth)));
    }
    SetGWorld(oldPort, oldDevice);
}
