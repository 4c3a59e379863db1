// The headers of TIFF, BMP and Targa. They are read here first, so that nothing absurd reaches the libraries,
// and so that the size of an image is known without decoding it.
#ifndef LAMPBLACK_IMAGES_HEADERS_H
#define LAMPBLACK_IMAGES_HEADERS_H

#include "ImageReader.h"

namespace lampblack::images {

// Errors: codecBadDataErr; memFullErr.
OSStatus ReadTiffHeader(Bytes, ImageFacts* outFacts);
OSStatus ReadBmpHeader(Bytes, ImageFacts* outFacts);
OSStatus ReadTargaHeader(Bytes, ImageFacts* outFacts);

} // namespace lampblack::images

#endif
