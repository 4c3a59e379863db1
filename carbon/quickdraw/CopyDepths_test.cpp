// CopyBits between all depths against the slow reference.
#include "CopyReference.h"
#include "TestWorld.h"
#include "Vectors.h"

#include <Carbon/MacErrors.h>

using namespace lampblack::quickdraw;

namespace {

constexpr int kDepths[] = { 1, 2, 4, 8, 16, 32 };

// The current port's colours for a case, set and told.
SlowColors RandomColors(Dice& random, const Surface& from)
{
    SlowColors colors;
    if (random() % 2) {
        colors.fore = random() & 0xFFFFFF;
        colors.back = random() & 0xFFFFFF;
    }
    if (random() % 3 == 0) // something that the source holds
        colors.back = SlowColor(from, SlowPixel(from, from.bounds.left, from.bounds.top));
    colors.op = random() & 0xFFFFFF;
    colors.hilite = random() & 0xFFFFFF;
    const RGBColor fore = ColorOf(colors.fore), back = ColorOf(colors.back), op = ColorOf(colors.op),
                   light = ColorOf(colors.hilite);
    RGBForeColor(&fore);
    RGBBackColor(&back);
    OpColor(&op);
    HiliteColor(&light);
    return colors;
}

RgnHandle RandomRegion(Dice& random, const Rect& around)
{
    RgnHandle region = NewRgn(), piece = NewRgn();
    for (int i = 0; i < 3; ++i) {
        const Rect r = RandomRectIn(random, around);
        RectRgn(piece, &r);
        XorRgn(region, piece, region);
    }
    DisposeRgn(piece);
    return region;
}

bool Holds(const Rect& r, Point p)
{
    return IsInside(r, p.h, p.v);
}

// Pixels of the destination that are not as the reference says.
struct Expectation {
    Surface from, to;
    Rect fromRect, toRect;
    int mode;
    SlowColors colors;
    RgnHandle mask;
    std::vector<uint8_t> fromBefore, toBefore;

    int Wrong() const
    {
        Surface source = from, before = to;
        source.base = const_cast<uint8_t*>(fromBefore.data());
        before.base = const_cast<uint8_t*>(toBefore.data());
        int wrong = 0;
        for (int v = to.bounds.top; v < to.bounds.bottom; ++v)
            for (int h = to.bounds.left; h < to.bounds.right; ++h) {
                uint32_t expected = SlowPixel(before, h, v);
                const Point at = { (short)v, (short)h };
                if (Holds(toRect, at) && (!mask || PtInRgn(at, mask))) {
                    const Point found = SlowSource(fromRect, toRect, h, v);
                    if (Holds(from.bounds, found))
                        expected =
                            SlowResult(from, to, mode, SlowPixel(source, found.h, found.v), expected, colors);
                }
                wrong += SlowPixel(to, h, v) != expected;
            }
        return wrong;
    }
};

std::vector<uint8_t> BytesOf(const Surface& s)
{
    return { s.base, s.base + s.rowBytes * (s.bounds.bottom - s.bounds.top) };
}

int WrongInOneCopy(Dice& random, int fromDepth, int toDepth, bool within)
{
    TestPicture source(random, fromDepth, 1 + Upto(random, 60), 1 + Upto(random, 20), random() % 2),
        destination(random, toDepth, 1 + Upto(random, 70), 1 + Upto(random, 20), random() % 2);
    TestPicture& from = within ? destination : source;
    const Rect fromRect = RandomRectIn(random, from.Map().bounds);
    Rect toRect = RandomRectIn(random, destination.Map().bounds);
    if (random() % 2) {
        toRect.right = (short)(toRect.left + fromRect.right - fromRect.left);
        toRect.bottom = (short)(toRect.top + fromRect.bottom - fromRect.top);
    }
    const short mode = kAllModes[(size_t)Upto(random, (int)std::size(kAllModes))];
    RgnHandle mask = random() % 3 ? nullptr : RandomRegion(random, destination.Map().bounds);
    const Expectation expected = { from.Pixels(),
                                   destination.Pixels(),
                                   fromRect,
                                   toRect,
                                   mode,
                                   RandomColors(random, from.Pixels()),
                                   mask,
                                   BytesOf(from.Pixels()),
                                   BytesOf(destination.Pixels()) };
    CopyBits(from.Bits(), destination.Bits(), &fromRect, &toRect, mode, mask);
    const int wrong = expected.Wrong();
    if (mask)
        DisposeRgn(mask);
    if (wrong) {
        CAPTURE(fromDepth);
        CAPTURE(toDepth);
        CAPTURE(mode);
        CAPTURE(within);
        CHECK(wrong == 0);
    }
    return wrong;
}

} // namespace

