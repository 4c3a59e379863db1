// The calls on ports: making them, choosing one, and what belongs to each.
#include "Devices.h"
#include "PortRecord.h"

#include <Carbon/MacErrors.h>

#include <Host.h>

#include <algorithm>
#include <cstring>

using namespace lampblack::quickdraw;

namespace lampblack::quickdraw {

// Answers through *outValue, or its empty value for what is no port.
template <class Value, class Member>
static Value* Answer(CGrafPtr inPort, Value* outValue, Member inMember)
{
    if (!outValue)
        return nullptr;
    const PortRecord* port = FindPort(inPort);
    *outValue = port ? inMember(*port) : Value{};
    return outValue;
}

template <class Change>
static void WithPort(CGrafPtr inPort, Change inChange)
{
    if (PortRecord* port = FindPort(inPort))
        inChange(*port);
}

template <class Change>
static void WithCurrent(Change inChange)
{
    if (PortRecord* port = CurrentPort())
        inChange(*port);
}

static RgnHandle CopyOut(CGrafPtr inPort, RgnHandle ioRegion, Region PortRecord::*inMember)
{
    const PortRecord* port = FindPort(inPort);
    if (Region* region = FindRegion(ioRegion)) {
        if (port)
            *region = port->*inMember;
        else
            region->Clear();
    }
    return ioRegion;
}

static void CopyIn(CGrafPtr inPort, RgnHandle inRegion, Region PortRecord::*inMember)
{
    PortRecord* port = FindPort(inPort);
    const Region* region = FindRegion(inRegion);
    if (!port || !region)
        return;
    port->*inMember = *region;
    port->ClippingChanged();
}

static OSStatus SectWith(CGrafPtr inPort, RgnHandle ioRegion, Region PortRecord::*inMember)
{
    const PortRecord* port = FindPort(inPort);
    Region* region = FindRegion(ioRegion);
    if (!port || !region)
        return paramErr;
    region->Intersect(*region, port->*inMember);
    return noErr;
}

static PixelStorage NewWhitePixels(int width, int height)
{
    PixelStorage pixels = NewPixels(width, height);
    if (pixels)
        std::fill_n(reinterpret_cast<uint32_t*>(pixels.get()), (size_t)width * (size_t)height, kWhitePixel);
    return pixels;
}

CGrafPtr NewPixelPort(int width, int height)
{
    if (!CanHoldPixels(width, height))
        return nullptr;
    PixelStorage pixels = NewWhitePixels(width, height);
    if (!pixels)
        return nullptr;
    PortRecord* port = NewPortRecord(PortKind::Pixels);
    const Rect bounds = { 0, 0, (short)height, (short)width };
    port->SetPixels(std::move(pixels), bounds);
    port->fBounds = bounds;
    port->fVisible.SetRect(bounds);
    return ReferenceOf(port);
}

void DisposePixelPort(CGrafPtr inPort)
{
    PortRecord* port = FindPort(inPort);
    if (port && port->fKind == PortKind::Pixels)
        DeletePortRecord(port);
}

// Coordinates wrap at 16 bits: a port whose far edges pass the end of them shows nothing there, and is whole
// again when its origin comes back.
static Rect SizedRect(int left, int top, int width, int height)
{
    return { (short)top, (short)left, (short)(top + height), (short)(left + width) };
}

static void CopyOverlap(const Surface& from, uint8_t* to, int width, int height)
{
    const int common = std::min(width, from.Width());
    const int rows = std::min(height, from.Height());
    for (int row = 0; row < rows; ++row)
        std::memcpy(to + (size_t)row * width * 4, from.RowAt(from.bounds.top + row), (size_t)common * 4);
}

bool ResizePixelPort(CGrafPtr inPort, int width, int height)
{
    PortRecord* port = FindPort(inPort);
    if (!port || port->fKind != PortKind::Pixels || !CanHoldPixels(width, height))
        return false;
    PixelStorage pixels = NewWhitePixels(width, height);
    if (!pixels)
        return false;
    CopyOverlap(port->fSurface, pixels.get(), width, height);
    const Rect& old = port->fSurface.bounds;
    const Rect bounds = SizedRect(old.left, old.top, width, height);
    port->fVisible.SetBox({ old.left, old.top, old.left + width, old.top + height });
    port->SetPixels(std::move(pixels), bounds);
    port->fBounds = bounds;
    return true;
}

void PlacePort(CGrafPtr inPort, Point inGlobalTopLeft)
{
    WithPort(inPort, [=](PortRecord& port) { port.fGlobal = inGlobalTopLeft; });
}

void SetPortOwner(CGrafPtr inPort, void* inOwner, DamageProc inDamage)
{
    WithPort(inPort, [=](PortRecord& port) {
        port.fOwner = inOwner;
        port.fDamage = inDamage;
    });
}

void* PortOwner(CGrafPtr inPort)
{
    const PortRecord* port = FindPort(inPort);
    return port ? port->fOwner : nullptr;
}

PixelView PortPixels(CGrafPtr inPort)
{
    const PortRecord* port = FindPort(inPort);
    if (!port)
        return {};
    const Surface& all = port->fSurface;
    uint32_t* const base = all.depth == 32 ? reinterpret_cast<uint32_t*>(all.base) : nullptr;
    return { base, port->RowPixels(), all.bounds };
}

Pattern PortBackPattern(CGrafPtr inPort)
{
    const PortRecord* port = FindPort(inPort);
    return port ? port->fBackPattern : Pattern{};
}

void PortWasPresented(CGrafPtr inPort)
{
    WithPort(inPort, [](PortRecord& port) {
        port.fDirty.Clear();
        port.fLastDirty = { 0, 0, 0, 0 };
    });
}

static void MoveOrigin(PortRecord& ioPort, int h, int v)
{
    const int dh = h - ioPort.fBounds.left, dv = v - ioPort.fBounds.top;
    Rect map = ioPort.fSurface.bounds;
    OffsetRect(&map, (short)dh, (short)dv);
    OffsetRect(&ioPort.fBounds, (short)dh, (short)dv);
    ioPort.fVisible.Offset(dh, dv);
    ioPort.fDirty.Offset(dh, dv);
    ioPort.fLastDirty = { 0, 0, 0, 0 };
    ioPort.SetMapBounds(map);
}

} // namespace lampblack::quickdraw

