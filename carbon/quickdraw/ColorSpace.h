// What the indexes of a colour table mean, and the way back from a colour to the nearest index.
#ifndef LAMPBLACK_QUICKDRAW_COLORSPACE_H
#define LAMPBLACK_QUICKDRAW_COLORSPACE_H

#include <Carbon/Quickdraw.h>

#include <array>
#include <cstdint>
#include <memory>

namespace lampblack::quickdraw {

class ColorSpace {
public:
    // At most 256 entries in the order of their indexes; those beyond the given ones are black.
    ColorSpace(const RGBColor* colors, int count, SInt32 seed);

    int Count() const { return fCount; }
    SInt32 Seed() const { return fSeed; } // equal seeds mean equal tables
    uint32_t At(int index) const { return fColors[index & 0xFF]; } // 0x00RRGGBB
    const uint32_t* Colors() const { return fColors.data(); }      // 256 of them
    const RGBColor& Exact(int index) const { return fExact[index & 0xFF]; }

    // The nearest entry, the first one of equals.
    uint8_t IndexOf(uint32_t color) const;

private:
    int fCount;
    SInt32 fSeed;
    std::array<uint32_t, 256> fColors;
    std::array<RGBColor, 256> fExact;
    mutable std::unique_ptr<uint8_t[]> fNearest; // of each colour in 5 bits a channel, once it was needed
};

// The published tables of depths 1, 2, 4 and 8.
const ColorSpace& StandardColors(int depth);

} // namespace lampblack::quickdraw

#endif
