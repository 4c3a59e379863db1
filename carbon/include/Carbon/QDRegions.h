// More of QuickDraw: regions as bytes and from bit maps, slopes and angles, colour cursors. Quickdraw.h
// includes this.
#ifndef LAMPBLACK_CARBON_QDREGIONS_H
#define LAMPBLACK_CARBON_QDREGIONS_H

#include <Carbon/Quickdraw.h>

// A colour cursor. crsrMap and crsrData hold its pixels; crsr1Data and crsrMask are what a black-and-white
// screen shows, and the mask is that of the colours, too.
struct CCrsr {
    short crsrType; // 0x8001 with colours, 0x8000 without
    PixMapHandle crsrMap;
    Handle crsrData;
    Handle crsrXData;
    short crsrXValid;
    Handle crsrXHandle;
    Bits16 crsr1Data;
    Bits16 crsrMask;
    Point crsrHotSpot;
    SInt32 crsrXTable;
    SInt32 crsrID;
};
typedef struct CCrsr CCrsr;
typedef CCrsr* CCrsrPtr;
typedef CCrsrPtr* CCrsrHandle;

LAMPBLACK_BEGIN_C

// BitMapToRegion
//
// Makes the region of the pixels that are set, in the coordinates of the map. A pixel map of depth 1 is fine.
//
// Errors:     paramErr          no such region, or a map without pixels or with too short rows
//             pixMapTooDeepErr  a pixel map of another depth
//             rgnTooBigErr      a region of more than 64 KB
//             The region is left as it was then, and QDError answers the same.
OSErr BitMapToRegion(RgnHandle region, const BitMap* bMap);

// RgnToHandle, HandleToRgn
//
// The region as bytes in the published form, big-endian, as resources and pictures hold it, and back.
// QDError answers what went wrong: rgnOverflowErr for more than 64 KB, paramErr for bytes that are no region
// and for bad references; nothing is changed then.
void RgnToHandle(RgnHandle region, Handle flattenedRgnDataHdl);
void HandleToRgn(Handle oldRegion, RgnHandle region);

// SlopeFromAngle, AngleFromSlope
//
// A slope is horizontal change for each row downwards, as 16.16; the angle, in degrees clockwise from
// straight up, is that of the line with this slope. SlopeFromAngle(0) is 0, (45) is -1.0, (90) the steepest
// that a Fixed can say; AngleFromSlope answers 1 to 180.
Fixed SlopeFromAngle(short angle);
short AngleFromSlope(Fixed slope);

// Colour cursors.
//
// GetCCursor reads a 'crsr' resource. Each call makes another one, which the caller owns and gives to
// DisposeCCursor; NULL when there is no such resource, or it is no colour cursor, or memory is short.
CCrsrHandle GetCCursor(short crsrID);
void SetCCursor(CCrsrHandle cCrsr); // a record that is no longer whole is left alone
void DisposeCCursor(CCrsrHandle cCrsr);

// Hides the cursor, at once if it is near the rectangle, else as soon as it moves. The rectangle is global
// with an offset of (0,0); one in local coordinates takes the top left of the bounds of the port's pixel map.
// Balance it with ShowCursor.
void ShieldCursor(const Rect* shieldRect, Point offsetPt);

LAMPBLACK_END_C

#endif
