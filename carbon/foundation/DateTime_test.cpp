// Dates, times and their text.
#include "LocalTime.h"
#include "RomanText.h"

#include <Carbon/DateTimeUtils.h>
#include <Carbon/UTCUtils.h>

#include <doctest/doctest.h>

#include <cstdlib>
#include <ctime>
#include <limits>
#include <random>
#include <string>

using namespace lampblack::foundation;

namespace {

LongDateTime Seconds(SInt16 inYear, SInt16 inMonth, SInt16 inDay, SInt16 inHour = 0, SInt16 inMinute = 0,
                     SInt16 inSecond = 0, SInt16 inEra = 0)
{
    LongDateRec date = {};
    date.ld = { inEra, inYear, inMonth, inDay, inHour, inMinute, inSecond, 0, 0, 0, 0, 0, 0, 0 };
    LongDateTime seconds = 0;
    LongDateToSeconds(&date, &seconds);
    return seconds;
}

LongDateRec Date(LongDateTime inSeconds)
{
    LongDateRec date = {};
    LongSecondsToDate(&inSeconds, &date);
    return date;
}

std::string DateText(LongDateTime inSeconds, DateForm inForm)
{
    Str255 text;
    LongDateString(&inSeconds, inForm, text, nullptr);
    return std::string(TextOf(text));
}

std::string TimeText(LongDateTime inSeconds, bool inWithSeconds)
{
    Str255 text;
    LongTimeString(&inSeconds, inWithSeconds, text, nullptr);
    return std::string(TextOf(text));
}

class StZone {
public:
    [[nodiscard]] explicit StZone(const char* inZone)
    {
        const char* zone = std::getenv("TZ");
        fHadZone = zone != nullptr;
        fZone = zone ? zone : "";
        setenv("TZ", inZone, 1);
    }
    ~StZone()
    {
        fHadZone ? setenv("TZ", fZone.c_str(), 1) : unsetenv("TZ");
        tzset();
    }

private:
    bool fHadZone;
    std::string fZone;
};

constexpr const char* kEasternTime = "EST5EDT,M3.2.0,M11.1.0"; // needs no file of zones

} // namespace

TEST_CASE("LongDateToSeconds: known moments")
{
    CHECK(Seconds(1904, 1, 1) == 0);
    CHECK(Seconds(1970, 1, 1) == 2082844800);
    CHECK(Seconds(2005, 1, 2, 15, 4) == 3187523040);
    CHECK(Seconds(2040, 2, 6, 6, 28, 15) == 0xFFFFFFFF);
    CHECK(Seconds(1903, 12, 31, 23, 59, 59) == -1);
}

TEST_CASE("LongDateToSeconds: fields out of range carry over into the larger ones")
{
    CHECK(Seconds(1999, 12, 31, 24) == Seconds(2000, 1, 1));
    CHECK(Seconds(1999, 13, 1) == Seconds(2000, 1, 1));
    CHECK(Seconds(2001, 1, 32) == Seconds(2001, 2, 1));
    CHECK(Seconds(2001, 2, 29) == Seconds(2001, 3, 1));
    CHECK(Seconds(2000, 2, 30) == Seconds(2000, 3, 1));
    CHECK(Seconds(2000, 1, 0) == Seconds(1999, 12, 31));
    CHECK(Seconds(2000, 1, 1, -1) == Seconds(1999, 12, 31, 23));
    CHECK(Seconds(2000, 1, 1, 0, 60) == Seconds(2000, 1, 1, 1));
    CHECK(Seconds(2000, 1, 1, 0, 0, 32767) == Seconds(2000, 1, 1, 9, 6, 7));
    // Evidence [IM-OSU]: "a month value of 0 and a year value of 1993 return 12 and 1992"
    CHECK(Seconds(1993, 0, 1) == Seconds(1992, 12, 1));
    CHECK(Seconds(1993, -2, 1) == Seconds(1992, 10, 1));
    CHECK(Seconds(1904, -32768, -32768, -32768, -32768, -32768) < Seconds(-726, 1, 1));
}

