// The opcodes of lines and shapes. The low three bits of a shape's opcode are the verb.
#include "Opcodes.h"
#include "Player.h"

#include <Carbon/MacMemory.h>
#include <quickdraw/RegionBytes.h>

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace lampblack::pictures {

using namespace quickdraw;

static constexpr int kVerbBits = 7, kFill = 4;
static constexpr int kSame = 8; // set in the opcodes that repeat the last shape

static constexpr void (*kRectangles[])(const Rect*) = { FrameRect, PaintRect, EraseRect, InvertRect };
static constexpr void (*kRoundRectangles[])(const Rect*, short, short) = { FrameRoundRect, PaintRoundRect,
                                                                           EraseRoundRect, InvertRoundRect };
static constexpr void (*kOvals[])(const Rect*) = { FrameOval, PaintOval, EraseOval, InvertOval };
static constexpr void (*kArcs[])(const Rect*, short, short) = { FrameArc, PaintArc, EraseArc, InvertArc };
static constexpr void (*kPolygons[])(PolyHandle) = { FramePoly, PaintPoly, ErasePoly, InvertPoly };
static constexpr void (*kRegions[])(RgnHandle) = { FrameRgn, PaintRgn, EraseRgn, InvertRgn };

// The lines of a pen cover about their length times its size.
static bool CanAffordLine(Player& ioPlayer, Point from, Point to)
{
    const Point pen = ioPlayer.Port().fPen.size;
    const Rect around = RectOf({ std::min(from.h, to.h), std::min(from.v, to.v),
                                 std::max(from.h, to.h) + pen.h, std::max(from.v, to.v) + pen.v });
    const Box seen = Intersection(BoxOf(around), ioPlayer.Port().Drawable().Extents());
    const int64_t width = std::max(0, seen.x2 - seen.x1), height = std::max(0, seen.y2 - seen.y1);
    const int64_t covered = width * std::max<int64_t>(pen.v, 1) + height * std::max<int64_t>(pen.h, 1);
    return ioPlayer.CanAfford(std::min(covered, width * height) + 64 +
                              (int64_t)ioPlayer.Port().Drawable().Boxes().size());
}

static Point After(Point inPoint, int dh, int dv)
{
    return { Clamped(inPoint.v + dv), Clamped(inPoint.h + dh) };
}

// 0x20 and 0x22 begin at a point of their own; 0x22 and 0x23 end by a distance of a byte each way.
void PlayLine(Player& ioPlayer, int inOpcode, BigEndianReader& ioData)
{
    if ((inOpcode & 1) == 0)
        ioPlayer.fPen = ioData.ReadPoint();
    Point end;
    if (inOpcode >= 0x22) {
        const int dh = ioData.S8(), dv = ioData.S8();
        end = After(ioPlayer.fPen, dh, dv);
    } else {
        end = ioData.ReadPoint();
    }
    const Point from = ioPlayer.Map().Of(ioPlayer.fPen), to = ioPlayer.Map().Of(end);
    ioPlayer.fPen = end;
    if (!CanAffordLine(ioPlayer, from, to))
        return;
    MoveTo(from.h, from.v);
    LineTo(to.h, to.v);
}

static Rect NextRect(Player& ioPlayer, int inOpcode, BigEndianReader& ioData, Rect* ioLast)
{
    if ((inOpcode & kSame) == 0)
        *ioLast = ioData.ReadRect();
    return ioPlayer.Map().Of(*ioLast);
}

void PlayRectangle(Player& ioPlayer, int inOpcode, BigEndianReader& ioData)
{
    const Rect rect = NextRect(ioPlayer, inOpcode, ioData, &ioPlayer.fRect);
    const int verb = inOpcode & kVerbBits;
    if (!ioPlayer.CanAfford(rect))
        return;
    if (verb != kFill)
        kRectangles[verb](&rect);
    else if (ioPlayer.fFillPixels)
        FillCRect(&rect, ioPlayer.fFillPixels);
    else
        FillRect(&rect, &ioPlayer.fFillPattern);
}

void PlayRoundRectangle(Player& ioPlayer, int inOpcode, BigEndianReader& ioData)
{
    const Rect rect = NextRect(ioPlayer, inOpcode, ioData, &ioPlayer.fRoundRect);
    const Point oval = ioPlayer.Map().Size(ioPlayer.fOval);
    const int verb = inOpcode & kVerbBits;
    if (!ioPlayer.CanAfford(rect, rect.bottom - rect.top))
        return;
    if (verb != kFill)
        kRoundRectangles[verb](&rect, oval.h, oval.v);
    else if (ioPlayer.fFillPixels)
        FillCRoundRect(&rect, oval.h, oval.v, ioPlayer.fFillPixels);
    else
        FillRoundRect(&rect, oval.h, oval.v, &ioPlayer.fFillPattern);
}

void PlayOval(Player& ioPlayer, int inOpcode, BigEndianReader& ioData)
{
    const Rect rect = NextRect(ioPlayer, inOpcode, ioData, &ioPlayer.fOvalRect);
    const int verb = inOpcode & kVerbBits;
    if (!ioPlayer.CanAfford(rect, rect.bottom - rect.top))
        return;
    if (verb != kFill)
        kOvals[verb](&rect);
    else if (ioPlayer.fFillPixels)
        FillCOval(&rect, ioPlayer.fFillPixels);
    else
        FillOval(&rect, &ioPlayer.fFillPattern);
}

void PlayArc(Player& ioPlayer, int inOpcode, BigEndianReader& ioData)
{
    const Rect rect = NextRect(ioPlayer, inOpcode, ioData, &ioPlayer.fArcRect);
    const short start = ioData.S16(), extent = ioData.S16();
    const int verb = inOpcode & kVerbBits;
    if (!ioPlayer.CanAfford(rect, rect.bottom - rect.top))
        return;
    if (verb != kFill)
        kArcs[verb](&rect, start, extent);
    else if (ioPlayer.fFillPixels)
        FillCArc(&rect, start, extent, ioPlayer.fFillPixels);
    else
        FillArc(&rect, start, extent, &ioPlayer.fFillPattern);
}

// Size, bounds and points.
static std::vector<Point> ReadPolygon(BigEndianReader& ioData)
{
    std::vector<Point> points;
    ioData.Skip(2 + 8);
    points.reserve(ioData.Remaining() / sizeof(Point));
    while (ioData.Remaining() >= sizeof(Point))
        points.push_back(ioData.ReadPoint());
    return points;
}

static PolyHandle NewPolygon(const std::vector<Point>& inPoints)
{
    const size_t size = offsetof(MacPolygon, polyPoints) + inPoints.size() * sizeof(Point);
    const Handle handle = size <= 32767 ? NewHandleClear((Size)size) : nullptr;
    if (!handle)
        return nullptr;
    const PolyHandle polygon = reinterpret_cast<PolyHandle>(handle);
    (*polygon)->polySize = (short)size;
    std::memcpy((*polygon)->polyPoints, inPoints.data(), inPoints.size() * sizeof(Point));
    return polygon;
}

// Filling takes a step for each row that each side passes, framing draws the lines.
static bool CanAffordPolygon(Player& ioPlayer, const std::vector<Point>& inPoints, bool isFramed)
{
    static constexpr int64_t kForEachCrossing = 32;
    int64_t crossings = 0;
    for (size_t i = 1; i < inPoints.size(); ++i) {
        crossings += std::abs(inPoints[i].v - inPoints[i - 1].v) + 1;
        if (isFramed && !CanAffordLine(ioPlayer, inPoints[i - 1], inPoints[i]))
            return false;
    }
    crossings += std::abs(inPoints.back().v - inPoints.front().v);
    return isFramed || ioPlayer.CanAfford(crossings * kForEachCrossing);
}

static void DrawPolygon(Player& ioPlayer, int inVerb, PolyHandle inPolygon)
{
    if (inVerb != kFill)
        kPolygons[inVerb](inPolygon);
    else if (ioPlayer.fFillPixels)
        FillCPoly(inPolygon, ioPlayer.fFillPixels);
    else
        FillPoly(inPolygon, &ioPlayer.fFillPattern);
}

void PlayPolygon(Player& ioPlayer, int inOpcode, BigEndianReader& ioData)
{
    if ((inOpcode & kSame) == 0)
        ioPlayer.fPolygon = ReadPolygon(ioData);
    std::vector<Point> points = ioPlayer.fPolygon;
    for (Point& p : points)
        p = ioPlayer.Map().Of(p);
    const int verb = inOpcode & kVerbBits;
    if (points.empty() || !CanAffordPolygon(ioPlayer, points, verb == 0))
        return;
    const PolyHandle polygon = NewPolygon(points);
    if (!polygon)
        return ioPlayer.Fail(noMemForPictPlaybackErr);
    DrawPolygon(ioPlayer, verb, polygon);
    KillPoly(polygon);
}

static void DrawRegion(Player& ioPlayer, int inVerb, RgnHandle inRegion)
{
    if (inVerb != kFill)
        kRegions[inVerb](inRegion);
    else if (ioPlayer.fFillPixels)
        FillCRgn(inRegion, ioPlayer.fFillPixels);
    else
        FillRgn(inRegion, &ioPlayer.fFillPattern);
}

void PlayRegion(Player& ioPlayer, int inOpcode, BigEndianReader& ioData)
{
    if ((inOpcode & kSame) == 0 &&
        !ReadRegionBytes(ioData.ReadBytes(ioData.Remaining()), &ioPlayer.fRegion, nullptr))
        ioPlayer.fRegion.Clear();
    const RgnHandle handle = NewRgn();
    Region* region = FindRegion(handle);
    if (!region)
        return ioPlayer.Fail(noMemForPictPlaybackErr);
    *region = ioPlayer.Map().Of(ioPlayer.fRegion);
    if (ioPlayer.CanAfford(RectOf(region->Extents()), 4 * (int64_t)region->Boxes().size()))
        DrawRegion(ioPlayer, inOpcode & kVerbBits, handle);
    DisposeRgn(handle);
}

} // namespace lampblack::pictures
