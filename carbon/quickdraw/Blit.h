// Whole rows copied without a buffer between: pixels as they are, or converted in the common ways. Counts are
// pixels.
#ifndef LAMPBLACK_QUICKDRAW_BLIT_H
#define LAMPBLACK_QUICKDRAW_BLIT_H

#include "Copying.h"

namespace lampblack::quickdraw {

// Moves bits of a row to any place of another; they must not overlap unless both begin at whole bytes.
void MoveBits(const uint8_t* from, int fromBit, uint8_t* to, int toBit, int count);

// Copies a rectangle, whose top left is (h, v) of the destination, from (h + dh, v + dv) of a source of the
// same depth. Within one map of whole bytes a pixel every pixel is read before it is written.
void BlitBox(const Surface& from, const Surface& to, const Box& box, int dh, int dv);

// A loop for pixels that are converted one by one without scaling, or null where there is none.
using ConvertRow = void (*)(const uint8_t* from, int fromPixel, uint8_t* to, int toPixel, int count,
                            const uint32_t* table);
ConvertRow ConvertRowOf(int fromDepth, int toDepth, const Converter&);

} // namespace lampblack::quickdraw

#endif