TEST_CASE("CopyBits: all pairs of depths, modes, scales, masks and places come out as pixel by pixel")
{
    TestPort current;
    Dice random(11);
    int wrong = 0;
    for (const int from : kDepths)
        for (const int to : kDepths)
            for (int round = 0; round < 150 && wrong < 5; ++round)
                wrong += WrongInOneCopy(random, from, to, false) != 0;
    CHECK(wrong == 0);
}

TEST_CASE("CopyBits: hilite twice restores every pixel, also where neither colour is one of the depth's own")
{
    const Rect all = MakeRect(0, 0, 16, 16), half = MakeRect(0, 0, 8, 16);
    const RGBColor back = { 0xF3F3, 0xE5E5, 0xD9D9 }, light = { 0xB5B5, 0x7373, 0xFBFB };
    for (const int depth : { 1, 2, 4, 8, 16, 32 }) {
        CAPTURE(depth);
        const TestWorld bits(1, all);
        EraseRect(&all);
        PaintRect(&half);
        const TestWorld world(depth, all);
        RGBBackColor(&back);
        HiliteColor(&light);
        EraseRect(&all);
        const uint32_t before = world.At(3, 3);
        const BitMap* const from = GetPortBitMapForCopyBits(bits.world);
        CopyBits(from, GetPortBitMapForCopyBits(world.world), &all, &all, hilite, nullptr);
        CHECK(world.At(3, 3) != before);
        CHECK(world.At(12, 3) == before);
        CopyBits(from, GetPortBitMapForCopyBits(world.world), &all, &all, hilite, nullptr);
        CHECK(world.At(3, 3) == before);
    }
}

TEST_CASE("CopyBits: within one map of any depth each pixel is read before it is written")
{
    TestPort current;
    Dice random(12);
    int wrong = 0;
    for (const int depth : kDepths)
        for (int round = 0; round < 200 && wrong < 5; ++round)
            wrong += WrongInOneCopy(random, depth, depth, true) != 0;
    CHECK(wrong == 0);
}

namespace {

// Rows of all lengths around those of vectors and buffers, from odd places, enlarged, halved and as they are.
int WrongInLongRows(Dice& random, int fromDepth, int toDepth, int numerator, int denominator)
{
    const int width = random() % 2 ? 1 + Upto(random, 70) : 1000 + Upto(random, 300);
    TestPicture from(random, fromDepth, width * 2 + 3, 4, false),
        to(random, toDepth, width * 2 + 11, 4, false);
    Rect fromRect = from.Map().bounds, toRect = to.Map().bounds;
    fromRect.left = (short)(fromRect.left + Upto(random, 3));
    fromRect.right = (short)(fromRect.left + width * (denominator == 2 ? 2 : 1));
    toRect.left = (short)(toRect.left + Upto(random, 9));
    toRect.right = (short)(toRect.left + (fromRect.right - fromRect.left) * numerator / denominator);
    fromRect.bottom = (short)(fromRect.top + 2);
    toRect.bottom = (short)(toRect.top + 2 * numerator / denominator);
    const short mode = random() % 2 ? (short)srcCopy : (short)notSrcCopy;
    const Expectation expected = {
        from.Pixels(),          to.Pixels(),         fromRect, toRect, mode, {}, nullptr,
        BytesOf(from.Pixels()), BytesOf(to.Pixels())
    };
    CopyBits(from.Bits(), to.Bits(), &fromRect, &toRect, mode, nullptr);
    return expected.Wrong();
}

} // namespace

TEST_CASE("CopyBits: rows of all lengths in all pairs of depths, with the vectors of this machine and of any")
{
    TestPort current;
    Dice random(13);
    int wrong = 0;
    for (const bool mayUseAvx2 : { true, false }) {
        gMayUseAvx2 = mayUseAvx2;
        for (const int from : kDepths)
            for (const int to : kDepths)
                for (int round = 0; round < 6; ++round) {
                    wrong += WrongInLongRows(random, from, to, 1, 1);
                    wrong += WrongInLongRows(random, from, to, 2, 1);
                    wrong += WrongInLongRows(random, from, to, 1, 2);
                }
    }
    gMayUseAvx2 = true;
    CHECK(wrong == 0);
}

