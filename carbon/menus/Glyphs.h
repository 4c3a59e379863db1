// The signs of menus that fonts do not have: marks, and the keys of key combinations.
#ifndef LAMPBLACK_MENUS_GLYPHS_H
#define LAMPBLACK_MENUS_GLYPHS_H

#include <Carbon/MacTypes.h>

namespace lampblack::menus {

enum class Glyph : UInt8 { Check, Diamond, Bullet, Command, Shift, Option, Control };

constexpr short kGlyphSize = 9;

// Draws with its bottom left at a point, in the port's colour.
void DrawGlyph(Glyph inGlyph, Point inBottomLeft);

} // namespace lampblack::menus

#endif
