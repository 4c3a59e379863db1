// Error diffusion with the weights 7, 3, 5 and 1 sixteenths.
#include "Dithering.h"

#include <algorithm>

namespace lampblack::quickdraw {

void Ditherer::Begin(const Surface& inTo, int inWidth)
{
    fTo = &inTo;
    fWidth = inWidth;
    fErrors.assign((size_t)inWidth + 2, Error{ 0, 0, 0 });
}

static int WithError(uint32_t inChannel, int inSixteenths)
{
    return std::clamp((int)(inChannel & 0xFF) + ((inSixteenths + 8) >> 4), 0, 255);
}

// fErrors[h + 1] holds what the row above left for pixel h until h is placed; then it gathers for the row
// below.
uint32_t Ditherer::Place(uint32_t inColor, int h)
{
    const Error above = fErrors[(size_t)h + 1];
    const int red = WithError(inColor >> 16, fAhead.red + above.red),
              green = WithError(inColor >> 8, fAhead.green + above.green),
              blue = WithError(inColor, fAhead.blue + above.blue);
    const uint32_t pixel = PixelFor(*fTo, (uint32_t)(red << 16 | green << 8 | blue));
    const uint32_t shown = ColorFor(*fTo, pixel);
    const Error error = { red - (int)(shown >> 16 & 0xFF), green - (int)(shown >> 8 & 0xFF),
                          blue - (int)(shown & 0xFF) };
    const auto add = [&error](Error& ioTo, int inWeight) {
        ioTo.red += error.red * inWeight;
        ioTo.green += error.green * inWeight;
        ioTo.blue += error.blue * inWeight;
    };
    add(fErrors[(size_t)h], 3);
    fErrors[(size_t)h + 1] = fBelow; // what the pixel before left for below
    add(fErrors[(size_t)h + 1], 5);
    fBelow = fAhead = { 0, 0, 0 };
    add(fBelow, 1);
    add(fAhead, 7);
    return pixel;
}

void Ditherer::Row(uint32_t* ioColors)
{
    fAhead = fBelow = { 0, 0, 0 };
    for (int h = 0; h < fWidth; ++h)
        ioColors[h] = Place(ioColors[h], h);
    fErrors[0] = { 0, 0, 0 };
}

} // namespace lampblack::quickdraw
