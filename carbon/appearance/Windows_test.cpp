#include "appearance/TestPort.h"
#include "appearance/WindowGeometry.h"

#include <doctest/doctest.h>

using namespace lampblack::appearance;

namespace {

constexpr Rect kContent = { 60, 40, 160, 340 };
constexpr ThemeWindowAttributes kAll = kThemeWindowHasGrow | kThemeWindowHasFullZoom |
                                       kThemeWindowHasCloseBox | kThemeWindowHasCollapseBox |
                                       kThemeWindowHasTitleText;

class Region {
public:
    Region(ThemeWindowType inType, AppearanceRegionCode inCode, ThemeWindowAttributes inAttributes = kAll)
        : fRegion(NewRgn())
    {
        CHECK(GetThemeWindowRegion(inType, &kContent, kThemeStateActive, nullptr, inAttributes, inCode,
                                   fRegion) == noErr);
    }
    ~Region() { DisposeRgn(fRegion); }
    Region(const Region&) = delete;
    Region& operator=(const Region&) = delete;

    Rect Bounds() const
    {
        Rect bounds = {};
        GetRegionBounds(fRegion, &bounds);
        return bounds;
    }
    bool Holds(short inV, short inH) const { return PtInRgn({ inV, inH }, fRegion); }
    bool IsEmpty() const { return EmptyRgn(fRegion); }

private:
    RgnHandle fRegion;
};

bool gTitleDrawn = false;
Rect gTitle = {};

void Title(const Rect* inBounds, SInt16, Boolean, URefCon)
{
    gTitleDrawn = true;
    gTitle = *inBounds;
}

} // namespace

TEST_CASE(
    "GetThemeWindowRegion: a document window is its content and 22 pixels above it, a utility window 16")
{
    CHECK(IsSame(Region(kThemeDocumentWindow, kAppearanceRegionStructure).Bounds(), { 38, 40, 160, 340 }));
    CHECK(IsSame(Region(kThemeUtilityWindow, kAppearanceRegionStructure).Bounds(), { 44, 40, 160, 340 }));
    CHECK(IsSame(Region(kThemeUtilitySideWindow, kAppearanceRegionStructure).Bounds(), { 60, 24, 160, 340 }));
    CHECK(IsSame(Region(kThemeMovableDialogWindow, kAppearanceRegionTitleBar).Bounds(), { 38, 40, 60, 340 }));
    CHECK(IsSame(Region(kThemeSheetWindow, kAppearanceRegionStructure).Bounds(), kContent));
    CHECK(IsSame(Region(kThemePlainDialogWindow, kAppearanceRegionStructure).Bounds(), Outset(kContent, 1)));
    CHECK(IsSame(Region(kThemeDocumentWindow, kAppearanceRegionContent).Bounds(), kContent));
}

TEST_CASE("GetThemeWindowRegion: the upper corners are round, the lower ones are not")
{
    const Region structure(kThemeDocumentWindow, kAppearanceRegionStructure);
    CHECK_FALSE(structure.Holds(38, 40));
    CHECK_FALSE(structure.Holds(38, 339));
    CHECK(structure.Holds(38, 50));
    CHECK(structure.Holds(45, 40));
    CHECK(structure.Holds(159, 40));
}

TEST_CASE(
    "GetThemeWindowRegion: widgets are there when the window has them, close, collapse, zoom from the left")
{
    const Rect close = Region(kThemeDocumentWindow, kAppearanceRegionCloseBox).Bounds();
    const Rect collapse = Region(kThemeDocumentWindow, kAppearanceRegionCollapseBox).Bounds();
    const Rect zoom = Region(kThemeDocumentWindow, kAppearanceRegionZoomBox).Bounds();
    CHECK(close.right <= collapse.left);
    CHECK(collapse.right <= zoom.left);
    CHECK(close.top >= 38);
    CHECK(close.bottom <= 60);
    CHECK(Region(kThemeDocumentWindow, kAppearanceRegionCloseBox, kThemeWindowHasTitleText).IsEmpty());
    CHECK(Region(kThemePlainDialogWindow, kAppearanceRegionCloseBox).IsEmpty());
    const Region drag(kThemeDocumentWindow, kAppearanceRegionDrag);
    CHECK_FALSE(drag.Holds((short)(close.top + 5), (short)(close.left + 5)));
    CHECK(drag.Holds((short)(close.top + 5), 200));
}

