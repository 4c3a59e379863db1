#include "controls/ControlText.h"

#include <quickdraw/ScaledText.h>

#include <algorithm>

namespace lampblack::controls {

ThemeFontID ThemeFontForSize(ControlSize inSize)
{
    if (inSize == kControlSizeSmall)
        return kThemeSmallSystemFont;
    return inSize == kControlSizeMini ? kThemeMiniSystemFont : kThemeSystemFont;
}

SInt16 Kind::DefaultThemeFont() const
{
    return (SInt16)ThemeFontForSize(fControl.size);
}

namespace {

constexpr ScriptCode kSystemScript = -1;

ThemeFontID MetaFont(SInt16 inFont, SInt16 inElse)
{
    switch (inFont) {
    case kControlFontBigSystemFont: return kThemeSystemFont;
    case kControlFontSmallSystemFont: return kThemeSmallSystemFont;
    case kControlFontSmallBoldSystemFont: return kThemeSmallEmphasizedSystemFont;
    case kControlFontViewSystemFont: return kThemeViewsFont;
    default: return (ThemeFontID)inElse;
    }
}

void UseFontField(const Control& inControl)
{
    const ControlFontStyleRec& style = inControl.font;
    const SInt16 fallback = inControl.kind->DefaultThemeFont();
    const bool byThemeID = (style.flags & kControlUseThemeFontIDMask) && !(style.flags & kControlUseFontMask);
    if (byThemeID && UseThemeFont((ThemeFontID)style.font, kSystemScript) == noErr)
        return;
    const bool ownFont = (style.flags & kControlUseFontMask) && style.font >= 0;
    const bool metaFont = (style.flags & kControlUseFontMask) && style.font < 0;
    UseThemeFont(metaFont ? MetaFont(style.font, fallback) : (ThemeFontID)fallback, kSystemScript);
    if (ownFont)
        TextFont(style.font);
}

} // namespace

void UseControlFont(const Control& inControl)
{
    const ControlFontStyleRec& style = inControl.font;
    UseFontField(inControl);
    if (style.flags & kControlUseSizeMask)
        TextSize(style.size);
    if (style.flags & kControlAddFontSizeMask) {
        CGrafPtr port = nullptr;
        GetPort(&port);
        TextSize((SInt16)(GetPortTextSize(port) + style.size));
    }
    if (style.flags & kControlUseFaceMask)
        TextFace((StyleParameter)style.style);
}

void UseControlTextColor(const Control& inControl, ThemeTextColor inUsable, ThemeTextColor inDimmed)
{
    const ControlFontStyleRec& style = inControl.font;
    const bool usable = IsUsable(inControl);
    ControlRef self = const_cast<Control&>(inControl).Ref();
    TextMode(srcOr);
    if (inControl.colorProc &&
        InvokeControlColorUPP(self, kControlMsgApplyTextColor, 32, true, inControl.colorProc) == noErr)
        return;
    SetThemeTextColor(usable ? inUsable : inDimmed, 32, true);
    if (usable && (style.flags & kControlUseForeColorMask))
        RGBForeColor(&style.foreColor);
    if (style.flags & kControlUseBackColorMask)
        RGBBackColor(&style.backColor);
    if (style.flags & kControlUseModeMask)
        TextMode(style.mode);
}

SInt16 FontLineHeight()
{
    FontInfo info;
    GetFontInfo(&info);
    return (SInt16)(info.ascent + info.descent + info.leading);
}

SInt16 FontAscent()
{
    FontInfo info;
    GetFontInfo(&info);
    return info.ascent;
}

SInt16 WidthOf(std::string_view inText)
{
    const size_t most = std::min<size_t>(inText.size(), 32767);
    return most ? TextWidth(inText.data(), 0, (short)most) : (SInt16)0;
}

namespace {

// How many bytes of the text fit into the width: at least one, so that every line goes on.
size_t FittingLength(std::string_view inText, SInt16 inWidth)
{
    size_t low = 1, high = inText.size();
    while (low < high) {
        const size_t middle = (low + high + 1) / 2;
        if (WidthOf(inText.substr(0, middle)) <= inWidth)
            low = middle;
        else
            high = middle - 1;
    }
    return std::min(low, inText.size());
}

// Where the line that starts the text ends, and how much to skip until the next one starts.
size_t LineLength(std::string_view inText, SInt16 inWidth, size_t* outSkip)
{
    const size_t ending = std::min(inText.find_first_of("\r\n"), inText.size());
    const std::string_view paragraph = inText.substr(0, ending);
    *outSkip = ending < inText.size() ? 1 : 0;
    if (paragraph.empty() || WidthOf(paragraph) <= inWidth)
        return ending;
    const size_t fits = FittingLength(paragraph, inWidth);
    const size_t blank = paragraph.rfind(' ', fits);
    *outSkip = blank != std::string_view::npos && blank > 0 ? 1 : 0;
    return *outSkip ? blank : fits;
}

SInt16 LineLeft(SInt16 inWidth, const Rect& inBox, SInt16 inJust)
{
    if (inJust == 1)
        return (SInt16)(inBox.left + (inBox.right - inBox.left - inWidth) / 2);
    if (inJust == -1)
        return (SInt16)(inBox.right - inWidth);
    return inBox.left;
}

void DrawAt(std::string_view inText, const Rect& inBox, SInt16 inJust, SInt16 inBaseline)
{
    if (inText.empty())
        return;
    MoveTo(inJust == 0 || inJust == -2 ? inBox.left : LineLeft(WidthOf(inText), inBox, inJust), inBaseline);
    DrawText(inText.data(), 0, (short)std::min<size_t>(inText.size(), 32767));
}

} // namespace

size_t BreakLines(std::string_view inText, SInt16 inWidth, TextLine* outLines, size_t inRoom)
{
    size_t count = 0, at = 0;
    inText = inText.substr(0, 32767);
    while (at < inText.size() && count < inRoom) {
        size_t skip = 0;
        const size_t length = LineLength(inText.substr(at), inWidth, &skip);
        outLines[count++] = { (short)at, (short)length };
        at += length + skip;
    }
    return count;
}

namespace {

// Dialogs were laid out for other fonts, and some for smaller ones: a text that would lose its last words is
// set in narrower letters, as far as it needs.
class StFittingText {
public:
    using Test = bool (*)(std::string_view inText, const Rect& inBox);

