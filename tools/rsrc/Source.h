// The text of resource descriptions and the places in it that messages name. Begin at SourceText.
#ifndef LAMPBLACK_RSRC_SOURCE_H
#define LAMPBLACK_RSRC_SOURCE_H

#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace lampblack::rsrc {

// One text, always UTF-8 in memory. Stays at its address while tokens point into it.
struct SourceText {
    std::string name; // as messages show it
    std::string text;
};

// A byte of a text. A null source is a place of no file, such as the command line.
struct Place {
    const SourceText* source = nullptr;
    size_t offset = 0;
};

// "FILE:LINE:COL", lines and columns counted from 1, columns in characters.
std::string DescribePlace(Place);

// What is wrong with a text; what() is "FILE:LINE:COL: message".
class RezError : public std::runtime_error {
public:
    RezError(Place inPlace, const std::string& inMessage);
};

// Makes UTF-8 of the bytes of a file: bytes that are not UTF-8 are taken as Mac Roman, the encoding of older
// sources.
std::string TextFromBytes(std::string_view inBytes);

// Answers whether the file could be read. The compiler asks for included files only through this.
using FileLoader = std::function<bool(const std::string& inPath, std::string* outBytes)>;

// Reads a file, or a pipe of no more than 64 MB.
bool LoadFile(const std::string& inPath, std::string* outBytes);

} // namespace lampblack::rsrc

#endif