TEST_CASE("CopyBits: nothing beyond the rows is read or written, whatever the bounds say")
{
    TestPort current;
    Dice random(14);
    TestPicture from(random, 8, 40, 10, false), to(random, 8, 40, 10, false);
    const Surface real = to.Pixels();
    from.Map().bounds.right += 500; // the memory ends after ten rows of the length that rowBytes says
    to.Map().bounds.right += 500;
    const Rect all = MakeRect(-2000, -2000, 2000, 2000);
    CopyBits(from.Bits(), to.Bits(), &all, &all, srcCopy, nullptr);
    CHECK(QDError() == noErr);
    CHECK(real.base != nullptr);
}

TEST_CASE("CopyBits: maps that no memory can have are refused and change nothing")
{
    TestPort current;
    Dice random(15);
    TestPicture from(random, 8, 20, 10, false), to(random, 32, 20, 10, false);
    const Rect r = MakeRect(-30, -30, 30, 30);
    const std::vector<uint8_t> before = BytesOf(to.Pixels());
    const auto refused = [&](auto change, QDErr error) {
        for (TestPicture* picture : { &from, &to }) {
            const PixMap map = picture->Map();
            change(picture->Map());
            CopyBits(from.Bits(), to.Bits(), &r, &r, srcCopy, nullptr);
            CHECK(QDError() == error);
            picture->Map() = map;
        }
        CHECK(BytesOf(to.Pixels()) == before);
    };
    refused([](PixMap& map) { map.baseAddr = nullptr; }, paramErr);
    refused([](PixMap& map) { map.rowBytes = (short)0x8000; }, paramErr);
    refused([](PixMap& map) { map.pixelSize = 3; }, cDepthErr);
    refused([](PixMap& map) { map.pixelSize = 0; }, cDepthErr);
    refused([](PixMap& map) { map.pixelSize = -8; }, cDepthErr);
    refused([](PixMap& map) { map.bounds.right = (short)(map.bounds.left - 1); }, paramErr);
    refused([](PixMap& map) { map.bounds.bottom = (short)(map.bounds.top - 5); }, paramErr);
    from.Map().pmVersion = 77; // what old programs left there
    from.Map().packType = 4;
    CopyBits(from.Bits(), to.Bits(), &r, &r, srcCopy, nullptr);
    CHECK(QDError() == noErr);
    CHECK(BytesOf(to.Pixels()) != before);
}

TEST_CASE("CopyBits: a bit map into every depth takes the nearest of the port's colours")
{
    TestPort current;
    Dice random(16);
    const RGBColor fore = { 0xFFFF, 0, 0 }, back = { 0, 0, 0xFFFF };
    RGBForeColor(&fore);
    RGBBackColor(&back);
    UInt8 bits[] = { 0xA5, 0x3C };
    const BitMap map = { reinterpret_cast<Ptr>(bits), 2, MakeRect(0, 0, 16, 1) };
    for (const int depth : kDepths) {
        TestPicture to(random, depth, 16, 1, false);
        CopyBits(&map, to.Bits(), &map.bounds, &to.Map().bounds, srcCopy, nullptr);
        const Surface pixels = to.Pixels();
        for (int h = 0; h < 16; ++h)
            CHECK(SlowPixel(pixels, pixels.bounds.left + h, pixels.bounds.top) ==
                  PixelFor(pixels, bits[h / 8] >> (7 - h % 8) & 1 ? 0xFF0000 : 0x0000FF));
    }
}

TEST_CASE("CopyBits: a table whose owner did not change its seed is read anew")
{
    TestPort current;
    Dice random(17);
    TestPicture from(random, 8, 16, 4, true), to(random, 8, 16, 4, true);
    CopyBits(from.Bits(), to.Bits(), &from.Map().bounds, &to.Map().bounds, srcCopy, nullptr);
    (**from.Map().pmTable)
        .ctTable[SlowPixel(from.Pixels(), from.Map().bounds.left, from.Map().bounds.top)]
        .rgb = (**to.Map().pmTable).ctTable[9].rgb;
    CopyBits(from.Bits(), to.Bits(), &from.Map().bounds, &to.Map().bounds, srcCopy, nullptr);
    CHECK(SlowPixel(to.Pixels(), to.Map().bounds.left, to.Map().bounds.top) == 9);
}
