// Fonts that open resource files bring: 'FOND' families with their 'sfnt', 'NFNT' and 'FONT' resources, and
// 'FONT' resources of old, whose ID is 128 * family + size and whose size 0 holds nothing but the name.
// Searched from the current file on. Begin with FindResourceFont.
#ifndef LAMPBLACK_QUICKDRAW_RESOURCEFONTS_H
#define LAMPBLACK_QUICKDRAW_RESOURCEFONTS_H

#include "Strike.h"

#include <string>
#include <string_view>

namespace lampblack::quickdraw {

// False when no resource file has the family, or none of its fonts can be read.
bool FindResourceFont(SInt16 family, SInt16 size, Style face, StrikeSource* outSource);

// Names are UTF-8, compared without regard to case. kNoFamily; an empty name.
SInt16 ResourceFamilyNamed(std::string_view name);
std::string NameOfResourceFamily(SInt16 number);

enum class FontPresence : uint8_t { NoFamily, Scaled, Real }; // Real: outlines, or bitmaps of the size
FontPresence PresenceOfResourceFont(SInt16 family, SInt16 size);

// Whether the chain holds other fonts than when this was asked last. Fonts read before are forgotten then.
bool ResourceFontsChanged();

bool OutlinesPreferred();
void PreferOutlines(bool);

} // namespace lampblack::quickdraw

#endif
