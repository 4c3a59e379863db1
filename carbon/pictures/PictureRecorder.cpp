// The picture as a whole, and what is drawn. What drawing depends on is in RecordedState.cpp.
#include "PictureRecorder.h"

#include "PictureWriting.h"
#include "Player.h"

#include <Carbon/MacErrors.h>
#include <Carbon/MacMemory.h>
#include <quickdraw/RegionBytes.h>

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

namespace lampblack::pictures {

using namespace quickdraw;

static constexpr Fixed kSeventyTwo = 0x00480000;

static std::vector<PictureRecorder*> gOpen;

Rect FrameAt72(const Rect& inSource, Fixed inHRes, Fixed inVRes)
{
    const auto scaled = [](int value, Fixed resolution) {
        const int64_t product = (int64_t)value * kSeventyTwo;
        return resolution > 0 ? Clamped((int)std::clamp<int64_t>(product / resolution, -32767, 32767))
                              : (short)value;
    };
    return { scaled(inSource.top, inVRes), scaled(inSource.left, inHRes), scaled(inSource.bottom, inVRes),
             scaled(inSource.right, inHRes) };
}

PicHandle PictureRecorder::Open(PortRecord& ioPort, const PictureHeader& inHeader)
{
    const Handle handle = NewHandleClear(sizeof(Picture));
    auto* recorder = handle ? new (std::nothrow)
                                  PictureRecorder(ioPort, inHeader, reinterpret_cast<PicHandle>(handle))
                            : nullptr;
    if (!recorder) {
        if (handle)
            DisposeHandle(handle);
        SetQDError(memFullErr);
        return nullptr;
    }
    SetQDError(noErr);
    ioPort.fRecorder = recorder;
    --ioPort.fPen.visibility;
    return reinterpret_cast<PicHandle>(handle);
}

void PictureRecorder::Close(PortRecord& ioPort)
{
    auto* recorder = static_cast<PictureRecorder*>(ioPort.fRecorder);
    if (!recorder)
        return;
    recorder->Guarded([&] { recorder->MatchPort(ioPort); });
    SetQDError(recorder->Finish() ? (QDErr)noErr : (QDErr)memFullErr);
    ioPort.fRecorder = nullptr;
    ++ioPort.fPen.visibility;
    delete recorder;
}

void PictureRecorder::Abandon(PicHandle inPicture)
{
    for (PictureRecorder* recorder : gOpen)
        if (recorder->fPicture == inPicture)
            recorder->fPicture = nullptr;
}

PictureRecorder::PictureRecorder(const PortRecord& inPort, const PictureHeader& inHeader, PicHandle inPicture)
    : fHeader(inHeader),
      fPicture(inPicture),
      fStart{ inPort.fBounds.top, inPort.fBounds.left },
      fPatternStart(inPort.fPatternOrigin)
{
    fLast.origin = fStart;
    LMGetHiliteRGB(&fLast.hilite);
    Guarded([this] {
        gOpen.push_back(this);
        fWriter.U16(0); // the size, when it is known
        WriteRect(fHeader.frame, fWriter);
        Op(0x0011);
        fWriter.U16(0x02FF);
        Op(0x0C00);
        if (fHeader.extended) {
            fWriter.U32(0xFFFE0000);
            fWriter.U32((uint32_t)fHeader.hRes);
            fWriter.U32((uint32_t)fHeader.vRes);
            WriteRect(fHeader.source, fWriter);
        } else {
            fWriter.U32(0xFFFFFFFF);
            for (const short edge :
                 { fHeader.frame.left, fHeader.frame.top, fHeader.frame.right, fHeader.frame.bottom })
                fWriter.U32((uint32_t)edge << 16);
        }
        fWriter.U32(0);
        Op(0x001E); // the highlight colour of whoever plays it
    });
}

PictureRecorder::~PictureRecorder()
{
    std::erase(gOpen, this);
}

// What there is no memory for makes the picture an empty one.
template <typename Write>
void PictureRecorder::Guarded(Write inWrite)
{
    if (fFailed)
        return;
    try {
        inWrite();
    } catch (const std::bad_alloc&) {
        fFailed = true;
    }
}

bool PictureRecorder::Finish()
{
    const Handle handle = reinterpret_cast<Handle>(fPicture);
    if (!handle || !IsHandleValid(handle))
        return true; // it was killed meanwhile
    Guarded([this] { Op(0x00FF); });
    if (fFailed)
        return false;
    const std::vector<uint8_t>& data = fWriter.Data();
    SetHandleSize(handle, (Size)data.size());
    if (GetHandleSize(handle) != (Size)data.size())
        return false;
    std::memcpy(*handle, data.data(), data.size());
    foundation::StoreBE16(*handle, (uint16_t)data.size());
    return true;
}

void PictureRecorder::Op(int inOpcode)
{
    if (fWriter.Size() & 1)
        fWriter.U8(0);
    fWriter.U16((uint16_t)inOpcode);
}

void PictureRecorder::WritePoint(Point inPoint)
{
    fWriter.U16((uint16_t)inPoint.v);
    fWriter.U16((uint16_t)inPoint.h);
}

static bool IsSame(Point a, Point b)
{
    return a.h == b.h && a.v == b.v;
}

static bool FitsByte(int inValue)
{
    return inValue >= -128 && inValue <= 127;
}

void PictureRecorder::Line(const PortRecord& inPort, Point from, Point to)
{
    Guarded([&] {
        MatchPort(inPort);
        MatchPen(inPort);
        const bool goesOn = IsSame(from, fLast.pen);
        const int dh = to.h - from.h, dv = to.v - from.v;
        const bool isShort = FitsByte(dh) && FitsByte(dv);
        Op((isShort ? 0x22 : 0x20) + goesOn);
        if (!goesOn)
            WritePoint(from);
        if (isShort) {
            fWriter.U8((uint8_t)dh);
            fWriter.U8((uint8_t)dv);
        } else {
            WritePoint(to);
        }
        fLast.pen = to;
    });
}

// Opcodes of a kind of shape are eight, one for each verb; the next eight mean the same shape again.
void PictureRecorder::WriteRectShape(int inOpcode, Verb inVerb, const Rect& inRect, Rect* ioLast)
{
    const bool isSame = EqualRect(&inRect, ioLast);
    Op(inOpcode + (int)inVerb + (isSame ? 8 : 0));
    if (!isSame)
        WriteRect(inRect, fWriter);
    *ioLast = inRect;
}

void PictureRecorder::Rectangle(const PortRecord& inPort, Verb inVerb, const Rect& inRect,
                                const Pattern* inFill)
{
    Guarded([&] {
        MatchVerb(inPort, inVerb, inFill);
        WriteRectShape(0x30, inVerb, inRect, &fLast.rect);
    });
}

void PictureRecorder::RoundRectangle(const PortRecord& inPort, Verb inVerb, const Rect& inRect, Point inOval,
                                     const Pattern* inFill)
{
    Guarded([&] {
        MatchVerb(inPort, inVerb, inFill);
        if (!IsSame(inOval, fLast.oval)) {
            Op(0x0B);
            WritePoint(inOval);
            fLast.oval = inOval;
        }
        WriteRectShape(0x40, inVerb, inRect, &fLast.roundRect);
    });
}

void PictureRecorder::Oval(const PortRecord& inPort, Verb inVerb, const Rect& inRect, const Pattern* inFill)
{
    Guarded([&] {
        MatchVerb(inPort, inVerb, inFill);
        WriteRectShape(0x50, inVerb, inRect, &fLast.ovalRect);
    });
}

void PictureRecorder::Arc(const PortRecord& inPort, Verb inVerb, const Rect& inRect, int inStart,
                          int inExtent, const Pattern* inFill)
{
    Guarded([&] {
        MatchVerb(inPort, inVerb, inFill);
        WriteRectShape(0x60, inVerb, inRect, &fLast.arcRect);
        fWriter.U16((uint16_t)inStart);
        fWriter.U16((uint16_t)inExtent);
    });
}

void PictureRecorder::Polygon(const PortRecord& inPort, Verb inVerb, std::span<const Point> inPoints,
                              const Pattern* inFill)
{
    Guarded([&] {
        static constexpr size_t kMostPoints = (32767 - 10) / sizeof(Point);
        const std::span<const Point> points = inPoints.first(std::min(inPoints.size(), kMostPoints));
        MatchVerb(inPort, inVerb, inFill);
        Rect bounds = { points[0].v, points[0].h, points[0].v, points[0].h };
        for (const Point& p : points)
            bounds = { std::min(bounds.top, p.v), std::min(bounds.left, p.h), std::max(bounds.bottom, p.v),
                       std::max(bounds.right, p.h) };
        Op(0x70 + (int)inVerb);
        fWriter.U16((uint16_t)(10 + points.size() * sizeof(Point)));
        WriteRect(bounds, fWriter);
        for (const Point& p : points)
            WritePoint(p);
    });
}

// The upper and the lower half of a region that has several rows of boxes.
static void Halve(const Region& inRegion, Region* outUpper, Region* outLower)
{
    const Box all = inRegion.Extents();
    const int middle = all.y1 + (all.y2 - all.y1) / 2;
    *outUpper = inRegion;
    outUpper->Intersect(Box{ all.x1, all.y1, all.x2, middle });
    *outLower = inRegion;
    outLower->Intersect(Box{ all.x1, middle, all.x2, all.y2 });
}

// A region longer than its size can say is written in halves, which only a frame would show.
void PictureRecorder::WriteShape(Verb inVerb, const Region& inRegion)
{
    const std::vector<uint8_t> bytes = RegionBytes(inRegion);
    if (!bytes.empty()) {
        Op(0x80 + (int)inVerb);
        return fWriter.Write(bytes);
    }
    const Box all = inRegion.Extents();
    if (inVerb == Verb::Frame || all.y2 - all.y1 < 2)
        return;
    Region upper, lower;
    Halve(inRegion, &upper, &lower);
    WriteShape(inVerb, upper);
    WriteShape(inVerb, lower);
}

void PictureRecorder::Shape(const PortRecord& inPort, Verb inVerb, const Region& inRegion,
                            const Pattern* inFill)
{
    Guarded([&] {
        MatchVerb(inPort, inVerb, inFill);
        WriteShape(inVerb, inRegion);
    });
}

void PictureRecorder::WriteText(Point inAt, std::span<const uint8_t> inText)
{
    const int dh = inAt.h - fLast.textAt.h, dv = inAt.v - fLast.textAt.v;
    const bool isNear = dh >= 0 && dh <= 255 && dv >= 0 && dv <= 255 && (dh != 0 || dv != 0);
    Op(isNear ? 0x28 + (dh != 0) + 2 * (dv != 0) : 0x28);
    if (!isNear)
        WritePoint(inAt);
    if (isNear && dh != 0)
        fWriter.U8((uint8_t)dh);
    if (isNear && dv != 0)
        fWriter.U8((uint8_t)dv);
    fWriter.U8((uint8_t)inText.size());
    fWriter.Write(inText);
    fLast.textAt = inAt;
}

// How far the pen goes for a text in the settings that it was drawn with.
static int WidthIn(const TextSettings& inSettings, const TextScale& inScale, std::span<const uint8_t> inText)
{
    PortRecord* port = CurrentPort();
    const TextSettings own = std::exchange(port->fText, inSettings);
    const auto* text = reinterpret_cast<const char*>(inText.data());
    const long length = (long)inText.size();
    const int width = CharToPixel(const_cast<char*>(text), length, 0, length, leftCaret, onlyStyleRun,
                                  inScale.numer, inScale.denom);
    port->fText = own;
    return width;
}

// An opcode holds 255 letters at most.
void PictureRecorder::Text(const PortRecord& inPort, const TextSettings& inSettings, const TextScale& inScale,
                           Point inAt, std::span<const uint8_t> inText)
{
    Guarded([&] {
        MatchPort(inPort);
        MatchText(inPort, inSettings, inScale);
        static constexpr size_t kMostLetters = 255;
        for (size_t done = 0; done < inText.size(); done += kMostLetters) {
            const int before = done == 0 ? 0 : WidthIn(inSettings, inScale, inText.first(done));
            WriteText({ inAt.v, Clamped(inAt.h + before) },
                      inText.subspan(done, std::min(kMostLetters, inText.size() - done)));
        }
    });
}

// A bit map has no colours of its own: set bits are black, or the foreground.
static bool IsBitMap(const Surface& inSurface)
{
    return inSurface.depth == 1 && !inSurface.colors;
}

static Rect Overlap(const Rect& a, const Rect& b)
{
    return RectOf(Intersection(BoxOf(a), BoxOf(b)));
}

void PictureRecorder::WriteBits(const CopiedPixels& inPixels, const Region* inMask)
{
    const Surface& from = inPixels.from;
    const Rect part = Overlap(inPixels.fromRect, from.bounds);
    const bool isDirect = from.depth >= 16;
    const std::vector<uint8_t> mask = inMask ? RegionBytes(*inMask) : std::vector<uint8_t>();
    const bool isPacked = PictureRowBytes(from.depth, part.right - part.left) >= 8;
    Op((isDirect ? 0x9A : isPacked ? 0x98 : 0x90) + (inMask ? 1 : 0));
    if (isDirect)
        fWriter.U32(0x000000FF);
    if (IsBitMap(from)) {
        fWriter.U16((uint16_t)PictureRowBytes(1, part.right - part.left));
        WriteRect(part, fWriter);
    } else {
        WriteMapHeader(from, part, fWriter);
        if (!isDirect)
            WriteColorTable(from, fWriter);
    }
    WriteRect(inPixels.fromRect, fWriter);
    WriteRect(inPixels.toRect, fWriter);
    fWriter.U16((uint16_t)inPixels.mode);
    fWriter.Write(mask);
    WriteRows(from, part, fWriter);
}

void PictureRecorder::Pixels(const PortRecord& inPort, const CopiedPixels& inPixels)
{
    if (!inPixels.from.base || IsEmpty(Overlap(inPixels.fromRect, inPixels.from.bounds)))
        return;
    Guarded([&] {
        MatchPort(inPort);
        MatchColor(0x1F, inPort.fOpColor, &fLast.op);
        MatchColor(0x1D, inPort.fHiliteColor, &fLast.hilite);
        std::vector<Region> masks;
        if (!inPixels.mask)
            return WriteBits(inPixels, nullptr);
        masks.push_back(*inPixels.mask);
        while (!masks.empty()) {
            const Region mask = masks.back();
            masks.pop_back();
            const Box all = mask.Extents();
            if (!RegionBytes(mask).empty() || all.y2 - all.y1 < 2) {
                WriteBits(inPixels, &mask);
                continue;
            }
            Region upper, lower;
            Halve(mask, &upper, &lower);
            masks.push_back(lower);
            masks.push_back(upper);
        }
    });
}

void PictureRecorder::Blended(const PortRecord& inPort, const ArgbPixels& inPixels, const Rect& inPart,
                              const Rect& inTo)
{
    Guarded([&] {
        MatchPort(inPort);
        Op(0x8200);
        WriteMattedImage(inPixels, inPart, inTo, fWriter);
        for (int i = 0; i < kOpcodesOfFallbacks; ++i) // what is drawn next does not stand in for the image
            Op(0x00);
    });
}

void PictureRecorder::Comment(const PortRecord& inPort, short inKind, std::span<const uint8_t> inData)
{
    Guarded([&] {
        MatchPort(inPort);
        Op(inData.empty() ? 0xA0 : 0xA1);
        fWriter.U16((uint16_t)inKind);
        if (inData.empty())
            return;
        fWriter.U16((uint16_t)inData.size());
        fWriter.Write(inData);
    });
}

} // namespace lampblack::pictures
