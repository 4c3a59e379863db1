// The blends of one offscreen world into another through a grey mask: which rows and columns meet, and that
// no byte outside the three worlds is touched. The loops over pixels are in Blending.h.
#include "graphics/Blending.h"
#include "graphics/PixelCopies.h"

#include <algorithm>

using namespace lampblack::graphics;

namespace {

constexpr int kRowBytesBits = 0x3FFF;

// The pixels of a world, while they are locked.
class PixelRows {
public:
    explicit PixelRows(PixMapHandle inMap)
        : fBase(reinterpret_cast<UInt8*>(GetPixBaseAddr(inMap))),
          fRowBytes((**inMap).rowBytes & kRowBytesBits),
          fBytes(fRowBytes * ((**inMap).bounds.bottom - (**inMap).bounds.top))
    {
    }

    UInt8* Base() const { return fBase; }
    ptrdiff_t RowBytes() const { return fRowBytes; }
    ptrdiff_t Bytes() const { return fBytes; } // of all rows

private:
    UInt8* fBase;
    ptrdiff_t fRowBytes;
    ptrdiff_t fBytes;
};

struct Blit {
    const PixelRows &source, &mask, &destination;
    ptrdiff_t sourceStart, destinationStart; // bytes from the bases; source and mask start alike
    int columns, rows;
};

// The first and the last column of a row that lie inside the bytes of all three worlds.
struct Columns {
    int first, end;

