// Blending through a grey mask: to the bit, and inside the memory of the worlds.
#include <doctest/doctest.h>
#include <lampblack/lampblack.h>

#include <concepts>
#include <cstring>
#include <random>
#include <vector>

#include "CallLog.h"
#include "graphics/Blending.h"

LAMPBLACK_WATCH(Boolean, LockPixels, (PixMapHandle pm), (pm))
LAMPBLACK_WATCH(void, UnlockPixels, (PixMapHandle pm), (pm))
LAMPBLACK_WATCH(Ptr, GetPixBaseAddr, (PixMapHandle pm), (pm))

namespace {

using namespace lampblack::graphics;

// What a blended channel is, said as plainly as can be.
uint32_t Reference16(uint32_t inDestination, uint32_t inSource, uint32_t inMask)
{
    if (inMask == 0x7FFF)
        return inDestination;
    const uint32_t a = inMask & 0x1F;
    uint32_t result = 0;
    for (const int shift : { 10, 5, 0 }) {
        const uint32_t d = inDestination >> shift & 0x1F, s = inSource >> shift & 0x1F;
        result |= (d * a / 32 + s * (32 - a) / 32) << shift;
    }
    return result;
}

uint32_t Reference32(uint32_t inDestination, uint32_t inSource, uint32_t inMask)
{
    if (inMask == 0x00FFFFFF)
        return inDestination;
    const uint32_t a = inMask & 0xFF;
    uint32_t result = 0;
    for (const int shift : { 16, 8, 0 }) {
        const uint32_t d = inDestination >> shift & 0xFF, s = inSource >> shift & 0xFF;
        result |= (d * a / 256 + s * (255 - a) / 256) << shift;
    }
    return result;
}

struct Depth16 {
    using Format = Pixels16;
    static constexpr short kDepth = 16;
    static uint32_t Blend(uint32_t d, uint32_t s, uint32_t m) { return Reference16(d, s, m); }
    static void Copy(GWorldPtr s, GWorldPtr m, GWorldPtr d, const Rect* r)
    {
        CopyPixelsTransparentMask16(s, m, d, r);
    }
};

struct Depth32 {
    using Format = Pixels32;
    static constexpr short kDepth = 32;
    static uint32_t Blend(uint32_t d, uint32_t s, uint32_t m) { return Reference32(d, s, m); }
    static void Copy(GWorldPtr s, GWorldPtr m, GWorldPtr d, const Rect* r)
    {
        CopyPixelsTransparentMask32(s, m, d, r);
    }
};

template <class Depth>
class World {
public:
    using Pixel = typename Depth::Format::Pixel;

    World(int inWidth, int inHeight) : fWidth(inWidth), fHeight(inHeight)
    {
        const Rect bounds = { 0, 0, (short)inHeight, (short)inWidth };
        REQUIRE(NewGWorld(&fWorld, Depth::kDepth, &bounds, nullptr, nullptr, 0) == noErr);
    }
    ~World() { DisposeGWorld(fWorld); }
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    operator GWorldPtr() const { return fWorld; }
    PixMapHandle Map() const { return GetGWorldPixMap(fWorld); }
    Pixel* Row(int v) const
    {
        return reinterpret_cast<Pixel*>((**Map()).baseAddr + (ptrdiff_t)v * ((**Map()).rowBytes & 0x3FFF));
    }
    Pixel& At(int h, int v) const { return Row(v)[h]; }
    template <std::invocable Value>
    void Fill(Value&& inValue) const
    {
        for (int v = 0; v < fHeight; ++v)
            for (int h = 0; h < fWidth; ++h)
                At(h, v) = (Pixel)inValue();
    }
    void Fill(uint32_t inPixel) const
    {
        Fill([=] { return inPixel; });
    }
    std::vector<Pixel> Pixels() const
    {
        std::vector<Pixel> pixels;
        for (int v = 0; v < fHeight; ++v)
            pixels.insert(pixels.end(), Row(v), Row(v) + fWidth);
        return pixels;
    }

