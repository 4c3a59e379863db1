// Strings from 'STR ' resources, and the user's name.
#ifndef LAMPBLACK_UTIL_STRINGRESOURCES_H
#define LAMPBLACK_UTIL_STRINGRESOURCES_H

#include <Carbon/Carbon.h>

#include "util/Visibility.h"

LAMPBLACK_BEGIN

// GetCString, GetPascalString
//
// Copy the string of a 'STR ' resource, of all open files or (GetPascalString) of the current one only; an
// empty one when there is none. A resource shorter than its length byte says ends where it ends. outText
// holds 256 bytes. Errors:     paramErr  null, or no such resource.
OSErr GetCString(SInt16 inID, char* outText);
OSErr GetPascalString(SInt16 inID, StringPtr outText, bool inSearchAll);

// GetUserNameMachineName
//
// The user's short name, or "You"; asked for once in the life of the process. Either may be null. Kept: the
// machine's name is never written, and callers get it back as they gave it.
// Errors:     paramErr  both null.
OSErr GetUserNameMachineName(StringPtr outUserName, StringPtr ioMachineName);

LAMPBLACK_END

#endif
