// Colours spread over pixels of few: what a pixel cannot show its neighbours make good. Begin with Ditherer.
#ifndef LAMPBLACK_QUICKDRAW_DITHERING_H
#define LAMPBLACK_QUICKDRAW_DITHERING_H

#include "Surface.h"

#include <vector>

namespace lampblack::quickdraw {

// Error diffusion from row to row, always from left to right, so that the same picture gives the same pixels.
class Ditherer {
public:
    // Begins a picture of rows of this width, which is not more than the widest one that a map can hold.
    void Begin(const Surface& to, int width);

    // The next row down: colours become pixel values of the destination.
    void Row(uint32_t* ioColors);

private:
    struct Error {
        int red, green, blue; // in sixteenths
    };
    uint32_t Place(uint32_t inColor, int h);

    const Surface* fTo = nullptr;
    int fWidth = 0;
    std::vector<Error> fErrors;     // one more at each end
    Error fAhead = {}, fBelow = {}; // for the next pixel, and for the one below it
};

} // namespace lampblack::quickdraw

#endif
