// Strings: what fits, what compares, what is found, and what is read and written in odd ways on purpose.
#include <doctest/doctest.h>
#include <lampblack/lampblack.h>

#include <cstring>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "Interpose.h"
#include "toolkit/SentinelPascal.h"

namespace {

struct CaseCall {
    std::string fText;
    SInt16 fLength;
    ScriptCode fScript;
};

std::vector<CaseCall> gUppercased, gLowercased;
std::vector<std::pair<SInt16, SInt16>> gCompared; // lengths

} // namespace

LAMPBLACK_INTERPOSE void UppercaseText(Ptr textPtr, SInt16 len, ScriptCode script)
{
    gUppercased.push_back({ { textPtr, static_cast<size_t>(len) }, len, script });
    Next<decltype(UppercaseText)>("UppercaseText")(textPtr, len, script);
}

LAMPBLACK_INTERPOSE void LowercaseText(Ptr textPtr, SInt16 len, ScriptCode script)
{
    gLowercased.push_back({ { textPtr, static_cast<size_t>(len) }, len, script });
    Next<decltype(LowercaseText)>("LowercaseText")(textPtr, len, script);
}

LAMPBLACK_INTERPOSE SInt16 IdenticalText(const void* aPtr, const void* bPtr, SInt16 aLen, SInt16 bLen,
                                         Handle itl2Handle)
{
    gCompared.push_back({ aLen, bLen });
    return Next<decltype(IdenticalText)>("IdenticalText")(aPtr, bPtr, aLen, bLen, itl2Handle);
}

// --- Bounded copies

TEST_CASE("strcpysafe: what fits with its zero, else a prefix")
{
    char text[8];
    std::memset(text, '#', sizeof text);
    strcpysafe(text, "abcdef", 4);
    CHECK(std::string(text) == "abc");
    CHECK(text[4] == '#');
    strcpysafe(text, "abc", 4);
    CHECK(std::string(text) == "abc");
    strcpysafe(text, "", 4);
    CHECK(std::string(text).empty());
    strcpysafe(text, "abc", 1);
    CHECK(std::string(text).empty());
}

TEST_CASE("strcpysafe: no room and null pointers write nothing")
{
    char text[] = "old";
    strcpysafe(text, "new", 0);
    strcpysafe(text, nullptr, 4);
    strcpysafe(nullptr, "new", 4);
    CHECK(std::string(text) == "old");
}

TEST_CASE("PLstrcpysafe: the size counts the length byte, the result is the length copied")
{
    Pascal text;
    CHECK(PLstrcpysafe(text, Pascal("abcdef"), 4) == 3);
    CHECK(text.Text() == "abc");
    CHECK(text.fBytes[4] == 0xEE);
    CHECK(PLstrcpysafe(text, Pascal("abcdef"), 7) == 6);
    CHECK(text.Text() == "abcdef");
    CHECK(PLstrcpysafe(text, Pascal("abcdef"), 6) == 5);
    CHECK(PLstrcpysafe(text, Pascal(""), 256) == 0);
    CHECK(text.Text().empty());
    CHECK(PLstrcpysafe(text, Pascal("abc"), 1) == 0);
    CHECK(text.Text().empty());
    CHECK(PLstrcpysafe(text, Pascal(std::string(255, 'x')), 1000) == 255);
    CHECK(text.IsWithin());
}

TEST_CASE("PLstrcpysafe: no room and null pointers write nothing")
{
    Pascal text("old");
    CHECK(PLstrcpysafe(text, Pascal("new"), 0) == 0);
    CHECK(PLstrcpysafe(text, nullptr, 4) == 0);
    CHECK(PLstrcpysafe(nullptr, Pascal("new"), 4) == 0);
    CHECK(text.Text() == "old");
}

TEST_CASE("strncpyterm: so many characters and a zero behind them")
{
    char text[8];
    std::memset(text, '#', sizeof text);
    CHECK(strncpyterm(text, "abcdef", 3) == text);
    CHECK(std::string(text) == "abc");
    CHECK(text[4] == '#');
    strncpyterm(text, "ab", 5);
    CHECK(std::string(text) == "ab");
    strncpyterm(text, "ab", 0);
    CHECK(std::string(text).empty());
    std::memcpy(text, "old", 4);
    strncpyterm(text, "ab", -1);
    CHECK(std::string(text).empty());
}

