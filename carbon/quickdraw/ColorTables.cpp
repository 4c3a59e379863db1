// Colour tables: their handles, what their indexes mean, and the 'clut' resource.
#include "ColorTables.h"

#include "Devices.h"
#include "PortRecord.h"

#include <Carbon/MacErrors.h>
#include <Carbon/MacMemory.h>
#include <Carbon/Resources.h>

#include <memory/HandleBlock.h>

#include <algorithm>
#include <span>

using namespace lampblack::quickdraw;

namespace lampblack::quickdraw {

static constexpr Size kTableHead = offsetof(ColorTable, ctTable);
static constexpr int kMostEntries = 256;
static constexpr int kIsDeviceTable = 0x8000; // of ctFlags: the place of an entry is its index

static ColorTable* FindTable(CTabHandle inTable)
{
    const memory::HandleBlock* block = memory::FindHandle(reinterpret_cast<Handle>(inTable));
    return block && block->data && block->size >= kTableHead ? reinterpret_cast<ColorTable*>(block->data)
                                                             : nullptr;
}

// As many entries as the table says and its handle holds.
static std::span<ColorSpec> EntriesOf(CTabHandle inTable)
{
    ColorTable* table = FindTable(inTable);
    if (!table || table->ctSize < 0)
        return {};
    const Size room =
        (GetHandleSize(reinterpret_cast<Handle>(inTable)) - kTableHead) / (Size)sizeof(ColorSpec);
    return { table->ctTable, (size_t)std::min<Size>({ table->ctSize + 1, room, kMostEntries }) };
}

struct Colors {
    std::array<RGBColor, kMostEntries> rgb = {};
    int count = 0;
};

// Values say which index an entry is for. In the tables of devices, and where values cannot be indexes
// (all zero, beyond 255), the place of an entry says it.
static Colors InOrder(std::span<const ColorSpec> inEntries, int inFlags)
{
    Colors colors;
    bool byValue = !(inFlags & kIsDeviceTable);
    short most = 0;
    for (const ColorSpec& entry : inEntries) {
        byValue = byValue && entry.value >= 0 && entry.value < kMostEntries;
        most = std::max(most, entry.value);
    }
    byValue = byValue && most > 0;
    for (size_t i = 0; i < inEntries.size(); ++i)
        colors.rgb[byValue ? (size_t)inEntries[i].value : i] = inEntries[i].rgb;
    colors.count = byValue ? std::max(most + 1, 0) : (int)inEntries.size();
    return colors;
}

static bool IsSame(const ColorSpace& inSpace, const Colors& inColors)
{
    if (inSpace.Count() != inColors.count)
        return false;
    for (int i = 0; i < inColors.count; ++i) {
        const RGBColor &a = inSpace.Exact(i), &b = inColors.rgb[(size_t)i];
        if (a.red != b.red || a.green != b.green || a.blue != b.blue)
            return false;
    }
    return true;
}

SpacePointer StandardSpace(int inDepth)
{
    return SpacePointer(SpacePointer(), &StandardColors(inDepth));
}

// The spaces asked for last are kept, since finding nearest colours is prepared once in each.
static SpacePointer Shared(const Colors& inColors, SInt32 inSeed)
{
    for (const int depth : { 8, 4, 2, 1 })
        if (IsSame(StandardColors(depth), inColors))
            return StandardSpace(depth);
    static constexpr size_t kKept = 8;
    static SpacePointer kept[kKept];
    static size_t next = 0;
    for (const SpacePointer& space : kept)
        if (space && IsSame(*space, inColors))
            return space;
    SpacePointer& space = kept[next++ % kKept];
    space = std::make_shared<ColorSpace>(inColors.rgb.data(), inColors.count, inSeed);
    return space;
}

SpacePointer SpaceOf(CTabHandle inTable, int inDepth)
{
    const ColorTable* table = FindTable(inTable);
    if (!table)
        return nullptr;
    Colors colors = InOrder(EntriesOf(inTable), table->ctFlags);
    colors.count = std::min(colors.count, 1 << inDepth);
    return Shared(colors, table->ctSeed);
}

SpacePointer SpaceOf(const TableEntries& inTable)
{
    return Shared(InOrder(inTable.entries, inTable.flags), inTable.seed);
}

SInt32 SeedOf(CTabHandle inTable)
{
    const ColorTable* table = FindTable(inTable);
    return table ? table->ctSeed : 0;
}

// A handle for count entries, which are black.
static CTabHandle NewTableOf(int inCount, SInt32 inSeed, short inFlags)
{
    const Size size = kTableHead + (Size)sizeof(ColorSpec) * std::max(inCount, 1);
    const auto handle = reinterpret_cast<CTabHandle>(NewHandleClear(size));
    if (!handle)
        return nullptr;
    (**handle).ctSeed = inSeed;
    (**handle).ctFlags = inFlags;
    (**handle).ctSize = (short)(inCount - 1);
    return handle;
}

CTabHandle NewTable(const RGBColor* inColors, int inCount, SInt32 inSeed)
{
    const CTabHandle table = NewTableOf(inCount, inSeed, 0);
    if (!table)
        return nullptr;
    for (int i = 0; i < inCount; ++i)
        (**table).ctTable[i] = { (short)i, inColors[i] };
    return table;
}

CTabHandle NewTable(const ColorSpace& inColors)
{
    return NewTable(&inColors.Exact(0), inColors.Count(), inColors.Seed());
}

CTabHandle NewTable(const TableEntries& inTable)
{
    const CTabHandle table = NewTableOf((int)inTable.entries.size(), inTable.seed, inTable.flags);
    if (table)
        std::copy(inTable.entries.begin(), inTable.entries.end(), (**table).ctTable);
    return table;
}

std::optional<TableEntries> ReadTable(foundation::BigEndianReader& ioReader)
{
    TableEntries table;
    table.seed = ioReader.S32();
    table.flags = ioReader.S16();
    const int count = ioReader.S16() + 1;
    if (!ioReader.Ok() || count < 0 || count > kMostEntries || ioReader.Remaining() < (size_t)count * 8)
        return std::nullopt;
    table.entries.resize((size_t)count);
    for (ColorSpec& entry : table.entries) {
        entry.value = ioReader.S16();
        entry.rgb.red = ioReader.U16();
        entry.rgb.green = ioReader.U16();
        entry.rgb.blue = ioReader.U16();
    }
    return table;
}

static CTabHandle NewGrays(int inDepth)
{
    const int count = 1 << inDepth;
    std::array<RGBColor, kMostEntries> grays;
    for (int i = 0; i < count; ++i) {
        const auto level = (UInt16)(0xFFFF - 0xFFFF * i / (count - 1));
        grays[(size_t)i] = { level, level, level };
    }
    return NewTable(grays.data(), count, inDepth + 32);
}

// The highlight colour takes the place of the entry that is nearest to it, between white and black.
static CTabHandle NewHighlighting(int inDepth)
{
    RGBColor highlight;
    LMGetHiliteRGB(&highlight);
    if (inDepth == 2) {
        const RGBColor four[] = {
            { 0xFFFF, 0xFFFF, 0xFFFF }, highlight, { 0x7FFF, 0x7FFF, 0x7FFF }, { 0, 0, 0 }
        };
        return NewTable(four, 4, inDepth + 64);
    }
    const CTabHandle table = NewTable(StandardColors(inDepth));
    if (!table)
        return nullptr;
    (**table).ctSeed = inDepth + 64;
    const int nearest = StandardColors(inDepth).IndexOf(PixelOf(highlight));
    (**table).ctTable[std::clamp<int>(nearest, 1, (1 << inDepth) - 2)].rgb = highlight;
    return table;
}

static CTabHandle NewClassicColors()
{
    RGBColor colors[8];
    static constexpr SInt32 kNumbers[8] = { whiteColor, yellowColor, magentaColor, redColor,
                                            cyanColor,  greenColor,  blueColor,    blackColor };
    std::transform(std::begin(kNumbers), std::end(kNumbers), colors, ClassicColor);
    return NewTable(colors, 8, 127);
}

static CTabHandle NewTableFromResource(short inID)
{
    const Handle resource = GetResource('clut', inID);
    if (!resource || !*resource) {
        SetQDError(cResErr);
        return nullptr;
    }
    const auto loaded = reinterpret_cast<CTabHandle>(resource); // in native order since it was loaded
    const ColorTable* source = FindTable(loaded);
    const std::span<const ColorSpec> entries = EntriesOf(loaded);
    const bool isWhole = source && source->ctSize >= -1 && (int)entries.size() == source->ctSize + 1;
    SetQDError(isWhole ? noErr : paramErr);
    return isWhole ? NewTable(TableEntries{ inID, source->ctFlags, { entries.begin(), entries.end() } })
                   : nullptr;
}

static bool IsIndexDepth(int inDepth)
{
    return inDepth == 1 || inDepth == 2 || inDepth == 4 || inDepth == 8;
}

PixMap* FindPixMap(PixMapHandle inMap)
{
    if (PortRecord* port = FindPort(inMap))
        return &port->fMap;
    if (PixMap* map = FindDeviceMap(inMap))
        return map;
    const memory::HandleBlock* block = memory::FindHandle(reinterpret_cast<Handle>(inMap));
    return block && block->data && block->size >= (Size)sizeof(PixMap)
               ? reinterpret_cast<PixMap*>(block->data)
               : nullptr;
}

// The table of the current device, null when it is direct.
static CTabHandle DeviceTable()
{
    const PixMap* map = FindPixMap(DeviceMap(GetGDevice()));
    return map && map->pixelSize <= 8 ? map->pmTable : nullptr;
}

// What the current device makes of colours.
struct DeviceColors {
    Surface surface;
    SpacePointer space;
};
static DeviceColors CurrentDeviceColors()
{
    DeviceColors colors;
    const PixMap* map = FindPixMap(DeviceMap(GetGDevice()));
    if (map && IsDepth(map->pixelSize))
        colors.surface.depth = map->pixelSize;
    if (colors.surface.depth <= 8)
        colors.space = SpaceOf(map->pmTable, map->pixelSize);
    colors.surface.colors = colors.space.get();
    return colors;
}

static bool IsSelected(const ReqListRec* inSelection, std::span<const ColorSpec> inFrom)
{
    return inSelection && inSelection->reqLSize >= 0 && !inFrom.empty();
}

} // namespace lampblack::quickdraw

