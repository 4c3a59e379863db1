// Text that is only shown: laid out and drawn in a box, without a record.
#include "text/PortText.h"

#include <algorithm>

namespace lampblack::text {

namespace {

void DrawBoxLine(const Text& inText, Span inLine, const Rect& inBox, short inBaseline, short inAlignment)
{
    PortMeasure measure;
    while (!inLine.IsEmpty() && (inText.At(inLine.end - 1) == ' ' || inText.IsReturn(inLine.end - 1)))
        --inLine.end;
    const char* bytes = inText.bytes + inLine.start;
    const int count = inLine.end - inLine.start;
    const int start = JustifiedStart(inBox.right - inBox.left, measure.Width(bytes, count), inAlignment);
    MoveTo((short)(inBox.left + start), inBaseline);
    DrawText(bytes, 0, (short)count);
}

void DrawBox(const Text& inText, const Rect& inBox, short inAlignment)
{
    FontInfo font = {};
    GetFontInfo(&font);
    PortMeasure measure;
    const int lineHeight = std::max(1, font.ascent + font.descent + font.leading);
    const Breaking breaking = { inBox.right - inBox.left, false, nullptr };
    int top = inBox.top;
    for (int start = 0; start < inText.length && top < inBox.bottom; top += lineHeight) {
        const int end = LineEnd(inText, start, breaking, measure);
        DrawBoxLine(inText, { start, end }, inBox, (short)(top + font.ascent), inAlignment);
        start = end;
    }
}

} // namespace

} // namespace lampblack::text

using namespace lampblack::text;

void TETextBox(const void* inText, long inLength, const Rect* inBox, short inAlignment)
{
    if (!inBox || (!inText && inLength > 0))
        return;
    const StTextPort port(*inBox);
    EraseRect(inBox);
    DrawBox({ (const char*)inText, (int)std::clamp<long>(inLength, 0, kLongestText) }, *inBox, inAlignment);
}
