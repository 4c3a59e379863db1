// Activation and the user focus.
#include "Activation.h"

#include "Presenter.h"
#include "WindowEvents.h"
#include "WindowList.h"

#include <events/EventTargets.h>

namespace lampblack::windows {

namespace {

WindowRef gActive = nullptr;      // the active window that is no floating one
WindowRef gFocus = nullptr;       // whoever was told last that it has the keyboard
WindowRef gWantedFocus = nullptr; // set by SetUserFocusWindow; null for the automatic choice
bool gApplicationActive = true;
bool gSettling = false;

bool TakesActivation(const WindowRecord& inWindow)
{
    return inWindow.scope == kWindowActivationScopeAll && inWindow.OnScreen() && !inWindow.disposing &&
           !inWindow.Has(kWindowNoActivatesAttribute);
}

bool IsIndependent(const WindowRecord& inWindow)
{
    return inWindow.scope == kWindowActivationScopeIndependent && !inWindow.disposing &&
           !inWindow.Has(kWindowNoActivatesAttribute);
}

WindowRef RefOrNull(WindowRecord* inWindow)
{
    return inWindow ? inWindow->Ref() : nullptr;
}

WindowRef FocusChoice()
{
    if (!gApplicationActive)
        return nullptr;
    const WindowRecord* wanted = Find(gWantedFocus);
    return wanted && wanted->OnScreen() ? gWantedFocus : gActive;
}

void SettleFocus()
{
    const WindowRef choice = FocusChoice();
    if (choice == gFocus)
        return;
    const WindowRef old = gFocus;
    gFocus = choice;
    SendWindowEvent(old, kEventWindowFocusRelinquish);
    if (gFocus == choice)
        SendWindowEvent(choice, kEventWindowFocusAcquired);
}

// Without handlers: its events go to whoever takes them from the queue.
EventTargetRef RecordTarget()
{
    static const EventTargetRef target = events::NewEventTarget(nullptr, nullptr);
    return target;
}

// WaitNextEvent hands out activation as a record, which it can only find in the queue. The handlers have
// heard of it already. Only the last change that was not taken yet stands there.
void PostActivation(WindowRecord& ioWindow, UInt32 inKind)
{
    CancelActivation(ioWindow);
    EventRef event = nullptr;
    if (CreateEvent(nullptr, kEventClassWindow, inKind, GetCurrentEventTime(), kEventAttributeNone, &event) !=
        noErr)
        return;
    const WindowRef ref = ioWindow.Ref();
    const EventTargetRef target = RecordTarget();
    SetEventParameter(event, kEventParamDirectObject, typeWindowRef, sizeof ref, &ref);
    SetEventParameter(event, kEventParamPostTarget, typeEventTargetRef, sizeof target, &target);
    PostEventToQueue(GetMainEventQueue(), event, kEventPriorityHigh);
    ioWindow.activateEvent = event;
}

void SendActivation(WindowRef inWindow, bool inActive)
{
    const UInt32 kind = inActive ? kEventWindowActivated : kEventWindowDeactivated;
    SendWindowEvent(inWindow, kind);
    WindowRecord* window = Find(inWindow);
    if (window && !window->Has(kWindowStandardHandlerAttribute) && !window->disposing && !window->internal)
        PostActivation(*window, kind);
}

void Activate(WindowRef inWindow)
{
    gActive = inWindow;
    gWantedFocus = nullptr;
    if (WindowRecord* window = Find(inWindow)) {
        SetHilited(*window, true);
        SendActivation(inWindow, true);
    }
    SettleFocus();
}

void DeactivateActive()
{
    const WindowRef old = gActive;
    gActive = nullptr;
    SettleFocus();
    if (WindowRecord* window = Find(old)) {
        SetHilited(*window, false);
        SendActivation(old, false);
    }
}

// Floating windows are active as long as they are shown in an active application.
bool SettleFloating()
{
    WindowRecord* wrong = FirstWindow([](const WindowRecord& window) {
        return IsIndependent(window) && window.hilited != (window.OnScreen() && gApplicationActive);
    });
    if (!wrong)
        return false;
    const bool active = !wrong->hilited;
    const WindowRef ref = wrong->Ref();
    SetHilited(*wrong, active);
    SendActivation(ref, active);
    return true;
}

bool SettleOnce()
{
    const WindowRef wanted = gApplicationActive ? RefOrNull(FirstWindow(TakesActivation)) : nullptr;
    if (wanted == gActive)
        return SettleFloating();
    if (gActive)
        DeactivateActive();
    else
        Activate(wanted);
    return true;
}

void HideOnSuspend(bool inHide)
{
    for (WindowRecord* window : List().Order()) {
        if (!window->Has(kWindowHideOnSuspendAttribute) || window->hiddenBySuspend == inHide)
            continue;
        Screen().WindowDamaged(*window);
        window->hiddenBySuspend = inHide;
        Screen().WindowDamaged(*window);
    }
    Screen().LayoutChanged();
}

} // namespace

void CancelActivation(WindowRecord& ioWindow)
{
    if (!ioWindow.activateEvent)
        return;
    RemoveEventFromQueue(GetMainEventQueue(), ioWindow.activateEvent);
    ReleaseEvent(ioWindow.activateEvent);
    ioWindow.activateEvent = nullptr;
}

void SetHilited(WindowRecord& inWindow, bool inHilited)
{
    if (inWindow.hilited == inHilited)
        return;
    inWindow.hilited = inHilited;
    inWindow.frameStale = true;
    Screen().FrameDamaged(inWindow);
}

void SettleActivation()
{
    if (gSettling)
        return;
    gSettling = true;
    // A handler may reorder windows while it hears of the last change. One that does so for ever is left
    // alone.
    for (int turn = 0; turn < 100 && SettleOnce(); ++turn) {
    }
    SettleFocus();
    gSettling = false;
}

void Deactivate(WindowRecord& inWindow)
{
    const WindowRef ref = inWindow.Ref();
    if (gWantedFocus == ref)
        gWantedFocus = nullptr;
    if (gActive == ref)
        return DeactivateActive();
    SettleFocus();
    if (!inWindow.hilited)
        return;
    SetHilited(inWindow, false);
    SendActivation(ref, false);
}

void ApplicationActivated(bool inActive)
{
    if (gApplicationActive == inActive)
        return;
    gApplicationActive = inActive;
    HideOnSuspend(!inActive);
    SettleActivation();
}

bool IsApplicationActive()
{
    return gApplicationActive;
}

} // namespace lampblack::windows

