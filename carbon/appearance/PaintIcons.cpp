// The icons of alerts, of help, and of what is in folders.
#include "appearance/IconPainters.h"
#include "appearance/Palette.h"

#include <algorithm>
#include <cmath>

namespace lampblack::appearance {

using namespace palette;

namespace {

constexpr double kUnits = 32;
constexpr Color kRedLight = { 0xF2796B }, kRed = { 0xD93A2B }, kRedDark = { 0xB3251A },
                kRedEdge = { 0x86180F };
constexpr Color kAmberLight = { 0xFFE27A }, kAmber = { 0xFBBF2D }, kAmberDark = { 0xF0A30F },
                kAmberEdge = { 0xA66A04 };
constexpr Color kInk = { 0x33291A };
constexpr Color kPaperShade = { 0xE4E8EE }, kPaperEdge = { 0x8A9099 }, kLine = { 0xB4BAC4 };
constexpr Color kFolderLight = { 0xB9DAF8 }, kFolder = { 0x86BBEC }, kFolderDark = { 0x5E9BD6 },
                kFolderEdge = { 0x38699C };
constexpr Color kMetalLight = { 0xF4F6F8 }, kMetal = { 0xC3C9D0 }, kMetalDark = { 0x8F97A1 },
                kMetalEdge = { 0x5C646E };

// While it lives, 32 units are the whole image, and lines end roundly.
class StUnits {
public:
    StUnits(Canvas& ioCanvas, int inWidth, int inHeight)
        : fContext(ioCanvas.Context()), fPixel(kUnits / std::max(1, std::min(inWidth, inHeight)))
    {
        cairo_save(fContext);
        cairo_scale(fContext, inWidth / kUnits, inHeight / kUnits);
        cairo_set_line_cap(fContext, CAIRO_LINE_CAP_ROUND);
        cairo_set_line_join(fContext, CAIRO_LINE_JOIN_ROUND);
    }
    ~StUnits() { cairo_restore(fContext); }
    StUnits(const StUnits&) = delete;
    StUnits& operator=(const StUnits&) = delete;

