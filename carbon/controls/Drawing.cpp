#include "controls/Drawing.h"

#include "controls/ControlEvents.h"
#include "controls/ControlText.h"
#include "controls/Kind.h"

#include <Carbon/Appearance.h>
#include <Carbon/MacWindows.h>

namespace lampblack::controls {

StPortState::StPortState()
{
    GetPort(&fPort);
    if (!fPort)
        return;
    fFont = GetPortTextFont(fPort);
    fSize = GetPortTextSize(fPort);
    fMode = GetPortTextMode(fPort);
    fFace = GetPortTextFace(fPort);
    GetForeColor(&fFore);
    GetBackColor(&fBack);
    GetPenState(&fPen);
}

// The port may have gone meanwhile, and another one may be current.
StPortState::~StPortState()
{
    if (!fPort || !IsValidPort(fPort))
        return;
    CGrafPtr now = nullptr;
    GDHandle device = nullptr;
    GetGWorld(&now, &device);
    if (now != fPort)
        SetGWorld(fPort, nullptr);
    TextFont(fFont);
    TextSize(fSize);
    TextMode(fMode);
    TextFace(fFace);
    RGBForeColor(&fFore);
    RGBBackColor(&fBack);
    SetPenState(&fPen);
    if (now != fPort)
        SetGWorld(now, device);
}

StDrawing::StPort::StPort(WindowRef inWindow)
{
    GetGWorld(&fPort, &fDevice);
    if (GetWindowPort(inWindow))
        SetPortWindowPort(inWindow);
}

StDrawing::StPort::~StPort()
{
    SetGWorld(fPort, fDevice);
}

StDrawing::StDrawing(WindowRef inWindow) : fPort(inWindow)
{
    PenNormal();
}

StClip::StClip(const Rect& inRect) : fOld(NewRgn())
{
    GetClip(fOld);
    RgnHandle wanted = NewRgn();
    RectRgn(wanted, &inRect);
    SectRgn(wanted, fOld, wanted);
    SetClip(wanted);
    DisposeRgn(wanted);
}

StClip::~StClip()
{
    SetClip(fOld);
    DisposeRgn(fOld);
}

bool CanDraw(const Control& inControl)
{
    return inControl.window && IsVisible(inControl) && IsWindowVisible(inControl.window);
}

namespace {

void DrawOne(Control& inControl)
{
    StPortState state;
    PenNormal();
    SendDraw(inControl, kControlEntireControl);
}

bool Touches(const Control& inControl, const Rect& inArea)
{
    const Rect bounds = inControl.kind->StructureBounds();
    Rect common;
    return SectRect(&bounds, &inArea, &common);
}

// Containers are walked even when they lie aside: what they contain need not lie inside of them.
void DrawTouching(Control& inControl, const Rect& inArea)
{
    if (!inControl.visible)
        return;
    StPin pin(&inControl);
    if (Touches(inControl, inArea))
        DrawOne(inControl);
    for (size_t i = 0; pin.Alive() && i < inControl.children.size(); ++i)
        DrawTouching(*inControl.children[i], inArea);
}

void DrawErasedTree(Control& inControl)
{
    if (!inControl.visible)
        return;
    StPin pin(&inControl);
    inControl.kind->Erase();
    DrawOne(inControl);
    for (size_t i = 0; pin.Alive() && i < inControl.children.size(); ++i)
        DrawErasedTree(*inControl.children[i]);
}

} // namespace

void DrawTree(Control& inControl)
{
    if (!inControl.visible)
        return;
    StPin pin(&inControl);
    DrawOne(inControl);
    for (size_t i = 0; pin.Alive() && i < inControl.children.size(); ++i)
        DrawTree(*inControl.children[i]);
}

void Redraw(Control& inControl)
{
    if (!CanDraw(inControl))
        return;
    StDrawing drawing(inControl);
    DrawTree(inControl);
}

void RedrawErased(Control& inControl)
{
    if (!CanDraw(inControl))
        return;
    StDrawing drawing(inControl);
    SetUpControlBackground(inControl.Ref(), kScreenDepth, true);
    DrawErasedTree(inControl);
}

void RedrawArea(WindowControls& inControls, const Rect& inArea)
{
    if (!IsWindowVisible(inControls.window) || EmptyRect(&inArea))
        return;
    StDrawing drawing(inControls.window);
    StClip clip(inArea);
    EraseRect(&inArea);
    if (inControls.root)
        DrawTouching(*inControls.root, inArea);
    for (size_t i = 0; i < inControls.flat.size(); ++i)
        DrawTouching(*inControls.flat[i], inArea);
}

} // namespace lampblack::controls