    const int fWidth, fHeight;

private:
    GWorldPtr fWorld = nullptr;
};

// White, black, grey, white with its top bits set, and anything at all.
template <class Depth>
auto MaskPixels(std::mt19937& ioRandom)
{
    return [&ioRandom] {
        constexpr uint32_t kWhite = Depth::Format::kWhite;
        const uint32_t any = (uint32_t)ioRandom();
        switch (any >> 29) {
        case 0:
        case 1: return kWhite;
        case 2: return 0u;
        case 3: return kWhite | (Depth::kDepth == 16 ? 0x8000u : any & 0xFF000000u);
        default: return any;
        }
    };
}

// One blend of worlds of the sizes against the reference, pixel by pixel.
template <class Depth>
bool AgreesWithReference(std::mt19937& ioRandom, int inWidth, int inHeight, int inToWidth, int inToHeight,
                         int h, int v)
{
    const World<Depth> source(inWidth, inHeight), mask(inWidth, inHeight), destination(inToWidth, inToHeight);
    source.Fill(ioRandom);
    mask.Fill(MaskPixels<Depth>(ioRandom));
    destination.Fill(ioRandom);
    auto expected = destination.Pixels();
    for (int y = 0; y < inHeight; ++y)
        for (int x = 0; x < inWidth; ++x)
            if (x + h >= 0 && x + h < inToWidth && y + v >= 0 && y + v < inToHeight) {
                auto& pixel = expected[(size_t)(y + v) * (size_t)inToWidth + (size_t)(x + h)];
                pixel = (typename World<Depth>::Pixel)Depth::Blend(pixel, source.At(x, y), mask.At(x, y));
            }
    const Rect where = { (short)v, (short)h, (short)(v + inHeight), (short)(h + inWidth) };
    Depth::Copy(source, mask, destination, &where);
    return destination.Pixels() == expected;
}

template <class Depth>
void CheckRandomBlends()
{
    std::mt19937 random(Depth::kDepth);
    const auto below = [&random](int inEnd) { return (int)(random() % (unsigned)inEnd); };
    for (int i = 0; i < 1500; ++i) {
        const int width = 3 + below(70), height = 1 + below(20), toWidth = 3 + below(90),
                  toHeight = 1 + below(30);
        const int h = below(width + toWidth) - width, v = below(height + toHeight) - height;
        CAPTURE(i);
        REQUIRE(AgreesWithReference<Depth>(random, width, height, toWidth, toHeight, h, v));
    }
}

// Every loop of this machine against the plain one, in rows with slack.
template <class Format>
bool LoopIsPlain(BlendProc inLoop, unsigned inSeed)
{
    using Pixel = typename Format::Pixel;
    std::mt19937 random(inSeed);
    const int columns = 1 + (int)(random() % 100), rows = 1 + (int)(random() % 4),
              slack = (int)(random() % 5);
    const size_t count = (size_t)((columns + slack) * rows);
    std::vector<Pixel> source(count), mask(count), destination(count);
    for (size_t i = 0; i < count; ++i) {
        source[i] = (Pixel)random();
        destination[i] = (Pixel)random();
        mask[i] = random() % 3 ? (Pixel)random() : Format::kWhite;
    }
    const ptrdiff_t rowBytes = (ptrdiff_t)(columns + slack) * (ptrdiff_t)sizeof(Pixel);
    const auto blended = [&](BlendProc inProc) {
        std::vector<Pixel> result = destination;
        inProc({ reinterpret_cast<const UInt8*>(source.data()), reinterpret_cast<const UInt8*>(mask.data()),
                 reinterpret_cast<UInt8*>(result.data()), rowBytes, rowBytes, columns, rows });
        return result;
    };
    return blended(inLoop) == blended(&BlendPlainly<Format>);
}

template <class Format>
bool AllLoopsArePlain()
{
    for (unsigned seed = 0; seed < 5000; ++seed) {
        if (!LoopIsPlain<Format>(FastestBlend<Format>(), seed))
            return false;
#ifdef __x86_64__
        if (!LoopIsPlain<Format>(&BlendBySse2<Format>, seed))
            return false;
        if (__builtin_cpu_supports("avx2") && !LoopIsPlain<Format>(&BlendByAvx2<Format>, seed))
            return false;
#endif
    }
    return true;
}

template <class Depth>
typename World<Depth>::Pixel BlendOne(uint32_t inDestination, uint32_t inSource, uint32_t inMask)
{
    const World<Depth> source(4, 1), mask(4, 1), destination(4, 1);
    source.Fill(inSource);
    mask.Fill(inMask);
    destination.Fill(inDestination);
    const Rect where = { 0, 0, 1, 4 };
    Depth::Copy(source, mask, destination, &where);
    return destination.At(2, 0);
}

} // namespace

