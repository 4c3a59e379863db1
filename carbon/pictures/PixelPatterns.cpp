#include "PixelPatterns.h"

#include "PictureBits.h"
#include "PictureWriting.h"

#include <Carbon/MacMemory.h>
#include <quickdraw/ColorTables.h>
#include <quickdraw/PixMapBytes.h>
#include <quickdraw/PixelPatterns.h>
#include <quickdraw/PortRecord.h>

#include <bit>
#include <cstring>

namespace lampblack::pictures {

using namespace quickdraw;
using foundation::BigEndianWriter;

enum { kOldPattern = 0, kPixelPattern = 1, kMixedColor = 2 };

static constexpr int kLongestSide = 1024;

static bool IsSide(int inLength)
{
    return inLength > 0 && inLength <= kLongestSide && std::has_single_bit((unsigned)inLength);
}

static bool ReadRows(const MapHeader& inMap, BigEndianReader& ioReader, uint8_t* outRows)
{
    RowReader rows(inMap, CodingOf(inMap, true), ioReader);
    const size_t rowBytes = (size_t)NativeRowBytes(inMap);
    for (int row = 0; row < inMap.Height(); ++row)
        if (!rows.Read(outRows + (size_t)row * rowBytes))
            return false;
    ioReader.Seek(rows.Offset());
    return true;
}

static bool FillPattern(PixPat& ioPattern, const MapHeader& inMap, CTabHandle inTable,
                        BigEndianReader& ioReader)
{
    PixMap& map = **ioPattern.patMap;
    const CTabHandle before = map.pmTable;
    DescribePixels(map, inMap.depth);
    map.bounds = inMap.bounds;
    map.rowBytes = (short)(0x8000 | NativeRowBytes(inMap));
    map.pmTable = inTable ? inTable : before;
    if (inTable && before)
        DisposeCTable(before);
    const Size size = (Size)NativeRowBytes(inMap) * inMap.Height();
    SetHandleSize(ioPattern.patData, size);
    if (GetHandleSize(ioPattern.patData) != size)
        return false;
    return ReadRows(inMap, ioReader, reinterpret_cast<uint8_t*>(*ioPattern.patData));
}

static bool ReadPixels(PixPatHandle ioPattern, BigEndianReader& ioReader)
{
    MapHeader map;
    if (!ReadMapHeader(ioReader, true, &map) || !IsSide(map.Width()) || !IsSide(map.Height()))
        return false;
    const std::unique_ptr<ColorSpace> colors = ReadColorTable(ioReader);
    if (!colors)
        return false;
    const CTabHandle table = map.depth <= 8 ? NewTable(*colors) : nullptr;
    const bool isRead = FillPattern(**ioPattern, map, table, ioReader);
    PixPatChanged(ioPattern);
    return isRead;
}

static bool ReadKind(PixPatHandle ioPattern, int inType, BigEndianReader& ioReader)
{
    if (inType == kMixedColor) {
        const RGBColor color = { ioReader.U16(), ioReader.U16(), ioReader.U16() };
        MakeRGBPat(ioPattern, &color);
        return ioReader.Ok();
    }
    (**ioPattern).patType = (short)inType;
    return inType == kOldPattern || (inType == kPixelPattern && ReadPixels(ioPattern, ioReader));
}

PixPatHandle ReadPixelPattern(BigEndianReader& ioReader)
{
    const int type = ioReader.U16();
    const Bytes old = ioReader.ReadBytes(sizeof(Pattern));
    const PixPatHandle pattern = old.empty() ? nullptr : NewPixPat();
    if (!pattern)
        return nullptr;
    const bool isRead = ReadKind(pattern, type, ioReader);
    std::memcpy(&(**pattern).pat1Data, old.data(), sizeof(Pattern));
    if (isRead)
        return pattern;
    DisposePixPat(pattern);
    return nullptr;
}

bool WritePixelPattern(PixPatHandle inPattern, BigEndianWriter& ioWriter)
{
    const PatternSource source = SourceOf(inPattern);
    const PixPat* pattern = FindPattern(inPattern);
    if (!pattern || source.kind == PatternKind::Bits)
        return false;
    const bool isColor = source.kind == PatternKind::Color;
    ioWriter.U16(isColor ? kMixedColor : kPixelPattern);
    ioWriter.Write({ pattern->pat1Data.pat, sizeof(Pattern) });
    if (isColor) {
        WriteColor(source.color, ioWriter);
        return true;
    }
    Surface surface = SurfaceOf(**pattern->patMap, pattern->patData);
    const SpacePointer space = surface.depth <= 8 ? SpaceOf((**pattern->patMap).pmTable) : nullptr;
    surface.colors = space.get();
    WriteMapHeader(surface, surface.bounds, ioWriter);
    WriteColorTable(surface, ioWriter);
    WriteRows(surface, surface.bounds, ioWriter);
    return true;
}

} // namespace lampblack::pictures
