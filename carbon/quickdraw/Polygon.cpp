// Scan conversion of polygons.
#include "Polygon.h"

#include <algorithm>
#include <cmath>

namespace lampblack::quickdraw {

struct Edge {
    int top, bottom; // rows top to bottom - 1 have their centre between the ends
    int h, v;        // of the upper end
    int dh, dv;
};

static bool MakeEdge(Point a, Point b, Edge* outEdge)
{
    if (a.v == b.v)
        return false;
    if (a.v > b.v)
        std::swap(a, b);
    *outEdge = { a.v, b.v, a.h, a.v, b.h - a.h, b.v - a.v };
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

static void AddRow(const std::vector<Edge>& inActive, int inRow, std::vector<int>& ioCrossings,
                   std::vector<Box>& ioBoxes)
{
    ioCrossings.clear();
    for (const Edge& edge : inActive)
        ioCrossings.push_back(CrossingAt(edge, inRow));
    std::sort(ioCrossings.begin(), ioCrossings.end());
    for (size_t i = 0; i + 1 < ioCrossings.size(); i += 2)
        if (ioCrossings[i] < ioCrossings[i + 1])
            ioBoxes.push_back({ ioCrossings[i], inRow, ioCrossings[i + 1], inRow + 1 });
}

static Region Fill(std::vector<Edge>& ioEdges)
{
    std::sort(ioEdges.begin(), ioEdges.end(), [](const Edge& a, const Edge& b) { return a.top < b.top; });
    std::vector<Edge> active;
    std::vector<int> crossings;
    std::vector<Box> boxes;
    size_t next = 0;
    for (int row = ioEdges.empty() ? 0 : ioEdges[0].top; next < ioEdges.size() || !active.empty(); ++row) {
        std::erase_if(active, [row](const Edge& edge) { return edge.bottom <= row; });
        while (next < ioEdges.size() && ioEdges[next].top <= row)
            active.push_back(ioEdges[next++]);
        AddRow(active, row, crossings, boxes);
    }
    return Region(boxes);
}

Region FillEdges(const std::vector<Point>& inPairs)
{
    std::vector<Edge> edges;
    Edge edge;
    for (size_t i = 0; i + 1 < inPairs.size(); i += 2)
        if (MakeEdge(inPairs[i], inPairs[i + 1], &edge))
            edges.push_back(edge);
    return Fill(edges);
}

Region FillPolygon(const Point* inPoints, size_t inCount)
{
    std::vector<Edge> edges;
    Edge edge;
    for (size_t i = 0; i < inCount; ++i)
        if (MakeEdge(inPoints[i], inPoints[(i + 1) % inCount], &edge))
            edges.push_back(edge);
    return Fill(edges);
}

} // namespace lampblack::quickdraw
