#include "RawImages.h"

#include "PictureBits.h"

#include <Carbon/QDColors.h>
#include <quickdraw/ColorTables.h>
#include <quickdraw/PortRecord.h>

#include <algorithm>
#include <cstring>
#include <new>

namespace lampblack::pictures {

using namespace quickdraw;
using namespace foundation;

static constexpr size_t kDescriptionSize = 86;
static constexpr int64_t kMostPixels = 16 << 20;
static constexpr int kGreys = 32; // added to a depth

bool ReadImageDescription(BigEndianReader& ioReader, ImageDescription* out)
{
    BigEndianReader ahead = ioReader;
    const size_t size = ahead.U32();
    out->whole = ioReader.ReadBytes(size);
    if (size < kDescriptionSize || !ioReader.Ok())
        return false;
    out->type = ReadBE32(out->whole, 4);
    out->width = ReadBE16(out->whole, 32);
    out->height = ReadBE16(out->whole, 34);
    out->dataSize = ReadBE32(out->whole, 44);
    out->depth = ReadBE16(out->whole, 82);
    out->table = (int16_t)ReadBE16(out->whole, 84);
    out->extensions = out->whole.subspan(kDescriptionSize);
    return true;
}

static int BitsOf(int inDepth)
{
    return inDepth > kGreys ? inDepth - kGreys : inDepth;
}

static bool IsKnownDepth(int inDepth)
{
    return inDepth == 16 || inDepth == 24 || inDepth == 32 ||
           (IsDepth(BitsOf(inDepth)) && BitsOf(inDepth) <= 8);
}

static bool MakeRoom(const ImageDescription& inImage, PixelValues* out)
{
    const int64_t count = (int64_t)inImage.width * inImage.height;
    if (count <= 0 || count > kMostPixels || !IsKnownDepth(inImage.depth))
        return false;
    out->width = inImage.width;
    out->height = inImage.height;
    out->isDirect = inImage.depth >= 16 && inImage.depth <= 32;
    out->bits = out->isDirect ? 0 : BitsOf(inImage.depth);
    out->values.assign((size_t)count, 0);
    return true;
}

static uint32_t Wide(uint32_t inWord)
{
    const auto channel = [inWord](int shift) {
        const uint32_t five = inWord >> shift & 31;
        return five << 3 | five >> 2;
    };
    return channel(10) << 16 | channel(5) << 8 | channel(0);
}

// One direct pixel of 16, 24 or 32 bits.
static uint32_t DirectAt(const uint8_t* inAt, int inDepth)
{
    if (inDepth == 16)
        return 0xFF000000 | Wide(LoadBE16(inAt));
    if (inDepth == 24)
        return 0xFF000000 | (uint32_t)(inAt[0] << 16 | inAt[1] << 8 | inAt[2]);
    return LoadBE32(inAt);
}

// Rows end at bytes, and some writers at words or at four bytes: the size of the data tells.
static size_t RawRowBytes(const ImageDescription& inImage, Bytes inData)
{
    const size_t least = ((size_t)inImage.width * (size_t)BitsOf(inImage.depth) + 7) / 8;
    const size_t height = (size_t)inImage.height;
    for (const size_t unit : { 1, 2, 4 }) {
        const size_t rowBytes = (least + unit - 1) / unit * unit;
        if (rowBytes * height == inImage.dataSize || rowBytes * height == inData.size())
            return rowBytes;
    }
    return least;
}

static bool DecodePlain(const ImageDescription& inImage, Bytes inData, PixelValues* out)
{
    const size_t rowBytes = RawRowBytes(inImage, inData), width = (size_t)inImage.width;
    const int bits = BitsOf(inImage.depth), bytes = inImage.depth / 8;
    if (inData.size() < rowBytes * (size_t)inImage.height)
        return false;
    for (size_t v = 0; v < (size_t)inImage.height; ++v) {
        const uint8_t* row = inData.data() + v * rowBytes;
        uint32_t* values = out->values.data() + v * width;
        for (size_t h = 0; h < width; ++h) {
            if (out->isDirect)
                values[h] = DirectAt(row + h * (size_t)bytes, inImage.depth);
            else
                values[h] =
                    row[h * (size_t)bits / 8] >> (8 - bits - (int)(h * (size_t)bits % 8)) & ((1 << bits) - 1);
        }
    }
    return true;
}

// Where runs go to. A unit is one direct pixel, 4 bytes of indexes, or 2 bytes at depth 1.
class RunWriter {
public:
    RunWriter(const ImageDescription& inImage, PixelValues* out)
        : fImage(inImage), fOut(*out), fBits(BitsOf(inImage.depth))
    {
        fUnitBytes = out->isDirect ? (size_t)inImage.depth / 8 : fBits == 1 ? 2 : 4;
        fUnitPixels = out->isDirect ? 1 : (int64_t)fUnitBytes * 8 / fBits;
    }

    size_t UnitBytes() const { return fUnitBytes; }
    void GoTo(int row, int64_t unit)
    {
        fRow = row;
        fAt = unit * fUnitPixels;
    }
    void Skip(int64_t units) { fAt += units * fUnitPixels; }
    void Put(const uint8_t* inUnit)
    {
        for (int64_t i = 0; i < fUnitPixels; ++i, ++fAt)
            if (fRow >= 0 && fRow < fImage.height && fAt >= 0 && fAt < fImage.width)
                fOut.values[(size_t)(fRow * (int64_t)fImage.width + fAt)] = ValueAt(inUnit, i);
    }

private:
    uint32_t ValueAt(const uint8_t* inUnit, int64_t i) const
    {
        if (fOut.isDirect)
            return DirectAt(inUnit, fImage.depth);
        const int64_t bit = i * fBits;
        return (uint32_t)(inUnit[bit / 8] >> (8 - fBits - bit % 8) & ((1 << fBits) - 1));
    }

