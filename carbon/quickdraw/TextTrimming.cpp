// Text that is made to fit: truncation and line breaks.
#include "TextRun.h"

#include <Carbon/QuickdrawText.h>

#include <algorithm>
#include <cstring>

using namespace lampblack::quickdraw;

namespace lampblack::quickdraw {

static constexpr uint8_t kEllipsis = 0xC9;

// The longest beginning that fits, in bytes.
static size_t BytesThatFit(const TextRun& inRun, Bytes inText, int inWidth)
{
    Ruler ruler(inRun);
    for (size_t i = 0; i < inText.size(); ++i) {
        ruler.Add(inText[i]);
        if (ruler.At() > inWidth)
            return i;
    }
    return inText.size();
}

// The longest end that fits, in bytes.
static size_t EndThatFits(const TextRun& inRun, Bytes inText, int inWidth)
{
    Ruler ruler(inRun);
    for (size_t count = 0; count < inText.size(); ++count) {
        ruler.Add(inText[inText.size() - 1 - count]);
        if (ruler.At() > inWidth)
            return count;
    }
    return inText.size();
}

static short Truncate(int inWidth, uint8_t* ioText, size_t* ioLength, TruncCode inWhere)
{
    const Bytes text(ioText, *ioLength);
    const TextRun run = RunOf(CurrentTextSettings());
    if (WidthOf(run, text) <= inWidth)
        return notTruncated;
    const int room = inWidth - WidthOf(run, { &kEllipsis, 1 });
    if (room < 0)
        return truncErr;
    const size_t head = BytesThatFit(run, text, inWhere == truncMiddle ? room / 2 : room);
    size_t tail = 0;
    if (inWhere == truncMiddle)
        tail = EndThatFits(run, text.subspan(head), room - WidthOf(run, text.first(head)));
    // A character that is no wider than nothing may fit where the ellipsis replaces none.
    if (head + tail == text.size())
        return notTruncated;
    std::memmove(ioText + head + 1, ioText + *ioLength - tail, tail);
    ioText[head] = kEllipsis;
    *ioLength = head + 1 + tail;
    return truncated;
}

static bool IsWhite(uint8_t inByte)
{
    return inByte == ' ' || (inByte >= '\t' && inByte <= '\r') || inByte == 0xCA; // the last: unbreakable
}

// A line may end behind white space, or behind a hyphen or slash within a word.
static bool CanBreakBefore(Bytes inText, size_t inOffset)
{
    const uint8_t last = inText[inOffset - 1];
    return (last != 0xCA && IsWhite(last)) || last == '-' || last == '/';
}

static size_t BreakAtOrBefore(Bytes inText, size_t inStart, size_t inOffset)
{
    for (size_t at = inOffset; at > inStart; --at)
        if (CanBreakBefore(inText, at))
            return at;
    return inStart;
}

// White space at the end of a line may pass its edge.
static size_t PastSpaces(Bytes inText, size_t inOffset, size_t inEnd)
{
    while (inOffset < inEnd && inText[inOffset] == ' ')
        ++inOffset;
    return inOffset;
}

} // namespace lampblack::quickdraw

short TruncString(short width, unsigned char* theString, TruncCode truncWhere)
{
    if (!theString)
        return truncErr;
    size_t length = theString[0];
    const short result = Truncate(width, theString + 1, &length, truncWhere);
    theString[0] = (unsigned char)length;
    return result;
}

short TruncText(short width, Ptr textPtr, short* length, TruncCode truncWhere)
{
    if (!textPtr || !length || *length < 0)
        return truncErr;
    size_t count = (size_t)*length;
    const short result = Truncate(width, reinterpret_cast<uint8_t*>(textPtr), &count, truncWhere);
    *length = (short)count;
    return result;
}

long VisibleLength(Ptr textPtr, long textLength)
{
    const Bytes text = BytesOf(textPtr, 0, textLength);
    size_t length = text.size();
    while (length > 0 && IsWhite(text[length - 1]))
        --length;
    return (long)length;
}

StyledLineBreakCode StyledLineBreak(Ptr textPtr, SInt32 textLen, SInt32 textStart, SInt32 textEnd, SInt32,
                                    Fixed* textWidth, SInt32* textOffset)
{
    if (!textWidth || !textOffset)
        return smBreakOverflow;
    const bool isFirst = *textOffset != 0;
    const Bytes all = BytesOf(textPtr, 0, textLen);
    const auto end = (size_t)std::clamp<SInt32>(textEnd, 0, (SInt32)all.size());
    const auto start = (size_t)std::clamp<SInt32>(textStart, 0, (SInt32)end);
    const TextRun run = RunOf(CurrentTextSettings());
    const Bytes text = all.subspan(start, end - start);
    const int room = *textWidth >> 16;
    const size_t fits = start + BytesThatFit(run, text, room);
    const auto answer = [&](size_t offset, StyledLineBreakCode code) {
        *textOffset = (SInt32)offset;
        return code;
    };
    const auto isReturn = [](uint8_t byte) { return byte == '\r' || byte == '\n'; };
    const auto lineEnd =
        std::find_if(all.begin() + (ptrdiff_t)start, all.begin() + (ptrdiff_t)fits, isReturn);
    if (lineEnd != all.begin() + (ptrdiff_t)fits)
        return answer((size_t)(lineEnd - all.begin()) + 1, smBreakWord);
    const size_t past = PastSpaces(all, fits, end);
    if (past == end) {
        const SInt64 left = *textWidth - (SInt64)WidthOf(run, text) * 65536;
        *textWidth = (Fixed)std::clamp<SInt64>(left, 0, 0x7FFFFFFF);
        return answer(end, smBreakOverflow);
    }
    const size_t word = past > fits ? past : BreakAtOrBefore(all, start, fits);
    if (word > start || !isFirst)
        return answer(word, smBreakWord);
    return answer(std::max(fits, start + 1), smBreakChar);
}
