// The standard window handler: what a window does with an event that its application leaves alone.
#include "StandardHandler.h"

#include "Activation.h"
#include "Bounds.h"
#include "Presenter.h"
#include "WindowEvents.h"
#include "WindowFrame.h"
#include "WindowList.h"

#include <events/EventTargets.h>

#include <iterator>

namespace lampblack::windows {

namespace {

using Action = OSStatus (*)(WindowRef, EventRef);

// --- A click, by the part it hit

OSStatus OnMouseDown(WindowRef inWindow, EventRef inEvent)
{
    struct Pair {
        WindowPartCode part;
        UInt32 kind;
    };
    static constexpr Pair kPairs[] = {
        { inContent, kEventWindowClickContentRgn },   { inDrag, kEventWindowClickDragRgn },
        { inStructure, kEventWindowClickContentRgn }, { inGrow, kEventWindowClickResizeRgn },
        { inGoAway, kEventWindowClickCloseRgn },      { inZoomIn, kEventWindowClickZoomRgn },
        { inZoomOut, kEventWindowClickZoomRgn },      { inCollapseBox, kEventWindowClickCollapseRgn }
    };
    WindowRef hit = nullptr;
    const WindowPartCode part = FindWindow(EventLocation(inEvent), &hit);
    if (hit != inWindow)
        return eventNotHandledErr;
    for (const Pair& pair : kPairs)
        if (pair.part == part)
            return SendMouseActionEvent(inWindow, pair.kind, inEvent);
    return eventNotHandledErr;
}

bool IsContextual(EventRef inEvent)
{
    EventMouseButton button = kEventMouseButtonPrimary;
    GetParameter(inEvent, kEventParamMouseButton, typeMouseButton, &button);
    return button == kEventMouseButtonSecondary || (EventModifiers(inEvent) & controlKey);
}

// What a click in an inactive window does: the window may be asked, else it only comes to the front.
ClickActivationResult AskClickActivation(WindowRef inWindow, EventRef inEvent)
{
    ClickActivationResult result = kActivateAndIgnoreClick;
    const WindowRecord* window = Find(inWindow);
    StEvent event(kEventClassWindow, kEventWindowGetClickActivation);
    event.Put(kEventParamDirectObject, typeWindowRef, inWindow)
        .Put(kEventParamMouseLocation, typeQDPoint, EventLocation(inEvent))
        .Put(kEventParamKeyModifiers, typeUInt32, EventModifiers(inEvent));
    if (event.SendTo(window->target) == noErr)
        event.Get(kEventParamClickActivation, typeClickActivationResult, &result);
    return result;
}

OSStatus OnClickContent(WindowRef inWindow, EventRef inEvent)
{
    const WindowRecord* window = Find(inWindow);
    if (!window->hilited && window->scope == kWindowActivationScopeAll) {
        const ClickActivationResult wish = AskClickActivation(inWindow, inEvent);
        if (wish == kActivateAndIgnoreClick || wish == kActivateAndHandleClick)
            SelectWindow(inWindow);
        if (wish == kActivateAndIgnoreClick || wish == kDoNotActivateAndIgnoreClick || !Find(inWindow))
            return noErr;
    } else {
        SelectWindow(inWindow);
    }
    if (IsContextual(inEvent) &&
        SendMouseActionEvent(inWindow, kEventWindowContextualMenuSelect, inEvent) == noErr)
        return noErr;
    SendMouseActionEvent(inWindow, kEventWindowHandleContentClick, inEvent);
    return noErr;
}

OSStatus OnClickDrag(WindowRef inWindow, EventRef inEvent)
{
    UInt32 count = 1;
    GetParameter(inEvent, kEventParamClickCount, typeUInt32, &count);
    if (!(EventModifiers(inEvent) & cmdKey))
        SelectWindow(inWindow);
    if (count == 2 && IsWindowCollapsable(inWindow))
        return SendWindowEvent(inWindow,
                               IsWindowCollapsed(inWindow) ? kEventWindowExpand : kEventWindowCollapse);
    DragWindow(inWindow, EventLocation(inEvent), nullptr);
    return noErr;
}

// Asks for one of the sizes; keeps *ioSize when nobody answers.
bool AskSize(WindowRef inWindow, UInt32 inKind, Point* ioSize)
{
    const WindowRecord* window = Find(inWindow);
    if (!window)
        return false;
    StEvent event(kEventClassWindow, inKind);
    event.Put(kEventParamDirectObject, typeWindowRef, inWindow)
        .Put(kEventParamDimensions, typeQDPoint, *ioSize);
    return event.SendTo(window->target) == noErr && event.Get(kEventParamDimensions, typeQDPoint, ioSize);
}

OSStatus OnClickResize(WindowRef inWindow, EventRef inEvent)
{
    const Rect screen = AvailableBounds();
    Point least = { 48, 64 };
    Point greatest = { (short)Height(screen), (short)Width(screen) };
    AskSize(inWindow, kEventWindowGetMinimumSize, &least);
    AskSize(inWindow, kEventWindowGetMaximumSize, &greatest);
    const Rect limits = { least.v, least.h, greatest.v, greatest.h };
    if (!(EventModifiers(inEvent) & cmdKey))
        SelectWindow(inWindow);
    ResizeWindow(inWindow, EventLocation(inEvent), &limits, nullptr);
    return noErr;
}

// The option key means all windows alike.
OSStatus OnBox(WindowRef inWindow, EventRef inEvent, WindowPartCode inPart, UInt32 inOne, UInt32 inAll)
{
    const bool all = EventModifiers(inEvent) & optionKey;
    if (TrackBox(inWindow, EventLocation(inEvent), inPart))
        SendWindowEvent(inWindow, all ? inAll : inOne);
    return noErr;
}

OSStatus OnClickClose(WindowRef inWindow, EventRef inEvent)
{
    return OnBox(inWindow, inEvent, inGoAway, kEventWindowClose, kEventWindowCloseAll);
}

OSStatus OnClickZoom(WindowRef inWindow, EventRef inEvent)
{
    return OnBox(inWindow, inEvent, inZoomOut, kEventWindowZoom, kEventWindowZoomAll);
}

OSStatus OnClickCollapse(WindowRef inWindow, EventRef inEvent)
{
    return IsWindowCollapsed(inWindow)
               ? OnBox(inWindow, inEvent, inCollapseBox, kEventWindowExpand, kEventWindowExpandAll)
               : OnBox(inWindow, inEvent, inCollapseBox, kEventWindowCollapse, kEventWindowCollapseAll);
}

// --- What the boxes ask for

// Sends an event to each visible window of the same class that has an attribute.
OSStatus SendToAlike(WindowRef inWindow, UInt32 inKind, WindowAttributes inAttribute)
{
    WindowClass windowClass = 0;
    GetWindowClass(inWindow, &windowClass);
    std::vector<WindowRef> alike;
    for (WindowRecord* window : List().Order())
        if (!window->internal && window->visible && window->Has(inAttribute) &&
            window->traits->windowClass == windowClass)
            alike.push_back(window->Ref());
    for (WindowRef window : alike)
        SendWindowEvent(window, inKind);
    return noErr;
}

OSStatus OnClose(WindowRef inWindow, EventRef)
{
    DisposeWindow(inWindow);
    return noErr;
}

OSStatus OnCloseAll(WindowRef inWindow, EventRef)
{
    return SendToAlike(inWindow, kEventWindowClose, kWindowCloseBoxAttribute);
}

OSStatus OnZoom(WindowRef inWindow, EventRef)
{
    Point ideal = { 0, 0 }; // as large as the screen allows
    AskSize(inWindow, kEventWindowGetIdealSize, &ideal);
    const bool standard = IsWindowInStandardState(inWindow, &ideal, nullptr);
    const OSStatus status = ZoomWindowIdeal(inWindow, standard ? inZoomIn : inZoomOut, &ideal);
    SendWindowEvent(inWindow, kEventWindowZoomed);
    return status;
}

OSStatus OnZoomAll(WindowRef inWindow, EventRef)
{
    return SendToAlike(inWindow, kEventWindowZoom, kWindowFullZoomAttribute);
}

OSStatus OnCollapse(WindowRef inWindow, EventRef)
{
    return CollapseWindow(inWindow, true);
}

OSStatus OnExpand(WindowRef inWindow, EventRef)
{
    return CollapseWindow(inWindow, false);
}

OSStatus OnCollapseAll(WindowRef inWindow, EventRef)
{
    return SendToAlike(inWindow, kEventWindowCollapse, kWindowCollapseBoxAttribute);
}

OSStatus OnExpandAll(WindowRef inWindow, EventRef)
{
    return SendToAlike(inWindow, kEventWindowExpand, kWindowCollapseBoxAttribute);
}

// --- Drawing, activation, cursor

void SendDrawContent(WindowRef inWindow)
{
    const WindowRecord* window = Find(inWindow);
    StEvent event(kEventClassWindow, kEventWindowDrawContent);
    event.Put(kEventParamDirectObject, typeWindowRef, inWindow)
        .Put(kEventParamGrafPort, typeGrafPtr, window->port);
    event.SendTo(window->target);
}

// The application finds its port current and what it has to draw erased.
OSStatus OnUpdate(WindowRef inWindow, EventRef)
{
    CGrafPtr saved = nullptr;
    GDHandle device = nullptr;
    GetGWorld(&saved, &device);
    SetPortWindowPort(inWindow);
    BeginUpdate(inWindow);
    const RgnHandle region = NewRgn();
    const CGrafPtr port = GetWindowPort(inWindow);
    GetPortVisibleRegion(port, region);
    {
        const StWindowPort wide(port);
        EraseRgn(region);
    }
    DisposeRgn(region);
    SendDrawContent(inWindow);
    if (WindowRecord* window = Find(inWindow)) {
        DrawGrowBox(*window);
        EndUpdate(inWindow);
    }
    SetGWorld(saved, device);
    return noErr;
}

OSStatus OnActivation(WindowRef inWindow, EventRef)
{
    WindowRecord* window = Find(inWindow);
    if (window->visible)
        DrawGrowBox(*window);
    return eventNotHandledErr;
}

OSStatus OnMouseMoved(WindowRef inWindow, EventRef inEvent)
{
    WindowRef hit = nullptr;
    FindWindow(EventLocation(inEvent), &hit);
    return hit == inWindow ? SendMouseActionEvent(inWindow, kEventWindowCursorChange, inEvent)
                           : (OSStatus)eventNotHandledErr;
}

OSStatus OnCursorChange(WindowRef, EventRef)
{
    return SetThemeCursor(kThemeArrowCursor);
}

// --- Commands that mean the window

OSStatus OnCommand(WindowRef inWindow, EventRef inEvent)
{
    HICommand command;
    if (!GetParameter(inEvent, kEventParamDirectObject, typeHICommand, &command))
        return eventNotHandledErr;
    const WindowRecord* window = Find(inWindow);
    switch (command.commandID) {
    case kHICommandClose:
        return window->Has(kWindowCloseBoxAttribute) ? SendWindowEvent(inWindow, kEventWindowClose)
                                                     : (OSStatus)eventNotHandledErr;
    case kHICommandMinimizeWindow:
        return IsWindowCollapsable(inWindow) ? SendWindowEvent(inWindow, kEventWindowCollapse)
                                             : (OSStatus)eventNotHandledErr;
    case kHICommandZoomWindow:
        return window->Has(kWindowFullZoomAttribute) ? SendWindowEvent(inWindow, kEventWindowZoom)
                                                     : (OSStatus)eventNotHandledErr;
    default: return eventNotHandledErr;
    }
}

struct Entry {
    EventTypeSpec type;
    Action action;
};

constexpr Entry kEntries[] = { { { kEventClassMouse, kEventMouseDown }, OnMouseDown },
                               { { kEventClassMouse, kEventMouseMoved }, OnMouseMoved },
                               { { kEventClassWindow, kEventWindowClickContentRgn }, OnClickContent },
                               { { kEventClassWindow, kEventWindowClickDragRgn }, OnClickDrag },
                               { { kEventClassWindow, kEventWindowClickResizeRgn }, OnClickResize },
                               { { kEventClassWindow, kEventWindowClickCloseRgn }, OnClickClose },
                               { { kEventClassWindow, kEventWindowClickZoomRgn }, OnClickZoom },
                               { { kEventClassWindow, kEventWindowClickCollapseRgn }, OnClickCollapse },
                               { { kEventClassWindow, kEventWindowClose }, OnClose },
                               { { kEventClassWindow, kEventWindowCloseAll }, OnCloseAll },
                               { { kEventClassWindow, kEventWindowZoom }, OnZoom },
                               { { kEventClassWindow, kEventWindowZoomAll }, OnZoomAll },
                               { { kEventClassWindow, kEventWindowCollapse }, OnCollapse },
                               { { kEventClassWindow, kEventWindowExpand }, OnExpand },
                               { { kEventClassWindow, kEventWindowCollapseAll }, OnCollapseAll },
                               { { kEventClassWindow, kEventWindowExpandAll }, OnExpandAll },
                               { { kEventClassWindow, kEventWindowUpdate }, OnUpdate },
                               { { kEventClassWindow, kEventWindowActivated }, OnActivation },
                               { { kEventClassWindow, kEventWindowDeactivated }, OnActivation },
                               { { kEventClassWindow, kEventWindowCursorChange }, OnCursorChange },
                               { { kEventClassCommand, kEventCommandProcess }, OnCommand } };

OSStatus Handle(EventHandlerCallRef, EventRef inEvent, void* inUserData)
{
    const WindowRef window = static_cast<WindowRef>(inUserData);
    if (!Find(window) || !Find(window)->Has(kWindowStandardHandlerAttribute))
        return eventNotHandledErr;
    const UInt32 eventClass = GetEventClass(inEvent), kind = GetEventKind(inEvent);
    for (const Entry& entry : kEntries)
        if (entry.type.eventClass == eventClass && entry.type.eventKind == kind)
            return entry.action(window, inEvent);
    return eventNotHandledErr;
}

} // namespace

void InstallStandardHandler(WindowRecord& inWindow)
{
    EventTypeSpec types[std::size(kEntries)];
    for (size_t entry = 0; entry < std::size(kEntries); ++entry)
        types[entry] = kEntries[entry].type;
    events::InstallDefaultHandler(inWindow.target, std::size(types), types, Handle, inWindow.Ref());
}

} // namespace lampblack::windows
