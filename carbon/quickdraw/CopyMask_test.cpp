// CopyMask, CopyDeepMask and the masks of paint against slow versions.
#include "CopyReference.h"
#include "TestWorld.h"

#include <Carbon/MacErrors.h>

using namespace lampblack::quickdraw;

namespace {

constexpr int kDepths[] = { 1, 2, 4, 8, 16, 32 };

uint32_t SlowWeighed(uint32_t source, uint32_t destination, uint32_t weights)
{
    uint32_t result = 0;
    for (int shift = 16; shift >= 0; shift -= 8) {
        const int s = (int)(source >> shift & 255), d = (int)(destination >> shift & 255),
                  w = (int)(weights >> shift & 255);
        result = result << 8 | (uint32_t)((s * (255 - w) + d * w) / 255.0 + 0.5);
    }
    return result;
}

struct Masked {
    Surface from, mask, to;
    Rect fromRect, maskRect, toRect;
    int mode;
    RgnHandle region;
    SlowColors colors;

    uint32_t Expected(int h, int v, uint32_t old) const
    {
        const Point s = SlowSource(fromRect, toRect, h, v), m = SlowSource(maskRect, toRect, h, v);
        const bool isThere = IsInside(toRect, h, v) && IsInside(from.bounds, s.h, s.v) &&
                             IsInside(mask.bounds, m.h, m.v) &&
                             (!region || PtInRgn({ (short)v, (short)h }, region));
        if (!isThere)
            return old;
        const uint32_t source = SlowPixel(from, s.h, s.v), masks = SlowPixel(mask, m.h, m.v);
        const uint32_t result = SlowResult(from, to, mode, source, old, colors);
        if (mask.depth == 1)
            return masks ? result : old;
        uint32_t color = SlowColor(to, result);
        const bool inverts = mode == notSrcCopy && (SlowIsBitMap(from) || !colors.IsPlain());
        if (mode == srcCopy || inverts) // not yet made to fit the destination
            color =
                CopiedColor(source, inverts ? colors.back : colors.fore, inverts ? colors.fore : colors.back);
        const uint32_t before = SlowColor(to, old),
                       after = SlowWeighed(color, before, SlowColor(mask, masks));
        return after == before ? old : PixelFor(to, after);
    }
    uint32_t CopiedColor(uint32_t source, uint32_t fore, uint32_t back) const
    {
        if (SlowIsBitMap(from))
            return source ? fore : back;
        const uint32_t color = SlowColor(from, source);
        return (~color & fore) | (color & back);
    }
};

Rect SameSize(const Rect& r, int left, int top)
{
    return MakeRect(left, top, left + r.right - r.left, top + r.bottom - r.top);
}

int WrongInOneMask(Dice& random, int fromDepth, int maskDepth, int toDepth)
{
    TestPicture from(random, fromDepth, 1 + Upto(random, 70), 1 + Upto(random, 16), random() % 2),
        mask(random, maskDepth, 1 + Upto(random, 90), 1 + Upto(random, 16), maskDepth > 1 && random() % 2),
        to(random, toDepth, 1 + Upto(random, 90), 1 + Upto(random, 16), random() % 2);
    Masked job = { from.Pixels(),
                   mask.Pixels(),
                   to.Pixels(),
                   RandomRectIn(random, from.Map().bounds),
                   RandomRectIn(random, mask.Map().bounds),
                   RandomRectIn(random, to.Map().bounds),
                   srcCopy,
                   nullptr,
                   {} };
    if (random() % 2)
        job.toRect = SameSize(job.fromRect, job.toRect.left, job.toRect.top);
    if (random() % 2)
        job.maskRect = SameSize(job.toRect, job.maskRect.left, job.maskRect.top);
    if (random() % 2)
        job.mode = kAllModes[(size_t)Upto(random, (int)std::size(kAllModes))];
    if (random() % 3 == 0) {
        job.colors.fore = random() & 0xFFFFFF;
        job.colors.back = random() & 0xFFFFFF;
    }
    const RGBColor fore = ColorOf(job.colors.fore), back = ColorOf(job.colors.back), light = { 0, 0, 0 };
    RGBForeColor(&fore);
    RGBBackColor(&back);
    HiliteColor(&light);
    RgnHandle region = NewRgn();
    const Rect part = RandomRectIn(random, to.Map().bounds);
    RectRgn(region, &part);
    job.region = random() % 3 == 0 ? region : nullptr;
    const uint8_t* first = job.to.base;
    std::vector<uint8_t> before(first, first + to.Size());
    if (job.mode == srcCopy && !job.region)
        CopyMask(from.Bits(), mask.Bits(), to.Bits(), &job.fromRect, &job.maskRect, &job.toRect);
    else
        CopyDeepMask(from.Bits(), mask.Bits(), to.Bits(), &job.fromRect, &job.maskRect, &job.toRect,
                     (short)job.mode, job.region);
    Surface old = job.to;
    old.base = before.data();
    int wrong = 0;
    for (int v = old.bounds.top; v < old.bounds.bottom; ++v)
        for (int h = old.bounds.left; h < old.bounds.right; ++h)
            wrong += SlowPixel(job.to, h, v) != job.Expected(h, v, SlowPixel(old, h, v));
    DisposeRgn(region);
    if (wrong) {
        CAPTURE(fromDepth);
        CAPTURE(maskDepth);
        CAPTURE(toDepth);
        CAPTURE(job.mode);
        CHECK(wrong == 0);
    }
    return wrong;
}

} // namespace

