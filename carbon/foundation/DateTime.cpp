// Dates and times as records and seconds.
#include "Calendar.h"
#include "LocalTime.h"

#include <Carbon/DateTimeUtils.h>

#include <algorithm>

using namespace lampblack::foundation;

namespace {

SInt16 Clamp(int64_t inYear)
{
    return (SInt16)std::clamp<int64_t>(inYear, -32768, 32767);
}

Fields FieldsOfRecord(const DateTimeRec& inDate)
{
    return { inDate.year, inDate.month, inDate.day, inDate.hour, inDate.minute, inDate.second };
}

DateTimeRec RecordOf(const Fields& inFields)
{
    return { Clamp(inFields.year),    (SInt16)inFields.month,  (SInt16)inFields.day,    (SInt16)inFields.hour,
             (SInt16)inFields.minute, (SInt16)inFields.second, (SInt16)inFields.weekday };
}

// Before the year 1 stands 1 B.C., which is the year 0 of the arithmetic.
Fields FieldsOfRecord(const LongDateRec& inDate)
{
    Fields fields = FieldsOfRecord(inDate.od.oldDate);
    if (inDate.ld.era < 0 && fields.year > 0)
        fields.year = 1 - fields.year;
    return fields;
}

LongDateRec LongRecordOf(const Fields& inFields)
{
    LongDateRec date = {};
    date.od.oldDate = RecordOf(inFields);
    date.ld.era = inFields.year > 0 ? 0 : -1;
    date.ld.year = Clamp(inFields.year > 0 ? inFields.year : 1 - inFields.year);
    date.ld.dayOfYear = (SInt16)inFields.dayOfYear;
    date.ld.weekOfYear = (SInt16)inFields.weekOfYear;
    date.ld.pm = inFields.hour >= 12;
    return date;
}

} // namespace

void GetDateTime(UInt32* secs)
{
    if (secs)
        *secs = (UInt32)LocalFromUtc(UtcNow());
}

OSErr ReadDateTime(UInt32* time)
{
    GetDateTime(time);
    return time ? noErr : paramErr;
}

void GetTime(DateTimeRec* d)
{
    if (d)
        *d = RecordOf(FieldsOf(LocalFromUtc(UtcNow())));
}

void SecondsToDate(UInt32 secs, DateTimeRec* d)
{
    if (d)
        *d = RecordOf(FieldsOf(secs));
}

void DateToSeconds(const DateTimeRec* d, UInt32* secs)
{
    if (d && secs)
        *secs = (UInt32)SecondsOf(FieldsOfRecord(*d));
}

void LongSecondsToDate(const LongDateTime* lSecs, LongDateRec* lDate)
{
    if (lSecs && lDate)
        *lDate = LongRecordOf(FieldsOf(*lSecs));
}

void LongDateToSeconds(const LongDateRec* lDate, LongDateTime* lSecs)
{
    if (lDate && lSecs)
        *lSecs = SecondsOf(FieldsOfRecord(*lDate));
}
