// Changing one part of an AppleDouble file and keeping all others as they are. Pure; begin at DoublePlan.
#ifndef LAMPBLACK_FILES_APPLEDOUBLE_H
#define LAMPBLACK_FILES_APPLEDOUBLE_H

#include "Container.h"

#include <array>
#include <optional>

namespace lampblack::files {

using FinderBytes = std::array<uint8_t, 32>;

// DoublePlan
//
// The bytes of an AppleDouble version 2 in front of its resource fork, which comes last and has not to be
// copied.
struct DoublePlan {
    std::vector<uint8_t> front;
    size_t forkOffset() const { return front.size(); }
};

// inOld is the AppleDouble that is replaced, or empty. Its entries of other kinds and what follows the first
// 32 bytes of its Finder information are taken over, the information at its old place where it fits, because
// what follows may tell places counted from the start of the file.
DoublePlan PlanDouble(Bytes inOld, const FinderBytes&, uint32_t inForkLength);

// Where the first 32 bytes of Finder information lie in an AppleDouble; none when it has fewer.
std::optional<size_t> FinderPlace(Bytes inDouble);

FinderBytes ToFinderBytes(const FInfo&, const FXInfo&);

} // namespace lampblack::files

#endif