TEST_CASE("CopyMask and CopyDeepMask: all depths of source, mask and destination, scaled and not")
{
    TestPort current;
    Dice random(21);
    int wrong = 0;
    for (const int from : kDepths)
        for (const int mask : kDepths)
            for (const int to : kDepths)
                for (int round = 0; round < 20 && wrong < 5; ++round)
                    wrong += WrongInOneMask(random, from, mask, to) != 0;
    CHECK(wrong == 0);
}

TEST_CASE("CopyMask: black copies to the bit, white leaves to the bit, grey is half")
{
    TestPort from(3, 1), to(3, 1), mask(3, 1);
    const PixelView source = PortPixels(from.port), masks = PortPixels(mask.port),
                    pixels = PortPixels(to.port);
    const uint32_t colors[] = { 0x123457, 0x123457, 0xFF0001 };
    const uint32_t weights[] = { 0, 0xFFFFFF, 0x808080 };
    std::copy_n(colors, 3, source.base);
    std::copy_n(weights, 3, masks.base);
    std::fill_n(pixels.base, 3, 0x0000FFu);
    const Rect r = MakeRect(0, 0, 3, 1);
    const auto bits = [](const TestPort& port) { return GetPortBitMapForCopyBits(port.port); };
    CopyMask(bits(from), bits(mask), bits(to), &r, &r, &r);
    CHECK(to.At(0, 0) == 0x123457);
    CHECK(to.At(1, 0) == 0x0000FF);
    CHECK(to.At(2, 0) == 0x7F0080);
}

TEST_CASE("CopyMask: the clip of the current port holds, that of another does not")
{
    TestPort from, to;
    std::vector<UInt8> ones(8 * 30, 0xFF);
    const BitMap mask = { reinterpret_cast<Ptr>(ones.data()), 8, MakeRect(0, 0, 40, 30) };
    const Rect all = MakeRect(0, 0, 40, 30), clip = MakeRect(5, 5, 10, 10);
    SetPort(from.port);
    InvertRect(&all);
    SetPort(to.port);
    ClipRect(&clip);
    CopyMask(GetPortBitMapForCopyBits(from.port), &mask, GetPortBitMapForCopyBits(to.port), &all, &all, &all);
    CHECK(BlackDifferences(to, [&](int h, int v) { return IsInside(clip, h, v); }) == 0);
    SetPort(from.port);
    CopyMask(GetPortBitMapForCopyBits(from.port), &mask, GetPortBitMapForCopyBits(to.port), &all, &all, &all);
    CHECK(BlackDifferences(to, [](int, int) { return true; }) == 0);
}

