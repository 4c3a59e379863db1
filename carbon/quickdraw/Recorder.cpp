#include "Recorder.h"

namespace lampblack::quickdraw {

static bool Shows(Verb inVerb, const Pattern* inFill)
{
    return inVerb != Verb::Fill || inFill;
}

void RecordLine(Point from, Point to)
{
    const PortRecord* port = CurrentPort();
    if (Recorder* recorder = RecorderOf(port))
        recorder->Line(*port, from, to);
}

void RecordRoundRect(Verb inVerb, const Rect& inRect, int inOvalWidth, int inOvalHeight,
                     const Pattern* inFill)
{
    const PortRecord* port = CurrentPort();
    Recorder* recorder = RecorderOf(port);
    if (!recorder || IsEmpty(inRect) || !Shows(inVerb, inFill))
        return;
    if (inOvalWidth == 0 && inOvalHeight == 0)
        recorder->Rectangle(*port, inVerb, inRect, inFill);
    else if (inOvalWidth == inRect.right - inRect.left && inOvalHeight == inRect.bottom - inRect.top)
        recorder->Oval(*port, inVerb, inRect, inFill);
    else
        recorder->RoundRectangle(*port, inVerb, inRect, { Clamped(inOvalHeight), Clamped(inOvalWidth) },
                                 inFill);
}

void RecordArc(Verb inVerb, const Rect& inRect, int inStart, int inExtent, const Pattern* inFill)
{
    const PortRecord* port = CurrentPort();
    Recorder* recorder = RecorderOf(port);
    if (recorder && !IsEmpty(inRect) && Shows(inVerb, inFill))
        recorder->Arc(*port, inVerb, inRect, inStart, inExtent, inFill);
}

void RecordPolygon(Verb inVerb, std::span<const Point> inPoints, const Pattern* inFill)
{
    const PortRecord* port = CurrentPort();
    Recorder* recorder = RecorderOf(port);
    if (recorder && !inPoints.empty() && Shows(inVerb, inFill))
        recorder->Polygon(*port, inVerb, inPoints, inFill);
}

void RecordRegion(Verb inVerb, const Region& inRegion, const Pattern* inFill)
{
    const PortRecord* port = CurrentPort();
    Recorder* recorder = RecorderOf(port);
    if (recorder && !inRegion.IsEmpty() && Shows(inVerb, inFill))
        recorder->Shape(*port, inVerb, inRegion, inFill);
}

void RecordText(const TextSettings& inSettings, Point inAt, std::span<const uint8_t> inText,
                const TextScale& inScale)
{
    const PortRecord* port = CurrentPort();
    Recorder* recorder = RecorderOf(port);
    if (recorder && !inText.empty())
        recorder->Text(*port, inSettings, inScale, inAt, inText);
}

void RecordPixels(const CopiedPixels& inPixels)
{
    const PortRecord* port = CurrentPort();
    Recorder* recorder = RecorderOf(port);
    if (recorder && !IsEmpty(inPixels.fromRect) && !IsEmpty(inPixels.toRect))
        recorder->Pixels(*port, inPixels);
}

} // namespace lampblack::quickdraw
