// Where windows are put: by rule, and back onto the screen.
#include "Bounds.h"
#include "Presenter.h"
#include "WindowFrame.h"
#include "WindowList.h"

#include <algorithm>

namespace lampblack::windows {

namespace {

constexpr short kCascadeStep = 22;

struct Free {
    int h, v; // pixels left beside and below; negative when the window is larger
};

Rect Centered(const Rect& inStructure, const Rect& inArea, int inNumerator, int inDenominator)
{
    const Free free = { Width(inArea) - Width(inStructure), Height(inArea) - Height(inStructure) };
    const int left = inArea.left + std::max(0, free.h / 2);
    const int top = inArea.top + std::max(0, free.v * inNumerator / inDenominator);
    return Shifted(inStructure, left - inStructure.left, top - inStructure.top);
}

bool IsTaken(const WindowRecord& inWindow, Point inCorner)
{
    return FirstWindow([&](const WindowRecord& other) {
               const Rect bounds = StructureForContent(other, other.content);
               return &other != &inWindow && !other.internal && other.OnScreen() &&
                      bounds.left == inCorner.h && bounds.top == inCorner.v;
           }) != nullptr;
}

// Down and to the right of the windows that are there already; begins anew where the area ends.
Rect Cascaded(const WindowRecord& inWindow, const Rect& inStructure, const Rect& inArea, Point inStart)
{
    Point corner = inStart;
    for (int step = 0; step < 200 && IsTaken(inWindow, corner); ++step) {
        corner.h = (short)(corner.h + kCascadeStep);
        corner.v = (short)(corner.v + kCascadeStep);
        if (corner.v + Height(inStructure) > inArea.bottom || corner.h + Width(inStructure) > inArea.right)
            corner = { inArea.top, (short)(inArea.left + (step + 1) * 4) };
    }
    return Shifted(inStructure, corner.h - inStructure.left, corner.v - inStructure.top);
}

bool NeedsParent(WindowPositionMethod inMethod)
{
    return inMethod != kWindowCenterOnMainScreen && inMethod != kWindowCascadeOnMainScreen &&
           inMethod != kWindowAlertPositionOnMainScreen;
}

Rect Positioned(const WindowRecord& inWindow, const WindowRecord* inParent, WindowPositionMethod inMethod)
{
    const Rect structure = StructureForContent(inWindow, inWindow.content);
    const Rect screen = AvailableBounds();
    const Rect parent = inParent ? StructureForContent(*inParent, inParent->content) : screen;
    const Point start = { screen.top, screen.left };
    const Point beside = { (short)(parent.top + kCascadeStep), (short)(parent.left + kCascadeStep) };
    switch (inMethod) {
    case kWindowCenterOnParentWindow: return Centered(structure, parent, 1, 2);
    case kWindowAlertPositionOnParentWindow: return Centered(structure, parent, 1, 3);
    case kWindowAlertPositionOnMainScreen:
    case kWindowAlertPositionOnParentWindowScreen: return Centered(structure, screen, 1, 3);
    case kWindowCascadeOnMainScreen:
    case kWindowCascadeOnParentWindowScreen: return Cascaded(inWindow, structure, screen, start);
    case kWindowCascadeOnParentWindow:
    case kWindowCascadeStartAtParentWindowScreen: return Cascaded(inWindow, structure, screen, beside);
    default: return Centered(structure, screen, 1, 2);
    }
}

// How far to move so that [inStart, inEnd) lies in [inLow, inHigh); the start wins when it is too long.
int Shift(int inStart, int inEnd, int inLow, int inHigh)
{
    const int shift = inEnd > inHigh ? inHigh - inEnd : 0;
    return inStart + shift < inLow ? inLow - inStart : shift;
}

// How far to move so that at least some of [inStart, inEnd) shows in [inLow, inHigh).
int PartialShift(int inStart, int inEnd, int inLow, int inHigh)
{
    const int least = std::min(inEnd - inStart, 40);
    if (inEnd < inLow + least)
        return inLow + least - inEnd;
    return inStart > inHigh - least ? inHigh - least - inStart : 0;
}

struct Constraint {
    Rect region; // what has to lie on the screen
    Rect screen;
    bool partial;
    bool titleAtLeft;
    bool fits;
};

Point Correction(const Constraint& inConstraint)
{
    const Rect& region = inConstraint.region;
    const Rect& screen = inConstraint.screen;
    Point by = { 0, 0 };
    if (inConstraint.partial) {
        // The edge that carries the title must not leave the screen.
        const int across = PartialShift(region.left, region.right, screen.left, screen.right);
        const bool leaves = inConstraint.titleAtLeft && region.left + across < screen.left;
        by.h = (short)(leaves ? screen.left - region.left : across);
        const int down = PartialShift(region.top, region.bottom, screen.top, screen.bottom);
        by.v = (short)(region.top + down < screen.top ? screen.top - region.top : down);
        return by;
    }
    by.h = (short)Shift(region.left, region.right, screen.left, screen.right);
    by.v = (short)Shift(region.top, region.bottom, screen.top, screen.bottom);
    return by;
}

Rect ShrunkTo(const WindowRecord& inWindow, const Rect& inContent, const Rect& inRegion, const Rect& inScreen)
{
    Rect content = inContent;
    if (!inWindow.Has(kWindowResizableAttribute))
        return content;
    content.right = (short)(content.right - std::max(0, Width(inRegion) - Width(inScreen)));
    content.bottom = (short)(content.bottom - std::max(0, Height(inRegion) - Height(inScreen)));
    return content;
}

} // namespace

} // namespace lampblack::windows

