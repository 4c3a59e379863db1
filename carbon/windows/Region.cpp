// Between the regions computed with here and those of the published interface.
#include "Region.h"

#include <Carbon/Quickdraw.h>

namespace lampblack::windows {

namespace {

OSStatus AddRect(UInt16 inMessage, RgnHandle, const Rect* inRect, void* ioRegion)
{
    if (inMessage == kQDRegionToRectsMsgParse)
        static_cast<Region*>(ioRegion)->Add(*inRect);
    return noErr;
}

} // namespace

Region FromRgn(RgnHandle inRegion)
{
    Region region;
    if (inRegion)
        QDRegionToRects(inRegion, kQDParseRegionFromTopLeft, AddRect, &region);
    return region;
}

void ToRgn(const Region& inRegion, RgnHandle ioRegion)
{
    static const RgnHandle piece = NewRgn();
    SetEmptyRgn(ioRegion);
    for (const pixman_box32_t& box : inRegion.Boxes()) {
        SetRectRgn(piece, (short)box.x1, (short)box.y1, (short)box.x2, (short)box.y2);
        UnionRgn(ioRegion, piece, ioRegion);
    }
}

} // namespace lampblack::windows
