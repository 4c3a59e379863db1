// Changing strings.
#include "StringTest.h"

using namespace lampblack::foundation;

namespace {

std::string Changed(std::string_view inUtf8, void (*inCall)(CFMutableStringRef, CFLocaleRef))
{
    const StMutable text(inUtf8);
    inCall(text, nullptr);
    return Utf8Of(text);
}

} // namespace

TEST_CASE("CFStringInsert, CFStringDelete, CFStringReplace: within the string")
{
    const StMutable text("abc");
    CFStringInsert(text, 1, CFSTR("xy"));
    CHECK(Utf8Of(text) == "axybc");
    CFStringInsert(text, 5, CFSTR("!"));
    CHECK(Utf8Of(text) == "axybc!");
    CFStringDelete(text, CFRangeMake(1, 2));
    CHECK(Utf8Of(text) == "abc!");
    CFStringReplace(text, CFRangeMake(0, 3), CFSTR("z"));
    CHECK(Utf8Of(text) == "z!");
    CFStringReplaceAll(text, CFSTR("new"));
    CHECK(Utf8Of(text) == "new");
}

TEST_CASE("CFStringAppend: a string to itself")
{
    const StMutable text("0123456789");
    for (int i = 0; i < 6; ++i)
        CFStringAppend(text, text);
    CHECK(CFStringGetLength(text) == 640);
    CFStringReplace(text, CFRangeMake(5, 630), text);
    CHECK(CFStringGetLength(text) == 650);
    CHECK(CFStringGetCharacterAtIndex(text, 649) == '9');
    CHECK(CFStringGetCharacterAtIndex(text, 5) == '0');
}

TEST_CASE("CFStringInsert and its kin: what is out of range, constant or gone is not changed")
{
    const StMutable text("abc");
    CFStringInsert(text, 4, CFSTR("x"));
    CFStringInsert(text, -1, CFSTR("x"));
    CFStringInsert(text, 0, nullptr);
    CFStringDelete(text, CFRangeMake(2, 2));
    CFStringReplace(text, CFRangeMake(0, 1), EndedString());
    CFStringTrim(text, nullptr);
    CFStringPad(text, CFSTR(""), 10, 0);
    CFStringPad(text, CFSTR("x"), 10, 1);
    CFStringPad(text, CFSTR("x"), -1, 0);
    CFStringPad(text, CFSTR("x"), 0x7FFFFFFFFFFFFFFF, 0);
    CHECK(Utf8Of(text) == "abc");
    const auto fixed = (CFMutableStringRef)CFSTR("fixed");
    CFStringDelete(fixed, CFRangeMake(0, 1));
    CFStringUppercase(fixed, nullptr);
    CFStringTrimWhitespace(fixed);
    CHECK(Utf8Of(fixed) == "fixed");
    CFStringDelete(nullptr, CFRangeMake(0, 0));
    CFStringUppercase(EndedString(), nullptr);
}

TEST_CASE("CFStringUppercase and its kin: all of Unicode, the length may change")
{
    CHECK(Changed("abc \xC3\xA9\xC3\x9F \xCF\x89", CFStringUppercase) == "ABC \xC3\x89SS \xCE\xA9");
    CHECK(Changed("ABC \xC3\x89 \xCE\xA9", CFStringLowercase) == "abc \xC3\xA9 \xCF\x89");
    CHECK(Changed("abc[`{z", CFStringUppercase) == "ABC[`{Z");
    CHECK(Changed("the qUICK \xC3\xA9tude don't", CFStringCapitalize) == "The Quick \xC3\x89tude Don't");
    CHECK(Changed("", CFStringCapitalize) == "");
    CHECK(Changed(std::string(100, 'x') + std::string("\xEF\xAC\x83"), CFStringUppercase) ==
          std::string(100, 'X') + "FFI");
}

TEST_CASE("CFStringTrim, CFStringTrimWhitespace: from both ends")
{
    const StMutable text("--a--b----");
    CFStringTrim(text, CFSTR("--"));
    CHECK(Utf8Of(text) == "a--b");
    const StMutable blank("\t \xE2\x80\x83x y\r\n");
    CFStringTrimWhitespace(blank);
    CHECK(Utf8Of(blank) == "x y");
    const StMutable only(" \n ");
    CFStringTrimWhitespace(only);
    CHECK(Utf8Of(only) == "");
}

TEST_CASE("CFStringPad: cuts or repeats the padding from a place in it")
{
    const StMutable text("abc");
    CFStringPad(text, CFSTR("123"), 8, 1);
    CHECK(Utf8Of(text) == "abc23123");
    CFStringPad(text, nullptr, 2, 0);
    CHECK(Utf8Of(text) == "ab");
}
