// Update regions and update events.
#include "Updates.h"

#include "Presenter.h"
#include "WindowEvents.h"
#include "WindowFrame.h"

#include <quickdraw/Port.h>

namespace lampblack::windows {

namespace {

Rect WholeContent(const WindowRecord& inWindow)
{
    return { 0, 0, (short)Height(inWindow.content), (short)Width(inWindow.content) };
}

bool IsPending(const WindowRecord& inWindow)
{
    return inWindow.updateEvent && IsEventInQueue(GetMainEventQueue(), inWindow.updateEvent);
}

// What the window manager draws stays clear of the application's visible region while that is narrowed.
Region ToLocal(const WindowRecord& inWindow, Region inRegion)
{
    const Point origin = LocalOrigin(inWindow);
    inRegion.Offset(origin.h, origin.v);
    return inRegion;
}

Region FromLocal(const WindowRecord& inWindow, Region inRegion)
{
    const Point origin = LocalOrigin(inWindow);
    inRegion.Offset(-origin.h, -origin.v);
    return inRegion;
}

template <class Action>
OSStatus WithRegion(WindowRef inWindow, RgnHandle inRegion, Action inAction)
{
    WindowRecord* window = Find(inWindow);
    if (!window)
        return errInvalidWindowRef;
    if (!inRegion)
        return paramErr;
    inAction(*window, FromLocal(*window, FromRgn(inRegion)));
    return noErr;
}

template <class Action>
OSStatus WithRect(WindowRef inWindow, const Rect* inRect, Action inAction)
{
    WindowRecord* window = Find(inWindow);
    if (!window)
        return errInvalidWindowRef;
    if (!inRect)
        return paramErr;
    inAction(*window, FromLocal(*window, Region(*inRect)));
    return noErr;
}

} // namespace

void PostUpdate(WindowRecord& ioWindow)
{
    if (ioWindow.update.IsEmpty() || !ioWindow.visible || ioWindow.collapsed || IsPending(ioWindow) ||
        ioWindow.Has(kWindowNoUpdatesAttribute) || ioWindow.internal)
        return;
    CancelUpdate(ioWindow);
    EventRef event = nullptr;
    if (CreateEvent(nullptr, kEventClassWindow, kEventWindowUpdate, GetCurrentEventTime(),
                    kEventAttributeNone, &event) != noErr)
        return;
    const WindowRef ref = ioWindow.Ref();
    SetEventParameter(event, kEventParamDirectObject, typeWindowRef, sizeof ref, &ref);
    PostEventToQueue(GetMainEventQueue(), event, kEventPriorityLow);
    ioWindow.updateEvent = event;
}

void CancelUpdate(WindowRecord& ioWindow)
{
    if (!ioWindow.updateEvent)
        return;
    RemoveEventFromQueue(GetMainEventQueue(), ioWindow.updateEvent);
    ReleaseEvent(ioWindow.updateEvent);
    ioWindow.updateEvent = nullptr;
}

void Invalidate(WindowRecord& ioWindow, const Region& inRegion)
{
    ioWindow.update.Add(inRegion);
    ioWindow.update.Clip(WholeContent(ioWindow));
    PostUpdate(ioWindow);
}

void Validate(WindowRecord& ioWindow, const Region& inRegion)
{
    ioWindow.update.Subtract(inRegion);
    if (ioWindow.update.IsEmpty())
        CancelUpdate(ioWindow);
}

void EraseContent(WindowRecord& inWindow, const Region& inRegion)
{
    static const RgnHandle region = NewRgn();
    const StWindowPort port(inWindow.port);
    ToRgn(ToLocal(inWindow, inRegion), region);
    EraseRgn(region);
}

void RedrawContent(WindowRecord& ioWindow)
{
    const Region whole(WholeContent(ioWindow));
    EraseContent(ioWindow, whole);
    Invalidate(ioWindow, whole);
}

void UpdateNow(WindowRef inWindow)
{
    WindowRecord* window = Find(inWindow);
    if (!window || window->update.IsEmpty() || !window->OnScreen() || window->collapsed)
        return;
    CancelUpdate(*window);
    SendWindowEvent(inWindow, kEventWindowUpdate);
}

void UpdateVisibleRegion(WindowRecord& ioWindow)
{
    static const RgnHandle region = NewRgn();
    Region visible;
    if (ioWindow.visible && !ioWindow.collapsed)
        visible = ToLocal(ioWindow, Region(WholeContent(ioWindow)));
    ToRgn(visible, region);
    if (ioWindow.updating) {
        CopyRgn(region, ioWindow.fullVisible);
        return;
    }
    SetPortVisibleRegion(ioWindow.port, region);
}

} // namespace lampblack::windows

using namespace lampblack::windows;

OSStatus InvalWindowRect(WindowRef inWindow, const Rect* inBounds)
{
    return WithRect(inWindow, inBounds, Invalidate);
}

OSStatus InvalWindowRgn(WindowRef inWindow, RgnHandle inRegion)
{
    return WithRegion(inWindow, inRegion, Invalidate);
}

OSStatus ValidWindowRect(WindowRef inWindow, const Rect* inBounds)
{
    return WithRect(inWindow, inBounds, Validate);
}

OSStatus ValidWindowRgn(WindowRef inWindow, RgnHandle inRegion)
{
    return WithRegion(inWindow, inRegion, Validate);
}

Boolean IsWindowUpdatePending(WindowRef inWindow)
{
    const WindowRecord* window = Find(inWindow);
    return window && window->visible && !window->update.IsEmpty();
}

// The visible region becomes what has to be drawn; the update region becomes empty, so that what is
// invalidated between BeginUpdate and EndUpdate asks for another update.
void BeginUpdate(WindowRef inWindow)
{
    WindowRecord* window = Find(inWindow);
    if (!window || window->updating)
        return;
    static const RgnHandle region = NewRgn();
    window->fullVisible = window->fullVisible ? window->fullVisible : NewRgn();
    GetPortVisibleRegion(window->port, window->fullVisible);
    ToRgn(ToLocal(*window, window->update), region);
    SectRgn(region, window->fullVisible, region);
    SetPortVisibleRegion(window->port, region);
    window->updating = true;
    window->update.Clear();
    CancelUpdate(*window);
}

void EndUpdate(WindowRef inWindow)
{
    WindowRecord* window = Find(inWindow);
    if (!window || !window->updating)
        return;
    window->updating = false;
    SetPortVisibleRegion(window->port, window->fullVisible);
}
