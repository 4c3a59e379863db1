// Pixels encoded as JPEG and PNG files. Begin with EncodeImage.
#ifndef LAMPBLACK_IMAGES_IMAGEWRITER_H
#define LAMPBLACK_IMAGES_IMAGEWRITER_H

#include "ByteSink.h"

#include <Carbon/ImageCompression.h>
#include <quickdraw/Surface.h>

#include <vector>

namespace lampblack::images {

// The rows of a part of a surface as 0x00RRGGBB words, where they lie when the surface has such.
class PixelRows {
public:
    // The part must lie within the surface's bounds.
    PixelRows(const quickdraw::Surface&, const Rect& part);

    int Width() const { return fPart.right - fPart.left; }
    int Height() const { return fPart.bottom - fPart.top; }

    // Good until the next call that asks for another row.
    const uint32_t* Row(int inRow);

private:
    const quickdraw::Surface& fSurface;
    Rect fPart;
    std::vector<uint32_t> fScratch;
};

// Errors of both: memFullErr; cantOpenHandler  the library is not there.
OSStatus EncodeJpeg(PixelRows&, CodecQ, ByteSink*);
OSStatus EncodePng(PixelRows&, CodecQ, ByteSink*);

// libjpeg's quality, 1 to 100, for a quality of image compression.
int JpegQualityOf(CodecQ);

} // namespace lampblack::images

#endif
