// Finding the window under a point, dragging, resizing, and the boxes of the title bar.
#include "Bounds.h"
#include "Presenter.h"
#include "Tracking.h"
#include "Updates.h"
#include "WindowEvents.h"
#include "WindowFrame.h"
#include "WindowList.h"

#include <algorithm>

namespace lampblack::windows {

namespace {

constexpr short kLeastWidth = 64, kLeastHeight = 48; // of a window whose application sets no limits

bool TakesMouse(const WindowRecord& inWindow, Point inWhere)
{
    return inWindow.OnScreen() && (!inWindow.internal || inWindow.layer != Layer::Help) &&
           !inWindow.Has(kWindowIgnoreClicksAttribute) && inWindow.structure.Contains(inWhere);
}

WindowPartCode PartOf(WindowRecord& inWindow, Point inWhere)
{
    const WindowPartCode part = HitPart(inWindow, inWhere);
    if (part == inZoomIn)
        return IsWindowInStandardState(inWindow.Ref(), nullptr, nullptr) ? inZoomIn : inZoomOut;
    return part;
}

// Keeps the title bar below the menu bar and the pointer within its bounds.
Rect DraggedTo(const WindowRecord& inWindow, const Rect& inStart, Point inFrom, Point inTo,
               const Rect& inBounds)
{
    const int h = std::clamp<int>(inTo.h, inBounds.left, inBounds.right - 1) - inFrom.h;
    const int v = std::clamp<int>(inTo.v, inBounds.top, inBounds.bottom - 1) - inFrom.v;
    Rect content = Shifted(inStart, h, v);
    const int above = AvailableBounds().top - StructureForContent(inWindow, content).top;
    return above > 0 && !inWindow.Has(kWindowNoConstrainAttribute) ? Shifted(content, 0, above) : content;
}

struct Limits {
    int leastWidth, leastHeight, greatestWidth, greatestHeight;
};

Limits LimitsOf(const Rect* inLimits)
{
    const Rect screen = AvailableBounds();
    if (!inLimits)
        return { kLeastWidth, kLeastHeight, Width(screen), Height(screen) };
    const int width = std::max<int>(1, inLimits->left), height = std::max<int>(1, inLimits->top);
    return { width, height, std::max<int>(width, inLimits->right), std::max<int>(height, inLimits->bottom) };
}

Rect GrownTo(const Rect& inStart, Point inFrom, Point inTo, const Limits& inLimits)
{
    Rect content = inStart;
    const int width = Width(inStart) + inTo.h - inFrom.h, height = Height(inStart) + inTo.v - inFrom.v;
    content.right = (short)(content.left + std::clamp(width, inLimits.leastWidth, inLimits.greatestWidth));
    content.bottom = (short)(content.top + std::clamp(height, inLimits.leastHeight, inLimits.greatestHeight));
    return content;
}

struct Box {
    WindowPartCode part;
    WindowRegionCode region;
    ThemeTitleBarWidget widget;
};
constexpr Box kBoxes[] = { { inGoAway, kWindowCloseBoxRgn, kThemeWidgetCloseBox },
                           { inZoomIn, kWindowZoomBoxRgn, kThemeWidgetZoomBox },
                           { inZoomOut, kWindowZoomBoxRgn, kThemeWidgetZoomBox },
                           { inCollapseBox, kWindowCollapseBoxRgn, kThemeWidgetCollapseBox } };

const Box* FindBox(WindowPartCode inPart)
{
    for (const Box& box : kBoxes)
        if (box.part == inPart)
            return &box;
    return nullptr;
}

void ShowPressed(WindowRef inWindow, SInt16 inWidget)
{
    WindowRecord* window = Find(inWindow);
    if (!window || window->pressedWidget == inWidget)
        return;
    window->pressedWidget = inWidget;
    window->frameStale = true;
    Screen().FrameDamaged(*window);
}

bool IsInBox(WindowRef inWindow, const Box& inBox, Point inWhere)
{
    const WindowRecord* window = Find(inWindow);
    Region region;
    return window && PartRegion(*window, inBox.region, &region) && region.Contains(inWhere);
}

} // namespace

} // namespace lampblack::windows

using namespace lampblack::windows;