CTabHandle GetCTable(short ctID)
{
    SetQDError(noErr);
    CTabHandle table = nullptr;
    if (IsIndexDepth(ctID))
        table = NewTable(StandardColors(ctID));
    else if (IsIndexDepth(ctID - 32))
        table = NewGrays(ctID - 32);
    else if (IsIndexDepth(ctID - 64) && ctID > 65)
        table = NewHighlighting(ctID - 64);
    else if (ctID == 127)
        table = NewClassicColors();
    else
        return NewTableFromResource(ctID);
    SetQDError(table ? noErr : cNoMemErr);
    return table;
}

void DisposeCTable(CTabHandle cTable)
{
    if (FindTable(cTable))
        DisposeHandle(reinterpret_cast<Handle>(cTable));
}

SInt32 GetCTSeed(void)
{
    static SInt32 seed = minSeed;
    seed = seed == 0x7FFFFFFF ? minSeed + 1 : seed + 1;
    return seed;
}

void CTabChanged(CTabHandle ctab)
{
    if (ColorTable* table = FindTable(ctab))
        table->ctSeed = GetCTSeed();
}

void GDeviceChanged(GDHandle gdh)
{
    if (const PixMap* map = FindPixMap(DeviceMap(gdh)))
        CTabChanged(map->pmTable);
}

