// Text, copying and regions beside the leanest code that does the same work. Ratios of one run are what
// counts: Limit rows are plain loops, the others pixman, SDL, cairo and Pango.
#include <Carbon/Fonts.h>
#include <Carbon/Quickdraw.h>

#include <benchmark/benchmark.h>
#include <cairo.h>
#include <pixman.h>
#ifdef LAMPBLACK_BENCH_PANGO
#include <pango/pangocairo.h>
#endif
#ifdef LAMPBLACK_BENCH_SDL
#include <SDL.h>
#endif

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
    World(int width, int height, short depth = 32)
    {
        const Rect bounds = { 0, 0, (short)height, (short)width };
        NewGWorld(&fWorld, depth, &bounds, nullptr, nullptr, 0);
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

// Black on white, at the size in which a new port draws.
class CairoWorld {
public:
    CairoWorld()
        : fSurface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, 640, 480)), context(cairo_create(fSurface))
    {
        cairo_set_source_rgb(context, 1, 1, 1);
        cairo_paint(context);
        cairo_set_source_rgb(context, 0, 0, 0);
        cairo_select_font_face(context, "sans", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
        cairo_set_font_size(context, 12);
    }
    ~CairoWorld()
    {
        cairo_destroy(context);
        cairo_surface_destroy(fSurface);
    }
    CairoWorld(const CairoWorld&) = delete;
    CairoWorld& operator=(const CairoWorld&) = delete;

private:
    cairo_surface_t* fSurface;

public:
    cairo_t* const context;
};

void TextMeasureCairo(benchmark::State& state)
{
    const CairoWorld world;
    for (auto _ : state)
        for (const std::string& text : Strings()) {
            cairo_text_extents_t extents;
            cairo_text_extents(world.context, text.c_str(), &extents);
            benchmark::DoNotOptimize(extents.x_advance);
        }
}
BENCHMARK(TextMeasureCairo);

void TextDrawCairo(benchmark::State& state)
{
    const CairoWorld world;
    for (auto _ : state) {
        int line = 0;
        for (const std::string& text : Strings()) {
            cairo_move_to(world.context, 10, 20 + line++ % 450);
            cairo_show_text(world.context, text.c_str());
        }
        benchmark::ClobberMemory();
    }
}
BENCHMARK(TextDrawCairo);

#ifdef LAMPBLACK_BENCH_PANGO
class PangoWorld : public CairoWorld {
public:
    PangoWorld() : layout(pango_cairo_create_layout(context))
    {
        PangoFontDescription* font = pango_font_description_from_string("sans 9");
        pango_layout_set_font_description(layout, font);
        pango_font_description_free(font);
    }
    ~PangoWorld() { g_object_unref(layout); }

    PangoLayout* const layout;
};

void TextMeasurePango(benchmark::State& state)
{
    const PangoWorld world;
    for (auto _ : state)
        for (const std::string& text : Strings()) {
            int width = 0;
            pango_layout_set_text(world.layout, text.data(), (int)text.size());
            pango_layout_get_pixel_size(world.layout, &width, nullptr);
            benchmark::DoNotOptimize(width);
        }
}
BENCHMARK(TextMeasurePango);

void TextDrawPango(benchmark::State& state)
{
    const PangoWorld world;
    for (auto _ : state) {
        int line = 0;
        for (const std::string& text : Strings()) {
            pango_layout_set_text(world.layout, text.data(), (int)text.size());
            cairo_move_to(world.context, 10, 8 + line++ % 450);
            pango_cairo_show_layout(world.context, world.layout);
        }
        benchmark::ClobberMemory();
    }
}
BENCHMARK(TextDrawPango);
#endif

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

class PixmanImage {
public:
    PixmanImage(pixman_format_code_t format, int width, int height)
        : image(pixman_image_create_bits(format, width, height, nullptr, 0))
    {
    }
    ~PixmanImage() { pixman_image_unref(image); }
    PixmanImage(const PixmanImage&) = delete;
    PixmanImage& operator=(const PixmanImage&) = delete;

    pixman_image_t* image;
};