using namespace lampblack::windows;

OSStatus RepositionWindow(WindowRef inWindow, WindowRef inParent, WindowPositionMethod inMethod)
{
    const WindowRecord* window = Find(inWindow);
    const WindowRecord* parent = Find(inParent);
    if (!window)
        return errInvalidWindowRef;
    if (inMethod < kWindowCenterOnMainScreen || inMethod > kWindowCascadeStartAtParentWindowScreen)
        return paramErr;
    if (NeedsParent(inMethod) && !parent)
        return inParent ? (OSStatus)errInvalidWindowRef : (OSStatus)paramErr;
    ChangeBounds(inWindow, ContentForStructure(*window, Positioned(*window, parent, inMethod)), 0);
    return noErr;
}

OSStatus ConstrainWindowToScreen(WindowRef inWindow, WindowRegionCode inRegion,
                                 WindowConstrainOptions inOptions, const Rect* inScreenRect,
                                 Rect* outStructure)
{
    const WindowRecord* window = Find(inWindow);
    if (!window)
        return errInvalidWindowRef;
    Region part;
    if (!PartRegion(*window, inRegion, &part))
        return errWindowRegionCodeInvalid;
    const Rect screen = inScreenRect ? *inScreenRect : AvailableBounds();
    const Rect region = part.Bounds();
    Rect content = window->content;
    Constraint constraint = { region, screen, (inOptions & kWindowConstrainAllowPartial) != 0,
                              window->Has(kWindowSideTitlebarAttribute), true };
    if ((inOptions & kWindowConstrainMayResize) && !constraint.partial) {
        const Rect shrunk = ShrunkTo(*window, content, region, screen);
        constraint.region.right = (short)(region.right - (Width(content) - Width(shrunk)));
        constraint.region.bottom = (short)(region.bottom - (Height(content) - Height(shrunk)));
        content = shrunk;
    }
    constraint.fits =
        Width(constraint.region) <= Width(screen) && Height(constraint.region) <= Height(screen);
    const bool move =
        constraint.fits || constraint.partial || (inOptions & kWindowConstrainMoveRegardlessOfFit);
    if (move) {
        const Point by = Correction(constraint);
        content = Shifted(content, by.h, by.v);
    }
    if (outStructure)
        *outStructure = StructureForContent(*window, content);
    if (!(inOptions & kWindowConstrainCalcOnly))
        ChangeBounds(inWindow, content, 0);
    return move ? (OSStatus)noErr : (OSStatus)errWindowDoesNotFitOnscreen;
}

OSStatus GetWindowGreatestAreaDevice(WindowRef inWindow, WindowRegionCode inRegion, GDHandle* outDevice,
                                     Rect* outDeviceRect)
{
    const WindowRecord* window = Find(inWindow);
    if (!window)
        return errInvalidWindowRef;
    Region region;
    if (!PartRegion(*window, inRegion, &region))
        return errWindowRegionCodeInvalid;
    // One screen, so it has the greatest area of every window.
    if (outDevice)
        *outDevice = GetMainDevice();
    if (outDeviceRect)
        *outDeviceRect = Screen().ScreenBounds();
    return noErr;
}

OSStatus GetAvailableWindowPositioningBounds(GDHandle inDevice, Rect* outBounds)
{
    if (!outBounds || (inDevice && inDevice != GetMainDevice()))
        return paramErr;
    *outBounds = AvailableBounds();
    return noErr;
}

OSStatus GetAvailableWindowPositioningRegion(GDHandle inDevice, RgnHandle ioRegion)
{
    if (!ioRegion || (inDevice && inDevice != GetMainDevice()))
        return paramErr;
    const Rect bounds = AvailableBounds();
    RectRgn(ioRegion, &bounds);
    return noErr;
}

RgnHandle GetGrayRgn(void)
{
    static const RgnHandle region = NewRgn();
    const Rect bounds = AvailableBounds();
    RectRgn(region, &bounds);
    return region;
}

long PinRect(const Rect* inRect, Point inPoint)
{
    if (!inRect)
        return 0;
    const int h = std::clamp<int>(inPoint.h, inRect->left, std::max<int>(inRect->left, inRect->right - 1));
    const int v = std::clamp<int>(inPoint.v, inRect->top, std::max<int>(inRect->top, inRect->bottom - 1));
    return (long)(SInt32)(((UInt32)(UInt16)v << 16) | (UInt16)h);
}
