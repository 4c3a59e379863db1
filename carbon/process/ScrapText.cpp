// Letters by foundation/MacRoman.h; here only the ends of lines and the bytes.
#include "ScrapText.h"

#include <foundation/MacRoman.h>

#include <cstring>

namespace lampblack::process {

namespace {

// "\r\n" and each lone one of the two become inTo.
template <class Text>
Text WithLineEnds(std::basic_string_view<typename Text::value_type> inText, typename Text::value_type inTo)
{
    Text result;
    result.reserve(inText.size());
    for (size_t i = 0; i < inText.size(); ++i) {
        const bool carriageReturn = inText[i] == '\r';
        if (carriageReturn && i + 1 < inText.size() && inText[i + 1] == '\n')
            ++i;
        result.push_back(carriageReturn || inText[i] == '\n' ? inTo : inText[i]);
    }
    return result;
}

} // namespace

std::string MacRomanOfClipboard(std::string_view inText)
{
    return foundation::MacRomanFromUtf8(WithLineEnds<std::string>(inText, '\r'));
}

std::string UnicodeOfClipboard(std::string_view inText)
{
    const std::u16string units = foundation::Utf16FromUtf8(WithLineEnds<std::string>(inText, '\r'));
    return std::string(reinterpret_cast<const char*>(units.data()), units.size() * sizeof(char16_t));
}

std::string ClipboardOfMacRoman(std::string_view inText)
{
    return WithLineEnds<std::string>(foundation::Utf8FromMacRoman(inText), '\n');
}

std::string ClipboardOfUnicode(std::string_view inBytes)
{
    std::u16string units(inBytes.size() / sizeof(char16_t), u'\0');
    memcpy(units.data(), inBytes.data(), units.size() * sizeof(char16_t));
    return WithLineEnds<std::string>(foundation::Utf8FromUtf16(units), '\n');
}

} // namespace lampblack::process
