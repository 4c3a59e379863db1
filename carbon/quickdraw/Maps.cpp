// Pixel maps of ports, of the screen and of the application's own making.
#include "Maps.h"

#include "Devices.h"

#include <Carbon/MacErrors.h>

namespace lampblack::quickdraw {

static constexpr int kRowBytesBits = 0x3FFF;

// What GetQDGlobalsScreenBits gave is no longer than a BitMap, and is no map of one bit.
static bool IsScreen(const BitMap& inMap)
{
    if (inMap.rowBytes >= 0)
        return false;
    const PixMap& screen = ScreenMap();
    return inMap.baseAddr == screen.baseAddr && EqualRect(&inMap.bounds, &screen.bounds);
}

// Rows may be shorter than the bounds say.
static void CutColumns(Surface& ioSurface)
{
    Rect& r = ioSurface.bounds;
    r.right = (short)std::min<int>(r.right, r.left + ioSurface.rowBytes * 8 / ioSurface.depth);
}

static bool IsAligned(const Surface& s)
{
    const uintptr_t places = reinterpret_cast<uintptr_t>(s.base) | (uintptr_t)s.rowBytes;
    return s.depth < 16 || places % (s.depth / 8) == 0;
}

static QDErr FindOwnPixels(const BitMap& inMap, MapPixels* outPixels)
{
    Surface& s = outPixels->surface;
    const bool isPixMap = inMap.rowBytes < 0;
    s.base = reinterpret_cast<uint8_t*>(inMap.baseAddr);
    s.rowBytes = inMap.rowBytes & kRowBytesBits;
    s.depth = isPixMap ? reinterpret_cast<const PixMap&>(inMap).pixelSize : 1;
    s.bounds = inMap.bounds;
    if (!IsDepth(s.depth))
        return cDepthErr;
    if (!s.base || s.rowBytes == 0 || s.bounds.right < s.bounds.left || s.bounds.bottom < s.bounds.top ||
        !IsAligned(s))
        return paramErr;
    CutColumns(s);
    if (isPixMap && s.depth <= 8)
        outPixels->colors = SpaceOf(reinterpret_cast<const PixMap&>(inMap).pmTable, outPixels->surface.depth);
    s.colors = outPixels->colors.get();
    return noErr;
}

QDErr FindPixels(const BitMap* inMap, MapPixels* outPixels)
{
    // A port's own map is read from the port, so that nothing written into the visible record can mislead.
    if (PortRecord* port = FindPortOfMap(inMap)) {
        outPixels->port = port;
        outPixels->surface = port->Pixels();
        return noErr;
    }
    if (!IsScreen(*inMap))
        return FindOwnPixels(*inMap, outPixels);
    const PixMap& screen = ScreenMap();
    outPixels->surface = { reinterpret_cast<uint8_t*>(screen.baseAddr), screen.rowBytes & kRowBytesBits, 32,
                           screen.bounds, nullptr };
    if (outPixels->surface.base)
        CutColumns(outPixels->surface);
    return noErr;
}

} // namespace lampblack::quickdraw
