// Families by number and name, and the files of their faces. Classic families are stood in for by installed
// ones.
#ifndef LAMPBLACK_QUICKDRAW_FONTFAMILIES_H
#define LAMPBLACK_QUICKDRAW_FONTFAMILIES_H

#include <Carbon/MacTypes.h>

#include <string>
#include <string_view>

namespace lampblack::quickdraw {

inline constexpr SInt16 kNoFamily = -1;

// UTF-8 names; whatever the case. kNoFamily when there is none.
SInt16 FamilyNamed(std::string_view name);
// The name of a family; empty when none has this number.
std::string NameOfFamily(SInt16 number);

// Has a family stand for another one from now on, before its first use.
void SubstituteFamily(std::string_view name, std::string_view installedFamily);

struct FaceFile {
    std::string path; // empty: no font at all is installed
    int index = 0;
    bool hasBold = false, hasItalic = false; // what of the wished style this file has
};
// The installed family to be used; the system font's for a number that no family has.
std::string InstalledFamily(SInt16 number);
// The pixel size at which a family's stand-in is as wide as the family itself at the size asked for.
SInt16 SizeOfStandIn(SInt16 family, SInt16 size);
// How much wider or narrower it is drawn, in 256ths.
inline constexpr int kUnstretched = 256;
int StretchOfStandIn(SInt16 family);
FaceFile FileOfFace(SInt16 family, bool bold, bool italic);
// A face that has the character, whichever it is.
FaceFile FileWithCharacter(char32_t character, bool bold, bool italic);

} // namespace lampblack::quickdraw

#endif
