#include "Source.h"

#include <foundation/MacRoman.h>

#include <fstream>
#include <iterator>

namespace lampblack::rsrc {

namespace {

bool EndsLine(std::string_view inText, size_t inAt)
{
    if (inText[inAt] == '\n')
        return true;
    return inText[inAt] == '\r' && (inAt + 1 == inText.size() || inText[inAt + 1] != '\n');
}

bool ContinuesCharacter(char inByte)
{
    return ((unsigned char)inByte & 0xC0) == 0x80;
}

} // namespace

std::string DescribePlace(Place inPlace)
{
    if (!inPlace.source)
        return "rsrc";
    const std::string& text = inPlace.source->text;
    size_t line = 1, column = 1;
    for (size_t i = 0; i < inPlace.offset && i < text.size(); ++i) {
        const bool ends = EndsLine(text, i);
        line += ends;
        column = ends ? 1 : column + !ContinuesCharacter(text[i]);
    }
    return inPlace.source->name + ":" + std::to_string(line) + ":" + std::to_string(column);
}

RezError::RezError(Place inPlace, const std::string& inMessage)
    : std::runtime_error(DescribePlace(inPlace) + ": " + inMessage)
{
}

std::string TextFromBytes(std::string_view inBytes)
{
    if (inBytes.substr(0, 3) == "\xEF\xBB\xBF")
        inBytes.remove_prefix(3);
    if (foundation::IsValidUtf8(inBytes))
        return std::string(inBytes);
    return foundation::Utf8FromMacRoman(inBytes);
}

bool LoadFile(const std::string& inPath, std::string* outBytes)
{
    std::ifstream file(inPath, std::ios::binary);
    if (!file)
        return false;
    outBytes->assign(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    return !file.bad();
}

} // namespace lampblack::rsrc
