// Port records: which are alive, which one is current, their pixels and what of them may be drawn in.
#include "PortRecord.h"

#include "Devices.h"

#include <memory/ReferenceTable.h>

#include <cstddef>

namespace lampblack::quickdraw {

static memory::ReferenceTable<PortRecord>& Ports()
{
    static memory::ReferenceTable<PortRecord> table;
    return table;
}

static PortRecord* gCurrentPort = nullptr;
static QDErr gQDError = noErr;

void SetQDError(QDErr inError)
{
    gQDError = inError;
}

PortRecord* FindPort(CGrafPtr inPort)
{
    return Ports().Find(inPort);
}

static PortRecord* FindPortAround(const void* inMember, size_t inOffset)
{
    return inMember ? Ports().Find((const PortRecord*)((uintptr_t)inMember - inOffset)) : nullptr;
}

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof" // of a class that both compilers lay out plainly
PortRecord* FindPortOfMap(const void* inMap)
{
    return FindPortAround(inMap, offsetof(PortRecord, fMap));
}

PortRecord* FindPort(PixMapHandle inHandle)
{
    return FindPortAround(inHandle, offsetof(PortRecord, fMapPointer));
}
#pragma GCC diagnostic pop

CGrafPtr ReferenceOf(PortRecord* inPort)
{
    return reinterpret_cast<CGrafPtr>(inPort);
}

PortRecord* CurrentPort()
{
    return gCurrentPort;
}

void MakeCurrent(PortRecord* inPort)
{
    gCurrentPort = inPort;
}

PixelStorage NewPixels(int width, int height)
{
    const size_t count = (size_t)width * (size_t)height;
    return PixelStorage(static_cast<uint32_t*>(std::calloc(count ? count : 1, sizeof(uint32_t))));
}

static constexpr Rect kWideOpen = { -32767, -32767, 32767, 32767 };

static void DescribeDirectPixels(PixMap& outMap)
{
    outMap.pmVersion = baseAddr32;
    outMap.hRes = outMap.vRes = 72 << 16;
    outMap.pixelType = RGBDirect;
    outMap.pixelSize = 32;
    outMap.cmpCount = 3;
    outMap.cmpSize = 8;
    outMap.pixelFormat = k32ARGBPixelFormat;
    outMap.rowBytes = (short)0x8000;
}

PortRecord* NewPortRecord(PortKind inKind)
{
    PortRecord* port = Ports().New();
    port->fKind = inKind;
    port->fClip.SetRect(kWideOpen);
    DescribeDirectPixels(port->fMap);
    return port;
}

void DeletePortRecord(PortRecord* inPort)
{
    if (inPort == gCurrentPort)
        gCurrentPort = nullptr;
    DisposeWorldDevice(inPort->fDevice);
    Ports().Delete(inPort);
}

void PortRecord::SetPixels(PixelStorage inPixels, const Rect& inBounds)
{
    fStorage = std::move(inPixels);
    fPixels = fStorage.get();
    fRowPixels = inBounds.right - inBounds.left;
    fMap.baseAddr = reinterpret_cast<Ptr>(fPixels);
    fMap.rowBytes = (short)(0x8000 | fRowPixels * 4);
    SetMapBounds(inBounds);
}

void PortRecord::SetMapBounds(const Rect& inBounds)
{
    fMapBounds = fMap.bounds = inBounds;
    ClippingChanged();
}

const Region& PortRecord::Drawable()
{
    if (fDrawableKnown)
        return fDrawable;
    fDrawable.Intersect(fClip, fVisible);
    fDrawable.Intersect(Intersection(BoxOf(fBounds), BoxOf(fMapBounds)));
    if (!fPixels)
        fDrawable.Clear();
    fDrawableKnown = true;
    return fDrawable;
}

// Beyond that many rectangles a dirty region is not worth its exactness.
static constexpr size_t kMaxDirtyBoxes = 64;

void PortRecord::Damage(const Box& inBox)
{
    if (!fOwner || IsEmpty(inBox))
        return;
    if (!Contains(fLastDirty, inBox)) {
        fDirty.Union(inBox);
        if (fDirty.Boxes().size() > kMaxDirtyBoxes)
            fDirty.SetBox(fDirty.Extents());
        fLastDirty = inBox;
    }
    if (fDamage)
        fDamage(fOwner, ReferenceOf(this), RectOf(inBox));
}

} // namespace lampblack::quickdraw

QDErr QDError(void)
{
    return lampblack::quickdraw::gQDError;
}
