// Plain and masked copies: which platform calls are made, in which order, and what the pixels become.
#include <doctest/doctest.h>
#include <lampblack/host.h>
#include <lampblack/lampblack.h>

#include <algorithm>
#include <string>
#include <vector>

#include "CallLog.h"
#include "FreshProcess.h"

LAMPBLACK_WATCH(OSErr, Gestalt, (OSType selector, SInt32* response), (selector, response))
LAMPBLACK_WATCH(RgnHandle, NewRgn, (), ())
LAMPBLACK_WATCH(void, DisposeRgn, (RgnHandle region), (region))

namespace {

// What the calls were given.
struct CopyMaskCall {
    const BitMap *source, *mask, *destination;
    Rect sourceRect, maskRect, destinationRect;
};
struct CopyBitsCall {
    const BitMap *from, *to;
    Rect fromRect, toRect;
    short mode;
    RgnHandle mask;
};
struct WorldRequest {
    short depth;
    Rect bounds;
    bool isPlain; // without table, device and flags
};
struct Flush {
    CGrafPtr port;
    RgnHandle region;
};
std::vector<CopyMaskCall> gCopyMasks;
std::vector<CopyBitsCall> gCopies;
std::vector<WorldRequest> gWorlds;
std::vector<Rect> gErased;
std::vector<Flush> gFlushes;
std::vector<PixMapHandle> gLocked, gUnlocked;
short gRefusedDepth = 0; // worlds of this depth cannot be made

void ForgetCalls()
{
    gCopyMasks.clear();
    gCopies.clear();
    gWorlds.clear();
    gErased.clear();
    gFlushes.clear();
    gLocked.clear();
    gUnlocked.clear();
}

bool Same(const Rect& a, const Rect& b)
{
    return EqualRect(&a, &b);
}

class World {
public:
    World(short inDepth, short inWidth, short inHeight)
    {
        const Rect bounds = { 0, 0, inHeight, inWidth };
        REQUIRE(NewGWorld(&fWorld, inDepth, &bounds, nullptr, nullptr, 0) == noErr);
    }
    ~World() { DisposeGWorld(fWorld); }
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    operator GWorldPtr() const { return fWorld; }
    PixMapHandle Map() const { return GetGWorldPixMap(fWorld); }
    const BitMap* Bits() const { return GetPortBitMapForCopyBits(fWorld); }
    bool IsLocked() const { return (GetPixelsState(Map()) & pixelsLocked) != 0; }

    void Paint(const Rect& inRect, const RGBColor& inColor) const
    {
        const StGWorldSaver saver(fWorld, nullptr);
        RGBForeColor(&inColor);
        PaintRect(&inRect);
        ForeColor(blackColor);
    }
    void Erase() const
    {
        const StGWorldSaver saver(fWorld, nullptr);
        Rect bounds;
        EraseRect(GetPortBounds(fWorld, &bounds));
    }
    RGBColor At(short h, short v) const
    {
        const StGWorldSaver saver(fWorld, nullptr);
        RGBColor color;
        GetCPixel(h, v, &color);
        return color;
    }

private:
    GWorldPtr fWorld = nullptr;
};

constexpr RGBColor kRed = { 0xFFFF, 0, 0 }, kBlue = { 0, 0, 0xFFFF }, kBlack = { 0, 0, 0 };

// Red artwork, a black square in a white mask, and a blue destination.
struct Scene {
    World source{ 32, 200, 100 }, mask{ 32, 200, 100 }, destination{ 32, 200, 100 };
    Scene()
    {
        constexpr Rect kAll = { 0, 0, 100, 200 };
        source.Paint(kAll, kRed);
        destination.Paint(kAll, kBlue);
        mask.Erase();
        mask.Paint({ 10, 10, 20, 20 }, kBlack);
        ForgetCalls();
    }
    void MaskedCopy(const Rect& inSource, const Rect& inMask, const Rect& inDestination) const
    {
        MyCopyMask(source.Bits(), mask.Bits(), destination.Bits(), &inSource, &inMask, &inDestination);
    }
};

struct StUseOSCopyMask {
    StUseOSCopyMask() { gUseOSCopyMask = true; }
    ~StUseOSCopyMask() { gUseOSCopyMask = false; }
};

bool IsOf(const Scene& inScene, const CopyMaskCall& inCall)
{
    return inCall.source == inScene.source.Bits() && inCall.mask == inScene.mask.Bits() &&
           inCall.destination == inScene.destination.Bits();
}

Rect ClipBounds()
{
    const RgnHandle clip = NewRgn();
    GetClip(clip);
    Rect bounds;
    GetRegionBounds(clip, &bounds);
    DisposeRgn(clip);
    return bounds;
}

} // namespace

