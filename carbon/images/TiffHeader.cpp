// The header of a TIFF file and its first directory.
#include "Headers.h"

#include <algorithm>

namespace lampblack::images {

namespace {

constexpr size_t kEntry = 12;
constexpr uint64_t kMaxPlainBytes = uint64_t(1) << 28; // of the image before any conversion
constexpr uint64_t kMaxTileBytes = uint64_t(1) << 26;

enum Tag : uint16_t {
    kWidth = 256,
    kLength = 257,
    kBits = 258,
    kCompression = 259,
    kPhotometric = 262,
    kSamples = 277,
    kXResolution = 282,
    kYResolution = 283,
    kResolutionUnit = 296,
    kTileWidth = 322,
    kTileLength = 323,
    kExtraSamples = 338
};

class Directory {
public:
    explicit Directory(Bytes inBytes) : fBytes(inBytes), fIsBig(!inBytes.empty() && inBytes[0] == 'M')
    {
        fAt = U32(4);
        fCount = U16(fAt);
        fIsThere = fAt >= 8 && foundation::Fits(fAt, 2 + fCount * kEntry, fBytes.size());
    }
    bool IsThere() const { return fIsThere; }

    // The first value of a field of whole numbers, and for resolutions the quotient in 16.16.
    uint32_t Value(Tag inTag, uint32_t inDefault) const
    {
        const size_t entry = Find(inTag);
        if (!entry)
            return inDefault;
        const uint16_t type = U16(entry + 2);
        const uint32_t count = U32(entry + 4);
        if (type == 3)
            return U16(count <= 2 ? entry + 8 : U32(entry + 8));
        return type == 4 ? U32(count <= 1 ? entry + 8 : U32(entry + 8)) : inDefault;
    }
    Fixed Ratio(Tag inTag, uint32_t inUnit) const
    {
        const size_t entry = Find(inTag);
        if (!entry || U16(entry + 2) != 5)
            return 72 << 16;
        const uint32_t at = U32(entry + 8);
        const uint32_t over = U32(at), under = U32(at + size_t(4));
        const uint64_t ratio = under ? ((uint64_t)over << 16) / under : 0;
        const uint64_t perInch = inUnit == 3 ? ratio * 254 / 100 : ratio;
        return perInch == 0 || perInch > 0x7FFFFFFF ? 72 << 16 : (Fixed)perInch;
    }

private:
    size_t Find(Tag inTag) const
    {
        for (size_t i = 0; i < fCount; ++i)
            if (const size_t entry = fAt + 2 + i * kEntry; U16(entry) == inTag)
                return entry;
        return 0;
    }
    uint16_t U16(size_t inAt) const
    {
        const uint16_t value = foundation::ReadBE16(fBytes, inAt);
        return fIsBig ? value : __builtin_bswap16(value);
    }
    uint32_t U32(size_t inAt) const
    {
        const uint32_t value = foundation::ReadBE32(fBytes, inAt);
        return fIsBig ? value : __builtin_bswap32(value);
    }

    Bytes fBytes;
    bool fIsBig, fIsThere = false;
    size_t fAt = 0, fCount = 0;
};

// None, the fax codings, LZW, JPEG, Deflate, PackBits: what files of these applications have.
bool IsKnownCoding(uint32_t inCompression)
{
    for (const uint32_t known : { 1, 2, 3, 4, 5, 7, 8, 32773, 32946 })
        if (inCompression == known)
            return true;
    return false;
}

} // namespace

OSStatus ReadTiffHeader(Bytes inBytes, ImageFacts* outFacts)
{
    const Directory directory(inBytes);
    if (!directory.IsThere())
        return codecBadDataErr;
    const uint64_t width = directory.Value(kWidth, 0), height = directory.Value(kLength, 0);
    const uint64_t bits = directory.Value(kBits, 1), samples = directory.Value(kSamples, 1);
    if (const OSStatus error = CheckSize((int64_t)width, (int64_t)height))
        return error;
    if (bits < 1 || bits > 16 || samples < 1 || samples > 16 ||
        !IsKnownCoding(directory.Value(kCompression, 1)))
        return codecBadDataErr;
    const uint64_t tileWidth = directory.Value(kTileWidth, 1), tileLength = directory.Value(kTileLength, 1);
    if (width * height * samples * bits / 8 > kMaxPlainBytes || tileWidth > kMaxSide * 2 ||
        tileLength > kMaxSide * 2 || tileWidth * tileLength * samples * bits / 8 > kMaxTileBytes)
        return memFullErr;
    const uint32_t photometric = directory.Value(kPhotometric, 0), unit = directory.Value(kResolutionUnit, 2);
    const bool isGrey = photometric <= 1;
    outFacts->width = (int)width;
    outFacts->height = (int)height;
    outFacts->hasAlpha = directory.Value(kExtraSamples, 0) != 0 && samples == (isGrey ? 2 : 4);
    outFacts->depth = (short)(outFacts->hasAlpha ? 32
                              : isGrey           ? 32 + std::min<uint64_t>(bits, 8)
                              : photometric == 3 ? bits
                                                 : 24);
    outFacts->hRes = directory.Ratio(kXResolution, unit);
    outFacts->vRes = directory.Ratio(kYResolution, unit);
    return noErr;
}

} // namespace lampblack::images
