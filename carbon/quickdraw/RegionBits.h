// Regions from bit maps.
#ifndef LAMPBLACK_QUICKDRAW_REGIONBITS_H
#define LAMPBLACK_QUICKDRAW_REGIONBITS_H

#include "Region.h"

#include <cstdint>

namespace lampblack::quickdraw {

// The set bits of a map whose rows hold all of its columns. Answers false, and changes nothing, for more than
// a million rectangles.
bool RegionOfBits(const uint8_t* base, int rowBytes, const Rect& bounds, Region* out);

} // namespace lampblack::quickdraw

#endif
