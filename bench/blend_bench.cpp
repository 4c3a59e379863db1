// Blending through a grey mask: the toolkit's two loops, pixman's OVER with an a8 mask (32 bits) and SDL's
// alpha blit (16 bits, which has no mask: the alpha lies in the source) beside the limit, which reads source,
// mask and destination and writes the destination. Masks: "sprite" is a disc of 30 % black in 60 % white with
// an edge of greys; "grey" is half transparent all over.
#include <benchmark/benchmark.h>
#include <lampblack/lampblack.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <memory>
#include <vector>

#include <pixman.h>

#ifdef LAMPBLACK_BENCH_SDL
#include <SDL.h>
#endif

namespace {

enum Mask { kSprite, kGrey };

struct Size {
    int width, height;
};

// The weight of the destination, 0 to 255, of a mask's pixel.
int WeightAt(Mask inMask, Size inSize, int h, int v)
{
    if (inMask == kGrey)
        return 128;
    const double x = (h + 0.5) / inSize.width - 0.5, y = (v + 0.5) / inSize.height - 0.5;
    const double distance = std::sqrt(x * x + y * y);
    constexpr double kInner = 0.309, kOuter = 0.357; // areas of 0.30 and 0.40
    if (distance < kInner)
        return 0;
    if (distance >= kOuter)
        return 255;
    return (int)((distance - kInner) / (kOuter - kInner) * 254);
}

uint32_t GreyPixel(int inDepth, int inWeight)
{
    const uint32_t five = (uint32_t)inWeight >> 3;
    return inDepth == 16 ? five << 10 | five << 5 | five : (uint32_t)inWeight * 0x010101u;
}

class World {
public:
    World(Size inSize, int inDepth) : fSize(inSize), fDepth(inDepth)
    {
        const Rect bounds = { 0, 0, (short)inSize.height, (short)inSize.width };
        NewGWorld(&fWorld, (short)inDepth, &bounds, nullptr, nullptr, 0);
        for (int v = 0; v < inSize.height; ++v)
            for (int h = 0; h < inSize.width; ++h)
                Set(h, v, (uint32_t)(h * 2654435761u ^ (unsigned)v * 40503u));
    }
    World(Size inSize, int inDepth, Mask inMask) : World(inSize, inDepth)
    {
        for (int v = 0; v < inSize.height; ++v)
            for (int h = 0; h < inSize.width; ++h)
                Set(h, v, GreyPixel(inDepth, WeightAt(inMask, inSize, h, v)));
    }
    ~World() { DisposeGWorld(fWorld); }
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    operator GWorldPtr() const { return fWorld; }
    uint8_t* Row(int v) const
    {
        const PixMapHandle map = GetGWorldPixMap(fWorld);
        return reinterpret_cast<uint8_t*>(GetPixBaseAddr(map)) + (ptrdiff_t)v * RowBytes();
    }
    int RowBytes() const { return (int)GetPixRowBytes(GetGWorldPixMap(fWorld)); }

private:
    void Set(int h, int v, uint32_t inPixel)
    {
        if (fDepth == 16)
            reinterpret_cast<uint16_t*>(Row(v))[h] = (uint16_t)(inPixel & 0x7FFF);
        else
            reinterpret_cast<uint32_t*>(Row(v))[h] = inPixel & 0xFFFFFF;
    }

