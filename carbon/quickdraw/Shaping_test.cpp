// Text that is shaped as a whole: scripts that join, combine and run right to left, and characters that the
// font has not. Letters are told by their code points: the pictures depend on what is installed.
#include "Shaping.h"
#include "TestPort.h"
#include "TextEngine.h"

#include <Carbon/Fonts.h>

#include <foundation/MacRoman.h>

using namespace lampblack::quickdraw;

static const TextFontStyle kStyle = { kFontIDGeneva, 24, normal };

#define ALEF "\u05D0"
#define SHIN "\u05E9"
#define BEH "\u0628"
#define ACUTE "\u0301"

struct Ink {
    int left = 32767, right = -1, count = 0;
};

static Ink InkOf(const TestPort& port)
{
    Ink ink;
    const Rect bounds = PortPixels(port.port).bounds;
    for (int v = bounds.top; v < bounds.bottom; ++v)
        for (int h = bounds.left; h < bounds.right; ++h)
            if (port.At(h, v) != 0xFFFFFF) {
                ink.left = std::min(ink.left, h);
                ink.right = std::max(ink.right, h + 1);
                ++ink.count;
            }
    return ink;
}

static void Draw(std::string_view text, const TextFontStyle& style = kStyle)
{
    MoveTo(20, 40);
    DrawUtf8(style, text);
}

static short PenAfter(std::string_view text, const TextFontStyle& style = kStyle)
{
    Draw(text, style);
    Point pen;
    GetPen(&pen);
    return pen.h;
}

TEST_CASE("NeedsShaping: not for Latin, Greek and Cyrillic; for marks, joining scripts and missing letters")
{
    const Strike& strike = StrikeFor(kStyle.font, kStyle.size, kStyle.face);
    CHECK(!NeedsShaping("", strike));
    CHECK(!NeedsShaping("Plain text \u00E9\u00DF \u03B1\u03B2 \u0416 \u2022 \u2014", strike));
    CHECK(!NeedsShaping("\uF8FF", strike));
    CHECK(NeedsShaping("e" ACUTE, strike));
    CHECK(NeedsShaping(ALEF, strike));
    CHECK(NeedsShaping(BEH, strike));
    CHECK(NeedsShaping("\u0915\u093F", strike));
    CHECK(NeedsShaping("\U0001F1E9", strike));
    CHECK(NeedsShaping("\u4E00", strike) == !strike.Has(0x4E00));
}

TEST_CASE("DrawUtf8: shaped text moves the pen by WidthOfUtf8 and stays near it")
{
    for (const char* text : { ALEF SHIN, BEH BEH BEH, "e" ACUTE "t" ACUTE, "\u0915\u094D\u0937\u093F",
                              "\u4E00\u4E8C", "\U0001F600", "Mixed " ALEF " text" }) {
        TestPort port(300, 80);
        const std::string shown = text;
        CAPTURE(shown);
        const int width = WidthOfUtf8(kStyle, text);
        CHECK(width > 0);
        CHECK(PenAfter(text) == 20 + width);
        const Ink ink = InkOf(port);
        CHECK(ink.count > 10);
        CHECK(ink.left >= 20 - 4);
        CHECK(ink.right <= 20 + width + 4);
    }
}

TEST_CASE("DrawUtf8: a combining accent takes no room of its own")
{
    CHECK(WidthOfUtf8(kStyle, "e" ACUTE) == WidthOfUtf8(kStyle, "e"));
    TestPort with(80, 80), without(80, 80);
    SetPort(with.port);
    Draw("e" ACUTE);
    SetPort(without.port);
    Draw("e");
    CHECK(InkOf(with).count > InkOf(without).count);
}

TEST_CASE("DrawUtf8: Hebrew runs from right to left")
{
    // Two letters of different width: the first one stands at the right.
    TestPort both(120, 80), reversed(120, 80);
    SetPort(both.port);
    Draw("\u05D5" SHIN); // a narrow one, then a wide one
    SetPort(reversed.port);
    Draw(SHIN "\u05D5");
    TestPort narrow(120, 80);
    Draw("\u05D5");
    const int columns = WidthOfUtf8(kStyle, "\u05D5");
    const auto matches = [&](const TestPort& port) {
        int same = 0;
        for (int v = 0; v < 80; ++v)
            for (int h = 20; h < 20 + columns; ++h)
                same += narrow.At(h, v) != 0xFFFFFF && port.At(h, v) == narrow.At(h, v);
        return same;
    };
    CHECK(matches(reversed) == InkOf(narrow).count); // the narrow one, last in the text, is leftmost
    CHECK(matches(both) < InkOf(narrow).count);
}

