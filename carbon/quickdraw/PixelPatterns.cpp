// Pixel patterns: making and disposing of them, their expansion into colours, and the calls that use them.
#include "PixelPatterns.h"

#include "ColorTables.h"

#include <Carbon/MacErrors.h>
#include <Carbon/MacMemory.h>
#include <Carbon/Resources.h>

#include <memory/HandleBlock.h>

#include <bit>
#include <cstring>
#include <vector>

using namespace lampblack::quickdraw;

namespace lampblack::quickdraw {

static constexpr int kLongestSide = 1024;
static constexpr int kColorEntry = 4; // where the table of a mixed colour holds that colour itself

PixPat* FindPattern(PixPatHandle inPattern)
{
    const memory::HandleBlock* block = lampblack::memory::FindHandle(reinterpret_cast<Handle>(inPattern));
    return block && block->data && block->size >= (Size)sizeof(PixPat)
               ? reinterpret_cast<PixPat*>(block->data)
               : nullptr;
}

// What patXData holds: colours, behind their width and height.
struct Expansion {
    SInt32 width, height;
    uint32_t colors[1];
};
static constexpr Size kExpansionHead = offsetof(Expansion, colors);

static Size SizeOfHandle(Handle inHandle)
{
    const memory::HandleBlock* block = lampblack::memory::FindHandle(inHandle);
    return block && block->data ? block->size : 0;
}

static bool IsSide(SInt32 inLength)
{
    return inLength > 0 && inLength <= kLongestSide && std::has_single_bit((uint32_t)inLength);
}

// The expansion in a handle, if it is whole.
static Tile TileIn(Handle inData)
{
    const Size size = SizeOfHandle(inData);
    if (size < kExpansionHead)
        return {};
    const auto* expansion = reinterpret_cast<const Expansion*>(*inData);
    const SInt32 width = expansion->width, height = expansion->height;
    if (!IsSide(width) || !IsSide(height) || size < kExpansionHead + (Size)width * height * 4)
        return {};
    return { expansion->colors, width, height };
}

// The pixels of a pattern's map, which an application may have made; no base for what they cannot be.
static Surface SurfaceOf(const PixPat& inPattern)
{
    const PixMap* map = FindPixMap(inPattern.patMap);
    if (!map || !IsDepth(map->pixelSize))
        return {};
    Surface surface;
    surface.depth = map->pixelSize;
    surface.rowBytes = map->rowBytes & 0x3FFF;
    surface.bounds = map->bounds;
    const int width = map->bounds.right - map->bounds.left, height = map->bounds.bottom - map->bounds.top;
    const bool isWhole = IsSide(width) && IsSide(height) && surface.rowBytes * 8 >= width * surface.depth &&
                         (surface.depth < 16 || surface.rowBytes % (surface.depth / 8) == 0) &&
                         SizeOfHandle(inPattern.patData) >= (Size)surface.rowBytes * height;
    if (isWhole)
        surface.base = reinterpret_cast<uint8_t*>(*inPattern.patData);
    return surface;
}

static void Expand(PixPatHandle inHandle)
{
    Surface surface = SurfaceOf(**inHandle);
    if (!surface.base)
        return;
    const SpacePointer space = surface.depth <= 8 ? SpaceOf((**(**inHandle).patMap).pmTable) : nullptr;
    surface.colors = space.get();
    const int width = surface.bounds.right - surface.bounds.left;
    const int height = surface.bounds.bottom - surface.bounds.top;
    const Handle data = NewHandle(kExpansionHead + (Size)width * height * 4);
    if (!data)
        return;
    auto* expansion = reinterpret_cast<Expansion*>(*data);
    *expansion = { width, height, { 0 } };
    for (int row = 0; row < height; ++row)
        ReadColors(surface, surface.bounds.top + row, surface.bounds.left, width,
                   expansion->colors + (ptrdiff_t)row * width);
    if (SizeOfHandle((**inHandle).patXData) > 0)
        DisposeHandle((**inHandle).patXData);
    (**inHandle).patXData = data;
    (**inHandle).patXValid = 0;
}

static PatternSource ColorSourceOf(const PixPat& inPattern)
{
    const PixMap* map = FindPixMap(inPattern.patMap);
    const SpacePointer space = map ? SpaceOf(map->pmTable) : nullptr;
    PatternSource source;
    if (!space || space->Count() == 0)
        return source;
    source.kind = PatternKind::Color;
    source.color = space->Exact(std::min(kColorEntry, space->Count() - 1));
    return source;
}

PatternSource SourceOf(PixPatHandle inHandle)
{
    PatternSource source;
    const PixPat* pattern = FindPattern(inHandle);
    if (!pattern || pattern->patType == 0)
        return source;
    if (pattern->patType == 2)
        return ColorSourceOf(*pattern);
    if (pattern->patXValid != 0)
        Expand(inHandle);
    if (pattern->patXValid == 0)
        source.tile = TileIn(pattern->patXData);
    if (source.tile.colors)
        source.kind = PatternKind::Pixels;
    return source;
}

// The fields of a pixel map in a resource.
struct MapFields {
    PixMap map;
    size_t tableOffset;
};

static MapFields ReadMap(foundation::Bytes inBytes, size_t inOffset)
{
    foundation::BigEndianReader reader(inBytes, inOffset);
    MapFields fields = {};
    PixMap& map = fields.map;
    reader.Skip(4);
    map.rowBytes = (short)(reader.S16() & 0x3FFF);
    map.bounds = reader.ReadRect();
    reader.Skip(4 + 4 + 8 + 2); // version, packing, resolution, kind
    map.pixelSize = reader.S16();
    reader.Skip(4 + 4);
    fields.tableOffset = reader.U32();
    reader.Skip(4);
    if (!reader.Ok())
        map.pixelSize = 0;
    return fields;
}

// Rows in the platform's own layout: indexes as they are, direct pixels as native words.
static void CopyRows(foundation::Bytes inRows, int inRowBytes, int inDepth, int inHeight, int inNewRowBytes,
                     uint8_t* outRows)
{
    for (int row = 0; row < inHeight; ++row) {
        uint8_t* to = outRows + (size_t)row * (size_t)inNewRowBytes;
        std::memcpy(to, inRows.data() + (size_t)row * (size_t)inRowBytes,
                    (size_t)std::min(inRowBytes, inNewRowBytes));
        for (int at = 0; inDepth >= 16 && at < inNewRowBytes; at += inDepth / 8)
            inDepth == 16 ? foundation::Flip16(to + at) : foundation::Flip32(to + at);
    }
}

static bool TakePixels(PixPat& ioPattern, const PixMap& inFields, foundation::Bytes inRows)
{
    const int width = inFields.bounds.right - inFields.bounds.left;
    const int height = inFields.bounds.bottom - inFields.bounds.top, depth = inFields.pixelSize;
    if (!IsSide(width) || !IsSide(height) || inFields.rowBytes * 8 < width * depth ||
        inRows.size() < (size_t)inFields.rowBytes * (size_t)height)
        return false;
    const int rowBytes = RowBytesFor(width, depth);
    const Handle rows = NewHandleClear((Size)rowBytes * height);
    if (!rows)
        return false;
    CopyRows(inRows, inFields.rowBytes, depth, height, rowBytes, reinterpret_cast<uint8_t*>(*rows));
    DisposeHandle(ioPattern.patData);
    ioPattern.patData = rows;
    PixMap& map = **ioPattern.patMap;
    DescribePixels(map, depth);
    map.rowBytes = (short)(0x8000 | rowBytes);
    map.bounds = { 0, 0, (short)height, (short)width };
    return true;
}

// Takes the place of the map's table. Indexes without a table count as those of the standard one.
static bool TakeTable(PixPat& ioPattern, foundation::Bytes inBytes, size_t inOffset)
{
    foundation::BigEndianReader reader(inBytes, inOffset);
    const std::optional<TableEntries> entries = ReadTable(reader);
    const CTabHandle table = entries ? NewTable(*entries) : nullptr;
    if (!table)
        return false;
    PixMap& map = **ioPattern.patMap;
    DisposeCTable(map.pmTable);
    map.pmTable = table;
    return true;
}

static bool FillFrom(PixPat& ioPattern, foundation::Bytes inBytes)
{
    foundation::BigEndianReader reader(inBytes);
    const short type = reader.S16();
    const size_t mapOffset = reader.U32(), dataOffset = reader.U32();
    reader.Skip(10);
    const foundation::Bytes bits = reader.ReadBytes(8);
    if (!reader.Ok() || type < 0 || type > 2)
        return false;
    ioPattern.patType = type;
    std::memcpy(ioPattern.pat1Data.pat, bits.data(), 8);
    if (type == 0)
        return true;
    const MapFields fields = ReadMap(inBytes, mapOffset);
    const bool isIndexed = fields.map.pixelSize <= 8;
    if (!IsDepth(fields.map.pixelSize) || dataOffset > inBytes.size())
        return false;
    if (isIndexed && !TakeTable(ioPattern, inBytes, fields.tableOffset))
        return false;
    const bool hasPixels = TakePixels(ioPattern, fields.map, inBytes.subspan(dataOffset));
    return hasPixels || (type == 2 && isIndexed); // a colour's own pixels are of no use
}

PixPatHandle PatternFromBytes(foundation::Bytes inBytes)
{
    const PixPatHandle pattern = NewPixPat();
    if (pattern && !FillFrom(**pattern, inBytes)) {
        DisposePixPat(pattern);
        return nullptr;
    }
    return pattern;
}

static Handle CopyOf(Handle inHandle)
{
    Handle copy = SizeOfHandle(inHandle) > 0 ? inHandle : nullptr;
    return copy && HandToHand(&copy) == noErr ? copy : NewHandle(0);
}

// The four colours nearest to a colour on its way from black to white, and the colour itself.
static CTabHandle NewMixTable(const RGBColor& inColor)
{
    const auto mixed = [&](int part) {
        const auto level = [part](UInt16 c) {
            return (UInt16)(part <= 2 ? c * part / 2 : c + (0xFFFF - c) * (part - 2) / 2);
        };
        return RGBColor{ level(inColor.red), level(inColor.green), level(inColor.blue) };
    };
    const RGBColor colors[] = { mixed(4), mixed(3), mixed(1), mixed(0), inColor };
    return NewTable(colors, 5, GetCTSeed());
}

static void SetPen(PortRecord* ioPort, PixPatHandle inPattern)
{
    const PixPat* pattern = FindPattern(inPattern);
    if (!ioPort || !pattern)
        return;
    ioPort->fPen.pattern = pattern->pat1Data;
    ioPort->fPen.pixels = inPattern;
}

static void SetBack(PortRecord* ioPort, PixPatHandle inPattern)
{
    const PixPat* pattern = FindPattern(inPattern);
    if (!ioPort || !pattern)
        return;
    ioPort->fBackPattern = pattern->pat1Data;
    ioPort->fBackPixels = inPattern;
}

static PixPatHandle CopyOut(PixPatHandle inPixels, const Pattern& inBits, PixPatHandle ioPattern)
{
    PixPat* pattern = FindPattern(ioPattern);
    if (!pattern)
        return ioPattern;
    if (FindPattern(inPixels)) {
        CopyPixPat(inPixels, ioPattern);
        return ioPattern;
    }
    pattern->patType = 0;
    pattern->pat1Data = inBits;
    return ioPattern;
}

// Calls a Fill that uses the pixels of a pattern, or its bits where it has none.
template <class Fill>
static void FillWith(PixPatHandle inPattern, Fill inFill)
{
    PortRecord* port = CurrentPort();
    const PixPat* pattern = FindPattern(inPattern);
    if (!port || !pattern)
        return;
    const Pattern bits = pattern->pat1Data;
    port->fFillPixels = inPattern;
    inFill(&bits);
    port->fFillPixels = nullptr;
}

} // namespace lampblack::quickdraw