using namespace lampblack::controls;

namespace {

// The nearest of the containers that has a background of its own sets it up; the window's stands otherwise.
void ApplyBackgroundOf(Control& inControl, SInt16 inDepth, Boolean inIsColor)
{
    for (Control* control = &inControl; control; control = control->parent) {
        if (control->colorProc && InvokeControlColorUPP(control->Ref(), kControlMsgSetUpBackground, inDepth,
                                                        inIsColor, control->colorProc) == noErr)
            return;
        if (control != &inControl && control->kind->SetUpBackground(inDepth, inIsColor))
            return;
    }
}

} // namespace

LAMPBLACK_BEGIN_C

void DrawControls(WindowRef inWindow)
{
    WindowControls* controls = FindWindowControls(inWindow);
    if (!controls || !IsWindowVisible(inWindow))
        return;
    StDrawing drawing(inWindow);
    if (controls->root) {
        DrawTree(*controls->root);
        return;
    }
    for (size_t i = 0; i < controls->flat.size(); ++i)
        DrawTree(*controls->flat[i]);
}

void UpdateControls(WindowRef inWindow, RgnHandle inUpdateRegion)
{
    WindowControls* controls = FindWindowControls(inWindow);
    if (!controls || !IsWindowVisible(inWindow))
        return;
    if (!inUpdateRegion) {
        DrawControls(inWindow);
        return;
    }
    Rect area;
    GetRegionBounds(inUpdateRegion, &area);
    StDrawing drawing(inWindow);
    if (controls->root) {
        DrawTouching(*controls->root, area);
        return;
    }
    for (size_t i = 0; i < controls->flat.size(); ++i)
        DrawTouching(*controls->flat[i], area);
}

void Draw1Control(ControlRef inControl)
{
    if (Control* control = Find(inControl))
        RedrawErased(*control);
}

void DrawControlInCurrentPort(ControlRef inControl)
{
    Control* control = Find(inControl);
    if (control && IsVisible(*control))
        DrawTree(*control);
}

OSErr SetUpControlBackground(ControlRef inControl, SInt16 inDepth, Boolean inIsColorDevice)
{
    Control* control = Find(inControl);
    if (!control)
        return InvalidControl(inControl);
    ApplyBackgroundOf(*control, inDepth, inIsColorDevice);
    return noErr;
}

OSErr SetUpControlTextColor(ControlRef inControl, SInt16 inDepth, Boolean inIsColorDevice)
{
    Control* control = Find(inControl);
    if (!control)
        return InvalidControl(inControl);
    if (control->colorProc && InvokeControlColorUPP(inControl, kControlMsgApplyTextColor, inDepth,
                                                    inIsColorDevice, control->colorProc) == noErr)
        return noErr;
    return (OSErr)SetThemeTextColor(IsUsable(*control) ? kThemeTextColorDialogActive
                                                       : kThemeTextColorDialogInactive,
                                    inDepth, inIsColorDevice);
}

OSStatus SetControlColorProc(ControlRef inControl, ControlColorUPP inProc)
{
    Control* control = Find(inControl);
    if (!control)
        return InvalidControl(inControl);
    control->colorProc = inProc;
    return noErr;
}

LAMPBLACK_END_C
