#include "appearance/TestPort.h"

#include <Carbon/Fonts.h>
#include <Carbon/MacMemory.h>
#include <Carbon/Sound.h>
#include <doctest/doctest.h>
#include <lampblack/host.h>

using namespace lampblack;
using namespace lampblack::appearance;

TEST_CASE(
    "SetThemeCursor: the published cursors reach the machine; any other index is refused and changes nothing")
{
    CHECK(SetThemeCursor(kThemePointingHandCursor) == noErr);
    CHECK(host::CurrentThemeCursor() == kThemePointingHandCursor);
    CHECK(SetThemeCursor(kThemePoofCursor) == noErr);
    CHECK(SetThemeCursor(kThemePoofCursor + 1) == themeBadCursorIndexErr);
    CHECK(SetThemeCursor(0xFFFFFFFF) == themeBadCursorIndexErr);
    CHECK(host::CurrentThemeCursor() == kThemePoofCursor);
    SetThemeCursor(kThemeArrowCursor);
}

TEST_CASE("SetAnimatedThemeCursor: cursors that move take any step, the others are refused")
{
    for (UInt32 step : { 0u, 5u, 11u, 12u, 0xFFFFFFFFu }) {
        CHECK(SetAnimatedThemeCursor(kThemeWatchCursor, step) == noErr);
        CHECK(SetAnimatedThemeCursor(kThemeCountingUpAndDownHandCursor, step) == noErr);
        CHECK(SetAnimatedThemeCursor(kThemeSpinningCursor, step) == noErr);
    }
    CHECK(SetAnimatedThemeCursor(kThemeArrowCursor, 0) == themeBadCursorIndexErr);
    CHECK(SetAnimatedThemeCursor(99, 0) == themeBadCursorIndexErr);
    SetThemeCursor(kThemeArrowCursor);
}

TEST_CASE("PlayThemeSound: the sound reaches the machine; none is silent")
{
    const size_t before = host::PlayedSounds().size();
    CHECK(PlayThemeSound(kThemeSoundCheckboxExit) == noErr);
    CHECK(PlayThemeSound(kThemeSoundNone) == noErr);
    REQUIRE(host::PlayedSounds().size() == before + 1);
    CHECK(host::PlayedSounds().back() == 'chkx');
}

TEST_CASE("GetThemeBrushAsColor: every published brush has a colour; others are bad indices")
{
    RGBColor color = {};
    for (ThemeBrush brush = kThemeBrushSecondaryHighlightColor; brush <= kThemeBrushMenuBackgroundSelected;
         ++brush)
        CHECK(GetThemeBrushAsColor(brush, 32, true, &color) ==
              (brush == 0 ? (OSStatus)appearanceBadBrushIndexErr : (OSStatus)noErr));
    CHECK(GetThemeBrushAsColor(56, 32, true, &color) == appearanceBadBrushIndexErr);
    CHECK(GetThemeBrushAsColor(-5, 32, true, &color) == appearanceBadBrushIndexErr);
    CHECK(GetThemeBrushAsColor(1, 32, true, nullptr) == paramErr);
    GetThemeBrushAsColor(kThemeBrushWhite, 32, true, &color);
    CHECK(color.red == 0xFFFF);
    GetThemeBrushAsColor(kThemeBrushBlack, 32, true, &color);
    CHECK(color.green == 0);
}

TEST_CASE("GetThemeTextColor: every published text colour; the unavailable ones are paler than the others")
{
    RGBColor color = {}, dim = {};
    for (ThemeTextColor index = 1; index <= kThemeTextColorSystemDetail; ++index)
        CHECK(GetThemeTextColor(index, 32, true, &color) == noErr);
    for (ThemeTextColor index : { 0, 49, -3 })
        CHECK(GetThemeTextColor(index, 32, true, &color) == appearanceBadTextColorIndexErr);
    CHECK(GetThemeTextColor(1, 32, true, nullptr) == paramErr);
    GetThemeTextColor(kThemeTextColorDialogActive, 32, true, &color);
    GetThemeTextColor(kThemeTextColorDialogInactive, 32, true, &dim);
    CHECK(dim.red > color.red);
}