SInt32 Color2Index(const RGBColor* myColor)
{
    return myColor ? (SInt32)PixelFor(CurrentDeviceColors().surface, PixelOf(*myColor)) : 0;
}

void Index2Color(SInt32 index, RGBColor* aColor)
{
    if (!aColor)
        return;
    const DeviceColors colors = CurrentDeviceColors();
    *aColor = colors.surface.depth <= 8
                  ? ColorsOf(colors.surface).Exact(index & ((1 << colors.surface.depth) - 1))
                  : ColorOf(ColorFor(colors.surface, (uint32_t)index));
}

// Whether the device shows the colour as it is, to the precision of its hardware: 8 bits a channel.
Boolean RealColor(const RGBColor* color)
{
    if (!color)
        return false;
    const DeviceColors colors = CurrentDeviceColors();
    return ColorFor(colors.surface, PixelFor(colors.surface, PixelOf(*color))) == PixelOf(*color);
}

void InvertColor(RGBColor* myColor)
{
    if (myColor)
        *myColor = { (UInt16)~myColor->red, (UInt16)~myColor->green, (UInt16)~myColor->blue };
}

void GetSubTable(CTabHandle myColors, short, CTabHandle targetTbl)
{
    const DeviceColors device = CurrentDeviceColors();
    const SpacePointer target = targetTbl ? SpaceOf(targetTbl) : device.space;
    if (!target)
        return;
    for (ColorSpec& entry : EntriesOf(myColors))
        entry.value = target->IndexOf(PixelOf(entry.rgb));
}

