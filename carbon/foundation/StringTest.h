// What the tests of strings share: strings from UTF-8 and back, released when a test ends.
#ifndef LAMPBLACK_FOUNDATION_STRINGTEST_H
#define LAMPBLACK_FOUNDATION_STRINGTEST_H

#include "MacRoman.h"

#include <Carbon/CFString.h>

#include <doctest/doctest.h>

#include <string>
#include <string_view>

namespace lampblack::foundation {

// Owns a reference.
template <class Ref>
class StReference {
public:
    explicit StReference(Ref inReference) : fReference(inReference) {}
    ~StReference() { CFRelease(fReference); }
    StReference(const StReference&) = delete;
    StReference& operator=(const StReference&) = delete;
    operator Ref() const { return fReference; }

private:
    Ref fReference;
};

using StString = StReference<CFStringRef>;

inline CFStringRef StringFrom(std::string_view inUtf8)
{
    return CFStringCreateWithBytes(nullptr, (const UInt8*)inUtf8.data(), (CFIndex)inUtf8.size(),
                                   kCFStringEncodingUTF8, false);
}

class StMutable : public StReference<CFMutableStringRef> {
public:
    explicit StMutable(std::string_view inUtf8, CFIndex inLimit = 0)
        : StReference(CFStringCreateMutableCopy(nullptr, inLimit, StString(StringFrom(inUtf8))))
    {
    }
};

inline std::string Utf8Of(CFStringRef inString)
{
    const auto* units = (const char16_t*)CFStringGetCharactersPtr(inString);
    return units ? Utf8FromUtf16(std::u16string_view(units, (size_t)CFStringGetLength(inString)))
                 : "no string";
}

inline CFRange Whole(CFStringRef inString)
{
    return CFRangeMake(0, CFStringGetLength(inString));
}

// A reference to a string that has ended.
inline CFMutableStringRef EndedString()
{
    CFMutableStringRef string = CFStringCreateMutable(nullptr, 0);
    CFRelease(string);
    return string;
}

} // namespace lampblack::foundation

#endif
