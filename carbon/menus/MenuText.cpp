// The old notation of menu items.
#include "MenuText.h"

#include <cctype>

namespace lampblack::menus {

namespace {

void AddStyle(MenuItem& ioItem, char inLetter)
{
    struct Pair {
        char letter;
        Style style;
    };
    static constexpr Pair kPairs[] = {
        { 'B', bold }, { 'I', italic }, { 'U', underline }, { 'O', outline }, { 'S', shadow }
    };
    for (const Pair& pair : kPairs)
        if (pair.letter == std::toupper((unsigned char)inLetter))
            ioItem.style |= pair.style;
}

// What follows a metacharacter.
void Apply(MenuItem& ioItem, char inMeta, char inNext)
{
    switch (inMeta) {
    case '^': ioItem.icon = inNext >= '0' && inNext <= '9' ? (SInt16)(inNext - '0') : 0; break;
    case '!': ioItem.mark = (UInt8)inNext; break;
    case '<': AddStyle(ioItem, inNext); break;
    default: ioItem.key = (UInt8)inNext; break;
    }
}

bool TakesNext(char inCharacter)
{
    return inCharacter == '^' || inCharacter == '!' || inCharacter == '<' || inCharacter == '/';
}

MenuItem ParseItem(const std::string& inText)
{
    MenuItem item;
    for (size_t i = 0; i < inText.size(); ++i) {
        const char character = inText[i];
        if (character == '(')
            item.attributes |= kMenuItemAttrDisabled;
        else if (TakesNext(character) && i + 1 < inText.size())
            Apply(item, character, inText[++i]);
        else
            item.text += character;
    }
    return item;
}

} // namespace

std::vector<MenuItem> ParseItems(const std::string& inText)
{
    std::vector<MenuItem> items;
    size_t start = 0;
    while (start < inText.size()) {
        const size_t end = std::min(inText.find_first_of(";\r", start), inText.size());
        if (end > start)
            items.push_back(ParseItem(inText.substr(start, end - start)));
        start = end + 1;
    }
    return items;
}

} // namespace lampblack::menus
