// A letter and its marks come from one place of the string when how they are written does not count.
#include "FoldedText.h"

#include "Unicode.h"

#include <algorithm>

namespace lampblack::foundation {

FoldedText::FoldedText(std::u16string_view inText, CFOptionFlags inOptions)
{
    fText.reserve(inText.size());
    fSources.reserve(inText.size() + 1);
    for (size_t i = 0; i < inText.size();) {
        const size_t start = i;
        char32_t character = inText[i++];
        const bool isPair =
            (character & 0xFC00) == 0xD800 && i < inText.size() && (inText[i] & 0xFC00) == 0xDC00;
        if (isPair)
            character = 0x10000 + ((character - 0xD800) << 10) + (inText[i++] - 0xDC00u);
        Add(character, start, inOptions);
    }
    if (inOptions & kCFCompareNonliteral)
        OrderMarks();
    fSources.push_back(inText.size());
}

void FoldedText::Add(char32_t inCharacter, size_t inSource, CFOptionFlags inOptions)
{
    const bool isCaseless = inOptions & kCFCompareCaseInsensitive;
    const bool isDecomposed = inOptions & kCFCompareNonliteral;
    std::u32string once(1, inCharacter), twice;
    if (isDecomposed && inCharacter >= 0xC0) {
        AppendDecomposed(twice, inCharacter);
        once.swap(twice);
    }
    for (const char32_t character : once)
        if (isCaseless)
            AppendFolded(fText, character);
        else
            fText.push_back(character);
    const bool isMark = isDecomposed && !fSources.empty() && CombiningClass(once[0]) != 0;
    fSources.resize(fText.size(), isMark ? fSources.back() : inSource);
}

// Marks on one letter stand in the order of their classes, as equivalence is defined.
void FoldedText::OrderMarks()
{
    for (auto at = fText.begin(); at != fText.end();) {
        const auto isBase = [](char32_t c) { return CombiningClass(c) == 0; };
        const auto marks = std::find_if_not(at, fText.end(), isBase);
        at = std::find_if(marks, fText.end(), isBase);
        std::stable_sort(marks, at,
                         [](char32_t a, char32_t b) { return CombiningClass(a) < CombiningClass(b); });
    }
}

std::optional<CFRange> FoldedText::Match(size_t inPlace, std::u32string_view inWanted) const
{
    if (inPlace + inWanted.size() > fText.size() || !IsBoundary(inPlace) ||
        !IsBoundary(inPlace + inWanted.size()) || fText.compare(inPlace, inWanted.size(), inWanted) != 0)
        return std::nullopt;
    const size_t from = fSources[inPlace], to = fSources[inPlace + inWanted.size()];
    return CFRangeMake((CFIndex)from, (CFIndex)(to - from));
}

} // namespace lampblack::foundation
