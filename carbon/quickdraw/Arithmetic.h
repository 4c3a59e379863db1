// The arithmetic transfer modes, on rows of colours 0x00RRGGBB. Begin with ArithmeticRowOf.
#ifndef LAMPBLACK_QUICKDRAW_ARITHMETIC_H
#define LAMPBLACK_QUICKDRAW_ARITHMETIC_H

#include <Carbon/QDColors.h>

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

// From blend to adMin; not hilite.
bool IsArithmetic(short mode);

// On pixels of depth 1 every arithmetic mode and hilite stand for a boolean one; other modes answer
// themselves.
short ModeAtDepth1(short mode);

// The same as the row of a mode that IsArithmetic; nothing happens for another.
void Combine(short mode, const uint32_t* source, uint32_t* ioDestination, int count, uint32_t opColor,
             uint32_t back);

} // namespace lampblack::quickdraw

#endif
