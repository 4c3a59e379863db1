#include "appearance/WindowGeometry.h"

#include <array>
#include <cmath>

namespace lampblack::appearance {

namespace {

constexpr int kGrowSide = 15;
constexpr int kTitleMargin = 8; // between the widgets, the text and the bar's end

constexpr FrameKind kTitled = { 22, 0, 6, 14, 8, 20, false, true };
constexpr FrameKind kFramed = { 0, 3, 0, 0, 0, 0, false, false };
constexpr FrameKind kLined = { 0, 1, 0, 0, 0, 0, false, false };
constexpr FrameKind kBare = { 0, 0, 0, 0, 0, 0, false, false };

constexpr std::array<FrameKind, 12> kFrames = { {
    kTitled,                               // document
    kFramed,                               // dialog
    kTitled,                               // movable dialog
    kFramed,                               // alert
    kTitled,                               // movable alert
    kLined,                                // plain dialog
    kLined,                                // shadow dialog
    kLined,                                // popup
    { 16, 0, 4, 11, 6, 15, false, false }, // utility
    { 16, 0, 0, 11, 6, 15, true, false },  // utility, title bar at the side
    kBare,                                 // sheet
    kLined,                                // drawer
} };

} // namespace

const FrameKind* FindFrameKind(ThemeWindowType inType)
{
    return inType < kFrames.size() ? &kFrames[inType] : nullptr;
}

WindowGeometry::WindowGeometry(const FrameKind& inKind, const Rect& inContent,
                               const ThemeWindowMetrics* inMetrics, ThemeWindowAttributes inAttributes)
    : fKind(inKind),
      fContent(inContent),
      fTitleWidth(inMetrics ? inMetrics->titleWidth : (short)0),
      fAttributes(inAttributes)
{
    fContent.right = std::max(fContent.left, fContent.right);
    fContent.bottom = std::max(fContent.top, fContent.bottom);
}

Rect WindowGeometry::Content() const
{
    return IsCollapsed() ? MakeRect(fContent.left, fContent.top, 0, 0) : fContent;
}

Rect WindowGeometry::TitleBar() const
{
    if (!fKind.title)
        return MakeRect(fContent.left, fContent.top, 0, 0);
    return fKind.side ? MakeRect(fContent.left - fKind.title, fContent.top, fKind.title, HeightOf(fContent))
                      : MakeRect(fContent.left, fContent.top - fKind.title, WidthOf(fContent), fKind.title);
}

Rect WindowGeometry::Structure() const
{
    if (IsCollapsed() && fKind.title)
        return TitleBar();
    if (fKind.side)
        return Inset(fContent, -fKind.title, 0, 0, 0);
    return Inset(fContent, -fKind.border, -fKind.border - fKind.title, -fKind.border, -fKind.border);
}

bool WindowGeometry::HasWidget(ThemeTitleBarWidget inWidget) const
{
    if (!fKind.widget)
        return false;
    switch (inWidget) {
    case kThemeWidgetCloseBox:
    case kThemeWidgetDirtyCloseBox: return fAttributes & kThemeWindowHasCloseBox;
    case kThemeWidgetZoomBox: return fAttributes & kThemeWindowHasFullZoom;
    case kThemeWidgetCollapseBox: return fAttributes & kThemeWindowHasCollapseBox;
    default: return false;
    }
}

bool WindowGeometry::HasAnyWidget() const
{
    return HasWidget(kThemeWidgetCloseBox) || HasWidget(kThemeWidgetZoomBox) ||
           HasWidget(kThemeWidgetCollapseBox);
}

// Close, collapse, zoom; without placeholders those that are missing leave no gap.
int WindowGeometry::WidgetSlot(ThemeTitleBarWidget inWidget) const
{
    static constexpr ThemeTitleBarWidget kOrder[] = { kThemeWidgetCloseBox, kThemeWidgetCollapseBox,
                                                      kThemeWidgetZoomBox };
    int slot = 0;
    for (ThemeTitleBarWidget widget : kOrder) {
        if (widget == inWidget || (widget == kThemeWidgetCloseBox && inWidget == kThemeWidgetDirtyCloseBox))
            break;
        slot += fKind.placeholders || HasWidget(widget);
    }
    return slot;
}

int WindowGeometry::SlotCount() const
{
    if (fKind.placeholders)
        return 3;
    return HasWidget(kThemeWidgetCloseBox) + HasWidget(kThemeWidgetCollapseBox) +
           HasWidget(kThemeWidgetZoomBox);
}

Rect WindowGeometry::Widget(ThemeTitleBarWidget inWidget) const
{
    const Rect bar = TitleBar();
    const int along = fKind.firstWidget + WidgetSlot(inWidget) * fKind.widgetPitch;
    const int across = (fKind.title - fKind.widget + 1) / 2;
    return fKind.side ? MakeRect(bar.left + across, bar.top + along, fKind.widget, fKind.widget)
                      : MakeRect(bar.left + along, bar.top + across, fKind.widget, fKind.widget);
}

Rect WindowGeometry::TitleText() const
{
    const Rect bar = TitleBar();
    if (!(fAttributes & kThemeWindowHasTitleText) || IsEmpty(bar) || fKind.side)
        return MakeRect(bar.left, bar.top, 0, 0);
    const int widgets = HasAnyWidget() ? fKind.firstWidget + SlotCount() * fKind.widgetPitch : 0;
    const int left = bar.left + std::max(widgets, kTitleMargin), right = bar.right - kTitleMargin;
    const int room = std::max(0, right - left);
    const int width = fTitleWidth > 0 ? std::min<int>(fTitleWidth, room) : room;
    const int centered = bar.left + (WidthOf(bar) - width) / 2;
    return MakeRect(std::clamp(centered, left, std::max(left, right - width)), bar.top, width,
                    fKind.title - 1);
}

Rect WindowGeometry::Grow() const
{
    const Rect content = Content();
    if (!(fAttributes & kThemeWindowHasGrow) || IsEmpty(content))
        return MakeRect(content.right, content.bottom, 0, 0);
    return MakeRect(content.right - kGrowSide, content.bottom - kGrowSide, kGrowSide, kGrowSide);
}

int CornerInset(int inRadius, int inRow)
{
    if (inRow >= inRadius)
        return 0;
    const double above = inRadius - inRow - 0.5;
    return (int)std::lround(inRadius - std::sqrt((double)inRadius * inRadius - above * above));
}

uint8_t CornerCoverage(int inRadius, int inX, int inY)
{
    constexpr int kSamples = 4; // across a pixel
    int inside = 0;
    for (int sample = 0; sample < kSamples * kSamples; ++sample) {
        const double x = inRadius - inX - (sample % kSamples + 0.5) / kSamples;
        const double y = inRadius - inY - (sample / kSamples + 0.5) / kSamples;
        inside += x <= 0 || y <= 0 || x * x + y * y <= (double)inRadius * inRadius;
    }
    return (uint8_t)(inside * 255 / (kSamples * kSamples));
}

} // namespace lampblack::appearance