TEST_CASE("strncpyterm: never more than 32767 characters")
{
    const std::string source(40000, 'x');
    std::vector<char> text(40001, '#');
    strncpyterm(text.data(), source.c_str(), 40000);
    CHECK(std::strlen(text.data()) == 32767);
    CHECK(text[32768] == '#');
}

// --- Case and kinds of characters

TEST_CASE("UpperChar: ASCII by itself, 0x80 and above by the platform, one character in the system script")
{
    gUppercased.clear();
    CHECK(UpperChar('a') == 'A');
    CHECK(UpperChar('z') == 'Z');
    CHECK(UpperChar('A') == 'A');
    CHECK(UpperChar('`') == '`');
    CHECK(UpperChar('{') == '{');
    CHECK(UpperChar('\x7F') == '\x7F');
    CHECK(gUppercased.empty());
    CHECK(UpperChar('\x8A') == '\x80'); // a with a diaeresis
    CHECK(UpperChar('\xA5') == '\xA5'); // a bullet
    REQUIRE(gUppercased.size() == 2);
    CHECK(gUppercased[0].fText == "\x8A");
    CHECK(gUppercased[0].fScript == -1);
}

TEST_CASE("PStringToUppercase, PStringToLowercase: the whole string by the platform, in place")
{
    gUppercased.clear();
    gLowercased.clear();
    Pascal text("aBc\x8A");
    PStringToUppercase(text);
    CHECK(text.Text() == "ABC\x80");
    PStringToLowercase(text);
    CHECK(text.Text() == "abc\x8A");
    REQUIRE(gUppercased.size() == 1);
    REQUIRE(gLowercased.size() == 1);
    CHECK(gUppercased[0].fLength == 4);
    CHECK(gUppercased[0].fScript == -1);
    CHECK(gLowercased[0].fScript == -1);
    PStringToUppercase(nullptr);
    PStringToLowercase(nullptr);
}

TEST_CASE("CharacterIsNumber, CharacterIsHexDigit: the ends of their ranges, and no byte outside ASCII")
{
    const std::string_view numbers = "0123456789", digits = "0123456789ABCDEFabcdef";
    for (int c = 0; c < 256; ++c) {
        const char character = static_cast<char>(c);
        CHECK(CharacterIsNumber(character) == (numbers.find(character) != std::string_view::npos));
        CHECK(CharacterIsHexDigit(character) == (digits.find(character) != std::string_view::npos));
    }
}

// --- Comparison and search

TEST_CASE("PStringCompare: with and without regard to case")
{
    CHECK(PStringCompare(Pascal("abc"), Pascal("ABC"), false) == 0);
    CHECK(PStringCompare(Pascal("abc"), Pascal("ABC"), true) == 1);
    CHECK(PStringCompare(Pascal("ABC"), Pascal("abc"), true) == -1);
    CHECK(PStringCompare(Pascal("\x8A"), Pascal("\x80"), false) == 0);
    CHECK(PStringCompare(Pascal("b"), Pascal("Ab"), false) == 1);
}

TEST_CASE("PStringCompare: a prefix comes first")
{
    CHECK(PStringCompare(Pascal("ab"), Pascal("abc"), true) == -1);
    CHECK(PStringCompare(Pascal("abc"), Pascal("ab"), true) == 1);
    CHECK(PStringCompare(Pascal(""), Pascal(""), true) == 0);
    CHECK(PStringCompare(Pascal(""), Pascal("a"), false) == -1);
}

TEST_CASE("PStringCompare: characters of 0x80 and above come before all of ASCII")
{
    CHECK(PStringCompare(Pascal("\xA5"), Pascal("A"), true) == -1);
    CHECK(PStringCompare(Pascal("A"), Pascal("\xA5"), false) == 1);
    CHECK(PStringCompare(Pascal("\x81"), Pascal("\x80"), true) == 1);
}

