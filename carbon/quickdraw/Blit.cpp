// Rows copied in place.
#include "Blit.h"

#include "Vectors.h"

#include <cstring>

namespace lampblack::quickdraw {

// Up to eight bits from any place, at the top of the answer.
static uint8_t BitsAt(const uint8_t* inRow, int inBit, int inCount)
{
    const uint8_t* at = inRow + (inBit >> 3);
    const int shift = inBit & 7;
    uint32_t bits = (uint32_t)*at << shift;
    if (shift + inCount > 8)
        bits |= at[1] >> (8 - shift);
    return (uint8_t)bits;
}

static void PutBits(uint8_t* ioRow, int inBit, uint8_t inBits, int inCount)
{
    uint8_t* at = ioRow + (inBit >> 3);
    const int shift = inBit & 7; // shift + inCount is at most 8
    const auto mask = (uint8_t)((0xFF00u >> inCount & 0xFF) >> shift);
    *at = (uint8_t)((*at & ~mask) | (inBits >> shift & mask));
}

static void MoveBytes(const uint8_t* inFrom, int inShift, uint8_t* outTo, int inCount)
{
    if (inShift == 0) {
        std::memmove(outTo, inFrom, (size_t)inCount);
        return;
    }
    for (int i = 0; i < inCount; ++i)
        outTo[i] = (uint8_t)(inFrom[i] << inShift | inFrom[i + 1] >> (8 - inShift));
}

void MoveBits(const uint8_t* from, int fromBit, uint8_t* to, int toBit, int count)
{
    const int head = std::min(count, (8 - (toBit & 7)) & 7);
    if (head > 0)
        PutBits(to, toBit, BitsAt(from, fromBit, head), head);
    fromBit += head, toBit += head, count -= head;
    const int bytes = count / 8;
    MoveBytes(from + (fromBit >> 3), fromBit & 7, to + (toBit >> 3), bytes);
    fromBit += bytes * 8, toBit += bytes * 8, count -= bytes * 8;
    if (count > 0)
        PutBits(to, toBit, BitsAt(from, fromBit, count), count);
}

static void BlitBits(const Surface& from, const Surface& to, const Box& box, int dh, int dv)
{
    const int depth = to.depth;
    for (int v = box.y1; v < box.y2; ++v)
        MoveBits(from.RowAt(v + dv), (box.x1 + dh - from.bounds.left) * depth, to.RowAt(v),
                 (box.x1 - to.bounds.left) * depth, (box.x2 - box.x1) * depth);
}

void BlitBox(const Surface& from, const Surface& to, const Box& box, int dh, int dv)
{
    if (to.depth < 8)
        return BlitBits(from, to, box, dh, dv);
    const ptrdiff_t pixel = to.depth / 8;
    const size_t bytes = (size_t)(box.x2 - box.x1) * (size_t)pixel;
    const bool upwards = dv < 0; // so that a row is read before it is written
    const int first = upwards ? box.y2 - 1 : box.y1;
    const uint8_t* source = from.RowAt(first + dv) + (box.x1 + dh - from.bounds.left) * pixel;
    uint8_t* destination = to.RowAt(first) + (box.x1 - to.bounds.left) * pixel;
    const ptrdiff_t fromStep = upwards ? -from.rowBytes : from.rowBytes,
                    toStep = upwards ? -to.rowBytes : to.rowBytes;
    for (int rows = box.y2 - box.y1; rows > 0; --rows, source += fromStep, destination += toStep)
        std::memmove(destination, source, bytes);
}

template <class To>
static void TableRow(const uint8_t* from, int fromPixel, uint8_t* to, int toPixel, int count,
                     const uint32_t* table)
{
    const uint8_t* source = from + fromPixel;
    To* destination = reinterpret_cast<To*>(to) + toPixel;
    for (int i = 0; i < count; ++i)
        destination[i] = (To)table[source[i]];
}

// Eight indexes come in one word, and two colours leave in one.
static int PickEights(const uint8_t* inIndexes, const uint32_t* inTable, int inCount, uint32_t* outColors)
{
    int i = 0;
    for (; i + 8 <= inCount; i += 8) {
        uint64_t indexes;
        std::memcpy(&indexes, inIndexes + i, 8);
        for (int j = 0; j < 8; j += 2, indexes >>= 16) {
            const uint64_t pair = inTable[indexes & 0xFF] | (uint64_t)inTable[indexes >> 8 & 0xFF] << 32;
            std::memcpy(outColors + i + j, &pair, 8);
        }
    }
    return i;
}

#ifdef __SSE2__
LAMPBLACK_AVX2 static inline __m128i FourColors(const uint8_t* inIndexes, const uint32_t* inTable)
{
    uint32_t low;
    std::memcpy(&low, inIndexes, 4);
    uint32_t high = low >> 16;
    __asm__("" : "+r"(high)); // a register of its own, whose two lowest bytes are had for nothing
    return _mm_setr_epi32((int)inTable[low & 0xFF], (int)inTable[low >> 8 & 0xFF], (int)inTable[high & 0xFF],
                          (int)inTable[high >> 8]);
}

// Eight colours leave together; gathering loads take longer.
LAMPBLACK_AVX2 static int PickEightsWithAvx2(const uint8_t* inIndexes, const uint32_t* inTable, int inCount,
                                             uint32_t* outColors)
{
    int i = 0;
    for (; i + 8 <= inCount; i += 8) {
        const __m128i first = FourColors(inIndexes + i, inTable),
                      second = FourColors(inIndexes + i + 4, inTable);
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(outColors + i), _mm256_set_m128i(second, first));
    }
    return i;
}
#else
static int PickEightsWithAvx2(const uint8_t*, const uint32_t*, int, uint32_t*)
{
    return 0;
}
#endif

