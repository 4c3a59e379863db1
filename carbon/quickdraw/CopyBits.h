// Copying between maps, shared by the calls that copy. Begin with CopyPixels.
#ifndef LAMPBLACK_QUICKDRAW_COPYBITS_H
#define LAMPBLACK_QUICKDRAW_COPYBITS_H

#include "CopyJob.h"
#include "Maps.h"

namespace lampblack::quickdraw {

struct CopiedPixels;

CopyColors CopyColorsOf(const PortRecord*); // null: black on white

// CopyBits after its arguments were looked at. Rectangles may be empty, surfaces without pixels.
void CopyPixels(const MapPixels& from, const MapPixels& to, const Rect& fromRect, const Rect& toRect,
                short mode, const Region* mask);

// Tells the picture that is open in a port of what is copied there. Answers whether nothing shall be drawn.
bool TellRecorder(const PortRecord* to, const CopiedPixels&);

} // namespace lampblack::quickdraw

#endif
