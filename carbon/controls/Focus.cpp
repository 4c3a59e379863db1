#include "controls/Focus.h"

#include "controls/ControlEvents.h"
#include "controls/Kind.h"

#include <Carbon/MacWindows.h>

#include <algorithm>

namespace lampblack::controls {

namespace {

bool SupportsFocus(const Control& inControl)
{
    return inControl.kind->Features() & kControlSupportsFocus;
}

std::vector<Control*> FocusOrder(WindowControls& inControls)
{
    std::vector<Control*> order;
    ForEachControl(inControls, [&](Control& control) {
        if (SupportsFocus(control))
            order.push_back(&control);
    });
    return order;
}

// Takes the focus from whoever has it; false when disposing handlers ended more than that.
void Release(WindowControls& ioControls)
{
    Control* old = ioControls.focus;
    if (!old)
        return;
    StPin pin(old);
    OSStatus status = noErr;
    SendSetFocusPart(*old, kControlFocusNoPart, &status);
    if (!pin.Alive() || ioControls.focus != old)
        return;
    ioControls.focus = nullptr;
    ioControls.focusPart = kControlFocusNoPart;
    old->kind->FocusChanged(false);
}

OSErr Give(WindowControls& ioControls, Control& inControl, ControlFocusPart inPart, bool inByTab)
{
    StPin pin(&inControl);
    if (ioControls.focus == &inControl) {
        OSStatus same = noErr;
        const ControlFocusPart part = SendSetFocusPart(inControl, inPart, &same);
        if (part != kControlFocusNoPart)
            ioControls.focusPart = part;
        return noErr;
    }
    Release(ioControls);
    if (!pin.Alive())
        return errCouldntSetFocus;
    OSStatus status = noErr;
    const ControlFocusPart part = SendSetFocusPart(inControl, inPart, &status);
    if (status != noErr || part == kControlFocusNoPart || !pin.Alive())
        return errCouldntSetFocus;
    ioControls.focus = &inControl;
    ioControls.focusPart = part;
    inControl.kind->FocusChanged(inByTab);
    return noErr;
}

// Within a control that has several parts the focus moves from one to the next before it leaves.
bool MoveWithin(WindowControls& ioControls, ControlFocusPart inStep)
{
    Control* control = ioControls.focus;
    if (!control || !CanTakeFocus(*control))
        return false;
    StPin pin(control);
    OSStatus status = noErr;
    const ControlFocusPart part = SendSetFocusPart(*control, inStep, &status);
    if (status != noErr || part == kControlFocusNoPart || !pin.Alive())
        return false;
    ioControls.focusPart = part;
    return true;
}

} // namespace

bool CanTakeFocus(const Control& inControl)
{
    return SupportsFocus(inControl) && IsVisible(inControl) && IsEnabled(inControl);
}

OSErr SetFocus(WindowControls& ioControls, Control* inControl, ControlFocusPart inPart)
{
    if (!inControl || inPart == kControlFocusNoPart) {
        if (!inControl || ioControls.focus == inControl)
            Release(ioControls);
        return noErr;
    }
    if (!SupportsFocus(*inControl))
        return errControlDoesntSupportFocus;
    if (!CanTakeFocus(*inControl))
        return errCouldntSetFocus;
    return Give(ioControls, *inControl, inPart, false);
}

OSErr MoveFocus(WindowControls& ioControls, bool inForward)
{
    const ControlFocusPart step = inForward ? kControlFocusNextPart : kControlFocusPrevPart;
    if (MoveWithin(ioControls, step))
        return noErr;
    const std::vector<Control*> order = FocusOrder(ioControls);
    const size_t count = order.size();
    auto now = std::find(order.begin(), order.end(), ioControls.focus);
    const bool none = now == order.end();
    size_t at = none ? (inForward ? count - 1 : 0) : (size_t)(now - order.begin());
    for (size_t tried = 0; tried < count; ++tried) {
        at = inForward ? (at + 1) % count : (at + count - 1) % count;
        if (!CanTakeFocus(*order[at]))
            continue;
        return order[at] == ioControls.focus ? (OSErr)noErr : Give(ioControls, *order[at], step, true);
    }
    return ioControls.focus ? (OSErr)noErr : (OSErr)errCouldntSetFocus;
}

void DropFocus(WindowControls& ioControls)
{
    Control* old = ioControls.focus;
    ioControls.focus = nullptr;
    ioControls.focusPart = kControlFocusNoPart;
    if (old)
        old->kind->FocusChanged(false);
}

void LeaveIfUnfit(Control& inControl)
{
    WindowControls* owner = inControl.owner;
    if (!owner || owner->focus != &inControl || CanTakeFocus(inControl))
        return;
    Release(*owner);
    MoveFocus(*owner, true);
}

} // namespace lampblack::controls

using namespace lampblack::controls;

namespace {

// Focus is a matter of windows with an embedding hierarchy.
OSErr WithRoot(WindowRef inWindow, WindowControls** outControls)
{
    if (!inWindow)
        return paramErr;
    if (!IsValidWindowPtr(inWindow))
        return errInvalidWindowRef;
    *outControls = FindWindowControls(inWindow);
    return *outControls && (*outControls)->root ? (OSErr)noErr : (OSErr)errNoRootControl;
}

} // namespace

LAMPBLACK_BEGIN_C

OSErr GetKeyboardFocus(WindowRef inWindow, ControlRef* outControl)
{
    WindowControls* controls = nullptr;
    const OSErr status = WithRoot(inWindow, &controls);
    if (status != noErr || !outControl)
        return status != noErr ? status : (OSErr)paramErr;
    *outControl = controls->focus ? controls->focus->Ref() : nullptr;
    return noErr;
}

OSErr SetKeyboardFocus(WindowRef inWindow, ControlRef inControl, ControlFocusPart inPart)
{
    WindowControls* controls = nullptr;
    const OSErr status = WithRoot(inWindow, &controls);
    if (status != noErr)
        return status;
    Control* control = Find(inControl);
    if (inControl && (!control || control->owner != controls))
        return control ? (OSErr)errControlNotFound : InvalidControl(inControl);
    return SetFocus(*controls, control, inPart);
}

OSErr AdvanceKeyboardFocus(WindowRef inWindow)
{
    WindowControls* controls = nullptr;
    const OSErr status = WithRoot(inWindow, &controls);
    return status != noErr ? status : MoveFocus(*controls, true);
}

OSErr ReverseKeyboardFocus(WindowRef inWindow)
{
    WindowControls* controls = nullptr;
    const OSErr status = WithRoot(inWindow, &controls);
    return status != noErr ? status : MoveFocus(*controls, false);
}

OSErr ClearKeyboardFocus(WindowRef inWindow)
{
    WindowControls* controls = nullptr;
    const OSErr status = WithRoot(inWindow, &controls);
    return status != noErr ? status : SetFocus(*controls, nullptr, kControlFocusNoPart);
}

LAMPBLACK_END_C
