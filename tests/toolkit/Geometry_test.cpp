// Rectangle, colour and clip arithmetic.
#include <doctest/doctest.h>
#include <lampblack/lampblack.h>

#include <cmath>
#include <initializer_list>
#include <limits>

#include "Interpose.h"

namespace {

HSLColor gConverted; // the colour that came back from HSL last
short gPenMode = -1;

bool Same(const Rect& a, const Rect& b)
{
    return EqualRect(&a, &b);
}

Rect Centered(Rect inRect, Rect inContainer, CenterFlags inFlags)
{
    return CenterRectInRect(&inRect, &inContainer, inFlags);
}

// A world that is current for the test.
struct World {
    World() : fSaver(Make(), nullptr) {}
    ~World()
    {
        fSaver.Restore();
        DisposeGWorld(fWorld);
    }
    GWorldPtr Make()
    {
        constexpr Rect kBounds = { 0, 0, 20, 20 };
        REQUIRE(NewGWorld(&fWorld, 32, &kBounds, nullptr, nullptr, 0) == noErr);
        return fWorld;
    }
    GWorldPtr fWorld = nullptr;
    StGWorldSaver fSaver;
};

} // namespace

LAMPBLACK_INTERPOSE void HSL2RGB(const HSLColor* from, RGBColor* to)
{
    gConverted = *from;
    Next<decltype(HSL2RGB)>("HSL2RGB")(from, to);
}

LAMPBLACK_INTERPOSE void PenMode(short mode)
{
    gPenMode = mode;
    Next<decltype(PenMode)>("PenMode")(mode);
}

TEST_CASE(
    "GlobalRectToLocalRect, LocalRectToGlobalRect: both corners, in the current port; null does nothing")
{
    const Rect bounds = { 100, 150, 200, 350 };
    WindowRef window = nullptr;
    REQUIRE(CreateNewWindow(kDocumentWindowClass, kWindowStandardDocumentAttributes, &bounds, &window) ==
            noErr);
    const StPortSaver saver(window);
    SetOrigin(7, 9); // h before v
    Rect rect = { 110, 170, 130, 200 };
    GlobalRectToLocalRect(&rect);
    CHECK(Same(rect, { 19, 27, 39, 57 }));
    LocalRectToGlobalRect(&rect);
    CHECK(Same(rect, { 110, 170, 130, 200 }));
    GlobalRectToLocalRect(nullptr);
    LocalRectToGlobalRect(nullptr);
    ReleaseWindow(window);
}

TEST_CASE("GetRectangleCenterPoint: halves go toward minus infinity; null is (0,0)")
{
    const Rect odd = { 1, 2, 4, 9 }, inverted = { 0, 0, -3, -5 };
    CHECK(EqualPt(GetRectangleCenterPoint(&odd), { 2, 5 }));
    CHECK(EqualPt(GetRectangleCenterPoint(&inverted), { -2, -3 }));
    CHECK(EqualPt(GetRectangleCenterPoint(nullptr), { 0, 0 }));
}

TEST_CASE("MoveRect: keeps the size; null is paramErr")
{
    Rect rect = { 1, 2, 11, 22 };
    CHECK(MoveRect(&rect, 100, -50) == noErr);
    CHECK(Same(rect, { -50, 100, -40, 120 }));
    CHECK(MoveRect(nullptr, 0, 0) == paramErr);
}

TEST_CASE("myround: halves go down, and negative fractions above -0.5 too")
{
    CHECK(myround(2.5f) == 2);
    CHECK(myround(2.51f) == 3);
    CHECK(myround(2.0f) == 2);
    CHECK(myround(-2.2f) == -3);
    CHECK(myround(-2.5f) == -3);
    CHECK(myround(-2.0f) == -2);
    CHECK(myround(0.0f) == 0);
}

TEST_CASE("myround: what no integer holds goes to the nearest one that can, and no number to 0")
{
    CHECK(myround(1e30f) == std::numeric_limits<SInt32>::max());
    CHECK(myround(-1e30f) == std::numeric_limits<SInt32>::min());
    CHECK(myround(std::nanf("")) == 0);
    CHECK(myround(std::numeric_limits<float>::infinity()) == std::numeric_limits<SInt32>::max());
}

