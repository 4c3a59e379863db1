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

// Draws what an area of one control needs: the surfaces behind it, the control, and, when it is a surface
// itself, all that lies on it. Behind and before are those of the order of drawing.
class AreaOfOne {
public:
    AreaOfOne(Control& inOne, const Rect& inArea) : fOne(inOne), fArea(inArea) {}

    void Walk(Control& inControl)
    {
        if (!inControl.visible)
            return;
        StPin pin(&inControl);
        const bool isOne = &inControl == &fOne;
        if ((isOne || Wants(inControl)) && Touches(inControl, fArea))
            DrawOne(inControl);
        fPassed |= isOne;
        for (size_t i = 0; pin.Alive() && i < inControl.children.size(); ++i)
            Walk(*inControl.children[i]);
    }

private:
    bool Wants(const Control& inControl) const
    {
        return fPassed ? fOne.kind->IsSurface() : inControl.kind->IsSurface();
    }

    Control& fOne;
    const Rect fArea;
    bool fPassed = false;
};

template <class Visitor>
void ForEachTop(WindowControls& inControls, Visitor&& inVisit)
{
    if (inControls.root)
        inVisit(*inControls.root);
    for (size_t i = 0; i < inControls.flat.size(); ++i)
        inVisit(*inControls.flat[i]);
}

void RedrawOneErased(Control& inControl)
{
    const Rect area = inControl.kind->StructureBounds();
    StClip clip(area);
    EraseRect(&area);
    AreaOfOne one(inControl, area);
    ForEachTop(*inControl.owner, [&](Control& top) { one.Walk(top); });
}

bool LiesOn(const Control& inControl, const Control& inSurface)
{
    const Rect inner = inControl.kind->StructureBounds(), outer = inSurface.kind->StructureBounds();
    Rect common;
    SectRect(&inner, &outer, &common);
    return inSurface.kind->IsSurface() && EqualRect(&common, &inner);
}

void RedrawTreeErased(Control& inControl)
{
    if (!inControl.visible)
        return;
    StPin pin(&inControl);
    if (inControl.kind->IsErased())
        RedrawOneErased(inControl);
    else
        DrawOne(inControl);
    for (size_t i = 0; pin.Alive() && i < inControl.children.size(); ++i)
        if (!LiesOn(*inControl.children[i], inControl)) // else it was drawn with the surface
            RedrawTreeErased(*inControl.children[i]);
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

void RedrawErased(Control& inControl)
{
    if (!CanDraw(inControl))
        return;
    StDrawing drawing(inControl);
    RedrawTreeErased(inControl);
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
