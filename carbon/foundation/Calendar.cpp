// Days are counted from 1 March of the year 0, so that the leap day ends a year, and in eras of 400 years,
// which are all equally long.
#include "Calendar.h"

namespace lampblack::foundation {
namespace {

constexpr int64_t kDaysPerEra = 146097;
constexpr int64_t kDaysFromMarch0To1904 = 695361;

int64_t FloorDivide(int64_t inValue, int64_t inBy)
{
    return inValue / inBy - (inValue % inBy < 0);
}

int64_t FloorModulo(int64_t inValue, int64_t inBy)
{
    return (inValue % inBy + inBy) % inBy;
}

// Of a month counted from March, 0 to 11: the days of the year before it.
int64_t DaysBeforeMonth(int64_t inMonth)
{
    return (153 * inMonth + 2) / 5;
}

// Days from the first of 1904 to the first of a month, which may be any number.
int64_t DaysToMonth(int64_t inYear, int64_t inMonth)
{
    const int64_t months = inYear * 12 + inMonth - 3; // since March of the year 0
    const int64_t year = FloorDivide(months, 12);
    const int64_t leapDays = FloorDivide(year, 4) - FloorDivide(year, 100) + FloorDivide(year, 400);
    return year * 365 + leapDays + DaysBeforeMonth(FloorModulo(months, 12)) - kDaysFromMarch0To1904;
}

void SetDate(Fields& ioFields, int64_t inDays)
{
    const int64_t days = inDays + kDaysFromMarch0To1904;
    const int64_t era = FloorDivide(days, kDaysPerEra);
    const int64_t dayOfEra = days - era * kDaysPerEra;
    const int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const int64_t month = (5 * dayOfYear + 2) / 153; // from March
    ioFields.day = (int)(dayOfYear - DaysBeforeMonth(month) + 1);
    ioFields.month = (int)(month < 10 ? month + 3 : month - 9);
    ioFields.year = era * 400 + yearOfEra + (month < 10 ? 0 : 1);
}

} // namespace

int64_t SecondsOf(const Fields& inFields)
{
    const int64_t days = DaysToMonth(inFields.year, inFields.month) + inFields.day - 1;
    return days * kSecondsPerDay + inFields.hour * int64_t{ 3600 } + inFields.minute * int64_t{ 60 } +
           inFields.second;
}

Fields FieldsOf(int64_t inSeconds)
{
    const int64_t days = FloorDivide(inSeconds, kSecondsPerDay);
    const int second = (int)FloorModulo(inSeconds, kSecondsPerDay);
    Fields fields;
    SetDate(fields, days);
    fields.hour = second / 3600;
    fields.minute = second / 60 % 60;
    fields.second = second % 60;
    fields.weekday = (int)FloorModulo(days + 5, 7) + 1; // 1904 began on a Friday
    fields.dayOfYear = (int)(days - DaysToMonth(fields.year, 1)) + 1;
    const int firstWeekday = (int)FloorModulo(fields.weekday - fields.dayOfYear, 7); // of 1 January, from 0
    fields.weekOfYear = (fields.dayOfYear - 1 + firstWeekday) / 7 + 1;
    return fields;
}

} // namespace lampblack::foundation
