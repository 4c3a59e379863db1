// Pascal strings, and numbers in them.
#include "RomanText.h"

#include <Carbon/NumberFormatting.h>
#include <Carbon/PLStringFuncs.h>

#include <doctest/doctest.h>

#include <cstring>
#include <string>

using lampblack::foundation::TextOf;

namespace {

const unsigned char kAbcabc[] = "\6abcabc";
const unsigned char kBc[] = "\2bc";
const unsigned char kEmpty[] = "";

SInt32 NumberOf(const char* inPascal)
{
    SInt32 number = 77;
    StringToNum((ConstStr255Param)(const void*)inPascal, &number);
    return number;
}

} // namespace

TEST_CASE("PLstrcpy, PLstrcat: copy and add; no more than 255 characters result")
{
    Str255 text = "\3xyz";
    CHECK(PLstrcpy(text, kAbcabc) == text);
    CHECK(TextOf(text) == "abcabc");
    CHECK(TextOf(PLstrncpy(text, kAbcabc, 2)) == "ab");
    CHECK(TextOf(PLstrncat(text, kBc, 1)) == "abb");
    CHECK(TextOf(PLstrcat(text, text)) == "abbabb");
    for (int i = 0; i < 10; ++i)
        PLstrcat(text, text);
    CHECK(PLstrlen(text) == 255);
    CHECK(text[255] == 'b');
}

TEST_CASE("PLstrcmp: by the first difference, then by length")
{
    CHECK(PLstrcmp(kAbcabc, kAbcabc) == 0);
    CHECK(PLstrcmp(kAbcabc, kBc) < 0);
    CHECK(PLstrcmp(kBc, kEmpty) > 0);
    CHECK(PLstrcmp((ConstStr255Param) "\1\xA5", (ConstStr255Param) "\1A") > 0);
    CHECK(PLstrncmp(kAbcabc, (ConstStr255Param) "\4abcd", 3) == 0);
    CHECK(PLstrncmp(kAbcabc, (ConstStr255Param) "\4abcd", 4) < 0);
    CHECK(PLstrncmp(kAbcabc, kBc, -1) == 0);
}

TEST_CASE("PLstrchr and its kin: places in the first string, or null")
{
    CHECK(PLstrchr(kAbcabc, 'b') == (Ptr)(void*)(kAbcabc + 2));
    CHECK(PLstrrchr(kAbcabc, 'b') == (Ptr)(void*)(kAbcabc + 5));
    CHECK(PLstrchr(kAbcabc, 'z') == nullptr);
    CHECK(PLstrstr(kAbcabc, kBc) == (Ptr)(void*)(kAbcabc + 2));
    CHECK(PLstrstr(kBc, kAbcabc) == nullptr);
    CHECK(PLstrstr(kBc, kEmpty) == (Ptr)(void*)(kBc + 1));
    CHECK(PLstrpbrk(kAbcabc, (ConstStr255Param) "\2xc") == (Ptr)(void*)(kAbcabc + 3));
    CHECK(PLstrspn(kAbcabc, (ConstStr255Param) "\2ba") == 2);
    CHECK(PLstrspn(kBc, kAbcabc) == 2);
}

TEST_CASE("PLstrcpy and its kin: null strings are empty to read and left alone to write")
{
    Str255 text = "\3xyz";
    CHECK(PLstrcpy(nullptr, kBc) == nullptr);
    CHECK(PLstrcat(nullptr, kBc) == nullptr);
    CHECK(PLstrcpy(text, nullptr)[0] == 0);
    CHECK(PLstrlen(nullptr) == 0);
    CHECK(PLstrcmp(nullptr, kEmpty) == 0);
    CHECK(PLstrchr(nullptr, 'a') == nullptr);
    CHECK(PLstrstr(nullptr, kBc) == nullptr);
    CHECK(PLstrspn(nullptr, kBc) == 0);
}

TEST_CASE("NumToString: decimal digits and a minus sign")
{
    Str255 text;
    NumToString(-2147483647 - 1, text);
    CHECK(TextOf(text) == "-2147483648");
    NumToString(0, text);
    CHECK(TextOf(text) == "0");
    NumToString(1, nullptr);
}

TEST_CASE("StringToNum: signs and digits; characters are not checked and what passes 32 bits is lost")
{
    CHECK(NumberOf("\4-123") == -123);
    CHECK(NumberOf("\4+123") == 123);
    CHECK(NumberOf("\2\x32:") == 30);
    CHECK(NumberOf("\3 12") == 12);
    CHECK(NumberOf("\012"
                   "4294967297") == 1);
    CHECK(NumberOf("\0") == 0);
    StringToNum(kBc, (SInt32*)nullptr);
    long number = 7;
    StringToNum(nullptr, &number);
    CHECK(number == 0);
}
