// AppleDouble files entry by entry: finding one, and putting one in. Pure. Layout: RFC 1740.
#ifndef LAMPBLACK_FILES_DOUBLEENTRIES_H
#define LAMPBLACK_FILES_DOUBLEENTRIES_H

#include "AppleDouble.h"

namespace lampblack::files {

enum : uint32_t { kResourceForkEntry = 2, kDatesEntry = 8, kFinderInfoEntry = 9 };

// Where an entry of at least some length begins; none when there is no such entry in the bytes, or these are
// no AppleDouble.
std::optional<size_t> PlaceOfEntry(Bytes inDouble, uint32_t inKind, size_t inLength);

// The file with one entry put in or replaced: Finder information first, resource fork last, all others as
// they were between them. From what is no sound AppleDouble, a new one with that Finder information and no
// fork.
std::vector<uint8_t> WithEntry(Bytes inDouble, uint32_t inKind, Bytes inEntry, const FinderBytes& inIfNew);

bool IsSoundDouble(Bytes);

} // namespace lampblack::files

#endif
