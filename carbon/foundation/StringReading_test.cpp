// What is in strings.
#include "StringTest.h"

#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

using namespace lampblack::foundation;

namespace {

std::string Bytes(std::string_view inUtf8, CFStringEncoding inEncoding, UInt8 inLoss = 0,
                  bool inExternal = false)
{
    const StString string(StringFrom(inUtf8));
    UInt8 buffer[64];
    CFIndex used = -1;
    CFStringGetBytes(string, Whole(string), inEncoding, inLoss, inExternal, buffer, sizeof buffer, &used);
    return std::string((const char*)buffer, (size_t)used);
}

SInt32 IntOf(std::string_view inText)
{
    return CFStringGetIntValue(StString(StringFrom(inText)));
}

double DoubleOf(std::string_view inText)
{
    return CFStringGetDoubleValue(StString(StringFrom(inText)));
}

} // namespace

TEST_CASE("CFStringGetCString: whole text and a zero, or false and an empty string")
{
    const StString string(StringFrom("caf\xC3\xA9"));
    char text[8] = "xxxxxxx";
    CHECK(CFStringGetCString(string, text, 5, kCFStringEncodingMacRoman));
    CHECK(std::strcmp(text, "caf\x8E") == 0);
    CHECK_FALSE(CFStringGetCString(string, text, 4, kCFStringEncodingMacRoman));
    CHECK(text[0] == 0);
    CHECK(CFStringGetCString(string, text, 6, kCFStringEncodingUTF8));
    CHECK_FALSE(CFStringGetCString(string, text, 8, kCFStringEncodingASCII));
    CHECK_FALSE(CFStringGetCString(string, text, 8, kCFStringEncodingUTF16));
    CHECK_FALSE(CFStringGetCString(string, text, 8, 0x7777));
    CHECK_FALSE(CFStringGetCString(nullptr, text, 8, 0));
    CHECK_FALSE(CFStringGetCString(string, nullptr, 8, 0));
    CHECK_FALSE(CFStringGetCString(string, text, 0, 0));
    CHECK_FALSE(CFStringGetCString(string, text, -1, 0));
    CHECK(CFStringGetCString(CFSTR(""), text, 1, 0));
}

TEST_CASE("CFStringGetPascalString: the length byte counts in the buffer, and 255 is the most")
{
    const StString string(StringFrom("abc"));
    Str255 text = "\7xxxxxxx";
    CHECK(CFStringGetPascalString(string, text, 4, kCFStringEncodingMacRoman));
    CHECK(std::memcmp(text, "\3abcx", 5) == 0);
    CHECK_FALSE(CFStringGetPascalString(string, text, 3, kCFStringEncodingMacRoman));
    CHECK(text[0] == 0);
    std::vector<unsigned char> room(400, 1);
    const StString longest(StringFrom(std::string(255, 'a'))), longer(StringFrom(std::string(256, 'a')));
    CHECK(CFStringGetPascalString(longest, room.data(), 400, 0));
    CHECK(room[0] == 255);
    CHECK(room[256] == 1);
    CHECK_FALSE(CFStringGetPascalString(longer, room.data(), 400, 0));
    CHECK_FALSE(CFStringGetPascalString(string, nullptr, 400, 0));
    CHECK_FALSE(CFStringGetPascalString(string, text, 0, 0));
    CHECK_FALSE(CFStringGetPascalString(EndedString(), text, 256, 0));
}

TEST_CASE("CFStringGetBytes: what an encoding lacks becomes the loss byte or ends the conversion")
{
    using namespace std::string_literals;
    CHECK(Bytes("a\xE4\xB8\xAD\xF0\x9F\x98\x80z", kCFStringEncodingMacRoman, '?') == "a??z");
    CHECK(Bytes("a\xE4\xB8\xADz", kCFStringEncodingMacRoman) == "a");
    CHECK(Bytes("cafe\xCC\x81", kCFStringEncodingMacRoman) == "caf\x8E");
    CHECK(Bytes("cafe\xCC\x81", kCFStringEncodingISOLatin1) == "caf\xE9");
    CHECK(Bytes("\xE2\x82\xAC", kCFStringEncodingWindowsLatin1) == "\x80");
    CHECK(Bytes("\xC2\x80", kCFStringEncodingWindowsLatin1) == "");
    CHECK(Bytes("a\xC3\xA9", kCFStringEncodingUTF16) == "a\0\xE9\0"s);
    CHECK(Bytes("a", kCFStringEncodingUTF16, 0, true) == "\xFF\xFE"
                                                         "a\0"s);
    CHECK(Bytes("a", kCFStringEncodingUTF16BE, 0, true) == "\0a"s);
    CHECK(Bytes("\xF0\x9F\x98\x80", kCFStringEncodingUTF32BE) == "\0\1\xF6\0"s);
    CHECK(Bytes("\xF0\x9F\x98\x80", kCFStringEncodingUTF8) == "\xF0\x9F\x98\x80");
    CHECK(Bytes("a", kCFStringEncodingUTF8, 0, true) == "a");
}

