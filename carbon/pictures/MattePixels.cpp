#include "MattePixels.h"

#include "PictureRecorder.h"

#include <quickdraw/Port.h>
#include <quickdraw/Recorder.h>

#include <algorithm>

namespace lampblack::pictures {

using namespace quickdraw;

static uint32_t Premultiplied(uint32_t inPixel)
{
    const uint32_t alpha = inPixel >> 24;
    const auto scaled = [alpha](uint32_t channel) { return ((channel & 0xFF) * alpha + 127) / 255; };
    return alpha << 24 | scaled(inPixel >> 16) << 16 | scaled(inPixel >> 8) << 8 | scaled(inPixel);
}

// Which pixel of a part is shown at a place of a longer or shorter row.
static int Nearest(int at, int from, int to)
{
    return (int)((int64_t)at * from / to);
}

static constexpr int64_t kMostRecorded = 16 << 20; // pixels, which take five bytes each

void DrawWithAlpha(Player& ioPlayer, const ArgbPixels& inImage, const Rect& inFrom, const Rect& inTo)
{
    const Box part = Intersection(BoxOf(inFrom), { 0, 0, inImage.width, inImage.height });
    PortRecord& port = ioPlayer.Port();
    if (RecorderOf(&port) && !IsEmpty(part) &&
        (int64_t)(part.x2 - part.x1) * (part.y2 - part.y1) <= kMostRecorded)
        static_cast<PictureRecorder*>(port.fRecorder)->Blended(port, inImage, RectOf(part), inTo);
    const Box to = BoxOf(inTo), seen = Intersection(to, ioPlayer.Port().Drawable().Extents());
    if (IsEmpty(part) || IsEmpty(seen) || ioPlayer.Port().fPen.visibility < 0 ||
        !ioPlayer.CanAfford(4 * (int64_t)(seen.x2 - seen.x1) * (seen.y2 - seen.y1)))
        return;
    std::vector<uint32_t> row((size_t)(seen.x2 - seen.x1));
    for (int v = seen.y1; v < seen.y2; ++v) {
        const int y = part.y1 + Nearest(v - to.y1, part.y2 - part.y1, to.y2 - to.y1);
        const uint32_t* from = inImage.pixels + (ptrdiff_t)y * inImage.width + part.x1;
        for (int h = seen.x1; h < seen.x2; ++h)
            row[(size_t)(h - seen.x1)] =
                Premultiplied(from[Nearest(h - to.x1, part.x2 - part.x1, to.x2 - to.x1)]);
        DrawPremultiplied(row.data(), (int)row.size(), RectOf({ seen.x1, v, seen.x2, v + 1 }));
    }
}

void ApplyMatte(const Matte& inMatte, int inWidth, int inHeight, uint32_t* ioPixels)
{
    for (int v = 0; v < inHeight; ++v) {
        const uint8_t* weights =
            inMatte.weights.data() + (ptrdiff_t)Nearest(v, inMatte.height, inHeight) * inMatte.width;
        uint32_t* row = ioPixels + (ptrdiff_t)v * inWidth;
        for (int h = 0; h < inWidth; ++h)
            row[h] = (row[h] & kColorBits) | (uint32_t)weights[Nearest(h, inMatte.width, inWidth)] << 24;
    }
}

} // namespace lampblack::pictures
