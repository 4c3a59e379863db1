// Theme text: strings laid out in lines, measured and drawn.
#include "appearance/Geometry.h"
#include "appearance/ThemeFonts.h"

#include <Carbon/TextEdit.h>
#include <foundation/MacRoman.h>
#include <foundation/StringObject.h>

#include <string>
#include <string_view>

namespace lampblack::appearance {

namespace {

using quickdraw::TextFontStyle;

constexpr std::string_view kEllipsis = "\u2026";

std::string Utf8Of(std::u16string_view inText)
{
    return foundation::Utf8FromUtf16(inText);
}

bool IsReturn(char inByte)
{
    return inByte == '\r' || inByte == '\n';
}

// A text and how it is to be set.
struct TextLayout {
    TextFontStyle style;
    bool wraps = false;
    int width = 0; // to wrap at

    int WidthOf(std::string_view inText) const { return quickdraw::WidthOfUtf8(style, inText); }
    size_t LineEnd(std::string_view inText) const;
};

// Characters of scripts that have no spaces between words may end a line anywhere.
bool BreaksAnywhere(char32_t inCharacter)
{
    return (inCharacter >= 0x0E00 && inCharacter <= 0x0EFF) || // Thai, Lao
           (inCharacter >= 0x2E80 && inCharacter <= 0xD7AF) || // from the radicals to Hangul
           (inCharacter >= 0xF900 && inCharacter <= 0xFAFF) || inCharacter >= 0x20000;
}

// Where a line that may be that long ends at the latest: behind a space or hyphen, or beside a character that
// stands for a word. 0 when there is no such place.
size_t LastBreak(std::string_view inText, size_t inLongest)
{
    size_t last = 0;
    bool canBreak = false;
    for (size_t at = 0; at <= inLongest;) {
        size_t next = at;
        const char32_t character = at < inText.size() ? foundation::NextUtf8(inText, &next) : U' ';
        const bool breaksAnywhere = BreaksAnywhere(character);
        if (at > 0 && character != ' ' && (canBreak || breaksAnywhere))
            last = at;
        canBreak = character == ' ' || character == '-' || breaksAnywhere;
        if (at >= inText.size())
            break;
        at = next;
    }
    return last;
}

// Spaces at the end of a line may pass its edge.
size_t PastSpaces(std::string_view inText, size_t inOffset)
{
    while (inOffset < inText.size() && inText[inOffset] == ' ')
        ++inOffset;
    return inOffset;
}

// Of a text without returns: where its first line ends, behind the spaces that end it.
size_t TextLayout::LineEnd(std::string_view inText) const
{
    if (!wraps || inText.empty())
        return inText.size();
    const size_t fitting = quickdraw::Utf8ThatFits(style, inText, width);
    const size_t reach = PastSpaces(inText, fitting);
    if (reach == inText.size())
        return reach;
    if (reach > fitting)
        return reach;
    if (const size_t end = LastBreak(inText, fitting))
        return end;
    if (fitting > 0)
        return fitting;
    size_t first = 0; // a box that is narrower than one character
    foundation::NextUtf8(inText, &first);
    return first;
}

std::string_view WithoutSpacesAtEnd(std::string_view inLine)
{
    while (!inLine.empty() && inLine.back() == ' ')
        inLine.remove_suffix(1);
    return inLine;
}

// Takes the next paragraph away from a text, with the return that ends it. *outEnded: there was one.
std::string_view TakeParagraph(std::string_view& ioText, bool* outEnded)
{
    size_t end = 0;
    while (end < ioText.size() && !IsReturn(ioText[end]))
        ++end;
    const std::string_view paragraph = ioText.substr(0, end);
    *outEnded = end < ioText.size();
    const bool isPair = end + 1 < ioText.size() && ioText[end] == '\r' && ioText[end + 1] == '\n';
    ioText.remove_prefix(end + (isPair ? 2 : *outEnded ? 1 : 0));
    return paragraph;
}

// Calls a function with each line until it answers false. An empty text has one line.
template <class Use>
void EachLine(const TextLayout& inLayout, std::string_view inText, Use&& inUse)
{
    for (bool goesOn = true; goesOn;) {
        std::string_view paragraph = TakeParagraph(inText, &goesOn);
        do {
            const size_t end = inLayout.LineEnd(paragraph);
            const bool isLast = end == paragraph.size();
            // Within a paragraph the spaces at the break are not part of the line.
            const std::string_view line = paragraph.substr(0, end);
            if (!inUse(isLast ? line : WithoutSpacesAtEnd(line)))
                return;
            paragraph.remove_prefix(end);
        } while (!paragraph.empty());
    }
}

int LineHeightOf(const FontInfo& inInfo)
{
    return std::max(1, inInfo.ascent + inInfo.descent + inInfo.leading);
}

int StartOfLine(const Rect& inBox, int inWidth, SInt16 inJust)
{
    const int slack = WidthOf(inBox) - inWidth;
    if (inJust == teCenter)
        return inBox.left + slack / 2;
    return inJust == teFlushRight ? inBox.right - inWidth : inBox.left;
}

void DrawBox(const TextLayout& inLayout, std::string_view inText, const Rect& inBox, SInt16 inJust)
{
    const FontInfo info = quickdraw::InfoOf(inLayout.style);
    const CGrafPtr port = GetQDGlobalsThePort();
    Point pen = { 0, 0 };
    GetPortPenLocation(port, &pen);
    int top = inBox.top;
    EachLine(inLayout, inText, [&](std::string_view line) {
        if (top >= inBox.bottom)
            return false;
        MoveTo(Pinned(StartOfLine(inBox, inLayout.WidthOf(line), inJust)), Pinned(top + info.ascent));
        quickdraw::DrawUtf8(inLayout.style, line);
        top += LineHeightOf(info);
        return true;
    });
    MoveTo(pen.h, pen.v);
}

Point SizeOf(const TextLayout& inLayout, std::string_view inText)
{
    const FontInfo info = quickdraw::InfoOf(inLayout.style);
    int width = 0;
    long height = -info.leading; // there is none behind the last line
    EachLine(inLayout, inText, [&](std::string_view line) {
        width = std::max(width, inLayout.WidthOf(line));
        height += LineHeightOf(info);
        return height < 32767;
    });
    return { Pinned(height), Pinned(width) };
}

// The longest end of a text that fits, on the boundaries of characters.
std::string_view EndThatFits(const TextFontStyle& inStyle, std::string_view inText, int inWidth)
{
    while (!inText.empty() && quickdraw::WidthOfUtf8(inStyle, inText) > inWidth) {
        size_t next = 0;
        foundation::NextUtf8(inText, &next);
        inText.remove_prefix(next);
    }
    return inText;
}

// An end is sought from behind, doubling, so that a long text is not measured from every place in it.
std::string_view Tail(const TextFontStyle& inStyle, std::string_view inText, int inWidth)
{
    size_t length = std::min<size_t>(inText.size(), 16);
    while (length < inText.size() &&
           quickdraw::WidthOfUtf8(inStyle, inText.substr(inText.size() - length)) <= inWidth)
        length = std::min(2 * length, inText.size());
    size_t start = inText.size() - length;
    while (start < inText.size() && ((unsigned char)inText[start] & 0xC0) == 0x80)
        ++start; // in the middle of a character
    return EndThatFits(inStyle, inText.substr(start), inWidth);
}

std::string Truncated(const TextFontStyle& inStyle, std::string_view inText, int inWidth, TruncCode inWhere)
{
    const int room = inWidth - quickdraw::WidthOfUtf8(inStyle, kEllipsis);
    if (room < 0)
        return {};
    const bool isMiddle = inWhere == truncMiddle;
    const size_t head = quickdraw::Utf8ThatFits(inStyle, inText, isMiddle ? room / 2 : room);
    std::string result(inText.substr(0, head));
    const int left = room - quickdraw::WidthOfUtf8(inStyle, result);
    result += kEllipsis;
    if (isMiddle)
        result += Tail(inStyle, inText.substr(head), left);
    return result;
}

} // namespace

} // namespace lampblack::appearance

