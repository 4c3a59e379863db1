#include "appearance/Piece.h"
#include "appearance/TestPort.h"

#include <doctest/doctest.h>

#include <cstdlib>
#include <string>

using namespace lampblack::appearance;

namespace {

constexpr ThemeButtonKind kLastKind = kThemePopupButtonMini;
constexpr Rect kBounds = { 20, 30, 44, 130 };

std::vector<uint32_t> Drawn(ThemeButtonKind inKind, ThemeButtonDrawInfo inInfo)
{
    TestPort port;
    CHECK(DrawThemeButton(&kBounds, inKind, &inInfo, nullptr, nullptr, nullptr, 0) == noErr);
    return port.Pixels();
}

struct Calls {
    std::string order;
    Rect erased = {}, label = {};
};

void Erase(const Rect* inBounds, URefCon inData, SInt16, Boolean)
{
    auto& calls = *(Calls*)inData;
    calls.order += 'e';
    calls.erased = *inBounds;
}

void Label(const Rect* inBounds, ThemeButtonKind, const ThemeButtonDrawInfo*, URefCon inData, SInt16, Boolean)
{
    auto& calls = *(Calls*)inData;
    calls.order += 'l';
    calls.label = *inBounds;
}

} // namespace

TEST_CASE("DrawThemeButton: every kind draws within its bounds and no two states look alike")
{
    for (ThemeButtonKind kind = 0; kind <= kLastKind; ++kind) {
        CAPTURE(kind);
        TestPort port;
        ThemeButtonDrawInfo info = { kThemeStateActive, kThemeButtonOff, kThemeAdornmentNone };
        DrawThemeButton(&kBounds, kind, &info, nullptr, nullptr, nullptr, 0);
        CHECK_FALSE(IsEmpty(port.Drawn()));
        CHECK(IsWithin(port.Drawn(), kBounds));
        const auto active = Drawn(kind, { kThemeStateActive, 0, 0 });
        CHECK(active != Drawn(kind, { kThemeStatePressed, 0, 0 }));
        CHECK(active != Drawn(kind, { kThemeStateInactive, 0, 0 }));
        CHECK(active != Drawn(kind, { kThemeStateUnavailable, 0, 0 }));
    }
}

TEST_CASE("DrawThemeButton: off, on and mixed marks differ")
{
    for (ThemeButtonKind kind :
         { kThemeCheckBox, kThemeRadioButton, kThemeSmallCheckBox, kThemeMiniRadioButton }) {
        const auto off = Drawn(kind, { kThemeStateActive, kThemeButtonOff, 0 });
        const auto on = Drawn(kind, { kThemeStateActive, kThemeButtonOn, 0 });
        const auto mixed = Drawn(kind, { kThemeStateActive, kThemeButtonMixed, 0 });
        CHECK(off != on);
        CHECK(on != mixed);
        CHECK(off != mixed);
    }
}

TEST_CASE("DrawThemeButton: the default button is accented, and in an inactive window it is not")
{
    TestPort port;
    ThemeButtonDrawInfo info = { kThemeStateActive, 0, kThemeAdornmentDefault };
    DrawThemeButton(&kBounds, kThemePushButton, &info, nullptr, nullptr, nullptr, 0);
    CHECK(Blueness(port.Pixel(80, 32)) > 60);
    port.Clear();
    info.state = kThemeStateInactive;
    DrawThemeButton(&kBounds, kThemePushButton, &info, nullptr, nullptr, nullptr, 0);
    CHECK(Blueness(port.Pixel(80, 32)) == 0);
}

TEST_CASE("DrawThemeButton: the erase procedure comes first, with the background, and the label last, with "
          "the content")
{
    TestPort port;
    Calls calls;
    const ThemeButtonDrawInfo info = { kThemeStateActive, 0, kThemeAdornmentFocus };
    Rect background = {}, content = {};
    GetThemeButtonBackgroundBounds(&kBounds, kThemePushButton, &info, &background);
    GetThemeButtonContentBounds(&kBounds, kThemePushButton, &info, &content);
    DrawThemeButton(&kBounds, kThemePushButton, &info, nullptr, Erase, Label, (URefCon)&calls);
    CHECK(calls.order == "el");
    CHECK(IsSame(calls.erased, background));
    CHECK(IsSame(calls.label, content));
    CHECK(IsWithin(content, kBounds));
    CHECK(IsWithin(port.Drawn(), background));
    CHECK_FALSE(IsWithin(port.Drawn(), kBounds)); // the focus ring
}

TEST_CASE("DrawThemeButton: an indicator alone has no label")
{
    TestPort port;
    Calls calls;
    const ThemeButtonDrawInfo info = { kThemeStateActive, 0, kThemeAdornmentDrawIndicatorOnly };
    DrawThemeButton(&kBounds, kThemeCheckBox, &info, nullptr, nullptr, Label, (URefCon)&calls);
    CHECK(calls.order.empty());
}

TEST_CASE("DrawThemeButton: right to left puts the mark at the right and the content at its left")
{
    TestPort port;
    const ThemeButtonDrawInfo info = { kThemeStateActive, 0, kThemeAdornmentRightToLeft };
    DrawThemeButton(&kBounds, kThemeCheckBox, &info, nullptr, nullptr, nullptr, 0);
    Rect content = {};
    GetThemeButtonContentBounds(&kBounds, kThemeCheckBox, &info, &content);
    CHECK(port.Drawn().left > kBounds.left + 50);
    CHECK(content.left == kBounds.left);
    CHECK(content.right <= port.Drawn().left);
}