static void TableRowOfWords(const uint8_t* from, int fromPixel, uint8_t* to, int toPixel, int count,
                            const uint32_t* table)
{
    const uint8_t* source = from + fromPixel;
    uint32_t* destination = reinterpret_cast<uint32_t*>(to) + toPixel;
    const int done = HasAvx2() ? PickEightsWithAvx2(source, table, count, destination)
                               : PickEights(source, table, count, destination);
    TableRow<uint32_t>(source, done, to, toPixel + done, count - done, table);
}

// Eight pixels of a byte of mask bits at a time; set and clear are entries 1 and 0 of the table.
template <class To>
static void BitRow(const uint8_t* from, int fromPixel, uint8_t* to, int toPixel, int count,
                   const uint32_t* table)
{
    To* destination = reinterpret_cast<To*>(to) + toPixel;
    const uint32_t clear = table[0], change = table[0] ^ table[1];
    int i = 0;
    for (; i + 8 <= count; i += 8) {
        const uint32_t bits = BitsAt(from, fromPixel + i, 8);
        for (int j = 0; j < 8; ++j)
            destination[i + j] = (To)(clear ^ (change & (0u - (bits >> (7 - j) & 1))));
    }
    if (i < count) {
        const uint32_t bits = BitsAt(from, fromPixel + i, count - i);
        for (int j = 0; i + j < count; ++j)
            destination[i + j] = (To)(clear ^ (change & (0u - (bits >> (7 - j) & 1))));
    }
}

// A loop once more for what the machine can do; a compiler makes vectors of it.
[[gnu::always_inline]] static inline void Widen(const uint16_t* inWords, uint32_t* outColors, int inCount)
{
    for (int i = 0; i < inCount; ++i)
        outColors[i] = ColorOf555(inWords[i]);
}
LAMPBLACK_AVX2 static void WidenWithAvx2(const uint16_t* inWords, uint32_t* outColors, int inCount)
{
    Widen(inWords, outColors, inCount);
}

static void WidenRow(const uint8_t* from, int fromPixel, uint8_t* to, int toPixel, int count, const uint32_t*)
{
    const auto* source = reinterpret_cast<const uint16_t*>(from) + fromPixel;
    uint32_t* destination = reinterpret_cast<uint32_t*>(to) + toPixel;
    HasAvx2() ? WidenWithAvx2(source, destination, count) : Widen(source, destination, count);
}

