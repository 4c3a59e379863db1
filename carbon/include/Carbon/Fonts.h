// Font families by number and by name: those of the open resource files first ('FOND' with its 'sfnt' and
// 'NFNT' resources, and 'FONT' resources by their old numbers), then the classic ones, which stand for
// installed ones of like metrics, then the installed ones. Begin with GetFNum.
#ifndef LAMPBLACK_CARBON_FONTS_H
#define LAMPBLACK_CARBON_FONTS_H

#include <Carbon/MacTypes.h>

typedef SInt16 FMFontFamily;
typedef SInt16 FMFontStyle;
typedef SInt16 FMFontSize;

enum { kInvalidFontFamily = -1 };

// Characters of the system font: marks of menu items.
enum { commandMark = 17, checkMark = 18, diamondMark = 19, appleMark = 20 };

enum {
    systemFont = 0,
    applFont = 1,
    kFontIDNewYork = 2,
    kFontIDGeneva = 3,
    kFontIDMonaco = 4,
    kFontIDVenice = 5,
    kFontIDLondon = 6,
    kFontIDAthens = 7,
    kFontIDSanFrancisco = 8,
    kFontIDToronto = 9,
    kFontIDCairo = 11,
    kFontIDLosAngeles = 12,
    kFontIDTimes = 20,
    kFontIDHelvetica = 21,
    kFontIDCourier = 22,
    kFontIDSymbol = 23,
    kFontIDMobile = 24
};

LAMPBLACK_BEGIN_C

// GetFNum
//
// The number of a family, whatever the case of its name; 0 when there is no such family. Installed families
// that have no published number get one from 1024 up that depends on their name.
void GetFNum(ConstStr255Param name, short* familyID);

// The name of a family; an empty string when no family has this number.
void GetFontName(short familyID, Str255 name);

// Whether a size needs no scaling of bitmaps: every size of an outline font, and those of bitmap fonts that
// are there.
Boolean RealFont(short fontNum, short size);

// Whether the outlines of a family that has both are used where it also has a bitmap of the size.
void SetOutlinePreferred(Boolean outlinePreferred);
Boolean GetOutlinePreferred(void);

// Whether text of the current port, scaled, is drawn from outlines.
Boolean IsOutline(Point numer, Point denom);

short GetSysFont(void);
short GetDefFontSize(void);
short GetAppFont(void);

// kInvalidFontFamily, or kFMInvalidFontFamilyErr, when there is none.
FMFontFamily FMGetFontFamilyFromName(ConstStr255Param name);
OSStatus FMGetFontFamilyName(FMFontFamily fontFamily, Str255 name);

LAMPBLACK_END_C

enum { kFMInvalidFontFamilyErr = -981 };

#endif
