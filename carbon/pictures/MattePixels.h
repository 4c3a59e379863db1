// Images of 32 bits on their way to the port, with or without a fourth channel that says how much of each
// pixel is seen.
#ifndef LAMPBLACK_PICTURES_MATTEPIXELS_H
#define LAMPBLACK_PICTURES_MATTEPIXELS_H

#include "Player.h"

namespace lampblack::pictures {

// 0xAARRGGBB, not premultiplied, rows without slack.
struct ArgbPixels {
    const uint32_t* pixels;
    int width, height;
};

// Draws a part of an image (left, top, right, bottom in its own pixels) in a rectangle of the port, over what
// is there, the nearest pixel when they differ in size. Transfer modes play no part.
void DrawWithAlpha(Player&, const ArgbPixels&, const Rect& from, const Rect& to);

// Puts the weights of a matte, stretched to the image, into the highest bytes.
void ApplyMatte(const Matte&, int width, int height, uint32_t* ioPixels);

} // namespace lampblack::pictures

#endif
