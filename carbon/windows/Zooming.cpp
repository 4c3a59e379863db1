// Zooming, and collapsing to the title bar.
#include "Bounds.h"
#include "Presenter.h"
#include "Updates.h"
#include "WindowEvents.h"
#include "WindowFrame.h"
#include "WindowList.h"

#include <algorithm>
#include <cstdlib>

namespace lampblack::windows {

namespace {

// Windows that differ from the standard state by no more than this are taken to be in it.
constexpr int kZoomTolerance = 7;

// Where a window of the ideal size would stand: as near to where it is as the screen allows.
Rect IdealStandardState(const WindowRecord& inWindow, const Point* inIdealSize)
{
    const Rect area = ContentForStructure(inWindow, AvailableBounds());
    if (!inIdealSize)
        return inWindow.standardState;
    Rect state = inWindow.content;
    if (inWindow.Has(kWindowHorizontalZoomAttribute) || !inWindow.Has(kWindowFullZoomAttribute)) {
        const int width = std::min<int>(inIdealSize->h > 0 ? inIdealSize->h : Width(area), Width(area));
        state.left = (short)std::clamp<int>(state.left, area.left, area.right - width);
        state.right = (short)(state.left + width);
    }
    if (inWindow.Has(kWindowVerticalZoomAttribute) || !inWindow.Has(kWindowFullZoomAttribute)) {
        const int height = std::min<int>(inIdealSize->v > 0 ? inIdealSize->v : Height(area), Height(area));
        state.top = (short)std::clamp<int>(state.top, area.top, area.bottom - height);
        state.bottom = (short)(state.top + height);
    }
    return state;
}

bool IsNear(const Rect& a, const Rect& b)
{
    return std::abs(a.left - b.left) <= kZoomTolerance && std::abs(a.top - b.top) <= kZoomTolerance &&
           std::abs(a.right - b.right) <= kZoomTolerance && std::abs(a.bottom - b.bottom) <= kZoomTolerance;
}

template <class Copy>
void WithWindow(WindowRef inWindow, Copy inCopy)
{
    if (WindowRecord* window = Find(inWindow))
        inCopy(*window);
}

} // namespace

} // namespace lampblack::windows

using namespace lampblack::windows;

Boolean IsWindowInStandardState(WindowRef inWindow, const Point* inIdealSize, Rect* outIdealStandardState)
{
    const WindowRecord* window = Find(inWindow);
    if (!window)
        return false;
    const Rect state = IdealStandardState(*window, inIdealSize);
    if (outIdealStandardState)
        *outIdealStandardState = state;
    return IsNear(state, window->content);
}

OSStatus ZoomWindowIdeal(WindowRef inWindow, WindowPartCode inPart, Point* ioIdealSize)
{
    WindowRecord* window = Find(inWindow);
    if (!window)
        return errInvalidWindowRef;
    if ((inPart != inZoomIn && inPart != inZoomOut) || !ioIdealSize)
        return paramErr;
    if (inPart == inZoomIn) {
        ChangeBounds(inWindow, window->userState, kWindowBoundsChangeZoom);
        return noErr;
    }
    const Rect state = IdealStandardState(*window, ioIdealSize);
    if (!IsNear(state, window->content))
        window->userState = window->content;
    window->standardState = state;
    *ioIdealSize = { (short)Height(state), (short)Width(state) };
    ChangeBounds(inWindow, state, kWindowBoundsChangeZoom);
    return noErr;
}

void ZoomWindow(WindowRef inWindow, WindowPartCode inPart, Boolean inFront)
{
    WindowRecord* window = Find(inWindow);
    if (!window || (inPart != inZoomIn && inPart != inZoomOut))
        return;
    if (inPart == inZoomOut && !IsNear(window->standardState, window->content))
        window->userState = window->content;
    if (inFront)
        SelectWindow(inWindow);
    WithWindow(inWindow, [=](WindowRecord& w) {
        ChangeBounds(inWindow, inPart == inZoomIn ? w.userState : w.standardState, kWindowBoundsChangeZoom);
    });
}

OSStatus GetWindowIdealUserState(WindowRef inWindow, Rect* outUserState)
{
    const WindowRecord* window = Find(inWindow);
    if (!window || !outUserState)
        return window ? (OSStatus)paramErr : (OSStatus)errInvalidWindowRef;
    *outUserState = window->userState;
    return noErr;
}

OSStatus SetWindowIdealUserState(WindowRef inWindow, const Rect* inUserState)
{
    WindowRecord* window = Find(inWindow);
    if (!window || !inUserState)
        return window ? (OSStatus)paramErr : (OSStatus)errInvalidWindowRef;
    window->userState = *inUserState;
    return noErr;
}

Rect* GetWindowStandardState(WindowRef inWindow, Rect* outRect)
{
    if (outRect)
        WithWindow(inWindow, [=](WindowRecord& window) { *outRect = window.standardState; });
    return outRect;
}

void SetWindowStandardState(WindowRef inWindow, const Rect* inRect)
{
    if (inRect)
        WithWindow(inWindow, [=](WindowRecord& window) { window.standardState = *inRect; });
}

Rect* GetWindowUserState(WindowRef inWindow, Rect* outRect)
{
    if (outRect)
        WithWindow(inWindow, [=](WindowRecord& window) { *outRect = window.userState; });
    return outRect;
}

void SetWindowUserState(WindowRef inWindow, const Rect* inRect)
{
    if (inRect)
        WithWindow(inWindow, [=](WindowRecord& window) { window.userState = *inRect; });
}

Boolean IsWindowCollapsable(WindowRef inWindow)
{
    const WindowRecord* window = Find(inWindow);
    return window && window->traits->hasTitle && window->Has(kWindowCollapseBoxAttribute);
}

Boolean IsWindowCollapsed(WindowRef inWindow)
{
    const WindowRecord* window = Find(inWindow);
    return window && window->collapsed;
}

OSStatus CollapseWindow(WindowRef inWindow, Boolean inCollapse)
{
    WindowRecord* window = Find(inWindow);
    if (!window)
        return errInvalidWindowRef;
    if (!IsWindowCollapsable(inWindow))
        return paramErr;
    if (window->collapsed == (inCollapse != 0))
        return noErr;
    SendWindowEvent(inWindow, inCollapse ? kEventWindowCollapsing : kEventWindowExpanding);
    window = Find(inWindow);
    if (!window)
        return noErr;
    Screen().WindowDamaged(*window);
    window->collapsed = inCollapse;
    UpdateGeometry(*window);
    UpdateVisibleRegion(*window);
    Screen().LayoutChanged();
    Screen().WindowDamaged(*window);
    PostUpdate(*window);
    SendWindowEvent(inWindow, inCollapse ? kEventWindowCollapsed : kEventWindowExpanded);
    return noErr;
}

OSStatus CollapseAllWindows(Boolean inCollapse)
{
    const std::vector<WindowRecord*> order = List().Order();
    for (const WindowRecord* window : order) {
        const WindowRef ref = reinterpret_cast<WindowRef>(const_cast<WindowRecord*>(window));
        if (IsWindowVisible(ref) && IsWindowCollapsable(ref))
            CollapseWindow(ref, inCollapse);
    }
    return noErr;
}
