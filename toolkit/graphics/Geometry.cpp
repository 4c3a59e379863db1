// Rectangle conversions, corner by corner.
#include "graphics/Geometry.h"

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

} // namespace

void GlobalRectToLocalRect(Rect* ioRect)
{
    ConvertCorners(ioRect, [](Point* ioPoint) { GlobalToLocal(ioPoint); });
}

void LocalRectToGlobalRect(Rect* ioRect)
{
    ConvertCorners(ioRect, [](Point* ioPoint) { LocalToGlobal(ioPoint); });
}
