// The decoder of compressed images within pictures.
#include "ImageReader.h"

#include <pictures/CompressedImages.h>

#include <algorithm>
#include <array>
#include <new>

namespace lampblack::images {

namespace {

constexpr int kRowsAtOnce = 16;
constexpr uint32_t kAlphaBits = 0xFF000000;

// Answers how many rows came.
int ReadAll(ImageReader& ioReader, const pictures::DecodedImage& inImage)
{
    std::array<uint32_t*, kRowsAtOnce> rows;
    int done = 0;
    for (int count = 1; count > 0 && done < inImage.height; done += count) {
        const int wanted = std::min(kRowsAtOnce, inImage.height - done);
        for (int i = 0; i < wanted; ++i)
            rows[(size_t)i] = inImage.pixels.get() + (size_t)(done + i) * (size_t)inImage.width;
        count = ioReader.Read(rows.data(), wanted);
    }
    return done;
}

// Rows that did not come are transparent, so that what is there shows.
void MarkMissing(pictures::DecodedImage* ioImage, int inRows)
{
    const size_t width = (size_t)ioImage->width, done = (size_t)inRows * width;
    if (inRows == ioImage->height)
        return;
    for (size_t i = 0; !ioImage->hasAlpha && i < done; ++i)
        ioImage->pixels[i] |= kAlphaBits;
    std::fill(ioImage->pixels.get() + done, ioImage->pixels.get() + width * (size_t)ioImage->height, 0);
    ioImage->hasAlpha = true;
}

bool Decode(const pictures::CompressedImage& inImage, pictures::DecodedImage* outImage)
{
    ImageReaderPtr reader;
    if (OpenImage(SubTypeOfCodec(inImage.type), inImage.data, codecNormalQuality, &reader))
        return false;
    const ImageFacts& facts = reader->Facts();
    outImage->width = facts.width;
    outImage->height = facts.height;
    outImage->hasAlpha = facts.hasAlpha;
    outImage->pixels.reset(new (std::nothrow) uint32_t[(size_t)facts.width * (size_t)facts.height]);
    if (!outImage->pixels)
        return false;
    const int rows = ReadAll(*reader, *outImage);
    MarkMissing(outImage, rows);
    return rows > 0;
}

// One store when the library is loaded; nothing else happens before the first picture needs it.
[[maybe_unused]] const bool gIsRegistered = (pictures::SetImageDecoder(Decode), true);

} // namespace

} // namespace lampblack::images
