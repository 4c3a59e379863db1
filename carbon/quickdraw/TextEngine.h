// Text in UTF-8 by the fonts of QuickDraw, for floors whose text is not Mac Roman. Simple text is drawn glyph
// by glyph from the caches that Mac Roman text uses; text whose letters join, combine, change places or run
// right to left, or that needs other fonts, is shaped as a whole.
#ifndef LAMPBLACK_QUICKDRAW_TEXTENGINE_H
#define LAMPBLACK_QUICKDRAW_TEXTENGINE_H

#include <Carbon/Quickdraw.h>

#include <string_view>

namespace lampblack::quickdraw {

struct TextFontStyle {
    SInt16 font = 0;
    SInt16 size = 12;
    Style face = normal;
};

FontInfo InfoOf(const TextFontStyle&);
int WidthOfUtf8(const TextFontStyle&, std::string_view utf8);

// How many bytes from the start fit into a width; letters and marks that belong together are not divided.
size_t Utf8ThatFits(const TextFontStyle&, std::string_view utf8, int width);

// Draws in the current port with its text mode and colours, from its pen, which is left where the text ends.
void DrawUtf8(const TextFontStyle&, std::string_view utf8);

} // namespace lampblack::quickdraw

#endif
