// Pascal and C strings.
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
