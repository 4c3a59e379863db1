// Colour tables: finding the nearest entry, and the tables that everybody has.
#include "ColorSpace.h"

#include <algorithm>

namespace lampblack::quickdraw {

const ColorSpace::Cell ColorSpace::kNoCell = {};

ColorSpace::ColorSpace(const RGBColor* inColors, int inCount, SInt32 inSeed)
    : fCount(inColors ? std::clamp(inCount, 0, 256) : 0), fSeed(inSeed), fColors{}, fExact{}
{
    for (int i = 0; i < fCount; ++i) {
        fExact[(size_t)i] = inColors[i];
        fColors[(size_t)i] = PixelOf(inColors[i]);
    }
}

static int Squared(int inValue)
{
    return inValue * inValue;
}

static int Channel(uint32_t inColor, int inShift)
{
    return (int)(inColor >> inShift & 0xFF);
}

static int Distance(uint32_t a, uint32_t b)
{
    return Squared(Channel(a, 16) - Channel(b, 16)) + Squared(Channel(a, 8) - Channel(b, 8)) +
           Squared(Channel(a, 0) - Channel(b, 0));
}

static constexpr int kCellWidth = 8;

// The least and the greatest distance of a colour from those of the cell whose lowest corner is given.
static int LeastDistance(uint32_t inColor, uint32_t inCorner)
{
    int sum = 0;
    for (int shift = 0; shift < 24; shift += 8) {
        const int low = Channel(inCorner, shift), value = Channel(inColor, shift);
        sum += Squared(std::max({ low - value, value - (low + kCellWidth - 1), 0 }));
    }
    return sum;
}

static int GreatestDistance(uint32_t inColor, uint32_t inCorner)
{
    int sum = 0;
    for (int shift = 0; shift < 24; shift += 8) {
        const int low = Channel(inCorner, shift), value = Channel(inColor, shift);
        sum += Squared(std::max(value - low, low + kCellWidth - 1 - value));
    }
    return sum;
}

// An entry can be nearest only if no other one is nearer wherever in the cell the colour lies.
void ColorSpace::LookAt(uint32_t inColor) const
{
    if (!fCells)
        fCells = std::make_unique<Cell[]>(kCells);
    const uint32_t corner = inColor & 0xF8F8F8;
    int bound = GreatestDistance(At(0), corner);
    for (int i = 1; i < fCount; ++i)
        bound = std::min(bound, GreatestDistance(At(i), corner));
    Cell& cell = fCells[CellOf(inColor)];
    cell.at = (uint32_t)fCandidates.size();
    for (int i = 0; i < fCount; ++i)
        if (LeastDistance(At(i), corner) <= bound)
            fCandidates.push_back((uint8_t)i);
    const size_t count = fCandidates.size() - cell.at;
    cell.count = (uint8_t)std::min<size_t>(count, 255);
    cell.first = fCandidates[cell.at];
}

uint8_t ColorSpace::NearestIn(uint32_t inColor) const
{
    if (fCount == 0)
        return 0;
    if (!fCells || fCells[CellOf(inColor)].count == 0)
        LookAt(inColor);
    const Cell& cell = fCells[CellOf(inColor)];
    const uint8_t* candidates = fCandidates.data() + cell.at;
    uint8_t best = cell.first;
    int least = Distance(At(best), inColor);
    const int count = cell.count == 255 ? fCount : cell.count;
    for (int i = 1; i < count && least > 0; ++i) {
        const uint8_t index = cell.count == 255 ? (uint8_t)i : candidates[i];
        const int distance = Distance(At(index), inColor);
        if (distance < least || (distance == least && index < best)) {
            least = distance;
            best = index;
        }
    }
    return best;
}

static constexpr RGBColor Gray(int inLevel)
{
    return { (UInt16)inLevel, (UInt16)inLevel, (UInt16)inLevel };
}

static constexpr RGBColor kTwo[] = { Gray(0xFFFF), Gray(0) };
static constexpr RGBColor kFour[] = { Gray(0xFFFF), Gray(0xAAAA), Gray(0x5555), Gray(0) };
static constexpr RGBColor kSixteen[] = {
    { 0xFFFF, 0xFFFF, 0xFFFF }, { 0xFC00, 0xF37D, 0x052F }, { 0xFFFF, 0x648A, 0x028C },
    { 0xDD6B, 0x08C2, 0x06A2 }, { 0xF2D7, 0x0856, 0x84EC }, { 0x46E3, 0x0000, 0xA53E },
    { 0x0000, 0x0000, 0xD400 }, { 0x0241, 0xAB54, 0xEAFF }, { 0x1F21, 0xB793, 0x1431 },
    { 0x0000, 0x64AF, 0x11B0 }, { 0x5600, 0x2C9D, 0x0524 }, { 0x90D7, 0x7160, 0x3A34 },
    { 0xC000, 0xC000, 0xC000 }, { 0x8080, 0x8080, 0x8080 }, { 0x4000, 0x4000, 0x4000 },
    { 0x0000, 0x0000, 0x0000 },
};

// A cube of six levels without its black, ramps of red, green, blue and grey between those levels, and black.
static std::array<RGBColor, 256> Cube()
{
    std::array<RGBColor, 256> colors{};
    for (int i = 0; i < 215; ++i)
        colors[(size_t)i] = { (UInt16)((5 - i / 36) * 0x3333), (UInt16)((5 - i / 6 % 6) * 0x3333),
                              (UInt16)((5 - i % 6) * 0x3333) };
    static constexpr UInt16 kRamp[10] = { 0xEEEE, 0xDDDD, 0xBBBB, 0xAAAA, 0x8888,
                                          0x7777, 0x5555, 0x4444, 0x2222, 0x1111 };
    for (int i = 0; i < 10; ++i) {
        const auto level = kRamp[i];
        colors[(size_t)(215 + i)] = { level, 0, 0 };
        colors[(size_t)(225 + i)] = { 0, level, 0 };
        colors[(size_t)(235 + i)] = { 0, 0, level };
        colors[(size_t)(245 + i)] = Gray(level);
    }
    return colors;
}

const ColorSpace& StandardColors(int inDepth)
{
    static const ColorSpace one(kTwo, 2, 1), two(kFour, 4, 2), four(kSixteen, 16, 4);
    static const ColorSpace eight(Cube().data(), 256, 8);
    return inDepth == 8 ? eight : inDepth == 4 ? four : inDepth == 2 ? two : one;
}

} // namespace lampblack::quickdraw