TEST_CASE("SetThemePen, SetThemeBackground and SetThemeTextColor: the port draws and erases with the colour")
{
    TestPort port;
    const Rect rect = { 0, 0, 10, 10 };
    CHECK(SetThemeBackground(kThemeBrushDialogBackgroundActive, 32, true) == noErr);
    EraseRect(&rect);
    CHECK(port.Pixel(5, 5) == 0xEDEDED);
    CHECK(SetThemePen(kThemeBrushFocusHighlight, 32, true) == noErr);
    PaintRect(&rect);
    CHECK(Blueness(port.Pixel(5, 5)) > 60);
    RGBColor fore = {};
    CHECK(SetThemeTextColor(kThemeTextColorMenuItemSelected, 32, true) == noErr);
    GetForeColor(&fore);
    CHECK(fore.red == 0xFFFF);
    CHECK(SetThemePen(0, 32, true) == appearanceBadBrushIndexErr);
    CHECK(SetThemeBackground(100, 32, true) == appearanceBadBrushIndexErr);
    CHECK(SetThemeTextColor(100, 32, true) == appearanceBadTextColorIndexErr);
}

TEST_CASE("ApplyThemeBackground: erasing in a group gives the group's own background")
{
    TestPort port;
    const Rect group = { 10, 10, 60, 100 }, inside = { 20, 20, 50, 90 };
    const Rect all = { 0, 0, 100, 200 };
    SetThemeBackground(kThemeBrushDialogBackgroundActive, 32, true);
    EraseRect(&all);
    DrawThemeTabPane(&group, kThemeStateActive);
    const uint32_t drawn = port.Pixel(15, 30);
    CHECK(ApplyThemeBackground(kThemeBackgroundTabPane, &group, kThemeStateActive, 32, true) == noErr);
    EraseRect(&inside);
    CHECK(std::abs((int)(port.Pixel(30, 30) & 0xFF) - (int)(drawn & 0xFF)) <= 1);
    CHECK(ApplyThemeBackground(0, &group, 1, 32, true) == paramErr);
    CHECK(ApplyThemeBackground(6, &group, 1, 32, true) == paramErr);
    CHECK(ApplyThemeBackground(kThemeBackgroundTabPane, nullptr, 1, 32, true) == paramErr);
}

TEST_CASE("GetThemeDrawingState: a state brings colours, pen and text back; a disposed one is paramErr")
{
    TestPort port;
    const RGBColor red = { 0xFFFF, 0, 0 };
    RGBForeColor(&red);
    PenSize(3, 4);
    TextSize(17);
    Pattern gray = {};
    BackPat(GetQDGlobalsGray(&gray));
    ThemeDrawingState state = nullptr;
    CHECK(GetThemeDrawingState(&state) == noErr);
    CHECK(NormalizeThemeDrawingState() == noErr);
    PenState pen = {};
    GetPenState(&pen);
    CHECK(pen.pnSize.h == 1);
    TextSize(9);
    CHECK(SetThemeDrawingState(state, false) == noErr);
    RGBColor fore = {};
    GetForeColor(&fore);
    GetPenState(&pen);
    CHECK(fore.red == 0xFFFF);
    CHECK(pen.pnSize.h == 3);
    CHECK(GetPortTextSize(port.Ref()) == 17);
    CHECK(quickdraw::PortBackPattern(port.Ref()).pat[0] == gray.pat[0]);
    CHECK(SetThemeDrawingState(state, true) == noErr);
    CHECK(SetThemeDrawingState(state, false) == paramErr);
    CHECK(DisposeThemeDrawingState(state) == paramErr);
    CHECK(DisposeThemeDrawingState(nullptr) == paramErr);
    CHECK(GetThemeDrawingState(nullptr) == paramErr);
}

TEST_CASE("GetThemeFont and UseThemeFont: the published sizes; no other fonts")
{
    TestPort port;
    Str255 name = {}, used = {};
    SInt16 size = 0;
    Style style = 0;
    CHECK(GetThemeFont(kThemeSmallEmphasizedSystemFont, -1, name, &size, &style) == noErr);
    CHECK(size == 11);
    CHECK(style == bold);
    CHECK(UseThemeFont(kThemeSystemFont, -1) == noErr);
    CHECK(GetPortTextSize(port.Ref()) == 13);
    CHECK(GetPortTextFace(port.Ref()) == normal);
    GetFontName(GetPortTextFont(port.Ref()), used);
    CHECK(used[0] == name[0]);
    CHECK(GetThemeFont(kThemeCurrentPortFont, -1, nullptr, &size, nullptr) == noErr);
    CHECK(size == 13);
    CHECK(GetThemeFont(kThemeMenuTitleFont, -1, nullptr, nullptr, nullptr) == noErr);
    CHECK(UseThemeFont(50, -1) == paramErr);
    CHECK(GetThemeFont(50, -1, name, &size, &style) == paramErr);
}

TEST_CASE("GetThemeMetric: known measures; unknown ones are paramErr")
{
    SInt32 value = 0;
    CHECK(GetThemeMetric(kThemeMetricScrollBarWidth, &value) == noErr);
    CHECK(value == 15);
    CHECK(GetThemeMetric(kThemeMetricPushButtonHeight, &value) == noErr);
    CHECK(value == 20);
    CHECK(GetThemeMetric(9999, &value) == paramErr);
    CHECK(GetThemeMetric(kThemeMetricPushButtonHeight, nullptr) == paramErr);
}

