// Plain and masked copies with their locks, the switch for drawing, and the
// flushes.
#include "graphics/PixelCopies.h"

#include "graphics/StateSavers.h"

bool gUseOSCopyMask = false;

namespace {

RgnHandle fgDrawingClipRgnH = nullptr; // the clip of before DrawingOff; null while drawing is on

// Locks a port's pixels unless they are locked already, and unlocks only what
// it locked. Call Unlock: the order of several is the caller's.
class PixelLock {
public:
    explicit PixelLock(PixMapHandle inMap)
    {
        if (!inMap || (GetPixelsState(inMap) & pixelsLocked))
            return;
        LockPixels(inMap);
        fLocked = inMap;
    }
    PixelLock(const PixelLock&) = delete;
    PixelLock& operator=(const PixelLock&) = delete;

    void Unlock()
    {
        if (fLocked)
            UnlockPixels(fLocked);
    }

private:
    PixMapHandle fLocked = nullptr;
};

// The pixel map of a port that is deeper than a bit map.
PixMapHandle DeepPixMap(CGrafPtr inPort)
{
    const PixMapHandle map = GetGWorldPixMap(inPort);
    return map && (**map).pixelSize != 1 ? map : nullptr;
}

int WidthOf(const Rect& inRect)
{
    return inRect.right - inRect.left;
}

int HeightOf(const Rect& inRect)
{
    return inRect.bottom - inRect.top;
}

bool StartsAtOrigin(const Rect& inRect)
{
    return inRect.top == 0 && inRect.left == 0;
}

// Asked once, whatever the answer.
bool IsMacOSX()
{
    static bool initialized = false;
    static bool hasMacOSX = false;
    if (!initialized) {
        initialized = true;
        SInt32 version = 0;
        hasMacOSX = Gestalt('sysv', &version) == noErr && version >= 0x1000;
    }
    return hasMacOSX;
}

// The worlds that source and mask go through, kept for the life of the process.
struct ScratchWorlds {
    static constexpr Rect kBounds = { 0, 0, 420, 620 };
    GWorldPtr source = nullptr;
    GWorldPtr mask = nullptr;

    // Made only while there is no source: a mask that failed beside it is not
    // tried again.
    bool Exist()
    {
        if (!source) {
            NewGWorld(&source, 32, &kBounds, nullptr, nullptr, 0);
            if (!mask)
                NewGWorld(&mask, 8, &kBounds, nullptr, nullptr, 0);
        }
        return source && mask;
    }
};

bool NeedsStaging(const Rect& inSourceRect, const Rect& inMaskRect)
{
    const bool isMacOSX = IsMacOSX();
    return isMacOSX && !(StartsAtOrigin(inSourceRect) && StartsAtOrigin(inMaskRect)) &&
           ScratchWorlds::kBounds.right >= WidthOf(inSourceRect) &&
           ScratchWorlds::kBounds.bottom >= HeightOf(inSourceRect) && !gUseOSCopyMask;
}

// Brings pixels to the origin of a scratch world whose next column is white.
void Stage(GWorldPtr ioScratch, const BitMap* inBits, const Rect* inFrom, const Rect& inTo)
{
    Rect erased = inTo;
    ++erased.right;
    SetGWorld(ioScratch, nullptr);
    EraseRect(&erased);
    CopyBits(inBits, GetPortBitMapForCopyBits(ioScratch), inFrom, &inTo, srcCopy, nullptr);
}

void CopyStaged(const ScratchWorlds& inScratch, const BitMap* inSource, const BitMap* inMask,
                const BitMap* inDestination, const Rect* inSourceRect, const Rect* inMaskRect,
                const Rect* inDestinationRect)
{
    const PixMapHandle sourceMap = GetGWorldPixMap(inScratch.source);
    const PixMapHandle maskMap = GetGWorldPixMap(inScratch.mask);
    Rect staged = *inSourceRect;
    {
        const StGWorldSaver saver;
        OffsetRect(&staged, (short)-staged.left, (short)-staged.top);
        LockPixels(sourceMap);
        LockPixels(maskMap);
        Stage(inScratch.source, inSource, inSourceRect, staged);
        Stage(inScratch.mask, inMask, inMaskRect, staged);
    }
    Rect destination = *inDestinationRect;
    if (WidthOf(staged) & 1) { // Kept: widths are made even by the white column,
                               // which masks itself out.
        ++staged.right;
        ++destination.right;
    }
    CopyMask(GetPortBitMapForCopyBits(inScratch.source), GetPortBitMapForCopyBits(inScratch.mask),
             inDestination, &staged, &staged, &destination);
    UnlockPixels(sourceMap);
    UnlockPixels(maskMap);
}

} // namespace

