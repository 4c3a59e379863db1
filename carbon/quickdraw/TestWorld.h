// An offscreen world for tests, current while it lives, and its pixels read the slow way.
#ifndef LAMPBLACK_QUICKDRAW_TESTWORLD_H
#define LAMPBLACK_QUICKDRAW_TESTWORLD_H

#include <Carbon/Quickdraw.h>

#include <doctest/doctest.h>

#include <cstring>
#include <random>
#include <vector>

namespace lampblack::quickdraw {

struct TestWorld {
    explicit TestWorld(int depth, int width = 40, int height = 30, CTabHandle table = nullptr)
        : TestWorld(depth, Rect{ 0, 0, (short)height, (short)width }, table)
    {
    }
    TestWorld(int depth, const Rect& bounds, CTabHandle table = nullptr)
    {
        GetGWorld(&oldPort, &oldDevice);
        REQUIRE(NewGWorld(&world, (short)depth, &bounds, table, nullptr, 0) == noErr);
        SetGWorld(world, nullptr);
    }
    ~TestWorld()
    {
        SetGWorld(oldPort, oldDevice);
        DisposeGWorld(world);
    }
    TestWorld(const TestWorld&) = delete;
    TestWorld& operator=(const TestWorld&) = delete;

    PixMapHandle Map() const { return GetGWorldPixMap(world); }
    int Depth() const { return GetPixDepth(Map()); }
    CTabHandle Table() const { return (**Map()).pmTable; }

    // The value of a pixel, bit by bit as the format says.
    uint32_t At(int h, int v) const
    {
        Rect bounds;
        GetPixBounds(Map(), &bounds);
        const auto* row = reinterpret_cast<const uint8_t*>(GetPixBaseAddr(Map())) +
                          (v - bounds.top) * GetPixRowBytes(Map());
        const int column = h - bounds.left, depth = Depth();
        if (depth == 32)
            return reinterpret_cast<const uint32_t*>(row)[column];
        if (depth == 16)
            return reinterpret_cast<const uint16_t*>(row)[column];
        const int bit = column * depth;
        return row[bit / 8] >> (8 - depth - bit % 8) & ((1 << depth) - 1);
    }

    void Put(int h, int v, uint32_t pixel) const
    {
        Rect bounds;
        GetPixBounds(Map(), &bounds);
        auto* row =
            reinterpret_cast<uint8_t*>(GetPixBaseAddr(Map())) + (v - bounds.top) * GetPixRowBytes(Map());
        const int column = h - bounds.left, depth = Depth();
        if (depth == 32) {
            reinterpret_cast<uint32_t*>(row)[column] = pixel;
        } else if (depth == 16) {
            reinterpret_cast<uint16_t*>(row)[column] = (uint16_t)pixel;
        } else {
            const int shift = 8 - depth - column * depth % 8;
            uint8_t& byte = row[column * depth / 8];
            byte = (uint8_t)((byte & ~(((1 << depth) - 1) << shift)) | pixel << shift);
        }
    }

    GWorldPtr world = nullptr;
    CGrafPtr oldPort = nullptr;
    GDHandle oldDevice = nullptr;
};

inline uint32_t BitsOfDepth(int depth)
{
    return depth == 32 ? 0xFFFFFF : depth == 16 ? 0x7FFF : (1u << depth) - 1;
}

// The colour of a pixel value in a world, 0x00RRGGBB, as the formats and its table say.
inline uint32_t ColorIn(const TestWorld& world, uint32_t pixel)
{
    if (world.Depth() == 32)
        return pixel & 0xFFFFFF;
    if (world.Depth() == 16) {
        const auto wide = [](uint32_t five) { return (five & 31) << 3 | (five & 31) >> 2; };
        return wide(pixel >> 10) << 16 | wide(pixel >> 5) << 8 | wide(pixel);
    }
    const RGBColor& c = (**world.Table()).ctTable[pixel].rgb;
    return (uint32_t)(c.red >> 8) << 16 | (uint32_t)(c.green >> 8) << 8 | c.blue >> 8;
}

// The first of the nearest entries, or the direct pixel.
inline uint32_t PixelIn(const TestWorld& world, uint32_t color)
{
    if (world.Depth() == 32)
        return color;
    if (world.Depth() == 16)
        return (color >> 19 & 31) << 10 | (color >> 11 & 31) << 5 | (color >> 3 & 31);
    int best = 0, least = 1 << 30;
    for (int i = 0; i <= (**world.Table()).ctSize; ++i) {
        const uint32_t entry = ColorIn(world, (uint32_t)i);
        int distance = 0;
        for (int shift = 0; shift < 24; shift += 8) {
            const int difference = (int)(entry >> shift & 0xFF) - (int)(color >> shift & 0xFF);
            distance += difference * difference;
        }
        if (distance < least) {
            least = distance;
            best = i;
        }
    }
    return (uint32_t)best;
}

inline RGBColor WideColor(uint32_t color)
{
    const auto wide = [](uint32_t byte) { return (UInt16)((byte & 0xFF) * 0x101); };
    return { wide(color >> 16), wide(color >> 8), wide(color) };
}

// A table of that many random colours, two of which are the same, with a seed of its own.
inline CTabHandle RandomTable(std::mt19937& random, int depth)
{
    const CTabHandle table = GetCTable((short)depth);
    for (int i = 0; i <= (**table).ctSize; ++i)
        (**table).ctTable[i].rgb = WideColor((uint32_t)random());
    (**table).ctTable[(**table).ctSize].rgb = (**table).ctTable[0].rgb;
    CTabChanged(table);
    return table;
}

} // namespace lampblack::quickdraw

#endif
