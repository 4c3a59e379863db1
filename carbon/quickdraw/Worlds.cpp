// Offscreen graphics worlds.
#include "Copying.h"
#include "Devices.h"
#include "PortRecord.h"

#include <Carbon/MacErrors.h>

#include <cstring>

using namespace lampblack::quickdraw;

namespace lampblack::quickdraw {

static QDErr CheckWorld(short inDepth, const Rect* inBounds)
{
    if (!inBounds || IsEmpty(*inBounds))
        return paramErr;
    if (inDepth != 0 && inDepth != 32)
        return cDepthErr;
    return CanHoldPixels(inBounds->right - inBounds->left, inBounds->bottom - inBounds->top)
               ? (QDErr)noErr
               : (QDErr)paramErr;
}

static void TakeBounds(PortRecord& ioPort, const Rect& inBounds)
{
    ioPort.SetMapBounds(inBounds);
    ioPort.fBounds = inBounds;
    ioPort.fVisible.SetRect(inBounds);
    ioPort.ClippingChanged();
    MoveWorldDevice(ioPort.fDevice, inBounds);
}

static PixelStorage PixelsFor(const Rect& inBounds)
{
    return NewPixels(inBounds.right - inBounds.left, inBounds.bottom - inBounds.top);
}

static bool SameSize(const Rect& a, const Rect& b)
{
    return a.right - a.left == b.right - b.left && a.bottom - a.top == b.bottom - b.top;
}

// Brings old pixels into new storage, as the flags wish.
static void CarryOver(const PortRecord& from, uint8_t* inStorage, const Rect& bounds, GWorldFlags flags)
{
    const int width = bounds.right - bounds.left, height = bounds.bottom - bounds.top;
    const int oldWidth = from.RowPixels(), oldHeight = from.fSurface.bounds.bottom - from.fSurface.bounds.top;
    const auto* pixels = reinterpret_cast<const uint32_t*>(from.fSurface.base);
    auto* to = reinterpret_cast<uint32_t*>(inStorage);
    if (flags & stretchPix)
        Stretch(pixels, oldWidth, oldWidth, oldHeight, to, width, width, height);
    else if (flags & clipPix)
        for (int row = 0; row < std::min(height, oldHeight); ++row)
            std::memcpy(to + (size_t)row * width, pixels + (size_t)row * oldWidth,
                        (size_t)std::min(width, oldWidth) * 4);
}

static PortRecord* FindWorld(GWorldPtr inWorld)
{
    PortRecord* port = FindPort(inWorld);
    return port && port->fKind == PortKind::World ? port : nullptr;
}

static GWorldFlags Failed(QDErr inError)
{
    SetQDError(inError);
    return (GWorldFlags)gwFlagErr;
}

} // namespace lampblack::quickdraw

QDErr NewGWorld(GWorldPtr* offscreenGWorld, short PixelDepth, const Rect* boundsRect, CTabHandle,
                GDHandle aGDevice, GWorldFlags flags)
{
    if (!offscreenGWorld)
        return paramErr;
    *offscreenGWorld = nullptr;
    QDErr error = CheckWorld(PixelDepth, boundsRect);
    PixelStorage pixels = error ? nullptr : PixelsFor(*boundsRect);
    if (!error && !pixels)
        error = cNoMemErr;
    SetQDError(error);
    if (error)
        return error;
    PortRecord* port = NewPortRecord(PortKind::World);
    const bool sharesDevice = (flags & noNewDevice) && IsDevice(aGDevice);
    port->fDevice = sharesDevice ? nullptr : NewWorldDevice(&port->fMapPointer, *boundsRect);
    port->fPixelState = flags & (pixPurge | pixelsPurgeable);
    port->SetPixels(std::move(pixels), *boundsRect);
    TakeBounds(*port, *boundsRect);
    *offscreenGWorld = ReferenceOf(port);
    return noErr;
}

