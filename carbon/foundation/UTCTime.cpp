// Coordinated and local time in records of 48 bits of seconds and 16 of fraction.
#include "LocalTime.h"

#include <Carbon/UTCUtils.h>

using namespace lampblack::foundation;

namespace {

template <class Record>
int64_t SecondsOf(const Record& inTime)
{
    return (int64_t)inTime.highSeconds << 32 | inTime.lowSeconds;
}

template <class Record>
Record RecordOf(int64_t inSeconds, UInt32 inFraction)
{
    return { (UInt16)(inSeconds >> 32), (UInt32)inSeconds, (UInt16)inFraction };
}

} // namespace

OSStatus GetUTCDateTime(UTCDateTime* utcDateTime, OptionBits)
{
    if (!utcDateTime)
        return paramErr;
    UInt32 fraction;
    const int64_t now = UtcNow(&fraction);
    *utcDateTime = RecordOf<UTCDateTime>(now, fraction);
    return noErr;
}

OSStatus GetLocalDateTime(LocalDateTime* localDateTime, OptionBits options)
{
    UTCDateTime now = {};
    GetUTCDateTime(&now, options);
    return ConvertUTCToLocalDateTime(&now, localDateTime);
}

OSStatus ConvertUTCToLocalDateTime(const UTCDateTime* utcDateTime, LocalDateTime* localDateTime)
{
    if (!utcDateTime || !localDateTime)
        return paramErr;
    *localDateTime = RecordOf<LocalDateTime>(LocalFromUtc(SecondsOf(*utcDateTime)), utcDateTime->fraction);
    return noErr;
}

OSStatus ConvertLocalToUTCDateTime(const LocalDateTime* localDateTime, UTCDateTime* utcDateTime)
{
    if (!localDateTime || !utcDateTime)
        return paramErr;
    *utcDateTime = RecordOf<UTCDateTime>(UtcFromLocal(SecondsOf(*localDateTime)), localDateTime->fraction);
    return noErr;
}

OSStatus ConvertLocalTimeToUTC(UInt32 localSeconds, UInt32* utcSeconds)
{
    if (!utcSeconds)
        return paramErr;
    *utcSeconds = (UInt32)UtcFromLocal(localSeconds);
    return noErr;
}

OSStatus ConvertUTCToLocalTime(UInt32 utcSeconds, UInt32* localSeconds)
{
    if (!localSeconds)
        return paramErr;
    *localSeconds = (UInt32)LocalFromUtc(utcSeconds);
    return noErr;
}
