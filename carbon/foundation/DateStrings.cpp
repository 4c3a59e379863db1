// Dates and times as text, in the form of the United States.
#include "Calendar.h"
#include "MacRoman.h"

#include <Carbon/DateTimeUtils.h>

#include <cstdio>

using namespace lampblack::foundation;

namespace {

constexpr const char* kWeekdays[] = { "Sunday",   "Monday", "Tuesday", "Wednesday",
                                      "Thursday", "Friday", "Saturday" };
constexpr const char* kMonths[] = { "January", "February", "March",     "April",   "May",      "June",
                                    "July",    "August",   "September", "October", "November", "December" };

// A year of the arithmetic as people count it.
long long ShownYear(const Fields& inDate)
{
    return inDate.year > 0 ? inDate.year : 1 - inDate.year;
}

void PutDate(const Fields& inDate, DateForm inForm, StringPtr outString)
{
    char text[64];
    const int letters = inForm == abbrevDate ? 3 : 16;
    int length;
    if (inForm == shortDate)
        length = std::snprintf(text, sizeof text, "%d/%d/%02d", inDate.month, inDate.day,
                               (int)(ShownYear(inDate) % 100));
    else
        length =
            std::snprintf(text, sizeof text, "%.*s, %.*s %d, %lld", letters, kWeekdays[inDate.weekday - 1],
                          letters, kMonths[inDate.month - 1], inDate.day, ShownYear(inDate));
    PascalFromMacRoman(std::string_view(text, (size_t)length), outString);
}

void PutTime(const Fields& inTime, bool inSeconds, StringPtr outString)
{
    char text[32];
    const int hour = inTime.hour % 12 == 0 ? 12 : inTime.hour % 12;
    const char* half = inTime.hour < 12 ? "AM" : "PM";
    const int length = inSeconds ? std::snprintf(text, sizeof text, "%d:%02d:%02d %s", hour, inTime.minute,
                                                 inTime.second, half)
                                 : std::snprintf(text, sizeof text, "%d:%02d %s", hour, inTime.minute, half);
    PascalFromMacRoman(std::string_view(text, (size_t)length), outString);
}

} // namespace

void DateString(UInt32 dateTime, DateForm longFlag, Str255 result, Handle)
{
    if (result)
        PutDate(FieldsOf(dateTime), longFlag, result);
}

void TimeString(UInt32 dateTime, Boolean wantSeconds, Str255 result, Handle)
{
    if (result)
        PutTime(FieldsOf(dateTime), wantSeconds, result);
}

void LongDateString(const LongDateTime* dateTime, DateForm longFlag, Str255 result, Handle)
{
    if (result)
        result[0] = 0;
    if (dateTime && result)
        PutDate(FieldsOf(*dateTime), longFlag, result);
}

void LongTimeString(const LongDateTime* dateTime, Boolean wantSeconds, Str255 result, Handle)
{
    if (result)
        result[0] = 0;
    if (dateTime && result)
        PutTime(FieldsOf(*dateTime), wantSeconds, result);
}
