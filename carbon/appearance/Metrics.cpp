// The measures of the theme, in pixels.
#include "appearance/Geometry.h"

namespace {

struct Metric {
    ThemeMetric metric;
    SInt32 pixels;
};

constexpr Metric kMetrics[] = {
    { kThemeMetricScrollBarWidth, 15 },
    { kThemeMetricSmallScrollBarWidth, 11 },
    { kThemeMetricCheckBoxHeight, 18 },
    { kThemeMetricRadioButtonHeight, 18 },
    { kThemeMetricEditTextWhitespace, 3 },
    { kThemeMetricEditTextFrameOutset, 1 },
    { kThemeMetricListBoxFrameOutset, 1 },
    { kThemeMetricFocusRectOutset, 3 },
    { kThemeMetricImageWellThickness, 3 },
    { kThemeMetricScrollBarOverlap, 1 },
    { kThemeMetricLargeTabHeight, kThemeLargeTabHeight },
    { kThemeMetricLargeTabCapsWidth, 6 },
    { kThemeMetricTabFrameOverlap, kThemeTabPaneOverlap },
    { kThemeMetricTabIndentOrStyle, 12 },
    { kThemeMetricTabOverlap, 1 },
    { kThemeMetricSmallTabHeight, kThemeSmallTabHeight },
    { kThemeMetricSmallTabCapsWidth, 6 },
    { kThemeMetricDisclosureButtonHeight, 22 },
    { kThemeMetricRoundButtonSize, 20 },
    { kThemeMetricPushButtonHeight, 20 },
    { kThemeMetricListHeaderHeight, 17 },
    { kThemeMetricSmallCheckBoxHeight, 16 },
    { kThemeMetricDisclosureButtonWidth, 22 },
    { kThemeMetricSmallDisclosureButtonHeight, 18 },
    { kThemeMetricSmallDisclosureButtonWidth, 18 },
    { kThemeMetricDisclosureTriangleHeight, 13 },
    { kThemeMetricDisclosureTriangleWidth, 13 },
    { kThemeMetricLittleArrowsHeight, 23 },
    { kThemeMetricLittleArrowsWidth, 13 },
    { kThemeMetricPaneSplitterHeight, 9 },
    { kThemeMetricPopupButtonHeight, 20 },
    { kThemeMetricSmallPopupButtonHeight, 17 },
    { kThemeMetricLargeProgressBarThickness, 17 },
    { kThemeMetricPullDownHeight, 20 },
    { kThemeMetricSmallPullDownHeight, 17 },
    { kThemeMetricSmallPushButtonHeight, 17 },
    { kThemeMetricSmallRadioButtonHeight, 16 },
    { kThemeMetricRelevanceIndicatorHeight, 12 },
    { kThemeMetricResizeControlHeight, 15 },
    { kThemeMetricSmallResizeControlHeight, 11 },
    { kThemeMetricLargeRoundButtonSize, 25 },
    { kThemeMetricHSliderHeight, 18 },
    { kThemeMetricHSliderTickHeight, 25 },
    { kThemeMetricSmallHSliderHeight, 14 },
    { kThemeMetricSmallHSliderTickHeight, 21 },
    { kThemeMetricVSliderWidth, 18 },
    { kThemeMetricVSliderTickWidth, 25 },
    { kThemeMetricSmallVSliderWidth, 14 },
    { kThemeMetricSmallVSliderTickWidth, 21 },
    { kThemeMetricTitleBarControlsHeight, 14 },
    { kThemeMetricCheckBoxWidth, 18 },
    { kThemeMetricSmallCheckBoxWidth, 15 },
    { kThemeMetricRadioButtonWidth, 18 },
    { kThemeMetricSmallRadioButtonWidth, 15 },
    { kThemeMetricSmallHSliderMinThumbWidth, 13 },
    { kThemeMetricSmallVSliderMinThumbHeight, 13 },
    { kThemeMetricSmallHSliderTickOffset, 6 },
    { kThemeMetricSmallVSliderTickOffset, 6 },
    { kThemeMetricNormalProgressBarThickness, 13 },
    { kThemeMetricProgressBarShadowOutset, 0 },
    { kThemeMetricSmallProgressBarShadowOutset, 0 },
    { kThemeMetricPrimaryGroupBoxContentInset, 8 },
    { kThemeMetricSecondaryGroupBoxContentInset, 6 },
    { kThemeMetricMenuMarkColumnWidth, 16 },
    { kThemeMetricMenuExcludedMarkColumnWidth, 11 },
    { kThemeMetricMenuMarkIndent, 4 },
    { kThemeMetricMenuTextLeadingEdgeMargin, 4 },
    { kThemeMetricMenuTextTrailingEdgeMargin, 8 },
    { kThemeMetricMenuIndentWidth, 13 },
    { kThemeMetricMenuIconTrailingEdgeMargin, 5 },
    { kThemeMetricLittleArrowsMiniHeight, 16 },
    { kThemeMetricLittleArrowsMiniWidth, 9 },
    { kThemeMetricLittleArrowsSmallHeight, 20 },
    { kThemeMetricLittleArrowsSmallWidth, 11 },
    { kThemeMetricMiniCheckBoxHeight, 13 },
    { kThemeMetricMiniCheckBoxWidth, 12 },
    { kThemeMetricMiniHSliderHeight, 12 },
    { kThemeMetricMiniHSliderMinThumbWidth, 11 },
    { kThemeMetricMiniHSliderTickHeight, 19 },
    { kThemeMetricMiniHSliderTickOffset, 5 },
    { kThemeMetricMiniPopupButtonHeight, 15 },
    { kThemeMetricMiniPullDownHeight, 15 },
    { kThemeMetricMiniPushButtonHeight, 15 },
    { kThemeMetricMiniRadioButtonHeight, 13 },
    { kThemeMetricMiniRadioButtonWidth, 12 },
};

} // namespace

OSStatus GetThemeMetric(ThemeMetric inMetric, SInt32* outMetric)
{
    if (!outMetric)
        return paramErr;
    for (const Metric& each : kMetrics) {
        if (each.metric != inMetric)
            continue;
        *outMetric = each.pixels;
        return noErr;
    }
    return paramErr;
}

OSStatus GetThemeScrollBarThumbStyle(ThemeScrollBarThumbStyle* outStyle)
{
    if (!outStyle)
        return paramErr;
    *outStyle = kThemeScrollBarThumbProportional;
    return noErr;
}

OSStatus GetThemeScrollBarArrowStyle(ThemeScrollBarArrowStyle* outStyle)
{
    if (!outStyle)
        return paramErr;
    *outStyle = kThemeScrollBarArrowsLowerRight;
    return noErr;
}
