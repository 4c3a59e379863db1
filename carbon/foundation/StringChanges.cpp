// Changing mutable strings.
#include "StringObject.h"
#include "Unicode.h"

#include <Carbon/CFString.h>

#include <algorithm>

using namespace lampblack::foundation;

namespace {

constexpr size_t kLongest = 0x3FFFFFFF; // units that a padded string may have

void Change(CFMutableStringRef inString, std::u16string (*inChange)(std::u16string_view))
{
    if (StringObject* string = Changeable(inString))
        string->SetText(inChange(string->Text()));
}

// Keeps only what lies between two places.
void Keep(StringObject& ioString, size_t inFrom, size_t inTo)
{
    ioString.SetText(ioString.Text().substr(inFrom, inTo - inFrom));
}

} // namespace

void CFStringAppend(CFMutableStringRef theString, CFStringRef appendedString)
{
    StringObject* string = Changeable(theString);
    const auto text = TextOf(appendedString);
    if (string && text)
        string->Append(*text);
}

void CFStringAppendCharacters(CFMutableStringRef theString, const UniChar* chars, CFIndex numChars)
{
    StringObject* string = Changeable(theString);
    if (string && chars && numChars > 0)
        string->Append(Units(chars, (size_t)numChars));
}

void CFStringAppendFormatAndArguments(CFMutableStringRef theString, CFDictionaryRef, CFStringRef format,
                                      va_list arguments)
{
    StringObject* string = Changeable(theString);
    const auto text = TextOf(format);
    if (string && text)
        string->Append(Format(*text, arguments));
}

void CFStringAppendFormat(CFMutableStringRef theString, CFDictionaryRef formatOptions, CFStringRef format,
                          ...)
{
    va_list arguments;
    va_start(arguments, format);
    CFStringAppendFormatAndArguments(theString, formatOptions, format, arguments);
    va_end(arguments);
}

void CFStringInsert(CFMutableStringRef str, CFIndex idx, CFStringRef insertedStr)
{
    CFStringReplace(str, CFRangeMake(idx, 0), insertedStr);
}

void CFStringDelete(CFMutableStringRef theString, CFRange range)
{
    StringObject* string = Changeable(theString);
    if (string && Within(range, string->Text().size()))
        string->Replace((size_t)range.location, (size_t)range.length, {});
}

void CFStringReplace(CFMutableStringRef theString, CFRange range, CFStringRef replacement)
{
    StringObject* string = Changeable(theString);
    const auto text = TextOf(replacement);
    if (string && text && Within(range, string->Text().size()))
        string->Replace((size_t)range.location, (size_t)range.length, *text);
}

void CFStringReplaceAll(CFMutableStringRef theString, CFStringRef replacement)
{
    CFStringReplace(theString, CFRangeMake(0, CFStringGetLength(theString)), replacement);
}

void CFStringPad(CFMutableStringRef theString, CFStringRef padString, CFIndex length, CFIndex indexIntoPad)
{
    StringObject* string = Changeable(theString);
    if (!string || length < 0 || (size_t)length > kLongest)
        return;
    const size_t wanted = (size_t)length, have = string->Text().size();
    const auto pad = TextOf(padString);
    if (wanted <= have)
        return Keep(*string, 0, wanted);
    if (!pad || indexIntoPad < 0 || (size_t)indexIntoPad >= pad->size())
        return;
    std::u16string padding(wanted - have, 0);
    for (size_t i = 0; i < padding.size(); ++i)
        padding[i] = (*pad)[((size_t)indexIntoPad + i) % pad->size()];
    string->Append(padding);
}

void CFStringTrim(CFMutableStringRef theString, CFStringRef trimString)
{
    StringObject* string = Changeable(theString);
    const auto trim = TextOf(trimString);
    if (!string || !trim || trim->empty())
        return;
    std::u16string_view text = string->Text();
    while (text.starts_with(*trim))
        text.remove_prefix(trim->size());
    while (text.ends_with(*trim))
        text.remove_suffix(trim->size());
    string->SetText(text);
}

void CFStringTrimWhitespace(CFMutableStringRef theString)
{
    StringObject* string = Changeable(theString);
    if (!string)
        return;
    const std::u16string_view text = string->Text();
    const auto first = std::find_if_not(text.begin(), text.end(), IsWhitespace);
    const auto last = std::find_if_not(text.rbegin(), std::make_reverse_iterator(first), IsWhitespace).base();
    Keep(*string, (size_t)(first - text.begin()), (size_t)(last - text.begin()));
}

void CFStringLowercase(CFMutableStringRef theString, CFLocaleRef)
{
    Change(theString, LowercaseOf);
}

void CFStringUppercase(CFMutableStringRef theString, CFLocaleRef)
{
    Change(theString, UppercaseOf);
}

void CFStringCapitalize(CFMutableStringRef theString, CFLocaleRef)
{
    Change(theString, CapitalizedOf);
}