TEST_CASE("PStringCompare, PStringEqual: null strings")
{
    CHECK(PStringCompare(nullptr, Pascal("a"), true) == -2);
    CHECK(PStringCompare(Pascal("a"), nullptr, false) == -2);
    CHECK(PStringCompare(nullptr, nullptr, true) == -2);
    CHECK_FALSE(PStringEqual(nullptr, Pascal("a"), true));
    CHECK_FALSE(PStringEqual(Pascal("a"), nullptr, true));
    CHECK_FALSE(PStringEqual(nullptr, nullptr, true));
}

TEST_CASE("PStringEqual: every character, folded unless case counts")
{
    CHECK(PStringEqual(Pascal("abc"), Pascal("abc"), true));
    CHECK_FALSE(PStringEqual(Pascal("abc"), Pascal("abC"), true));
    CHECK(PStringEqual(Pascal("abc"), Pascal("abC"), false));
    CHECK_FALSE(PStringEqual(Pascal("abc"), Pascal("abd"), false));
    CHECK(PStringEqual(Pascal(""), Pascal(""), true));
}

TEST_CASE("PStringEqual: strings of different lengths differ without a look at their characters")
{
    gUppercased.clear();
    CHECK_FALSE(PStringEqual(Pascal("\x8A"), Pascal("\x8A\x8A"), false));
    CHECK(gUppercased.empty());
}

TEST_CASE("CStringContains: where the pattern is first, or the text's length")
{
    SInt32 offset = 99;
    CHECK(CStringContains("Hello", "ll", &offset));
    CHECK(offset == 2);
    CHECK_FALSE(CStringContains("Hello", "xyz", &offset));
    CHECK(offset == 5);
    CHECK(CStringContains("Hello", "Hello", &offset));
    CHECK(offset == 0);
    CHECK_FALSE(CStringContains("Hello", "Hello!", &offset));
    CHECK(offset == 5);
    CHECK(CStringContains("Hello", "o", &offset));
    CHECK(offset == 4);
}

TEST_CASE("CStringContains: equal is what the platform calls equal, asked with the pattern's length twice")
{
    gCompared.clear();
    SInt32 offset = 99;
    CHECK(CStringContains("xHELLO", "hello", &offset));
    CHECK(offset == 1);
    CHECK(gCompared == std::vector<std::pair<SInt16, SInt16>>{ { 5, 5 }, { 5, 5 } });
}

TEST_CASE("CStringContains: an empty pattern is found at 0, null is found nowhere")
{
    SInt32 offset = 99;
    CHECK(CStringContains("Hello", "", &offset));
    CHECK(offset == 0);
    CHECK(CStringContains("", "", &offset));
    offset = 99;
    CHECK_FALSE(CStringContains(nullptr, "a", &offset));
    CHECK(offset == 0);
    offset = 99;
    CHECK_FALSE(CStringContains("a", nullptr, &offset));
    CHECK(offset == 0);
}

TEST_CASE("CStringContains: a pattern longer than a length can say is not found, nor one of its pieces")
{
    const std::string text(70000, 'x');
    SInt32 offset = 0;
    CHECK_FALSE(CStringContains(text.c_str(), text.substr(0, 65537).c_str(), &offset));
    CHECK(offset == 70000);
    CHECK(CStringContains((text + "Q").c_str(), "q", &offset));
    CHECK(offset == 70000);
}

TEST_CASE("PStringContains: as C strings do it")
{
    SInt32 offset = 99;
    CHECK(PStringContains(Pascal("Hello"), Pascal("ll"), &offset));
    CHECK(offset == 2);
    CHECK_FALSE(PStringContains(Pascal("Hello"), Pascal("xyz"), &offset));
    CHECK(offset == 5);
    offset = 99;
    CHECK_FALSE(PStringContains(nullptr, Pascal("a"), &offset));
    CHECK(offset == 0);
    CHECK(PStringContains(Pascal(std::string(254, 'a') + "b"), Pascal("b"), &offset));
    CHECK(offset == 254);
}

