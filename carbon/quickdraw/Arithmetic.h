// The arithmetic transfer modes, on rows of colours 0x00RRGGBB. Begin with ArithmeticRowOf.
#ifndef LAMPBLACK_QUICKDRAW_ARITHMETIC_H
#define LAMPBLACK_QUICKDRAW_ARITHMETIC_H

#include <Carbon/Quickdraw.h>

#include <cstdint>

namespace lampblack::quickdraw {

// What the modes take from a port, as 0x00RRGGBB.
struct ArithmeticColors {
    uint32_t op = 0;              // weight of blend, limits of addPin and subPin, channel by channel
    uint32_t back = 0x00FFFFFF;   // what transparent leaves out, and what hilite exchanges
    uint32_t hilite = 0x00B5D5FF; // for the back colour and the other way round
};

// Changes count destination colours by the source colours. Where hilite is meant, white source pixels are
// those that are not set.
using ArithmeticRow = void (*)(const uint32_t* source, uint32_t* ioDestination, int count,
                               const ArithmeticColors&);

// Null for the boolean modes and for what is no mode. A dither bit in the mode is ignored.
ArithmeticRow ArithmeticRowOf(short mode);

// What stands for an arithmetic mode where a pixel is one bit; boolean modes stay themselves.
short BitMapModeOf(short mode);

} // namespace lampblack::quickdraw

#endif
