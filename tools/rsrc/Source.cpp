#include "Source.h"

#include <foundation/MacRoman.h>

#include <filesystem>
#include <fstream>

namespace lampblack::rsrc {

namespace {

bool EndsLine(std::string_view inText, size_t inAt)
{
    if (inText[inAt] == '\n')
        return true;
    return inText[inAt] == '\r' && (inAt + 1 == inText.size() || inText[inAt + 1] != '\n');
}

// A pipe or a device may never end.
constexpr size_t kLongestStream = 64 << 20;

bool ReadStream(std::istream& ioStream, size_t inLimit, std::string* outBytes)
{
    constexpr size_t kBlock = 1 << 20;
    outBytes->clear();
    while (ioStream) {
        const size_t size = outBytes->size();
        if (size > inLimit)
            return false;
        outBytes->resize(size + kBlock);
        ioStream.read(outBytes->data() + size, kBlock);
        outBytes->resize(size + (size_t)ioStream.gcount());
    }
    return !ioStream.bad();
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
    std::error_code error;
    if (std::filesystem::is_directory(inPath, error))
        return false;
    std::ifstream file(inPath, std::ios::binary);
    const bool ends = std::filesystem::is_regular_file(inPath, error);
    return file && ReadStream(file, ends ? SIZE_MAX : kLongestStream, outBytes);
}

} // namespace lampblack::rsrc
