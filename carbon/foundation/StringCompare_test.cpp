// Comparing Mac Roman text.
#include <Carbon/StringCompare.h>

#include <doctest/doctest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

SInt16 Identical(const std::string& inA, const std::string& inB)
{
    return IdenticalText(inA.data(), inB.data(), (SInt16)inA.size(), (SInt16)inB.size(), nullptr);
}

SInt16 Order(const std::string& inA, const std::string& inB)
{
    return CompareText(inA.data(), inB.data(), (SInt16)inA.size(), (SInt16)inB.size(), nullptr);
}

std::string Pascal(const std::string& inText)
{
    return (char)inText.size() + inText;
}

ConstStr255Param P(const std::string& inPascal)
{
    return (ConstStr255Param)(const void*)inPascal.data();
}

} // namespace

TEST_CASE("IdenticalText: marks and case do not count")
{
    // Evidence [IM-T]: "if the two text strings are 'Rose' and 'rosé', IdenticalText considers them equal"
    CHECK(Identical("Rose", "ros\x8E") == 0);
    CHECK(Identical("Rose", "Rosa") == 1);
    CHECK(Identical("Rose", "Roses") == 1);
    CHECK(Identical("", "") == 0);
    CHECK(Identical("a\xCA"
                    "b",
                    "A B") == 0);
    CHECK(Identical("\xD2x\xD3", "\"x\"") == 0);
    CHECK(Identical("stra\xA7"
                    "e",
                    "STRASSE") == 0);
}

TEST_CASE("IdenticalText: a zero byte and a missing one are different")
{
    CHECK(Identical(std::string("a\0", 2), "a") == 1);
    CHECK(Identical(std::string("a\0b", 3), std::string("a\0B", 3)) == 0);
}

TEST_CASE("IdenticalText: null text and negative lengths are empty")
{
    CHECK(IdenticalText(nullptr, nullptr, 5, 5, nullptr) == 0);
    CHECK(IdenticalText("a", nullptr, 1, 1, nullptr) == 1);
    CHECK(IdenticalText("a", "b", -1, -1, nullptr) == 0);
    CHECK(IdenticalString(nullptr, P("\0"), nullptr) == 0);
    CHECK(IdenticalString(P("\1a"), P("\1A"), nullptr) == 0);
}

TEST_CASE("CompareText: letters first, then capitals before small letters and plain before marked ones")
{
    // Evidence [IM-T]: "after secondary sorting, 'The' would sort before 'thé'"
    const std::vector<std::string> sorted = { "",     " ",      "\"",   "\xC7", "A",       "a",
                                              "\x87", "\xAE",   "Aunt", "B",    "E",       "\xE9",
                                              "fi",   "\xDE",   "Rose", "rose", "ros\x8E", "Roses",
                                              "The",  "th\x8E", "Z",    "_",    "\xB5" };
    for (size_t i = 0; i < sorted.size(); ++i)
        for (size_t j = 0; j < sorted.size(); ++j) {
            const int expected = (i > j) - (i < j);
            CHECK_MESSAGE(Order(sorted[i], sorted[j]) == expected, sorted[i] << " " << sorted[j]);
        }
}

TEST_CASE("CompareText: a difference of letters outweighs an earlier one of marks")
{
    CHECK(Order("r\x8Esum\x8E", "resumes") == -1);
    CHECK(Order("r\x8Esume", "resume") == 1);
    CHECK(CompareString(P("\1b"), P("\1A"), nullptr) == 1);
    CHECK(CompareString(nullptr, P("\1A"), nullptr) == -1);
}

TEST_CASE("EqualString: case and marks count as asked")
{
    CHECK(EqualString(P("\1a"), P("\1A"), false, true));
    CHECK_FALSE(EqualString(P("\1a"), P("\1A"), true, true));
    CHECK(EqualString(P("\1\x8E"), P("\1e"), true, false));
    CHECK_FALSE(EqualString(P("\1\x8E"), P("\1e"), true, true));
    CHECK(EqualString(P("\1\x8E"), P("\1E"), false, false));
    CHECK(EqualString(P("\1\x8E"), P("\1\x83"), false, true));
    CHECK_FALSE(EqualString(P("\1\x87"), P("\1\xE7"), false, true)); // that capital came later
    CHECK_FALSE(EqualString(P("\1a"), P("\2aa"), false, false));
    CHECK(EqualString(nullptr, P(Pascal("")), true, true));
}

TEST_CASE("RelString: by the values of characters, then by length")
{
    CHECK(RelString(P("\1a"), P("\1B"), false, true) == -1);
    CHECK(RelString(P("\1a"), P("\1B"), true, true) == 1);
    CHECK(RelString(P("\2ab"), P("\1a"), true, true) == 1);
    CHECK(RelString(P("\1z"), P("\1\x80"), false, true) == -1);
    CHECK(RelString(P("\1\xFF"), P("\1\x01"), true, true) == 1);
    CHECK(RelString(nullptr, nullptr, true, true) == 0);
}
