// Formats.
#include "StringTest.h"

#include <clocale>

using namespace lampblack::foundation;

namespace {

template <class... Arguments>
std::string Formatted(const char* inFormat, Arguments... inArguments)
{
    return Utf8Of(
        StString(CFStringCreateWithFormat(nullptr, nullptr, StString(StringFrom(inFormat)), inArguments...)));
}

} // namespace

TEST_CASE("CFStringCreateWithFormat: numbers as printf writes them")
{
    CHECK(Formatted("%d %i %u", -5, 6, 4000000000u) == "-5 6 4000000000");
    CHECK(Formatted("%D %U %O", -5, 4000000000u, 8) == "-5 4000000000 10");
    CHECK(Formatted("%x %X %#x %o", 255, 255, 255, 8) == "ff FF 0xff 10");
    CHECK(Formatted("[%5d] [%-5d] [%05d] [%+d] [% d]", 42, 42, 42, 42, 42) ==
          "[   42] [42   ] [00042] [+42] [ 42]");
    CHECK(Formatted("%hhd %hd %ld %lld %qd %zd", 257, 65537, 1L << 40, 1LL << 41, 1LL << 42, (size_t)7) ==
          "1 1 1099511627776 2199023255552 4398046511104 7");
    CHECK(Formatted("%hhu %hx", 511, 0x12345) == "255 2345");
    CHECK(Formatted("%.2f %8.3e %g %G", 3.14159, 1234.5, 0.5, 1e20) == "3.14 1.234e+03 0.5 1E+20");
    CHECK(Formatted("%Lf %a", (long double)1.5, 1.0) == "1.500000 0x1p+0");
    CHECK(Formatted("%.3d", 5) == "005");
    CHECK(Formatted("%p %p", (void*)0x1F0, nullptr) == "0x1f0 0x0");
}

TEST_CASE("CFStringCreateWithFormat: texts and objects")
{
    CHECK(Formatted("%@ and %@", CFSTR("one"), CFSTR("t\xC3\xBCo")) == "one and t\xC3\xBCo");
    CHECK(Formatted("%@ %@", nullptr, (const void*)EndedString()) == "(null) (null)");
    CHECK(Formatted("%s", "caf\x8E") == "caf\xC3\xA9");
    CHECK(Formatted("%s %S", (const char*)nullptr, (const UniChar*)nullptr) == "(null) (null)");
    CHECK(Formatted("%S%C%c", (const UniChar*)u"\u4E2D", 0x4E2D, 0x8E) == "\xE4\xB8\xAD\xE4\xB8\xAD\xC3\xA9");
    const char unended[] = { 'a', 'b', 'c' };
    CHECK(Formatted("[%.3s] [%5.2s] [%-5.2s]", unended, unended, unended) == "[abc] [   ab] [ab   ]");
    CHECK(Formatted("[%6@]", CFSTR("abc")) == "[   abc]");
}

TEST_CASE("CFStringCreateWithFormat: positions and widths from arguments")
{
    CHECK(Formatted("%2$@ %1$d", 7, CFSTR("x")) == "x 7");
    CHECK(Formatted("%2$d %1$.1f %2$d", 0.5, 3) == "3 0.5 3");
    CHECK(Formatted("[%*d] [%-*d] [%.*f]", 5, 42, 4, 42, 2, 1.0) == "[   42] [42  ] [1.00]");
    CHECK(Formatted("[%*d]", -5, 42) == "[42   ]");
    CHECK(Formatted("[%.*d]", -1, 42) == "[42]");
    CHECK(Formatted("%2$*1$d", 4, 9) == "   9");
    CHECK(Formatted("%3$d", 1, 2, 3) == "3");
}

TEST_CASE("CFStringCreateWithFormat: percent signs, and what is no specifier, are text")
{
    CHECK(Formatted("100%% %d%%", 5) == "100% 5%");
    CHECK(Formatted("%") == "%");
    CHECK(Formatted("50% yes") == "50% yes");
    CHECK(Formatted("%y %d", 5) == "%y 5");
    CHECK(Formatted("%n%!", 1) == "%n%!");
    CHECK(Formatted("%99$d", 1) == "%99$d");
    CHECK(Formatted("%") == "%");
    CHECK(Formatted("%5") == "%5");
    CHECK(Formatted("%l") == "%l");
    CHECK(Formatted("") == "");
}

TEST_CASE("CFStringCreateWithFormat: long results, and widths without measure")
{
    CHECK(Formatted("%.600f", 0.0).size() == 602);
    CHECK(Formatted("%1000d", 1).size() == 1000);
    CHECK(Formatted("%99999999999999999999d", 1).size() == 65535);
    CHECK(Formatted("%f", 1e300).size() == 308);
}

TEST_CASE("CFStringCreateWithFormat: a point is a point whatever the locale")
{
    const std::string before = std::setlocale(LC_NUMERIC, nullptr);
    for (const char* locale : { "de_DE.UTF-8", "fr_FR.UTF-8" })
        if (std::setlocale(LC_NUMERIC, locale))
            CHECK(Formatted("%.1f", 1.5) == "1.5");
    std::setlocale(LC_NUMERIC, before.c_str());
}

TEST_CASE("CFStringAppendFormat: to a mutable string; without a format nothing")
{
    const StMutable text("a");
    CFStringAppendFormat(text, nullptr, CFSTR("%d%@"), 1, (CFStringRef)text);
    CHECK(Utf8Of(text) == "a1a");
    CFStringAppendFormat(text, nullptr, nullptr);
    CFStringAppendFormat((CFMutableStringRef)CFSTR("fixed"), nullptr, CFSTR("x"));
    CHECK(Utf8Of(text) == "a1a");
    CHECK(CFStringCreateWithFormat(nullptr, nullptr, nullptr) == nullptr);
}
