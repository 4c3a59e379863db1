// Comparing strings and finding one in another.
#include "StringTest.h"

using namespace lampblack::foundation;

namespace {

CFComparisonResult Order(std::string_view inA, std::string_view inB, CFOptionFlags inOptions = 0)
{
    return CFStringCompare(StString(StringFrom(inA)), StString(StringFrom(inB)), inOptions);
}

// "location+length" of what was found, or "none".
std::string Found(std::string_view inText, std::string_view inWanted, CFOptionFlags inOptions = 0)
{
    const CFRange range =
        CFStringFind(StString(StringFrom(inText)), StString(StringFrom(inWanted)), inOptions);
    if (range.location == kCFNotFound)
        return "none";
    return std::to_string(range.location) + "+" + std::to_string(range.length);
}

constexpr CFOptionFlags kCaseless = kCFCompareCaseInsensitive;
constexpr CFOptionFlags kLoose = kCFCompareNonliteral;

} // namespace

TEST_CASE("CFStringCompare: by units, then by length")
{
    CHECK(Order("abc", "abc") == kCFCompareEqualTo);
    CHECK(Order("abc", "abd") == kCFCompareLessThan);
    CHECK(Order("abcd", "abc") == kCFCompareGreaterThan);
    CHECK(Order("a", "A") == kCFCompareGreaterThan);
    CHECK(Order("", "a") == kCFCompareLessThan);
    CHECK(Order("\xC3\xA9", "e\xCC\x81") == kCFCompareGreaterThan);
}

TEST_CASE("CFStringCompare: case, accents and numbers as the options say")
{
    CHECK(Order("CAF\xC3\x89", "caf\xC3\xA9", kCaseless) == kCFCompareEqualTo);
    CHECK(Order("STRASSE",
                "stra\xC3\x9F"
                "e",
                kCaseless) == kCFCompareEqualTo);
    CHECK(Order("\xC3\xA9", "e\xCC\x81", kLoose) == kCFCompareEqualTo);
    CHECK(Order("\xC3\x89", "e\xCC\x81", kLoose | kCaseless) == kCFCompareEqualTo);
    CHECK(Order("a\xCC\xA3\xCC\x81", "a\xCC\x81\xCC\xA3", kLoose) == kCFCompareEqualTo);
    CHECK(Order("foo2", "foo25", kCFCompareNumerically) == kCFCompareLessThan);
    CHECK(Order("foo7", "foo25", kCFCompareNumerically) == kCFCompareLessThan);
    CHECK(Order("foo7", "foo25") == kCFCompareGreaterThan);
    CHECK(Order("FOO10b", "foo010a", kCFCompareNumerically | kCaseless) == kCFCompareGreaterThan);
    CHECK(Order("a007", "a7", kCFCompareNumerically) == kCFCompareEqualTo);
    CHECK(Order("a99999999999999999999998", "a99999999999999999999999", kCFCompareNumerically) ==
          kCFCompareLessThan);
    CHECK(Order("abc", "abc", kCFCompareLocalized) == kCFCompareEqualTo);
    CHECK(Order("abc", "abd", kCFCompareLocalized) == kCFCompareLessThan);
}

TEST_CASE("CFStringCompareWithOptions: a range of the first with all of the second")
{
    CHECK(CFStringCompareWithOptions(CFSTR("xabcx"), CFSTR("ABC"), CFRangeMake(1, 3), kCaseless) ==
          kCFCompareEqualTo);
    CHECK(CFStringCompare(nullptr, CFSTR("a"), 0) == kCFCompareLessThan);
    CHECK(CFStringCompare(CFSTR("a"), EndedString(), 0) == kCFCompareGreaterThan);
    CHECK(CFStringCompare(nullptr, nullptr, 0) == kCFCompareEqualTo);
}

TEST_CASE("CFStringFind: the first, the last, at the ends")
{
    CHECK(Found("abcabc", "bc") == "1+2");
    CHECK(Found("abcabc", "bc", kCFCompareBackwards) == "4+2");
    CHECK(Found("abcabc", "bc", kCFCompareAnchored) == "none");
    CHECK(Found("abcabc", "abc", kCFCompareAnchored) == "0+3");
    CHECK(Found("abcabc", "bc", kCFCompareAnchored | kCFCompareBackwards) == "4+2");
    CHECK(Found("abc", "abcd") == "none");
    CHECK(Found("abc", "") == "none");
    CHECK(Found("", "a") == "none");
}

