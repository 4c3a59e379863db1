// CopyMask and CopyDeepMask.
#include "CopyBits.h"
#include "MaskedRows.h"
#include "Recorder.h"

#include <Carbon/MacErrors.h>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

using namespace lampblack::quickdraw;

namespace lampblack::quickdraw {

namespace {

// The pixels of a mask in terms of the destination.
class Mask {
public:
    Mask(const Surface& inSurface, const Rect& inRect, const Rect& inTo)
        : fSurface(inSurface),
          fRect(inRect),
          fTo(inTo),
          fScales(inRect.right - inRect.left != inTo.right - inTo.left ||
                  inRect.bottom - inRect.top != inTo.bottom - inTo.top)
    {
    }

    const Surface& Pixels() const { return fSurface; }
    bool IsBits() const { return fSurface.depth == 1; }
    bool Scales() const { return fScales; }
    Box ShownBox() const { return BoxShowing(fSurface.bounds, fRect, fTo); }
    void KeepApartFrom(const Surface& inOther)
    {
        static std::vector<uint8_t> storage;
        if (ShareMemory(fSurface, inOther))
            fSurface = SetAside(fSurface, fRect.top, fRect.bottom, storage);
    }

    // The row and the bit in it that mask the destination pixel (h, v); without scaling the others follow.
    const uint8_t* BitsOf(int v, int h, int* outBit) const
    {
        *outBit = fRect.left + h - fTo.left - fSurface.bounds.left;
        return fSurface.RowAt(fRect.top + v - fTo.top);
    }
    void Values(int v, int h, int count, uint32_t* outValues) const
    {
        const int row = fRect.top + Along(fRect.top, fRect.bottom, fTo.top, fTo.bottom, v).At();
        if (fScales)
            ReadScaledPixels(fSurface, row, fRect.left,
                             Along(fRect.left, fRect.right, fTo.left, fTo.right, h), count, outValues);
        else
            ReadPixels(fSurface, row, fRect.left + h - fTo.left, count, outValues);
    }
    void Colors(int v, int h, int count, uint32_t* outColors) const
    {
        Values(v, h, count, outColors);
        for (int i = 0; i < count; ++i)
            outColors[i] = ColorFor(fSurface, outColors[i]);
    }

private:
    static Steps Along(int from, int fromEnd, int to, int toEnd, int at)
    {
        return Steps(fromEnd - from, toEnd - to, at - to);
    }

    Surface fSurface;
    Rect fRect, fTo;
    bool fScales;
};

} // namespace

// source * (255 - weight) + destination * weight, rounded, channel by channel.
static uint32_t Weighed(uint32_t inSource, uint32_t inDestination, uint32_t inWeights)
{
    uint32_t result = 0;
    for (int shift = 0; shift < 24; shift += 8) {
        const uint32_t weight = inWeights >> shift & 0xFF;
        const uint32_t sum =
            (inSource >> shift & 0xFF) * (255 - weight) + (inDestination >> shift & 0xFF) * weight + 128;
        result |= (sum + (sum >> 8)) >> 8 << shift;
    }
    return result;
}

#ifdef __SSE2__
// Two pixels in 16-bit lanes, none of which overflows: 255 * 255 + 128 + 255 < 65536.
static __m128i WeighedTwo(__m128i inSource, __m128i inDestination, __m128i inWeights)
{
    const __m128i rest = _mm_sub_epi16(_mm_set1_epi16(255), inWeights);
    const __m128i sum = _mm_add_epi16(
        _mm_add_epi16(_mm_mullo_epi16(inSource, rest), _mm_mullo_epi16(inDestination, inWeights)),
        _mm_set1_epi16(128));
    return _mm_srli_epi16(_mm_add_epi16(sum, _mm_srli_epi16(sum, 8)), 8);
}

static int WeighFours(const uint32_t* inSource, const uint32_t* inWeights, uint32_t* ioDestination,
                      int inCount)
{
    const __m128i zero = _mm_setzero_si128();
    int i = 0;
    for (; i + 4 <= inCount; i += 4) {
        const __m128i s = _mm_loadu_si128(reinterpret_cast<const __m128i*>(inSource + i));
        const __m128i w = _mm_loadu_si128(reinterpret_cast<const __m128i*>(inWeights + i));
        const __m128i d = _mm_loadu_si128(reinterpret_cast<const __m128i*>(ioDestination + i));
        const __m128i low =
            WeighedTwo(_mm_unpacklo_epi8(s, zero), _mm_unpacklo_epi8(d, zero), _mm_unpacklo_epi8(w, zero));
        const __m128i high =
            WeighedTwo(_mm_unpackhi_epi8(s, zero), _mm_unpackhi_epi8(d, zero), _mm_unpackhi_epi8(w, zero));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(ioDestination + i),
                         _mm_and_si128(_mm_packus_epi16(low, high), _mm_set1_epi32((int)kColorBits)));
    }
    return i;
}
#else
static int WeighFours(const uint32_t*, const uint32_t*, uint32_t*, int)
{
    return 0;
}
#endif

