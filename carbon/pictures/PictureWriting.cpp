#include "PictureWriting.h"

#include "PackBits.h"

#include <cstring>

namespace lampblack::pictures {

using namespace quickdraw;

static constexpr int kSmallRow = 8, kLongCounts = 250;
static constexpr uint32_t kSeventyTwo = 0x00480000; // pixels an inch
static constexpr int kDirect = 16;                  // a kind of pixels, not a depth

void WriteRect(const Rect& inRect, BigEndianWriter& ioWriter)
{
    ioWriter.U16((uint16_t)inRect.top);
    ioWriter.U16((uint16_t)inRect.left);
    ioWriter.U16((uint16_t)inRect.bottom);
    ioWriter.U16((uint16_t)inRect.right);
}

void WriteColor(const RGBColor& inColor, BigEndianWriter& ioWriter)
{
    ioWriter.U16(inColor.red);
    ioWriter.U16(inColor.green);
    ioWriter.U16(inColor.blue);
}

int PictureRowBytes(int inDepth, int inWidth)
{
    return inDepth >= 16 ? inWidth * inDepth / 8 : (inWidth * inDepth + 15) / 16 * 2;
}

static int PackTypeOf(int inDepth)
{
    return inDepth == 32 ? 4 : inDepth == 16 ? 3 : 0;
}

void WriteMapHeader(const Surface& inSurface, const Rect& inRect, BigEndianWriter& ioWriter)
{
    const int depth = inSurface.depth;
    const bool isDirect = depth >= 16;
    ioWriter.U16((uint16_t)(0x8000 | PictureRowBytes(depth, inRect.right - inRect.left)));
    WriteRect(inRect, ioWriter);
    ioWriter.U16(0); // version
    ioWriter.U16((uint16_t)PackTypeOf(depth));
    ioWriter.U32(0);
    ioWriter.U32(kSeventyTwo);
    ioWriter.U32(kSeventyTwo);
    ioWriter.U16(isDirect ? kDirect : 0);
    ioWriter.U16((uint16_t)depth);
    ioWriter.U16(isDirect ? 3 : 1);
    ioWriter.U16((uint16_t)(depth == 32 ? 8 : depth == 16 ? 5 : depth));
    ioWriter.U32(0);
    ioWriter.U32(0);
    ioWriter.U32(0);
}

void WriteColorTable(const Surface& inSurface, BigEndianWriter& ioWriter)
{
    const int count = inSurface.depth <= 8 ? 1 << inSurface.depth : 1;
    const ColorSpace* colors =
        inSurface.colors ? inSurface.colors : &StandardColors(inSurface.depth <= 8 ? inSurface.depth : 1);
    ioWriter.U32((uint32_t)colors->Seed());
    ioWriter.U16(0); // the values say which index an entry is for
    ioWriter.U16((uint16_t)(count - 1));
    for (int i = 0; i < count; ++i) {
        ioWriter.U16((uint16_t)i);
        WriteColor(colors->Exact(i), ioWriter);
    }
}

// Indexes of a row as bytes that begin with the first pixel of it, the slack at the end clear.
static void TakeIndexes(const Surface& inSurface, int v, const Rect& inRect, std::vector<uint8_t>& outRow)
{
    const int depth = inSurface.depth, bits = (inRect.right - inRect.left) * depth;
    const int start = (inRect.left - inSurface.bounds.left) * depth, shift = start & 7;
    const uint8_t* from = inSurface.RowAt(v) + start / 8;
    const int used = (bits + 7) / 8, readable = (shift + bits + 7) / 8;
    for (int i = 0; i < used; ++i) {
        const int next = i + 1 < readable ? from[i + 1] : 0;
        outRow[(size_t)i] = (uint8_t)((from[i] << 8 | next) >> (8 - shift));
    }
    if (bits & 7)
        outRow[(size_t)used - 1] &= (uint8_t)(0xFF << (8 - (bits & 7)));
}

// All reds of a row, then the greens, then the blues.
static void TakeChannels(const Surface& inSurface, int v, const Rect& inRect, std::vector<uint8_t>& outRow)
{
    const size_t width = (size_t)(inRect.right - inRect.left);
    const uint8_t* from = inSurface.RowAt(v) + (ptrdiff_t)(inRect.left - inSurface.bounds.left) * 4;
    for (size_t i = 0; i < width; ++i) {
        uint32_t pixel;
        std::memcpy(&pixel, from + i * 4, 4);
        outRow[i] = (uint8_t)(pixel >> 16);
        outRow[width + i] = (uint8_t)(pixel >> 8);
        outRow[2 * width + i] = (uint8_t)pixel;
    }
}

static void WritePlain(const Surface& inSurface, int v, const Rect& inRect, int inRowBytes,
                       BigEndianWriter& ioWriter)
{
    std::vector<uint8_t> row((size_t)inRowBytes);
    if (inSurface.depth <= 8)
        TakeIndexes(inSurface, v, inRect, row);
    for (int h = inRect.left; inSurface.depth > 8 && h < inRect.right; ++h) {
        const size_t at = (size_t)(h - inRect.left);
        if (inSurface.depth == 16)
            foundation::StoreBE16(row.data() + at * 2, (uint16_t)ReadPixel(inSurface, v, h));
        else
            foundation::StoreBE32(row.data() + at * 4, ReadPixel(inSurface, v, h));
    }
    ioWriter.Write(row);
}

// One row after the other, with what all of them need.
class RowPacker {
public:
    RowPacker(const Surface& inSurface, const Rect& inRect)
        : fSurface(inSurface), fRect(inRect), fRow((size_t)(inRect.right - inRect.left) * 4 + 4)
    {
    }

    const std::vector<uint8_t>& Pack(int v)
    {
        const size_t width = (size_t)(fRect.right - fRect.left);
        fPackets.clear();
        if (fSurface.depth == 16) {
            const auto* words =
                reinterpret_cast<const uint16_t*>(fSurface.RowAt(v)) + (fRect.left - fSurface.bounds.left);
            PackWords({ words, width }, fPackets);
        } else if (fSurface.depth == 32) {
            TakeChannels(fSurface, v, fRect, fRow);
            PackBytes({ fRow.data(), width * 3 }, fPackets);
        } else {
            TakeIndexes(fSurface, v, fRect, fRow);
            PackBytes({ fRow.data(), (size_t)PictureRowBytes(fSurface.depth, (int)width) }, fPackets);
        }
        return fPackets;
    }

private:
    const Surface& fSurface;
    const Rect& fRect;
    std::vector<uint8_t> fRow, fPackets;
};

void WriteRows(const Surface& inSurface, const Rect& inRect, BigEndianWriter& ioWriter)
{
    const int rowBytes = PictureRowBytes(inSurface.depth, inRect.right - inRect.left);
    RowPacker packer(inSurface, inRect);
    for (int v = inRect.top; v < inRect.bottom; ++v) {
        if (rowBytes < kSmallRow) {
            WritePlain(inSurface, v, inRect, rowBytes, ioWriter);
            continue;
        }
        const std::vector<uint8_t>& packets = packer.Pack(v);
        if (rowBytes > kLongCounts)
            ioWriter.U16((uint16_t)packets.size());
        else
            ioWriter.U8((uint8_t)packets.size());
        ioWriter.Write(packets);
    }
}

} // namespace lampblack::pictures
