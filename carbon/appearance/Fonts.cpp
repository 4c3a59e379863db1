// The fonts of the theme.
#include "appearance/ThemeFonts.h"

#include <Carbon/Fonts.h>

#include <cstring>

namespace lampblack::appearance {

namespace {

struct ThemeFont {
    ThemeFontID id;
    short size;
    Style style;
};

// All are the system's one family; the published sizes.
constexpr const char kFamily[] = "\015Lucida Grande";

constexpr ThemeFont kFonts[] = {
    { kThemeSystemFont, 13, normal },
    { kThemeSmallSystemFont, 11, normal },
    { kThemeSmallEmphasizedSystemFont, 11, bold },
    { kThemeViewsFont, 12, normal },
    { kThemeEmphasizedSystemFont, 13, bold },
    { kThemeApplicationFont, 13, normal },
    { kThemeLabelFont, 10, normal },
    { kThemeSystemFontDetail, 9, normal },
    { kThemeSystemFontDetailEmphasized, 9, bold },
    { kThemeMenuTitleFont, 14, normal },
    { kThemeMenuItemFont, 14, normal },
    { kThemeMenuItemMarkFont, 14, normal },
    { kThemeMenuItemCmdKeyFont, 14, normal },
    { kThemeWindowTitleFont, 13, normal },
    { kThemePushButtonFont, 13, normal },
    { kThemeUtilityWindowTitleFont, 11, normal },
    { kThemeAlertHeaderFont, 13, bold },
    { kThemeToolbarFont, 11, normal },
    { kThemeMiniSystemFont, 9, normal },
};

const ThemeFont* FindFont(ThemeFontID inFontID)
{
    for (const ThemeFont& font : kFonts)
        if (font.id == inFontID)
            return &font;
    return nullptr;
}

ConstStr255Param Family()
{
    return (ConstStr255Param)kFamily;
}

void GetPortFont(Str255 outName, SInt16* outSize, Style* outStyle)
{
    const CGrafPtr port = GetQDGlobalsThePort();
    if (outName)
        GetFontName(GetPortTextFont(port), outName);
    if (outSize)
        *outSize = GetPortTextSize(port);
    if (outStyle)
        *outStyle = GetPortTextFace(port);
}

// The number is asked for each time: a resource file may bring a family of that name.
short FamilyNumber()
{
    short number = 0;
    GetFNum(Family(), &number);
    return number;
}

} // namespace

bool FindThemeFont(ThemeFontID inFontID, quickdraw::TextFontStyle* outStyle)
{
    const CGrafPtr port = GetQDGlobalsThePort();
    if (inFontID == kThemeCurrentPortFont) {
        *outStyle = { GetPortTextFont(port), GetPortTextSize(port), GetPortTextFace(port) };
        return true;
    }
    const ThemeFont* font = FindFont(inFontID);
    if (font)
        *outStyle = { FamilyNumber(), font->size, font->style };
    return font;
}

} // namespace lampblack::appearance

using namespace lampblack::appearance;

OSStatus UseThemeFont(ThemeFontID inFontID, ScriptCode)
{
    if (inFontID == kThemeCurrentPortFont)
        return noErr;
    const ThemeFont* font = FindFont(inFontID);
    if (!font)
        return paramErr;
    TextFont(FamilyNumber());
    TextSize(font->size);
    TextFace(font->style);
    return noErr;
}

OSStatus GetThemeFont(ThemeFontID inFontID, ScriptCode, Str255 outFontName, SInt16* outFontSize,
                      Style* outStyle)
{
    if (inFontID == kThemeCurrentPortFont) {
        GetPortFont(outFontName, outFontSize, outStyle);
        return noErr;
    }
    const ThemeFont* font = FindFont(inFontID);
    if (!font)
        return paramErr;
    if (outFontName)
        std::memcpy(outFontName, kFamily, sizeof kFamily - 1);
    if (outFontSize)
        *outFontSize = font->size;
    if (outStyle)
        *outStyle = font->style;
    return noErr;
}
