// The seam to the decoders of compressed images within pictures, which stand above this floor.
#ifndef LAMPBLACK_PICTURES_COMPRESSEDIMAGES_H
#define LAMPBLACK_PICTURES_COMPRESSEDIMAGES_H

#include <foundation/BigEndian.h>

#include <memory>

namespace lampblack::pictures {

struct CompressedImage {
    OSType type;                   // 'jpeg', 'png ', 'gif ', 'tiff' ...
    int width, height;             // as the description claims; the data know better
    foundation::Bytes description; // the published image description, big-endian, with its extensions
    foundation::Bytes data;
};

// Rows from top to bottom without slack.
struct DecodedImage {
    int width = 0, height = 0;
    std::unique_ptr<uint32_t[]> pixels; // 0xAARRGGBB, not premultiplied
    bool hasAlpha = false;              // false: the alpha bytes mean nothing
};

// Answers false for a type it does not know, for data that it cannot read, for dimensions that it refuses and
// without memory.
using ImageDecoder = bool (*)(const CompressedImage&, DecodedImage* out);

// There is one; the newest stays. 'raw ' and 'rle ' never reach it.
void SetImageDecoder(ImageDecoder);

} // namespace lampblack::pictures

#endif
