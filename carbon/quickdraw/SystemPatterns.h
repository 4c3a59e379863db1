// The system's list of patterns, which GetIndPattern knows as sysPatListID.
#ifndef LAMPBLACK_QUICKDRAW_SYSTEMPATTERNS_H
#define LAMPBLACK_QUICKDRAW_SYSTEMPATTERNS_H

#include <Carbon/Quickdraw.h>

namespace lampblack::quickdraw {

const Pattern* SystemPatternNumbered(int inIndex); // from 1; null beyond the list

} // namespace lampblack::quickdraw

#endif
