// What the painters of the theme draw with: paths, plain and graded fills, on a small transparent image.
// A path stays until the next one begins, so that it can be filled and then stroked.
#ifndef LAMPBLACK_APPEARANCE_CANVAS_H
#define LAMPBLACK_APPEARANCE_CANVAS_H

#include <cairo.h>
#include <cstdint>
#include <initializer_list>

namespace lampblack::appearance {

struct Color {
    uint32_t rgb = 0;
    double alpha = 1;
};

constexpr Color Black(double inAlpha)
{
    return { 0x000000, inAlpha };
}

constexpr Color White(double inAlpha)
{
    return { 0xFFFFFF, inAlpha };
}

// One colour of a grade; `at` runs from 0 to 1 along it.
struct Stop {
    double at;
    Color color;
};

using Stops = std::initializer_list<Stop>;

class Canvas {
public:
    explicit Canvas(cairo_t* inContext) : fContext(inContext) {}

    cairo_t* Context() { return fContext; }

    void Box(double inLeft, double inTop, double inWidth, double inHeight);
    void RoundBox(double inLeft, double inTop, double inWidth, double inHeight, double inRadius);
    // Corners clockwise from the top left, each with its own radius.
    void RoundBox(double inLeft, double inTop, double inWidth, double inHeight, double inTopLeft,
                  double inTopRight, double inBottomRight, double inBottomLeft);
    void Disc(double inCenterX, double inCenterY, double inRadius);
    void Polygon(std::initializer_list<double> inXY);
    void Polyline(std::initializer_list<double> inXY);

    void Fill(Color inColor);
    void FillDown(double inTop, double inBottom, Stops inStops);
    void FillAcross(double inLeft, double inRight, Stops inStops);
    void FillFrom(double inCenterX, double inCenterY, double inRadius,
                  Stops inStops); // outwards from a centre
    void Stroke(Color inColor, double inWidth);
    void StrokeDown(double inTop, double inBottom, Stops inStops, double inWidth);

    // Everything until Unclip is drawn only within the present path.
    void Clip();
    void Unclip();

private:
    void SetColor(Color inColor);
    void FillPattern(cairo_pattern_t* inPattern, Stops inStops);

    cairo_t* fContext;
};

} // namespace lampblack::appearance

#endif
