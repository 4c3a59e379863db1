// Mac Roman, Unicode and UTF-8, and the readers of big-endian bytes.
#include <foundation/BigEndian.h>
#include <foundation/MacRoman.h>

#include <doctest/doctest.h>

using namespace lampblack::foundation;

TEST_CASE("MacRomanToUnicode: every byte comes back from Unicode")
{
    for (unsigned byte = 0; byte < 256; ++byte) {
        UInt8 back = 0;
        REQUIRE(UnicodeToMacRoman(MacRomanToUnicode((UInt8)byte), &back));
        REQUIRE(back == byte);
    }
    CHECK(MacRomanToUnicode(0x8E) == 0x00E9);
    CHECK(MacRomanToUnicode(0xDB) == 0x20AC);
    UInt8 byte = 7;
    CHECK_FALSE(UnicodeToMacRoman(0x4E2D, &byte));
    CHECK_FALSE(UnicodeToMacRoman(0x1F600, &byte));
    CHECK(byte == 7);
}

TEST_CASE("MacRomanFromUtf8: combining accents compose, what is missing becomes '?'")
{
    CHECK(MacRomanFromUtf8("caf\xC3\xA9") == "caf\x8E");
    CHECK(MacRomanFromUtf8("cafe\xCC\x81") == "caf\x8E");
    CHECK(MacRomanFromUtf8("n\xCC\x83"
                           "o") == "\x96o");
    CHECK(MacRomanFromUtf8("x\xCC\x81") == "x?");
    std::string text;
    CHECK_FALSE(MacRomanFromUtf8Exactly("a\xE4\xB8\xAD\xFF", &text));
    CHECK(text == "a??");
    CHECK(MacRomanFromUtf8Exactly("", &text));
}

TEST_CASE("Utf8FromPascal: the length byte rules; null is empty")
{
    CHECK(Utf8FromPascal((ConstStr255Param) "\3\x8E"
                                            "bc!") == "\xC3\xA9"
                                                      "bc");
    CHECK(Utf8FromPascal(nullptr).empty());
}

TEST_CASE("NextUtf8: overlong, surrogate, cut-off and stray bytes are one U+FFFD each and advance")
{
    for (const std::string_view bad :
         { "\xC0\x80", "\xED\xA0\x80", "\xE4\xB8", "\x80", "\xF8\x88", "\xF4\x90\x80\x80" }) {
        size_t offset = 0;
        CHECK(NextUtf8(bad, &offset) == 0xFFFD);
        CHECK(offset == 1);
        CHECK_FALSE(IsValidUtf8(bad));
    }
    CHECK(IsValidUtf8("a\xEF\xBF\xBD\xF0\x9F\x98\x80"));
}

TEST_CASE("Utf16FromUtf8, Utf8FromUtf16: pairs go both ways, a lone surrogate does not")
{
    const std::string text = "a\xC3\xA9\xE4\xB8\xAD\xF0\x9F\x98\x80";
    CHECK(Utf16FromUtf8(text) == u"a\u00E9\u4E2D\U0001F600");
    CHECK(Utf8FromUtf16(Utf16FromUtf8(text)) == text);
    const char16_t lone[] = { 0xD800, 'x' };
    CHECK(Utf8FromUtf16({ lone, 2 }) == "\xEF\xBF\xBDx");
}

TEST_CASE("EqualIgnoringCase: letters with accents too, but accents count")
{
    CHECK(EqualIgnoringCase("Caf\x8E", "cAF\x83"));
    CHECK(EqualIgnoringCase("\xCF", "\xCE"));
    CHECK_FALSE(EqualIgnoringCase("e", "\x8E"));
    CHECK_FALSE(EqualIgnoringCase("a", "ab"));
}

TEST_CASE("PascalFromMacRoman: what is longer is cut")
{
    Str255 text;
    PascalFromMacRoman("abcdef", text, 3);
    CHECK(std::string((const char*)text, 4) == "\3abc");
    PascalFromMacRoman(std::string(300, 'x'), text);
    CHECK(text[0] == 255);
}

TEST_CASE("BigEndianReader: a field that does not fit reads as zero and ends the reading")
{
    const uint8_t bytes[] = { 0x12, 0x34, 0xFF, 0xFE, 3, 'a', 'b' };
    BigEndianReader reader(bytes);
    CHECK(reader.U16() == 0x1234);
    CHECK(reader.S16() == -2);
    CHECK(reader.Remaining() == 3);
    CHECK(reader.ReadPascal().empty());
    CHECK_FALSE(reader.Ok());
    CHECK(reader.U8() == 0);
    CHECK(reader.Remaining() == 0);
    CHECK_FALSE(BigEndianReader(Bytes(bytes), 8).Ok());
    CHECK(ReadBE32(bytes, 4) == 0);
    CHECK(ReadBE16(bytes, (size_t)-1) == 0);
    CHECK(Slice(bytes, 3, (size_t)-2).empty());
}