LAMPBLACK_INTERPOSE void CopyMask(const BitMap* source, const BitMap* mask, const BitMap* destination,
                                  const Rect* sourceRect, const Rect* maskRect, const Rect* destinationRect)
{
    const CallLog::StCall call("CopyMask");
    gCopyMasks.push_back({ source, mask, destination, *sourceRect, *maskRect, *destinationRect });
    Next<decltype(CopyMask)>("CopyMask")(source, mask, destination, sourceRect, maskRect, destinationRect);
}

LAMPBLACK_INTERPOSE void CopyBits(const BitMap* from, const BitMap* to, const Rect* fromRect,
                                  const Rect* toRect, short mode, RgnHandle mask)
{
    const CallLog::StCall call("CopyBits");
    if (call.fIsOutermost && fromRect && toRect)
        gCopies.push_back({ from, to, *fromRect, *toRect, mode, mask });
    Next<decltype(CopyBits)>("CopyBits")(from, to, fromRect, toRect, mode, mask);
}

LAMPBLACK_INTERPOSE QDErr NewGWorld(GWorldPtr* world, short depth, const Rect* bounds, CTabHandle table,
                                    GDHandle device, GWorldFlags flags)
{
    const CallLog::StCall call("NewGWorld");
    if (call.fIsOutermost)
        gWorlds.push_back({ depth, *bounds, !table && !device && !flags });
    if (call.fIsOutermost && (depth == gRefusedDepth || CallLog::gFailures.contains("NewGWorld")))
        return cNoMemErr;
    return Next<decltype(NewGWorld)>("NewGWorld")(world, depth, bounds, table, device, flags);
}

LAMPBLACK_INTERPOSE void EraseRect(const Rect* r)
{
    const CallLog::StCall call("EraseRect");
    if (call.fIsOutermost)
        gErased.push_back(*r);
    Next<decltype(EraseRect)>("EraseRect")(r);
}

LAMPBLACK_INTERPOSE void QDFlushPortBuffer(CGrafPtr port, RgnHandle region)
{
    const CallLog::StCall call("QDFlushPortBuffer");
    if (call.fIsOutermost)
        gFlushes.push_back({ port, region });
    Next<decltype(QDFlushPortBuffer)>("QDFlushPortBuffer")(port, region);
}

LAMPBLACK_INTERPOSE Boolean LockPixels(PixMapHandle map)
{
    const CallLog::StCall call("LockPixels");
    if (call.fIsOutermost)
        gLocked.push_back(map);
    return Next<decltype(LockPixels)>("LockPixels")(map);
}

LAMPBLACK_INTERPOSE void UnlockPixels(PixMapHandle map)
{
    const CallLog::StCall call("UnlockPixels");
    if (call.fIsOutermost)
        gUnlocked.push_back(map);
    Next<decltype(UnlockPixels)>("UnlockPixels")(map);
}

// First in this program, which has not asked for the system before.
TEST_CASE("MyCopyMask: the system is asked once, and without need no scratch world is made")
{
    const Scene scene;
    const CallLog log;
    constexpr Rect kOrigin = { 0, 0, 10, 10 };
    scene.MaskedCopy(kOrigin, kOrigin, kOrigin);
    scene.MaskedCopy(kOrigin, kOrigin, kOrigin);
    CHECK(log.Calls() == "Gestalt CopyMask CopyMask");
    CHECK(IsOf(scene, gCopyMasks.back()));
}

