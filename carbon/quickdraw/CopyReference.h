// What copying must do, pixel by pixel and slowly, for tests: pictures of any depth in memory of their exact
// size, and a reference that shares nothing with the loops but the nearest index of a colour.
#ifndef LAMPBLACK_QUICKDRAW_COPYREFERENCE_H
#define LAMPBLACK_QUICKDRAW_COPYREFERENCE_H

#include "ColorTables.h"
#include "TestPort.h"

#include <Carbon/MacMemory.h>

#include <cstring>
#include <memory>

namespace lampblack::quickdraw {

using Dice = std::mt19937;

inline int Upto(Dice& random, int count)
{
    return (int)(random() % (unsigned)count);
}

// A picture that an application made, with a table of its own when it is asked for.
class TestPicture {
public:
    TestPicture(Dice& random, int depth, int width, int height, bool ownTable)
    {
        const int left = Upto(random, 20) - 10, top = Upto(random, 20) - 10;
        const int slack = 4 * Upto(random, 3);
        fBytes = (width * depth + 31) / 32 * 4 + slack;
        if (depth <= 8 && slack && random() % 2)
            fBytes -= 2;
        fMap.bounds = MakeRect(left, top, left + width, top + height);
        fMap.rowBytes = (short)(fBytes | 0x8000);
        fMap.pixelSize = (short)depth;
        fMemory.reset(new uint8_t[(size_t)(fBytes * height)]);
        fMap.baseAddr = reinterpret_cast<Ptr>(fMemory.get());
        if (depth <= 8 && ownTable)
            TakeTable(random, depth);
        Fill(random);
        fSpace = depth <= 8 && fMap.pmTable ? SpaceOf(fMap.pmTable) : nullptr;
    }
    ~TestPicture() { DisposeHandle(reinterpret_cast<Handle>(fMap.pmTable)); }
    TestPicture(const TestPicture&) = delete;
    TestPicture& operator=(const TestPicture&) = delete;

    void Fill(Dice& random)
    {
        const int rows = fMap.bounds.bottom - fMap.bounds.top;
        for (int i = 0; i < fBytes * rows; ++i)
            fMemory[(size_t)i] = (uint8_t)random();
        for (int i = 0; fMap.pixelSize == 32 && i < fBytes * rows; i += 4)
            fMemory[(size_t)i + 3] = 0;
        for (int i = 0; fMap.pixelSize == 16 && i < fBytes * rows; i += 2)
            fMemory[(size_t)i + 1] &= 0x7F;
    }
    const BitMap* Bits() const { return reinterpret_cast<const BitMap*>(&fMap); }
    PixMap& Map() { return fMap; }
    Surface Pixels() const { return { fMemory.get(), fBytes, fMap.pixelSize, fMap.bounds, fSpace.get() }; }
    size_t Size() const { return (size_t)fBytes * (size_t)(fMap.bounds.bottom - fMap.bounds.top); }

private:
    void TakeTable(Dice& random, int depth)
    {
        RGBColor colors[256];
        for (RGBColor& color : colors)
            color = ColorOf(random());
        fMap.pmTable = NewTable(colors, 1 << depth, GetCTSeed());
    }

