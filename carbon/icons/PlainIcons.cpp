// 'ICON', 'ICN#' and 'SICN' data in handles.
#include "icons/Suites.h"

#include <Carbon/Resources.h>

using namespace lampblack::icons;

namespace lampblack::icons {

static constexpr size_t kIconBytes = 32 * 32 / 8;
static constexpr size_t kSmallIconBytes = 16 * 16 / 8;

// An icon and the mask behind it, if there is one.
static OSErr PlotBits(Handle inData, size_t inBytes, int inSide, const Rect* inRect,
                      IconAlignmentType inAlignment, IconTransformType inTransform)
{
    const Bytes data = BytesOf(inData);
    if (!inRect || data.size() < inBytes)
        return paramErr;
    IconPicture& picture = ScratchPicture();
    ReadBits(data, foundation::Slice(data, inBytes, inBytes), inSide, inSide, &picture);
    return PlotPicture(picture, inRect, inAlignment, inTransform);
}

} // namespace lampblack::icons

Handle GetIcon(SInt16 iconID)
{
    const Handle icon = GetResource('ICON', iconID);
    return BytesOf(icon).size() >= kIconBytes ? icon : nullptr;
}

void PlotIcon(const Rect* theRect, Handle theIcon)
{
    CGrafPtr port = nullptr;
    GetPort(&port);
    if (!theRect || !port || BytesOf(theIcon).size() < kIconBytes)
        return;
    const BitMap bits = { *theIcon, 4, { 0, 0, 32, 32 } };
    CopyBits(&bits, GetPortBitMapForCopyBits(port), &bits.bounds, theRect, srcCopy, nullptr);
}

OSErr PlotIconHandle(const Rect* theRect, IconAlignmentType align, IconTransformType transform,
                     Handle theIcon)
{
    return PlotBits(theIcon, kIconBytes, 32, theRect, align, transform);
}

OSErr PlotSICNHandle(const Rect* theRect, IconAlignmentType align, IconTransformType transform,
                     Handle theSICN)
{
    return PlotBits(theSICN, kSmallIconBytes, 16, theRect, align, transform);
}
