// The frames of windows: drawing, regions and hit testing.
#include "appearance/Painters.h"
#include "appearance/WindowGeometry.h"

namespace lampblack::appearance {

namespace {

constexpr ThemeTitleBarWidget kWidgets[] = { kThemeWidgetCloseBox, kThemeWidgetCollapseBox,
                                             kThemeWidgetZoomBox };

void DrawWidget(const WindowGeometry& inWindow, ThemeTitleBarWidget inWidget, ThemeDrawState inState)
{
    const bool shown = inWindow.HasWidget(inWidget);
    const bool glyph = inState == kThemeStateRollover || inState == kThemeStatePressed;
    const Tone tone = shown ? ToneOf(inState) : Tone::Dim;
    DrawPiece(PaintTitleWidget, Look{ tone, (uint8_t)inWidget, (uint16_t)(shown && glyph) },
              inWindow.Widget(inWidget));
}

void DrawTitleBar(const WindowGeometry& inWindow, ThemeDrawState inState, ThemeWindowAttributes inAttributes)
{
    const FrameKind& kind = inWindow.Kind();
    const short margin = (short)(kind.radius + 2);
    const Look look = { ToneOf(inState), 0, (uint16_t)kind.radius };
    DrawPiece(kind.side ? PaintSideTitleBar : PaintTitleBar, look, inWindow.TitleBar(),
              kind.side ? Slices{ 0, 1, 0, 1 } : Slices{ margin, 0, margin, 0 });
    for (ThemeTitleBarWidget widget : kWidgets) {
        if (!inWindow.HasWidget(widget) && !(kind.placeholders && inWindow.HasAnyWidget()))
            continue;
        const bool dirty = widget == kThemeWidgetCloseBox && (inAttributes & kThemeWindowHasDirty);
        DrawWidget(inWindow, dirty ? (ThemeTitleBarWidget)kThemeWidgetDirtyCloseBox : widget, inState);
    }
}

// The four sides around the content, so that the content's own pixels are left alone.
void DrawBorder(const WindowGeometry& inWindow, ThemeDrawState inState)
{
    const short border = inWindow.Kind().border;
    const short margin = (short)(border + 1);
    if (border)
        DrawPiece(PaintWindowBorder, Look{ ToneOf(inState), 0, (uint16_t)border }, inWindow.Structure(),
                  { margin, margin, margin, margin, true });
}

// The rectangle, without the pixels outside of its round upper corners.
void SetRoundedRegion(RgnHandle ioRegion, const Rect& inRect, int inRadius)
{
    const Rect body = Inset(inRect, 0, inRadius, 0, 0);
    RectRgn(ioRegion, &body);
    if (IsEmpty(inRect) || inRadius <= 0)
        return;
    RgnHandle row = NewRgn();
    if (!row)
        return;
    for (int y = 0; y < inRadius && inRect.top + y < inRect.bottom; ++y) {
        const int inset = CornerInset(inRadius, y);
        const Rect line = MakeRect(inRect.left + inset, inRect.top + y, WidthOf(inRect) - 2 * inset, 1);
        RectRgn(row, &line);
        UnionRgn(ioRegion, row, ioRegion);
    }
    DisposeRgn(row);
}

void SetDragRegion(RgnHandle ioRegion, const WindowGeometry& inWindow)
{
    SetRoundedRegion(ioRegion, inWindow.TitleBar(), inWindow.Kind().radius);
    RgnHandle widget = NewRgn();
    if (!widget)
        return;
    for (ThemeTitleBarWidget each : kWidgets) {
        const Rect bounds = inWindow.Widget(each);
        RectRgn(widget, &bounds);
        if (inWindow.HasWidget(each))
            DiffRgn(ioRegion, widget, ioRegion);
    }
    DisposeRgn(widget);
}

void SetWidgetRegion(RgnHandle ioRegion, const WindowGeometry& inWindow, ThemeTitleBarWidget inWidget)
{
    const Rect bounds = inWindow.HasWidget(inWidget) ? inWindow.Widget(inWidget) : Rect{};
    RectRgn(ioRegion, &bounds);
}

void SetPlainRegion(RgnHandle ioRegion, const Rect& inRect)
{
    RectRgn(ioRegion, &inRect);
}

struct RegionOf {
    AppearanceRegionCode code;
    void (*set)(RgnHandle, const WindowGeometry&);
};

constexpr RegionOf kRegions[] = {
    { kAppearanceRegionTitleBar,
      [](RgnHandle rgn, const WindowGeometry& at) {
          SetRoundedRegion(rgn, at.TitleBar(), at.Kind().radius);
      } },
    { kAppearanceRegionTitleText,
      [](RgnHandle rgn, const WindowGeometry& at) { SetPlainRegion(rgn, at.TitleText()); } },
    { kAppearanceRegionCloseBox,
      [](RgnHandle rgn, const WindowGeometry& at) { SetWidgetRegion(rgn, at, kThemeWidgetCloseBox); } },
    { kAppearanceRegionZoomBox,
      [](RgnHandle rgn, const WindowGeometry& at) { SetWidgetRegion(rgn, at, kThemeWidgetZoomBox); } },
    { kAppearanceRegionDrag, SetDragRegion },
    { kAppearanceRegionGrow,
      [](RgnHandle rgn, const WindowGeometry& at) { SetPlainRegion(rgn, at.Grow()); } },
    { kAppearanceRegionCollapseBox,
      [](RgnHandle rgn, const WindowGeometry& at) { SetWidgetRegion(rgn, at, kThemeWidgetCollapseBox); } },
    { kAppearanceRegionTitleProxyIcon, [](RgnHandle rgn, const WindowGeometry&) { SetEmptyRgn(rgn); } },
    { kAppearanceRegionStructure,
      [](RgnHandle rgn, const WindowGeometry& at) {
          SetRoundedRegion(rgn, at.Structure(), at.Kind().radius);
      } },
    { kAppearanceRegionContent,
      [](RgnHandle rgn, const WindowGeometry& at) { SetPlainRegion(rgn, at.Content()); } },
};

struct WidgetHit {
    ThemeTitleBarWidget widget;
    AppearanceRegionCode code;
};

constexpr WidgetHit kWidgetHits[] = { { kThemeWidgetCloseBox, kAppearanceRegionCloseBox },
                                      { kThemeWidgetZoomBox, kAppearanceRegionZoomBox },
                                      { kThemeWidgetCollapseBox, kAppearanceRegionCollapseBox } };

bool HitOf(const WindowGeometry& inWindow, Point inPoint, AppearanceRegionCode* outHit)
{
    for (const WidgetHit& hit : kWidgetHits) {
        if (!inWindow.HasWidget(hit.widget) || !Holds(inWindow.Widget(hit.widget), inPoint))
            continue;
        *outHit = hit.code;
        return true;
    }
    const Rect bar = inWindow.TitleBar();
    const int row = inPoint.v - bar.top, inset = CornerInset(inWindow.Kind().radius, row);
    if (Holds(bar, inPoint) && inPoint.h >= bar.left + inset && inPoint.h < bar.right - inset)
        *outHit = kAppearanceRegionDrag;
    else if (Holds(inWindow.Grow(), inPoint))
        *outHit = kAppearanceRegionGrow;
    else if (Holds(inWindow.Content(), inPoint))
        *outHit = kAppearanceRegionContent;
    else if (!inWindow.Kind().title && Holds(inWindow.Structure(), inPoint))
        *outHit = kAppearanceRegionStructure;
    else
        return false;
    return true;
}

} // namespace

} // namespace lampblack::appearance

