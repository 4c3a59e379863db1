// Colour cursors: 'crsr' resources, given to the machine in all their colours.
#include "ColorTables.h"
#include "CursorImage.h"
#include "PixMapBytes.h"

#include <Carbon/MacMemory.h>
#include <Carbon/QDRegions.h>
#include <Carbon/Resources.h>

#include <algorithm>

using namespace lampblack;
using namespace lampblack::quickdraw;

namespace lampblack::quickdraw {

static constexpr short kWithColors = (short)0x8001, kWithoutColors = (short)0x8000;

// Where the parts of the resource are, from its beginning.
struct Offsets {
    uint32_t map = 0, pixels = 0, table = 0;
};

static bool ReadRecord(foundation::BigEndianReader& ioReader, CCrsr* out, Offsets* outOffsets)
{
    out->crsrType = ioReader.S16();
    outOffsets->map = ioReader.U32();
    outOffsets->pixels = ioReader.U32();
    ioReader.Skip(4 + 2 + 4); // expanded data, of which a file has none
    for (SInt16& row : out->crsr1Data)
        row = ioReader.S16();
    for (SInt16& row : out->crsrMask)
        row = ioReader.S16();
    out->crsrHotSpot = ioReader.ReadPoint();
    ioReader.Skip(4);
    out->crsrID = ioReader.S32();
    return ioReader.Ok() && (out->crsrType == kWithColors || out->crsrType == kWithoutColors);
}

static Handle NewRecord(const void* inRecord, size_t inSize)
{
    Handle handle = nullptr;
    return PtrToHand(inRecord, &handle, (Size)inSize) == noErr ? handle : nullptr;
}

// Reads pixels and colours into new handles of the cursor; what was made stays there when it fails.
static bool ReadColors(foundation::Bytes inBytes, Offsets inOffsets, CCrsr& ioCursor)
{
    foundation::BigEndianReader reader(inBytes, inOffsets.map);
    PixMap map;
    if (!ReadPixMap(reader, &map, &inOffsets.table))
        return false;
    ioCursor.crsrMap = reinterpret_cast<PixMapHandle>(NewRecord(&map, sizeof map));
    ioCursor.crsrData = NewPixelHandle(map, foundation::Slice(inBytes, inOffsets.pixels, PixelBytesOf(map)));
    if (!ioCursor.crsrMap || !ioCursor.crsrData)
        return false;
    if (map.pixelSize > 8)
        return true;
    foundation::BigEndianReader tableReader(inBytes, inOffsets.table);
    const std::optional<TableEntries> table = ReadTable(tableReader);
    (*ioCursor.crsrMap)->pmTable = table ? NewTable(*table) : nullptr;
    return (*ioCursor.crsrMap)->pmTable != nullptr;
}

static void DisposeIfValid(void* inHandle)
{
    if (IsHandleValid(static_cast<Handle>(inHandle)))
        DisposeHandle(static_cast<Handle>(inHandle));
}

static PixMap* MapOf(const CCrsr& inCursor)
{
    const Handle map = reinterpret_cast<Handle>(inCursor.crsrMap);
    return IsHandleValid(map) && (size_t)GetHandleSize(map) >= sizeof(PixMap) ? *inCursor.crsrMap : nullptr;
}

static void DisposeParts(const CCrsr& inCursor)
{
    if (const PixMap* map = MapOf(inCursor))
        DisposeIfValid(map->pmTable);
    DisposeIfValid(inCursor.crsrMap);
    DisposeIfValid(inCursor.crsrData);
    DisposeIfValid(inCursor.crsrXData);
    DisposeIfValid(inCursor.crsrXHandle);
}

CCrsrHandle ReadColorCursor(foundation::Bytes inBytes)
{
    CCrsr cursor = {};
    Offsets offsets;
    foundation::BigEndianReader reader(inBytes);
    if (!ReadRecord(reader, &cursor, &offsets))
        return nullptr;
    const bool isRead = cursor.crsrType == kWithoutColors || ReadColors(inBytes, offsets, cursor);
    const Handle handle = isRead ? NewRecord(&cursor, sizeof cursor) : nullptr;
    if (!handle)
        DisposeParts(cursor);
    return reinterpret_cast<CCrsrHandle>(handle);
}

static CCrsr* FindCursor(CCrsrHandle inCursor)
{
    const Handle handle = reinterpret_cast<Handle>(inCursor);
    return IsHandleValid(handle) && (size_t)GetHandleSize(handle) >= sizeof(CCrsr) ? *inCursor : nullptr;
}

// The colours of the first 16 pixels of the first 16 rows; false when the record is not whole.
static bool ColorsOf(const CCrsr& inCursor, uint32_t (&outColors)[16][16])
{
    const PixMap* map = MapOf(inCursor);
    Surface surface = map ? SurfaceOf(*map, inCursor.crsrData) : Surface();
    if (!surface.base)
        return false;
    const SpacePointer space = surface.depth <= 8 ? SpaceOf(map->pmTable) : nullptr;
    if (surface.depth <= 8 && !space)
        return false;
    surface.colors = space.get();
    const Rect& bounds = surface.bounds;
    const int width = std::min(16, bounds.right - bounds.left),
              height = std::min(16, bounds.bottom - bounds.top);
    for (int v = 0; v < height; ++v)
        ReadColors(surface, bounds.top + v, bounds.left, width, outColors[v]);
    return true;
}

} // namespace lampblack::quickdraw

CCrsrHandle GetCCursor(short crsrID)
{
    const Handle resource = GetResource('crsr', crsrID);
    if (!resource || !*resource)
        return nullptr;
    return ReadColorCursor({ reinterpret_cast<const uint8_t*>(*resource), (size_t)GetHandleSize(resource) });
}

void SetCCursor(CCrsrHandle cCrsr)
{
    const CCrsr* cursor = FindCursor(cCrsr);
    if (!cursor)
        return;
    Cursor plain = { {}, {}, cursor->crsrHotSpot };
    std::copy_n(cursor->crsr1Data, 16, plain.data);
    std::copy_n(cursor->crsrMask, 16, plain.mask);
    uint32_t colors[16][16];
    std::fill_n(&colors[0][0], 16 * 16, 0x00FFFFFFu);
    if (cursor->crsrType == kWithoutColors)
        ShowCursorPicture(plain);
    else if (ColorsOf(*cursor, colors))
        ShowCursorPicture(plain, &colors[0][0]);
}

void DisposeCCursor(CCrsrHandle cCrsr)
{
    CCrsr* cursor = FindCursor(cCrsr);
    if (!cursor)
        return;
    DisposeParts(*cursor);
    DisposeHandle(reinterpret_cast<Handle>(cCrsr));
}
