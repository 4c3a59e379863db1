// BinHex 4.0 decoding. The work is bounded by the length of the text, and what it may unfold to by the
// lengths that the header inside it announces.
#include "BinHex.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

namespace lampblack::files {

using foundation::BigEndianReader;

namespace {

constexpr std::string_view kIntroduction = "(This file must be converted with BinHex";
constexpr size_t kLargestIntroduction = 16384; // a mail's head may stand before it
constexpr uint8_t kRunMark = 0x90;
constexpr uint8_t kSkip = 0xFE, kStop = 0xFF;

constexpr std::array<uint8_t, 256> MakeValues()
{
    constexpr std::string_view kLetters = kBinHexLetters;
    std::array<uint8_t, 256> values = {};
    values.fill(kStop);
    for (size_t i = 0; i < kLetters.size(); ++i)
        values[(uint8_t)kLetters[i]] = (uint8_t)i;
    for (const char space : { '\r', '\n', '\t', ' ' })
        values[(uint8_t)space] = kSkip;
    return values;
}

constexpr std::array<uint8_t, 256> kValues = MakeValues();

// The bytes behind the letters, with their runs unfolded, one at a time.
class Decoder {
public:
    explicit Decoder(Bytes inCoded) : fCoded(inCoded) {}

    // Appends bytes until outBytes holds that many; false when the text ends before.
    bool DecodeTo(size_t inCount, std::vector<uint8_t>* outBytes)
    {
        while (outBytes->size() < inCount) {
            const std::optional<uint8_t> byte = NextByte();
            if (!byte)
                return false;
            outBytes->push_back(*byte);
        }
        return true;
    }

private:
    std::optional<uint8_t> NextByte()
    {
        if (fRun) {
            --fRun;
            return fLast;
        }
        for (;;) {
            const std::optional<uint8_t> byte = NextPacked();
            if (byte != kRunMark) {
                fLast = byte.value_or(fLast);
                return byte;
            }
            const std::optional<uint8_t> count = NextPacked();
            if (!count)
                return std::nullopt;
            if (*count == 0)
                return fLast = kRunMark;
            if (*count > 1) { // the byte itself was the first of the run
                fRun = (size_t)*count - 2;
                return fLast;
            }
        }
    }

    std::optional<uint8_t> NextPacked()
    {
        while (fBits < 8) {
            const uint8_t value = fAt < fCoded.size() ? kValues[fCoded[fAt]] : kStop;
            if (value == kStop)
                return std::nullopt;
            ++fAt;
            if (value == kSkip)
                continue;
            fBuffer = fBuffer << 6 | value;
            fBits += 6;
        }
        fBits -= 8;
        return (uint8_t)(fBuffer >> fBits);
    }

    Bytes fCoded;
    size_t fAt = 0;
    uint32_t fBuffer = 0;
    int fBits = 0;
    uint8_t fLast = 0;
    size_t fRun = 0;
};

struct Header {
    size_t length = 0; // with its check sum
    size_t dataLength = 0, resourceLength = 0;
};

Header TakeHeader(Bytes inHeader, Container* ioContainer)
{
    BigEndianReader reader(inHeader);
    ioContainer->name = std::string(reader.ReadPascal());
    reader.Skip(1); // the version
    ioContainer->hasFinderInfo = true;
    ioContainer->finderInfo.fdType = reader.U32();
    ioContainer->finderInfo.fdCreator = reader.U32();
    ioContainer->finderInfo.fdFlags = reader.U16();
    Header header;
    header.dataLength = reader.U32();
    header.resourceLength = reader.U32();
    const uint16_t sum = Crc16(inHeader.first(reader.Offset()));
    if (sum != reader.U16())
        ioContainer->problems.push_back("the check sum of the BinHex header is wrong");
    header.length = inHeader.size();
    return header;
}

// A fork and the check sum behind it.
Bytes TakeFork(Bytes inDecoded, size_t inOffset, size_t inLength, const char* inName, Container* ioContainer)
{
    if (!foundation::Fits(inOffset, inLength + 2, inDecoded.size())) {
        ioContainer->problems.push_back(std::string("the ") + inName + " fork in BinHex is cut off");
        return {};
    }
    const Bytes fork = inDecoded.subspan(inOffset, inLength);
    if (Crc16(fork) != foundation::LoadBE16(fork.data() + inLength))
        ioContainer->problems.push_back(std::string("the check sum of the ") + inName +
                                        " fork in BinHex is wrong");
    return fork;
}

} // namespace

size_t FindBinHex(Bytes inBytes)
{
    const std::string_view text((const char*)inBytes.data(), std::min(inBytes.size(), kLargestIntroduction));
    const size_t introduction = text.find(kIntroduction);
    if (introduction == std::string_view::npos)
        return 0;
    const size_t lineEnd = text.find_first_of("\r\n", introduction);
    const size_t colon = text.find(':', lineEnd);
    return lineEnd == std::string_view::npos || colon == std::string_view::npos ? 0 : colon + 1;
}

Container ReadBinHex(Bytes inCoded)
{
    Container container;
    container.form = Form::BinHex;
    std::vector<uint8_t>& decoded = container.decoded;
    Decoder decoder(inCoded);
    const bool hasHeader = decoder.DecodeTo(1, &decoded) && decoder.DecodeTo(22u + decoded[0], &decoded);
    if (!hasHeader) {
        container.problems.push_back("the BinHex header is cut off");
        return container;
    }
    const Header header = TakeHeader(decoded, &container);
    if (!container.problems.empty())
        return container; // lengths that cannot be believed are not decoded
    decoder.DecodeTo(header.length + header.dataLength + 2 + header.resourceLength + 2, &decoded);
    container.hasDataFork = container.hasResourceFork = true;
    container.dataFork = TakeFork(decoded, header.length, header.dataLength, "data", &container);
    container.resourceFork = TakeFork(decoded, header.length + header.dataLength + 2, header.resourceLength,
                                      "resource", &container);
    return container;
}

} // namespace lampblack::files
