// Pixel patterns behind PixPatHandles, as inks see them. Begin with SourceOf.
#ifndef LAMPBLACK_QUICKDRAW_PIXELPATTERNS_H
#define LAMPBLACK_QUICKDRAW_PIXELPATTERNS_H

#include "Ink.h"

#include <foundation/BigEndian.h>

namespace lampblack::quickdraw {

enum class PatternKind : uint8_t { Bits, Pixels, Color };

struct PatternSource {
    PatternKind kind = PatternKind::Bits; // also of what is no pattern
    Tile tile;                            // of Pixels; good until the pattern changes
    RGBColor color = { 0, 0, 0 };         // of Color
};

PatternSource SourceOf(PixPatHandle);

// The record of a live pattern, or null.
PixPat* FindPattern(PixPatHandle);

// A new pattern from the published big-endian bytes, of all types; null for what is none.
PixPatHandle PatternFromBytes(foundation::Bytes);

} // namespace lampblack::quickdraw

#endif
