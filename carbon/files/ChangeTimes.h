// Whether a file system tells two changes of a file apart by its times, however soon one follows the other.
#ifndef LAMPBLACK_FILES_CHANGETIMES_H
#define LAMPBLACK_FILES_CHANGETIMES_H

#include <cstdint>
#include <filesystem>

namespace lampblack::files {

// ShowsEachChange
//
// Whether a file whose times were looked at always has other times after its next change. Most file systems
// count time in ticks of some milliseconds, and what happens within one looks alike; Linux 6.13 and later give a
// file that was looked at a time of its own. That is tried out once for each file system, with a file without a
// name in a folder on it: false when none can be made.
bool ShowsEachChange(uint64_t inDevice, const std::filesystem::path& inFolder);

// As far as it has been tried out. Asks nothing of the host.
bool IsKnownToShowEachChange(uint64_t inDevice);

} // namespace lampblack::files

#endif
