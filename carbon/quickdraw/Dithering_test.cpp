// ditherCopy against a slow version of the same error diffusion, and the mean of what comes together.
#include "CopyReference.h"

#include <Carbon/MacErrors.h>

using namespace lampblack::quickdraw;

namespace {

constexpr int kDepths[] = { 1, 2, 4, 8, 16, 32 };

// Errors in a plane of sixteenths, spread 7 to the right, 3, 5 and 1 below.
std::vector<uint32_t> SlowDithered(const Surface& to, const std::vector<uint32_t>& colors, int width)
{
    const int height = (int)colors.size() / width;
    std::vector<int> errors(colors.size() * 3);
    std::vector<uint32_t> pixels(colors.size());
    const auto spread = [&](int h, int v, int channel, int error) {
        if (h >= 0 && h < width && v < height)
            errors[(size_t)((v * width + h) * 3 + channel)] += error;
    };
    for (int v = 0; v < height; ++v)
        for (int h = 0; h < width; ++h) {
            const size_t at = (size_t)(v * width + h);
            int wanted[3];
            uint32_t color = 0;
            for (int c = 0; c < 3; ++c) {
                const int value = (int)(colors[at] >> (16 - 8 * c) & 255);
                wanted[c] =
                    std::clamp(value + (int)std::floor((errors[at * 3 + (size_t)c] + 8) / 16.0), 0, 255);
                color = color << 8 | (uint32_t)wanted[c];
            }
            pixels[at] = PixelFor(to, color);
            const uint32_t shown = SlowColor(to, pixels[at]);
            for (int c = 0; c < 3; ++c) {
                const int error = wanted[c] - (int)(shown >> (16 - 8 * c) & 255);
                spread(h + 1, v, c, error * 7);
                spread(h - 1, v + 1, c, error * 3);
                spread(h, v + 1, c, error * 5);
                spread(h + 1, v + 1, c, error);
            }
        }
    return pixels;
}

uint32_t SlowMean(const Surface& from, const Rect& fromRect, const Rect& toRect, int h, int v)
{
    const auto end = [](int i, int source, int count) {
        return std::max(SlowNearest(i + 1, source, count), SlowNearest(i, source, count) + 1);
    };
    const int width = fromRect.right - fromRect.left, height = fromRect.bottom - fromRect.top;
    const int toWidth = toRect.right - toRect.left, toHeight = toRect.bottom - toRect.top;
    double sums[3] = {}, count = 0;
    for (int y = SlowNearest(v, height, toHeight); y < end(v, height, toHeight); ++y)
        for (int x = SlowNearest(h, width, toWidth); x < end(h, width, toWidth); ++x) {
            const uint32_t color = SlowColor(from, SlowPixel(from, fromRect.left + x, fromRect.top + y));
            for (int c = 0; c < 3; ++c)
                sums[c] += color >> (16 - 8 * c) & 255;
            ++count;
        }
    uint32_t mean = 0;
    for (const double sum : sums)
        mean = mean << 8 | (uint32_t)std::floor(sum / count + 0.5);
    return mean;
}

bool Shrinks(const Rect& from, const Rect& to)
{
    return from.right - from.left > to.right - to.left || from.bottom - from.top > to.bottom - to.top;
}

int WrongInOne(Dice& random, int fromDepth, int toDepth, int mode)
{
    TestPicture from(random, fromDepth, 8 + Upto(random, 40), 4 + Upto(random, 20), random() % 2),
        to(random, toDepth, 8 + Upto(random, 40), 4 + Upto(random, 20), random() % 2);
    const Rect fromRect = from.Map().bounds, toRect = to.Map().bounds; // all of both
    const Surface source = from.Pixels(), pixels = to.Pixels();
    std::vector<uint8_t> before(pixels.base, pixels.base + to.Size());
    Surface old = pixels;
    old.base = before.data();
    CopyBits(from.Bits(), to.Bits(), &fromRect, &toRect, (short)(mode + ditherCopy), nullptr);
    const int width = toRect.right - toRect.left, height = toRect.bottom - toRect.top;
    const bool means = fromDepth >= 16 && Shrinks(fromRect, toRect);
    std::vector<uint32_t> wanted;
    for (int v = 0; v < height; ++v)
        for (int h = 0; h < width; ++h) {
            const Point at = SlowSource(fromRect, toRect, toRect.left + h, toRect.top + v);
            wanted.push_back(means ? SlowMean(source, fromRect, toRect, h, v)
                                   : SlowColor(source, SlowPixel(source, at.h, at.v)));
        }
    if (fromDepth > toDepth)
        wanted = SlowDithered(pixels, wanted, width);
    else
        for (uint32_t& color : wanted)
            color = PixelFor(pixels, color);
    int wrong = 0;
    for (int v = 0; v < height; ++v)
        for (int h = 0; h < width; ++h) {
            const uint32_t expected = SlowResult(pixels, pixels, mode, wanted[(size_t)(v * width + h)],
                                                 SlowPixel(old, toRect.left + h, toRect.top + v), {});
            wrong += SlowPixel(pixels, toRect.left + h, toRect.top + v) != expected;
        }
    if (wrong) {
        CAPTURE(fromDepth);
        CAPTURE(toDepth);
        CAPTURE(mode);
        CAPTURE(means);
        CHECK(wrong == 0);
    }
    return wrong;
}

} // namespace

