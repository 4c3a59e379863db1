// What Unicode says of characters: case, decomposition, marks. The only folder that includes ICU; ASCII text
// is answered without it, so that most processes never open it.
#ifndef LAMPBLACK_FOUNDATION_UNICODE_H
#define LAMPBLACK_FOUNDATION_UNICODE_H

#include <string>
#include <string_view>

namespace lampblack::foundation {

// By the rules of no particular language; the length may change.
std::u16string UppercaseOf(std::u16string_view);
std::u16string LowercaseOf(std::u16string_view);
std::u16string CapitalizedOf(std::u16string_view); // each word's first letter is a capital, the others small

bool IsWhitespace(char16_t);

// Appends what a character counts as when case does not.
void AppendFolded(std::u32string& ioText, char32_t);

// Appends a character's base and marks, or itself.
void AppendDecomposed(std::u32string& ioText, char32_t);

// 0 for a character that begins a letter; marks of another class may change places with one another.
unsigned CombiningClass(char32_t);

} // namespace lampblack::foundation

#endif
