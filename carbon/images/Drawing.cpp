// Drawing of decoded images into the current port.
#include "Drawing.h"

#include "Canvas.h"
#include "RowScaler.h"

#include <quickdraw/Recorder.h>

#include <algorithm>
#include <array>
#include <new>

namespace lampblack::images {

using namespace quickdraw;

namespace {

constexpr int kRowsAtOnce = 16;
constexpr int kMaskedPixels = 1 << 20; // in one mask region, which may need a rectangle for every other pixel

bool IsCopy(SInt32 inMode)
{
    return inMode == srcCopy || inMode == srcCopy + ditherCopy;
}

bool ShowsWholeImage(const Placement& inPlace, const ImageFacts& inFacts)
{
    const Rect& part = inPlace.part;
    return part.left == 0 && part.top == 0 && part.right == inFacts.width && part.bottom == inFacts.height &&
           inPlace.bounds.right - inPlace.bounds.left == inFacts.width &&
           inPlace.bounds.bottom - inPlace.bounds.top == inFacts.height;
}

bool CanDrawDirectly(PortRecord& inPort, const Placement& inPlace, const ImageFacts& inFacts)
{
    return !inFacts.hasAlpha && IsCopy(inPlace.mode) && !RecorderOf(&inPort) && inPort.Depth() == 32 &&
           inPort.fSurface.base && ShowsWholeImage(inPlace, inFacts) && inPort.Drawable().IsRectangle() &&
           Contains(inPort.Drawable().Extents(), BoxOf(inPlace.bounds));
}

OSStatus DrawDirectly(PortRecord& ioPort, ImageReader& ioReader, const Rect& inBounds)
{
    std::array<uint32_t*, kRowsAtOnce> rows;
    int v = inBounds.top;
    for (int count = 1; count > 0 && v < inBounds.bottom; v += count) {
        const int wanted = std::min(kRowsAtOnce, inBounds.bottom - v);
        for (int i = 0; i < wanted; ++i)
            rows[(size_t)i] = ioPort.PixelAt(inBounds.left, v + i);
        count = ioReader.Read(rows.data(), wanted);
    }
    ioPort.Damage({ inBounds.left, inBounds.top, inBounds.right, v });
    return ioReader.Error();
}

// What is to be made of the image aside, and where it goes.
struct Plan {
    Rect whole;                // where the part would come to
    Box made;                  // what of that is made: all of it while a picture records
    int width = 0, height = 0; // of the whole in the size that it is made
};

Plan MakePlan(PortRecord& inPort, const Placement& inPlace, const ImageFacts& inFacts)
{
    Plan plan;
    plan.whole = PlaceOf(inPlace, inFacts.width, inFacts.height);
    plan.width = plan.whole.right - plan.whole.left;
    plan.height = plan.whole.bottom - plan.whole.top;
    plan.made = { 0, 0, plan.width, plan.height };
    if (!RecorderOf(&inPort)) {
        plan.made =
            Intersection(BoxOf(plan.whole), inPort.fSurface.base ? inPort.Drawable().Extents() : Box{});
        plan.made = { plan.made.x1 - plan.whole.left, plan.made.y1 - plan.whole.top,
                      plan.made.x2 - plan.whole.left, plan.made.y2 - plan.whole.top };
        return plan;
    }
    // A picture keeps an enlarged image in its own size.
    const int width = inPlace.part.right - inPlace.part.left, height = inPlace.part.bottom - inPlace.part.top;
    if (plan.width >= width && plan.height >= height) {
        plan.width = width;
        plan.height = height;
        plan.made = { 0, 0, width, height };
    }
    return plan;
}

// Premultiplied pixels over those that are there; the outcome is opaque.
uint32_t Over(uint32_t inPixel, uint32_t inBelow)
{
    const uint32_t rest = 255 - (inPixel >> 24);
    uint32_t result = 0;
    for (int shift = 0; shift < 24; shift += 8) {
        const uint32_t product = (inBelow >> shift & 0xFF) * rest + 128;
        result |= std::min(255u, (inPixel >> shift & 0xFF) + ((product + (product >> 8)) >> 8)) << shift;
    }
    return result;
}

// The pixels of a piece that show at all, in its own coordinates.
Region ShownPixels(const Canvas::Piece& inPiece)
{
    std::vector<Box> boxes;
    const auto width = inPiece.bounds.right - inPiece.bounds.left;
    for (int v = inPiece.bounds.top; v < inPiece.bounds.bottom; ++v) {
        const uint32_t* row = inPiece.RowAt(v);
        for (int h = 0; h < width; ++h) {
            const int start = h;
            while (h < width && row[h] >> 24)
                ++h;
            if (h > start)
                boxes.push_back({ inPiece.bounds.left + start, v, inPiece.bounds.left + h, v + 1 });
        }
    }
    return Region(boxes);
}

class StRegion {
public:
    StRegion() : fRegion(NewRgn()) {}
    ~StRegion() { DisposeRgn(fRegion); }
    StRegion(const StRegion&) = delete;
    StRegion& operator=(const StRegion&) = delete;
    RgnHandle Get() const { return fRegion; }

private:
    RgnHandle fRegion;
};

void CopyPiece(const Canvas::Piece& inPiece, const Rect& inTo, SInt32 inMode, RgnHandle inMask)
{
    const PixMap map = inPiece.Map();
    CopyBits(reinterpret_cast<const BitMap*>(&map), GetPortBitMapForCopyBits(ReferenceOf(CurrentPort())),
             &inPiece.bounds, &inTo, (short)inMode, inMask);
}

// Fetches what is below a piece: white where the port has no pixels.
bool FetchBelow(const Canvas::Piece& inPiece, const Rect& inFrom, Canvas* outBelow)
{
    const Rect& bounds = inPiece.bounds;
    if (!outBelow->Make(bounds, 0x00FFFFFF))
        return false;
    PortRecord& port = *CurrentPort();
    if (!port.fSurface.base)
        return true;
    const PixMap map = outBelow->Pieces()[0].Map();
    CopyBits(GetPortBitMapForCopyBits(ReferenceOf(&port)), reinterpret_cast<const BitMap*>(&map), &inFrom,
             &bounds, srcCopy, nullptr);
    return true;
}

// Mixes the piece with what is there, and copies those of its pixels that show.
OSStatus BlendPiece(const Canvas::Piece& ioPiece, const Rect& inTo)
{
    Canvas below;
    if (!FetchBelow(ioPiece, inTo, &below))
        return memFullErr;
    StRegion mask;
    *FindRegion(mask.Get()) = ShownPixels(ioPiece);
    MapRgn(mask.Get(), &ioPiece.bounds, &inTo);
    for (int v = ioPiece.bounds.top; v < ioPiece.bounds.bottom; ++v) {
        uint32_t* row = ioPiece.RowAt(v);
        const uint32_t* under = below.Pieces()[0].RowAt(v);
        for (int h = 0; h < ioPiece.bounds.right - ioPiece.bounds.left; ++h)
            row[h] = Over(row[h], under[h]);
    }
    CopyPiece(ioPiece, inTo, srcCopy + ditherCopy, mask.Get());
    return noErr;
}

Rect TargetOf(const Rect& inPiece, const Plan& inPlan)
{
    const auto mapped = [](int at, int from, int to) { return (int)((int64_t)at * to / from); };
    const int width = inPlan.whole.right - inPlan.whole.left, height = inPlan.whole.bottom - inPlan.whole.top;
    return { (short)(inPlan.whole.top + mapped(inPiece.top, inPlan.height, height)),
             (short)(inPlan.whole.left + mapped(inPiece.left, inPlan.width, width)),
             (short)(inPlan.whole.top + mapped(inPiece.bottom, inPlan.height, height)),
             (short)(inPlan.whole.left + mapped(inPiece.right, inPlan.width, width)) };
}

// A few rows of a piece after the other.
OSStatus BlendBands(const Canvas::Piece& ioPiece, const Plan& inPlan)
{
    const int height = std::max(1, kMaskedPixels / (ioPiece.bounds.right - ioPiece.bounds.left));
    for (int v = ioPiece.bounds.top; v < ioPiece.bounds.bottom; v += height) {
        Canvas::Piece band = { ioPiece.bounds, ioPiece.RowAt(v) };
        band.bounds.top = (short)v;
        band.bounds.bottom = (short)std::min(v + height, (int)ioPiece.bounds.bottom);
        if (const OSStatus error = BlendPiece(band, TargetOf(band.bounds, inPlan)))
            return error;
    }
    return noErr;
}

OSStatus ShowPiece(const Canvas::Piece& inPiece, const Plan& inPlan, const Placement& inPlace, bool inBlends)
{
    const Rect to = TargetOf(inPiece.bounds, inPlan);
    const PortRecord& port = *CurrentPort();
    if (!inBlends)
        CopyPiece(inPiece, to,
                  inPlace.mode == graphicsModeStraightAlpha ? srcCopy + ditherCopy : inPlace.mode, nullptr);
    else if (port.Depth() == 32 && !RecorderOf(&port))
        DrawPremultiplied(inPiece.pixels, inPiece.bounds.right - inPiece.bounds.left, to);
    else
        return BlendBands(inPiece, inPlan);
    return noErr;
}

OSStatus DrawThroughCanvas(PortRecord& inPort, ImageReader& ioReader, const Placement& inPlace)
{
    const Plan plan = MakePlan(inPort, inPlace, ioReader.Facts());
    if (IsEmpty(plan.made))
        return noErr;
    if ((int64_t)(plan.made.x2 - plan.made.x1) * (plan.made.y2 - plan.made.y1) > kMaxPixels)
        return memFullErr;
    const bool blends = ioReader.Facts().hasAlpha && inPlace.mode == graphicsModeStraightAlpha;
    Canvas canvas;
    if (!canvas.Make(RectOf(plan.made)))
        return memFullErr;
    RowScaler rows(ioReader, inPlace.part, plan.width, plan.height, plan.made,
                   blends ? Alpha::Premultiply : Alpha::Drop);
    canvas.Fill(rows);
    for (const Canvas::Piece& piece : canvas.Pieces())
        if (const OSStatus error = ShowPiece(piece, plan, inPlace, blends))
            return error;
    return ioReader.Error();
}

} // namespace

Rect PlaceOf(const Placement& inPlace, int inWidth, int inHeight)
{
    const auto along = [](int at, int size, int start, int end) {
        return start + (int)((int64_t)at * (end - start) / size);
    };
    const Rect& bounds = inPlace.bounds;
    const int left = along(inPlace.part.left, inWidth, bounds.left, bounds.right);
    const int right = along(inPlace.part.right, inWidth, bounds.left, bounds.right);
    const int top = along(inPlace.part.top, inHeight, bounds.top, bounds.bottom);
    const int bottom = along(inPlace.part.bottom, inHeight, bounds.top, bounds.bottom);
    return RectOf(Box{ left, top, std::max(right, left + 1), std::max(bottom, top + 1) });
}

StCopyState::StCopyState(const Placement& inPlace)
{
    PortRecord& port = *CurrentPort();
    GetForeColor(&fFore);
    GetBackColor(&fBack);
    fOperand = port.fOpColor;
    fClip = port.fClip;
    const RGBColor black = { 0, 0, 0 }, white = { 0xFFFF, 0xFFFF, 0xFFFF };
    RGBForeColor(&black);
    RGBBackColor((inPlace.mode & ~ditherCopy) == transparent ? &inPlace.opColor : &white);
    port.fOpColor = inPlace.opColor;
    if (inPlace.clip)
        port.fClip.Intersect(port.fClip, *inPlace.clip);
    port.ClippingChanged();
}

StCopyState::~StCopyState()
{
    PortRecord& port = *CurrentPort();
    RGBForeColor(&fFore);
    RGBBackColor(&fBack);
    port.fOpColor = fOperand;
    port.fClip = fClip;
    port.ClippingChanged();
}

OSStatus DrawImage(ImageReader& ioReader, const Placement& inPlace)
{
    const ImageFacts& facts = ioReader.Facts();
    const Box all = { 0, 0, facts.width, facts.height }, part = BoxOf(inPlace.part);
    if (IsEmpty(part) || !Contains(all, part)) // the data changed after its header was asked for
        return codecBadDataErr;
    const StCopyState state(inPlace);
    PortRecord& port = *CurrentPort();
    try {
        return CanDrawDirectly(port, inPlace, ioReader.Facts()) ? DrawDirectly(port, ioReader, inPlace.bounds)
                                                                : DrawThroughCanvas(port, ioReader, inPlace);
    } catch (const std::bad_alloc&) {
        return memFullErr;
    }
}

} // namespace lampblack::images
