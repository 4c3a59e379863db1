// Scroll bars, sliders, progress bars and the spinner.
#include "appearance/Painters.h"

#include <Carbon/Appearance.h>

#include <algorithm>
#include <cmath>

namespace lampblack::appearance {

using namespace palette;

namespace {

// Paints along one axis as if it were horizontal: a vertical image is drawn mirrored about its diagonal.
struct Lengthwise {
    Lengthwise(Canvas& ioCanvas, int inWidth, int inHeight, bool inHorizontal)
        : canvas(ioCanvas),
          length(inHorizontal ? inWidth : inHeight),
          thickness(inHorizontal ? inHeight : inWidth)
    {
        cairo_save(canvas.Context());
        if (inHorizontal)
            return;
        const cairo_matrix_t diagonal = { 0, 1, 1, 0, 0, 0 };
        cairo_transform(canvas.Context(), &diagonal);
    }
    ~Lengthwise() { cairo_restore(canvas.Context()); }

    Canvas& canvas;
    const double length, thickness;
};

// The gloss of thumbs and fills, across their thickness.
void FillRod(Canvas& ioCanvas, double inTop, double inBottom, Look inLook)
{
    FillFace(ioCanvas, FaceOf(inLook), inTop, inBottom);
}

void PaintRod(Canvas& ioCanvas, double inLeft, double inTop, double inWidth, double inHeight, Look inLook)
{
    const Face& face = FaceOf(inLook);
    const double radius = inHeight / 2;
    ioCanvas.RoundBox(inLeft, inTop, inWidth, inHeight, radius);
    ioCanvas.FillDown(inTop, inTop + inHeight, { { 0, face.edgeTop }, { 1, face.edgeBottom } });
    ioCanvas.RoundBox(inLeft + 1, inTop + 1, inWidth - 2, inHeight - 2, radius - 1);
    FillRod(ioCanvas, inTop + 1, inTop + inHeight - 1, inLook);
    ioCanvas.RoundBox(inLeft + 1.5, inTop + 1.5, inWidth - 3, inHeight - 3, radius - 1.5);
    ioCanvas.StrokeDown(inTop + 1, inTop + 4, { { 0, White(0.6) }, { 1, White(0) } }, 1);
}

// Soft shading inside a trough, darkest under its upper rim.
void ShadeTrough(Canvas& ioCanvas, double inTop, double inHeight, double inStrength)
{
    ioCanvas.FillDown(inTop, inTop + inHeight,
                      { { 0, Black(0.26 * inStrength) },
                        { 0.25, Black(0.13 * inStrength) },
                        { 0.7, Black(0.07 * inStrength) },
                        { 1, Black(0.05 * inStrength) } });
}

} // namespace

void PaintScrollTrack(Canvas& ioCanvas, int inWidth, int inHeight, Look inLook)
{
    const Lengthwise at(ioCanvas, inWidth, inHeight, inLook.variant);
    const bool faint = inLook.tone != Tone::Active && inLook.tone != Tone::Pressed;
    ioCanvas.Box(0, 0, at.length, at.thickness);
    ioCanvas.FillDown(0, at.thickness,
                      faint ? Stops{ { 0, { 0xE9E9E9 } }, { 0.3, { 0xF3F3F3 } }, { 1, { 0xF7F7F7 } } }
                            : Stops{ { 0, { 0xD2D2D2 } },
                                     { 0.18, { 0xE4E4E4 } },
                                     { 0.5, { 0xF2F2F2 } },
                                     { 1, { 0xF8F8F8 } } });
    ioCanvas.Box(0, 0, at.length, 1);
    ioCanvas.Fill({ faint ? 0xCFCFCFu : 0xB4B4B4u });
    ioCanvas.Box(0, at.thickness - 1, at.length, 1);
    ioCanvas.Fill({ faint ? 0xDADADAu : 0xCACACAu });
    ioCanvas.Box(0, 0, 1, at.thickness);
    ioCanvas.Fill({ faint ? 0xDADADAu : 0xCACACAu });
}

void PaintScrollThumb(Canvas& ioCanvas, int inWidth, int inHeight, Look inLook)
{
    const Lengthwise at(ioCanvas, inWidth, inHeight, inLook.variant);
    ioCanvas.RoundBox(0, 2, at.length, at.thickness - 2, (at.thickness - 2) / 2);
    ioCanvas.Fill(Black(0.10));
    PaintRod(ioCanvas, 0, 1, at.length, at.thickness - 2, inLook);
}

void PaintScrollArrow(Canvas& ioCanvas, int inWidth, int inHeight, Look inLook)
{
    const bool horizontal = inLook.variant & 1, increases = inLook.variant & 2;
    const Face& face = FaceOf(Look{ .tone = inLook.tone });
    {
        const Lengthwise at(ioCanvas, inWidth, inHeight, horizontal);
        ioCanvas.Box(0, 0, at.length, at.thickness);
        FillFace(ioCanvas, face, 0, at.thickness);
        ioCanvas.Box(0, 0, at.length, 1);
        ioCanvas.Fill(face.edgeTop);
        ioCanvas.Box(0, at.thickness - 1, at.length, 1);
        ioCanvas.Fill(face.edgeTop);
        ioCanvas.Box(0, 0, 1, at.thickness);
        ioCanvas.Fill(face.edgeTop);
        ioCanvas.Box(at.length - 1, 0, increases ? 1 : 0, at.thickness);
        ioCanvas.Fill(face.edgeTop);
    }
    const int direction = horizontal ? (increases ? kThemeArrowRight : kThemeArrowLeft)
                                     : (increases ? kThemeArrowDown : kThemeArrowUp);
    PaintArrow(ioCanvas, inWidth / 2.0, inHeight / 2.0, std::min(inWidth, inHeight) * 0.24, direction,
               face.mark);
}

void PaintSliderTrack(Canvas& ioCanvas, int inWidth, int inHeight, Look inLook)
{
    const Lengthwise at(ioCanvas, inWidth, inHeight, inLook.variant);
    const double strength = inLook.tone == Tone::Dim ? 0.45 : inLook.tone == Tone::Inactive ? 0.7 : 1;
    ioCanvas.RoundBox(0, 1, at.length, at.thickness - 1, at.thickness / 2);
    ioCanvas.Fill(White(0.7));
    ioCanvas.RoundBox(0, 0, at.length, at.thickness - 1, (at.thickness - 1) / 2);
    ioCanvas.FillDown(
        0, at.thickness - 1,
        { { 0, Black(0.52 * strength) }, { 0.5, Black(0.30 * strength) }, { 1, Black(0.24 * strength) } });
}

namespace {

// A thumb that points down: a box with rounded shoulders and a point.
void PointedPath(Canvas& ioCanvas, double inInset, double inWidth, double inHeight)
{
    const double left = inInset, right = inWidth - inInset, top = inInset, radius = 3 - inInset * 0.6;
    const double tip = inHeight - inInset * 1.3, shoulder = inHeight - inWidth / 2 + inInset * 0.1;
    cairo_t* context = ioCanvas.Context();
    cairo_new_path(context);
    cairo_arc(context, left + radius, top + radius, radius, M_PI, 1.5 * M_PI);
    cairo_arc(context, right - radius, top + radius, radius, 1.5 * M_PI, 2 * M_PI);
    cairo_curve_to(context, right, shoulder + 1, right - 0.4, shoulder + 1.4, right - 1, shoulder + 2);
    cairo_line_to(context, inWidth / 2 + 0.8, tip - 0.6);
    cairo_curve_to(context, inWidth / 2 + 0.4, tip, inWidth / 2 - 0.4, tip, inWidth / 2 - 0.8, tip - 0.6);
    cairo_line_to(context, left + 1, shoulder + 2);
    cairo_curve_to(context, left + 0.4, shoulder + 1.4, left, shoulder + 1, left, shoulder);
    cairo_close_path(context);
}

void PaintPointedThumb(Canvas& ioCanvas, double inWidth, double inHeight, Look inLook)
{
    const Face& face = FaceOf(inLook);
    PointedPath(ioCanvas, 0, inWidth, inHeight);
    ioCanvas.FillDown(0, inHeight, { { 0, face.edgeTop }, { 1, face.edgeBottom } });
    PointedPath(ioCanvas, 1, inWidth, inHeight);
    FillFace(ioCanvas, face, 1, inHeight - 1);
    ioCanvas.StrokeDown(1, 5, { { 0, White(0.5) }, { 1, White(0) } }, 1);
}

} // namespace

void PaintSliderThumb(Canvas& ioCanvas, int inWidth, int inHeight, Look inLook)
{
    Look look = inLook;
    look.value = 1;
    if (inLook.value == kThemeThumbPlain) {
        const double side = std::min(inWidth, inHeight) - 1;
        ioCanvas.Disc(inWidth / 2.0, side / 2 + 1, side / 2);
        ioCanvas.Fill(Black(inLook.tone == Tone::Dim ? 0.05 : 0.18));
        PaintRod(ioCanvas, (inWidth - side) / 2, 0, side, side, look);
        return;
    }
    // Downward points to larger coordinates: down of a horizontal slider, right of a vertical one.
    const Lengthwise at(ioCanvas, inWidth, inHeight, inLook.variant);
    if (inLook.value == kThemeThumbUpward) {
        cairo_translate(ioCanvas.Context(), 0, at.thickness);
        cairo_scale(ioCanvas.Context(), 1, -1);
    }
    PaintPointedThumb(ioCanvas, at.length, at.thickness, look);
}

void PaintTick(Canvas& ioCanvas, int inWidth, int inHeight, Look inLook)
{
    const Lengthwise at(ioCanvas, inWidth, inHeight, inWidth >= inHeight);
    const double alpha = inLook.tone == Tone::Dim ? 0.2 : inLook.tone == Tone::Inactive ? 0.32 : 0.5;
    const double top = std::floor(at.thickness / 2 - 0.5);
    ioCanvas.Box(0, top, at.length, 1);
    ioCanvas.Fill(Black(alpha));
    ioCanvas.Box(0, top + 1, at.length, 1);
    ioCanvas.Fill(White(0.7));
}

void PaintProgressTrough(Canvas& ioCanvas, int inWidth, int inHeight, Look inLook)
{
    const Lengthwise at(ioCanvas, inWidth, inHeight, inLook.variant);
    const double height = at.thickness - 1, radius = height / 2;
    const double strength = inLook.tone == Tone::Dim ? 0.5 : inLook.tone == Tone::Inactive ? 0.75 : 1;
    ioCanvas.RoundBox(0, 1, at.length, height, radius);
    ioCanvas.Fill(White(0.75));
    ioCanvas.RoundBox(0, 0, at.length, height, radius);
    ioCanvas.FillDown(0, height, { { 0, Black(0.42 * strength) }, { 1, Black(0.24 * strength) } });
    ioCanvas.RoundBox(1, 1, at.length - 2, height - 2, radius - 1);
    ioCanvas.Fill({ 0xFAFAFA });
    ShadeTrough(ioCanvas, 1, height - 2, strength);
}

void PaintProgressFill(Canvas& ioCanvas, int inWidth, int inHeight, Look inLook)
{
    const Lengthwise at(ioCanvas, inWidth, inHeight, inLook.variant);
    Look look = inLook;
    look.value = 1;
    PaintRod(ioCanvas, 0, 0, at.length, at.thickness - 1, look);
}

void PaintIndeterminate(Canvas& ioCanvas, int inWidth, int inHeight, Look inLook)
{
    const bool dim = inLook.tone == Tone::Dim || inLook.tone == Tone::Inactive;
    const double height = inHeight - 1, radius = height / 2;
    ioCanvas.RoundBox(0, 1, inWidth, height, radius);
    ioCanvas.Fill(White(0.75));
    ioCanvas.RoundBox(0, 0, inWidth, height, radius);
    ioCanvas.Fill(dim ? Color{ 0xB8B8B8 } : Color{ 0x4C7FC6 });
    ioCanvas.RoundBox(1, 1, inWidth - 2, height - 2, radius - 1);
    ioCanvas.Fill(dim ? Color{ 0xF6F6F6 } : Color{ 0xE6F0FC });
    ioCanvas.Clip();
    const Color stripe = dim ? Color{ 0xDDDDDD } : Color{ 0x76AFF3 };
    const double phase = inLook.variant % kStripePeriod;
    for (double x = -2 * kStripePeriod - height + phase; x < inWidth + height; x += kStripePeriod) {
        ioCanvas.Polygon({ x, height, x + height, 0, x + height + kStripePeriod / 2.0, 0,
                           x + kStripePeriod / 2.0, height });
        ioCanvas.Fill(stripe);
    }
    ioCanvas.Box(0, 0, inWidth, inHeight);
    ioCanvas.FillDown(
        1, height - 1,
        { { 0, White(0.55) }, { 0.45, White(0.12) }, { 0.55, Black(0.05) }, { 1, White(0.25) } });
    ioCanvas.Unclip();
}

void PaintRelevance(Canvas& ioCanvas, int inWidth, int inHeight, Look inLook)
{
    const Color color = inLook.tone == Tone::Active || inLook.tone == Tone::Pressed ? Color{ 0x6E7781 }
                        : inLook.tone == Tone::Inactive                             ? Color{ 0x9AA0A6 }
                                                                                    : Color{ 0xC0C4C8 };
    for (int x = 0; x < inWidth; x += 2) {
        ioCanvas.Box(x, 1, 1, inHeight - 2);
        ioCanvas.Fill(color);
    }
}

void PaintSpinner(Canvas& ioCanvas, int inWidth, int inHeight, Look inLook)
{
    const double side = std::min(inWidth, inHeight), radius = side / 2;
    cairo_t* context = ioCanvas.Context();
    cairo_set_line_cap(context, CAIRO_LINE_CAP_ROUND);
    for (int spoke = 0; spoke < kSpokes; ++spoke) {
        const int behind = (inLook.variant - spoke + 2 * kSpokes) % kSpokes;
        const double strength = inLook.tone == Tone::Dim ? 0.2 : std::max(0.14, 0.78 - behind * 0.075);
        const double angle = 2 * M_PI * spoke / kSpokes - M_PI / 2;
        const double x = std::cos(angle), y = std::sin(angle);
        ioCanvas.Polyline({ inWidth / 2.0 + x * radius * 0.48, inHeight / 2.0 + y * radius * 0.48,
                            inWidth / 2.0 + x * radius * 0.88, inHeight / 2.0 + y * radius * 0.88 });
        ioCanvas.Stroke({ 0x303030, strength }, std::max(1.0, side * 0.09));
    }
}

} // namespace lampblack::appearance
