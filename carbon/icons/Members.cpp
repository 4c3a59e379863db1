#include "icons/Members.h"

#include <quickdraw/ColorSpace.h>
#include <quickdraw/PortRecord.h>

#include <algorithm>

namespace lampblack::icons {

static constexpr uint32_t kOpaque = 0xFF000000, kOpaqueWhite = 0xFFFFFFFF;

int PortDepth()
{
    const quickdraw::PortRecord* port = quickdraw::CurrentPort();
    return port ? port->Depth() : 32;
}

static bool BitAt(Bytes inBits, size_t inIndex)
{
    return inBits[inIndex / 8] >> (7 - inIndex % 8) & 1;
}

void ReadBits(Bytes inIcon, Bytes inMask, int inWidth, int inHeight, IconPicture* out)
{
    out->Resize(inWidth, inHeight);
    out->hasMask = !inMask.empty();
    out->isPlain = true;
    out->isSmooth = false;
    for (size_t i = 0; i < out->pixels.size(); ++i) {
        const uint32_t color = BitAt(inIcon, i) ? kOpaque : kOpaqueWhite;
        out->pixels[i] = !out->hasMask || BitAt(inMask, i) ? color : 0;
    }
}

// The coverage of a pixel by the mask.
struct Mask {
    Bytes bits, alpha;

    bool IsThere() const { return !bits.empty() || !alpha.empty(); }
    uint32_t At(size_t i) const
    {
        return !alpha.empty() ? alpha[i] : bits.empty() || BitAt(bits, i) ? 255 : 0;
    }
};

static uint32_t Premultiplied(uint32_t inColor, uint32_t inAlpha)
{
    if (inAlpha == 255)
        return kOpaque | inColor;
    uint32_t result = inAlpha << 24;
    for (const int shift : { 0, 8, 16 })
        result |= ((inColor >> shift & 0xFF) * inAlpha + 127) / 255 << shift;
    return result;
}

static uint32_t ColorAt(Bytes inData, Data inKind, size_t i)
{
    switch (inKind) {
    case Data::Four:
        return quickdraw::StandardColors(4).At(i % 2 ? inData[i / 2] & 0x0F : inData[i / 2] >> 4);
    case Data::Eight: return quickdraw::StandardColors(8).At(inData[i]);
    case Data::Direct: return foundation::LoadBE32(&inData[i * 4]) & 0x00FFFFFF;
    case Data::Bits:
    case Data::Alpha: break;
    }
    return 0;
}

static void ReadColored(Bytes inData, Kind inKind, const Mask& inMask, IconPicture* out)
{
    out->Resize(inKind.Size().width, inKind.Size().height);
    out->hasMask = inMask.IsThere();
    out->isPlain = false;
    out->isSmooth = inKind.data == Data::Direct;
    for (size_t i = 0; i < out->pixels.size(); ++i)
        out->pixels[i] = Premultiplied(ColorAt(inData, inKind.data, i), inMask.At(i));
}

// Whole data, or none. Bits may come without a mask, with half of the bytes.
static Bytes WholeData(const Getter& inGetter, Kind inKind)
{
    if (!inKind.Type())
        return {};
    const Bytes data = inGetter(inKind);
    const size_t least = inKind.data == Data::Bits ? inKind.Bytes() / 2 : inKind.Bytes();
    return data.size() >= least ? data : Bytes();
}

static Bytes BitMaskOf(Bytes inBits, Kind inKind)
{
    return foundation::Slice(inBits, inKind.Bytes() / 2, inKind.Bytes() / 2);
}

static bool ReadMember(const Getter& inGetter, Kind inKind, IconPicture* out)
{
    const Bytes found = WholeData(inGetter, inKind);
    if (found.empty())
        return false;
    const Kind bitsKind = { inKind.size, Data::Bits };
    if (inKind.data == Data::Bits) {
        ReadBits(found, BitMaskOf(found, inKind), inKind.Size().width, inKind.Size().height, out);
        return true;
    }
    // What a getter answered lives until it is asked again.
    static std::vector<uint8_t> data, alpha;
    data.assign(found.begin(), found.end());
    alpha.clear();
    if (inKind.data == Data::Direct) {
        const Bytes bytes = WholeData(inGetter, { inKind.size, Data::Alpha });
        alpha.assign(bytes.begin(), bytes.end());
    }
    const Bytes bits = alpha.empty() ? WholeData(inGetter, bitsKind) : Bytes();
    const Mask mask = { bits.empty() ? Bytes() : BitMaskOf(bits, bitsKind), alpha };
    ReadColored(data, inKind, mask, out);
    return true;
}

// The size whose icons a rectangle of that extent shows.
static int SizeFor(const Rect& inWhere)
{
    const int extent = std::max(inWhere.right - inWhere.left, inWhere.bottom - inWhere.top);
    int size = 1;
    for (int i = 2; i < kSizeCount; ++i)
        if (extent >= kSizes[i].height)
            size = i;
    const int height = inWhere.bottom - inWhere.top;
    return height < kSizes[1].height && extent <= kSizes[1].width ? 0 : size;
}

// Depths in the order in which a port wants them.
using Depths = std::initializer_list<Data>;
static Depths DepthsFor(int inDepth)
{
    static constexpr Depths kDirect = { Data::Direct, Data::Eight, Data::Four, Data::Bits };
    static constexpr Depths kEight = { Data::Eight, Data::Direct, Data::Four, Data::Bits };
    static constexpr Depths kFour = { Data::Four, Data::Bits, Data::Eight, Data::Direct };
    static constexpr Depths kFew = { Data::Bits, Data::Four, Data::Eight, Data::Direct };
    return inDepth > 8 ? kDirect : inDepth == 8 ? kEight : inDepth == 4 ? kFour : kFew;
}

static bool ReadSize(const Getter& inGetter, int inSize, int inDepth, IconPicture* out)
{
    const Depths depths = DepthsFor(inDepth);
    return std::any_of(depths.begin(), depths.end(), [&](Data data) {
        return ReadMember(inGetter, { inSize, data }, out);
    });
}

bool ReadBest(const Getter& inGetter, const Rect& inWhere, int inDepth, IconPicture* out)
{
    const int wanted = SizeFor(inWhere);
    for (int size = wanted; size < kSizeCount; ++size)
        if (ReadSize(inGetter, size, inDepth, out))
            return true;
    for (int size = wanted - 1; size >= 0; --size)
        if (ReadSize(inGetter, size, inDepth, out))
            return true;
    return false;
}

} // namespace lampblack::icons
