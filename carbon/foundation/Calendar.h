// The Gregorian calendar, running on unchanged in both directions, and the seconds since 1904. Pure
// arithmetic: no clock, no zone. Begin at SecondsOf and FieldsOf.
#ifndef LAMPBLACK_FOUNDATION_CALENDAR_H
#define LAMPBLACK_FOUNDATION_CALENDAR_H

#include <cstdint>

namespace lampblack::foundation {

inline constexpr int64_t kSecondsPerDay = 86400;
inline constexpr int64_t kDaysFrom1904To1970 = 24107;
inline constexpr int64_t kSecondsFrom1904To1970 = kDaysFrom1904To1970 * kSecondsPerDay;

// Years count 0 before 1; months and days from 1; the weekday from 1, Sunday; the day and week of the year
// from 1.
struct Fields {
    int64_t year = 0;
    int month = 1, day = 1;
    int hour = 0, minute = 0, second = 0;
    int weekday = 1, dayOfYear = 1, weekOfYear = 1;
};

// Seconds since the first midnight of 1904. Any field may be out of its range and then carries over; only the
// first six count.
int64_t SecondsOf(const Fields&);

Fields FieldsOf(int64_t inSeconds);

} // namespace lampblack::foundation

#endif
