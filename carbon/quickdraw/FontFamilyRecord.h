// Which fonts a 'FOND' resource gives a family for each size and style. Pure; never reads outside of its
// bytes. Begin with ReadFontFamily. Layout in docs/formats/fonts.md.
#ifndef LAMPBLACK_QUICKDRAW_FONTFAMILYRECORD_H
#define LAMPBLACK_QUICKDRAW_FONTFAMILYRECORD_H

#include <Carbon/MacTypes.h>

#include <span>
#include <vector>

namespace lampblack::quickdraw {

struct FontAssociation {
    SInt16 size = 0; // 0: outlines, an 'sfnt'; else a bitmap strike, an 'NFNT' or 'FONT'
    Style style = 0;
    SInt16 id = 0;

    bool IsOutline() const { return size == 0; }
};

// Those of a family that lie within its bytes; none for what is no family.
std::vector<FontAssociation> ReadFontFamily(std::span<const uint8_t> bytes);

// The best one for a size and style, null for none: outlines where they are preferred; else a bitmap of the
// size; else outlines; else the bitmap of twice the size, of half of it, the next larger or the next smaller.
// Of one size, the one with most of the style and nothing besides.
const FontAssociation* BestAssociation(std::span<const FontAssociation>, int size, Style style,
                                       bool outlinesPreferred);

} // namespace lampblack::quickdraw

#endif
