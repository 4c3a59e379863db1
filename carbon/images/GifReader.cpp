// GIF data: the first frame, on its canvas. SDL_image takes whatever follows the pixels of a frame for more
// frames of any size, so that these few lines stand in for it.
#include "ImageReader.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

namespace lampblack::images {

namespace {

constexpr uint8_t kExtension = 0x21, kFrame = 0x2C, kGraphicControl = 0xF9;
constexpr uint32_t kAlphaBits = 0xFF000000;
constexpr int kMaxCodes = 4096;

// A reader of little-endian fields that never passes the end.
class Fields {
public:
    explicit Fields(Bytes inBytes) : fRest(inBytes) {}
    bool Ok() const { return fOk; }
    Bytes Rest() const { return fRest; }
    uint8_t U8()
    {
        const Bytes byte = Take(1);
        return byte.empty() ? 0 : byte[0];
    }
    int U16()
    {
        const int low = U8();
        return U8() << 8 | low;
    }
    // All of them, or none and no more after it.
    Bytes Take(size_t inCount)
    {
        fOk = fOk && inCount <= fRest.size();
        const Bytes taken = fOk ? fRest.first(inCount) : Bytes();
        fRest = fOk ? fRest.subspan(inCount) : Bytes();
        return taken;
    }

private:
    Bytes fRest;
    bool fOk = true;
};

// A code of as many bits as are asked for, out of blocks that each begin with their length.
class Codes {
public:
    explicit Codes(Bytes inBlocks) : fBlocks(inBlocks) {}

    // -1 at the end.
    int Next(int inBits)
    {
        while (fCount < inBits) {
            if (fBlock.empty() && !NextBlock())
                return -1;
            fHeld |= (uint32_t)fBlock[0] << fCount;
            fBlock = fBlock.subspan(1);
            fCount += 8;
        }
        const int code = (int)(fHeld & ((1u << inBits) - 1));
        fHeld >>= inBits;
        fCount -= inBits;
        return code;
    }

private:
    bool NextBlock()
    {
        const size_t size = fBlocks.empty() ? 0 : std::min<size_t>(fBlocks[0], fBlocks.size() - 1);
        fBlock = size ? fBlocks.subspan(1, size) : Bytes();
        fBlocks = size ? fBlocks.subspan(1 + size) : Bytes();
        return size > 0;
    }

    Bytes fBlocks, fBlock;
    uint32_t fHeld = 0;
    int fCount = 0;
};

// Answers how many of the indexes came.
size_t Unpack(Codes& ioCodes, int inBits, std::vector<uint8_t>* outIndexes)
{
    std::array<uint16_t, kMaxCodes> before; // the code of all but the last index
    std::array<uint8_t, kMaxCodes> last;
    std::array<uint8_t, kMaxCodes + 1> string;
    const int clear = 1 << inBits, end = clear + 1;
    int bits = inBits + 1, free = end + 1, previous = -1;
    uint8_t first = 0;
    size_t done = 0;
    while (done < outIndexes->size()) {
        const int code = ioCodes.Next(bits);
        if (code == clear) {
            bits = inBits + 1;
            free = end + 1;
            previous = -1;
            continue;
        }
        if (code < 0 || code == end || code > free || (previous < 0 && code > end) ||
            (code == free && previous < 0))
            break;
        size_t length = 0;
        int at = code;
        if (code == free) { // the string before, and its first index once more
            string[length++] = first;
            at = previous;
        }
        for (; at > end; at = before[(size_t)at])
            string[length++] = last[(size_t)at];
        first = (uint8_t)at;
        string[length++] = first;
        while (length > 0 && done < outIndexes->size())
            (*outIndexes)[done++] = string[--length];
        if (previous >= 0 && free < kMaxCodes) {
            before[(size_t)free] = (uint16_t)previous;
            last[(size_t)free++] = first;
            bits += free == 1 << bits && bits < 12;
        }
        previous = code;
    }
    return done;
}

class GifReader final : public ImageReader {
public:
    OSStatus Open(Bytes);
    int Read(uint32_t* const* outRows, int inCount) override;

private:
    bool FindFrame(Fields&);
    void SkipExtension(Fields&);
    void TakeColors(Bytes);
    OSStatus TakeFacts(int inWidth, int inHeight);
    void Decode();
    void FillRow(int inRow, uint32_t* outRow) const;

