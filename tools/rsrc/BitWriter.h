// Appends fields of any number of bits, the highest bit first.
#ifndef LAMPBLACK_RSRC_BITWRITER_H
#define LAMPBLACK_RSRC_BITWRITER_H

#include <cstdint>
#include <string_view>
#include <vector>

namespace lampblack::rsrc {

class BitWriter {
public:
    uint64_t Bits() const { return fBits; }
    bool OnByte() const { return fBits % 8 == 0; }
    std::vector<uint8_t>& Data() { return fData; }
    const std::vector<uint8_t>& Data() const { return fData; }

    void Append(uint64_t inValue, int inBits)
    {
        Zeros((uint64_t)inBits);
        Overwrite(fBits - (uint64_t)inBits, inValue, inBits);
    }

    void Zeros(uint64_t inBits)
    {
        fBits += inBits;
        fData.resize((fBits + 7) / 8);
    }

    // Replaces bits that were appended before.
    void Overwrite(uint64_t inAt, uint64_t inValue, int inBits)
    {
        for (int i = 0; i < inBits; ++i) {
            const uint64_t bit = inAt + (uint64_t)i;
            const uint8_t mask = (uint8_t)(0x80 >> bit % 8);
            const bool set = inValue >> (inBits - 1 - i) & 1;
            fData[bit / 8] = (uint8_t)(set ? fData[bit / 8] | mask : fData[bit / 8] & ~mask);
        }
    }

    // On a byte boundary only.
    void AppendBytes(std::string_view inBytes)
    {
        fData.insert(fData.end(), inBytes.begin(), inBytes.end());
        fBits += 8 * inBytes.size();
    }

private:
    std::vector<uint8_t> fData;
    uint64_t fBits = 0;
};

} // namespace lampblack::rsrc

#endif