TEST_CASE("MyCopyMask: scratch worlds that cannot be made leave the work to CopyMask, and are tried again")
{
    const Scene scene;
    constexpr Rect kRect = { 5, 5, 25, 25 };
    CallLog::gFailures["NewGWorld"] = cNoMemErr;
    {
        const CallLog log;
        scene.MaskedCopy(kRect, kRect, kRect);
        CHECK(log.Calls() == "NewGWorld NewGWorld CopyMask");
    }
    CallLog::gFailures.clear();
    CHECK(IsOf(scene, gCopyMasks.back()));
}

TEST_CASE("MyCopyMask: without a mask world alone, CopyMask does this work and all later work")
{
    const Scene scene;
    CHECK(InFreshProcess([&] {
              constexpr Rect kRect = { 5, 5, 25, 25 };
              gRefusedDepth = 8;
              const CallLog log;
              scene.MaskedCopy(kRect, kRect, kRect);
              gRefusedDepth = 0;
              scene.MaskedCopy(kRect, kRect, kRect);
              return log.Calls() == "NewGWorld NewGWorld CopyMask CopyMask" &&
                     IsOf(scene, gCopyMasks.front()) && IsOf(scene, gCopyMasks.back());
          }) == 1);
}

TEST_CASE("MyCopyMask: without a source world both are tried again, and then it is staged")
{
    const Scene scene;
    CHECK(InFreshProcess([&] {
              constexpr Rect kRect = { 5, 5, 25, 25 };
              gRefusedDepth = 32;
              const CallLog log;
              scene.MaskedCopy(kRect, kRect, kRect);
              gRefusedDepth = 0;
              const bool first = IsOf(scene, gCopyMasks.back());
              scene.MaskedCopy(kRect, kRect, kRect);
              return first && !IsOf(scene, gCopyMasks.back()) && gErased.size() == 2;
          }) == 1);
}

TEST_CASE(
    "MyCopyMask: rectangles at (0,0), and sources too wide or too high for the scratch worlds, go straight")
{
    const Scene scene;
    const World big(32, 700, 500);
    const CallLog log;
    constexpr Rect kOrigin = { 0, 0, 20, 20 }, kWide = { 5, 5, 15, 626 }, kHigh = { 5, 5, 426, 15 };
    scene.MaskedCopy(kOrigin, kOrigin, kOrigin);
    MyCopyMask(big.Bits(), big.Bits(), scene.destination.Bits(), &kWide, &kWide, &kOrigin);
    MyCopyMask(big.Bits(), big.Bits(), scene.destination.Bits(), &kHigh, &kHigh, &kOrigin);
    CHECK(log.Calls() == "CopyMask CopyMask CopyMask");
}

TEST_CASE("MyCopyMask: with gUseOSCopyMask all work is CopyMask's")
{
    const Scene scene;
    const StUseOSCopyMask use;
    const CallLog log;
    constexpr Rect kRect = { 5, 5, 25, 25 };
    scene.MaskedCopy(kRect, kRect, kRect);
    CHECK(log.Calls() == "CopyMask");
    CHECK(IsOf(scene, gCopyMasks.back()));
}

TEST_CASE("MyCopyMask: the scratch worlds are made once, 32 and 8 bits deep")
{
    const Scene scene;
    constexpr Rect kRect = { 5, 5, 25, 25 };
    {
        const CallLog log;
        scene.MaskedCopy(kRect, kRect, kRect);
        CHECK(log.Calls() ==
              "NewGWorld NewGWorld LockPixels LockPixels EraseRect CopyBits EraseRect CopyBits "
              "CopyMask UnlockPixels UnlockPixels");
    }
    const Rect largest = { 0, 0, 420, 620 };
    REQUIRE(gWorlds.size() == 2);
    CHECK(gWorlds[0].depth == 32);
    CHECK(gWorlds[1].depth == 8);
    for (const WorldRequest& world : gWorlds) {
        CHECK(Same(world.bounds, largest));
        CHECK(world.isPlain);
    }
    const CallLog log;
    scene.MaskedCopy(kRect, kRect, kRect);
    CHECK(log.Calls() == "LockPixels LockPixels EraseRect CopyBits EraseRect CopyBits CopyMask UnlockPixels "
                         "UnlockPixels");
}

