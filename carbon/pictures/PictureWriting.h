// Writing of pixel maps, colours and rows as pictures hold them.
#ifndef LAMPBLACK_PICTURES_PICTUREWRITING_H
#define LAMPBLACK_PICTURES_PICTUREWRITING_H

#include <foundation/BigEndian.h>
#include <quickdraw/Surface.h>

namespace lampblack::pictures {

using foundation::BigEndianWriter;

void WriteRect(const Rect&, BigEndianWriter&);
void WriteColor(const RGBColor&, BigEndianWriter&);

// The row bytes that the columns of a rectangle have in a picture: even, and for direct pixels without slack.
int PictureRowBytes(int depth, int width);

// A pixel map from its row bytes on, for the pixels of a surface that lie in a rectangle.
void WriteMapHeader(const quickdraw::Surface&, const Rect&, BigEndianWriter&);
void WriteColorTable(const quickdraw::Surface&, BigEndianWriter&); // of its depth, in order of the indexes

// The rows of a rectangle, which must lie inside the surface: packed unless they are shorter than 8 bytes.
// The data of a compressed image (0x8200): a part of pixels as 'raw ' colours under a matte of their alpha,
// shown in a rectangle.
struct ArgbPixels;
void WriteMattedImage(const ArgbPixels&, const Rect& part, const Rect& to, BigEndianWriter&);

void WriteRows(const quickdraw::Surface&, const Rect&, BigEndianWriter&);

} // namespace lampblack::pictures

#endif