TEST_CASE("CFStringGetBytes: only whole characters, and the count of units that they were")
{
    const StString string(StringFrom("a\xF0\x9F\x98\x80"
                                     "b"));
    UInt8 buffer[8];
    CFIndex used = 0;
    const CFRange all = Whole(string);
    CHECK(CFStringGetBytes(string, all, kCFStringEncodingUTF8, 0, false, buffer, 4, &used) == 1);
    CHECK(used == 1);
    CHECK(CFStringGetBytes(string, all, kCFStringEncodingUTF8, 0, false, buffer, 5, &used) == 3);
    CHECK(used == 5);
    CHECK(CFStringGetBytes(string, all, kCFStringEncodingUTF8, 0, false, nullptr, 0, &used) == 4);
    CHECK(used == 6);
    CHECK(CFStringGetBytes(string, all, kCFStringEncodingUTF16, 0, true, buffer, 1, &used) == 0);
    CHECK(used == 0);
    const UniChar lone = 0xD800;
    const StString broken(CFStringCreateWithCharacters(nullptr, &lone, 1));
    CHECK(CFStringGetBytes(broken, Whole(broken), kCFStringEncodingUTF8, 0, false, buffer, 8, &used) == 0);
    CHECK(CFStringGetBytes(broken, Whole(broken), kCFStringEncodingUTF16, 0, false, buffer, 8, &used) == 1);
}

TEST_CASE("CFStringGetBytes: ranges, encodings, lengths and references that are wrong convert nothing")
{
    const CFStringRef string = CFSTR("abc");
    UInt8 buffer[8];
    CFIndex used = 5;
    CHECK(CFStringGetBytes(string, CFRangeMake(1, 3), 0, 0, false, buffer, 8, &used) == 0);
    CHECK(used == 0);
    CHECK(CFStringGetBytes(string, CFRangeMake(-1, 1), 0, 0, false, buffer, 8, &used) == 0);
    CHECK(CFStringGetBytes(string, CFRangeMake(0, 3), 0x7777, 0, false, buffer, 8, &used) == 0);
    CHECK(CFStringGetBytes(string, CFRangeMake(0, 3), 0, 0, false, buffer, -1, &used) == 0);
    CHECK(CFStringGetBytes(nullptr, CFRangeMake(0, 0), 0, 0, false, buffer, 8, nullptr) == 0);
}

TEST_CASE("CFStringGetBytes: every byte of Mac Roman, Windows Latin 1 and ISO Latin 1 comes back")
{
    for (const CFStringEncoding encoding :
         { kCFStringEncodingMacRoman, kCFStringEncodingWindowsLatin1, kCFStringEncodingISOLatin1 })
        for (unsigned value = 0; value < 256; ++value) {
            const UInt8 byte = (UInt8)value;
            const StString string(CFStringCreateWithBytes(nullptr, &byte, 1, encoding, false));
            UInt8 back = 0;
            REQUIRE(CFStringGetBytes(string, CFRangeMake(0, 1), encoding, 0, false, &back, 1, nullptr) == 1);
            REQUIRE(back == byte);
        }
}

