// Pixels picked by the bits of a mask, whole rows without a buffer between. Begin with CopyWhereSet.
#ifndef LAMPBLACK_QUICKDRAW_MASKEDROWS_H
#define LAMPBLACK_QUICKDRAW_MASKEDROWS_H

#include <cstddef>
#include <cstdint>

namespace lampblack::quickdraw {

// Addresses are those of the first row: of its mask, whose bits begin with the highest of a byte, and of its
// first pixels.
struct MaskedRows {
    const uint8_t* mask;
    int bit; // that masks the first pixel
    const uint8_t* from;
    uint8_t* to;
    ptrdiff_t maskRowBytes, fromRowBytes, toRowBytes;
    int columns, rows;
};

// Copies the pixels whose bit is set. Destination and source are apart. No byte of the mask is read of which
// no bit is needed; pixels whose bit is clear may be written as they are.
using PickProc = void (*)(const MaskedRows&);

// The fastest loop of this machine for pixels of depth 8, 16 or 32, and the plain one that it must equal.
PickProc FastestPick(int depth);
PickProc PlainPick(int depth);

} // namespace lampblack::quickdraw

#endif
