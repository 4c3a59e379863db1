// Masked copies on a system before Mac OS X, which is asked for once in the life of the process.
#include <doctest/doctest.h>
#include <lampblack/host.h>
#include <lampblack/lampblack.h>

#include "CallLog.h"

LAMPBLACK_WATCH(OSErr, NewGWorld,
                (GWorldPtr * world, short depth, const Rect* bounds, CTabHandle table, GDHandle device,
                 GWorldFlags flags),
                (world, depth, bounds, table, device, flags))
LAMPBLACK_WATCH(void, CopyMask,
                (const BitMap* source, const BitMap* mask, const BitMap* destination, const Rect* sourceRect,
                 const Rect* maskRect, const Rect* destinationRect),
                (source, mask, destination, sourceRect, maskRect, destinationRect))

TEST_CASE("MyCopyMask: before Mac OS X the work is CopyMask's, wherever the rectangles are")
{
    lampblack::host::SetGestalt('sysv', 0x0922);
    constexpr Rect kBounds = { 0, 0, 50, 50 }, kRect = { 5, 5, 25, 25 };
    GWorldPtr world = nullptr;
    REQUIRE(NewGWorld(&world, 32, &kBounds, nullptr, nullptr, 0) == noErr);
    const BitMap* bits = GetPortBitMapForCopyBits(world);
    const CallLog log;
    MyCopyMask(bits, bits, bits, &kRect, &kRect, &kRect);
    lampblack::host::SetGestalt('sysv', 0x1040);
    MyCopyMask(bits, bits, bits, &kRect, &kRect, &kRect);
    CHECK(log.Calls() == "CopyMask CopyMask");
    DisposeGWorld(world);
}
