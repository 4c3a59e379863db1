// Reads fields of any number of bits, the highest bit first.
#ifndef LAMPBLACK_RSRC_BITREADER_H
#define LAMPBLACK_RSRC_BITREADER_H

#include <foundation/BigEndian.h>

#include <algorithm>

namespace lampblack::rsrc {

using foundation::Bytes;

// At most 64 bits at a place; bits past the end read as 0.
inline uint64_t BitsAt(Bytes inBytes, uint64_t inAt, int inBits)
{
    uint64_t value = 0;
    while (inBits > 0) {
        const int within = (int)(inAt % 8);
        const int taken = std::min(inBits, 8 - within);
        const uint8_t byte = inAt / 8 < inBytes.size() ? inBytes[inAt / 8] : 0;
        value = value << taken | (uint64_t)(byte >> (8 - within - taken) & ((1 << taken) - 1));
        inAt += (uint64_t)taken;
        inBits -= taken;
    }
    return value;
}

// The bytes of a number in the other order.
inline uint64_t SwapBytes(uint64_t inValue, int inBits)
{
    uint64_t swapped = 0;
    for (int shift = 0; shift < inBits; shift += 8)
        swapped = swapped << 8 | (inValue >> shift & 0xFF);
    return swapped;
}

} // namespace lampblack::rsrc

#endif