void SetEntries(short start, short count, ColorSpec* aTable)
{
    const CTabHandle table = DeviceTable();
    const std::span<ColorSpec> entries = EntriesOf(table);
    if (!aTable || count < 0 || start < -1 || (start >= 0 && start + count >= (int)entries.size()))
        return SetQDError(entries.empty() ? cDevErr : cRangeErr);
    for (int i = 0; i <= count; ++i)
        if (start < 0 && (aTable[i].value < 0 || aTable[i].value >= (int)entries.size()))
            return SetQDError(cRangeErr);
    for (int i = 0; i <= count; ++i)
        entries[(size_t)(start < 0 ? aTable[i].value : start + i)].rgb = aTable[i].rgb;
    CTabChanged(table);
    SetQDError(noErr);
}

// An index that the source does not have is answered in the selection by colReqErr.
void SaveEntries(CTabHandle srcTable, CTabHandle resultTable, ReqListRec* selection)
{
    const std::span<ColorSpec> from = EntriesOf(srcTable ? srcTable : DeviceTable());
    const std::span<ColorSpec> to = EntriesOf(resultTable);
    if (!IsSelected(selection, from))
        return SetQDError(paramErr);
    SetQDError(noErr);
    for (int i = 0; i <= selection->reqLSize && i < (int)to.size(); ++i) {
        short& index = selection->reqLData[i];
        if (index >= 0 && index < (int)from.size())
            to[(size_t)i] = { index, from[(size_t)index].rgb };
        else
            index = colReqErr;
    }
}

void RestoreEntries(CTabHandle srcTable, CTabHandle dstTable, ReqListRec* selection)
{
    const std::span<ColorSpec> from = EntriesOf(srcTable);
    const CTabHandle target = dstTable ? dstTable : DeviceTable();
    const std::span<ColorSpec> to = EntriesOf(target);
    if (!IsSelected(selection, from))
        return SetQDError(paramErr);
    SetQDError(noErr);
    for (int i = 0; i <= selection->reqLSize && i < (int)from.size(); ++i) {
        short& index = selection->reqLData[i];
        if (index >= 0 && index < (int)to.size())
            to[(size_t)index].rgb = from[(size_t)i].rgb;
        else
            index = colReqErr;
    }
    CTabChanged(target);
}
