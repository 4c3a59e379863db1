// The walk over a region's rectangles.
#include "Region.h"

#include <Carbon/MacErrors.h>

#include <algorithm>

using namespace lampblack::quickdraw;

namespace lampblack::quickdraw {

// From the top is the region's own order; the other orders follow the edge that is met first.
static void Sort(std::vector<Box>& ioBoxes, QDRegionParseDirection inDirection)
{
    const bool up = inDirection & kQDParseRegionFromBottom;
    const bool leftward = inDirection & kQDParseRegionFromRight;
    std::stable_sort(ioBoxes.begin(), ioBoxes.end(), [=](const Box& a, const Box& b) {
        const int aRow = up ? -a.y2 : a.y1, bRow = up ? -b.y2 : b.y1;
        const int aColumn = leftward ? -a.x2 : a.x1, bColumn = leftward ? -b.x2 : b.x1;
        return aRow != bRow ? aRow < bRow : aColumn < bColumn;
    });
}

static OSStatus Walk(RgnHandle inReference, const std::vector<Box>& inBoxes, RegionToRectsProcPtr inProc,
                     void* inData)
{
    for (const Box& box : inBoxes) {
        const Rect rect = RectOf(box);
        if (const OSStatus error = inProc(kQDRegionToRectsMsgParse, inReference, &rect, inData))
            return error;
    }
    return noErr;
}

} // namespace lampblack::quickdraw

OSStatus QDRegionToRects(RgnHandle rgn, QDRegionParseDirection dir, RegionToRectsUPP proc, void* userData)
{
    const Region* region = FindRegion(rgn);
    if (!region || !proc)
        return paramErr;
    std::vector<Box> boxes(region->Boxes().begin(), region->Boxes().end());
    Sort(boxes, dir);
    const Rect bounds = RectOf(region->Extents());
    OSStatus error = proc(kQDRegionToRectsMsgInit, rgn, &bounds, userData);
    if (error == noErr)
        error = Walk(rgn, boxes, proc, userData);
    const OSStatus last = proc(kQDRegionToRectsMsgTerminate, rgn, &bounds, userData);
    return error ? error : last;
}

RegionToRectsUPP NewRegionToRectsUPP(RegionToRectsProcPtr userRoutine)
{
    return userRoutine;
}

void DisposeRegionToRectsUPP(RegionToRectsUPP) {}

OSStatus InvokeRegionToRectsUPP(UInt16 message, RgnHandle rgn, const Rect* rect, void* refCon,
                                RegionToRectsUPP userUPP)
{
    return userUPP ? userUPP(message, rgn, rect, refCon) : (OSStatus)paramErr;
}
