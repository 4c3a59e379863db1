// Measuring and drawing with extras, scales, slops and line breaks; underlines; memory of strikes.
#include "PortRecord.h"
#include "ScaledText.h"
#include "Strike.h"
#include "TestPort.h"

#include <Carbon/Fonts.h>

#include <cstring>

using namespace lampblack::quickdraw;

static const char kText[] = "Gum and soot";
static constexpr short kLength = 12;

static short PenAfter(const std::function<void()>& draw)
{
    MoveTo(10, 40);
    draw();
    Point pen;
    GetPen(&pen);
    return (short)(pen.h - 10);
}

static int CountInk(const TestPort& port, const Rect& r)
{
    int count = 0;
    for (int v = r.top; v < r.bottom; ++v)
        for (int h = r.left; h < r.right; ++h)
            count += port.At(h, v) != 0xFFFFFF;
    return count;
}

TEST_CASE("CharExtra: widens all characters but spaces, with SpaceExtra beside it")
{
    TestPort port(300, 60);
    const short plain = TextWidth(kText, 0, kLength);
    CharExtra(0x18000);
    CHECK(TextWidth(kText, 0, kLength) == plain + 15);
    SpaceExtra(0x20000);
    CHECK(TextWidth(kText, 0, kLength) == plain + 19);
    CHECK(PenAfter([] { DrawText(kText, 0, kLength); }) == plain + 19);
    CharExtra(-0x8000);
    SpaceExtra(0);
    CHECK(TextWidth(kText, 0, kLength) == plain - 5);
    short places[kLength + 1];
    MeasureText(kLength, kText, places);
    CHECK(places[kLength] == plain - 5);
}

TEST_CASE("StdText: scales distances horizontally and letters in both directions")
{
    TestPort port(400, 100);
    const short plain = TextWidth(kText, 0, kLength);
    const Point one = { 1, 1 };
    CHECK(PenAfter([&] { StdText(kLength, kText, one, one); }) == plain);
    CHECK(PenAfter([&] { StdText(kLength, kText, { 2, 3 }, one); }) == 3 * plain);
    CHECK(PenAfter([&] { StdText(kLength, kText, one, { 1, 2 }); }) == plain / 2);
    CHECK(PenAfter([&] { StdText(kLength, kText, { 0, -3 }, { 7, 5 }); }) == plain);
    CHECK(PenAfter([&] { StdText(-1, kText, one, one); }) == 0);
    const auto height = [](Point numer) {
        TestPort drawn(400, 100);
        MoveTo(10, 80);
        StdText(1, "M", numer, { 1, 1 });
        int rows = 0;
        for (short v = 0; v < 100; ++v)
            rows += CountInk(drawn, MakeRect(0, v, 400, v + 1)) > 0;
        return rows;
    };
    const int high = height({ 1, 1 });
    CHECK(std::abs(height({ 4, 1 }) - 4 * high) <= 3);
    CHECK(height({ 1, 4 }) == high);
}

TEST_CASE("StdText: stretched letters fill the width that they have")
{
    TestPort port(400, 60);
    MoveTo(10, 40);
    const short width = TextWidth("HHHH", 0, 4);
    StdText(4, "HHHH", { 1, 5 }, { 1, 1 });
    int longest = 0, gap = 0;
    for (int h = 10; h < 10 + 5 * width; ++h) {
        const bool isEmpty = CountInk(port, MakeRect(h, 0, h + 1, 60)) == 0;
        gap = isEmpty ? gap + 1 : 0;
        longest = std::max(longest, gap);
    }
    CHECK(longest < width); // unstretched letters would stand five widths apart
    CHECK(CountInk(port, MakeRect(10, 0, 10 + 5 * width, 60)) == CountInk(port, MakeRect(0, 0, 400, 60)));
}

TEST_CASE("StdTxMeas: answers the width before scaling and the scale that remains")
{
    TestPort port;
    Point numer = { 3, 5 }, denom = { 0, 2 };
    FontInfo info = {}, expected = {};
    GetFontInfo(&expected);
    CHECK(StdTxMeas(kLength, kText, &numer, &denom, &info) == TextWidth(kText, 0, kLength));
    CHECK(numer.v == denom.v);
    CHECK(numer.h == 5);
    CHECK(denom.h == 2);
    CHECK(info.ascent == expected.ascent);
    CHECK(StdTxMeas(kLength, kText, nullptr, nullptr, nullptr) == TextWidth(kText, 0, kLength));
}