PixPatHandle NewPixPat(void)
{
    const auto handle = reinterpret_cast<PixPatHandle>(NewHandleClear(sizeof(PixPat)));
    const PixMapHandle map = handle ? NewPixMap() : nullptr;
    const Handle data = map ? NewHandle(0) : nullptr;
    SetQDError(data ? noErr : cNoMemErr);
    if (!data) {
        DisposePixMap(map);
        DisposeHandle(reinterpret_cast<Handle>(handle));
        return nullptr;
    }
    (**map).bounds = { 0, 0, 8, 8 };
    PixPat& pattern = **handle;
    pattern.patType = 1;
    pattern.patMap = map;
    pattern.patData = data;
    pattern.patXValid = -1;
    pattern.pat1Data = { { 0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55 } };
    return handle;
}

void DisposePixPat(PixPatHandle pp)
{
    const PixPat* pattern = FindPattern(pp);
    if (!pattern)
        return;
    const PixPat parts = *pattern;
    DisposePixMap(parts.patMap);
    for (const Handle part : { parts.patData, parts.patXData, parts.patXMap, reinterpret_cast<Handle>(pp) })
        if (lampblack::memory::FindHandle(part))
            DisposeHandle(part);
}

void CopyPixPat(PixPatHandle srcPP, PixPatHandle dstPP)
{
    const PixPat* from = FindPattern(srcPP);
    PixPat* to = FindPattern(dstPP);
    if (!from || !to || from == to)
        return;
    to->patType = from->patType;
    to->pat1Data = from->pat1Data;
    to->patXValid = -1;
    if (FindPixMap(from->patMap) && FindPixMap(to->patMap))
        CopyPixMap(from->patMap, to->patMap);
    const Handle data = CopyOf(from->patData);
    if (lampblack::memory::FindHandle(to->patData))
        DisposeHandle(to->patData);
    to->patData = data;
}

