// Pens at every depth and in every mode, against a plain reference that works pixel by pixel.
#include "TestWorld.h"

#include <algorithm>
#include <array>

using namespace lampblack::quickdraw;

namespace {

constexpr int kDepths[] = { 1, 2, 4, 8, 16, 32 };
constexpr short kArithmetic[] = { blend, addPin, addOver, subPin, transparent, adMax, subOver, adMin };

struct PenCase {
    int depth;
    short mode;
    Pattern pattern;
    uint32_t fore, back, op, highlight; // colours
    Point origin;
};

// One channel, as the published formulas say.
int Channel(short mode, int s, int d, int op)
{
    switch (mode) {
    case blend: return (s * op + d * (255 - op) + 127) / 255;
    case addPin: return std::min(s + d, op);
    case addOver: return (s + d) & 0xFF;
    case subPin: return std::max(d - s, op);
    case adMax: return std::max(s, d);
    case subOver: return (d - s) & 0xFF;
    case adMin: return std::min(s, d);
    }
    return s;
}

uint32_t Arithmetic(const PenCase& test, uint32_t source, uint32_t old, uint32_t back)
{
    if (test.mode == transparent)
        return source == back ? old : source;
    uint32_t result = 0;
    for (int shift = 0; shift < 24; shift += 8)
        result |= (uint32_t)Channel(test.mode, (int)(source >> shift & 0xFF), (int)(old >> shift & 0xFF),
                                    (int)(test.op >> shift & 0xFF))
                  << shift;
    return result;
}

uint32_t Boolean(short mode, bool set, uint32_t old, uint32_t fore, uint32_t back, uint32_t bits)
{
    if (mode & 4)
        set = !set;
    switch (mode & 3) {
    case 0: return set ? fore : back;
    case 1: return set ? fore : old;
    case 2: return set ? old ^ bits : old;
    }
    return set ? back : old;
}

// What the pixel at (h, v) becomes.
uint32_t Expected(const TestWorld& world, const PenCase& test, int h, int v, uint32_t old)
{
    const bool set = test.pattern.pat[(v - test.origin.v) & 7] >> (7 - ((h - test.origin.h) & 7)) & 1;
    const uint32_t fore = PixelIn(world, test.fore), back = PixelIn(world, test.back);
    short mode = test.mode;
    if (world.Depth() == 1 && mode >= blend) {
        static const std::array<short, 8> kBoolean = { srcCopy, srcBic, srcXor, srcOr,
                                                       srcOr,   srcBic, srcXor, srcOr };
        mode = mode == hilite ? (short)srcXor : kBoolean[(size_t)(mode - blend)];
    }
    if (mode == hilite) {
        const uint32_t highlight = PixelIn(world, test.highlight);
        return !set ? old : old == back ? highlight : old == highlight ? back : old;
    }
    if (mode <= notPatBic)
        return Boolean(mode, set, old, fore, back, BitsOfDepth(world.Depth()));
    const uint32_t color = ColorIn(world, old);
    const uint32_t result = Arithmetic(test, ColorIn(world, set ? fore : back), color, ColorIn(world, back));
    return result == color ? old : PixelIn(world, result);
}

PenCase RandomCase(std::mt19937& random, int depth, short mode)
{
    PenCase test = { depth,
                     mode,
                     {},
                     (uint32_t)random() & 0xFFFFFF,
                     (uint32_t)random() & 0xFFFFFF,
                     (uint32_t)random() & 0xFFFFFF,
                     (uint32_t)random() & 0xFFFFFF,
                     { (short)(random() % 20 - 10), (short)(random() % 20 - 10) } };
    const int kind = (int)(random() % 4);
    for (UInt8& row : test.pattern.pat)
        row = kind == 0 ? 0 : kind == 1 ? 0xFF : (UInt8)random();
    return test;
}

void SetPenOf(const PenCase& test)
{
    const RGBColor fore = WideColor(test.fore), back = WideColor(test.back), op = WideColor(test.op),
                   highlight = WideColor(test.highlight);
    RGBForeColor(&fore);
    RGBBackColor(&back);
    OpColor(&op);
    HiliteColor(&highlight);
    PenPat(&test.pattern);
    PenMode(test.mode);
    QDSetPatternOrigin(test.origin);
}

// Draws a random rectangle and answers how many pixels are not what they should be.
int Errors(std::mt19937& random, int depth, short mode)
{
    const Rect bounds = { -3, -5, 9, 46 };
    const CTabHandle table = depth <= 8 && random() % 2 ? RandomTable(random, depth) : nullptr;
    const TestWorld world(depth, bounds, table);
    DisposeCTable(table);
    const PenCase test = RandomCase(random, depth, mode);
    SetPenOf(test);
    std::vector<uint32_t> old;
    for (int v = bounds.top; v < bounds.bottom; ++v)
        for (int h = bounds.left; h < bounds.right; ++h) {
            const uint32_t back = PixelIn(world, test.back), highlight = PixelIn(world, test.highlight);
            const uint32_t pixel = random() % 3   ? (uint32_t)random() & BitsOfDepth(depth)
                                   : random() % 2 ? back
                                                  : highlight;
            world.Put(h, v, pixel);
            old.push_back(pixel);
        }
    const int left = (int)(random() % 51) - 5, top = (int)(random() % 12) - 3;
    const Rect r = { (short)top, (short)left, (short)(top + random() % 12), (short)(left + random() % 50) };
    PaintRect(&r);
    int errors = 0;
    size_t i = 0;
    for (int v = bounds.top; v < bounds.bottom; ++v)
        for (int h = bounds.left; h < bounds.right; ++h, ++i) {
            const bool inside = h >= r.left && h < r.right && v >= r.top && v < r.bottom;
            errors += world.At(h, v) != (inside ? Expected(world, test, h, v, old[i]) : old[i]);
        }
    return errors;
}

} // namespace

