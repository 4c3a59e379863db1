// CopyBits against a slow and obvious version, and ScrollRect.
#include "TestPort.h"

#include <Carbon/MacErrors.h>

#include <cstring>

using namespace lampblack::quickdraw;

static void FillRandom(CGrafPtr port, std::mt19937& random)
{
    const PixelView view = PortPixels(port);
    for (int i = 0; i < view.rowPixels * (view.bounds.bottom - view.bounds.top); ++i)
        view.base[i] = random() & 0xFFFFFF;
}

static std::vector<uint32_t> Snapshot(CGrafPtr port)
{
    const PixelView view = PortPixels(port);
    return { view.base, view.base + view.rowPixels * (view.bounds.bottom - view.bounds.top) };
}

// One channel bit of the published table: a zero bit of the source is set, a one bit is clear.
static uint32_t CombinedBit(int mode, uint32_t source, uint32_t old, uint32_t fore, uint32_t back)
{
    const bool set = (source == 0) != (mode >= 4);
    switch (mode & 3) {
    case srcCopy: return set ? fore : back;
    case srcOr: return set ? fore : old;
    case srcXor: return set ? old ^ 1 : old;
    default: return set ? back : old;
    }
}

static uint32_t Combined(int mode, uint32_t source, uint32_t old, uint32_t fore, uint32_t back)
{
    if (mode == transparent)
        return source == back ? old : source;
    uint32_t result = 0;
    for (int bit = 0; bit < 24; ++bit)
        result |= CombinedBit(mode, source >> bit & 1, old >> bit & 1, fore >> bit & 1, back >> bit & 1)
                  << bit;
    return result;
}

static Rect RandomRect(std::mt19937& random, int width, int height)
{
    const int left = (int)(random() % (unsigned)(width + 10)) - 8,
              top = (int)(random() % (unsigned)(height + 10)) - 8;
    return MakeRect(left, top, left + 1 + (int)(random() % (unsigned)width),
                    top + 1 + (int)(random() % (unsigned)height));
}

TEST_CASE("CopyBits: random rectangles, modes, scales, masks and clips, also within one map")
{
    std::mt19937 random(1);
    static constexpr short kModes[] = { 0, 0, 0, 1, 2, 3, 4, 5, 6, 7, transparent };
    int wrong = 0;
    for (int round = 0; round < 1500; ++round) {
        TestPort from(35, 25), to(40, 30);
        CGrafPtr source = round % 4 == 0 ? to.port : from.port;
        FillRandom(from.port, random);
        FillRandom(to.port, random);
        SetPort(from.port);
        SetOrigin((short)(random() % 7), (short)(random() % 5));
        SetPort(to.port);
        const bool colours = random() % 3 == 0;
        const RGBColor fore = { 0x1200, 0x3400, 0x5600 }, back = { 0xFE00, 0xDC00, 0xBA00 };
        if (colours) {
            RGBForeColor(&fore);
            RGBBackColor(&back);
        }
        const uint32_t forePixel = colours ? 0x123456 : 0, backPixel = colours ? 0xFEDCBA : 0xFFFFFF;
        const Rect fromRect = RandomRect(random, 30, 22);
        Rect toRect = RandomRect(random, 35, 25);
        if (random() % 2) {
            toRect.right = (short)(toRect.left + fromRect.right - fromRect.left);
            toRect.bottom = (short)(toRect.top + fromRect.bottom - fromRect.top);
        }
        const short mode = kModes[random() % std::size(kModes)];
        RgnHandle mask = NewRgn(), piece = NewRgn(), clip = NewRgn();
        for (int i = 0; i < 3; ++i) {
            const Rect r = RandomRect(random, 30, 20);
            RectRgn(piece, &r);
            XorRgn(mask, piece, mask);
        }
        const bool masked = random() % 3 == 0, clipped = random() % 3 == 0;
        if (clipped) {
            const Rect r = RandomRect(random, 30, 20);
            ClipRect(&r);
        }
        GetClip(clip);
        const PixelView sourceView = PortPixels(source);
        const std::vector<uint32_t> sourceBefore = Snapshot(source), before = Snapshot(to.port);
        CopyBits(GetPortBitMapForCopyBits(source), GetPortBitMapForCopyBits(to.port), &fromRect, &toRect,
                 mode, masked ? mask : nullptr);
        wrong += Differences(to, [&](int h, int v) {
            const uint32_t old = before[(size_t)(v * 40 + h)];
            const Point at = { (short)v, (short)h };
            if (!IsInside(toRect, h, v) || (masked && !PtInRgn(at, mask)) || !PtInRgn(at, clip))
                return old;
            const int sh = fromRect.left + (h - toRect.left) * (fromRect.right - fromRect.left) /
                                               (toRect.right - toRect.left);
            const int sv = fromRect.top +
                           (v - toRect.top) * (fromRect.bottom - fromRect.top) / (toRect.bottom - toRect.top);
            if (!IsInside(sourceView.bounds, sh, sv))
                return old;
            const uint32_t pixel = sourceBefore[(size_t)((sv - sourceView.bounds.top) * sourceView.rowPixels +
                                                         sh - sourceView.bounds.left)];
            return Combined(mode & ~ditherCopy, pixel, old, forePixel, backPixel);
        });
        DisposeRgn(mask);
        DisposeRgn(piece);
        DisposeRgn(clip);
    }
    CHECK(wrong == 0);
}