TEST_CASE("CharToPixel and PixelToChar: there and back for every character, scaled and with a slop")
{
    TestPort port;
    char text[] = "Gum and soot";
    for (const Point numer : { Point{ 1, 1 }, Point{ 1, 3 } })
        for (const Fixed slop : { 0, 8 << 16 })
            for (long offset = 0; offset <= kLength; ++offset) {
                const short at =
                    CharToPixel(text, kLength, slop, offset, leftCaret, smOnlyStyleRun, numer, { 1, 1 });
                Boolean leading = 9;
                Fixed rest = 0;
                CAPTURE(offset);
                CHECK(PixelToChar(text, kLength, slop, at << 16, &leading, &rest, smOnlyStyleRun, numer,
                                  { 1, 1 }) == offset);
                CHECK(leading == (offset < kLength));
                CHECK(rest == (offset < kLength ? -1 : 0));
            }
    Fixed rest = 0;
    const short width = TextWidth(text, 0, kLength);
    CHECK(PixelToChar(text, kLength, 0, (width + 5) << 16, nullptr, &rest, smOnlyStyleRun, { 1, 1 },
                      { 1, 1 }) == kLength);
    CHECK(rest == 5 << 16);
    CHECK(PixelToChar(text, kLength, 0, -50 << 16, nullptr, nullptr, smOnlyStyleRun, { 1, 1 }, { 1, 1 }) ==
          0);
    CHECK(CharToPixel(nullptr, kLength, 0, 3, leftCaret, smOnlyStyleRun, { 1, 1 }, { 1, 1 }) == 0);
}

TEST_CASE("DrawJustified: the slop goes to the spaces, MeasureJustified tells where")
{
    TestPort port(300, 60);
    char text[] = "Gum and soot";
    const short plain = TextWidth(text, 0, kLength);
    CHECK(PenAfter([&] {
              DrawJustified(text, kLength, 11 << 16, smOnlyStyleRun, { 1, 1 }, { 1, 1 });
          }) == plain + 11);
    short places[kLength + 1], plainPlaces[kLength + 1];
    MeasureText(kLength, text, plainPlaces);
    MeasureJustified(text, kLength, 10 << 16, (Ptr)places, smOnlyStyleRun, { 1, 1 }, { 1, 1 });
    CHECK(places[3] == plainPlaces[3]);
    CHECK(places[4] == plainPlaces[4] + 5);
    CHECK(places[kLength] == plain + 10);
}

TEST_CASE("VisibleLength: without the white space at the end")
{
    char text[] = "ab  c \t\r";
    CHECK(VisibleLength(text, 8) == 5);
    CHECK(VisibleLength(text, 4) == 2);
    CHECK(VisibleLength(text, 0) == 0);
    CHECK(VisibleLength(nullptr, 4) == 0);
}

static StyledLineBreakCode Break(char* text, SInt32 start, int room, SInt32* ioOffset)
{
    Fixed width = room << 16;
    return StyledLineBreak(text, (SInt32)std::strlen(text), start, (SInt32)std::strlen(text), 0, &width,
                           ioOffset);
}

TEST_CASE("StyledLineBreak: between words; within one only at the start of a line; not at all when all fits")
{
    TestPort port;
    char text[] = "Gum and soot";
    const short width = TextWidth(text, 0, 7); // to the end of "and"
    SInt32 offset = 1;
    CHECK(Break(text, 0, width + 2, &offset) == smBreakWord);
    CHECK(offset == 8);
    offset = 1;
    CHECK(Break(text, 0, width - 1, &offset) == smBreakWord);
    CHECK(offset == 4);
    offset = 1;
    CHECK(Break(text, 0, 300, &offset) == smBreakOverflow);
    CHECK(offset == 12);
    offset = 1;
    CHECK(Break(text, 0, TextWidth(text, 0, 2), &offset) == smBreakChar);
    CHECK(offset == 2);
    offset = 1;
    CHECK(Break(text, 0, 0, &offset) == smBreakChar);
    CHECK(offset == 1); // never nothing, or a line would have no end
    offset = 0;
    CHECK(Break(text, 8, TextWidth(text, 8, 2), &offset) == smBreakWord);
    CHECK(offset == 8); // the run goes to the next line
    char lines[] = "Gum\rand";
    offset = 1;
    CHECK(Break(lines, 0, 300, &offset) == smBreakWord);
    CHECK(offset == 4);
    Fixed left = 300 << 16;
    offset = 1;
    StyledLineBreak(text, 12, 0, 12, 0, &left, &offset);
    CHECK(left == (300 - TextWidth(text, 0, 12)) << 16);
    CHECK(StyledLineBreak(nullptr, 3, 0, 3, 0, &left, &offset) == smBreakOverflow);
    CharExtra(-30000 << 16); // a text that is less than nothing wide leaves no more than a Fixed can say
    left = 30000 << 16;
    offset = 1;
    CHECK(StyledLineBreak(text, 12, 0, 12, 0, &left, &offset) == smBreakOverflow);
    CHECK(left == 0x7FFFFFFF);
    CharExtra(0);
}