TEST_CASE("CopyMask: nulls and maps without memory are refused")
{
    TestPort port;
    Dice random(22);
    TestPicture picture(random, 8, 10, 10, false);
    const BitMap *bits = GetPortBitMapForCopyBits(port.port), *mask = picture.Bits();
    const Rect r = MakeRect(0, 0, 5, 5);
    CopyMask(nullptr, mask, bits, &r, &r, &r);
    CHECK(QDError() == paramErr);
    CopyMask(bits, nullptr, bits, &r, &r, &r);
    CopyMask(bits, mask, nullptr, &r, &r, &r);
    CopyMask(bits, mask, bits, nullptr, &r, &r);
    CopyMask(bits, mask, bits, &r, nullptr, &r);
    CopyMask(bits, mask, bits, &r, &r, nullptr);
    picture.Map().pixelSize = 5;
    CopyMask(bits, mask, bits, &r, &r, &r);
    CHECK(QDError() == cDepthErr);
    CHECK(BlackDifferences(port, [](int, int) { return false; }) == 0);
}

namespace {

// Bits as text: a row for each word of 16 pixels.
std::vector<UInt8> BitsOf(const std::vector<std::string>& rows)
{
    std::vector<UInt8> bits;
    for (const std::string& row : rows) {
        unsigned word = 0;
        for (size_t i = 0; i < 16; ++i)
            word = word << 1 | (i < row.size() && row[i] == '#');
        bits.push_back((UInt8)(word >> 8));
        bits.push_back((UInt8)word);
    }
    return bits;
}

const std::vector<std::string> kRing = { "................", "..########......", "..#......#......",
                                         "..#..##..#......", "..#......#......", "..########......",
                                         "............####" };

} // namespace

TEST_CASE("SeedFill: paint reaches what set bits do not shut off, and not around corners")
{
    const std::vector<UInt8> from = BitsOf(kRing);
    std::vector<UInt8> to(from.size(), 0x55);
    SeedFill(from.data(), to.data(), 2, 2, 7, 1, 4, 2);
    CHECK(to == BitsOf({ "", "", "...######", "...##..##", "...######", "", "" }));
    SeedFill(from.data(), to.data(), 2, 2, 7, 1, 5, 3); // a set bit
    CHECK(to == std::vector<UInt8>(14));
    SeedFill(from.data(), to.data(), 2, 2, 7, 1, -1, 3);
    CHECK(to == std::vector<UInt8>(14));
    const std::vector<UInt8> corner = BitsOf({ ".#", "#." });
    std::vector<UInt8> reached(4);
    SeedFill(corner.data(), reached.data(), 2, 2, 2, 1, 0, 0);
    CHECK(reached == BitsOf({ "#", "" }));
}

TEST_CASE("CalcMask: what paint around the edges does not reach, with the walls")
{
    const std::vector<UInt8> from = BitsOf(kRing);
    std::vector<UInt8> to(from.size());
    CalcMask(from.data(), to.data(), 2, 2, 7, 1);
    CHECK(to == BitsOf({ "", "..########", "..########", "..########", "..########", "..########",
                         "............####" }));
    CalcMask(nullptr, to.data(), 2, 2, 7, 1);
    CalcMask(from.data(), nullptr, 2, 2, 7, 1);
    CalcMask(from.data(), to.data(), 2, 2, -7, 1);
    CalcMask(from.data(), to.data(), 0, 2, 7, 1);
}