    const ImageDescription& fImage;
    PixelValues& fOut;
    int fBits;
    size_t fUnitBytes = 0;
    int64_t fUnitPixels = 0;
    int fRow = 0;
    int64_t fAt = 0;
};

// What a count says: so many units, or one unit so many times. False at the end of the data.
static bool PutRun(int inCount, BigEndianReader& ioReader, RunWriter& ioWriter)
{
    const size_t units = inCount > 0 ? (size_t)inCount : 1;
    const Bytes data = ioReader.ReadBytes(units * ioWriter.UnitBytes());
    for (int i = 0; i < std::abs(inCount) && ioReader.Ok(); ++i)
        ioWriter.Put(data.data() + (inCount > 0 ? (size_t)i * ioWriter.UnitBytes() : 0));
    return ioReader.Ok();
}

// A row: how far to skip, plus one; counts and units; 0 before another skip, -1 at the end.
static bool ReadRunRow(int inRow, BigEndianReader& ioReader, RunWriter& ioWriter)
{
    const int skip = ioReader.U8();
    if (skip == 0 || !ioReader.Ok())
        return false;
    ioWriter.GoTo(inRow, skip - 1);
    for (;;) {
        const int count = ioReader.S8();
        if (!ioReader.Ok())
            return false;
        if (count == -1)
            return true;
        if (count == 0)
            ioWriter.Skip(ioReader.U8() - 1);
        else if (!PutRun(count, ioReader, ioWriter))
            return false;
    }
}

// At depth 1 each run has a skip before it, whose highest bit goes to the next row; a count of 0 ends.
static void ReadOneBitRuns(int inFirst, int inRows, BigEndianReader& ioReader, RunWriter& ioWriter)
{
    static constexpr int kNextRow = 0x80;
    for (int row = inFirst - 1; row < inFirst + inRows;) {
        const int skip = ioReader.U8(), count = ioReader.S8();
        if (count == 0 || !ioReader.Ok())
            return;
        if (skip & kNextRow)
            ioWriter.GoTo(++row, skip & ~kNextRow);
        else
            ioWriter.Skip(skip);
        if (!PutRun(count, ioReader, ioWriter))
            return;
    }
}

static bool DecodeRuns(const ImageDescription& inImage, Bytes inData, PixelValues* out)
{
    static constexpr int kPartOfRows = 8;
    BigEndianReader reader(inData);
    reader.Skip(4); // flags and size
    const int header = reader.U16();
    int first = 0, rows = inImage.height;
    if (header & kPartOfRows) {
        first = reader.U16();
        reader.Skip(2);
        rows = reader.U16();
        reader.Skip(2);
    }
    if (!reader.Ok())
        return false;
    RunWriter writer(inImage, out);
    if (out->bits == 1) {
        ReadOneBitRuns(first, rows, reader, writer);
        return true;
    }
    for (int row = first; row < first + rows && ReadRunRow(row, reader, writer);)
        ++row;
    return true;
}

bool DecodeRaw(const ImageDescription& inImage, Bytes inData, PixelValues* out)
{
    if (!IsRawType(inImage.type) || !MakeRoom(inImage, out))
        return false;
    return inImage.type == 'raw ' ? DecodePlain(inImage, inData, out) : DecodeRuns(inImage, inData, out);
}

static std::array<uint32_t, 256> GreysOf(int inBits)
{
    std::array<uint32_t, 256> colors = {};
    const int last = (1 << inBits) - 1;
    for (int i = 0; i <= last; ++i)
        colors[(size_t)i] = (uint32_t)(255 - i * 255 / last) * 0x010101; // 0 is white
    return colors;
}

static std::array<uint32_t, 256> ColorsOf(const ColorSpace& inSpace)
{
    std::array<uint32_t, 256> colors;
    std::copy_n(inSpace.Colors(), 256, colors.begin());
    return colors;
}

static std::array<uint32_t, 256> TableOf(const ImageDescription& inImage)
{
    const int bits = BitsOf(inImage.depth);
    if (inImage.depth > kGreys)
        return GreysOf(bits);
    if (inImage.table == 0) {
        BigEndianReader reader(inImage.extensions);
        if (const std::unique_ptr<ColorSpace> colors = ReadColorTable(reader))
            return ColorsOf(*colors);
    } else if (inImage.table > 0) {
        const CTabHandle table = GetCTable((short)inImage.table);
        const SpacePointer space = table ? SpaceOf(table) : nullptr;
        if (table)
            DisposeCTable(table);
        if (space)
            return ColorsOf(*space);
    }
    return ColorsOf(StandardColors(bits));
}

bool ColorsOf(const ImageDescription& inImage, const PixelValues& inValues, DecodedImage* out)
{
    const size_t count = inValues.values.size();
    out->pixels.reset(new (std::nothrow) uint32_t[count]);
    if (!out->pixels)
        return false;
    out->width = inValues.width;
    out->height = inValues.height;
    out->hasAlpha = false;
    if (inValues.isDirect) {
        std::copy_n(inValues.values.data(), count, out->pixels.get());
        return true;
    }
    const std::array<uint32_t, 256> colors = TableOf(inImage);
    for (size_t i = 0; i < count; ++i)
        out->pixels[i] = colors[inValues.values[i] & 0xFF];
    return true;
}

} // namespace lampblack::pictures
