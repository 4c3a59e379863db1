#include "PictureBits.h"

#include "PackBits.h"

#include <quickdraw/PortRecord.h>
#include <quickdraw/RegionBytes.h>
#include <quickdraw/Surface.h>

#include <algorithm>
#include <cstring>

namespace lampblack::pictures {

using namespace quickdraw;
using namespace foundation;

static constexpr int kPixMapFlag = 0x8000, kRowBytesBits = 0x3FFF;
static constexpr int kSmallRow = 8;     // rows under 8 bytes are never packed
static constexpr int kLongCounts = 250; // rows longer than that have counts of two bytes
static constexpr int kTableOrder = 0x8000;

bool ReadMapHeader(BigEndianReader& ioReader, bool isDirect, MapHeader* out)
{
    const int rowBytes = ioReader.U16();
    out->rowBytes = rowBytes & kRowBytesBits;
    out->bounds = ioReader.ReadRect();
    out->isPixMap = isDirect || (rowBytes & kPixMapFlag);
    if (!out->isPixMap)
        return ioReader.Ok();
    ioReader.Skip(2); // version
    out->packType = ioReader.U16();
    ioReader.Skip(4 + 4 + 4 + 2); // packed size, resolutions, pixel type
    out->depth = ioReader.U16();
    out->channels = ioReader.U16();
    ioReader.Skip(2 + 4 + 4 + 4); // channel size, planes, table, reserved
    return ioReader.Ok() && IsDepth(out->depth);
}

RowCoding CodingOf(const MapHeader& inMap, bool isPacked)
{
    if (inMap.depth == 32 && inMap.packType == 2)
        return RowCoding::Triples;
    if (!isPacked || inMap.rowBytes < kSmallRow || (inMap.depth > 8 && inMap.packType == 1))
        return RowCoding::Plain;
    if (inMap.depth == 16)
        return RowCoding::PackedWords;
    return inMap.depth == 32 ? RowCoding::PackedChannels : RowCoding::PackedBytes;
}

// Tables of equal seeds count as equal, and two pictures may well hold different ones under one seed.
static SInt32 NextSeed()
{
    static SInt32 seed = 0x70000000;
    return ++seed;
}

std::unique_ptr<ColorSpace> ReadColorTable(BigEndianReader& ioReader)
{
    ioReader.Skip(4); // seed
    const bool byOrder = ioReader.U16() & kTableOrder;
    const int count = ioReader.U16() + 1;
    std::array<RGBColor, 256> colors = {};
    int used = 0;
    for (int i = 0; i < count && ioReader.Ok(); ++i) {
        const int value = ioReader.U16();
        const RGBColor color = { ioReader.U16(), ioReader.U16(), ioReader.U16() };
        const int index = byOrder ? i : value;
        if (index > 255)
            continue;
        colors[(size_t)index] = color;
        used = std::max(used, index + 1);
    }
    return ioReader.Ok() ? std::make_unique<ColorSpace>(colors.data(), used, NextSeed()) : nullptr;
}

static bool IsSensible(const MapHeader& inMap)
{
    return inMap.Width() > 0 && inMap.Height() > 0 && inMap.rowBytes > 0;
}

// A region that makes no sense has a size to go on with.
static bool ReadMask(BigEndianReader& ioReader, PictureBits* out)
{
    BigEndianReader ahead = ioReader;
    const size_t size = ahead.U16();
    const Bytes bytes = ioReader.ReadBytes(std::max<size_t>(size, 2));
    out->mask.emplace();
    out->isBroken = !ReadRegionBytes(bytes, &*out->mask, nullptr);
    return ioReader.Ok();
}

bool ReadPictureBits(int inOpcode, BigEndianReader& ioReader, PictureBits* out)
{
    const bool isDirect = inOpcode == kDirectBitsRect || inOpcode == kDirectBitsRgn;
    if (isDirect)
        ioReader.Skip(4); // a base address that marks the map as of the newer kind
    if (!ReadMapHeader(ioReader, isDirect, &out->map) || !IsSensible(out->map))
        return false;
    if (out->map.isPixMap && !isDirect) {
        out->colors = ReadColorTable(ioReader);
        if (!out->colors)
            return false;
    }
    out->coding = CodingOf(out->map, inOpcode >= kPackBitsRect);
    out->from = ioReader.ReadRect();
    out->to = ioReader.ReadRect();
    out->mode = ioReader.S16();
    return (inOpcode & 1) == 0 ? ioReader.Ok() : ReadMask(ioReader, out);
}

int NativeRowBytes(const MapHeader& inMap)
{
    return (int)(((int64_t)inMap.Width() * inMap.depth + 31) / 32 * 4);
}

RowReader::RowReader(const MapHeader& inMap, RowCoding inCoding, const BigEndianReader& inAt)
    : fMap(inMap), fCoding(inCoding), fReader(inAt)
{
    BigEndianReader rest = inAt;
    const Bytes all = rest.ReadBytes(rest.Remaining());
    fReadable = all.data() + all.size();
    // Decoded pixels and, for channels, up to four of them a pixel.
    const int most = std::max({ fMap.rowBytes, NativeRowBytes(fMap), fMap.Width() * 4 });
    fRow.resize((size_t)most + kUnpackSlack * 2);
}

bool RowReader::Next(Bytes* outRow)
{
    size_t count = 0;
    switch (fCoding) {
    case RowCoding::Plain: count = (size_t)fMap.rowBytes; break;
    case RowCoding::Triples: count = (size_t)fMap.Width() * 3; break;
    default: count = fMap.rowBytes > kLongCounts ? fReader.U16() : fReader.U8(); break;
    }
    if (!fReader.Ok() || (count > fReader.Remaining() && fCoding != RowCoding::Plain))
        return false;
    *outRow = fReader.ReadBytes(count);
    return fReader.Ok();
}

bool RowReader::Skip()
{
    Bytes row;
    return Next(&row);
}

bool RowReader::Read(uint8_t* outNative)
{
    Bytes row;
    if (!Next(&row))
        return false;
    Decode(row, outNative);
    return true;
}

static void ZeroFrom(uint8_t* outRow, size_t inUsed, size_t inWhole)
{
    if (inUsed < inWhole)
        std::memset(outRow + inUsed, 0, inWhole - inUsed);
}

void RowReader::Decode(Bytes inRow, uint8_t* outNative)
{
    const Packets packets = { inRow.data(), inRow.data() + inRow.size(), fReadable };
    uint8_t* row = fRow.data();
    switch (fCoding) {
    case RowCoding::Plain: return DecodePlain(inRow, outNative);
    case RowCoding::Triples:
        for (int i = 0; i < fMap.Width(); ++i) {
            const uint32_t color = (uint32_t)(inRow[i * 3] << 16 | inRow[i * 3 + 1] << 8 | inRow[i * 3 + 2]);
            std::memcpy(outNative + i * 4, &color, 4);
        }
        return;
    case RowCoding::PackedBytes:
        ZeroFrom(row, UnpackBytes(packets, row, (size_t)fMap.rowBytes), (size_t)fMap.rowBytes);
        return DecodePlain({ row, (size_t)fMap.rowBytes }, outNative);
    case RowCoding::PackedWords: {
        const size_t done = 2 * UnpackWords(packets, reinterpret_cast<uint16_t*>(row), (size_t)fMap.Width());
        std::memcpy(outNative, row, done);
        return ZeroFrom(outNative, done, (size_t)NativeRowBytes(fMap));
    }
    case RowCoding::PackedChannels: {
        const size_t whole = (size_t)fMap.Width() * (fMap.channels == 4 ? 4 : 3);
        ZeroFrom(row, UnpackBytes(packets, row, whole), whole);
        return DecodeChannels(row, outNative);
    }
    }
}

// Pixels as they are in memory of the time: indexes are the same, direct pixels are big-endian.
void RowReader::DecodePlain(Bytes inRow, uint8_t* outNative) const
{
    const size_t whole = (size_t)NativeRowBytes(fMap);
    if (fMap.depth <= 8) {
        const size_t used = std::min(whole, std::min(inRow.size(), (size_t)fMap.rowBytes));
        std::memcpy(outNative, inRow.data(), used);
        return ZeroFrom(outNative, used, whole);
    }
    const size_t size = (size_t)fMap.depth / 8;
    const size_t count =
        std::min({ (size_t)fMap.Width(), inRow.size() / size, (size_t)fMap.rowBytes / size });
    for (size_t i = 0; i < count; ++i) {
        if (size == 2) {
            const uint16_t pixel = LoadBE16(inRow.data() + i * 2) & 0x7FFF;
            std::memcpy(outNative + i * 2, &pixel, 2);
        } else {
            const uint32_t pixel = LoadBE32(inRow.data() + i * 4) & kColorBits;
            std::memcpy(outNative + i * 4, &pixel, 4);
        }
    }
    ZeroFrom(outNative, count * size, whole);
}

// Red, green and blue are the last three of the channels.
void RowReader::DecodeChannels(const uint8_t* inChannels, uint8_t* outNative) const
{
    const size_t width = (size_t)fMap.Width();
    const uint8_t* red = inChannels + (fMap.channels == 4 ? width : 0);
    for (size_t i = 0; i < width; ++i) {
        const uint32_t pixel =
            (uint32_t)red[i] << 16 | (uint32_t)red[width + i] << 8 | (uint32_t)red[2 * width + i];
        std::memcpy(outNative + i * 4, &pixel, 4);
    }
}

} // namespace lampblack::pictures