TEST_CASE("LongSecondsToDate: every field of a known day")
{
    const LongDateRec date = Date(Seconds(2004, 12, 31, 15, 4, 5));
    CHECK(date.ld.era == 0);
    CHECK(date.ld.year == 2004);
    CHECK(date.ld.month == 12);
    CHECK(date.ld.day == 31);
    CHECK(date.ld.hour == 15);
    CHECK(date.ld.minute == 4);
    CHECK(date.ld.second == 5);
    CHECK(date.ld.dayOfWeek == 6);
    CHECK(date.ld.dayOfYear == 366);
    CHECK(date.ld.weekOfYear == 53);
    CHECK(date.ld.pm == 1);
    CHECK(date.od.oldDate.year == 2004);
    CHECK(date.list[1] == 2004);
    CHECK(Date(Seconds(2005, 1, 2)).ld.weekOfYear == 2);
    CHECK(Date(Seconds(2005, 1, 1)).ld.weekOfYear == 1);
    CHECK(Date(Seconds(2005, 1, 1, 11, 59)).ld.pm == 0);
}

TEST_CASE("LongSecondsToDate: years before 1 are positive and of the era before")
{
    const LongDateRec date = Date(Seconds(0, 6, 1));
    CHECK(date.ld.era == -1);
    CHECK(date.ld.year == 1);
    CHECK(Seconds(1, 6, 1, 0, 0, 0, -1) == Seconds(0, 6, 1));
    CHECK(Date(Seconds(-1993, 1, 1)).ld.year == 1994);
    CHECK(Date(Seconds(30081, 1, 1, 0, 0, 0, -1)).ld.year == 30081);
    CHECK(Date(Seconds(29940, 12, 31)).ld.year == 29940);
    CHECK(Date(Seconds(0, 12, 31, 24)).ld.year == 1);
    CHECK(Date(Seconds(0, 12, 31, 24)).ld.era == 0);
}

