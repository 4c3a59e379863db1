// Cursors on their way to the machine, and 'crsr' resources on theirs to a record.
#ifndef LAMPBLACK_QUICKDRAW_CURSORIMAGE_H
#define LAMPBLACK_QUICKDRAW_CURSORIMAGE_H

#include <Carbon/Quickdraw.h>

#include <foundation/BigEndian.h>

namespace lampblack::quickdraw {

// Shows a cursor, in its own black and white, or with the colours (16 by 16, 0x00RRGGBB) of what its mask
// covers.
void ShowCursorPicture(const Cursor&, const uint32_t* colors = nullptr);

// The record of a 'crsr' resource in new handles, or null.
CCrsrHandle ReadColorCursor(foundation::Bytes);

} // namespace lampblack::quickdraw

#endif
