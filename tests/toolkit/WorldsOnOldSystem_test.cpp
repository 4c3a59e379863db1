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

TEST_CASE("NewGWorldFromFile: without Aqua its world is temporary")
{
    lampblack::host::SetGestalt('menu', 0);
    gContiguous = 1 << 30;
    gFlags = 0;
    FSRef reference;
    FSSpec spec;
    const auto* path = reinterpret_cast<const UInt8*>(LAMPBLACK_SOURCE_DIR "/examples/gallery/backdrop.jpg");
    REQUIRE(FSPathMakeRef(path, &reference, nullptr) == noErr);
    REQUIRE(FSGetCatalogInfo(&reference, kFSCatInfoNone, nullptr, nullptr, &spec, nullptr) == noErr);
    GWorldPtr world = nullptr;
    REQUIRE(NewGWorldFromFile(&spec, &world, 16) == noErr);
    CHECK(gFlags == (GWorldFlags)useTempMem);
    DisposeGWorld(world);
}
