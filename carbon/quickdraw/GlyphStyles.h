// Styles that a face does not have, made from the coverage of its plain glyphs.
#ifndef LAMPBLACK_QUICKDRAW_GLYPHSTYLES_H
#define LAMPBLACK_QUICKDRAW_GLYPHSTYLES_H

#include <Carbon/MacTypes.h>

#include <cstdint>
#include <vector>

namespace lampblack::quickdraw {

struct CoverageMap {
    int left = 0, top = 0, width = 0, height = 0; // from the pen on the baseline
    std::vector<uint8_t> bits;
};

void Trim(CoverageMap&);  // takes empty rows away above and below
void Smear(CoverageMap&); // bold: once more, one pixel to the right
void Slant(CoverageMap&); // italic: a pixel to the right for every two above the baseline
// The outline around it, and a shadow of that many pixels below and right.
void Hollow(CoverageMap&, int shadow);

struct FaceFile;

// What of a style has to be made by these calls because the face has it not: bold, italic or both.
Style MadeStyle(Style face, const FaceFile&);

// By how much a style widens every character, when bold and italic are made or not.
int ExtraAdvance(Style face, Style made);

} // namespace lampblack::quickdraw

#endif
