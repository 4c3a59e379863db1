// Rectangles, ovals, round rectangles and arcs: five verbs each.
#include "Recorder.h"
#include "RoundShape.h"
#include "Verbs.h"

using namespace lampblack::quickdraw;

namespace lampblack::quickdraw {

// What collects the outlines of framed shapes while a region is open. The pen, hidden meanwhile unless the
// application shows it, draws them as well.
static Region* OpenOutlines(Verb inVerb)
{
    PortRecord* port = CurrentPort();
    return inVerb == Verb::Frame && port && port->fOpenRegion ? &port->fOpenRegion->shapes : nullptr;
}

// Draws what is in outer and not in inner, row by row.
static void DrawRing(Painter& ioPainter, const RoundShape& outer, const RoundShape& inner)
{
    for (int v = ioPainter.Top(); v < ioPainter.Bottom(); ++v) {
        int left, right, innerLeft, innerRight;
        outer.Row(v, &left, &right);
        inner.Row(v, &innerLeft, &innerRight);
        if (innerLeft >= innerRight) {
            ioPainter.Span(v, left, right);
            continue;
        }
        ioPainter.Span(v, left, innerLeft);
        ioPainter.Span(v, innerRight, right);
    }
}

static void DrawWhole(Painter& ioPainter, const RoundShape& inShape)
{
    if (inShape.IsRectangle())
        return ioPainter.Fill(inShape.Bounds());
    for (int v = ioPainter.Top(); v < ioPainter.Bottom(); ++v) {
        int left, right;
        inShape.Row(v, &left, &right);
        ioPainter.Span(v, left, right);
    }
}

static void DrawFrame(Painter& ioPainter, const RoundShape& inShape, Point inPen)
{
    if (inPen.h <= 0 || inPen.v <= 0)
        return;
    const RoundShape inner = inShape.Inside(inPen.h, inPen.v);
    const Box& outer = inShape.Bounds();
    const Box& hole = inner.Bounds();
    if (IsEmpty(hole))
        return DrawWhole(ioPainter, inShape);
    if (!inShape.IsRectangle())
        return DrawRing(ioPainter, inShape, inner);
    ioPainter.Fill(Box{ outer.x1, outer.y1, outer.x2, hole.y1 });
    ioPainter.Fill(Box{ outer.x1, hole.y1, hole.x1, hole.y2 });
    ioPainter.Fill(Box{ hole.x2, hole.y1, outer.x2, hole.y2 });
    ioPainter.Fill(Box{ outer.x1, hole.y2, outer.x2, outer.y2 });
}

static void Draw(Verb inVerb, const Rect* inRect, int inOvalWidth, int inOvalHeight, const Pattern* inPattern)
{
    if (!inRect || IsEmpty(*inRect))
        return;
    RecordRoundRect(inVerb, *inRect, inOvalWidth, inOvalHeight, inPattern);
    const RoundShape shape(BoxOf(*inRect), inOvalWidth, inOvalHeight);
    if (Region* outlines = OpenOutlines(inVerb))
        outlines->Xor(*outlines, shape.AsRegion());
    PortRecord* port = PortForDrawing(inVerb, inPattern);
    if (!port)
        return;
    const Ink ink = InkOf(*port, inVerb, inPattern);
    Painter painter(*port, ink, shape.Bounds());
    if (inVerb == Verb::Frame)
        DrawFrame(painter, shape, port->fPen.size);
    else
        DrawWhole(painter, shape);
}

static void DrawOval(Verb inVerb, const Rect* inRect, const Pattern* inPattern)
{
    if (inRect)
        Draw(inVerb, inRect, inRect->right - inRect->left, inRect->bottom - inRect->top, inPattern);
}

static void DrawCut(Painter& ioPainter, const Wedge& inWedge, int v, int inLeft, int inRight)
{
    int spans[2][2];
    const int count = inWedge.Cut(v, inLeft, inRight, spans);
    for (int i = 0; i < count; ++i)
        ioPainter.Span(v, spans[i][0], spans[i][1]);
}

static void DrawArc(Verb inVerb, const Rect* inRect, int inStart, int inExtent, const Pattern* inPattern)
{
    if (inRect)
        RecordArc(inVerb, *inRect, inStart, inExtent, inPattern);
    PortRecord* port = PortForDrawing(inVerb, inPattern);
    if (!port || !inRect || IsEmpty(*inRect))
        return;
    const Box box = BoxOf(*inRect);
    const Wedge wedge(box, inStart, inExtent);
    const RoundShape outer(box, box.x2 - box.x1, box.y2 - box.y1);
    const Point pen = port->fPen.size;
    const bool framed = inVerb == Verb::Frame;
    if (framed && (pen.h <= 0 || pen.v <= 0))
        return;
    const RoundShape inner = framed ? outer.Inside(pen.h, pen.v) : RoundShape({ 0, 0, 0, 0 }, 0, 0);
    const Ink ink = InkOf(*port, inVerb, inPattern);
    Painter painter(*port, ink, box);
    for (int v = painter.Top(); v < painter.Bottom(); ++v) {
        int left, right, innerLeft, innerRight;
        outer.Row(v, &left, &right);
        inner.Row(v, &innerLeft, &innerRight);
        if (IsEmpty(inner.Bounds()) || innerLeft >= innerRight)
            innerLeft = innerRight = right;
        DrawCut(painter, wedge, v, left, innerLeft);
        DrawCut(painter, wedge, v, innerRight, right);
    }
}

} // namespace lampblack::quickdraw

