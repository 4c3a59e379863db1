// Strings: what fits, what compares, what is found, and what is read and written in odd ways on purpose.
#include <doctest/doctest.h>
#include <lampblack/lampblack.h>

#include <cstring>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "FreshProcess.h"
#include "Interpose.h"

namespace {

struct CaseCall {
    std::string fText;
    SInt16 fLength;
    ScriptCode fScript;
};

std::vector<CaseCall> gUppercased, gLowercased;
std::vector<std::pair<SInt16, SInt16>> gCompared; // lengths
std::vector<std::string> gCalls;
bool gNamesUser = true;
int gUserNames = 0;
LongDateRec gDate;
SInt8 gState = 0;

// A Pascal string, with sentinels behind the Str255 that holds it.
struct Pascal {
    unsigned char fBytes[256 + 16];

    Pascal() { std::memset(fBytes, 0xEE, sizeof fBytes); }
    Pascal(std::string_view inText) : Pascal()
    {
        fBytes[0] = static_cast<unsigned char>(inText.size());
        std::memcpy(fBytes + 1, inText.data(), inText.size());
    }
    Pascal(const char* inText) : Pascal(std::string_view(inText)) {}

    operator unsigned char*() { return fBytes; }
    std::string Text() const { return { reinterpret_cast<const char*>(fBytes + 1), fBytes[0] }; }
    bool IsWithin() const
    {
        for (size_t i = 256; i < sizeof fBytes; ++i)
            if (fBytes[i] != 0xEE)
                return false;
        return true;
    }
};

std::string Grouped(std::string_view inText)
{
    Pascal text(inText);
    CommaPString(text);
    CHECK(text.IsWithin());
    return text.Text();
}

LongDateTime Seconds(const LongDateRec& inDate)
{
    LongDateTime seconds = 0;
    LongDateToSeconds(&inDate, &seconds);
    return seconds;
}

LongDateTime SecondsOf(SInt16 inYear, SInt16 inMonth, SInt16 inDay, SInt16 inHour, SInt16 inMinute)
{
    LongDateRec date;
    std::memset(&date, 0, sizeof date);
    date.ld.year = inYear;
    date.ld.month = inMonth;
    date.ld.day = inDay;
    date.ld.hour = inHour;
    date.ld.minute = inMinute;
    return Seconds(date);
}

LongDateTime Date(const char* inDate)
{
    return StringToSeconds(inDate, "12:00 am");
}

LongDateTime Time(const char* inTime)
{
    return StringToSeconds("1/2/05", inTime);
}

std::string Version(NumVersion inVersion)
{
    Pascal pascal;
    char c[32];
    CHECK(NumVersionToString(&inVersion, pascal) == noErr);
    CHECK(NumVersionToString(&inVersion, c) == noErr);
    CHECK(pascal.Text() == c);
    return c;
}

} // namespace

LAMPBLACK_INTERPOSE void UppercaseText(void* textPtr, SInt16 len, ScriptCode script)
{
    gUppercased.push_back({ { static_cast<char*>(textPtr), static_cast<size_t>(len) }, len, script });
    Next<decltype(UppercaseText)>("UppercaseText")(textPtr, len, script);
}

LAMPBLACK_INTERPOSE void LowercaseText(void* textPtr, SInt16 len, ScriptCode script)
{
    gLowercased.push_back({ { static_cast<char*>(textPtr), static_cast<size_t>(len) }, len, script });
    Next<decltype(LowercaseText)>("LowercaseText")(textPtr, len, script);
}

LAMPBLACK_INTERPOSE SInt16 IdenticalText(const void* aPtr, const void* bPtr, SInt16 aLen, SInt16 bLen,
                                         Handle itl2Handle)
{
    gCompared.push_back({ aLen, bLen });
    return Next<decltype(IdenticalText)>("IdenticalText")(aPtr, bPtr, aLen, bLen, itl2Handle);
}

LAMPBLACK_INTERPOSE void LongDateToSeconds(const LongDateRec* lDate, LongDateTime* lSecs)
{
    gDate = *lDate;
    Next<decltype(LongDateToSeconds)>("LongDateToSeconds")(lDate, lSecs);
}

LAMPBLACK_INTERPOSE CFStringRef CSCopyUserName(Boolean useShortName)
{
    ++gUserNames;
    gCalls.push_back(useShortName ? "short name" : "long name");
    return gNamesUser ? Next<decltype(CSCopyUserName)>("CSCopyUserName")(useShortName) : nullptr;
}