TEST_CASE("CopyBits: ditherCopy spreads what a lesser depth cannot show, with any mode and scale")
{
    TestPort current;
    Dice random(31);
    int wrong = 0;
    for (const int from : kDepths)
        for (const int to : kDepths)
            for (const int mode : { srcCopy, srcOr, srcXor, notSrcCopy }) {
                if (to >= from && from < 16)
                    continue;
                for (int round = 0; round < 10 && wrong < 5; ++round)
                    wrong += WrongInOne(random, from, to, mode) != 0;
            }
    CHECK(wrong == 0);
}

TEST_CASE("CopyBits: dithered pixels do not depend on the mask")
{
    TestPort current;
    Dice random(32);
    TestPicture from(random, 32, 60, 30, false), whole(random, 1, 60, 30, false),
        parts(random, 1, 60, 30, false);
    CopyBits(from.Bits(), whole.Bits(), &from.Map().bounds, &whole.Map().bounds, ditherCopy, nullptr);
    RgnHandle piece = NewRgn();
    for (int i = 0; i < 15; ++i) {
        Rect r = parts.Map().bounds;
        r.left = (short)(r.left + i * 4);
        r.right = (short)(r.left + 4);
        RectRgn(piece, &r);
        CopyBits(from.Bits(), parts.Bits(), &from.Map().bounds, &parts.Map().bounds, ditherCopy, piece);
    }
    DisposeRgn(piece);
    int wrong = 0;
    const Surface a = whole.Pixels(), b = parts.Pixels();
    for (int v = 0; v < 30; ++v)
        for (int h = 0; h < 60; ++h)
            wrong += SlowPixel(a, a.bounds.left + h, a.bounds.top + v) !=
                     SlowPixel(b, b.bounds.left + h, b.bounds.top + v);
    CHECK(wrong == 0);
}

TEST_CASE("CopyBits: a grey without its like becomes black and white in its own measure")
{
    TestPort current;
    Dice random(33);
    TestPicture from(random, 32, 64, 64, false), to(random, 1, 64, 64, false);
    const Surface source = from.Pixels(), pixels = to.Pixels();
    for (int v = 0; v < 64; ++v)
        std::fill_n(reinterpret_cast<uint32_t*>(source.base + v * source.rowBytes), 64, 0x404040u);
    CopyBits(from.Bits(), to.Bits(), &from.Map().bounds, &to.Map().bounds, ditherCopy, nullptr);
    int white = 0;
    for (int v = 0; v < 64; ++v)
        for (int h = 0; h < 64; ++h)
            white += SlowPixel(pixels, pixels.bounds.left + h, pixels.bounds.top + v) == 0;
    CHECK(white > 64 * 64 / 4 - 40);
    CHECK(white < 64 * 64 / 4 + 40);
}