TEST_CASE("GetThemeWindowRegion: a collapsed window is its title bar")
{
    const ThemeWindowAttributes collapsed = kAll | kThemeWindowIsCollapsed;
    CHECK(IsSame(Region(kThemeDocumentWindow, kAppearanceRegionStructure, collapsed).Bounds(),
                 { 38, 40, 60, 340 }));
    CHECK(Region(kThemeDocumentWindow, kAppearanceRegionContent, collapsed).IsEmpty());
    CHECK(Region(kThemeDocumentWindow, kAppearanceRegionGrow, collapsed).IsEmpty());
}

TEST_CASE(
    "GetThemeWindowRegion: the title stands amid the bar, and beside the widgets where there is no room")
{
    RgnHandle region = NewRgn();
    Rect title = {};
    ThemeWindowMetrics metrics = { sizeof metrics, 16, 80, 0, 0, 0 };
    GetThemeWindowRegion(kThemeDocumentWindow, &kContent, kThemeStateActive, &metrics, kAll,
                         kAppearanceRegionTitleText, region);
    GetRegionBounds(region, &title);
    CHECK(title.left == 150);
    CHECK(title.right == 230);
    metrics.titleWidth = 1000;
    GetThemeWindowRegion(kThemeDocumentWindow, &kContent, kThemeStateActive, &metrics, kAll,
                         kAppearanceRegionTitleText, region);
    GetRegionBounds(region, &title);
    CHECK(title.left >= Region(kThemeDocumentWindow, kAppearanceRegionZoomBox).Bounds().right);
    CHECK(title.right <= 340);
    DisposeRgn(region);
}

TEST_CASE("GetThemeWindowRegionHit: each part at its place, and nothing outside")
{
    const auto hit = [](short inV, short inH) {
        AppearanceRegionCode code = 999;
        const Boolean inside = GetThemeWindowRegionHit(kThemeDocumentWindow, &kContent, kThemeStateActive,
                                                       nullptr, kAll, { inV, inH }, &code);
        return inside ? (int)code : -1;
    };
    const Rect close = Region(kThemeDocumentWindow, kAppearanceRegionCloseBox).Bounds();
    CHECK(hit((short)(close.top + 3), (short)(close.left + 3)) == kAppearanceRegionCloseBox);
    CHECK(hit(50, 200) == kAppearanceRegionDrag);
    CHECK(hit(100, 100) == kAppearanceRegionContent);
    CHECK(hit(159, 339) == kAppearanceRegionGrow);
    CHECK(hit(38, 40) == -1); // the round corner
    CHECK(hit(160, 100) == -1);
    CHECK(hit(37, 200) == -1);
}

TEST_CASE("DrawThemeWindowFrame: the frame is drawn outside of the content and inside of the structure")
{
    for (ThemeWindowType type = 0; type <= kThemeDrawerWindow; ++type) {
        CAPTURE(type);
        TestPort port(400, 200);
        CHECK(DrawThemeWindowFrame(type, &kContent, kThemeStateActive, nullptr, kAll, nullptr, 0) == noErr);
        CHECK(IsWithin(port.Drawn(), Region(type, kAppearanceRegionStructure).Bounds()));
        for (uint32_t pixel : port.Pixels(kContent))
            REQUIRE(pixel == 0xFFFFFF);
    }
}