TEST_CASE("CopyBits: a bit map's set bits take the foreground, its clear bits the background")
{
    TestPort port;
    UInt8 bits[] = { 0xA0, 0, 0x50, 0, 0xF0, 0 };
    const BitMap map = { reinterpret_cast<Ptr>(bits), 2, MakeRect(0, 0, 4, 3) };
    const Rect from = map.bounds, to = MakeRect(10, 10, 18, 16);
    const RGBColor fore = { 0xFFFF, 0, 0 };
    RGBForeColor(&fore);
    CopyBits(&map, GetPortBitMapForCopyBits(port.port), &from, &to, srcCopy, nullptr);
    CHECK(Differences(port, [&](int h, int v) -> uint32_t {
              if (!IsInside(to, h, v))
                  return 0xFFFFFF;
              return bits[(v - 10) / 2 * 2] >> (7 - (h - 10) / 2) & 1 ? 0xFF0000 : 0xFFFFFF;
          }) == 0);
}

TEST_CASE("CopyBits: a wide row is copied in full, scaled and not")
{
    TestPort from(1500, 2), to(3000, 2);
    std::mt19937 random(2);
    FillRandom(from.port, random);
    const Rect small = MakeRect(0, 0, 1500, 2), large = MakeRect(0, 0, 3000, 2);
    CopyBits(GetPortBitMapForCopyBits(from.port), GetPortBitMapForCopyBits(to.port), &small, &large,
             notSrcCopy, nullptr);
    CHECK(Differences(to, [&](int h, int v) { return ~from.At(h / 2, v) & 0xFFFFFF; }) == 0);
}

TEST_CASE("CopyBits: depths that are not there, and null arguments, change nothing")
{
    TestPort port;
    PixMap map = **GetPortPixMap(port.port);
    map.pixelSize = 3;
    const Rect r = MakeRect(0, 0, 10, 10);
    InvertRect(&r);
    const auto* odd = reinterpret_cast<const BitMap*>(&map);
    const BitMap* bits = GetPortBitMapForCopyBits(port.port);
    CopyBits(odd, bits, &r, &r, srcCopy, nullptr);
    CHECK(QDError() == cDepthErr);
    CopyBits(nullptr, bits, &r, &r, srcCopy, nullptr);
    CopyBits(bits, nullptr, &r, &r, srcCopy, nullptr);
    CopyBits(bits, bits, nullptr, &r, srcCopy, nullptr);
    CHECK(QDError() == paramErr);
    CHECK(BlackDifferences(port, [&](int h, int v) { return IsInside(r, h, v); }) == 0);
}

TEST_CASE("ScrollRect: moves pixels, erases what comes into view and tells it, within the clip")
{
    std::mt19937 random(9);
    int wrong = 0;
    for (int round = 0; round < 200; ++round) {
        TestPort port;
        FillRandom(port.port, random);
        const Rect r = RandomRect(random, 35, 25), clip = RandomRect(random, 60, 50);
        ClipRect(&clip);
        const int dh = (int)(random() % 15) - 7, dv = (int)(random() % 15) - 7;
        const std::vector<uint32_t> before = Snapshot(port.port);
        RgnHandle update = NewRgn();
        ScrollRect(&r, (short)dh, (short)dv, update);
        const Rect bounds = PortPixels(port.port).bounds;
        const auto inArea = [&](int h, int v) {
            return IsInside(r, h, v) && IsInside(clip, h, v) && IsInside(bounds, h, v);
        };
        wrong += Differences(port, [&](int h, int v) {
            if (!inArea(h, v))
                return before[(size_t)(v * 40 + h)];
            return inArea(h - dh, v - dv) ? before[(size_t)((v - dv) * 40 + h - dh)] : 0xFFFFFFu;
        });
        for (short v = 0; v < 30; ++v)
            for (short h = 0; h < 40; ++h)
                wrong += PtInRgn({ v, h }, update) != (inArea(h, v) && !inArea(h - dh, v - dv));
        DisposeRgn(update);
    }
    CHECK(wrong == 0);
}

