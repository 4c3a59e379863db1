// One font in one size and style: advances and coverage of its glyphs, made on first use and kept.
// Begin with StrikeFor.
#ifndef LAMPBLACK_QUICKDRAW_STRIKE_H
#define LAMPBLACK_QUICKDRAW_STRIKE_H

#include <Carbon/Quickdraw.h>

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

class FontFace; // an open font file

class Strike {
public:
    Strike(SInt16 font, SInt16 size, Style face);
    ~Strike();

    const FontInfo& Info() const { return fInfo; }
    Style Face() const { return fFace; }

    // Of a Mac Roman byte.
    SInt16 AdvanceOf(uint8_t inByte)
    {
        const SInt16 advance = fAdvances[inByte];
        return advance != kUnknown ? advance : LoadAdvance(inByte);
    }
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

private:
    static constexpr SInt16 kUnknown = -32768;

    SInt16 LoadAdvance(uint8_t inByte);
    int LoadWidth(const uint8_t* inBytes, size_t inCount);
    const Glyph& LoadGlyph(uint8_t inByte);
    const Glyph& MakeGlyph(char32_t);
    FontFace* FaceWith(char32_t, bool* outBold, bool* outItalic);
    void MakeInfo();

    SInt16 fSize;
    Style fFace;
    FontFace* fMain = nullptr; // null: no font is installed; nothing is drawn
    bool fSmears = false, fSlants = false;
    FontInfo fInfo = { 0, 0, 0, 0 };
    SInt16 fAdvances[256];
    const Glyph* fGlyphs[256] = {};
    std::unordered_map<char32_t, const Glyph*> fByCharacter;
    std::deque<Glyph> fStorage;
    std::deque<std::vector<uint8_t>> fCoverage;
};

// Sizes below 1 count as the system font's 12. The answer lives as long as the process.
Strike& StrikeFor(SInt16 font, SInt16 size, Style face);

} // namespace lampblack::quickdraw

#endif
