// Which control is under the mouse, and what a click or a key does to it.
#include "controls/Tracking.h"

#include "controls/ControlEvents.h"
#include "controls/Drawing.h"
#include "controls/Focus.h"
#include "controls/Kind.h"

#include <Carbon/MacWindows.h>

namespace lampblack::controls {

namespace {

bool Holds(const Control& inControl, Point inPoint)
{
    const Rect bounds = inControl.kind->StructureBounds();
    return PtInRect(inPoint, &bounds) || PtInRect(inPoint, &inControl.bounds);
}

// The last drawn is the topmost, and what a container contains lies above it, wherever it lies.
Control* Topmost(Control& inControl, Point inPoint)
{
    if (!inControl.visible)
        return nullptr;
    for (size_t i = inControl.children.size(); i-- > 0;)
        if (Control* found = Topmost(*inControl.children[i], inPoint))
            return found;
    const bool takes = inControl.owner->root != &inControl && inControl.kind->TakesMouse();
    return takes && Holds(inControl, inPoint) ? &inControl : nullptr;
}

ControlActionUPP ActionOf(const Control& inControl, ControlActionUPP inAction)
{
    return inAction == (ControlActionUPP)(intptr_t)-1 ? inControl.action : inAction;
}

} // namespace

Control* ControlAt(WindowControls& inControls, Point inPoint)
{
    if (inControls.root)
        return Topmost(*inControls.root, inPoint);
    for (size_t i = inControls.flat.size(); i-- > 0;)
        if (Control* found = Topmost(*inControls.flat[i], inPoint))
            return found;
    return nullptr;
}

ControlPartCode PartAt(Control& inControl, Point inPoint)
{
    if (!IsUsable(inControl) || !IsVisible(inControl))
        return kControlNoPart;
    return SendHitTest(inControl, inPoint);
}

bool IsContainer(const Control& inControl)
{
    return inControl.kind->Features() & kControlSupportsEmbedding;
}

ControlPartCode ClickIn(Control& inControl, const TrackInfo& inInfo)
{
    StPin pin(&inControl);
    if (PartAt(inControl, inInfo.where) == kControlNoPart || !pin.Alive())
        return kControlNoPart;
    if ((inControl.kind->Features() & kControlGetsFocusOnClick) && inControl.owner->focus != &inControl)
        SetFocus(*inControl.owner, &inControl, kControlFocusNextPart);
    if (!pin.Alive())
        return kControlNoPart;
    TrackInfo info = inInfo;
    info.action = ActionOf(inControl, inInfo.action);
    const ControlPartCode part = SendTrack(inControl, info);
    if (part == kControlNoPart || !pin.Alive())
        return kControlNoPart;
    inControl.kind->WasHit(part);
    if (pin.Alive())
        SendHit(inControl, part, inInfo.modifiers);
    return part;
}

} // namespace lampblack::controls

using namespace lampblack::controls;

LAMPBLACK_BEGIN_C

ControlPartCode FindControl(Point inPoint, WindowRef inWindow, ControlRef* outControl)
{
    if (outControl)
        *outControl = nullptr;
    WindowControls* controls = FindWindowControls(inWindow);
    Control* control = controls ? ControlAt(*controls, inPoint) : nullptr;
    if (!control)
        return kControlNoPart;
    const ControlPartCode part = PartAt(*control, inPoint);
    if (part != kControlNoPart && outControl)
        *outControl = control->Ref();
    return part;
}

ControlRef FindControlUnderMouse(Point inPoint, WindowRef inWindow, ControlPartCode* outPart)
{
    if (outPart)
        *outPart = kControlNoPart;
    WindowControls* controls = FindWindowControls(inWindow);
    Control* control = controls ? ControlAt(*controls, inPoint) : nullptr;
    if (!control)
        return nullptr;
    StPin pin(control);
    const ControlPartCode part = PartAt(*control, inPoint);
    if (outPart)
        *outPart = part;
    return pin.Alive() ? control->Ref() : nullptr;
}

ControlPartCode TestControl(ControlRef inControl, Point inPoint)
{
    Control* control = Find(inControl);
    return control ? PartAt(*control, inPoint) : (ControlPartCode)kControlNoPart;
}

ControlPartCode HandleControlClick(ControlRef inControl, Point inPoint, EventModifiers inModifiers,
                                   ControlActionUPP inAction)
{
    Control* control = Find(inControl);
    if (!control)
        return kControlNoPart;
    TrackInfo info;
    info.where = inPoint;
    info.modifiers = inModifiers;
    info.action = inAction;
    return ClickIn(*control, info);
}

ControlPartCode TrackControl(ControlRef inControl, Point inPoint, ControlActionUPP inAction)
{
    return HandleControlClick(inControl, inPoint, 0, inAction);
}

SInt16 HandleControlKey(ControlRef inControl, SInt16 inKeyCode, SInt16 inCharCode, EventModifiers inModifiers)
{
    Control* control = Find(inControl);
    if (!control || !IsUsable(*control))
        return kControlNoPart;
    StPin pin(control);
    return control->kind->Key(inKeyCode, inCharCode, inModifiers);
}

OSStatus HandleControlSetCursor(ControlRef inControl, Point inPoint, EventModifiers inModifiers,
                                Boolean* outCursorWasSet)
{
    Control* control = Find(inControl);
    if (!control || !outCursorWasSet)
        return control ? (OSStatus)paramErr : InvalidControl(inControl);
    *outCursorWasSet = SendSetCursor(*control, inPoint, inModifiers);
    return noErr;
}

void IdleControls(WindowRef inWindow)
{
    WindowControls* controls = FindWindowControls(inWindow);
    if (!controls)
        return;
    std::vector<ControlRef> idlers;
    ForEachControl(*controls, [&](Control& control) {
        if (control.kind->Features() & kControlWantsIdle)
            idlers.push_back(control.Ref());
    });
    for (ControlRef reference : idlers) {
        Control* control = Find(reference);
        if (!control || !CanDraw(*control))
            continue;
        StPin pin(control);
        StDrawing drawing(*control);
        control->kind->Idle();
    }
}

EventTargetRef GetControlEventTarget(ControlRef inControl)
{
    Control* control = Find(inControl);
    return control ? TargetOf(*control) : nullptr;
}

LAMPBLACK_END_C
