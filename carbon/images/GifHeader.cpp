// The header of a GIF file, and the blocks before its first frame.
#include "Headers.h"

#include <algorithm>

namespace lampblack::images {

namespace {

constexpr uint8_t kExtension = 0x21, kFrame = 0x2C, kGraphicControl = 0xF9;

// A reader of little-endian fields that never passes the end.
class Fields {
public:
    explicit Fields(Bytes inBytes) : fRest(inBytes) {}
    bool Ok() const { return fOk; }
    uint8_t U8()
    {
        const uint8_t value = fRest.empty() ? 0 : fRest[0];
        Skip(1);
        return value;
    }
    int U16()
    {
        const int low = U8();
        return U8() << 8 | low;
    }
    void Skip(size_t inCount)
    {
        fOk = fOk && inCount <= fRest.size();
        fRest = fOk ? fRest.subspan(inCount) : Bytes();
    }

private:
    Bytes fRest;
    bool fOk = true;
};

void SkipTable(Fields* ioFields, uint8_t inFlags)
{
    if (inFlags & 0x80)
        ioFields->Skip((size_t)3 << ((inFlags & 7) + 1));
}

// Answers whether the extension says that the next frame has a transparent colour; false also for others.
void SkipExtension(Fields* ioFields, bool* ioIsTransparent)
{
    const uint8_t kind = ioFields->U8();
    for (bool isFirst = true; ioFields->Ok(); isFirst = false) {
        const uint8_t size = ioFields->U8();
        if (size == 0)
            return;
        if (isFirst && kind == kGraphicControl && size == 4) {
            *ioIsTransparent = ioFields->U8() & 1;
            ioFields->Skip(3);
        } else
            ioFields->Skip(size);
    }
}

bool FindFrame(Fields* ioFields, bool* outIsTransparent)
{
    *outIsTransparent = false;
    while (ioFields->Ok()) {
        const uint8_t block = ioFields->U8();
        if (block == kFrame)
            return ioFields->Ok();
        if (block != kExtension)
            return false;
        SkipExtension(ioFields, outIsTransparent);
    }
    return false;
}

} // namespace

OSStatus ReadGifHeader(Bytes inBytes, ImageFacts* outFacts, Frame* outFrame)
{
    Fields fields(inBytes);
    fields.Skip(6);
    int width = fields.U16(), height = fields.U16();
    const uint8_t flags = fields.U8();
    fields.Skip(2);
    SkipTable(&fields, flags);
    bool isTransparent = false;
    if (!FindFrame(&fields, &isTransparent))
        return codecBadDataErr;
    outFrame->left = fields.U16();
    outFrame->top = fields.U16();
    outFrame->width = fields.U16();
    outFrame->height = fields.U16();
    if (!fields.Ok())
        return codecBadDataErr;
    if (width == 0 || height == 0) { // seen in files that hold one image only
        width = outFrame->left + outFrame->width;
        height = outFrame->top + outFrame->height;
    }
    const bool isCovered =
        outFrame->left == 0 && outFrame->top == 0 && outFrame->width >= width && outFrame->height >= height;
    outFacts->width = width;
    outFacts->height = height;
    outFacts->hasAlpha = isTransparent || !isCovered;
    outFacts->depth = (short)((flags & 0x80 ? flags & 7 : 7) + 1);
    const OSStatus error = CheckSize(width, height);
    return error ? error : CheckSize(outFrame->width, outFrame->height);
}

} // namespace lampblack::images
