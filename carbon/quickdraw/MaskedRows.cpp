// The loops over masked rows: one written in vectors of eight pixels, which the compiler makes of what the
// machine has, and the plain one.
#include "MaskedRows.h"

#include "Vectors.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace lampblack::quickdraw {

static constexpr int kWord = 64; // mask bits that are looked at together

// The mask bits of a whole word of pixels, the first one on top.
[[gnu::always_inline]] static inline uint64_t WordOfBits(const uint8_t* inMask, int inShift)
{
    uint64_t bits;
    std::memcpy(&bits, inMask, sizeof bits);
    bits = __builtin_bswap64(bits);
    return inShift == 0 ? bits : bits << inShift | inMask[8] >> (8 - inShift);
}

// The same of fewer pixels; bits beyond them are clear.
[[gnu::always_inline]] static inline uint64_t FewBits(const uint8_t* inMask, int inShift, int inCount)
{
    const int bytes = (inShift + inCount + 7) / 8; // at most nine
    uint64_t bits = 0;
    for (int i = 0; i < std::min(bytes, 8); ++i)
        bits |= (uint64_t)inMask[i] << (56 - 8 * i);
    bits <<= inShift;
    if (bytes == 9)
        bits |= inMask[8] >> (8 - inShift);
    return bits & ~(~0ull >> inCount);
}

// Calls row(mask, shift, from, to, count) for each row.
template <class Pixel, class Row>
[[gnu::always_inline]] static inline void EachRow(const MaskedRows& inRows, Row inRow)
{
    const ptrdiff_t maskStep = inRows.maskRowBytes, fromStep = inRows.fromRowBytes,
                    toStep = inRows.toRowBytes;
    const uint8_t *mask = inRows.mask + (inRows.bit >> 3), *from = inRows.from;
    uint8_t* to = inRows.to;
    const int shift = inRows.bit & 7, count = inRows.columns;
    for (int rows = inRows.rows; rows > 0; --rows, mask += maskStep, from += fromStep, to += toStep)
        inRow(mask, shift, reinterpret_cast<const Pixel*>(from), reinterpret_cast<Pixel*>(to), count);
}

// Pixels in vectors of any length. A lane holds as many mask bits as a pixel has.
template <class Pixel, int kVectorBytes>
struct Picker {
    static constexpr int kLaneBits = 8 * (int)sizeof(Pixel),
                         kPixels = std::min(kVectorBytes / (int)sizeof(Pixel), kLaneBits);
    typedef Pixel Vector __attribute__((vector_size(kPixels * sizeof(Pixel))));

    // One bit after the other from the highest.
    static constexpr std::array<Pixel, kLaneBits> kBits = [] {
        std::array<Pixel, kLaneBits> bits = {};
        for (int i = 0; i < kLaneBits; ++i)
            bits[(size_t)i] = (Pixel)(1u << (kLaneBits - 1 - i));
        return bits;
    }();

    // Picks one vector by the highest bits but so many.
    [[gnu::always_inline]] static inline void Pick(uint64_t inBits, int inFirst, const Pixel* inFrom,
                                                   Pixel* ioTo)
    {
        const uint64_t lane = inBits << (inFirst - inFirst % kLaneBits) >> (64 - kLaneBits);
        const Vector bits = Vector{} + (Pixel)lane;
        Vector bitOf, from, to;
        std::memcpy(&bitOf, kBits.data() + inFirst % kLaneBits, sizeof bitOf);
        std::memcpy(&from, inFrom, sizeof from);
        std::memcpy(&to, ioTo, sizeof to);
        const auto isSet = (Vector)((bits & bitOf) == bitOf);
        to ^= (to ^ from) & isSet;
        std::memcpy(ioTo, &to, sizeof to);
    }
    [[gnu::always_inline]] static inline void PickWord(uint64_t inBits, const Pixel* inFrom, Pixel* ioTo)
    {
        if (inBits == 0)
            return;
        if (inBits == ~0ull) {
            std::memcpy(ioTo, inFrom, kWord * sizeof(Pixel));
            return;
        }
        for (int i = 0; i < kWord; i += kPixels)
            Pick(inBits, i, inFrom + i, ioTo + i);
    }
    // Fewer pixels than in a word: the last ones are picked once more where they are no vector.
    [[gnu::always_inline]] static inline void PickFew(uint64_t inBits, int inCount, const Pixel* inFrom,
                                                      Pixel* ioTo)
    {
        if (inBits == 0)
            return;
        int i = 0;
        for (; i + kPixels <= inCount; i += kPixels)
            Pick(inBits << i, 0, inFrom + i, ioTo + i);
        if (i < inCount && i > 0) {
            i = inCount - kPixels;
            return Pick(inBits << i, 0, inFrom + i, ioTo + i);
        }
        for (; i < inCount; ++i)
            if (inBits << i >> 63)
                ioTo[i] = inFrom[i];
    }

    [[gnu::always_inline]] static inline void PickNarrowRow(const uint8_t* inMask, int inShift,
                                                            const Pixel* inFrom, Pixel* ioTo, int inCount)
    {
        PickFew(FewBits(inMask, inShift, inCount), inCount, inFrom, ioTo);
    }
    // The last word may meet the one before: what was picked is picked once more.
    [[gnu::always_inline]] static inline void PickWideRow(const uint8_t* inMask, int inShift,
                                                          const Pixel* inFrom, Pixel* ioTo, int inCount)
    {
        const int last = inCount - kWord;
        for (int i = 0; i < last; i += kWord)
            PickWord(WordOfBits(inMask + i / 8, inShift), inFrom + i, ioTo + i);
        PickWord(WordOfBits(inMask + (inShift + last) / 8, (inShift + last) & 7), inFrom + last, ioTo + last);
    }
    [[gnu::always_inline]] static inline void PickRows(const MaskedRows& inRows)
    {
        if (inRows.columns < kWord)
            EachRow<Pixel>(inRows, PickNarrowRow);
        else
            EachRow<Pixel>(inRows, PickWideRow);
    }
};

template <class Pixel>
static void PickWithSse2(const MaskedRows& inRows)
{
    Picker<Pixel, 16>::PickRows(inRows);
}

template <class Pixel>
LAMPBLACK_AVX2 static void PickWithAvx2(const MaskedRows& inRows)
{
    Picker<Pixel, 32>::PickRows(inRows);
}

template <class Pixel>
LAMPBLACK_AVX512 static void PickWithAvx512(const MaskedRows& inRows)
{
    Picker<Pixel, 64>::PickRows(inRows);
}

template <class Pixel>
static void PickPlainly(const MaskedRows& inRows)
{
    EachRow<Pixel>(inRows, [](const uint8_t* mask, int shift, const Pixel* from, Pixel* to, int count) {
        for (int i = 0; i < count; ++i)
            if (mask[(shift + i) >> 3] >> (7 - ((shift + i) & 7)) & 1)
                to[i] = from[i];
    });
}

template <class Pixel>
static PickProc FastestFor()
{
    return HasAvx512() ? PickWithAvx512<Pixel> : HasAvx2() ? PickWithAvx2<Pixel> : PickWithSse2<Pixel>;
}

PickProc FastestPick(int inDepth)
{
    return inDepth == 32   ? FastestFor<uint32_t>()
           : inDepth == 16 ? FastestFor<uint16_t>()
                           : FastestFor<uint8_t>();
}

PickProc PlainPick(int inDepth)
{
    return inDepth == 32   ? PickPlainly<uint32_t>
           : inDepth == 16 ? PickPlainly<uint16_t>
                           : PickPlainly<uint8_t>;
}

} // namespace lampblack::quickdraw
