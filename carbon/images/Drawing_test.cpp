// Where and how images are drawn: bounds, parts, clips, modes, ports of other depths.
#include "TestImages.h"

#include <Carbon/QDOffscreen.h>

using namespace lampblack;
using namespace lampblack::images;

namespace {

constexpr uint32_t kWhite = 0x00FFFFFF;

RGBColor PixelOfWorld(GWorldPtr inWorld, short h, short v)
{
    RGBColor color = {};
    CGrafPtr port = nullptr;
    GDHandle device = nullptr;
    GetGWorld(&port, &device);
    SetGWorld(inWorld, nullptr);
    GetCPixel(h, v, &color);
    SetGWorld(port, device);
    return color;
}

uint32_t WordOf(const RGBColor& inColor)
{
    return (uint32_t)(inColor.red >> 8) << 16 | (uint32_t)(inColor.green >> 8) << 8 | inColor.blue >> 8;
}

struct TestWorld {
    explicit TestWorld(short inDepth, int inWidth = kWidth, int inHeight = kHeight)
    {
        const Rect bounds = MakeRect(0, 0, inWidth, inHeight);
        REQUIRE(NewGWorld(&world, inDepth, &bounds, nullptr, nullptr, 0) == noErr);
        CGrafPtr port = nullptr;
        GDHandle device = nullptr;
        GetGWorld(&port, &device);
        SetGWorld(world, nullptr);
        EraseRect(&bounds);
        SetGWorld(port, device);
    }
    ~TestWorld() { DisposeGWorld(world); }
    TestWorld(const TestWorld&) = delete;
    uint32_t At(int h, int v) const { return WordOf(PixelOfWorld(world, (short)h, (short)v)); }

    GWorldPtr world = nullptr;
};

} // namespace

TEST_CASE("GraphicsImportSetGWorld: the image comes into that world, and the current port stays current")
{
    const TestPort port;
    const TestWorld world(32);
    const TestImporter importer("plain.png");
    CHECK(GraphicsImportSetGWorld(importer, world.world, nullptr) == noErr);
    CHECK(GraphicsImportDraw(importer) == noErr);
    CHECK(world.At(0, 0) == ColorAt(0, 0));
    CHECK(world.At(15, 11) == ColorAt(15, 11));
    CHECK(port.At(0, 0) == kWhite);
    CHECK(GetQDGlobalsThePort() == port.port);
    CGrafPtr set = nullptr;
    CHECK(GraphicsImportGetGWorld(importer, &set, nullptr) == noErr);
    CHECK(set == world.world);
}

TEST_CASE(
    "GraphicsImportSetGWorld: what is no port is paramErr; one that was disposed since is paramErr to draw")
{
    const TestPort port;
    const TestImporter importer("plain.png");
    int foreign = 0;
    CHECK(GraphicsImportSetGWorld(importer, reinterpret_cast<CGrafPtr>(&foreign), nullptr) == paramErr);
    {
        const TestWorld world(32);
        CHECK(GraphicsImportSetGWorld(importer, world.world, nullptr) == noErr);
    }
    CHECK(GraphicsImportDraw(importer) == paramErr);
    SetPort(nullptr);
    CHECK(GraphicsImportSetGWorld(importer, nullptr, nullptr) == noErr);
    CHECK(GraphicsImportDraw(importer) == paramErr);
}

TEST_CASE("GraphicsImportSetBoundsRect: the image comes to the rectangle's place")
{
    const TestPort port;
    const TestImporter importer("plain.jpg");
    const TestPort alone;
    CHECK(GraphicsImportDraw(importer) == noErr);
    SetPort(port.port);
    const Rect bounds = MakeRect(5, 7, 5 + kWidth, 7 + kHeight);
    CHECK(GraphicsImportSetBoundsRect(importer, &bounds) == noErr);
    CHECK(GraphicsImportDraw(importer) == noErr);
    CHECK(quickdraw::Differences(port, [&](int h, int v) {
              return quickdraw::IsInside(bounds, h, v) ? alone.At(h - 5, v - 7) : kWhite;
          }) == 0);
    Rect set = {};
    CHECK(GraphicsImportGetBoundsRect(importer, &set) == noErr);
    CHECK(EqualRect(&set, &bounds));
    const Rect empty = {};
    CHECK(GraphicsImportSetBoundsRect(importer, &empty) == paramErr);
    CHECK(GraphicsImportSetBoundsRect(importer, nullptr) == paramErr);
}

TEST_CASE("GraphicsImportDraw: a larger rectangle repeats pixels")
{
    const TestPort port;
    const TestImporter importer("plain.png");
    const Rect bounds = MakeRect(0, 0, 2 * kWidth, 2 * kHeight);
    CHECK(GraphicsImportSetBoundsRect(importer, &bounds) == noErr);
    CHECK(GraphicsImportDraw(importer) == noErr);
    CHECK(quickdraw::Differences(port, [&](int h, int v) {
              return quickdraw::IsInside(bounds, h, v) ? ColorAt(h / 2, v / 2) : kWhite;
          }) == 0);
}

