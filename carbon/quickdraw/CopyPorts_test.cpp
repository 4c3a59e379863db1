// Copying where ports come in: clips of worlds of every depth, scrolling, pixels of other floors, an open
// picture.
#include "CopyReference.h"
#include "Recorder.h"

#include <Carbon/MacErrors.h>

using namespace lampblack::quickdraw;

namespace {

constexpr int kDepths[] = { 1, 2, 4, 8, 16, 32 };

// A world of a depth, current while it lives, filled by chance.
class ChanceWorld {
public:
    ChanceWorld(Dice& random, int depth, int width, int height)
    {
        GetGWorld(&fOldPort, &fOldDevice);
        const Rect bounds = MakeRect(0, 0, width, height);
        REQUIRE(NewGWorld(&fWorld, (short)depth, &bounds, nullptr, nullptr, 0) == noErr);
        SetGWorld(fWorld, nullptr);
        for (int v = 0; v < height; ++v)
            for (int h = 0; h < width; ++h)
                WritePixel(Pixels(), v, h, random() & PixelBits(depth));
    }
    ~ChanceWorld()
    {
        SetGWorld(fOldPort, fOldDevice);
        DisposeGWorld(fWorld);
    }
    ChanceWorld(const ChanceWorld&) = delete;
    ChanceWorld& operator=(const ChanceWorld&) = delete;

    const Surface& Pixels() const { return FindPort(fWorld)->Pixels(); }
    const BitMap* Bits() const { return GetPortBitMapForCopyBits(fWorld); }
    CGrafPtr Port() const { return fWorld; }
    uint32_t At(int h, int v) const { return SlowPixel(Pixels(), h, v); }
    std::vector<uint32_t> All() const
    {
        std::vector<uint32_t> all;
        const Rect& bounds = Pixels().bounds;
        for (int v = bounds.top; v < bounds.bottom; ++v)
            for (int h = bounds.left; h < bounds.right; ++h)
                all.push_back(At(h, v));
        return all;
    }

private:
    GWorldPtr fWorld = nullptr;
    CGrafPtr fOldPort = nullptr;
    GDHandle fOldDevice = nullptr;
};

RgnHandle ChanceClip(Dice& random)
{
    RgnHandle clip = NewRgn(), piece = NewRgn();
    for (int i = 0; i < 3; ++i) {
        const Rect r = RandomRectIn(random, MakeRect(0, 0, 50, 20));
        RectRgn(piece, &r);
        XorRgn(clip, piece, clip);
    }
    DisposeRgn(piece);
    return clip;
}

} // namespace

TEST_CASE("CopyBits: the clip of the current port and a mask region hold at every depth")
{
    Dice random(41);
    int wrong = 0;
    for (const int fromDepth : kDepths)
        for (const int toDepth : kDepths)
            for (int round = 0; round < 6; ++round) {
                ChanceWorld from(random, fromDepth, 50, 20), to(random, toDepth, 50, 20);
                RgnHandle clip = ChanceClip(random), mask = ChanceClip(random);
                SetClip(clip);
                const std::vector<uint32_t> before = to.All();
                const Rect r = MakeRect(0, 0, 50, 20);
                const bool masked = random() % 2;
                CopyBits(from.Bits(), to.Bits(), &r, &r, srcCopy, masked ? mask : nullptr);
                for (int i = 0; i < 50 * 20; ++i) {
                    const Point at = { (short)(i / 50), (short)(i % 50) };
                    const bool open = PtInRgn(at, clip) && (!masked || PtInRgn(at, mask));
                    const uint32_t old = before[(size_t)i];
                    wrong += to.At(at.h, at.v) != (open ? SlowResult(from.Pixels(), to.Pixels(), srcCopy,
                                                                     from.At(at.h, at.v), old, {})
                                                        : old);
                }
                DisposeRgn(clip);
                DisposeRgn(mask);
            }
    CHECK(wrong == 0);
}

TEST_CASE("ScrollRect: at every depth, through a clip of several pieces")
{
    Dice random(42);
    int wrong = 0;
    for (const int depth : kDepths)
        for (int round = 0; round < 40; ++round) {
            ChanceWorld world(random, depth, 50, 20);
            RgnHandle clip = ChanceClip(random);
            if (round % 2)
                SetClip(clip);
            else
                SetRectRgn(clip, 0, 0, 50, 20);
            const Rect r = RandomRectIn(random, MakeRect(0, 0, 50, 20));
            const int dh = Upto(random, 21) - 10, dv = Upto(random, 11) - 5;
            const std::vector<uint32_t> before = world.All();
            ScrollRect(&r, (short)dh, (short)dv, nullptr);
            const auto isIn = [&](int h, int v) {
                return IsInside(r, h, v) && IsInside(MakeRect(0, 0, 50, 20), h, v) &&
                       PtInRgn({ (short)v, (short)h }, clip);
            };
            for (int v = 0; v < 20; ++v)
                for (int h = 0; h < 50; ++h) {
                    uint32_t expected = before[(size_t)(v * 50 + h)];
                    if (isIn(h, v))
                        expected = isIn(h - dh, v - dv) ? before[(size_t)((v - dv) * 50 + h - dh)]
                                                        : PixelFor(world.Pixels(), 0xFFFFFF);
                    wrong += world.At(h, v) != expected;
                }
            DisposeRgn(clip);
        }
    CHECK(wrong == 0);
}

