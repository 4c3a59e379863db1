#include "icons/ColorIcons.h"

#include "icons/Suites.h"

#include <Carbon/MacMemory.h>
#include <Carbon/Resources.h>
#include <quickdraw/ColorTables.h>
#include <quickdraw/PixMapBytes.h>

#include <cstddef>
#include <cstring>

using namespace lampblack::icons;

namespace lampblack::icons {

static constexpr size_t kMaskOffset = offsetof(CIcon, iconMaskData);
static constexpr int kRowBytesBits = 0x3FFF;
static constexpr uint32_t kOpaque = 0xFF000000, kWhite = 0x00FFFFFF;

static size_t BytesIn(const BitMap& inMap)
{
    const int height = inMap.bounds.bottom - inMap.bounds.top;
    return height > 0 ? (size_t)height * (size_t)(inMap.rowBytes & kRowBytesBits) : 0;
}

static int WidthOf(const Rect& inRect)
{
    return inRect.right - inRect.left;
}

static bool HasWholeRows(const BitMap& inMap)
{
    return WidthOf(inMap.bounds) >= 0 && (inMap.rowBytes & kRowBytesBits) * 8 >= WidthOf(inMap.bounds);
}

static BitMap ReadBitMap(foundation::BigEndianReader& ioReader)
{
    ioReader.Skip(4);
    BitMap map = {};
    map.rowBytes = (short)(ioReader.U16() & kRowBytesBits);
    map.bounds = ioReader.ReadRect();
    return map;
}

// The record with the bits of mask and icon behind it, in a new handle.
static CIconHandle NewRecord(const CIcon& inIcon, Bytes inMask, Bytes inBits)
{
    const size_t size = std::max(sizeof(CIcon), kMaskOffset + inMask.size() + inBits.size());
    const Handle handle = NewHandleClear((Size)size);
    if (!handle)
        return nullptr;
    std::memcpy(*handle, &inIcon, kMaskOffset);
    if (!inMask.empty())
        std::memcpy(*handle + kMaskOffset, inMask.data(), inMask.size());
    if (!inBits.empty())
        std::memcpy(*handle + kMaskOffset + inMask.size(), inBits.data(), inBits.size());
    return reinterpret_cast<CIconHandle>(handle);
}

static void DisposeParts(const CIcon& inIcon)
{
    for (const Handle part : { reinterpret_cast<Handle>(inIcon.iconPMap.pmTable), inIcon.iconData })
        if (IsHandleValid(part))
            DisposeHandle(part);
}

// Reads colours and pixels into new handles of the icon; what was made stays there when it fails.
static bool ReadColors(foundation::BigEndianReader& ioReader, CIcon& ioIcon)
{
    PixMap& map = ioIcon.iconPMap;
    const std::optional<quickdraw::TableEntries> table = quickdraw::ReadTable(ioReader);
    if (!table)
        return false;
    if (map.pixelSize <= 8)
        map.pmTable = quickdraw::NewTable(*table);
    ioIcon.iconData = quickdraw::NewPixelHandle(map, ioReader.ReadBytes(quickdraw::PixelBytesOf(map)));
    return ioIcon.iconData && (map.pmTable || map.pixelSize > 8);
}

CIconHandle NewColorIcon(Bytes inBytes)
{
    foundation::BigEndianReader reader(inBytes);
    CIcon icon = {};
    uint32_t table = 0;
    if (!quickdraw::ReadPixMap(reader, &icon.iconPMap, &table))
        return nullptr;
    icon.iconMask = ReadBitMap(reader);
    icon.iconBMap = ReadBitMap(reader);
    reader.Skip(4); // where the pixels were in memory
    const Bytes mask = reader.ReadBytes(BytesIn(icon.iconMask));
    const Bytes bits = reader.ReadBytes(BytesIn(icon.iconBMap));
    if (!reader.Ok() || !HasWholeRows(icon.iconMask) ||
        (icon.iconBMap.rowBytes && !HasWholeRows(icon.iconBMap)))
        return nullptr;
    const CIconHandle made = ReadColors(reader, icon) ? NewRecord(icon, mask, bits) : nullptr;
    if (!made)
        DisposeParts(icon);
    return made;
}

// The record in a handle, which an application may have changed: its bits must lie within it.
struct Record {
    const CIcon* icon = nullptr;
    Bytes mask, bits;
};

static bool FindRecord(CIconHandle inIcon, Record* out)
{
    const Bytes bytes = BytesOf(reinterpret_cast<Handle>(inIcon));
    if (bytes.size() < sizeof(CIcon))
        return false;
    out->icon = *inIcon;
    const size_t maskBytes = BytesIn(out->icon->iconMask), bitBytes = BytesIn(out->icon->iconBMap);
    out->mask = foundation::Slice(bytes, kMaskOffset, maskBytes);
    out->bits = foundation::Slice(bytes, kMaskOffset + maskBytes, bitBytes);
    return out->mask.size() == maskBytes && out->bits.size() == bitBytes && HasWholeRows(out->icon->iconMask);
}

// A bit of a map whose top left is (0,0) here; clear outside of it.
static bool BitAt(Bytes inBits, const BitMap& inMap, int h, int v)
{
    if (h >= WidthOf(inMap.bounds) || v >= inMap.bounds.bottom - inMap.bounds.top)
        return false;
    return inBits[(size_t)v * (size_t)(inMap.rowBytes & kRowBytesBits) + (size_t)h / 8] >> (7 - h % 8) & 1;
}

static void ReadPlain(const Record& inRecord, IconPicture* out)
{
    const BitMap& map = inRecord.icon->iconBMap;
    out->Resize(WidthOf(map.bounds), map.bounds.bottom - map.bounds.top);
    out->isPlain = true;
    for (int v = 0; v < out->height; ++v)
        for (int h = 0; h < out->width; ++h)
            out->RowAt(v)[h] = BitAt(inRecord.bits, map, h, v) ? 0 : kWhite;
}

static bool ReadPixels(const Record& inRecord, IconPicture* out)
{
    const PixMap& map = inRecord.icon->iconPMap;
    quickdraw::Surface surface = quickdraw::SurfaceOf(map, inRecord.icon->iconData);
    const quickdraw::SpacePointer space = surface.depth <= 8 ? quickdraw::SpaceOf(map.pmTable) : nullptr;
    if (!surface.base || (surface.depth <= 8 && !space))
        return false;
    surface.colors = space.get();
    out->Resize(WidthOf(map.bounds), map.bounds.bottom - map.bounds.top);
    out->isPlain = false;
    for (int v = 0; v < out->height; ++v)
        quickdraw::ReadColors(surface, map.bounds.top + v, map.bounds.left, out->width, out->RowAt(v));
    return true;
}

static bool ShowsPlain(const Record& inRecord, int inDepth)
{
    return inDepth <= 2 && !inRecord.bits.empty() && HasWholeRows(inRecord.icon->iconBMap) &&
           WidthOf(inRecord.icon->iconBMap.bounds) > 0;
}

bool ReadColorIcon(CIconHandle inIcon, int inDepth, IconPicture* out)
{
    Record record;
    if (!FindRecord(inIcon, &record))
        return false;
    if (ShowsPlain(record, inDepth))
        ReadPlain(record, out);
    else if (!ReadPixels(record, out))
        return false;
    out->hasMask = !record.mask.empty();
    out->isSmooth = false;
    for (int v = 0; v < out->height; ++v)
        for (int h = 0; h < out->width; ++h)
            if (!out->hasMask || BitAt(record.mask, record.icon->iconMask, h, v))
                out->RowAt(v)[h] |= kOpaque;
            else
                out->RowAt(v)[h] = 0;
    return true;
}

} // namespace lampblack::icons

CIconHandle GetCIcon(SInt16 iconID)
{
    return NewColorIcon(BytesOf(GetResource('cicn', iconID)));
}

void PlotCIcon(const Rect* theRect, CIconHandle theIcon)
{
    PlotCIconHandle(theRect, kAlignNone, kTransformNone, theIcon);
}

OSErr PlotCIconHandle(const Rect* theRect, IconAlignmentType align, IconTransformType transform,
                      CIconHandle theCIcon)
{
    IconPicture& picture = ScratchPicture();
    if (!theRect || !ReadColorIcon(theCIcon, PortDepth(), &picture))
        return paramErr;
    return PlotPicture(picture, theRect, align, transform);
}

void DisposeCIcon(CIconHandle theIcon)
{
    const Handle handle = reinterpret_cast<Handle>(theIcon);
    if (BytesOf(handle).size() < sizeof(CIcon))
        return;
    DisposeParts(**theIcon);
    DisposeHandle(handle);
}
