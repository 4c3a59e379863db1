// Rectangle, colour and clip arithmetic.
#include "graphics/Geometry.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

void ConvertCorners(Rect* ioRect, void (*inConvert)(Point*))
{
    if (!ioRect)
        return;
    Point topLeft = { ioRect->top, ioRect->left };
    Point bottomRight = { ioRect->bottom, ioRect->right };
    inConvert(&topLeft);
    inConvert(&bottomRight);
    *ioRect = { topLeft.v, topLeft.h, bottomRight.v, bottomRight.h };
}

int WidthOf(const Rect& inRect)
{
    return inRect.right - inRect.left;
}

int HeightOf(const Rect& inRect)
{
    return inRect.bottom - inRect.top;
}

// An edge that is scaled beyond the coordinates stays at their end.
short Edge(SInt64 inCoordinate)
{
    return (short)std::clamp<SInt64>(inCoordinate, std::numeric_limits<short>::min(),
                                     std::numeric_limits<short>::max());
}

float FittingFactor(const Rect& inRect, const Rect& inContainer)
{
    return std::min((float)WidthOf(inContainer) / (float)WidthOf(inRect),
                    (float)HeightOf(inContainer) / (float)HeightOf(inRect));
}

} // namespace

void GlobalRectToLocalRect(Rect* ioRect)
{
    ConvertCorners(ioRect, [](Point* ioPoint) { GlobalToLocal(ioPoint); });
}

void LocalRectToGlobalRect(Rect* ioRect)
{
    ConvertCorners(ioRect, [](Point* ioPoint) { LocalToGlobal(ioPoint); });
}

Point GetRectangleCenterPoint(const Rect* inRect)
{
    if (!inRect)
        return { 0, 0 };
    return { (short)(inRect->top + (HeightOf(*inRect) >> 1)),
             (short)(inRect->left + (WidthOf(*inRect) >> 1)) };
}

OSErr MoveRect(Rect* ioRect, SInt32 inHorizontal, SInt32 inVertical)
{
    if (!ioRect)
        return paramErr;
    const int width = WidthOf(*ioRect), height = HeightOf(*ioRect);
    ioRect->left = (short)inHorizontal;
    ioRect->top = (short)inVertical;
    ioRect->right = (short)(ioRect->left + width);
    ioRect->bottom = (short)(ioRect->top + height);
    return noErr;
}

void ScaleRect(Rect* ioRect, float inFactor)
{
    if (!ioRect)
        return;
    ioRect->bottom = Edge((SInt64)ioRect->top + myround((float)HeightOf(*ioRect) * inFactor));
    ioRect->right = Edge((SInt64)ioRect->left + myround((float)WidthOf(*ioRect) * inFactor));
}

Rect CenterRectInRect(const Rect* inRect, const Rect* inContainer, CenterFlags inFlags)
{
    Rect rect = inRect ? *inRect : Rect{ 0, 0, 0, 0 };
    const Rect container = inContainer ? *inContainer : Rect{ 0, 0, 0, 0 };
    if (WidthOf(rect) == WidthOf(container) && HeightOf(rect) == HeightOf(container))
        return container;
    const bool isLarger = WidthOf(rect) > WidthOf(container) || HeightOf(rect) > HeightOf(container);
    if (!(inFlags & (isLarger ? kCenterDontShrink : kCenterDontEnlarge)))
        ScaleRect(&rect, FittingFactor(rect, container));
    const int width = WidthOf(rect), height = HeightOf(rect);
    const int top = container.top + ((HeightOf(container) - height) >> 1);
    const int left = container.left + ((WidthOf(container) - width) >> 1);
    return { Edge(top), Edge(left), Edge(top + height), Edge(left + width) };
}

SInt32 myround(float inNumber)
{
    const double number = inNumber;
    if (std::isnan(number))
        return 0;
    const double rounded = std::fmod(number, 1.0) > 0.5 ? std::ceil(number) : std::floor(number);
    return (SInt32)std::clamp<double>(rounded, std::numeric_limits<SInt32>::min(),
                                      std::numeric_limits<SInt32>::max());
}

void HiliteRect(const Rect* inRect)
{
    RGBColor foreground = { 0, 0, 0 }, hilite;
    GetForeColor(&foreground);
    LMGetHiliteRGB(&hilite);
    RGBForeColor(&hilite);
    PenMode(srcCopy);
    PaintRect(inRect);
    RGBForeColor(&foreground);
}

bool EqualRGB(const RGBColor& inA, const RGBColor& inB)
{
    return inA.red == inB.red && inA.green == inB.green && inA.blue == inB.blue;
}

void ScreenRGBColor(RGBColor* ioColor, UInt16 inPercent)
{
    if (!ioColor || inPercent >= 100)
        return;
    if (inPercent == 0) {
        *ioColor = { 65535, 65535, 65535 };
        return;
    }
    HSLColor color;
    RGB2HSL(ioColor, &color);
    const float lightness = color.lightness;
    const float lighter = lightness + (float)(100 - inPercent) / 100.0f * (65535.0f - lightness);
    color.lightness = (SmallFract)std::min(lighter, 65535.0f);
    HSL2RGB(&color, ioColor);
}

void NormalizeClipRegion(WindowRef inWindow, RgnHandle* ioRegion)
{
    if (!ioRegion)
        return;
    if (!*ioRegion)
        *ioRegion = NewRgn();
    GetClip(*ioRegion);
    Rect bounds;
    ClipRect(GetWindowPortBounds(inWindow, &bounds));
}

void RestoreClipRegion(RgnHandle* ioRegion)
{
    if (!ioRegion || !*ioRegion)
        return;
    SetClip(*ioRegion);
    SetEmptyRgn(*ioRegion);
}
