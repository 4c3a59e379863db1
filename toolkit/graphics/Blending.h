// The two blending loops over rows of pixels, at every width that the machine may have, the plain one beside
// them as what they must equal to the bit. TransparentCopies.cpp chooses; begin with BlendArea.
//
// The blue channel of the mask is the weight of the destination; an exactly white mask pixel leaves it alone.
#ifndef LAMPBLACK_GRAPHICS_BLENDING_H
#define LAMPBLACK_GRAPHICS_BLENDING_H

#include <Carbon/MacTypes.h>

#include <cstddef>
#include <cstring>

#ifdef __x86_64__
#include <immintrin.h>
#endif

namespace lampblack::graphics {

// Source and mask are walked with one row length.
struct BlendArea {
    const UInt8* source;
    const UInt8* mask;
    UInt8* destination;
    ptrdiff_t sourceRowBytes;
    ptrdiff_t destinationRowBytes;
    int columns;
    int rows;

    void NextRow()
    {
        source += sourceRowBytes;
        mask += sourceRowBytes;
        destination += destinationRowBytes;
    }
};

using BlendProc = void (*)(BlendArea);

template <class Pixel>
[[gnu::always_inline]] inline Pixel LoadPixel(const UInt8* inRow, int inColumn)
{
    Pixel pixel;
    std::memcpy(&pixel, inRow + (ptrdiff_t)inColumn * (ptrdiff_t)sizeof pixel, sizeof pixel);
    return pixel;
}

// 0RRRRRGGGGGBBBBB. The three channels are spread so far apart that one multiplication serves them all.
struct Pixels16 {
    using Pixel = UInt16;
    static constexpr Pixel kWhite = 0x7FFF;

    [[gnu::always_inline]] static inline Pixel Blend(Pixel inDestination, Pixel inSource, Pixel inMask)
    {
        const UInt32 weight = inMask & 0x1Fu;
        return (Pixel)((Weighted(inDestination, weight) + Weighted(inSource, 32 - weight)) & 0x7FFF);
    }

private:
    [[gnu::always_inline]] static inline UInt32 Weighted(UInt32 inPixel, UInt32 inWeight)
    {
        const UInt32 spread = (inPixel & 0x03E0u) << 16 | (inPixel & 0x7C1Fu);
        const UInt32 product = spread * inWeight >> 5 & 0x03E07C1Fu;
        return product + (product >> 16);
    }
};

// 0x00RRGGBB. Kept: the weights add up to 255 and not to 256, so that a black mask darkens the source a
// little.
struct Pixels32 {
    using Pixel = UInt32;
    static constexpr Pixel kWhite = 0x00FFFFFF;

    [[gnu::always_inline]] static inline Pixel Blend(Pixel inDestination, Pixel inSource, Pixel inMask)
    {
        const UInt32 weight = inMask & 0xFFu;
        return Channel(inDestination, inSource, weight, 16) | Channel(inDestination, inSource, weight, 8) |
               Channel(inDestination, inSource, weight, 0);
    }

private:
    [[gnu::always_inline]] static inline UInt32 Channel(UInt32 inDestination, UInt32 inSource,
                                                        UInt32 inWeight, int inShift)
    {
        const UInt32 d = inDestination >> inShift & 0xFF, s = inSource >> inShift & 0xFF;
        return ((d * inWeight >> 8) + (s * (255 - inWeight) >> 8)) << inShift;
    }
};

// What a row has left over from whole vectors, and all of it where there are none.
template <class Format>
[[gnu::always_inline]] inline void BlendPixels(const BlendArea& inRow, int inFirst)
{
    using Pixel = typename Format::Pixel;
    for (int i = inFirst; i < inRow.columns; ++i) {
        const Pixel mask = LoadPixel<Pixel>(inRow.mask, i);
        if (mask == Format::kWhite)
            continue;
        const Pixel blended =
            Format::Blend(LoadPixel<Pixel>(inRow.destination, i), LoadPixel<Pixel>(inRow.source, i), mask);
        std::memcpy(inRow.destination + (ptrdiff_t)i * (ptrdiff_t)sizeof blended, &blended, sizeof blended);
    }
}

template <class Format>
inline void BlendPlainly(BlendArea inArea)
{
    for (; inArea.rows > 0; --inArea.rows, inArea.NextRow())
        BlendPixels<Format>(inArea, 0);
}

#ifdef __x86_64__

// Four pixels of 32 bits or eight of 16.
struct Sse2 {
    using Vector = __m128i;
    static constexpr int kBytes = 16;