TEST_CASE("DrawPremultiplied: opaque replaces, transparent leaves, half mixes")
{
    TestPort port;
    const uint32_t pixels[] = { 0xFF102030, 0, 0x80000000, 0x80800000 };
    DrawPremultiplied(pixels, 4, MakeRect(5, 5, 9, 6));
    CHECK(port.At(5, 5) == 0x102030);
    CHECK(port.At(6, 5) == 0xFFFFFF);
    CHECK(port.At(7, 5) == 0x7F7F7F);
    CHECK(port.At(8, 5) == 0xFF7F7F);
    CHECK(port.At(9, 5) == 0xFFFFFF);
    DrawPremultiplied(pixels, 4, MakeRect(38, -1, 42, 0));
}

TEST_CASE("DrawPremultiplied: any pixels at any place come out as channel by channel")
{
    std::mt19937 random(7);
    const auto over = [](uint32_t source, uint32_t destination) {
        if (source == 0)
            return destination;
        uint32_t below = 0;
        for (int shift = 0; shift < 24; shift += 8) {
            const uint32_t product = (destination >> shift & 255) * (255 - (source >> 24)) + 128;
            below |= ((product + (product >> 8)) >> 8) << shift;
        }
        return (source + below) & 0xFFFFFF;
    };
    int wrong = 0;
    for (int round = 0; round < 200; ++round) {
        TestPort port(67, 3);
        FillRandom(port.port, random);
        const std::vector<uint32_t> before = Snapshot(port.port);
        uint32_t pixels[67];
        for (uint32_t& pixel : pixels) {
            const uint32_t kind = random() % 4;
            pixel = kind == 0 ? 0 : kind == 1 ? random() | 0xFF000000 : (uint32_t)random();
        }
        const int left = (int)(random() % 20), width = 1 + (int)(random() % 47);
        DrawPremultiplied(pixels, 67, MakeRect(left, 1, left + width, 2));
        const int rowPixels = PortPixels(port.port).rowPixels;
        wrong += Differences(port, [&](int h, int v) {
            const uint32_t old = before[(size_t)(v * rowPixels + h)];
            return v == 1 && h >= left && h < left + width ? over(pixels[h - left], old) : old;
        });
    }
    CHECK(wrong == 0);
}

TEST_CASE("CopyBits: doubling and halving, from odd places and clipped, take the nearest pixels")
{
    std::mt19937 random(4);
    int wrong = 0;
    for (int round = 0; round < 300; ++round) {
        const int numerator = round % 2 ? 2 : 1, denominator = round % 2 ? 1 : 2;
        TestPort from(64, 20), to(80, 40);
        FillRandom(from.port, random);
        const int left = (int)(random() % 10), width = 2 * (1 + (int)(random() % 25)),
                  h = (int)(random() % 9) - 4;
        const Rect source = MakeRect(left, 3, left + width, 13);
        const Rect destination =
            MakeRect(h, 5, h + width * numerator / denominator, 5 + 10 * numerator / denominator);
        const Rect clip = MakeRect((int)(random() % 9), 0, 80, 40);
        ClipRect(&clip);
        CopyBits(GetPortBitMapForCopyBits(from.port), GetPortBitMapForCopyBits(to.port), &source,
                 &destination, srcCopy, nullptr);
        wrong += Differences(to, [&](int x, int y) {
            if (!IsInside(destination, x, y) || !IsInside(clip, x, y))
                return 0xFFFFFFu;
            return from.At(left + (x - h) * denominator / numerator, 3 + (y - 5) * denominator / numerator);
        });
    }
    CHECK(wrong == 0);
}

TEST_CASE("CopyBits: reads the screen through GetQDGlobalsScreenBits while its pixels are known")
{
    TestPort port;
    std::vector<uint32_t> screen(1024 * 768, 0x336699);
    const Rect r = MakeRect(0, 0, 10, 10);
    BitMap bits;
    SetScreenPixels(screen.data(), 1024, 1024, 768);
    CopyBits(GetQDGlobalsScreenBits(&bits), GetPortBitMapForCopyBits(port.port), &r, &r, srcCopy, nullptr);
    CHECK(port.At(9, 9) == 0x336699);
    SetScreenPixels(nullptr, 0, 0, 0);
    InvertRect(&r);
    CopyBits(GetQDGlobalsScreenBits(&bits), GetPortBitMapForCopyBits(port.port), &r, &r, srcCopy, nullptr);
    CHECK(port.At(9, 9) == 0xCC9966);
}
