// Text in UTF-8 by the fonts of QuickDraw, for floors whose text is not Mac Roman. Every character is drawn
// by its own glyph, left to right; scripts whose letters join or turn around are not shaped yet.
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

// How many bytes, whole characters only, fit into a width.
size_t Utf8ThatFits(const TextFontStyle&, std::string_view utf8, int width);

// Draws in the current port with its text mode and colours, from its pen, which is left where the text ends.
void DrawUtf8(const TextFontStyle&, std::string_view utf8);

} // namespace lampblack::quickdraw

#endif
