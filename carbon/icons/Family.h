// The bytes of 'icns' resources and files: elements read and written, and the packing of their colours.
#ifndef LAMPBLACK_ICONS_FAMILY_H
#define LAMPBLACK_ICONS_FAMILY_H

#include "icons/Members.h"

#include <array>
#include <optional>
#include <vector>

namespace lampblack::icons {

// The members of an icon, unpacked, by their places.
struct Members {
    std::array<std::vector<uint8_t>, kPlaces> data;

    bool IsEmpty() const;
    Bytes At(Kind inKind) const { return data[inKind.Place()]; }
};

// Calls inVisit(type, bytes) for each element until it answers false. Answers false for what is no family:
// another type, a size beyond the bytes, an element that leaves it.
bool ForEachElement(Bytes family, const std::function<bool(OSType, Bytes)>& inVisit);

// All members of a family that are whole; others are left out. Nothing for what is no family.
std::optional<Members> ReadFamily(Bytes);

// A family of these members, packed.
std::vector<uint8_t> FamilyOf(const Members&);

// Packs or unpacks one member as elements hold it: only Direct differs. Unpack answers nothing for bytes that
// are not whole.
std::vector<uint8_t> PackElement(Kind, Bytes plain);
std::vector<uint8_t> UnpackElement(Kind, Bytes element);

// A family with one element replaced, or taken away when there are no bytes for it.
std::vector<uint8_t> WithElement(Bytes family, OSType type, Bytes element);

} // namespace lampblack::icons

#endif