CGrafPtr CreateNewPort(void)
{
    PortRecord* port = NewPortRecord(PortKind::Bare);
    port->fBounds = ScreenBounds();
    port->fVisible.SetRect(port->fBounds);
    port->SetMapBounds(port->fBounds);
    return ReferenceOf(port);
}

void DisposePort(CGrafPtr port)
{
    PortRecord* record = FindPort(port);
    if (record && record->fKind == PortKind::Bare)
        DeletePortRecord(record);
}

void GetPort(GrafPtr* port)
{
    if (port)
        *port = ReferenceOf(CurrentPort());
}

void SetPort(GrafPtr port)
{
    MakeCurrent(FindPort(port));
}

Boolean QDSwapPort(CGrafPtr inNewPort, CGrafPtr* outOldPort)
{
    GetPort(outOldPort);
    const PortRecord* old = CurrentPort();
    MakeCurrent(FindPort(inNewPort));
    return CurrentPort() != old;
}

CGrafPtr GetQDGlobalsThePort(void)
{
    return ReferenceOf(CurrentPort());
}

Boolean IsValidPort(CGrafPtr port)
{
    return FindPort(port) != nullptr;
}

Boolean IsPortColor(CGrafPtr port)
{
    return FindPort(port) != nullptr;
}

Boolean IsPortOffscreen(CGrafPtr port)
{
    const PortRecord* record = FindPort(port);
    return record && record->fKind == PortKind::World;
}

Boolean IsPortRegionBeingDefined(CGrafPtr port)
{
    const PortRecord* record = FindPort(port);
    return record && record->fOpenRegion;
}

Boolean IsPortPolyBeingDefined(CGrafPtr port)
{
    const PortRecord* record = FindPort(port);
    return record && record->fOpenPolygon;
}

PixMapHandle GetPortPixMap(CGrafPtr port)
{
    PortRecord* record = FindPort(port);
    return record ? &record->fMapPointer : nullptr;
}

const BitMap* GetPortBitMapForCopyBits(CGrafPtr port)
{
    const PortRecord* record = FindPort(port);
    return record ? reinterpret_cast<const BitMap*>(&record->fMap) : nullptr;
}

Rect* GetPortBounds(CGrafPtr port, Rect* rect)
{
    return Answer(port, rect, [](const PortRecord& p) { return p.fBounds; });
}

RGBColor* GetPortForeColor(CGrafPtr port, RGBColor* foreColor)
{
    return Answer(port, foreColor, [](const PortRecord& p) { return p.fFore; });
}

RGBColor* GetPortBackColor(CGrafPtr port, RGBColor* backColor)
{
    return Answer(port, backColor, [](const PortRecord& p) { return p.fBack; });
}

RgnHandle GetPortVisibleRegion(CGrafPtr port, RgnHandle visRgn)
{
    return CopyOut(port, visRgn, &PortRecord::fVisible);
}

RgnHandle GetPortClipRegion(CGrafPtr port, RgnHandle clipRgn)
{
    return CopyOut(port, clipRgn, &PortRecord::fClip);
}

Point* GetPortPenSize(CGrafPtr port, Point* penSize)
{
    return Answer(port, penSize, [](const PortRecord& p) { return p.fPen.size; });
}

Point* GetPortPenLocation(CGrafPtr port, Point* penLocation)
{
    return Answer(port, penLocation, [](const PortRecord& p) { return p.fPen.location; });
}