TEST_CASE(
    "CopyPixelsTransparentMask16: random worlds, masks and places, clipped on every side, are the reference")
{
    CheckRandomBlends<Depth16>();
}

TEST_CASE(
    "CopyPixelsTransparentMask32: random worlds, masks and places, clipped on every side, are the reference")
{
    CheckRandomBlends<Depth32>();
}

TEST_CASE(
    "CopyPixelsTransparentMask: the loops of every width are the plain loop, with odd sizes and row slack")
{
    CHECK(AllLoopsArePlain<Pixels16>());
    CHECK(AllLoopsArePlain<Pixels32>());
}

TEST_CASE("CopyPixelsTransparentMask: every weight with every channel value")
{
    for (uint32_t weight = 0; weight < 256; ++weight)
        for (uint32_t value = 0; value < 256; ++value) {
            const uint32_t other = value * 167 & 0xFF;
            const uint32_t d = value * 0x010101, s = other << 16 | value << 8 | (255 - value);
            REQUIRE(Pixels32::Blend(d, s, weight) == (weight == 0x00FFFFFF ? d : Reference32(d, s, weight)));
            const auto d16 = (UInt16)(value * 129 & 0x7FFF), s16 = (UInt16)(other * 257 & 0x7FFF);
            REQUIRE(Pixels16::Blend(d16, s16, (UInt16)(weight & 0x1F)) ==
                    Reference16(d16, s16, weight & 0x1F));
        }
}

TEST_CASE(
    "CopyPixelsTransparentMask: an exactly white mask leaves every bit, white with top bits set is blended")
{
    CHECK(BlendOne<Depth16>(0xFFFF, 0x1234, 0x7FFF) == 0xFFFF);
    CHECK(BlendOne<Depth16>(0x7FFF, 0x0000, 0xFFFF) == Reference16(0x7FFF, 0, 0xFFFF));
    CHECK(BlendOne<Depth16>(0x7FFF, 0x0000, 0xFFFF) == 0x7BDE);
    CHECK(BlendOne<Depth32>(0xAB123456, 0x00654321, 0x00FFFFFF) == 0xAB123456);
    CHECK(BlendOne<Depth32>(0x00FFFFFF, 0x00000000, 0xFFFFFFFF) == 0x00FEFEFE);
}

TEST_CASE("CopyPixelsTransparentMask: black copies 16 bits exactly and darkens 32 bits a little")
{
    CHECK(BlendOne<Depth16>(0x1111, 0xFFFF, 0) == 0x7FFF); // the top bit is written 0
    CHECK(BlendOne<Depth16>(0x1111, 0x1234, 0) == 0x1234);
    CHECK(BlendOne<Depth32>(0x00111111, 0x00FFFFFF, 0) == 0x00FEFEFE);
    CHECK(BlendOne<Depth32>(0x00111111, 0xFF800100, 0) == 0x007F0000);
}

TEST_CASE("CopyPixelsTransparentMask16: pure blue is a weight of 31, not white")
{
    const uint32_t d = 20 << 10 | 9 << 5 | 31, s = 31 << 10 | 30 << 5 | 2;
    const uint32_t expected =
        (20 * 31 / 32 + 31 / 32) << 10 | (9 * 31 / 32 + 30 / 32) << 5 | (31 * 31 / 32 + 2 / 32);
    CHECK(BlendOne<Depth16>(d, s, 0x001F) == expected);
}

TEST_CASE("CopyPixelsTransparentMask: entirely outside, nothing is locked and nothing changes")
{
    const World<Depth32> source(8, 8), mask(8, 8), destination(8, 8);
    destination.Fill(0x00123456);
    const auto before = destination.Pixels();
    const CallLog log;
    for (const Rect& where : { Rect{ 8, 0, 16, 8 }, Rect{ -8, 0, 0, 8 }, Rect{ 0, 8, 8, 16 },
                               Rect{ 0, -8, 8, 0 }, Rect{ 3, 3, 3, 3 } })
        CopyPixelsTransparentMask32(source, mask, destination, &where);
    CHECK(log.Calls().empty());
    CHECK(destination.Pixels() == before);
}

