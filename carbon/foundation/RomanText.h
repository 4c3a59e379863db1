// What the Roman script knows of each Mac Roman character: its capital, its small letter, its base letter,
// and its place when text is sorted. All of it is tables made by the compiler; begin at RomanTables.
#ifndef LAMPBLACK_FOUNDATION_ROMANTEXT_H
#define LAMPBLACK_FOUNDATION_ROMANTEXT_H

#include <Carbon/MacTypes.h>

#include <array>
#include <string_view>

namespace lampblack::foundation {

using ByteMap = std::array<UInt8, 256>;

// A place in sorting order. second is the other letter of a ligature, else 0.
struct SortKey {
    UInt8 first = 0;
    UInt8 second = 0;
    UInt8 variant = 0; // secondary order among those with the same letters
};

struct RomanTables {
    ByteMap upper;
    ByteMap lower;
    ByteMap stripped;
    ByteMap upperStripped;
    ByteMap fileUpper; // as the file system of 1984 knows capitals
    ByteMap fileUpperStripped;
    std::array<SortKey, 256> sort;
};

const RomanTables& Roman();

// The bytes of a Pascal string; empty for a null one.
inline std::string_view TextOf(ConstStr255Param inString)
{
    return inString ? std::string_view((const char*)inString + 1, inString[0]) : std::string_view();
}

} // namespace lampblack::foundation

#endif
