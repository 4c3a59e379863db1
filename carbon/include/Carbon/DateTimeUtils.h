// Dates and times: seconds since midnight, 1 January 1904, local time, and records of their fields. Begin at
// GetDateTime and LongSecondsToDate.
//
// The conversions know no time zone: they count days of 86400 seconds in the Gregorian calendar, which runs
// on unchanged in both directions, so that a conversion and its inverse agree whatever the zone and season.
// Only GetDateTime and its kin ask the machine for the present offset of local time.
#ifndef LAMPBLACK_CARBON_DATETIMEUTILS_H
#define LAMPBLACK_CARBON_DATETIMEUTILS_H

#include <Carbon/MacTypes.h>

typedef SInt64 LongDateTime;

union LongDateCvt {
    SInt64 c;
    struct { // in this machine's order
        UInt32 lLow;
        UInt32 lHigh;
    } hl;
};
typedef union LongDateCvt LongDateCvt;

struct DateTimeRec {
    SInt16 year;
    SInt16 month; // 1 is January
    SInt16 day;
    SInt16 hour;
    SInt16 minute;
    SInt16 second;
    SInt16 dayOfWeek; // 1 is Sunday
};
typedef struct DateTimeRec DateTimeRec;

union LongDateRec {
    struct {
        SInt16 era; // 0 is A.D., -1 B.C.
        SInt16 year;
        SInt16 month;
        SInt16 day;
        SInt16 hour;
        SInt16 minute;
        SInt16 second;
        SInt16 dayOfWeek;  // 1 is Sunday
        SInt16 dayOfYear;  // 1 is 1 January
        SInt16 weekOfYear; // 1 holds 1 January; weeks begin on Sunday
        SInt16 pm;         // 0 before noon, 1 from noon on
        SInt16 res1;
        SInt16 res2;
        SInt16 res3;
    } ld;
    SInt16 list[14];
    struct {
        SInt16 eraAlt;
        DateTimeRec oldDate;
    } od;
};
typedef union LongDateRec LongDateRec;

static_assert(sizeof(DateTimeRec) == 14 && sizeof(LongDateRec) == 28 && sizeof(LongDateCvt) == 8,
              "the published sizes");

typedef SInt8 DateForm;
enum { shortDate = 0, longDate = 1, abbrevDate = 2 };

LAMPBLACK_BEGIN_C

// The present moment; the low 32 bits, which turn over in February 2040.
void GetDateTime(UInt32* secs);
OSErr ReadDateTime(UInt32* time); // Errors: paramErr  time is null
void GetTime(DateTimeRec* d);

// SecondsToDate, DateToSeconds, LongSecondsToDate, LongDateToSeconds
//
// A field outside its usual range carries over into the larger ones: hour 24 is the next midnight, day 0 the
// last day of the month before, month 13 the next January, month -2 of 1993 October 1992. The days of week
// and year, the week and pm are answers only. The first pair wraps at 32 bits.
//
// A year of 0 or less counts back from 1 B.C.; in an answer such a year is positive and the era -1. Answers
// are exact from 30,081 B.C. to 29,940 A.D.; a year that no SInt16 holds is answered as the nearest one that
// does.
void SecondsToDate(UInt32 secs, DateTimeRec* d);
void DateToSeconds(const DateTimeRec* d, UInt32* secs);
void LongSecondsToDate(const LongDateTime* lSecs, LongDateRec* lDate);
void LongDateToSeconds(const LongDateRec* lDate, LongDateTime* lSecs);

// DateString, TimeString and their long sisters
//
// In the form of the United States, whatever intlHandle is: 1/2/05; Sunday, January 2, 2005;
// Sun, Jan 2, 2005; 3:04 PM; 3:04:05 PM.
void DateString(UInt32 dateTime, DateForm longFlag, Str255 result, Handle intlHandle);
void TimeString(UInt32 dateTime, Boolean wantSeconds, Str255 result, Handle intlHandle);
void LongDateString(const LongDateTime* dateTime, DateForm longFlag, Str255 result, Handle intlHandle);
void LongTimeString(const LongDateTime* dateTime, Boolean wantSeconds, Str255 result, Handle intlHandle);

LAMPBLACK_END_C

#ifdef __cplusplus
// For sources that keep their seconds in an unsigned long.
inline void GetDateTime(unsigned long* secs)
{
    UInt32 now = 0;
    GetDateTime(&now);
    if (secs)
        *secs = now;
}

inline void DateToSeconds(const DateTimeRec* d, unsigned long* secs)
{
    UInt32 seconds = 0;
    DateToSeconds(d, &seconds);
    if (secs)
        *secs = seconds;
}
#endif

#endif
