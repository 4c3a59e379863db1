// The C library's calls on strings, for Pascal strings.
#include "RomanText.h"

#include <Carbon/PLStringFuncs.h>

#include <algorithm>
#include <cstring>

using namespace lampblack::foundation;

namespace {

SInt16 Compare(std::string_view inA, std::string_view inB)
{
    const auto [a, b] = std::mismatch(inA.begin(), inA.end(), inB.begin(), inB.end());
    if (a != inA.end() && b != inB.end())
        return (SInt16)((UInt8)*a - (UInt8)*b);
    return (SInt16)((long)inA.size() - (long)inB.size());
}

std::string_view FirstOf(ConstStr255Param inString, SInt16 inCount)
{
    return TextOf(inString).substr(0, inCount > 0 ? (size_t)inCount : 0);
}

// Puts text behind what is kept of a string; the two may be the same storage.
StringPtr PutAfter(StringPtr ioString, size_t inKept, std::string_view inText)
{
    if (!ioString)
        return ioString;
    const size_t count = std::min(inText.size(), 255 - inKept);
    if (count > 0)
        std::memmove(ioString + 1 + inKept, inText.data(), count);
    ioString[0] = (unsigned char)(inKept + count);
    return ioString;
}

Ptr PlaceIn(ConstStr255Param inString, size_t inIndex)
{
    return inIndex == std::string_view::npos ? nullptr : (Ptr)(void*)(inString + 1 + inIndex);
}

} // namespace

SInt16 PLstrlen(ConstStr255Param str)
{
    return str ? str[0] : 0;
}

SInt16 PLstrcmp(ConstStr255Param str1, ConstStr255Param str2)
{
    return Compare(TextOf(str1), TextOf(str2));
}

SInt16 PLstrncmp(ConstStr255Param str1, ConstStr255Param str2, SInt16 num)
{
    return Compare(FirstOf(str1, num), FirstOf(str2, num));
}

StringPtr PLstrcpy(StringPtr str1, ConstStr255Param str2)
{
    return PutAfter(str1, 0, TextOf(str2));
}

StringPtr PLstrncpy(StringPtr str1, ConstStr255Param str2, SInt16 num)
{
    return PutAfter(str1, 0, FirstOf(str2, num));
}

StringPtr PLstrcat(StringPtr str1, ConstStr255Param str2)
{
    return PutAfter(str1, str1 ? str1[0] : 0, TextOf(str2));
}

StringPtr PLstrncat(StringPtr str1, ConstStr255Param str2, SInt16 num)
{
    return PutAfter(str1, str1 ? str1[0] : 0, FirstOf(str2, num));
}

Ptr PLstrchr(ConstStr255Param str1, SInt16 ch1)
{
    return PlaceIn(str1, TextOf(str1).find((char)ch1));
}

Ptr PLstrrchr(ConstStr255Param str1, SInt16 ch1)
{
    return PlaceIn(str1, TextOf(str1).rfind((char)ch1));
}

Ptr PLstrpbrk(ConstStr255Param str1, ConstStr255Param str2)
{
    return PlaceIn(str1, TextOf(str1).find_first_of(TextOf(str2)));
}

Ptr PLstrstr(ConstStr255Param str1, ConstStr255Param str2)
{
    return str1 ? PlaceIn(str1, TextOf(str1).find(TextOf(str2))) : nullptr;
}

SInt16 PLstrspn(ConstStr255Param str1, ConstStr255Param str2)
{
    const size_t other = TextOf(str1).find_first_not_of(TextOf(str2));
    return other == std::string_view::npos ? PLstrlen(str1) : (SInt16)other;
}