TEST_CASE("DrawThemeButton: drawing again paints and allocates no new piece, at any width")
{
    TestPort port(600, 60);
    const ThemeButtonDrawInfo info = { kThemeStateActive, 0, 0 };
    const auto draw = [&](short inWidth) {
        const Rect bounds = { 10, 10, 30, (short)(10 + inWidth) };
        DrawThemeButton(&bounds, kThemePushButton, &info, nullptr, nullptr, nullptr, 0);
    };
    draw(200);
    const size_t painted = PiecesPainted();
    for (short width = 150; width < 580; width += 7)
        draw(width);
    CHECK(PiecesPainted() == painted);
}

TEST_CASE("DrawThemeButton: a stretched piece looks like one painted whole")
{
    TestPort port(500, 60);
    const ThemeButtonDrawInfo info = { kThemeStateActive, 0, 0 };
    const Rect wide = { 10, 10, 30, 410 };
    DrawThemeButton(&wide, kThemePushButton, &info, nullptr, nullptr, nullptr, 0);
    for (int y = 10; y < 30; ++y) {
        CHECK(port.Pixel(60, y) == port.Pixel(300, y));
        CHECK(port.Pixel(30, y) == port.Pixel(389, y));
        // Its ends mirror one another, to the rounding of smooth edges.
        CHECK(std::abs((int)(port.Pixel(12, y) & 0xFF) - (int)(port.Pixel(407, y) & 0xFF)) <= 2);
    }
}

TEST_CASE("DrawThemeButton: the clip region is honoured")
{
    TestPort port;
    const Rect clip = { 0, 0, 100, 60 };
    const ThemeButtonDrawInfo info = { kThemeStateActive, 0, 0 };
    ClipRect(&clip);
    DrawThemeButton(&kBounds, kThemePushButton, &info, nullptr, nullptr, nullptr, 0);
    CHECK(port.Drawn().right == 60);
}

TEST_CASE("GetThemeButtonRegion: the figure that is drawn, of a check box only its box")
{
    TestPort port;
    const ThemeButtonDrawInfo info = { kThemeStateActive, 0, 0 };
    RgnHandle region = NewRgn();
    Rect bounds = {};
    CHECK(GetThemeButtonRegion(&kBounds, kThemeCheckBox, &info, region) == noErr);
    GetRegionBounds(region, &bounds);
    DrawThemeButton(&kBounds, kThemeCheckBox, &info, nullptr, nullptr, nullptr, 0);
    CHECK(IsWithin(port.Drawn(), bounds));
    CHECK(bounds.right < kBounds.left + 20);
    DisposeRgn(region);
}

TEST_CASE("DrawThemeButton and its kin: an unknown kind or a missing argument is paramErr")
{
    TestPort port;
    const ThemeButtonDrawInfo info = { kThemeStateActive, 0, 0 };
    Rect out = {};
    RgnHandle region = NewRgn();
    const ThemeButtonKind unknown = kLastKind + 1;
    CHECK(DrawThemeButton(nullptr, kThemePushButton, &info, nullptr, nullptr, nullptr, 0) == paramErr);
    CHECK(DrawThemeButton(&kBounds, kThemePushButton, nullptr, nullptr, nullptr, nullptr, 0) == paramErr);
    CHECK(DrawThemeButton(&kBounds, unknown, &info, nullptr, nullptr, nullptr, 0) == paramErr);
    CHECK(GetThemeButtonContentBounds(&kBounds, unknown, &info, &out) == paramErr);
    CHECK(GetThemeButtonContentBounds(&kBounds, kThemePushButton, &info, nullptr) == paramErr);
    CHECK(GetThemeButtonBackgroundBounds(&kBounds, 0xFFFF, &info, &out) == paramErr);
    CHECK(GetThemeButtonRegion(&kBounds, unknown, &info, region) == paramErr);
    CHECK(GetThemeButtonRegion(&kBounds, kThemePushButton, &info, nullptr) == paramErr);
    CHECK(IsEmpty(port.Drawn()));
    DisposeRgn(region);
}

TEST_CASE("DrawThemeButton: tiny, empty, inverted and enormous bounds and wild states do no harm")
{
    TestPort port;
    const Rect kRects[] = { { 0, 0, 0, 0 },
                            { 5, 5, 6, 6 },
                            { 50, 50, 10, 10 },
                            { 10, 10, 13, 12 },
                            { -32768, -32768, 32767, 32767 },
                            { 0, -32768, 30, 32767 } };
    for (const Rect& rect : kRects)
        for (ThemeButtonKind kind = 0; kind <= kLastKind; ++kind) {
            const ThemeButtonDrawInfo info = { 0xFFFFFFFF, 0xFFFF, 0xFFFF };
            CHECK(DrawThemeButton(&rect, kind, &info, nullptr, nullptr, nullptr, 0) == noErr);
        }
}

TEST_CASE("DrawThemeButton: without a current port nothing happens")
{
    const ThemeButtonDrawInfo info = { kThemeStateActive, 0, 0 };
    SetPort(nullptr);
    CHECK(DrawThemeButton(&kBounds, kThemePushButton, &info, nullptr, nullptr, nullptr, 0) == noErr);
}
