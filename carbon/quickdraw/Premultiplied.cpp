// Pixels that other floors bring, drawn over a port.
#include "Copying.h"
#include "Port.h"

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace lampblack::quickdraw {

// dst = src + dst * (255 - alpha) / 255, two channels at a time.
static uint32_t Over(uint32_t inSource, uint32_t inDestination)
{
    const uint32_t rest = 255 - (inSource >> 24);
    const auto scaled = [rest](uint32_t pair) {
        const uint32_t product = pair * rest + 0x00800080;
        return (product + (product >> 8 & 0x00FF00FF)) >> 8 & 0x00FF00FF;
    };
    const uint32_t redBlue = scaled(inDestination & 0x00FF00FF);
    const uint32_t green = scaled(inDestination >> 8 & 0xFF);
    return ((inSource & kColorBits) + (redBlue | green << 8)) & kColorBits;
}

#ifdef __SSE2__
// Over for four pixels, the same to the bit. Each 16-bit lane holds one channel and never overflows:
// 255 * 255 + 128 + 255 < 65536. Where the source is 0 the destination keeps all its bits.
static __m128i OverFour(__m128i inSource, __m128i inDestination)
{
    const __m128i half = _mm_set1_epi16(128);
    const auto scaled = [half](__m128i lanes, __m128i rest) {
        const __m128i product = _mm_add_epi16(_mm_mullo_epi16(lanes, rest), half);
        return _mm_srli_epi16(_mm_add_epi16(product, _mm_srli_epi16(product, 8)), 8);
    };
    __m128i rest = _mm_sub_epi32(_mm_set1_epi32(255), _mm_srli_epi32(inSource, 24));
    rest = _mm_or_si128(rest, _mm_slli_epi32(rest, 16));
    const __m128i redBlue = scaled(_mm_and_si128(inDestination, _mm_set1_epi32(0x00FF00FF)), rest);
    const __m128i green = scaled(_mm_and_si128(_mm_srli_epi32(inDestination, 8), _mm_set1_epi32(0xFF)), rest);
    const __m128i below = _mm_or_si128(redBlue, _mm_slli_epi32(green, 8));
    const __m128i sum = _mm_and_si128(_mm_add_epi32(inSource, below), _mm_set1_epi32((int)kColorBits));
    const __m128i isEmpty = _mm_cmpeq_epi32(inSource, _mm_setzero_si128());
    return _mm_or_si128(_mm_and_si128(isEmpty, inDestination), _mm_andnot_si128(isEmpty, sum));
}

// Answers how many pixels are done; fewer than four remain.
static int OverFours(const uint32_t* inSource, uint32_t* ioDestination, int inCount)
{
    int i = 0;
    for (; i + 4 <= inCount; i += 4) {
        const __m128i source = _mm_loadu_si128(reinterpret_cast<const __m128i*>(inSource + i));
        if (_mm_movemask_epi8(_mm_cmpeq_epi32(source, _mm_setzero_si128())) == 0xFFFF)
            continue; // nothing to see, nothing to write
        auto* to = reinterpret_cast<__m128i*>(ioDestination + i);
        _mm_storeu_si128(to, OverFour(source, _mm_loadu_si128(to)));
    }
    return i;
}
#else
static int OverFours(const uint32_t*, uint32_t*, int)
{
    return 0;
}
#endif

static void OverRow(const uint32_t* inSource, uint32_t* ioDestination, int inCount)
{
    for (int i = OverFours(inSource, ioDestination, inCount); i < inCount; ++i) {
        const uint32_t source = inSource[i];
        if (source >= 0xFF000000)
            ioDestination[i] = source & kColorBits;
        else if (source != 0)
            ioDestination[i] = Over(source, ioDestination[i]);
    }
}

// Pixels whose colour stays keep their value.
static void OverOtherDepth(const Surface& inTo, const uint32_t* inPixels, int h, int v, int inCount)
{
    uint32_t colors[kRowPiece], pixels[kRowPiece];
    for (int done = 0; done < inCount; done += kRowPiece) {
        const int count = std::min(kRowPiece, inCount - done);
        ReadPixels(inTo, v, h + done, count, pixels);
        for (int i = 0; i < count; ++i)
            colors[i] = ColorFor(inTo, pixels[i]);
        OverRow(inPixels + done, colors, count);
        for (int i = 0; i < count; ++i)
            if (colors[i] != ColorFor(inTo, pixels[i]))
                pixels[i] = PixelFor(inTo, colors[i]);
        WritePixels(inTo, v, h + done, count, pixels);
    }
}

void DrawPremultiplied(const uint32_t* inPixels, int inRowPixels, const Rect& inLocal)
{
    PortRecord* port = CurrentPort();
    if (!port || !inPixels || IsEmpty(inLocal) || !port->fSurface.base)
        return;
    const Region& drawable = port->Drawable();
    const Box local = BoxOf(inLocal);
    for (const Box& clip : drawable.Boxes()) {
        const Box box = Intersection(local, clip);
        for (int v = box.y1; v < box.y2 && box.x1 < box.x2; ++v) {
            const uint32_t* row = inPixels + (ptrdiff_t)(v - local.y1) * inRowPixels + (box.x1 - local.x1);
            if (port->Depth() == 32)
                OverRow(row, port->PixelAt(box.x1, v), box.x2 - box.x1);
            else
                OverOtherDepth(port->fSurface, row, box.x1, v, box.x2 - box.x1);
        }
    }
    port->Damage(Intersection(local, drawable.Extents()));
}

} // namespace lampblack::quickdraw
