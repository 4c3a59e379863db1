// Polygons as edges, and which pixels they cover: those whose centre is inside, by the even-odd rule.
#ifndef LAMPBLACK_QUICKDRAW_POLYGON_H
#define LAMPBLACK_QUICKDRAW_POLYGON_H

#include "Region.h"

#include <vector>

namespace lampblack::quickdraw {

// What OpenRgn and OpenPoly collect.
struct Outline {
    std::vector<Point> points;    // of a polygon, in the order drawn
    std::vector<Point> edges;     // of a region: pairs of end points
    Region shapes;                // of a region: framed shapes, each one toggling
    PolyHandle polygon = nullptr; // that will receive the points
};

// The pixels inside closed outlines given as pairs of end points, of which several may overlap. Rows where an
// outline is open lose what has no right end. Answers false for more than four million rectangles.
bool FillEdges(const std::vector<Point>& inPairs, Region* out);

// The same for the points of one polygon, which is closed by a line to its first point: what of it is within
// a box. Empty for too many rectangles.
Region FillPolygon(const Point* inPoints, size_t inCount, const Box& within);

} // namespace lampblack::quickdraw

#endif
