#include "appearance/TestPort.h"

#include <doctest/doctest.h>

using namespace lampblack::appearance;

namespace {

ThemeTrackDrawInfo Track(ThemeTrackKind inKind, const Rect& inBounds, bool inHorizontal)
{
    ThemeTrackDrawInfo info = {};
    info.kind = inKind;
    info.bounds = inBounds;
    info.max = 100;
    info.attributes = kThemeTrackShowThumb;
    if (inHorizontal)
        info.attributes |= kThemeTrackHorizontal;
    return info;
}

constexpr Rect kUpright = { 10, 20, 210, 35 };
constexpr Rect kLying = { 10, 20, 25, 220 };

AppearancePartCode PartAt(const ThemeTrackDrawInfo& inInfo, short inV, short inH)
{
    AppearancePartCode part = -1;
    HitTestThemeTrack(&inInfo, { inV, inH }, &part);
    return part;
}

Rect ThumbOf(const ThemeTrackDrawInfo& inInfo)
{
    RgnHandle region = NewRgn();
    Rect bounds = {};
    CHECK(GetThemeTrackThumbRgn(&inInfo, region) == noErr);
    GetRegionBounds(region, &bounds);
    DisposeRgn(region);
    return bounds;
}

} // namespace

TEST_CASE("GetThemeTrackThumbRgn: the thumb runs from one end of the track to the other")
{
    ThemeTrackDrawInfo info = Track(kThemeScrollBarMedium, kUpright, false);
    Rect track = {};
    GetThemeTrackDragRect(&info, &track);
    CHECK(track.bottom == kUpright.bottom - 30); // both arrows are at the lower end
    CHECK(ThumbOf(info).top == track.top);
    info.value = 100;
    CHECK(ThumbOf(info).bottom == track.bottom);
    info.value = 5000; // beyond the maximum
    CHECK(ThumbOf(info).bottom == track.bottom);
}

TEST_CASE("GetThemeTrackThumbRgn: a proportional thumb says how much of the whole is seen")
{
    ThemeTrackDrawInfo info = Track(kThemeScrollBarMedium, kUpright, false);
    info.trackInfo.scrollbar.viewsize = 100; // as much as is hidden
    CHECK(HeightOf(ThumbOf(info)) == 85);    // half of 170
    info.trackInfo.scrollbar.viewsize = 1;
    CHECK(HeightOf(ThumbOf(info)) == 20);
}

TEST_CASE("GetThemeTrackThumbRgn: nothing to scroll, a disabled bar and one that is too short have no thumb")
{
    ThemeTrackDrawInfo info = Track(kThemeScrollBarMedium, kUpright, false);
    info.enableState = kThemeTrackNothingToScroll;
    CHECK(IsEmpty(ThumbOf(info)));
    info.enableState = kThemeTrackDisabled;
    CHECK(IsEmpty(ThumbOf(info)));
    info.enableState = kThemeTrackActive;
    info.bounds.bottom = (short)(info.bounds.top + 40);
    CHECK(IsEmpty(ThumbOf(info)));
    info = Track(kThemeScrollBarMedium, kUpright, false);
    info.max = info.min;
    CHECK(IsEmpty(ThumbOf(info)));
}

TEST_CASE("HitTestThemeTrack: arrows, pages and the thumb of a standing and a lying scroll bar")
{
    ThemeTrackDrawInfo info = Track(kThemeScrollBarMedium, kUpright, false);
    info.value = 50;
    const Rect thumb = ThumbOf(info);
    CHECK(PartAt(info, (short)(thumb.top - 1), 25) == kAppearancePartPageUpArea);
    CHECK(PartAt(info, thumb.top, 25) == kAppearancePartIndicator);
    CHECK(PartAt(info, thumb.bottom, 25) == kAppearancePartPageDownArea);
    CHECK(PartAt(info, 181, 25) == kAppearancePartUpButton);
    CHECK(PartAt(info, 209, 25) == kAppearancePartDownButton);
    CHECK(PartAt(info, 100, 19) == kAppearancePartMetaNone);
    CHECK(PartAt(info, 210, 25) == kAppearancePartMetaNone); // the bottom edge is outside

    info = Track(kThemeScrollBarMedium, kLying, true);
    info.value = 100;
    CHECK(PartAt(info, 12, 30) == kAppearancePartPageLeftArea);
    CHECK(PartAt(info, 12, 191) == kAppearancePartLeftButton);
    CHECK(PartAt(info, 12, 219) == kAppearancePartRightButton);
}

TEST_CASE("HitTestThemeTrack: a disabled or inactive track says so wherever it is hit, and a progress bar "
          "says nothing")
{
    ThemeTrackDrawInfo info = Track(kThemeScrollBarMedium, kUpright, false);
    info.enableState = kThemeTrackDisabled;
    CHECK(PartAt(info, 100, 25) == kAppearancePartMetaDisabled);
    info.enableState = kThemeTrackInactive;
    CHECK(PartAt(info, 100, 25) == kAppearancePartMetaInactive);
    info = Track(kThemeProgressBarMedium, kLying, true);
    CHECK_FALSE(HitTestThemeTrack(&info, { 15, 50 }, nullptr));
}

