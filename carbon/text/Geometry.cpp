// Places, heights and scrolling.
#include "text/PortText.h"
#include "text/TextView.h"

#include <algorithm>

using namespace lampblack::text;

namespace {

// How far to scroll along one axis, so that neither end of the text comes further into the view than it must.
int PinnedScroll(int inWish, int inTextStart, int inTextEnd, int inViewStart, int inViewEnd)
{
    if (inWish > 0)
        return std::clamp(inViewStart - inTextStart, 0, inWish);
    return -std::clamp(inTextEnd - inViewEnd, 0, -inWish);
}

} // namespace

short TEGetOffset(Point inLocal, TEHandle inHandle)
{
    const Record record = Find(inHandle);
    if (!record)
        return 0;
    const StTextPort port(*record);
    return (short)OffsetAt(record, inLocal);
}

Point TEGetPoint(short inOffset, TEHandle inHandle)
{
    const Record record = Find(inHandle);
    if (!record)
        return { 0, 0 };
    const StTextPort port(*record);
    const int offset = std::clamp<int>(inOffset, 0, record->teLength);
    const int bottom = LineTop(record, record.LineTable().LineOf(offset)) + record->lineHeight;
    return { (short)std::clamp(bottom, -32768, 32767),
             (short)std::clamp(HorizontalOf(record, offset), -32768, 32767) };
}

long TEGetHeight(long inEndLine, long inStartLine, TEHandle inHandle)
{
    const Record record = Find(inHandle);
    if (!record)
        return 0;
    const long lines = record->nLines;
    const long first = std::clamp(inStartLine, 1L, std::max(lines, 1L)),
               last = std::clamp(inEndLine, 0L, lines);
    return std::max(0L, last - first + 1) * record->lineHeight;
}

void TEScroll(short inH, short inV, TEHandle inHandle)
{
    const Record record = Find(inHandle);
    if (!record)
        return;
    const StTextPort port(*record);
    ScrollBy(record, inH, inV);
}

void TEPinScroll(short inH, short inV, TEHandle inHandle)
{
    const Record record = Find(inHandle);
    if (!record)
        return;
    const StTextPort port(*record);
    const Rect dest = record->destRect, view = record->viewRect;
    ScrollBy(record, PinnedScroll(inH, dest.left, dest.right, view.left, view.right),
             PinnedScroll(inV, dest.top, dest.top + TextHeight(record), view.top, view.bottom));
}

void TEAutoView(Boolean inOn, TEHandle inHandle)
{
    TEFeatureFlag(teFAutoScroll, inOn ? teBitSet : teBitClear, inHandle);
}

void TESelView(TEHandle inHandle)
{
    const Record record = Find(inHandle);
    if (!record || !record.HasFeature(teFAutoScroll))
        return;
    const StTextPort port(*record);
    Reveal(record, record->selEnd);
}
