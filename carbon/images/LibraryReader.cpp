// TIFF and BMP data, by SDL_image. It decodes an image whole, when its first row is asked for.
#include "Headers.h"
#include "Libraries.h"

#include <algorithm>
#include <array>

namespace lampblack::images {

namespace {

constexpr uint32_t kColorBits = 0x00FFFFFF, kAlphaBits = 0xFF000000;

struct FreeSurface {
    void operator()(SDL_Surface* inSurface) const { SDL_FreeSurface(inSurface); }
};
using SurfacePtr = std::unique_ptr<SDL_Surface, FreeSurface>;
using Loader = SDL_Surface* (*)(SDL_RWops*);

// The TIFF library gives colours that are multiplied by alpha.
uint32_t Unmultiplied(uint32_t inPixel)
{
    const uint32_t alpha = inPixel >> 24;
    if (alpha == 0 || alpha == 255)
        return inPixel;
    const auto whole = [alpha](uint32_t channel) {
        return std::min(255u, (channel * 255 + alpha / 2) / alpha);
    };
    return alpha << 24 | whole(inPixel >> 16 & 0xFF) << 16 | whole(inPixel >> 8 & 0xFF) << 8 |
           whole(inPixel & 0xFF);
}

class LibraryReader final : public ImageReader {
public:
    LibraryReader(Bytes inBytes, Loader inLoader, bool inIsMultiplied, const ImageFacts& inFacts)
        : fBytes(inBytes), fLoader(inLoader), fIsMultiplied(inIsMultiplied)
    {
        fFacts = inFacts;
    }
    int Read(uint32_t* const* outRows, int inCount) override;

private:
    bool Decode();
    void FindColors();
    void ConvertRow(int inRow, uint32_t* outRow) const;

    Bytes fBytes;
    Loader fLoader;
    bool fIsMultiplied;
    SurfacePtr fSurface;
    std::array<uint32_t, 256> fColors = {}; // of indexed pixels
    int fRow = 0;
};

void LibraryReader::FindColors()
{
    const SDL_Palette* palette = fSurface->format->palette;
    for (int i = 0; palette && i < std::min(palette->ncolors, 256); ++i) {
        const SDL_Color& color = palette->colors[i];
        fColors[(size_t)i] = kAlphaBits | (uint32_t)color.r << 16 | (uint32_t)color.g << 8 | color.b;
    }
}

bool LibraryReader::Decode()
{
    if (fBytes.size() > 0x7FFFFFFF)
        return false;
    SDL_RWops* stream = SDL_RWFromConstMem(fBytes.data(), (int)fBytes.size());
    if (!stream)
        return false;
    fSurface.reset(fLoader(stream));
    SDL_RWclose(stream);
    if (!fSurface || !fSurface->pixels || fSurface->w != fFacts.width || fSurface->h != fFacts.height)
        return false;
    if (fSurface->format->BytesPerPixel == 1)
        FindColors();
    return true;
}

void LibraryReader::ConvertRow(int inRow, uint32_t* outRow) const
{
    const auto* from = static_cast<const uint8_t*>(fSurface->pixels) + (ptrdiff_t)inRow * fSurface->pitch;
    if (fSurface->format->BytesPerPixel == 1)
        for (int i = 0; i < fFacts.width; ++i)
            outRow[i] = fColors[from[i]];
    else
        SDL_ConvertPixels(fFacts.width, 1, fSurface->format->format, from, fSurface->pitch,
                          SDL_PIXELFORMAT_ARGB8888, outRow, fFacts.width * 4);
    for (int i = 0; i < fFacts.width && !fFacts.hasAlpha; ++i)
        outRow[i] &= kColorBits;
    for (int i = 0; i < fFacts.width && fFacts.hasAlpha && fIsMultiplied; ++i)
        outRow[i] = Unmultiplied(outRow[i]);
}

int LibraryReader::Read(uint32_t* const* outRows, int inCount)
{
    if (fError || fRow >= fFacts.height)
        return 0;
    if (!fSurface && !Decode()) {
        fError = codecBadDataErr;
        return 0;
    }
    const int count = std::min(inCount, fFacts.height - fRow);
    for (int i = 0; i < count; ++i)
        ConvertRow(fRow++, outRows[i]);
    return count;
}

OSStatus MakeReader(OSStatus inError, Bytes inBytes, Loader ImageLibrary::*inLoader,
                    const ImageFacts& inFacts, ImageReaderPtr* outReader)
{
    if (inError)
        return inError;
    const ImageLibrary* library = LoadImageLibrary();
    if (!library)
        return cantOpenHandler;
    *outReader = std::make_unique<LibraryReader>(inBytes, library->*inLoader,
                                                 inLoader == &ImageLibrary::loadTiff, inFacts);
    return noErr;
}

} // namespace

OSStatus OpenTiff(Bytes inBytes, CodecQ, ImageReaderPtr* outReader)
{
    ImageFacts facts;
    const OSStatus error = ReadTiffHeader(inBytes, &facts);
    return MakeReader(error, inBytes, &ImageLibrary::loadTiff, facts, outReader);
}

OSStatus OpenBmp(Bytes inBytes, CodecQ, ImageReaderPtr* outReader)
{
    ImageFacts facts;
    const OSStatus error = ReadBmpHeader(inBytes, &facts);
    return MakeReader(error, inBytes, &ImageLibrary::loadBmp, facts, outReader);
}

} // namespace lampblack::images
