// Text that is stretched, as a picture that is played into another rectangle needs it.
#ifndef LAMPBLACK_QUICKDRAW_SCALEDTEXT_H
#define LAMPBLACK_QUICKDRAW_SCALEDTEXT_H

#include <Carbon/Quickdraw.h>

#include <cstdint>
#include <span>

namespace lampblack::quickdraw {

// Draws Mac Roman bytes from the pen of the current port, with its settings, its size and every distance
// scaled by numer / denom. The pen moves by the scaled width. A zero or negative scale counts as 1.
void DrawScaledText(std::span<const uint8_t> macRoman, Point numer, Point denom);

} // namespace lampblack::quickdraw

#endif
