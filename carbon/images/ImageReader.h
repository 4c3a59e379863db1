// Images as rows of pixels, read from the bytes of a file. Begin with IdentifyImage and OpenImage.
#ifndef LAMPBLACK_IMAGES_IMAGEREADER_H
#define LAMPBLACK_IMAGES_IMAGEREADER_H

#include <Carbon/ImageCompression.h>
#include <foundation/BigEndian.h>

#include <memory>
#include <string_view>

namespace lampblack::images {

using foundation::Bytes;

// What a header says.
struct ImageFacts {
    int width = 0, height = 0;
    short depth = 24; // as an ImageDescription has it
    bool hasAlpha = false;
    Fixed hRes = 72 << 16, vRes = 72 << 16;
};

// Larger images are refused before any memory is taken for them.
inline constexpr int kMaxSide = 32767;
inline constexpr int64_t kMaxPixels = int64_t(1) << 26;

inline OSStatus CheckSize(int64_t width, int64_t height)
{
    if (width <= 0 || height <= 0)
        return codecBadDataErr;
    return width <= kMaxSide && height <= kMaxSide && width * height <= kMaxPixels ? noErr : memFullErr;
}

class ImageReader {
public:
    virtual ~ImageReader() = default;
    const ImageFacts& Facts() const { return fFacts; }

    // Read
    //
    // Decodes the next rows, one or more and inCount at most, each of Facts().width words: 0x00RRGGBB or,
    // where there is alpha, 0xAARRGGBB, not premultiplied. Answers how many. 0 before the last row: the data
    // is damaged or ends, and Error says so.
    virtual int Read(uint32_t* const* outRows, int inCount) = 0;

    OSStatus Error() const { return fError; }

protected:
    ImageFacts fFacts;
    OSStatus fError = noErr;
};

using ImageReaderPtr = std::unique_ptr<ImageReader>;

// The importer's subtype for these bytes, which may be only the first 1,024 of a file; 0 for none. Targa
// files have no mark and are not told by this: MayBeTarga says whether the bytes make sense as one.
OSType IdentifyImage(Bytes);
bool MayBeTarga(Bytes);
inline constexpr size_t kIdentifyingBytes = 1024;

// How an importer's data is called when it is within a picture.
struct Codec {
    OSType subType;
    CodecType type;
    std::string_view name;
};
const Codec& CodecOf(OSType inSubType);
OSType SubTypeOfCodec(OSType inType); // 0 for none

// OpenImage
//
// Reads the header of an image of a known subtype; all but 'PICT' are. The bytes must last as long as the
// reader.
//
// Errors:     codecBadDataErr  not of that format; memFullErr  too large, or no memory; cantOpenHandler  the
//             library that decodes the format is not there.
OSStatus OpenImage(OSType inSubType, Bytes, CodecQ, ImageReaderPtr* outReader);

OSStatus OpenJpeg(Bytes, CodecQ, ImageReaderPtr* outReader);
OSStatus OpenPng(Bytes, CodecQ, ImageReaderPtr* outReader);
OSStatus OpenGif(Bytes, CodecQ, ImageReaderPtr* outReader);
OSStatus OpenTiff(Bytes, CodecQ, ImageReaderPtr* outReader);
OSStatus OpenBmp(Bytes, CodecQ, ImageReaderPtr* outReader);
OSStatus OpenTarga(Bytes, CodecQ, ImageReaderPtr* outReader);

} // namespace lampblack::images

#endif
