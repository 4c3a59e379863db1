// Pascal and C strings.
#include <Carbon/MacMemory.h>
#include <Carbon/TextUtils.h>
#include <doctest/doctest.h>

#include <cstring>
#include <string>

TEST_CASE("CopyCStringToPascal: text of 300 characters is cut at 255")
{
    const std::string text(300, 'x');
    Str255 out;
    CopyCStringToPascal(text.c_str(), out);
    CHECK(out[0] == 255);
    CHECK(std::memcmp(out + 1, text.data(), 255) == 0);
}

TEST_CASE("CopyCStringToPascal: converting in place keeps the text")
{
    unsigned char buffer[256] = "abc";
    CopyCStringToPascal(reinterpret_cast<char*>(buffer), buffer);
    CHECK(std::memcmp(buffer, "\3abc", 4) == 0);
    CopyPascalStringToC(buffer, reinterpret_cast<char*>(buffer));
    CHECK(std::strcmp(reinterpret_cast<char*>(buffer), "abc") == 0);
}

TEST_CASE("CopyCStringToPascal, CopyPascalStringToC: a null source gives an empty string")
{
    Str255 pascal = "\3abc";
    CopyCStringToPascal(nullptr, pascal);
    CHECK(pascal[0] == 0);
    char c[4] = "abc";
    CopyPascalStringToC(nullptr, c);
    CHECK(c[0] == 0);
}

TEST_CASE("c2pstr, p2cstr: convert in place and answer the same address")
{
    char text[6] = "hello";
    CHECK(c2pstr(text) == reinterpret_cast<StringPtr>(text));
    CHECK(std::memcmp(text, "\5hello", 6) == 0);
    CHECK(p2cstr(reinterpret_cast<StringPtr>(text)) == text);
    CHECK(std::strcmp(text, "hello") == 0);
    CHECK(P2CStr(C2PStr(text)) == text);
    CHECK(c2pstr(nullptr) == nullptr);
    CHECK(p2cstr(nullptr) == nullptr);
}

TEST_CASE("NewString, SetString: a block just as large as the string")
{
    const StringHandle string = NewString(reinterpret_cast<ConstStr255Param>("\3abc"));
    REQUIRE(string != nullptr);
    CHECK(GetHandleSize(reinterpret_cast<Handle>(string)) == 4);
    SetString(string, reinterpret_cast<ConstStr255Param>("\5hello"));
    CHECK(GetHandleSize(reinterpret_cast<Handle>(string)) == 6);
    CHECK(std::memcmp(*string, "\5hello", 6) == 0);
    SetString(string, nullptr);
    CHECK((*string)[0] == 5);
    DisposeHandle(reinterpret_cast<Handle>(string));
    SetString(string, reinterpret_cast<ConstStr255Param>("\1x"));
    CHECK(MemError() != noErr);
    CHECK(NewString(nullptr) == nullptr);
}
