// Colour tables behind CTabHandles, as drawing sees them. Begin with SpaceOf.
#ifndef LAMPBLACK_QUICKDRAW_COLORTABLES_H
#define LAMPBLACK_QUICKDRAW_COLORTABLES_H

#include "Surface.h"

#include <Carbon/QDColors.h>

#include <foundation/BigEndian.h>

#include <memory>
#include <optional>
#include <vector>

namespace lampblack::quickdraw {

using SpacePointer = std::shared_ptr<const ColorSpace>;

// What the indexes of a table mean as it is now; null for a reference that is no table. Tables of equal
// colours share one space. Entries beyond those that pixels of the depth can mean are left out.
SpacePointer SpaceOf(CTabHandle, int depth = 8);
SpacePointer StandardSpace(int depth);

// The seed of a table; 0 for what is none.
SInt32 SeedOf(CTabHandle);

// A new table of the given colours, or null without memory.
CTabHandle NewTable(const RGBColor* colors, int count, SInt32 seed);
CTabHandle NewTable(const ColorSpace&);

// The entries of a table in the published big-endian format, 'clut' and inside of others; used bytes are
// taken from the reader. Nothing for what is too short or has more than 256 entries.
struct TableEntries {
    SInt32 seed = 0;
    short flags = 0;
    std::vector<ColorSpec> entries;
};
std::optional<TableEntries> ReadTable(foundation::BigEndianReader&);
CTabHandle NewTable(const TableEntries&);
SpacePointer SpaceOf(const TableEntries&);

// The record behind a pixel map of a port or of the application; null for what is neither.
PixMap* FindPixMap(PixMapHandle);

} // namespace lampblack::quickdraw

#endif