SInt32 GetPortPenMode(CGrafPtr port)
{
    const PortRecord* record = FindPort(port);
    return record ? record->fPen.mode : 0;
}

short GetPortPenVisibility(CGrafPtr port)
{
    const PortRecord* record = FindPort(port);
    return record ? record->fPen.visibility : (short)0;
}

short GetPortTextFont(CGrafPtr port)
{
    const PortRecord* record = FindPort(port);
    return record ? record->fText.font : (short)0;
}

Style GetPortTextFace(CGrafPtr port)
{
    const PortRecord* record = FindPort(port);
    return record ? record->fText.face : (Style)0;
}

short GetPortTextMode(CGrafPtr port)
{
    const PortRecord* record = FindPort(port);
    return record ? record->fText.mode : (short)0;
}

short GetPortTextSize(CGrafPtr port)
{
    const PortRecord* record = FindPort(port);
    return record ? record->fText.size : (short)0;
}

Fixed GetPortSpExtra(CGrafPtr port)
{
    const PortRecord* record = FindPort(port);
    return record ? record->fText.spaceExtra : 0;
}

void SetPortBounds(CGrafPtr port, const Rect* rect)
{
    if (!rect)
        return;
    WithPort(port, [=](PortRecord& p) {
        p.fBounds = *rect;
        p.ClippingChanged();
    });
}

void SetPortVisibleRegion(CGrafPtr port, RgnHandle visRgn)
{
    CopyIn(port, visRgn, &PortRecord::fVisible);
}

void SetPortClipRegion(CGrafPtr port, RgnHandle clipRgn)
{
    CopyIn(port, clipRgn, &PortRecord::fClip);
}

void SetPortPenSize(CGrafPtr port, Point penSize)
{
    WithPort(port, [=](PortRecord& p) { p.fPen.size = penSize; });
}

void SetPortPenMode(CGrafPtr port, SInt32 penMode)
{
    WithPort(port, [=](PortRecord& p) { p.fPen.mode = (SInt16)penMode; });
}

void SetPortTextFont(CGrafPtr port, short txFont)
{
    WithPort(port, [=](PortRecord& p) {
        p.fText.font = txFont;
        p.fText.strike = nullptr;
    });
}

void SetPortTextFace(CGrafPtr port, StyleParameter face)
{
    WithPort(port, [=](PortRecord& p) {
        p.fText.face = (Style)face;
        p.fText.strike = nullptr;
    });
}

void SetPortTextMode(CGrafPtr port, short mode)
{
    WithPort(port, [=](PortRecord& p) { p.fText.mode = mode; });
}

void SetPortTextSize(CGrafPtr port, short txSize)
{
    WithPort(port, [=](PortRecord& p) {
        p.fText.size = txSize;
        p.fText.strike = nullptr;
    });
}

Boolean IsPortVisibleRegionEmpty(CGrafPtr port)
{
    const PortRecord* record = FindPort(port);
    return !record || record->fVisible.IsEmpty();
}

Boolean IsPortClipRegionEmpty(CGrafPtr port)
{
    const PortRecord* record = FindPort(port);
    return !record || record->fClip.IsEmpty();
}

OSStatus SectRegionWithPortClipRegion(CGrafPtr port, RgnHandle ioRegion)
{
    return SectWith(port, ioRegion, &PortRecord::fClip);
}

OSStatus SectRegionWithPortVisibleRegion(CGrafPtr port, RgnHandle ioRegion)
{
    return SectWith(port, ioRegion, &PortRecord::fVisible);
}

void SetOrigin(short h, short v)
{
    WithCurrent([=](PortRecord& p) { MoveOrigin(p, h, v); });
}

// The port bounds keep their coordinates; the pixels beneath them become those at this place of the map.
void MovePortTo(short leftGlobal, short topGlobal)
{
    WithCurrent([=](PortRecord& p) {
        const int left = p.fBounds.left - (leftGlobal - p.fGlobal.h);
        const int top = p.fBounds.top - (topGlobal - p.fGlobal.v);
        p.SetMapBounds(SizedRect(left, top, p.fSurface.Width(), p.fSurface.Height()));
    });
}

void PortSize(short width, short height)
{
    WithCurrent([=](PortRecord& p) {
        p.fBounds.right = Clamped(p.fBounds.left + width);
        p.fBounds.bottom = Clamped(p.fBounds.top + height);
        p.ClippingChanged();
    });
}

void ClipRect(const Rect* r)
{
    if (!r)
        return;
    WithCurrent([=](PortRecord& p) {
        p.fClip.SetRect(*r);
        p.ClippingChanged();
    });
}

void GetClip(RgnHandle rgn)
{
    const PortRecord* port = CurrentPort();
    Region* region = FindRegion(rgn);
    if (port && region)
        *region = port->fClip;
}

void SetClip(RgnHandle rgn)
{
    SetPortClipRegion(ReferenceOf(CurrentPort()), rgn);
}
