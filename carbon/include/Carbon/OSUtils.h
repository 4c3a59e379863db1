// Who uses this machine, and what it is called.
#ifndef LAMPBLACK_CARBON_OSUTILS_H
#define LAMPBLACK_CARBON_OSUTILS_H

#include <Carbon/CFString.h>

LAMPBLACK_BEGIN_C

// CSCopyUserName: the login name, or the full name. A user without a full name has the login name for both;
// one that the machine does not know has $USER, or "user" and his number. Release the answer.
CFStringRef CSCopyUserName(Boolean useShortName);

// CSCopyMachineName: the host's name without its domain; "localhost" when it has none. Release the answer.
CFStringRef CSCopyMachineName(void);

LAMPBLACK_END_C

#endif
