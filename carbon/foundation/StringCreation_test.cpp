// Making strings.
#include "StringTest.h"

#include <cstdlib>
#include <cstring>
#include <vector>

using namespace lampblack::foundation;

namespace {

std::string From(const std::string& inBytes, CFStringEncoding inEncoding, bool inExternal = false)
{
    const StString string(CFStringCreateWithBytes(nullptr, (const UInt8*)inBytes.data(),
                                                  (CFIndex)inBytes.size(), inEncoding, inExternal));
    return Utf8Of(string);
}

} // namespace

TEST_CASE("CFStringCreateWithPascalString: Mac Roman by the length byte")
{
    const StString string(
        CFStringCreateWithPascalString(nullptr, (ConstStr255Param) "\4caf\x8E!", kCFStringEncodingMacRoman));
    CHECK(Utf8Of(string) == "caf\xC3\xA9");
    CHECK(CFStringGetLength(string) == 4);
    CHECK(CFStringCreateWithPascalString(nullptr, nullptr, 0) == nullptr);
    CHECK(CFStringCreateWithPascalString(nullptr, (ConstStr255Param) "\1a", 0x7777) == nullptr);
}

TEST_CASE("CFStringCreateWithCString: 8-bit encodings up to the zero")
{
    CHECK(Utf8Of(StString(CFStringCreateWithCString(nullptr, "\xDB", kCFStringEncodingMacRoman))) ==
          "\xE2\x82\xAC");
    CHECK(Utf8Of(StString(CFStringCreateWithCString(nullptr, "\x80", kCFStringEncodingWindowsLatin1))) ==
          "\xE2\x82\xAC");
    CHECK(Utf8Of(StString(CFStringCreateWithCString(nullptr, "\xE9", kCFStringEncodingISOLatin1))) ==
          "\xC3\xA9");
    CHECK(CFStringCreateWithCString(nullptr, "\xE9", kCFStringEncodingASCII) == nullptr);
    CHECK(CFStringCreateWithCString(nullptr, "\xE9", kCFStringEncodingUTF8) == nullptr);
    CHECK(CFStringCreateWithCString(nullptr, "a", kCFStringEncodingUTF16) == nullptr);
    CHECK(CFStringCreateWithCString(nullptr, "a", kCFStringEncodingInvalidId) == nullptr);
    CHECK(CFStringCreateWithCString(nullptr, nullptr, kCFStringEncodingASCII) == nullptr);
}

TEST_CASE("CFStringCreateWithBytes: byte orders and marks")
{
    using namespace std::string_literals;
    CHECK(From("a\0b\0"s, kCFStringEncodingUTF16) == "ab");
    CHECK(From("\0a\0b"s, kCFStringEncodingUTF16BE) == "ab");
    CHECK(From("a\0b\0"s, kCFStringEncodingUTF16LE) == "ab");
    CHECK(From("\xFF\xFE"
               "a\0"s,
               kCFStringEncodingUTF16, true) == "a");
    CHECK(From("\xFE\xFF\0a"s, kCFStringEncodingUTF16, true) == "a");
    CHECK(From("\0a"s, kCFStringEncodingUTF16, true) == "a");
    CHECK(From("\xEF\xBB\xBF"
               "a",
               kCFStringEncodingUTF8, true) == "a");
    CHECK(From("\xEF\xBB\xBF"
               "a",
               kCFStringEncodingUTF8) == "\xEF\xBB\xBF"
                                         "a");
    CHECK(From("\0\1\xF6\0"s, kCFStringEncodingUTF32BE) == "\xF0\x9F\x98\x80");
    CHECK(From("\0\xF6\1\0"s, kCFStringEncodingUTF32LE) == "\xF0\x9F\x98\x80");
    CHECK(From("", kCFStringEncodingUTF16) == "");
}

TEST_CASE("CFStringCreateWithBytes: bytes that are no text of the encoding make no string")
{
    using namespace std::string_literals;
    CHECK(From("\xC0\x80", kCFStringEncodingUTF8) == "no string");
    CHECK(From("abc", kCFStringEncodingUTF16) == "no string");
    CHECK(From("\0\x11\0\0"s, kCFStringEncodingUTF32BE) == "no string");
    CHECK(From("\0\0\xD8\0"s, kCFStringEncodingUTF32BE) == "no string");
    CHECK(CFStringCreateWithBytes(nullptr, nullptr, 3, 0, false) == nullptr);
    CHECK(CFStringCreateWithBytes(nullptr, (const UInt8*)"abc", -1, 0, false) == nullptr);
}

