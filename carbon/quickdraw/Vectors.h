// Which vectors of the machine the row loops may use. SSE2 is there where it was compiled for.
#ifndef LAMPBLACK_QUICKDRAW_VECTORS_H
#define LAMPBLACK_QUICKDRAW_VECTORS_H

#ifdef __SSE2__
#include <immintrin.h>
#define LAMPBLACK_AVX2 __attribute__((target("avx2")))
#define LAMPBLACK_AVX512 __attribute__((target("avx512f,avx512bw,avx512vl")))
#else
#define LAMPBLACK_AVX2
#define LAMPBLACK_AVX512
#endif

namespace lampblack::quickdraw {

// A test wants the other loops, too.
inline bool gMayUseAvx2 = true, gMayUseAvx512 = true;

inline bool HasAvx2()
{
#ifdef __SSE2__
    static const bool hasAvx2 = __builtin_cpu_supports("avx2");
    return hasAvx2 && gMayUseAvx2;
#else
    return false;
#endif
}

// Vectors of 64 bytes. The machines that have VBMI do not slow down for them.
inline bool HasAvx512()
{
#ifdef __SSE2__
    static const bool hasAvx512 = __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
                                  __builtin_cpu_supports("avx512vl") && __builtin_cpu_supports("avx512vbmi");
    return hasAvx512 && gMayUseAvx512 && gMayUseAvx2;
#else
    return false;
#endif
}

} // namespace lampblack::quickdraw

#endif
