// Targa data: indexed, direct and grey pixels, plain or in runs, whose first one may be in any corner.
#include "Headers.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace lampblack::images {

namespace {

constexpr size_t kHeader = 18;
constexpr uint32_t kAlphaBits = 0xFF000000;
constexpr uint8_t kFromRight = 0x10, kFromTop = 0x20;
constexpr uint8_t kRuns = 8, kIndexed = 1;

uint32_t U16(Bytes inBytes, size_t inAt)
{
    return __builtin_bswap16(foundation::ReadBE16(inBytes, inAt));
}

uint32_t Wide(uint32_t inFive)
{
    return (inFive & 31) << 3 | (inFive & 31) >> 2;
}

// Grey, five bits a channel, or bytes.
uint32_t ColorAt(const uint8_t* inAt, uint32_t inBits)
{
    if (inBits == 8)
        return inAt[0] * 0x010101u;
    if (inBits >= 24)
        return (inBits == 32 ? (uint32_t)inAt[3] << 24 : 0) | (uint32_t)inAt[2] << 16 |
               (uint32_t)inAt[1] << 8 | inAt[0];
    const uint32_t word = (uint32_t)(inAt[1] << 8 | inAt[0]);
    return Wide(word >> 10) << 16 | Wide(word >> 5) << 8 | Wide(word);
}

// The pixels as they are stored, one after the other.
class Pixels {
public:
    Pixels(Bytes inData, size_t inSize, bool inIsRuns) : fRest(inData), fSize(inSize), fIsRuns(inIsRuns) {}

    // Null where the data end.
    const uint8_t* Next()
    {
        if (!fIsRuns)
            return Take(fSize);
        if (fLeft == 0 && !NextPacket())
            return nullptr;
        --fLeft;
        return fRepeated ? fRepeated : Take(fSize);
    }

private:
    const uint8_t* Take(size_t inCount)
    {
        if (fRest.size() < inCount)
            return nullptr;
        const uint8_t* taken = fRest.data();
        fRest = fRest.subspan(inCount);
        return taken;
    }
    bool NextPacket()
    {
        const uint8_t* head = Take(1);
        fLeft = head ? (*head & 0x7F) + 1 : 0;
        fRepeated = head && (*head & 0x80) ? Take(fSize) : nullptr;
        return head && (fRepeated || !(*head & 0x80));
    }

    Bytes fRest;
    size_t fSize;
    bool fIsRuns;
    int fLeft = 0;
    const uint8_t* fRepeated = nullptr;
};

struct FreeWhole {
    void operator()(uint32_t* inPixels) const { std::free(inPixels); }
};

// The rows are decoded when the first one is asked for, since that may be the last one of the data.
class TargaReader final : public ImageReader {
public:
    TargaReader(Bytes inBytes, const ImageFacts& inFacts) : fBytes(inBytes) { fFacts = inFacts; }
    int Read(uint32_t* const* outRows, int inCount) override;

private:
    Bytes DataAfterColors();
    void Decode();
    bool DecodeRow(Pixels&, uint32_t* outRow) const;
    uint32_t ColorOf(const uint8_t* inPixel) const
    {
        return fIsIndexed ? fColors[*inPixel] : ColorAt(inPixel, fBits);
    }

    Bytes fBytes;
    bool fIsIndexed = false;
    uint32_t fBits = 0;
    std::array<uint32_t, 256> fColors = {};
    std::unique_ptr<uint32_t[], FreeWhole> fWhole;
    int fRow = 0;
};

// A name and a table of colours, which indexes count from a number of its own, may be before the pixels.
Bytes TargaReader::DataAfterColors()
{
    const bool hasTable = fBytes[1] == 1;
    const uint32_t first = U16(fBytes, 3), count = hasTable ? U16(fBytes, 5) : 0, bits = fBytes[7];
    const size_t size = (bits + 7) / 8, start = kHeader + fBytes[0];
    const Bytes table = foundation::Slice(fBytes, start, count * size);
    for (size_t i = 0; i < table.size() / std::max<size_t>(size, 1); ++i)
        if (first + i < fColors.size())
            fColors[first + i] = ColorAt(table.data() + i * size, bits) & ~kAlphaBits;
    const size_t end = start + count * size;
    return end < fBytes.size() ? fBytes.subspan(end) : Bytes();
}

bool TargaReader::DecodeRow(Pixels& ioPixels, uint32_t* outRow) const
{
    const uint32_t keep = fFacts.hasAlpha ? ~0u : ~kAlphaBits;
    for (int h = 0; h < fFacts.width; ++h) {
        const uint8_t* pixel = ioPixels.Next();
        if (!pixel)
            return false;
        outRow[h] = ColorOf(pixel) & keep;
    }
    if (fBytes[17] & kFromRight)
        std::reverse(outRow, outRow + fFacts.width);
    return true;
}

void TargaReader::Decode()
{
    const size_t width = (size_t)fFacts.width, height = (size_t)fFacts.height;
    fWhole.reset(static_cast<uint32_t*>(std::calloc(width * height, sizeof(uint32_t))));
    fIsIndexed = (fBytes[2] & ~kRuns) == kIndexed;
    fBits = fBytes[16];
    Pixels pixels(DataAfterColors(), (fBits + 7) / 8, fBytes[2] & kRuns);
    if (!fWhole) {
        fError = memFullErr;
        return;
    }
    const bool isFromTop = fBytes[17] & kFromTop;
    for (size_t row = 0; row < height; ++row)
        if (!DecodeRow(pixels, fWhole.get() + (isFromTop ? row : height - 1 - row) * width)) {
            fError = codecBadDataErr;
            return;
        }
}

int TargaReader::Read(uint32_t* const* outRows, int inCount)
{
    if (!fWhole && !fError)
        Decode();
    const int count = fWhole ? std::min(inCount, fFacts.height - fRow) : 0;
    for (int i = 0; i < count; ++i, ++fRow)
        std::copy_n(fWhole.get() + (size_t)fRow * (size_t)fFacts.width, fFacts.width, outRows[i]);
    return count;
}

} // namespace

OSStatus OpenTarga(Bytes inBytes, CodecQ, ImageReaderPtr* outReader)
{
    ImageFacts facts;
    const OSStatus error = ReadTargaHeader(inBytes, &facts);
    if (!error)
        *outReader = std::make_unique<TargaReader>(inBytes, facts);
    return error;
}

} // namespace lampblack::images
