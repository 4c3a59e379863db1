// What the indexes of a colour table mean, and the way back from a colour to the nearest index.
#ifndef LAMPBLACK_QUICKDRAW_COLORSPACE_H
#define LAMPBLACK_QUICKDRAW_COLORSPACE_H

#include <Carbon/Quickdraw.h>

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

namespace lampblack::quickdraw {

inline uint32_t PixelOf(const RGBColor& c)
{
    return (uint32_t)(c.red >> 8) << 16 | (uint32_t)(c.green >> 8) << 8 | c.blue >> 8;
}
inline RGBColor ColorOf(uint32_t inPixel)
{
    const auto wide = [](uint32_t byte) { return (UInt16)((byte & 0xFF) * 0x101); };
    return { wide(inPixel >> 16), wide(inPixel >> 8), wide(inPixel) };
}

class ColorSpace {
public:
    // At most 256 entries in the order of their indexes; those beyond the given ones are black.
    ColorSpace(const RGBColor* colors, int count, SInt32 seed);

    int Count() const { return fCount; }
    SInt32 Seed() const { return fSeed; }                          // equal seeds mean equal tables
    uint32_t At(int index) const { return fColors[index & 0xFF]; } // 0x00RRGGBB
    const uint32_t* Colors() const { return fColors.data(); }      // 256 of them
    const RGBColor& Exact(int index) const { return fExact[index & 0xFF]; }

    // The nearest entry, the first one of equals; 0 when there are none.
    uint8_t IndexOf(uint32_t color) const
    {
        const Cell& cell = fCells ? fCells[CellOf(color)] : kNoCell;
        return cell.count == 1 ? cell.first : NearestIn(color);
    }

private:
    // The colours are divided into cells of 8 x 8 x 8; a cell knows the entries that can be nearest to any of
    // them, once it was needed.
    struct Cell {
        uint8_t count = 0; // 0: not looked at yet (or all 256)
        uint8_t first = 0;
        uint16_t unused = 0;
        uint32_t at = 0; // of the first one in fCandidates
    };
    static constexpr int kCells = 32 * 32 * 32;
    static const Cell kNoCell;

    static uint32_t CellOf(uint32_t color)
    {
        return (color >> 9 & 0x7C00) | (color >> 6 & 0x3E0) | (color >> 3 & 0x1F);
    }
    uint8_t NearestIn(uint32_t color) const;
    void LookAt(uint32_t color) const;

    int fCount;
    SInt32 fSeed;
    std::array<uint32_t, 256> fColors;
    std::array<RGBColor, 256> fExact;
    mutable std::unique_ptr<Cell[]> fCells; // once a colour was asked for
    mutable std::vector<uint8_t> fCandidates;
};

// The published tables of depths 1, 2, 4 and 8; for what is no such depth that of 1.
const ColorSpace& StandardColors(int depth);

} // namespace lampblack::quickdraw

#endif