    StFittingText(std::string_view inText, const Rect& inBox, Test inFits)
    {
        static constexpr int kPercents[] = { 100, 94, 88, 82, 76, 70, 64 };
        for (const int percent : kPercents) {
            quickdraw::StretchText(percent);
            if (inFits(inText, inBox))
                return;
        }
    }
    ~StFittingText() { quickdraw::StretchText(100); }
    StFittingText(const StFittingText&) = delete;
    StFittingText& operator=(const StFittingText&) = delete;
};

// A line counts when its letters above the baseline are within the box.
bool LinesFit(std::string_view inText, const Rect& inBox)
{
    TextLine lines[kMostLines];
    const size_t count = BreakLines(inText, (SInt16)(inBox.right - inBox.left), lines, kMostLines);
    return count <= 1 || (int)(count - 1) * FontLineHeight() + FontAscent() <= inBox.bottom - inBox.top;
}

bool LineFits(std::string_view inText, const Rect& inBox)
{
    return WidthOf(inText) <= inBox.right - inBox.left;
}

// The text with an ellipsis (0xC9 in Mac Roman) for as much of its end as the width does not hold. A width
// that holds nothing gets the ellipsis alone.
std::string Cut(std::string_view inText, SInt16 inWidth)
{
    constexpr char kEllipsis = (char)0xC9;
    const SInt16 room = (SInt16)(inWidth - WidthOf({ &kEllipsis, 1 }));
    size_t length = room > 0 ? FittingLength(inText, room) : 0;
    while (length > 0 && inText[length - 1] == ' ')
        --length;
    return std::string(inText.substr(0, length)) + kEllipsis;
}

// How far up a text goes whose last line would lose the tails of its letters: into the space that only accents
// on capitals need.
int RoomForTails(const FontInfo& inFont, int inLines, int inHeight)
{
    const int height = inLines * (inFont.ascent + inFont.descent + inFont.leading) - inFont.leading;
    return height - inHeight <= inFont.descent ? std::clamp(height - inHeight, 0, inFont.ascent / 4) : 0;
}

} // namespace

void DrawWrapped(std::string_view inText, const Rect& inBox, SInt16 inJust)
{
    const StFittingText fitting(inText, inBox, LinesFit);
    TextLine lines[kMostLines];
    const size_t count = BreakLines(inText, (SInt16)(inBox.right - inBox.left), lines, kMostLines);
    FontInfo info;
    GetFontInfo(&info);
    int baseline = inBox.top + info.ascent - RoomForTails(info, (int)count, inBox.bottom - inBox.top);
    for (size_t i = 0; i < count && baseline - info.ascent < inBox.bottom; ++i) {
        DrawAt(inText.substr((size_t)lines[i].start, (size_t)lines[i].length), inBox, inJust,
               (SInt16)baseline);
        baseline += info.ascent + info.descent + info.leading;
    }
}

void DrawLine(std::string_view inText, const Rect& inBox, SInt16 inJust)
{
    FontInfo info;
    GetFontInfo(&info);
    const int height = info.ascent + info.descent;
    DrawAt(inText, inBox, inJust,
           (SInt16)(inBox.top + (inBox.bottom - inBox.top - height + 1) / 2 + info.ascent));
}

void DrawFittedLine(std::string_view inText, const Rect& inBox, SInt16 inJust)
{
    const StFittingText fitting(inText, inBox, LineFits);
    if (LineFits(inText, inBox))
        DrawLine(inText, inBox, inJust);
    else
        DrawLine(Cut(inText, (SInt16)(inBox.right - inBox.left)), inBox, inJust == 1 ? 0 : inJust);
}

SInt16 WrappedHeight(std::string_view inText, SInt16 inWidth)
{
    TextLine lines[kMostLines];
    const size_t count = BreakLines(inText, inWidth, lines, kMostLines);
    return (SInt16)((count ? count : 1) * (size_t)FontLineHeight());
}

} // namespace lampblack::controls
