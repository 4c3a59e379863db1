// The one call of the Sound Manager that every application makes.
#ifndef LAMPBLACK_CARBON_SOUND_H
#define LAMPBLACK_CARBON_SOUND_H

#include <Carbon/MacTypes.h>

LAMPBLACK_BEGIN_C

// SysBeep
//
// The user's alert sound. Where the machine has none, nothing is heard.
//
// Units: the duration, in ticks, is left unread as the published call leaves it for sampled alert sounds.
void SysBeep(short inDuration);

LAMPBLACK_END_C

#endif
