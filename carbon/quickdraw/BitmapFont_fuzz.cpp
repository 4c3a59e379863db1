// Any bytes as a bitmap font: every glyph of what is accepted lies within the strike, and a strike of every
// style and of other sizes is made of it.
#include "BitmapFont.h"
#include "Strike.h"

#include <cstdlib>

using namespace lampblack::quickdraw;

static void Require(bool inHolds)
{
    if (!inHolds)
        std::abort();
}

static void MakeStrike(const std::shared_ptr<BitmapFont>& inFont, SInt16 inSize, Style inFace)
{
    StrikeSource source;
    source.bitmaps = inFont;
    source.bitmapSize = 12;
    source.size = inSize;
    source.face = inFace;
    source.made = (Style)(inFace & (bold | italic));
    Strike strike(source);
    for (int character = 0; character < 256; character += 5) {
        const Glyph& glyph = strike.GlyphOf((uint8_t)character);
        Require(glyph.advance >= 0 && glyph.width >= 0 && glyph.height >= 0);
        volatile uint8_t last = glyph.width ? glyph.coverage[glyph.width * glyph.height - 1] : 0;
        (void)last;
    }
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* inData, size_t inSize)
{
    const std::vector<uint8_t> bytes(inData, inData + inSize); // its end is where a sanitizer sees it
    auto font = std::make_shared<BitmapFont>();
    if (!font->Read(bytes))
        return 0;
    unsigned sum = 0;
    for (int character = 0; character < 256; ++character) {
        const BitmapGlyph glyph = font->GlyphOf((uint8_t)character);
        Require(glyph.width >= 0 && glyph.advance >= 0 && glyph.advance <= 255);
        for (int row = 0; row < font->Height() && glyph.width > 0; ++row)
            sum +=
                font->CoverageAt(glyph.column, row) + font->CoverageAt(glyph.column + glyph.width - 1, row);
    }
    Require(sum <= 255u * 2 * 256 * 2048);
    MakeStrike(font, 12, normal);
    MakeStrike(font, 7, bold | italic | shadow);
    MakeStrike(font, 20, outline | extend);
    return 0;
}