void FrameRect(const Rect* r)
{
    Draw(Verb::Frame, r, 0, 0, nullptr);
}

void PaintRect(const Rect* r)
{
    Draw(Verb::Paint, r, 0, 0, nullptr);
}

void EraseRect(const Rect* r)
{
    Draw(Verb::Erase, r, 0, 0, nullptr);
}

void InvertRect(const Rect* r)
{
    Draw(Verb::Invert, r, 0, 0, nullptr);
}

void FillRect(const Rect* r, const Pattern* pat)
{
    Draw(Verb::Fill, r, 0, 0, pat);
}

void FrameOval(const Rect* r)
{
    DrawOval(Verb::Frame, r, nullptr);
}

void PaintOval(const Rect* r)
{
    DrawOval(Verb::Paint, r, nullptr);
}

void EraseOval(const Rect* r)
{
    DrawOval(Verb::Erase, r, nullptr);
}

void InvertOval(const Rect* r)
{
    DrawOval(Verb::Invert, r, nullptr);
}

void FillOval(const Rect* r, const Pattern* pat)
{
    DrawOval(Verb::Fill, r, pat);
}

void FrameRoundRect(const Rect* r, short ovalWidth, short ovalHeight)
{
    Draw(Verb::Frame, r, ovalWidth, ovalHeight, nullptr);
}

void PaintRoundRect(const Rect* r, short ovalWidth, short ovalHeight)
{
    Draw(Verb::Paint, r, ovalWidth, ovalHeight, nullptr);
}

void EraseRoundRect(const Rect* r, short ovalWidth, short ovalHeight)
{
    Draw(Verb::Erase, r, ovalWidth, ovalHeight, nullptr);
}

void InvertRoundRect(const Rect* r, short ovalWidth, short ovalHeight)
{
    Draw(Verb::Invert, r, ovalWidth, ovalHeight, nullptr);
}

void FillRoundRect(const Rect* r, short ovalWidth, short ovalHeight, const Pattern* pat)
{
    Draw(Verb::Fill, r, ovalWidth, ovalHeight, pat);
}

void FrameArc(const Rect* r, short startAngle, short arcAngle)
{
    DrawArc(Verb::Frame, r, startAngle, arcAngle, nullptr);
}

void PaintArc(const Rect* r, short startAngle, short arcAngle)
{
    DrawArc(Verb::Paint, r, startAngle, arcAngle, nullptr);
}

void EraseArc(const Rect* r, short startAngle, short arcAngle)
{
    DrawArc(Verb::Erase, r, startAngle, arcAngle, nullptr);
}

void InvertArc(const Rect* r, short startAngle, short arcAngle)
{
    DrawArc(Verb::Invert, r, startAngle, arcAngle, nullptr);
}

void FillArc(const Rect* r, short startAngle, short arcAngle, const Pattern* pat)
{
    DrawArc(Verb::Fill, r, startAngle, arcAngle, pat);
}

void FrameRgn(RgnHandle rgn)
{
    const Region* region = FindRegion(rgn);
    if (!region)
        return;
    RecordRegion(Verb::Frame, *region, nullptr);
    if (Region* outlines = OpenOutlines(Verb::Frame))
        outlines->Xor(*outlines, *region);
    DrawRegion(Verb::Frame, *region, nullptr);
}

void PaintRgn(RgnHandle rgn)
{
    if (const Region* region = FindRegion(rgn)) {
        RecordRegion(Verb::Paint, *region, nullptr);
        DrawRegion(Verb::Paint, *region, nullptr);
    }
}

void EraseRgn(RgnHandle rgn)
{
    if (const Region* region = FindRegion(rgn)) {
        RecordRegion(Verb::Erase, *region, nullptr);
        DrawRegion(Verb::Erase, *region, nullptr);
    }
}

void InvertRgn(RgnHandle rgn)
{
    if (const Region* region = FindRegion(rgn)) {
        RecordRegion(Verb::Invert, *region, nullptr);
        DrawRegion(Verb::Invert, *region, nullptr);
    }
}

void FillRgn(RgnHandle rgn, const Pattern* pat)
{
    if (const Region* region = FindRegion(rgn)) {
        RecordRegion(Verb::Fill, *region, pat);
        DrawRegion(Verb::Fill, *region, pat);
    }
}
