// The main device follows the machine's screen. Its pixels are known while windows/ composes them.
#include "Devices.h"

#include "PortRecord.h"

#include <Carbon/MacErrors.h>

#include <memory/ReferenceTable.h>

#include <Host.h>

#include <cstddef>

using namespace lampblack::quickdraw;

namespace lampblack::quickdraw {

struct DeviceRecord {
    GDevice fDevice = {};
    GDPtr fPointer = &fDevice;
    bool fIsOwn = false; // the application made it
    PixMap fMap = {};    // of the main device only
    PixMapPtr fMapPointer = &fMap;
};

static memory::ReferenceTable<DeviceRecord>& Devices()
{
    static memory::ReferenceTable<DeviceRecord> table;
    return table;
}

static GDHandle ReferenceOf(DeviceRecord* inDevice)
{
    return &inDevice->fPointer;
}

static DeviceRecord* FindDevice(GDHandle inDevice)
{
    return inDevice
               ? Devices().Find((const DeviceRecord*)((uintptr_t)inDevice - offsetof(DeviceRecord, fPointer)))
               : nullptr;
}

static GDHandle gCurrentDevice = nullptr; // null: the main device

bool IsDevice(GDHandle inDevice)
{
    return FindDevice(inDevice) != nullptr;
}

Rect ScreenBounds()
{
    int width = host::CurrentSettings().width, height = host::CurrentSettings().height;
    if (host::Machine().screenSize)
        host::Machine().screenSize(&width, &height);
    return { 0, 0, Clamped(height), Clamped(width) };
}

static DeviceRecord* NewDevice(int inFlags)
{
    DeviceRecord* device = Devices().New();
    device->fDevice.gdType = directType;
    device->fDevice.gdFlags = (short)inFlags;
    device->fDevice.gdMode = 128; // the published number of a mode of direct pixels
    return device;
}

static DeviceRecord* NewMainDevice()
{
    DeviceRecord* device =
        NewDevice(1 << gdDevType | 1 << mainScreen | 1 << allInit | 1 << screenDevice | 1 << screenActive);
    DescribePixels(device->fMap, 32);
    device->fDevice.gdPMap = &device->fMapPointer;
    return device;
}

static DeviceRecord& MainDevice()
{
    static DeviceRecord* const device = NewMainDevice();
    device->fDevice.gdRect = device->fMap.bounds = ScreenBounds();
    return *device;
}

const PixMap& ScreenMap()
{
    return MainDevice().fMap;
}

GDHandle NewWorldDevice(PixMapHandle inMap, const Rect& inBounds, int inDepth)
{
    DeviceRecord* device = NewDevice(1 << gdDevType | 1 << allInit | 1 << noDriver);
    device->fDevice.gdPMap = inMap;
    device->fDevice.gdRect = inBounds;
    device->fDevice.gdMode = -1; // of a device without a driver
    DeviceDepthChanged(ReferenceOf(device), inDepth);
    return ReferenceOf(device);
}

void DeviceDepthChanged(GDHandle inDevice, int inDepth)
{
    DeviceRecord* device = FindDevice(inDevice);
    if (!device)
        return;
    device->fDevice.gdType = inDepth <= 8 ? clutType : directType;
    if (inDepth == 1)
        device->fDevice.gdFlags &= (short)~(1 << gdDevType);
    else
        device->fDevice.gdFlags |= 1 << gdDevType;
}

void MoveWorldDevice(GDHandle inDevice, const Rect& inBounds)
{
    if (DeviceRecord* device = FindDevice(inDevice))
        device->fDevice.gdRect = inBounds;
}

void DisposeWorldDevice(GDHandle inDevice)
{
    if (gCurrentDevice && gCurrentDevice == inDevice)
        gCurrentDevice = nullptr;
    Devices().Delete(FindDevice(inDevice));
}

void SetScreenPixels(const uint32_t* inBase, int inRowPixels, int, int)
{
    PixMap& map = MainDevice().fMap;
    const bool fits = inBase && inRowPixels > 0 && inRowPixels * 4 <= 0x3FFE;
    map.baseAddr = fits ? reinterpret_cast<Ptr>(const_cast<uint32_t*>(inBase)) : nullptr;
    map.rowBytes = (short)(0x8000 | (fits ? inRowPixels * 4 : 0));
}

PixMapHandle DeviceMap(GDHandle inDevice)
{
    const DeviceRecord* device = FindDevice(inDevice);
    return device ? device->fDevice.gdPMap : nullptr;
}

PixMap* FindDeviceMap(PixMapHandle inMap)
{
    DeviceRecord& main = MainDevice();
    return inMap == &main.fMapPointer ? &main.fMap : nullptr;
}

} // namespace lampblack::quickdraw

