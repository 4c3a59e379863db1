// Polygon references, and the outlines that become polygons and regions.
#include "Mapping.h"
#include "Polygon.h"
#include "Recorder.h"

#include <Carbon/MacMemory.h>

#include <algorithm>
#include <cstddef>
#include <limits>

using namespace lampblack::quickdraw;

namespace lampblack::quickdraw {

static constexpr size_t kPolygonHeader = offsetof(MacPolygon, polyPoints);

// polySize counts bytes in 16 bits; more points than that can say are lost.
static constexpr size_t kMaxPoints = (std::numeric_limits<short>::max() - kPolygonHeader) / sizeof(Point);

// The points of a polygon whose record is whole; empty for any other reference.
static std::span<Point> PointsOf(PolyHandle inPolygon)
{
    const Handle handle = reinterpret_cast<Handle>(inPolygon);
    if (!IsHandleValid(handle) || !*handle || (size_t)GetHandleSize(handle) < kPolygonHeader)
        return {};
    const size_t size = (size_t)std::max<int>((*inPolygon)->polySize, 0);
    if (size < kPolygonHeader || size > (size_t)GetHandleSize(handle))
        return {};
    return { (*inPolygon)->polyPoints, (size - kPolygonHeader) / sizeof(Point) };
}

static Rect BoundsOf(std::span<const Point> inPoints)
{
    if (inPoints.empty())
        return { 0, 0, 0, 0 };
    Rect bounds = { inPoints[0].v, inPoints[0].h, inPoints[0].v, inPoints[0].h };
    for (const Point& p : inPoints)
        bounds = { std::min(bounds.top, p.v), std::min(bounds.left, p.h), std::max(bounds.bottom, p.v),
                   std::max(bounds.right, p.h) };
    return bounds;
}

static void StorePoints(PolyHandle ioPolygon, const std::vector<Point>& inPoints)
{
    const Handle handle = reinterpret_cast<Handle>(ioPolygon);
    const size_t count = std::min(inPoints.size(), kMaxPoints);
    const size_t size = kPolygonHeader + count * sizeof(Point);
    if (!IsHandleValid(handle))
        return;
    SetHandleSize(handle, (Size)size);
    if (MemError() != noErr)
        return;
    MacPolygon* polygon = *ioPolygon;
    polygon->polySize = (short)size;
    polygon->polyBBox = BoundsOf({ inPoints.data(), count });
    std::copy_n(inPoints.begin(), count, polygon->polyPoints);
}

static void Draw(Verb inVerb, PolyHandle inPolygon, const Pattern* inPattern)
{
    const std::span<Point> points = PointsOf(inPolygon);
    RecordPolygon(inVerb, points, inPattern);
    PortRecord* port = PortForDrawing(inVerb, inPattern);
    if (port && !points.empty())
        DrawRegion(inVerb, FillPolygon(points.data(), points.size(), port->Drawable().Extents()), inPattern);
}

} // namespace lampblack::quickdraw

PolyHandle OpenPoly(void)
{
    PortRecord* port = CurrentPort();
    if (!port || port->fOpenPolygon)
        return nullptr;
    const Handle handle = NewHandleClear((Size)kPolygonHeader);
    if (!handle)
        return nullptr;
    const PolyHandle polygon = reinterpret_cast<PolyHandle>(handle);
    (*polygon)->polySize = (short)kPolygonHeader;
    port->fOpenPolygon = std::make_unique<Outline>();
    port->fOpenPolygon->polygon = polygon;
    HidePen();
    return polygon;
}

void ClosePoly(void)
{
    PortRecord* port = CurrentPort();
    if (!port || !port->fOpenPolygon)
        return;
    StorePoints(port->fOpenPolygon->polygon, port->fOpenPolygon->points);
    port->fOpenPolygon.reset();
    ShowPen();
}

void KillPoly(PolyHandle poly)
{
    DisposeHandle(reinterpret_cast<Handle>(poly));
}

void OffsetPoly(PolyHandle poly, short dh, short dv)
{
    const std::span<Point> points = PointsOf(poly);
    if (points.empty())
        return;
    for (Point& p : points)
        p = { (short)(p.v + dv), (short)(p.h + dh) };
    OffsetRect(&(*poly)->polyBBox, dh, dv);
}

void MapPoly(PolyHandle poly, const Rect* srcRect, const Rect* dstRect)
{
    const std::span<Point> points = PointsOf(poly);
    if (points.empty() || !srcRect || !dstRect)
        return;
    for (Point& p : points)
        p = Mapped(p, *srcRect, *dstRect);
    (*poly)->polyBBox = BoundsOf(points);
}

// Framing draws the polygon's lines with the pen; it is closed only as far as its points close it.
void FramePoly(PolyHandle poly)
{
    const std::span<Point> found = PointsOf(poly);
    PortRecord* port = CurrentPort();
    if (found.empty() || !port)
        return;
    const std::vector<Point> points(found.begin(), found.end());
    RecordPolygon(Verb::Frame, points, nullptr);
    const StRecorderAside aside(*port); // its lines are not drawings of their own
    const Point pen = port->fPen.location;
    MoveTo(points[0].h, points[0].v);
    for (size_t i = 1; i < points.size(); ++i)
        LineTo(points[i].h, points[i].v);
    port->fPen.location = pen;
}

void PaintPoly(PolyHandle poly)
{
    Draw(Verb::Paint, poly, nullptr);
}

void ErasePoly(PolyHandle poly)
{
    Draw(Verb::Erase, poly, nullptr);
}

void InvertPoly(PolyHandle poly)
{
    Draw(Verb::Invert, poly, nullptr);
}

void FillPoly(PolyHandle poly, const Pattern* pat)
{
    Draw(Verb::Fill, poly, pat);
}

void OpenRgn(void)
{
    PortRecord* port = CurrentPort();
    if (!port || port->fOpenRegion)
        return;
    port->fOpenRegion = std::make_unique<Outline>();
    HidePen();
}

void CloseRgn(RgnHandle dstRgn)
{
    PortRecord* port = CurrentPort();
    if (!port || !port->fOpenRegion)
        return;
    const std::unique_ptr<Outline> outline = std::move(port->fOpenRegion);
    ShowPen();
    Region* region = FindRegion(dstRgn);
    if (!region)
        return SetQDError(paramErr);
    Region filled;
    const bool isFilled = FillEdges(outline->edges, &filled);
    if (isFilled)
        region->Xor(filled, outline->shapes);
    else
        region->Clear();
    SetQDError(isFilled ? (QDErr)noErr : (QDErr)rgnOverflowErr);
}
