// The theme's fonts as quickdraw/ knows them.
#ifndef LAMPBLACK_APPEARANCE_THEMEFONTS_H
#define LAMPBLACK_APPEARANCE_THEMEFONTS_H

#include <Carbon/Appearance.h>
#include <quickdraw/TextEngine.h>

namespace lampblack::appearance {

// False when there is no such font. kThemeCurrentPortFont is what the current port has.
bool FindThemeFont(ThemeFontID, quickdraw::TextFontStyle* outStyle);

} // namespace lampblack::appearance

#endif
