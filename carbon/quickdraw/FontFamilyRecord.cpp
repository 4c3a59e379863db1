#include "FontFamilyRecord.h"

#include <foundation/BigEndian.h>

#include <algorithm>
#include <bit>

namespace lampblack::quickdraw {

static constexpr size_t kAssociations = 52, kAssociationSize = 6;

std::vector<FontAssociation> ReadFontFamily(std::span<const uint8_t> inBytes)
{
    std::vector<FontAssociation> found;
    const int count = (int16_t)foundation::ReadBE16(inBytes, kAssociations) + 1;
    size_t at = kAssociations + 2;
    for (int i = 0; i < count && foundation::Fits(at, kAssociationSize, inBytes.size());
         ++i, at += kAssociationSize) {
        FontAssociation association;
        association.size = (SInt16)foundation::ReadBE16(inBytes, at);
        association.style = (Style)foundation::ReadBE16(inBytes, at + 2);
        association.id = (SInt16)foundation::ReadBE16(inBytes, at + 4);
        if (association.size >= 0)
            found.push_back(association);
    }
    return found;
}

// How badly one fits a style: styles that were not asked for cannot be taken away, others can be made.
static int Misfit(Style inHas, Style inWanted)
{
    return 16 * std::popcount((unsigned)(inHas & ~inWanted)) + std::popcount((unsigned)(inWanted & ~inHas));
}

static const FontAssociation* BestOfSize(std::span<const FontAssociation> inAll, int inSize, Style inStyle)
{
    const FontAssociation* best = nullptr;
    for (const FontAssociation& one : inAll)
        if (one.size == inSize && (!best || Misfit(one.style, inStyle) < Misfit(best->style, inStyle)))
            best = &one;
    return best;
}

static int NextSize(std::span<const FontAssociation> inAll, int inSize)
{
    int larger = 0, smaller = 0;
    for (const FontAssociation& one : inAll) {
        if (one.size > inSize && (larger == 0 || one.size < larger))
            larger = one.size;
        if (one.size < inSize && one.size > smaller)
            smaller = one.size;
    }
    return larger ? larger : smaller;
}

const FontAssociation* BestAssociation(std::span<const FontAssociation> inAll, int inSize, Style inStyle,
                                       bool inOutlinesPreferred)
{
    const FontAssociation* outlines = BestOfSize(inAll, 0, inStyle);
    if (outlines && inOutlinesPreferred)
        return outlines;
    if (const FontAssociation* exact = BestOfSize(inAll, inSize, inStyle))
        return exact;
    if (outlines)
        return outlines;
    if (const FontAssociation* twice = BestOfSize(inAll, 2 * inSize, inStyle))
        return twice;
    if (const FontAssociation* half = inSize % 2 == 0 ? BestOfSize(inAll, inSize / 2, inStyle) : nullptr)
        return half;
    const int next = NextSize(inAll, inSize);
    return next ? BestOfSize(inAll, next, inStyle) : nullptr;
}

} // namespace lampblack::quickdraw
