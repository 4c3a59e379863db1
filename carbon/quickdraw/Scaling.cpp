// Scaled rows. What is written with vectors does exactly what the plain loop behind it says.
#include "Scaling.h"

#include "Vectors.h"

#include <algorithm>

namespace lampblack::quickdraw {

#ifdef __SSE2__
// The second half is loaded a pixel early, so that nothing beyond the last pixel taken is read.
LAMPBLACK_AVX2 static void HalveEight(const uint32_t* inPixels, uint32_t* outPixels)
{
    const __m256 first = _mm256_loadu_ps(reinterpret_cast<const float*>(inPixels));
    const __m256 second = _mm256_loadu_ps(reinterpret_cast<const float*>(inPixels + 7));
    const __m256 pairs = _mm256_shuffle_ps(first, second, _MM_SHUFFLE(3, 1, 2, 0));
    const __m256i ordered = _mm256_permute4x64_epi64(_mm256_castps_si256(pairs), _MM_SHUFFLE(3, 1, 2, 0));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(outPixels), ordered);
}

LAMPBLACK_AVX2 static int HalveEights(const uint32_t* inPixels, int inCount, uint32_t* outPixels)
{
    if (inCount < 8)
        return 0;
    for (int i = 0; i < inCount - 8; i += 8)
        HalveEight(inPixels + (ptrdiff_t)2 * i, outPixels + i);
    HalveEight(inPixels + (ptrdiff_t)2 * (inCount - 8), outPixels + inCount - 8); // some of them once more
    return inCount;
}

static int HalveFours(const uint32_t* inPixels, int inCount, uint32_t* outPixels)
{
    int i = 0;
    for (; i + 4 < inCount; i += 4) {
        const __m128 first = _mm_loadu_ps(reinterpret_cast<const float*>(inPixels + 2 * i));
        const __m128 second = _mm_loadu_ps(reinterpret_cast<const float*>(inPixels + 2 * i + 4));
        _mm_storeu_ps(reinterpret_cast<float*>(outPixels + i),
                      _mm_shuffle_ps(first, second, _MM_SHUFFLE(2, 0, 2, 0)));
    }
    return i;
}

static int HalveMany(const uint32_t* inPixels, int inCount, uint32_t* outPixels)
{
    return HasAvx2() ? HalveEights(inPixels, inCount, outPixels) : HalveFours(inPixels, inCount, outPixels);
}

LAMPBLACK_AVX2 static int DoubleSixteens(const uint32_t* inPixels, int inCount, uint32_t* outPixels)
{
    int i = 0;
    for (; i + 16 <= inCount; i += 16, inPixels += 8) {
        const __m256i eight = _mm256_permute4x64_epi64(
            _mm256_loadu_si256(reinterpret_cast<const __m256i*>(inPixels)), _MM_SHUFFLE(3, 1, 2, 0));
        auto* to = reinterpret_cast<__m256i*>(outPixels + i);
        _mm256_storeu_si256(to, _mm256_unpacklo_epi32(eight, eight));
        _mm256_storeu_si256(to + 1, _mm256_unpackhi_epi32(eight, eight));
    }
    return i;
}

static int DoubleEights(const uint32_t* inPixels, int inCount, uint32_t* outPixels)
{
    int i = 0;
    for (; i + 8 <= inCount; i += 8, inPixels += 4) {
        const __m128i four = _mm_loadu_si128(reinterpret_cast<const __m128i*>(inPixels));
        auto* to = reinterpret_cast<__m128i*>(outPixels + i);
        _mm_storeu_si128(to, _mm_unpacklo_epi32(four, four));
        _mm_storeu_si128(to + 1, _mm_unpackhi_epi32(four, four));
    }
    return i;
}

static int DoubleMany(const uint32_t* inPixels, int inCount, uint32_t* outPixels)
{
    return HasAvx2() ? DoubleSixteens(inPixels, inCount, outPixels)
                     : DoubleEights(inPixels, inCount, outPixels);
}
#else
static int HalveMany(const uint32_t*, int, uint32_t*)
{
    return 0;
}
static int DoubleMany(const uint32_t*, int, uint32_t*)
{
    return 0;
}
#endif

void HalveRow(const uint32_t* inPixels, int inCount, uint32_t* outPixels)
{
    for (int i = HalveMany(inPixels, inCount, outPixels); i < inCount; ++i)
        outPixels[i] = inPixels[2 * i];
}

