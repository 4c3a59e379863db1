// Showing, hiding and the order that goes with them.
#include "Visibility.h"

#include "Activation.h"
#include "Presenter.h"
#include "Sheets.h"
#include "Updates.h"
#include "WindowEvents.h"
#include "WindowFrame.h"
#include "WindowList.h"

namespace lampblack::windows {

namespace {

bool gFloatingShown = true;
std::vector<WindowRef> gHiddenFloating;

void Appear(WindowRecord& ioWindow)
{
    ioWindow.visible = true;
    UpdateVisibleRegion(ioWindow);
    RedrawContent(ioWindow);
    Screen().LayoutChanged();
    Screen().WindowDamaged(ioWindow);
}

void Vanish(WindowRecord& ioWindow)
{
    Screen().WindowDamaged(ioWindow);
    ioWindow.visible = false;
    UpdateVisibleRegion(ioWindow);
    CancelUpdate(ioWindow);
    Screen().LayoutChanged();
}

void OrderChanged(WindowRecord& inWindow)
{
    Screen().LayoutChanged();
    Screen().WindowDamaged(inWindow);
}

} // namespace

void SetVisible(WindowRef inWindow, bool inVisible)
{
    WindowRecord* window = Find(inWindow);
    if (!window || window->visible == inVisible)
        return;
    SendWindowEvent(inWindow, inVisible ? kEventWindowShowing : kEventWindowHiding);
    window = Find(inWindow);
    if (!window || window->visible == inVisible)
        return;
    if (inVisible)
        Appear(*window);
    else
        Vanish(*window);
    SendWindowEvent(inWindow, inVisible ? kEventWindowShown : kEventWindowHidden);
}

} // namespace lampblack::windows

using namespace lampblack::windows;

void ShowHide(WindowRef inWindow, Boolean inShow)
{
    SetVisible(inWindow, inShow);
}

// A window that was never shown since it was made comes up in front of its layer, where it was put when made.
void ShowWindow(WindowRef inWindow)
{
    SetVisible(inWindow, true);
    SettleActivation();
}

void HideWindow(WindowRef inWindow)
{
    WindowRecord* window = Find(inWindow);
    if (!window || !window->visible)
        return;
    HideSheetsOf(inWindow);
    SetVisible(inWindow, false);
    if ((window = Find(inWindow)))
        Deactivate(*window);
    SettleActivation();
}

Boolean IsWindowVisible(WindowRef inWindow)
{
    const WindowRecord* window = Find(inWindow);
    return window && window->visible;
}

void BringToFront(WindowRef inWindow)
{
    WindowRecord* window = Find(inWindow);
    if (!window || !List().MoveToFront(*window))
        return;
    OrderChanged(*window);
    RaiseSheetsOf(*window);
    SettleActivation();
}

void SendBehind(WindowRef inWindow, WindowRef inBehind)
{
    WindowRecord* window = Find(inWindow);
    const WindowRecord* behind = Find(inBehind);
    if (!window || (inBehind && !behind) || !List().MoveBehind(*window, behind))
        return;
    OrderChanged(*window);
    RaiseSheetsOf(*window);
    SettleActivation();
}

// A sheet and its parent come forward together, the sheet in front.
void SelectWindow(WindowRef inWindow)
{
    WindowRecord* window = Find(inWindow);
    if (!window)
        return;
    if (WindowRecord* parent = Find(window->unavailable))
        window = parent;
    if (List().MoveToFront(*window))
        OrderChanged(*window);
    RaiseSheetsOf(*window);
    SettleActivation();
}

OSStatus HideFloatingWindows(void)
{
    if (!gFloatingShown)
        return noErr;
    gFloatingShown = false;
    const std::vector<WindowRecord*> order = List().Order();
    for (WindowRecord* window : order) {
        if (window->layer != Layer::Floating || !window->visible)
            continue;
        gHiddenFloating.push_back(window->Ref());
        SetVisible(window->Ref(), false);
    }
    SettleActivation();
    return noErr;
}

OSStatus ShowFloatingWindows(void)
{
    gFloatingShown = true;
    std::vector<WindowRef> hidden;
    hidden.swap(gHiddenFloating);
    for (WindowRef window : hidden)
        SetVisible(window, true);
    SettleActivation();
    return noErr;
}

Boolean AreFloatingWindowsVisible(void)
{
    return gFloatingShown;
}
