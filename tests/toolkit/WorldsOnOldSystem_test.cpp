// Offscreen worlds on a system without Aqua, whose memory can run out.
#include <doctest/doctest.h>
#include <lampblack/host.h>
#include <lampblack/lampblack.h>

#include "Interpose.h"

namespace {

Size gContiguous = 0;
GWorldFlags gFlags = 0;

} // namespace

LAMPBLACK_INTERPOSE void PurgeSpace(Size* total, Size* contiguous)
{
    *total = *contiguous = gContiguous;
}

LAMPBLACK_INTERPOSE QDErr NewGWorld(GWorldPtr* world, short depth, const Rect* bounds, CTabHandle table,
                                    GDHandle device, GWorldFlags flags)
{
    gFlags = flags;
    return Next<decltype(NewGWorld)>("NewGWorld")(world, depth, bounds, table, device, flags);
}

namespace {

GWorldFlags FlagsAskedFor(short inDepth, GWorldFlags inFlags, Size inContiguous)
{
    lampblack::host::SetGestalt('menu', 0);
    constexpr Rect kBounds = { 0, 0, 100, 200 };
    gContiguous = inContiguous;
    GWorldPtr world = nullptr;
    REQUIRE(NewGWorldEnhanced(&world, inDepth, &kBounds, nullptr, nullptr, inFlags) == noErr);
    DisposeGWorld(world);
    return gFlags;
}

} // namespace

TEST_CASE("NewGWorldEnhanced: without Aqua, a world too large for the application's memory is temporary")
{
    constexpr Size kNeeded = 100 * 200 * 32 / 8 + 32000;
    CHECK(FlagsAskedFor(32, 0, kNeeded) == 0);
    CHECK(FlagsAskedFor(32, 0, kNeeded - 1) == (GWorldFlags)useTempMem);
    CHECK(FlagsAskedFor(0, 0, kNeeded) == 0);
    CHECK(FlagsAskedFor(0, 0, kNeeded - 1) == (GWorldFlags)useTempMem);
    CHECK(FlagsAskedFor(8, keepLocal, kNeeded - 1) == (GWorldFlags)keepLocal);
    CHECK(FlagsAskedFor(8, keepLocal, 100 * 200 + 31999) == (GWorldFlags)(keepLocal | useTempMem));
}

TEST_CASE("NewGWorldEnhanced: without Aqua the caller's wish for temporary memory is kept")
{
    CHECK(FlagsAskedFor(32, useTempMem, 1 << 30) == (GWorldFlags)useTempMem);
}