TEST_CASE("MyCopyMask: the largest staged source is 620 wide and 420 high")
{
    const Scene scene;
    const World big(32, 700, 500);
    constexpr Rect kLargest = { 1, 1, 421, 621 }, kTo = { 0, 0, 100, 200 };
    const CallLog log;
    MyCopyMask(big.Bits(), big.Bits(), scene.destination.Bits(), &kLargest, &kLargest, &kTo);
    CHECK(log.Calls().find("EraseRect") != std::string::npos);
}

TEST_CASE("MyCopyMask: what the steps of a staged copy are given")
{
    const Scene scene;
    constexpr Rect kFrom = { 5, 7, 25, 36 }, kMask = { 6, 8, 26, 37 }, kTo = { 40, 50, 60, 79 };
    ForgetCalls();
    scene.MaskedCopy(kFrom, kMask, kTo);
    const Rect erased = { 0, 0, 20, 30 }, staged = { 0, 0, 20, 29 }, even = { 0, 0, 20, 30 };
    REQUIRE(gErased.size() == 2);
    CHECK(Same(gErased[0], erased));
    CHECK(Same(gErased[1], erased));
    REQUIRE(gCopies.size() == 2);
    const BitMap* sources[] = { scene.source.Bits(), scene.mask.Bits() };
    const Rect rects[] = { kFrom, kMask };
    for (size_t i = 0; i < 2; ++i) {
        CHECK(gCopies[i].from == sources[i]);
        CHECK(Same(gCopies[i].fromRect, rects[i]));
        CHECK(Same(gCopies[i].toRect, staged));
        CHECK(gCopies[i].mode == srcCopy);
        CHECK(gCopies[i].mask == nullptr);
    }
    REQUIRE(gCopyMasks.size() == 1);
    const CopyMaskCall& call = gCopyMasks[0];
    CHECK(call.source == gCopies[0].to);
    CHECK(call.mask == gCopies[1].to);
    CHECK(call.destination == scene.destination.Bits());
    CHECK(Same(call.sourceRect, even));
    CHECK(Same(call.maskRect, even));
    CHECK(Same(call.destinationRect, { 40, 50, 60, 80 }));
    CHECK(gLocked == gUnlocked);
}

TEST_CASE("MyCopyMask: a mask in a rectangle of another size is scaled to the source's")
{
    const Scene scene;
    constexpr Rect kFrom = { 30, 30, 50, 50 }, kMask = { 10, 10, 15, 15 }, kTo = { 60, 60, 80, 80 };
    scene.MaskedCopy(kFrom, kMask, kTo);
    CHECK(EqualRGB(scene.destination.At(60, 60), kRed));
    CHECK(EqualRGB(scene.destination.At(79, 79), kRed));
    CHECK(EqualRGB(scene.destination.At(80, 79), kBlue));
}

TEST_CASE("MyCopyMask: a source at (0,0) with a mask elsewhere is staged as well")
{
    const Scene scene;
    const CallLog log;
    scene.MaskedCopy({ 0, 0, 10, 10 }, { 10, 10, 20, 20 }, { 0, 0, 10, 10 });
    CHECK(log.Calls().find("EraseRect") != std::string::npos);
    CHECK(EqualRGB(scene.destination.At(5, 5), kRed));
}

TEST_CASE("MyCopyMask: a staged copy draws where the mask is black, in the caller's world and port")
{
    const Scene scene;
    const World current(32, 4, 4);
    SetGWorld(current, nullptr);
    CGrafPtr portBefore = nullptr, port = nullptr;
    GDHandle deviceBefore = nullptr, device = nullptr;
    GetGWorld(&portBefore, &deviceBefore);
    constexpr Rect kFrom = { 5, 5, 25, 25 }, kTo = { 40, 50, 60, 70 };
    scene.MaskedCopy(kFrom, kFrom, kTo);
    GetGWorld(&port, &device);
    CHECK(port == portBefore);
    CHECK(device == deviceBefore);
    CHECK(EqualRGB(scene.destination.At(55, 45), kRed));
    CHECK(EqualRGB(scene.destination.At(64, 54), kRed));
    CHECK(EqualRGB(scene.destination.At(54, 45), kBlue));
    CHECK(EqualRGB(scene.destination.At(65, 55), kBlue));
    SetGWorld(nullptr, nullptr);
}

