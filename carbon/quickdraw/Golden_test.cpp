// What shapes, patterns and modes look like at depths 1, 8, 16 and 32.
#include "PixelPatterns.h"
#include "TestWorld.h"

#include <Carbon/MacMemory.h>

#include <golden/Golden.h>

#include <string>

using namespace lampblack;
using namespace lampblack::quickdraw;

namespace {

constexpr int kDepths[] = { 1, 8, 16, 32 };

Rect Cell(int column, int row, int width, int height, int inset = 2)
{
    return { (short)(row * height + inset), (short)(column * width + inset),
             (short)((row + 1) * height - inset), (short)((column + 1) * width - inset) };
}

void UseFore(UInt16 red, UInt16 green, UInt16 blue)
{
    const RGBColor color = { red, green, blue };
    RGBForeColor(&color);
}

void UseBack(UInt16 red, UInt16 green, UInt16 blue)
{
    const RGBColor color = { red, green, blue };
    RGBBackColor(&color);
}

void EraseAll(int width, int height)
{
    const Rect all = { 0, 0, (short)height, (short)width };
    UseBack(0xFFFF, 0xFFFF, 0xFFFF);
    EraseRect(&all);
}

void DrawShape(int kind, const Rect& r)
{
    switch (kind) {
    case 0: PaintRect(&r); return FrameRect(&r);
    case 1: return PaintOval(&r);
    case 2: return FrameOval(&r);
    case 3: return PaintRoundRect(&r, 12, 12);
    case 4: return PaintArc(&r, 30, 240);
    case 5: return InvertRoundRect(&r, 20, 10);
    }
    MoveTo(r.left, r.top);
    LineTo((short)(r.right - 3), (short)(r.bottom - 3));
    LineTo((short)(r.right - 3), r.top);
}

// Stripes of many colours, and over each column the next arithmetic mode.
void DrawModes(int width, int height)
{
    static constexpr short kModes[] = { patCopy,     blend, addPin,  addOver, subPin,
                                        transparent, adMax, subOver, adMin,   hilite };
    for (int i = 0; i < 8; ++i) {
        const Rect stripe = Cell(0, i, width, height / 8, 0);
        UseFore((UInt16)(0xFFFF * (i & 1)), (UInt16)(0x9999 * (i >> 1 & 1)), (UInt16)(0xCCCC * (i >> 2)));
        PaintRect(&stripe);
    }
    const RGBColor half = { 0x8000, 0x8000, 0x8000 };
    OpColor(&half);
    UseBack(0, 0, 0);
    UseFore(0x6666, 0x3333, 0xCCCC);
    Pattern gray;
    PenPat(GetQDGlobalsDarkGray(&gray));
    for (int i = 0; i < 10; ++i) {
        const Rect column = Cell(i, 0, width / 10, height);
        PenMode(kModes[i]);
        PaintRect(&column);
    }
    PenNormal();
}

} // namespace

TEST_CASE("Golden: shapes in colours at every depth")
{
    for (const int depth : kDepths) {
        const TestWorld world(depth, 168, 56);
        EraseAll(168, 56);
        PenSize(3, 3);
        for (int i = 0; i < 7; ++i)
            for (int row = 0; row < 2; ++row) {
                UseFore((UInt16)(i * 0x2492), (UInt16)(row * 0x6000), (UInt16)(0xFFFF - i * 0x2000));
                DrawShape(i, Cell(i, row, 24, 28));
            }
        CHECK(golden::MatchesGolden(world.world, "quickdraw/shapes." + std::to_string(depth)));
    }
}

TEST_CASE("Golden: patterns of bits, of pixels and of one colour at every depth")
{
    const PixPatHandle mixed = NewPixPat(), pixels = NewPixPat();
    const RGBColor color = { 0x6000, 0xA000, 0xE000 };
    MakeRGBPat(mixed, &color);
    PixMap& map = **(**pixels).patMap; // a ramp from red to blue, which four pixels share
    map.pixelSize = 32;
    map.rowBytes = (short)(0x8000 | 32);
    SetHandleSize((**pixels).patData, 8 * 32);
    for (int i = 0; i < 64; ++i)
        reinterpret_cast<uint32_t*>(*(**pixels).patData)[i] =
            (uint32_t)(255 - i % 8 * 36) << 16 | (uint32_t)(i / 8 * 36) << 8 | (uint32_t)(i % 8 * 36);
    for (const int depth : kDepths) {
        const TestWorld world(depth, 144, 48);
        EraseAll(144, 48);
        UseFore(0xCCCC, 0, 0x3333);
        UseBack(0xFFFF, 0xFFFF, 0xCCCC);
        Pattern gray, light;
        GetQDGlobalsGray(&gray);
        GetQDGlobalsLightGray(&light);
        const Rect cells[] = { Cell(0, 0, 36, 48), Cell(1, 0, 36, 48), Cell(2, 0, 36, 48),
                               Cell(3, 0, 36, 48) };
        FillOval(&cells[0], &gray);
        FillRoundRect(&cells[1], 12, 12, &light);
        FillCOval(&cells[2], pixels);
        FillCRoundRect(&cells[3], 16, 16, mixed);
        CHECK(golden::MatchesGolden(world.world, "quickdraw/patterns." + std::to_string(depth)));
    }
    DisposePixPat(mixed);
    DisposePixPat(pixels);
}

TEST_CASE("Golden: arithmetic modes and highlighting at every depth")
{
    for (const int depth : kDepths) {
        const TestWorld world(depth, 160, 48);
        DrawModes(160, 48);
        CHECK(golden::MatchesGolden(world.world, "quickdraw/modes." + std::to_string(depth)));
    }
}
