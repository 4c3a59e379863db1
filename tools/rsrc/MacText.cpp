#include "MacText.h"

#include <foundation/MacRoman.h>

namespace lampblack::rsrc {

namespace {

constexpr char kDigits[] = "0123456789ABCDEF";
constexpr size_t kLongestLine = 96;

// The characters that look like something else, or like nothing: a space that does not break, and one that
// only a private font shows.
bool NeedsNumber(uint8_t inByte)
{
    return inByte < 0x20 || inByte == 0x7F || inByte == 0xCA || inByte == 0xF0;
}

void AppendEscaped(char inByte, char inQuote, std::string* ioText)
{
    if (inByte == inQuote || inByte == '\\')
        *ioText += { '\\', inByte };
    else if (inByte == '\r')
        *ioText += "\\n";
    else if (inByte == '\n')
        *ioText += "\\r";
    else if (inByte == '\t')
        *ioText += "\\t";
    else if (NeedsNumber((uint8_t)inByte))
        *ioText += { '\\', '0', 'x', kDigits[(uint8_t)inByte >> 4], kDigits[inByte & 0xF] };
    else
        *ioText += foundation::Utf8FromMacRoman({ &inByte, 1 });
}

} // namespace

std::string QuotedText(std::string_view inMacRoman)
{
    std::string text = "\"";
    for (const char byte : inMacRoman)
        AppendEscaped(byte, '"', &text);
    return text + "\"";
}

std::vector<std::string> QuotedLines(std::string_view inMacRoman)
{
    std::vector<std::string> lines;
    size_t start = 0, length = 0;
    for (size_t i = 0; i < inMacRoman.size(); ++i) {
        std::string escaped;
        AppendEscaped(inMacRoman[i], '"', &escaped);
        length += escaped.size();
        const bool atSpace = inMacRoman[i] == ' ' && length > kLongestLine - 12;
        if (inMacRoman[i] != '\r' && !atSpace && length < kLongestLine)
            continue;
        lines.push_back(QuotedText(inMacRoman.substr(start, i + 1 - start)));
        start = i + 1;
        length = 0;
    }
    if (start < inMacRoman.size() || lines.empty())
        lines.push_back(QuotedText(inMacRoman.substr(start)));
    return lines;
}

std::string QuotedCode(OSType inCode)
{
    std::string text = "'";
    for (int shift = 24; shift >= 0; shift -= 8)
        AppendEscaped((char)(inCode >> shift), '\'', &text);
    return text + "'";
}

std::vector<std::string> HexLines(Bytes inBytes, size_t inBytesPerLine)
{
    std::vector<std::string> lines;
    for (size_t start = 0; start < inBytes.size(); start += inBytesPerLine) {
        std::string line = "$\"";
        for (size_t i = start; i < std::min(start + inBytesPerLine, inBytes.size()); ++i) {
            if (i > start && (i - start) % 2 == 0)
                line += ' ';
            line += { kDigits[inBytes[i] >> 4], kDigits[inBytes[i] & 0xF] };
        }
        lines.push_back(line + "\"");
    }
    return lines;
}

std::string PrintableText(Bytes inBytes)
{
    std::string text;
    for (const uint8_t byte : inBytes) {
        const char letter = (char)byte;
        text += NeedsNumber(byte) ? "." : foundation::Utf8FromMacRoman({ &letter, 1 });
    }
    return text;
}

} // namespace lampblack::rsrc
