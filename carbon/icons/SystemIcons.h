// The icons of the system, painted in the size in which they are wanted.
#ifndef LAMPBLACK_ICONS_SYSTEMICONS_H
#define LAMPBLACK_ICONS_SYSTEMICONS_H

#include "icons/IconPicture.h"

#include <appearance/Piece.h>

namespace lampblack::icons {

struct SystemIcon {
    OSType type;       // of GetIconRef with kSystemIconsCreator
    SInt16 resourceID; // under which an application without such a resource sees it
    appearance::Painter painter;
};

const SystemIcon* FindSystemIcon(OSType type);           // null for none
const SystemIcon* SystemIconNumbered(SInt16 resourceID); // null for none

// In the scratch picture, in the size that it will have there.
IconPicture& PaintSystemIcon(const SystemIcon&, const Rect& where, IconAlignmentType);

} // namespace lampblack::icons

#endif
