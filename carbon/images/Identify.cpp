// Which format bytes are of, and who reads it.
#include "Headers.h"
#include "ImageReader.h"

#include <pictures/Playback.h>

#include <cstring>
#include <new>
#include <string_view>

namespace lampblack::images {

namespace {

constexpr struct {
    std::string_view mark;
    OSType subType;
} kMarks[] = {
    { "\xFF\xD8\xFF", kQTFileTypeJPEG }, { "\x89PNG\r\n\x1A\n", kQTFileTypePNG },
    { "GIF87a", kQTFileTypeGIF },        { "GIF89a", kQTFileTypeGIF },
    { { "II*\0", 4 }, kQTFileTypeTIFF }, { { "MM\0*", 4 }, kQTFileTypeTIFF },
};

constexpr struct {
    OSType subType;
    OSStatus (*open)(Bytes, CodecQ, ImageReaderPtr*);
} kReaders[] = {
    { kQTFileTypeJPEG, OpenJpeg }, { kQTFileTypePNG, OpenPng }, { kQTFileTypeGIF, OpenGif },
    { kQTFileTypeTIFF, OpenTiff }, { kQTFileTypeBMP, OpenBmp }, { kQTFileTypeTargaImage, OpenTarga },
};

constexpr Codec kCodecs[] = {
    { kQTFileTypePicture, kQuickDrawCodecType, "PICT" },
    { kQTFileTypeJPEG, kJPEGCodecType, "Photo - JPEG" },
    { kQTFileTypePNG, kPNGCodecType, "PNG" },
    { kQTFileTypeGIF, kGIFCodecType, "GIF" },
    { kQTFileTypeTIFF, kTIFFCodecType, "TIFF" },
    { kQTFileTypeBMP, kBMPCodecType, "BMP" },
    { kQTFileTypeTargaImage, kTargaCodecType, "TGA" },
};

bool BeginsWith(Bytes inBytes, std::string_view inMark)
{
    return inBytes.size() >= inMark.size() && std::memcmp(inBytes.data(), inMark.data(), inMark.size()) == 0;
}

// Two letters are a weak mark; the size of the second header is asked, too.
bool IsBmp(Bytes inBytes)
{
    const uint32_t size = __builtin_bswap32(foundation::ReadBE32(inBytes, 14));
    return BeginsWith(inBytes, "BM") && size >= 12 && size <= 124;
}

} // namespace

OSType IdentifyImage(Bytes inBytes)
{
    for (const auto& known : kMarks)
        if (BeginsWith(inBytes, known.mark))
            return known.subType;
    if (IsBmp(inBytes))
        return kQTFileTypeBMP;
    const bool hasPicture = inBytes.size() > pictures::kPictureFileHeader &&
                            pictures::IsPicture(inBytes.subspan(pictures::kPictureFileHeader));
    return hasPicture ? (OSType)kQTFileTypePicture : 0;
}

bool MayBeTarga(Bytes inBytes)
{
    ImageFacts facts;
    return ReadTargaHeader(inBytes, &facts) == noErr;
}

const Codec& CodecOf(OSType inSubType)
{
    for (const Codec& codec : kCodecs)
        if (codec.subType == inSubType)
            return codec;
    return kCodecs[0];
}

OSType SubTypeOfCodec(OSType inType)
{
    for (const Codec& codec : kCodecs)
        if (codec.type == inType)
            return codec.subType;
    return 0;
}

OSStatus OpenImage(OSType inSubType, Bytes inBytes, CodecQ inQuality, ImageReaderPtr* outReader)
{
    const bool isTarga = inSubType == kQTFileTypeTargaImage;
    if (!isTarga && IdentifyImage(inBytes) != inSubType)
        return codecBadDataErr;
    for (const auto& known : kReaders)
        if (known.subType == inSubType)
            try {
                return known.open(inBytes, inQuality, outReader);
            } catch (const std::bad_alloc&) {
                return memFullErr;
            }
    return codecBadDataErr;
}

} // namespace lampblack::images
