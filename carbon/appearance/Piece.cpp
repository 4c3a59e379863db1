#include "appearance/Piece.h"

#include "quickdraw/Port.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <new>
#include <unordered_map>

namespace lampblack::appearance {

namespace {

constexpr int kMiddle = 64;                 // pixels of a repeated middle; fewer, wider strokes are faster
constexpr size_t kMostPixels = 1024 * 1024; // of the whole cache; beyond it everything is painted again
constexpr int kLongestSide = 32767;

struct Key {
    Painter painter;
    int width, height;
    uint32_t look;
    bool operator==(const Key&) const = default;
};

struct KeyHash {
    size_t operator()(const Key& inKey) const
    {
        uint64_t hash = (uint64_t)(uintptr_t)inKey.painter;
        for (uint64_t part : { (uint64_t)inKey.width, (uint64_t)inKey.height, (uint64_t)inKey.look })
            hash = (hash ^ part) * 0x9E3779B97F4A7C15u;
        return (size_t)(hash >> 20);
    }
};

struct Cache {
    std::unordered_map<Key, std::unique_ptr<uint32_t[]>, KeyHash> pieces;
    size_t pixels = 0;
    size_t painted = 0;
};

Cache& TheCache()
{
    static Cache cache;
    return cache;
}

uint32_t Packed(Look inLook)
{
    return (uint32_t)inLook.tone | (uint32_t)inLook.value << 8 | (uint32_t)inLook.variant << 16;
}

bool PaintInto(uint32_t* ioPixels, const Key& inKey, Look inLook)
{
    cairo_surface_t* surface = cairo_image_surface_create_for_data(
        (unsigned char*)ioPixels, CAIRO_FORMAT_ARGB32, inKey.width, inKey.height, inKey.width * 4);
    cairo_t* context = cairo_create(surface);
    const bool ready = cairo_status(context) == CAIRO_STATUS_SUCCESS;
    if (ready) {
        Canvas canvas(context);
        inKey.painter(canvas, inKey.width, inKey.height, inLook);
    }
    cairo_destroy(context);
    cairo_surface_flush(surface);
    cairo_surface_destroy(surface);
    return ready;
}

const uint32_t* Paint(const Key& inKey, Look inLook)
{
    Cache& cache = TheCache();
    const size_t count = (size_t)inKey.width * (size_t)inKey.height;
    if (cache.pixels + count > kMostPixels) {
        cache.pieces.clear();
        cache.pixels = 0;
    }
    std::unique_ptr<uint32_t[]> pixels(new (std::nothrow) uint32_t[count]());
    if (!pixels || !PaintInto(pixels.get(), inKey, inLook))
        return nullptr;
    cache.pixels += count;
    ++cache.painted;
    return (cache.pieces[inKey] = std::move(pixels)).get();
}

int Width(const Rect& inRect)
{
    return inRect.right - inRect.left;
}

int Height(const Rect& inRect)
{
    return inRect.bottom - inRect.top;
}

// One axis of a sliced piece: how long it is painted, and how it is repeated.
struct Axis {
    Axis(int inLength, short inFirst, short inLast, bool inHollow)
        : length(inLength),
          first(inFirst),
          last(inLast),
          painted((inFirst || inLast) && inLength > inFirst + inLast + kMiddle ? inFirst + inLast + kMiddle
                                                                               : inLength),
          split(inHollow && inLength > inFirst + inLast)
    {
    }

    bool Repeats() const { return painted < length; }

    // Calls inVisit(source, target, run, isMiddle) for each run of pixels along the axis.
    template <class Visitor>
    void ForEachRun(Visitor&& inVisit) const
    {
        if (!Repeats() && !split) {
            inVisit(0, 0, length, false);
            return;
        }
        inVisit(0, 0, first, false);
        for (int at = first; at < length - last; at += kMiddle)
            inVisit(first, at, std::min(kMiddle, length - last - at), true);
        inVisit(painted - last, length - last, last, false);
    }

    int length, first, last, painted;
    bool split; // the middle is visited by itself even where it is short, so that it can be left out
};

void DrawRun(const PieceView& inPiece, int inSourceX, int inSourceY, int inLeft, int inTop, int inWidth,
             int inHeight)
{
    if (inWidth <= 0 || inHeight <= 0)
        return;
    const Rect target = { (short)inTop, (short)inLeft, (short)(inTop + inHeight), (short)(inLeft + inWidth) };
    quickdraw::DrawPremultiplied(inPiece.pixels + inSourceY * inPiece.width + inSourceX, inPiece.width,
                                 target);
}

} // namespace

PieceView PaintedPiece(Painter inPainter, Look inLook, int inWidth, int inHeight)
{
    if (inWidth <= 0 || inHeight <= 0 || inWidth > kLongestSide || inHeight > kLongestSide)
        return {};
    const Key key = { inPainter, inWidth, inHeight, Packed(inLook) };
    const auto found = TheCache().pieces.find(key);
    const uint32_t* pixels = found != TheCache().pieces.end() ? found->second.get() : Paint(key, inLook);
    return pixels ? PieceView{ pixels, inWidth, inHeight } : PieceView{};
}

void DrawPiece(Painter inPainter, Look inLook, const Rect& inBounds, Slices inSlices)
{
    if (Width(inBounds) <= 0 || Height(inBounds) <= 0)
        return;
    const Axis across(Width(inBounds), inSlices.left, inSlices.right, inSlices.hollow);
    const Axis down(Height(inBounds), inSlices.top, inSlices.bottom, inSlices.hollow);
    const PieceView piece = PaintedPiece(inPainter, inLook, across.painted, down.painted);
    if (!piece.pixels)
        return;
    down.ForEachRun([&](int sourceY, int targetY, int height, bool middleY) {
        across.ForEachRun([&](int sourceX, int targetX, int width, bool middleX) {
            if (!(inSlices.hollow && middleX && middleY))
                DrawRun(piece, sourceX, sourceY, inBounds.left + targetX, inBounds.top + targetY, width,
                        height);
        });
    });
}

void DrawPiecePart(Painter inPainter, Look inLook, const Rect& inBounds, const Rect& inPart)
{
    const PieceView piece = PaintedPiece(inPainter, inLook, Width(inBounds), Height(inBounds));
    const int left = std::max(inBounds.left, inPart.left), right = std::min(inBounds.right, inPart.right);
    const int top = std::max(inBounds.top, inPart.top), bottom = std::min(inBounds.bottom, inPart.bottom);
    if (piece.pixels)
        DrawRun(piece, left - inBounds.left, top - inBounds.top, left, top, right - left, bottom - top);
}

size_t PieceCount()
{
    return TheCache().pieces.size();
}

size_t PiecesPainted()
{
    return TheCache().painted;
}

} // namespace lampblack::appearance
