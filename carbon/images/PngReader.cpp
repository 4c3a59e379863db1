// PNG data, by libpng. The library leaves by a jump where it cannot go on; every call into it is made from a
// function of its own that holds nothing to be destroyed.
#include "ImageReader.h"

#include <png.h>

#include <algorithm>
#include <csetjmp>
#include <cstring>
#include <new>
#include <vector>

namespace lampblack::images {

namespace {

constexpr size_t kSignature = 8;

class PngReader final : public ImageReader {
public:
    explicit PngReader(Bytes inBytes) : fRest(inBytes) {}
    ~PngReader() override { png_destroy_read_struct(&fPng, &fInfo, nullptr); }

    OSStatus Open();
    int Read(uint32_t* const* outRows, int inCount) override;

private:
    static void TakeBytes(png_structp, png_bytep outBytes, size_t inCount);
    [[noreturn]] static void Escape(png_structp, png_const_charp);
    static void Ignore(png_structp, png_const_charp) {}

    bool ReadHeader();
    bool Start();
    bool ReadRow(uint32_t* outRow);
    bool ReadPasses();
    bool StartReading();
    void TakeFacts();

    Bytes fRest;
    png_structp fPng = nullptr;
    png_infop fInfo = nullptr;
    std::jmp_buf fEscape;
    std::unique_ptr<uint32_t[]> fWhole; // of an interlaced image
    int fRow = 0;
    bool fStarted = false;
};

void PngReader::Escape(png_structp inPng, png_const_charp)
{
    std::longjmp(static_cast<PngReader*>(png_get_error_ptr(inPng))->fEscape, 1);
}

void PngReader::TakeBytes(png_structp inPng, png_bytep outBytes, size_t inCount)
{
    Bytes& rest = static_cast<PngReader*>(png_get_io_ptr(inPng))->fRest;
    if (inCount > rest.size())
        png_error(inPng, "end of data");
    std::memcpy(outBytes, rest.data(), inCount);
    rest = rest.subspan(inCount);
}

bool PngReader::ReadHeader()
{
    if (setjmp(fEscape))
        return false;
    png_set_user_limits(fPng, kMaxSide, kMaxSide);
    png_set_read_fn(fPng, this, TakeBytes);
    png_read_info(fPng, fInfo);
    return true;
}

static Fixed ResolutionOf(uint32_t inPerMetre)
{
    return inPerMetre == 0 || inPerMetre > 1200000 ? 72 << 16
                                                   : (Fixed)((uint64_t)inPerMetre * 254 * 65536 / 10000);
}

void PngReader::TakeFacts()
{
    const int type = png_get_color_type(fPng, fInfo), bits = png_get_bit_depth(fPng, fInfo);
    fFacts.width = (int)png_get_image_width(fPng, fInfo);
    fFacts.height = (int)png_get_image_height(fPng, fInfo);
    fFacts.hasAlpha = (type & PNG_COLOR_MASK_ALPHA) || png_get_valid(fPng, fInfo, PNG_INFO_tRNS);
    fFacts.depth = fFacts.hasAlpha                   ? 32
                   : type == PNG_COLOR_TYPE_GRAY     ? (short)(32 + std::min(bits, 8))
                   : (type & PNG_COLOR_MASK_PALETTE) ? (short)bits
                                                     : 24;
    fFacts.hRes = ResolutionOf(png_get_x_pixels_per_meter(fPng, fInfo));
    fFacts.vRes = ResolutionOf(png_get_y_pixels_per_meter(fPng, fInfo));
}

OSStatus PngReader::Open()
{
    fPng = png_create_read_struct(PNG_LIBPNG_VER_STRING, this, Escape, Ignore);
    fInfo = fPng ? png_create_info_struct(fPng) : nullptr;
    if (!fInfo)
        return memFullErr;
    // A side that is out of bounds ends the reading in the library: it is told apart here.
    if (Bytes header = foundation::Slice(fRest, kSignature + 8, 8); !header.empty())
        if (const OSStatus error =
                CheckSize(foundation::ReadBE32(header, 0), foundation::ReadBE32(header, 4)))
            return error;
    if (!ReadHeader())
        return codecBadDataErr;
    TakeFacts();
    return CheckSize(fFacts.width, fFacts.height);
}

// Every kind of image comes out as blue, green, red and alpha, or a zero byte.
bool PngReader::Start()
{
    if (setjmp(fEscape))
        return false;
    png_set_expand(fPng);
    png_set_scale_16(fPng);
    png_set_gray_to_rgb(fPng);
    png_set_bgr(fPng);
    if (!fFacts.hasAlpha)
        png_set_filler(fPng, 0, PNG_FILLER_AFTER);
    png_set_interlace_handling(fPng);
    png_read_update_info(fPng, fInfo);
    return png_get_rowbytes(fPng, fInfo) == (size_t)fFacts.width * 4;
}

bool PngReader::ReadRow(uint32_t* outRow)
{
    if (setjmp(fEscape))
        return false;
    png_read_row(fPng, reinterpret_cast<png_bytep>(outRow), nullptr);
    return true;
}

// Each pass shows the image a little finer, so that one that ends early is there as a whole and coarse.
bool PngReader::ReadPasses()
{
    if (setjmp(fEscape))
        return false;
    for (int pass = 0; pass < PNG_INTERLACE_ADAM7_PASSES; ++pass)
        for (int row = 0; row < fFacts.height; ++row)
            png_read_row(fPng, nullptr,
                         reinterpret_cast<png_bytep>(fWhole.get() + (size_t)row * (size_t)fFacts.width));
    return true;
}

bool PngReader::StartReading()
{
    fStarted = true;
    if (!Start())
        fError = codecBadDataErr;
    else if (png_get_interlace_type(fPng, fInfo) != PNG_INTERLACE_NONE) {
        fWhole.reset(new (std::nothrow) uint32_t[(size_t)fFacts.width * (size_t)fFacts.height]());
        fError = fWhole ? ReadPasses() ? noErr : codecBadDataErr : memFullErr;
        return fWhole != nullptr;
    }
    return fError == noErr;
}

int PngReader::Read(uint32_t* const* outRows, int inCount)
{
    if ((!fStarted && !StartReading()) || fRow >= fFacts.height || (fError && !fWhole))
        return 0;
    int done = 0;
    for (; done < std::min(inCount, fFacts.height - fRow); ++done) {
        if (fWhole)
            std::memcpy(outRows[done], fWhole.get() + (size_t)(fRow + done) * (size_t)fFacts.width,
                        (size_t)fFacts.width * 4);
        else if (!ReadRow(outRows[done])) {
            fError = codecBadDataErr;
            break;
        }
    }
    fRow += done;
    return done;
}

} // namespace

OSStatus OpenPng(Bytes inBytes, CodecQ, ImageReaderPtr* outReader)
{
    auto reader = std::make_unique<PngReader>(inBytes);
    const OSStatus error = reader->Open();
    if (!error)
        *outReader = std::move(reader);
    return error;
}

} // namespace lampblack::images
