// Transitions. The window arrives at once; the events of a transition surround the change.
#include "Bounds.h"
#include "WindowEvents.h"

using namespace lampblack::windows;

namespace {

bool IsShowOrHide(WindowTransitionAction inAction)
{
    return inAction == kWindowShowTransitionAction || inAction == kWindowHideTransitionAction;
}

// Which actions an effect knows.
bool IsPossible(WindowTransitionEffect inEffect, WindowTransitionAction inAction)
{
    switch (inEffect) {
    case kWindowZoomTransitionEffect:
    case kWindowFadeTransitionEffect:
    case kWindowSheetTransitionEffect: return IsShowOrHide(inAction);
    case kWindowSlideTransitionEffect:
        return inAction == kWindowMoveTransitionAction || inAction == kWindowResizeTransitionAction;
    default: return false;
    }
}

OSStatus Act(WindowRef inWindow, WindowTransitionAction inAction, const Rect* inRect)
{
    switch (inAction) {
    case kWindowShowTransitionAction: ShowWindow(inWindow); return noErr;
    case kWindowHideTransitionAction: HideWindow(inWindow); return noErr;
    default: return SetWindowBounds(inWindow, kWindowStructureRgn, inRect);
    }
}

void SendTransition(WindowRef inWindow, UInt32 inKind, WindowTransitionEffect inEffect,
                    WindowTransitionAction inAction)
{
    const WindowRecord* window = Find(inWindow);
    if (!window)
        return;
    StEvent event(kEventClassWindow, inKind);
    event.Put(kEventParamDirectObject, typeWindowRef, inWindow)
        .Put(kEventParamWindowTransitionEffect, typeWindowTransitionEffect, inEffect)
        .Put(kEventParamWindowTransitionAction, typeWindowTransitionAction, inAction);
    event.SendTo(window->target);
}

} // namespace

OSStatus TransitionWindow(WindowRef inWindow, WindowTransitionEffect inEffect,
                          WindowTransitionAction inAction, const Rect* inRect)
{
    if (!Find(inWindow))
        return errInvalidWindowRef;
    if (!IsPossible(inEffect, inAction) || inEffect == kWindowSheetTransitionEffect)
        return paramErr;
    if (!IsShowOrHide(inAction) && !inRect)
        return paramErr;
    SendTransition(inWindow, kEventWindowTransitionStarted, inEffect, inAction);
    const OSStatus status = Act(inWindow, inAction, inRect);
    SendTransition(inWindow, kEventWindowTransitionCompleted, inEffect, inAction);
    return status;
}

OSStatus TransitionWindowAndParent(WindowRef inWindow, WindowRef inParent, WindowTransitionEffect inEffect,
                                   WindowTransitionAction inAction, const Rect* inRect)
{
    if (!Find(inWindow))
        return errInvalidWindowRef;
    if (inEffect != kWindowSheetTransitionEffect)
        return TransitionWindow(inWindow, inEffect, inAction, inRect);
    if (!IsPossible(inEffect, inAction))
        return paramErr;
    SendTransition(inWindow, kEventWindowTransitionStarted, inEffect, inAction);
    const OSStatus status = inAction == kWindowShowTransitionAction ? ShowSheetWindow(inWindow, inParent)
                                                                    : HideSheetWindow(inWindow);
    SendTransition(inWindow, kEventWindowTransitionCompleted, inEffect, inAction);
    return status;
}
