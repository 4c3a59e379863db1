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
// Makes an offscreen world whose port bounds are boundsRect and whose first pixels are 0: black, or white in
// a standard table.
//
// Shape:      PixelDepth is 1, 2, 4, 8, 16 or 32, or 0 for that of the deepest device which boundsRect, then
//             global, meets. cTable says what indexes mean and is copied; NULL is the standard table of the
//             depth. aGDevice is taken only with noNewDevice and a depth other than 0.
// Flags:      pixPurge, noNewDevice. useTempMem and keepLocal change nothing here.
// Ownership:  the caller owns *offscreenGWorld; release it with DisposeGWorld.
// Errors:     paramErr   a NULL or empty rectangle, a NULL result, a row longer than a PixMap can say
//             cDepthErr  a depth that is none;  cNoMemErr  no memory. *offscreenGWorld is NULL then.
QDErr NewGWorld(GWorldPtr* offscreenGWorld, short PixelDepth, const Rect* boundsRect, CTabHandle cTable,
                GDHandle aGDevice, GWorldFlags flags);

// NewGWorldFromPtr
//
// The same over pixels of the caller, who releases them after the world. PixelFormat is a depth; rowBytes is
// at most 16,382, and whole pixels.
QDErr NewGWorldFromPtr(GWorldPtr* offscreenGWorld, UInt32 PixelFormat, const Rect* boundsRect,
                       CTabHandle cTable, GDHandle aGDevice, GWorldFlags flags, Ptr newBuffer,
                       SInt32 rowBytes);

// UpdateGWorld
//
// Changes bounds, depth and colours of a world; what NewGWorld says of depth 0 and of NULL tables holds. A
// device, if one is given, says depth and colours instead of pixelDepth and cTable. With a new size pixels are
// kept with clipPix, stretched with stretchPix, and 0 otherwise; with the old size they keep their colours in
// any case. ditherPix mixes colours that the new depth lacks.
//
// Answers what changed: mapPix, newDepth, newRowBytes, reallocPix, and the ones of the given flags that took
// effect; 0 when nothing but the place did; gwFlagErr, and QDError says why.
GWorldFlags UpdateGWorld(GWorldPtr* offscreenGWorld, short pixelDepth, const Rect* boundsRect,
                         CTabHandle cTable, GDHandle aGDevice, GWorldFlags flags);

void DisposeGWorld(GWorldPtr offscreenGWorld);

// The current port and device. A world brings its own device; any other port takes gdh, or the main device
// when gdh is NULL.
void GetGWorld(CGrafPtr* port, GDHandle* gdh);
void SetGWorld(CGrafPtr port, GDHandle gdh);
GDHandle GetGWorldDevice(GWorldPtr offscreenGWorld);

// Pixels like the screen's at a global rectangle, without a port. gdh is told the device there.
//
// Ownership:  the caller owns *offscreenPixMap; release it with DisposeScreenBuffer.
// Errors:     as NewGWorld
QDErr NewScreenBuffer(const Rect* globalRect, Boolean purgeable, GDHandle* gdh,
                      PixMapHandle* offscreenPixMap);
QDErr NewTempScreenBuffer(const Rect* globalRect, Boolean purgeable, GDHandle* gdh,
                          PixMapHandle* offscreenPixMap);
void DisposeScreenBuffer(PixMapHandle offscreenPixMap);

PixMapHandle GetGWorldPixMap(GWorldPtr offscreenGWorld);

// LockPixels answers false for what is no pixel map, or one without pixels. Pixels of ports here never move
// and are never purged, but the state is kept as it was set.
Boolean LockPixels(PixMapHandle pm);
void UnlockPixels(PixMapHandle pm);
void AllowPurgePixels(PixMapHandle pm);
void NoPurgePixels(PixMapHandle pm);
GWorldFlags GetPixelsState(PixMapHandle pm);
void SetPixelsState(PixMapHandle pm, GWorldFlags state);
Ptr GetPixBaseAddr(PixMapHandle pm); // NULL for what is no pixel map
SInt32 GetPixRowBytes(PixMapHandle pm);
Rect* GetPixBounds(PixMapHandle pm, Rect* bounds);
short GetPixDepth(PixMapHandle pm);
Boolean PixMap32Bit(PixMapHandle pm);
SInt32 OffscreenVersion(void);

LAMPBLACK_END_C

#endif
