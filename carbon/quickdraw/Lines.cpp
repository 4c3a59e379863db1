// The pen and its lines. A line covers every place where the pen, hanging below and to the right, touches the
// one-pixel path between its ends; the path is the same in both directions.
#include "Recorder.h"

#include <algorithm>
#include <cstring>

using namespace lampblack::quickdraw;

namespace lampblack::quickdraw {

// A path from the upper end to the lower one: on each row a run of columns.
class Path {
public:
    Path(Point a, Point b)
    {
        if (a.v > b.v || (a.v == b.v && a.h > b.h))
            std::swap(a, b);
        fTop = a.v;
        fStart = a.h;
        fRows = b.v - a.v;
        fColumns = std::abs(b.h - a.h);
        fSign = b.h < a.h ? -1 : 1;
    }

    int Top() const { return fTop; }
    int Bottom() const { return fTop + fRows; } // the last row

    // The leftmost and rightmost column on a row of the path.
    void Run(int v, int* outLeft, int* outRight) const
    {
        const int64_t row = v - fTop;
        int first, last;
        if (fRows == 0) {
            first = 0;
            last = fColumns;
        } else if (fRows >= fColumns) {
            first = last = (int)((2 * row * fColumns + fRows) / (2 * (int64_t)fRows));
        } else {
            first = FirstColumn(row);
            last = FirstColumn(row + 1) - 1;
        }
        *outLeft = fStart + (fSign > 0 ? first : -last);
        *outRight = fStart + (fSign > 0 ? last : -first);
    }

private:
    // The first column c whose row, the nearest to c * rows / columns, is this one.
    int FirstColumn(int64_t row) const
    {
        if (row <= 0)
            return 0;
        const int64_t numerator = (2 * row - 1) * fColumns, denominator = 2 * (int64_t)fRows;
        return (int)std::min<int64_t>((numerator + denominator - 1) / denominator, fColumns + 1);
    }

    int fTop, fStart, fRows, fColumns, fSign;
};

static void DrawPath(Painter& ioPainter, const Path& inPath, Point inPen)
{
    for (int v = ioPainter.Top(); v < ioPainter.Bottom(); ++v) {
        const int first = std::max(inPath.Top(), v - inPen.v + 1), last = std::min(inPath.Bottom(), v);
        if (first > last)
            continue;
        int left[2], right[2];
        inPath.Run(first, &left[0], &right[0]);
        inPath.Run(last, &left[1], &right[1]);
        ioPainter.Span(v, std::min(left[0], left[1]), std::max(right[0], right[1]) + inPen.h);
    }
}

static void DrawLine(PortRecord& ioPort, Point from, Point to)
{
    const Point pen = ioPort.fPen.size;
    if (ioPort.fPen.visibility < 0 || pen.h <= 0 || pen.v <= 0)
        return;
    const Box bounds = { std::min(from.h, to.h), std::min(from.v, to.v), std::max(from.h, to.h) + pen.h,
                         std::max(from.v, to.v) + pen.v };
    const Ink ink = InkOf(ioPort, Verb::Paint, nullptr);
    Painter painter(ioPort, ink, bounds);
    if (from.h == to.h || from.v == to.v)
        painter.Fill(bounds);
    else
        DrawPath(painter, Path(from, to), pen);
}

static void AddToOutlines(PortRecord& ioPort, Point from, Point to)
{
    if (ioPort.fOpenRegion) {
        ioPort.fOpenRegion->edges.push_back(from);
        ioPort.fOpenRegion->edges.push_back(to);
    }
    if (ioPort.fOpenPolygon) {
        std::vector<Point>& points = ioPort.fOpenPolygon->points;
        if (points.empty())
            points.push_back(from);
        points.push_back(to);
    }
}

static void LineFromPen(PortRecord& ioPort, Point to)
{
    const Point from = ioPort.fPen.location;
    ioPort.fPen.location = to;
    AddToOutlines(ioPort, from, to);
    RecordLine(from, to);
    DrawLine(ioPort, from, to);
}

static Point Moved(Point inPoint, short dh, short dv)
{
    return { (short)(inPoint.v + dv), (short)(inPoint.h + dh) };
}

} // namespace lampblack::quickdraw

void HidePen(void)
{
    if (PortRecord* port = CurrentPort())
        --port->fPen.visibility;
}

void ShowPen(void)
{
    if (PortRecord* port = CurrentPort())
        ++port->fPen.visibility;
}

void GetPen(Point* pt)
{
    if (const PortRecord* port = CurrentPort(); port && pt)
        *pt = port->fPen.location;
}

void GetPenState(PenState* pnState)
{
    const PortRecord* port = CurrentPort();
    if (!port || !pnState)
        return;
    const Pen& pen = port->fPen;
    *pnState = { pen.location, pen.size, pen.mode, pen.pattern };
}

void SetPenState(const PenState* pnState)
{
    PortRecord* port = CurrentPort();
    if (!port || !pnState)
        return;
    Pen& pen = port->fPen;
    pen.location = pnState->pnLoc;
    pen.size = pnState->pnSize;
    pen.mode = pnState->pnMode;
    if (std::memcmp(pen.pattern.pat, pnState->pnPat.pat, sizeof(Pattern)) != 0)
        pen.pixels = nullptr; // the same bits leave a pixel pattern as it is
    pen.pattern = pnState->pnPat;
}

void PenSize(short width, short height)
{
    if (PortRecord* port = CurrentPort())
        port->fPen.size = { height, width };
}

void PenMode(short mode)
{
    if (PortRecord* port = CurrentPort())
        port->fPen.mode = mode;
}

void PenPat(const Pattern* pat)
{
    PortRecord* port = CurrentPort();
    if (!port || !pat)
        return;
    port->fPen.pattern = *pat;
    port->fPen.pixels = nullptr;
}

void PenNormal(void)
{
    PortRecord* port = CurrentPort();
    if (!port)
        return;
    const Pen normalPen;
    port->fPen.size = normalPen.size;
    port->fPen.mode = normalPen.mode;
    port->fPen.pattern = normalPen.pattern;
    port->fPen.pixels = nullptr;
}

void MoveTo(short h, short v)
{
    if (PortRecord* port = CurrentPort())
        port->fPen.location = { v, h };
}

void Move(short dh, short dv)
{
    if (PortRecord* port = CurrentPort())
        port->fPen.location = Moved(port->fPen.location, dh, dv);
}

void LineTo(short h, short v)
{
    if (PortRecord* port = CurrentPort())
        LineFromPen(*port, { v, h });
}

void Line(short dh, short dv)
{
    if (PortRecord* port = CurrentPort())
        LineFromPen(*port, Moved(port->fPen.location, dh, dv));
}