    Size fSize;
    int fDepth;
    GWorldPtr fWorld = nullptr;
};

Size SizeOf(const benchmark::State& state)
{
    return { (int)state.range(0), (int)state.range(1) };
}

struct Scene {
    World source, mask, destination;
    Scene(Size inSize, int inDepth, Mask inMask)
        : source(inSize, inDepth), mask(inSize, inDepth, inMask), destination(inSize, inDepth)
    {
    }
};

void Count(benchmark::State& state, int inDepth)
{
    state.SetItemsProcessed(state.iterations() * state.range(0) * state.range(1));
    state.counters["bytes/pixel"] = inDepth / 8 * 4;
}

// The limit: as many bytes go in and out, with the least work that keeps the compiler from leaving them out.
typedef uint64_t Four __attribute__((vector_size(32)));

#ifdef __x86_64__
__attribute__((target("avx2")))
#endif
void PassThrough(uint8_t* to, const uint8_t* from, const uint8_t* mask, int inBytes)
{
    for (int i = 0; i + 32 <= inBytes; i += 32) {
        Four pixels, weights, below;
        std::memcpy(&pixels, from + i, sizeof pixels);
        std::memcpy(&weights, mask + i, sizeof weights);
        std::memcpy(&below, to + i, sizeof below);
        below = (below & weights) ^ pixels;
        std::memcpy(to + i, &below, sizeof below);
    }
}

template <int kDepth, Mask kMask>
void Limit(benchmark::State& state)
{
    const Size size = SizeOf(state);
#ifdef __x86_64__
    if (!__builtin_cpu_supports("avx2"))
        return state.SkipWithError("the limit is measured with AVX2");
#endif
    const Scene scene(size, kDepth, kMask);
    uint8_t* const to = scene.destination.Row(0);
    const uint8_t *const from = scene.source.Row(0), *const mask = scene.mask.Row(0);
    const ptrdiff_t rowBytes = scene.source.RowBytes();
    for (auto _ : state) {
        for (int v = 0; v < size.height; ++v)
            PassThrough(to + v * rowBytes, from + v * rowBytes, mask + v * rowBytes, size.width * kDepth / 8);
        benchmark::ClobberMemory();
    }
    Count(state, kDepth);
}

template <int kDepth, Mask kMask>
void Lampblack(benchmark::State& state)
{
    const Size size = SizeOf(state);
    const Scene scene(size, kDepth, kMask);
    const Rect where = { 0, 0, (short)size.height, (short)size.width };
    for (auto _ : state) {
        if (kDepth == 16)
            CopyPixelsTransparentMask16(scene.source, scene.mask, scene.destination, &where);
        else
            CopyPixelsTransparentMask32(scene.source, scene.mask, scene.destination, &where);
        benchmark::ClobberMemory();
    }
    Count(state, kDepth);
}

template <Mask kMask>
void Pixman(benchmark::State& state)
{
    const Size size = SizeOf(state);
    const Scene scene(size, 32, kMask);
    const int rowBytes = (size.width + 3) & ~3;
    std::vector<uint32_t> coverage((size_t)(rowBytes / 4) * (size_t)size.height);
    auto* bytes = reinterpret_cast<uint8_t*>(coverage.data());
    for (int v = 0; v < size.height; ++v)
        for (int h = 0; h < size.width; ++h)
            bytes[v * rowBytes + h] = (uint8_t)(255 - WeightAt(kMask, size, h, v));
    const auto image = [&](const World& world) {
        return pixman_image_create_bits(PIXMAN_x8r8g8b8, size.width, size.height,
                                        reinterpret_cast<uint32_t*>(world.Row(0)), world.RowBytes());
    };
    pixman_image_t* source = image(scene.source);
    pixman_image_t* destination = image(scene.destination);
    pixman_image_t* mask =
        pixman_image_create_bits(PIXMAN_a8, size.width, size.height, coverage.data(), rowBytes);
    for (auto _ : state) {
        pixman_image_composite32(PIXMAN_OP_OVER, source, mask, destination, 0, 0, 0, 0, 0, 0, size.width,
                                 size.height);
        benchmark::ClobberMemory();
    }
    pixman_image_unref(source);
    pixman_image_unref(destination);
    pixman_image_unref(mask);
    Count(state, 32);
}

#ifdef LAMPBLACK_BENCH_SDL
template <Mask kMask>
void Sdl16(benchmark::State& state)
{
    const Size size = SizeOf(state);
    const World destination(size, 16);
    SDL_Surface* from =
        SDL_CreateRGBSurfaceWithFormat(0, size.width, size.height, 32, SDL_PIXELFORMAT_ARGB8888);
    for (int v = 0; v < size.height; ++v)
        for (int h = 0; h < size.width; ++h)
            reinterpret_cast<uint32_t*>(static_cast<uint8_t*>(from->pixels) + v * from->pitch)[h] =
                (uint32_t)(255 - WeightAt(kMask, size, h, v)) << 24 | (uint32_t)(h * v & 0xFFFFFF);
    SDL_SetSurfaceBlendMode(from, SDL_BLENDMODE_BLEND);
    SDL_Surface* to = SDL_CreateRGBSurfaceWithFormatFrom(destination.Row(0), size.width, size.height, 15,
                                                         destination.RowBytes(), SDL_PIXELFORMAT_XRGB1555);
    for (auto _ : state) {
        SDL_BlitSurface(from, nullptr, to, nullptr);
        benchmark::ClobberMemory();
    }
    SDL_FreeSurface(from);
    SDL_FreeSurface(to);
    Count(state, 16);
}
#endif

void Sizes(benchmark::internal::Benchmark* bench)
{
    bench->Args({ 64, 64 })->Args({ 640, 480 })->Args({ 1920, 1080 });
}

BENCHMARK(Limit<32, kSprite>)->Apply(Sizes);
BENCHMARK(Lampblack<32, kSprite>)->Apply(Sizes);
BENCHMARK(Pixman<kSprite>)->Apply(Sizes);
BENCHMARK(Limit<32, kGrey>)->Apply(Sizes);
BENCHMARK(Lampblack<32, kGrey>)->Apply(Sizes);
BENCHMARK(Pixman<kGrey>)->Apply(Sizes);
BENCHMARK(Limit<16, kSprite>)->Apply(Sizes);
BENCHMARK(Lampblack<16, kSprite>)->Apply(Sizes);
BENCHMARK(Limit<16, kGrey>)->Apply(Sizes);
BENCHMARK(Lampblack<16, kGrey>)->Apply(Sizes);
#ifdef LAMPBLACK_BENCH_SDL
BENCHMARK(Sdl16<kSprite>)->Apply(Sizes);
BENCHMARK(Sdl16<kGrey>)->Apply(Sizes);
#endif

} // namespace

BENCHMARK_MAIN();
