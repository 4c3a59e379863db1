#include "BitmapFont.h"

#include <foundation/BigEndian.h>

namespace lampblack::quickdraw {

// Places in the record [IM-T, documented].
static constexpr size_t kFontType = 0, kFirstChar = 2, kLastChar = 4, kWidMax = 6, kKernMax = 8,
                        kNDescent = 10, kRectHeight = 14, kTableOffset = 16, kAscent = 18, kDescent = 20,
                        kLeading = 22, kRowWords = 24, kImage = 26;
static constexpr int kTallest = 2048; // rows; none is nearly as high
static constexpr int kNoGlyph = -1;

int BitmapFont::Word(size_t inOffset) const
{
    return (int16_t)foundation::ReadBE16(fBytes, inOffset);
}

int BitmapFont::Unsigned(size_t inOffset) const
{
    return foundation::ReadBE16(fBytes, inOffset);
}

bool BitmapFont::Read(std::span<const uint8_t> inBytes)
{
    *this = BitmapFont();
    fBytes.assign(inBytes.begin(), inBytes.end());
    if (ReadHeader() && ReadTables())
        return true;
    *this = BitmapFont();
    return false;
}

bool BitmapFont::ReadHeader()
{
    if (fBytes.size() < kImage)
        return false;
    fFirst = Word(kFirstChar);
    fLast = Word(kLastChar);
    fWidMax = Word(kWidMax);
    fKernMax = Word(kKernMax);
    fAscent = Word(kAscent);
    fDescent = Word(kDescent);
    fLeading = Word(kLeading);
    fHeight = Word(kRectHeight);
    fRowBytes = 2 * Unsigned(kRowWords);
    fDepth = 1 << (Unsigned(kFontType) >> 2 & 3);
    return fFirst >= 0 && fFirst <= fLast && fLast <= 255 && fHeight >= 0 && fHeight <= kTallest &&
           fAscent >= -kTallest && fAscent <= kTallest && fDescent >= -kTallest && fDescent <= kTallest;
}

bool BitmapFont::ReadTables()
{
    // The tables have one entry more for the sign of a missing character, and the locations one for the end.
    const size_t count = (size_t)(fLast - fFirst + 2);
    const size_t image = (size_t)fRowBytes * (size_t)fHeight;
    // A positive nDescent is the high word of the offset of a long table.
    const size_t high = Word(kNDescent) > 0 ? (size_t)Word(kNDescent) : 0;
    fLocations = kImage + image;
    fOffsets = kTableOffset + 2 * (high << 16 | (size_t)Unsigned(kTableOffset));
    return foundation::Fits(kImage, image, fBytes.size()) &&
           foundation::Fits(fLocations, 2 * (count + 1), fBytes.size()) &&
           foundation::Fits(fOffsets, 2 * count, fBytes.size());
}

BitmapGlyph BitmapFont::GlyphOf(uint8_t inCharacter) const
{
    if (fBytes.empty())
        return {};
    const size_t missing = (size_t)(fLast - fFirst + 1);
    size_t index = inCharacter >= fFirst && inCharacter <= fLast ? (size_t)(inCharacter - fFirst) : missing;
    int place = Word(fOffsets + 2 * index);
    if (place == kNoGlyph) {
        index = missing;
        place = Word(fOffsets + 2 * index);
    }
    if (place == kNoGlyph)
        return {};
    const int start = Unsigned(fLocations + 2 * index), end = Unsigned(fLocations + 2 * index + 2);
    BitmapGlyph glyph;
    glyph.advance = place & 0xFF;
    glyph.left = fKernMax + (place >> 8 & 0xFF);
    if (start < end && end <= fRowBytes * 8 / fDepth) {
        glyph.column = start;
        glyph.width = end - start;
    }
    return glyph;
}

uint8_t BitmapFont::CoverageAt(int inColumn, int inRow) const
{
    const size_t bit = (size_t)inColumn * (size_t)fDepth;
    const uint8_t byte = fBytes[kImage + (size_t)inRow * (size_t)fRowBytes + bit / 8];
    const int most = (1 << fDepth) - 1;
    return (uint8_t)((byte >> (8 - fDepth - (int)(bit % 8)) & most) * 255 / most);
}

} // namespace lampblack::quickdraw
