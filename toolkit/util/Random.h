// Random numbers: mt_random, a long, reproducible stream (MT19937, the 32-bit Mersenne Twister), and quick
// decisions from the platform's own generator, Random.
#ifndef LAMPBLACK_UTIL_RANDOM_H
#define LAMPBLACK_UTIL_RANDOM_H

#include <Carbon/Carbon.h>

#include "util/Visibility.h"

LAMPBLACK_BEGIN

// mt_random
//
// A value: copying it copies the stream from where it stands. Without a seed it is as after srand(5489).
class mt_random {
public:
    void srand(UInt32 inSeed);

    // From at least one word, which is read even when the count says otherwise.
    void lsrand(const UInt32* inKey, SInt32 inCount);

    // 0 to 2^32 - 1.
    UInt32 rand_long()
    {
        if (fIndex >= kWords) [[unlikely]]
            Refill();
        return fReady[fIndex++];
    }

    // 0 to just below 1, in steps of 2^-32.
    double rand_double() { return rand_long() * static_cast<double>(2.3283064365386963e-10f); }

    // inLow to inHigh; a range without room answers inLow and draws nothing. Kept, so that streams of old are
    // the same: the divisor is 2^32 - 1, by which the largest word gives inHigh + 1, and the range of all
    // 2^32 numbers always gives inLow.
    UInt32 ranged_long(UInt32 inLow, UInt32 inHigh)
    {
        if (inLow >= inHigh)
            return inLow;
        const UInt32 count = inHigh - inLow + 1;
        return inLow + static_cast<UInt32>(UInt64{ rand_long() } * count / 0xFFFFFFFFu);
    }

private:
    static constexpr SInt64 kWords = 624;
    static constexpr SInt64 kUnseeded = kWords + 1;

    void Refill();

    // 64 bits, so that the compiler knows it from the words that a caller stores and keeps it in a register.
    SInt64 fIndex = kUnseeded;
    UInt32 fState[kWords] = {};
    UInt32 fReady[kWords] = {}; // the state's words as they are handed out, all made at once
};

// RangedRandomUInt16, RangedRandomSInt16
//
// inLow to inHigh by the platform's Random; a range without room answers inLow and draws nothing. Kept: with
// 65535 as the highest of the unsigned (the 65,536 numbers of the whole signed range), the count wraps to 0
// and results leave the range.
UInt16 RangedRandomUInt16(UInt16 inLow, UInt16 inHigh);
SInt16 RangedRandomSInt16(SInt16 inLow, SInt16 inHigh);

// True that many times in a hundred; draws once.
bool Chance(SInt16 inPercent);

LAMPBLACK_END

#endif
