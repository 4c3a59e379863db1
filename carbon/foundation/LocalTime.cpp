// The zone is that of the C library.
#include "LocalTime.h"

#include "Calendar.h"

#include <ctime>

namespace lampblack::foundation {
namespace {

// Seconds that local time is ahead of UTC at a moment; 0 when the C library cannot say, for moments beyond
// its years.
int64_t OffsetAt(int64_t inUtc)
{
    const time_t moment = (time_t)(inUtc - kSecondsFrom1904To1970);
    struct tm fields;
    tzset();
    return localtime_r(&moment, &fields) ? fields.tm_gmtoff : 0;
}

} // namespace

int64_t UtcNow(uint32_t* outFraction)
{
    struct timespec now = {};
    clock_gettime(CLOCK_REALTIME, &now);
    if (outFraction)
        *outFraction = (uint32_t)(((uint64_t)now.tv_nsec << 16) / 1000000000u);
    return (int64_t)now.tv_sec + kSecondsFrom1904To1970;
}

int64_t LocalFromUtc(int64_t inUtc)
{
    return inUtc + OffsetAt(inUtc);
}

int64_t UtcFromLocal(int64_t inLocal)
{
    const int64_t before = OffsetAt(inLocal - kSecondsPerDay), after = OffsetAt(inLocal + kSecondsPerDay);
    if (OffsetAt(inLocal - before) == before)
        return inLocal - before;
    return inLocal - (OffsetAt(inLocal - after) == after ? after : before);
}

} // namespace lampblack::foundation