TEST_CASE("DrawPremultiplied: at every depth the nearest pixel of what depth 32 shows")
{
    Dice random(43);
    int wrong = 0;
    for (const int depth : kDepths) {
        ChanceWorld world(random, depth, 50, 20);
        const std::vector<uint32_t> before = world.All();
        std::vector<uint32_t> pixels(50 * 20);
        for (uint32_t& pixel : pixels) {
            const uint32_t alpha = random() % 3 == 0 ? 0 : random() % 2 ? 255 : random() & 255;
            pixel = alpha << 24;
            for (int shift = 0; shift < 24; shift += 8)
                pixel |= (alpha ? random() % (alpha + 1) : 0) << shift;
        }
        DrawPremultiplied(pixels.data(), 50, MakeRect(0, 0, 50, 20));
        for (size_t i = 0; i < pixels.size(); ++i) {
            const uint32_t old = SlowColor(world.Pixels(), before[i]), rest = 255 - (pixels[i] >> 24);
            uint32_t color = 0;
            for (int shift = 16; shift >= 0; shift -= 8)
                color = color << 8 | ((pixels[i] >> shift & 255) +
                                      (uint32_t)((double)((old >> shift & 255) * rest) / 255 + 0.5));
            const uint32_t expected = color == old ? before[i] : PixelFor(world.Pixels(), color);
            wrong += world.At((int)i % 50, (int)i / 50) != expected;
        }
    }
    CHECK(wrong == 0);
}

namespace {

// Counts copies and looks at the last one.
class CopyRecorder : public Recorder {
public:
    void Line(const PortRecord&, Point, Point) override {}
    void Rectangle(const PortRecord&, Verb, const Rect&, const Pattern*) override {}
    void RoundRectangle(const PortRecord&, Verb, const Rect&, Point, const Pattern*) override {}
    void Oval(const PortRecord&, Verb, const Rect&, const Pattern*) override {}
    void Arc(const PortRecord&, Verb, const Rect&, int, int, const Pattern*) override {}
    void Polygon(const PortRecord&, Verb, std::span<const Point>, const Pattern*) override {}
    void Shape(const PortRecord&, Verb, const Region&, const Pattern*) override {}
    void Text(const PortRecord&, const TextSettings&, const TextScale&, Point,
              std::span<const uint8_t>) override
    {
    }
    void Pixels(const PortRecord&, const CopiedPixels& pixels) override
    {
        ++count;
        mode = pixels.mode;
        to = pixels.toRect;
        masked = pixels.mask != nullptr;
    }
    void Comment(const PortRecord&, short, std::span<const uint8_t>) override {}

    int count = 0;
    short mode = 0;
    Rect to = { 0, 0, 0, 0 };
    bool masked = false;
};

} // namespace

TEST_CASE("CopyBits: an open picture takes the copies into its port, and they show only while the pen does")
{
    TestPort from, to;
    const Rect all = MakeRect(0, 0, 40, 30), part = MakeRect(3, 4, 10, 12);
    SetPort(from.port);
    InvertRect(&all);
    SetPort(to.port);
    CopyRecorder recorder;
    FindPort(to.port)->fRecorder = &recorder;
    RgnHandle mask = NewRgn();
    RectRgn(mask, &part);
    HidePen();
    const BitMap *source = GetPortBitMapForCopyBits(from.port), *bits = GetPortBitMapForCopyBits(to.port);
    CopyBits(source, bits, &part, &part, srcOr, mask);
    CHECK(recorder.count == 1);
    CHECK(recorder.mode == srcOr);
    CHECK(EqualRect(&recorder.to, &part));
    CHECK(recorder.masked);
    CopyDeepMask(source, source, bits, &part, &part, &part, srcXor, nullptr);
    CHECK(recorder.count == 2);
    CHECK(recorder.mode == srcXor);
    CHECK(recorder.masked); // by the region that comes nearest
    CHECK(BlackDifferences(to, [](int, int) { return false; }) == 0);
    CopyBits(bits, source, &part, &part, srcCopy, nullptr); // into another port
    CHECK(recorder.count == 2);
    CHECK(from.At(5, 5) == 0xFFFFFF);
    ShowPen();
    CopyBits(source, bits, &all, &all, srcCopy, mask);
    CHECK(recorder.count == 3);
    CHECK(BlackDifferences(to, [](int, int) { return false; }) == 0); // the source was white there
    FindPort(to.port)->fRecorder = nullptr;
    DisposeRgn(mask);
}