void MakeRGBPat(PixPatHandle pp, const RGBColor* myColor)
{
    PixPat* pattern = FindPattern(pp);
    PixMap* map = pattern ? FindPixMap(pattern->patMap) : nullptr;
    const CTabHandle table = map && myColor ? NewMixTable(*myColor) : nullptr;
    if (!table)
        return;
    DisposeCTable(map->pmTable);
    map->pmTable = table;
    map->bounds = { 0, 0, 8, 8 };
    pattern->patType = 2;
    pattern->patXValid = -1;
}

PixPatHandle GetPixPat(short patID)
{
    const Handle resource = GetResource('ppat', patID);
    if (!resource || !*resource) {
        SetQDError(resNotFound);
        return nullptr;
    }
    const PixPatHandle pattern =
        PatternFromBytes({ reinterpret_cast<const uint8_t*>(*resource), (size_t)GetHandleSize(resource) });
    SetQDError(pattern ? noErr : paramErr);
    return pattern;
}

void PixPatChanged(PixPatHandle ppat)
{
    PixPat* pattern = FindPattern(ppat);
    if (!pattern)
        return;
    pattern->patXValid = -1;
    if (const PixMap* map = FindPixMap(pattern->patMap))
        CTabChanged(map->pmTable);
}

void PortChanged(GrafPtr port)
{
    const PortRecord* record = FindPort(port);
    if (!record)
        return;
    CTabChanged(record->fMap.pmTable);
    PixPatChanged(record->fPen.pixels);
    PixPatChanged(record->fBackPixels);
}

