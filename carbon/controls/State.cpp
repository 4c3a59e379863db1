// State, values, place and title of controls: the entries that read and change them.
#include "controls/ControlEvents.h"
#include "controls/ControlRecord.h"
#include "controls/Drawing.h"
#include "controls/Focus.h"
#include "controls/Kind.h"

#include <Carbon/MacWindows.h>

#include <algorithm>

namespace lampblack::controls {

namespace {

// After something that the whole tree below depends on: each is told, those that cannot keep the focus lose
// it.
void TreeStateChanged(Control& inControl)
{
    StPin pin(&inControl);
    for (size_t i = 0; i < inControl.children.size(); ++i)
        TreeStateChanged(*inControl.children[i]);
    inControl.kind->StateChanged();
    if (pin.Alive())
        LeaveIfUnfit(inControl);
}

// The area of a control and of all that it contains.
Rect AreaOf(const Control& inControl)
{
    Rect area = inControl.kind->StructureBounds();
    for (const Control* child : inControl.children) {
        if (!child->visible)
            continue;
        const Rect inner = AreaOf(*child);
        UnionRect(&area, &inner, &area);
    }
    return area;
}

void NotifyTree(Control& inControl, UInt32 inEventKind)
{
    ForEachInside(inControl, [&](Control& control) { Notify(control, inEventKind); });
}

void SetVisible(Control& ioControl, bool inVisible, bool inDraw)
{
    if (ioControl.visible == inVisible)
        return;
    StPin pin(&ioControl);
    const bool couldDraw = CanDraw(ioControl);
    ioControl.visible = inVisible;
    TreeStateChanged(ioControl);
    if (!pin.Alive())
        return;
    if (inDraw && inVisible)
        RedrawErased(ioControl);
    if (inDraw && !inVisible && couldDraw) {
        const Rect area = AreaOf(ioControl);
        RedrawArea(*ioControl.owner, area);
        InvalWindowRect(ioControl.window, &area);
    }
    Notify(ioControl, kEventControlVisibilityChanged);
}

void SetEnabled(Control& ioControl, bool inEnabled)
{
    if (ioControl.enabled == inEnabled)
        return;
    StPin pin(&ioControl);
    ioControl.enabled = inEnabled;
    TreeStateChanged(ioControl);
    if (!pin.Alive())
        return;
    RedrawErased(ioControl);
    Notify(ioControl, kEventControlEnabledStateChanged);
}

void SetActive(Control& ioControl, bool inActive)
{
    if (ioControl.active == inActive && ioControl.hilite != kControlInactivePart)
        return;
    StPin pin(&ioControl);
    const bool was = IsActive(ioControl);
    ioControl.active = inActive;
    if (ioControl.hilite == kControlInactivePart || ioControl.hilite == kControlDisabledPart)
        ioControl.hilite = kControlNoPart;
    if (was == IsActive(ioControl))
        return;
    TreeStateChanged(ioControl);
    if (!pin.Alive())
        return;
    RedrawErased(ioControl);
    NotifyTree(ioControl, inActive ? kEventControlActivate : kEventControlDeactivate);
}

void SetHilite(Control& ioControl, ControlPartCode inPart)
{
    if (inPart == kControlNoPart && !ioControl.active) {
        SetActive(ioControl, true);
        return;
    }
    if (ioControl.hilite == inPart)
        return;
    StPin pin(&ioControl);
    const bool was = IsActive(ioControl);
    ioControl.hilite = inPart;
    if (was != IsActive(ioControl))
        TreeStateChanged(ioControl);
    if (!pin.Alive())
        return;
    RedrawErased(ioControl);
    Notify(ioControl, kEventControlHiliteChanged);
}

SInt32 Within(const Control& inControl, SInt32 inValue)
{
    return std::max(inControl.minimum, std::min(inValue, inControl.maximum));
}

void ValueFieldChanged(Control& ioControl)
{
    StPin pin(&ioControl);
    ioControl.kind->ValueChanged();
    RedrawErased(ioControl);
    if (pin.Alive())
        Notify(ioControl, kEventControlValueFieldChanged);
}

void SetValue(Control& ioControl, SInt32 inValue)
{
    inValue = Within(ioControl, inValue);
    if (ioControl.value == inValue)
        return;
    ioControl.value = inValue;
    ValueFieldChanged(ioControl);
}

void SetLimits(Control& ioControl, SInt32 inMinimum, SInt32 inMaximum)
{
    if (ioControl.minimum == inMinimum && ioControl.maximum == inMaximum)
        return;
    ioControl.minimum = inMinimum;
    ioControl.maximum = inMaximum;
    ioControl.value = Within(ioControl, ioControl.value);
    ValueFieldChanged(ioControl);
}

void SetBounds(Control& ioControl, const Rect& inBounds)
{
    if (EqualRect(&ioControl.bounds, &inBounds))
        return;
    StPin pin(&ioControl);
    const bool draws = CanDraw(ioControl);
    const Rect old = ioControl.kind->StructureBounds();
    ioControl.bounds = inBounds;
    ioControl.kind->BoundsChanged();
    if (draws) {
        RedrawArea(*ioControl.owner, old);
        InvalWindowRect(ioControl.window, &old);
        RedrawErased(ioControl);
    }
    if (pin.Alive())
        Notify(ioControl, kEventControlBoundsChanged);
}

// Containers take what they contain with them.
void Offset(Control& ioControl, SInt16 inDH, SInt16 inDV)
{
    Rect bounds = ioControl.bounds;
    OffsetRect(&bounds, inDH, inDV);
    SetBounds(ioControl, bounds);
}

SInt16 Short(SInt32 inValue)
{
    return (SInt16)std::clamp<SInt32>(inValue, -32768, 32767);
}

} // namespace

} // namespace lampblack::controls

