#include "TextEngine.h"

#include "Recorder.h"
#include "Shaping.h"
#include "TextRun.h"

#include <foundation/MacRoman.h>

namespace lampblack::quickdraw {

static Strike& StrikeOf(const TextFontStyle& inStyle)
{
    return StrikeFor(inStyle.font, inStyle.size, inStyle.face);
}

FontInfo InfoOf(const TextFontStyle& inStyle)
{
    return StrikeOf(inStyle).Info();
}

// The glyph of the next character, after which *ioAt is.
static const Glyph& NextGlyph(Strike& ioStrike, std::string_view inText, size_t* ioAt)
{
    const auto byte = (uint8_t)inText[*ioAt];
    if (byte >= 0x80)
        return ioStrike.GlyphOfCharacter(foundation::NextUtf8(inText, ioAt));
    ++*ioAt;
    return ioStrike.GlyphOf(byte); // the same in both encodings
}

static int SimpleWidth(Strike& ioStrike, std::string_view inText)
{
    int width = 0;
    for (size_t at = 0; at < inText.size();)
        width += NextGlyph(ioStrike, inText, &at).advance;
    return width;
}

static size_t SimpleFitting(Strike& ioStrike, std::string_view inText, int inWidth)
{
    size_t at = 0;
    for (int width = 0; at < inText.size();) {
        size_t next = at;
        width += NextGlyph(ioStrike, inText, &next).advance;
        if (width > inWidth)
            break;
        at = next;
    }
    return at;
}

// Pieces of a text that needs shaping, one after the other, each with its shape, or null where there is none.
template <class Use>
static void EachPiece(const TextFontStyle& inStyle, std::string_view inText, Use&& inUse)
{
    while (!inText.empty()) {
        const std::string_view piece = inText.substr(0, PieceToShape(inText));
        if (!inUse(piece, Shape(inStyle, piece)))
            return;
        inText.remove_prefix(piece.size());
    }
}

int WidthOfUtf8(const TextFontStyle& inStyle, std::string_view inText)
{
    Strike& strike = StrikeOf(inStyle);
    if (!NeedsShaping(inText, strike))
        return SimpleWidth(strike, inText);
    int width = 0;
    EachPiece(inStyle, inText, [&](std::string_view piece, const ShapedText* shaped) {
        width += shaped ? shaped->width : SimpleWidth(strike, piece);
        return width < 1 << 24;
    });
    return width;
}

// The beginning of a shaped text that fits. A letter may be wider at the end of a text than within, so that
// what was found is measured by itself.
static size_t ShapedFitting(const TextFontStyle& inStyle, std::string_view inText,
                            std::vector<Cluster> inClusters, int inWidth)
{
    size_t count = 0;
    for (int width = 0; count < inClusters.size(); ++count) {
        width += inClusters[count].width;
        if (width > inWidth)
            break;
    }
    while (count > 0 && WidthOfUtf8(inStyle, inText.substr(0, inClusters[count - 1].end)) > inWidth)
        --count;
    return count ? inClusters[count - 1].end : 0;
}

size_t Utf8ThatFits(const TextFontStyle& inStyle, std::string_view inText, int inWidth)
{
    Strike& strike = StrikeOf(inStyle);
    if (!NeedsShaping(inText, strike))
        return SimpleFitting(strike, inText, inWidth);
    size_t fitting = 0;
    EachPiece(inStyle, inText, [&](std::string_view piece, const ShapedText* shaped) {
        const int width = shaped ? shaped->width : SimpleWidth(strike, piece);
        if (width <= inWidth) {
            inWidth -= width;
            fitting += piece.size();
            return true;
        }
        fitting += shaped ? ShapedFitting(inStyle, piece, shaped->clusters, inWidth)
                          : SimpleFitting(strike, piece, inWidth);
        return false;
    });
    return fitting;
}

// Calls a function with each glyph and where it stands. A shaped piece is one glyph.
template <class Draw>
static void EachGlyph(const TextFontStyle& inStyle, bool inIsSimple, Strike& inAdvances, Strike& ioPictures,
                      std::string_view inText, int h, Draw&& inDraw)
{
    const auto simple = [&](std::string_view text) {
        for (size_t at = 0, next = 0; at < text.size(); next = at) {
            const int advance = NextGlyph(inAdvances, text, &at).advance;
            inDraw(NextGlyph(ioPictures, text, &next), h);
            h += advance;
        }
    };
    if (inIsSimple)
        return simple(inText);
    EachPiece(inStyle, inText, [&](std::string_view piece, const ShapedText* shaped) {
        if (!shaped) {
            simple(piece);
            return true;
        }
        inDraw(shaped->ink, h);
        h += shaped->width;
        return h < 1 << 24;
    });
}

static void RecordUtf8(const PortRecord& inPort, const TextFontStyle& inStyle, std::string_view inText)
{
    if (!RecorderOf(&inPort))
        return;
    TextSettings settings = inPort.fText;
    settings.font = inStyle.font;
    settings.size = inStyle.size;
    settings.face = inStyle.face;
    settings.spaceExtra = settings.charExtra = 0;
    settings.strike = nullptr;
    const std::string macRoman = foundation::MacRomanFromUtf8(inText);
    RecordText(settings, inPort.fPen.location, BytesOf(macRoman.data(), 0, (SInt64)macRoman.size()));
}

void DrawUtf8(const TextFontStyle& inStyle, std::string_view inText)
{
    PortRecord* port = CurrentPort();
    if (!port || inText.empty())
        return;
    RecordUtf8(*port, inStyle, inText);
    Strike& strike = StrikeOf(inStyle);
    const bool isSimple = !NeedsShaping(inText, strike);
    const Point pen = port->fPen.location;
    const int width = isSimple ? SimpleWidth(strike, inText) : WidthOfUtf8(inStyle, inText);
    port->fPen.location.h = Clamped(pen.h + width);
    if (!ShowsText(*port))
        return;
    TextPainter painter(*port, port->fText.mode, TextBoxAt(pen, width, strike.Info()));
    Strike& pictures = painter.IsPlain() ? strike.Plain() : strike;
    const auto each = [&](auto&& draw) {
        EachGlyph(inStyle, isSimple, strike, pictures, inText, pen.h, draw);
    };
    each([&](const Glyph& glyph, int h) { painter.DrawGlyph(glyph, h, pen.v); });
    if (!(inStyle.face & underline))
        return;
    Underliner line(painter, pen, inStyle.size);
    each([&](const Glyph& glyph, int h) { line.Pass(glyph, h); });
    line.End(pen.h + width);
}

} // namespace lampblack::quickdraw