void PenPixPat(PixPatHandle pp)
{
    SetPen(CurrentPort(), pp);
}

void BackPixPat(PixPatHandle pp)
{
    SetBack(CurrentPort(), pp);
}

PixPatHandle GetPortPenPixPat(CGrafPtr port, PixPatHandle penPattern)
{
    const PortRecord* record = FindPort(port);
    return record ? CopyOut(record->fPen.pixels, record->fPen.pattern, penPattern) : penPattern;
}

PixPatHandle GetPortBackPixPat(CGrafPtr port, PixPatHandle backPattern)
{
    const PortRecord* record = FindPort(port);
    return record ? CopyOut(record->fBackPixels, record->fBackPattern, backPattern) : backPattern;
}

void SetPortPenPixPat(CGrafPtr port, PixPatHandle penPattern)
{
    SetPen(FindPort(port), penPattern);
}

void SetPortBackPixPat(CGrafPtr port, PixPatHandle backPattern)
{
    SetBack(FindPort(port), backPattern);
}

void FillCRect(const Rect* r, PixPatHandle pp)
{
    FillWith(pp, [=](const Pattern* bits) { FillRect(r, bits); });
}

void FillCOval(const Rect* r, PixPatHandle pp)
{
    FillWith(pp, [=](const Pattern* bits) { FillOval(r, bits); });
}

void FillCRoundRect(const Rect* r, short ovalWidth, short ovalHeight, PixPatHandle pp)
{
    FillWith(pp, [=](const Pattern* bits) { FillRoundRect(r, ovalWidth, ovalHeight, bits); });
}

void FillCArc(const Rect* r, short startAngle, short arcAngle, PixPatHandle pp)
{
    FillWith(pp, [=](const Pattern* bits) { FillArc(r, startAngle, arcAngle, bits); });
}

void FillCRgn(RgnHandle rgn, PixPatHandle pp)
{
    FillWith(pp, [=](const Pattern* bits) { FillRgn(rgn, bits); });
}

void FillCPoly(PolyHandle poly, PixPatHandle pp)
{
    FillWith(pp, [=](const Pattern* bits) { FillPoly(poly, bits); });
}
