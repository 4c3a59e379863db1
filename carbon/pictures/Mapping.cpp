#include "Mapping.h"

#include <algorithm>

namespace lampblack::pictures {

using namespace quickdraw;

static constexpr int64_t kFar = 100000; // beyond all coordinates

void PictureMapping::MoveOrigin(int dh, int dv)
{
    fOriginH = (int)std::clamp<int64_t>(fOriginH + dh, -kFar, kFar);
    fOriginV = (int)std::clamp<int64_t>(fOriginV + dv, -kFar, kFar);
}

// To the nearest whole number, halves away from zero, as MapPt has it.
int PictureMapping::Scaled(int64_t inValue, int64_t inTo, int64_t inFrom)
{
    if (inTo == inFrom)
        return (int)inValue;
    const int64_t product = inValue * inTo, half = inFrom / 2;
    return (int)std::clamp<int64_t>((product < 0 ? product - half : product + half) / inFrom, -kFar, kFar);
}

short PictureMapping::Size(int inSize, int inTo, int inFrom)
{
    if (inSize <= 0)
        return Clamped(inSize);
    const int scaled = Scaled(inSize, inTo, inFrom);
    return Clamped(scaled < 1 ? 1 : scaled);
}

Region PictureMapping::Of(const Region& inRegion) const
{
    std::vector<Box> boxes;
    boxes.reserve(inRegion.Boxes().size());
    for (const Box& box : inRegion.Boxes()) {
        const Box mapped = { Clamped(H(box.x1)), Clamped(V(box.y1)), Clamped(H(box.x2)), Clamped(V(box.y2)) };
        if (!IsEmpty(mapped))
            boxes.push_back(mapped);
    }
    return Region(boxes);
}

} // namespace lampblack::pictures