void CopyPixels(CGrafPtr inSource, CGrafPtr inDestination, const Rect* inSourceRect,
                const Rect* inDestinationRect, SInt16 inMode, RgnHandle inMask)
{
    PixelLock source(DeepPixMap(inSource));
    PixelLock destination(DeepPixMap(inDestination));
    CopyBits(GetPortBitMapForCopyBits(inSource), GetPortBitMapForCopyBits(inDestination), inSourceRect,
             inDestinationRect, inMode, inMask);
    source.Unlock();
    destination.Unlock();
}

void CopyPixelsToWindow(CGrafPtr inSource, WindowRef inDestination, const Rect* inSourceRect,
                        const Rect* inDestinationRect, SInt16 inMode, RgnHandle inMask)
{
    CopyPixels(inSource, GetWindowPort(inDestination), inSourceRect, inDestinationRect, inMode, inMask);
    FlushWindowDirtyRegion(inDestination);
}

void CopyPixelsMask(CGrafPtr inSource, CGrafPtr inMask, CGrafPtr inDestination, const Rect* inSourceRect,
                    const Rect* inMaskRect, const Rect* inDestinationRect)
{
    PixelLock source(GetGWorldPixMap(inSource));
    PixelLock mask(GetGWorldPixMap(inMask));
    PixelLock destination(GetGWorldPixMap(inDestination));
    MyCopyMask(GetPortBitMapForCopyBits(inSource), GetPortBitMapForCopyBits(inMask),
               GetPortBitMapForCopyBits(inDestination), inSourceRect, inMaskRect, inDestinationRect);
    source.Unlock();
    mask.Unlock();
    destination.Unlock();
}

void CopyPixelsMaskToWindow(CGrafPtr inSource, CGrafPtr inMask, WindowRef inDestination,
                            const Rect* inSourceRect, const Rect* inMaskRect, const Rect* inDestinationRect)
{
    CopyPixelsMask(inSource, inMask, GetWindowPort(inDestination), inSourceRect, inMaskRect,
                   inDestinationRect);
    FlushWindowDirtyRegion(inDestination);
}

void MyCopyMask(const BitMap* inSource, const BitMap* inMask, const BitMap* inDestination,
                const Rect* inSourceRect, const Rect* inMaskRect, const Rect* inDestinationRect)
{
    static ScratchWorlds scratch;
    if (!inSource || !inMask || !inDestination || !inSourceRect || !inMaskRect || !inDestinationRect)
        return;
    if (NeedsStaging(*inSourceRect, *inMaskRect) && scratch.Exist())
        CopyStaged(scratch, inSource, inMask, inDestination, inSourceRect, inMaskRect, inDestinationRect);
    else
        CopyMask(inSource, inMask, inDestination, inSourceRect, inMaskRect, inDestinationRect);
}

void DrawingOff()
{
    if (fgDrawingClipRgnH)
        return;
    fgDrawingClipRgnH = NewRgn();
    if (!fgDrawingClipRgnH)
        return;
    constexpr Rect kNothing = { 0, 0, 0, 0 };
    GetClip(fgDrawingClipRgnH);
    ClipRect(&kNothing);
}

void DrawingOn()
{
    if (!fgDrawingClipRgnH)
        return;
    SetClip(fgDrawingClipRgnH);
    DisposeRgn(fgDrawingClipRgnH);
    fgDrawingClipRgnH = nullptr;
}

void FlushPortDirtyRegion(CGrafPtr inPort)
{
    QDFlushPortBuffer(inPort, nullptr);
}

void FlushWindowDirtyRegion(WindowRef inWindow)
{
    if (inWindow)
        QDFlushPortBuffer(GetWindowPort(inWindow), nullptr);
}
