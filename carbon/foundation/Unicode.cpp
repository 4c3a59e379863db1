// ICU's common library. Its calls that need no locale and no data file are the ones used, but for the word
// boundaries of CapitalizedOf.
#include "Unicode.h"

#include <unicode/uchar.h>
#include <unicode/unorm2.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <limits>

namespace lampblack::foundation {
namespace {

bool IsAscii(std::u16string_view inText)
{
    return std::all_of(inText.begin(), inText.end(), [](char16_t unit) { return unit < 128; });
}

using Conversion = int32_t (*)(UChar*, int32_t, const UChar*, int32_t, const char*, UErrorCode*);

int32_t ToTitle(UChar* outText, int32_t inRoom, const UChar* inText, int32_t inLength, const char* inLocale,
                UErrorCode* ioError)
{
    return u_strToTitle(outText, inRoom, inText, inLength, nullptr, inLocale, ioError);
}

// The text as it is when ICU cannot: it is too long for it, or its data are missing.
std::u16string Convert(std::u16string_view inText, Conversion inConversion)
{
    std::u16string result;
    if (inText.size() > (size_t)std::numeric_limits<int32_t>::max() / 4)
        return std::u16string(inText);
    int32_t length = (int32_t)inText.size() + 8;
    UErrorCode error = U_BUFFER_OVERFLOW_ERROR;
    for (int attempt = 0; attempt < 2 && error == U_BUFFER_OVERFLOW_ERROR; ++attempt) {
        result.resize((size_t)length);
        error = U_ZERO_ERROR;
        length = inConversion(result.data(), length, inText.data(), (int32_t)inText.size(), "", &error);
    }
    if (U_FAILURE(error))
        return std::u16string(inText);
    result.resize((size_t)length);
    return result;
}

std::u16string MapAscii(std::u16string_view inText, char16_t inFirst, int inDistance)
{
    std::u16string text(inText);
    for (char16_t& unit : text)
        if (unit >= inFirst && unit < inFirst + 26)
            unit = (char16_t)(unit + inDistance);
    return text;
}

void AppendUnits(std::u32string& ioText, const UChar* inUnits, int32_t inCount)
{
    for (int32_t i = 0; i < inCount;) {
        UChar32 character;
        U16_NEXT(inUnits, i, inCount, character);
        ioText.push_back((char32_t)character);
    }
}

const UNormalizer2* Decomposer()
{
    static const UNormalizer2* const decomposer = [] {
        UErrorCode error = U_ZERO_ERROR;
        const UNormalizer2* found = unorm2_getNFDInstance(&error);
        return U_SUCCESS(error) ? found : nullptr;
    }();
    return decomposer;
}

} // namespace

std::u16string UppercaseOf(std::u16string_view inText)
{
    return IsAscii(inText) ? MapAscii(inText, 'a', -32) : Convert(inText, u_strToUpper);
}

std::u16string LowercaseOf(std::u16string_view inText)
{
    return IsAscii(inText) ? MapAscii(inText, 'A', 32) : Convert(inText, u_strToLower);
}

std::u16string CapitalizedOf(std::u16string_view inText)
{
    return Convert(inText, ToTitle);
}

bool IsWhitespace(char16_t inUnit)
{
    if (inUnit < 128)
        return inUnit == ' ' || (inUnit >= 9 && inUnit <= 13);
    return u_isUWhiteSpace(inUnit);
}

void AppendFolded(std::u32string& ioText, char32_t inCharacter)
{
    if (inCharacter < 128) {
        ioText.push_back(inCharacter >= 'A' && inCharacter <= 'Z' ? inCharacter + 32 : inCharacter);
        return;
    }
    UChar units[2], folded[8];
    int32_t count = 0;
    UErrorCode error = U_ZERO_ERROR;
    U16_APPEND_UNSAFE(units, count, (UChar32)inCharacter);
    count = u_strFoldCase(folded, 8, units, count, U_FOLD_CASE_DEFAULT, &error);
    if (U_SUCCESS(error))
        AppendUnits(ioText, folded, count);
    else
        ioText.push_back(inCharacter);
}

void AppendDecomposed(std::u32string& ioText, char32_t inCharacter)
{
    UChar units[32];
    UErrorCode error = U_ZERO_ERROR;
    const int32_t count =
        inCharacter < 0xC0 || !Decomposer()
            ? -1
            : unorm2_getDecomposition(Decomposer(), (UChar32)inCharacter, units, 32, &error);
    if (count >= 0 && U_SUCCESS(error))
        AppendUnits(ioText, units, count);
    else
        ioText.push_back(inCharacter);
}

unsigned CombiningClass(char32_t inCharacter)
{
    return inCharacter < 0x300 ? 0 : u_getCombiningClass((UChar32)inCharacter);
}

} // namespace lampblack::foundation
