// Strings from characters and bytes of every encoding.
#include "Encodings.h"
#include "MacRoman.h"
#include "StringObject.h"

#include <Carbon/CFString.h>

#include <cstdlib>
#include <cstring>
#include <functional>
#include <unordered_map>

using namespace lampblack::foundation;

namespace {

Bytes BytesOf(const void* inBytes, size_t inCount)
{
    return Bytes((const uint8_t*)inBytes, inBytes ? inCount : 0);
}

Bytes BytesOf(ConstStr255Param inString)
{
    return inString ? BytesOf(inString + 1, inString[0]) : Bytes();
}

Bytes BytesOf(const char* inString)
{
    return BytesOf(inString, inString ? std::strlen(inString) : 0);
}

// The text of a C or Pascal string, which must be in an 8-bit encoding.
template <class String>
std::optional<std::u16string> TextOf(String inString, CFStringEncoding inEncoding)
{
    const Encoding* encoding = FindEncoding(inEncoding);
    if (!inString || !encoding || !encoding->IsEightBit())
        return std::nullopt;
    return Decode(*encoding, BytesOf(inString));
}

CFStringRef Create(std::optional<std::u16string> inText)
{
    return inText ? NewConstant(std::move(*inText)) : nullptr;
}

// What a "NoCopy" call does with the bytes once it has its string.
CFStringRef TakeOver(CFStringRef inString, const void* inBytes, CFAllocatorRef inDeallocator)
{
    if (inString && inDeallocator != kCFAllocatorNull)
        std::free(const_cast<void*>(inBytes));
    return inString;
}

// Looked up by the bytes where they lie: CFSTR asks every time that it is passed.
struct BytesHash {
    using is_transparent = void;
    size_t operator()(std::string_view inBytes) const { return std::hash<std::string_view>()(inBytes); }
};
using Constants = std::unordered_map<std::string, CFStringRef, BytesHash, std::equal_to<>>;

std::u16string ConstantText(const char* inText)
{
    const std::string_view text(inText);
    return Utf16FromUtf8(IsValidUtf8(text) ? std::string(text) : Utf8FromMacRoman(text));
}

template <class String>
void AppendText(CFMutableStringRef inString, String inText, CFStringEncoding inEncoding)
{
    StringObject* string = Changeable(inString);
    const std::optional<std::u16string> text = TextOf(inText, inEncoding);
    if (string && text)
        string->Append(*text);
}

} // namespace

CFStringRef __CFStringMakeConstantString(const char* cStr)
{
    static Constants& made = *new Constants;
    if (!cStr)
        return nullptr;
    const auto found = made.find(std::string_view(cStr));
    if (found != made.end())
        return found->second;
    CFStringRef string = NewConstant(ConstantText(cStr));
    Find<StringObject>(string)->MakeConstant();
    made.emplace(cStr, string);
    return string;
}

CFTypeID CFStringGetTypeID(void)
{
    return StringObject::ID();
}

CFStringRef CFStringCreateWithPascalString(CFAllocatorRef, ConstStr255Param pStr, CFStringEncoding encoding)
{
    return Create(TextOf(pStr, encoding));
}

CFStringRef CFStringCreateWithCString(CFAllocatorRef, const char* cStr, CFStringEncoding encoding)
{
    return Create(TextOf(cStr, encoding));
}

CFStringRef CFStringCreateWithCharacters(CFAllocatorRef, const UniChar* chars, CFIndex numChars)
{
    if (numChars < 0 || (!chars && numChars > 0))
        return nullptr;
    return NewConstant(std::u16string(Units(chars, (size_t)numChars)));
}

CFStringRef CFStringCreateWithBytes(CFAllocatorRef, const UInt8* bytes, CFIndex numBytes,
                                    CFStringEncoding encoding, Boolean isExternalRepresentation)
{
    const Encoding* known = FindEncoding(encoding);
    if (!known || numBytes < 0 || (!bytes && numBytes > 0))
        return nullptr;
    return Create(Decode(*known, BytesOf(bytes, (size_t)numBytes), isExternalRepresentation));
}

CFStringRef CFStringCreateWithPascalStringNoCopy(CFAllocatorRef alloc, ConstStr255Param pStr,
                                                 CFStringEncoding encoding,
                                                 CFAllocatorRef contentsDeallocator)
{
    return TakeOver(CFStringCreateWithPascalString(alloc, pStr, encoding), pStr, contentsDeallocator);
}

CFStringRef CFStringCreateWithCStringNoCopy(CFAllocatorRef alloc, const char* cStr, CFStringEncoding encoding,
                                            CFAllocatorRef contentsDeallocator)
{
    return TakeOver(CFStringCreateWithCString(alloc, cStr, encoding), cStr, contentsDeallocator);
}

CFStringRef CFStringCreateWithCharactersNoCopy(CFAllocatorRef alloc, const UniChar* chars, CFIndex numChars,
                                               CFAllocatorRef contentsDeallocator)
{
    return TakeOver(CFStringCreateWithCharacters(alloc, chars, numChars), chars, contentsDeallocator);
}

CFStringRef CFStringCreateWithSubstring(CFAllocatorRef, CFStringRef str, CFRange range)
{
    const auto text = TextOf(str);
    if (!text || !Within(range, text->size()))
        return nullptr;
    return NewConstant(std::u16string(Part(*text, range)));
}

CFStringRef CFStringCreateCopy(CFAllocatorRef, CFStringRef theString)
{
    StringObject* string = Find<StringObject>(theString);
    if (!string)
        return nullptr;
    if (string->IsMutable())
        return NewConstant(std::u16string(string->Text()));
    string->Retain();
    return theString;
}

CFStringRef CFStringCreateWithFormatAndArguments(CFAllocatorRef, CFDictionaryRef, CFStringRef format,
                                                 va_list arguments)
{
    const auto text = TextOf(format);
    return text ? NewConstant(Format(*text, arguments)) : nullptr;
}

CFStringRef CFStringCreateWithFormat(CFAllocatorRef alloc, CFDictionaryRef formatOptions, CFStringRef format,
                                     ...)
{
    va_list arguments;
    va_start(arguments, format);
    CFStringRef string = CFStringCreateWithFormatAndArguments(alloc, formatOptions, format, arguments);
    va_end(arguments);
    return string;
}

CFMutableStringRef CFStringCreateMutable(CFAllocatorRef, CFIndex maxLength)
{
    if (maxLength < 0)
        return nullptr;
    return Reference<CFMutableStringRef>(new StringObject(std::u16string_view(), maxLength));
}

CFMutableStringRef CFStringCreateMutableCopy(CFAllocatorRef, CFIndex maxLength, CFStringRef theString)
{
    const auto text = TextOf(theString);
    if (!text || maxLength < 0)
        return nullptr;
    return Reference<CFMutableStringRef>(new StringObject(*text, maxLength));
}

void CFStringAppendPascalString(CFMutableStringRef theString, ConstStr255Param pStr,
                                CFStringEncoding encoding)
{
    AppendText(theString, pStr, encoding);
}

void CFStringAppendCString(CFMutableStringRef theString, const char* cStr, CFStringEncoding encoding)
{
    AppendText(theString, cStr, encoding);
}