using namespace lampblack::windows;

OSStatus ActivateWindow(WindowRef inWindow, Boolean inActivate)
{
    WindowRecord* window = Find(inWindow);
    if (!window)
        return errInvalidWindowRef;
    if (window->hilited == (inActivate != 0))
        return noErr;
    if (!inActivate) {
        Deactivate(*window);
        return noErr;
    }
    if (window->scope == kWindowActivationScopeAll) {
        if (gActive)
            DeactivateActive();
        Activate(inWindow);
        return noErr;
    }
    SetHilited(*window, true);
    SendActivation(inWindow, true);
    return noErr;
}

Boolean IsWindowActive(WindowRef inWindow)
{
    const WindowRecord* window = Find(inWindow);
    return window && window->hilited;
}

void HiliteWindow(WindowRef inWindow, Boolean inHilite)
{
    if (WindowRecord* window = Find(inWindow))
        SetHilited(*window, inHilite);
}

Boolean IsWindowHilited(WindowRef inWindow)
{
    return IsWindowActive(inWindow);
}

WindowRef ActiveNonFloatingWindow(void)
{
    return gActive;
}

OSStatus SetUserFocusWindow(WindowRef inWindow)
{
    if (inWindow != kUserFocusAuto && !Find(inWindow))
        return errInvalidWindowRef;
    gWantedFocus = inWindow == kUserFocusAuto ? nullptr : inWindow;
    SettleFocus();
    return noErr;
}

WindowRef GetUserFocusWindow(void)
{
    return FocusChoice();
}

OSStatus GetWindowActivationScope(WindowRef inWindow, WindowActivationScope* outScope)
{
    const WindowRecord* window = Find(inWindow);
    if (!window || !outScope)
        return window ? (OSStatus)paramErr : (OSStatus)errInvalidWindowRef;
    *outScope = window->scope;
    return noErr;
}

OSStatus SetWindowActivationScope(WindowRef inWindow, WindowActivationScope inScope)
{
    WindowRecord* window = Find(inWindow);
    if (!window || inScope > kWindowActivationScopeAll)
        return window ? (OSStatus)paramErr : (OSStatus)errInvalidWindowRef;
    window->scope = inScope;
    SettleActivation();
    return noErr;
}
