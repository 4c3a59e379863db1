// Rows of pixels of every depth as colours and back.
#include "Surface.h"

#include <cstring>

namespace lampblack::quickdraw {

static constexpr uint32_t kChannels = 0x00FFFFFF;

// Calls inTake(index) for count indexes of a row of depth 1, 2 or 4; whole bytes at once.
template <int kDepth, class Take>
static void EachIndex(const uint8_t* inRow, int inFirst, int inCount, Take inTake)
{
    constexpr int kPerByte = 8 / kDepth, kMask = (1 << kDepth) - 1;
    const uint8_t* at = inRow + inFirst / kPerByte;
    int phase = inFirst % kPerByte;
    while (inCount > 0) {
        const uint32_t byte = *at++;
        for (; phase < kPerByte && inCount > 0; ++phase, --inCount)
            inTake(byte >> (8 - kDepth - phase * kDepth) & kMask);
        phase = 0;
    }
}

// The same way back; bits of other pixels in the first and the last byte stay.
template <int kDepth, class Give>
static void PutIndexes(uint8_t* ioRow, int inFirst, int inCount, Give inGive)
{
    constexpr int kPerByte = 8 / kDepth, kMask = (1 << kDepth) - 1;
    uint8_t* at = ioRow + inFirst / kPerByte;
    int phase = inFirst % kPerByte;
    for (; inCount > 0; ++at, phase = 0) {
        uint32_t byte = 0, mask = 0;
        for (; phase < kPerByte && inCount > 0; ++phase, --inCount) {
            const int shift = 8 - kDepth - phase * kDepth;
            byte |= (inGive() & kMask) << shift;
            mask |= (uint32_t)kMask << shift;
        }
        *at = (uint8_t)((*at & ~mask) | byte);
    }
}

template <class Take>
static void EachSmallIndex(const Surface& s, const uint8_t* inRow, int inFirst, int inCount, Take inTake)
{
    if (s.depth == 1)
        EachIndex<1>(inRow, inFirst, inCount, inTake);
    else if (s.depth == 2)
        EachIndex<2>(inRow, inFirst, inCount, inTake);
    else
        EachIndex<4>(inRow, inFirst, inCount, inTake);
}

template <class Give>
static void PutSmallIndexes(const Surface& s, uint8_t* ioRow, int inFirst, int inCount, Give inGive)
{
    if (s.depth == 1)
        PutIndexes<1>(ioRow, inFirst, inCount, inGive);
    else if (s.depth == 2)
        PutIndexes<2>(ioRow, inFirst, inCount, inGive);
    else
        PutIndexes<4>(ioRow, inFirst, inCount, inGive);
}

static void Widen555(const uint16_t* inPixels, int inCount, uint32_t* outColors)
{
    for (int i = 0; i < inCount; ++i)
        outColors[i] = ColorOf555(inPixels[i]);
}

static void Narrow555(const uint32_t* inColors, int inCount, uint16_t* outPixels)
{
    for (int i = 0; i < inCount; ++i)
        outPixels[i] = (uint16_t)PixelOf555(inColors[i]);
}

// Neighbours are often the same colour; the nearest index is looked for once.
class IndexFinder {
public:
    explicit IndexFinder(const ColorSpace& inColors) : fColors(inColors) {}
    uint8_t Of(uint32_t inColor)
    {
        inColor &= kChannels;
        if (inColor != fLast) {
            fLast = inColor;
            fIndex = fColors.IndexOf(inColor);
        }
        return fIndex;
    }

private:
    const ColorSpace& fColors;
    uint32_t fLast = 0xFFFFFFFF;
    uint8_t fIndex = 0;
};

void ReadColors(const Surface& s, int v, int h, int count, uint32_t* outColors)
{
    const uint8_t* row = s.RowAt(v);
    const int first = h - s.bounds.left;
    if (s.depth == 32) {
        const auto* pixels = reinterpret_cast<const uint32_t*>(row) + first;
        for (int i = 0; i < count; ++i)
            outColors[i] = pixels[i] & kChannels;
        return;
    }
    if (s.depth == 16)
        return Widen555(reinterpret_cast<const uint16_t*>(row) + first, count, outColors);
    const uint32_t* colors = ColorsOf(s).Colors();
    if (s.depth == 8)
        for (int i = 0; i < count; ++i)
            outColors[i] = colors[row[first + i]];
    else
        EachSmallIndex(s, row, first, count, [&](uint32_t index) { *outColors++ = colors[index]; });
}

void WriteColors(const Surface& s, int v, int h, int count, const uint32_t* colors)
{
    uint8_t* row = s.RowAt(v);
    const int first = h - s.bounds.left;
    if (s.depth == 32) {
        auto* pixels = reinterpret_cast<uint32_t*>(row) + first;
        for (int i = 0; i < count; ++i)
            pixels[i] = colors[i] & kChannels;
        return;
    }
    if (s.depth == 16)
        return Narrow555(colors, count, reinterpret_cast<uint16_t*>(row) + first);
    IndexFinder finder(ColorsOf(s));
    if (s.depth == 8)
        for (int i = 0; i < count; ++i)
            row[first + i] = finder.Of(colors[i]);
    else
        PutSmallIndexes(s, row, first, count, [&] { return (uint32_t)finder.Of(*colors++); });
}

void ReadPixels(const Surface& s, int v, int h, int count, uint32_t* outPixels)
{
    const uint8_t* row = s.RowAt(v);
    const int first = h - s.bounds.left;
    if (s.depth == 32)
        std::memcpy(outPixels, row + (ptrdiff_t)first * 4, (size_t)count * 4);
    else if (s.depth == 16)
        for (int i = 0; i < count; ++i)
            outPixels[i] = reinterpret_cast<const uint16_t*>(row)[first + i];
    else if (s.depth == 8)
        for (int i = 0; i < count; ++i)
            outPixels[i] = row[first + i];
    else
        EachSmallIndex(s, row, first, count, [&](uint32_t index) { *outPixels++ = index; });
}

void WritePixels(const Surface& s, int v, int h, int count, const uint32_t* pixels)
{
    uint8_t* row = s.RowAt(v);
    const int first = h - s.bounds.left;
    if (s.depth == 32)
        std::memcpy(row + (ptrdiff_t)first * 4, pixels, (size_t)count * 4);
    else if (s.depth == 16)
        for (int i = 0; i < count; ++i)
            reinterpret_cast<uint16_t*>(row)[first + i] = (uint16_t)pixels[i];
    else if (s.depth == 8)
        for (int i = 0; i < count; ++i)
            row[first + i] = (uint8_t)pixels[i];
    else
        PutSmallIndexes(s, row, first, count, [&] { return *pixels++; });
}

uint32_t ReadPixel(const Surface& s, int v, int h)
{
    uint32_t pixel = 0;
    ReadPixels(s, v, h, 1, &pixel);
    return pixel;
}

void WritePixel(const Surface& s, int v, int h, uint32_t pixel)
{
    WritePixels(s, v, h, 1, &pixel);
}

uint32_t PixelFor(const Surface& s, uint32_t color)
{
    if (s.depth == 32)
        return color & kChannels;
    return s.depth == 16 ? PixelOf555(color) : ColorsOf(s).IndexOf(color & kChannels);
}

uint32_t ColorFor(const Surface& s, uint32_t pixel)
{
    if (s.depth == 32)
        return pixel & kChannels;
    return s.depth == 16 ? ColorOf555(pixel) : ColorsOf(s).At((int)pixel & ((1 << s.depth) - 1));
}

} // namespace lampblack::quickdraw
