// One font in one size and style: advances and coverage of its glyphs, made on first use and kept.
// Begin with StrikeFor.
#ifndef LAMPBLACK_QUICKDRAW_STRIKE_H
#define LAMPBLACK_QUICKDRAW_STRIKE_H

#include "GlyphStyles.h"

#include <Carbon/Quickdraw.h>
#include <resources/ChainChanges.h>

#include <cstdint>
#include <deque>
#include <memory>
#include <unordered_map>
#include <vector>

namespace lampblack::quickdraw {

struct Glyph {
    SInt16 advance = 0;
    SInt16 left = 0, top = 0; // of the coverage, from the pen; top is above the baseline when negative
    SInt16 width = 0, height = 0;
    const uint8_t* coverage = nullptr; // 0 to 255, rows without slack
};

class BitmapFont;
class FontFace;

// What a strike is made of: outlines, or bitmaps, or neither when no font is installed.
struct StrikeSource {
    FontFace* outlines = nullptr;
    std::shared_ptr<FontFace> owned; // keeps outlines alive that nobody else does
    std::shared_ptr<const BitmapFont> bitmaps;
    int bitmapSize = 0; // the size that the bitmaps were drawn for
    SInt16 size = 12;   // pixels
    int stretch = 256;  // of widths, in 256ths
    Style face = normal;
    Style made = normal; // bold and italic, if the font has them not
    bool isPlain = false;
};

class Strike {
public:
    explicit Strike(StrikeSource);
    ~Strike();

    const FontInfo& Info() const { return fInfo; }
    Style Face() const { return fFrom.face; }

    // Of a Mac Roman byte.
    SInt16 AdvanceOf(uint8_t inByte)
    {
        const SInt16 advance = fAdvances[inByte];
        return advance != kUnknown ? advance : LoadAdvance(inByte);
    }
    // Good until the next glyph is asked for.
    const Glyph& GlyphOf(uint8_t inByte)
    {
        const Glyph* glyph = fGlyphs[inByte];
        return glyph ? *glyph : LoadGlyph(inByte);
    }

    // The sum of the advances. A missing one has its sign bit set, so that one test at the end finds it.
    int WidthOf(const uint8_t* inBytes, size_t inCount)
    {
        int width = 0, signs = 0;
        for (size_t i = 0; i < inCount; ++i) {
            const int advance = fAdvances[inBytes[i]];
            width += advance;
            signs |= advance;
        }
        return signs >= 0 ? width : LoadWidth(inBytes, inCount);
    }

    // Of any character, by the same faces.
    const Glyph& GlyphOfCharacter(char32_t);

    // Whether the font itself has a character.
    bool Has(char32_t) const;

    // The same font drawn without half-tones, for pixels that have none. Only its pictures are to be used:
    // texts are as wide there as everywhere.
    Strike& Plain();

private:
    static constexpr SInt16 kUnknown = -32768;

    SInt16 LoadAdvance(uint8_t inByte);
    int LoadWidth(const uint8_t* inBytes, size_t inCount);
    const Glyph& LoadGlyph(uint8_t inByte);
    const Glyph& MakeGlyph(char32_t);
    const Glyph& MakeBitmapGlyph(uint8_t inByte);
    const Glyph& Keep(int advance, CoverageMap&&);
    FontFace* FaceWith(char32_t, Style* outMade);
    void MakeInfo();
    void MakeBitmapInfo();
    int AcrossFromBitmap(int inColumns) const;
    int DownFromBitmap(int inRows) const;
    void ForgetGlyphs();

    StrikeSource fFrom;
    FontInfo fInfo = { 0, 0, 0, 0 };
    SInt16 fAdvances[256];
    const Glyph* fGlyphs[256] = {};
    std::unordered_map<char32_t, const Glyph*> fByCharacter;
    std::deque<Glyph> fStorage;
    std::deque<std::vector<uint8_t>> fCoverage;
    size_t fCoverageSize = 0;
    std::unique_ptr<Strike> fPlain;
};

// Sizes below 1 count as the system font's 12. Widths are stretched by 256ths. The answer is good as long as
// StrikeStamp answers the same.
Strike& StrikeFor(SInt16 font, SInt16 size, Style face, int stretch = 256);

// All strikes are made anew.
void ForgetStrikes();

extern unsigned gStrikeStamp;   // how often strikes were forgotten
extern unsigned gSeenResources; // the changes of resource files that were looked at

// Looks at the fonts of the resource files, and forgets the strikes if they are others now.
void LookAtResourceFonts();

// Changes when strikes are forgotten: when there were too many, and when other resource files bring other
// fonts.
inline unsigned StrikeStamp()
{
    if (gSeenResources != resources::gChainChanges + resources::gChainEdits)
        LookAtResourceFonts();
    return gStrikeStamp;
}

} // namespace lampblack::quickdraw

#endif
