// The scale that fits, and the ways between window and screen.
#include "Viewport.h"

#include <algorithm>
#include <cmath>

namespace lampblack::host {

namespace {

// The largest scale that fits; a whole one is kept while the window is not a twentieth larger than it needs,
// since a sharp screen in a narrow margin is better to look at than a blurred one.
double ScaleThatFits(double inAcross, double inDown)
{
    const double scale = std::min(inAcross, inDown), whole = std::floor(scale);
    return whole >= 1 && scale < whole * 1.05 ? whole : scale;
}

} // namespace

Viewport::Viewport(int inScreenWidth, int inScreenHeight, int inWindowWidth, int inWindowHeight)
    : fScreenWidth(std::max(inScreenWidth, 1)),
      fScreenHeight(std::max(inScreenHeight, 1)),
      fWindowWidth(std::max(inWindowWidth, 1)),
      fWindowHeight(std::max(inWindowHeight, 1))
{
    fScale = ScaleThatFits(static_cast<double>(fWindowWidth) / fScreenWidth,
                           static_cast<double>(fWindowHeight) / fScreenHeight);
    fShown.width = std::clamp(static_cast<int>(std::lround(fScreenWidth * fScale)), 1, fWindowWidth);
    fShown.height = std::clamp(static_cast<int>(std::lround(fScreenHeight * fScale)), 1, fWindowHeight);
    fShown.x = (fWindowWidth - fShown.width) / 2;
    fShown.y = (fWindowHeight - fShown.height) / 2;
}

int Viewport::IntegerScale() const
{
    const int scale = fShown.width / fScreenWidth;
    const bool exact = fShown.width == scale * fScreenWidth && fShown.height == scale * fScreenHeight;
    return exact ? scale : 0;
}

Area Viewport::AreaOf(const Rect& inScreen) const
{
    // Smooth scaling blends with the neighbours: one pixel more on each side.
    const double reach = IntegerScale() ? 0 : 1 + 1 / fScale;
    const auto scaled = [this](double pixel, int limit) {
        return std::clamp(pixel * fScale, 0.0, static_cast<double>(limit));
    };
    const int left = static_cast<int>(std::floor(scaled(inScreen.left - reach, fShown.width)));
    const int top = static_cast<int>(std::floor(scaled(inScreen.top - reach, fShown.height)));
    const int right = static_cast<int>(std::ceil(scaled(inScreen.right + reach, fShown.width)));
    const int bottom = static_cast<int>(std::ceil(scaled(inScreen.bottom + reach, fShown.height)));
    return { fShown.x + left, fShown.y + top, std::max(right - left, 0), std::max(bottom - top, 0) };
}

Point Viewport::ScreenPointAt(double inX, double inY) const
{
    const double h = std::floor((inX - fShown.x) * fScreenWidth / fShown.width);
    const double v = std::floor((inY - fShown.y) * fScreenHeight / fShown.height);
    Point point;
    point.h = static_cast<short>(std::clamp(h, 0.0, fScreenWidth - 1.0));
    point.v = static_cast<short>(std::clamp(v, 0.0, fScreenHeight - 1.0));
    return point;
}

void Viewport::WindowPixelOf(int inX, int inY, int* outX, int* outY) const
{
    const double x = (inX + 0.5) * fShown.width / fScreenWidth,
                 y = (inY + 0.5) * fShown.height / fScreenHeight;
    *outX = fShown.x + std::min(static_cast<int>(x), fShown.width - 1);
    *outY = fShown.y + std::min(static_cast<int>(y), fShown.height - 1);
}

} // namespace lampblack::host
