// An icon as pixels, and its way onto the port: alignment, transforms, scaling. Begin with IconPicture and
// Draw.
#ifndef LAMPBLACK_ICONS_ICONPICTURE_H
#define LAMPBLACK_ICONS_ICONPICTURE_H

#include <Carbon/Icons.h>

#include <quickdraw/Region.h>

#include <cstdint>
#include <vector>

namespace lampblack::icons {

struct IconPicture {
    int width = 0, height = 0;
    std::vector<uint32_t> pixels; // premultiplied 0xAARRGGBB, without slack
    bool hasMask = false;         // else every pixel counts
    bool isPlain = false;         // black and white: selection inverts it
    bool isSmooth = false;        // of many colours: shrunk by averages

    void Resize(int inWidth, int inHeight);
    uint32_t* RowAt(int v) { return pixels.data() + (size_t)v * (size_t)width; }
    const uint32_t* RowAt(int v) const { return pixels.data() + (size_t)v * (size_t)width; }
};

// A picture of some size, whichever is wanted: decoders write into the one scratch picture.
IconPicture& ScratchPicture();

// Where an icon of that size goes: all of the rectangle without alignment; else its own size, or as much of
// it as fits in shape.
Rect Aligned(const Rect& inRect, IconAlignmentType, int inWidth, int inHeight);

// Changes the look of all pixels, by patterns of black and white on a port of depth 1.
void Transform(IconPicture&, IconTransformType, int portDepth);

// Makes a picture of many colours black and white, for a port of depth 1: outlines and what is dark are black.
void MakePlain(IconPicture&);

// Stretches the picture over a rectangle of the current port, over what is there.
void Draw(const IconPicture&, const Rect& inWhere);

// The mask stretched over a rectangle.
quickdraw::Region MaskOf(const IconPicture&, const Rect& inWhere);

} // namespace lampblack::icons

#endif
