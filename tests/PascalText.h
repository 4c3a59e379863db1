// Pascal strings in tests.
#ifndef LAMPBLACK_TESTS_PASCALTEXT_H
#define LAMPBLACK_TESTS_PASCALTEXT_H

#include <Carbon/MacTypes.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

// A literal as a Pascal string; of the last eight each stays as it is.
inline ConstStr255Param P(std::string_view inText)
{
    static Str255 texts[8];
    static int next = 0;
    StringPtr text = texts[next++ % 8];
    text[0] = (unsigned char)std::min<size_t>(inText.size(), 255);
    std::memcpy(text + 1, inText.data(), text[0]);
    return text;
}

inline std::string FromP(ConstStr255Param inText)
{
    return { (const char*)inText + 1, inText[0] };
}

#endif
