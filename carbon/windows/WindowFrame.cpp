// Structure, parts and pixels of a window's frame.
#include "WindowFrame.h"

#include "Presenter.h"

#include <Carbon/Appearance.h>
#include <appearance/WindowGeometry.h>
#include <quickdraw/Port.h>

#include <cstring>

namespace lampblack::windows {

namespace {

constexpr short kGrowBoxSize = 15;
constexpr ScriptCode kSystemScript = -1;

ThemeWindowType FrameTheme(const WindowRecord& inWindow)
{
    if (inWindow.Has(kWindowSideTitlebarAttribute))
        return kThemeUtilitySideWindow;
    return inWindow.Has(kWindowNoTitleBarAttribute) ? (ThemeWindowType)kThemePlainDialogWindow
                                                    : inWindow.traits->theme;
}

ThemeWindowAttributes FrameAttributes(const WindowRecord& inWindow)
{
    struct Pair {
        WindowAttributes window;
        ThemeWindowAttributes theme;
    };
    static constexpr Pair kPairs[] = { { kWindowCloseBoxAttribute, kThemeWindowHasCloseBox },
                                       { kWindowHorizontalZoomAttribute, kThemeWindowHasHorizontalZoom },
                                       { kWindowVerticalZoomAttribute, kThemeWindowHasVerticalZoom },
                                       { kWindowCollapseBoxAttribute, kThemeWindowHasCollapseBox },
                                       { kWindowResizableAttribute, kThemeWindowHasGrow } };
    ThemeWindowAttributes attributes = 0;
    for (const Pair& pair : kPairs)
        if (inWindow.Has(pair.window))
            attributes |= pair.theme;
    if (inWindow.traits->hasTitle && inWindow.title[0])
        attributes |= kThemeWindowHasTitleText;
    if (inWindow.collapsed)
        attributes |= kThemeWindowIsCollapsed;
    if (inWindow.modified)
        attributes |= kThemeWindowHasDirty;
    return attributes;
}

ThemeDrawState FrameState(const WindowRecord& inWindow)
{
    return inWindow.hilited ? kThemeStateActive : kThemeStateInactive;
}

bool HasFrame(const WindowRecord& inWindow)
{
    return !inWindow.internal && inWindow.traits->frame == FrameKind::Theme;
}

ThemeFontID TitleFont(const WindowRecord& inWindow)
{
    return inWindow.traits->theme == kThemeUtilityWindow ? kThemeUtilityWindowTitleFont
                                                         : kThemeWindowTitleFont;
}

ThemeTextColor TitleColor(const WindowRecord& inWindow)
{
    const bool active = inWindow.hilited;
    if (inWindow.traits->theme == kThemeUtilityWindow)
        return active ? kThemeTextColorUtilityWindowTitleActive : kThemeTextColorUtilityWindowTitleInactive;
    if (inWindow.layer == Layer::Modal)
        return active ? kThemeTextColorMovableModalWindowTitleActive
                      : kThemeTextColorMovableModalWindowTitleInactive;
    return active ? kThemeTextColorDocumentWindowTitleActive : kThemeTextColorDocumentWindowTitleInactive;
}

// A theme region with the content at (left, top), for a window of that size.
Region ThemeRegion(const WindowRecord& inWindow, const Rect& inContent, AppearanceRegionCode inCode)
{
    static const RgnHandle region = NewRgn();
    SetEmptyRgn(region);
    GetThemeWindowRegion(FrameTheme(inWindow), &inContent, FrameState(inWindow), &inWindow.metrics,
                         FrameAttributes(inWindow), inCode, region);
    return FromRgn(region);
}

Rect LocalContent(const WindowRecord& inWindow)
{
    return { 0, 0, (short)Height(inWindow.content), (short)Width(inWindow.content) };
}

// Cuts a title that is too wide, with an ellipsis (0xC9 in Mac Roman) where it was cut.
void Truncate(Str255 ioTitle, int inWidth)
{
    if (StringWidth(ioTitle) <= inWidth)
        return;
    while (ioTitle[0] > 1 && StringWidth(ioTitle) > inWidth) {
        ioTitle[ioTitle[0] - 1] = 0xC9;
        --ioTitle[0];
    }
}

void DrawTitle(const Rect* inBounds, SInt16 inDepth, Boolean inColor, URefCon inWindow)
{
    const auto& window = *reinterpret_cast<const WindowRecord*>(inWindow);
    FontInfo font;
    UseThemeFont(TitleFont(window), kSystemScript);
    GetFontInfo(&font);
    SetThemeTextColor(TitleColor(window), inDepth, inColor);
    Str255 title;
    std::memcpy(title, window.title, sizeof title);
    Truncate(title, Width(*inBounds));
    const int slack = Width(*inBounds) - StringWidth(title);
    const int leading = Height(*inBounds) - font.ascent - font.descent;
    MoveTo((short)(inBounds->left + (slack > 0 ? slack / 2 : 0)),
           (short)(inBounds->top + font.ascent + leading / 2));
    DrawString(title);
}

void DrawFrame(WindowRecord& inWindow, const Rect& inContent)
{
    const ThemeWindowType theme = FrameTheme(inWindow);
    const ThemeWindowAttributes attributes = FrameAttributes(inWindow);
    DrawThemeWindowFrame(theme, &inContent, FrameState(inWindow), &inWindow.metrics, attributes, DrawTitle,
                         (URefCon)&inWindow);
    if (inWindow.pressedWidget >= 0)
        DrawThemeTitleBarWidget(theme, &inContent, kThemeStatePressed, &inWindow.metrics, attributes,
                                (ThemeTitleBarWidget)inWindow.pressedWidget);
}

void PlaceStrip(FrameStrip& ioStrip, const Rect& inPlace)
{
    ioStrip.place = inPlace;
    if (IsEmptyRect(inPlace)) {
        if (ioStrip.port)
            quickdraw::DisposePixelPort(ioStrip.port);
        ioStrip.port = nullptr;
        return;
    }
    if (!ioStrip.port)
        ioStrip.port = quickdraw::NewPixelPort(Width(inPlace), Height(inPlace));
    else
        quickdraw::ResizePixelPort(ioStrip.port, Width(inPlace), Height(inPlace));
}

void PlaceStrips(WindowRecord& ioWindow)
{
    const Rect content = LocalContent(ioWindow);
    const Rect& in = ioWindow.frameInsets;
    const Rect outer = { (short)-in.top, (short)-in.left, (short)(content.bottom + in.bottom),
                         (short)(content.right + in.right) };
    const Rect places[] = { { outer.top, outer.left, 0, outer.right },
                            { 0, outer.left, content.bottom, 0 },
                            { content.bottom, outer.left, outer.bottom, outer.right },
                            { 0, content.right, content.bottom, outer.right } };
    const int titleSide = ioWindow.Has(kWindowSideTitlebarAttribute) ? 1 : 0;
    for (int side = 0; side < 4; ++side)
        PlaceStrip(ioWindow.strips[side],
                   ioWindow.collapsed && side != titleSide ? Rect{ 0, 0, 0, 0 } : places[side]);
}

// The structure relative to the content, and with it the insets.
Region LocalStructure(WindowRecord& ioWindow)
{
    const Rect content = LocalContent(ioWindow);
    ioWindow.frameInsets = { 0, 0, 0, 0 };
    if (!HasFrame(ioWindow))
        return Region(content);
    const bool collapsed = ioWindow.collapsed;
    ioWindow.collapsed = false; // the insets are those of the expanded window
    const Rect outer = ThemeRegion(ioWindow, content, kAppearanceRegionStructure).Bounds();
    ioWindow.collapsed = collapsed;
    ioWindow.frameInsets = { (short)-outer.top, (short)-outer.left, (short)(outer.bottom - content.bottom),
                             (short)(outer.right - content.right) };
    Region structure = ThemeRegion(ioWindow, content, kAppearanceRegionStructure);
    if (collapsed && !ioWindow.Has(kWindowSideTitlebarAttribute))
        structure.Clip({ outer.top, outer.left, 0, outer.right });
    return structure;
}

// The published part codes and their theme regions are the same numbers.
bool IsFramePart(WindowRegionCode inPart)
{
    return inPart <= kWindowCollapseBoxRgn && inPart != 4;
}

} // namespace

void UpdateGeometry(WindowRecord& ioWindow)
{
    ioWindow.structure = LocalStructure(ioWindow);
    ioWindow.structure.Offset(ioWindow.content.left, ioWindow.content.top);
    if (HasFrame(ioWindow)) {
        const appearance::FrameKind* kind = appearance::FindFrameKind(FrameTheme(ioWindow));
        ioWindow.topRadius = kind ? kind->radius : (short)0;
        PlaceStrips(ioWindow);
    }
    ioWindow.frameStale = true;
}

void MoveGeometry(WindowRecord& ioWindow, int inH, int inV)
{
    ioWindow.structure.Offset(inH, inV);
}

void MeasureTitle(WindowRecord& ioWindow)
{
    if (!HasFrame(ioWindow))
        return;
    const StWindowPort port(ioWindow.port);
    ThemeDrawingState state = nullptr;
    GetThemeDrawingState(&state);
    FontInfo font;
    UseThemeFont(TitleFont(ioWindow), kSystemScript);
    GetFontInfo(&font);
    ioWindow.metrics.titleHeight = (SInt16)(font.ascent + font.descent);
    ioWindow.metrics.titleWidth = StringWidth(ioWindow.title);
    SetThemeDrawingState(state, true);
}

void DrawFrameIfStale(WindowRecord& ioWindow)
{
    if (!ioWindow.frameStale || !HasFrame(ioWindow))
        return;
    ioWindow.frameStale = false;
    const Rect content = LocalContent(ioWindow);
    for (FrameStrip& strip : ioWindow.strips) {
        if (!strip.port)
            continue;
        const StWindowPort port(strip.port);
        SetOrigin(strip.place.left, strip.place.top);
        DrawFrame(ioWindow, content);
        SetOrigin(0, 0);
    }
}

void DisposeFrame(WindowRecord& ioWindow)
{
    for (FrameStrip& strip : ioWindow.strips)
        PlaceStrip(strip, { 0, 0, 0, 0 });
}

Rect GrowBoxRect(const WindowRecord& inWindow)
{
    if (!inWindow.Has(kWindowResizableAttribute))
        return { 0, 0, 0, 0 };
    const Rect content = LocalContent(inWindow);
    return { (short)(content.bottom - kGrowBoxSize), (short)(content.right - kGrowBoxSize), content.bottom,
             content.right };
}

void DrawGrowBox(WindowRecord& inWindow)
{
    const Rect box = GrowBoxRect(inWindow);
    if (IsEmptyRect(box) || inWindow.collapsed)
        return;
    const StWindowPort port(inWindow.port);
    const Point origin = LocalOrigin(inWindow);
    const Point corner = { (short)(box.top + origin.v), (short)(box.left + origin.h) };
    DrawThemeStandaloneGrowBox(corner, kThemeGrowRight | kThemeGrowDown, false, FrameState(inWindow));
}

bool PartRegion(const WindowRecord& inWindow, WindowRegionCode inPart, Region* outRegion)
{
    outRegion->Clear();
    switch (inPart) {
    case kWindowStructureRgn:
    case kWindowOpaqueRgn: *outRegion = inWindow.structure; return true;
    case kWindowContentRgn: outRegion->Add(VisibleContent(inWindow)); return true;
    case kWindowGlobalPortRgn: outRegion->Add(inWindow.content); return true;
    case kWindowUpdateRgn:
        *outRegion = inWindow.update;
        outRegion->Offset(inWindow.content.left, inWindow.content.top);
        return true;
    case kWindowGrowRgn:
        if (!inWindow.collapsed)
            outRegion->Add(Shifted(GrowBoxRect(inWindow), inWindow.content.left, inWindow.content.top));
        return true;
    default: break;
    }
    if (!IsFramePart(inPart) && inPart != kWindowTitleProxyIconRgn)
        return false;
    if (HasFrame(inWindow))
        *outRegion = ThemeRegion(inWindow, inWindow.content, inPart);
    return true;
}

WindowPartCode HitPart(const WindowRecord& inWindow, Point inPoint)
{
    if (RectHolds(VisibleContent(inWindow), inPoint)) {
        const Rect grow = Shifted(GrowBoxRect(inWindow), inWindow.content.left, inWindow.content.top);
        return RectHolds(grow, inPoint) ? inGrow : inContent;
    }
    struct Pair {
        WindowRegionCode region;
        WindowPartCode part;
    };
    static constexpr Pair kPairs[] = { { kWindowCloseBoxRgn, inGoAway },
                                       { kWindowZoomBoxRgn, inZoomIn },
                                       { kWindowCollapseBoxRgn, inCollapseBox },
                                       { kWindowDragRgn, inDrag } };
    Region region;
    for (const Pair& pair : kPairs)
        if (PartRegion(inWindow, pair.region, &region) && region.Contains(inPoint))
            return pair.part;
    return inWindow.traits->hasTitle ? inDrag : inStructure;
}

Rect VisibleContent(const WindowRecord& inWindow)
{
    return inWindow.collapsed ? Rect{ inWindow.content.top, inWindow.content.left, inWindow.content.top,
                                      inWindow.content.left }
                              : inWindow.content;
}

} // namespace lampblack::windows
