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
    const ColorSpace* colors = nullptr; // what indexes mean, null for the standard table of the depth

    uint8_t* RowAt(int v) const { return base + (ptrdiff_t)(v - bounds.top) * rowBytes; }
    // How many pixels there are, also when SetOrigin has moved the far edges past the end of the coordinates.
    int Width() const { return (uint16_t)(bounds.right - bounds.left); }
    int Height() const { return (uint16_t)(bounds.bottom - bounds.top); }
};

inline bool IsDepth(int inDepth)
{
    return inDepth == 1 || inDepth == 2 || inDepth == 4 || inDepth == 8 || inDepth == 16 || inDepth == 32;
}

inline const ColorSpace& ColorsOf(const Surface& inSurface)
{
    return inSurface.colors ? *inSurface.colors : StandardColors(inSurface.depth);
}

// A word of 5 bits a channel as a colour, and a colour as that word: the highest bits of each channel.
inline uint32_t ColorOf555(uint32_t inPixel)
{
    const uint32_t high = (inPixel & 0x7C00) << 9 | (inPixel & 0x3E0) << 6 | (inPixel & 0x1F) << 3;
    return high | (high >> 5 & 0x070707);
}
inline uint32_t PixelOf555(uint32_t inColor)
{
    return (inColor >> 9 & 0x7C00) | (inColor >> 6 & 0x3E0) | (inColor >> 3 & 0x1F);
}

// count pixels of row v, the first being column h, as 0x00RRGGBB. All of them must lie inside the bounds.
void ReadColors(const Surface&, int v, int h, int count, uint32_t* outColors);

// The same way back: each colour becomes the nearest index, or at depth 16 its highest five bits a channel.
void WriteColors(const Surface&, int v, int h, int count, const uint32_t* colors);

// The same with pixels as their own values, indexes or direct words.
void ReadPixels(const Surface&, int v, int h, int count, uint32_t* outPixels);
void WritePixels(const Surface&, int v, int h, int count, const uint32_t* pixels);

// One pixel as its own value.
uint32_t ReadPixel(const Surface&, int v, int h);
void WritePixel(const Surface&, int v, int h, uint32_t pixel);

// The pixel value that stands for a colour, 0x00RRGGBB, and the colour of a pixel value.
uint32_t PixelFor(const Surface&, uint32_t color);
uint32_t ColorFor(const Surface&, uint32_t pixel);
// What is seen of a colour: the nearest that there is.
inline uint32_t ShownColor(const Surface& s, uint32_t color)
{
    return s.depth == 32 ? color : ColorFor(s, PixelFor(s, color));
}

} // namespace lampblack::quickdraw

#endif
