// The pixels of a world, or of a map of the application's own: their state, place and shape.
#include "ColorTables.h"
#include "PortRecord.h"

using namespace lampblack::quickdraw;

namespace lampblack::quickdraw {

static constexpr GWorldFlags kPixelStates = pixelsPurgeable | pixelsLocked;

static void ChangeState(PixMapHandle inMap, GWorldFlags inSet, GWorldFlags inClear)
{
    if (PortRecord* port = FindPort(inMap))
        port->fPixelState = (port->fPixelState & ~inClear) | inSet;
}

} // namespace lampblack::quickdraw

PixMapHandle GetGWorldPixMap(GWorldPtr offscreenGWorld)
{
    return GetPortPixMap(offscreenGWorld);
}

Boolean LockPixels(PixMapHandle pm)
{
    if (PortRecord* port = FindPort(pm)) {
        port->fPixelState |= pixelsLocked;
        return port->fMap.baseAddr != nullptr;
    }
    const PixMap* map = FindPixMap(pm);
    return map && map->baseAddr;
}

void UnlockPixels(PixMapHandle pm)
{
    ChangeState(pm, 0, pixelsLocked);
}

void AllowPurgePixels(PixMapHandle pm)
{
    ChangeState(pm, pixelsPurgeable, 0);
}

void NoPurgePixels(PixMapHandle pm)
{
    ChangeState(pm, 0, pixelsPurgeable);
}

GWorldFlags GetPixelsState(PixMapHandle pm)
{
    const PortRecord* port = FindPort(pm);
    return port ? port->fPixelState & kPixelStates : 0;
}

void SetPixelsState(PixMapHandle pm, GWorldFlags state)
{
    ChangeState(pm, state & kPixelStates, kPixelStates);
}

Ptr GetPixBaseAddr(PixMapHandle pm)
{
    if (const PortRecord* port = FindPort(pm))
        return reinterpret_cast<Ptr>(port->fSurface.base);
    const PixMap* map = FindPixMap(pm);
    return map ? map->baseAddr : nullptr;
}

SInt32 GetPixRowBytes(PixMapHandle pm)
{
    const PixMap* map = FindPixMap(pm);
    return map ? map->rowBytes & 0x3FFF : 0;
}

Rect* GetPixBounds(PixMapHandle pm, Rect* bounds)
{
    if (!bounds)
        return nullptr;
    const PixMap* map = FindPixMap(pm);
    *bounds = map ? map->bounds : Rect{ 0, 0, 0, 0 };
    return bounds;
}

short GetPixDepth(PixMapHandle pm)
{
    const PixMap* map = FindPixMap(pm);
    return map ? map->pixelSize : (short)0;
}

Boolean PixMap32Bit(PixMapHandle pm)
{
    return FindPixMap(pm) != nullptr;
}

SInt32 OffscreenVersion(void)
{
    return 0x00000130;
}
