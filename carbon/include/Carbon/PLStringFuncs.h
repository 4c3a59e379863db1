// What the C library does with C strings, done with Pascal strings. A null string is an empty one to read and
// is left alone to write; no result is longer than 255 characters.
#ifndef LAMPBLACK_CARBON_PLSTRINGFUNCS_H
#define LAMPBLACK_CARBON_PLSTRINGFUNCS_H

#include <Carbon/MacTypes.h>

LAMPBLACK_BEGIN_C

SInt16 PLstrlen(ConstStr255Param str);

// Negative, 0 or positive: by the first characters that differ, as unsigned bytes, else by the lengths.
SInt16 PLstrcmp(ConstStr255Param str1, ConstStr255Param str2);
SInt16 PLstrncmp(ConstStr255Param str1, ConstStr255Param str2, SInt16 num);

// Answer str1. num: at most so many characters of str2.
StringPtr PLstrcpy(StringPtr str1, ConstStr255Param str2);
StringPtr PLstrncpy(StringPtr str1, ConstStr255Param str2, SInt16 num);
StringPtr PLstrcat(StringPtr str1, ConstStr255Param str2);
StringPtr PLstrncat(StringPtr str1, ConstStr255Param str2, SInt16 num);

// Answer a place in str1, or null. An empty str2 is found at the first character.
Ptr PLstrchr(ConstStr255Param str1, SInt16 ch1);
Ptr PLstrrchr(ConstStr255Param str1, SInt16 ch1);
Ptr PLstrpbrk(ConstStr255Param str1, ConstStr255Param str2); // the first character that is one of str2's
Ptr PLstrstr(ConstStr255Param str1, ConstStr255Param str2);

SInt16 PLstrspn(ConstStr255Param str1, ConstStr255Param str2); // leading characters that are all in str2

LAMPBLACK_END_C

#endif
