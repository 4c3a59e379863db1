// Where a window is and how large.
#include "Bounds.h"

#include "Presenter.h"
#include "Sheets.h"
#include "Updates.h"
#include "WindowEvents.h"
#include "WindowFrame.h"

#include <quickdraw/Port.h>

namespace lampblack::windows {

namespace {

constexpr int kLeast = -32000, kGreatest = 32000;

short Pinned(int inValue)
{
    return (short)(inValue < kLeast ? kLeast : inValue > kGreatest ? kGreatest : inValue);
}

// A rectangle with at least one pixel, so that a port can be made for it.
Rect Sane(const Rect& inRect)
{
    Rect rect = { Pinned(inRect.top), Pinned(inRect.left), Pinned(inRect.bottom), Pinned(inRect.right) };
    if (rect.right <= rect.left)
        rect.right = (short)(rect.left + 1);
    if (rect.bottom <= rect.top)
        rect.bottom = (short)(rect.top + 1);
    return rect;
}

UInt32 ChangeBits(const Rect& inOld, const Rect& inNew)
{
    UInt32 bits = 0;
    if (inOld.left != inNew.left || inOld.top != inNew.top)
        bits |= kWindowBoundsChangeOriginChanged;
    if (Width(inOld) != Width(inNew) || Height(inOld) != Height(inNew))
        bits |= kWindowBoundsChangeSizeChanged;
    return bits;
}

bool SendBounds(WindowRef inWindow, UInt32 inKind, UInt32 inBits, const Rect& inOld, Rect* ioNew)
{
    WindowRecord* window = Find(inWindow);
    StEvent event(kEventClassWindow, inKind);
    event.Put(kEventParamDirectObject, typeWindowRef, inWindow)
        .Put(kEventParamAttributes, typeUInt32, inBits)
        .Put(kEventParamOriginalBounds, typeQDRectangle, inOld)
        .Put(kEventParamPreviousBounds, typeQDRectangle, inOld)
        .Put(kEventParamCurrentBounds, typeQDRectangle, *ioNew);
    event.SendTo(window->target);
    event.Get(kEventParamCurrentBounds, typeQDRectangle, ioNew);
    return Find(inWindow) != nullptr;
}

void Move(WindowRecord& ioWindow, int inH, int inV)
{
    Screen().WindowDamaged(ioWindow);
    ioWindow.content = Shifted(ioWindow.content, inH, inV);
    MoveGeometry(ioWindow, inH, inV);
    quickdraw::PlacePort(ioWindow.port, { ioWindow.content.top, ioWindow.content.left });
    Screen().WindowDamaged(ioWindow);
}

// The grow box of the old size is content of the new one, and the other way round.
void ResizeContent(WindowRecord& ioWindow, int inWidth, int inHeight, bool inUpdate)
{
    const Rect old = { 0, 0, (short)Height(ioWindow.content), (short)Width(ioWindow.content) };
    const Rect oldGrow = GrowBoxRect(ioWindow);
    ioWindow.content.right = (short)(ioWindow.content.left + inWidth);
    ioWindow.content.bottom = (short)(ioWindow.content.top + inHeight);
    quickdraw::ResizePixelPort(ioWindow.port, inWidth, inHeight);
    UpdateVisibleRegion(ioWindow);
    Region uncovered(Rect{ 0, 0, (short)inHeight, (short)inWidth });
    uncovered.Subtract(old);
    uncovered.Add(oldGrow);
    uncovered.Add(GrowBoxRect(ioWindow));
    uncovered.Clip(Rect{ 0, 0, (short)inHeight, (short)inWidth });
    ioWindow.update.Clip(Rect{ 0, 0, (short)inHeight, (short)inWidth });
    if (ioWindow.visible)
        EraseContent(ioWindow, uncovered);
    if (inUpdate)
        Invalidate(ioWindow, uncovered);
}

void Resize(WindowRecord& ioWindow, int inWidth, int inHeight, bool inUpdate)
{
    Screen().WindowDamaged(ioWindow);
    ResizeContent(ioWindow, inWidth, inHeight, inUpdate);
    UpdateGeometry(ioWindow);
    DrawGrowBox(ioWindow);
    Screen().WindowDamaged(ioWindow);
}

} // namespace

void ChangeBounds(WindowRef inWindow, const Rect& inContent, UInt32 inWhy, bool inUpdate)
{
    WindowRecord* window = Find(inWindow);
    if (!window)
        return;
    const Rect old = window->content;
    Rect wanted = Sane(inContent);
    if (SameRect(old, wanted) ||
        !SendBounds(inWindow, kEventWindowBoundsChanging, inWhy | ChangeBits(old, wanted), old, &wanted))
        return;
    wanted = Sane(wanted);
    const UInt32 bits = ChangeBits(old, wanted);
    if (bits & kWindowBoundsChangeOriginChanged)
        Move(*window, wanted.left - old.left, wanted.top - old.top);
    if (bits & kWindowBoundsChangeSizeChanged)
        Resize(*window, Width(wanted), Height(wanted), inUpdate);
    if (!bits)
        return;
    Screen().LayoutChanged();
    PlaceSheetsOf(inWindow);
    Rect now = window->content;
    SendBounds(inWindow, kEventWindowBoundsChanged, inWhy | bits, old, &now);
}

Rect StructureBounds(const WindowRecord& inWindow)
{
    return inWindow.structure.Bounds();
}

Rect StructureForContent(const WindowRecord& inWindow, const Rect& inContent)
{
    const Rect& in = inWindow.frameInsets;
    return { (short)(inContent.top - in.top), (short)(inContent.left - in.left),
             (short)(inContent.bottom + in.bottom), (short)(inContent.right + in.right) };
}

Rect ContentForStructure(const WindowRecord& inWindow, const Rect& inStructure)
{
    const Rect& in = inWindow.frameInsets;
    return { (short)(inStructure.top + in.top), (short)(inStructure.left + in.left),
             (short)(inStructure.bottom - in.bottom), (short)(inStructure.right - in.right) };
}

} // namespace lampblack::windows

