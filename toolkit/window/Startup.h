// The toolkit's start and end.
#ifndef LAMPBLACK_WINDOW_STARTUP_H
#define LAMPBLACK_WINDOW_STARTUP_H

#include <Carbon/Carbon.h>

#include "util/Visibility.h"

LAMPBLACK_BEGIN

// InitializeMacOSHelpers
//
// To be called once, before the first window: records the process, finds the application's resource file and
// makes its 'CTL#' lists readable. Later calls do nothing. Always noErr.
OSStatus InitializeMacOSHelpers();

// ExitMacOSHelpers
//
// To be called at the end: gives back what the toolkit keeps for the whole run. Always noErr. A later
// InitializeMacOSHelpers does nothing.
OSStatus ExitMacOSHelpers();

// A port for measuring text off screen, made when first needed; NULL until then.
extern CGrafPtr fgScratchPort;

LAMPBLACK_END

#endif
