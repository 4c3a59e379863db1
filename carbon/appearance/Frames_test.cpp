#include "appearance/TestPort.h"

#include <doctest/doctest.h>

using namespace lampblack::appearance;

namespace {

constexpr Rect kRect = { 20, 30, 70, 150 };

struct Frame {
    const char* name;
    OSStatus (*draw)(const Rect*, ThemeDrawState);
    int outset;
};

OSStatus DrawWell(const Rect* inRect, ThemeDrawState inState)
{
    return DrawThemeGenericWell(inRect, inState, true);
}

constexpr Frame kFrames[] = { { "edit text", DrawThemeEditTextFrame, 1 },
                              { "list box", DrawThemeListBoxFrame, 1 },
                              { "primary group", DrawThemePrimaryGroup, 0 },
                              { "secondary group", DrawThemeSecondaryGroup, 0 },
                              { "separator", DrawThemeSeparator, 0 },
                              { "window header", DrawThemeWindowHeader, 0 },
                              { "list view header", DrawThemeWindowListViewHeader, 0 },
                              { "placard", DrawThemePlacard, 0 },
                              { "modeless dialog", DrawThemeModelessDialogFrame, 0 },
                              { "well", DrawWell, 0 },
                              { "tick mark", DrawThemeTickMark, 0 },
                              { "tab pane", DrawThemeTabPane, 0 } };

} // namespace

TEST_CASE("Frames: each draws as far as it says, and a dimmed one looks different")
{
    for (const Frame& frame : kFrames) {
        CAPTURE(frame.name);
        TestPort port;
        CHECK(frame.draw(&kRect, kThemeStateActive) == noErr);
        CHECK_FALSE(IsEmpty(port.Drawn()));
        CHECK(IsWithin(port.Drawn(), Outset(kRect, frame.outset)));
        const auto active = port.Pixels();
        port.Clear();
        frame.draw(&kRect, kThemeStateUnavailable);
        CHECK(active != port.Pixels());
        CHECK(frame.draw(nullptr, kThemeStateActive) == paramErr);
    }
}

TEST_CASE("DrawThemeEditTextFrame: the inside is left alone")
{
    TestPort port;
    DrawThemeEditTextFrame(&kRect, kThemeStateActive);
    CHECK(IsSame(port.Drawn(), Outset(kRect, 1)));
    for (uint32_t pixel : port.Pixels(kRect))
        CHECK(pixel == 0xFFFFFF);
}

TEST_CASE("DrawThemeFocusRect: a blue ring around the rectangle, of the published width, or nothing")
{
    TestPort port;
    SInt32 outset = 0;
    GetThemeMetric(kThemeMetricFocusRectOutset, &outset);
    CHECK(DrawThemeFocusRect(&kRect, true) == noErr);
    CHECK(IsSame(port.Drawn(), Outset(kRect, outset)));
    CHECK(Blueness(port.Pixel(29, 40)) > 60);
    CHECK(port.Pixel(31, 40) == 0xFFFFFF);
    port.Clear();
    CHECK(DrawThemeFocusRect(&kRect, false) == noErr);
    CHECK(IsEmpty(port.Drawn()));
    CHECK(DrawThemeFocusRect(nullptr, true) == paramErr);
}

TEST_CASE("DrawThemeFocusRegion: a ring around any shape; the port's colours stay")
{
    TestPort port;
    const RGBColor red = { 0xFFFF, 0, 0 };
    RGBForeColor(&red);
    RgnHandle region = NewRgn();
    RectRgn(region, &kRect);
    CHECK(DrawThemeFocusRegion(region, true) == noErr);
    CHECK(IsSame(port.Drawn(), Outset(kRect, 3)));
    CHECK(port.Pixel(31, 40) == 0xFFFFFF);
    RGBColor fore = {};
    GetForeColor(&fore);
    CHECK(fore.red == 0xFFFF);
    CHECK(DrawThemeFocusRegion(nullptr, true) == paramErr);
    DisposeRgn(region);
}

