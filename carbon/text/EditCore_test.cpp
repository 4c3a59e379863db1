#include "text/EditCore.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

using namespace lampblack::text;

namespace {

Text Of(const char* inText)
{
    return { inText, (int)std::strlen(inText) };
}

// Every character is ten pixels wide.
class TenEach final : public Measure {
public:
    int Width(const char*, int inCount) override { return inCount * 10; }
    int Fitting(const char*, int inCount, int inWidth) override
    {
        return std::clamp(inWidth / 10, 0, inCount);
    }
};

std::vector<std::string> LinesOf(const char* inText, int inWidth, bool inReturnsOnly = false)
{
    TenEach measure;
    const Text text = Of(inText);
    std::vector<std::string> lines;
    for (int start = 0; start < text.length;) {
        const int end = LineEnd(text, start, { inWidth, inReturnsOnly, nullptr }, measure);
        lines.emplace_back(inText + start, inText + end);
        start = end;
    }
    return lines;
}

using Strings = std::vector<std::string>;

} // namespace

TEST_CASE("WordAt: words, runs of spaces, punctuation, and an apostrophe within a word")
{
    const Text text = Of("Don't stop,  now");
    CHECK(WordAt(text, 0) == Span{ 0, 5 });
    CHECK(WordAt(text, 3) == Span{ 0, 5 });
    CHECK(WordAt(text, 5) == Span{ 5, 6 });
    CHECK(WordAt(text, 7) == Span{ 6, 10 });
    CHECK(WordAt(text, 10) == Span{ 10, 11 });
    CHECK(WordAt(text, 12) == Span{ 11, 13 });
    CHECK(WordAt(text, 16) == Span{ 13, 16 });
    CHECK(WordAt(text, -5) == Span{ 0, 5 });
    CHECK(WordAt(text, 99) == Span{ 13, 16 });
    CHECK(WordAt(Of(""), 0) == Span{ 0, 0 });
}

TEST_CASE("WordAt: letters with accents belong to words, Mac Roman quotation marks do not")
{
    CHECK(WordAt(Of("caf\x8E \xD2oui\xD3"), 2) == Span{ 0, 4 });
    CHECK(WordAt(Of("caf\x8E \xD2oui\xD3"), 7) == Span{ 6, 9 });
}

TEST_CASE("WordAt: behind the last word of a line it is that word, and an empty line is its return")
{
    CHECK(WordAt(Of("one\rtwo"), 3) == Span{ 0, 3 });
    CHECK(WordAt(Of("one\r\rtwo"), 4) == Span{ 4, 5 });
}

TEST_CASE("WordAt: an application's own rule")
{
    const auto everyThird = [](char*, short offset) -> unsigned char { return offset % 3 == 0; };
    CHECK(WordAt(Of("abcdefghi"), 4, everyThird) == Span{ 3, 6 });
}

TEST_CASE("PreviousWord and NextWord: from word to word, past what lies between, to the ends")
{
    const Text text = Of("one, two  three");
    CHECK(NextWord(text, 0) == 3);
    CHECK(NextWord(text, 3) == 8);
    CHECK(NextWord(text, 15) == 15);
    CHECK(PreviousWord(text, 15) == 10);
    CHECK(PreviousWord(text, 10) == 5);
    CHECK(PreviousWord(text, 7) == 5);
    CHECK(PreviousWord(text, 0) == 0);
    CHECK(PreviousWord(Of("  "), 2) == 0);
    CHECK(NextWord(Of("  "), 0) == 2);
}

TEST_CASE("LineEnd: lines break behind the last word that fits, with the spaces that hang over")
{
    CHECK(LinesOf("one two three", 80) == Strings{ "one two ", "three" });
    CHECK(LinesOf("one two three", 70) == Strings{ "one two ", "three" });
    CHECK(LinesOf("one two three", 60) == Strings{ "one ", "two ", "three" });
    CHECK(LinesOf("one    two", 40) == Strings{ "one    ", "two" });
    CHECK(LinesOf("well-known", 70) == Strings{ "well-", "known" });
}

TEST_CASE("LineEnd: a word that is too wide breaks anywhere, and one character always fits")
{
    CHECK(LinesOf("abcdefgh", 30) == Strings{ "abc", "def", "gh" });
    CHECK(LinesOf("abc", 0) == Strings{ "a", "b", "c" });
    CHECK(LinesOf("abc", -100) == Strings{ "a", "b", "c" });
}

TEST_CASE("LineEnd: returns end lines, and alone they end them when asked to")
{
    CHECK(LinesOf("a\r\rb\r", 100) == Strings{ "a\r", "\r", "b\r" });
    CHECK(LinesOf("one two three\rfour", 30, true) == Strings{ "one two three\r", "four" });
}

TEST_CASE("Lines: a text that is empty or ends with a return has one line more")
{
    const short kNone[] = { 0 };
    CHECK(Lines(Of(""), kNone, 0).Total() == 1);
    const short kOne[] = { 0, 2 };
    const Lines lines(Of("a\r"), kOne, 1);
    CHECK(lines.Total() == 2);
    CHECK(lines.LineOf(1) == 0);
    CHECK(lines.LineOf(2) == 1);
    CHECK(lines.Whole(1) == Span{ 2, 2 });
    CHECK(lines.LastCaret(0) == 1);
}

TEST_CASE("Lines: starts that an application spoilt stay within the text")
{
    const short kWild[] = { -5, 30000, -30000, 2 };
    const Lines lines(Of("abcdef"), kWild, 3);
    for (int line = -2; line < 6; ++line) {
        const Span whole = lines.Whole(line);
        CHECK(whole.start >= 0);
        CHECK(whole.start <= whole.end);
        CHECK(whole.end <= 6);
        CHECK(lines.LastCaret(line) >= whole.start);
    }
    for (int offset = -10; offset < 20; ++offset)
        CHECK(lines.LineOf(offset) < 3);
}

TEST_CASE("Moved: ends of lines and of the text")
{
    const short kStarts[] = { 0, 4, 8 };
    const Text text = Of("one two\rx");
    const Lines lines(text, kStarts, 3);
    CHECK(Moved(text, lines, 5, Motion::LineStart) == 4);
    CHECK(Moved(text, lines, 5, Motion::LineEnd) == 7);
    CHECK(Moved(text, lines, 1, Motion::LineEnd) == 3); // before the space at which the line wraps
    CHECK(Moved(text, lines, 5, Motion::TextStart) == 0);
    CHECK(Moved(text, lines, 5, Motion::TextEnd) == 9);
    CHECK(Moved(text, lines, 0, Motion::CharacterLeft) == 0);
    CHECK(Moved(text, lines, 9, Motion::CharacterRight) == 9);
}
