// Port records: which are alive, which one is current, their pixels and what of them may be drawn in.
#include "PortRecord.h"

#include "ColorTables.h"
#include "Devices.h"
#include "Recorder.h"

#include <Host.h>
#include <memory/ReferenceTable.h>

#include <algorithm>
#include <cstddef>
#include <cstring>

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
    if (!gCurrentPort)
        host::Machine(); // is chosen with the first call
    return gCurrentPort;
}

void MakeCurrent(PortRecord* inPort)
{
    gCurrentPort = inPort;
}

// Vectors of rows that begin with a cache line lie within one.
static constexpr size_t kCacheLine = 64, kLargeStorage = 128 << 10;

PixelStorage NewPixels(int width, int height, int depth)
{
    const size_t bytes = std::max<size_t>((size_t)RowBytesFor(width, depth) * (size_t)height, 1);
    if (bytes > kLargeStorage) // comes cleared from the system
        return PixelStorage(static_cast<uint8_t*>(std::calloc(bytes, 1)));
    void* pixels = nullptr;
    if (posix_memalign(&pixels, kCacheLine, bytes) != 0)
        return nullptr;
    std::memset(pixels, 0, bytes);
    return PixelStorage(static_cast<uint8_t*>(pixels));
}

static constexpr Rect kWideOpen = { -32767, -32767, 32767, 32767 };

void DescribePixels(PixMap& outMap, int inDepth)
{
    outMap.pmVersion = baseAddr32;
    outMap.hRes = outMap.vRes = 72 << 16;
    outMap.pixelType = inDepth >= 16 ? (short)RGBDirect : (short)chunky;
    outMap.pixelSize = (short)inDepth;
    outMap.cmpCount = inDepth >= 16 ? 3 : 1;
    outMap.cmpSize = (short)(inDepth == 32 ? 8 : inDepth == 16 ? 5 : inDepth);
    outMap.pixelFormat = (OSType)inDepth; // the published formats of these depths are their numbers
    outMap.rowBytes = (short)0x8000;
}

PortRecord* NewPortRecord(PortKind inKind)
{
    PortRecord* port = Ports().New();
    port->fKind = inKind;
    port->fClip.SetRect(kWideOpen);
    DescribePixels(port->fMap, 32);
    LMGetHiliteRGB(&port->fHiliteColor);
    return port;
}

void DeletePortRecord(PortRecord* inPort)
{
    if (inPort == gCurrentPort)
        gCurrentPort = nullptr;
    DisposeWorldDevice(inPort->fDevice);
    Ports().Delete(inPort);
}

void PortRecord::SetPixels(PixelStorage inPixels, const Rect& inBounds, int inDepth)
{
    fStorage = std::move(inPixels);
    const int width = (UInt16)(inBounds.right - inBounds.left); // the bounds may have wrapped around
    LendPixels(fStorage.get(), RowBytesFor(width, inDepth), inBounds, inDepth);
}

void PortRecord::LendPixels(uint8_t* inPixels, int inRowBytes, const Rect& inBounds, int inDepth)
{
    const CTabHandle table = fMap.pmTable;
    fSurface.base = inPixels;
    fSurface.depth = inDepth;
    fSurface.rowBytes = inRowBytes;
    DescribePixels(fMap, inDepth);
    fMap.pmTable = table;
    fMap.baseAddr = reinterpret_cast<Ptr>(fSurface.base);
    fMap.rowBytes = (short)(0x8000 | fSurface.rowBytes);
    SetMapBounds(inBounds);
    FindPixels();
}

// An application that puts its own table into the map has disposed of the one there.
PortRecord::~PortRecord()
{
    delete fRecorder;
    if (fMap.pmTable == fTable)
        DisposeCTable(fTable);
}

void PortRecord::SetTable(CTabHandle inTable)
{
    if (fMap.pmTable == fTable && fTable != inTable)
        DisposeCTable(fTable);
    fTable = fMap.pmTable = inTable;
    fSeenTable = nullptr;
    fSpace.reset();
    fSurface.colors = nullptr;
    Pixels();
    FindPixels();
}

// A table that is gone leaves its colours behind.
void PortRecord::FollowTable()
{
    const SInt32 seed = SeedOf(fMap.pmTable);
    if (fMap.pmTable == fSeenTable && seed == fSeenSeed)
        return;
    fSeenTable = fMap.pmTable;
    fSeenSeed = seed;
    if (std::shared_ptr<const ColorSpace> space = SpaceOf(fMap.pmTable, fSurface.depth)) {
        fSpace = std::move(space);
        fSurface.colors = fSpace.get();
        FindPixels();
    }
}

void PortRecord::FindPixels()
{
    fForePixel = PixelFor(fSurface, PixelOf(fFore));
    fBackPixel = PixelFor(fSurface, PixelOf(fBack));
}

void PortRecord::SetFore(const RGBColor& inColor)
{
    fFore = inColor;
    fForePixel = PixelFor(Pixels(), PixelOf(inColor));
}

void PortRecord::SetBack(const RGBColor& inColor)
{
    fBack = inColor;
    fBackPixel = PixelFor(Pixels(), PixelOf(inColor));
}

void PortRecord::SetMapBounds(const Rect& inBounds)
{
    fSurface.bounds = fMap.bounds = inBounds;
    ClippingChanged();
}

const Region& PortRecord::Drawable()
{
    Pixels();
    if (fDrawableKnown)
        return fDrawable;
    fDrawable.Intersect(fClip, fVisible);
    fDrawable.Intersect(Intersection(BoxOf(fBounds), BoxOf(fSurface.bounds)));
    if (!fSurface.base)
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
