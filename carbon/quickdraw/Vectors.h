// Which vectors of the machine the row loops may use. SSE2 is there where it was compiled for.
#ifndef LAMPBLACK_QUICKDRAW_VECTORS_H
#define LAMPBLACK_QUICKDRAW_VECTORS_H

#ifdef __SSE2__
#include <immintrin.h>
#define LAMPBLACK_AVX2 __attribute__((target("avx2")))
#else
#define LAMPBLACK_AVX2
#endif

namespace lampblack::quickdraw {

inline bool gMayUseAvx2 = true; // a test wants the other loops, too

inline bool HasAvx2()
{
#ifdef __SSE2__
    static const bool hasAvx2 = __builtin_cpu_supports("avx2");
    return hasAvx2 && gMayUseAvx2;
#else
    return false;
#endif
}

} // namespace lampblack::quickdraw

#endif
