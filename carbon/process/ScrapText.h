// Text between the scrap and the desktop's clipboard: 'TEXT' and 'utxt' end their lines with a carriage
// return there, UTF-8 with a line feed here.
#ifndef LAMPBLACK_PROCESS_SCRAPTEXT_H
#define LAMPBLACK_PROCESS_SCRAPTEXT_H

#include <string>
#include <string_view>

namespace lampblack::process {

std::string MacRomanOfClipboard(std::string_view utf8);
std::string UnicodeOfClipboard(std::string_view utf8); // the bytes of native UniChars
std::string ClipboardOfMacRoman(std::string_view text);
std::string ClipboardOfUnicode(std::string_view unicharBytes); // an odd last byte is left out

} // namespace lampblack::process

#endif
