// Playing a picture's bytes, for floors and tools that have them in no handle. Begin with PlayPicture.
#ifndef LAMPBLACK_PICTURES_PLAYBACK_H
#define LAMPBLACK_PICTURES_PLAYBACK_H

#include <Carbon/Quickdraw.h>
#include <foundation/BigEndian.h>

namespace lampblack::pictures {

// Whether the bytes are a picture as a resource holds it: size, frame, version.
bool IsPicture(foundation::Bytes);

// The frame that a picture says it has; empty for bytes that are too short.
Rect FrameOf(foundation::Bytes picture);

// DrawPicture, and what QDError would say afterwards.
QDErr PlayPicture(foundation::Bytes picture, const Rect& frame);

// Picture files hold 512 bytes for their maker's use and then the picture. The picture in a file (one without
// those bytes will do); empty when there is none.
foundation::Bytes PictureInFile(foundation::Bytes file);
inline constexpr size_t kPictureFileHeader = 512;

} // namespace lampblack::pictures

#endif
