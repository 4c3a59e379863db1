// Offscreen graphics worlds.
#include "ColorTables.h"
#include "CopyJob.h"
#include "Devices.h"
#include "PortRecord.h"

#include <Carbon/MacErrors.h>
#include <Carbon/MacMemory.h>

#include <algorithm>

using namespace lampblack::quickdraw;

namespace lampblack::quickdraw {

// What NewGWorld and UpdateGWorld are asked for, once depth 0 is one of a device.
struct WorldPlan {
    QDErr error = noErr;
    int depth = 32;
    Rect bounds = { 0, 0, 0, 0 };
    CTabHandle given = nullptr; // the table to go by
    SpacePointer space;         // of the new table; null for direct pixels

    int Width() const { return bounds.right - bounds.left; }
    int Height() const { return bounds.bottom - bounds.top; }
};

static SpacePointer SpaceFor(int inDepth, CTabHandle inTable)
{
    if (inDepth > 8)
        return nullptr;
    SpacePointer space = inTable ? SpaceOf(inTable, inDepth) : nullptr;
    return space && space->Count() > 0 ? space : StandardSpace(inDepth);
}

// The device whose depth and colours a world takes: a given one, else for depth 0 the deepest that a global
// rectangle meets, else the main one.
static const PixMap* FindModel(int inDepth, const Rect& inBounds, GDHandle inGiven)
{
    if (IsDevice(inGiven))
        return FindPixMap(DeviceMap(inGiven));
    const GDHandle deepest = inDepth == 0 ? GetMaxDevice(&inBounds) : nullptr;
    return inDepth == 0 ? FindPixMap(DeviceMap(deepest ? deepest : GetMainDevice())) : nullptr;
}

static WorldPlan PlanWorld(int inDepth, const Rect* inBounds, CTabHandle inTable, GDHandle inModel = nullptr)
{
    WorldPlan plan;
    if (!inBounds || IsEmpty(*inBounds)) {
        plan.error = paramErr;
        return plan;
    }
    const PixMap* map = FindModel(inDepth, *inBounds, inModel);
    plan.depth = map ? map->pixelSize : inDepth;
    plan.bounds = *inBounds;
    if (!IsDepth(plan.depth))
        plan.error = cDepthErr;
    else if (!CanHoldPixels(plan.Width(), plan.Height(), plan.depth))
        plan.error = paramErr;
    else
        plan.space = SpaceFor(plan.depth, plan.given = map ? map->pmTable : inTable);
    return plan;
}

static void TakeBounds(PortRecord& ioPort, const Rect& inBounds)
{
    ioPort.SetMapBounds(inBounds);
    ioPort.fBounds = inBounds;
    ioPort.fVisible.SetRect(inBounds);
    ioPort.ClippingChanged();
    MoveWorldDevice(ioPort.fDevice, inBounds);
}

// A table of the world's own, with the seed of the one that it was made from.
static CTabHandle TableFor(const WorldPlan& inPlan)
{
    const CTabHandle table = inPlan.space ? NewTable(*inPlan.space) : nullptr;
    if (table && inPlan.given && SpaceOf(inPlan.given, inPlan.depth) == inPlan.space)
        (**table).ctSeed = SeedOf(inPlan.given);
    return table;
}

static PortRecord* FindWorld(GWorldPtr inWorld)
{
    PortRecord* port = FindPort(inWorld);
    return port && port->fKind == PortKind::World ? port : nullptr;
}

// A port with a device, whose pixels are still to come.
static PortRecord* NewWorld(const WorldPlan& inPlan, GDHandle inDevice, GWorldFlags inFlags)
{
    PortRecord* port = NewPortRecord(PortKind::World);
    if ((inFlags & noNewDevice) && IsDevice(inDevice))
        port->fLentDevice = inDevice;
    else
        port->fDevice = NewWorldDevice(&port->fMapPointer, inPlan.bounds, inPlan.depth);
    port->fPixelState = inFlags & pixPurge ? (GWorldFlags)pixelsPurgeable : 0;
    return port;
}

static QDErr Answer(QDErr inError)
{
    SetQDError(inError);
    return inError;
}

static GWorldFlags Failed(QDErr inError)
{
    SetQDError(inError);
    return (GWorldFlags)gwFlagErr;
}

// Brings the pixels of one surface into another, from the top left or stretched over all of it.
static void CarryOver(Surface from, const Surface& to, GWorldFlags flags)
{
    if (IsEmpty(from.bounds)) // its origin was moved to the end of the coordinates
        from.bounds = RectOf({ -32768, -32768, -32768 + from.Width(), -32768 + from.Height() });
    Rect fromRect = from.bounds, toRect = to.bounds;
    if (!(flags & stretchPix)) {
        const int width = std::min(from.Width(), to.Width());
        const int height = std::min(from.Height(), to.Height());
        fromRect.right = (short)(fromRect.left + width), fromRect.bottom = (short)(fromRect.top + height);
        toRect.right = (short)(toRect.left + width), toRect.bottom = (short)(toRect.top + height);
    }
    CopySurface(from, to, fromRect, toRect, flags & ditherPix ? srcCopy | ditherCopy : srcCopy);
}

// How a world differs from what it is to become.
struct WorldChanges {
    bool size, depth, colors, rowBytes;

