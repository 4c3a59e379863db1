// Pixel maps inside of resources: the published record in its 50 big-endian bytes, and pixels in handles.
#ifndef LAMPBLACK_QUICKDRAW_PIXMAPBYTES_H
#define LAMPBLACK_QUICKDRAW_PIXMAPBYTES_H

#include "Surface.h"

#include <foundation/BigEndian.h>

namespace lampblack::quickdraw {

// Reads the record; pointers in it become null, and *outTable is what stood in place of the colour table: its
// offset in some resources. Answers false for what is no whole map: another depth, empty bounds, rows that
// are too short for their columns or break words in two.
bool ReadPixMap(foundation::BigEndianReader&, PixMap* out, uint32_t* outTable);

// Of unpacked pixels.
size_t PixelBytesOf(const PixMap&);

// A new handle with the pixels of a map, big-endian words made native; null without memory, or when there are
// not enough bytes.
Handle NewPixelHandle(const PixMap&, foundation::Bytes bigEndian);

// The pixels of a map that are in a handle; without base when the application has changed one of the two so
// that they do not fit. Its colours are left null.
Surface SurfaceOf(const PixMap&, Handle pixels);

} // namespace lampblack::quickdraw

#endif
