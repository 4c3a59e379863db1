// The headers of BMP and Targa files.
#include "Headers.h"

#include <algorithm>
#include <initializer_list>

namespace lampblack::images {

namespace {

uint32_t U16(Bytes inBytes, size_t inAt)
{
    return __builtin_bswap16(foundation::ReadBE16(inBytes, inAt));
}

uint32_t U32(Bytes inBytes, size_t inAt)
{
    return __builtin_bswap32(foundation::ReadBE32(inBytes, inAt));
}

bool IsOneOf(uint32_t inValue, std::initializer_list<uint32_t> inValues)
{
    for (const uint32_t value : inValues)
        if (inValue == value)
            return true;
    return false;
}

constexpr size_t kBmpFileHeader = 14, kBmpCoreHeader = 12;
constexpr uint32_t kBmpPlain = 0, kBmpRuns8 = 1, kBmpRuns4 = 2, kBmpMasks = 3;

Fixed ResolutionOf(uint32_t inPerMetre)
{
    return inPerMetre == 0 || inPerMetre > 1200000 ? 72 << 16
                                                   : (Fixed)((uint64_t)inPerMetre * 254 * 65536 / 10000);
}

OSStatus ReadBmpCoreHeader(Bytes inBytes, ImageFacts* outFacts)
{
    const uint32_t bits = U16(inBytes, 24);
    if (inBytes.size() < kBmpFileHeader + kBmpCoreHeader || !IsOneOf(bits, { 1, 4, 8, 24 }))
        return codecBadDataErr;
    outFacts->width = (int)U16(inBytes, 18);
    outFacts->height = (int)U16(inBytes, 20);
    outFacts->depth = (short)bits;
    return CheckSize(outFacts->width, outFacts->height);
}

bool IsBmpCoding(uint32_t inBits, uint32_t inCompression)
{
    switch (inCompression) {
    case kBmpPlain: return IsOneOf(inBits, { 1, 4, 8, 16, 24, 32 });
    case kBmpRuns8: return inBits == 8;
    case kBmpRuns4: return inBits == 4;
    case kBmpMasks: return inBits == 16 || inBits == 32;
    default: return false;
    }
}

constexpr size_t kTargaHeader = 18;

bool IsTargaKind(uint32_t inKind, uint32_t inMapKind, uint32_t inBits)
{
    switch (inKind) {
    case 1:
    case 9: return inMapKind == 1 && inBits == 8;
    case 2:
    case 10: return IsOneOf(inBits, { 15, 16, 24, 32 });
    case 3:
    case 11: return inBits == 8;
    default: return false;
    }
}

} // namespace

OSStatus ReadBmpHeader(Bytes inBytes, ImageFacts* outFacts)
{
    const uint32_t size = U32(inBytes, 14);
    if (size == kBmpCoreHeader)
        return ReadBmpCoreHeader(inBytes, outFacts);
    const uint32_t bits = U16(inBytes, 28), compression = U32(inBytes, 30);
    const int64_t width = (int32_t)U32(inBytes, 18), height = (int32_t)U32(inBytes, 22);
    if (!IsOneOf(size, { 40, 52, 56, 64, 108, 124 }) || inBytes.size() < kBmpFileHeader + size ||
        !IsBmpCoding(bits, compression) || U32(inBytes, 46) > 256 || U32(inBytes, 10) > inBytes.size())
        return codecBadDataErr;
    const bool hasMaskOfAlpha = size >= 56 && size != 64 && compression == kBmpMasks && U32(inBytes, 66) != 0;
    outFacts->width = (int)std::min<int64_t>(width, kMaxSide + 1);
    outFacts->height = (int)std::min<int64_t>(height < 0 ? -height : height, kMaxSide + 1);
    outFacts->hasAlpha = bits == 32 && hasMaskOfAlpha;
    outFacts->depth = (short)(outFacts->hasAlpha ? 32 : std::min(bits, 24u));
    outFacts->hRes = ResolutionOf(U32(inBytes, 38));
    outFacts->vRes = ResolutionOf(U32(inBytes, 42));
    return CheckSize(width, height < 0 ? -height : height);
}

OSStatus ReadTargaHeader(Bytes inBytes, ImageFacts* outFacts)
{
    if (inBytes.size() <= kTargaHeader)
        return codecBadDataErr;
    const uint32_t mapKind = inBytes[1], kind = inBytes[2], bits = inBytes[16], flags = inBytes[17];
    const uint32_t mapLength = U16(inBytes, 5), mapBits = inBytes[7];
    if (mapKind > 1 || !IsTargaKind(kind, mapKind, bits) || (flags & 0xC0))
        return codecBadDataErr;
    if (mapKind == 1 &&
        (mapLength == 0 || mapLength + U16(inBytes, 3) > 256 || !IsOneOf(mapBits, { 15, 16, 24, 32 })))
        return codecBadDataErr;
    outFacts->width = (int)U16(inBytes, 12);
    outFacts->height = (int)U16(inBytes, 14);
    outFacts->hasAlpha = bits == 32 && (flags & 15) == 8;
    outFacts->depth = (short)(outFacts->hasAlpha ? 32
                              : kind % 8 == 2    ? std::min(bits, 24u)
                              : kind % 8 == 3    ? 40
                                                 : 8);
    return CheckSize(outFacts->width, outFacts->height);
}

} // namespace lampblack::images