TEST_CASE(
    "DrawThemeWindowFrame: active and inactive title bars differ; the title procedure gets the title's place")
{
    TestPort port(400, 200);
    gTitleDrawn = false;
    DrawThemeWindowFrame(kThemeDocumentWindow, &kContent, kThemeStateActive, nullptr, kAll, Title, 0);
    const auto active = port.Pixels();
    CHECK(gTitleDrawn);
    CHECK(IsSame(gTitle, Region(kThemeDocumentWindow, kAppearanceRegionTitleText).Bounds()));
    DrawThemeWindowFrame(kThemeDocumentWindow, &kContent, kThemeStateInactive, nullptr, kAll, nullptr, 0);
    CHECK(active != port.Pixels());
    gTitleDrawn = false;
    DrawThemeWindowFrame(kThemeDocumentWindow, &kContent, kThemeStateActive, nullptr, kThemeWindowHasCloseBox,
                         Title, 0);
    CHECK_FALSE(gTitleDrawn);
}

TEST_CASE("DrawThemeTitleBarWidget: pressing and releasing leaves the frame as it was, whatever its width")
{
    for (const Rect& content : { kContent, Rect{ 60, 40, 160, 110 } }) {
        TestPort port(400, 200);
        DrawThemeWindowFrame(kThemeDocumentWindow, &content, kThemeStateActive, nullptr, kAll, nullptr, 0);
        const auto before = port.Pixels();
        DrawThemeTitleBarWidget(kThemeDocumentWindow, &content, kThemeStatePressed, nullptr, kAll,
                                kThemeWidgetCloseBox);
        CHECK(before != port.Pixels());
        DrawThemeTitleBarWidget(kThemeDocumentWindow, &content, kThemeStateActive, nullptr, kAll,
                                kThemeWidgetCloseBox);
        CHECK(before == port.Pixels());
    }
}

TEST_CASE("Window frames: unknown types, widgets and regions, and missing arguments")
{
    RgnHandle region = NewRgn();
    AppearanceRegionCode code = 0;
    const ThemeWindowType unknown = kThemeDrawerWindow + 1;
    CHECK(DrawThemeWindowFrame(unknown, &kContent, 1, nullptr, kAll, nullptr, 0) == paramErr);
    CHECK(DrawThemeWindowFrame(kThemeDocumentWindow, nullptr, 1, nullptr, kAll, nullptr, 0) == paramErr);
    CHECK(DrawThemeTitleBarWidget(kThemeDocumentWindow, &kContent, 1, nullptr, kAll, 3) == paramErr);
    CHECK(GetThemeWindowRegion(unknown, &kContent, 1, nullptr, kAll, kAppearanceRegionDrag, region) ==
          paramErr);
    CHECK(GetThemeWindowRegion(kThemeDocumentWindow, &kContent, 1, nullptr, kAll, kAppearanceRegionDrag,
                               nullptr) == paramErr);
    CHECK(GetThemeWindowRegion(kThemeDocumentWindow, &kContent, 1, nullptr, kAll, 77, region) ==
          errWindowRegionCodeInvalid);
    CHECK_FALSE(GetThemeWindowRegionHit(unknown, &kContent, 1, nullptr, kAll, { 100, 100 }, &code));
    CHECK_FALSE(
        GetThemeWindowRegionHit(kThemeDocumentWindow, &kContent, 1, nullptr, kAll, { 100, 100 }, nullptr));
    DisposeRgn(region);
}

TEST_CASE("CornerCoverage: from nothing at the corner to everything beyond the radius, along with the region")
{
    CHECK(CornerCoverage(6, 0, 0) == 0);
    CHECK(CornerCoverage(6, 5, 5) == 255);
    CHECK(CornerCoverage(6, 6, 0) == 255);
    CHECK(CornerCoverage(6, 0, 6) == 255);
    for (int y = 0; y < 6; ++y)
        for (int x = 0; x < 6; ++x) {
            CHECK((CornerCoverage(6, x, y) >= 100) >= (x >= CornerInset(6, y) + 1));
            CHECK(CornerCoverage(6, x, y) == CornerCoverage(6, y, x));
        }
}
