// The storage of strings.
#include "StringObject.h"

#include <algorithm>

namespace lampblack::foundation {

CFTypeID StringObject::ID()
{
    static const CFTypeID id = NewTypeID();
    return id;
}

StringObject::StringObject(std::u16string_view inText, CFIndex inLimit)
    : Object(ID()), fIsMutable(true), fLimit(inLimit > 0 ? (size_t)inLimit : 0)
{
    SetText(inText);
}

void StringObject::Replace(size_t inStart, size_t inCount, std::u16string_view inText)
{
    const size_t kept = fText.size() - inCount;
    if (fLimit > 0)
        inText = inText.substr(0, fLimit - std::min(fLimit, kept));
    fText.replace(inStart, inCount, inText.data(), inText.size());
}

bool StringObject::MakeBytes()
{
    if (!fBytes.empty())
        return true;
    const bool isAscii = std::all_of(fText.begin(), fText.end(), [](char16_t unit) { return unit < 128; });
    if (fIsMutable || !isAscii)
        return false;
    fBytes.reserve(fText.size() + 1);
    fBytes.push_back((char)fText.size());
    fBytes.append(fText.begin(), fText.end());
    return true;
}

const char* StringObject::CountedAscii()
{
    return fText.size() < 256 && MakeBytes() ? fBytes.c_str() : nullptr;
}

const char* StringObject::Ascii()
{
    return MakeBytes() ? fBytes.c_str() + 1 : nullptr;
}

bool StringObject::Equals(const Object& inOther) const
{
    return fText == static_cast<const StringObject&>(inOther).fText;
}

CFHashCode StringObject::Hash() const
{
    return std::hash<std::u16string>()(fText);
}

std::optional<std::u16string_view> TextOf(CFStringRef inString)
{
    const StringObject* string = Find<StringObject>(inString);
    return string ? std::optional(string->Text()) : std::nullopt;
}

StringObject* Changeable(CFMutableStringRef inString)
{
    StringObject* string = Find<StringObject>(inString);
    return string && string->IsMutable() ? string : nullptr;
}

bool Within(CFRange inRange, size_t inLength)
{
    return inRange.location >= 0 && inRange.length >= 0 && (size_t)inRange.location <= inLength &&
           (size_t)inRange.length <= inLength - (size_t)inRange.location;
}

CFStringRef NewConstant(std::u16string inText)
{
    return Reference<CFStringRef>(new StringObject(std::move(inText)));
}

} // namespace lampblack::foundation
