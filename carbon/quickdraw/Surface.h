// Pixels of any depth, and rows of them read and written as colours. Begin with Surface.
#ifndef LAMPBLACK_QUICKDRAW_SURFACE_H
#define LAMPBLACK_QUICKDRAW_SURFACE_H

#include "ColorSpace.h"

#include <Carbon/Quickdraw.h>

#include <cstddef>
#include <cstdint>

namespace lampblack::quickdraw {

// Depths 1, 2, 4 and 8 hold indexes, the leftmost pixel in the highest bits of a byte; 16 holds native words
// 0RRRRRGGGGGBBBBB, 32 native words 0x00RRGGBB.
struct Surface {
    uint8_t* base = nullptr; // null: there are no pixels
    int rowBytes = 0;
    int depth = 32;
    Rect bounds = { 0, 0, 0, 0 };       // the coordinates of all pixels
    const ColorSpace* colors = nullptr; // what indexes mean; null for direct pixels

    uint8_t* RowAt(int v) const { return base + (ptrdiff_t)(v - bounds.top) * rowBytes; }
};

inline bool IsDepth(int inDepth)
{
    return inDepth == 1 || inDepth == 2 || inDepth == 4 || inDepth == 8 || inDepth == 16 || inDepth == 32;
}

// count pixels of row v, the first being column h, as 0x00RRGGBB. All of them must lie inside the bounds.
void ReadColors(const Surface&, int v, int h, int count, uint32_t* outColors);

// The same way back: each colour becomes the nearest pixel that the surface can hold.
void WriteColors(const Surface&, int v, int h, int count, const uint32_t* colors);

// One pixel as its own value (an index or a direct word), for depths of any kind.
uint32_t ReadPixel(const Surface&, int v, int h);
void WritePixel(const Surface&, int v, int h, uint32_t pixel);

// The pixel value that stands for a colour, 0x00RRGGBB, and the colour of a pixel value.
uint32_t PixelFor(const Surface&, uint32_t color);
uint32_t ColorFor(const Surface&, uint32_t pixel);

} // namespace lampblack::quickdraw

#endif