    [[gnu::always_inline]] static inline Vector Load(const UInt8* p)
    {
        return _mm_loadu_si128(reinterpret_cast<const Vector*>(p));
    }
    [[gnu::always_inline]] static inline void Store(UInt8* p, Vector v)
    {
        _mm_storeu_si128(reinterpret_cast<Vector*>(p), v);
    }
    [[gnu::always_inline]] static inline bool IsAllOnes(Vector v) { return _mm_movemask_epi8(v) == 0xFFFF; }
    [[gnu::always_inline]] static inline Vector Choose(Vector a, Vector b, Vector inWhereB)
    {
        return _mm_or_si128(_mm_andnot_si128(inWhereB, a), _mm_and_si128(inWhereB, b));
    }

    // Where the mask is white, and the blend of all.
    [[gnu::always_inline]] static inline Vector White(Pixels32, Vector m)
    {
        return _mm_cmpeq_epi32(m, _mm_set1_epi32(Pixels32::kWhite));
    }
    [[gnu::always_inline]] static inline Vector White(Pixels16, Vector m)
    {
        return _mm_cmpeq_epi16(m, _mm_set1_epi16(Pixels16::kWhite));
    }
    [[gnu::always_inline]] static inline Vector Blend(Pixels32, Vector d, Vector s, Vector m)
    {
        const Vector green = _mm_set1_epi32(0xFF00);
        Vector weight = _mm_and_si128(m, _mm_set1_epi32(0xFF));
        weight = _mm_or_si128(weight, _mm_slli_epi32(weight, 16));
        const Vector rest = _mm_xor_si128(weight, _mm_set1_epi32(0x00FF00FF));
        const Vector redBlue = _mm_add_epi16(_mm_mulhi_epu16(_mm_slli_epi16(d, 8), weight),
                                             _mm_mulhi_epu16(_mm_slli_epi16(s, 8), rest));
        const Vector greens = _mm_add_epi16(_mm_mulhi_epu16(_mm_and_si128(d, green), weight),
                                            _mm_mulhi_epu16(_mm_and_si128(s, green), rest));
        return _mm_or_si128(redBlue, _mm_slli_epi16(greens, 8));
    }
    [[gnu::always_inline]] static inline Vector Sum(Vector a, Vector inWeight, Vector b, Vector inRest)
    {
        return _mm_add_epi16(_mm_mulhi_epu16(a, inWeight), _mm_mulhi_epu16(b, inRest));
    }
    [[gnu::always_inline]] static inline Vector Blend(Pixels16, Vector d, Vector s, Vector m)
    {
        const Vector weight = _mm_and_si128(m, _mm_set1_epi16(0x1F));
        const Vector rest = _mm_sub_epi16(_mm_set1_epi16(32), weight);
        const Vector top = _mm_set1_epi16((short)0xF800);
        const Vector red = Sum(_mm_and_si128(_mm_slli_epi16(d, 1), top), weight,
                               _mm_and_si128(_mm_slli_epi16(s, 1), top), rest);
        const Vector greens = Sum(_mm_and_si128(_mm_slli_epi16(d, 6), top), weight,
                                  _mm_and_si128(_mm_slli_epi16(s, 6), top), rest);
        const Vector blue = Sum(_mm_slli_epi16(d, 11), weight, _mm_slli_epi16(s, 11), rest);
        return _mm_or_si128(_mm_or_si128(_mm_slli_epi16(red, 10), _mm_slli_epi16(greens, 5)), blue);
    }
};

// Twice as many. Spelled out, because a function for this processor may call none for another.
#define LAMPBLACK_AVX2 [[gnu::target("avx2"), gnu::always_inline]]
struct Avx2 {
    using Vector = __m256i;
    static constexpr int kBytes = 32;

