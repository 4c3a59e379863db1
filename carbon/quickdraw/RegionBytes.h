// Regions as resources and pictures hold them: a size, the bounds, and unless that is all (ten bytes: a
// rectangle) rows of inversion points. A row is y, then the columns where what follows turns from outside to
// inside or back against the row above, then 0x7FFF; 0x7FFF in place of y ends the region. All numbers are
// big-endian, 16 bits.
#ifndef LAMPBLACK_QUICKDRAW_REGIONBYTES_H
#define LAMPBLACK_QUICKDRAW_REGIONBYTES_H

#include "Region.h"

#include <cstdint>
#include <span>
#include <vector>

namespace lampblack::quickdraw {

// ReadRegionBytes
//
// Reads the region that the bytes begin with; *outUsed, which may be null, tells how long it is. Answers
// false for a size that is odd, below 10 or beyond the bytes, for rows that do not descend, and for more than
// a million rectangles. Inversions that are left open end at the bounds, and so does what reaches past them.
bool ReadRegionBytes(std::span<const uint8_t> bytes, Region* out, size_t* outUsed);

// The region in that form; empty when it would be longer than its size field can say (64 KB). Columns and
// rows of what is no rectangle end at 32766, since 32767 is the mark.
std::vector<uint8_t> RegionBytes(const Region&);

} // namespace lampblack::quickdraw

#endif
