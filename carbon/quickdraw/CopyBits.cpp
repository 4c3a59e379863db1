// CopyBits and ScrollRect, and pixels that other floors bring.
#include "Copying.h"
#include "Devices.h"
#include "Verbs.h"

#include <Carbon/MacErrors.h>

#include <cstring>
#include <vector>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

using namespace lampblack::quickdraw;

namespace lampblack::quickdraw {

static constexpr int kRowBytesBits = 0x3FFF;

// A port's own map is read from the port, so that nothing written into the visible record can mislead.
static Source SourceOf(const BitMap* inMap)
{
    if (const PortRecord* port = FindPortOfMap(inMap))
        return { port->fSurface.base, port->fSurface.rowBytes, port->fSurface.depth, port->fSurface.bounds, port };
    const bool isPixMap = inMap->rowBytes < 0;
    // What GetQDGlobalsScreenBits gave is no longer than a BitMap.
    const bool isScreen = isPixMap && inMap->baseAddr == ScreenMap().baseAddr;
    const int depth = isScreen ? 32 : isPixMap ? reinterpret_cast<const PixMap*>(inMap)->pixelSize : 1;
    return { reinterpret_cast<const uint8_t*>(inMap->baseAddr), inMap->rowBytes & kRowBytesBits, depth,
             inMap->bounds, nullptr };
}

// Bounds may promise more columns than a row has.
static Box ReadableBox(const Source& inSource)
{
    Box box = BoxOf(inSource.bounds);
    if (!inSource.base || inSource.rowBytes == 0)
        return { 0, 0, 0, 0 };
    box.x2 = std::min(box.x2, box.x1 + inSource.rowBytes * 8 / inSource.depth);
    return box;
}

struct Copy {
    Source from, to;
    Rect fromRect, toRect;
    Combination how;

