// The pixels behind a BitMap or a PixMap, whoever made it. Begin with FindPixels.
#ifndef LAMPBLACK_QUICKDRAW_MAPS_H
#define LAMPBLACK_QUICKDRAW_MAPS_H

#include "ColorTables.h"
#include "PortRecord.h"

namespace lampblack::quickdraw {

struct MapPixels {
    Surface surface;            // without base when there are none; no column is beyond a row's end
    PortRecord* port = nullptr; // whose map it is
    SpacePointer colors;        // what keeps the surface's colours
};

// Answers paramErr for a map that no memory can have (without address, with rows of no length, a reversed
// rectangle, or words at odd places) and cDepthErr for a depth that does not exist. A port or a screen
// without pixels is no error.
QDErr FindPixels(const BitMap*, MapPixels* outPixels);

} // namespace lampblack::quickdraw

#endif