TEST_CASE("GraphicsImportDraw: a smaller rectangle averages pixels")
{
    const TestPort port;
    const TestImporter importer("plain.png");
    const Rect bounds = MakeRect(0, 0, kWidth / 2, kHeight / 2);
    CHECK(GraphicsImportSetBoundsRect(importer, &bounds) == noErr);
    CHECK(GraphicsImportDraw(importer) == noErr);
    // Channels grow evenly, so that the mean of four is half a step on: 16x + 8, 20y + 10, 8x + 4y + 6.
    CHECK(quickdraw::Differences(port, [&](int h, int v) {
              return quickdraw::IsInside(bounds, h, v) ? ColorAt(2 * h, 2 * v) + 0x080A06 : kWhite;
          }) == 0);
}

TEST_CASE("GraphicsImportSetSourceRect: the part comes to where it would be with all the rest")
{
    const TestPort port;
    const TestImporter importer("plain.png");
    const Rect part = MakeRect(3, 2, 10, 9);
    CHECK(GraphicsImportSetSourceRect(importer, &part) == noErr);
    CHECK(GraphicsImportDraw(importer) == noErr);
    CHECK(quickdraw::Differences(port, [&](int h, int v) {
              return quickdraw::IsInside(part, h, v) ? ColorAt(h, v) : kWhite;
          }) == 0);
    const Rect outside = MakeRect(3, 2, kWidth + 1, 9);
    CHECK(GraphicsImportSetSourceRect(importer, &outside) == invalidRect);
    CHECK(GraphicsImportSetSourceRect(importer, nullptr) == noErr);
    Rect set = {};
    CHECK(GraphicsImportGetSourceRect(importer, &set) == noErr);
    const Rect all = MakeRect(0, 0, kWidth, kHeight);
    CHECK(EqualRect(&set, &all));
}

TEST_CASE("GraphicsImportSetClip: nothing is drawn outside; the port's own clip holds, too, and stays")
{
    const TestPort port;
    const TestImporter importer("plain.png");
    const Rect portClip = MakeRect(0, 0, 9, 40), ownClip = MakeRect(4, 4, 30, 30);
    ClipRect(&portClip);
    const RgnHandle clip = NewRgn();
    RectRgn(clip, &ownClip);
    CHECK(GraphicsImportSetClip(importer, clip) == noErr);
    SetEmptyRgn(clip); // the importer has a copy
    CHECK(GraphicsImportDraw(importer) == noErr);
    CHECK(quickdraw::Differences(port, [&](int h, int v) {
              return h >= 4 && h < 9 && v >= 4 && v < kHeight ? ColorAt(h, v) : kWhite;
          }) == 0);
    GetClip(clip);
    Rect after = {};
    CHECK(EqualRect(GetRegionBounds(clip, &after), &portClip));
    RgnHandle copy = nullptr;
    CHECK(GraphicsImportGetClip(importer, &copy) == noErr);
    CHECK(EqualRect(GetRegionBounds(copy, &after), &ownClip));
    DisposeRgn(copy);
    CHECK(GraphicsImportSetClip(importer, nullptr) == noErr);
    CHECK(GraphicsImportGetClip(importer, &copy) == noErr);
    CHECK(copy == nullptr);
    DisposeRgn(clip);
    CHECK(GraphicsImportSetClip(importer, clip) == paramErr); // disposed
}

TEST_CASE("GraphicsImportDraw: partly outside the port, at its left and top as well")
{
    const TestPort port(20, 14);
    const TestImporter importer("plain.png");
    const Rect bounds = MakeRect(-6, -5, kWidth - 6, kHeight - 5);
    CHECK(GraphicsImportSetBoundsRect(importer, &bounds) == noErr);
    CHECK(GraphicsImportDraw(importer) == noErr);
    CHECK(quickdraw::Differences(port, [&](int h, int v) {
              return quickdraw::IsInside(bounds, h, v) ? ColorAt(h + 6, v + 5) : kWhite;
          }) == 0);
}

TEST_CASE("GraphicsImportDraw: the port's colours do not matter, and are the same afterwards")
{
    const TestPort port;
    const TestImporter importer("plain.png");
    const RGBColor red = { 0xFFFF, 0, 0 }, green = { 0, 0xFFFF, 0 };
    RGBForeColor(&red);
    RGBBackColor(&green);
    const Rect bounds = MakeRect(0, 0, 2 * kWidth, 2 * kHeight); // through CopyBits
    CHECK(GraphicsImportSetBoundsRect(importer, &bounds) == noErr);
    CHECK(GraphicsImportDraw(importer) == noErr);
    CHECK(port.At(31, 23) == ColorAt(15, 11));
    RGBColor fore = {}, back = {};
    GetForeColor(&fore);
    GetBackColor(&back);
    CHECK(fore.red == 0xFFFF);
    CHECK(fore.green == 0);
    CHECK(back.green == 0xFFFF);
    CHECK(back.red == 0);
}

