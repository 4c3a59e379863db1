// What a sidecar "._name" keeps besides the parts that ForkHome writes: a creation date that was set, which
// the host cannot keep, and the Finder information of a folder. Begin at SetCreationDate.
#ifndef LAMPBLACK_FILES_SIDECAR_H
#define LAMPBLACK_FILES_SIDECAR_H

#include "AppleDouble.h"

#include <ctime>
#include <filesystem>

namespace lampblack::files {

// SetCreationDate
//
// Keeps a creation date as the dates entry (8) of AppleDouble, between Finder information and resource fork:
// only files whose date was set have that third entry, and it is written over in place from then on.
//
// Errors:     opWrErr  the file has no dates entry yet and its resource fork is open for writing; else as
//             ForkHome::Open and Replace.
OSErr SetCreationDate(const std::filesystem::path&, const timespec&);

// A folder's 32 bytes of Finder information, big-endian: DInfo, then DXInfo.
OSErr SetFolderInfo(const std::filesystem::path& inFolder, const FinderBytes&);

// Writes the resource fork into a file's sidecar and leaves all else in it; a new sidecar gets the
// information.
OSErr SetSidecarFork(const std::filesystem::path& inFile, Bytes inFork, const FinderBytes& inIfNew);

} // namespace lampblack::files

#endif
