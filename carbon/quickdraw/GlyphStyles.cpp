#include "GlyphStyles.h"

#include "FontFamilies.h"

#include <algorithm>
#include <cstdlib>

namespace lampblack::quickdraw {

// The same glyph with empty pixels around it.
static CoverageMap Padded(const CoverageMap& inMap, int left, int top, int right, int bottom)
{
    CoverageMap result;
    result.left = inMap.left - left;
    result.top = inMap.top - top;
    result.width = inMap.width + left + right;
    result.height = inMap.height + top + bottom;
    result.bits.assign((size_t)result.width * (size_t)result.height, 0);
    for (int row = 0; row < inMap.height; ++row)
        std::copy_n(inMap.bits.begin() + (ptrdiff_t)row * inMap.width, inMap.width,
                    result.bits.begin() + (ptrdiff_t)(row + top) * result.width + left);
    return result;
}

// Adds a copy moved by (dh, dv); where both are, the darker one counts.
static void AddMoved(CoverageMap& ioMap, const CoverageMap& inFrom, int dh, int dv)
{
    const int first = std::max(0, dh), count = ioMap.width - std::abs(dh);
    for (int row = std::max(0, dv); row < std::min(ioMap.height, ioMap.height + dv); ++row) {
        uint8_t* const to = ioMap.bits.data() + (size_t)row * ioMap.width + first;
        const uint8_t* const from = inFrom.bits.data() + (size_t)(row - dv) * ioMap.width + (first - dh);
        for (int i = 0; i < count; ++i)
            to[i] = std::max(to[i], from[i]);
    }
}

static bool IsRowEmpty(const CoverageMap& inMap, int inRow)
{
    const auto row = inMap.bits.begin() + (ptrdiff_t)inRow * inMap.width;
    return std::all_of(row, row + inMap.width, [](uint8_t bit) { return bit == 0; });
}

void Trim(CoverageMap& ioMap)
{
    int first = 0, end = ioMap.height;
    while (first < end && IsRowEmpty(ioMap, first))
        ++first;
    while (end > first && IsRowEmpty(ioMap, end - 1))
        --end;
    const auto bits = ioMap.bits.begin();
    ioMap.bits.erase(bits + (ptrdiff_t)end * ioMap.width, ioMap.bits.end());
    ioMap.bits.erase(bits, bits + (ptrdiff_t)first * ioMap.width);
    ioMap.top += first;
    ioMap.height = end - first;
    if (ioMap.height == 0)
        ioMap.width = 0;
}

void Slant(CoverageMap& ioMap)
{
    if (ioMap.width == 0)
        return;
    // The shift of a row, rounded down, so that it changes by at most one from row to row.
    const auto shift = [&](int row) { return -(ioMap.top + row + 1) >> 1; };
    const int least = shift(ioMap.height - 1), most = shift(0);
    CoverageMap slanted;
    slanted.left = ioMap.left + least;
    slanted.top = ioMap.top;
    slanted.width = ioMap.width + most - least;
    slanted.height = ioMap.height;
    slanted.bits.assign((size_t)slanted.width * (size_t)slanted.height, 0);
    for (int row = 0; row < ioMap.height; ++row)
        std::copy_n(ioMap.bits.begin() + (ptrdiff_t)row * ioMap.width, ioMap.width,
                    slanted.bits.begin() + (ptrdiff_t)row * slanted.width + (shift(row) - least));
    ioMap = std::move(slanted);
}

void Smear(CoverageMap& ioMap)
{
    if (ioMap.width == 0)
        return;
    const CoverageMap plain = Padded(ioMap, 0, 0, 1, 0);
    ioMap = plain;
    AddMoved(ioMap, plain, 1, 0);
}

void Hollow(CoverageMap& ioMap, int inShadow)
{
    if (ioMap.width == 0)
        return;
    const CoverageMap plain = Padded(ioMap, 1, 1, 1 + inShadow, 1 + inShadow);
    CoverageMap wide = plain; // the darkest in a rectangle is the darkest of its rows' darkest
    for (int dh = -1; dh <= 1 + inShadow; ++dh)
        AddMoved(wide, plain, dh, 0);
    CoverageMap grown = wide;
    for (int dv = -1; dv <= 1 + inShadow; ++dv)
        AddMoved(grown, wide, 0, dv);
    for (size_t i = 0; i < grown.bits.size(); ++i)
        grown.bits[i] = (uint8_t)(grown.bits[i] - std::min(grown.bits[i], plain.bits[i]));
    ioMap = grown;
}

Style MadeStyle(Style inFace, const FaceFile& inFile)
{
    return (Style)((inFace & bold && !inFile.hasBold ? bold : 0) |
                   (inFace & italic && !inFile.hasItalic ? italic : 0));
}

int ExtraAdvance(Style inFace, Style inMade)
{
    int extra = inMade & bold ? 1 : 0;
    if (inFace & shadow)
        extra += 2;
    else if (inFace & outline)
        extra += 1;
    if (inFace & condense)
        extra -= 1;
    if (inFace & extend)
        extra += 1;
    return extra;
}

} // namespace lampblack::quickdraw