TEST_CASE("SeedFill: random walls, compared with paint that spreads a step at a time")
{
    Dice random(23);
    int wrong = 0;
    for (int round = 0; round < 50; ++round) {
        std::vector<UInt8> from(6 * 30), to(6 * 30);
        for (UInt8& byte : from)
            byte = (UInt8)(random() & random());
        const auto isSet = [](const std::vector<UInt8>& bits, int h, int v) {
            return (bits[(size_t)(v * 6 + h / 8)] >> (7 - h % 8) & 1) != 0;
        };
        const int seedH = Upto(random, 48), seedV = Upto(random, 30);
        SeedFill(from.data(), to.data(), 6, 6, 30, 3, (short)seedH, (short)seedV);
        std::vector<int> reached(48 * 30);
        reached[(size_t)(seedV * 48 + seedH)] = !isSet(from, seedH, seedV);
        for (bool grows = true; grows;) {
            grows = false;
            for (int v = 0; v < 30; ++v)
                for (int h = 0; h < 48; ++h) {
                    const auto at = [&](int x, int y) {
                        return x >= 0 && y >= 0 && x < 48 && y < 30 && reached[(size_t)(y * 48 + x)];
                    };
                    if (!at(h, v) && !isSet(from, h, v) &&
                        (at(h - 1, v) || at(h + 1, v) || at(h, v - 1) || at(h, v + 1))) {
                        reached[(size_t)(v * 48 + h)] = 1;
                        grows = true;
                    }
                }
        }
        for (int i = 0; i < 48 * 30; ++i)
            wrong += isSet(to, i % 48, i / 48) != (reached[(size_t)i] != 0);
    }
    CHECK(wrong == 0);
}

namespace {

Boolean LetRedPass(RGBColor* color, long* position)
{
    const auto* match = reinterpret_cast<const MatchRec*>((**GetGDevice()).gdRefCon);
    *position = color->red > 0x8000 && color->green < 0x4000 && match->matchData == 77 ? 0 : 1;
    return true;
}

} // namespace

TEST_CASE("CalcCMask: a seed that the depth cannot hold is the nearest that it can")
{
    const RGBColor ground = { 0x8181, 0xC3C3, 0xEDED };
    const Rect all = MakeRect(0, 0, 16, 7), ring = MakeRect(2, 1, 10, 6);
    TestPort result(16, 7);
    for (const int depth : { 2, 4, 8, 16, 32 }) {
        CAPTURE(depth);
        const TestWorld world(depth, all);
        RGBForeColor(&ground);
        PaintRect(&all);
        ForeColor(blackColor);
        FrameRect(&ring);
        CalcCMask(GetPortBitMapForCopyBits(world.world), GetPortBitMapForCopyBits(result.port), &all, &all,
                  &ground, nullptr, 0);
        CHECK(BlackDifferences(result, [&](int h, int v) { return IsInside(ring, h, v); }) == 0);
    }
}

TEST_CASE("SeedCFill and CalcCMask: colours of any depth, with and without a search procedure")
{
    TestPort port(16, 7), result(16, 7);
    SetPort(port.port);
    const RGBColor red = { 0xFFFF, 0, 0 }, pink = { 0xFFFF, 0x8080, 0x8080 };
    const Rect all = MakeRect(0, 0, 16, 7), ring = MakeRect(2, 1, 10, 6), inside = MakeRect(3, 2, 9, 5);
    RGBForeColor(&red);
    FrameRect(&ring);
    RGBForeColor(&pink);
    const Rect dot = MakeRect(5, 3, 7, 4);
    PaintRect(&dot);
    const BitMap *from = GetPortBitMapForCopyBits(port.port), *to = GetPortBitMapForCopyBits(result.port);
    SeedCFill(from, to, &all, &all, 4, 2, nullptr, 0);
    CHECK(BlackDifferences(
              result, [&](int h, int v) { return IsInside(inside, h, v) && !IsInside(dot, h, v); }) == 0);
    SeedCFill(from, to, &all, &all, 2, 1, LetRedPass, 77);
    CHECK(BlackDifferences(
              result, [&](int h, int v) { return IsInside(ring, h, v) && !IsInside(inside, h, v); }) == 0);
    const RGBColor white = { 0xFFFF, 0xFFFF, 0xFFFF };
    CalcCMask(from, to, &all, &all, &white, nullptr, 0);
    CHECK(BlackDifferences(result, [&](int h, int v) { return IsInside(ring, h, v); }) == 0);
    CalcCMask(from, to, &all, &all, nullptr, nullptr, 0);
    CHECK(QDError() == paramErr);
    SeedCFill(from, nullptr, &all, &all, 2, 1, nullptr, 0);
    CHECK(QDError() == paramErr);
}