TEST_CASE("CFStringCreateWithCharacters: any units, a zero included")
{
    const UniChar units[] = { 'a', 0, 0xD800 };
    const StString string(CFStringCreateWithCharacters(nullptr, units, 3));
    CHECK(CFStringGetLength(string) == 3);
    CHECK(CFStringGetCharacterAtIndex(string, 2) == 0xD800);
    CHECK(CFStringCreateWithCharacters(nullptr, units, -1) == nullptr);
    CHECK(CFStringCreateWithCharacters(nullptr, nullptr, 1) == nullptr);
    CHECK(CFStringGetLength(StString(CFStringCreateWithCharacters(nullptr, nullptr, 0))) == 0);
}

TEST_CASE("CFStringCreateWithCStringNoCopy: the bytes go to the deallocator once there is a string")
{
    char* text = strdup("text");
    const StString string(CFStringCreateWithCStringNoCopy(nullptr, text, kCFStringEncodingASCII, nullptr));
    CHECK(Utf8Of(string) == "text");
    char own[] = "own";
    CHECK(Utf8Of(StString(CFStringCreateWithCStringNoCopy(nullptr, own, 0, kCFAllocatorNull))) == "own");
    char* bad = strdup("\xE9");
    CHECK(CFStringCreateWithCStringNoCopy(nullptr, bad, kCFStringEncodingASCII, nullptr) == nullptr);
    std::free(bad);
    auto* units = (UniChar*)std::malloc(2);
    units[0] = 'u';
    CHECK(Utf8Of(StString(CFStringCreateWithCharactersNoCopy(nullptr, units, 1, kCFAllocatorMalloc))) == "u");
    CHECK(Utf8Of(StString(CFStringCreateWithPascalStringNoCopy(nullptr, (ConstStr255Param) "\1p", 0,
                                                               kCFAllocatorNull))) == "p");
}

TEST_CASE("CFStringCreateCopy: a constant string is its own copy, a mutable one is copied")
{
    const StString constant(StringFrom("abc"));
    const StString copy(CFStringCreateCopy(nullptr, constant));
    CHECK((CFStringRef)copy == (CFStringRef)constant);
    const StMutable text("abc");
    const StString frozen(CFStringCreateCopy(nullptr, text));
    CFStringAppend(text, CFSTR("d"));
    CHECK(Utf8Of(frozen) == "abc");
    CHECK(CFStringCreateCopy(nullptr, nullptr) == nullptr);
    CHECK(CFStringCreateCopy(nullptr, EndedString()) == nullptr);
}

TEST_CASE("CFStringCreateWithSubstring: a range within the string, else none")
{
    const CFStringRef text = CFSTR("abcdef");
    CHECK(Utf8Of(StString(CFStringCreateWithSubstring(nullptr, text, CFRangeMake(2, 3)))) == "cde");
    CHECK(Utf8Of(StString(CFStringCreateWithSubstring(nullptr, text, CFRangeMake(6, 0)))) == "");
    for (const CFRange range : { CFRangeMake(4, 3), CFRangeMake(7, 0), CFRangeMake(-1, 2), CFRangeMake(0, -1),
                                 CFRangeMake(1, 0x7FFFFFFFFFFFFFFF) })
        CHECK(CFStringCreateWithSubstring(nullptr, text, range) == nullptr);
    CHECK(CFStringCreateWithSubstring(nullptr, nullptr, CFRangeMake(0, 0)) == nullptr);
}

TEST_CASE("CFStringCreateMutable: what passes its limit is cut off")
{
    const StReference<CFMutableStringRef> text(CFStringCreateMutable(nullptr, 5));
    CFStringAppendCString(text, "abc", kCFStringEncodingMacRoman);
    CFStringAppendPascalString(text, (ConstStr255Param) "\3def", kCFStringEncodingMacRoman);
    CHECK(Utf8Of(text) == "abcde");
    CFStringInsert(text, 0, CFSTR("x"));
    CHECK(Utf8Of(text) == "abcde");
    CHECK(Utf8Of(StMutable("abc", 2)) == "ab");
    CHECK(CFStringCreateMutable(nullptr, -1) == nullptr);
    CHECK(CFStringCreateMutableCopy(nullptr, 0, nullptr) == nullptr);
}

TEST_CASE("CFStringAppendCString: null text, unknown encodings and constant strings change nothing")
{
    const StMutable text("abc");
    CFStringAppendCString(text, nullptr, 0);
    CFStringAppendCString(text, "d", 0x7777);
    CFStringAppendPascalString(text, nullptr, 0);
    CFStringAppendCharacters(text, nullptr, 4);
    CFStringAppendCharacters(text, (const UniChar*)u"d", -1);
    CFStringAppend(text, nullptr);
    CHECK(Utf8Of(text) == "abc");
    CFStringAppendCString((CFMutableStringRef)CFSTR("fixed"), "d", 0);
    CHECK(Utf8Of(CFSTR("fixed")) == "fixed");
    CFStringAppendCString(nullptr, "d", 0);
    CFStringAppendCString(EndedString(), "d", 0);
}
