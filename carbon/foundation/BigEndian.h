// Readers and writers of big-endian integers that never pass the end of their bytes. Begin at BigEndianReader
// for a sequence of fields, at ReadBE16 and its sisters for a field at a known place.
#ifndef LAMPBLACK_FOUNDATION_BIGENDIAN_H
#define LAMPBLACK_FOUNDATION_BIGENDIAN_H

#include <Carbon/MacTypes.h>

#include <cstring>
#include <span>
#include <string_view>
#include <vector>

namespace lampblack::foundation {

using Bytes = std::span<const uint8_t>;

// At a place the caller has checked.
inline uint16_t LoadBE16(const void* inAt)
{
    uint16_t value;
    std::memcpy(&value, inAt, 2);
    return __builtin_bswap16(value);
}

inline uint32_t LoadBE32(const void* inAt)
{
    uint32_t value;
    std::memcpy(&value, inAt, 4);
    return __builtin_bswap32(value);
}

inline void StoreBE16(void* outAt, uint16_t inValue)
{
    inValue = __builtin_bswap16(inValue);
    std::memcpy(outAt, &inValue, 2);
}

inline void StoreBE32(void* outAt, uint32_t inValue)
{
    inValue = __builtin_bswap32(inValue);
    std::memcpy(outAt, &inValue, 4);
}

// Swaps in place, at a place the caller has checked: big-endian to native and back.
inline void Flip16(void* ioAt)
{
    const uint16_t value = LoadBE16(ioAt);
    std::memcpy(ioAt, &value, 2);
}

inline void Flip32(void* ioAt)
{
    const uint32_t value = LoadBE32(ioAt);
    std::memcpy(ioAt, &value, 4);
}

// Whether inLength bytes from inOffset on lie within inSize, for numbers from hostile files: no sum
// overflows.
inline bool Fits(size_t inOffset, size_t inLength, size_t inSize)
{
    return inOffset <= inSize && inLength <= inSize - inOffset;
}

// The integer at an offset; 0 when it does not lie within the bytes.
inline uint8_t ReadBE8(Bytes inBytes, size_t inOffset)
{
    return Fits(inOffset, 1, inBytes.size()) ? inBytes[inOffset] : 0;
}

inline uint16_t ReadBE16(Bytes inBytes, size_t inOffset)
{
    return Fits(inOffset, 2, inBytes.size()) ? LoadBE16(inBytes.data() + inOffset) : 0;
}

inline uint32_t ReadBE32(Bytes inBytes, size_t inOffset)
{
    return Fits(inOffset, 4, inBytes.size()) ? LoadBE32(inBytes.data() + inOffset) : 0;
}

// The bytes inLength long from inOffset on; empty unless all of them are there.
inline Bytes Slice(Bytes inBytes, size_t inOffset, size_t inLength)
{
    return Fits(inOffset, inLength, inBytes.size()) ? inBytes.subspan(inOffset, inLength) : Bytes();
}

// BigEndianReader
//
// Reads field after field. A field that does not fit reads as 0, moves nothing and ends the reading: from
// then on Ok() is false and every field reads as 0, so that a whole record can be read before one check.
class BigEndianReader {
public:
    explicit BigEndianReader(Bytes inBytes, size_t inOffset = 0) : fBytes(inBytes) { Seek(inOffset); }
    BigEndianReader(const void* inData, size_t inSize) : fBytes((const uint8_t*)inData, inData ? inSize : 0)
    {
    }

    bool Ok() const { return fOk; }
    size_t Offset() const { return fOffset; }
    size_t Remaining() const { return fOk ? fBytes.size() - fOffset : 0; }

    void Seek(size_t inOffset)
    {
        fOk = fOk && inOffset <= fBytes.size();
        fOffset = fOk ? inOffset : fOffset;
    }

    void Skip(size_t inCount) { Take(inCount); }

    uint8_t U8()
    {
        const uint8_t* at = Take(1);
        return at ? *at : 0;
    }
    uint16_t U16()
    {
        const uint8_t* at = Take(2);
        return at ? LoadBE16(at) : 0;
    }
    uint32_t U32()
    {
        const uint8_t* at = Take(4);
        return at ? LoadBE32(at) : 0;
    }
    int8_t S8() { return (int8_t)U8(); }
    int16_t S16() { return (int16_t)U16(); }
    int32_t S32() { return (int32_t)U32(); }

    // Top, left, bottom, right: the order of every Rect on disk.
    Rect ReadRect()
    {
        Rect rect = { 0, 0, 0, 0 };
        rect.top = S16();
        rect.left = S16();
        rect.bottom = S16();
        rect.right = S16();
        return rect;
    }

    Point ReadPoint()
    {
        Point point = { 0, 0 };
        point.v = S16();
        point.h = S16();
        return point;
    }

    // The next bytes where they lie; empty unless all of them are there.
    Bytes ReadBytes(size_t inCount)
    {
        const uint8_t* at = Take(inCount);
        return at ? Bytes(at, inCount) : Bytes();
    }

    // A Pascal string's text where it lies, Mac Roman bytes. The length byte counts as read with it.
    std::string_view ReadPascal()
    {
        const uint8_t length = U8();
        const Bytes text = ReadBytes(length);
        return std::string_view((const char*)text.data(), text.size());
    }

private:
    const uint8_t* Take(size_t inCount)
    {
        fOk = fOk && inCount <= fBytes.size() - fOffset;
        if (!fOk)
            return nullptr;
        const uint8_t* at = fBytes.data() + fOffset;
        fOffset += inCount;
        return at;
    }

    Bytes fBytes;
    size_t fOffset = 0;
    bool fOk = true;
};

// BigEndianWriter
//
// Appends fields to bytes that grow.
class BigEndianWriter {
public:
    std::vector<uint8_t>& Data() { return fData; }
    size_t Size() const { return fData.size(); }

    void U8(uint8_t inValue) { fData.push_back(inValue); }
    void U16(uint16_t inValue) { Append<2>(inValue); }
    void U32(uint32_t inValue) { Append<4>(inValue); }
    void Zeros(size_t inCount) { fData.resize(fData.size() + inCount); }
    void Write(Bytes inBytes) { fData.insert(fData.end(), inBytes.begin(), inBytes.end()); }

    // At most 255 bytes are written.
    void Pascal(std::string_view inText)
    {
        inText = inText.substr(0, 255);
        U8((uint8_t)inText.size());
        fData.insert(fData.end(), inText.begin(), inText.end());
    }

private:
    template <int kCount>
    void Append(uint32_t inValue)
    {
        for (int shift = (kCount - 1) * 8; shift >= 0; shift -= 8)
            fData.push_back((uint8_t)(inValue >> shift));
    }

    std::vector<uint8_t> fData;
};

} // namespace lampblack::foundation

#endif