TEST_CASE("DrawThemeTab: front and other tabs, four directions; unknown ones are paramErr")
{
    TestPort port;
    for (ThemeTabDirection direction = 0; direction <= kThemeTabWest; ++direction) {
        port.Clear();
        CHECK(DrawThemeTab(&kRect, kThemeTabFront, direction, nullptr, 0) == noErr);
        CHECK(IsWithin(port.Drawn(), kRect));
        const auto front = port.Pixels();
        port.Clear();
        DrawThemeTab(&kRect, kThemeTabNonFront, direction, nullptr, 0);
        CHECK(front != port.Pixels());
    }
    RgnHandle region = NewRgn();
    CHECK(DrawThemeTab(&kRect, kThemeTabFrontUnavailable + 1, kThemeTabNorth, nullptr, 0) == paramErr);
    CHECK(DrawThemeTab(&kRect, kThemeTabFront, kThemeTabWest + 1, nullptr, 0) == paramErr);
    CHECK(DrawThemeTab(nullptr, kThemeTabFront, kThemeTabNorth, nullptr, 0) == paramErr);
    CHECK(GetThemeTabRegion(&kRect, 99, kThemeTabNorth, region) == paramErr);
    CHECK(GetThemeTabRegion(&kRect, kThemeTabFront, kThemeTabNorth, nullptr) == paramErr);
    DisposeRgn(region);
}

TEST_CASE("DrawThemePopupArrow and DrawThemeChasingArrows: sizes, steps and bad arguments")
{
    TestPort port;
    CHECK(DrawThemePopupArrow(&kRect, kThemeArrowDown, kThemeArrow9pt, kThemeStateActive, nullptr, 0) ==
          noErr);
    CHECK(WidthOf(port.Drawn()) == 9);
    CHECK(DrawThemePopupArrow(&kRect, 4, kThemeArrow9pt, kThemeStateActive, nullptr, 0) == paramErr);
    CHECK(DrawThemePopupArrow(&kRect, kThemeArrowUp, 4, kThemeStateActive, nullptr, 0) == paramErr);
    port.Clear();
    CHECK(DrawThemeChasingArrows(&kRect, 0, kThemeStateActive, nullptr, 0) == noErr);
    const auto first = port.Pixels();
    port.Clear();
    DrawThemeChasingArrows(&kRect, 1, kThemeStateActive, nullptr, 0);
    CHECK(first != port.Pixels());
    port.Clear();
    DrawThemeChasingArrows(&kRect, 4294967292u, kThemeStateActive, nullptr, 0); // a multiple of twelve
    CHECK(first == port.Pixels());
}

TEST_CASE("GetThemeStandaloneGrowBoxBounds: the box lies towards the directions it grows in")
{
    Rect box = {};
    CHECK(GetThemeStandaloneGrowBoxBounds({ 50, 60 }, kThemeGrowRight | kThemeGrowDown, false, &box) ==
          noErr);
    CHECK(IsSame(box, { 50, 60, 65, 75 }));
    GetThemeStandaloneGrowBoxBounds({ 50, 60 }, kThemeGrowLeft | kThemeGrowUp, true, &box);
    CHECK(IsSame(box, { 39, 49, 50, 60 }));
    TestPort port;
    DrawThemeStandaloneGrowBox({ 50, 60 }, kThemeGrowLeft | kThemeGrowUp, true, kThemeStateActive);
    CHECK_FALSE(IsEmpty(port.Drawn()));
    CHECK(IsWithin(port.Drawn(), box));
    CHECK(GetThemeStandaloneGrowBoxBounds({ 0, 0 }, 0, false, nullptr) == paramErr);
}

TEST_CASE("Frames: extreme rectangles do no harm")
{
    TestPort port;
    const Rect kRects[] = {
        { 0, 0, 0, 0 }, { 9, 9, 3, 3 }, { 1, 1, 2, 2 }, { -32768, -32768, 32767, 32767 }
    };
    for (const Rect& rect : kRects) {
        for (const Frame& frame : kFrames)
            CHECK(frame.draw(&rect, 0xFFFF) == noErr);
        CHECK(DrawThemeFocusRect(&rect, true) == noErr);
    }
}
