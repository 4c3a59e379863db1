// Numbers, dates, four-character codes and versions from and to text. Begin at CStringToFloat32 for what a
// user typed, at NumVersionToString for what he is shown.
#ifndef LAMPBLACK_UTIL_STRINGCONVERSIONS_H
#define LAMPBLACK_UTIL_STRINGCONVERSIONS_H

#include <Carbon/Carbon.h>

#include "util/Visibility.h"

LAMPBLACK_BEGIN

// --- Numbers

// CStringToFloat32
//
// "2.5", "-0.5", "7"; any one character separates the parts. Kept, since saved texts were read so: the part
// behind it counts thousandths without its leading zeros ("1.05" is 1.5) and is not cut at three digits
// ("1.1234" is 2.234). 0 for a null string.
Float32 CStringToFloat32(const char* inText);

// CommaPString, CommaString
//
// Put a ',' between thousands, in place. Kept: digits behind a decimal point are grouped too. A C string is
// cut at 255 characters and needs room for its commas. A result of more than 255 characters stays within a
// Str255 and has the length that is left of it in a byte, as ever.
void CommaPString(StringPtr ioText);
void CommaString(char* ioText);

// --- Dates

// StringToSeconds
//
// Seconds since the platform's epoch of a local date, "12/31/1999" or "1/2/05", and time, "3:04 pm"; 0 when
// either does not look like that. Kept: a month of two digits is taken to begin with '1', and "12:xx pm" is
// hour 24. The day and a month of one digit are left to the platform's conversion, whatever they are.
LongDateTime StringToSeconds(const char* inDate, const char* inTime);
LongDateTime StringToSeconds(ConstStr255Param inDate, ConstStr255Param inTime);

// --- Four-character codes, byte for byte as they lie in memory

void OSTypeToCString(OSType inType, char* outText); // 5 bytes
void OSTypeToPString(OSType inType, StringPtr outText);

// CStringToOSType
//
// The first four bytes, padded with spaces from a string of one to three. A null string is 0. Kept: an empty
// string gives what lies behind its zero byte, so that a code whose first byte is zero comes back from
// OSTypeToCString.
OSType CStringToOSType(const char* inText);

// --- Versions

// NumVersionToString
//
// "1.2" or "1.2.3b4". Kept: the first and the last number are printed as they are, not as binary-coded
// decimals (0x10 is "16"). Errors: paramErr for null.
OSErr NumVersionToString(const NumVersion* inVersion, unsigned char* outText);
OSErr NumVersionToString(const NumVersion* inVersion, char* outText);

// VersionCompare
//
// -1 when the version is older than the fields or the second version, 1 when it is newer, else 0; also 0 for
// a null first version. A null second version is 0.0 final. Here the numbers are binary-coded decimals.
SInt16 VersionCompare(const NumVersion* inVersion, SInt16 inMajor, SInt16 inMinor, SInt16 inBug,
                      SInt16 inStage, SInt16 inNonRelease);
SInt16 VersionCompare(const NumVersion* inA, const NumVersion* inB);

// The same for 'vers' 1 of the current resource file; -1 when there is none, or none that holds a version.
SInt16 VersionCompareToCurrentFile(SInt16 inMajor, SInt16 inMinor, SInt16 inBug, SInt16 inStage,
                                   SInt16 inNonRelease);

LAMPBLACK_END

#endif