    bool Any() const { return size || depth || colors; }
};
static WorldChanges ChangesTo(const Surface& inNow, const WorldPlan& inPlan)
{
    WorldChanges changes;
    changes.size = inNow.Width() != inPlan.Width() || inNow.Height() != inPlan.Height();
    changes.depth = inNow.depth != inPlan.depth;
    changes.colors = inPlan.space && (changes.depth || &ColorsOf(inNow) != inPlan.space.get());
    changes.rowBytes = inNow.rowBytes != RowBytesFor(inPlan.Width(), inPlan.depth);
    return changes;
}

static GWorldFlags AnswerOf(const WorldChanges& inChanges, GWorldFlags inFlags)
{
    GWorldFlags answer = reallocPix;
    if (inChanges.depth)
        answer |= newDepth;
    if (inChanges.colors)
        answer |= mapPix;
    if (inChanges.rowBytes)
        answer |= newRowBytes;
    return answer | (inFlags & (clipPix | stretchPix)) |
           (inChanges.depth || inChanges.colors ? inFlags & ditherPix : 0);
}

// New pixels with what is to be kept of the old ones; a table that changes takes the place of the old one.
static QDErr Rebuild(PortRecord& ioPort, const WorldPlan& inPlan, const WorldChanges& inChanges,
                     GWorldFlags inFlags)
{
    PixelStorage pixels = NewPixels(inPlan.Width(), inPlan.Height(), inPlan.depth);
    const CTabHandle table = inChanges.colors ? TableFor(inPlan) : nullptr;
    if (!pixels || (inChanges.colors && !table)) {
        DisposeCTable(table);
        return cNoMemErr;
    }
    const Surface to = { pixels.get(), RowBytesFor(inPlan.Width(), inPlan.depth), inPlan.depth, inPlan.bounds,
                         inPlan.space.get() };
    if (!inChanges.size || inFlags & (clipPix | stretchPix))
        CarryOver(ioPort.Pixels(), to, inFlags);
    ioPort.SetPixels(std::move(pixels), inPlan.bounds, inPlan.depth);
    if (inChanges.colors || !inPlan.space)
        ioPort.SetTable(table);
    DeviceDepthChanged(ioPort.fDevice, inPlan.depth);
    return noErr;
}

} // namespace lampblack::quickdraw

QDErr NewGWorld(GWorldPtr* offscreenGWorld, short PixelDepth, const Rect* boundsRect, CTabHandle cTable,
                GDHandle aGDevice, GWorldFlags flags)
{
    if (!offscreenGWorld)
        return Answer(paramErr);
    *offscreenGWorld = nullptr;
    const WorldPlan plan = PlanWorld(PixelDepth, boundsRect, cTable);
    if (plan.error)
        return Answer(plan.error);
    PixelStorage pixels = NewPixels(plan.Width(), plan.Height(), plan.depth);
    const CTabHandle table = pixels ? TableFor(plan) : nullptr;
    if (!pixels || (plan.space && !table))
        return Answer(cNoMemErr);
    PortRecord* port = NewWorld(plan, PixelDepth != 0 ? aGDevice : nullptr, flags);
    port->SetPixels(std::move(pixels), plan.bounds, plan.depth);
    port->SetTable(table);
    TakeBounds(*port, plan.bounds);
    *offscreenGWorld = ReferenceOf(port);
    return Answer(noErr);
}