TEST_CASE("GetThemeAccentColors: a colour table of the caller's, lightest first")
{
    CTabHandle colors = nullptr;
    REQUIRE(GetThemeAccentColors(&colors) == noErr);
    const ColorTable& table = **colors;
    CHECK(table.ctSize == 6);
    CHECK(table.ctTable[0].rgb.red > table.ctTable[table.ctSize].rgb.red);
    DisposeHandle((Handle)colors);
    CHECK(GetThemeAccentColors(nullptr) == paramErr);
}

TEST_CASE("RegisterAppearanceClient: the second registration, and a withdrawal without one, are told")
{
    CHECK(UnregisterAppearanceClient() == appearanceProcessNotRegisteredErr);
    CHECK(RegisterAppearanceClient() == noErr);
    CHECK(RegisterAppearanceClient() == appearanceProcessRegisteredErr);
    CHECK(UnregisterAppearanceClient() == noErr);
}

namespace {

Rect gContent = {};
RGBColor gFore = {};

void Item(const Rect* inBounds, SInt16, Boolean, SRefCon)
{
    gContent = *inBounds;
    GetForeColor(&gFore);
}

} // namespace

TEST_CASE("DrawThemeMenuItem: the selected item is blue and its text white; the port's colour stays")
{
    TestPort port;
    const Rect menu = { 0, 0, 100, 150 }, item = { 20, 0, 39, 150 };
    CHECK(DrawThemeMenuBackground(&menu, kThemeMenuTypePullDown) == noErr);
    CHECK(DrawThemeMenuItem(&menu, &item, 0, 100, kThemeMenuActive, kThemeMenuItemPlain, Item, 0) == noErr);
    CHECK(gFore.red == 0);
    CHECK(Blueness(port.Pixel(75, 29)) == 0);
    CHECK(DrawThemeMenuItem(&menu, &item, 0, 100, kThemeMenuSelected, kThemeMenuItemPlain, Item, 0) == noErr);
    CHECK(gFore.red == 0xFFFF);
    CHECK(Blueness(port.Pixel(75, 29)) > 60);
    CHECK(IsWithin(gContent, item));
    RGBColor fore = {};
    GetForeColor(&fore);
    CHECK(fore.red == 0);
    SInt16 height = 0, width = 0;
    GetThemeMenuItemExtra(kThemeMenuItemPlain, &height, &width);
    CHECK(WidthOf(gContent) == WidthOf(item) - width);
    const short plain = gContent.right;
    DrawThemeMenuItem(&menu, &item, 0, 100, kThemeMenuActive, kThemeMenuItemHierarchical, Item, 0);
    CHECK(gContent.right < plain);
}

TEST_CASE("Menus: bad states, types and arguments are paramErr")
{
    const Rect rect = { 0, 0, 20, 100 };
    SInt16 number = 0;
    RgnHandle region = NewRgn();
    CHECK(DrawThemeMenuItem(&rect, &rect, 0, 20, 2, kThemeMenuItemPlain, nullptr, 0) == paramErr);
    CHECK(DrawThemeMenuItem(&rect, nullptr, 0, 20, 0, kThemeMenuItemPlain, nullptr, 0) == paramErr);
    CHECK(DrawThemeMenuItem(&rect, &rect, 0, 20, 0, 4, nullptr, 0) == paramErr);
    CHECK(DrawThemeMenuTitle(&rect, &rect, 9, 0, nullptr, 0) == paramErr);
    CHECK(DrawThemeMenuBackground(&rect, 3) == paramErr);
    CHECK(DrawThemeMenuBackground(nullptr, 0) == paramErr);
    CHECK(DrawThemeMenuBarBackground(nullptr, 0, 0) == paramErr);
    CHECK(DrawThemeMenuSeparator(nullptr) == paramErr);
    CHECK(GetThemeMenuBarHeight(nullptr) == paramErr);
    CHECK(GetThemeMenuSeparatorHeight(nullptr) == paramErr);
    CHECK(GetThemeMenuTitleExtra(nullptr, false) == paramErr);
    CHECK(GetThemeMenuItemExtra(kThemeMenuItemPlain, nullptr, &number) == paramErr);
    CHECK(GetThemeMenuBackgroundRegion(&rect, 0, nullptr) == paramErr);
    CHECK(GetThemeMenuBackgroundRegion(&rect, kThemeMenuTypePopUp, region) == noErr);
    DisposeRgn(region);
}
