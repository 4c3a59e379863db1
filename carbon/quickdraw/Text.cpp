// The text calls: settings, drawing, widths.
#include "Recorder.h"
#include "ScaledText.h"
#include "TextRun.h"

#include <Carbon/Fonts.h>
#include <Carbon/QuickdrawText.h>

#include <algorithm>

using namespace lampblack::quickdraw;

namespace lampblack::quickdraw {

static Bytes BytesOf(ConstStr255Param inString)
{
    return inString ? BytesOf(inString, 1, inString[0]) : Bytes{};
}

static int WidthOf(Bytes inText)
{
    TextSettings& settings = CurrentTextSettings();
    Strike& strike = StrikeOf(settings);
    if (!(settings.spaceExtra | settings.charExtra))
        return strike.WidthOf(inText.data(), inText.size());
    return WidthOf(RunOf(settings), inText);
}

static void DrawBytes(Bytes inText)
{
    PortRecord* port = CurrentPort();
    if (!port || inText.empty())
        return;
    RecordText(port->fText, port->fPen.location, inText);
    const TextRun run = RunOf(port->fText);
    DrawRun(*port, run, run.strike, port->fText.size, inText);
}

// Where each character begins, and where the last one ends.
static void WritePlaces(const TextRun& inRun, Bytes inText, void* outPlaces)
{
    auto* places = static_cast<SInt16*>(outPlaces);
    Ruler ruler(inRun);
    *places = 0;
    for (const uint8_t byte : inText) {
        ruler.Add(byte);
        *++places = Clamped(ruler.At());
    }
}

// A scale by which distances are multiplied, and one for heights.
struct Scale {
    SInt64 acrossNumer = 1, acrossDenom = 1, downNumer = 1, downDenom = 1;

    Scale(Point inNumer, Point inDenom)
    {
        if (inNumer.h > 0 && inDenom.h > 0)
            acrossNumer = inNumer.h, acrossDenom = inDenom.h;
        if (inNumer.v > 0 && inDenom.v > 0)
            downNumer = inNumer.v, downDenom = inDenom.v;
    }
    bool IsNone() const { return acrossNumer == acrossDenom && downNumer == downDenom; }
    TextScale Fractions() const
    {
        return { { (short)downNumer, (short)acrossNumer }, { (short)downDenom, (short)acrossDenom } };
    }
    SInt16 SizeOf(SInt16 inSize) const
    {
        const SInt64 size = inSize > 0 ? inSize : GetDefFontSize();
        return (SInt16)std::clamp<SInt64>((2 * size * downNumer + downDenom) / (2 * downDenom), 1, 32767);
    }
    int StretchAt(SInt16 inSize) const // of the glyphs of the new size, in 256ths
    {
        const SInt64 size = inSize > 0 ? inSize : GetDefFontSize();
        return (int)std::min<SInt64>(256 * size * acrossNumer / (acrossDenom * SizeOf(inSize)), 1 << 20);
    }
};

static Fixed Saturated(SInt64 inFixed)
{
    return (Fixed)std::clamp<SInt64>(inFixed, INT32_MIN, INT32_MAX);
}

// Every space takes an equal part of a slop, rounded up so that a sum rounded down is the whole of it.
static TextRun JustifiedRun(Bytes inText, Fixed inSlop, const Scale& inScale)
{
    TextRun run = RunOf(CurrentTextSettings());
    const SInt64 spaces = std::count(inText.begin(), inText.end(), ' ');
    if (spaces > 0)
        run.spaceExtra =
            Saturated(run.spaceExtra + (inSlop > 0 ? (inSlop + spaces - 1) / spaces : inSlop / spaces));
    run.numer = inScale.acrossNumer;
    run.denom = inScale.acrossDenom;
    return run;
}

static void DrawScaledRun(Bytes inText, Fixed inSlop, const Scale& inScale)
{
    PortRecord* port = CurrentPort();
    if (!port || inText.empty())
        return;
    TextSettings settings = port->fText;
    const TextRun run = JustifiedRun(inText, inSlop, inScale);
    settings.spaceExtra = run.spaceExtra;
    RecordText(settings, port->fPen.location, inText, inScale.Fractions());
    settings.size = inScale.SizeOf(settings.size);
    Strike& pictures = inScale.IsNone()
                           ? run.strike
                           : StrikeFor(settings.font, settings.size, settings.face,
                                       inScale.StretchAt(port->fText.size) * settings.stretch / 256);
    DrawRun(*port, run, pictures, settings.size, inText);
}

void StretchText(int inPercent)
{
    TextSettings& settings = CurrentTextSettings();
    settings.stretch = std::clamp(inPercent, 10, 1000) * 256 / 100;
    settings.strike = nullptr;
}

void DrawScaledText(std::span<const uint8_t> inText, Point inNumer, Point inDenom)
{
    DrawScaledRun(inText, 0, { inNumer, inDenom });
}

} // namespace lampblack::quickdraw

