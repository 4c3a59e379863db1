// Frames, groups, separators, placards, tabs and grow boxes.
#include "appearance/Painters.h"

#include <Carbon/Appearance.h>

#include <algorithm>

namespace lampblack::appearance {

using namespace palette;

namespace {

// How strong shades are in each tone.
double Strength(Look inLook)
{
    static constexpr double kStrength[] = { 1, 1, 0.75, 0.5 };
    return kStrength[(int)inLook.tone];
}

} // namespace

void PaintFocusRing(Canvas& ioCanvas, int inWidth, int inHeight, Look inLook)
{
    const double radius = inLook.variant;
    static constexpr struct {
        double inset, alpha;
    } kRings[] = { { 0.5, 0.30 }, { 1.5, 0.62 }, { 2.5, 0.92 } };
    for (const auto& ring : kRings) {
        ioCanvas.RoundBox(ring.inset, ring.inset, inWidth - 2 * ring.inset, inHeight - 2 * ring.inset,
                          radius + kFocusWidth - ring.inset);
        ioCanvas.Stroke({ kFocus.rgb, ring.alpha }, 1);
    }
}

void PaintEditFrame(Canvas& ioCanvas, int inWidth, int inHeight, Look inLook)
{
    const double strength = Strength(inLook);
    const bool isList = inLook.value;
    ioCanvas.Box(0.5, 0.5, inWidth - 1, inHeight - 1);
    ioCanvas.Stroke(Black((isList ? 0.36 : 0.30) * strength), 1);
    ioCanvas.Box(0, 0, inWidth, 1);
    ioCanvas.Fill(Black((isList ? 0.08 : 0.26) * strength));
}

void PaintGroup(Canvas& ioCanvas, int inWidth, int inHeight, Look inLook)
{
    const double strength = Strength(inLook), radius = 5;
    ioCanvas.RoundBox(0, 1, inWidth, inHeight - 1, radius);
    ioCanvas.Fill(White(0.55));
    ioCanvas.RoundBox(0.5, 0.5, inWidth - 1, inHeight - 2, radius);
    cairo_set_operator(ioCanvas.Context(), CAIRO_OPERATOR_SOURCE);
    ioCanvas.Fill(Black((inLook.value ? 0.038 : 0.04) * strength));
    cairo_set_operator(ioCanvas.Context(), CAIRO_OPERATOR_OVER);
    ioCanvas.StrokeDown(0, 6, { { 0, Black(0.25 * strength) }, { 1, Black(0.17 * strength) } }, 1);
}

void PaintSeparator(Canvas& ioCanvas, int inWidth, int inHeight, Look inLook)
{
    const bool vertical = inLook.variant;
    const double dark = inLook.value ? 0.14 : 0.24 * Strength(inLook);
    ioCanvas.Box(0, 0, vertical ? 1 : inWidth, vertical ? inHeight : 1);
    ioCanvas.Fill(Black(dark));
    if (inLook.value)
        return;
    ioCanvas.Box(vertical ? 1 : 0, vertical ? 0 : 1, vertical ? 1 : inWidth, vertical ? inHeight : 1);
    ioCanvas.Fill(White(0.7));
}

void PaintPlacard(Canvas& ioCanvas, int inWidth, int inHeight, Look inLook)
{
    const bool header = inLook.value;
    const Face& face = FaceOf(Look{ .tone = inLook.tone });
    ioCanvas.Box(0, 0, inWidth, inHeight);
    ioCanvas.FillDown(0, inHeight, { { 0, face.top }, { 0.5, face.upper }, { 1, face.lower } });
    ioCanvas.Box(0, inHeight - 1, inWidth, 1);
    ioCanvas.Fill(inLook.value == 2 ? face.edgeBottom : face.edgeTop);
    if (header)
        return;
    ioCanvas.Box(0.5, 0.5, inWidth - 1, inHeight - 1);
    ioCanvas.Stroke(face.edgeTop, 1);
}

void PaintWell(Canvas& ioCanvas, int inWidth, int inHeight, Look inLook)
{
    const double strength = Strength(inLook);
    ioCanvas.RoundBox(0, 1, inWidth, inHeight - 1, 3);
    ioCanvas.Fill(White(0.7));
    ioCanvas.RoundBox(0.5, 0.5, inWidth - 1, inHeight - 2, 3);
    cairo_set_operator(ioCanvas.Context(), CAIRO_OPERATOR_SOURCE);
    ioCanvas.Fill(inLook.value ? kWhite : Black(0));
    cairo_set_operator(ioCanvas.Context(), CAIRO_OPERATOR_OVER);
    ioCanvas.StrokeDown(0, 5, { { 0, Black(0.5 * strength) }, { 1, Black(0.3 * strength) } }, 1);
    ioCanvas.RoundBox(1.5, 1.5, inWidth - 3, inHeight - 4, 2);
    ioCanvas.StrokeDown(1, 4, { { 0, Black(0.12 * strength) }, { 1, Black(0.03 * strength) } }, 1);
}

void PaintGrowBox(Canvas& ioCanvas, int inWidth, int inHeight, Look inLook)
{
    cairo_t* context = ioCanvas.Context();
    const bool left = inLook.variant & kThemeGrowLeft, up = inLook.variant & kThemeGrowUp;
    cairo_translate(context, left ? inWidth : 0, up ? inHeight : 0);
    cairo_scale(context, left ? -1 : 1, up ? -1 : 1);
    const double side = std::min(inWidth, inHeight), edge = side - 2.5, strength = Strength(inLook);
    for (double reach : { 0.72, 0.46, 0.2 }) {
        const double start = edge - side * reach;
        ioCanvas.Polyline({ start, edge, edge, start });
        ioCanvas.Stroke(Black(0.48 * strength), 1);
        ioCanvas.Polyline({ start + 1, edge, edge, start + 1 });
        ioCanvas.Stroke(White(0.6), 1);
    }
}

void PaintDialogFrame(Canvas& ioCanvas, int inWidth, int inHeight, Look inLook)
{
    ioCanvas.Box(0.5, 0.5, inWidth - 1, inHeight - 1);
    ioCanvas.Stroke(Black(0.3 * Strength(inLook)), 1);
    ioCanvas.Box(1.5, 1.5, inWidth - 3, inHeight - 3);
    ioCanvas.Stroke(White(0.8), 1);
}

namespace {

// Turns a tab that stands on the pane's top edge towards the edge that it really stands on.
void TurnTab(cairo_t* ioContext, int inDirection, int inWidth, int inHeight)
{
    const cairo_matrix_t kSouth = { 1, 0, 0, -1, 0, (double)inHeight };
    const cairo_matrix_t kWest = { 0, 1, 1, 0, 0, 0 };
    const cairo_matrix_t kEast = { 0, 1, -1, 0, (double)inWidth, 0 };
    if (inDirection == kThemeTabSouth)
        cairo_transform(ioContext, &kSouth);
    if (inDirection == kThemeTabWest)
        cairo_transform(ioContext, &kWest);
    if (inDirection == kThemeTabEast)
        cairo_transform(ioContext, &kEast);
}

} // namespace

void PaintTab(Canvas& ioCanvas, int inWidth, int inHeight, Look inLook)
{
    const bool sideways = inLook.variant == kThemeTabEast || inLook.variant == kThemeTabWest;
    const double length = sideways ? inHeight : inWidth, height = sideways ? inWidth : inHeight, radius = 5;
    const bool front = inLook.value;
    const Face& face = FaceOf(Look{ inLook.tone, (uint8_t)(front ? 1 : 0), 0 });
    cairo_save(ioCanvas.Context());
    TurnTab(ioCanvas.Context(), inLook.variant, inWidth, inHeight);
    const double bottom =
        height - (int)kThemeTabPaneOverlap + 1; // its lower edge lies on the pane's upper one
    ioCanvas.RoundBox(0, 0, length, bottom, radius, radius, 0, 0);
    ioCanvas.FillDown(0, bottom, { { 0, face.edgeTop }, { 1, face.edgeBottom } });
    ioCanvas.RoundBox(1, 1, length - 2, bottom - 2, radius - 1, radius - 1, 0, 0);
    FillFace(ioCanvas, face, 1, bottom - 1);
    if (front && inLook.tone >= Tone::Inactive)
        ioCanvas.Fill(Black(0.11)); // without the accent the front tab is told by its shade
    ioCanvas.RoundBox(1.5, 1.5, length - 3, bottom, radius - 1.5, radius - 1.5, 0, 0);
    ioCanvas.StrokeDown(1, 5, { { 0, White(0.7) }, { 1, White(0) } }, 1);
    cairo_restore(ioCanvas.Context());
}

void PaintTabPane(Canvas& ioCanvas, int inWidth, int inHeight, Look inLook)
{
    PaintGroup(ioCanvas, inWidth, inHeight, Look{ inLook.tone, 0, 0 });
}

} // namespace lampblack::appearance
