// Text, copying and regions beside the leanest code that does the same work. Ratios of one run are what
// counts: Limit rows are plain loops, Peer rows are pixman.
#include <Carbon/Fonts.h>
#include <Carbon/Quickdraw.h>

#include <benchmark/benchmark.h>
#include <pixman.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace {

std::vector<std::string> MakeStrings()
{
    std::mt19937 random(1);
    std::vector<std::string> strings;
    for (int i = 0; i < 1000; ++i) {
        std::string text;
        for (unsigned n = 8 + random() % 7; n > 0; --n)
            text.push_back((char)('a' + random() % 26));
        strings.push_back(text);
    }
    return strings;
}

const std::vector<std::string>& Strings()
{
    static const std::vector<std::string> strings = MakeStrings();
    return strings;
}

class World {
public:
    World(int width, int height)
    {
        const Rect bounds = { 0, 0, (short)height, (short)width };
        NewGWorld(&fWorld, 32, &bounds, nullptr, nullptr, 0);
        SetGWorld(fWorld, nullptr);
        EraseRect(&bounds);
    }
    ~World() { DisposeGWorld(fWorld); }
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    const BitMap* Bits() const { return GetPortBitMapForCopyBits(fWorld); }
    uint32_t* Pixels() const { return reinterpret_cast<uint32_t*>(GetPixBaseAddr(GetGWorldPixMap(fWorld))); }

private:
    GWorldPtr fWorld = nullptr;
};

void TextMeasureLimit(benchmark::State& state)
{
    World world(10, 10);
    short advances[256];
    for (int c = 0; c < 256; ++c)
        advances[c] = CharWidth((short)c);
    for (auto _ : state)
        for (const std::string& text : Strings()) {
            int width = 0;
            for (const unsigned char c : text)
                width += advances[c];
            benchmark::DoNotOptimize(width);
        }
}
BENCHMARK(TextMeasureLimit);

void TextMeasure(benchmark::State& state)
{
    World world(10, 10);
    for (auto _ : state)
        for (const std::string& text : Strings())
            benchmark::DoNotOptimize(TextWidth(text.data(), 0, (short)text.size()));
}
BENCHMARK(TextMeasure);

struct CachedGlyph {
    int width = 0, height = 0, left = 0, top = 0, advance = 0;
    std::vector<uint8_t> coverage;
};

// Coverage of a glyph as the platform draws it: black on white, so that a pixel's blue is what it lacks.
CachedGlyph Capture(char c)
{
    World world(40, 40);
    MoveTo(10, 25);
    DrawChar(c);
    CachedGlyph glyph;
    glyph.advance = CharWidth(c);
    int left = 40, top = 40, right = 0, bottom = 0;
    for (int v = 0; v < 40; ++v)
        for (int h = 0; h < 40; ++h)
            if (world.Pixels()[v * 40 + h] != 0xFFFFFF) {
                left = std::min(left, h), right = std::max(right, h + 1);
                top = std::min(top, v), bottom = std::max(bottom, v + 1);
            }
    glyph.left = left - 10, glyph.top = top - 25, glyph.width = right - left, glyph.height = bottom - top;
    for (int v = top; v < bottom; ++v)
        for (int h = left; h < right; ++h)
            glyph.coverage.push_back((uint8_t)(255 - (world.Pixels()[v * 40 + h] & 0xFF)));
    return glyph;
}

void DrawCached(uint32_t* pixels, int row, const CachedGlyph& glyph)
{
    const uint8_t* coverage = glyph.coverage.data();
    for (int v = 0; v < glyph.height; ++v, pixels += row)
        for (int h = 0; h < glyph.width; ++h) {
            const uint32_t a = *coverage++;
            if (a == 0)
                continue;
            const uint32_t d = pixels[h], rest = 256 - a - (a >> 7);
            pixels[h] = (((d & 0xFF00FF) * rest >> 8) & 0xFF00FF) | (((d & 0xFF00) * rest >> 8) & 0xFF00);
        }
}

void TextDrawLimit(benchmark::State& state)
{
    std::vector<CachedGlyph> glyphs(256);
    for (int c = 'a'; c <= 'z'; ++c)
        glyphs[(size_t)c] = Capture((char)c);
    World world(640, 480);
    uint32_t* pixels = world.Pixels();
    for (auto _ : state) {
        int line = 0;
        for (const std::string& text : Strings()) {
            int h = 10;
            const int v = 20 + line++ % 450;
            for (const unsigned char c : text) {
                DrawCached(pixels + (v + glyphs[c].top) * 640 + h + glyphs[c].left, 640, glyphs[c]);
                h += glyphs[c].advance;
            }
        }
        benchmark::ClobberMemory();
    }
}
BENCHMARK(TextDrawLimit);

void TextDraw(benchmark::State& state)
{
    World world(640, 480);
    for (auto _ : state) {
        int line = 0;
        for (const std::string& text : Strings()) {
            MoveTo(10, (short)(20 + line++ % 450));
            DrawText(text.data(), 0, (short)text.size());
        }
        benchmark::ClobberMemory();
    }
}
BENCHMARK(TextDraw);

