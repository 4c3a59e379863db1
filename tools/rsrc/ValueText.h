// The values of a resource as words, and the lines that a statement makes of them. Begin at ShownValue.
#ifndef LAMPBLACK_RSRC_VALUETEXT_H
#define LAMPBLACK_RSRC_VALUETEXT_H

#include <string>
#include <vector>

namespace lampblack::rsrc {

struct ShownValue {
    enum class Kind : uint8_t {
        Plain, // lines, as they stand
        Array, // elements
        Case   // a name in lines, and one element
    };
    Kind kind = Kind::Plain;
    bool explains = true; // the value says by itself what it is
    std::vector<std::string> lines;
    std::string label;
    std::vector<std::vector<ShownValue>> elements;
};

// The lines between the braces of a statement, indented by four spaces a level, labels as comments.
std::string StatementText(const std::vector<ShownValue>&);

} // namespace lampblack::rsrc

#endif
