// Capability tests: which system, libraries and processor an application runs on. Most ask Gestalt once, on
// the first call, and remember the answer for the life of the process.
#ifndef LAMPBLACK_UTIL_SYSTEMCHECKS_H
#define LAMPBLACK_UTIL_SYSTEMCHECKS_H

#include <Carbon/Carbon.h>

#include "util/Visibility.h"

LAMPBLACK_BEGIN

// HasMacOSX, HasMacOS9
//
// At least 10.0, at least 9.0. A failed Gestalt on the first call leaves the answer false for good.
bool HasMacOSX();
bool HasMacOS9();

// HasMacOSX1004, HasMacOSX101, HasMacOSX102, HasMacOSXPanther (10.3)
//
// Three-way comparison of the system version with that release: -1 below, 0 exactly it, 1 above; -2 when the
// version is unknown. "At least" is a result of 0 or more.
SInt32 HasMacOSX1004();
SInt32 HasMacOSX101();
SInt32 HasMacOSX102();
SInt32 HasMacOSXPanther();

// HasAqua
//
// The menu bar has the Aqua layout.
bool HasAqua();

// HasCarbonLib12 to HasCarbonLib16
//
// True without asking for CarbonLib's version on Mac OS X (HasCarbonLib12: with Aqua).
bool HasCarbonLib12();
bool HasCarbonLib131();
bool HasCarbonLib15();
bool HasCarbonLib16();

bool HasQuickTime30();
bool HasQuickTime40();
bool HasQuickTime5();
bool HasSpeechManager();
bool HasSpeechRecognition();

// HasPowerPC60x
//
// One of the processors 0x101, 0x103, 0x104, 0x106, 0x107, 0x109 and 0x10A.
bool HasPowerPC60x();

// HasNetSprockets
//
// Always false: the library is gone from every system that this toolkit runs on.
bool HasNetSprockets();

// HasFeature
//
// Whether a bit of a selector's answer is set; asks every time. Units: inBit counts from 0 at the low end and
// is taken modulo 32.
bool HasFeature(OSType inSelector, SInt32 inBit);

// HasCatSearch
//
// Whether a volume can be searched by catalogue; asks every time.
bool HasCatSearch(SInt16 inVolume);

// HasEnoughMemory, HasEnoughTempMemory
//
// Whether a block of that many bytes can be had: always with Aqua, whose memory is virtual. Temporary memory
// is always enough.
bool HasEnoughMemory(Size inBytes);
bool HasEnoughTempMemory(Size inBytes);

LAMPBLACK_END

#endif