TEST_CASE("GetThemeTrackLiveValue: every value comes back from the position of its thumb")
{
    for (bool horizontal : { false, true })
        for (ThemeTrackKind kind : { kThemeScrollBarMedium, kThemeSliderMedium, kThemeSliderSmall }) {
            ThemeTrackDrawInfo info = Track(kind, horizontal ? kLying : kUpright, horizontal);
            info.min = -20;
            for (SInt32 wanted = -20; wanted <= 100; wanted += 5) {
                CAPTURE(wanted);
                info.value = wanted;
                const Rect thumb = ThumbOf(info);
                SInt32 position = 0, value = 0;
                CHECK(GetThemeTrackThumbPositionFromBounds(&info, &thumb, &position) == noErr);
                CHECK(GetThemeTrackLiveValue(&info, position, &value) == noErr);
                CHECK(value == wanted);
            }
        }
}

TEST_CASE("GetThemeTrackThumbPositionFromOffset: the mouse moves the thumb along its track and no further")
{
    ThemeTrackDrawInfo info = Track(kThemeScrollBarMedium, kLying, true);
    SInt32 position = -1;
    CHECK(GetThemeTrackThumbPositionFromOffset(&info, { 500, 30 }, &position) == noErr);
    CHECK(position == 30);
    GetThemeTrackThumbPositionFromOffset(&info, { 0, -30 }, &position);
    CHECK(position == 0);
    GetThemeTrackThumbPositionFromOffset(&info, { 0, 30000 }, &position);
    CHECK(position == 150);
}

TEST_CASE("A standing slider has its least value at the bottom, a right-to-left track at the right")
{
    ThemeTrackDrawInfo slider = Track(kThemeSliderMedium, kUpright, false);
    const Rect least = ThumbOf(slider);
    slider.value = 100;
    CHECK(least.top > ThumbOf(slider).top);
    ThemeTrackDrawInfo bar = Track(kThemeScrollBarMedium, kLying, true);
    bar.attributes |= kThemeTrackRightToLeft;
    CHECK(ThumbOf(bar).right == 190);
}

TEST_CASE("DrawThemeTrack: every kind draws within its bounds, and values and states show")
{
    for (ThemeTrackKind kind = 0; kind <= kThemeIndeterminateBarMini; ++kind) {
        CAPTURE(kind);
        TestPort port(240, 60);
        ThemeTrackDrawInfo info = Track(kind, kLying, true);
        info.value = 50;
        CHECK(DrawThemeTrack(&info, nullptr, nullptr, 0) == noErr);
        CHECK_FALSE(IsEmpty(port.Drawn()));
        CHECK(IsWithin(port.Drawn(), kLying));
        const auto active = port.Pixels();
        port.Clear();
        info.enableState = kThemeTrackInactive;
        DrawThemeTrack(&info, nullptr, nullptr, 0);
        CHECK(active != port.Pixels());
        const bool moves = kind == kThemeIndeterminateBarMedium || kind == kThemeIndeterminateBarLarge ||
                           kind == kThemeIndeterminateBarMini;
        port.Clear();
        info.enableState = kThemeTrackActive;
        info.value = moves ? 50 : 90;
        info.trackInfo.progress.phase = moves ? 3 : 0;
        DrawThemeTrack(&info, nullptr, nullptr, 0);
        CHECK(active != port.Pixels());
    }
}

TEST_CASE("DrawThemeTrack: a progress bar is filled as far as its value")
{
    TestPort port(240, 60);
    ThemeTrackDrawInfo info = Track(kThemeProgressBarMedium, kLying, true);
    info.value = 50;
    DrawThemeTrack(&info, nullptr, nullptr, 0);
    CHECK(Blueness(port.Pixel(100, 17)) > 40);
    CHECK(Blueness(port.Pixel(140, 17)) == 0);
}

TEST_CASE("DrawThemeTrack: a fill of a few pixels stays within the round end")
{
    TestPort port(240, 60);
    ThemeTrackDrawInfo info = Track(kThemeProgressBarMedium, kLying, true);
    info.value = 2; // 4 pixels
    DrawThemeTrack(&info, nullptr, nullptr, 0);
    CHECK(Blueness(port.Pixel(22, 17)) > 20);
    CHECK(Blueness(port.Pixel(26, 17)) == 0);
}