void DoubleRow(const uint32_t* inPixels, bool inWholeFirst, int inCount, uint32_t* outPixels)
{
    if (!inWholeFirst && inCount > 0) {
        *outPixels++ = *inPixels++;
        --inCount;
    }
    for (int i = DoubleMany(inPixels, inCount, outPixels); i < inCount; ++i)
        outPixels[i] = inPixels[i / 2];
}

template <class Pixel>
static void PickRow(const Pixel* inPixels, Steps inSteps, int inCount, uint32_t* outPixels)
{
    for (int i = 0; i < inCount; ++i, inSteps.Next())
        outPixels[i] = inPixels[inSteps.At()];
}

static void PickWords(const uint32_t* inPixels, Steps inSteps, int inCount, uint32_t* outPixels)
{
    if (inSteps.Halves())
        HalveRow(inPixels + inSteps.At(), inCount, outPixels);
    else if (inSteps.Doubles())
        DoubleRow(inPixels + inSteps.At(), inSteps.IsFirstOfTwo(), inCount, outPixels);
    else
        PickRow(inPixels, inSteps, inCount, outPixels);
}

static void PickBits(const uint8_t* inRow, int inFirst, int inDepth, Steps inSteps, int inCount,
                     uint32_t* outPixels)
{
    const uint32_t mask = (1u << inDepth) - 1;
    for (int i = 0; i < inCount; ++i, inSteps.Next()) {
        const int bit = (inFirst + inSteps.At()) * inDepth;
        outPixels[i] = inRow[bit >> 3] >> (8 - inDepth - (bit & 7)) & mask;
    }
}

void ReadScaledPixels(const Surface& s, int v, int inLeft, Steps inSteps, int inCount, uint32_t* outPixels)
{
    const uint8_t* row = s.RowAt(v);
    const int first = inLeft - s.bounds.left;
    switch (s.depth) {
    case 32: return PickWords(reinterpret_cast<const uint32_t*>(row) + first, inSteps, inCount, outPixels);
    case 16: return PickRow(reinterpret_cast<const uint16_t*>(row) + first, inSteps, inCount, outPixels);
    case 8: return PickRow(row + first, inSteps, inCount, outPixels);
    default: return PickBits(row, first, s.depth, inSteps, inCount, outPixels);
    }
}

namespace {

struct Sum {
    uint64_t red = 0, green = 0, blue = 0, count = 0;

    void Add(const uint32_t* inColors, int inCount)
    {
        for (int i = 0; i < inCount; ++i) {
            red += inColors[i] >> 16 & 0xFF;
            green += inColors[i] >> 8 & 0xFF;
            blue += inColors[i] & 0xFF;
        }
        count += (uint64_t)inCount;
    }
    uint32_t Mean() const // rounded to the nearest
    {
        if (count == 0)
            return 0;
        const auto mean = [this](uint64_t sum) { return (uint32_t)((sum + count / 2) / count); };
        return mean(red) << 16 | mean(green) << 8 | mean(blue);
    }
};

constexpr int kPiece = 256;

void AddRow(const Surface& s, int v, int inLeft, int inRight, Sum& ioSum)
{
    uint32_t colors[kPiece];
    for (int h = inLeft; h < inRight; h += kPiece) {
        const int count = std::min(kPiece, inRight - h);
        ReadColors(s, v, h, count, colors);
        ioSum.Add(colors, count);
    }
}

} // namespace

void ReadMeanColors(const Surface& s, const Rect& from, const Rect& to, int v, int h, int count,
                    uint32_t* outColors)
{
    const Share rows = ShareOf(v - to.top, from.bottom - from.top, to.bottom - to.top);
    const int top = std::max<int>(from.top + rows.first, s.bounds.top),
              bottom = std::min<int>(from.top + rows.end, s.bounds.bottom);
    for (int i = 0; i < count; ++i) {
        const Share columns = ShareOf(h + i - to.left, from.right - from.left, to.right - to.left);
        const int left = std::max<int>(from.left + columns.first, s.bounds.left),
                  right = std::min<int>(from.left + columns.end, s.bounds.right);
        Sum sum;
        for (int y = top; y < bottom; ++y)
            AddRow(s, y, left, right, sum);
        outColors[i] = sum.Mean();
    }
}

} // namespace lampblack::quickdraw