using namespace lampblack::appearance;

OSStatus DrawThemeTextBox(CFStringRef inString, ThemeFontID inFontID, ThemeDrawState, Boolean inWrapToWidth,
                          const Rect* inBoundingBox, SInt16 inJust, void*)
{
    const auto text = lampblack::foundation::TextOf(inString);
    TextLayout layout;
    if (!text || !inBoundingBox || !FindThemeFont(inFontID, &layout.style))
        return paramErr;
    layout.wraps = inWrapToWidth;
    layout.width = WidthOf(*inBoundingBox);
    if (GetQDGlobalsThePort())
        DrawBox(layout, Utf8Of(*text), *inBoundingBox, inJust);
    return noErr;
}

OSStatus GetThemeTextDimensions(CFStringRef inString, ThemeFontID inFontID, ThemeDrawState,
                                Boolean inWrapToWidth, Point* ioBounds, SInt16* outBaseline)
{
    const auto text = lampblack::foundation::TextOf(inString);
    TextLayout layout;
    if (!text || !ioBounds || !FindThemeFont(inFontID, &layout.style))
        return paramErr;
    layout.wraps = inWrapToWidth;
    layout.width = ioBounds->h;
    *ioBounds = SizeOf(layout, Utf8Of(*text));
    if (outBaseline)
        *outBaseline = (SInt16)-lampblack::quickdraw::InfoOf(layout.style).descent;
    return noErr;
}

OSStatus TruncateThemeText(CFMutableStringRef inString, ThemeFontID inFontID, ThemeDrawState,
                           SInt16 inPixelWidthLimit, TruncCode inTruncWhere, Boolean* outTruncated)
{
    const auto text = lampblack::foundation::TextOf(inString);
    TextFontStyle style;
    if (!text || !lampblack::foundation::Changeable(inString) || !outTruncated ||
        !FindThemeFont(inFontID, &style))
        return paramErr;
    const std::string utf8 = Utf8Of(*text);
    *outTruncated = lampblack::quickdraw::WidthOfUtf8(style, utf8) > inPixelWidthLimit;
    if (!*outTruncated)
        return noErr;
    const std::u16string shorter =
        lampblack::foundation::Utf16FromUtf8(Truncated(style, utf8, inPixelWidthLimit, inTruncWhere));
    CFStringDelete(inString, { 0, CFStringGetLength(inString) });
    CFStringAppendCharacters(inString, reinterpret_cast<const UniChar*>(shorter.data()),
                             (CFIndex)shorter.size());
    return noErr;
}

OSStatus GetThemeTextShadowOutset(ThemeFontID inFontID, ThemeDrawState, Rect* outOutset)
{
    TextFontStyle style;
    if (!outOutset || !FindThemeFont(inFontID, &style))
        return paramErr;
    *outOutset = { 0, 0, 0, 0 };
    return noErr;
}
