#include "icons/SystemIcons.h"

#include "icons/Members.h"

#include <appearance/IconPainters.h>

#include <algorithm>
#include <iterator>

namespace lampblack::icons {

// 0, 1 and 2 are the numbers by which alerts know theirs.
static constexpr SystemIcon kIcons[] = {
    { kAlertStopIcon, 0, appearance::PaintStopIcon },
    { kAlertNoteIcon, 1, appearance::PaintNoteIcon },
    { kAlertCautionIcon, 2, appearance::PaintCautionIcon },
    { kHelpIcon, kHelpIconResource, appearance::PaintHelpIcon },
    { kGenericDocumentIcon, kGenericDocumentIconResource, appearance::PaintDocumentIcon },
    { kGenericApplicationIcon, kGenericApplicationIconResource, appearance::PaintApplicationIcon },
    { kGenericFolderIcon, kGenericFolderIconResource, appearance::PaintFolderIcon },
    { kTrashIcon, kTrashIconResource, appearance::PaintTrashIcon },
};

const SystemIcon* FindSystemIcon(OSType inType)
{
    const auto found = std::find_if(std::begin(kIcons), std::end(kIcons),
                                    [inType](const SystemIcon& icon) { return icon.type == inType; });
    return found == std::end(kIcons) ? nullptr : found;
}

const SystemIcon* SystemIconNumbered(SInt16 inID)
{
    const auto found = std::find_if(std::begin(kIcons), std::end(kIcons),
                                    [inID](const SystemIcon& icon) { return icon.resourceID == inID; });
    return found == std::end(kIcons) ? nullptr : found;
}

// The published size that a rectangle shows.
static int NaturalSize(const Rect& inWhere)
{
    const int extent = std::min(inWhere.right - inWhere.left, inWhere.bottom - inWhere.top);
    return extent >= 128 ? 128 : extent >= 48 ? 48 : extent >= 32 ? 32 : 16;
}

static constexpr int kLargestPainted = 512; // pixels; what is larger is stretched

IconPicture& PaintSystemIcon(const SystemIcon& inIcon, const Rect& inWhere, IconAlignmentType inAlignment)
{
    const int size = NaturalSize(inWhere);
    const Rect where = Aligned(inWhere, inAlignment, size, size);
    const int width = std::clamp(where.right - where.left, 1, kLargestPainted);
    const int height = std::clamp(where.bottom - where.top, 1, kLargestPainted);
    IconPicture& picture = ScratchPicture();
    picture.Resize(width, height);
    picture.hasMask = picture.isSmooth = true;
    picture.isPlain = false;
    const appearance::PieceView piece = appearance::PaintedPiece(inIcon.painter, {}, width, height);
    if (piece.pixels)
        std::copy_n(piece.pixels, picture.pixels.size(), picture.pixels.begin());
    else
        std::fill(picture.pixels.begin(), picture.pixels.end(), 0u);
    if (PortDepth() == 1)
        MakePlain(picture);
    return picture;
}

} // namespace lampblack::icons