TEST_CASE("DrawUtf8: Arabic letters join")
{
    const int three = WidthOfUtf8(kStyle, BEH BEH BEH), one = WidthOfUtf8(kStyle, BEH);
    CHECK(three < 3 * one); // the first and middle forms are narrower than the one that stands alone
}

TEST_CASE("Utf8ThatFits: ends between clusters, and what it answers fits")
{
    const std::string accents = "e" ACUTE "e" ACUTE "e" ACUTE;
    const int one = WidthOfUtf8(kStyle, "e" ACUTE);
    CHECK(Utf8ThatFits(kStyle, accents, one) == 3);
    CHECK(Utf8ThatFits(kStyle, accents, 2 * one + 1) == 6);
    CHECK(Utf8ThatFits(kStyle, accents, one - 1) == 0);
    CHECK(Utf8ThatFits(kStyle, accents, 1000) == accents.size());
    const std::string arabic = BEH BEH BEH BEH BEH;
    for (int width = 0; width < 120; width += 7) {
        const size_t fits = Utf8ThatFits(kStyle, arabic, width);
        CHECK(fits % 2 == 0);
        CHECK(WidthOfUtf8(kStyle, std::string_view(arabic).substr(0, fits)) <= width);
    }
}

TEST_CASE("DrawUtf8: shaped text obeys styles, colours, modes and the clip region")
{
    TestPort plain(120, 80), heavy(120, 80), red(120, 80), lined(120, 80), clipped(120, 80);
    const auto draw = [&](const TestPort& port, Style face) {
        SetPort(port.port);
        Draw(SHIN ALEF, { kStyle.font, kStyle.size, face });
    };
    draw(plain, normal);
    draw(heavy, bold);
    CHECK(InkOf(heavy).count > InkOf(plain).count);
    draw(lined, underline);
    CHECK(InkOf(lined).count > InkOf(plain).count + 10);
    SetPort(red.port);
    const RGBColor color = { 0xFFFF, 0, 0 };
    RGBForeColor(&color);
    draw(red, normal);
    CHECK(InkOf(red).count == InkOf(plain).count);
    CHECK(Differences(red, [&](int h, int v) {
              return 0xFF0000 | (plain.At(h, v) & 0xFFFF); // black became red
          }) == 0);
    SetPort(clipped.port);
    const Rect part = MakeRect(0, 0, 30, 80);
    ClipRect(&part);
    draw(clipped, normal);
    CHECK(InkOf(clipped).right <= 30);
    CHECK(WidthOfUtf8({ kStyle.font, kStyle.size, shadow }, SHIN ALEF) == WidthOfUtf8(kStyle, SHIN ALEF) + 4);
}

TEST_CASE("DrawUtf8: long, malformed and senseless texts are drawn without harm")
{
    TestPort port(100, 60);
    std::string longText;
    for (int i = 0; i < 3000; ++i)
        longText += i % 50 ? ALEF : " ";
    CHECK(WidthOfUtf8(kStyle, longText) > 10000);
    Draw(longText);
    CHECK(WidthOfUtf8(kStyle, ALEF "\xFF\xC0\xD7") > 0);
    Draw(ALEF "\xFF\xC0\xD7");
    CHECK(Utf8ThatFits(kStyle, longText, 500) < longText.size());
    Draw(ALEF, { kStyle.font, 32767, (Style)0xFF });
    Draw(ALEF, { -4711, -1, normal });
    CHECK(PieceToShape(std::string(5000, 'a')) <= 512);
    CHECK(PieceToShape(longText) <= 512);
}

TEST_CASE("Shape: texts that were shaped a short time ago are kept, and styles are told apart")
{
    const ShapedText* first = Shape(kStyle, ALEF);
    REQUIRE(first);
    const int width = first->width;
    CHECK(Shape(kStyle, ALEF) == first);
    CHECK(Shape({ kStyle.font, 48, normal }, ALEF)->width > width);
    for (int i = 0; i < 500; ++i)
        CHECK(Shape(kStyle, ALEF + std::to_string(i)));
    CHECK(Shape(kStyle, ALEF)->width == width);
}
