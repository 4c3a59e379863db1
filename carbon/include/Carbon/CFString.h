// Strings of UTF-16 units, constant or mutable. Begin at CFSTR, CFStringCreateWithCString and
// CFStringGetCString; a Pascal string is Mac Roman (encoding 0).
//
// A reference that is null, released or no string: creating calls answer NULL, lengths and counts are 0,
// Booleans false, and changes do nothing. A range that passes the end of its string is refused in the same
// way. A constant string is never changed.
#ifndef LAMPBLACK_CARBON_CFSTRING_H
#define LAMPBLACK_CARBON_CFSTRING_H

#include <Carbon/CFBase.h>

#include <stdarg.h>

typedef const struct __CFString* CFStringRef;
typedef struct __CFString* CFMutableStringRef;
typedef const struct __CFDictionary* CFDictionaryRef; // format options: there are none, pass NULL
typedef const struct __CFLocale* CFLocaleRef;         // NULL: the rules of no particular language

typedef UInt32 CFStringEncoding;
typedef UInt32 UTF32Char;

enum : CFStringEncoding {
    kCFStringEncodingInvalidId = 0xFFFFFFFF,
    kCFStringEncodingMacRoman = 0,
    kCFStringEncodingWindowsLatin1 = 0x0500,
    kCFStringEncodingISOLatin1 = 0x0201,
    kCFStringEncodingASCII = 0x0600,
    kCFStringEncodingUnicode = 0x0100,
    kCFStringEncodingUTF8 = 0x08000100,
    kCFStringEncodingUTF16 = 0x0100, // this machine's byte order
    kCFStringEncodingUTF16BE = 0x10000100,
    kCFStringEncodingUTF16LE = 0x14000100,
    kCFStringEncodingUTF32 = 0x0C000100,
    kCFStringEncodingUTF32BE = 0x18000100,
    kCFStringEncodingUTF32LE = 0x1C000100
};

enum CFStringCompareFlags : CFOptionFlags {
    kCFCompareCaseInsensitive = 1,
    kCFCompareBackwards = 4,   // finding: the last match
    kCFCompareAnchored = 8,    // finding: only at the start of the range, or at its end when backwards
    kCFCompareNonliteral = 16, // a letter and its combining mark are the composed letter
    kCFCompareLocalized = 32,  // comparing: in the order of the user's locale
    kCFCompareNumerically = 64 // comparing: runs of digits by their value
};

LAMPBLACK_BEGIN_C

// CFSTR: a constant string from a literal; it lives as long as the process. The same text is the same
// reference. Bytes of 0x80 and above are UTF-8 when all of them are, else Mac Roman.
#define CFSTR(cStr) __CFStringMakeConstantString("" cStr "")
CFStringRef __CFStringMakeConstantString(const char* cStr);

CFTypeID CFStringGetTypeID(void);

// Creating. NULL for null text, an unknown encoding, or bytes that the encoding does not have. C strings are
// of 8-bit encodings. isExternalRepresentation: the bytes may begin with a byte-order mark; UTF-16 and UTF-32
// without one are big-endian then.
CFStringRef CFStringCreateWithPascalString(CFAllocatorRef alloc, ConstStr255Param pStr,
                                           CFStringEncoding encoding);
CFStringRef CFStringCreateWithCString(CFAllocatorRef alloc, const char* cStr, CFStringEncoding encoding);
CFStringRef CFStringCreateWithCharacters(CFAllocatorRef alloc, const UniChar* chars, CFIndex numChars);
CFStringRef CFStringCreateWithBytes(CFAllocatorRef alloc, const UInt8* bytes, CFIndex numBytes,
                                    CFStringEncoding encoding, Boolean isExternalRepresentation);

// The bytes are copied at once and then given to the deallocator; when NULL is answered they stay the
// caller's.
CFStringRef CFStringCreateWithPascalStringNoCopy(CFAllocatorRef alloc, ConstStr255Param pStr,
                                                 CFStringEncoding encoding,
                                                 CFAllocatorRef contentsDeallocator);
CFStringRef CFStringCreateWithCStringNoCopy(CFAllocatorRef alloc, const char* cStr, CFStringEncoding encoding,
                                            CFAllocatorRef contentsDeallocator);
CFStringRef CFStringCreateWithCharactersNoCopy(CFAllocatorRef alloc, const UniChar* chars, CFIndex numChars,
                                               CFAllocatorRef contentsDeallocator);

CFStringRef CFStringCreateWithSubstring(CFAllocatorRef alloc, CFStringRef str, CFRange range);
CFStringRef CFStringCreateCopy(CFAllocatorRef alloc, CFStringRef theString);

// CFStringCreateWithFormat
//
// The specifiers: %d %i %D %u %U %x %X %o %O %f %F %e %E %g %G %a %A %c %p %% as in printf, with its flags,
// widths, precisions, '*', lengths (hh h l ll q L z t j) and positions (%2$d); %@ an object's text, "(null)"
// when it is not alive; %s a C string in Mac Roman; %C a UniChar; %S UniChars that end with 0. Anything else
// after a '%' is text. Widths and precisions count to 65535.
CFStringRef CFStringCreateWithFormat(CFAllocatorRef alloc, CFDictionaryRef formatOptions, CFStringRef format,
                                     ...);
CFStringRef CFStringCreateWithFormatAndArguments(CFAllocatorRef alloc, CFDictionaryRef formatOptions,
                                                 CFStringRef format, va_list arguments);

