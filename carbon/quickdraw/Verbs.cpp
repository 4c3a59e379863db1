#include "Verbs.h"

#include "Mapping.h"
#include "PixelPatterns.h"

namespace lampblack::quickdraw {

static constexpr Pattern kBlackPattern = { { 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF } };

// Pixels that are no pattern (any more) leave it to the pattern of bits.
static Ink InkOf(const PortRecord& inPort, PixPatHandle inPixels, const Pattern& inPattern, short inMode)
{
    const PatternSource source = inPixels ? SourceOf(inPixels) : PatternSource{};
    switch (source.kind) {
    case PatternKind::Pixels: return Ink(inPort, source.tile, inMode);
    case PatternKind::Color: return Ink(inPort, source.color, inMode);
    case PatternKind::Bits: break;
    }
    return Ink(inPort, inPattern, inMode);
}

Ink InkOf(PortRecord& inPort, Verb inVerb, const Pattern* inFillPattern)
{
    inPort.Pixels(); // what the port's colours are in its table as it is now
    switch (inVerb) {
    case Verb::Erase: return InkOf(inPort, inPort.fBackPixels, inPort.fBackPattern, patCopy);
    case Verb::Invert: return Ink(inPort, kBlackPattern, TakeHiliteMode() ? (short)hilite : (short)patXor);
    case Verb::Fill: return InkOf(inPort, inPort.fFillPixels, *inFillPattern, patCopy);
    case Verb::Frame:
    case Verb::Paint: break;
    }
    return InkOf(inPort, inPort.fPen.pixels, inPort.fPen.pattern, inPort.fPen.mode);
}

PortRecord* PortForDrawing(Verb inVerb, const Pattern* inFillPattern)
{
    PortRecord* port = CurrentPort();
    if (!port || port->fPen.visibility < 0 || (inVerb == Verb::Fill && !inFillPattern))
        return nullptr;
    return port;
}

void DrawRegion(Verb inVerb, const Region& inRegion, const Pattern* inFillPattern)
{
    PortRecord* port = PortForDrawing(inVerb, inFillPattern);
    if (!port || inRegion.IsEmpty())
        return;
    const Ink ink = InkOf(*port, inVerb, inFillPattern);
    Painter painter(*port, ink, inRegion.Extents());
    if (inVerb != Verb::Frame)
        return painter.Fill(inRegion);
    const Point pen = port->fPen.size;
    if (pen.h <= 0 || pen.v <= 0)
        return;
    Region border;
    border.Subtract(inRegion, Inset(inRegion, pen.h, pen.v));
    painter.Fill(border);
}

} // namespace lampblack::quickdraw