TEST_CASE("MyCopyMask: an odd width is made even by a white column that masks itself out")
{
    const Scene scene;
    constexpr Rect kFrom = { 10, 10, 20, 19 }, kTo = { 30, 30, 40, 39 }, kBlack10 = { 10, 10, 20, 20 };
    scene.MaskedCopy(kBlack10, kBlack10, kTo); // leaves black in the column
    constexpr Rect kAll = { 0, 0, 100, 200 };
    scene.destination.Paint(kAll, kBlue);
    scene.MaskedCopy(kFrom, kFrom, kTo);
    const CopyMaskCall& call = gCopyMasks.back();
    const Rect even = { 0, 0, 10, 10 };
    CHECK(EqualRect(&call.sourceRect, &even));
    CHECK(EqualRect(&call.maskRect, &even));
    CHECK(call.destinationRect.right == 40);
    CHECK(EqualRGB(scene.destination.At(38, 35), kRed));
    CHECK(EqualRGB(scene.destination.At(39, 35), kBlue));
}

TEST_CASE("MyCopyMask: staged and straight copies give the same pixels")
{
    const Scene straight, staged;
    constexpr Rect kFrom = { 5, 5, 25, 25 }, kTo = { 41, 51, 61, 71 };
    {
        const StUseOSCopyMask use;
        straight.MaskedCopy(kFrom, kFrom, kTo);
    }
    staged.MaskedCopy(kFrom, kFrom, kTo);
    for (short v = 38; v < 64; ++v)
        for (short h = 48; h < 74; ++h)
            REQUIRE(EqualRGB(straight.destination.At(h, v), staged.destination.At(h, v)));
}

TEST_CASE("CopyPixels: locks what is unlocked, source first, and leaves what the caller had locked")
{
    const World source(32, 10, 10), destination(32, 10, 10);
    constexpr Rect kAll = { 0, 0, 10, 10 };
    ForgetCalls();
    {
        const CallLog log;
        CopyPixels(source, destination, &kAll, &kAll, srcCopy, nullptr);
        CHECK(log.Calls() == "LockPixels LockPixels CopyBits UnlockPixels UnlockPixels");
    }
    const std::vector<PixMapHandle> expected = { source.Map(), destination.Map() };
    CHECK(gLocked == expected);
    CHECK(gUnlocked == expected);
    CHECK(gCopies.back().from == source.Bits());
    CHECK(gCopies.back().to == destination.Bits());
    CHECK(!source.IsLocked());
    LockPixels(source.Map());
    const CallLog log;
    CopyPixels(source, destination, &kAll, &kAll, srcCopy, nullptr);
    CHECK(log.Calls() == "LockPixels CopyBits UnlockPixels");
    CHECK(source.IsLocked());
    CHECK(!destination.IsLocked());
}

TEST_CASE("CopyPixels: a world of depth 1 counts as a bit map and is not locked")
{
    const World source(1, 10, 10), destination(32, 10, 10);
    constexpr Rect kAll = { 0, 0, 10, 10 };
    const CallLog log;
    ForgetCalls();
    CopyPixels(source, destination, &kAll, &kAll, srcCopy, nullptr);
    CHECK(log.Calls() == "LockPixels CopyBits UnlockPixels");
    CHECK(gLocked == std::vector<PixMapHandle>{ destination.Map() });
}

