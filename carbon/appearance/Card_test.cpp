// The test card: every element in every state on one picture, for people to look at. LAMPBLACK_CARD names the
// PNG.
#include "appearance/TestPort.h"

#include <cairo.h>
#include <doctest/doctest.h>

#include <cstdlib>
#include <string_view>

using namespace lampblack::appearance;

namespace {

constexpr int kWidth = 1000, kHeight = 940;
constexpr ThemeDrawState kStates[] = { kThemeStateActive, kThemeStatePressed, kThemeStateInactive,
                                       kThemeStateUnavailable };

void Write(short inH, short inV, std::string_view inText,
           ThemeTextColor inColor = kThemeTextColorDialogActive, ThemeFontID inFont = kThemeSystemFont)
{
    UseThemeFont(inFont, -1);
    SetThemeTextColor(inColor, kDepth, true);
    MoveTo(inH, inV);
    DrawText(inText.data(), 0, (short)inText.size());
    ForeColor(blackColor);
}

void WriteCentered(const Rect& inRect, std::string_view inText, ThemeTextColor inColor, ThemeFontID inFont)
{
    FontInfo font = {};
    UseThemeFont(inFont, -1);
    GetFontInfo(&font);
    const int width = TextWidth(inText.data(), 0, (short)inText.size());
    Write((short)(inRect.left + (WidthOf(inRect) - width) / 2),
          (short)(inRect.top + (HeightOf(inRect) - font.ascent - font.descent + 1) / 2 + font.ascent), inText,
          inColor, inFont);
}

bool IsDim(ThemeDrawState inState)
{
    return inState == kThemeStateUnavailable;
}

void Button(short inLeft, short inTop, short inWidth, short inHeight, ThemeButtonKind inKind,
            ThemeDrawState inState, std::string_view inLabel = {}, ThemeButtonValue inValue = 0,
            ThemeButtonAdornment inAdornment = 0, ThemeFontID inFont = kThemeSystemFont)
{
    const Rect bounds = MakeRect(inLeft, inTop, inWidth, inHeight);
    const ThemeButtonDrawInfo info = { inState, inValue, inAdornment };
    DrawThemeButton(&bounds, inKind, &info, nullptr, nullptr, nullptr, 0);
    Rect content = {};
    GetThemeButtonContentBounds(&bounds, inKind, &info, &content);
    const bool centered =
        inKind == kThemePushButton || inKind == kThemePushButtonSmall || inKind == kThemeBevelButton;
    const ThemeTextColor color =
        IsDim(inState) ? kThemeTextColorPushButtonInactive : kThemeTextColorPushButtonActive;
    if (!centered)
        content.right = 32767;
    if (inLabel.empty())
        return;
    if (centered)
        return WriteCentered(content, inLabel, color, inFont);
    FontInfo font = {};
    UseThemeFont(inFont, -1);
    GetFontInfo(&font);
    Write(content.left,
          (short)(content.top + (HeightOf(content) - font.ascent - font.descent + 1) / 2 + font.ascent),
          inLabel, color, inFont);
}

void ButtonRows()
{
    for (int row = 0; row < 4; ++row) {
        const ThemeDrawState state = kStates[row];
        const short y = (short)(14 + row * 34);
        Button(14, y, 84, 20, kThemePushButton, state, "Cancel");
        Button(108, y, 84, 20, kThemePushButton, state, "OK", 0, kThemeAdornmentDefault);
        Button(202, y, 60, 17, kThemePushButtonSmall, state, "Small", 0, 0, kThemeSmallSystemFont);
        for (ThemeButtonValue value = 0; value < 3; ++value) {
            Button((short)(274 + value * 22), y, 20, 18, kThemeCheckBox, state, {}, value);
            Button((short)(344 + value * 22), y, 20, 18, kThemeRadioButton, state, {}, value);
        }
        Button(412, y, 60, 16, kThemeSmallCheckBox, state, "Small", 1, 0, kThemeSmallSystemFont);
        Button(468, y, 60, 16, kThemeSmallRadioButton, state, "Small", 1, 0, kThemeSmallSystemFont);
        Button(528, y, 110, 20, kThemePopupButton, state, "Popup menu");
        Button(648, y, 90, 17, kThemePopupButtonSmall, state, "Small", 0, 0, kThemeSmallSystemFont);
        Button(748, y, 90, 20, kThemeComboBox, state, "Combo");
        Button(848, y, 13, 23, kThemeIncDecButton, state);
        Button(868, y, 20, 20, kThemeRoundButton, state, {});
        Button(894, (short)(y - 2), 25, 25, kThemeLargeRoundButton, state);
        for (ThemeButtonValue value = 0; value < 3; ++value)
            Button((short)(928 + value * 16), (short)(y + 3), 13, 13, kThemeDisclosureTriangle, state, {},
                   value);
    }
}

void BevelRows()
{
    for (int row = 0; row < 4; ++row) {
        const ThemeDrawState state = kStates[row];
        const short x = (short)(14 + row * 246), y = 150;
        Button(x, y, 28, 28, kThemeSmallBevelButton, state);
        Button((short)(x + 34), y, 50, 28, kThemeBevelButton, state, "Bevel", 0, 0, kThemeSmallSystemFont);
        Button((short)(x + 90), y, 32, 32, kThemeLargeBevelButton, state, {}, 1);
        Button((short)(x + 128), y, 32, 28, kThemeRoundedBevelButton, state, {}, 0,
               kThemeAdornmentArrowDownArrow);
        Button((short)(x + 166), y, 22, 22, kThemeArrowButton, state);
        Button(x, (short)(y + 40), 90, 17, kThemeListHeaderButton, state, "Name", 1,
               kThemeAdornmentHeaderButtonSortUp, kThemeSmallSystemFont);
        Button((short)(x + 90), (short)(y + 40), 80, 17, kThemeListHeaderButton, state, "Date", 0, 0,
               kThemeSmallSystemFont);
    }
}

ThemeTrackDrawInfo TrackInfo(ThemeTrackKind inKind, const Rect& inBounds, bool inLies, int inRow)
{
    static constexpr ThemeTrackEnableState kEnable[] = { kThemeTrackActive, kThemeTrackActive,
                                                         kThemeTrackInactive, kThemeTrackDisabled };
    ThemeTrackDrawInfo info = {};
    info.kind = inKind;
    info.bounds = inBounds;
    info.max = 100;
    info.value = 40;
    info.attributes = (ThemeTrackAttributes)(kThemeTrackShowThumb | (inLies ? kThemeTrackHorizontal : 0));
    info.enableState = kEnable[inRow];
    return info;
}

void Track(ThemeTrackDrawInfo inInfo, int inRow)
{
    const bool bar = inInfo.kind == kThemeScrollBarMedium || inInfo.kind == kThemeScrollBarSmall;
    if (bar) {
        inInfo.trackInfo.scrollbar.viewsize = 60;
        inInfo.trackInfo.scrollbar.pressState =
            inRow == 1 ? kThemeThumbPressed | kThemeRightOutsideArrowPressed : 0;
    } else if (inInfo.kind == kThemeSliderMedium || inInfo.kind == kThemeSliderSmall) {
        inInfo.trackInfo.slider.pressState = inRow == 1 ? kThemeThumbPressed : 0;
    }
    DrawThemeTrack(&inInfo, nullptr, nullptr, 0);
}

void TrackRows()
{
    for (int row = 0; row < 4; ++row) {
        const short x = (short)(14 + row * 246), y = 224;
        Track(TrackInfo(kThemeScrollBarMedium, MakeRect(x, y, 220, 15), true, row), row);
        Track(TrackInfo(kThemeScrollBarSmall, MakeRect(x, y + 22, 220, 11), true, row), row);
        Track(TrackInfo(kThemeScrollBarMedium, MakeRect(x, y + 44, 15, 150), false, row), row);
        Track(TrackInfo(kThemeSliderMedium, MakeRect(x + 24, y + 42, 196, 18), true, row), row);
        ThemeTrackDrawInfo ticks =
            TrackInfo(kThemeSliderMedium, MakeRect(x + 24, y + 66, 196, 25), true, row);
        ticks.trackInfo.slider.thumbDir = kThemeThumbDownward;
        Track(ticks, row);
        DrawThemeTrackTickMarks(&ticks, 11, nullptr, 0);
        Track(TrackInfo(kThemeSliderSmall, MakeRect(x + 24, y + 96, 96, 14), true, row), row);
        ThemeTrackDrawInfo upright =
            TrackInfo(kThemeSliderMedium, MakeRect(x + 190, y + 94, 25, 100), false, row);
        upright.trackInfo.slider.thumbDir = kThemeThumbDownward;
        Track(upright, row);
        DrawThemeTrackTickMarks(&upright, 6, nullptr, 0);
        Track(TrackInfo(kThemeProgressBarMedium, MakeRect(x + 24, y + 118, 150, 13), true, row), row);
        ThemeTrackDrawInfo stripes =
            TrackInfo(kThemeIndeterminateBarMedium, MakeRect(x + 24, y + 138, 150, 13), true, row);
        stripes.trackInfo.progress.phase = (UInt8)(row * 2);
        Track(stripes, row);
        Track(TrackInfo(kThemeProgressBarLarge, MakeRect(x + 24, y + 158, 150, 17), true, row), row);
        Track(TrackInfo(kThemeRelevanceBar, MakeRect(x + 24, y + 182, 100, 12), true, row), row);
        const Rect spinner = MakeRect(x + 150, y + 178, 16, 16), large = MakeRect(x + 130, y + 88, 28, 28);
        DrawThemeChasingArrows(&spinner, (UInt32)row * 3, kStates[row], nullptr, 0);
        DrawThemeChasingArrows(&large, (UInt32)row * 3, kStates[row], nullptr, 0);
    }
}

void Tabs(short inX, short inY, int inRow)
{
    static constexpr ThemeTabStyle kFront[] = { kThemeTabFront, kThemeTabFront, kThemeTabFrontInactive,
                                                kThemeTabFrontUnavailable };
    static constexpr ThemeTabStyle kOther[] = { kThemeTabNonFront, kThemeTabNonFrontPressed,
                                                kThemeTabNonFrontInactive, kThemeTabNonFrontUnavailable };
    const Rect pane = MakeRect(inX, inY + kThemeLargeTabHeight, 226, 90);
    DrawThemeTabPane(&pane, kStates[inRow]);
    static constexpr const char* kTitles[] = { "General", "Sound", "Keys" };
    for (int tab = 0; tab < 3; ++tab) {
        const Rect bounds =
            MakeRect(inX + 16 + tab * 64, inY, 65, kThemeLargeTabHeight + kThemeTabPaneOverlap);
        DrawThemeTab(&bounds, tab == 0 ? kFront[inRow] : kOther[inRow], kThemeTabNorth, nullptr, 0);
        WriteCentered(Inset(bounds, 0, 0, 0, 2), kTitles[tab],
                      inRow > 2 ? kThemeTextColorTabFrontInactive : kThemeTextColorTabFrontActive,
                      kThemeSmallSystemFont);
    }
    const Rect well = MakeRect(inX + 12, inY + 36, 40, 40);
    DrawThemeGenericWell(&well, kStates[inRow], true);
    const Rect line = MakeRect(inX + 64, inY + 40, 150, 2);
    DrawThemeSeparator(&line, kStates[inRow]);
    const Rect placard = MakeRect(inX + 64, inY + 52, 70, 16);
    DrawThemePlacard(&placard, kStates[inRow]);
    const Rect upright = MakeRect(inX + 146, inY + 48, 2, 40);
    DrawThemeSeparator(&upright, kStates[inRow]);
}

void GroupsAndFrames()
{
    for (int row = 0; row < 4; ++row) {
        const short x = (short)(14 + row * 246), y = 436;
        const ThemeDrawState state = kStates[row];
        Tabs(x, y, row);
        const Rect group = MakeRect(x, y + 128, 226, 92), inner = MakeRect(x + 130, y + 140, 86, 68);
        DrawThemePrimaryGroup(&group, state);
        DrawThemeSecondaryGroup(&inner, state);
        const Rect field = MakeRect(x + 12, y + 142, 104, 22), list = MakeRect(x + 12, y + 174, 104, 36);
        for (const Rect& rect : { field, list }) {
            SetThemeBackground(kThemeBrushWhite, kDepth, true);
            EraseRect(&rect);
        }
        DrawThemeEditTextFrame(&field, state);
        DrawThemeListBoxFrame(&list, state);
        Write((short)(x + 16), (short)(y + 157), "Edit text", IsDim(state) ? 2 : 1);
        if (row == 0)
            DrawThemeFocusRect(&field, true);
        if (row == 1)
            DrawThemeFocusRect(&list, true);
        Button((short)(x + 140), (short)(y + 150), 70, 18, kThemeCheckBox, state, "Check", 1,
               row == 0 ? 4 : 0);
        Button((short)(x + 140), (short)(y + 176), 70, 18, kThemeRadioButton, state, "Radio", 1,
               row == 0 ? 4 : 0);
    }
}

void Title(const Rect* inBounds, SInt16, Boolean, URefCon inColor)
{
    WriteCentered(*inBounds, "Untitled", (ThemeTextColor)inColor, kThemeWindowTitleFont);
}

void SmallTitle(const Rect* inBounds, SInt16, Boolean, URefCon inColor)
{
    WriteCentered(*inBounds, "Tools", (ThemeTextColor)inColor, kThemeUtilityWindowTitleFont);
}

void Windows()
{
    constexpr ThemeWindowAttributes kAll = kThemeWindowHasGrow | kThemeWindowHasFullZoom |
                                           kThemeWindowHasCloseBox | kThemeWindowHasCollapseBox |
                                           kThemeWindowHasTitleText;
    static constexpr ThemeDrawState kFrameStates[] = { kThemeStateActive, kThemeStateRollover,
                                                       kThemeStatePressed, kThemeStateInactive };
    for (int row = 0; row < 4; ++row) {
        const short x = (short)(14 + row * 246), y = 696;
        const bool front = row < 3;
        const Rect content = MakeRect(x, y, 226, 40), tool = MakeRect(x, y + 66, 120, 24);
        for (const Rect& rect : { content, tool })
            EraseRect(&rect);
        DrawThemeWindowFrame(kThemeDocumentWindow, &content, kFrameStates[row], nullptr,
                             row == 1 ? kAll | kThemeWindowHasDirty : kAll, Title,
                             (URefCon)(front ? kThemeTextColorDocumentWindowTitleActive
                                             : kThemeTextColorDocumentWindowTitleInactive));
        DrawThemeStandaloneGrowBox({ (short)(content.bottom - 15), (short)(content.right - 15) },
                                   kThemeGrowRight | kThemeGrowDown, false, kFrameStates[row]);
        DrawThemeWindowFrame(kThemeUtilityWindow, &tool, kFrameStates[row], nullptr,
                             kThemeWindowHasCloseBox | kThemeWindowHasTitleText, SmallTitle,
                             (URefCon)(front ? kThemeTextColorUtilityWindowTitleActive
                                             : kThemeTextColorUtilityWindowTitleInactive));
        const Rect dialog = MakeRect(x + 140, y + 56, 80, 30);
        DrawThemeWindowFrame(row % 2 ? kThemePlainDialogWindow : kThemeDialogWindow, &dialog,
                             kFrameStates[row], nullptr, 0, nullptr, 0);
        const Rect header = MakeRect(x, y + 96, 226, 20);
        if (row % 2)
            DrawThemeWindowHeader(&header, kStates[row]);
        else
            DrawThemeWindowListViewHeader(&header, kStates[row]);
    }
}

void Label(const Rect* inBounds, SInt16, Boolean, SRefCon inText)
{
    FontInfo font = {};
    UseThemeFont(kThemeMenuItemFont, -1);
    GetFontInfo(&font);
    MoveTo(inBounds->left,
           (short)(inBounds->top + (HeightOf(*inBounds) - font.ascent - font.descent) / 2 + font.ascent));
    const std::string_view text = (const char*)inText;
    DrawText(text.data(), 0, (short)text.size());
}

void Menus()
{
    const Rect bar = MakeRect(14, 830, 520, 22);
    DrawThemeMenuBarBackground(&bar, kThemeMenuBarNormal, 0);
    static constexpr const char* kTitles[] = { "File", "Edit", "View", "Help" };
    for (int title = 0; title < 4; ++title) {
        const Rect rect = MakeRect(24 + title * 56, 830, 56, 22);
        DrawThemeMenuTitle(&bar, &rect,
                           title == 1   ? kThemeMenuSelected
                           : title == 3 ? kThemeMenuDisabled
                                        : 0,
                           0, Label, (SRefCon)kTitles[title]);
    }
    const Rect menu = MakeRect(80, 852, 170, 80);
    DrawThemeMenuBackground(&menu, kThemeMenuTypePullDown);
    static constexpr struct {
        const char* text;
        ThemeMenuState state;
        ThemeMenuItemType type;
    } kItems[] = { { "Undo", kThemeMenuDisabled, kThemeMenuItemPlain },
                   { "Cut", kThemeMenuSelected, kThemeMenuItemHierarchical },
                   { "Find", kThemeMenuActive, kThemeMenuItemHierarchical } };
    short top = 854;
    for (const auto& item : kItems) {
        const Rect rect = MakeRect(80, top, 170, 20);
        DrawThemeMenuItem(&menu, &rect, menu.top, menu.bottom, item.state, item.type, Label,
                          (SRefCon)item.text);
        top = (short)(top + 20);
        if (item.state != kThemeMenuDisabled)
            continue;
        const Rect line = MakeRect(80, top, 170, 11);
        DrawThemeMenuSeparator(&line);
        top = (short)(top + 11);
    }
}

void Save(const TestPort& inPort, const char* inPath)
{
    std::vector<uint32_t> pixels = inPort.Pixels();
    cairo_surface_t* surface = cairo_image_surface_create_for_data(
        (unsigned char*)pixels.data(), CAIRO_FORMAT_RGB24, kWidth, kHeight, kWidth * 4);
    CHECK(cairo_surface_write_to_png(surface, inPath) == CAIRO_STATUS_SUCCESS);
    cairo_surface_destroy(surface);
}

} // namespace

TEST_CASE("The test card: every element can be drawn on one port; a second drawing changes no pixel")
{
    TestPort port(kWidth, kHeight);
    const Rect all = MakeRect(0, 0, kWidth, kHeight);
    const auto draw = [&] {
        SetThemeBackground(kThemeBrushDialogBackgroundActive, kDepth, true);
        EraseRect(&all);
        ButtonRows();
        BevelRows();
        TrackRows();
        GroupsAndFrames();
        Windows();
        Menus();
    };
    draw();
    const auto first = port.Pixels();
    draw();
    CHECK(first == port.Pixels());
    if (const char* path = std::getenv("LAMPBLACK_CARD"))
        Save(port, path);
}
