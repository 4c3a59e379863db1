// Styles that a face does not have, made from the coverage of its plain glyphs.
#ifndef LAMPBLACK_QUICKDRAW_GLYPHSTYLES_H
#define LAMPBLACK_QUICKDRAW_GLYPHSTYLES_H

#include <Carbon/MacTypes.h>

#include <cstdint>
#include <vector>

namespace lampblack::quickdraw {

struct CoverageMap {
    int left = 0, top = 0, width = 0, height = 0;
    std::vector<uint8_t> bits;
};

void Smear(CoverageMap&); // bold: once more, one pixel to the right
void Hollow(CoverageMap&,
            int shadow); // the outline around it, and a shadow of that many pixels below and right

// By how much a style widens every character.
int ExtraAdvance(Style face, bool smears);

} // namespace lampblack::quickdraw

#endif