TEST_CASE("DrawThemeTrack: the pressed arrow looks pressed, by either of the names for it")
{
    TestPort port(240, 60);
    ThemeTrackDrawInfo info = Track(kThemeScrollBarMedium, kLying, true);
    DrawThemeTrack(&info, nullptr, nullptr, 0);
    const auto idle = port.Pixels({ 10, 190, 25, 205 });
    info.trackInfo.scrollbar.pressState = kThemeLeftOutsideArrowPressed;
    DrawThemeTrack(&info, nullptr, nullptr, 0);
    const auto pressed = port.Pixels({ 10, 190, 25, 205 });
    CHECK(idle != pressed);
    info.trackInfo.scrollbar.pressState = kThemeRightInsideArrowPressed;
    DrawThemeTrack(&info, nullptr, nullptr, 0);
    CHECK(pressed == port.Pixels({ 10, 190, 25, 205 }));
}

TEST_CASE("DrawThemeTrackTickMarks: marks stand under a slider that points down, and only sliders have them")
{
    TestPort port(240, 60);
    ThemeTrackDrawInfo info = Track(kThemeSliderMedium, { 10, 20, 35, 220 }, true);
    info.trackInfo.slider.thumbDir = kThemeThumbDownward;
    CHECK(DrawThemeTrackTickMarks(&info, 5, nullptr, 0) == noErr);
    CHECK(port.Drawn().top >= 28);
    CHECK(IsWithin(port.Drawn(), info.bounds));
    CHECK(DrawThemeTrackTickMarks(&info, 0xFFFFFFFFFFFF, nullptr, 0) == noErr);
    info.kind = kThemeScrollBarMedium;
    CHECK(DrawThemeTrackTickMarks(&info, 5, nullptr, 0) == paramErr);
}

TEST_CASE("Tracks: unknown kinds and missing arguments are paramErr")
{
    ThemeTrackDrawInfo info = Track(kThemeIndeterminateBarMini + 1, kLying, true);
    Rect rect = {};
    SInt32 number = 0;
    RgnHandle region = NewRgn();
    CHECK(DrawThemeTrack(nullptr, nullptr, nullptr, 0) == paramErr);
    CHECK(DrawThemeTrack(&info, nullptr, nullptr, 0) == paramErr);
    CHECK(GetThemeTrackBounds(&info, &rect) == paramErr);
    CHECK(GetThemeTrackThumbRgn(&info, region) == paramErr);
    CHECK(GetThemeTrackLiveValue(&info, 0, &number) == paramErr);
    CHECK_FALSE(HitTestThemeTrack(&info, { 15, 50 }, nullptr));
    info.kind = kThemeScrollBarMedium;
    CHECK(GetThemeTrackBounds(&info, nullptr) == paramErr);
    CHECK(GetThemeTrackThumbRgn(&info, nullptr) == paramErr);
    CHECK(GetThemeTrackDragRect(&info, nullptr) == paramErr);
    CHECK(GetThemeTrackLiveValue(&info, 0, nullptr) == paramErr);
    CHECK(GetThemeTrackThumbPositionFromOffset(&info, { 0, 0 }, nullptr) == paramErr);
    CHECK(GetThemeTrackThumbPositionFromBounds(&info, nullptr, &number) == paramErr);
    CHECK(GetThemeTrackThumbPositionFromRegion(&info, nullptr, &number) == paramErr);
    CHECK(DrawThemeScrollBarArrows(nullptr, 0, 0, true, &rect) == paramErr);
    CHECK(GetThemeScrollBarTrackRect(&kLying, 0, 0, true, nullptr) == paramErr);
    CHECK_FALSE(HitTestThemeScrollBarArrows(nullptr, 0, 0, true, &rect, { 0, 0 }, nullptr));
    DisposeRgn(region);
}

TEST_CASE("Tracks: extreme numbers and rectangles do no harm")
{
    TestPort port(240, 60);
    const Rect kRects[] = {
        { 0, 0, 0, 0 }, { 9, 9, 3, 3 }, { 1, 1, 2, 2 }, { -32768, -32768, 32767, 32767 }
    };
    for (const Rect& rect : kRects)
        for (ThemeTrackKind kind = 0; kind <= kThemeIndeterminateBarMini; ++kind)
            for (bool horizontal : { false, true }) {
                ThemeTrackDrawInfo info = Track(kind, rect, horizontal);
                info.min = INT32_MIN;
                info.max = INT32_MAX;
                info.value = INT32_MAX;
                info.enableState = 200;
                if (kind == kThemeScrollBarMedium || kind == kThemeScrollBarSmall)
                    info.trackInfo.scrollbar.viewsize = INT32_MAX;
                SInt32 value = 0;
                CHECK(DrawThemeTrack(&info, nullptr, nullptr, 0) == noErr);
                CHECK(GetThemeTrackLiveValue(&info, INT32_MAX, &value) == noErr);
                info.min = 10;
                info.max = -10; // upside down
                CHECK(DrawThemeTrack(&info, nullptr, nullptr, 0) == noErr);
            }
}