TEST_CASE("CFStringGetCharacters: a range within the string")
{
    const CFStringRef string = CFSTR("abcd");
    UniChar units[4] = {};
    CFStringGetCharacters(string, CFRangeMake(1, 2), units);
    CHECK(units[0] == 'b');
    CHECK(units[2] == 0);
    CFStringGetCharacters(string, CFRangeMake(3, 2), units);
    CFStringGetCharacters(string, CFRangeMake(0, 1), nullptr);
    CFStringGetCharacters(nullptr, CFRangeMake(0, 1), units);
    CHECK(units[0] == 'b');
    CHECK(CFStringGetCharacterAtIndex(string, 3) == 'd');
    CHECK(CFStringGetCharacterAtIndex(string, 4) == 0);
    CHECK(CFStringGetCharacterAtIndex(string, -1) == 0);
    CHECK(CFStringGetLength(EndedString()) == 0);
}

TEST_CASE("CFStringGetCStringPtr: ASCII in a constant string, else null")
{
    CHECK(std::strcmp(CFStringGetCStringPtr(CFSTR("plain"), kCFStringEncodingMacRoman), "plain") == 0);
    CHECK(std::memcmp(CFStringGetPascalStringPtr(CFSTR("plain"), 0), "\5plain", 6) == 0);
    CHECK(CFStringGetCStringPtr(CFSTR("plain"), kCFStringEncodingUTF16) == nullptr);
    CHECK(CFStringGetCStringPtr(CFSTR("caf\xC3\xA9"), kCFStringEncodingMacRoman) == nullptr);
    CHECK(CFStringGetCStringPtr(StMutable("abc"), 0) == nullptr);
    const StString longer(StringFrom(std::string(256, 'a')));
    CHECK(CFStringGetPascalStringPtr(longer, 0) == nullptr);
    CHECK(std::strlen(CFStringGetCStringPtr(longer, 0)) == 256);
    CHECK(CFStringGetCStringPtr(nullptr, 0) == nullptr);
    CHECK(CFStringGetCharactersPtr(nullptr) == nullptr);
}

TEST_CASE("CFStringGetMaximumSizeForEncoding: holds the largest text of that many units")
{
    CHECK(CFStringGetMaximumSizeForEncoding(10, kCFStringEncodingMacRoman) == 10);
    CHECK(CFStringGetMaximumSizeForEncoding(10, kCFStringEncodingUTF8) == 30);
    CHECK(CFStringGetMaximumSizeForEncoding(10, kCFStringEncodingUTF16) == 20);
    CHECK(CFStringGetMaximumSizeForEncoding(10, 0x7777) == kCFNotFound);
    CHECK(CFStringGetMaximumSizeForEncoding(-1, 0) == kCFNotFound);
    CHECK(CFStringGetMaximumSizeForEncoding(std::numeric_limits<CFIndex>::max(), kCFStringEncodingUTF8) ==
          kCFNotFound);
    CHECK(CFStringGetSystemEncoding() == kCFStringEncodingMacRoman);
    CHECK(CFStringIsEncodingAvailable(kCFStringEncodingUTF8));
    CHECK_FALSE(CFStringIsEncodingAvailable(0x7777));
}

TEST_CASE("CFStringGetIntValue: blanks, a sign and digits; too large is the largest")
{
    CHECK(IntOf(" \t42x") == 42);
    CHECK(IntOf("-17") == -17);
    CHECK(IntOf("+5") == 5);
    CHECK(IntOf("+-5") == 0);
    CHECK(IntOf("abc") == 0);
    CHECK(IntOf("") == 0);
    CHECK(IntOf("99999999999") == 2147483647);
    CHECK(IntOf("-99999999999") == -2147483647 - 1);
    CHECK(CFStringGetIntValue(nullptr) == 0);
}

TEST_CASE("CFStringGetDoubleValue: a point and an exponent; no words")
{
    CHECK(DoubleOf(" 2.5e2 ") == 250.0);
    CHECK(DoubleOf("-.5") == -0.5);
    CHECK(DoubleOf("+3") == 3.0);
    CHECK(DoubleOf("1e999") == HUGE_VAL);
    CHECK(DoubleOf("-1e999") == -HUGE_VAL);
    CHECK(DoubleOf("1e-999") == 0.0);
    CHECK(DoubleOf("0." + std::string(400, '0') + "1") == 0.0);
    CHECK(DoubleOf(std::string(400, '9') + ".5") == HUGE_VAL);
    CHECK(DoubleOf("inf") == 0.0);
    CHECK(DoubleOf("nan") == 0.0);
    CHECK(DoubleOf("2.e5x") == 200000.0);
    CHECK(CFStringGetDoubleValue(nullptr) == 0.0);
}