TEST_CASE("PStringContainsCharacter: its index, or the length plus 1")
{
    SInt16 index = 99;
    CHECK(PStringContainsCharacter(Pascal("a,b,c"), ',', &index));
    CHECK(index == 2);
    CHECK_FALSE(PStringContainsCharacter(Pascal("abc"), ',', &index));
    CHECK(index == 4);
    CHECK_FALSE(PStringContainsCharacter(Pascal(""), ',', &index));
    CHECK(index == 1);
    CHECK_FALSE(PStringContainsCharacter(Pascal(std::string(255, 'x')), ',', &index));
    CHECK(index == 256);
    index = 99;
    CHECK_FALSE(PStringContainsCharacter(nullptr, ',', &index));
    CHECK(index == 99);
}

TEST_CASE("PStringContainsCharacter: 0x80 and above is never found")
{
    SInt16 index = 99;
    CHECK_FALSE(PStringContainsCharacter(Pascal("a\xA5"), '\xA5', &index));
    CHECK(index == 3);
}

TEST_CASE("PStringCopyUptoCharacter: what stands before the character")
{
    Pascal text("untouched");
    PStringCopyUptoCharacter(Pascal("name=value"), text, '=');
    CHECK(text.Text() == "name");
    PStringCopyUptoCharacter(Pascal("=value"), text, '=');
    CHECK(text.Text().empty());
    PStringCopyUptoCharacter(nullptr, text, '=');
    CHECK(text.Text().empty());
    PStringCopyUptoCharacter(Pascal("a"), nullptr, '=');
}

TEST_CASE("PStringCopyUptoCharacter: without the character, the byte behind the source comes along")
{
    Pascal source("abc"), text;
    source.fBytes[4] = 'Z';
    PStringCopyUptoCharacter(source, text, '=');
    CHECK(text.Text() == "abcZ");
    source.fBytes[4] = '='; // seen there, too
    PStringCopyUptoCharacter(source, text, '=');
    CHECK(text.Text() == "abc");
    Pascal bullet("a\xA5");
    bullet.fBytes[3] = 'Z';
    PStringCopyUptoCharacter(bullet, text, '\xA5');
    CHECK(text.Text() == "a\xA5Z");
}

TEST_CASE("PStringCopyUptoCharacter: 255 characters stay within both strings")
{
    Pascal source(std::string(255, 'x')), text;
    source.fBytes[256] = '='; // behind the Str255: not looked at
    PStringCopyUptoCharacter(source, text, '=');
    CHECK(text.fBytes[0] == 0); // 256, in a byte
    CHECK(text.fBytes[255] == 'x');
    CHECK(text.IsWithin());
    source.fBytes[255] = '=';
    PStringCopyUptoCharacter(source, text, '=');
    CHECK(text.Text() == std::string(254, 'x'));
    Pascal shorter(std::string(254, 'x'));
    shorter.fBytes[255] = 'Z';
    PStringCopyUptoCharacter(shorter, text, '=');
    CHECK(text.Text() == std::string(254, 'x') + "Z");
    CHECK(text.IsWithin());
}

TEST_CASE("PStringCopyUptoCharacter, PStringCopyStartingAfterCharacter: in place")
{
    Pascal text("name=value");
    PStringCopyUptoCharacter(text, text, '=');
    CHECK(text.Text() == "name");
    Pascal other("name=value");
    PStringCopyStartingAfterCharacter(other, other, '=');
    CHECK(other.Text() == "value");
}

TEST_CASE("PStringCopyStartingAfterCharacter: what stands behind the first one")
{
    Pascal text("untouched");
    PStringCopyStartingAfterCharacter(Pascal("a=b=c"), text, '=');
    CHECK(text.Text() == "b=c");
    PStringCopyStartingAfterCharacter(Pascal("a="), text, '=');
    CHECK(text.Text().empty());
}

TEST_CASE("PStringCopyStartingAfterCharacter: without the character the destination is left as it was")
{
    Pascal text("untouched");
    PStringCopyStartingAfterCharacter(Pascal("abc"), text, '=');
    PStringCopyStartingAfterCharacter(Pascal("a\xA5"), text, '\xA5');
    CHECK(text.Text() == "untouched");
    PStringCopyStartingAfterCharacter(Pascal("abc"), nullptr, 'b');
    PStringCopyStartingAfterCharacter(nullptr, text, '=');
    CHECK(text.Text().empty());
}