LAMPBLACK_INTERPOSE StringHandle GetString(SInt16 stringID)
{
    gCalls.push_back("GetString");
    return Next<decltype(GetString)>("GetString")(stringID);
}

LAMPBLACK_INTERPOSE Handle Get1Resource(ResType theType, SInt16 theID)
{
    gCalls.push_back("Get1Resource");
    return Next<decltype(Get1Resource)>("Get1Resource")(theType, theID);
}

LAMPBLACK_INTERPOSE void ReleaseResource(Handle theResource)
{
    gCalls.push_back("ReleaseResource");
    Next<decltype(ReleaseResource)>("ReleaseResource")(theResource);
}

LAMPBLACK_INTERPOSE void HSetState(Handle h, SInt8 flags)
{
    gState = flags;
    Next<decltype(HSetState)>("HSetState")(h, flags);
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

// --- Numbers

TEST_CASE("CStringToFloat32: thousandths, with the leading zeros of the fraction lost")
{
    CHECK(CStringToFloat32("2.5") == 2.5f);
    CHECK(CStringToFloat32("2.05") == 2.5f);
    CHECK(CStringToFloat32("1.05") == 1.5f);
    CHECK(CStringToFloat32("2.125") == 2.125f);
    CHECK(CStringToFloat32("2.25") == 2.25f);
    CHECK(CStringToFloat32("-3.25") == -3.25f);
    CHECK(CStringToFloat32("7") == 7.0f);
    CHECK(CStringToFloat32("1.100") == 1.1f);
    CHECK(CStringToFloat32("1.0") == 1.0f);
}

TEST_CASE("CStringToFloat32: a fourth digit is not cut")
{
    CHECK(CStringToFloat32("1.1234") == 2.234f);
}

TEST_CASE("CStringToFloat32: the sign is that of the text, not of the whole part")
{
    CHECK(CStringToFloat32("-0.5") == -0.5f);
    CHECK(CStringToFloat32("  -2.5") == -2.5f);
    CHECK(CStringToFloat32("- 2") == 0.0f);
    CHECK(CStringToFloat32("1.-5") == 0.5f); // a negative fraction counts hundreds of thousandths
    CHECK(CStringToFloat32("1.-25") == -1.5f);
}

TEST_CASE("CStringToFloat32: any one character separates")
{
    CHECK(CStringToFloat32("2,5") == 2.5f);
    CHECK(CStringToFloat32("2 5") == 2.5f);
    CHECK(CStringToFloat32("2x5") == 2.5f);
    CHECK(CStringToFloat32("2xx5") == 2.0f);
}

TEST_CASE("CStringToFloat32: what is no number is 0; numbers beyond any measure do no harm")
{
    CHECK(CStringToFloat32("") == 0.0f);
    CHECK(CStringToFloat32("abc") == 0.0f);
    CHECK(CStringToFloat32(".5") == 0.0f);
    CHECK(CStringToFloat32(nullptr) == 0.0f);
    CHECK(CStringToFloat32("9999999999999999999999.9999999999999999999999") > 9e18f);
    CHECK(CStringToFloat32("-9999999999999999999999") < -9e18f);
    CHECK(CStringToFloat32((std::string(5000, 'x')).c_str()) == 0.0f);
}

TEST_CASE("CommaPString: thousands")
{
    CHECK(Grouped("123") == "123");
    CHECK(Grouped("1234") == "1,234");
    CHECK(Grouped("123456") == "123,456");
    CHECK(Grouped("1234567") == "1,234,567");
    CHECK(Grouped("-1234") == "-1,234");
    CHECK(Grouped("-123") == "-123");
    CHECK(Grouped("") == "");
}

TEST_CASE("CommaPString: anything but a digit starts the count anew, a decimal point too")
{
    CHECK(Grouped("1234.5678") == "1,234.5,678");
    CHECK(Grouped("1,234") == "1,234");
    CHECK(Grouped("a1234b56789") == "a1,234b56,789");
    CommaPString(nullptr);
}

TEST_CASE("CommaPString: what passes 255 characters stays within them, with the length left in a byte")
{
    Pascal text(std::string(255, '1'));
    CommaPString(text);
    CHECK(text.IsWithin());
    CHECK(text.fBytes[0] == ((255 + 84) & 0xFF));
    CHECK(text.fBytes[4] == ',');
    CHECK(text.fBytes[255] == '1');
    CHECK(text.fBytes[252] == ',');
    CHECK(Grouped(std::string(191, '1')).size() == 191 + 63);
}

TEST_CASE("CommaString: a C string in place")
{
    char text[16] = "1234567";
    CommaString(text);
    CHECK(std::string(text) == "1,234,567");
    CommaString(nullptr);
}

// --- Dates

TEST_CASE("StringToSeconds: a date and an hour of the afternoon")
{
    CHECK(StringToSeconds("1/2/05", "3:04 pm") == SecondsOf(2005, 1, 2, 15, 4));
    CHECK(gDate.ld.hour == 15);
    CHECK(gDate.ld.era == 0);
    CHECK(gDate.ld.second == 0);
    CHECK(StringToSeconds("12/31/1999", "12:00 am") == SecondsOf(1999, 12, 31, 0, 0));
    CHECK(StringToSeconds("12/1/05", "11:59 PM") == SecondsOf(2005, 12, 1, 23, 59));
    CHECK(StringToSeconds("12/1/05", "9:07 ") == SecondsOf(2005, 12, 1, 9, 7));
}

TEST_CASE("StringToSeconds: the Pascal form")
{
    CHECK(StringToSeconds(Pascal("1/2/05"), Pascal("3:04 pm")) == SecondsOf(2005, 1, 2, 15, 4));
    CHECK(StringToSeconds(Pascal("1/2/05"), static_cast<ConstStr255Param>(nullptr)) == 0);
}

TEST_CASE("StringToSeconds: a month of two digits begins with 1, whatever is written")
{
    CHECK(Date("10/2/05") == SecondsOf(2005, 10, 2, 0, 0));
    Date("09/2/05");
    CHECK(gDate.ld.month == 19);
}

TEST_CASE("StringToSeconds: day and one-digit month are passed on as they are")
{
    Date("0/99/05");
    CHECK(gDate.ld.month == 0);
    CHECK(gDate.ld.day == 99);
    Date("x/y/05");
    CHECK(gDate.ld.month == 'x' - '0');
    CHECK(gDate.ld.day == 'y' - '0');
}

TEST_CASE("StringToSeconds: years")
{
    CHECK(Date("1/2/00") == 0);
    CHECK(Date("1/2/01") == 0);
    CHECK(Date("1/2/02") == SecondsOf(2002, 1, 2, 0, 0));
    CHECK(Date("1/2/99") == SecondsOf(2099, 1, 2, 0, 0));
    CHECK(Date("1/2/100") == SecondsOf(100, 1, 2, 0, 0));
    CHECK(Date("1/2/2100") == SecondsOf(2100, 1, 2, 0, 0));
    CHECK(Date("1/2/2101") == 0);
    CHECK(Date("1/2/-5") == 0);
    CHECK(Date("1/2/67541") == SecondsOf(2005, 1, 2, 0, 0)); // 16 bits of it
    CHECK(Date("1/2/99999999999999999999") == 0);
}

TEST_CASE("StringToSeconds: dates of another shape")
{
    for (const char* date :
         { "2-1-05", "", "1", "1/", "1/2", "1/2/", "12", "12/", "123/1/05", "1/234/05", "//" })
        CHECK(Date(date) == 0);
    CHECK(Date(nullptr) == 0);
    CHECK(StringToSeconds("1/2/05", static_cast<const char*>(nullptr)) == 0);
}

TEST_CASE("StringToSeconds: noon is handed on as hour 24, midnight as hour 0")
{
    CHECK(Time("12:30 pm") == SecondsOf(2005, 1, 3, 0, 30));
    CHECK(gDate.ld.hour == 24);
    Time("12:30 am");
    CHECK(gDate.ld.hour == 0);
    Time("11:30 x");
    CHECK(gDate.ld.hour == 11);
}

TEST_CASE("StringToSeconds: hours and minutes out of range")
{
    CHECK(StringToSeconds("12/1/05", "13:00 pm") == 0);
    CHECK(Time("0:30 am") == 0);
    CHECK(Time("3:60 pm") == 0);
    CHECK(Time("3:59 pm") != 0);
    CHECK(Time("99:00 am") == 0);
}

TEST_CASE("StringToSeconds: times of another shape")
{
    for (const char* time :
         { "", "3", "3:", "3:0", "3:04", "3:04pm", "3:4 pm", "12", "12:", "123:04 pm", "3.04 pm" })
        CHECK(Time(time) == 0);
}

// --- Four-character codes

TEST_CASE("OSTypeToCString, OSTypeToPString, CStringToOSType: each the other's inverse, as memory has it")
{
    OSType type = 0;
    std::memcpy(&type, "GAME", 4);
    char c[5];
    OSTypeToCString(type, c);
    CHECK(std::string(c) == "GAME");
    Pascal pascal;
    OSTypeToPString(type, pascal);
    CHECK(pascal.Text() == "GAME");
    CHECK(CStringToOSType("GAME") == type);
    CHECK(CStringToOSType("GAMES") == type);
    OSTypeToCString(0, c);
    CHECK(std::memcmp(c, "\0\0\0\0\0", 5) == 0);
    OSTypeToCString(type, nullptr);
    OSTypeToPString(type, nullptr);
}

TEST_CASE("CStringToOSType: short strings are padded with spaces; null and empty are 0")
{
    const auto bytes = [](const char* inText) {
        char text[5];
        OSTypeToCString(CStringToOSType(inText), text);
        return std::string(text);
    };
    CHECK(bytes("a") == "a   ");
    CHECK(bytes("ab") == "ab  ");
    CHECK(bytes("abc") == "abc ");
    CHECK(CStringToOSType(nullptr) == 0);
    const char* end = std::string_view("xyz").data() + 3; // nothing of ours lies behind this zero
    CHECK(CStringToOSType(end) == 0);
}

// --- Versions

TEST_CASE("NumVersionToString: stages, and parts that are left out")
{
    CHECK(Version({ 0x01, 0x00, 0x80, 0x00 }) == "1.0");
    CHECK(Version({ 0x01, 0x20, 0x80, 0x07 }) == "1.2");
    CHECK(Version({ 0x01, 0x00, 0x40, 0x03 }) == "1.0a3");
    CHECK(Version({ 0x01, 0x23, 0x60, 0x04 }) == "1.2.3b4");
    CHECK(Version({ 0x01, 0x03, 0x20, 0x00 }) == "1.0.3d0");
    CHECK(Version({ 0x01, 0x00, 0x55, 0x01 }) == "1.0?1");
}

TEST_CASE("NumVersionToString: the first and last number plainly, not as binary-coded decimals")
{
    CHECK(Version({ 0x10, 0x00, 0x60, 0x12 }) == "16.0b18");
    CHECK(Version({ 0xFF, 0xFF, 0x00, 0xFF }) == "255.15.15?255");
}

TEST_CASE("NumVersionToString: null")
{
    const NumVersion version = { 1, 0, 0x80, 0 };
    Pascal text("old");
    char c[8] = "old";
    CHECK(NumVersionToString(nullptr, text) == paramErr);
    CHECK(NumVersionToString(nullptr, c) == paramErr);
    CHECK(NumVersionToString(&version, static_cast<unsigned char*>(nullptr)) == paramErr);
    CHECK(NumVersionToString(&version, static_cast<char*>(nullptr)) == paramErr);
    CHECK(text.Text() == "old");
    CHECK(std::string(c) == "old");
}

TEST_CASE("VersionCompare: field by field, the first difference decides")
{
    const NumVersion version = { 0x12, 0x34, 0x60, 0x45 }; // 12.3.4b45
    CHECK(VersionCompare(&version, 12, 3, 4, 0x60, 45) == 0);
    CHECK(VersionCompare(&version, 13, 0, 0, 0, 0) == -1);
    CHECK(VersionCompare(&version, 11, 99, 99, 0x80, 99) == 1);
    CHECK(VersionCompare(&version, 12, 4, 0, 0, 0) == -1);
    CHECK(VersionCompare(&version, 12, 3, 3, 0x80, 99) == 1);
    CHECK(VersionCompare(&version, 12, 3, 4, 0x80, 0) == -1);
    CHECK(VersionCompare(&version, 12, 3, 4, 0x40, 99) == 1);
    CHECK(VersionCompare(&version, 12, 3, 4, 0x60, 46) == -1);
    CHECK(VersionCompare(&version, 12, 3, 4, 0x60, -1) == 1);
    CHECK(VersionCompare(nullptr, 1, 2, 3, 4, 5) == 0);
}

TEST_CASE("VersionCompare: two records, a null one being 0.0 final")
{
    const NumVersion older = { 0x09, 0x99, 0x80, 0x99 }, newer = { 0x10, 0x00, 0x20, 0x01 };
    const NumVersion none = { 0, 0, 0x80, 0 }, beta = { 0, 0, 0x60, 0 };
    CHECK(VersionCompare(&older, &newer) == -1);
    CHECK(VersionCompare(&newer, &older) == 1);
    CHECK(VersionCompare(&older, &older) == 0);
    CHECK(VersionCompare(&none, nullptr) == 0);
    CHECK(VersionCompare(&beta, nullptr) == -1);
    CHECK(VersionCompare(nullptr, &older) == 0);
}

TEST_CASE("VersionCompareToCurrentFile: 'vers' 1 of the current file, released again")
{
    gCalls.clear();
    CHECK(VersionCompareToCurrentFile(1, 2, 3, 0x60, 45) == 0);
    CHECK(gCalls == std::vector<std::string>{ "Get1Resource", "ReleaseResource" });
    CHECK(VersionCompareToCurrentFile(1, 2, 4, 0, 0) == -1);
    CHECK(VersionCompareToCurrentFile(1, 2, 3, 0x40, 0) == 1);
    const SInt16 saved = CurResFile();
    UseResFile(0); // the system's, which has none
    CHECK(VersionCompareToCurrentFile(0, 0, 0, 0, 0) == -1);
    UseResFile(saved);
}

// --- Strings from resources

TEST_CASE("GetCString, GetPascalString: a 'STR ' resource")
{
    char c[256];
    Pascal pascal;
    CHECK(GetCString(128, c) == noErr);
    CHECK(std::string(c) == "Hello");
    CHECK(GetPascalString(128, pascal, true) == noErr);
    CHECK(pascal.Text() == "Hello");
    CHECK(GetPascalString(131, pascal, false) == noErr);
    CHECK(pascal.Text() == std::string("A\0BCD", 5));
}

TEST_CASE("GetPascalString: all files by GetString, the current one by Get1Resource")
{
    Pascal text;
    gCalls.clear();
    GetPascalString(128, text, true);
    REQUIRE(!gCalls.empty());
    CHECK(gCalls[0] == "GetString");
    gCalls.clear();
    GetPascalString(128, text, false);
    CHECK(gCalls == std::vector<std::string>{ "Get1Resource" });
    const SInt16 saved = CurResFile();
    UseResFile(0);
    CHECK(GetPascalString(128, text, false) == paramErr);
    UseResFile(saved);
}

TEST_CASE("GetCString, GetPascalString: no such resource leaves an empty string")
{
    char c[] = "old";
    Pascal pascal("old");
    CHECK(GetCString(999, c) == paramErr);
    CHECK(GetPascalString(999, pascal, true) == paramErr);
    CHECK(std::string(c).empty());
    CHECK(pascal.Text().empty());
    CHECK(GetCString(128, nullptr) == paramErr);
    CHECK(GetPascalString(128, nullptr, true) == paramErr);
}

TEST_CASE("GetCString: a resource shorter than its length byte says ends where it ends")
{
    char c[256];
    CHECK(GetCString(129, c) == noErr);
    CHECK(std::string(c) == "Hi");
    CHECK(GetCString(130, c) == noErr);
    CHECK(std::string(c).empty());
}

TEST_CASE("GetCString: the handle's state is as before")
{
    char c[256];
    const Handle string = GetResource('STR ', 128);
    for (const bool isPurgeable : { false, true }) {
        HNoPurge(string);
        if (isPurgeable)
            HPurge(string);
        const SInt8 state = HGetState(string);
        gState = ~state;
        GetCString(128, c);
        CHECK(gState == state);
        CHECK(HGetState(string) == state);
    }
    HNoPurge(string);
}

TEST_CASE("GetUserNameMachineName: the short name, asked for once; the machine's name is left alone")
{
    CHECK(InFreshProcess([] {
              Pascal user, machine("mine");
              if (GetUserNameMachineName(user, machine) != noErr || machine.Text() != "mine")
                  return 1;
              if (GetUserNameMachineName(user, nullptr) != noErr || user.Text().empty())
                  return 2;
              return gUserNames == 1 && gCalls.back() == "short name" ? 0 : 3;
          }) == 0);
}

TEST_CASE("GetUserNameMachineName: \"You\" when there is no name")
{
    CHECK(InFreshProcess([] {
              gNamesUser = false;
              Pascal user("old");
              const OSErr err = GetUserNameMachineName(user, nullptr);
              GetUserNameMachineName(user, nullptr);
              return err == noErr && user.Text() == "You" && gUserNames == 1 ? 0 : 1;
          }) == 0);
}

TEST_CASE("GetUserNameMachineName: without a user name it asks nobody")
{
    CHECK(InFreshProcess([] {
              Pascal machine("mine");
              const bool right = GetUserNameMachineName(nullptr, machine) == noErr &&
                                 GetUserNameMachineName(nullptr, nullptr) == paramErr;
              return right && gUserNames == 0 && machine.Text() == "mine" ? 0 : 1;
          }) == 0);
}
