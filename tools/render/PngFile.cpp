#include "PngFile.h"

#include <png.h>

#include <cstring>

namespace lampblack::render {

// 0xAARRGGBB as bytes.
static std::vector<uint8_t> BytesOf(const Image& inImage)
{
    std::vector<uint8_t> bytes;
    bytes.reserve(inImage.pixels.size() * 4);
    for (const uint32_t pixel : inImage.pixels)
        for (const int shift : { 16, 8, 0, 24 })
            bytes.push_back((uint8_t)(pixel >> shift));
    return bytes;
}

std::string WritePng(const Image& inImage, const std::string& inPath)
{
    png_image png;
    std::memset(&png, 0, sizeof png);
    png.version = PNG_IMAGE_VERSION;
    png.width = (png_uint_32)inImage.width;
    png.height = (png_uint_32)inImage.height;
    png.format = PNG_FORMAT_RGBA;
    const std::vector<uint8_t> bytes = BytesOf(inImage);
    if (png_image_write_to_file(&png, inPath.c_str(), 0, bytes.data(), 0, nullptr))
        return {};
    return png.message;
}

} // namespace lampblack::render
