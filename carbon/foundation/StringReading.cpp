// What is in a string: characters, bytes of every encoding, numbers.
#include "Encodings.h"
#include "StringObject.h"

#include <Carbon/CFString.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

using namespace lampblack::foundation;

namespace {

// Puts all of the text there, or nothing: false when it does not fit or convert.
bool PutAll(std::u16string_view inText, CFStringEncoding inEncoding, void* outBytes, CFIndex inRoom,
            size_t* outCount)
{
    const Encoding* encoding = FindEncoding(inEncoding);
    if (!encoding || !encoding->IsEightBit() || inRoom < 0)
        return false;
    const Encoded encoded = Encode(*encoding, inText, 0, false, (UInt8*)outBytes, (size_t)inRoom);
    *outCount = encoded.bytes;
    return encoded.units == inText.size();
}

bool IsBlank(char16_t inUnit)
{
    return inUnit == ' ' || (inUnit >= 9 && inUnit <= 13) || inUnit == 0xA0;
}

// The ASCII text from the first character that is not blank up to one that no number has; without a plus.
std::string NumberText(CFStringRef inString)
{
    const auto text = TextOf(inString);
    std::string number;
    if (!text)
        return number;
    const auto isOfNumber = [](char16_t unit) {
        return (unit >= '0' && unit <= '9') || unit == '-' || unit == '+' || unit == '.' || unit == 'e' ||
               unit == 'E';
    };
    auto at = std::find_if_not(text->begin(), text->end(), IsBlank);
    if (at != text->end() && *at == '+' && at + 1 != text->end() && at[1] != '-')
        ++at;
    for (; at != text->end() && isOfNumber(*at); ++at)
        number.push_back((char)*at);
    return number;
}

// Whether a number too far from 0 or too near it is the former: it has a digit other than 0 before its point
// or a positive exponent.
double Extreme(const std::string& inNumber)
{
    const size_t exponent = inNumber.find_first_of("eE");
    const bool isSmall = exponent != std::string::npos
                             ? inNumber.find('-', exponent) != std::string::npos
                             : inNumber.find_first_of("123456789.") == inNumber.find('.');
    const double magnitude = isSmall ? 0.0 : HUGE_VAL;
    return inNumber.starts_with('-') ? -magnitude : magnitude;
}

} // namespace

CFIndex CFStringGetLength(CFStringRef theString)
{
    const auto text = TextOf(theString);
    return text ? (CFIndex)text->size() : 0;
}

UniChar CFStringGetCharacterAtIndex(CFStringRef theString, CFIndex idx)
{
    const auto text = TextOf(theString);
    return text && idx >= 0 && (size_t)idx < text->size() ? (*text)[(size_t)idx] : 0;
}

void CFStringGetCharacters(CFStringRef theString, CFRange range, UniChar* buffer)
{
    const auto text = TextOf(theString);
    if (text && buffer && Within(range, text->size()))
        std::copy_n(Part(*text, range).begin(), range.length, buffer);
}

Boolean CFStringGetCString(CFStringRef theString, char* buffer, CFIndex bufferSize, CFStringEncoding encoding)
{
    if (!buffer || bufferSize <= 0)
        return false;
    const auto text = TextOf(theString);
    size_t length = 0;
    const bool isWhole = text && PutAll(*text, encoding, buffer, bufferSize - 1, &length);
    buffer[isWhole ? length : 0] = 0;
    return isWhole;
}

Boolean CFStringGetPascalString(CFStringRef theString, StringPtr buffer, CFIndex bufferSize,
                                CFStringEncoding encoding)
{
    if (!buffer || bufferSize <= 0)
        return false;
    const auto text = TextOf(theString);
    const CFIndex room = std::min<CFIndex>(bufferSize - 1, 255);
    size_t length = 0;
    const bool isWhole = text && PutAll(*text, encoding, buffer + 1, room, &length);
    buffer[0] = (unsigned char)(isWhole ? length : 0);
    return isWhole;
}

const char* CFStringGetCStringPtr(CFStringRef theString, CFStringEncoding encoding)
{
    StringObject* string = Find<StringObject>(theString);
    const Encoding* known = FindEncoding(encoding);
    return string && known && known->IsEightBit() ? string->Ascii() : nullptr;
}

ConstStringPtr CFStringGetPascalStringPtr(CFStringRef theString, CFStringEncoding encoding)
{
    StringObject* string = Find<StringObject>(theString);
    const Encoding* known = FindEncoding(encoding);
    const bool isAscii = string && known && known->IsEightBit();
    return (ConstStringPtr)(const void*)(isAscii ? string->CountedAscii() : nullptr);
}

const UniChar* CFStringGetCharactersPtr(CFStringRef theString)
{
    const StringObject* string = Find<StringObject>(theString);
    return string ? (const UniChar*)string->Units() : nullptr;
}

CFIndex CFStringGetBytes(CFStringRef theString, CFRange range, CFStringEncoding encoding, UInt8 lossByte,
                         Boolean isExternalRepresentation, UInt8* buffer, CFIndex maxBufLen,
                         CFIndex* usedBufLen)
{
    if (usedBufLen)
        *usedBufLen = 0;
    const auto text = TextOf(theString);
    const Encoding* known = FindEncoding(encoding);
    if (!text || !known || !Within(range, text->size()) || (buffer && maxBufLen < 0))
        return 0;
    const Encoded encoded =
        Encode(*known, Part(*text, range), lossByte, isExternalRepresentation, buffer, (size_t)maxBufLen);
    if (usedBufLen)
        *usedBufLen = (CFIndex)encoded.bytes;
    return (CFIndex)encoded.units;
}

CFStringEncoding CFStringGetSystemEncoding(void)
{
    return kCFStringEncodingMacRoman;
}

Boolean CFStringIsEncodingAvailable(CFStringEncoding encoding)
{
    return FindEncoding(encoding) != nullptr;
}

CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding encoding)
{
    const Encoding* known = FindEncoding(encoding);
    CFIndex size;
    if (!known || length < 0 || __builtin_mul_overflow(length, (CFIndex)known->mostBytes, &size))
        return kCFNotFound;
    return size;
}

SInt32 CFStringGetIntValue(CFStringRef str)
{
    const std::string number = NumberText(str);
    SInt32 value = 0;
    const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
    if (result.ec != std::errc::result_out_of_range)
        return value;
    using Limits = std::numeric_limits<SInt32>;
    return number[0] == '-' ? Limits::min() : Limits::max();
}

double CFStringGetDoubleValue(CFStringRef str)
{
    const std::string number = NumberText(str);
    double value = 0;
    const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
    return result.ec == std::errc::result_out_of_range
               ? Extreme(number.substr(0, (size_t)(result.ptr - number.data())))
               : value;
}