    LAMPBLACK_AVX2 static inline Vector Load(const UInt8* p)
    {
        return _mm256_loadu_si256(reinterpret_cast<const Vector*>(p));
    }
    LAMPBLACK_AVX2 static inline void Store(UInt8* p, Vector v)
    {
        _mm256_storeu_si256(reinterpret_cast<Vector*>(p), v);
    }
    LAMPBLACK_AVX2 static inline bool IsAllOnes(Vector v) { return _mm256_movemask_epi8(v) == -1; }
    LAMPBLACK_AVX2 static inline Vector Choose(Vector a, Vector b, Vector inWhereB)
    {
        return _mm256_blendv_epi8(a, b, inWhereB);
    }
    LAMPBLACK_AVX2 static inline Vector White(Pixels32, Vector m)
    {
        return _mm256_cmpeq_epi32(m, _mm256_set1_epi32(Pixels32::kWhite));
    }
    LAMPBLACK_AVX2 static inline Vector White(Pixels16, Vector m)
    {
        return _mm256_cmpeq_epi16(m, _mm256_set1_epi16(Pixels16::kWhite));
    }
    LAMPBLACK_AVX2 static inline Vector Sum(Vector a, Vector inWeight, Vector b, Vector inRest)
    {
        return _mm256_add_epi16(_mm256_mulhi_epu16(a, inWeight), _mm256_mulhi_epu16(b, inRest));
    }
    LAMPBLACK_AVX2 static inline Vector Blend(Pixels32, Vector d, Vector s, Vector m)
    {
        // The blue byte of a pixel, once for each pair of its channels.
        const Vector blues = _mm256_setr_epi8(0, -1, 0, -1, 4, -1, 4, -1, 8, -1, 8, -1, 12, -1, 12, -1, 0, -1,
                                              0, -1, 4, -1, 4, -1, 8, -1, 8, -1, 12, -1, 12, -1);
        const Vector green = _mm256_set1_epi32(0xFF00);
        const Vector weight = _mm256_shuffle_epi8(m, blues);
        const Vector rest = _mm256_xor_si256(weight, _mm256_set1_epi32(0x00FF00FF));
        const Vector redBlue = Sum(_mm256_slli_epi16(d, 8), weight, _mm256_slli_epi16(s, 8), rest);
        const Vector greens = Sum(_mm256_and_si256(d, green), weight, _mm256_and_si256(s, green), rest);
        return _mm256_or_si256(redBlue, _mm256_slli_epi16(greens, 8));
    }
    LAMPBLACK_AVX2 static inline Vector Blend(Pixels16, Vector d, Vector s, Vector m)
    {
        const Vector weight = _mm256_and_si256(m, _mm256_set1_epi16(0x1F));
        const Vector rest = _mm256_sub_epi16(_mm256_set1_epi16(32), weight);
        const Vector top = _mm256_set1_epi16((short)0xF800);
        const Vector red = Sum(_mm256_and_si256(_mm256_slli_epi16(d, 1), top), weight,
                               _mm256_and_si256(_mm256_slli_epi16(s, 1), top), rest);
        const Vector greens = Sum(_mm256_and_si256(_mm256_slli_epi16(d, 6), top), weight,
                                  _mm256_and_si256(_mm256_slli_epi16(s, 6), top), rest);
        const Vector blue = Sum(_mm256_slli_epi16(d, 11), weight, _mm256_slli_epi16(s, 11), rest);
        return _mm256_or_si256(_mm256_or_si256(_mm256_slli_epi16(red, 10), _mm256_slli_epi16(greens, 5)),
                               blue);
    }
};

// Four times as many. What is white is a mask of one bit a pixel.
#define LAMPBLACK_AVX512 [[gnu::target("avx512f,avx512bw"), gnu::always_inline]]
struct Avx512 {
    using Vector = __m512i;
    static constexpr int kBytes = 64;

