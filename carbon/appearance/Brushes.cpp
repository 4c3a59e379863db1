// Brushes, text colours and backgrounds: tables from the published indices to the palette.
#include "appearance/Geometry.h"
#include "appearance/Palette.h"

#include <Carbon/MacMemory.h>

#include <array>

namespace lampblack::appearance {

using namespace palette;

namespace {

// From index 1 on.
constexpr std::array<Color, 55> kBrushes = { {
    kDialog,      kDialog,                                  // dialog
    kDialog,      kDialog,                                  // alert
    kDialog,      kDialog,                                  // modeless dialog
    kUtility,     kUtility,                                 // utility window
    { 0xF3F6FA },                                           // list view, sorted column
    kWhite,                                                 // list view
    { 0xFFFFFF },                                           // icon label
    { 0xD9D9D9 },                                           // list view separator
    { 0x303030 },                                           // chasing arrows
    kFocus,                                                 // drag highlight
    kWhite,       kWhite,                                   // document and file windows
    { 0xB4B4B4 }, { 0xCFCFCF },                             // scroll bar delimiter
    kFocus,                                                 // focus
    { 0x2B2B2B }, { 0x000000 }, { 0x8A8A8A },               // popup arrow: active, pressed, inactive
    { 0xD03020 },                                           // guide mark
    kAccent,                                                // icon label, selected
    kDialog,      kWhite,                                   // static and active area
    { 0x868686 }, { 0xA6A6A6 },                             // button frame
    { 0xF4F4F4 }, { 0xF6F6F6 }, { 0xCBCFD5 },               // button face: active, inactive, pressed
    { 0x868686 }, { 0xABABAB }, { 0xD9D9D9 }, { 0xFFFFFF }, // active: dark shadow … light highlight
    { 0xA6A6A6 }, { 0xBCBCBC }, { 0xE2E2E2 }, { 0xFDFDFD }, // inactive
    { 0x74787E }, { 0x7E8288 }, { 0xBFC3C9 }, { 0xE0E3E7 }, // pressed
    { 0xFFFFFF }, { 0x9A9A9A }, { 0xFAFAFA }, { 0xC2C2C2 }, // bevel: active light, dark; inactive light, dark
    kDialog,                                                // notification
    kDialog,                                                // movable modal
    kSheet,                                                 // sheet, opaque
    kDrawer,                                                // drawer
    { 0xE6E6E6 },                                           // toolbar
    kSheet,                                                 // sheet, transparent
    { 0xFBFBFB },                                           // menu
    { 0x3F80E0 },                                           // menu, selected
} };

constexpr Color kSpecialBrushes[] = { { 0x000000 }, kWhite, kHighlight, kSecondaryHighlight }; // from -1 down

constexpr Color kTitleActive = { 0x1E1E1E }, kTitleInactive = { 0x8A8A8A };

constexpr std::array<Color, 48> kTextColors = { {
    kText,        kDimText,                     // dialog
    kText,        kDimText,                     // alert
    kText,        kDimText,                     // modeless dialog
    kText,        kDimText,                     // window header
    kText,        kDimText,       kText,        // placard
    kText,        kDimText,       kText,        // push button
    kText,        kDimText,       kText,        // bevel button
    kText,        kDimText,       kText,        // popup button
    kText,                                      // icon label
    kText,                                      // list view
    kTitleActive, kTitleInactive,               // document window title
    kTitleActive, kTitleInactive,               // movable modal window title
    kTitleActive, kTitleInactive,               // utility window title
    kTitleActive, kTitleInactive,               // popup window title
    kText,        kWhite,         { 0x9A9A9A }, // menu title: active, selected, disabled
    kText,        kWhite,         { 0x9F9F9F }, // menu item
    kText,        kDimText,                     // popup label
    kText,        kText,          kText,        // tab: front, others, pressed
    kDimText,     kDimText,                     // tab, inactive: front, others
    kWhite,                                     // icon label, selected
    kText,        kDimText,                     // bevel button that stays down
    kText,                                      // notification
    { 0x5A5A5A },                               // system detail
} };

RGBColor Published(Color inColor)
{
    const auto wide = [](uint32_t inByte) { return (UInt16)((inByte & 0xFF) * 0x101); };
    return { wide(inColor.rgb >> 16), wide(inColor.rgb >> 8), wide(inColor.rgb) };
}

const Color* FindBrush(ThemeBrush inBrush)
{
    if (inBrush >= 1 && inBrush <= (int)kBrushes.size())
        return &kBrushes[(size_t)inBrush - 1];
    if (inBrush <= kThemeBrushBlack && inBrush >= kThemeBrushSecondaryHighlightColor)
        return &kSpecialBrushes[-1 - inBrush];
    return nullptr;
}

const Color* FindTextColor(ThemeTextColor inColor)
{
    if (inColor >= 1 && inColor <= (int)kTextColors.size())
        return &kTextColors[(size_t)inColor - 1];
    return inColor == kThemeTextColorBlack ? &kText : inColor == kThemeTextColorWhite ? &kWhite : nullptr;
}

} // namespace

} // namespace lampblack::appearance

