// Plain and masked copies: which platform calls are made, in which order, and what the pixels become.
#include <doctest/doctest.h>
#include <lampblack/host.h>
#include <lampblack/lampblack.h>

#include <string>
#include <vector>

#include "CallLog.h"

LAMPBLACK_WATCH(Boolean, LockPixels, (PixMapHandle pm), (pm))
LAMPBLACK_WATCH(void, UnlockPixels, (PixMapHandle pm), (pm))
LAMPBLACK_WATCH(void, CopyBits,
                (const BitMap* from, const BitMap* to, const Rect* fromRect, const Rect* toRect, short mode,
                 RgnHandle mask),
                (from, to, fromRect, toRect, mode, mask))
LAMPBLACK_WATCH(OSErr, NewGWorld,
                (GWorldPtr * world, short depth, const Rect* bounds, CTabHandle table, GDHandle device,
                 GWorldFlags flags),
                (world, depth, bounds, table, device, flags))
LAMPBLACK_WATCH(void, EraseRect, (const Rect* r), (r))
LAMPBLACK_WATCH(void, QDFlushPortBuffer, (CGrafPtr port, RgnHandle region), (port, region))
LAMPBLACK_WATCH(OSErr, Gestalt, (OSType selector, SInt32* response), (selector, response))

namespace {

struct CopyMaskCall {
    const BitMap *source, *mask;
    Rect sourceRect, maskRect, destinationRect;
};
std::vector<CopyMaskCall> gCopyMasks;

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

constexpr RGBColor kRed = { 0xFFFF, 0, 0 }, kBlue = { 0, 0, 0xFFFF }, kBlack = { 0, 0, 0 },
                   kWhite = { 0xFFFF, 0xFFFF, 0xFFFF };

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
        gCopyMasks.clear();
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
    return inCall.source == inScene.source.Bits() && inCall.mask == inScene.mask.Bits();
}

} // namespace

LAMPBLACK_INTERPOSE void CopyMask(const BitMap* source, const BitMap* mask, const BitMap* destination,
                                  const Rect* sourceRect, const Rect* maskRect, const Rect* destinationRect)
{
    const CallLog::StCall call("CopyMask");
    gCopyMasks.push_back({ source, mask, *sourceRect, *maskRect, *destinationRect });
    Next<decltype(CopyMask)>("CopyMask")(source, mask, destination, sourceRect, maskRect, destinationRect);
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
    constexpr Rect kFrom = { 5, 5, 25, 25 }, kTo = { 40, 50, 60, 70 };
    scene.MaskedCopy(kFrom, kFrom, kTo);
    CGrafPtr port = nullptr;
    GetPort(&port);
    CHECK(port == current);
    CHECK(EqualRGB(scene.destination.At(55, 45), kRed));
    CHECK(EqualRGB(scene.destination.At(64, 54), kRed));
    CHECK(EqualRGB(scene.destination.At(54, 45), kBlue));
    CHECK(EqualRGB(scene.destination.At(65, 55), kBlue));
    SetGWorld(nullptr, nullptr);
}

TEST_CASE("MyCopyMask: an odd width is made even by a white column that masks itself out")
{
    const Scene scene;
    constexpr Rect kFrom = { 10, 10, 20, 19 }, kTo = { 30, 30, 40, 39 };
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
    {
        const CallLog log;
        CopyPixels(source, destination, &kAll, &kAll, srcCopy, nullptr);
        CHECK(log.Calls() == "LockPixels LockPixels CopyBits UnlockPixels UnlockPixels");
    }
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
    CopyPixels(source, destination, &kAll, &kAll, srcCopy, nullptr);
    CHECK(log.Calls() == "LockPixels CopyBits UnlockPixels");
}

TEST_CASE("CopyPixels: mode and mask region are CopyBits' own")
{
    const World source(32, 10, 10), destination(32, 10, 10);
    constexpr Rect kAll = { 0, 0, 10, 10 };
    source.Paint(kAll, kRed);
    destination.Paint(kAll, kBlue);
    const RgnHandle region = NewRgn();
    SetRectRgn(region, 2, 2, 5, 5);
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
    const CallLog log;
    CopyPixelsMaskToWindow(source, mask, window, &kAll, &kAll, &kAll);
    CHECK(
        log.Calls() ==
        "LockPixels LockPixels LockPixels CopyMask UnlockPixels UnlockPixels UnlockPixels QDFlushPortBuffer");
    ReleaseWindow(window);
}

TEST_CASE("FlushWindowDirtyRegion: null does nothing; FlushPortDirtyRegion flushes the port")
{
    const CallLog log;
    FlushWindowDirtyRegion(nullptr);
    CHECK(log.Calls().empty());
    FlushPortDirtyRegion(nullptr);
    CHECK(log.Calls() == "QDFlushPortBuffer");
}

TEST_CASE("DrawingOff: nothing drawn shows; the clip of the first call is back after DrawingOn")
{
    const World world(32, 20, 20);
    world.Paint({ 0, 0, 20, 20 }, kBlue);
    const StGWorldSaver saver(world, nullptr);
    constexpr Rect kClip = { 2, 2, 18, 18 }, kAll = { 0, 0, 20, 20 };
    ClipRect(&kClip);
    DrawingOff();
    DrawingOff();
    PaintRect(&kAll);
    CHECK(EqualRGB(world.At(10, 10), kBlue));
    DrawingOn();
    const RgnHandle clip = NewRgn();
    GetClip(clip);
    Rect bounds;
    CHECK(EqualRect(GetRegionBounds(clip, &bounds), &kClip));
    DisposeRgn(clip);
    PaintRect(&kAll);
    CHECK(EqualRGB(world.At(10, 10), kBlack));
}

TEST_CASE("DrawingOn: alone it does nothing")
{
    const World world(32, 20, 20);
    const StGWorldSaver saver(world, nullptr);
    constexpr Rect kClip = { 2, 2, 18, 18 };
    ClipRect(&kClip);
    DrawingOn();
    const RgnHandle clip = NewRgn();
    GetClip(clip);
    Rect bounds;
    CHECK(EqualRect(GetRegionBounds(clip, &bounds), &kClip));
    DisposeRgn(clip);
}

TEST_CASE("CopyPixels, MyCopyMask: null and disposed ports, maps and rectangles do nothing")
{
    const Scene scene;
    constexpr Rect kRect = { 5, 5, 25, 25 };
    CopyPixels(nullptr, scene.destination, &kRect, &kRect, srcCopy, nullptr);
    CopyPixels(scene.source, nullptr, &kRect, &kRect, srcCopy, nullptr);
    CopyPixels(scene.source, scene.destination, nullptr, &kRect, srcCopy, nullptr);
    CopyPixelsMask(scene.source, nullptr, scene.destination, &kRect, &kRect, &kRect);
    CopyPixelsToWindow(scene.source, nullptr, &kRect, &kRect, srcCopy, nullptr);
    MyCopyMask(scene.source.Bits(), nullptr, scene.destination.Bits(), &kRect, &kRect, &kRect);
    MyCopyMask(scene.source.Bits(), scene.mask.Bits(), scene.destination.Bits(), &kRect, nullptr, &kRect);
    CHECK(EqualRGB(scene.destination.At(10, 10), kBlue));
}