TEST_CASE("CopyPixels: mode and mask region are CopyBits' own")
{
    const World source(32, 10, 10), destination(32, 10, 10);
    constexpr Rect kAll = { 0, 0, 10, 10 };
    source.Paint(kAll, kRed);
    destination.Paint(kAll, kBlue);
    const RgnHandle region = NewRgn();
    SetRectRgn(region, 2, 2, 5, 5);
    CopyPixels(source, destination, &kAll, &kAll, notSrcCopy, region);
    CHECK(gCopies.back().mask == region);
    CHECK(gCopies.back().mode == notSrcCopy);
    CHECK(EqualRGB(destination.At(3, 3), { 0, 0xFFFF, 0xFFFF }));
    CopyPixels(source, destination, &kAll, &kAll, srcCopy, region);
    DisposeRgn(region);
    CHECK(EqualRGB(destination.At(3, 3), kRed));
    CHECK(EqualRGB(destination.At(6, 6), kBlue));
}

TEST_CASE("CopyPixelsMask: locks all three, of depth 1 too, and leaves what the caller had locked")
{
    const World source(32, 10, 10), mask(1, 10, 10), destination(32, 10, 10);
    source.Paint({ 0, 0, 10, 10 }, kRed);
    destination.Paint({ 0, 0, 10, 10 }, kBlue);
    mask.Erase();
    mask.Paint({ 0, 0, 10, 5 }, kBlack);
    constexpr Rect kAll = { 0, 0, 10, 10 };
    LockPixels(mask.Map());
    const CallLog log;
    CopyPixelsMask(source, mask, destination, &kAll, &kAll, &kAll);
    CHECK(log.Calls() == "LockPixels LockPixels CopyMask UnlockPixels UnlockPixels");
    CHECK(mask.IsLocked());
    CHECK(EqualRGB(destination.At(2, 2), kRed));
    CHECK(EqualRGB(destination.At(7, 2), kBlue));
}

TEST_CASE("CopyPixelsMask: locks source, mask and destination, and copies by MyCopyMask")
{
    const Scene scene;
    constexpr Rect kFrom = { 10, 10, 20, 20 }, kTo = { 50, 60, 60, 70 };
    const CallLog log;
    CopyPixelsMask(scene.source, scene.mask, scene.destination, &kFrom, &kFrom, &kTo);
    CHECK(log.Calls() ==
          "LockPixels LockPixels LockPixels LockPixels LockPixels EraseRect CopyBits EraseRect "
          "CopyBits CopyMask UnlockPixels UnlockPixels UnlockPixels UnlockPixels UnlockPixels");
    const std::vector<PixMapHandle> maps = { scene.source.Map(), scene.mask.Map(), scene.destination.Map() };
    CHECK(std::equal(maps.begin(), maps.end(), gLocked.begin()));
    CHECK(std::equal(maps.rbegin(), maps.rend(), gUnlocked.rbegin()));
    CHECK(EqualRGB(scene.destination.At(65, 55), kRed));
}

TEST_CASE("CopyPixelsToWindow, CopyPixelsMaskToWindow: draw into the window's port and flush it")
{
    const Rect bounds = { 100, 100, 200, 300 };
    WindowRef window = nullptr;
    REQUIRE(CreateNewWindow(kDocumentWindowClass, kWindowStandardDocumentAttributes, &bounds, &window) ==
            noErr);
    ShowWindow(window);
    const World source(32, 10, 10), mask(32, 10, 10);
    constexpr Rect kAll = { 0, 0, 10, 10 };
    source.Paint(kAll, kRed);
    mask.Paint(kAll, kBlack);
    {
        const CallLog log;
        CopyPixelsToWindow(source, window, &kAll, &kAll, srcCopy, nullptr);
        CHECK(log.Calls() == "LockPixels LockPixels CopyBits UnlockPixels UnlockPixels QDFlushPortBuffer");
    }
    CHECK(!QDIsPortBufferDirty(GetWindowPort(window)));
    CHECK(gCopies.back().to == GetPortBitMapForCopyBits(GetWindowPort(window)));
    CHECK(gFlushes.back().port == GetWindowPort(window));
    CHECK(gFlushes.back().region == nullptr);
    const CallLog log;
    CopyPixelsMaskToWindow(source, mask, window, &kAll, &kAll, &kAll);
    CHECK(
        log.Calls() ==
        "LockPixels LockPixels LockPixels CopyMask UnlockPixels UnlockPixels UnlockPixels QDFlushPortBuffer");
    ReleaseWindow(window);
}

