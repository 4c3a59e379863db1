// What is behind an IconSuiteRef, and how icons of any origin are drawn and hit. Begin with FindSuite and
// PlotMembers.
#ifndef LAMPBLACK_ICONS_SUITES_H
#define LAMPBLACK_ICONS_SUITES_H

#include "icons/Members.h"

#include <array>

namespace lampblack::icons {

struct Suite {
    std::array<Handle, kPlaces> data = {}; // by places; null: none
    SInt16 label = 0;
};

Suite* FindSuite(IconSuiteRef); // null unless it lives
Suite* NewSuite();
IconSuiteRef ReferenceOf(Suite*);

// The bytes of a handle; empty for what is none.
Bytes BytesOf(Handle);

Getter GetterOf(const Suite&); // the suite must outlive it
Getter GetterOf(IconGetterProcPtr, void* data);
Getter GetterOfID(SInt16 resourceID);

// Draws the best member of an icon. Errors: paramErr without rectangle, inNone when there is no member.
OSErr PlotMembers(const Getter&, const Rect*, IconAlignmentType, IconTransformType, OSErr inNone);

// The picture drawn in place; paramErr without rectangle.
OSErr PlotPicture(IconPicture&, const Rect*, IconAlignmentType, IconTransformType);

// Where the mask of the icon is, in that rectangle. Errors: paramErr; inNone when there is no member;
// noMaskFoundErr.
OSErr FindMask(const Getter&, const Rect*, IconAlignmentType, OSErr inNone, quickdraw::Region* out);
OSErr FindMask(const IconPicture&, const Rect*, IconAlignmentType, quickdraw::Region* out);

} // namespace lampblack::icons

#endif
