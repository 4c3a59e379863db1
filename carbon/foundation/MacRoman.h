// Conversions between Mac Roman bytes, Unicode and UTF-8. Mac Roman is the text of every Pascal string; UTF-8
// is the text of the host. Begin at Utf8FromPascal.
#ifndef LAMPBLACK_FOUNDATION_MACROMAN_H
#define LAMPBLACK_FOUNDATION_MACROMAN_H

#include <Carbon/MacTypes.h>

#include <string>
#include <string_view>

namespace lampblack::foundation {

// The UTF-16 unit of a Mac Roman byte; every byte has one.
UInt16 MacRomanToUnicode(UInt8 inByte);

// Answers false, and leaves *outByte alone, when Mac Roman has no such character.
bool UnicodeToMacRoman(char32_t inCharacter, UInt8* outByte);

// The text of a Pascal string; empty for a null pointer.
std::string Utf8FromPascal(ConstStr255Param inString);

std::string Utf8FromMacRoman(std::string_view inText);

// The accented letter of a base letter and a combining mark, of those in Mac Roman; 0 when there is none.
char32_t ComposeAccent(char32_t inBase, char32_t inMark);

// A letter followed by a combining accent becomes the one accented letter where Mac Roman has it; what Mac
// Roman lacks, and every malformed sequence, becomes '?'.
std::string MacRomanFromUtf8(std::string_view inUtf8);

// As above, but answers false when anything had to become '?'. *outText is set either way.
bool MacRomanFromUtf8Exactly(std::string_view inUtf8, std::string* outText);

// The capital of a Mac Roman letter; every other byte as it is. Accents stay.
UInt8 MacRomanUpper(UInt8 inByte);

// Whether two Mac Roman texts are equal but for capitals: as names of files and resources are compared.
bool EqualIgnoringCase(std::string_view, std::string_view);

// Fills a Pascal string of at most inLimit bytes of text with Mac Roman text; what is longer is cut.
void PascalFromMacRoman(std::string_view inText, StringPtr outString, size_t inLimit = 255);

// The next character of UTF-8 text from *ioOffset on, which advances by at least one byte. A malformed
// sequence (overlong, surrogate, cut off) yields U+FFFD for its first byte.
char32_t NextUtf8(std::string_view inUtf8, size_t* ioOffset);

void AppendUtf8(std::string& ioText, char32_t inCharacter);

bool IsValidUtf8(std::string_view inText);

// UTF-16 of well-formed or malformed UTF-8 and back; unpaired surrogates become U+FFFD.
std::u16string Utf16FromUtf8(std::string_view inUtf8);
std::string Utf8FromUtf16(std::u16string_view inText);

} // namespace lampblack::foundation

#endif