GWorldFlags UpdateGWorld(GWorldPtr* offscreenGWorld, short pixelDepth, const Rect* boundsRect, CTabHandle,
                         GDHandle, GWorldFlags flags)
{
    PortRecord* port = offscreenGWorld ? FindWorld(*offscreenGWorld) : nullptr;
    const QDErr error = port ? CheckWorld(pixelDepth, boundsRect) : (QDErr)paramErr;
    if (error)
        return Failed(error);
    SetQDError(noErr);
    if (SameSize(port->fSurface.bounds, *boundsRect)) {
        TakeBounds(*port, *boundsRect);
        return 0;
    }
    PixelStorage pixels = PixelsFor(*boundsRect);
    if (!pixels)
        return Failed(cNoMemErr);
    CarryOver(*port, pixels.get(), *boundsRect, flags);
    const bool newRows = port->RowPixels() != boundsRect->right - boundsRect->left;
    port->SetPixels(std::move(pixels), *boundsRect);
    TakeBounds(*port, *boundsRect);
    return reallocPix | (newRows ? (GWorldFlags)newRowBytes : 0) | (flags & (clipPix | stretchPix));
}

void DisposeGWorld(GWorldPtr offscreenGWorld)
{
    if (PortRecord* port = FindWorld(offscreenGWorld))
        DeletePortRecord(port);
}

void GetGWorld(CGrafPtr* port, GDHandle* gdh)
{
    if (port)
        *port = ReferenceOf(CurrentPort());
    if (gdh)
        *gdh = GetGDevice();
}

void SetGWorld(CGrafPtr port, GDHandle gdh)
{
    const PortRecord* record = FindPort(port);
    SetPort(port);
    SetGDevice(record && record->fDevice ? record->fDevice : gdh);
}

GDHandle GetGWorldDevice(GWorldPtr offscreenGWorld)
{
    const PortRecord* port = FindPort(offscreenGWorld);
    if (!port)
        return nullptr;
    return port->fDevice ? port->fDevice : GetMainDevice();
}

PixMapHandle GetGWorldPixMap(GWorldPtr offscreenGWorld)
{
    return GetPortPixMap(offscreenGWorld);
}

Boolean LockPixels(PixMapHandle pm)
{
    PortRecord* port = FindPort(pm);
    if (!port || !port->fSurface.base)
        return false;
    port->fPixelState |= pixelsLocked;
    return true;
}

void UnlockPixels(PixMapHandle pm)
{
    if (PortRecord* port = FindPort(pm))
        port->fPixelState &= ~(GWorldFlags)pixelsLocked;
}

void AllowPurgePixels(PixMapHandle pm)
{
    if (PortRecord* port = FindPort(pm))
        port->fPixelState |= pixelsPurgeable;
}

void NoPurgePixels(PixMapHandle pm)
{
    if (PortRecord* port = FindPort(pm))
        port->fPixelState &= ~(GWorldFlags)pixelsPurgeable;
}

GWorldFlags GetPixelsState(PixMapHandle pm)
{
    const PortRecord* port = FindPort(pm);
    return port ? port->fPixelState & (pixelsLocked | pixelsPurgeable) : 0;
}

void SetPixelsState(PixMapHandle pm, GWorldFlags state)
{
    if (PortRecord* port = FindPort(pm))
        port->fPixelState = state & (pixelsLocked | pixelsPurgeable);
}

Ptr GetPixBaseAddr(PixMapHandle pm)
{
    const PortRecord* port = FindPort(pm);
    return port ? reinterpret_cast<Ptr>(port->fSurface.base) : nullptr;
}

SInt32 GetPixRowBytes(PixMapHandle pm)
{
    const PortRecord* port = FindPort(pm);
    return port ? port->fSurface.rowBytes : 0;
}

Rect* GetPixBounds(PixMapHandle pm, Rect* bounds)
{
    if (!bounds)
        return nullptr;
    const PortRecord* port = FindPort(pm);
    *bounds = port ? port->fSurface.bounds : Rect{ 0, 0, 0, 0 };
    return bounds;
}

short GetPixDepth(PixMapHandle pm)
{
    const PortRecord* port = FindPort(pm);
    return port ? port->fMap.pixelSize : (short)0;
}

Boolean PixMap32Bit(PixMapHandle pm)
{
    return FindPort(pm) != nullptr;
}

SInt32 OffscreenVersion(void)
{
    return 0x00000130;
}
