// The object behind a CFStringRef: UTF-16 units, and for constant ASCII text its bytes on demand.
#ifndef LAMPBLACK_FOUNDATION_STRINGOBJECT_H
#define LAMPBLACK_FOUNDATION_STRINGOBJECT_H

#include "Object.h"

#include <Carbon/CFString.h>

#include <optional>
#include <string>
#include <string_view>

namespace lampblack::foundation {

class StringObject final : public Object {
public:
    static CFTypeID ID();

    explicit StringObject(std::u16string inText) : Object(ID()), fText(std::move(inText)) {}
    StringObject(std::u16string_view inText, CFIndex inLimit); // a mutable one; limit 0 is none

    std::u16string_view Text() const { return fText; }
    const char16_t* Units() const { return fText.c_str(); }
    bool IsMutable() const { return fIsMutable; }

    // Changes that would pass the limit lose what is too long. Text may lie within this string.
    void Replace(size_t inStart, size_t inCount, std::u16string_view inText);
    void Append(std::u16string_view inText) { Replace(fText.size(), 0, inText); }
    void SetText(std::u16string_view inText) { Replace(0, fText.size(), inText); }

    // A length byte, the text and a zero, when this is a constant string of ASCII that fits; else null.
    const char* CountedAscii();
    const char* Ascii();

    bool Equals(const Object&) const override;
    CFHashCode Hash() const override;
    std::u16string Description() const override { return fText; }

private:
    bool MakeBytes();

    std::u16string fText;
    std::string fBytes; // of a constant ASCII string: the length byte (modulo 256) and the text
    bool fIsMutable = false;
    size_t fLimit = 0;
};

// The units of a string that is alive; none otherwise.
std::optional<std::u16string_view> TextOf(CFStringRef);

// The string object when it is alive and may be changed; else null.
StringObject* Changeable(CFMutableStringRef);

// Whether a range lies within a text of that length.
bool Within(CFRange, size_t inLength);

inline std::u16string_view Part(std::u16string_view inText, CFRange inRange)
{
    return inText.substr((size_t)inRange.location, (size_t)inRange.length);
}

inline std::u16string_view Units(const UniChar* inUnits, size_t inCount)
{
    return std::u16string_view((const char16_t*)inUnits, inUnits ? inCount : 0);
}

// A new constant string, owned by the caller.
CFStringRef NewConstant(std::u16string inText);

// The text of a format and its arguments.
std::u16string Format(std::u16string_view inFormat, va_list inArguments);

} // namespace lampblack::foundation

#endif
