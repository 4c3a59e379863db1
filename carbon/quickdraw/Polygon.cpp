// Scan conversion of polygons.
#include "Polygon.h"

#include <algorithm>

namespace lampblack::quickdraw {

struct Edge {
    int top, bottom; // rows top to bottom - 1 have their centre between the ends
    int h, v;        // of the upper end
    int dh, dv;
    int crossing; // of the row in hand
};

static constexpr size_t kMaxBoxes = 4 * 1024 * 1024; // 64 MB of them
static constexpr Box kEverywhere = { -32768, -32768, 32767, 32767 };

static bool MakeEdge(Point a, Point b, Edge* outEdge)
{
    if (a.v == b.v)
        return false;
    if (a.v > b.v)
        std::swap(a, b);
    *outEdge = { a.v, b.v, a.h, a.v, b.h - a.h, b.v - a.v, 0 };
    return true;
}

// The first pixel whose centre is not left of the edge, at the centre of a row.
static int CrossingAt(const Edge& inEdge, int inRow)
{
    // x = h + dh * (2 * (row - v) + 1) / (2 * dv); the answer is ceil(x - 1/2)
    const int64_t numerator = (int64_t)inEdge.dh * (2 * (inRow - inEdge.v) + 1) - inEdge.dv;
    const int64_t denominator = 2 * (int64_t)inEdge.dv;
    const int64_t quotient = numerator / denominator;
    return inEdge.h + (int)(numerator % denominator > 0 ? quotient + 1 : quotient);
}

// The edges that cross a row, from left to right. They change their order seldom, so that sorting by
// insertion has little to do.
static void SortByCrossing(std::vector<Edge>& ioActive, int inRow)
{
    for (size_t i = 0; i < ioActive.size(); ++i) {
        Edge edge = ioActive[i];
        edge.crossing = CrossingAt(edge, inRow);
        size_t at = i;
        for (; at > 0 && ioActive[at - 1].crossing > edge.crossing; --at)
            ioActive[at] = ioActive[at - 1];
        ioActive[at] = edge;
    }
}

static void AddRow(const std::vector<Edge>& inActive, int inRow, const Box& inWithin,
                   std::vector<Box>& ioBoxes)
{
    for (size_t i = 0; i + 1 < inActive.size(); i += 2) {
        const int left = std::max(inActive[i].crossing, inWithin.x1);
        const int right = std::min(inActive[i + 1].crossing, inWithin.x2);
        if (left < right)
            ioBoxes.push_back({ left, inRow, right, inRow + 1 });
    }
}

// Answers false when there are too many rectangles.
static bool Fill(std::vector<Edge>& ioEdges, const Box& inWithin, Region* out)
{
    std::sort(ioEdges.begin(), ioEdges.end(), [](const Edge& a, const Edge& b) { return a.top < b.top; });
    std::vector<Edge> active;
    std::vector<Box> boxes;
    size_t next = 0;
    const int first = ioEdges.empty() ? 0 : std::max(ioEdges[0].top, inWithin.y1);
    for (int row = first; row < inWithin.y2 && (next < ioEdges.size() || !active.empty()); ++row) {
        std::erase_if(active, [row](const Edge& edge) { return edge.bottom <= row; });
        for (; next < ioEdges.size() && ioEdges[next].top <= row; ++next)
            if (ioEdges[next].bottom > row)
                active.push_back(ioEdges[next]);
        SortByCrossing(active, row);
        AddRow(active, row, inWithin, boxes);
        if (boxes.size() > kMaxBoxes)
            return false;
    }
    *out = Region(boxes);
    return true;
}

bool FillEdges(const std::vector<Point>& inPairs, Region* out)
{
    std::vector<Edge> edges;
    Edge edge;
    for (size_t i = 0; i + 1 < inPairs.size(); i += 2)
        if (MakeEdge(inPairs[i], inPairs[i + 1], &edge))
            edges.push_back(edge);
    return Fill(edges, kEverywhere, out);
}

Region FillPolygon(const Point* inPoints, size_t inCount, const Box& inWithin)
{
    std::vector<Edge> edges;
    Edge edge;
    for (size_t i = 0; i < inCount; ++i)
        if (MakeEdge(inPoints[i], inPoints[(i + 1) % inCount], &edge))
            edges.push_back(edge);
    Region result;
    Fill(edges, inWithin, &result);
    return result;
}

} // namespace lampblack::quickdraw
