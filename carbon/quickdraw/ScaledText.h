// Text that is stretched, as a picture that is played into another rectangle needs it, and a text that would
// not fit where it has to go.
#ifndef LAMPBLACK_QUICKDRAW_SCALEDTEXT_H
#define LAMPBLACK_QUICKDRAW_SCALEDTEXT_H

#include <Carbon/Quickdraw.h>

#include <cstdint>
#include <span>

namespace lampblack::quickdraw {

// Draws Mac Roman bytes from the pen of the current port, with its settings, its size and every distance
// scaled by numer / denom. The pen moves by the scaled width. A zero or negative scale counts as 1.
void DrawScaledText(std::span<const uint8_t> macRoman, Point numer, Point denom);

// Has the Mac Roman text of the current port be drawn and measured that much narrower or wider, until the
// next call; 100 is how it is by nature. Whoever sets this sets it back.
void StretchText(int percent);

} // namespace lampblack::quickdraw

#endif
