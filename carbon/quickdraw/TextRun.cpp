#include "TextRun.h"

#include <algorithm>

namespace lampblack::quickdraw {

static constexpr SInt64 kLongestWidth = 1 << 30;

int Ruler::At() const
{
    // Shifting rounds down, also where a narrowing extra makes the distance negative.
    return (int)std::clamp(AtFixed() >> 16, -kLongestWidth, kLongestWidth);
}

constinit TextSettings gNewPortSettings;

Strike& FindStrikeOf(TextSettings& ioSettings)
{
    ioSettings.strike = &StrikeFor(ioSettings.font, ioSettings.size, ioSettings.face, ioSettings.stretch);
    ioSettings.strikeStamp = StrikeStamp(); // it may have made room
    return *ioSettings.strike;
}

int WidthOf(const TextRun& inRun, Bytes inText)
{
    if (inRun.IsSimple())
        return inRun.strike.WidthOf(inText.data(), inText.size());
    Ruler ruler(inRun);
    for (const uint8_t byte : inText)
        ruler.Add(byte);
    return ruler.At();
}

Box TextBoxAt(Point inPen, int inWidth, const FontInfo& inInfo)
{
    return { inPen.h, inPen.v - inInfo.ascent, inPen.h + inWidth, inPen.v + inInfo.descent };
}

bool ShowsText(PortRecord& ioPort)
{
    return ioPort.fPen.visibility >= 0 && !ioPort.Drawable().IsEmpty();
}

// Calls a function with every glyph and where it stands.
template <class Draw>
static void EachGlyph(const TextRun& inRun, Strike& ioPictures, int h, Bytes inText, Draw&& inDraw)
{
    if (&inRun.strike == &ioPictures && inRun.IsSimple()) {
        for (const uint8_t byte : inText) {
            const Glyph& glyph = ioPictures.GlyphOf(byte);
            inDraw(glyph, h);
            h += glyph.advance;
        }
        return;
    }
    Ruler ruler(inRun);
    for (const uint8_t byte : inText) {
        const int place = h + ruler.At();
        ruler.Add(byte);
        inDraw(ioPictures.GlyphOf(byte), place);
    }
}

void DrawRun(PortRecord& ioPort, const TextRun& inRun, Strike& ioPictures, SInt16 inSize, Bytes inText)
{
    const TextSettings& settings = ioPort.fText;
    const Point pen = ioPort.fPen.location;
    const int width = WidthOf(inRun, inText);
    ioPort.fPen.location.h = Clamped(pen.h + width);
    if (!ShowsText(ioPort))
        return;
    TextPainter painter(ioPort, settings.mode, TextBoxAt(pen, width, ioPictures.Info()));
    Strike& pictures = painter.IsPlain() ? ioPictures.Plain() : ioPictures;
    EachGlyph(inRun, pictures, pen.h, inText,
              [&](const Glyph& glyph, int h) { painter.DrawGlyph(glyph, h, pen.v); });
    if (!(settings.face & underline))
        return;
    Underliner line(painter, pen, inSize);
    EachGlyph(inRun, pictures, pen.h, inText, [&](const Glyph& glyph, int h) { line.Pass(glyph, h); });
    line.End(pen.h + width);
}

} // namespace lampblack::quickdraw
