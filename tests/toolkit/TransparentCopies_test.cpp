// Blending through a grey mask: to the bit, and inside the memory of the worlds.
#include <doctest/doctest.h>
#include <lampblack/lampblack.h>

#include <concepts>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "CallLog.h"
#include "graphics/Blending.h"

namespace {

using namespace lampblack::graphics;

std::vector<PixMapHandle> gLocked, gUnlocked;

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
        case 3: return kWhite | (Depth::kDepth == 16 ? 0x8000u : (uint32_t)ioRandom() & 0xFF000000u);
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

struct Loop {
    std::string name;
    BlendProc proc;
};

// Every loop that this machine can run, whichever it would choose.
template <class Format>
std::vector<Loop> Loops()
{
    std::vector<Loop> loops = { { "plain", &BlendPlainly<Format> },
                                { "chosen for few bytes", FastestBlend<Format>(0) },
                                { "chosen for many bytes", FastestBlend<Format>(1 << 30) } };
#ifdef __x86_64__
    loops.push_back({ "16 bytes", &BlendBySse2<Format> });
    if (__builtin_cpu_supports("avx2"))
        loops.push_back({ "32 bytes", &BlendByAvx2<Format> });
    if (__builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw"))
        loops.push_back({ "64 bytes", &BlendByAvx512<Format> });
#endif
    return loops;
}

// Rows of source and mask, and longer ones of destination, at addresses that are no multiple of a vector.
template <class Pixel>
struct Rows {
    int columns, rows, sourceSlack, destinationSlack, first;
    std::vector<Pixel> source, mask, destination;

    explicit Rows(std::mt19937& ioRandom)
    {
        const auto below = [&](unsigned inEnd) { return (int)(ioRandom() % inEnd); };
        columns = 1 + below(100), rows = 1 + below(4);
        sourceSlack = below(5), destinationSlack = below(9), first = below(16);
        source.resize((size_t)(first + (columns + sourceSlack) * rows));
        mask.resize(source.size());
        destination.resize((size_t)(first + (columns + destinationSlack) * rows));
    }
    explicit Rows(int inColumns)
        : columns(inColumns),
          rows(1),
          sourceSlack(0),
          destinationSlack(0),
          first(0),
          source((size_t)inColumns),
          mask(source),
          destination(source)
    {
    }

    // What lies between the rows is part of the answer.
    std::vector<Pixel> Blended(BlendProc inProc) const
    {
        std::vector<Pixel> result = destination;
        inProc({ reinterpret_cast<const UInt8*>(&source[(size_t)first]),
                 reinterpret_cast<const UInt8*>(&mask[(size_t)first]),
                 reinterpret_cast<UInt8*>(&result[(size_t)first]),
                 (ptrdiff_t)((size_t)(columns + sourceSlack) * sizeof(Pixel)),
                 (ptrdiff_t)((size_t)(columns + destinationSlack) * sizeof(Pixel)), columns, rows });
        return result;
    }
    std::vector<Pixel> Expected(uint32_t (*inBlend)(uint32_t, uint32_t, uint32_t)) const
    {
        std::vector<Pixel> result = destination;
        for (int v = 0; v < rows; ++v)
            for (int h = 0; h < columns; ++h) {
                const auto from = (size_t)(first + v * (columns + sourceSlack) + h);
                Pixel& to = result[(size_t)(first + v * (columns + destinationSlack) + h)];
                to = (Pixel)inBlend(to, source[from], mask[from]);
            }
        return result;
    }
};

template <class Depth>
void RequireReference(const Rows<typename Depth::Format::Pixel>& inRows, const std::vector<Loop>& inLoops)
{
    const auto expected = inRows.Expected(&Depth::Blend);
    for (const Loop& loop : inLoops) {
        CAPTURE(loop.name);
        REQUIRE(inRows.Blended(loop.proc) == expected);
    }
}

// About two and a half million pixels.
template <class Depth>
void CheckRandomRows()
{
    std::mt19937 random(Depth::kDepth * 3);
    const std::vector<Loop> loops = Loops<typename Depth::Format>();
    const auto maskPixel = MaskPixels<Depth>(random);
    for (int i = 0; i < 20'000; ++i) {
        CAPTURE(i);
        Rows<typename Depth::Format::Pixel> rows(random);
        for (size_t at = 0; at < rows.source.size(); ++at) {
            rows.source[at] = (typename Depth::Format::Pixel)random();
            rows.mask[at] = (typename Depth::Format::Pixel)maskPixel();
        }
        for (auto& pixel : rows.destination)
            pixel = (typename Depth::Format::Pixel)random();
        RequireReference<Depth>(rows, loops);
    }
}

// Each weight with each pair of a destination's and a source's channel, three pairs a pixel; the bits that do
// not count are anything.
template <class Depth>
void CheckEveryPair(int inBits)
{
    using Pixel = typename Depth::Format::Pixel;
    std::mt19937 random(5);
    const std::vector<Loop> loops = Loops<typename Depth::Format>();
    const uint32_t values = 1u << inBits, pairs = values * values, unused = ~((1u << 3 * inBits) - 1);
    Rows<Pixel> row((int)(pairs / 3 + 1));
    for (uint32_t weight = 0; weight < values; ++weight) {
        CAPTURE(weight);
        for (size_t i = 0; i < row.source.size(); ++i) {
            uint32_t d = 0, s = 0;
            for (uint32_t channel = 0; channel < 3; ++channel) {
                const uint32_t pair = (uint32_t)(i * 3 + channel) % pairs;
                d = d << inBits | pair / values;
                s = s << inBits | pair % values;
            }
            row.destination[i] = (Pixel)(d | ((uint32_t)random() & unused));
            row.source[i] = (Pixel)(s | ((uint32_t)random() & unused));
            row.mask[i] = (Pixel)(weight | ((uint32_t)random() & ~(values - 1)));
        }
        RequireReference<Depth>(row, loops);
    }
}

// What is white all over is passed by, in whole vectors.
template <class Depth>
void CheckOneAmongWhite()
{
    constexpr int kColumns = 131; // two of the longest vectors, and some more
    std::mt19937 random(9);
    const std::vector<Loop> loops = Loops<typename Depth::Format>();
    Rows<typename Depth::Format::Pixel> row(kColumns);
    for (size_t at = 0; at < kColumns; ++at) {
        CAPTURE(at);
        for (size_t i = 0; i < kColumns; ++i) {
            row.source[i] = (typename Depth::Format::Pixel)random();
            row.destination[i] = (typename Depth::Format::Pixel)random();
            row.mask[i] = Depth::Format::kWhite;
        }
        row.mask[at] = (typename Depth::Format::Pixel)(random() & (Depth::Format::kWhite - 1));
        RequireReference<Depth>(row, loops);
    }
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

LAMPBLACK_WATCH(Ptr, GetPixBaseAddr, (PixMapHandle pm), (pm))

LAMPBLACK_INTERPOSE Boolean LockPixels(PixMapHandle map)
{
    const CallLog::StCall call("LockPixels");
    gLocked.push_back(map);
    return Next<decltype(LockPixels)>("LockPixels")(map);
}

LAMPBLACK_INTERPOSE void UnlockPixels(PixMapHandle map)
{
    const CallLog::StCall call("UnlockPixels");
    gUnlocked.push_back(map);
    Next<decltype(UnlockPixels)>("UnlockPixels")(map);
}

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

TEST_CASE("CopyPixelsTransparentMask: the loops of every width are the reference in random rows with slack")
{
    CheckRandomRows<Depth16>();
    CheckRandomRows<Depth32>();
}

TEST_CASE("CopyPixelsTransparentMask: the loops of every width, all white but one pixel, at each place")
{
    CheckOneAmongWhite<Depth16>();
    CheckOneAmongWhite<Depth32>();
}

TEST_CASE("CopyPixelsTransparentMask: the loops of every width, each weight with each pair of channels")
{
    CheckEveryPair<Depth16>(5);
    CheckEveryPair<Depth32>(8);
}

TEST_CASE("CopyPixelsTransparentMask16: the loops of every width, each of the 65,536 mask pixels")
{
    std::mt19937 random(11);
    const std::vector<Loop> loops = Loops<Pixels16>();
    Rows<UInt16> row(0x10000);
    for (int i = 0; i < 8; ++i) {
        for (size_t at = 0; at < row.source.size(); ++at) {
            row.source[at] = (UInt16)random();
            row.destination[at] = (UInt16)random();
            row.mask[at] = (UInt16)(at * 40503); // all of them, in no order
        }
        RequireReference<Depth16>(row, loops);
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
    gLocked.clear();
    gUnlocked.clear();
    {
        const CallLog log;
        CopyPixelsTransparentMask16(source, mask, destination, &where);
        CHECK(log.Calls() == "LockPixels LockPixels LockPixels GetPixBaseAddr GetPixBaseAddr GetPixBaseAddr "
                             "UnlockPixels UnlockPixels UnlockPixels");
    }
    const std::vector<PixMapHandle> maps = { source.Map(), destination.Map(), mask.Map() };
    CHECK(gLocked == maps);
    CHECK(gUnlocked == maps);
    for (const PixMapHandle map : maps)
        CHECK((GetPixelsState(map) & pixelsLocked) == 0);
}

TEST_CASE("CopyPixelsTransparentMask: the mask is walked with the source's row bytes, not its own")
{
    std::mt19937 random(3);
    const World<Depth32> source(16, 8), mask(8, 16), destination(16, 8);
    source.Fill(random);
    mask.Fill(random);
    destination.Fill(random);
    REQUIRE(GetPixRowBytes(source.Map()) == 64);
    REQUIRE(GetPixRowBytes(mask.Map()) == 32);
    auto expected = destination.Pixels();
    for (int i = 0; i < 16 * 8; ++i)
        expected[(size_t)i] = Reference32(expected[(size_t)i], source.Row(0)[i], mask.Row(0)[i]);
    const Rect where = { 0, 0, 8, 16 };
    CopyPixelsTransparentMask32(source, mask, destination, &where);
    CHECK(destination.Pixels() == expected);
}

TEST_CASE("CopyPixelsTransparentMask: a pixel's bytes are those of a row by its width")
{
    const World<Depth16> source(4, 3), mask(4, 3);
    source.Fill(0x1234);
    mask.Fill(0u);
    UInt16 pixels[3][3] = {}; // a column of pixels, which count as three each
    const Rect bounds = { 0, 0, 3, 1 }, where = { 0, 0, 3, 4 };
    GWorldPtr narrow = nullptr;
    REQUIRE(NewGWorldFromPtr(&narrow, 16, &bounds, nullptr, nullptr, 0, reinterpret_cast<Ptr>(pixels),
                             sizeof pixels[0]) == noErr);
    CopyPixelsTransparentMask16(source, mask, narrow, &where);
    for (const auto& row : pixels)
        for (const UInt16 pixel : row)
            CHECK(pixel == 0x1234);
    DisposeGWorld(narrow);
}

TEST_CASE("CopyPixelsTransparentMask: what is left out at the left is left out in the source's bytes a pixel")
{
    const World<Depth16> destination(4, 3);
    destination.Fill(0x7777);
    UInt16 pixels[3][3], grey[3][3] = {}; // a column of pixels, which count as three each
    for (int i = 0; i < 9; ++i)
        pixels[i / 3][i % 3] = (UInt16)(0x0101 * i);
    const Rect bounds = { 0, 0, 3, 1 }, where = { 0, -1, 2, 1 };
    GWorldPtr source = nullptr, mask = nullptr;
    REQUIRE(NewGWorldFromPtr(&source, 16, &bounds, nullptr, nullptr, 0, reinterpret_cast<Ptr>(pixels), 6) ==
            noErr);
    REQUIRE(NewGWorldFromPtr(&mask, 16, &bounds, nullptr, nullptr, 0, reinterpret_cast<Ptr>(grey), 6) ==
            noErr);
    CopyPixelsTransparentMask16(source, mask, destination, &where);
    CHECK(destination.At(0, 0) == 0x0303); // three pixels on: the next row
    CHECK(destination.At(0, 1) == 0x0606);
    CHECK(destination.At(1, 0) == 0x7777);
    DisposeGWorld(source);
    DisposeGWorld(mask);
}

TEST_CASE("CopyPixelsTransparentMask: slack shorter than the width in pixels is no part of a pixel")
{
    std::mt19937 random(6);
    constexpr int kWidth = 5, kHeight = 4, kRow = 6; // pixels; the slack is four bytes
    UInt32 sourcePixels[kHeight * kRow], maskPixels[kHeight * kRow], pixels[kHeight * kRow],
        expected[kHeight * kRow];
    const Rect bounds = { 0, 0, kHeight, kWidth }, where = { 1, -2, 1 + kHeight, -2 + kWidth };
    GWorldPtr source = nullptr, mask = nullptr, destination = nullptr;
    const auto make = [&](GWorldPtr* outWorld, UInt32* ioPixels) {
        for (int i = 0; i < kHeight * kRow; ++i)
            ioPixels[i] = (UInt32)random();
        REQUIRE(NewGWorldFromPtr(outWorld, 32, &bounds, nullptr, nullptr, 0, reinterpret_cast<Ptr>(ioPixels),
                                 kRow * 4) == noErr);
    };
    make(&source, sourcePixels);
    make(&mask, maskPixels);
    make(&destination, pixels);
    std::memcpy(expected, pixels, sizeof pixels);
    for (int v = 1; v < kHeight; ++v)
        for (int h = 0; h < kWidth - 2; ++h) {
            const int from = (v - 1) * kRow + h + 2;
            UInt32& to = expected[v * kRow + h];
            to = Reference32(to, sourcePixels[from], maskPixels[from]);
        }
    CopyPixelsTransparentMask32(source, mask, destination, &where);
    CHECK(std::memcmp(pixels, expected, sizeof pixels) == 0);
    for (const GWorldPtr world : { source, mask, destination })
        DisposeGWorld(world);
}

TEST_CASE("CopyPixelsTransparentMask16: on worlds of 32 bits every half of a pixel is one of 16")
{
    std::mt19937 random(4);
    const World<Depth32> source(9, 5), mask(9, 5), destination(20, 10);
    source.Fill(random);
    mask.Fill(random);
    destination.Fill(random);
    auto expected = destination.Pixels();
    for (int v = 0; v < 5; ++v)
        for (int h = 0; h < 9; ++h) {
            auto& to = expected[(size_t)((v + 2) * 20 + h + 3)];
            const uint32_t s = source.At(h, v), m = mask.At(h, v);
            to = Reference16(to >> 16, s >> 16, m >> 16) << 16 |
                 Reference16(to & 0xFFFF, s & 0xFFFF, m & 0xFFFF);
        }
    const Rect where = { 2, 3, 7, 12 };
    CopyPixelsTransparentMask16(source, mask, destination, &where);
    CHECK(destination.Pixels() == expected);
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
