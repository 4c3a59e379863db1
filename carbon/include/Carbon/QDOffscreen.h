// Offscreen graphics worlds: a port with its own pixels and device. Begin with NewGWorld and SetGWorld.
// Quickdraw.h includes this.
#ifndef LAMPBLACK_CARBON_QDOFFSCREEN_H
#define LAMPBLACK_CARBON_QDOFFSCREEN_H

#include <Carbon/Quickdraw.h>

typedef unsigned long GWorldFlags;

enum {
    pixPurge = 1L << 0,
    noNewDevice = 1L << 1,
    useTempMem = 1L << 2,
    keepLocal = 1L << 3,
    pixelsPurgeable = 1L << 6,
    pixelsLocked = 1L << 7,
    mapPix = 1L << 16,
    newDepth = 1L << 17,
    alignPix = 1L << 18,
    newRowBytes = 1L << 19,
    reallocPix = 1L << 20,
    clipPix = 1L << 28,
    stretchPix = 1L << 29,
    ditherPix = 1L << 30,
    gwFlagErr = 1L << 31
};

LAMPBLACK_BEGIN_C

// NewGWorld
//
// Makes an offscreen world whose port bounds are boundsRect and whose first pixels are black. PixelDepth is
// 32, or 0 for the deepest device. aGDevice is taken only with noNewDevice; cTable, NULL by default, is of no
// use to direct pixels.
//
// Ownership:  the caller owns *offscreenGWorld; release it with DisposeGWorld.
// Errors:     paramErr   a NULL or empty rectangle, a NULL result, a row longer than a PixMap can say
//             cDepthErr  a depth that is none;  cNoMemErr  no memory. *offscreenGWorld is NULL then.
QDErr NewGWorld(GWorldPtr* offscreenGWorld, short PixelDepth, const Rect* boundsRect, CTabHandle cTable,
                GDHandle aGDevice, GWorldFlags flags);

// UpdateGWorld
//
// Changes bounds (and depth) of a world. Pixels are kept with clipPix, stretched to the new size with
// stretchPix, and black otherwise; a world that only moves keeps them in any case. Answers what changed,
// or gwFlagErr, and QDError says why.
GWorldFlags UpdateGWorld(GWorldPtr* offscreenGWorld, short pixelDepth, const Rect* boundsRect,
                         CTabHandle cTable, GDHandle aGDevice, GWorldFlags flags);

void DisposeGWorld(GWorldPtr offscreenGWorld);

// The current port and device. A world brings its own device; any other port takes gdh, or the main device
// when gdh is NULL.
void GetGWorld(CGrafPtr* port, GDHandle* gdh);
void SetGWorld(CGrafPtr port, GDHandle gdh);
GDHandle GetGWorldDevice(GWorldPtr offscreenGWorld);

PixMapHandle GetGWorldPixMap(GWorldPtr offscreenGWorld);

// LockPixels answers false for a reference that is no port's pixel map. Pixels here never move and are never
// purged, but the state is kept as it was set.
Boolean LockPixels(PixMapHandle pm);
void UnlockPixels(PixMapHandle pm);
void AllowPurgePixels(PixMapHandle pm);
void NoPurgePixels(PixMapHandle pm);
GWorldFlags GetPixelsState(PixMapHandle pm);
void SetPixelsState(PixMapHandle pm, GWorldFlags state);
Ptr GetPixBaseAddr(PixMapHandle pm); // NULL for a reference that is no port's pixel map
SInt32 GetPixRowBytes(PixMapHandle pm);
Rect* GetPixBounds(PixMapHandle pm, Rect* bounds);
short GetPixDepth(PixMapHandle pm);
Boolean PixMap32Bit(PixMapHandle pm);
SInt32 OffscreenVersion(void);

LAMPBLACK_END_C

#endif
