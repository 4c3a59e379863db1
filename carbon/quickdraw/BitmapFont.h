// A bitmap strike as 'NFNT' and 'FONT' resources hold it. Pure; never reads outside of its bytes. Begin with
// BitmapFont::Read. Layout in docs/formats/fonts.md.
#ifndef LAMPBLACK_QUICKDRAW_BITMAPFONT_H
#define LAMPBLACK_QUICKDRAW_BITMAPFONT_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace lampblack::quickdraw {

// Where the image of a character is in the strike, and where it goes.
struct BitmapGlyph {
    int advance = 0;
    int left = 0;   // of the image, from the pen
    int column = 0; // of the strike
    int width = 0;
};

class BitmapFont {
public:
    // Copies the bytes. False for what is no strike, and the font stays empty then.
    bool Read(std::span<const uint8_t> bytes);

    int Ascent() const { return fAscent; }
    int Descent() const { return fDescent; }
    int Leading() const { return fLeading; }
    int WidMax() const { return fWidMax; }
    int Height() const { return fHeight; } // rows; the first one is Ascent above the baseline

    // A character that the strike does not have shows its sign for a missing one.
    BitmapGlyph GlyphOf(uint8_t character) const;

    // 0 to 255. The column lies within a glyph and the row within the height.
    uint8_t CoverageAt(int column, int row) const;

private:
    bool ReadHeader();
    bool ReadTables();
    int Word(size_t offset) const; // signed
    int Unsigned(size_t offset) const;

    std::vector<uint8_t> fBytes;
    int fFirst = 0, fLast = -1;
    int fKernMax = 0, fWidMax = 0, fAscent = 0, fDescent = 0, fLeading = 0, fHeight = 0;
    int fDepth = 1, fRowBytes = 0;
    size_t fLocations = 0, fOffsets = 0; // of the tables
};

} // namespace lampblack::quickdraw

#endif
