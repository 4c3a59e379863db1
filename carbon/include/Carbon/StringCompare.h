// Comparing Mac Roman text. Begin at EqualString for names, at CompareText for what a user sorts.
//
// The sorting calls use the Roman script's own order whatever itl2Handle is. Primary order is that of base
// letters: capitals and marks do not count, and the ligatures (AE, OE, fi, fl, sharp s) count as two letters.
// Secondary order puts capitals before small letters and plain ones before marked ones. Null text is empty.
#ifndef LAMPBLACK_CARBON_STRINGCOMPARE_H
#define LAMPBLACK_CARBON_STRINGCOMPARE_H

#include <Carbon/MacTypes.h>

LAMPBLACK_BEGIN_C

// CompareText, CompareString: -1, 0 or 1, by primary order and then by secondary order.
SInt16 CompareText(const void* aPtr, const void* bPtr, SInt16 aLen, SInt16 bLen, Handle itl2Handle);
SInt16 CompareString(ConstStr255Param aStr, ConstStr255Param bStr, Handle itl2Handle);

// IdenticalText, IdenticalString: 0 when equal in primary order, else 1. "Rose" and "ros\216" are identical.
SInt16 IdenticalText(const void* aPtr, const void* bPtr, SInt16 aLen, SInt16 bLen, Handle itl2Handle);
SInt16 IdenticalString(ConstStr255Param aStr, ConstStr255Param bStr, Handle itl2Handle);

// EqualString, RelString
//
// As the file system compares, by the values of characters: capitals count when caseSens, marks when
// diacSens. Without caseSens a small letter counts as its capital where the character set of 1984 (to 0xD8)
// has it. RelString answers -1, 0 or 1.
Boolean EqualString(ConstStr255Param str1, ConstStr255Param str2, Boolean caseSens, Boolean diacSens);
SInt16 RelString(ConstStr255Param str1, ConstStr255Param str2, Boolean caseSens, Boolean diacSens);

LAMPBLACK_END_C

#endif