TEST_CASE("GraphicsImportSetGraphicsMode: alpha is the default where there is some, and ditherCopy where not")
{
    const TestPort port;
    SInt32 mode = 0;
    {
        const TestImporter importer("plain.jpg");
        CHECK(GraphicsImportGetGraphicsMode(importer, &mode, nullptr) == noErr);
        CHECK(mode == ditherCopy);
    }
    const TestImporter importer("alpha.png");
    CHECK(GraphicsImportGetGraphicsMode(importer, &mode, nullptr) == noErr);
    CHECK(mode == graphicsModeStraightAlpha);
    CHECK(GraphicsImportSetGraphicsMode(importer, srcCopy, nullptr) == noErr);
    CHECK(GraphicsImportDraw(importer) == noErr);
    CHECK(DistanceFrom(port) == 0); // alpha is not looked at
    CHECK(GraphicsImportSetGraphicsMode(importer, 1000, nullptr) == paramErr);
}

TEST_CASE("GraphicsImportSetGraphicsMode: transparent leaves out the colour given")
{
    const TestPort port;
    const TestImporter importer("plain.png");
    const RGBColor leftOut = { 0x1010, 0x1414, 0x0C0C }; // of (1, 1)
    CHECK(GraphicsImportSetGraphicsMode(importer, transparent, &leftOut) == noErr);
    CHECK(GraphicsImportDraw(importer) == noErr);
    CHECK(quickdraw::Differences(port, [&](int h, int v) {
              return h < kWidth && v < kHeight && (h != 1 || v != 1) ? ColorAt(h, v) : kWhite;
          }) == 0);
}

TEST_CASE("GraphicsImportDraw: worlds of sixteen and eight bits")
{
    const TestPort port;
    const TestImporter importer("plain.png");
    for (const short depth : { 16, 8 }) {
        const TestWorld world(depth);
        CHECK(GraphicsImportSetGWorld(importer, world.world, nullptr) == noErr);
        CHECK(GraphicsImportDraw(importer) == noErr);
        int distance = 0;
        for (int y = 0; y < kHeight; ++y)
            for (int x = 0; x < kWidth; ++x)
                distance = std::max(distance, Distance(world.At(x, y), ColorAt(x, y)));
        CAPTURE(depth);
        CHECK(distance <= (depth == 16 ? 16 : 64));
    }
}

TEST_CASE("GraphicsImportDraw: alpha in worlds of every depth keeps what is there")
{
    const TestPort port;
    const TestImporter importer("offset.gif");
    for (const short depth : { 32, 16, 8, 4, 2, 1 }) {
        const TestWorld world(depth);
        CHECK(GraphicsImportSetGWorld(importer, world.world, nullptr) == noErr);
        CHECK(GraphicsImportDraw(importer) == noErr);
        int changedOutside = 0, changedInside = 0;
        for (int y = 0; y < kHeight; ++y)
            for (int x = 0; x < kWidth; ++x)
                (x >= 4 && x < 12 && y >= 3 && y < 9 ? changedInside : changedOutside) +=
                    world.At(x, y) != kWhite;
        CAPTURE(depth);
        CHECK(changedOutside == 0);
        CHECK(changedInside > 20);
        CHECK(world.At(4, 3) == kWhite);
    }
}

TEST_CASE("GraphicsImportDraw: through a region that is no rectangle")
{
    const TestPort port;
    const TestImporter importer("plain.jpg");
    const TestPort whole;
    CHECK(GraphicsImportDraw(importer) == noErr);
    SetPort(port.port);
    const RgnHandle clip = NewRgn();
    const Rect oval = MakeRect(0, 0, kWidth, kHeight);
    OpenRgn();
    FrameOval(&oval);
    CloseRgn(clip);
    SetClip(clip);
    CHECK(GraphicsImportDraw(importer) == noErr);
    CHECK(quickdraw::Differences(port, [&](int h, int v) {
              const Point at = { (short)v, (short)h };
              return PtInRgn(at, clip) ? whole.At(h, v) : kWhite;
          }) == 0);
    DisposeRgn(clip);
}

TEST_CASE("GraphicsImportSetQuality: kept; above lossless is paramErr; low quality still is the image")
{
    const TestPort port;
    const TestImporter importer("plain.jpg");
    CodecQ quality = 0;
    CHECK(GraphicsImportGetQuality(importer, &quality) == noErr);
    CHECK(quality == codecNormalQuality);
    CHECK(GraphicsImportSetQuality(importer, codecLosslessQuality + 1) == paramErr);
    CHECK(GraphicsImportSetQuality(importer, codecMinQuality) == noErr);
    CHECK(GraphicsImportDraw(importer) == noErr);
    CHECK(DistanceFrom(port) <= 12);
}
