// The row loops of copying.
#include "Copying.h"

#include <cstring>
#include <vector>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace lampblack::quickdraw {

static uint32_t BitAt(const uint8_t* inRow, int inColumn)
{
    return inRow[inColumn >> 3] >> (7 - (inColumn & 7)) & 1 ? kBlackPixel : kWhitePixel;
}

void FetchRow(const Source& inSource, int v, int h, int inCount, uint32_t* outPixels)
{
    const uint8_t* row = inSource.RowAt(v);
    const int first = h - inSource.bounds.left;
    if (inSource.depth == 32) {
        std::memcpy(outPixels, row + (ptrdiff_t)first * 4, (size_t)inCount * 4);
        return;
    }
    for (int i = 0; i < inCount; ++i)
        outPixels[i] = BitAt(row, first + i);
}

// Every other pixel, four at a time; the plain loop behind it ends what is left and says what is meant.
static void HalveRow(const uint32_t* inPixels, int inCount, uint32_t* outPixels)
{
    int i = 0;
#ifdef __SSE2__
    for (; i + 4 < inCount; i += 4) { // one pixel beyond the last one taken is read
        const __m128 first = _mm_loadu_ps(reinterpret_cast<const float*>(inPixels + 2 * i));
        const __m128 second = _mm_loadu_ps(reinterpret_cast<const float*>(inPixels + 2 * i + 4));
        _mm_storeu_ps(reinterpret_cast<float*>(outPixels + i),
                      _mm_shuffle_ps(first, second, _MM_SHUFFLE(2, 0, 2, 0)));
    }
#endif
    for (; i < inCount; ++i)
        outPixels[i] = inPixels[2 * i];
}

// Every pixel twice; the first one only once when the row begins with its second half.
static void DoubleRow(const uint32_t* inPixels, bool inWholeFirst, int inCount, uint32_t* outPixels)
{
    if (!inWholeFirst && inCount > 0) {
        *outPixels++ = *inPixels++;
        --inCount;
    }
    int i = 0;
#ifdef __SSE2__
    for (; i + 8 <= inCount; i += 8) {
        const __m128i four = _mm_loadu_si128(reinterpret_cast<const __m128i*>(inPixels + i / 2));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(outPixels + i), _mm_unpacklo_epi32(four, four));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(outPixels + i + 4), _mm_unpackhi_epi32(four, four));
    }
#endif
    for (; i < inCount; ++i)
        outPixels[i] = inPixels[i / 2];
}

void FetchScaledRow(const Source& inSource, int v, int inLeft, Steps inSteps, int inCount,
                    uint32_t* outPixels)
{
    const uint8_t* row = inSource.RowAt(v);
    const int first = inLeft - inSource.bounds.left;
    if (inSource.depth == 32) {
        const auto* pixels = reinterpret_cast<const uint32_t*>(row) + first;
        if (inSteps.Halves())
            return HalveRow(pixels + inSteps.At(), inCount, outPixels);
        if (inSteps.Doubles())
            return DoubleRow(pixels + inSteps.At(), inSteps.IsFirstOfTwo(), inCount, outPixels);
        for (int i = 0; i < inCount; ++i, inSteps.Next())
            outPixels[i] = pixels[inSteps.At()];
        return;
    }
    for (int i = 0; i < inCount; ++i, inSteps.Next())
        outPixels[i] = BitAt(row, first + inSteps.At());
}

Combination::Combination(short inMode, uint32_t inFore, uint32_t inBack) : fBack(inBack & kColorBits)
{
    const short mode = (short)(inMode & ~ditherCopy);
    fTransparent = mode == transparent;
    const Transfer transfer = TransferOf(mode > notSrcBic ? (short)srcCopy : mode);
    fSet = ChangeOf(transfer.set, inFore, inBack);
    fClear = ChangeOf(transfer.clear, inFore, inBack);
    fPlain = !fTransparent && fSet == Change{ 0, kBlackPixel } && fClear == Change{ 0, kWhitePixel };
}

void Combination::Row(const uint32_t* inSource, uint32_t* ioDestination, int inCount) const
{
    if (fPlain) {
        std::memmove(ioDestination, inSource, (size_t)inCount * 4);
        return;
    }
    if (fTransparent) {
        for (int i = 0; i < inCount; ++i)
            if ((inSource[i] & kColorBits) != fBack)
                ioDestination[i] = inSource[i] & kColorBits;
        return;
    }
    const Change set = fSet, clear = fClear;
    for (int i = 0; i < inCount; ++i) {
        const uint32_t clearBits = inSource[i], old = ioDestination[i];
        ioDestination[i] = ((~clearBits & set.Of(old)) | (clearBits & clear.Of(old))) & kColorBits;
    }
}

void Stretch(const uint32_t* from, int fromRow, int fromWidth, int fromHeight, uint32_t* to, int toRow,
             int toWidth, int toHeight)
{
    Steps rows(fromHeight, toHeight, 0);
    for (int v = 0; v < toHeight; ++v, rows.Next()) {
        const uint32_t* source = from + (ptrdiff_t)rows.At() * fromRow;
        uint32_t* destination = to + (ptrdiff_t)v * toRow;
        Steps columns(fromWidth, toWidth, 0);
        for (int h = 0; h < toWidth; ++h, columns.Next())
            destination[h] = source[columns.At()];
    }
}

// With one rectangle the rows are taken in the order that reads each pixel before it is written.
static void MoveBox(PortRecord& ioPort, const Box& to, int dh, int dv)
{
    const int rows = to.y2 - to.y1;
    const size_t bytes = (size_t)(to.x2 - to.x1) * 4;
    for (int i = 0; i < rows; ++i) {
        const int v = dv > 0 ? to.y2 - 1 - i : to.y1 + i;
        std::memmove(ioPort.PixelAt(to.x1, v), ioPort.PixelAt(to.x1 - dh, v - dv), bytes);
    }
}

// With more, one may overwrite what another has yet to read: they go through a copy.
static void MoveBoxes(PortRecord& ioPort, const Region& to, int dh, int dv)
{
    static std::vector<uint32_t> copy;
    copy.clear();
    for (const Box& box : to.Boxes())
        for (int v = box.y1; v < box.y2; ++v) {
            const uint32_t* row = ioPort.PixelAt(box.x1 - dh, v - dv);
            copy.insert(copy.end(), row, row + (box.x2 - box.x1));
        }
    const uint32_t* next = copy.data();
    for (const Box& box : to.Boxes())
        for (int v = box.y1; v < box.y2; ++v, next += box.x2 - box.x1)
            std::memcpy(ioPort.PixelAt(box.x1, v), next, (size_t)(box.x2 - box.x1) * 4);
}

void MovePixels(PortRecord& ioPort, const Region& to, int dh, int dv)
{
    if (to.IsRectangle())
        MoveBox(ioPort, to.Extents(), dh, dv);
    else
        MoveBoxes(ioPort, to, dh, dv);
}

} // namespace lampblack::quickdraw
