// For tests: a bitmap font made from pictures in letters, and families of fonts, as their resources.
#ifndef LAMPBLACK_QUICKDRAW_TESTFONT_H
#define LAMPBLACK_QUICKDRAW_TESTFONT_H

#include "FontFamilyRecord.h"

#include <cstdint>
#include <string>
#include <vector>

namespace lampblack::quickdraw {

// The picture of a character: rows of '#' and '.', all of one length; empty for a character that is not
// there.
struct TestGlyph {
    std::vector<std::string> rows;
    int offset = 0, advance = 0;
};

struct TestFont {
    int first = 'A', ascent = 3, descent = 1, leading = 1, kernMax = 0;
    // From the first character on; the last one is the sign of those that are missing.
    std::vector<TestGlyph> glyphs;

    std::vector<uint8_t> Bytes() const
    {
        std::string rows[kHeight];
        std::vector<int> locations, places;
        for (const TestGlyph& glyph : glyphs) {
            locations.push_back((int)rows[0].size());
            places.push_back(glyph.rows.empty() ? -1 : glyph.offset << 8 | glyph.advance);
            for (size_t row = 0; row < kHeight && !glyph.rows.empty(); ++row)
                rows[row] += glyph.rows[row];
        }
        locations.push_back((int)rows[0].size());
        const int words = ((int)rows[0].size() + 15) / 16;
        const int tableOffset = 5 + words * kHeight + (int)locations.size(); // in words, from its own place
        std::vector<uint8_t> bytes;
        for (const int word : { 0x9000, first, first + (int)glyphs.size() - 2, 8, kernMax, -descent, 8,
                                kHeight, tableOffset, ascent, descent, leading, words })
            AddWord(bytes, word);
        for (const std::string& row : rows)
            AddRow(bytes, row, words);
        for (const int location : locations)
            AddWord(bytes, location);
        for (const int place : places)
            AddWord(bytes, place);
        return bytes;
    }

    static constexpr int kHeight = 4;

    static void AddWord(std::vector<uint8_t>& ioBytes, int inWord)
    {
        ioBytes.push_back((uint8_t)(inWord >> 8));
        ioBytes.push_back((uint8_t)inWord);
    }
    static void AddRow(std::vector<uint8_t>& ioBytes, const std::string& inRow, int inWords)
    {
        for (int word = 0; word < inWords; ++word) {
            int bits = 0;
            for (size_t bit = 0; bit < 16; ++bit) {
                const size_t column = (size_t)word * 16 + bit;
                bits = bits << 1 | (column < inRow.size() && inRow[column] == '#');
            }
            AddWord(ioBytes, bits);
        }
    }
};

// A, C and the missing one; B is not there. A is 3 wide, C hangs over to the left and reaches below.
inline TestFont SmallFont()
{
    TestFont font;
    font.kernMax = -1;
    font.glyphs = { { { "###", "#.#", "#.#", "..." }, 1, 4 },
                    {},
                    { { "####", "#...", "#...", "####" }, 0, 5 },
                    { { "##", "##", "##", ".." }, 1, 3 } };
    return font;
}

inline std::vector<uint8_t> FamilyBytes(const std::vector<FontAssociation>& inFonts)
{
    std::vector<uint8_t> bytes(52);
    TestFont::AddWord(bytes, (int)inFonts.size() - 1);
    for (const FontAssociation& font : inFonts) {
        TestFont::AddWord(bytes, font.size);
        TestFont::AddWord(bytes, font.style);
        TestFont::AddWord(bytes, font.id);
    }
    return bytes;
}

} // namespace lampblack::quickdraw

#endif