TEST_CASE("ScaleRect: a factor of 0 empties, a negative one turns over")
{
    Rect rect = { 10, 20, 15, 27 };
    ScaleRect(&rect, -1.0f);
    CHECK(Same(rect, { 10, 20, 5, 13 }));
    ScaleRect(&rect, 0.0f);
    CHECK(Same(rect, { 10, 20, 10, 20 }));
}

TEST_CASE("ScaleRect: keeps the top left, rounds sizes; coordinates stay in range")
{
    Rect rect = { 10, 20, 15, 27 };
    ScaleRect(&rect, 0.5f);
    CHECK(Same(rect, { 10, 20, 12, 23 })); // 2.5 is 2, 3.5 is 3
    Rect huge = { 0, 0, 30000, 30000 };
    ScaleRect(&huge, 10.0f);
    CHECK(Same(huge, { 0, 0, 32767, 32767 }));
    ScaleRect(nullptr, 2.0f);
}

TEST_CASE("CenterRectInRect: enlarges to fit, unless it must not")
{
    CHECK(Same(Centered({ 0, 0, 50, 100 }, { 0, 0, 200, 200 }, 0), { 50, 0, 150, 200 }));
    CHECK(Same(Centered({ 0, 0, 50, 100 }, { 0, 0, 200, 200 }, kCenterDontEnlarge), { 75, 50, 125, 150 }));
    CHECK(Same(Centered({ 0, 0, 50, 100 }, { 0, 0, 200, 200 }, kCenterDontShrink), { 50, 0, 150, 200 }));
}

TEST_CASE("CenterRectInRect: shrinks to fit, unless it must not")
{
    CHECK(Same(Centered({ 0, 0, 400, 200 }, { 0, 0, 100, 100 }, 0), { 0, 25, 100, 75 }));
    CHECK(Same(Centered({ 0, 0, 400, 200 }, { 0, 0, 100, 100 }, kCenterDontShrink), { -150, -50, 250, 150 }));
    CHECK(Same(Centered({ 0, 0, 400, 200 }, { 0, 0, 100, 100 }, kCenterDontEnlarge), { 0, 25, 100, 75 }));
    CHECK(Same(Centered({ 0, 0, 50, 400 }, { 0, 0, 100, 100 }, kCenterDontShrink), { 25, -150, 75, 250 }));
}

TEST_CASE("CenterRectInRect: same sizes give the container, odd rests go up and left")
{
    CHECK(Same(Centered({ 5, 6, 15, 26 }, { 100, 100, 110, 120 }, 0), { 100, 100, 110, 120 }));
    CHECK(Same(Centered({ 0, 0, 5, 5 }, { 0, 0, 10, 10 }, kCenterDontEnlarge), { 2, 2, 7, 7 }));
    CHECK(Same(Centered({ 0, 0, 11, 11 }, { 0, 0, 10, 10 }, kCenterDontShrink), { -1, -1, 10, 10 }));
}

TEST_CASE("CenterRectInRect: empty rectangles and null are no fault")
{
    const Rect container = { 0, 0, 10, 10 };
    CHECK(Same(Centered({ 0, 0, 0, 0 }, container, kCenterDontEnlarge), { 5, 5, 5, 5 }));
    const Rect scaled = Centered({ 0, 0, 0, 0 }, container, 0);
    CHECK(scaled.left <= scaled.right);
    CHECK(Same(CenterRectInRect(nullptr, nullptr, 0), { 0, 0, 0, 0 }));
}

TEST_CASE("EqualRGB: all three components count")
{
    const RGBColor a = { 1, 2, 3 };
    CHECK(EqualRGB(a, { 1, 2, 3 }));
    CHECK(!EqualRGB(a, { 0, 2, 3 }));
    CHECK(!EqualRGB(a, { 1, 0, 3 }));
    CHECK(!EqualRGB(a, { 1, 2, 0 }));
}

TEST_CASE("ScreenRGBColor: 0 is white, 100 and more leave the colour")
{
    RGBColor color = { 1000, 20000, 40000 };
    ScreenRGBColor(&color, 100);
    ScreenRGBColor(&color, 500);
    CHECK(EqualRGB(color, { 1000, 20000, 40000 }));
    ScreenRGBColor(&color, 0);
    CHECK(EqualRGB(color, { 65535, 65535, 65535 }));
    ScreenRGBColor(nullptr, 50);
}