void CopyPixman(benchmark::State& state)
{
    const int width = (int)state.range(0), height = (int)state.range(1);
    PixmanImage from(PIXMAN_x8r8g8b8, width, height), to(PIXMAN_x8r8g8b8, width, height);
    for (auto _ : state) {
        pixman_image_composite32(PIXMAN_OP_SRC, from.image, nullptr, to.image, 0, 0, 0, 0, 0, 0, width,
                                 height);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(CopyPixman)->Args({ 64, 64 })->Args({ 640, 480 })->Args({ 1920, 1080 });

void Scale(benchmark::State& state, int numerator, int denominator)
{
    const int width = (int)state.range(0), height = (int)state.range(1);
    World from(width, height), to(width * numerator / denominator, height * numerator / denominator);
    const Rect source = { 0, 0, (short)height, (short)width };
    const Rect destination = { 0, 0, (short)(height * numerator / denominator),
                               (short)(width * numerator / denominator) };
    for (auto _ : state) {
        CopyBits(from.Bits(), to.Bits(), &source, &destination, srcCopy, nullptr);
        benchmark::ClobberMemory();
    }
}
BENCHMARK_CAPTURE(Scale, Doubling, 2, 1)->Args({ 320, 240 });
BENCHMARK_CAPTURE(Scale, Halving, 1, 2)->Args({ 320, 240 })->Args({ 640, 480 });

void BytesMoved(benchmark::State& state, size_t bytes) // half of them read, half written
{
    std::vector<uint8_t> from(bytes / 2, 1), to(bytes / 2);
    for (auto _ : state) {
        std::memcpy(to.data(), from.data(), to.size());
        benchmark::ClobberMemory();
    }
}

void DoublingLimit(benchmark::State& state)
{
    const int width = (int)state.range(0), height = (int)state.range(1);
    std::vector<uint32_t> from((size_t)(width * height)), to(from.size() * 4);
    for (auto _ : state) {
        for (int v = 0; v < 2 * height; ++v) {
            uint32_t* row = to.data() + v * 2 * width;
            if (v % 2 != 0)
                std::memcpy(row, row - 2 * width, (size_t)width * 8);
            else
                for (int h = 0; h < width; ++h)
                    row[2 * h] = row[2 * h + 1] = from[(size_t)(v / 2 * width + h)];
        }
        benchmark::ClobberMemory();
    }
}
BENCHMARK(DoublingLimit)->Args({ 320, 240 });

void HalvingLimit(benchmark::State& state)
{
    const int width = (int)state.range(0), height = (int)state.range(1);
    std::vector<uint32_t> from((size_t)(width * height)), to(from.size() / 4);
    for (auto _ : state) {
        for (int v = 0; v < height / 2; ++v)
            for (int h = 0; h < width / 2; ++h)
                to[(size_t)(v * width / 2 + h)] = from[(size_t)(v * 2 * width + h * 2)];
        benchmark::ClobberMemory();
    }
}
BENCHMARK(HalvingLimit)->Args({ 320, 240 })->Args({ 640, 480 });

void ScalePixman(benchmark::State& state, int numerator, int denominator)
{
    const int width = (int)state.range(0), height = (int)state.range(1);
    PixmanImage from(PIXMAN_x8r8g8b8, width, height),
        to(PIXMAN_x8r8g8b8, width * numerator / denominator, height * numerator / denominator);
    pixman_transform_t scale;
    pixman_transform_init_scale(&scale, pixman_int_to_fixed(denominator) / numerator,
                                pixman_int_to_fixed(denominator) / numerator);
    pixman_image_set_transform(from.image, &scale);
    pixman_image_set_filter(from.image, PIXMAN_FILTER_NEAREST, nullptr, 0);
    for (auto _ : state) {
        pixman_image_composite32(PIXMAN_OP_SRC, from.image, nullptr, to.image, 0, 0, 0, 0, 0, 0,
                                 width * numerator / denominator, height * numerator / denominator);
        benchmark::ClobberMemory();
    }
}
BENCHMARK_CAPTURE(ScalePixman, Doubling, 2, 1)->Args({ 320, 240 });
BENCHMARK_CAPTURE(ScalePixman, Halving, 1, 2)->Args({ 320, 240 })->Args({ 640, 480 });

// A sprite's mask: a third of it set in a disc, as rows of bits.
std::vector<UInt8> DiscMask(int width, int height, int rowBytes)
{
    std::vector<UInt8> bits((size_t)(rowBytes * height));
    for (int v = 0; v < height; ++v)
        for (int h = 0; h < width; ++h) {
            const double x = (h + 0.5) / width - 0.5, y = (v + 0.5) / height - 0.5;
            if (x * x + y * y < 0.11)
                bits[(size_t)(v * rowBytes + h / 8)] |= (UInt8)(0x80 >> h % 8);
        }
    return bits;
}

void CopyThroughMask(benchmark::State& state)
{
    const short width = (short)state.range(0), height = (short)state.range(1);
    World from(width, height), to(width, height);
    const short rowBytes = (short)((width + 15) / 16 * 2);
    std::vector<UInt8> bits = DiscMask(width, height, rowBytes);
    const Rect r = { 0, 0, height, width };
    const BitMap mask = { reinterpret_cast<Ptr>(bits.data()), rowBytes, r };
    for (auto _ : state) {
        CopyMask(from.Bits(), &mask, to.Bits(), &r, &r, &r);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(CopyThroughMask)->Args({ 64, 64 })->Args({ 640, 480 });

void CopyThroughMaskLimit(benchmark::State& state)
{
    BytesMoved(state, (size_t)(state.range(0) * state.range(1)) * 8);
}
BENCHMARK(CopyThroughMaskLimit)->Args({ 64, 64 })->Args({ 640, 480 });

void CopyThroughMaskPixman(benchmark::State& state)
{
    const int width = (int)state.range(0), height = (int)state.range(1);
    PixmanImage from(PIXMAN_x8r8g8b8, width, height), to(PIXMAN_x8r8g8b8, width, height),
        mask(PIXMAN_a8, width, height);
    const int rowBytes = (width + 7) / 8;
    const std::vector<UInt8> bits = DiscMask(width, height, rowBytes);
    auto* alpha = reinterpret_cast<uint8_t*>(pixman_image_get_data(mask.image));
    for (int v = 0; v < height; ++v)
        for (int h = 0; h < width; ++h)
            alpha[v * pixman_image_get_stride(mask.image) + h] =
                bits[(size_t)(v * rowBytes + h / 8)] >> (7 - h % 8) & 1 ? 0xFF : 0;
    for (auto _ : state) {
        pixman_image_composite32(PIXMAN_OP_OVER, from.image, mask.image, to.image, 0, 0, 0, 0, 0, 0, width,
                                 height);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(CopyThroughMaskPixman)->Args({ 64, 64 })->Args({ 640, 480 });

void Convert(benchmark::State& state, short fromDepth, short toDepth)
{
    World from(640, 480, fromDepth), to(640, 480, toDepth);
    const Rect r = { 0, 0, 480, 640 };
    for (auto _ : state) {
        CopyBits(from.Bits(), to.Bits(), &r, &r, srcCopy, nullptr);
        benchmark::ClobberMemory();
    }
}
BENCHMARK_CAPTURE(Convert, 32To16, 32, 16);
BENCHMARK_CAPTURE(Convert, 16To32, 16, 32);
BENCHMARK_CAPTURE(Convert, 8To32, 8, 32);
BENCHMARK_CAPTURE(Convert, 1To32, 1, 32);
BENCHMARK_CAPTURE(Convert, 32To8, 32, 8);

// Reads and writes the same pixels and makes nothing of them.
template <class From, class To>
void ConvertLimit(benchmark::State& state)
{
    std::vector<From> from(640 * 480, (From)1);
    std::vector<To> to(from.size());
    for (auto _ : state) {
        for (size_t i = 0; i < from.size(); ++i)
            to[i] = (To)from[i];
        benchmark::ClobberMemory();
    }
}
BENCHMARK(ConvertLimit<uint32_t, uint16_t>);
BENCHMARK(ConvertLimit<uint16_t, uint32_t>);
BENCHMARK(ConvertLimit<uint8_t, uint32_t>);
BENCHMARK(ConvertLimit<uint32_t, uint8_t>);

void ConvertPixman(benchmark::State& state, pixman_format_code_t fromFormat, pixman_format_code_t toFormat)
{
    PixmanImage from(fromFormat, 640, 480), to(toFormat, 640, 480);
    for (auto _ : state) {
        pixman_image_composite32(PIXMAN_OP_SRC, from.image, nullptr, to.image, 0, 0, 0, 0, 0, 0, 640, 480);
        benchmark::ClobberMemory();
    }
}
BENCHMARK_CAPTURE(ConvertPixman, 32To16, PIXMAN_x8r8g8b8, PIXMAN_x1r5g5b5);
BENCHMARK_CAPTURE(ConvertPixman, 16To32, PIXMAN_x1r5g5b5, PIXMAN_x8r8g8b8);

#ifdef LAMPBLACK_BENCH_SDL
void BlitSDL(benchmark::State& state, int width, int height, uint32_t fromFormat, uint32_t toFormat)
{
    const int fromDepth = (int)SDL_BITSPERPIXEL(fromFormat), toDepth = (int)SDL_BITSPERPIXEL(toFormat);
    SDL_Surface* from = SDL_CreateRGBSurfaceWithFormat(0, width, height, fromDepth, fromFormat);
    SDL_Surface* to = SDL_CreateRGBSurfaceWithFormat(0, width, height, toDepth, toFormat);
    for (auto _ : state) {
        SDL_BlitSurface(from, nullptr, to, nullptr);
        benchmark::ClobberMemory();
    }
    SDL_FreeSurface(from);
    SDL_FreeSurface(to);
}
BENCHMARK_CAPTURE(BlitSDL, Copy64, 64, 64, SDL_PIXELFORMAT_RGB888, SDL_PIXELFORMAT_RGB888);
BENCHMARK_CAPTURE(BlitSDL, Copy640, 640, 480, SDL_PIXELFORMAT_RGB888, SDL_PIXELFORMAT_RGB888);
BENCHMARK_CAPTURE(BlitSDL, 32To16, 640, 480, SDL_PIXELFORMAT_RGB888, SDL_PIXELFORMAT_RGB555);
BENCHMARK_CAPTURE(BlitSDL, 8To32, 640, 480, SDL_PIXELFORMAT_INDEX8, SDL_PIXELFORMAT_RGB888);

// Its masked copy: runs of the picture itself, prepared once.
void CopyThroughMaskSDL(benchmark::State& state)
{
    const int width = (int)state.range(0), height = (int)state.range(1), rowBytes = (width + 7) / 8;
    SDL_Surface* from = SDL_CreateRGBSurfaceWithFormat(0, width, height, 32, SDL_PIXELFORMAT_RGB888);
    SDL_Surface* to = SDL_CreateRGBSurfaceWithFormat(0, width, height, 32, SDL_PIXELFORMAT_RGB888);
    const std::vector<UInt8> bits = DiscMask(width, height, rowBytes);
    auto* pixels = static_cast<uint32_t*>(from->pixels);
    for (int i = 0; i < width * height; ++i)
        pixels[i] =
            bits[(size_t)(i / width * rowBytes + i % width / 8)] >> (7 - i % width % 8) & 1 ? 0x123456 : 0;
    SDL_SetColorKey(from, SDL_TRUE, 0);
    SDL_SetSurfaceRLE(from, 1);
    for (auto _ : state) {
        SDL_BlitSurface(from, nullptr, to, nullptr);
        benchmark::ClobberMemory();
    }
    SDL_FreeSurface(from);
    SDL_FreeSurface(to);
}
BENCHMARK(CopyThroughMaskSDL)->Args({ 64, 64 })->Args({ 640, 480 });
#endif

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

void CopyThroughRegionPixman(benchmark::State& state)
{
    PixmanImage from(PIXMAN_x8r8g8b8, 640, 480), to(PIXMAN_x8r8g8b8, 640, 480);
    pixman_region32_t region;
    pixman_region32_init(&region);
    for (const Rect& r : Checkers(200, 10))
        pixman_region32_union_rect(&region, &region, r.left, r.top, 50, 15);
    pixman_image_set_clip_region32(to.image, &region);
    for (auto _ : state) {
        pixman_image_composite32(PIXMAN_OP_SRC, from.image, nullptr, to.image, 0, 0, 0, 0, 0, 0, 640, 480);
        benchmark::ClobberMemory();
    }
    pixman_region32_fini(&region);
}
BENCHMARK(CopyThroughRegionPixman);

void Combine(benchmark::State& state, void (*inCombine)(RgnHandle, RgnHandle, RgnHandle))
{
    RgnHandle a = NewRgn(), b = NewRgn(), piece = NewRgn(), result = NewRgn();
    for (const Rect& r : Checkers((int)state.range(0), 100)) {
        RectRgn(piece, &r);
        UnionRgn(a, piece, a);
    }
    CopyRgn(a, b);
    OffsetRgn(b, 25, 7);
    for (auto _ : state)
        inCombine(a, b, result);
    for (RgnHandle r : { a, b, piece, result })
        DisposeRgn(r);
}
BENCHMARK_CAPTURE(Combine, Union, UnionRgn)->Arg(10)->Arg(1000)->Arg(10000);
BENCHMARK_CAPTURE(Combine, Intersection, SectRgn)->Arg(10)->Arg(1000)->Arg(10000);

using PixmanCombine = pixman_bool_t (*)(pixman_region32_t*, const pixman_region32_t*,
                                        const pixman_region32_t*);

void CombinePixman(benchmark::State& state, PixmanCombine inCombine)
{
    pixman_region32_t a, b, result;
    pixman_region32_init(&a);
    pixman_region32_init(&b);
    pixman_region32_init(&result);
    for (const Rect& r : Checkers((int)state.range(0), 100))
        pixman_region32_union_rect(&a, &a, r.left, r.top, 50, 15);
    pixman_region32_copy(&b, &a);
    pixman_region32_translate(&b, 25, 7);
    for (auto _ : state)
        inCombine(&result, &a, &b);
    for (pixman_region32_t* r : { &a, &b, &result })
        pixman_region32_fini(r);
}
BENCHMARK_CAPTURE(CombinePixman, Union, pixman_region32_union)->Arg(10)->Arg(1000)->Arg(10000);
BENCHMARK_CAPTURE(CombinePixman, Intersection, pixman_region32_intersect)->Arg(10)->Arg(1000)->Arg(10000);

} // namespace

BENCHMARK_MAIN();