    void KeepInside(ptrdiff_t inRowStart, ptrdiff_t inBytes, int inPixelBytes)
    {
        if (inRowStart < 0)
            first = std::max(first,
                             (int)std::min<ptrdiff_t>(end, (-inRowStart + inPixelBytes - 1) / inPixelBytes));
        const ptrdiff_t room = (inBytes - inRowStart) / inPixelBytes;
        end = (int)std::clamp<ptrdiff_t>(room, 0, end);
    }
};

bool Overlap(const PixelRows& a, const PixelRows& b)
{
    return a.Base() < b.Base() + b.Bytes() && b.Base() < a.Base() + a.Bytes();
}

// Many pixels at once give what one after the other does unless a pixel written is read again later.
template <class Format>
BlendProc LoopFor(const Blit& inBlit)
{
    const bool meetsItself =
        Overlap(inBlit.destination, inBlit.source) || Overlap(inBlit.destination, inBlit.mask);
    return meetsItself ? &BlendPlainly<Format>
                       : FastestBlend<Format>(inBlit.rows * inBlit.destination.RowBytes());
}

template <class Format>
bool FitsWhole(const Blit& inBlit)
{
    const ptrdiff_t length = (ptrdiff_t)inBlit.columns * (ptrdiff_t)sizeof(typename Format::Pixel);
    const ptrdiff_t sourceEnd = inBlit.sourceStart + (inBlit.rows - 1) * inBlit.source.RowBytes() + length;
    const ptrdiff_t end =
        inBlit.destinationStart + (inBlit.rows - 1) * inBlit.destination.RowBytes() + length;
    return inBlit.sourceStart >= 0 && inBlit.destinationStart >= 0 && sourceEnd <= inBlit.source.Bytes() &&
           sourceEnd <= inBlit.mask.Bytes() && end <= inBlit.destination.Bytes();
}

BlendArea AreaOf(const Blit& inBlit)
{
    return { inBlit.source.Base() + inBlit.sourceStart,
             inBlit.mask.Base() + inBlit.sourceStart,
             inBlit.destination.Base() + inBlit.destinationStart,
             inBlit.source.RowBytes(),
             inBlit.destination.RowBytes(),
             inBlit.columns,
             inBlit.rows };
}

// What of a row lies outside the memory of a world is left out.
template <class Format>
void BlendWhatFits(const Blit& inBlit, BlendProc inLoop)
{
    constexpr int kPixelBytes = sizeof(typename Format::Pixel);
    for (int row = 0; row < inBlit.rows; ++row) {
        const ptrdiff_t sourceStart = inBlit.sourceStart + row * inBlit.source.RowBytes();
        const ptrdiff_t destinationStart = inBlit.destinationStart + row * inBlit.destination.RowBytes();
        Columns columns = { 0, inBlit.columns };
        columns.KeepInside(sourceStart, inBlit.source.Bytes(), kPixelBytes);
        columns.KeepInside(sourceStart, inBlit.mask.Bytes(), kPixelBytes);
        columns.KeepInside(destinationStart, inBlit.destination.Bytes(), kPixelBytes);
        if (columns.first >= columns.end)
            continue;
        const ptrdiff_t skip = (ptrdiff_t)columns.first * kPixelBytes;
        inLoop({ inBlit.source.Base() + sourceStart + skip, inBlit.mask.Base() + sourceStart + skip,
                 inBlit.destination.Base() + destinationStart + skip, 0, 0, columns.end - columns.first, 1 });
    }
}

template <class Format>
void BlendPixelsOf(const Blit& inBlit)
{
    const BlendProc loop = LoopFor<Format>(inBlit);
    if (FitsWhole<Format>(inBlit))
        loop(AreaOf(inBlit));
    else
        BlendWhatFits<Format>(inBlit, loop);
}

// The size of a pixel is computed: a row divided by the width, so that the slack at its end must be shorter
// than the width is in pixels.
ptrdiff_t PixelBytes(const PixelRows& inPixels, const Rect& inBounds)
{
    return inPixels.RowBytes() / std::max(1, inBounds.right - inBounds.left);
}

template <class Format>
void BlendLocked(const PixelRows& inSource, const PixelRows& inMask, const PixelRows& inDestination,
                 const Rect& inSourceBounds, const Rect& inDestinationBounds, const Rect& inRect,
                 const Rect& inClip)
{
    if (!inSource.Base() || !inMask.Base() || !inDestination.Base())
        return;
    const ptrdiff_t sourceBytes = PixelBytes(inSource, inSourceBounds);
    const ptrdiff_t destinationBytes = PixelBytes(inDestination, inDestinationBounds);
    constexpr ptrdiff_t kStep = sizeof(typename Format::Pixel);
    const ptrdiff_t columns = ((inClip.right - inClip.left) * destinationBytes + kStep - 1) / kStep;
    BlendPixelsOf<Format>(
        { inSource, inMask, inDestination,
          (inClip.left - inRect.left) * sourceBytes + (inClip.top - inRect.top) * inSource.RowBytes(),
          inClip.top * inDestination.RowBytes() + inClip.left * destinationBytes, (int)columns,
          inClip.bottom - inClip.top });
}

template <class Format>
void BlendWorlds(GWorldPtr inSource, GWorldPtr inMask, GWorldPtr inDestination, const Rect* inRect)
{
    Rect destinationBounds, sourceBounds, clip;
    GetPortBounds(inDestination, &destinationBounds);
    GetPortBounds(inSource, &sourceBounds);
    const PixMapHandle source = GetGWorldPixMap(inSource);
    const PixMapHandle destination = GetGWorldPixMap(inDestination);
    const PixMapHandle mask = GetGWorldPixMap(inMask);
    if (!source || !destination || !mask || !inRect || !SectRect(inRect, &destinationBounds, &clip))
        return;
    LockPixels(source);
    LockPixels(destination);
    LockPixels(mask);
    BlendLocked<Format>(PixelRows(source), PixelRows(mask), PixelRows(destination), sourceBounds,
                        destinationBounds, *inRect, clip);
    UnlockPixels(source);
    UnlockPixels(destination);
    UnlockPixels(mask);
}

} // namespace

void CopyPixelsTransparentMask16(GWorldPtr inSource, GWorldPtr inMask, GWorldPtr inDestination,
                                 const Rect* inRect)
{
    BlendWorlds<Pixels16>(inSource, inMask, inDestination, inRect);
}

void CopyPixelsTransparentMask32(GWorldPtr inSource, GWorldPtr inMask, GWorldPtr inDestination,
                                 const Rect* inRect)
{
    BlendWorlds<Pixels32>(inSource, inMask, inDestination, inRect);
}