void CopyLimit(benchmark::State& state)
{
    const int width = (int)state.range(0), height = (int)state.range(1);
    World from(width, height), to(width, height);
    const uint32_t* source = from.Pixels();
    uint32_t* destination = to.Pixels();
    for (auto _ : state) {
        for (int v = 0; v < height; ++v)
            std::memcpy(destination + v * width, source + v * width, (size_t)width * 4);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(CopyLimit)->Args({ 64, 64 })->Args({ 640, 480 })->Args({ 1920, 1080 });

void Copy(benchmark::State& state)
{
    const short width = (short)state.range(0), height = (short)state.range(1);
    World from(width, height), to(width, height);
    const Rect r = { 0, 0, height, width };
    for (auto _ : state) {
        CopyBits(from.Bits(), to.Bits(), &r, &r, srcCopy, nullptr);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(Copy)->Args({ 64, 64 })->Args({ 640, 480 })->Args({ 1920, 1080 });

// What doubling or halving moves: the larger of the two pictures.
void Scale(benchmark::State& state, int numerator, int denominator)
{
    World from(320, 240), to(320 * numerator / denominator, 240 * numerator / denominator);
    const Rect source = { 0, 0, 240, 320 };
    const Rect destination = { 0, 0, (short)(240 * numerator / denominator),
                               (short)(320 * numerator / denominator) };
    for (auto _ : state) {
        CopyBits(from.Bits(), to.Bits(), &source, &destination, srcCopy, nullptr);
        benchmark::ClobberMemory();
    }
}
BENCHMARK_CAPTURE(Scale, Doubling, 2, 1);
BENCHMARK_CAPTURE(Scale, Halving, 1, 2);

void ScaleLimit(benchmark::State& state, int width, int height)
{
    std::vector<uint32_t> from((size_t)(width * height)), to(from.size());
    for (auto _ : state) {
        std::memcpy(to.data(), from.data(), from.size() * 4);
        benchmark::ClobberMemory();
    }
}
BENCHMARK_CAPTURE(ScaleLimit, Doubling, 640, 480);
BENCHMARK_CAPTURE(ScaleLimit, Halving, 160, 120);

// 200 rectangles in rows of ten, with gaps.
std::vector<Rect> Checkers(int count, int columns)
{
    std::vector<Rect> rects;
    for (int i = 0; i < count; ++i) {
        const short h = (short)(i % columns * 60), v = (short)(i / columns * 20);
        rects.push_back({ v, h, (short)(v + 15), (short)(h + 50) });
    }
    return rects;
}

void CopyThroughRegion(benchmark::State& state)
{
    World from(640, 480), to(640, 480);
    RgnHandle region = NewRgn(), piece = NewRgn();
    for (const Rect& r : Checkers(200, 10)) {
        RectRgn(piece, &r);
        UnionRgn(region, piece, region);
    }
    const Rect all = { 0, 0, 480, 640 };
    for (auto _ : state) {
        CopyBits(from.Bits(), to.Bits(), &all, &all, srcCopy, region);
        benchmark::ClobberMemory();
    }
    DisposeRgn(region);
    DisposeRgn(piece);
}
BENCHMARK(CopyThroughRegion);

void CopyThroughRegionLimit(benchmark::State& state)
{
    std::vector<uint32_t> from(200 * 15 * 50), to(from.size());
    for (auto _ : state) {
        std::memcpy(to.data(), from.data(), from.size() * 4);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(CopyThroughRegionLimit);

void RegionUnion(benchmark::State& state)
{
    RgnHandle a = NewRgn(), b = NewRgn(), piece = NewRgn(), result = NewRgn();
    for (const Rect& r : Checkers((int)state.range(0), 100)) {
        RectRgn(piece, &r);
        UnionRgn(a, piece, a);
    }
    CopyRgn(a, b);
    OffsetRgn(b, 25, 7);
    for (auto _ : state) {
        UnionRgn(a, b, result);
        SectRgn(a, b, result);
    }
    for (RgnHandle r : { a, b, piece, result })
        DisposeRgn(r);
}
BENCHMARK(RegionUnion)->Arg(10)->Arg(1000)->Arg(10000);

void RegionUnionPeer(benchmark::State& state)
{
    pixman_region32_t a, b, result;
    pixman_region32_init(&a);
    pixman_region32_init(&b);
    pixman_region32_init(&result);
    for (const Rect& r : Checkers((int)state.range(0), 100))
        pixman_region32_union_rect(&a, &a, r.left, r.top, 50, 15);
    pixman_region32_copy(&b, &a);
    pixman_region32_translate(&b, 25, 7);
    for (auto _ : state) {
        pixman_region32_union(&result, &a, &b);
        pixman_region32_intersect(&result, &a, &b);
    }
    for (pixman_region32_t* r : { &a, &b, &result })
        pixman_region32_fini(r);
}
BENCHMARK(RegionUnionPeer)->Arg(10)->Arg(1000)->Arg(10000);

} // namespace

BENCHMARK_MAIN();
