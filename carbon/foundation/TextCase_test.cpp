// Capitals, small letters and marks of Mac Roman text.
#include "MacRoman.h"
#include "RomanText.h"

#include <Carbon/MacApplication.h>
#include <Carbon/TextUtils.h>

#include <doctest/doctest.h>
#include <unicode/uchar.h>
#include <unicode/unorm2.h>

#include <string>

using namespace lampblack::foundation;

namespace {

std::string Mapped(void (*inCall)(Ptr, SInt16, ScriptCode), std::string inText,
                   ScriptCode inScript = smSystemScript)
{
    inCall(inText.data(), (SInt16)inText.size(), inScript);
    return inText;
}

// The byte of a character that Mac Roman has; else the byte that it came from.
UInt8 ByteOr(UChar32 inCharacter, UInt8 inByte)
{
    UnicodeToMacRoman((char32_t)inCharacter, &inByte);
    return inByte;
}

bool IsRaisedLetter(unsigned inByte)
{
    return inByte == 0xBB || inByte == 0xBC;
}

} // namespace

TEST_CASE("UppercaseText: each byte is as Unicode says, or itself where Mac Roman lacks the capital")
{
    for (unsigned byte = 0; byte < 256; ++byte) {
        const UInt8 expected = ByteOr(u_toupper(MacRomanToUnicode((UInt8)byte)), (UInt8)byte);
        CHECK_MESSAGE(Roman().upper[byte] == expected, byte);
    }
    CHECK(Mapped(UppercaseText, "na\x95ve \xA7 \xCF\x8C") == "NA\xECVE \xA7 \xCE\x81");
}

TEST_CASE("LowercaseText: each byte is as Unicode says, but for signs that only look like letters")
{
    for (unsigned byte = 0; byte < 256; ++byte) {
        const UInt8 expected = ByteOr(u_tolower(MacRomanToUnicode((UInt8)byte)), (UInt8)byte);
        CHECK_MESSAGE(Roman().lower[byte] == expected, byte);
    }
    CHECK(Mapped(LowercaseText, "\xAE\xD9\x80Z") == "\xBE\xD8\x8Az");
}

TEST_CASE("StripDiacritics: each letter is the base of its Unicode decomposition, the stroke of O included")
{
    UErrorCode error = U_ZERO_ERROR;
    const UNormalizer2* nfd = unorm2_getNFDInstance(&error);
    for (unsigned byte = 0; byte < 256; ++byte) {
        UChar base[8] = { MacRomanToUnicode((UInt8)byte) };
        const bool isLetter = u_isalpha(base[0]) && !IsRaisedLetter(byte);
        unorm2_getDecomposition(nfd, base[0], base, 8, &error);
        const UInt8 expected = byte == 0xAF   ? 'O'
                               : byte == 0xBF ? 'o'
                               : isLetter     ? ByteOr(base[0], (UInt8)byte)
                                              : (UInt8)byte;
        CHECK_MESSAGE(Roman().stripped[byte] == expected, byte);
    }
}

TEST_CASE("UppercaseStripDiacritics: both at once")
{
    CHECK(Mapped(UppercaseStripDiacritics, "Ros\x8E \x8D\x96\xBF") == "ROSE CNO");
    CHECK(Mapped(StripDiacritics, "Ros\x8E \x82") == "Rose C");
}

TEST_CASE("UppercaseText: text of another script, no text and a negative length change nothing")
{
    CHECK(Mapped(UppercaseText, "abc", 1) == "abc");
    CHECK(Mapped(UppercaseText, "abc", smRoman) == "ABC");
    CHECK(Mapped(UppercaseText, "abc", smCurrentScript) == "ABC");
    UppercaseText(nullptr, 5, smSystemScript);
    char text[] = "abc";
    LowercaseText(text, -1, smSystemScript);
    UppercaseText(text, -3, smSystemScript);
    CHECK(std::string(text) == "abc");
}

TEST_CASE("UpperString: only capitals of the first character set; marks stay when they count")
{
    unsigned char text[] = "\5a\x8A\x87\xD8z";
    UpperString(text, true);
    CHECK(TextOf(text) == "A\x80\x87\xD8Z");
    UpperString(text, false);
    CHECK(TextOf(text) == "AAAYZ");
    UpperString(nullptr, true);
}

TEST_CASE("GetApplicationTextEncoding: Mac Roman, and the Roman script")
{
    CHECK(GetApplicationTextEncoding() == kTextEncodingMacRoman);
    CHECK(GetApplicationScript() == smRoman);
}
