// For tests: icon data of plain colours, resource files that hold them, and ports of every depth.
#ifndef LAMPBLACK_ICONS_TESTICONS_H
#define LAMPBLACK_ICONS_TESTICONS_H

#include "icons/IconKinds.h"

#include <Carbon/MacMemory.h>
#include <Carbon/Resources.h>
#include <quickdraw/TestPort.h>
#include <resources/ResourceFork.h>

#include <ScratchFolder.h>
#include <string>
#include <vector>

namespace lampblack::icons {

using quickdraw::IsInside;
using quickdraw::MakeRect;
using quickdraw::TestPort;
using ByteList = std::vector<uint8_t>;

inline constexpr uint32_t kWhite = 0xFFFFFF, kBlack = 0, kBackdrop = 0xAABBCC;
inline constexpr uint8_t kRedIndex = 35;     // 0xFF0000 in the standard table of 256 colours
inline constexpr uint8_t kGreenIndex = 0x88; // twice a green of the table of 16

inline Handle HandleOf(const ByteList& inBytes)
{
    Handle handle = nullptr;
    PtrToHand(inBytes.data(), &handle, (Size)inBytes.size());
    return handle;
}

// All bits of the icon as given, and a mask of its left half.
inline ByteList HalfMasked(int inWidth, int inHeight, uint8_t inBits)
{
    const size_t rowBytes = (size_t)inWidth / 8;
    ByteList bytes(rowBytes * (size_t)inHeight, inBits);
    for (int row = 0; row < inHeight; ++row)
        for (size_t byte = 0; byte < rowBytes; ++byte)
            bytes.push_back(byte < rowBytes / 2 ? 0xFF : 0);
    return bytes;
}

// A port whose pixels all have one colour that no icon here has.
struct Backdrop : TestPort {
    explicit Backdrop(int inWidth = 64, int inHeight = 64) : TestPort(inWidth, inHeight)
    {
        const Rect all = MakeRect(0, 0, inWidth, inHeight);
        const RGBColor color = { 0xAAAA, 0xBBBB, 0xCCCC }, black = { 0, 0, 0 };
        RGBForeColor(&color);
        PaintRect(&all);
        RGBForeColor(&black);
    }

    // The extent of what is not the backdrop any more.
    Rect Changed() const
    {
        const Rect bounds = quickdraw::PortPixels(port).bounds;
        Rect changed = { bounds.bottom, bounds.right, bounds.top, bounds.left };
        for (short v = bounds.top; v < bounds.bottom; ++v)
            for (short h = bounds.left; h < bounds.right; ++h)
                if (At(h, v) != kBackdrop)
                    changed = { std::min(changed.top, v), std::min(changed.left, h),
                                std::max<short>(changed.bottom, (short)(v + 1)),
                                std::max<short>(changed.right, (short)(h + 1)) };
        return changed.left < changed.right ? changed : Rect{ 0, 0, 0, 0 };
    }
};

inline bool IsRect(const Rect& inRect, int left, int top, int right, int bottom)
{
    const Rect expected = MakeRect(left, top, right, bottom);
    return EqualRect(&inRect, &expected);
}

// A current world of some depth, white.
struct World {
    explicit World(short inDepth, int inWidth = 64, int inHeight = 64)
    {
        GetGWorld(&oldPort, &oldDevice);
        const Rect bounds = MakeRect(0, 0, inWidth, inHeight);
        REQUIRE(NewGWorld(&world, inDepth, &bounds, nullptr, nullptr, 0) == noErr);
        SetGWorld(world, nullptr);
        EraseRect(&bounds);
    }
    ~World()
    {
        SetGWorld(oldPort, oldDevice);
        DisposeGWorld(world);
    }
    World(const World&) = delete;

    uint32_t At(short h, short v) const
    {
        RGBColor color;
        GetCPixel(h, v, &color);
        return (uint32_t)(color.red >> 8) << 16 | (uint32_t)(color.green >> 8) << 8 | color.blue >> 8;
    }

    GWorldPtr world = nullptr;
    CGrafPtr oldPort;
    GDHandle oldDevice;
};

struct Entry {
    OSType type;
    SInt16 id;
    ByteList data;
};

// A resource file that is open in the chain while this lives.
class IconFile {
public:
    explicit IconFile(const std::vector<Entry>& inEntries)
    {
        resources::ForkBuilder builder;
        for (const Entry& entry : inEntries)
            builder.Add({ entry.type, entry.id, 0, false, {}, entry.data });
        std::vector<uint8_t> bytes;
        builder.Build(&bytes);
        fPath = fFolder.Write("Icons", { reinterpret_cast<const char*>(bytes.data()), bytes.size() });
        FSRef ref;
        FSPathMakeRef((const UInt8*)fPath.c_str(), &ref, nullptr);
        fFile = FSOpenResFile(&ref, fsRdPerm);
        FSGetCatalogInfo(&ref, kFSCatInfoNone, nullptr, nullptr, &fSpec, nullptr);
        REQUIRE(fFile != -1);
    }
    ~IconFile() { Close(); }
    void Close()
    {
        if (fFile != -1)
            CloseResFile(fFile);
        fFile = -1;
    }
    const FSSpec& Spec() const { return fSpec; }

private:
    ScratchFolder fFolder;
    std::filesystem::path fPath;
    FSSpec fSpec = {};
    SInt16 fFile = -1;
};

} // namespace lampblack::icons

#endif