QDErr NewGWorldFromPtr(GWorldPtr* offscreenGWorld, UInt32 PixelFormat, const Rect* boundsRect,
                       CTabHandle cTable, GDHandle aGDevice, GWorldFlags flags, Ptr newBuffer,
                       SInt32 rowBytes)
{
    if (!offscreenGWorld)
        return Answer(paramErr);
    *offscreenGWorld = nullptr;
    const bool isDepth = PixelFormat <= 32 && IsDepth((int)PixelFormat);
    const WorldPlan plan = PlanWorld(isDepth ? (int)PixelFormat : -1, boundsRect, cTable);
    if (plan.error)
        return Answer(plan.error);
    const int unit = plan.depth == 32 ? 4 : 2;
    if (!newBuffer || (uintptr_t)newBuffer % unit || rowBytes % unit || rowBytes > kMaxRowBytes ||
        (int64_t)rowBytes * 8 < (int64_t)plan.Width() * plan.depth)
        return Answer(paramErr);
    const CTabHandle table = TableFor(plan);
    if (plan.space && !table)
        return Answer(cNoMemErr);
    PortRecord* port = NewWorld(plan, aGDevice, flags);
    port->LendPixels(reinterpret_cast<uint8_t*>(newBuffer), (int)rowBytes, plan.bounds, plan.depth);
    port->SetTable(table);
    TakeBounds(*port, plan.bounds);
    *offscreenGWorld = ReferenceOf(port);
    return Answer(noErr);
}

GWorldFlags UpdateGWorld(GWorldPtr* offscreenGWorld, short pixelDepth, const Rect* boundsRect,
                         CTabHandle cTable, GDHandle aGDevice, GWorldFlags flags)
{
    PortRecord* port = offscreenGWorld ? FindWorld(*offscreenGWorld) : nullptr;
    if (!port)
        return Failed(paramErr);
    const WorldPlan plan = PlanWorld(pixelDepth, boundsRect, cTable, aGDevice);
    if (plan.error)
        return Failed(plan.error);
    const WorldChanges changes = ChangesTo(port->Pixels(), plan);
    if (changes.Any())
        if (const QDErr error = Rebuild(*port, plan, changes, flags))
            return Failed(error);
    TakeBounds(*port, plan.bounds);
    SetQDError(noErr);
    return changes.Any() ? AnswerOf(changes, flags) : 0;
}

void DisposeGWorld(GWorldPtr offscreenGWorld)
{
    if (PortRecord* port = FindWorld(offscreenGWorld))
        DeletePortRecord(port);
}

// The rectangle is global; the buffer has the depth and the colours of the deepest device there.
static QDErr NewBuffer(const Rect* inGlobal, Boolean inPurgeable, GDHandle* outDevice, PixMapHandle* outMap)
{
    if (!outDevice || !outMap)
        return Answer(paramErr);
    *outMap = nullptr;
    *outDevice = nullptr;
    GWorldPtr world;
    const QDErr error =
        NewGWorld(&world, 0, inGlobal, nullptr, nullptr, inPurgeable ? (GWorldFlags)pixPurge : 0);
    if (error)
        return error;
    *outMap = GetGWorldPixMap(world);
    *outDevice = GetMaxDevice(inGlobal);
    if (!*outDevice)
        *outDevice = GetMainDevice();
    return noErr;
}

QDErr NewScreenBuffer(const Rect* globalRect, Boolean purgeable, GDHandle* gdh, PixMapHandle* offscreenPixMap)
{
    return NewBuffer(globalRect, purgeable, gdh, offscreenPixMap);
}

QDErr NewTempScreenBuffer(const Rect* globalRect, Boolean purgeable, GDHandle* gdh,
                          PixMapHandle* offscreenPixMap)
{
    return NewBuffer(globalRect, purgeable, gdh, offscreenPixMap);
}

void DisposeScreenBuffer(PixMapHandle offscreenPixMap)
{
    DisposeGWorld(ReferenceOf(FindPort(offscreenPixMap)));
}

void GetGWorld(CGrafPtr* port, GDHandle* gdh)
{
    if (port)
        *port = ReferenceOf(CurrentPort());
    if (gdh)
        *gdh = GetGDevice();
}

static GDHandle DeviceOf(const PortRecord* inPort)
{
    return !inPort ? nullptr : inPort->fDevice ? inPort->fDevice : inPort->fLentDevice;
}

void SetGWorld(CGrafPtr port, GDHandle gdh)
{
    const GDHandle own = DeviceOf(FindPort(port));
    SetPort(port);
    SetGDevice(own ? own : gdh);
}

GDHandle GetGWorldDevice(GWorldPtr offscreenGWorld)
{
    const PortRecord* port = FindPort(offscreenGWorld);
    if (!port)
        return nullptr;
    const GDHandle own = DeviceOf(port);
    return IsDevice(own) ? own : GetMainDevice();
}