using namespace lampblack::appearance;

OSStatus DrawThemeWindowFrame(ThemeWindowType inFlavor, const Rect* inContRect, ThemeDrawState inState,
                              const ThemeWindowMetrics* inMetrics, ThemeWindowAttributes inAttributes,
                              WindowTitleDrawingUPP inTitleProc, URefCon inTitleData)
{
    const FrameKind* kind = FindFrameKind(inFlavor);
    if (!kind || !inContRect)
        return paramErr;
    const WindowGeometry window(*kind, *inContRect, inMetrics, inAttributes);
    DrawBorder(window, inState);
    if (!kind->title)
        return noErr;
    DrawTitleBar(window, inState, inAttributes);
    const Rect title = window.TitleText();
    if (inTitleProc && !IsEmpty(title))
        inTitleProc(&title, kDepth, true, inTitleData);
    return noErr;
}

OSStatus DrawThemeTitleBarWidget(ThemeWindowType inFlavor, const Rect* inContRect, ThemeDrawState inState,
                                 const ThemeWindowMetrics* inMetrics, ThemeWindowAttributes inAttributes,
                                 ThemeTitleBarWidget inWidget)
{
    const FrameKind* kind = FindFrameKind(inFlavor);
    if (!kind || !inContRect || (inWidget > kThemeWidgetCollapseBox && inWidget != kThemeWidgetDirtyCloseBox))
        return paramErr;
    const WindowGeometry window(*kind, *inContRect, inMetrics, inAttributes);
    if (!window.HasWidget(inWidget))
        return noErr;
    // The bar behind it comes first: the smooth edge of a widget would darken if it were drawn over itself.
    const Rect bar = window.TitleBar();
    const Look look = { inState == kThemeStateInactive ? Tone::Inactive : Tone::Active, 0,
                        (uint16_t)kind->radius };
    DrawPiecePart(kind->side ? PaintSideTitleBar : PaintTitleBar, look,
                  kind->side ? MakeRect(bar.left, bar.top, kind->title, 100)
                             : MakeRect(bar.left, bar.top, 100, kind->title),
                  window.Widget(inWidget));
    DrawWidget(window, inWidget, inState);
    return noErr;
}

OSStatus GetThemeWindowRegion(ThemeWindowType inFlavor, const Rect* inContRect, ThemeDrawState,
                              const ThemeWindowMetrics* inMetrics, ThemeWindowAttributes inAttributes,
                              AppearanceRegionCode inWinRegion, RgnHandle ioRegion)
{
    const FrameKind* kind = FindFrameKind(inFlavor);
    if (!kind || !inContRect || !ioRegion)
        return paramErr;
    const WindowGeometry window(*kind, *inContRect, inMetrics, inAttributes);
    for (const RegionOf& region : kRegions) {
        if (region.code != inWinRegion)
            continue;
        region.set(ioRegion, window);
        return noErr;
    }
    return errWindowRegionCodeInvalid;
}

Boolean GetThemeWindowRegionHit(ThemeWindowType inFlavor, const Rect* inContRect, ThemeDrawState,
                                const ThemeWindowMetrics* inMetrics, ThemeWindowAttributes inAttributes,
                                Point inPoint, AppearanceRegionCode* outRegionHit)
{
    const FrameKind* kind = FindFrameKind(inFlavor);
    if (!kind || !inContRect || !outRegionHit)
        return false;
    return HitOf(WindowGeometry(*kind, *inContRect, inMetrics, inAttributes), inPoint, outRegionHit);
}