    std::array<uint32_t, 256> fColors = {};
    int fTransparent = -1;
    int fLeft = 0, fTop = 0, fWidth = 0, fHeight = 0; // of the frame
    bool fIsInterlaced = false, fIsDecoded = false;
    int fBits = 0;
    Bytes fBlocks;
    std::vector<uint8_t> fIndexes;
    std::vector<int> fRowOf; // which decoded row is shown in each row of the frame; -1: none came
    int fRow = 0;
};

void GifReader::SkipExtension(Fields& ioFields)
{
    const uint8_t kind = ioFields.U8();
    while (const uint8_t size = ioFields.U8()) {
        const Bytes block = ioFields.Take(size);
        if (kind == kGraphicControl && block.size() == 4)
            fTransparent = block[0] & 1 ? block[3] : -1;
    }
}

bool GifReader::FindFrame(Fields& ioFields)
{
    while (ioFields.Ok()) {
        const uint8_t block = ioFields.U8();
        if (block == kFrame)
            return ioFields.Ok();
        if (block != kExtension)
            return false;
        SkipExtension(ioFields);
    }
    return false;
}

void GifReader::TakeColors(Bytes inTable)
{
    for (size_t i = 0; i + 2 < inTable.size(); i += 3)
        fColors[i / 3] =
            kAlphaBits | (uint32_t)inTable[i] << 16 | (uint32_t)inTable[i + 1] << 8 | inTable[i + 2];
}

static size_t TableSize(uint8_t inFlags)
{
    return inFlags & 0x80 ? (size_t)3 << ((inFlags & 7) + 1) : 0;
}

OSStatus GifReader::TakeFacts(int inWidth, int inHeight)
{
    if (fWidth == 0 || fHeight == 0)
        return codecBadDataErr;
    // A canvas without a size, or one smaller than its frame, is seen in files that hold one image only.
    fFacts.width = std::max(inWidth, fLeft + fWidth);
    fFacts.height = std::max(inHeight, fTop + fHeight);
    fFacts.depth = 8;
    fFacts.hasAlpha = fTransparent >= 0 || fWidth < fFacts.width || fHeight < fFacts.height;
    if (fTransparent >= 0)
        fColors[(size_t)fTransparent] = 0;
    return CheckSize(fFacts.width, fFacts.height);
}

OSStatus GifReader::Open(Bytes inBytes)
{
    Fields fields(inBytes);
    fields.Take(6);
    const int width = fields.U16(), height = fields.U16();
    const uint8_t flags = fields.U8();
    fields.Take(2);
    std::fill(fColors.begin(), fColors.end(), kAlphaBits);
    TakeColors(fields.Take(TableSize(flags)));
    if (!FindFrame(fields))
        return codecBadDataErr;
    fLeft = fields.U16();
    fTop = fields.U16();
    fWidth = fields.U16();
    fHeight = fields.U16();
    const uint8_t frameFlags = fields.U8();
    fIsInterlaced = frameFlags & 0x40;
    TakeColors(fields.Take(TableSize(frameFlags)));
    fBits = fields.U8();
    fBlocks = fields.Rest();
    if (!fields.Ok() || fBits < 1 || fBits > 8)
        return codecBadDataErr;
    return TakeFacts(width, height);
}

void GifReader::Decode()
{
    fIsDecoded = true;
    fIndexes.resize((size_t)fWidth * (size_t)fHeight);
    Codes codes(fBlocks);
    const int rows = (int)(Unpack(codes, fBits, &fIndexes) / (size_t)fWidth);
    fRowOf.assign((size_t)fHeight, -1);
    static constexpr int kPasses[4][2] = { { 0, 8 }, { 4, 8 }, { 2, 4 }, { 1, 2 } };
    int decoded = 0;
    for (int pass = 0; pass < 4 && fIsInterlaced; ++pass)
        for (int row = kPasses[pass][0]; row < fHeight && decoded < rows; row += kPasses[pass][1])
            fRowOf[(size_t)row] = decoded++;
    for (int row = 0; row < rows && !fIsInterlaced; ++row)
        fRowOf[(size_t)row] = row;
    // A row between others that did not come is shown as the one above it.
    for (int row = 1; row < fHeight && fIsInterlaced; ++row)
        if (fRowOf[(size_t)row] < 0)
            fRowOf[(size_t)row] = fRowOf[(size_t)row - 1];
    fError = rows < fHeight ? codecBadDataErr : noErr;
}

void GifReader::FillRow(int inRow, uint32_t* outRow) const
{
    std::memset(outRow, 0, (size_t)fFacts.width * 4);
    const int row = inRow - fTop;
    if (row < 0 || row >= fHeight || fRowOf[(size_t)row] < 0)
        return;
    const uint8_t* indexes = fIndexes.data() + (size_t)fRowOf[(size_t)row] * (size_t)fWidth;
    const uint32_t bits = fFacts.hasAlpha ? 0xFFFFFFFF : ~kAlphaBits;
    for (int i = 0; i < fWidth; ++i)
        outRow[fLeft + i] = fColors[indexes[i]] & bits;
}

int GifReader::Read(uint32_t* const* outRows, int inCount)
{
    if (!fIsDecoded)
        Decode();
    // Of an opaque image that ends early there are no more rows; a transparent one is whole without them.
    int done = 0;
    while (done < inCount && fRow < fFacts.height && (fFacts.hasAlpha || fRowOf[(size_t)fRow] >= 0))
        FillRow(fRow++, outRows[done++]);
    return done;
}

} // namespace

OSStatus OpenGif(Bytes inBytes, CodecQ, ImageReaderPtr* outReader)
{
    auto reader = std::make_unique<GifReader>();
    const OSStatus error = reader->Open(inBytes);
    if (!error)
        *outReader = std::move(reader);
    return error;
}

} // namespace lampblack::images
