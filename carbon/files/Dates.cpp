// Conversions between the host's times and dates since 1904.
#include "Dates.h"

#include <foundation/LocalTime.h>

#include <algorithm>

namespace lampblack::files {

UInt32 LocalDateOf(const timespec& inTime)
{
    const SInt64 seconds = foundation::LocalFromUtc(inTime.tv_sec + kSecondsTo1970);
    return (UInt32)std::clamp<SInt64>(seconds, 0, 0xFFFFFFFF);
}

timespec TimeOfLocalDate(UInt32 inDate)
{
    return { (time_t)(foundation::UtcFromLocal(inDate) - kSecondsTo1970), 0 };
}

UTCDateTime UTCDateOf(const timespec& inTime)
{
    const UInt64 seconds = (UInt64)(inTime.tv_sec + kSecondsTo1970);
    const UInt64 fraction = ((UInt64)inTime.tv_nsec << 16) / 1000000000u;
    return { (UInt16)(seconds >> 32), (UInt32)seconds, (UInt16)fraction };
}

timespec TimeOfUTCDate(const UTCDateTime& inDate)
{
    const SInt64 seconds = (SInt64)((UInt64)inDate.highSeconds << 32 | inDate.lowSeconds);
    // Up, so that the fraction made of it again is the same.
    const UInt64 nanoseconds = ((UInt64)inDate.fraction * 1000000000u + 0xFFFF) >> 16;
    return { (time_t)(seconds - kSecondsTo1970), (long)nanoseconds };
}

} // namespace lampblack::files