    // The width of an edge: about a pixel of a small icon, never less than one unit's worth.
    double Edge() const { return std::max(0.9, fPixel * 0.8); }
    bool IsSmall() const { return fPixel > 1.5; }

private:
    cairo_t* fContext;
    double fPixel;
};

// Fills the present path from light to dark, with a bright rim inside and an edge around it.
void FillGlossy(Canvas& ioCanvas, const StUnits& inUnits, double inTop, double inBottom, Stops inStops,
                Color inEdge)
{
    ioCanvas.FillDown(inTop, inBottom, inStops);
    if (!inUnits.IsSmall()) {
        cairo_path_t* outline = cairo_copy_path(ioCanvas.Context());
        ioCanvas.Clip();
        cairo_append_path(ioCanvas.Context(), outline);
        ioCanvas.StrokeDown(inTop, inBottom, { { 0, White(0.75) }, { 0.5, White(0.3) }, { 1, White(0.12) } },
                            inUnits.Edge() * 2 + 1.6);
        ioCanvas.Unclip();
        cairo_new_path(ioCanvas.Context());
        cairo_append_path(ioCanvas.Context(), outline);
        cairo_path_destroy(outline);
    }
    ioCanvas.Stroke(inEdge, inUnits.Edge());
}

// The same outline a little lower, as its shadow.
template <class Outline>
void CastShadow(Canvas& ioCanvas, Outline&& inOutline)
{
    for (const double drop : { 1.1, 0.6 }) {
        cairo_save(ioCanvas.Context());
        cairo_translate(ioCanvas.Context(), 0, drop);
        inOutline();
        ioCanvas.Fill(Black(0.13));
        cairo_restore(ioCanvas.Context());
    }
    inOutline();
}

void OutlineOctagon(Canvas& ioCanvas, double inCenter, double inRadius)
{
    cairo_t* context = ioCanvas.Context();
    cairo_new_path(context);
    for (int corner = 0; corner < 8; ++corner) {
        const double angle = M_PI / 8 + corner * M_PI / 4;
        cairo_line_to(context, inCenter + inRadius * std::cos(angle), inCenter + inRadius * std::sin(angle));
    }
    cairo_close_path(context);
}

// A triangle whose corners are round.
void OutlineTriangle(Canvas& ioCanvas, double inTop, double inBottom, double inHalf, double inRadius)
{
    cairo_t* context = ioCanvas.Context();
    const double slope = std::atan2(inBottom - inTop - inRadius, inHalf - inRadius);
    const double turn = M_PI / 2 - slope;
    const double x = kUnits / 2;
    cairo_new_path(context);
    cairo_arc(context, x, inTop + inRadius, inRadius, M_PI + turn, 2 * M_PI - turn);
    cairo_arc(context, x + inHalf - inRadius, inBottom - inRadius, inRadius, -turn, M_PI / 2);
    cairo_arc(context, x - inHalf + inRadius, inBottom - inRadius, inRadius, M_PI / 2, M_PI + turn);
    cairo_close_path(context);
}

// A balloon with its tip at the lower left.
void OutlineBalloon(Canvas& ioCanvas)
{
    cairo_t* context = ioCanvas.Context();
    const double left = 2.5, top = 2.5, right = 29.5, bottom = 23.5, radius = 5.5;
    cairo_new_path(context);
    cairo_arc(context, left + radius, top + radius, radius, M_PI, 1.5 * M_PI);
    cairo_arc(context, right - radius, top + radius, radius, 1.5 * M_PI, 2 * M_PI);
    cairo_arc(context, right - radius, bottom - radius, radius, 0, 0.5 * M_PI);
    cairo_line_to(context, 15, bottom);
    cairo_line_to(context, 8, 29.8);
    cairo_line_to(context, 9, bottom);
    cairo_arc(context, left + radius, bottom - radius, radius, 0.5 * M_PI, M_PI);
    cairo_close_path(context);
}

void DrawExclamation(Canvas& ioCanvas, double inTop, double inBottom, Color inColor)
{
    const double x = kUnits / 2, dot = 1.9;
    ioCanvas.Polygon({ x - 2.1, inTop, x + 2.1, inTop, x + 1.1, inBottom - 5.4, x - 1.1, inBottom - 5.4 });
    ioCanvas.Fill(inColor);
    ioCanvas.Stroke(inColor, 0.8);
    ioCanvas.Disc(x, inBottom - dot, dot);
    ioCanvas.Fill(inColor);
}

void DrawQuestionMark(Canvas& ioCanvas, Color inColor)
{
    cairo_t* context = ioCanvas.Context();
    cairo_new_path(context);
    cairo_arc(context, 16, 11.9, 4.4, M_PI * 1.02, M_PI * 2.18);
    cairo_curve_to(context, 18.6, 15.6, 16, 15.9, 16, 19);
    ioCanvas.Stroke(inColor, 3);
    ioCanvas.Disc(16, 23.6, 1.95);
    ioCanvas.Fill(inColor);
}

void DrawLetterI(Canvas& ioCanvas, Color inColor)
{
    ioCanvas.Disc(16, 7.7, 2);
    ioCanvas.Fill(inColor);
    ioCanvas.Polyline({ 13.6, 12.2, 16.2, 12.2, 16.2, 19.2 });
    ioCanvas.Stroke(inColor, 2.9);
    ioCanvas.Polyline({ 13.4, 19.4, 18.8, 19.4 });
    ioCanvas.Stroke(inColor, 2.5);
}

} // namespace

void PaintStopIcon(Canvas& ioCanvas, int inWidth, int inHeight, Look)
{
    const StUnits units(ioCanvas, inWidth, inHeight);
    CastShadow(ioCanvas, [&] { OutlineOctagon(ioCanvas, 15.8, 14.9); });
    FillGlossy(ioCanvas, units, 1.5, 30, { { 0, kRedLight }, { 0.5, kRed }, { 1, kRedDark } }, kRedEdge);
    ioCanvas.RoundBox(7.2, 13, 17.2, 5.6, 1.4);
    ioCanvas.Fill(White(1));
}

void PaintNoteIcon(Canvas& ioCanvas, int inWidth, int inHeight, Look)
{
    const StUnits units(ioCanvas, inWidth, inHeight);
    CastShadow(ioCanvas, [&] { OutlineBalloon(ioCanvas); });
    FillGlossy(ioCanvas, units, 2, 28, { { 0, kAccentLight }, { 0.55, kAccent }, { 1, kAccentDark } },
               kAccentEdge);
    DrawLetterI(ioCanvas, White(1));
}

void PaintCautionIcon(Canvas& ioCanvas, int inWidth, int inHeight, Look)
{
    const StUnits units(ioCanvas, inWidth, inHeight);
    CastShadow(ioCanvas, [&] { OutlineTriangle(ioCanvas, 1.6, 29.2, 14.8, 2.6); });
    FillGlossy(ioCanvas, units, 2, 29, { { 0, kAmberLight }, { 0.6, kAmber }, { 1, kAmberDark } },
               kAmberEdge);
    DrawExclamation(ioCanvas, 10.6, 26.2, kInk);
}

void PaintHelpIcon(Canvas& ioCanvas, int inWidth, int inHeight, Look)
{
    const StUnits units(ioCanvas, inWidth, inHeight);
    CastShadow(ioCanvas, [&] { ioCanvas.Disc(16, 15.7, 14); });
    FillGlossy(ioCanvas, units, 2, 29.5, { { 0, kAccentLight }, { 0.55, kAccent }, { 1, kAccentDark } },
               kAccentEdge);
    DrawQuestionMark(ioCanvas, White(1));
}

void PaintDocumentIcon(Canvas& ioCanvas, int inWidth, int inHeight, Look)
{
    const StUnits units(ioCanvas, inWidth, inHeight);
    CastShadow(ioCanvas, [&] { ioCanvas.Polygon({ 5.5, 1.5, 19.5, 1.5, 26.5, 8.5, 26.5, 30, 5.5, 30 }); });
    ioCanvas.FillDown(1, 30, { { 0, kWhite }, { 1, kPaperShade } });
    ioCanvas.Stroke(kPaperEdge, units.Edge());
    ioCanvas.Polygon({ 19.5, 1.5, 26.5, 8.5, 19.5, 8.5 });
    ioCanvas.FillDown(1.5, 8.5, { { 0, kWhite }, { 1, { 0xC9CFD8 } } });
    ioCanvas.Stroke(kPaperEdge, units.Edge());
    for (const double y : { 13.0, 17.0, 21.0, 25.0 }) {
        ioCanvas.Polyline({ 9.5, y, y > 24 ? 18.0 : 22.5, y });
        ioCanvas.Stroke(kLine, 1.3);
    }
}

void PaintApplicationIcon(Canvas& ioCanvas, int inWidth, int inHeight, Look)
{
    const StUnits units(ioCanvas, inWidth, inHeight);
    const auto window = [&] { ioCanvas.RoundBox(2, 4, 28, 23.5, 3); };
    CastShadow(ioCanvas, window);
    ioCanvas.FillDown(4, 27.5, { { 0, kWhite }, { 1, kPaperShade } });
    ioCanvas.Clip();
    ioCanvas.Box(2, 4, 28, 6.5);
    ioCanvas.FillDown(4, 10.5, { { 0, kAccentLight }, { 1, kAccentDark } });
    ioCanvas.Unclip();
    window();
    ioCanvas.Stroke(kAccentEdge, units.Edge());
    for (const double x : { 5.6, 9.4 }) {
        ioCanvas.Disc(x, 7.2, 1.3);
        ioCanvas.Fill(White(0.9));
    }
    ioCanvas.Polygon({ 16, 12.6, 22.2, 18.8, 16, 25, 9.8, 18.8 });
    FillGlossy(ioCanvas, units, 12, 25, { { 0, kAccentLight }, { 0.55, kAccent }, { 1, kAccentDark } },
               kAccentEdge);
}

void PaintFolderIcon(Canvas& ioCanvas, int inWidth, int inHeight, Look)
{
    const StUnits units(ioCanvas, inWidth, inHeight);
    CastShadow(ioCanvas, [&] {
        ioCanvas.Polygon({ 2, 6.5, 3.5, 4.5, 11.5, 4.5, 13.5, 7.5, 28.5, 7.5, 30, 9, 30, 27, 2, 27 });
    });
    ioCanvas.FillDown(4, 27, { { 0, kFolder }, { 1, kFolderDark } });
    ioCanvas.Stroke(kFolderEdge, units.Edge());
    ioCanvas.RoundBox(2, 11, 28, 16.5, 1.2);
    FillGlossy(ioCanvas, units, 11, 27.5, { { 0, kFolderLight }, { 0.6, kFolder }, { 1, kFolderDark } },
               kFolderEdge);
}

void PaintTrashIcon(Canvas& ioCanvas, int inWidth, int inHeight, Look)
{
    const StUnits units(ioCanvas, inWidth, inHeight);
    CastShadow(ioCanvas, [&] { ioCanvas.Polygon({ 6.5, 8.5, 25.5, 8.5, 23.5, 30, 8.5, 30 }); });
    ioCanvas.FillAcross(6, 26, { { 0, kMetal }, { 0.3, kMetalLight }, { 1, kMetalDark } });
    ioCanvas.Stroke(kMetalEdge, units.Edge());
    for (const double at : { -4.5, 0.0, 4.5 }) {
        ioCanvas.Polyline({ 16 + at, 12.5, 16 + at * 0.8, 26.5 });
        ioCanvas.Stroke({ kMetalEdge.rgb, 0.75 }, 1.4);
    }
    ioCanvas.RoundBox(12.5, 2.2, 7, 4, 1.5);
    ioCanvas.Stroke(kMetalEdge, std::max(1.4, units.Edge()));
    ioCanvas.RoundBox(4.5, 4.6, 23, 4.2, 1.6);
    FillGlossy(ioCanvas, units, 4.6, 8.8, { { 0, kMetalLight }, { 1, kMetal } }, kMetalEdge);
}

} // namespace lampblack::appearance
