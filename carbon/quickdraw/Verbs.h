// What a shape call does with its pixels, shared by every kind of shape.
#ifndef LAMPBLACK_QUICKDRAW_VERBS_H
#define LAMPBLACK_QUICKDRAW_VERBS_H

#include "Painter.h"

namespace lampblack::quickdraw {

enum class Verb : uint8_t { Frame, Paint, Erase, Invert, Fill };

// The ink of a verb in a port; the pattern is that of Fill. The port's pen must outlive it.
Ink InkOf(PortRecord&, Verb, const Pattern* fillPattern);

// The current port, if a shape would show there: null without port, with a hidden pen, or for a Fill
// without pattern.
PortRecord* PortForDrawing(Verb, const Pattern* fillPattern);

// Draws a region; Frame draws its border inside it.
void DrawRegion(Verb, const Region&, const Pattern* fillPattern);

} // namespace lampblack::quickdraw

#endif
