// Times of the host as the Macintosh counts them: seconds from midnight, 1 January 1904, in local time for
// the catalog's records of old and in UTC for UTCDateTime.
#ifndef LAMPBLACK_FILES_DATES_H
#define LAMPBLACK_FILES_DATES_H

#include <Carbon/Files.h>

#include <ctime>

namespace lampblack::files {

inline constexpr SInt64 kSecondsTo1970 = 2082844800;

// What lies before 1904 or after 2040 becomes the first or last second of that time.
UInt32 LocalDateOf(const timespec&);
timespec TimeOfLocalDate(UInt32 inDate);

UTCDateTime UTCDateOf(const timespec&);
timespec TimeOfUTCDate(const UTCDateTime&);

} // namespace lampblack::files

#endif
