// Pixel patterns as pictures hold them: a type, the old pattern, and a colour or a pixel map with its table
// and rows.
#ifndef LAMPBLACK_PICTURES_PIXELPATTERNS_H
#define LAMPBLACK_PICTURES_PIXELPATTERNS_H

#include <Carbon/Quickdraw.h>
#include <foundation/BigEndian.h>

namespace lampblack::pictures {

// A new pattern; null for what is none, and without memory. The reader is left behind it.
PixPatHandle ReadPixelPattern(foundation::BigEndianReader&);

// Appends a live pattern; false for one that has no pixels, of which nothing is written.
bool WritePixelPattern(PixPatHandle, foundation::BigEndianWriter&);

} // namespace lampblack::pictures

#endif