using namespace lampblack::appearance;

OSStatus GetThemeBrushAsColor(ThemeBrush inBrush, SInt16, Boolean, RGBColor* outColor)
{
    const Color* brush = FindBrush(inBrush);
    if (!outColor)
        return paramErr;
    if (!brush)
        return appearanceBadBrushIndexErr;
    *outColor = Published(*brush);
    return noErr;
}

OSStatus GetThemeTextColor(ThemeTextColor inColor, SInt16, Boolean, RGBColor* outColor)
{
    const Color* color = FindTextColor(inColor);
    if (!outColor)
        return paramErr;
    if (!color)
        return appearanceBadTextColorIndexErr;
    *outColor = Published(*color);
    return noErr;
}

OSStatus SetThemePen(ThemeBrush inBrush, SInt16 inDepth, Boolean inIsColorDevice)
{
    RGBColor color = {};
    const OSStatus status = GetThemeBrushAsColor(inBrush, inDepth, inIsColorDevice, &color);
    if (status != noErr)
        return status;
    Pattern black = {};
    RGBForeColor(&color);
    PenPat(GetQDGlobalsBlack(&black));
    return noErr;
}

OSStatus SetThemeBackground(ThemeBrush inBrush, SInt16 inDepth, Boolean inIsColorDevice)
{
    RGBColor color = {};
    const OSStatus status = GetThemeBrushAsColor(inBrush, inDepth, inIsColorDevice, &color);
    if (status != noErr)
        return status;
    Pattern white = {};
    RGBBackColor(&color);
    BackPat(GetQDGlobalsWhite(&white));
    return noErr;
}

OSStatus SetThemeTextColor(ThemeTextColor inColor, SInt16 inDepth, Boolean inIsColorDevice)
{
    RGBColor color = {};
    const OSStatus status = GetThemeTextColor(inColor, inDepth, inIsColorDevice, &color);
    if (status == noErr)
        RGBForeColor(&color);
    return status;
}

OSStatus ApplyThemeBackground(ThemeBackgroundKind inKind, const Rect* inBounds, ThemeDrawState, SInt16,
                              Boolean)
{
    // Each is the mean of what is drawn there on a dialog's background.
    static constexpr Color kBackgrounds[] = {
        { 0xE4E4E4 }, { 0xF6F6F6 }, { 0xF6F6F6 }, { 0xF6F6F6 }, { 0xE4E4E4 }
    };
    if (!inBounds || inKind < kThemeBackgroundTabPane || inKind > kThemeBackgroundSecondaryGroupBox)
        return paramErr;
    const RGBColor color = Published(kBackgrounds[inKind - kThemeBackgroundTabPane]);
    Pattern white = {};
    RGBBackColor(&color);
    BackPat(GetQDGlobalsWhite(&white));
    return noErr;
}

OSStatus GetThemeAccentColors(CTabHandle* outColors)
{
    static constexpr Color kAccents[] = { kAccentPale, kAccentLight, kFocus,     kAccent,
                                          kAccentDark, kAccentEdge,  kAccentDeep };
    if (!outColors)
        return paramErr;
    const size_t count = std::size(kAccents);
    *outColors = (CTabHandle)NewHandleClear((Size)(sizeof(ColorTable) + (count - 1) * sizeof(ColorSpec)));
    if (!*outColors)
        return memFullErr;
    ColorTable& table = ***outColors;
    table.ctSize = (short)(count - 1);
    ColorSpec* entries = table.ctTable;
    for (size_t index = 0; index < count; ++index)
        entries[index] = { (short)index, Published(kAccents[index]) };
    return noErr;
}
