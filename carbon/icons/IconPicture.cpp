#include "icons/IconPicture.h"

#include <quickdraw/Port.h>
#include <quickdraw/PortRecord.h>
#include <quickdraw/Recorder.h>

#include <algorithm>

namespace lampblack::icons {

using quickdraw::Box;
using quickdraw::BoxOf;
using quickdraw::Region;

void IconPicture::Resize(int inWidth, int inHeight)
{
    width = inWidth;
    height = inHeight;
    pixels.resize((size_t)inWidth * (size_t)inHeight);
}

IconPicture& ScratchPicture()
{
    static IconPicture picture;
    return picture;
}

// Along one axis: the first pixel of an icon that is to be at the centre (1), the start (2) or the end (3).
static int PlaceOf(int inAlignment, int inStart, int inEnd, int inLength)
{
    const int slack = inEnd - inStart - inLength;
    return inAlignment == 1 ? inStart + slack / 2 : inAlignment == 3 ? inEnd - inLength : inStart;
}

Rect Aligned(const Rect& inRect, IconAlignmentType inAlignment, int inWidth, int inHeight)
{
    const int width = inRect.right - inRect.left, height = inRect.bottom - inRect.top;
    if ((inAlignment & 0x0F) == kAlignNone || width <= 0 || height <= 0)
        return inRect;
    if (inWidth > width || inHeight > height) {
        const double scale = std::min((double)width / inWidth, (double)height / inHeight);
        inWidth = std::max(1, (int)(inWidth * scale));
        inHeight = std::max(1, (int)(inHeight * scale));
    }
    const int left = PlaceOf(inAlignment >> 2 & 3, inRect.left, inRect.right, inWidth);
    const int top = PlaceOf(inAlignment & 3, inRect.top, inRect.bottom, inHeight);
    return { (short)top, (short)left, (short)(top + inHeight), (short)(left + inWidth) };
}

// Channel by channel, for premultiplied pixels and colours 0x00RRGGBB.
template <class Formula>
static uint32_t ForChannels(uint32_t inPixel, Formula&& inFormula)
{
    uint32_t result = inPixel & 0xFF000000;
    for (const int shift : { 0, 8, 16 })
        result |= (uint32_t)inFormula(inPixel >> shift & 0xFF, inPixel >> 24, shift) << shift;
    return result;
}

static uint32_t Lightened(uint32_t inPixel)
{
    return ForChannels(inPixel, [](uint32_t c, uint32_t alpha, int) { return (c + alpha + 1) / 2; });
}

static uint32_t Darkened(uint32_t inPixel)
{
    return ForChannels(inPixel, [](uint32_t c, uint32_t, int) { return c / 2; });
}

static uint32_t Inverted(uint32_t inPixel)
{
    return ForChannels(inPixel, [](uint32_t c, uint32_t alpha, int) { return alpha - c; });
}

static uint32_t Tinted(uint32_t inPixel, uint32_t inColor)
{
    return ForChannels(inPixel, [inColor](uint32_t c, uint32_t, int shift) {
        return (c * (inColor >> shift & 0xFF) + 127) / 255;
    });
}

static uint32_t Gray(uint32_t inPixel, uint32_t inLevel)
{
    return ForChannels(inPixel,
                       [inLevel](uint32_t, uint32_t alpha, int) { return (inLevel * alpha + 127) / 255; });
}

// The seven labels' colours, from the first.
static constexpr uint32_t kLabelColors[] = { 0xFFA03C, 0xF07070, 0xE080D0, 0x80C0F0,
                                             0x8090F0, 0x80D090, 0xB09070 };

// Whether a pixel that belongs to the icon has a neighbour that does not.
static bool IsOutline(const IconPicture& inPicture, int h, int v)
{
    const auto isOutside = [&](int x, int y) {
        return x < 0 || y < 0 || x >= inPicture.width || y >= inPicture.height ||
               inPicture.RowAt(y)[x] >> 24 < 128;
    };
    return isOutside(h - 1, v) || isOutside(h + 1, v) || isOutside(h, v - 1) || isOutside(h, v + 1);
}

// One of the first four transforms. An offline icon is a ghost, drawn in every other pixel; an open one an
// outline around dots.
static uint32_t Changed(const IconPicture& inPicture, uint32_t inPixel, int inKind, int h, int v)
{
    const bool isEven = (h + v) % 2 == 0;
    if (inKind == kTransformDisabled)
        return Lightened(inPixel);
    if (inKind == kTransformOffline)
        return isEven ? Gray(inPixel, 0xC8) : Lightened(inPixel);
    if (inKind == kTransformOpen && !IsOutline(inPicture, h, v))
        return isEven ? Gray(inPixel, 0x98) : Gray(inPixel, 0xD8);
    return inPixel;
}

// The same where there are no greys: what a colour screen makes lighter loses pixels.
static uint32_t ChangedBit(const IconPicture& inPicture, uint32_t inPixel, int inKind, int h, int v)
{
    const bool isEven = (h + v) % 2 == 0;
    if (inKind == kTransformDisabled)
        return isEven ? inPixel : Gray(inPixel, 0xFF);
    if (inKind == kTransformOffline)
        return Gray(inPixel, isEven && v % 2 == 0 ? 0 : 0xFF);
    if (inKind == kTransformOpen)
        return Gray(inPixel, isEven || IsOutline(inPicture, h, v) ? 0 : 0xFF);
    return inPixel;
}

static constexpr uint32_t kDark = 130; // of 255

// Of a premultiplied pixel that is at least half there: strong blues and reds, on which signs are white, but
// no yellows, on which they are black.
static bool IsDark(uint32_t inPixel)
{
    const uint32_t least = std::min(inPixel >> 16 & 0xFF, inPixel >> 8 & 0xFF); // of red and green
    return least * 255 < kDark * (inPixel >> 24);
}

void MakePlain(IconPicture& ioPicture)
{
    std::vector<uint32_t> plain(ioPicture.pixels.size());
    for (int v = 0; v < ioPicture.height; ++v)
        for (int h = 0; h < ioPicture.width; ++h) {
            const uint32_t pixel = ioPicture.RowAt(v)[h];
            if (pixel >> 24 >= 128)
                plain[(size_t)v * (size_t)ioPicture.width + (size_t)h] =
                    IsDark(pixel) || IsOutline(ioPicture, h, v) ? 0xFF000000 : 0xFFFFFFFF;
        }
    ioPicture.pixels.swap(plain);
    ioPicture.isPlain = true;
    ioPicture.isSmooth = false;
}

void Transform(IconPicture& ioPicture, IconTransformType inTransform, int inPortDepth)
{
    const bool isOfBits = inPortDepth == 1;
    const int kind = inTransform & 0xFF, label = isOfBits ? 0 : inTransform >> 8 & 7;
    const bool isSelected = inTransform & kTransformSelected;
    if (kind == kTransformNone && label == 0 && !isSelected)
        return;
    static std::vector<uint32_t> changed; // outlines are seen in the picture as it was
    changed.resize(ioPicture.pixels.size());
    for (int v = 0; v < ioPicture.height; ++v)
        for (int h = 0; h < ioPicture.width; ++h) {
            uint32_t pixel = ioPicture.RowAt(v)[h];
            pixel =
                isOfBits ? ChangedBit(ioPicture, pixel, kind, h, v) : Changed(ioPicture, pixel, kind, h, v);
            if (label)
                pixel = Tinted(pixel, kLabelColors[label - 1]);
            if (isSelected)
                pixel = ioPicture.isPlain || isOfBits ? Inverted(pixel) : Darkened(pixel);
            changed[(size_t)v * (size_t)ioPicture.width + (size_t)h] = pixel;
        }
    ioPicture.pixels.swap(changed);
}

// The source pixels that a destination pixel stands for, along one axis: the nearest one, or all of them when
// an average is wanted.
struct Range {
    Range(int inAt, int inSource, int inDestination, bool inAverages)
        : first((int)((int64_t)inAt * inSource / inDestination)),
          end(inAverages ? std::max(first + 1, (int)((int64_t)(inAt + 1) * inSource / inDestination))
                         : first + 1)
    {
    }
    int first, end;
};

static uint32_t Average(const IconPicture& inPicture, Range inColumns, Range inRows)
{
    uint32_t sums[4] = {};
    for (int v = inRows.first; v < inRows.end; ++v)
        for (int h = inColumns.first; h < inColumns.end; ++h)
            for (int i = 0; i < 4; ++i)
                sums[i] += inPicture.RowAt(v)[h] >> 8 * i & 0xFF;
    const auto count = (uint32_t)((inColumns.end - inColumns.first) * (inRows.end - inRows.first));
    uint32_t result = 0;
    for (int i = 0; i < 4; ++i)
        result |= (sums[i] + count / 2) / count << 8 * i;
    return result;
}

static void ScaleRow(const IconPicture& inPicture, const Box& inWhere, int v, int inLeft, int inRight,
                     uint32_t* out)
{
    const int width = inWhere.x2 - inWhere.x1, height = inWhere.y2 - inWhere.y1;
    const Range rows(v - inWhere.y1, inPicture.height, height, inPicture.isSmooth);
    for (int h = inLeft; h < inRight; ++h) {
        const Range columns(h - inWhere.x1, inPicture.width, width, inPicture.isSmooth);
        *out++ = columns.end - columns.first == 1 && rows.end - rows.first == 1
                     ? inPicture.RowAt(rows.first)[columns.first]
                     : Average(inPicture, columns, rows);
    }
}

static bool Stretches(const IconPicture& inPicture, const Box& inWhere)
{
    return inWhere.x2 - inWhere.x1 != inPicture.width || inWhere.y2 - inWhere.y1 != inPicture.height;
}

static constexpr int kMostPixels = 64 * 1024; // drawn at once

// Only what can be seen is scaled.
static void DrawStretched(const IconPicture& inPicture, const Box& inWhere, const Box& inVisible)
{
    static std::vector<uint32_t> block;
    const int width = inVisible.x2 - inVisible.x1, most = std::max(1, kMostPixels / width);
    for (int top = inVisible.y1; top < inVisible.y2; top += most) {
        const int bottom = std::min(top + most, inVisible.y2);
        block.resize((size_t)width * (size_t)(bottom - top));
        for (int v = top; v < bottom; ++v)
            ScaleRow(inPicture, inWhere, v, inVisible.x1, inVisible.x2,
                     block.data() + (size_t)(v - top) * (size_t)width);
        quickdraw::DrawPremultiplied(block.data(), width,
                                     quickdraw::RectOf({ inVisible.x1, top, inVisible.x2, bottom }));
    }
}

// An open picture takes the icon's own pixels and its mask.
static void Record(const IconPicture& inPicture, const Rect& inWhere)
{
    static std::vector<uint32_t> pixels;
    pixels.resize(inPicture.pixels.size());
    std::transform(inPicture.pixels.begin(), inPicture.pixels.end(), pixels.begin(), [](uint32_t pixel) {
        const uint32_t alpha = std::max(1u, pixel >> 24);
        return ForChannels(pixel,
                           [alpha](uint32_t c, uint32_t, int) { return std::min(255u, c * 255 / alpha); }) &
               0x00FFFFFF;
    });
    const Region mask = MaskOf(inPicture, inWhere);
    quickdraw::CopiedPixels copied;
    copied.from.base = reinterpret_cast<uint8_t*>(pixels.data());
    copied.from.rowBytes = inPicture.width * 4;
    copied.from.bounds = { 0, 0, (short)inPicture.height, (short)inPicture.width };
    copied.fromRect = copied.from.bounds;
    copied.toRect = inWhere;
    copied.mask = inPicture.hasMask ? &mask : nullptr;
    quickdraw::RecordPixels(copied);
}

void Draw(const IconPicture& inPicture, const Rect& inWhere)
{
    quickdraw::PortRecord* port = quickdraw::CurrentPort();
    const Box where = BoxOf(inWhere);
    if (!port || inPicture.pixels.empty() || quickdraw::IsEmpty(inWhere))
        return;
    if (quickdraw::RecorderOf(port)) {
        Record(inPicture, inWhere);
        if (port->fPen.visibility < 0)
            return;
    }
    const Box visible = quickdraw::Intersection(where, port->Drawable().Extents());
    if (quickdraw::IsEmpty(visible))
        return;
    if (Stretches(inPicture, where))
        DrawStretched(inPicture, where, visible);
    else
        quickdraw::DrawPremultiplied(inPicture.pixels.data(), inPicture.width, inWhere);
}

// The first destination pixel that shows this source pixel or a later one.
static int FirstShowing(int inAt, int inSource, int inDestination)
{
    return (int)(((int64_t)inAt * inDestination + inSource - 1) / inSource);
}

Region MaskOf(const IconPicture& inPicture, const Rect& inWhere)
{
    const Box where = BoxOf(inWhere);
    if (!inPicture.hasMask || quickdraw::IsEmpty(inWhere) || inPicture.pixels.empty())
        return Region(where);
    const auto h = [&](int at) { return where.x1 + FirstShowing(at, inPicture.width, where.x2 - where.x1); };
    const auto v = [&](int at) { return where.y1 + FirstShowing(at, inPicture.height, where.y2 - where.y1); };
    std::vector<Box> boxes;
    for (int row = 0; row < inPicture.height; ++row) {
        const uint32_t* pixels = inPicture.RowAt(row);
        for (int first = 0; first < inPicture.width; ++first) {
            if (pixels[first] >> 24 < 128)
                continue;
            int end = first + 1;
            while (end < inPicture.width && pixels[end] >> 24 >= 128)
                ++end;
            boxes.push_back({ h(first), v(row), h(end), v(row + 1) });
            first = end;
        }
    }
    return Region(boxes);
}

} // namespace lampblack::icons
