// The table of Mac Roman in its form since 1998, with the euro sign at 0xDB, and UTF-8 beside it.
#include <foundation/MacRoman.h>

#include <algorithm>
#include <array>
#include <cstring>

namespace lampblack::foundation {
namespace {

constexpr std::array<UInt16, 128> kUpperHalf = {
    0x00C4, 0x00C5, 0x00C7, 0x00C9, 0x00D1, 0x00D6, 0x00DC, 0x00E1, 0x00E0, 0x00E2, 0x00E4, 0x00E3, 0x00E5,
    0x00E7, 0x00E9, 0x00E8, 0x00EA, 0x00EB, 0x00ED, 0x00EC, 0x00EE, 0x00EF, 0x00F1, 0x00F3, 0x00F2, 0x00F4,
    0x00F6, 0x00F5, 0x00FA, 0x00F9, 0x00FB, 0x00FC, 0x2020, 0x00B0, 0x00A2, 0x00A3, 0x00A7, 0x2022, 0x00B6,
    0x00DF, 0x00AE, 0x00A9, 0x2122, 0x00B4, 0x00A8, 0x2260, 0x00C6, 0x00D8, 0x221E, 0x00B1, 0x2264, 0x2265,
    0x00A5, 0x00B5, 0x2202, 0x2211, 0x220F, 0x03C0, 0x222B, 0x00AA, 0x00BA, 0x03A9, 0x00E6, 0x00F8, 0x00BF,
    0x00A1, 0x00AC, 0x221A, 0x0192, 0x2248, 0x2206, 0x00AB, 0x00BB, 0x2026, 0x00A0, 0x00C0, 0x00C3, 0x00D5,
    0x0152, 0x0153, 0x2013, 0x2014, 0x201C, 0x201D, 0x2018, 0x2019, 0x00F7, 0x25CA, 0x00FF, 0x0178, 0x2044,
    0x20AC, 0x2039, 0x203A, 0xFB01, 0xFB02, 0x2021, 0x00B7, 0x201A, 0x201E, 0x2030, 0x00C2, 0x00CA, 0x00C1,
    0x00CB, 0x00C8, 0x00CD, 0x00CE, 0x00CF, 0x00CC, 0x00D3, 0x00D4, 0xF8FF, 0x00D2, 0x00DA, 0x00DB, 0x00D9,
    0x0131, 0x02C6, 0x02DC, 0x00AF, 0x02D8, 0x02D9, 0x02DA, 0x00B8, 0x02DD, 0x02DB, 0x02C7,
};

struct Reverse {
    UInt16 unicode;
    UInt8 byte;
};

constexpr std::array<Reverse, 128> SortedReverse()
{
    std::array<Reverse, 128> table = {};
    for (size_t i = 0; i < 128; ++i)
        table[i] = { kUpperHalf[i], (UInt8)(128 + i) };
    std::sort(table.begin(), table.end(), [](Reverse a, Reverse b) { return a.unicode < b.unicode; });
    return table;
}

constexpr std::array<Reverse, 128> kReverse = SortedReverse();

// The capital of a letter that Mac Roman has, as a Unicode character.
constexpr UInt16 UnicodeUpper(UInt16 inLetter)
{
    const bool isLatin1 = inLetter >= 0x00E0 && inLetter <= 0x00FE && inLetter != 0x00F7;
    if (isLatin1 || (inLetter >= 'a' && inLetter <= 'z'))
        return (UInt16)(inLetter - 0x20);
    return inLetter == 0x00FF ? 0x0178 : inLetter == 0x0153 ? 0x0152 : inLetter;
}

constexpr std::array<UInt8, 256> MakeUpper()
{
    std::array<UInt8, 256> table = {};
    for (unsigned byte = 0; byte < 256; ++byte) {
        const UInt16 upper = UnicodeUpper(byte < 128 ? (UInt16)byte : kUpperHalf[byte - 128]);
        table[byte] = (UInt8)upper;
        for (unsigned i = 0; i < 128 && upper >= 128; ++i)
            if (kUpperHalf[i] == upper)
                table[byte] = (UInt8)(128 + i);
    }
    return table;
}

constexpr std::array<UInt8, 256> kUpper = MakeUpper();

// The accents that Mac Roman letters carry, and for each the letters that have it composed.
struct Accent {
    char32_t mark;
    const char* bases;
    const char16_t* composed;
};

constexpr Accent kAccents[] = {
    { 0x0300, "AEIOUaeiou", u"\u00C0\u00C8\u00CC\u00D2\u00D9\u00E0\u00E8\u00EC\u00F2\u00F9" },
    { 0x0301, "AEIOUaeiou", u"\u00C1\u00C9\u00CD\u00D3\u00DA\u00E1\u00E9\u00ED\u00F3\u00FA" },
    { 0x0302, "AEIOUaeiou", u"\u00C2\u00CA\u00CE\u00D4\u00DB\u00E2\u00EA\u00EE\u00F4\u00FB" },
    { 0x0303, "ANOano", u"\u00C3\u00D1\u00D5\u00E3\u00F1\u00F5" },
    { 0x0308, "AEIOUYaeiouy", u"\u00C4\u00CB\u00CF\u00D6\u00DC\u0178\u00E4\u00EB\u00EF\u00F6\u00FC\u00FF" },
    { 0x030A, "Aa", u"\u00C5\u00E5" },
    { 0x0327, "Cc", u"\u00C7\u00E7" },
};

// The length that a lead byte announces and the smallest character it may encode; 0 for a byte that cannot
// lead.
int Utf8Length(uint8_t inLead, char32_t* outLeast)
{
    *outLeast = inLead < 0x80 ? 0 : inLead < 0xE0 ? 0x80 : inLead < 0xF0 ? 0x800 : 0x10000;
    return inLead < 0x80   ? 1
           : inLead < 0xC2 ? 0
           : inLead < 0xE0 ? 2
           : inLead < 0xF0 ? 3
           : inLead < 0xF5 ? 4
                           : 0;
}

} // namespace

UInt16 MacRomanToUnicode(UInt8 inByte)
{
    return inByte < 128 ? inByte : kUpperHalf[inByte - 128];
}

bool UnicodeToMacRoman(char32_t inCharacter, UInt8* outByte)
{
    if (inCharacter < 128) {
        *outByte = (UInt8)inCharacter;
        return true;
    }
    const auto found = std::lower_bound(kReverse.begin(), kReverse.end(), inCharacter,
                                        [](Reverse entry, char32_t c) { return entry.unicode < c; });
    if (found == kReverse.end() || found->unicode != inCharacter)
        return false;
    *outByte = found->byte;
    return true;
}

char32_t ComposeAccent(char32_t inBase, char32_t inMark)
{
    for (const Accent& accent : kAccents) {
        const char* at =
            accent.mark == inMark && inBase - 1 < 127 ? std::strchr(accent.bases, (int)inBase) : nullptr;
        if (at)
            return accent.composed[at - accent.bases];
    }
    return 0;
}

std::string Utf8FromPascal(ConstStr255Param inString)
{
    return inString ? Utf8FromMacRoman(std::string_view((const char*)inString + 1, inString[0]))
                    : std::string();
}

std::string Utf8FromMacRoman(std::string_view inText)
{
    std::string text;
    text.reserve(inText.size());
    for (const char byte : inText)
        AppendUtf8(text, MacRomanToUnicode((UInt8)byte));
    return text;
}

std::string MacRomanFromUtf8(std::string_view inUtf8)
{
    std::string text;
    MacRomanFromUtf8Exactly(inUtf8, &text);
    return text;
}

bool MacRomanFromUtf8Exactly(std::string_view inUtf8, std::string* outText)
{
    bool exact = true;
    outText->clear();
    for (size_t offset = 0; offset < inUtf8.size();) {
        char32_t character = NextUtf8(inUtf8, &offset);
        size_t after = offset;
        const char32_t composed =
            after < inUtf8.size() ? ComposeAccent(character, NextUtf8(inUtf8, &after)) : 0;
        if (composed) {
            character = composed;
            offset = after;
        }
        UInt8 byte = '?';
        exact = UnicodeToMacRoman(character, &byte) && exact;
        outText->push_back((char)byte);
    }
    return exact;
}

UInt8 MacRomanUpper(UInt8 inByte)
{
    return kUpper[inByte];
}

bool EqualIgnoringCase(std::string_view inLeft, std::string_view inRight)
{
    return std::equal(inLeft.begin(), inLeft.end(), inRight.begin(), inRight.end(),
                      [](char left, char right) { return kUpper[(UInt8)left] == kUpper[(UInt8)right]; });
}

void PascalFromMacRoman(std::string_view inText, StringPtr outString, size_t inLimit)
{
    const size_t length = std::min({ inText.size(), inLimit, (size_t)255 });
    outString[0] = (unsigned char)length;
    std::copy_n(inText.begin(), length, outString + 1);
}

char32_t NextUtf8(std::string_view inUtf8, size_t* ioOffset)
{
    const size_t start = (*ioOffset)++;
    const uint8_t lead = (uint8_t)inUtf8[start];
    char32_t least;
    const int length = Utf8Length(lead, &least);
    if (length == 1)
        return lead;
    if (length == 0 || inUtf8.size() - start < (size_t)length)
        return 0xFFFD;
    char32_t character = lead & (0x7Fu >> length);
    for (int i = 1; i < length; ++i) {
        const uint8_t next = (uint8_t)inUtf8[start + (size_t)i];
        if ((next & 0xC0) != 0x80)
            return 0xFFFD;
        character = character << 6 | (next & 0x3F);
    }
    if (character < least || character > 0x10FFFF || (character >= 0xD800 && character < 0xE000))
        return 0xFFFD;
    *ioOffset = start + (size_t)length;
    return character;
}

void AppendUtf8(std::string& ioText, char32_t inCharacter)
{
    if (inCharacter < 0x80) {
        ioText.push_back((char)inCharacter);
        return;
    }
    const int following = inCharacter < 0x800 ? 1 : inCharacter < 0x10000 ? 2 : 3;
    constexpr uint8_t kLeads[] = { 0, 0xC0, 0xE0, 0xF0 };
    ioText.push_back((char)(kLeads[following] | inCharacter >> (6 * following)));
    for (int shift = 6 * (following - 1); shift >= 0; shift -= 6)
        ioText.push_back((char)(0x80 | (inCharacter >> shift & 0x3F)));
}

bool IsValidUtf8(std::string_view inText)
{
    for (size_t offset = 0; offset < inText.size();) {
        const size_t start = offset;
        const bool replaced = NextUtf8(inText, &offset) == 0xFFFD;
        if (replaced && offset == start + 1)
            return false;
    }
    return true;
}

std::u16string Utf16FromUtf8(std::string_view inUtf8)
{
    std::u16string text;
    text.reserve(inUtf8.size());
    for (size_t offset = 0; offset < inUtf8.size();) {
        const char32_t character = NextUtf8(inUtf8, &offset);
        if (character < 0x10000) {
            text.push_back((char16_t)character);
            continue;
        }
        text.push_back((char16_t)(0xD7C0 + (character >> 10)));
        text.push_back((char16_t)(0xDC00 | (character & 0x3FF)));
    }
    return text;
}

std::string Utf8FromUtf16(std::u16string_view inText)
{
    std::string text;
    text.reserve(inText.size());
    for (size_t i = 0; i < inText.size(); ++i) {
        const char32_t unit = inText[i];
        const bool isHigh = unit >= 0xD800 && unit < 0xDC00;
        const bool isPair = isHigh && i + 1 < inText.size() && (inText[i + 1] & 0xFC00) == 0xDC00;
        if (isPair)
            AppendUtf8(text, 0x10000 + ((unit - 0xD800) << 10) + (inText[++i] - 0xDC00u));
        else
            AppendUtf8(text, unit >= 0xD800 && unit < 0xE000 ? 0xFFFD : unit);
    }
    return text;
}

} // namespace lampblack::foundation
