// Strings of bytes: bounded copies, case, comparison and search. Two forms stand side by side: C strings,
// ended by a zero byte, and Pascal strings, a length byte before at most 255 others. Conversions are in
// StringConversions.h, strings from resources in StringResources.h.
//
// Characters of 0x80 and above are the business of the platform's script-aware calls, in the system script.
#ifndef LAMPBLACK_UTIL_STRINGS_H
#define LAMPBLACK_UTIL_STRINGS_H

#include <Carbon/Carbon.h>

#include "util/Visibility.h"

LAMPBLACK_BEGIN

// --- Bounded copies

// strcpysafe
//
// Copies as much as fits with its final zero. Units: inSize is the destination in bytes; 0 writes nothing.
void strcpysafe(char* outText, const char* inText, UInt32 inSize);

// PLstrcpysafe
//
// The same for Pascal strings; inSize counts the length byte too. Answers the length of the copy.
SInt32 PLstrcpysafe(StringPtr outText, ConstStr255Param inText, UInt32 inSize);

// strncpyterm
//
// Copies at most inCount characters, and always a final zero behind them: the destination holds inCount + 1
// bytes. Answers the destination. Kept: never more than 32767 characters.
char* strncpyterm(char* outText, const char* inText, SInt32 inCount);

// --- Case and kinds of characters

char UpperChar(char inCharacter);
void PStringToUppercase(StringPtr ioText);
void PStringToLowercase(StringPtr ioText);
bool CharacterIsNumber(char inCharacter);
bool CharacterIsHexDigit(char inCharacter);

// --- Comparison and search

// PStringCompare
//
// -1, 0 or 1; -2 when either is null. Kept, since sorted data rely on it: characters compare as signed bytes,
// so that those of 0x80 and above come before all of ASCII.
SInt16 PStringCompare(ConstStr255Param inA, ConstStr255Param inB, bool inCaseSensitive);

// False when either is null.
bool PStringEqual(ConstStr255Param inA, ConstStr255Param inB, bool inCaseSensitive);

// CStringContains, PStringContains
//
// Whether a text has a pattern in it, as IdenticalText sees it. *outOffset counts from 0; it is the text's
// length when there is no match, and 0 when either is null.
bool CStringContains(const char* inText, const char* inPattern, SInt32* outOffset);
bool PStringContains(ConstStr255Param inText, ConstStr255Param inPattern, SInt32* outOffset);

// PStringContainsCharacter
//
// *outIndex is where the character is, or the length plus 1; a null string leaves it alone. Kept here and in
// the next two, whose callers search for separators: a character of 0x80 or above is never found.
bool PStringContainsCharacter(ConstStr255Param inText, char inCharacter, SInt16* outIndex);

// PStringCopyUptoCharacter
//
// Copies what stands before a character. Kept: when the character is absent, the byte behind the source comes
// along and the length is one more than the source's. Behind 255 characters there is no byte: the length is
// then what is left of 256 in a byte, 0. The destination is a Str255; a null source empties it.
void PStringCopyUptoCharacter(ConstStr255Param inText, StringPtr outText, char inDelimiter);

// PStringCopyStartingAfterCharacter
//
// Copies what stands behind the first such character; without one the destination is left as it was. A null
// source empties it.
void PStringCopyStartingAfterCharacter(ConstStr255Param inText, StringPtr outText, char inDelimiter);

LAMPBLACK_END

#endif
