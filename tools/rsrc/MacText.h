// Mac Roman bytes as words of a description: quoted, escaped, plain UTF-8. Whatever the bytes are, the Lexer
// reads the same ones back.
#ifndef LAMPBLACK_RSRC_MACTEXT_H
#define LAMPBLACK_RSRC_MACTEXT_H

#include "BitReader.h"

#include <string>
#include <string_view>
#include <vector>

namespace lampblack::rsrc {

// A string in double quotes, on one line.
std::string QuotedText(std::string_view inMacRoman);

// The same as several strings that follow one another: broken behind line ends and where lines grow long.
std::vector<std::string> QuotedLines(std::string_view inMacRoman);

// A code in single quotes: 'ABCD'.
std::string QuotedCode(OSType);

// Hexadecimal strings such as $"0A0B 0C0D", of as many bytes each.
std::vector<std::string> HexLines(Bytes, size_t inBytesPerLine);

// Printable characters as they are, a dot for each other byte: for comments.
std::string PrintableText(Bytes);

} // namespace lampblack::rsrc

#endif