static void WeighRow(const uint32_t* inSource, const uint32_t* inWeights, uint32_t* ioDestination,
                     int inCount)
{
    for (int i = WeighFours(inSource, inWeights, ioDestination, inCount); i < inCount; ++i)
        ioDestination[i] = Weighed(inSource[i], ioDestination[i], inWeights[i]);
}

// Masks of bits over pixels as they are: no buffers.
static void PickBox(const CopyJob& inJob, const Mask& inMask, PickProc inPick, const Box& inBox)
{
    const Surface &from = inJob.From(), &to = inJob.To();
    const int dh = inJob.FromRect().left - inJob.ToRect().left,
              dv = inJob.FromRect().top - inJob.ToRect().top;
    const ptrdiff_t pixel = to.depth / 8;
    MaskedRows rows;
    rows.mask = inMask.BitsOf(inBox.y1, inBox.x1, &rows.bit);
    rows.from = from.RowAt(inBox.y1 + dv) + (inBox.x1 + dh - from.bounds.left) * pixel;
    rows.to = to.RowAt(inBox.y1) + (inBox.x1 - to.bounds.left) * pixel;
    rows.maskRowBytes = inMask.Pixels().rowBytes;
    rows.fromRowBytes = from.rowBytes;
    rows.toRowBytes = to.rowBytes;
    rows.columns = inBox.x2 - inBox.x1;
    rows.rows = inBox.y2 - inBox.y1;
    inPick(rows);
}

static void PickRow(const CopyJob& inJob, const Mask& inMask, int v, int h, int count,
                    const uint32_t* converted)
{
    uint32_t old[kRowPiece], pixels[kRowPiece], bits[kRowPiece];
    ReadPixels(inJob.To(), v, h, count, old);
    std::copy_n(old, count, pixels);
    inJob.Meet(converted, pixels, count);
    inMask.Values(v, h, count, bits);
    for (int i = 0; i < count; ++i)
        pixels[i] = bits[i] ? pixels[i] : old[i];
    WritePixels(inJob.To(), v, h, count, pixels);
}

// Of pixels whose colour stays the value stays, too.
static void WriteChanged(const Surface& inTo, int v, int h, int inCount, const uint32_t* inColors)
{
    uint32_t pixels[kRowPiece];
    ReadPixels(inTo, v, h, inCount, pixels);
    for (int i = 0; i < inCount; ++i)
        if (inColors[i] != ColorFor(inTo, pixels[i]))
            pixels[i] = PixelFor(inTo, inColors[i]);
    WritePixels(inTo, v, h, inCount, pixels);
}

static void BlendRow(const CopyJob& inJob, const Mask& inMask, bool inColors, int v, int h, int count,
                     const uint32_t* converted)
{
    const Surface& to = inJob.To();
    uint32_t source[kRowPiece], weights[kRowPiece], colors[kRowPiece];
    inMask.Colors(v, h, count, weights);
    ReadColors(to, v, h, count, colors);
    if (!inColors) {
        ReadPixels(to, v, h, count, source);
        inJob.Meet(converted, source, count);
        for (int i = 0; i < count; ++i)
            source[i] = ColorFor(to, source[i]);
        converted = source;
    }
    WeighRow(converted, weights, colors, count);
    if (to.depth == 32)
        WritePixels(to, v, h, count, colors);
    else
        WriteChanged(to, v, h, count, colors);
}

static Box PerformMasked(CopyJob& ioJob, const Mask& inMask, const Where& inWhere)
{
    if (inMask.IsBits() && !inMask.Scales() && ioJob.IsBlit() && ioJob.To().depth >= 8) {
        const PickProc pick = FastestPick(ioJob.To().depth);
        return EachBox(inWhere, [&](const Box& box) { PickBox(ioJob, inMask, pick, box); });
    }
    const bool colors = !inMask.IsBits() && ioJob.KeepColors();
    EachConvertedRow(ioJob, inWhere, [&](int v, int h, int count, const uint32_t* converted) {
        inMask.IsBits() ? PickRow(ioJob, inMask, v, h, count, converted)
                        : BlendRow(ioJob, inMask, colors, v, h, count, converted);
    });
    return EachBox(inWhere, [](const Box&) {});
}

