// Regions from bit maps, and regions in handles.
#include "RegionBits.h"

#include "Maps.h"
#include "RegionBytes.h"

#include <Carbon/MacMemory.h>
#include <foundation/BigEndian.h>

#include <bit>
#include <cstring>

using namespace lampblack::quickdraw;

namespace lampblack::quickdraw {

static constexpr size_t kMaxBoxes = 1000000;

// 32 pixels of a row, the first in the highest bit; those past the end of the row are clear.
static uint32_t WordAt(const uint8_t* inRow, int inColumn, int inWidth)
{
    uint8_t bytes[4] = {};
    const int rest = inWidth - inColumn;
    std::memcpy(bytes, inRow + inColumn / 8, (size_t)std::min(4, (rest + 7) / 8));
    const uint32_t word = foundation::LoadBE32(bytes);
    return rest < 32 ? word & ~(0xFFFFFFFFu >> rest) : word;
}

// The columns where a row changes from clear to set and back: an even number of them.
static void FindChanges(const uint8_t* inRow, int inWidth, std::vector<int>& outColumns)
{
    outColumns.clear();
    uint32_t inside = 0; // all bits set while within a run
    for (int column = 0; column < inWidth; column += 32) {
        uint32_t differs = WordAt(inRow, column, inWidth) ^ inside;
        while (differs) {
            const int bit = std::countl_zero(differs);
            outColumns.push_back(column + bit);
            inside = ~inside;
            differs = ~differs & (0xFFFFFFFFu >> bit);
        }
    }
    if (inside)
        outColumns.push_back(inWidth);
}

static void AddBand(const std::vector<int>& inColumns, const Rect& inBounds, int inTop, int inBottom,
                    std::vector<Box>& ioBoxes)
{
    for (size_t i = 0; i < inColumns.size(); i += 2)
        ioBoxes.push_back(
            { inBounds.left + inColumns[i], inTop, inBounds.left + inColumns[i + 1], inBottom });
}

bool RegionOfBits(const uint8_t* inBase, int inRowBytes, const Rect& inBounds, Region* out)
{
    std::vector<Box> boxes;
    std::vector<int> band, row;
    int top = inBounds.top;
    for (int v = inBounds.top; v < inBounds.bottom; ++v) {
        FindChanges(inBase + (ptrdiff_t)(v - inBounds.top) * inRowBytes, inBounds.right - inBounds.left, row);
        if (row == band)
            continue;
        AddBand(band, inBounds, top, v, boxes);
        if (boxes.size() > kMaxBoxes)
            return false;
        band.swap(row);
        top = v;
    }
    AddBand(band, inBounds, top, inBounds.bottom, boxes);
    *out = Region(boxes);
    return true;
}

static OSErr RegionOfMap(const BitMap& inMap, Region* out)
{
    MapPixels pixels;
    const QDErr error = FindPixels(&inMap, &pixels);
    const Surface& surface = pixels.surface;
    if (surface.depth != 1)
        return pixMapTooDeepErr;
    const bool isCut =
        !pixels.port && surface.bounds.right != inMap.bounds.right; // by rows that are too short
    if (error || isCut || !surface.base)
        return paramErr;
    Region region;
    if (!IsEmpty(surface.bounds) && !RegionOfBits(surface.base, surface.rowBytes, surface.bounds, &region))
        return rgnTooBigErr;
    if (RegionBytes(region).empty())
        return rgnTooBigErr;
    *out = region;
    return noErr;
}

static OSErr WriteRegion(RgnHandle inRegion, Handle outBytes)
{
    const Region* region = FindRegion(inRegion);
    if (!region || !IsHandleValid(outBytes))
        return paramErr;
    const std::vector<uint8_t> bytes = RegionBytes(*region);
    if (bytes.empty())
        return rgnOverflowErr;
    SetHandleSize(outBytes, (Size)bytes.size());
    if (const OSErr error = MemError())
        return error;
    std::memcpy(*outBytes, bytes.data(), bytes.size());
    return noErr;
}

static OSErr ReadRegion(Handle inBytes, RgnHandle outRegion)
{
    Region* region = FindRegion(outRegion);
    if (!region || !IsHandleValid(inBytes) || !*inBytes)
        return paramErr;
    const std::span bytes(reinterpret_cast<const uint8_t*>(*inBytes), (size_t)GetHandleSize(inBytes));
    return ReadRegionBytes(bytes, region, nullptr) ? noErr : paramErr;
}

} // namespace lampblack::quickdraw

OSErr BitMapToRegion(RgnHandle region, const BitMap* bMap)
{
    Region* result = FindRegion(region);
    const OSErr error = result && bMap ? RegionOfMap(*bMap, result) : (OSErr)paramErr;
    SetQDError(error);
    return error;
}

void RgnToHandle(RgnHandle region, Handle flattenedRgnDataHdl)
{
    SetQDError(WriteRegion(region, flattenedRgnDataHdl));
}

void HandleToRgn(Handle oldRegion, RgnHandle region)
{
    SetQDError(ReadRegion(oldRegion, region));
}
