#include "PixMapBytes.h"

#include <Carbon/MacMemory.h>

namespace lampblack::quickdraw {

static constexpr int kRowBytesBits = 0x3FFF;
static constexpr short kIsPixMap = (short)0x8000;

static bool IsWhole(const PixMap& inMap)
{
    const int width = inMap.bounds.right - inMap.bounds.left, height = inMap.bounds.bottom - inMap.bounds.top;
    const int rowBytes = inMap.rowBytes & kRowBytesBits, depth = inMap.pixelSize;
    return IsDepth(depth) && width > 0 && height > 0 && (int64_t)rowBytes * 8 >= (int64_t)width * depth &&
           (depth < 16 || rowBytes % (depth / 8) == 0);
}

bool ReadPixMap(foundation::BigEndianReader& ioReader, PixMap* out, uint32_t* outTable)
{
    *out = {};
    ioReader.Skip(4); // where the pixels were in memory
    out->rowBytes = (short)((ioReader.U16() & kRowBytesBits) | (uint16_t)kIsPixMap);
    out->bounds = ioReader.ReadRect();
    out->pmVersion = ioReader.S16();
    out->packType = ioReader.S16();
    out->packSize = ioReader.S32();
    out->hRes = ioReader.S32();
    out->vRes = ioReader.S32();
    out->pixelType = ioReader.S16();
    out->pixelSize = ioReader.S16();
    out->cmpCount = ioReader.S16();
    out->cmpSize = ioReader.S16();
    ioReader.Skip(4); // of planes
    *outTable = ioReader.U32();
    ioReader.Skip(4);
    out->pixelFormat = (OSType)out->pixelSize; // the published formats of chunky pixels are their depths
    return ioReader.Ok() && IsWhole(*out);
}

size_t PixelBytesOf(const PixMap& inMap)
{
    const int height = inMap.bounds.bottom - inMap.bounds.top;
    return height > 0 ? (size_t)height * (size_t)(inMap.rowBytes & kRowBytesBits) : 0;
}

static void MakeNative(char* ioBytes, size_t inSize, int inDepth)
{
    if (inDepth == 16)
        for (size_t i = 0; i + 2 <= inSize; i += 2)
            foundation::Flip16(ioBytes + i);
    if (inDepth == 32)
        for (size_t i = 0; i + 4 <= inSize; i += 4)
            foundation::Flip32(ioBytes + i);
}

Handle NewPixelHandle(const PixMap& inMap, foundation::Bytes inBigEndian)
{
    const size_t size = PixelBytesOf(inMap);
    Handle handle = nullptr;
    if (inBigEndian.size() < size || PtrToHand(inBigEndian.data(), &handle, (Size)size) != noErr)
        return nullptr;
    MakeNative(*handle, size, inMap.pixelSize);
    return handle;
}

Surface SurfaceOf(const PixMap& inMap, Handle inPixels)
{
    Surface surface;
    if (!IsHandleValid(inPixels) || !*inPixels || !IsWhole(inMap) ||
        (size_t)GetHandleSize(inPixels) < PixelBytesOf(inMap))
        return surface;
    surface.base = reinterpret_cast<uint8_t*>(*inPixels);
    surface.rowBytes = inMap.rowBytes & kRowBytesBits;
    surface.depth = inMap.pixelSize;
    surface.bounds = inMap.bounds;
    return surface;
}

} // namespace lampblack::quickdraw
