// Text in controls: the font that a control asked for, and laying out and drawing a few lines of Mac Roman
// text in it. Everything works in the current port.
#ifndef LAMPBLACK_CONTROLS_CONTROLTEXT_H
#define LAMPBLACK_CONTROLS_CONTROLTEXT_H

#include "controls/Kind.h"

#include <Carbon/Appearance.h>

#include <string_view>

namespace lampblack::controls {

// The theme font of a kind whose large size has the system font.
ThemeFontID ThemeFontForSize(ControlSize inSize);

// Sets the port's font, face and size to those of the control.
void UseControlFont(const Control& inControl);
// Sets the colour and transfer mode of the text: the colour procedure first, then what the font record asks
// for.
void UseControlTextColor(const Control& inControl, ThemeTextColor inUsable, ThemeTextColor inDimmed);

SInt16 FontLineHeight();
SInt16 FontAscent();
SInt16 WidthOf(std::string_view inText);

// Lines end at returns, and before words that would pass the width.
struct TextLine {
    short start;
    short length;
};
// As many lines as fit into outLines; answers how many there are.
size_t BreakLines(std::string_view inText, SInt16 inWidth, TextLine* outLines, size_t inRoom);

constexpr size_t kMostLines = 64;

// Draws the text in lines from the top of the box. just: 0 and -2 left, 1 centre, -1 right.
void DrawWrapped(std::string_view inText, const Rect& inBox, SInt16 inJust);
// Draws one line, centred vertically.
void DrawLine(std::string_view inText, const Rect& inBox, SInt16 inJust);
// The same for a title that has to stay within its box: in narrower letters when it is too wide, and with an
// ellipsis for its end when that is not enough.
void DrawFittedLine(std::string_view inText, const Rect& inBox, SInt16 inJust);
SInt16 WrappedHeight(std::string_view inText, SInt16 inWidth);

} // namespace lampblack::controls

#endif