TEST_CASE("ScreenRGBColor: 50 moves the lightness half-way to white and keeps the hue")
{
    RGBColor color = { 0x8000, 0x2000, 0x2000 };
    HSLColor before, after;
    RGB2HSL(&color, &before);
    ScreenRGBColor(&color, 50);
    RGB2HSL(&color, &after);
    CHECK(std::abs(after.lightness - (before.lightness + (65535 - before.lightness) / 2)) <= 4);
    CHECK(std::abs((int)(SInt16)(after.hue - before.hue)) <= 16);
    RGBColor black = { 0, 0, 0 };
    ScreenRGBColor(&black, 75);
    CHECK(black.red == black.green);
    CHECK(std::abs(black.red - 65535 / 4) <= 4);
}

TEST_CASE("ScreenRGBColor: the lightness is cut off to an integer, whatever the percentage")
{
    for (const UInt16 percent : { 1, 33, 50, 67, 99 }) {
        CAPTURE(percent);
        RGBColor color = { 0x9000, 0x2000, 0x4000 };
        HSLColor before;
        RGB2HSL(&color, &before);
        ScreenRGBColor(&color, percent);
        const float lightness = before.lightness;
        const float expected = lightness + (float)(100 - percent) / 100 * (65535 - lightness);
        CHECK(gConverted.hue == before.hue);
        CHECK(gConverted.saturation == before.saturation);
        CHECK(gConverted.lightness == (SmallFract)expected);
    }
    RGBColor white = { 65535, 65535, 65535 };
    ScreenRGBColor(&white, 1);
    CHECK(EqualRGB(white, { 65535, 65535, 65535 }));
}

TEST_CASE("HiliteRect: paints in the highlight colour, restores the foreground and leaves the pen copying")
{
    const World world;
    RGBColor hilite, fore = { 0, 0x8080, 0 }, pixel;
    LMGetHiliteRGB(&hilite);
    RGBForeColor(&fore);
    PenMode(patXor);
    const Rect rect = { 2, 2, 10, 10 };
    HiliteRect(&rect);
    GetCPixel(5, 5, &pixel);
    CHECK((pixel.red >> 8) == (hilite.red >> 8));
    CHECK((pixel.green >> 8) == (hilite.green >> 8));
    CHECK((pixel.blue >> 8) == (hilite.blue >> 8));
    RGBColor now;
    GetForeColor(&now);
    CHECK(EqualRGB(now, fore));
    CHECK(GetPortPenMode(world.fWorld) == 0);
    CHECK(gPenMode == 0);
}

TEST_CASE(
    "NormalizeClipRegion: clips to the window, RestoreClipRegion brings the clip back and empties the region")
{
    const Rect bounds = { 100, 100, 200, 300 }, clip = { 5, 5, 10, 10 };
    WindowRef window = nullptr;
    REQUIRE(CreateNewWindow(kDocumentWindowClass, kWindowStandardDocumentAttributes, &bounds, &window) ==
            noErr);
    const StPortSaver saver(window);
    ClipRect(&clip);
    RgnHandle region = nullptr;
    NormalizeClipRegion(window, &region);
    REQUIRE(region);
    const RgnHandle now = NewRgn();
    GetClip(now);
    Rect extent, port;
    CHECK(EqualRect(GetRegionBounds(now, &extent), GetWindowPortBounds(window, &port)));
    const RgnHandle kept = region;
    CHECK(EqualRect(GetRegionBounds(region, &extent), &clip));
    RestoreClipRegion(&region);
    GetClip(now);
    CHECK(EqualRect(GetRegionBounds(now, &extent), &clip));
    CHECK(region == kept);
    CHECK(EmptyRgn(region));
    NormalizeClipRegion(window, &region);
    CHECK(region == kept);
    RestoreClipRegion(&region);
    RgnHandle none = nullptr;
    RestoreClipRegion(&none);
    RestoreClipRegion(nullptr);
    NormalizeClipRegion(window, nullptr);
    DisposeRgn(now);
    DisposeRgn(region);
    ReleaseWindow(window);
}
