// The calls of the Font Manager.
#include "FontFamilies.h"
#include "ResourceFonts.h"
#include "TextRun.h"

#include <Carbon/Fonts.h>
#include <Carbon/MacErrors.h>
#include <foundation/MacRoman.h>

#include <algorithm>

using namespace lampblack::quickdraw;

void GetFNum(ConstStr255Param name, short* familyID)
{
    if (!familyID)
        return;
    const FMFontFamily found = FMGetFontFamilyFromName(name);
    *familyID = found == kInvalidFontFamily ? (short)0 : found;
}

void GetFontName(short familyID, Str255 name)
{
    FMGetFontFamilyName(familyID, name);
}

Boolean RealFont(short fontNum, short size)
{
    if (size <= 0)
        return false;
    const FontPresence presence = PresenceOfResourceFont(fontNum, size);
    if (presence != FontPresence::NoFamily)
        return presence == FontPresence::Real;
    return !NameOfFamily(fontNum).empty();
}

void SetOutlinePreferred(Boolean outlinePreferred)
{
    if (OutlinesPreferred() == (bool)outlinePreferred)
        return;
    PreferOutlines(outlinePreferred);
    ForgetStrikes();
}

Boolean GetOutlinePreferred(void)
{
    return OutlinesPreferred();
}

Boolean IsOutline(Point numer, Point denom)
{
    const TextSettings& settings = CurrentTextSettings();
    const int size = settings.size > 0 ? settings.size : GetDefFontSize();
    const bool isScaled = numer.v > 0 && denom.v > 0;
    const auto scaled = (SInt16)std::clamp(isScaled ? size * numer.v / denom.v : size, 1, 1024);
    StrikeSource source;
    return !FindResourceFont(settings.font, scaled, settings.face, &source) || source.outlines;
}

short GetSysFont(void)
{
    return systemFont;
}

short GetDefFontSize(void)
{
    return 12;
}

short GetAppFont(void)
{
    return kFontIDGeneva;
}

FMFontFamily FMGetFontFamilyFromName(ConstStr255Param name)
{
    return name ? FamilyNamed(lampblack::foundation::Utf8FromPascal(name)) : (FMFontFamily)kInvalidFontFamily;
}

OSStatus FMGetFontFamilyName(FMFontFamily fontFamily, Str255 name)
{
    if (!name)
        return paramErr;
    const std::string found = NameOfFamily(fontFamily);
    lampblack::foundation::PascalFromMacRoman(lampblack::foundation::MacRomanFromUtf8(found), name);
    return found.empty() ? (OSStatus)kFMInvalidFontFamilyErr : (OSStatus)noErr;
}
