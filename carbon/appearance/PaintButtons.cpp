// Push buttons, check boxes, radio buttons, bevel buttons and their kin.
#include "appearance/Painters.h"

#include <Carbon/Appearance.h>

#include <algorithm>
#include <cmath>

namespace lampblack::appearance {

using namespace palette;

const Face& FaceOf(Look inLook)
{
    static constexpr const Face* kPlain[] = { &kPlainFace, &kPressedFace, &kInactiveFace, &kDimFace };
    static constexpr const Face* kAccented[] = { &kAccentFace, &kAccentPressedFace, &kInactiveFace,
                                                 &kDimFace };
    return *(inLook.value ? kAccented : kPlain)[(int)inLook.tone];
}

void FillFace(Canvas& ioCanvas, const Face& inFace, double inTop, double inBottom)
{
    ioCanvas.FillDown(
        inTop, inBottom,
        { { 0, inFace.top }, { 0.48, inFace.upper }, { 0.52, inFace.lower }, { 1, inFace.bottom } });
}

// Base and tip stand on whole pixels, so that small arrows stay crisp: a base of 2n or 2n + 1 pixels has a
// tip n deep.
void PaintArrow(Canvas& ioCanvas, double inX, double inY, double inHalf, int inDirection, Color inColor)
{
    const bool sideways = inDirection == kThemeArrowLeft || inDirection == kThemeArrowRight;
    const double across = sideways ? inY : inX, along = sideways ? inX : inY;
    const double base = std::max(3.0, std::round(2 * inHalf)), depth = std::floor((base + 1) / 2);
    const double first = std::round(across - base / 2), last = first + base, middle = (first + last) / 2;
    const double near = std::round(along - depth / 2), far = near + depth;
    switch (inDirection) {
    case kThemeArrowLeft: ioCanvas.Polygon({ near, middle, far, first, far, last }); break;
    case kThemeArrowRight: ioCanvas.Polygon({ far, middle, near, first, near, last }); break;
    case kThemeArrowUp: ioCanvas.Polygon({ middle, near, last, far, first, far }); break;
    default: ioCanvas.Polygon({ middle, far, last, near, first, near }); break;
    }
    ioCanvas.Fill(inColor);
}

namespace {

double ShadowOf(Look inLook)
{
    return inLook.tone == Tone::Dim ? 0.04 : inLook.tone == Tone::Inactive ? 0.08 : 0.16;
}

// A raised shape: a shadow of one pixel below it, an edge, a graded face and light along its upper rim.
void PaintRaised(Canvas& ioCanvas, double inLeft, double inTop, double inWidth, double inHeight,
                 double inRadius, const Face& inFace, Look inLook)
{
    const double bottom = inTop + inHeight;
    ioCanvas.RoundBox(inLeft, inTop + 1, inWidth, inHeight, inRadius);
    ioCanvas.Fill(Black(ShadowOf(inLook)));
    ioCanvas.RoundBox(inLeft, inTop, inWidth, inHeight, inRadius);
    ioCanvas.FillDown(inTop, bottom, { { 0, inFace.edgeTop }, { 1, inFace.edgeBottom } });
    ioCanvas.RoundBox(inLeft + 1, inTop + 1, inWidth - 2, inHeight - 2, inRadius - 1);
    FillFace(ioCanvas, inFace, inTop + 1, bottom - 1);
    if (inLook.tone == Tone::Pressed) {
        ioCanvas.StrokeDown(inTop + 1, inTop + 5, { { 0, Black(0.22) }, { 1, Black(0) } }, 1.5);
        return;
    }
    ioCanvas.RoundBox(inLeft + 1.5, inTop + 1.5, inWidth - 3, inHeight - 3, inRadius - 1.5);
    ioCanvas.StrokeDown(inTop + 1, inTop + 4, { { 0, White(0.75) }, { 1, White(0) } }, 1);
}

// The box of a check box or the disc of a radio button, of the side that fits the image.
double MarkSide(int inWidth, int inHeight)
{
    return std::min(inWidth, inHeight) - 1; // a row for the shadow
}

void PaintCheckMark(Canvas& ioCanvas, double inLeft, double inTop, double inSide, Color inColor)
{
    cairo_set_line_cap(ioCanvas.Context(), CAIRO_LINE_CAP_ROUND);
    cairo_set_line_join(ioCanvas.Context(), CAIRO_LINE_JOIN_ROUND);
    ioCanvas.Polyline({ inLeft + inSide * 0.25, inTop + inSide * 0.52, inLeft + inSide * 0.43,
                        inTop + inSide * 0.74, inLeft + inSide * 0.78, inTop + inSide * 0.22 });
    ioCanvas.Stroke(inColor, inSide * 0.155);
}

} // namespace

void PaintPushButton(Canvas& ioCanvas, int inWidth, int inHeight, Look inLook)
{
    const double height = inHeight - 1;
    PaintRaised(ioCanvas, 0, 0, inWidth, height, std::min(height / 2, 10.0), FaceOf(inLook), inLook);
}

void PaintCheckBox(Canvas& ioCanvas, int inWidth, int inHeight, Look inLook)
{
    const double side = MarkSide(inWidth, inHeight);
    const Face& face = FaceOf(inLook);
    PaintRaised(ioCanvas, 0, 0, side, side, 3, face, inLook);
    if (inLook.value == kThemeButtonOn)
        PaintCheckMark(ioCanvas, 0, 0, side, face.mark);
    if (inLook.value != kThemeButtonMixed)
        return;
    ioCanvas.RoundBox(side * 0.25, side / 2 - 1, side * 0.5, 2, 1);
    ioCanvas.Fill(face.mark);
}

void PaintRadioButton(Canvas& ioCanvas, int inWidth, int inHeight, Look inLook)
{
    const double side = MarkSide(inWidth, inHeight), center = side / 2;
    const Face& face = FaceOf(inLook);
    PaintRaised(ioCanvas, 0, 0, side, side, center, face, inLook);
    if (inLook.value == kThemeButtonOn) {
        ioCanvas.Disc(center, center, side * 0.2);
        ioCanvas.Fill(face.mark);
    }
    if (inLook.value != kThemeButtonMixed)
        return;
    ioCanvas.RoundBox(side * 0.25, center - 1, side * 0.5, 2, 1);
    ioCanvas.Fill(face.mark);
}

void PaintBevelButton(Canvas& ioCanvas, int inWidth, int inHeight, Look inLook)
{
    Look look = inLook;
    if (inLook.value && inLook.tone == Tone::Active)
        look.tone = Tone::Pressed; // a bevel button that is on stays down
    look.value = 0;
    PaintRaised(ioCanvas, 0, 0, inWidth, inHeight - 1, inLook.variant, FaceOf(look), look);
}

void PaintRoundButton(Canvas& ioCanvas, int inWidth, int inHeight, Look inLook)
{
    const double side = MarkSide(inWidth, inHeight);
    PaintRaised(ioCanvas, (inWidth - side) / 2, 0, side, side, side / 2, FaceOf(inLook), inLook);
}

namespace {

// The two arrows of a popup button, one over the other.
void PaintDoubleArrow(Canvas& ioCanvas, double inX, double inY, double inHalf, Color inColor)
{
    PaintArrow(ioCanvas, inX, inY - inHalf - 0.5, inHalf, kThemeArrowUp, inColor);
    PaintArrow(ioCanvas, inX, inY + inHalf + 0.5, inHalf, kThemeArrowDown, inColor);
}

Look Accented(Look inLook)
{
    inLook.value = 1;
    return inLook;
}

} // namespace

void PaintPopupButton(Canvas& ioCanvas, int inWidth, int inHeight, Look inLook)
{
    const double height = inHeight - 1, cap = inLook.variant, radius = std::min(height / 2, 5.0);
    PaintRaised(ioCanvas, 0, 0, inWidth, height, radius, FaceOf(Look{ .tone = inLook.tone }), inLook);
    const Face& face = FaceOf(Accented(inLook));
    const double left = inWidth - cap;
    ioCanvas.RoundBox(left, 0, cap, height, 0, radius, radius, 0);
    ioCanvas.FillDown(0, height, { { 0, face.edgeTop }, { 1, face.edgeBottom } });
    ioCanvas.RoundBox(left, 1, cap - 1, height - 2, 0, radius - 1, radius - 1, 0);
    FillFace(ioCanvas, face, 1, height - 1);
    ioCanvas.Box(left, 1, 1, height - 2);
    ioCanvas.Fill(Black(inLook.tone == Tone::Dim ? 0.06 : 0.14));
    PaintDoubleArrow(ioCanvas, left + cap / 2, height / 2, std::max(1.5, height * 0.132), face.mark);
}

void PaintComboButton(Canvas& ioCanvas, int inWidth, int inHeight, Look inLook)
{
    const double height = inHeight - 1, radius = std::min(height / 2, 4.0);
    const Face& face = FaceOf(Accented(inLook));
    ioCanvas.RoundBox(0, 0, inWidth, height, 0, radius, radius, 0);
    ioCanvas.FillDown(0, height, { { 0, face.edgeTop }, { 1, face.edgeBottom } });
    ioCanvas.RoundBox(0, 1, inWidth - 1, height - 2, 0, radius - 1, radius - 1, 0);
    FillFace(ioCanvas, face, 1, height - 1);
    ioCanvas.Box(0, 1, 1, height - 2);
    ioCanvas.Fill(Black(0.14));
    PaintArrow(ioCanvas, inWidth / 2.0, height / 2 + 0.5, std::max(2.2, height * 0.18), kThemeArrowDown,
               face.mark);
}

void PaintLittleArrows(Canvas& ioCanvas, int inWidth, int inHeight, Look inLook)
{
    Look plain = inLook;
    plain.value = 0;
    if (inLook.tone == Tone::Pressed)
        plain.tone = Tone::Active;
    const double height = inHeight - 1, middle = (inHeight - 1) / 2.0, radius = inWidth * 0.42;
    PaintRaised(ioCanvas, 0, 0, inWidth, height, radius, FaceOf(plain), plain);
    const bool isUp = inLook.value == 1;
    if (inLook.tone == Tone::Pressed && inLook.value) {
        const double top = isUp ? 1 : middle, end = isUp ? middle : height - 1;
        ioCanvas.RoundBox(1, top, inWidth - 2, end - top, isUp ? radius : 0, isUp ? radius : 0,
                          isUp ? 0 : radius, isUp ? 0 : radius);
        FillFace(ioCanvas, kPressedFace, top, end);
    }
    ioCanvas.Box(1, middle - 0.5, inWidth - 2, 1);
    ioCanvas.Fill(Black(plain.tone == Tone::Dim ? 0.1 : 0.22));
    const double half = std::max(2.0, inWidth * 0.22);
    PaintArrow(ioCanvas, inWidth / 2.0, middle / 2 + 0.5, half, kThemeArrowUp, FaceOf(plain).mark);
    PaintArrow(ioCanvas, inWidth / 2.0, middle * 1.5, half, kThemeArrowDown, FaceOf(plain).mark);
}

void PaintListHeader(Canvas& ioCanvas, int inWidth, int inHeight, Look inLook)
{
    const Face& face = FaceOf(inLook);
    ioCanvas.Box(0, 0, inWidth, inHeight);
    FillFace(ioCanvas, face, 0, inHeight - 1);
    ioCanvas.Box(0, inHeight - 1, inWidth, 1);
    ioCanvas.Fill(face.edgeTop);
    ioCanvas.Box(inWidth - 1, 2, 1, inHeight - 4);
    ioCanvas.Fill(Black(inLook.value ? 0.3 : 0.2));
}

void PaintTriangle(Canvas& ioCanvas, int inWidth, int inHeight, Look inLook)
{
    static constexpr double kStrength[] = { 0.55, 0.78, 1.0 };
    static constexpr Color kTone[] = { { 0x5A5A5A }, { 0x2B2B2B }, { 0x8A8A8A }, { 0xB4B4B4 } };
    const double half = std::min(inWidth, inHeight) / 2.0 * kStrength[std::min<int>(inLook.value, 2)];
    PaintArrow(ioCanvas, inWidth / 2.0, inHeight / 2.0, half, inLook.variant, kTone[(int)inLook.tone]);
}

} // namespace lampblack::appearance