TEST_CASE("LongSecondsToDate: the conversions are each other's inverse over 60,000 years")
{
    std::mt19937_64 random(1);
    std::uniform_int_distribution<LongDateTime> moments(-1'000'000'000'000, 880'000'000'000);
    for (int i = 0; i < 20000; ++i) {
        const LongDateTime moment = moments(random);
        const LongDateRec date = Date(moment);
        LongDateTime back = 0;
        LongDateToSeconds(&date, &back);
        REQUIRE(back == moment);
    }
}

TEST_CASE(
    "LongSecondsToDate: the largest and smallest moments have a month, a day and the last year there is")
{
    for (const LongDateTime moment :
         { std::numeric_limits<LongDateTime>::min(), std::numeric_limits<LongDateTime>::max() }) {
        const LongDateRec date = Date(moment);
        CHECK(date.ld.year == 32767);
        CHECK(date.ld.month >= 1);
        CHECK(date.ld.month <= 12);
        CHECK(date.ld.second >= 0);
        CHECK_FALSE(DateText(moment, longDate).empty());
    }
}

TEST_CASE("SecondsToDate, DateToSeconds: 32 bits, which wrap")
{
    DateTimeRec date = {};
    SecondsToDate(0xFFFFFFFF, &date);
    CHECK(date.year == 2040);
    CHECK(date.second == 15);
    CHECK(date.dayOfWeek == 2);
    ++date.second;
    UInt32 seconds = 7;
    DateToSeconds(&date, &seconds);
    CHECK(seconds == 0);
    unsigned long wide = 0;
    date = { 1904, 1, 2, 0, 0, 0, 0 };
    DateToSeconds(&date, &wide);
    CHECK(wide == 86400);
}

TEST_CASE("GetDateTime: the machine's time in its zone, summer time included")
{
    for (const char* zone : { "UTC", "XXX-5:30", kEasternTime }) {
        const StZone scope(zone);
        UInt32 seconds = 0;
        GetDateTime(&seconds);
        tzset();
        const time_t now = time(nullptr);
        struct tm fields;
        localtime_r(&now, &fields);
        const long expected = (long)(UInt32)(now + fields.tm_gmtoff + 2082844800);
        CHECK(std::abs((long)seconds - expected) <= 2);
        DateTimeRec date;
        GetTime(&date);
        CHECK(date.year == fields.tm_year + 1900);
    }
}

TEST_CASE("LongDateToSeconds: hours that the clock leaps over or repeats are like any others")
{
    const StZone zone(kEasternTime);
    CHECK(Seconds(2024, 3, 10, 3) - Seconds(2024, 3, 10, 1) == 7200);
    CHECK(Date(Seconds(2024, 3, 10, 2, 30)).ld.hour == 2);
    CHECK(Seconds(2024, 11, 3, 3) - Seconds(2024, 11, 3, 0) == 3 * 3600);
}

TEST_CASE("ConvertLocalTimeToUTC: summer and winter, the repeated hour and the one that never was")
{
    const StZone zone(kEasternTime);
    const auto utc = [](LongDateTime local) {
        UInt32 seconds = 0;
        CHECK(ConvertLocalTimeToUTC((UInt32)local, &seconds) == noErr);
        return (LongDateTime)seconds - local;
    };
    CHECK(utc(Seconds(2024, 7, 1)) == 4 * 3600);
    CHECK(utc(Seconds(2024, 1, 1)) == 5 * 3600);
    CHECK(utc(Seconds(2024, 11, 3, 1, 30)) == 4 * 3600);
    CHECK(utc(Seconds(2024, 11, 3, 2)) == 5 * 3600);
    CHECK(utc(Seconds(2024, 3, 10, 2, 30)) == 5 * 3600);
    CHECK(utc(Seconds(2024, 3, 10, 3)) == 4 * 3600);
    CHECK(utc(Seconds(2024, 3, 10, 1, 59)) == 5 * 3600);
}

TEST_CASE("ConvertUTCToLocalDateTime: there and back, with the fraction")
{
    const StZone zone(kEasternTime);
    const LongDateTime summer = Seconds(2024, 7, 1, 12);
    const UTCDateTime utc = { 0, (UInt32)summer, 0x8000 };
    LocalDateTime local = {};
    REQUIRE(ConvertUTCToLocalDateTime(&utc, &local) == noErr);
    CHECK(+local.lowSeconds == (UInt32)(summer - 4 * 3600));
    CHECK(+local.fraction == 0x8000);
    UTCDateTime back = {};
    REQUIRE(ConvertLocalToUTCDateTime(&local, &back) == noErr);
    CHECK(+back.lowSeconds == +utc.lowSeconds);
    UInt32 seconds = 0;
    CHECK(ConvertUTCToLocalTime((UInt32)summer, &seconds) == noErr);
    CHECK(seconds == +local.lowSeconds);
    UTCDateTime now = {};
    LocalDateTime localNow = {};
    CHECK(GetUTCDateTime(&now, kUTCDefaultOptions) == noErr);
    CHECK(GetLocalDateTime(&localNow, kUTCDefaultOptions) == noErr);
    CHECK(+now.lowSeconds > +localNow.lowSeconds);
}

TEST_CASE("DateString, TimeString: the forms of the United States")
{
    const LongDateTime moment = Seconds(2005, 1, 2, 15, 4, 5);
    CHECK(DateText(moment, shortDate) == "1/2/05");
    CHECK(DateText(moment, longDate) == "Sunday, January 2, 2005");
    CHECK(DateText(moment, abbrevDate) == "Sun, Jan 2, 2005");
    CHECK(TimeText(moment, false) == "3:04 PM");
    CHECK(TimeText(moment, true) == "3:04:05 PM");
    CHECK(TimeText(Seconds(2005, 1, 2), false) == "12:00 AM");
    CHECK(TimeText(Seconds(2005, 1, 2, 12), false) == "12:00 PM");
    Str255 text;
    DateString((UInt32)moment, shortDate, text, nullptr);
    CHECK(TextOf(text) == "1/2/05");
    TimeString((UInt32)moment, true, text, nullptr);
    CHECK(TextOf(text) == "3:04:05 PM");
}

TEST_CASE("The calls on dates: null pointers are passed over")
{
    GetDateTime((UInt32*)nullptr);
    CHECK(ReadDateTime(nullptr) == paramErr);
    GetTime(nullptr);
    SecondsToDate(0, nullptr);
    DateToSeconds(nullptr, (UInt32*)nullptr);
    LongSecondsToDate(nullptr, nullptr);
    LongDateToSeconds(nullptr, nullptr);
    DateString(0, shortDate, nullptr, nullptr);
    TimeString(0, true, nullptr, nullptr);
    Str255 text = "\1x";
    LongDateString(nullptr, shortDate, text, nullptr);
    CHECK(text[0] == 0);
    CHECK(GetUTCDateTime(nullptr, 0) == paramErr);
    CHECK(GetLocalDateTime(nullptr, 0) == paramErr);
    CHECK(ConvertUTCToLocalDateTime(nullptr, nullptr) == paramErr);
    CHECK(ConvertLocalTimeToUTC(0, nullptr) == paramErr);
}
