// Title bars, their widgets, window borders, and the parts of menus.
#include "appearance/Painters.h"

#include <Carbon/Appearance.h>

#include <algorithm>

namespace lampblack::appearance {

using namespace palette;

namespace {

bool IsFront(Look inLook)
{
    return inLook.tone == Tone::Active || inLook.tone == Tone::Pressed;
}

void PaintBar(Canvas& ioCanvas, double inLength, double inThickness, Look inLook)
{
    const bool front = IsFront(inLook);
    ioCanvas.Box(0, 0, inLength, inThickness);
    ioCanvas.FillDown(
        0, inThickness,
        front
            ? Stops{ { 0, { 0xF8F8F8 } }, { 0.07, { 0xF0F0F0 } }, { 0.5, { 0xE2E2E2 } }, { 1, { 0xCFCFCF } } }
            : Stops{ { 0, { 0xFAFAFA } }, { 0.5, { 0xF4F4F4 } }, { 1, { 0xEBEBEB } } });
    ioCanvas.Box(0, inThickness - 1, inLength, 1);
    ioCanvas.Fill(front ? Color{ 0x8E8E8E } : Color{ 0xC2C2C2 });
}

} // namespace

void PaintTitleBar(Canvas& ioCanvas, int inWidth, int inHeight, Look inLook)
{
    PaintBar(ioCanvas, inWidth, inHeight, inLook);
    const double radius = inLook.variant;
    ioCanvas.RoundBox(0.5, 0.5, inWidth - 1, inHeight + 8, radius, radius, 0, 0);
    ioCanvas.StrokeDown(0, inHeight * 0.6,
                        { { 0, Black(IsFront(inLook) ? 0.22 : 0.14) }, { 1, Black(0.04) } }, 1);
    ioCanvas.RoundBox(1.5, 1.5, inWidth - 3, inHeight + 8, radius - 1, radius - 1, 0, 0);
    ioCanvas.StrokeDown(1, 4, { { 0, White(0.85) }, { 1, White(0) } }, 1);
}

void PaintSideTitleBar(Canvas& ioCanvas, int inWidth, int inHeight, Look inLook)
{
    cairo_save(ioCanvas.Context());
    const cairo_matrix_t diagonal = { 0, 1, 1, 0, 0, 0 };
    cairo_transform(ioCanvas.Context(), &diagonal);
    PaintBar(ioCanvas, inHeight, inWidth, inLook);
    cairo_restore(ioCanvas.Context());
}

void PaintWindowBorder(Canvas& ioCanvas, int inWidth, int inHeight, Look inLook)
{
    const double thickness = inLook.variant;
    ioCanvas.Box(thickness / 2, thickness / 2, inWidth - thickness, inHeight - thickness);
    ioCanvas.Stroke(thickness > 1 ? kDialog : Color{ 0xA0A0A0 }, thickness);
    if (thickness <= 1)
        return;
    ioCanvas.Box(0.5, 0.5, inWidth - 1, inHeight - 1);
    ioCanvas.Stroke({ 0x9A9A9A }, 1);
    ioCanvas.Box(1.5, 1.5, inWidth - 3, inHeight - 3);
    ioCanvas.Stroke({ 0xFAFAFA }, 1);
}

namespace {

struct WidgetColors {
    Color top, bottom, edge, glyph;
};

const WidgetColors& ColorsOfWidget(Look inLook)
{
    static constexpr WidgetColors kClose = { { 0xFF9C90 }, { 0xE8503F }, { 0xB03528 }, { 0x6B0F06 } };
    static constexpr WidgetColors kCollapse = { { 0xFFE08A }, { 0xF2B330 }, { 0xBE861B }, { 0x6F4A00 } };
    static constexpr WidgetColors kZoom = { { 0xB5E79A }, { 0x5FBB45 }, { 0x3F8C2C }, { 0x134D06 } };
    static constexpr WidgetColors kNone = { { 0xEDEDED }, { 0xD3D3D3 }, { 0xA9A9A9 }, { 0x6A6A6A } };
    if (!IsFront(inLook))
        return kNone;
    return inLook.value == kThemeWidgetZoomBox       ? kZoom
           : inLook.value == kThemeWidgetCollapseBox ? kCollapse
                                                     : kClose;
}

void PaintWidgetGlyph(Canvas& ioCanvas, double inCenter, double inRadius, int inWidget, Color inColor)
{
    const double reach = inRadius * 0.44;
    const double near = inCenter - reach, far = inCenter + reach;
    if (inWidget == kThemeWidgetDirtyCloseBox) {
        ioCanvas.Disc(inCenter, inCenter, inRadius * 0.34);
        ioCanvas.Fill(inColor);
        return;
    }
    if (inWidget == kThemeWidgetCloseBox) {
        ioCanvas.Polyline({ near, near, far, far });
        ioCanvas.Stroke(inColor, 1.4);
        ioCanvas.Polyline({ near, far, far, near });
        ioCanvas.Stroke(inColor, 1.4);
        return;
    }
    ioCanvas.Polyline({ near - 0.4, inCenter, far + 0.4, inCenter });
    ioCanvas.Stroke(inColor, 1.4);
    if (inWidget != kThemeWidgetZoomBox)
        return;
    ioCanvas.Polyline({ inCenter, near - 0.4, inCenter, far + 0.4 });
    ioCanvas.Stroke(inColor, 1.4);
}

} // namespace

void PaintTitleWidget(Canvas& ioCanvas, int inWidth, int inHeight, Look inLook)
{
    const WidgetColors& colors = ColorsOfWidget(inLook);
    const double side = std::min(inWidth, inHeight) - 1, center = side / 2, radius = side / 2;
    ioCanvas.Disc(center, center + 1, radius);
    ioCanvas.Fill(White(0.65));
    ioCanvas.Disc(center, center, radius);
    ioCanvas.Fill(colors.edge);
    ioCanvas.Disc(center, center, radius - 1);
    ioCanvas.FillDown(1, side - 1, { { 0, colors.top }, { 0.55, colors.bottom }, { 1, colors.top } });
    ioCanvas.Disc(center, center, radius - 1.5);
    ioCanvas.StrokeDown(1, side * 0.45, { { 0, White(0.55) }, { 1, White(0) } }, 1);
    if (inLook.tone == Tone::Pressed) {
        ioCanvas.Disc(center, center, radius);
        ioCanvas.Fill(Black(0.28));
    }
    if (inLook.variant || inLook.value == kThemeWidgetDirtyCloseBox)
        PaintWidgetGlyph(ioCanvas, center, radius, inLook.value, colors.glyph);
}

void PaintMenuBar(Canvas& ioCanvas, int inWidth, int inHeight, Look)
{
    ioCanvas.Box(0, 0, inWidth, inHeight);
    ioCanvas.FillDown(
        0, inHeight,
        { { 0, { 0xFFFFFF } }, { 0.5, { 0xF6F6F6 } }, { 0.52, { 0xF0F0F0 } }, { 1, { 0xEAEAEA } } });
    ioCanvas.Box(0, inHeight - 1, inWidth, 1);
    ioCanvas.Fill({ 0xA3A3A3 });
}

void PaintMenuTitle(Canvas& ioCanvas, int inWidth, int inHeight, Look)
{
    ioCanvas.Box(0, 0, inWidth, inHeight);
    ioCanvas.FillDown(0, inHeight, { { 0, { 0x6AA6F2 } }, { 1, { 0x2F72D8 } } });
    ioCanvas.Box(0, 0, inWidth, 1);
    ioCanvas.Fill({ 0x4F8DE2 });
}

void PaintMenuItem(Canvas& ioCanvas, int inWidth, int inHeight, Look)
{
    ioCanvas.RoundBox(0, 0, inWidth, inHeight, 4);
    ioCanvas.FillDown(0, inHeight, { { 0, { 0x66A3F1 } }, { 1, { 0x3177DC } } });
    ioCanvas.RoundBox(0.5, 0.5, inWidth - 1, inHeight - 1, 3.5);
    ioCanvas.StrokeDown(0, inHeight, { { 0, { 0x5592E4 } }, { 1, { 0x2A6AC9 } } }, 1);
}

void PaintMenuBackground(Canvas& ioCanvas, int inWidth, int inHeight, Look inLook)
{
    ioCanvas.Box(0, 0, inWidth, inHeight);
    ioCanvas.Fill(inLook.tone == Tone::Inactive ? Color{ 0xF1F1F1 } : Color{ 0xFBFBFB });
}

} // namespace lampblack::appearance
