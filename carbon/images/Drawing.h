// Drawing of decoded images into the current port. Begin with DrawImage.
#ifndef LAMPBLACK_IMAGES_DRAWING_H
#define LAMPBLACK_IMAGES_DRAWING_H

#include "ImageReader.h"

#include <quickdraw/Region.h>

namespace lampblack::images {

struct Placement {
    Rect bounds; // where all of the image would come to
    Rect part;   // what of it is shown, in its own coordinates; within them, and not empty
    SInt32 mode = ditherCopy;
    RGBColor opColor = { 0, 0, 0 };
    const quickdraw::Region* clip = nullptr; // beside that of the port; null: none
};

// Where the part comes to; never empty.
Rect PlaceOf(const Placement&, int width, int height);

// DrawImage
//
// Rows go straight into a port of depth 32 that shows all of an opaque image in its own size; all else is
// made aside in the size it has on the destination and copied from there.
//
// Errors:     codecBadDataErr, memFullErr  as the reader has them: what was decoded is drawn.
OSStatus DrawImage(ImageReader&, const Placement&);

// Colours and clip of the current port set for copying, and put back at the end.
class StCopyState {
public:
    [[nodiscard]] StCopyState(const Placement&);
    ~StCopyState();
    StCopyState(const StCopyState&) = delete;
    StCopyState& operator=(const StCopyState&) = delete;

private:
    RGBColor fFore, fBack, fOperand;
    quickdraw::Region fClip;
};

} // namespace lampblack::images

#endif