    bool Scales() const
    {
        return fromRect.right - fromRect.left != toRect.right - toRect.left ||
               fromRect.bottom - fromRect.top != toRect.bottom - toRect.top;
    }
    Steps Columns(int h) const
    {
        return Steps(fromRect.right - fromRect.left, toRect.right - toRect.left, h - toRect.left);
    }
    Steps Rows(int v) const
    {
        return Steps(fromRect.bottom - fromRect.top, toRect.bottom - toRect.top, v - toRect.top);
    }
};

// The first destination pixel that shows source pixel `at` or a later one.
static int FirstShowing(int at, int source, int destination)
{
    if (at <= 0)
        return 0;
    return (int)std::min<int64_t>(((int64_t)at * destination + source - 1) / source, destination);
}

// The destination pixels whose source pixel exists.
static Box ShownBox(const Copy& inCopy)
{
    const Box readable = ReadableBox(inCopy.from);
    const Rect &from = inCopy.fromRect, &to = inCopy.toRect;
    const int fromWidth = from.right - from.left, fromHeight = from.bottom - from.top;
    const int width = to.right - to.left, height = to.bottom - to.top;
    return { to.left + FirstShowing(readable.x1 - from.left, fromWidth, width),
             to.top + FirstShowing(readable.y1 - from.top, fromHeight, height),
             to.left + FirstShowing(std::min(readable.x2 - from.left, fromWidth), fromWidth, width),
             to.top + FirstShowing(std::min(readable.y2 - from.top, fromHeight), fromHeight, height) };
}

static uint32_t* DestinationAt(const Copy& inCopy, int h, int v)
{
    return const_cast<uint32_t*>(reinterpret_cast<const uint32_t*>(inCopy.to.RowAt(v))) +
           (h - inCopy.to.bounds.left);
}

static constexpr int kChunk = 512;

// One row of the destination, in pieces that fit a buffer.
static void CopyRow(const Copy& inCopy, int v, int inLeft, int inRight)
{
    uint32_t pixels[kChunk];
    const bool scales = inCopy.Scales();
    const int sourceRow = inCopy.fromRect.top + inCopy.Rows(v).At();
    for (int h = inLeft; h < inRight; h += kChunk) {
        const int count = std::min(kChunk, inRight - h);
        if (scales)
            FetchScaledRow(inCopy.from, sourceRow, inCopy.fromRect.left, inCopy.Columns(h), count, pixels);
        else
            FetchRow(inCopy.from, sourceRow, inCopy.fromRect.left + h - inCopy.toRect.left, count, pixels);
        inCopy.how.Row(pixels, DestinationAt(inCopy, h, v), count);
    }
}

// Depth 32 without scaling needs no buffer.
static void CopyDirectBox(const Copy& inCopy, const Box& inBox)
{
    const int dh = inCopy.fromRect.left - inCopy.toRect.left, dv = inCopy.fromRect.top - inCopy.toRect.top;
    const int rows = inBox.y2 - inBox.y1;
    for (int i = 0; i < rows; ++i) {
        const int v = dv < 0 ? inBox.y2 - 1 - i : inBox.y1 + i; // reads each pixel before it is written
        const auto* source = reinterpret_cast<const uint32_t*>(inCopy.from.RowAt(v + dv)) +
                             (inBox.x1 + dh - inCopy.from.bounds.left);
        inCopy.how.Row(source, DestinationAt(inCopy, inBox.x1, v), inBox.x2 - inBox.x1);
    }
}

static void CopyScaledBox(const Copy& inCopy, const Box& inBox)
{
    if (!inCopy.how.IsPlainCopy() || inCopy.from.depth != 32) {
        for (int v = inBox.y1; v < inBox.y2; ++v)
            CopyRow(inCopy, v, inBox.x1, inBox.x2);
        return;
    }
    Steps rows = inCopy.Rows(inBox.y1);
    int lastRow = -1;
    for (int v = inBox.y1; v < inBox.y2; ++v, rows.Next()) {
        uint32_t* to = DestinationAt(inCopy, inBox.x1, v);
        if (rows.At() == lastRow)
            std::memcpy(to, DestinationAt(inCopy, inBox.x1, v - 1), (size_t)(inBox.x2 - inBox.x1) * 4);
        else
            FetchScaledRow(inCopy.from, inCopy.fromRect.top + rows.At(), inCopy.fromRect.left,
                           inCopy.Columns(inBox.x1), inBox.x2 - inBox.x1, to);
        lastRow = rows.At();
    }
}

static void CopyRegion(const Copy& inCopy, const Region& inWhere)
{
    for (const Box& box : inWhere.Boxes()) {
        if (inCopy.from.depth == 32 && !inCopy.Scales())
            CopyDirectBox(inCopy, box);
        else
            CopyScaledBox(inCopy, box);
    }
}

// Whether the two maps lie in the same memory.
static bool ShareMemory(const Copy& inCopy)
{
    const auto ends = [](const Source& s) {
        const auto rows = (ptrdiff_t)std::max(0, s.bounds.bottom - s.bounds.top);
        return std::pair{ s.base, s.base + rows * s.rowBytes };
    };
    const auto [from, fromEnd] = ends(inCopy.from);
    const auto [to, toEnd] = ends(inCopy.to);
    return from < toEnd && to < fromEnd;
}

// A plain copy of one rectangle within a map reads each pixel before it is written.
static bool IsSafeInPlace(const Copy& inCopy, const Region& inWhere)
{
    return inWhere.IsRectangle() && !inCopy.Scales() && inCopy.how.IsPlainCopy() && inCopy.from.depth == 32 &&
           inCopy.from.base == inCopy.to.base && inCopy.from.rowBytes == inCopy.to.rowBytes &&
           EqualRect(&inCopy.from.bounds, &inCopy.to.bounds);
}

// Source pixels that the copy would overwrite before it reads them are set aside first.
static void CopyWithinMap(Copy inCopy, const Region& inWhere)
{
    static std::vector<uint32_t> aside;
    const Box box = Intersection(BoxOf(inCopy.fromRect), ReadableBox(inCopy.from));
    const int width = box.x2 - box.x1;
    aside.resize((size_t)width * (size_t)(box.y2 - box.y1));
    for (int v = box.y1; v < box.y2; ++v)
        FetchRow(inCopy.from, v, box.x1, width, aside.data() + (size_t)width * (size_t)(v - box.y1));
    inCopy.from = { reinterpret_cast<const uint8_t*>(aside.data()), width * 4, 32, RectOf(box), nullptr };
    CopyRegion(inCopy, inWhere);
}

// Where the copy may change the destination.
static Region WhereToCopy(const Copy& inCopy, const Region* inMask, PortRecord* inPort)
{
    Box box = Intersection(ShownBox(inCopy), ReadableBox(inCopy.to));
    Region where(Intersection(box, BoxOf(inCopy.toRect)));
    if (inPort && inPort == CurrentPort())
        where.Intersect(where, inPort->Drawable());
    if (inMask)
        where.Intersect(where, *inMask);
    return where;
}

static void Perform(const Copy& inCopy, const Region& inWhere, PortRecord* ioPort)
{
    if (inWhere.IsEmpty())
        return;
    if (ShareMemory(inCopy) && !IsSafeInPlace(inCopy, inWhere))
        CopyWithinMap(inCopy, inWhere);
    else
        CopyRegion(inCopy, inWhere);
    if (ioPort)
        ioPort->Damage(inWhere.Extents());
}

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

void DrawPremultiplied(const uint32_t* inPixels, int inRowPixels, const Rect& inLocal)
{
    PortRecord* port = CurrentPort();
    if (!port || !inPixels || IsEmpty(inLocal))
        return;
    const Region& drawable = port->Drawable();
    const Box local = BoxOf(inLocal);
    for (const Box& clip : drawable.Boxes()) {
        const Box box = Intersection(local, clip);
        for (int v = box.y1; v < box.y2 && box.x1 < box.x2; ++v)
            OverRow(inPixels + (ptrdiff_t)(v - local.y1) * inRowPixels + (box.x1 - local.x1),
                    port->PixelAt(box.x1, v), box.x2 - box.x1);
    }
    port->Damage(Intersection(local, drawable.Extents()));
}

} // namespace lampblack::quickdraw

