// Pixels encoded as PNG, by libpng, and the rows that both encoders take.
#include "ImageWriter.h"

#include <png.h>

#include <csetjmp>

namespace lampblack::images {

PixelRows::PixelRows(const quickdraw::Surface& inSurface, const Rect& inPart)
    : fSurface(inSurface), fPart(inPart)
{
    if (inSurface.depth != 32)
        fScratch.resize((size_t)Width());
}

const uint32_t* PixelRows::Row(int inRow)
{
    const int v = fPart.top + inRow;
    if (fScratch.empty())
        return reinterpret_cast<const uint32_t*>(fSurface.RowAt(v)) + (fPart.left - fSurface.bounds.left);
    quickdraw::ReadColors(fSurface, v, fPart.left, Width(), fScratch.data());
    return fScratch.data();
}

namespace {

class PngWriter {
public:
    explicit PngWriter(ByteSink* inSink) : fSink(inSink) {}
    ~PngWriter() { png_destroy_write_struct(&fPng, &fInfo); }
    PngWriter(const PngWriter&) = delete;
    PngWriter& operator=(const PngWriter&) = delete;

    bool Start(int inWidth, int inHeight);
    bool Write(const uint32_t* inRow);
    bool Finish();

private:
    [[noreturn]] static void Escape(png_structp inPng, png_const_charp)
    {
        std::longjmp(static_cast<PngWriter*>(png_get_error_ptr(inPng))->fEscape, 1);
    }
    static void Ignore(png_structp, png_const_charp) {}
    static void TakeBytes(png_structp inPng, png_bytep inBytes, size_t inCount)
    {
        if (!static_cast<PngWriter*>(png_get_io_ptr(inPng))->fSink->Append(inBytes, inCount))
            png_error(inPng, "no memory");
    }
    static void Flush(png_structp) {}

    ByteSink* fSink;
    png_structp fPng = nullptr;
    png_infop fInfo = nullptr;
    std::jmp_buf fEscape;
};

bool PngWriter::Start(int inWidth, int inHeight)
{
    fPng = png_create_write_struct(PNG_LIBPNG_VER_STRING, this, Escape, Ignore);
    fInfo = fPng ? png_create_info_struct(fPng) : nullptr;
    if (!fInfo || setjmp(fEscape))
        return false;
    png_set_write_fn(fPng, this, TakeBytes, Flush);
    png_set_IHDR(fPng, fInfo, (png_uint_32)inWidth, (png_uint_32)inHeight, 8, PNG_COLOR_TYPE_RGB,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(fPng, fInfo);
    png_set_filler(fPng, 0, PNG_FILLER_AFTER); // the fourth byte of a pixel is left out
    png_set_bgr(fPng);
    return true;
}

bool PngWriter::Write(const uint32_t* inRow)
{
    if (setjmp(fEscape))
        return false;
    png_write_row(fPng, reinterpret_cast<png_const_bytep>(inRow));
    return true;
}

bool PngWriter::Finish()
{
    if (setjmp(fEscape))
        return false;
    png_write_end(fPng, fInfo);
    return true;
}

} // namespace

OSStatus EncodePng(PixelRows& ioRows, CodecQ, ByteSink* outBytes)
{
    PngWriter writer(outBytes);
    bool isGood = writer.Start(ioRows.Width(), ioRows.Height());
    for (int row = 0; isGood && row < ioRows.Height(); ++row)
        isGood = writer.Write(ioRows.Row(row));
    return isGood && writer.Finish() ? (OSStatus)noErr : (OSStatus)memFullErr;
}

} // namespace lampblack::images
