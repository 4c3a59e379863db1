// Makes the container forms that Container.h reads: AppleDouble, AppleSingle, MacBinary III, BinHex 4.0.
// Begin at FileParts. Pure: knows no file. Layouts: RFC 1740, RFC 1741, the MacBinary III paper of 1996.
#ifndef LAMPBLACK_FILES_CONTAINERWRITER_H
#define LAMPBLACK_FILES_CONTAINERWRITER_H

#include "Container.h"

#include <array>

namespace lampblack::files {

// What a file of the Macintosh consists of.
struct FileParts {
    std::string name; // Mac Roman; cut to what a form holds (63 bytes), "untitled" where a form needs one
    FInfo finderInfo = {};
    FXInfo extendedFinderInfo = {};
    Bytes dataFork;
    Bytes resourceFork;
    FileDates dates;
};

// AppleDouble version 2 with exactly two entries: Finder information (9, 32 bytes), then the resource fork
// (2), which begins behind these bytes. So a long fork need not be copied to be written.
constexpr size_t kAppleDoubleHeader = 82;
std::array<uint8_t, kAppleDoubleHeader> AppleDoubleHeader(const FInfo&, const FXInfo&, uint32_t inForkLength);

// The header and the resource fork. Name, data fork and dates have no place in it.
std::vector<uint8_t> WriteAppleDouble(const FileParts&);

// AppleSingle version 2: name, dates (when known), Finder information, resource fork, data fork.
std::vector<uint8_t> WriteAppleSingle(const FileParts&);

// MacBinary III, which readers of version II take as well.
std::vector<uint8_t> WriteMacBinary(const FileParts&);

// BinHex 4.0 with lines of 64 characters. Of the Finder information it keeps type, creator and flags.
std::vector<uint8_t> WriteBinHex(const FileParts&);

} // namespace lampblack::files

#endif
