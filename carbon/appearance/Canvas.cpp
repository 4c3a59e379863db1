#include "appearance/Canvas.h"

#include <algorithm>
#include <cmath>

namespace lampblack::appearance {

namespace {

double Red(Color inColor)
{
    return ((inColor.rgb >> 16) & 0xFF) / 255.0;
}

double Green(Color inColor)
{
    return ((inColor.rgb >> 8) & 0xFF) / 255.0;
}

double Blue(Color inColor)
{
    return (inColor.rgb & 0xFF) / 255.0;
}

void AddStops(cairo_pattern_t* inPattern, Stops inStops)
{
    for (const Stop& stop : inStops)
        cairo_pattern_add_color_stop_rgba(inPattern, stop.at, Red(stop.color), Green(stop.color),
                                          Blue(stop.color), stop.color.alpha);
}

} // namespace

void Canvas::Box(double inLeft, double inTop, double inWidth, double inHeight)
{
    cairo_new_path(fContext);
    cairo_rectangle(fContext, inLeft, inTop, inWidth, inHeight);
}

void Canvas::RoundBox(double inLeft, double inTop, double inWidth, double inHeight, double inRadius)
{
    RoundBox(inLeft, inTop, inWidth, inHeight, inRadius, inRadius, inRadius, inRadius);
}

void Canvas::RoundBox(double inLeft, double inTop, double inWidth, double inHeight, double inTopLeft,
                      double inTopRight, double inBottomRight, double inBottomLeft)
{
    const double largest = std::max(0.0, std::min(inWidth, inHeight) / 2);
    const double right = inLeft + inWidth, bottom = inTop + inHeight;
    struct Corner {
        double x, y, radius, angle;
    };
    const double topLeft = std::clamp(inTopLeft, 0.0, largest),
                 topRight = std::clamp(inTopRight, 0.0, largest);
    const double bottomRight = std::clamp(inBottomRight, 0.0, largest);
    const double bottomLeft = std::clamp(inBottomLeft, 0.0, largest);
    const Corner corners[] = { { inLeft + topLeft, inTop + topLeft, topLeft, M_PI },
                               { right - topRight, inTop + topRight, topRight, 1.5 * M_PI },
                               { right - bottomRight, bottom - bottomRight, bottomRight, 0 },
                               { inLeft + bottomLeft, bottom - bottomLeft, bottomLeft, 0.5 * M_PI } };
    cairo_new_path(fContext);
    for (const Corner& corner : corners)
        cairo_arc(fContext, corner.x, corner.y, corner.radius, corner.angle, corner.angle + M_PI / 2);
    cairo_close_path(fContext);
}

void Canvas::Disc(double inCenterX, double inCenterY, double inRadius)
{
    cairo_new_path(fContext);
    cairo_arc(fContext, inCenterX, inCenterY, std::max(0.0, inRadius), 0, 2 * M_PI);
    cairo_close_path(fContext);
}

void Canvas::Polyline(std::initializer_list<double> inXY)
{
    cairo_new_path(fContext);
    for (const double* xy = inXY.begin(); xy + 1 < inXY.end(); xy += 2)
        cairo_line_to(fContext, xy[0], xy[1]);
}

void Canvas::Polygon(std::initializer_list<double> inXY)
{
    Polyline(inXY);
    cairo_close_path(fContext);
}

void Canvas::SetColor(Color inColor)
{
    cairo_set_source_rgba(fContext, Red(inColor), Green(inColor), Blue(inColor), inColor.alpha);
}

void Canvas::Fill(Color inColor)
{
    SetColor(inColor);
    cairo_fill_preserve(fContext);
}

void Canvas::FillPattern(cairo_pattern_t* inPattern, Stops inStops)
{
    AddStops(inPattern, inStops);
    cairo_set_source(fContext, inPattern);
    cairo_fill_preserve(fContext);
    cairo_pattern_destroy(inPattern);
}

void Canvas::FillDown(double inTop, double inBottom, Stops inStops)
{
    FillPattern(cairo_pattern_create_linear(0, inTop, 0, inBottom), inStops);
}

void Canvas::FillAcross(double inLeft, double inRight, Stops inStops)
{
    FillPattern(cairo_pattern_create_linear(inLeft, 0, inRight, 0), inStops);
}

void Canvas::FillFrom(double inCenterX, double inCenterY, double inRadius, Stops inStops)
{
    FillPattern(cairo_pattern_create_radial(inCenterX, inCenterY, 0, inCenterX, inCenterY, inRadius),
                inStops);
}

void Canvas::Stroke(Color inColor, double inWidth)
{
    SetColor(inColor);
    cairo_set_line_width(fContext, inWidth);
    cairo_stroke_preserve(fContext);
}

void Canvas::StrokeDown(double inTop, double inBottom, Stops inStops, double inWidth)
{
    cairo_pattern_t* pattern = cairo_pattern_create_linear(0, inTop, 0, inBottom);
    AddStops(pattern, inStops);
    cairo_set_source(fContext, pattern);
    cairo_set_line_width(fContext, inWidth);
    cairo_stroke_preserve(fContext);
    cairo_pattern_destroy(pattern);
}

void Canvas::Clip()
{
    cairo_save(fContext);
    cairo_clip(fContext);
}

void Canvas::Unclip()
{
    cairo_restore(fContext);
}

} // namespace lampblack::appearance
