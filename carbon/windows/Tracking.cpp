// Following the mouse.
#include "Tracking.h"

#include "Surface.h"

#include <events/MouseTracking.h>

namespace lampblack::windows {

namespace {

bool IsGlobalPort(GrafPtr inPort)
{
    return inPort == (GrafPtr)(intptr_t)-1;
}

Point ToPort(GrafPtr inPort, Point inGlobal)
{
    if (IsGlobalPort(inPort))
        return inGlobal;
    CGrafPtr saved = nullptr;
    GDHandle device = nullptr;
    GetGWorld(&saved, &device);
    if (inPort)
        SetGWorld(inPort, nullptr);
    GlobalToLocal(&inGlobal);
    SetGWorld(saved, device);
    return inGlobal;
}

struct PortArea {
    GrafPtr port;
    RgnHandle region; // local to the port
};

bool IsInPortArea(Point inGlobal, void* inArea)
{
    const auto& area = *static_cast<const PortArea*>(inArea);
    return PtInRgn(ToPort(area.port, inGlobal), area.region);
}

} // namespace

MouseStep NextMouseStep()
{
    MouseStep step;
    events::TrackMouseGlobal(0, kEventDurationForever, &step.where, &step.modifiers, &step.result);
    return step;
}

Outline::Outline()
{
    for (WindowRef& side : fSides) {
        side = NewSurface(Layer::Help, { 0, 0, 1, 1 }, false);
        const RGBColor gray = { 0x6000, 0x6000, 0x6000 };
        SetWindowContentColor(side, &gray);
    }
}

Outline::~Outline()
{
    for (WindowRef side : fSides)
        DisposeWindow(side);
}

void Outline::MoveTo(const Rect& inBounds)
{
    const Rect sides[4] = { { inBounds.top, inBounds.left, (short)(inBounds.top + 1), inBounds.right },
                            { (short)(inBounds.bottom - 1), inBounds.left, inBounds.bottom, inBounds.right },
                            { inBounds.top, inBounds.left, inBounds.bottom, (short)(inBounds.left + 1) },
                            { inBounds.top, (short)(inBounds.right - 1), inBounds.bottom, inBounds.right } };
    for (int side = 0; side < 4; ++side) {
        SetWindowBounds(fSides[side], kWindowContentRgn, &sides[side]);
        ShowHide(fSides[side], true);
    }
}

} // namespace lampblack::windows

using namespace lampblack::windows;

OSStatus TrackMouseLocationWithOptions(GrafPtr inPort, OptionBits inOptions, EventTimeout inTimeout,
                                       Point* outPt, UInt32* outModifiers, MouseTrackingResult* outResult)
{
    if (!outPt || !outResult)
        return paramErr;
    Point where = { 0, 0 };
    const OSStatus status =
        lampblack::events::TrackMouseGlobal(inOptions, inTimeout, &where, outModifiers, outResult);
    *outPt = ToPort(inPort, where);
    return status;
}

OSStatus TrackMouseLocation(GrafPtr inPort, Point* outPt, MouseTrackingResult* outResult)
{
    return TrackMouseLocationWithOptions(inPort, 0, kEventDurationForever, outPt, nullptr, outResult);
}

OSStatus TrackMouseRegion(GrafPtr inPort, RgnHandle inRegion, Boolean* ioWasInRgn,
                          MouseTrackingResult* outResult)
{
    if (!inRegion || !ioWasInRgn || !outResult)
        return paramErr;
    PortArea area = { inPort, inRegion };
    bool inside = *ioWasInRgn;
    const OSStatus status = lampblack::events::TrackMouseArea(IsInPortArea, &area, &inside, outResult);
    *ioWasInRgn = inside;
    return status;
}