using namespace lampblack::windows;

OSStatus GetWindowBounds(WindowRef inWindow, WindowRegionCode inRegion, Rect* outBounds)
{
    const WindowRecord* window = Find(inWindow);
    if (!window)
        return errInvalidWindowRef;
    if (!outBounds)
        return paramErr;
    Region region;
    if (!PartRegion(*window, inRegion, &region))
        return errWindowRegionCodeInvalid;
    *outBounds = region.Bounds();
    if (inRegion == kWindowContentRgn && window->collapsed)
        *outBounds = VisibleContent(*window);
    return noErr;
}

OSStatus SetWindowBounds(WindowRef inWindow, WindowRegionCode inRegion, const Rect* inBounds)
{
    WindowRecord* window = Find(inWindow);
    if (!window)
        return errInvalidWindowRef;
    if (!inBounds)
        return paramErr;
    switch (inRegion) {
    case kWindowContentRgn:
    case kWindowGlobalPortRgn: ChangeBounds(inWindow, *inBounds, 0); return noErr;
    case kWindowStructureRgn:
        ChangeBounds(inWindow, ContentForStructure(*window, *inBounds), 0);
        return noErr;
    default: return errWindowRegionCodeInvalid;
    }
}

OSStatus GetWindowRegion(WindowRef inWindow, WindowRegionCode inRegion, RgnHandle ioRegion)
{
    const WindowRecord* window = Find(inWindow);
    if (!window)
        return errInvalidWindowRef;
    if (!ioRegion)
        return paramErr;
    Region region;
    if (!PartRegion(*window, inRegion, &region))
        return errWindowRegionCodeInvalid;
    ToRgn(region, ioRegion);
    return noErr;
}

OSStatus GetWindowStructureWidths(WindowRef inWindow, Rect* outWidths)
{
    const WindowRecord* window = Find(inWindow);
    if (!window || !outWidths)
        return window ? (OSStatus)paramErr : (OSStatus)errInvalidWindowRef;
    *outWidths = window->frameInsets;
    return noErr;
}

void MoveWindow(WindowRef inWindow, short inLeft, short inTop, Boolean inFront)
{
    const WindowRecord* window = Find(inWindow);
    if (!window)
        return;
    ChangeBounds(inWindow,
                 Shifted(window->content, inLeft - window->content.left, inTop - window->content.top), 0);
    if (inFront)
        SelectWindow(inWindow);
}

void SizeWindow(WindowRef inWindow, short inWidth, short inHeight, Boolean inUpdate)
{
    const WindowRecord* window = Find(inWindow);
    if (!window || inWidth <= 0 || inHeight <= 0)
        return;
    Rect bounds = window->content;
    bounds.right = Pinned(bounds.left + inWidth);
    bounds.bottom = Pinned(bounds.top + inHeight);
    ChangeBounds(inWindow, bounds, 0, inUpdate);
}

OSStatus MoveWindowStructure(WindowRef inWindow, short inLeft, short inTop)
{
    const WindowRecord* window = Find(inWindow);
    if (!window)
        return errInvalidWindowRef;
    const Rect structure = StructureForContent(*window, window->content);
    ChangeBounds(inWindow, Shifted(window->content, inLeft - structure.left, inTop - structure.top), 0);
    return noErr;
}