void CopyBits(const BitMap* srcBits, const BitMap* dstBits, const Rect* srcRect, const Rect* dstRect,
              short mode, RgnHandle maskRgn)
{
    const Region* mask = FindRegion(maskRgn);
    if (!srcBits || !dstBits || !srcRect || !dstRect || (maskRgn && !mask))
        return SetQDError(paramErr);
    SetQDError(noErr);
    if (IsEmpty(*srcRect) || IsEmpty(*dstRect))
        return;
    const PortRecord* current = CurrentPort();
    const Copy copy = { SourceOf(srcBits), SourceOf(dstBits), *srcRect, *dstRect,
                        Combination(mode, current ? current->fForePixel : kBlackPixel,
                                    current ? current->fBackPixel : kWhitePixel) };
    if ((copy.from.depth != 32 && copy.from.depth != 1) || copy.to.depth != 32)
        return SetQDError(cDepthErr);
    PortRecord* port = FindPortOfMap(dstBits);
    Perform(copy, WhereToCopy(copy, mask, port), port);
}

void ScrollRect(const Rect* r, short dh, short dv, RgnHandle updateRgn)
{
    PortRecord* port = CurrentPort();
    if (!port || !r)
        return;
    Region area(*r), moved, uncovered;
    area.Intersect(area, port->Drawable());
    moved = area;
    moved.Offset(dh, dv);
    moved.Intersect(moved, area);
    uncovered.Subtract(area, moved);
    if (dh == 0 && dv == 0)
        uncovered.Clear();
    else if (!moved.IsEmpty())
        MovePixels(*port, moved, dh, dv);
    port->Damage(moved.Extents());
    DrawRegion(Verb::Erase, uncovered, nullptr);
    if (Region* update = FindRegion(updateRgn))
        *update = uncovered;
}
