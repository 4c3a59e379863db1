// The application's own process: its serial number, signature and file.
#ifndef LAMPBLACK_UTIL_PROCESSHELPERS_H
#define LAMPBLACK_UTIL_PROCESSHELPERS_H

#include <Carbon/Carbon.h>

#include "util/Visibility.h"

LAMPBLACK_BEGIN

// The serial number recorded by InitializeMacOSHelpers.
extern ProcessSerialNumber fgPSN;

const ProcessSerialNumber& GetCurrentProcessSerialNumber();

// GetCurrentSignature
//
// The application's creator code. Errors: what GetProcessInformation answers.
OSErr GetCurrentSignature(OSType* outSignature);

// GetCurrentFSSpec
//
// The application's file, asked for once and remembered. Errors: what GetProcessInformation answered.
OSErr GetCurrentFSSpec(FSSpec* outSpec);

LAMPBLACK_END

#endif
