// Conversions between Pascal strings (a length byte first) and C strings (a zero byte last).
#ifndef LAMPBLACK_CARBON_TEXTUTILS_H
#define LAMPBLACK_CARBON_TEXTUTILS_H

#include <Carbon/MacTypes.h>

LAMPBLACK_BEGIN_C

// CopyCStringToPascal, c2pstrcpy
//
// Copy at most 255 bytes; source and destination may be the same storage. A null source gives an empty
// string.
void CopyCStringToPascal(const char* src, Str255 dst);
void c2pstrcpy(Str255 dst, const char* src);

// CopyPascalStringToC, p2cstrcpy
//
// Copy the string and its final zero: the destination holds the length byte's count plus one. Source and
// destination may be the same storage.
void CopyPascalStringToC(ConstStr255Param src, char* dst);
void p2cstrcpy(char* dst, ConstStr255Param src);

LAMPBLACK_END_C

#endif
