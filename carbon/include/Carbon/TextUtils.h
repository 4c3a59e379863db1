// Pascal strings (a length byte first), C strings (a zero byte last) and Mac Roman text: conversions, case
// and accents. Comparing is in StringCompare.h, numbers in NumberFormatting.h, strings from resources in
// Resources.h.
#ifndef LAMPBLACK_CARBON_TEXTUTILS_H
#define LAMPBLACK_CARBON_TEXTUTILS_H

#include <Carbon/MacTypes.h>
#include <Carbon/NumberFormatting.h>
#include <Carbon/Script.h>
#include <Carbon/StringCompare.h>

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

// In place, in the same storage, whose address they answer.
StringPtr c2pstr(char* aStr);
char* p2cstr(StringPtr aStr);
StringPtr C2PStr(Ptr cString);
Ptr P2CStr(StringPtr pString);

// UppercaseText, LowercaseText, StripDiacritics, UppercaseStripDiacritics
//
// Change the text in place; each character stays one character. A letter whose other form Mac Roman lacks
// stays as it is. The script is smRoman, smSystemScript or smCurrentScript, which are one here; text of any
// other script is left alone.
void UppercaseText(Ptr textPtr, SInt16 len, ScriptCode script);
void LowercaseText(Ptr textPtr, SInt16 len, ScriptCode script);
void StripDiacritics(Ptr textPtr, SInt16 len, ScriptCode script);
void UppercaseStripDiacritics(Ptr textPtr, SInt16 len, ScriptCode script);

// UpperString: the capitals that the file system knows (see EqualString); without diacSens marks are taken
// off as well.
void UpperString(Str255 theString, Boolean diacSens);

// NewString, SetString: a string in a relocatable block of its own size. NULL when memory is out or the
// string is null; MemError says why.
StringHandle NewString(ConstStr255Param theString);
void SetString(StringHandle theString, ConstStr255Param strNew);

LAMPBLACK_END_C

#endif
