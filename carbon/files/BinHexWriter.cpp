// BinHex 4.0 encoding: the header and both forks with their check sums, run-length coded, six bits a letter.
#include "BinHex.h"
#include "ContainerWriter.h"

#include <string_view>

namespace lampblack::files {

using foundation::BigEndianWriter;

namespace {

constexpr char kIntroduction[] = "(This file must be converted with BinHex 4.0)\n\n";
constexpr uint8_t kRunMark = 0x90;
constexpr size_t kLineLength = 64;
constexpr size_t kLongestRun = 255, kShortestRun = 4; // a shorter run is no shorter when coded

class Encoder {
public:
    Encoder()
    {
        fText.assign(kIntroduction, kIntroduction + sizeof kIntroduction - 1);
        PutLetter(':');
    }

    void Put(Bytes inBytes)
    {
        for (size_t at = 0; at < inBytes.size();) {
            size_t run = 1;
            while (run < kLongestRun && at + run < inBytes.size() && inBytes[at + run] == inBytes[at])
                ++run;
            PutRun(inBytes[at], run);
            at += run;
        }
    }

    std::vector<uint8_t> Finish()
    {
        if (fBits > 0)
            PutLetter(kBinHexLetters[(fBuffer << (6 - fBits)) & 0x3F]);
        PutLetter(':');
        fText.push_back('\n');
        return std::move(fText);
    }

private:
    void PutRun(uint8_t inByte, size_t inCount)
    {
        const bool coded = inCount >= kShortestRun;
        for (size_t i = 0; i < (coded ? 1 : inCount); ++i) {
            PutPacked(inByte);
            if (inByte == kRunMark)
                PutPacked(0);
        }
        if (coded) {
            PutPacked(kRunMark);
            PutPacked((uint8_t)inCount);
        }
    }

    void PutPacked(uint8_t inByte)
    {
        fBuffer = fBuffer << 8 | inByte;
        for (fBits += 8; fBits >= 6; fBits -= 6)
            PutLetter(kBinHexLetters[fBuffer >> (fBits - 6) & 0x3F]);
    }

    void PutLetter(char inLetter)
    {
        if (fColumn == kLineLength) {
            fText.push_back('\n');
            fColumn = 0;
        }
        fText.push_back((uint8_t)inLetter);
        ++fColumn;
    }

    std::vector<uint8_t> fText;
    size_t fColumn = 0;
    uint32_t fBuffer = 0;
    int fBits = 0;
};

void PutSummed(Bytes inBytes, Encoder* ioEncoder)
{
    BigEndianWriter sum;
    sum.U16(Crc16(inBytes));
    ioEncoder->Put(inBytes);
    ioEncoder->Put(sum.Data());
}

} // namespace

std::vector<uint8_t> WriteBinHex(const FileParts& inParts)
{
    BigEndianWriter header;
    header.Pascal(std::string_view(inParts.name).substr(0, 63));
    header.U8(0);
    header.U32(inParts.finderInfo.fdType);
    header.U32(inParts.finderInfo.fdCreator);
    header.U16(inParts.finderInfo.fdFlags);
    header.U32((uint32_t)inParts.dataFork.size());
    header.U32((uint32_t)inParts.resourceFork.size());
    Encoder encoder;
    PutSummed(header.Data(), &encoder);
    PutSummed(inParts.dataFork, &encoder);
    PutSummed(inParts.resourceFork, &encoder);
    return encoder.Finish();
}

} // namespace lampblack::files