using namespace lampblack::controls;

LAMPBLACK_BEGIN_C

void ShowControl(ControlRef inControl)
{
    SetControlVisibility(inControl, true, true);
}
void HideControl(ControlRef inControl)
{
    SetControlVisibility(inControl, false, true);
}

Boolean IsControlVisible(ControlRef inControl)
{
    const Control* control = Find(inControl);
    return control && IsVisible(*control);
}

OSErr SetControlVisibility(ControlRef inControl, Boolean inVisible, Boolean inDraw)
{
    Control* control = Find(inControl);
    if (!control)
        return InvalidControl(inControl);
    SetVisible(*control, inVisible, inDraw);
    return noErr;
}

OSStatus EnableControl(ControlRef inControl)
{
    Control* control = Find(inControl);
    if (!control)
        return InvalidControl(inControl);
    SetEnabled(*control, true);
    return noErr;
}

OSStatus DisableControl(ControlRef inControl)
{
    Control* control = Find(inControl);
    if (!control)
        return InvalidControl(inControl);
    SetEnabled(*control, false);
    return noErr;
}

Boolean IsControlEnabled(ControlRef inControl)
{
    const Control* control = Find(inControl);
    return control && IsEnabled(*control);
}

OSErr ActivateControl(ControlRef inControl)
{
    Control* control = Find(inControl);
    if (!control)
        return InvalidControl(inControl);
    SetActive(*control, true);
    return noErr;
}

OSErr DeactivateControl(ControlRef inControl)
{
    Control* control = Find(inControl);
    if (!control)
        return InvalidControl(inControl);
    SetActive(*control, false);
    return noErr;
}

Boolean IsControlActive(ControlRef inControl)
{
    const Control* control = Find(inControl);
    return control && IsActive(*control);
}

void HiliteControl(ControlRef inControl, ControlPartCode inPart)
{
    if (Control* control = Find(inControl))
        SetHilite(*control, inPart);
}

UInt16 GetControlHilite(ControlRef inControl)
{
    const Control* control = Find(inControl);
    if (!control)
        return kControlNoPart;
    return control->hilite == kControlNoPart && !control->active ? (UInt16)kControlInactivePart
                                                                 : (UInt16)control->hilite;
}

Boolean IsControlHilited(ControlRef inControl)
{
    const Control* control = Find(inControl);
    return control && control->hilite != kControlNoPart && control->hilite < kControlDisabledPart;
}

SInt32 GetControl32BitValue(ControlRef inControl)
{
    const Control* control = Find(inControl);
    return control ? control->value : 0;
}

void SetControl32BitValue(ControlRef inControl, SInt32 inValue)
{
    if (Control* control = Find(inControl))
        SetValue(*control, inValue);
}

SInt32 GetControl32BitMinimum(ControlRef inControl)
{
    const Control* control = Find(inControl);
    return control ? control->minimum : 0;
}

void SetControl32BitMinimum(ControlRef inControl, SInt32 inMinimum)
{
    if (Control* control = Find(inControl))
        SetLimits(*control, inMinimum, control->maximum);
}

SInt32 GetControl32BitMaximum(ControlRef inControl)
{
    const Control* control = Find(inControl);
    return control ? control->maximum : 0;
}

