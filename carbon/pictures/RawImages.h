// The two codings of compressed images that need no library: 'raw ' (pixels as they are) and 'rle ' (runs,
// also known as Animation), at depths 1, 2, 4, 8, 16, 24 and 32 and as 2, 4, 16 or 256 greys.
#ifndef LAMPBLACK_PICTURES_RAWIMAGES_H
#define LAMPBLACK_PICTURES_RAWIMAGES_H

#include "CompressedImages.h"

#include <vector>

namespace lampblack::pictures {

// The published image description, as far as it matters.
struct ImageDescription {
    OSType type = 0;
    int width = 0, height = 0;
    int depth = 0; // 33 and more: that many bits of grey, and 32
    int table = 0; // which colour table; 0: behind the description, -1: the standard one
    size_t dataSize = 0;
    foundation::Bytes whole;      // with its extensions
    foundation::Bytes extensions; // what is behind the 86 bytes
};

// The description where the reader stands, which is left behind it.
bool ReadImageDescription(foundation::BigEndianReader&, ImageDescription* out);

// Indexes, or 0xAARRGGBB for direct pixels, row by row.
struct PixelValues {
    int width = 0, height = 0;
    bool isDirect = false;
    int bits = 0; // of an index
    std::vector<uint32_t> values;
};

inline bool IsRawType(OSType inType)
{
    return inType == 'raw ' || inType == 'rle ';
}

// False for other types and depths, for more than 16 million pixels, and for 'raw ' data that end early. Runs
// that end early leave what follows as 0.
bool DecodeRaw(const ImageDescription&, foundation::Bytes data, PixelValues* out);

// Makes colours of indexes.
bool ColorsOf(const ImageDescription&, const PixelValues&, DecodedImage* out);

} // namespace lampblack::pictures

#endif
