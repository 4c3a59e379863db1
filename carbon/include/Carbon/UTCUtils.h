// Coordinated and local time. Begin at GetUTCDateTime.
//
// A local time that came twice when the clocks went back is the first of the two; one that never came when
// they went forward is counted on from before the change.
#ifndef LAMPBLACK_CARBON_UTCUTILS_H
#define LAMPBLACK_CARBON_UTCUTILS_H

#include <Carbon/Files.h>

#pragma pack(push, 2)
struct LocalDateTime {
    UInt16 highSeconds;
    UInt32 lowSeconds;
    UInt16 fraction;
};
#pragma pack(pop)
typedef struct LocalDateTime LocalDateTime;

static_assert(sizeof(LocalDateTime) == 8, "the published size");

enum { kUTCDefaultOptions = 0 };

LAMPBLACK_BEGIN_C

// Errors:     paramErr  a null pointer.
OSStatus GetUTCDateTime(UTCDateTime* utcDateTime, OptionBits options);
OSStatus GetLocalDateTime(LocalDateTime* localDateTime, OptionBits options);
OSStatus ConvertUTCToLocalDateTime(const UTCDateTime* utcDateTime, LocalDateTime* localDateTime);
OSStatus ConvertLocalToUTCDateTime(const LocalDateTime* localDateTime, UTCDateTime* utcDateTime);
OSStatus ConvertLocalTimeToUTC(UInt32 localSeconds, UInt32* utcSeconds);
OSStatus ConvertUTCToLocalTime(UInt32 utcSeconds, UInt32* localSeconds);

LAMPBLACK_END_C

#endif
