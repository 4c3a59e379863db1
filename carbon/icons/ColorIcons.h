// The records of colour icons, from the bytes of 'cicn' resources.
#ifndef LAMPBLACK_ICONS_COLORICONS_H
#define LAMPBLACK_ICONS_COLORICONS_H

#include "icons/Members.h"

namespace lampblack::icons {

// A record in new handles; null for bytes that are no whole icon, and without memory.
CIconHandle NewColorIcon(Bytes);

// An icon as a port of that depth shows it: false for a record that is no longer whole.
bool ReadColorIcon(CIconHandle, int depth, IconPicture* out);

} // namespace lampblack::icons

#endif
