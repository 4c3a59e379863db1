// Painters of the system's icons, which fill their whole image and leave the rest of it transparent. They are
// drawn on a square of 32 units that is stretched to the size asked for.
#ifndef LAMPBLACK_APPEARANCE_ICONPAINTERS_H
#define LAMPBLACK_APPEARANCE_ICONPAINTERS_H

#include "appearance/Piece.h"

namespace lampblack::appearance {

void PaintStopIcon(Canvas&, int, int, Look);
void PaintNoteIcon(Canvas&, int, int, Look);
void PaintCautionIcon(Canvas&, int, int, Look);
void PaintHelpIcon(Canvas&, int, int, Look);
void PaintDocumentIcon(Canvas&, int, int, Look);
void PaintApplicationIcon(Canvas&, int, int, Look);
void PaintFolderIcon(Canvas&, int, int, Look);
void PaintTrashIcon(Canvas&, int, int, Look);

} // namespace lampblack::appearance

#endif
