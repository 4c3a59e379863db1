// The machine's clock and its zone, in seconds since 1904. The zone is asked each time: the user may travel.
#ifndef LAMPBLACK_FOUNDATION_LOCALTIME_H
#define LAMPBLACK_FOUNDATION_LOCALTIME_H

#include <cstdint>

namespace lampblack::foundation {

int64_t UtcNow(uint32_t* outFraction = nullptr); // the fraction in 1/65536 of a second

int64_t LocalFromUtc(int64_t inUtc);

// A time that comes twice is the first of the two; one that the clock leaps over is counted on from before
// the leap.
int64_t UtcFromLocal(int64_t inLocal);

} // namespace lampblack::foundation

#endif
