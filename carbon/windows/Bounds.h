// Where a window is and how large.
#ifndef LAMPBLACK_WINDOWS_BOUNDS_H
#define LAMPBLACK_WINDOWS_BOUNDS_H

#include "WindowRecord.h"

namespace lampblack::windows {

// Gives the content new global bounds: asks with kEventWindowBoundsChanging (handlers may amend the
// rectangle), applies them, tells with kEventWindowBoundsChanged. `inWhy` holds the kWindowBoundsChange bits
// known so far. The window may be gone afterwards. inUpdate: what a larger size uncovers has to be drawn.
void ChangeBounds(WindowRef inWindow, const Rect& inContent, UInt32 inWhy, bool inUpdate = true);
Rect StructureBounds(const WindowRecord& inWindow);
// The bounds of the content for given bounds of the structure, and the other way round.
Rect ContentForStructure(const WindowRecord& inWindow, const Rect& inStructure);
Rect StructureForContent(const WindowRecord& inWindow, const Rect& inContent);

} // namespace lampblack::windows

#endif