static void CopyMasked(const MapPixels& from, const MapPixels& inMask, const MapPixels& to,
                       const Rect& fromRect, const Rect& maskRect, const Rect& toRect, short mode,
                       const Region* region)
{
    PortRecord* current = CurrentPort();
    CopyJob job(from.surface, to.surface, fromRect, toRect, mode, CopyColorsOf(current));
    Mask mask(inMask.surface, maskRect, toRect);
    Where where = WhereOf(job, to.port == current ? current : nullptr, region);
    where.bounds = Intersection(where.bounds, mask.ShownBox());
    if (IsEmpty(where.bounds) || where.boxes.empty())
        return;
    mask.KeepApartFrom(to.surface);
    if (ShareMemory(from.surface, to.surface))
        SetSourceAside(job);
    const Box changed = PerformMasked(job, mask, where);
    if (to.port && !IsEmpty(changed))
        to.port->Damage(changed);
}

// Where a mask lets through at least half of what is copied, in the destination's coordinates; everywhere
// when it is stretched beyond all worlds.
static Region ShownBy(const Mask& inMask, const Rect& inTo)
{
    static constexpr int kHalf = 3 * 255 / 2; // of the sum of three channels
    const Box seen = Intersection(BoxOf(inTo), inMask.ShownBox());
    static constexpr int64_t kMostPixels = 64 << 20;
    if (!IsEmpty(seen) && (int64_t)(seen.x2 - seen.x1) * (seen.y2 - seen.y1) > kMostPixels)
        return Region(inTo);
    std::vector<uint32_t> colors((size_t)std::max(0, seen.x2 - seen.x1));
    std::vector<Box> boxes;
    for (int v = seen.y1; v < seen.y2 && !colors.empty(); ++v) {
        inMask.Colors(v, seen.x1, (int)colors.size(), colors.data());
        const auto isShown = [&](int h) {
            const uint32_t color = colors[(size_t)(h - seen.x1)];
            return (int)((color >> 16 & 0xFF) + (color >> 8 & 0xFF) + (color & 0xFF)) <= kHalf;
        };
        for (int h = seen.x1; h < seen.x2; ++h) {
            const int start = h;
            while (h < seen.x2 && isShown(h))
                ++h;
            if (h > start)
                boxes.push_back({ start, v, h, v + 1 });
        }
    }
    return Region(boxes);
}

// No picture can hold a mask of pixels: it takes the region that comes nearest.
static bool TellRecorderMasked(const MapPixels& to, CopiedPixels ioPixels, const MapPixels& inMask,
                               const Rect& maskRect)
{
    if (!to.port || to.port != CurrentPort() || !RecorderOf(to.port) || !inMask.surface.base)
        return false;
    Region shown = ShownBy(Mask(inMask.surface, maskRect, ioPixels.toRect), ioPixels.toRect);
    if (ioPixels.mask)
        shown.Intersect(shown, *ioPixels.mask);
    ioPixels.mask = &shown;
    return shown.IsEmpty() ? to.port->fPen.visibility < 0 : TellRecorder(to.port, ioPixels);
}

} // namespace lampblack::quickdraw

void CopyDeepMask(const BitMap* srcBits, const BitMap* maskBits, const BitMap* dstBits, const Rect* srcRect,
                  const Rect* maskRect, const Rect* dstRect, short mode, RgnHandle maskRgn)
{
    const Region* region = FindRegion(maskRgn);
    if (!srcBits || !maskBits || !dstBits || !srcRect || !maskRect || !dstRect || (maskRgn && !region))
        return SetQDError(paramErr);
    MapPixels from, mask, to;
    QDErr error = FindPixels(srcBits, &from);
    if (!error)
        error = FindPixels(maskBits, &mask);
    if (!error)
        error = FindPixels(dstBits, &to);
    SetQDError(error);
    if (error || IsEmpty(*srcRect) || IsEmpty(*maskRect) || IsEmpty(*dstRect) || !from.surface.base)
        return;
    if (TellRecorderMasked(to, { from.surface, *srcRect, *dstRect, mode, region }, mask, *maskRect))
        return;
    if (to.surface.base && mask.surface.base)
        CopyMasked(from, mask, to, *srcRect, *maskRect, *dstRect, mode, region);
}

void CopyMask(const BitMap* srcBits, const BitMap* maskBits, const BitMap* dstBits, const Rect* srcRect,
              const Rect* maskRect, const Rect* dstRect)
{
    CopyDeepMask(srcBits, maskBits, dstBits, srcRect, maskRect, dstRect, srcCopy, nullptr);
}