// Mutable strings. maxLength 0 is no limit; else what would make the string longer is cut off.
CFMutableStringRef CFStringCreateMutable(CFAllocatorRef alloc, CFIndex maxLength);
CFMutableStringRef CFStringCreateMutableCopy(CFAllocatorRef alloc, CFIndex maxLength, CFStringRef theString);

// Reading.
CFIndex CFStringGetLength(CFStringRef theString);
UniChar CFStringGetCharacterAtIndex(CFStringRef theString, CFIndex idx);
void CFStringGetCharacters(CFStringRef theString, CFRange range, UniChar* buffer);

// CFStringGetCString, CFStringGetPascalString
//
// bufferSize counts the final zero or the length byte. Answer false, and an empty string where one fits, when
// the text does not fit or the encoding lacks a character of it.
Boolean CFStringGetCString(CFStringRef theString, char* buffer, CFIndex bufferSize,
                           CFStringEncoding encoding);
Boolean CFStringGetPascalString(CFStringRef theString, StringPtr buffer, CFIndex bufferSize,
                                CFStringEncoding encoding);

// The string's own storage, good until the string changes or ends; NULL when it has none of that kind, and a
// caller must be ready for that. The 8-bit forms are there for ASCII text in constant strings.
const char* CFStringGetCStringPtr(CFStringRef theString, CFStringEncoding encoding);
ConstStringPtr CFStringGetPascalStringPtr(CFStringRef theString, CFStringEncoding encoding);
const UniChar* CFStringGetCharactersPtr(CFStringRef theString);

// CFStringGetBytes
//
// Converts as much of the range as fits the buffer, whole characters only, and answers how many units that
// were. A character that the encoding lacks becomes lossByte, or ends the conversion when that is 0. buffer
// may be NULL: then only *usedBufLen (which may be NULL too) is wanted and maxBufLen does not count.
CFIndex CFStringGetBytes(CFStringRef theString, CFRange range, CFStringEncoding encoding, UInt8 lossByte,
                         Boolean isExternalRepresentation, UInt8* buffer, CFIndex maxBufLen,
                         CFIndex* usedBufLen);

CFStringEncoding CFStringGetSystemEncoding(void); // Mac Roman
Boolean CFStringIsEncodingAvailable(CFStringEncoding encoding);
// kCFNotFound for an unknown encoding or a size that no CFIndex holds.
CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding encoding);

SInt32 CFStringGetIntValue(CFStringRef str); // leading blanks are passed over; too large is the largest
double CFStringGetDoubleValue(CFStringRef str);

// Comparing and finding. A string that is not alive comes before every string. Nothing finds an empty string.
CFComparisonResult CFStringCompare(CFStringRef theString1, CFStringRef theString2,
                                   CFOptionFlags compareOptions);
CFComparisonResult CFStringCompareWithOptions(CFStringRef theString1, CFStringRef theString2,
                                              CFRange rangeToCompare, CFOptionFlags compareOptions);
CFRange CFStringFind(CFStringRef theString, CFStringRef stringToFind, CFOptionFlags compareOptions);
Boolean CFStringFindWithOptions(CFStringRef theString, CFStringRef stringToFind, CFRange rangeToSearch,
                                CFOptionFlags searchOptions, CFRange* result);
Boolean CFStringHasPrefix(CFStringRef theString, CFStringRef prefix);
Boolean CFStringHasSuffix(CFStringRef theString, CFStringRef suffix);

// Changing.
void CFStringAppend(CFMutableStringRef theString, CFStringRef appendedString);
void CFStringAppendCharacters(CFMutableStringRef theString, const UniChar* chars, CFIndex numChars);
void CFStringAppendPascalString(CFMutableStringRef theString, ConstStr255Param pStr,
                                CFStringEncoding encoding);
void CFStringAppendCString(CFMutableStringRef theString, const char* cStr, CFStringEncoding encoding);
void CFStringAppendFormat(CFMutableStringRef theString, CFDictionaryRef formatOptions, CFStringRef format,
                          ...);
void CFStringAppendFormatAndArguments(CFMutableStringRef theString, CFDictionaryRef formatOptions,
                                      CFStringRef format, va_list arguments);
void CFStringInsert(CFMutableStringRef str, CFIndex idx, CFStringRef insertedStr);
void CFStringDelete(CFMutableStringRef theString, CFRange range);
void CFStringReplace(CFMutableStringRef theString, CFRange range, CFStringRef replacement);
void CFStringReplaceAll(CFMutableStringRef theString, CFStringRef replacement);
CFIndex CFStringFindAndReplace(CFMutableStringRef theString, CFStringRef stringToFind,
                               CFStringRef replacementString, CFRange rangeToSearch,
                               CFOptionFlags compareOptions);

// CFStringPad: makes the string that long, cutting it or repeating padString from its unit indexIntoPad on.
void CFStringPad(CFMutableStringRef theString, CFStringRef padString, CFIndex length, CFIndex indexIntoPad);
void CFStringTrim(CFMutableStringRef theString, CFStringRef trimString);
void CFStringTrimWhitespace(CFMutableStringRef theString);
void CFStringLowercase(CFMutableStringRef theString, CFLocaleRef locale);
void CFStringUppercase(CFMutableStringRef theString, CFLocaleRef locale);
void CFStringCapitalize(CFMutableStringRef theString, CFLocaleRef locale);

LAMPBLACK_END_C

#endif
