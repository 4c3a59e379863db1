// How mouse, keyboard and the desktop's events find windows.
#include "Activation.h"
#include "Modality.h"
#include "Presenter.h"
#include "Sheets.h"
#include "StandardHandler.h"
#include "WindowEvents.h"

#include <Carbon/Sound.h>
#include <Host.h>
#include <events/EventTargets.h>
#include <events/Routing.h>
#include <events/ScreenHooks.h>
#include <events/WaitHooks.h>
#include <quickdraw/Port.h>

namespace lampblack::windows {

namespace {

WindowRef gPressed = nullptr; // where the button went down

// What the user tries behind a modal window: a press beeps, everything else is lost.
OSStatus OnBlocked(EventHandlerCallRef, EventRef inEvent, void*)
{
    if (GetEventKind(inEvent) == kEventMouseDown)
        SysBeep(30);
    else if (GetEventKind(inEvent) == kEventMouseMoved)
        SetThemeCursor(kThemeArrowCursor);
    return noErr;
}

EventTargetRef BlockedTarget()
{
    static EventTargetRef target = nullptr;
    if (target)
        return target;
    static const EventTypeSpec kTypes[] = { { kEventClassMouse, kEventMouseDown },
                                            { kEventClassMouse, kEventMouseUp },
                                            { kEventClassMouse, kEventMouseMoved },
                                            { kEventClassMouse, kEventMouseDragged },
                                            { kEventClassMouse, kEventMouseWheelMoved } };
    target = events::NewEventTarget(nullptr, nullptr);
    events::InstallDefaultHandler(target, std::size(kTypes), kTypes, OnBlocked, nullptr);
    return target;
}

// The parameters that every mouse event in a window carries.
void AddWindowParameters(EventRef ioEvent, WindowRef inWindow, WindowPartCode inPart, Point inWhere)
{
    SetEventParameter(ioEvent, kEventParamWindowPartCode, typeWindowPartCode, sizeof inPart, &inPart);
    const WindowRecord* window = Find(inWindow);
    if (!window)
        return;
    const Rect structure = window->structure.Bounds();
    const Point local = { (short)(inWhere.v - structure.top), (short)(inWhere.h - structure.left) };
    SetEventParameter(ioEvent, kEventParamWindowRef, typeWindowRef, sizeof inWindow, &inWindow);
    SetEventParameter(ioEvent, kEventParamWindowMouseLocation, typeQDPoint, sizeof local, &local);
}

// A drag and the release that ends it belong to the window of the press.
WindowRef WindowFor(EventRef inEvent, WindowRef inUnderMouse)
{
    const UInt32 kind = GetEventKind(inEvent);
    if (kind == kEventMouseDown)
        gPressed = inUnderMouse;
    const bool belongs = kind == kEventMouseUp || kind == kEventMouseDragged;
    return belongs && Find(gPressed) ? gPressed : inUnderMouse;
}

EventTargetRef MouseTarget(EventRef inEvent)
{
    const Point where = EventLocation(inEvent);
    quickdraw::MouseDidMove();
    WindowRef under = nullptr;
    const WindowPartCode part = FindWindow(where, &under);
    WindowRecord* window = Find(WindowFor(inEvent, under));
    AddWindowParameters(inEvent, window ? window->Ref() : nullptr, part, where);
    if (!window) {
        if (GetEventKind(inEvent) == kEventMouseMoved)
            SetThemeCursor(kThemeArrowCursor);
        return GetApplicationEventTarget();
    }
    return IsBlocked(*window) ? BlockedTarget() : window->target;
}

EventTargetRef KeyboardTarget(EventRef)
{
    const EventTargetRef target = GetWindowEventTarget(GetUserFocusWindow());
    return target ? target : GetApplicationEventTarget();
}

OSStatus OnApplication(EventHandlerCallRef, EventRef inEvent, void*)
{
    ApplicationActivated(GetEventKind(inEvent) == kEventAppActivated);
    return noErr;
}

bool PointInRegion(Point inWhere, RgnHandle inRegion)
{
    return PtInRgn(inWhere, inRegion);
}

void ScreenChanged(int, int)
{
    Screen().SizeChanged();
}

void ScreenExposed()
{
    Screen().EverythingDamaged();
}

double OnWait(double inNow)
{
    return Screen().PresentIfDue(inNow);
}

void PresentNow()
{
    Screen().PresentNow();
}

} // namespace

void InstallWindowRouting()
{
    static bool installed = false;
    if (installed)
        return;
    installed = true;
    events::Routing& routing = events::EventRouting();
    routing.mouseTarget = MouseTarget;
    routing.keyboardTarget = KeyboardTarget;
    routing.windowTarget = GetWindowEventTarget;
    routing.pointInRegion = PointInRegion;
    events::TheScreenHooks().screenChanged = ScreenChanged;
    events::TheScreenHooks().screenExposed = ScreenExposed;
    events::AddWaitHook(OnWait);
    host::UpwardHooks().updateScreen = PresentNow;
    static const EventTypeSpec kTypes[] = { { kEventClassApplication, kEventAppActivated },
                                            { kEventClassApplication, kEventAppDeactivated } };
    events::InstallDefaultHandler(GetApplicationEventTarget(), std::size(kTypes), kTypes, OnApplication,
                                  nullptr);
}

} // namespace lampblack::windows

// A position of the mouse is in the coordinates of the port that is drawn into.
void GetMouse(Point* outLocalMouse)
{
    if (!outLocalMouse)
        return;
    GetGlobalMouse(outLocalMouse);
    GlobalToLocal(outLocalMouse);
}