    LAMPBLACK_AVX512 static inline Vector Load(const UInt8* p) { return _mm512_loadu_si512(p); }
    LAMPBLACK_AVX512 static inline void Store(UInt8* p, Vector v) { _mm512_storeu_si512(p, v); }
    LAMPBLACK_AVX512 static inline bool IsAllOnes(__mmask16 m) { return m == 0xFFFF; }
    LAMPBLACK_AVX512 static inline bool IsAllOnes(__mmask32 m) { return m == 0xFFFFFFFF; }
    LAMPBLACK_AVX512 static inline Vector Choose(Vector a, Vector b, __mmask16 inWhereB)
    {
        return _mm512_mask_blend_epi32(inWhereB, a, b);
    }
    LAMPBLACK_AVX512 static inline Vector Choose(Vector a, Vector b, __mmask32 inWhereB)
    {
        return _mm512_mask_blend_epi16(inWhereB, a, b);
    }
    LAMPBLACK_AVX512 static inline __mmask16 White(Pixels32, Vector m)
    {
        return _mm512_cmpeq_epi32_mask(m, _mm512_set1_epi32(Pixels32::kWhite));
    }
    LAMPBLACK_AVX512 static inline __mmask32 White(Pixels16, Vector m)
    {
        return _mm512_cmpeq_epi16_mask(m, _mm512_set1_epi16(Pixels16::kWhite));
    }
    LAMPBLACK_AVX512 static inline Vector Sum(Vector a, Vector inWeight, Vector b, Vector inRest)
    {
        return _mm512_add_epi16(_mm512_mulhi_epu16(a, inWeight), _mm512_mulhi_epu16(b, inRest));
    }
    LAMPBLACK_AVX512 static inline Vector Blend(Pixels32, Vector d, Vector s, Vector m)
    {
        const Vector blues =
            _mm512_set4_epi32((int)0xFF0CFF0C, (int)0xFF08FF08, (int)0xFF04FF04, (int)0xFF00FF00);
        const Vector green = _mm512_set1_epi32(0xFF00);
        const Vector weight = _mm512_shuffle_epi8(m, blues);
        const Vector rest = _mm512_xor_si512(weight, _mm512_set1_epi32(0x00FF00FF));
        const Vector redBlue = Sum(_mm512_slli_epi16(d, 8), weight, _mm512_slli_epi16(s, 8), rest);
        const Vector greens = Sum(_mm512_and_si512(d, green), weight, _mm512_and_si512(s, green), rest);
        return _mm512_or_si512(redBlue, _mm512_slli_epi16(greens, 8));
    }
    LAMPBLACK_AVX512 static inline Vector Blend(Pixels16, Vector d, Vector s, Vector m)
    {
        const Vector weight = _mm512_and_si512(m, _mm512_set1_epi16(0x1F));
        const Vector rest = _mm512_sub_epi16(_mm512_set1_epi16(32), weight);
        const Vector top = _mm512_set1_epi16((short)0xF800);
        const Vector red = Sum(_mm512_and_si512(_mm512_slli_epi16(d, 1), top), weight,
                               _mm512_and_si512(_mm512_slli_epi16(s, 1), top), rest);
        const Vector greens = Sum(_mm512_and_si512(_mm512_slli_epi16(d, 6), top), weight,
                                  _mm512_and_si512(_mm512_slli_epi16(s, 6), top), rest);
        const Vector blue = Sum(_mm512_slli_epi16(d, 11), weight, _mm512_slli_epi16(s, 11), rest);
        return _mm512_or_si512(_mm512_or_si512(_mm512_slli_epi16(red, 10), _mm512_slli_epi16(greens, 5)),
                               blue);
    }
};

// A vector whose mask is white all over is passed by without a look at the other pixels.
#define LAMPBLACK_BLEND_ROWS(Machine)                                                                        \
    constexpr int kStep = Machine::kBytes / (int)sizeof(typename Format::Pixel);                             \
    for (; inArea.rows > 0; --inArea.rows, inArea.NextRow()) {                                               \
        int i = 0;                                                                                           \
        for (; i + kStep <= inArea.columns; i += kStep) {                                                    \
            const ptrdiff_t at = (ptrdiff_t)i * (ptrdiff_t)sizeof(typename Format::Pixel);                   \
            const auto mask = Machine::Load(inArea.mask + at);                                               \
            const auto white = Machine::White(Format(), mask);                                               \
            if (Machine::IsAllOnes(white))                                                                   \
                continue;                                                                                    \
            const auto destination = Machine::Load(inArea.destination + at);                                 \
            const auto blended =                                                                             \
                Machine::Blend(Format(), destination, Machine::Load(inArea.source + at), mask);              \
            Machine::Store(inArea.destination + at, Machine::Choose(blended, destination, white));           \
        }                                                                                                    \
        BlendPixels<Format>(inArea, i);                                                                      \
    }

template <class Format>
void BlendBySse2(BlendArea inArea)
{
    LAMPBLACK_BLEND_ROWS(Sse2)
}

template <class Format>
[[gnu::target("avx2")]] void BlendByAvx2(BlendArea inArea)
{
    LAMPBLACK_BLEND_ROWS(Avx2)
}

template <class Format>
[[gnu::target("avx512f,avx512bw")]] void BlendByAvx512(BlendArea inArea)
{
    LAMPBLACK_BLEND_ROWS(Avx512)
}

#undef LAMPBLACK_BLEND_ROWS
#undef LAMPBLACK_AVX512
#undef LAMPBLACK_AVX2

// Whether 64 bytes at a time are faster: the machines that have VBMI do not slow down for them.
inline bool HasFastAvx512()
{
    return __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
           __builtin_cpu_supports("avx512vbmi");
}

#endif

// The fastest loop of this machine for so many bytes of destination. Memory beyond the caches is read faster
// in vectors of 32 bytes, since longer ones reach into the next cache line wherever rows begin within one.
template <class Format>
BlendProc FastestBlend(ptrdiff_t inBytes = 0)
{
    [[maybe_unused]] constexpr ptrdiff_t kCached = 2 << 20;
#ifdef __x86_64__
    return HasFastAvx512() && inBytes <= kCached ? &BlendByAvx512<Format>
           : __builtin_cpu_supports("avx2")      ? &BlendByAvx2<Format>
                                                 : &BlendBySse2<Format>;
#else
    (void)inBytes;
    return &BlendPlainly<Format>;
#endif
}

} // namespace lampblack::graphics

#endif