OSStatus FindWindowOfClass(const Point* inWhere, WindowClass inClass, WindowRef* outWindow,
                           WindowPartCode* outPart)
{
    if (outWindow)
        *outWindow = nullptr;
    if (outPart)
        *outPart = inNoWindow;
    if (!inWhere)
        return paramErr;
    const bool any = inClass == (WindowClass)kAllWindowClasses;
    WindowRecord* window = FirstWindow([&](const WindowRecord& candidate) {
        return TakesMouse(candidate, *inWhere) &&
               (any || (candidate.traits->windowClass == inClass && !candidate.internal));
    });
    if (!window)
        return errWindowNotFound;
    if (outPart)
        *outPart = window->internal ? (WindowPartCode)inMenuBar : PartOf(*window, *inWhere);
    if (outWindow && !window->internal)
        *outWindow = window->Ref();
    return noErr;
}

WindowPartCode FindWindow(Point inPoint, WindowRef* outWindow)
{
    WindowPartCode part = inDesk;
    FindWindowOfClass(&inPoint, kAllWindowClasses, outWindow, &part);
    return part;
}

void DragWindow(WindowRef inWindow, Point inStart, const Rect* inBounds)
{
    const WindowRecord* window = Find(inWindow);
    if (!window)
        return;
    const Rect start = window->content;
    const Rect bounds = inBounds && !IsEmptyRect(*inBounds) ? *inBounds : AvailableBounds();
    SendWindowEvent(inWindow, kEventWindowDragStarted);
    for (MouseStep step; (window = Find(inWindow));) {
        step = NextMouseStep();
        window = Find(inWindow);
        if (window)
            ChangeBounds(inWindow, DraggedTo(*window, start, inStart, step.where, bounds),
                         kWindowBoundsChangeUserDrag);
        if (step.result == kMouseTrackingMouseUp)
            break;
    }
    SendWindowEvent(inWindow, kEventWindowDragCompleted);
}

Boolean ResizeWindow(WindowRef inWindow, Point inStart, const Rect* inLimits, Rect* outContent)
{
    const WindowRecord* window = Find(inWindow);
    if (!window)
        return false;
    const Rect start = window->content;
    const Limits limits = LimitsOf(inLimits);
    SendWindowEvent(inWindow, kEventWindowResizeStarted);
    for (MouseStep step; Find(inWindow);) {
        step = NextMouseStep();
        ChangeBounds(inWindow, GrownTo(start, inStart, step.where, limits), kWindowBoundsChangeUserResize);
        UpdateNow(inWindow);
        if (step.result == kMouseTrackingMouseUp)
            break;
    }
    SendWindowEvent(inWindow, kEventWindowResizeCompleted);
    window = Find(inWindow);
    if (window && outContent)
        *outContent = window->content;
    return window && !SameRect(window->content, start);
}

long GrowWindow(WindowRef inWindow, Point inStart, const Rect* inLimits)
{
    const WindowRecord* window = Find(inWindow);
    if (!window)
        return 0;
    const Rect start = window->content;
    const Limits limits = LimitsOf(inLimits);
    Outline outline;
    Rect grown = start;
    for (MouseStep step; (window = Find(inWindow));) {
        outline.MoveTo(StructureForContent(*window, grown));
        step = NextMouseStep();
        grown = GrownTo(start, inStart, step.where, limits);
        if (step.result == kMouseTrackingMouseUp)
            break;
    }
    return SameRect(grown, start) ? 0 : (long)Height(grown) << 16 | (long)Width(grown);
}

Boolean TrackBox(WindowRef inWindow, Point inStart, WindowPartCode inPart)
{
    const Box* box = FindBox(inPart);
    if (!box || !Find(inWindow))
        return false;
    bool inside = IsInBox(inWindow, *box, inStart);
    for (MouseStep step; Find(inWindow);) {
        ShowPressed(inWindow, inside ? (SInt16)box->widget : (SInt16)-1);
        step = NextMouseStep();
        inside = IsInBox(inWindow, *box, step.where);
        if (step.result == kMouseTrackingMouseUp)
            break;
    }
    ShowPressed(inWindow, -1);
    return inside && Find(inWindow);
}

Boolean TrackGoAway(WindowRef inWindow, Point inStart)
{
    return TrackBox(inWindow, inStart, inGoAway);
}
