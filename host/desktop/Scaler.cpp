// Scaling by pixman; unscaled rows are copied.
#include "Scaler.h"

#include <algorithm>
#include <cstring>
#include <functional>

namespace lampblack::host {

namespace {

bool SameFrame(const Frame& a, const Frame& b)
{
    return a.pixels == b.pixels && a.rowPixels == b.rowPixels && a.width == b.width && a.height == b.height;
}

bool SameArea(const Area& a, const Area& b)
{
    return a.x == b.x && a.y == b.y && a.width == b.width && a.height == b.height;
}

// A frame that was composed in the target's own memory.
bool IsWithin(const Frame& inFrame, const Target& inTarget)
{
    const auto* first = static_cast<const uint8_t*>(inTarget.pixels);
    const auto* frame = reinterpret_cast<const uint8_t*>(inFrame.pixels);
    return std::less_equal<>()(first, frame) &&
           std::less<>()(frame, first + static_cast<ptrdiff_t>(inTarget.rowBytes) * inTarget.height);
}

void CopyRows(const Frame& inFrame, const Area& inShown, const Area& inArea, const Target& inTarget)
{
    for (int y = inArea.y; y < inArea.y + inArea.height; ++y) {
        auto* to = static_cast<uint8_t*>(inTarget.pixels) + static_cast<ptrdiff_t>(y) * inTarget.rowBytes;
        const uint32_t* from = inFrame.pixels + static_cast<ptrdiff_t>(y - inShown.y) * inFrame.rowPixels;
        memcpy(to + static_cast<size_t>(inArea.x) * 4, from + (inArea.x - inShown.x),
               static_cast<size_t>(inArea.width) * 4);
    }
}

Rect Within(const Rect& inRect, const Frame& inFrame)
{
    const auto limit = [](int value, int most) { return static_cast<short>(std::clamp(value, 0, most)); };
    return { limit(inRect.top, inFrame.height), limit(inRect.left, inFrame.width),
             limit(inRect.bottom, inFrame.height), limit(inRect.right, inFrame.width) };
}

} // namespace

void Scaler::Forget()
{
    fSource.reset();
    fTarget.reset();
    fFrame = {};
    fTo = {};
}

bool Scaler::Prepare(const Frame& inFrame, const Viewport& inViewport, const Target& inTarget)
{
    const bool sameShape = SameArea(fShown, inViewport.Shown());
    if (fSource && fTarget && sameShape && SameFrame(fFrame, inFrame) && fTo == inTarget)
        return true;
    fFrame = inFrame;
    fTo = inTarget;
    fShown = inViewport.Shown();
    fSource.reset(pixman_image_create_bits_no_clear(PIXMAN_x8r8g8b8, inFrame.width, inFrame.height,
                                                    const_cast<uint32_t*>(inFrame.pixels),
                                                    inFrame.rowPixels * 4));
    fTarget.reset(pixman_image_create_bits_no_clear(inTarget.format, inTarget.width, inTarget.height,
                                                    static_cast<uint32_t*>(inTarget.pixels),
                                                    inTarget.rowBytes));
    if (!fSource || !fTarget)
        return false;
    ChooseFilter(inViewport.Scale(), inViewport.IntegerScale() > 0);
    return true;
}

void Scaler::ChooseFilter(double inScale, bool inInteger)
{
    const double x = static_cast<double>(fFrame.width) / fShown.width;
    const double y = static_cast<double>(fFrame.height) / fShown.height;
    pixman_transform_t transform;
    pixman_transform_init_scale(&transform, pixman_double_to_fixed(x), pixman_double_to_fixed(y));
    pixman_image_set_transform(fSource.get(), &transform);
    pixman_image_set_repeat(fSource.get(), PIXMAN_REPEAT_PAD);
    if (inScale >= 1) {
        pixman_image_set_filter(fSource.get(), inInteger ? PIXMAN_FILTER_NEAREST : PIXMAN_FILTER_BILINEAR,
                                nullptr, 0);
        return;
    }
    int count = 0; // smaller than the screen: every screen pixel must have its share
    pixman_fixed_t* weights = pixman_filter_create_separable_convolution(
        &count, pixman_double_to_fixed(x), pixman_double_to_fixed(y), PIXMAN_KERNEL_LINEAR,
        PIXMAN_KERNEL_LINEAR, PIXMAN_KERNEL_BOX, PIXMAN_KERNEL_BOX, 4, 4);
    pixman_image_set_filter(fSource.get(), PIXMAN_FILTER_SEPARABLE_CONVOLUTION, weights, count);
    free(weights);
}

Area Scaler::Draw(const Frame& inFrame, const Rect& inScreen, const Viewport& inViewport,
                  const Target& inTarget)
{
    const Area area = inViewport.AreaOf(Within(inScreen, inFrame));
    if (area.width <= 0 || area.height <= 0)
        return {};
    if (inViewport.IntegerScale() == 1 && inTarget.format == PIXMAN_x8r8g8b8) {
        if (!IsWithin(inFrame, inTarget))
            CopyRows(inFrame, inViewport.Shown(), area, inTarget);
        return area;
    }
    if (!Prepare(inFrame, inViewport, inTarget))
        return {};
    pixman_image_composite32(PIXMAN_OP_SRC, fSource.get(), nullptr, fTarget.get(), area.x - fShown.x,
                             area.y - fShown.y, 0, 0, area.x, area.y, area.width, area.height);
    return area;
}

} // namespace lampblack::host
