// The opcodes of compressed images and of pixels with a matrix or a matte, and what pictures hold behind them
// for machines that cannot read them.
#include "CompressedImages.h"
#include "MattePixels.h"
#include "Opcodes.h"
#include "PictureBits.h"
#include "RawImages.h"

#include <quickdraw/RegionBytes.h>

#include <algorithm>

namespace lampblack::pictures {

using namespace quickdraw;

static constinit ImageDecoder gDecoder = nullptr;

void SetImageDecoder(ImageDecoder inDecoder)
{
    gDecoder = inDecoder;
}

static constexpr int kLargestMap = 0x3FFC / 4; // columns of depth 32

// Nine numbers with 16 bits behind the point, in the last column 30.
static ImagePlacement ReadMatrix(BigEndianReader& ioReader)
{
    ImagePlacement placement;
    for (auto& row : placement.matrix)
        for (int i = 0; i < 3; ++i)
            row[i] = ioReader.S32() / (i == 2 ? 1073741824.0 : 65536.0);
    return placement;
}

// Nobody knows how few bytes stand for how many pixels: an image costs what it claims, and too much is
// refused.
static bool CanDecode(Player& ioPlayer, const ImageDescription& inImage)
{
    static constexpr int64_t kMostPixels = 64 << 20;
    const int64_t pixels = (int64_t)inImage.width * inImage.height;
    return pixels <= kMostPixels && ioPlayer.CanAfford(pixels);
}

// A matte is an image of greys: its index is what is seen of a pixel.
static Matte ReadMatte(Player& ioPlayer, Bytes inBytes)
{
    Matte matte;
    BigEndianReader reader(inBytes);
    ImageDescription image;
    PixelValues values;
    if (!ReadImageDescription(reader, &image) || !CanDecode(ioPlayer, image) ||
        !DecodeRaw(image, reader.ReadBytes(reader.Remaining()), &values))
        return matte;
    matte.width = values.width;
    matte.height = values.height;
    matte.weights.resize(values.values.size());
    const uint32_t last = values.isDirect ? 0 : (1u << values.bits) - 1;
    for (size_t i = 0; i < matte.weights.size(); ++i)
        matte.weights[i] =
            (uint8_t)(values.isDirect ? 255 - (values.values[i] & 0xFF) : values.values[i] * 255 / last);
    return matte;
}

// What both opcodes begin with: version, matrix, matte.
struct ImageHead {
    ImagePlacement placement;
    Matte matte;
};

static ImageHead ReadHead(BigEndianReader& ioReader, size_t* outMatteSize)
{
    ImageHead head;
    ioReader.Skip(4 + 2); // size, version
    head.placement = ReadMatrix(ioReader);
    *outMatteSize = ioReader.U32();
    ioReader.Skip(8); // the rectangle of the matte, which is all of it
    return head;
}

// The pixels that follow are subject to matrix and matte; some writers count them in with the data.
static void PlayOwnPixels(Player& ioPlayer, BigEndianReader& ioData)
{
    ioData.Skip(ioData.Offset() & 1);
    const int opcode = ioData.U16();
    if (ioData.Ok() && OpcodeOf(opcode, 2).play == PlayBits)
        PlayBits(ioPlayer, opcode, ioData);
}

void PlayUncompressedImage(Player& ioPlayer, int, BigEndianReader& ioData)
{
    size_t matteSize = 0;
    ImageHead head = ReadHead(ioData, &matteSize);
    if (!ioData.Ok())
        return;
    if (matteSize > 0)
        head.matte = ReadMatte(ioPlayer, ioData.ReadBytes(std::min(matteSize, ioData.Remaining())));
    ioPlayer.fHasPlacement = true;
    ioPlayer.fPlacement = head.placement;
    ioPlayer.fMatte = std::move(head.matte);
    if (ioData.Remaining() > 2)
        PlayOwnPixels(ioPlayer, ioData);
}

static bool Decode(const ImageDescription& inImage, Bytes inData, DecodedImage* out)
{
    if (IsRawType(inImage.type)) {
        PixelValues values;
        return DecodeRaw(inImage, inData, &values) && ColorsOf(inImage, values, out);
    }
    return gDecoder &&
           gDecoder({ inImage.type, inImage.width, inImage.height, inImage.whole, inData }, out) &&
           out->pixels && out->width > 0 && out->height > 0;
}

struct ShownImage {
    DecodedImage image;
    Rect from, to; // in the image's pixels, in the picture's coordinates
    short mode = srcCopy;
    bool isMasked = false;
    Region mask; // in the picture's coordinates
};

// Images without a fourth channel and no wider than a pixel map may be go through CopyBits.
static void CopyImage(Player& ioPlayer, ShownImage& ioShown, const Rect& inTo)
{
    DecodedImage& image = ioShown.image;
    const size_t count = (size_t)image.width * (size_t)image.height;
    for (size_t i = 0; i < count; ++i)
        image.pixels[i] &= kColorBits;
    PixMap map = {};
    DescribePixels(map, 32);
    map.baseAddr = reinterpret_cast<Ptr>(image.pixels.get());
    map.rowBytes = (short)(0x8000 | image.width * 4);
    map.bounds = { 0, 0, Clamped(image.height), Clamped(image.width) };
    if (ioPlayer.CanAfford(inTo))
        CopyBits(reinterpret_cast<const BitMap*>(&map),
                 GetPortBitMapForCopyBits(ReferenceOf(&ioPlayer.Port())), &ioShown.from, &inTo, ioShown.mode,
                 nullptr);
}

static void ShowImage(Player& ioPlayer, ShownImage& ioShown)
{
    const Rect to = ioPlayer.Map().Of(ioShown.to);
    PortRecord& port = ioPlayer.Port();
    const Region clip = port.fClip;
    if (ioShown.isMasked) {
        port.fClip.Intersect(clip, ioPlayer.Map().Of(ioShown.mask));
        port.ClippingChanged();
    }
    DecodedImage& image = ioShown.image;
    if (IsEmpty(to) || IsEmpty(ioShown.from)) {
    } else if (!image.hasAlpha && image.width <= kLargestMap && image.height <= INT16_MAX) {
        CopyImage(ioPlayer, ioShown, to);
    } else {
        for (size_t i = 0; !image.hasAlpha && i < (size_t)image.width * (size_t)image.height; ++i)
            image.pixels[i] |= 0xFF000000;
        DrawWithAlpha(ioPlayer, { image.pixels.get(), image.width, image.height }, ioShown.from, to);
    }
    port.fClip = clip;
    port.ClippingChanged();
}

static Rect Stretched(const Rect& inRect, int width, int height, int newWidth, int newHeight)
{
    if (width <= 0 || height <= 0 || (width == newWidth && height == newHeight))
        return inRect;
    const Rect old = { 0, 0, Clamped(height), Clamped(width) };
    const Rect now = { 0, 0, Clamped(newHeight), Clamped(newWidth) };
    return PictureMapping(old, now).Of(inRect);
}

// Reads and decodes; false when the image cannot be shown.
static bool ReadCompressed(Player& ioPlayer, BigEndianReader& ioData, ShownImage* out)
{
    size_t matteSize = 0;
    ImageHead head = ReadHead(ioData, &matteSize);
    out->mode = ioData.S16();
    out->from = ioData.ReadRect();
    ioData.Skip(4); // accuracy
    const size_t maskSize = ioData.U32();
    if (matteSize > 0)
        head.matte = ReadMatte(ioPlayer, ioData.ReadBytes(matteSize));
    if (maskSize > 0)
        out->isMasked = ReadRegionBytes(ioData.ReadBytes(maskSize), &out->mask, nullptr);
    ImageDescription image;
    if (!ReadImageDescription(ioData, &image) || !CanDecode(ioPlayer, image) ||
        !Decode(image, ioData.ReadBytes(ioData.Remaining()), &out->image))
        return false;
    if (!ioPlayer.CanAfford((int64_t)out->image.width * out->image.height))
        return false;
    out->to = head.placement.Of(out->from);
    out->from = Stretched(out->from, image.width, image.height, out->image.width, out->image.height);
    if (!head.matte.weights.empty()) {
        ApplyMatte(head.matte, out->image.width, out->image.height, out->image.pixels.get());
        out->image.hasAlpha = true;
    }
    return true;
}

// The work of decoding goes with the bytes, of which each is decoded once, and with the claimed size.
void PlayCompressedImage(Player& ioPlayer, int, BigEndianReader& ioData)
{
    ShownImage shown;
    BigEndianReader data = ioData;
    if (!ioPlayer.CanAfford((int64_t)data.Remaining()) || !ReadCompressed(ioPlayer, data, &shown))
        return;
    ShowImage(ioPlayer, shown);
    ioPlayer.fFallback = { kOpcodesOfFallbacks, 0, shown.to };
}

// A pen size that no pen has: its width is how many bytes behind it are the fallback, at whose end nothing is
// done.
static bool SkipMarked(BigEndianReader& ioReader)
{
    BigEndianReader ahead = ioReader;
    ahead.Skip(2);
    const size_t length = ahead.U16();
    const size_t end = ahead.Offset() + length;
    BigEndianReader last = ahead;
    if (length < 4 || last.Remaining() < length)
        return false;
    last.Seek(end - 2);
    if (last.U16() != 0)
        return false;
    ioReader.Seek(end);
    return true;
}

static bool IsFallbackText(BigEndianReader ahead)
{
    ahead.Skip(4);
    return ahead.ReadPascal().starts_with("QuickTime");
}

static bool IsFallbackBits(int inOpcode, BigEndianReader ahead, const Rect& inShown)
{
    PictureBits bits;
    return ReadPictureBits(inOpcode, ahead, &bits) && bits.map.depth == 1 && EqualRect(&bits.to, &inShown);
}

// Reads over a bit map.
static bool SkipBits(int inOpcode, BigEndianReader& ioReader)
{
    PictureBits bits;
    if (!ReadPictureBits(inOpcode, ioReader, &bits))
        return false;
    RowReader rows(bits.map, bits.coding, ioReader);
    for (int i = 0; i < bits.map.Height(); ++i)
        if (!rows.Skip())
            return false;
    ioReader.Seek(rows.Offset());
    return true;
}

static bool SkipText(BigEndianReader& ioReader)
{
    ioReader.Skip(4);
    ioReader.ReadPascal();
    return ioReader.Ok();
}

// Behind an image that was shown: a pen size that is a length, a text that names the missing software and two
// more lines of it, or a bit map in the same place.
bool Player::IsFallback(int inOpcode, BigEndianReader& ioReader)
{
    static constexpr int kPenSizeOpcode = 0x07, kTextOpcode = 0x28, kLinesOfText = 3;
    if (inOpcode == kTextOpcode && fFallback.texts > 0) {
        --fFallback.texts;
        return SkipText(ioReader);
    }
    if (fFallback.opcodes == 0)
        return false;
    --fFallback.opcodes;
    if (inOpcode == kPenSizeOpcode && fVersion > 1)
        return SkipMarked(ioReader);
    if (inOpcode == kTextOpcode && IsFallbackText(ioReader)) {
        fFallback.texts = kLinesOfText - 1;
        return SkipText(ioReader);
    }
    if (inOpcode >= kBitsRect && inOpcode <= kPackBitsRgn && (inOpcode & 6) == 0 &&
        IsFallbackBits(inOpcode, ioReader, fFallback.shown))
        return SkipBits(inOpcode, ioReader);
    return false;
}

} // namespace lampblack::pictures