TEST_CASE("CharToPixel: a slop and an extra that are too much together stay within a Fixed")
{
    TestPort port;
    SetPort(port.port);
    char text[] = "a b";
    SpaceExtra(0x7FFF0000);
    CHECK(CharToPixel(text, 3, 0x7FFF0000, 3, leftCaret, onlyStyleRun, { 1, 1 }, { 1, 1 }) == 32767);
    SpaceExtra(-0x7FFF0000);
    CHECK(CharToPixel(text, 3, -0x7FFF0000, 3, leftCaret, onlyStyleRun, { 1, 1 }, { 1, 1 }) < -32000);
    SpaceExtra(0);
}

TEST_CASE("TextFace: the underline stops a pixel beside what reaches down to it")
{
    TestPort plain(80, 40), lined(80, 40);
    const auto draw = [](const TestPort& port, Style face) {
        SetPort(port.port);
        TextSize(18);
        TextFace(face);
        MoveTo(10, 25);
        DrawText("ogo", 0, 3);
    };
    draw(plain, normal);
    draw(lined, underline);
    const int row = 26;
    int drawn = 0, touching = 0;
    for (int h = 11; h < 79; ++h) {
        const bool isLine = lined.At(h, row) == 0 && plain.At(h, row) != 0;
        const auto isDark = [&](int at) { return (plain.At(at, row) & 0xFF) < 100; };
        drawn += isLine;
        touching += isLine && (isDark(h - 1) || isDark(h + 1));
    }
    CHECK(drawn > 12);
    CHECK(touching == 0);
    bool hasGap = false;
    for (int h = 12; h < 10 + 30; ++h)
        hasGap |= lined.At(h, row) == 0xFFFFFF;
    CHECK(hasGap);
}

TEST_CASE("StrikeFor: many fonts and sizes are forgotten in time, and settings find theirs again")
{
    TestPort port;
    TextSize(13);
    const short width = CharWidth('W');
    const unsigned stamp = StrikeStamp();
    for (SInt16 size = 1; size < 200; ++size)
        CHECK(StrikeFor(kFontIDTimes, size, normal).AdvanceOf('M') >= 0);
    CHECK(StrikeStamp() != stamp);
    CHECK(CharWidth('W') == width);
}

TEST_CASE("StrikeFor: large letters are kept within bounds and drawn all the same")
{
    Strike& strike = StrikeFor(kFontIDTimes, 1000, bold);
    for (int round = 0; round < 2; ++round)
        for (int c = 0x20; c < 0x100; ++c) {
            const Glyph& glyph = strike.GlyphOf((uint8_t)c);
            CHECK(glyph.width <= 4000);
            if (c == 'W')
                CHECK(glyph.width > 500);
        }
}

TEST_CASE("DrawChar: nothing of a glyph is lost that reaches out of its advance")
{
    TestPort port(60, 60);
    TextFont(kFontIDTimes);
    TextFace(italic);
    TextSize(30);
    MoveTo(20, 40);
    DrawChar('j');
    CHECK(CountInk(port, MakeRect(0, 0, 20, 60)) > 0); // its tail
}

TEST_CASE("StretchText: narrower and wider letters until it is set back, measured as they are drawn")
{
    TestPort port(300, 60);
    TextFont(kFontIDTimes);
    TextSize(20);
    const short plain = TextWidth(kText, 0, kLength);
    StretchText(80);
    const short narrow = TextWidth(kText, 0, kLength);
    CHECK(std::abs(narrow - plain * 8 / 10) <= kLength / 2);
    CHECK(PenAfter([] { DrawText(kText, 0, kLength); }) == narrow);
    CHECK(CountInk(port, MakeRect(10 + narrow + 2, 0, 300, 60)) == 0);
    CHECK(CountInk(port, MakeRect(10 + narrow - 10, 0, 10 + narrow, 60)) > 0);
    TextSize(21);
    TextSize(20);
    CHECK(TextWidth(kText, 0, kLength) == narrow);
    StretchText(100);
    CHECK(TextWidth(kText, 0, kLength) == plain);
    StretchText(-5);
    CHECK(TextWidth(kText, 0, kLength) > 0);
}