TEST_CASE("CFStringFind: without regard to case or to how accents are written, ranges are of the string")
{
    CHECK(Found("Ein GRO\xC3\x9F", "gross", kCaseless) == "4+4");
    CHECK(Found("Ein GRO\xC3\x9F", "gros", kCaseless) == "none");
    CHECK(Found("cafe\xCC\x81!", "caf\xC3\xA9", kLoose) == "0+5");
    CHECK(Found("caf\xC3\xA9!", "cafe\xCC\x81", kLoose) == "0+4");
    CHECK(Found("cafe\xCC\x81!", "cafe", kLoose) == "none");
    CHECK(Found("cafe\xCC\x81!", "cafe") == "0+4");
    CHECK(Found("e\xCC\x81 E\xCC\x81", "\xC3\xA9", kLoose | kCaseless | kCFCompareBackwards) == "3+2");
    CHECK(Found("\xF0\x9F\x98\x80 X", "x", kCaseless) == "3+1");
}

TEST_CASE("CFStringFindWithOptions: only within the range; a null result is passed over")
{
    CFRange found = CFRangeMake(9, 9);
    CHECK(CFStringFindWithOptions(CFSTR("abcabc"), CFSTR("abc"), CFRangeMake(1, 5), 0, &found));
    CHECK(found.location == 3);
    CHECK_FALSE(CFStringFindWithOptions(CFSTR("abcabc"), CFSTR("abc"), CFRangeMake(1, 4), 0, &found));
    CHECK(found.location == 3);
    CHECK(CFStringFindWithOptions(CFSTR("abc"), CFSTR("c"), CFRangeMake(0, 3), 0, nullptr));
    CHECK_FALSE(CFStringFindWithOptions(CFSTR("abc"), CFSTR("c"), CFRangeMake(0, 4), 0, nullptr));
    CHECK_FALSE(CFStringFindWithOptions(nullptr, CFSTR("c"), CFRangeMake(0, 0), 0, nullptr));
    CHECK(CFStringFind(CFSTR("abc"), EndedString(), 0).location == kCFNotFound);
}

TEST_CASE("CFStringHasPrefix, CFStringHasSuffix: exactly at the end")
{
    CHECK(CFStringHasPrefix(CFSTR("toolkit"), CFSTR("tool")));
    CHECK_FALSE(CFStringHasPrefix(CFSTR("toolkit"), CFSTR("kit")));
    CHECK(CFStringHasSuffix(CFSTR("toolkit"), CFSTR("kit")));
    CHECK_FALSE(CFStringHasSuffix(CFSTR("toolkit"), CFSTR("tool")));
    CHECK_FALSE(CFStringHasPrefix(nullptr, CFSTR("a")));
}

TEST_CASE("CFStringFindAndReplace: every one within the range, none of them twice")
{
    const StMutable text("aaaaa-aaa");
    CHECK(CFStringFindAndReplace(text, CFSTR("aa"), CFSTR("b"), Whole(text), 0) == 3);
    CHECK(Utf8Of(text) == "bba-ba");
    CHECK(CFStringFindAndReplace(text, CFSTR("B"), CFSTR(""), CFRangeMake(1, 5), kCaseless) == 2);
    CHECK(Utf8Of(text) == "ba-a");
    const StMutable back("aaa");
    CHECK(CFStringFindAndReplace(back, CFSTR("aa"), CFSTR("b"), Whole(back), kCFCompareBackwards) == 1);
    CHECK(Utf8Of(back) == "ab");
    CHECK(CFStringFindAndReplace(back, CFSTR("b"), CFSTR("c"), Whole(back), kCFCompareAnchored) == 0);
    CHECK(CFStringFindAndReplace(back, CFSTR("b"), CFSTR("c"), CFRangeMake(0, 5), 0) == 0);
    CHECK(CFStringFindAndReplace((CFMutableStringRef)CFSTR("ab"), CFSTR("b"), CFSTR("c"), CFRangeMake(0, 2),
                                 0) == 0);
    CHECK(CFStringFindAndReplace(back, nullptr, CFSTR("c"), Whole(back), 0) == 0);
}