TEST_CASE("PaintRect: boolean modes change the bits of pixels as a reference does, at every depth")
{
    std::mt19937 random(20);
    for (const int depth : kDepths)
        for (short mode = patCopy; mode <= notPatBic; ++mode)
            for (int round = 0; round < 12; ++round) {
                CAPTURE(depth);
                CAPTURE(mode);
                REQUIRE(Errors(random, depth, mode) == 0);
            }
}

TEST_CASE("PaintRect: arithmetic modes work on colours as a reference does, at every depth")
{
    std::mt19937 random(21);
    for (const int depth : kDepths)
        for (const short mode : kArithmetic)
            for (int round = 0; round < 12; ++round) {
                CAPTURE(depth);
                CAPTURE(mode);
                REQUIRE(Errors(random, depth, mode) == 0);
            }
}

TEST_CASE("PaintRect: highlighting exchanges the background and the highlight colour, at every depth")
{
    std::mt19937 random(22);
    for (const int depth : kDepths)
        for (int round = 0; round < 12; ++round) {
            CAPTURE(depth);
            REQUIRE(Errors(random, depth, hilite) == 0);
        }
}

TEST_CASE("InvertRect: a clear highlight bit makes the next call highlight, and only that one")
{
    const TestWorld world(32, 8, 8);
    const Rect all = { 0, 0, 8, 8 }, top = { 0, 0, 4, 8 };
    EraseRect(&all);
    const RGBColor highlight = { 0x1111, 0x2222, 0x3333 };
    HiliteColor(&highlight);
    LMSetHiliteMode((UInt8)(LMGetHiliteMode() & ~(1 << hiliteBit)));
    InvertRect(&top);
    CHECK(world.At(0, 0) == 0x112233);
    CHECK(world.At(0, 4) == 0xFFFFFF);
    InvertRect(&top);
    CHECK(world.At(0, 0) == 0xEEDDCC);
}

TEST_CASE("InvertRect: indexes are complemented, and so are the 15 bits of depth 16")
{
    for (const int depth : kDepths) {
        const TestWorld world(depth, 8, 2);
        const Rect all = { 0, 0, 2, 8 };
        world.Put(3, 1, 1);
        InvertRect(&all);
        CHECK(world.At(3, 1) == (BitsOfDepth(depth) ^ 1));
        CHECK(world.At(4, 1) == BitsOfDepth(depth));
    }
}

TEST_CASE("PenMode: a mode that is none draws as patCopy does")
{
    const TestWorld world(8, 8, 2);
    const Rect all = { 0, 0, 2, 8 };
    PenMode(30000);
    PaintRect(&all);
    CHECK(world.At(7, 1) == 255);
}

TEST_CASE("SetCPixel: the nearest colour of the table is set, GetCPixel tells its exact entry")
{
    const TestWorld world(4, 8, 2);
    const RGBColor nearlyYellow = { 0xFD00, 0xF000, 0x0500 };
    SetCPixel(5, 1, &nearlyYellow);
    CHECK(world.At(5, 1) == 1);
    RGBColor color;
    GetCPixel(5, 1, &color);
    CHECK(color.green == 0xF37D);
    GetCPixel(100, 1, &color); // no pixel there
    CHECK(color.red == 0xFFFF);
    CHECK(GetPixel(5, 1));
    CHECK_FALSE(GetPixel(4, 1));
}