GDHandle GetMainDevice(void)
{
    return ReferenceOf(&MainDevice());
}

GDHandle GetDeviceList(void)
{
    return GetMainDevice();
}

GDHandle GetNextDevice(GDHandle curDevice)
{
    const DeviceRecord* device = FindDevice(curDevice);
    return device ? device->fDevice.gdNextGD : nullptr;
}

GDHandle GetGDevice(void)
{
    return gCurrentDevice ? gCurrentDevice : GetMainDevice();
}

void SetGDevice(GDHandle gd)
{
    gCurrentDevice = IsDevice(gd) ? gd : nullptr;
}

GDHandle GetMaxDevice(const Rect* globalRect)
{
    const Rect screen = ScreenBounds();
    return globalRect && SectRect(globalRect, &screen, nullptr) ? GetMainDevice() : nullptr;
}

Boolean TestDeviceAttribute(GDHandle gdh, short attribute)
{
    const DeviceRecord* device = FindDevice(gdh);
    return device && attribute >= 0 && attribute < 16 && ((UInt16)device->fDevice.gdFlags >> attribute & 1);
}

void ScreenRes(short* scrnHRes, short* scrnVRes)
{
    if (scrnHRes)
        *scrnHRes = 72;
    if (scrnVRes)
        *scrnVRes = 72;
}

BitMap* GetQDGlobalsScreenBits(BitMap* screenBits)
{
    if (!screenBits)
        return nullptr;
    const PixMap& map = MainDevice().fMap;
    *screenBits = { map.baseAddr, map.rowBytes, map.bounds };
    return screenBits;
}

GDHandle NewGDevice(short refNum, SInt32 mode)
{
    const PixMapHandle map = mode == -1 ? NewPixMap() : nullptr;
    SetQDError(map ? noErr : mode == -1 ? cNoMemErr : cDevErr);
    if (!map)
        return nullptr;
    DeviceRecord* device = NewDevice(1 << noDriver);
    device->fIsOwn = true;
    device->fDevice.gdRefNum = refNum;
    device->fDevice.gdMode = mode;
    device->fDevice.gdPMap = map;
    DeviceDepthChanged(ReferenceOf(device), (**map).pixelSize);
    return ReferenceOf(device);
}

void DisposeGDevice(GDHandle gdh)
{
    const DeviceRecord* device = FindDevice(gdh);
    if (!device || !device->fIsOwn)
        return;
    DisposePixMap(device->fDevice.gdPMap);
    DisposeWorldDevice(gdh);
}

void SetDeviceAttribute(GDHandle gdh, short attribute, Boolean value)
{
    DeviceRecord* device = FindDevice(gdh);
    if (!device || !device->fIsOwn || attribute < 0 || attribute > 15)
        return;
    const auto bit = (short)(1 << attribute);
    device->fDevice.gdFlags = (short)(value ? device->fDevice.gdFlags | bit : device->fDevice.gdFlags & ~bit);
}

short HasDepth(GDHandle gd, short depth, short whichFlags, short flags)
{
    const bool wantsGrays = (whichFlags & 1 << gdDevType) && !(flags & 1 << gdDevType);
    const GDHandle main = GetMainDevice();
    return (!gd || gd == main) && depth == 32 && !wantsGrays ? (short)(**main).gdMode : (short)0;
}

OSErr SetDepth(GDHandle gd, short depth, short whichFlags, short flags)
{
    return HasDepth(gd, depth, whichFlags, flags) ? (OSErr)noErr : (OSErr)paramErr;
}
