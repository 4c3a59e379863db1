// What was drawn in a buffered port and is not on the screen yet, and where a port is on the screen.
#include "PortRecord.h"

#include <Carbon/MacErrors.h>

#include <Host.h>

using namespace lampblack::quickdraw;

namespace lampblack::quickdraw {

// An application may flush after every sprite; the screen is composed no more often than it refreshes. What
// is left out here is composed when the application next waits for events.
static bool IsTimeToPresent()
{
    static double last = -1;
    const host::Table& machine = host::Machine();
    const double now = machine.now ? machine.now() : 0;
    const double interval = machine.refreshInterval ? machine.refreshInterval() : 0;
    if (last >= 0 && now - last < interval)
        return false;
    last = now;
    return true;
}

static void AddToDirty(CGrafPtr inPort, const Region& inRegion)
{
    PortRecord* port = FindPort(inPort);
    Region added;
    added.Intersect(inRegion, port->fVisible);
    for (const Box& box : added.Boxes())
        port->Damage(box);
}

static void Present()
{
    if (host::UpwardHooks().updateScreen && IsTimeToPresent())
        host::UpwardHooks().updateScreen();
}

// What local coordinates have to be moved by to become global.
static Point ToGlobal(const PortRecord& inPort)
{
    return { (short)(inPort.fGlobal.v - inPort.fSurface.bounds.top),
             (short)(inPort.fGlobal.h - inPort.fSurface.bounds.left) };
}

static void MovePoint(const PortRecord* inPort, Point* ioPoint, int inSign)
{
    if (!inPort || !ioPoint)
        return;
    const Point by = ToGlobal(*inPort);
    ioPoint->h = (short)(ioPoint->h + inSign * by.h);
    ioPoint->v = (short)(ioPoint->v + inSign * by.v);
}

static Rect* MoveRect(const PortRecord* inPort, Rect* ioRect, int inSign)
{
    if (!inPort || !ioRect)
        return ioRect;
    const Point by = ToGlobal(*inPort);
    OffsetRect(ioRect, (short)(inSign * by.h), (short)(inSign * by.v));
    return ioRect;
}

static RgnHandle MoveRegion(const PortRecord* inPort, RgnHandle ioRegion, int inSign)
{
    Region* region = FindRegion(ioRegion);
    if (!inPort || !region)
        return ioRegion;
    const Point by = ToGlobal(*inPort);
    region->Offset(inSign * by.h, inSign * by.v);
    return ioRegion;
}

} // namespace lampblack::quickdraw

Boolean QDIsPortBuffered(CGrafPtr port)
{
    return PortOwner(port) != nullptr;
}

Boolean QDIsPortBufferDirty(CGrafPtr port)
{
    const PortRecord* record = FindPort(port);
    return record && !record->fDirty.IsEmpty();
}

void QDFlushPortBuffer(CGrafPtr port, RgnHandle region)
{
    PortRecord* record = FindPort(port);
    if (!record || !record->fOwner || record->fDirty.IsEmpty())
        return;
    if (const Region* part = FindRegion(region))
        record->fDirty.Subtract(record->fDirty, *part);
    else
        record->fDirty.Clear();
    record->fLastDirty = { 0, 0, 0, 0 };
    Present();
}

OSStatus QDGetDirtyRegion(CGrafPtr port, RgnHandle rgn)
{
    const PortRecord* record = FindPort(port);
    Region* region = FindRegion(rgn);
    if (!record || !region)
        return paramErr;
    *region = record->fDirty;
    return noErr;
}

OSStatus QDSetDirtyRegion(CGrafPtr port, RgnHandle rgn)
{
    PortRecord* record = FindPort(port);
    const Region* region = FindRegion(rgn);
    if (!record || !region)
        return paramErr;
    PortWasPresented(port);
    AddToDirty(port, *region);
    return noErr;
}

OSStatus QDAddRectToDirtyRegion(CGrafPtr port, const Rect* inBounds)
{
    if (!FindPort(port) || !inBounds)
        return paramErr;
    AddToDirty(port, Region(*inBounds));
    return noErr;
}

OSStatus QDAddRegionToDirtyRegion(CGrafPtr port, RgnHandle inRegion)
{
    const Region* region = FindRegion(inRegion);
    if (!FindPort(port) || !region)
        return paramErr;
    AddToDirty(port, *region);
    return noErr;
}

// Pixels do not move while a port lives, so that there is nothing to hold but the reference to be checked.
OSErr LockPortBits(GrafPtr port)
{
    return FindPort(port) ? (OSErr)noErr : (OSErr)paramErr;
}

OSErr UnlockPortBits(GrafPtr port)
{
    return FindPort(port) ? (OSErr)noErr : (OSErr)paramErr;
}

void LocalToGlobal(Point* pt)
{
    MovePoint(CurrentPort(), pt, 1);
}

void GlobalToLocal(Point* pt)
{
    MovePoint(CurrentPort(), pt, -1);
}

Point* QDLocalToGlobalPoint(CGrafPtr port, Point* point)
{
    MovePoint(FindPort(port), point, 1);
    return point;
}

Point* QDGlobalToLocalPoint(CGrafPtr port, Point* point)
{
    MovePoint(FindPort(port), point, -1);
    return point;
}

Rect* QDLocalToGlobalRect(CGrafPtr port, Rect* bounds)
{
    return MoveRect(FindPort(port), bounds, 1);
}

Rect* QDGlobalToLocalRect(CGrafPtr port, Rect* bounds)
{
    return MoveRect(FindPort(port), bounds, -1);
}

RgnHandle QDLocalToGlobalRegion(CGrafPtr port, RgnHandle region)
{
    return MoveRegion(FindPort(port), region, 1);
}

RgnHandle QDGlobalToLocalRegion(CGrafPtr port, RgnHandle region)
{
    return MoveRegion(FindPort(port), region, -1);
}
