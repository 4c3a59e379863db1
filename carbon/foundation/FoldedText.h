// Text as it is compared: with or without regard to case and to how accents are written, each character with
// the place in the string that it came from.
#ifndef LAMPBLACK_FOUNDATION_FOLDEDTEXT_H
#define LAMPBLACK_FOUNDATION_FOLDEDTEXT_H

#include <Carbon/CFString.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lampblack::foundation {

class FoldedText {
public:
    FoldedText(std::u16string_view, CFOptionFlags);

    const std::u32string& Text() const { return fText; }

    // Where a text of as many characters begins, when it stands at a place and neither end of it divides what
    // was one character of the string. inPlace counts folded characters.
    std::optional<CFRange> Match(size_t inPlace, std::u32string_view) const;

private:
    void Add(char32_t inCharacter, size_t inSource, CFOptionFlags);
    void OrderMarks();
    bool IsBoundary(size_t inPlace) const
    {
        return inPlace == 0 || fSources[inPlace] != fSources[inPlace - 1];
    }

    std::u32string fText;
    std::vector<size_t> fSources; // one more than characters: the string's length
};

// Whether these options leave a text as it is.
inline bool IsLiteral(CFOptionFlags inOptions)
{
    return !(inOptions & (kCFCompareCaseInsensitive | kCFCompareNonliteral));
}

} // namespace lampblack::foundation

#endif