TEST_CASE("CopyPixelsTransparentMask: locks the three worlds whatever their state, and unlocks them")
{
    const World<Depth16> source(8, 8), mask(8, 8), destination(8, 8);
    LockPixels(mask.Map());
    const Rect where = { 0, 0, 8, 8 };
    {
        const CallLog log;
        CopyPixelsTransparentMask16(source, mask, destination, &where);
        CHECK(log.Calls() == "LockPixels LockPixels LockPixels GetPixBaseAddr GetPixBaseAddr GetPixBaseAddr "
                             "UnlockPixels UnlockPixels UnlockPixels");
    }
    for (const PixMapHandle map : { source.Map(), mask.Map(), destination.Map() })
        CHECK((GetPixelsState(map) & pixelsLocked) == 0);
}

TEST_CASE(
    "CopyPixelsTransparentMask: a rectangle larger than the source, or a smaller mask, stays in their memory")
{
    const World<Depth32> source(5, 5), mask(3, 2), destination(40, 40);
    source.Fill(0x00808080);
    mask.Fill(0u);
    destination.Fill(0x00010203);
    const Rect where = { -3, -2, 40, 40 };
    CopyPixelsTransparentMask32(source, mask, destination, &where);
    CHECK(destination.At(39, 39) == 0x00010203);
}

TEST_CASE("CopyPixelsTransparentMask: worlds of another depth than the loop's stay in their memory")
{
    const World<Depth16> narrow(9, 9);
    const World<Depth32> wide(9, 9);
    wide.Fill(0x00808080);
    narrow.Fill(0u);
    const Rect where = { 0, 0, 9, 9 };
    CopyPixelsTransparentMask32(narrow, narrow, narrow, &where);
    CopyPixelsTransparentMask32(narrow, wide, wide, &where);
    CopyPixelsTransparentMask16(wide, narrow, wide, &where);
    CopyPixelsTransparentMask16(wide, wide, narrow, &where);
    CHECK(IsValidPort(wide));
}

TEST_CASE("CopyPixelsTransparentMask: a destination that does not start at (0,0) is addressed as if it did")
{
    const World<Depth32> source(4, 4), mask(4, 4);
    source.Fill(0x00646464);
    mask.Fill(0u);
    const Rect bounds = { 2, 2, 12, 12 }, where = { 3, 3, 7, 7 };
    GWorldPtr shifted = nullptr;
    REQUIRE(NewGWorld(&shifted, 32, &bounds, nullptr, nullptr, 0) == noErr);
    CopyPixelsTransparentMask32(source, mask, shifted, &where);
    const PixMapHandle map = GetGWorldPixMap(shifted);
    const auto* pixels = reinterpret_cast<const UInt32*>(GetPixBaseAddr(map));
    const auto row = (size_t)(GetPixRowBytes(map) / 4);
    CHECK(pixels[3 * row + 3] == 0x00636363);
    CHECK(pixels[1 * row + 1] == 0);
    DisposeGWorld(shifted);
}

TEST_CASE(
    "CopyPixelsTransparentMask: within one world a pixel written is read again, as the plain walk has it")
{
    std::mt19937 random(7);
    const World<Depth32> world(40, 3), mask(40, 3);
    world.Fill([&] { return random() & 0xFFFFFF; });
    mask.Fill([&] { return random() & 0xFFFFFF; });
    auto expected = world.Pixels();
    for (int v = 0; v < 3; ++v)
        for (int h = 0; h < 39; ++h) {
            auto& to = expected[(size_t)(v * 40 + h + 1)];
            to = Reference32(to, expected[(size_t)(v * 40 + h)], mask.At(h, v));
        }
    const Rect where = { 0, 1, 3, 41 };
    CopyPixelsTransparentMask32(world, mask, world, &where);
    CHECK(world.Pixels() == expected);
}

TEST_CASE("CopyPixelsTransparentMask: null and disposed worlds do nothing")
{
    const World<Depth32> world(4, 4);
    world.Fill(0x00445566);
    const Rect bounds = { 0, 0, 4, 4 };
    GWorldPtr gone = nullptr;
    REQUIRE(NewGWorld(&gone, 32, &bounds, nullptr, nullptr, 0) == noErr);
    DisposeGWorld(gone);
    for (const GWorldPtr bad : { GWorldPtr(nullptr), gone }) {
        CopyPixelsTransparentMask32(bad, world, world, &bounds);
        CopyPixelsTransparentMask32(world, bad, world, &bounds);
        CopyPixelsTransparentMask32(world, world, bad, &bounds);
    }
    CopyPixelsTransparentMask32(world, world, world, nullptr);
    CHECK(world.At(2, 2) == 0x00445566);
}