TEST_CASE("FlushWindowDirtyRegion: null does nothing; FlushPortDirtyRegion flushes the port")
{
    const World world(32, 10, 10);
    const CallLog log;
    FlushWindowDirtyRegion(nullptr);
    CHECK(log.Calls().empty());
    FlushPortDirtyRegion(world);
    CHECK(log.Calls() == "QDFlushPortBuffer");
    CHECK(gFlushes.back().port == world);
    CHECK(gFlushes.back().region == nullptr);
}

TEST_CASE("DrawingOff: nothing drawn shows; the clip of the first call is back after DrawingOn")
{
    const World world(32, 20, 20);
    world.Paint({ 0, 0, 20, 20 }, kBlue);
    const StGWorldSaver saver(world, nullptr);
    constexpr Rect kClip = { 2, 2, 18, 18 }, kAll = { 0, 0, 20, 20 };
    ClipRect(&kClip);
    DrawingOff();
    CHECK(Same(ClipBounds(), { 0, 0, 0, 0 }));
    DrawingOff();
    PaintRect(&kAll);
    CHECK(EqualRGB(world.At(10, 10), kBlue));
    DrawingOn();
    CHECK(Same(ClipBounds(), kClip));
    PaintRect(&kAll);
    CHECK(EqualRGB(world.At(10, 10), kBlack));
}

TEST_CASE("DrawingOff, DrawingOn: every pair makes a region and disposes of it")
{
    const World world(32, 20, 20);
    const StGWorldSaver saver(world, nullptr);
    constexpr Rect kClip = { 2, 2, 18, 18 };
    ClipRect(&kClip);
    const CallLog log;
    for (int i = 0; i < 2; ++i) {
        DrawingOff();
        DrawingOn();
    }
    CHECK(log.Calls() == "NewRgn DisposeRgn NewRgn DisposeRgn");
    CHECK(Same(ClipBounds(), kClip));
}

TEST_CASE("DrawingOff: without a region for the clip, drawing stays on")
{
    const World world(32, 20, 20);
    const StGWorldSaver saver(world, nullptr);
    constexpr Rect kClip = { 2, 2, 18, 18 };
    ClipRect(&kClip);
    CallLog::gFailures["NewRgn"] = memFullErr;
    DrawingOff();
    CallLog::gFailures.clear();
    CHECK(Same(ClipBounds(), kClip));
    DrawingOn();
    CHECK(Same(ClipBounds(), kClip));
}

TEST_CASE("DrawingOn: alone it does nothing")
{
    const World world(32, 20, 20);
    const StGWorldSaver saver(world, nullptr);
    constexpr Rect kClip = { 2, 2, 18, 18 };
    ClipRect(&kClip);
    DrawingOn();
    CHECK(Same(ClipBounds(), kClip));
}

TEST_CASE("CopyPixels, MyCopyMask: null and disposed ports, maps and rectangles do nothing")
{
    const Scene scene;
    constexpr Rect kRect = { 5, 5, 25, 25 };
    {
        const CallLog log;
        CopyPixels(nullptr, scene.destination, &kRect, &kRect, srcCopy, nullptr);
        CHECK(log.Calls() == "LockPixels CopyBits UnlockPixels"); // what has no pixel map is not locked
    }
    CopyPixels(scene.source, nullptr, &kRect, &kRect, srcCopy, nullptr);
    CopyPixels(scene.source, scene.destination, nullptr, &kRect, srcCopy, nullptr);
    CopyPixelsMask(scene.source, nullptr, scene.destination, &kRect, &kRect, &kRect);
    CopyPixelsToWindow(scene.source, nullptr, &kRect, &kRect, srcCopy, nullptr);
    MyCopyMask(scene.source.Bits(), nullptr, scene.destination.Bits(), &kRect, &kRect, &kRect);
    MyCopyMask(scene.source.Bits(), scene.mask.Bits(), scene.destination.Bits(), &kRect, nullptr, &kRect);
    CHECK(EqualRGB(scene.destination.At(10, 10), kBlue));
}
