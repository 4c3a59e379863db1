// Text whose letters join, combine, change places or run right to left, or that needs other fonts: laid out
// by Pango, which is loaded when the first such text appears. Begin with NeedsShaping.
#ifndef LAMPBLACK_QUICKDRAW_SHAPING_H
#define LAMPBLACK_QUICKDRAW_SHAPING_H

#include "Strike.h"
#include "TextEngine.h"

#include <string>
#include <string_view>
#include <vector>

namespace lampblack::quickdraw {

// Whether there is a character whose picture or place depends on its neighbours, or that the strike has not.
bool NeedsShaping(std::string_view utf8, const Strike&);

// What belongs together and is never divided, in the order of the text.
struct Cluster {
    size_t end = 0; // in bytes
    int width = 0;
};

struct ShapedText {
    int width = 0; // by how much the pen moves
    Glyph ink;     // of all the text, from the pen
    std::vector<Cluster> clusters;
    std::vector<uint8_t> coverage; // of the ink
};

// Null when there is no shaper, or it is out of its depth. Good until the next call. Texts that were shaped a
// short time ago are kept.
const ShapedText* Shape(const TextFontStyle&, std::string_view utf8);

// Where to end the next piece of a long text, so that pictures stay of moderate size.
size_t PieceToShape(std::string_view utf8);

} // namespace lampblack::quickdraw

#endif