void TextFont(short font)
{
    SetPortTextFont(ReferenceOf(CurrentPort()), font);
}

void TextFace(StyleParameter face)
{
    SetPortTextFace(ReferenceOf(CurrentPort()), face);
}

void TextMode(short mode)
{
    SetPortTextMode(ReferenceOf(CurrentPort()), mode);
}

void TextSize(short size)
{
    SetPortTextSize(ReferenceOf(CurrentPort()), size);
}

void SpaceExtra(Fixed extra)
{
    if (PortRecord* port = CurrentPort())
        port->fText.spaceExtra = extra;
}

void CharExtra(Fixed extra)
{
    if (PortRecord* port = CurrentPort())
        port->fText.charExtra = extra;
}

void DrawChar(CharParameter ch)
{
    const auto byte = (uint8_t)ch;
    DrawBytes({ &byte, 1 });
}

void DrawString(ConstStr255Param s)
{
    DrawBytes(BytesOf(s));
}

void DrawText(const void* textBuf, short firstByte, short byteCount)
{
    DrawBytes(BytesOf(textBuf, firstByte, byteCount));
}

short CharWidth(CharParameter ch)
{
    const auto byte = (uint8_t)ch;
    return Clamped(WidthOf(Bytes{ &byte, 1 }));
}

short StringWidth(ConstStr255Param s)
{
    return Clamped(WidthOf(BytesOf(s)));
}

short TextWidth(const void* textBuf, short firstByte, short byteCount)
{
    return Clamped(WidthOf(BytesOf(textBuf, firstByte, byteCount)));
}

void MeasureText(short count, const void* textAddr, void* charLocs)
{
    if (count >= 0 && textAddr && charLocs)
        WritePlaces(RunOf(CurrentTextSettings()), BytesOf(textAddr, 0, count), charLocs);
}

void GetFontInfo(FontInfo* info)
{
    if (info)
        *info = StrikeOf(CurrentTextSettings()).Info();
}

void StdText(short count, const void* textAddr, Point numer, Point denom)
{
    DrawScaledText(BytesOf(textAddr, 0, count), numer, denom);
}

// Outlines of the size asked for are always at hand, so that the whole scale is left to the caller.
short StdTxMeas(short byteCount, const void* textAddr, Point* numer, Point* denom, FontInfo* info)
{
    if (numer && denom) {
        const Scale scale(*numer, *denom);
        *numer = { (short)scale.downNumer, (short)scale.acrossNumer };
        *denom = { (short)scale.downDenom, (short)scale.acrossDenom };
    }
    GetFontInfo(info);
    return TextWidth(textAddr, 0, byteCount);
}

void DrawJustified(Ptr textPtr, long textLength, Fixed slop, JustStyleCode, Point numer, Point denom)
{
    DrawScaledRun(BytesOf(textPtr, 0, textLength), slop, { numer, denom });
}

void MeasureJustified(Ptr textPtr, long textLength, Fixed slop, Ptr charLocs, JustStyleCode, Point numer,
                      Point denom)
{
    if (!textPtr || !charLocs || textLength < 0)
        return;
    const Bytes text = BytesOf(textPtr, 0, textLength);
    WritePlaces(JustifiedRun(text, slop, { numer, denom }), text, charLocs);
}

short CharToPixel(Ptr textBuf, long textLength, Fixed slop, long offset, short, JustStyleCode, Point numer,
                  Point denom)
{
    const Bytes text = BytesOf(textBuf, 0, textLength);
    const TextRun run = JustifiedRun(text, slop, { numer, denom });
    return Clamped(WidthOf(run, text.first((size_t)std::clamp<long>(offset, 0, (long)text.size()))));
}

short PixelToChar(Ptr textBuf, long textLength, Fixed slop, Fixed pixelWidth, Boolean* leadingEdge,
                  Fixed* widthRemaining, JustStyleCode, Point numer, Point denom)
{
    const Bytes text = BytesOf(textBuf, 0, textLength);
    const TextRun run = JustifiedRun(text, slop, { numer, denom });
    Boolean ignored;
    Boolean& isLeading = leadingEdge ? *leadingEdge : ignored;
    if (widthRemaining)
        *widthRemaining = -1;
    Ruler ruler(run);
    for (size_t i = 0; i < text.size(); ++i) {
        const SInt64 start = ruler.AtFixed();
        ruler.Add(text[i]);
        isLeading = pixelWidth < (start + ruler.AtFixed()) / 2;
        if (pixelWidth < ruler.AtFixed())
            return Clamped((int)std::min<size_t>(isLeading ? i : i + 1, 32767));
    }
    isLeading = false;
    if (widthRemaining)
        *widthRemaining = (Fixed)std::min<SInt64>(pixelWidth - ruler.AtFixed(), 0x7FFFFFFF);
    return Clamped((int)std::min<size_t>(text.size(), 32767));
}