    int fBytes;
    PixMap fMap = {};
    std::unique_ptr<uint8_t[]> fMemory;
    SpacePointer fSpace;
};

// One pixel's value, from its bits.
inline uint32_t SlowPixel(const Surface& s, int h, int v)
{
    const uint8_t* row = s.base + (v - s.bounds.top) * s.rowBytes;
    const int column = h - s.bounds.left;
    if (s.depth >= 16) {
        uint32_t pixel = 0;
        std::memcpy(&pixel, row + column * s.depth / 8, (size_t)s.depth / 8);
        return pixel;
    }
    uint32_t pixel = 0;
    for (int bit = column * s.depth; bit < (column + 1) * s.depth; ++bit)
        pixel = pixel << 1 | (row[bit / 8] >> (7 - bit % 8) & 1u);
    return pixel;
}

inline uint32_t SlowColor(const Surface& s, uint32_t pixel)
{
    if (s.depth == 32)
        return pixel & 0xFFFFFF;
    if (s.depth <= 8)
        return ColorsOf(s).At((int)pixel);
    uint32_t color = 0;
    for (int shift = 10; shift >= 0; shift -= 5) {
        const uint32_t five = pixel >> shift & 31;
        color = color << 8 | five << 3 | five >> 2;
    }
    return color;
}

struct SlowColors {
    uint32_t fore = 0, back = 0xFFFFFF, op = 0, hilite = 0;
    bool IsPlain() const { return fore == 0 && back == 0xFFFFFF; }
};

// One channel of the published formulas.
inline int SlowChannel(int mode, int s, int d, int op)
{
    switch (mode) {
    case blend: return (int)((s * op + d * (255 - op)) / 255.0 + 0.5);
    case addPin: return s + d > op ? op : s + d;
    case addOver: return (s + d) % 256;
    case subPin: return d - s < op ? op : d - s;
    case addMax: return s > d ? s : d;
    case subOver: return (d - s + 256) % 256;
    default: return s < d ? s : d; // adMin
    }
}

inline uint32_t SlowArithmetic(int mode, uint32_t s, uint32_t d, const SlowColors& c)
{
    if (mode == transparent)
        return s == c.back ? d : s;
    if (mode == hilite)
        return s == 0xFFFFFF ? d : d == c.back ? c.hilite : d == c.hilite ? c.back : d;
    uint32_t result = 0;
    for (int shift = 16; shift >= 0; shift -= 8)
        result = result << 8 | (uint32_t)SlowChannel(mode, (int)(s >> shift & 255), (int)(d >> shift & 255),
                                                     (int)(c.op >> shift & 255));
    return result;
}

// One bit of the published table: what set and clear source bits do.
inline uint32_t SlowBit(int mode, bool set, uint32_t old, uint32_t fore, uint32_t back)
{
    if (mode >= 4)
        set = !set;
    switch (mode & 3) {
    case srcCopy: return set ? fore : back;
    case srcOr: return set ? fore : old;
    case srcXor: return set ? old ^ 1 : old;
    default: return set ? back : old;
    }
}

inline uint32_t SlowBits(int mode, int depth, uint32_t source, uint32_t old, uint32_t fore, uint32_t back)
{
    const int bits = depth == 32 ? 24 : depth == 16 ? 15 : depth;
    uint32_t result = 0;
    for (int bit = 0; bit < bits; ++bit)
        result |= SlowBit(mode, (source >> bit & 1) == (depth >= 16 ? 0u : 1u), old >> bit & 1,
                          fore >> bit & 1, back >> bit & 1)
                  << bit;
    return result;
}

inline bool SlowIsBitMap(const Surface& s)
{
    return s.depth == 1 && ColorsOf(s).At(0) == 0xFFFFFF && ColorsOf(s).At(1) == 0;
}

// The destination's value for a source pixel as it is, colourised or not.
inline uint32_t SlowTranslated(const Surface& from, const Surface& to, uint32_t source, uint32_t fore,
                               uint32_t back)
{
    const bool plain = fore == 0 && back == 0xFFFFFF;
    if (plain && from.depth <= 8 && from.depth == to.depth && ColorsOf(from).Seed() == ColorsOf(to).Seed())
        return source;
    const uint32_t color = SlowColor(from, source);
    return PixelFor(to, (~color & fore) | (color & back));
}

// What a mode makes of one pixel.
inline uint32_t SlowResult(const Surface& from, const Surface& to, int mode, uint32_t source, uint32_t old,
                           SlowColors c)
{
    static constexpr int kInBitMaps[] = { srcCopy, srcBic, srcXor, srcOr, srcOr, srcBic, srcXor, srcOr };
    if (to.depth == 1 && mode >= blend)
        mode = mode == hilite ? (int)srcXor : kInBitMaps[mode - blend];
    const bool bits = SlowIsBitMap(from);
    if (mode >= blend) {
        const bool black = mode == hilite;
        const uint32_t color =
            bits ? (source ? (black ? 0 : c.fore) : (black ? 0xFFFFFF : c.back)) : SlowColor(from, source);
        if (from.depth == 16 && mode == transparent)
            c.back = SlowColor(from, PixelOf555(c.back));
        if (mode == hilite) { // exchanges what is seen of the two colours
            c.back = SlowColor(to, PixelFor(to, c.back));
            c.hilite = SlowColor(to, PixelFor(to, c.hilite));
        }
        const uint32_t before = SlowColor(to, old), after = SlowArithmetic(mode, color, before, c);
        return after == before ? old : PixelFor(to, after);
    }
    const uint32_t all = to.depth == 32 ? 0xFFFFFF : to.depth == 16 ? 0x7FFF : (1u << to.depth) - 1;
    const uint32_t black = to.depth >= 16 ? 0 : all, white = all - black;
    const uint32_t fore = PixelFor(to, c.fore), back = PixelFor(to, c.back);
    if (bits)
        return SlowBits(mode, to.depth, source ? black : white, old, fore, back);
    if (!c.IsPlain() && (mode & 3) == srcCopy)
        return SlowTranslated(from, to, source, mode == srcCopy ? c.fore : c.back,
                              mode == srcCopy ? c.back : c.fore);
    const uint32_t translated = SlowTranslated(from, to, source, 0, 0xFFFFFF);
    return SlowBits(mode, to.depth, translated, old, c.IsPlain() ? black : fore, c.IsPlain() ? white : back);
}

// Where pixel i of a length of `to` finds its own in a length of `from`.
inline int SlowNearest(int i, int from, int to)
{
    return (int)((int64_t)i * from / to);
}

inline Point SlowSource(const Rect& from, const Rect& to, int h, int v)
{
    return { (short)(from.top + SlowNearest(v - to.top, from.bottom - from.top, to.bottom - to.top)),
             (short)(from.left + SlowNearest(h - to.left, from.right - from.left, to.right - to.left)) };
}

inline Rect RandomRectIn(Dice& random, const Rect& bounds)
{
    const int width = bounds.right - bounds.left, height = bounds.bottom - bounds.top;
    const int left = bounds.left + Upto(random, width + 10) - 8,
              top = bounds.top + Upto(random, height + 10) - 8;
    return MakeRect(left, top, left + 1 + Upto(random, width), top + 1 + Upto(random, height));
}

inline constexpr short kAllModes[] = { 0,           0,      0,       1,     2,      3,       4,
                                       5,           6,      7,       blend, addPin, addOver, subPin,
                                       transparent, addMax, subOver, adMin, hilite };

} // namespace lampblack::quickdraw

#endif