#ifdef __SSE2__
// Colours as words of 5 bits a channel, each in the lower half of its lane.
static __m128i NarrowFour(__m128i inColors)
{
    const __m128i red = _mm_and_si128(_mm_srli_epi32(inColors, 9), _mm_set1_epi32(0x7C00));
    const __m128i green = _mm_and_si128(_mm_srli_epi32(inColors, 6), _mm_set1_epi32(0x03E0));
    const __m128i blue = _mm_and_si128(_mm_srli_epi32(inColors, 3), _mm_set1_epi32(0x001F));
    return _mm_or_si128(_mm_or_si128(red, green), blue);
}

// Red and blue come to their distance by one multiplication, then all three to their places by one shift.
LAMPBLACK_AVX2 static __m256i NarrowEight(__m256i inColors)
{
    const __m256i redBlue = _mm256_and_si256(inColors, _mm256_set1_epi32(0x00F800F8));
    const __m256i green = _mm256_and_si256(inColors, _mm256_set1_epi32(0x0000F800));
    const __m256i both = _mm256_madd_epi16(redBlue, _mm256_set1_epi32(0x20000008));
    return _mm256_srli_epi32(_mm256_or_si256(both, green), 6);
}

LAMPBLACK_AVX2 static int NarrowSixteens(const uint32_t* inColors, int inCount, uint16_t* outWords)
{
    int i = 0;
    for (; i + 16 <= inCount; i += 16) {
        const auto* from = reinterpret_cast<const __m256i*>(inColors + i);
        const __m256i packed = _mm256_packs_epi32(NarrowEight(_mm256_loadu_si256(from)),
                                                  NarrowEight(_mm256_loadu_si256(from + 1)));
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(outWords + i),
                            _mm256_permute4x64_epi64(packed, _MM_SHUFFLE(3, 1, 2, 0)));
    }
    return i;
}

static int NarrowEights(const uint32_t* inColors, int inCount, uint16_t* outWords)
{
    int i = 0;
    for (; i + 8 <= inCount; i += 8) {
        const auto* from = reinterpret_cast<const __m128i*>(inColors + i);
        // No word has its highest bit set, so that packing with signs keeps them all.
        _mm_storeu_si128(
            reinterpret_cast<__m128i*>(outWords + i),
            _mm_packs_epi32(NarrowFour(_mm_loadu_si128(from)), NarrowFour(_mm_loadu_si128(from + 1))));
    }
    return i;
}

static int NarrowMany(const uint32_t* inColors, int inCount, uint16_t* outWords)
{
    return HasAvx2() ? NarrowSixteens(inColors, inCount, outWords)
                     : NarrowEights(inColors, inCount, outWords);
}
#else
static int NarrowMany(const uint32_t*, int, uint16_t*)
{
    return 0;
}
#endif

static void NarrowRow(const uint8_t* from, int fromPixel, uint8_t* to, int toPixel, int count,
                      const uint32_t*)
{
    const uint32_t* source = reinterpret_cast<const uint32_t*>(from) + fromPixel;
    uint16_t* destination = reinterpret_cast<uint16_t*>(to) + toPixel;
    for (int i = NarrowMany(source, count, destination); i < count; ++i)
        destination[i] = (uint16_t)PixelOf555(source[i]);
}

ConvertRow ConvertRowOf(int inFrom, int inTo, const Converter& inConverter)
{
    if (inConverter.JustNarrows())
        return NarrowRow;
    if (inConverter.JustWidens())
        return WidenRow;
    if (!inConverter.Table() || inTo < 8 || (inFrom != 8 && inFrom != 1))
        return nullptr;
    if (inFrom == 1)
        return inTo == 8 ? BitRow<uint8_t> : inTo == 16 ? BitRow<uint16_t> : BitRow<uint32_t>;
    return inTo == 8 ? TableRow<uint8_t> : inTo == 16 ? TableRow<uint16_t> : TableRowOfWords;
}

} // namespace lampblack::quickdraw
