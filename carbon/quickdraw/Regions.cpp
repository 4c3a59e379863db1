// The region calls: references, sets of pixels, questions. The walk over rectangles is in RegionRects.cpp.
#include "Mapping.h"
#include "Region.h"

#include <memory/ReferenceTable.h>

#include <algorithm>

using namespace lampblack::quickdraw;

namespace lampblack::quickdraw {

static memory::ReferenceTable<Region>& Regions()
{
    static memory::ReferenceTable<Region> table;
    return table;
}

Region* FindRegion(RgnHandle inRegion)
{
    return Regions().Find(inRegion);
}

RgnHandle ReferenceOf(Region* inRegion)
{
    return reinterpret_cast<RgnHandle>(inRegion);
}

// Boxes come in bands from left to right: those that touch now become one.
static Region Widened(const Region& inRegion, int dh)
{
    std::vector<Box> boxes;
    for (const Box& b : inRegion.Boxes()) {
        const Box wide = { b.x1 - dh, b.y1, b.x2 + dh, b.y2 };
        if (!boxes.empty() && boxes.back().y1 == wide.y1 && boxes.back().x2 >= wide.x1)
            boxes.back().x2 = wide.x2;
        else
            boxes.push_back(wide);
    }
    return Region(boxes);
}

// Each step doubles the reach, so that a region of many rows is not added to itself row by row.
static Region Heightened(Region inRegion, int dv)
{
    for (int reach = 0; reach < 2 * dv;) {
        const int step = std::min(reach + 1, 2 * dv - reach);
        Region lower = inRegion;
        lower.Offset(0, step);
        inRegion.Union(inRegion, lower);
        reach += step;
    }
    inRegion.Offset(0, -dv);
    return inRegion;
}

static Region Grown(const Region& inRegion, int dh, int dv)
{
    return Heightened(dh ? Widened(inRegion, dh) : inRegion, dv);
}

// The pixels that keep a distance of more than (dh, dv) from every pixel outside.
static Region Shrunk(const Region& inRegion, int dh, int dv)
{
    Box around = inRegion.Extents();
    around = { around.x1 - 1, around.y1 - 1, around.x2 + 1, around.y2 + 1 };
    Region outside, result;
    outside.Subtract(Region(around), inRegion);
    result.Subtract(inRegion, Grown(outside, dh, dv));
    return result;
}

Region Inset(const Region& inRegion, int dh, int dv)
{
    Region result = inRegion;
    if (result.IsEmpty())
        return result;
    if (dh > 0 || dv > 0)
        result = Shrunk(result, dh > 0 ? dh : 0, dv > 0 ? dv : 0);
    if (!result.IsEmpty() && (dh < 0 || dv < 0))
        result = Grown(result, dh < 0 ? -dh : 0, dv < 0 ? -dv : 0);
    return result;
}

// What leaves the coordinates comes back with the opposite offset, as long as it did not go further than
// this.
static constexpr Box kFarthest = { -0x1000000, -0x1000000, 0x1000000, 0x1000000 };

using Combine = void (Region::*)(const Region&, const Region&);

static void Combined(RgnHandle inA, RgnHandle inB, RgnHandle ioResult, Combine inHow)
{
    const Region* a = FindRegion(inA);
    const Region* b = FindRegion(inB);
    Region* result = FindRegion(ioResult);
    if (a && b && result)
        (result->*inHow)(*a, *b);
}

} // namespace lampblack::quickdraw

RgnHandle NewRgn(void)
{
    return ReferenceOf(Regions().New());
}

void DisposeRgn(RgnHandle rgn)
{
    Regions().Delete(FindRegion(rgn));
}

Boolean IsValidRgnHandle(RgnHandle rgn)
{
    return FindRegion(rgn) != nullptr;
}

Boolean IsRegionRectangular(RgnHandle region)
{
    const Region* r = FindRegion(region);
    return r && (r->IsRectangle() || r->IsEmpty());
}

Rect* GetRegionBounds(RgnHandle region, Rect* bounds)
{
    if (!bounds)
        return nullptr;
    const Region* r = FindRegion(region);
    *bounds = r && !r->IsEmpty() ? RectOf(r->Extents()) : Rect{ 0, 0, 0, 0 };
    return bounds;
}

void SetEmptyRgn(RgnHandle rgn)
{
    if (Region* r = FindRegion(rgn))
        r->Clear();
}

void SetRectRgn(RgnHandle rgn, short left, short top, short right, short bottom)
{
    if (Region* r = FindRegion(rgn))
        r->SetRect({ top, left, bottom, right });
}

void RectRgn(RgnHandle rgn, const Rect* r)
{
    Region* region = FindRegion(rgn);
    if (region && r)
        region->SetRect(*r);
}

void CopyRgn(RgnHandle srcRgn, RgnHandle dstRgn)
{
    const Region* source = FindRegion(srcRgn);
    Region* destination = FindRegion(dstRgn);
    if (source && destination)
        *destination = *source;
}

void OffsetRgn(RgnHandle rgn, short dh, short dv)
{
    Region* r = FindRegion(rgn);
    if (!r)
        return;
    r->Offset(dh, dv);
    if (!Contains(kFarthest, r->Extents()))
        r->Intersect(kFarthest);
}

void InsetRgn(RgnHandle rgn, short dh, short dv)
{
    if (Region* r = FindRegion(rgn))
        *r = Inset(*r, dh, dv);
}

void MapRgn(RgnHandle rgn, const Rect* srcRect, const Rect* dstRect)
{
    Region* region = FindRegion(rgn);
    if (!region || !srcRect || !dstRect)
        return;
    std::vector<Box> mapped;
    for (const Box& b : region->Boxes()) {
        const Box box = BoxOf(Mapped(RectOf(b), *srcRect, *dstRect));
        if (!IsEmpty(box))
            mapped.push_back(box);
    }
    *region = Region(mapped);
}

void SectRgn(RgnHandle srcRgnA, RgnHandle srcRgnB, RgnHandle dstRgn)
{
    Combined(srcRgnA, srcRgnB, dstRgn, static_cast<Combine>(&Region::Intersect));
}

void UnionRgn(RgnHandle srcRgnA, RgnHandle srcRgnB, RgnHandle dstRgn)
{
    Combined(srcRgnA, srcRgnB, dstRgn, static_cast<Combine>(&Region::Union));
}

void DiffRgn(RgnHandle srcRgnA, RgnHandle srcRgnB, RgnHandle dstRgn)
{
    Combined(srcRgnA, srcRgnB, dstRgn, &Region::Subtract);
}

void XorRgn(RgnHandle srcRgnA, RgnHandle srcRgnB, RgnHandle dstRgn)
{
    Combined(srcRgnA, srcRgnB, dstRgn, &Region::Xor);
}

Boolean EqualRgn(RgnHandle rgnA, RgnHandle rgnB)
{
    const Region* a = FindRegion(rgnA);
    const Region* b = FindRegion(rgnB);
    return a && b && *a == *b;
}

Boolean EmptyRgn(RgnHandle rgn)
{
    const Region* r = FindRegion(rgn);
    return !r || r->IsEmpty();
}

Boolean PtInRgn(Point pt, RgnHandle rgn)
{
    const Region* r = FindRegion(rgn);
    return r && r->Contains(pt.h, pt.v);
}

Boolean RectInRgn(const Rect* r, RgnHandle rgn)
{
    const Region* region = FindRegion(rgn);
    return r && region && region->Touches(BoxOf(*r));
}
