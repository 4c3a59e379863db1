#include "PictureWriting.h"

#include "MattePixels.h"
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

static void WriteRawDescription(int inWidth, int inHeight, int inDepth, BigEndianWriter& ioWriter)
{
    ioWriter.U32(86);
    ioWriter.U32('raw ');
    ioWriter.Zeros(20);  // reserved, version, vendor, temporal quality
    ioWriter.U32(0x400); // without loss
    ioWriter.U16((uint16_t)inWidth);
    ioWriter.U16((uint16_t)inHeight);
    ioWriter.U32(kSeventyTwo);
    ioWriter.U32(kSeventyTwo);
    ioWriter.U32((uint32_t)(inWidth * inHeight * (inDepth == 32 ? 4 : 1)));
    ioWriter.U16(1); // frame
    ioWriter.Zeros(32);
    ioWriter.U16((uint16_t)inDepth);
    ioWriter.U16(0xFFFF); // no table of its own
}

// From a part at the origin to a rectangle.
static void WriteMatrix(int inWidth, int inHeight, const Rect& inTo, BigEndianWriter& ioWriter)
{
    const auto scale = [](int to, int from) { return (uint32_t)((int64_t)to * 0x10000 / from); };
    ioWriter.U32(scale(inTo.right - inTo.left, inWidth));
    ioWriter.Zeros(12);
    ioWriter.U32(scale(inTo.bottom - inTo.top, inHeight));
    ioWriter.Zeros(4);
    ioWriter.U32((uint32_t)inTo.left << 16);
    ioWriter.U32((uint32_t)inTo.top << 16);
    ioWriter.U32(0x40000000);
}

void WriteMattedImage(const ArgbPixels& inImage, const Rect& inPart, const Rect& inTo,
                      BigEndianWriter& ioWriter)
{
    static constexpr uint32_t kDescription = 86, kBeforeMatte = 68;
    const int width = inPart.right - inPart.left, height = inPart.bottom - inPart.top;
    const uint32_t count = (uint32_t)(width * height), matte = kDescription + count;
    const Rect part = { 0, 0, (short)height, (short)width };
    const auto eachPixel = [&](auto&& write) {
        for (int v = inPart.top; v < inPart.bottom; ++v)
            for (int h = inPart.left; h < inPart.right; ++h)
                write(inImage.pixels[(ptrdiff_t)v * inImage.width + h]);
    };
    ioWriter.U32(kBeforeMatte + matte + kDescription + 4 * count);
    ioWriter.U16(0); // version
    WriteMatrix(width, height, inTo, ioWriter);
    ioWriter.U32(matte);
    WriteRect(part, ioWriter);
    ioWriter.U16(srcCopy);
    WriteRect(part, ioWriter);
    ioWriter.Zeros(8); // accuracy, no mask region
    WriteRawDescription(width, height, 40, ioWriter);
    eachPixel([&](uint32_t pixel) { ioWriter.U8((uint8_t)(pixel >> 24)); });
    WriteRawDescription(width, height, 32, ioWriter);
    eachPixel([&](uint32_t pixel) { ioWriter.U32(pixel | 0xFF000000); });
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
