#include "text/EditCore.h"

#include <algorithm>

namespace lampblack::text {

namespace {

enum class Class : uint8_t { Letter, Space, Return, Other };

// Of the upper half of Mac Roman, the letters; the rest are symbols, quotation marks and dashes.
bool IsHighLetter(unsigned char inByte)
{
    static constexpr unsigned char kRuns[][2] = { { 0x80, 0x9F }, { 0xA7, 0xA7 }, { 0xAE, 0xAF },
                                                  { 0xBE, 0xBF }, { 0xCB, 0xCF }, { 0xD8, 0xD9 },
                                                  { 0xDE, 0xDF }, { 0xE5, 0xEF }, { 0xF1, 0xF5 } };
    for (const auto& run : kRuns)
        if (inByte >= run[0] && inByte <= run[1])
            return true;
    return false;
}

bool IsLetter(unsigned char inByte)
{
    const unsigned char lower = inByte | 0x20;
    return (lower >= 'a' && lower <= 'z' && inByte < 0x80) || (inByte >= '0' && inByte <= '9') ||
           inByte == '_' || IsHighLetter(inByte);
}

bool IsApostrophe(unsigned char inByte)
{
    return inByte == '\'' || inByte == 0xD5;
}

bool IsSpace(char inByte)
{
    return inByte == ' ' || inByte == '\t';
}

Class ClassAt(const Text& inText, int inOffset)
{
    const auto byte = (unsigned char)inText.At(inOffset);
    if (IsLetter(byte))
        return Class::Letter;
    if (byte == (unsigned char)kReturn)
        return Class::Return;
    if (IsSpace((char)byte) || byte == 0xCA)
        return Class::Space;
    const bool joins = IsApostrophe(byte) && IsLetter((unsigned char)inText.At(inOffset - 1)) &&
                       IsLetter((unsigned char)inText.At(inOffset + 1));
    return joins ? Class::Letter : Class::Other;
}

bool BreaksBefore(const Text& inText, int inOffset, WordBreak inBreak)
{
    if (inOffset <= 0 || inOffset >= inText.length)
        return true;
    if (inBreak)
        return inBreak(const_cast<char*>(inText.bytes), (short)inOffset);
    const Class before = ClassAt(inText, inOffset - 1), after = ClassAt(inText, inOffset);
    return before != after || after == Class::Return;
}

// Lines break behind spaces and behind hyphens, or wherever the application says.
bool LineMayBreakBefore(const Text& inText, int inOffset, WordBreak inBreak)
{
    if (inBreak)
        return inBreak(const_cast<char*>(inText.bytes), (short)inOffset);
    const char before = inText.At(inOffset - 1);
    return IsSpace(before) || (before == '-' && IsLetter((unsigned char)inText.At(inOffset)));
}

int ReturnAfter(const Text& inText, int inOffset)
{
    const char* begin = inText.bytes + inOffset;
    return (int)(std::find(begin, inText.bytes + inText.length, kReturn) - inText.bytes);
}

} // namespace

Span WordAt(const Text& inText, int inOffset, WordBreak inBreak)
{
    if (inText.length == 0)
        return {};
    const int at = std::clamp(inOffset, 0, inText.length);
    // A click behind the last character of a line is one on that character.
    int inside = std::min(at, inText.length - 1);
    if (inText.IsReturn(inside) && inside > 0 && !inText.IsReturn(inside - 1))
        --inside;
    Span word = { inside, inside + 1 };
    while (!BreaksBefore(inText, word.start, inBreak))
        --word.start;
    while (!BreaksBefore(inText, word.end, inBreak))
        ++word.end;
    return word;
}

Span ParagraphAt(const Text& inText, int inOffset)
{
    const int at = std::clamp(inOffset, 0, inText.length);
    int start = at;
    while (start > 0 && !inText.IsReturn(start - 1))
        --start;
    return { start, std::min(ReturnAfter(inText, at) + 1, inText.length) };
}

int PreviousWord(const Text& inText, int inOffset, WordBreak inBreak)
{
    int at = std::clamp(inOffset, 0, inText.length);
    while (at > 0 && ClassAt(inText, at - 1) != Class::Letter)
        --at;
    return at > 0 ? WordAt(inText, at - 1, inBreak).start : 0;
}

int NextWord(const Text& inText, int inOffset, WordBreak inBreak)
{
    int at = std::clamp(inOffset, 0, inText.length);
    while (at < inText.length && ClassAt(inText, at) != Class::Letter)
        ++at;
    return at < inText.length ? WordAt(inText, at, inBreak).end : at;
}

int LineEnd(const Text& inText, int inStart, const Breaking& inBreaking, Measure& inMeasure)
{
    const int paragraphEnd = ReturnAfter(inText, inStart);
    const int wholeEnd = std::min(paragraphEnd + 1, inText.length);
    if (inBreaking.atReturnsOnly)
        return wholeEnd;
    const char* bytes = inText.bytes + inStart;
    const int fitting = inStart + inMeasure.Fitting(bytes, paragraphEnd - inStart, inBreaking.width);
    if (fitting >= paragraphEnd)
        return wholeEnd;
    // Spaces that no longer fit hang over the edge and stay in the line.
    int end = fitting;
    while (end < paragraphEnd && IsSpace(inText.At(end)))
        ++end;
    if (end == paragraphEnd)
        return wholeEnd;
    while (end > inStart && !LineMayBreakBefore(inText, end, inBreaking.wordBreak))
        --end;
    return end > inStart ? end : std::max(fitting, inStart + 1);
}

int Lines::Start(int inLine) const
{
    if (inLine <= 0)
        return 0;
    return inLine >= fCount ? fText.length : std::clamp<int>(fStarts[inLine], 0, fText.length);
}

int Lines::LineOf(int inOffset) const
{
    if (inOffset >= fText.length && HasLastEmpty())
        return fCount;
    const short* end = fStarts + fCount;
    const int line = (int)(std::upper_bound(fStarts, end, inOffset) - fStarts) - 1;
    return std::clamp(line, 0, std::max(0, fCount - 1));
}

Span Lines::Whole(int inLine) const
{
    const int start = Start(inLine);
    return { start, std::max(start, Start(inLine + 1)) };
}

Span Lines::Visible(int inLine) const
{
    Span span = Whole(inLine);
    if (!span.IsEmpty() && fText.IsReturn(span.end - 1))
        return { span.start, span.end - 1 };
    const bool isLast = inLine + 1 >= fCount;
    while (!isLast && !span.IsEmpty() && IsSpace(fText.At(span.end - 1)))
        --span.end;
    return span;
}

int Lines::LastCaret(int inLine) const
{
    const Span whole = Whole(inLine);
    const bool isLast = whole.end >= fText.length && !(fText.length && fText.IsReturn(fText.length - 1));
    return isLast ? whole.end : std::max(whole.start, whole.end - 1);
}

int Moved(const Text& inText, const Lines& inLines, int inFrom, Motion inMotion, WordBreak inBreak)
{
    switch (inMotion) {
    case Motion::CharacterLeft: return std::max(0, inFrom - 1);
    case Motion::CharacterRight: return std::min(inText.length, inFrom + 1);
    case Motion::WordLeft: return PreviousWord(inText, inFrom, inBreak);
    case Motion::WordRight: return NextWord(inText, inFrom, inBreak);
    case Motion::LineStart: return inLines.Whole(inLines.LineOf(inFrom)).start;
    case Motion::LineEnd: return inLines.LastCaret(inLines.LineOf(inFrom));
    case Motion::TextStart: return 0;
    case Motion::TextEnd: return inText.length;
    default: return inFrom;
    }
}

} // namespace lampblack::text