void SetControl32BitMaximum(ControlRef inControl, SInt32 inMaximum)
{
    if (Control* control = Find(inControl))
        SetLimits(*control, control->minimum, inMaximum);
}

SInt16 GetControlValue(ControlRef inControl)
{
    return Short(GetControl32BitValue(inControl));
}
SInt16 GetControlMinimum(ControlRef inControl)
{
    return Short(GetControl32BitMinimum(inControl));
}
SInt16 GetControlMaximum(ControlRef inControl)
{
    return Short(GetControl32BitMaximum(inControl));
}
void SetControlValue(ControlRef inControl, SInt16 inValue)
{
    SetControl32BitValue(inControl, inValue);
}
void SetControlMinimum(ControlRef inControl, SInt16 inMinimum)
{
    SetControl32BitMinimum(inControl, inMinimum);
}
void SetControlMaximum(ControlRef inControl, SInt16 inMaximum)
{
    SetControl32BitMaximum(inControl, inMaximum);
}

SInt32 GetControlViewSize(ControlRef inControl)
{
    const Control* control = Find(inControl);
    return control ? control->viewSize : 0;
}

void SetControlViewSize(ControlRef inControl, SInt32 inViewSize)
{
    Control* control = Find(inControl);
    if (!control || control->viewSize == inViewSize)
        return;
    control->viewSize = inViewSize;
    RedrawErased(*control);
}

Rect* GetControlBounds(ControlRef inControl, Rect* outBounds)
{
    const Control* control = Find(inControl);
    if (outBounds)
        *outBounds = control ? control->bounds : Rect{ 0, 0, 0, 0 };
    return outBounds;
}

void SetControlBounds(ControlRef inControl, const Rect* inBounds)
{
    Control* control = Find(inControl);
    if (control && inBounds)
        SetBounds(*control, *inBounds);
}

void MoveControl(ControlRef inControl, SInt16 inH, SInt16 inV)
{
    Control* control = Find(inControl);
    if (!control)
        return;
    const SInt16 dh = (SInt16)(inH - control->bounds.left), dv = (SInt16)(inV - control->bounds.top);
    if (dh == 0 && dv == 0)
        return;
    StPin pin(control);
    for (size_t i = 0; pin.Alive() && i < control->children.size(); ++i) {
        const Rect inner = control->children[i]->bounds;
        MoveControl(control->children[i]->Ref(), (SInt16)(inner.left + dh), (SInt16)(inner.top + dv));
    }
    if (pin.Alive())
        Offset(*control, dh, dv);
}

void SizeControl(ControlRef inControl, SInt16 inWidth, SInt16 inHeight)
{
    Control* control = Find(inControl);
    if (!control)
        return;
    Rect bounds = control->bounds;
    bounds.right = (SInt16)(bounds.left + inWidth);
    bounds.bottom = (SInt16)(bounds.top + inHeight);
    SetBounds(*control, bounds);
}

OSErr GetBestControlRect(ControlRef inControl, Rect* outRect, SInt16* outBaseLineOffset)
{
    Control* control = Find(inControl);
    if (!control)
        return InvalidControl(inControl);
    if (!outRect)
        return paramErr;
    SInt16 baseLine = 0;
    const OSErr status = control->kind->BestRect(outRect, &baseLine);
    if (status == noErr && outBaseLineOffset)
        *outBaseLineOffset = baseLine;
    return status;
}

OSStatus GetControlRegion(ControlRef inControl, ControlPartCode inPart, RgnHandle ioRegion)
{
    Control* control = Find(inControl);
    if (!control)
        return InvalidControl(inControl);
    if (!ioRegion)
        return paramErr;
    Rect bounds;
    const OSStatus status = control->kind->PartBounds(inPart, &bounds);
    if (status == noErr)
        RectRgn(ioRegion, &bounds);
    return status;
}

void GetControlTitle(ControlRef inControl, Str255 outTitle)
{
    const Control* control = Find(inControl);
    if (!outTitle)
        return;
    outTitle[0] = control ? (unsigned char)control->title.size() : 0;
    if (control)
        std::copy(control->title.begin(), control->title.end(), outTitle + 1);
}

void SetControlTitle(ControlRef inControl, ConstStr255Param inTitle)
{
    Control* control = Find(inControl);
    if (!control || !inTitle)
        return;
    std::string title((const char*)inTitle + 1, inTitle[0]);
    if (title == control->title)
        return;
    StPin pin(control);
    control->title = std::move(title);
    control->kind->TitleChanged();
    RedrawErased(*control);
    if (pin.Alive())
        Notify(*control, kEventControlTitleChanged);
}

LAMPBLACK_END_C
