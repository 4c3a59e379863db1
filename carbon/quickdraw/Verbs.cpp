#include "Verbs.h"

#include "Mapping.h"

namespace lampblack::quickdraw {

static constexpr Pattern kBlackPattern = { { 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF } };

Ink InkOf(const PortRecord& inPort, Verb inVerb, const Pattern* inFillPattern)
{
    switch (inVerb) {
    case Verb::Erase: return Ink(inPort.fBackPattern, patCopy, inPort.fForePixel, inPort.fBackPixel);
    case Verb::Invert: return Ink(kBlackPattern, patXor, 0, 0);
    case Verb::Fill: return Ink(*inFillPattern, patCopy, inPort.fForePixel, inPort.fBackPixel);
    case Verb::Frame:
    case Verb::Paint: break;
    }
    return Ink(inPort.fPen.pattern, inPort.fPen.mode, inPort.fForePixel, inPort.fBackPixel);
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
