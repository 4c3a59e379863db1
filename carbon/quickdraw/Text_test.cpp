// Text: widths, pens, modes, clipping, families.
#include "FontFamilies.h"
#include "TestPort.h"
#include "TextEngine.h"

#include <Carbon/Fonts.h>
#include <Carbon/MacErrors.h>

#include <cstring>

using namespace lampblack::quickdraw;

static const unsigned char* Pascal(const char* text)
{
    static unsigned char string[256];
    string[0] = (unsigned char)std::strlen(text);
    std::memcpy(string + 1, text, string[0]);
    return string;
}

static int CountInk(const TestPort& port, const Rect& r)
{
    int count = 0;
    for (int v = r.top; v < r.bottom; ++v)
        for (int h = r.left; h < r.right; ++h)
            count += port.At(h, v) != 0xFFFFFF;
    return count;
}

TEST_CASE("DrawString: moves the pen by StringWidth and stays within ascent and descent")
{
    TestPort port(200, 60);
    FontInfo info;
    GetFontInfo(&info);
    CHECK(info.ascent > 6);
    CHECK(info.descent > 0);
    MoveTo(10, 30);
    const short width = StringWidth(Pascal("Gypsum, lampblack"));
    DrawString(Pascal("Gypsum, lampblack"));
    Point pen;
    GetPen(&pen);
    CHECK(pen.h == 10 + width);
    CHECK(CountInk(port, MakeRect(10, 30 - info.ascent, 10 + width, 30 + info.descent)) > 100);
    CHECK(CountInk(port, MakeRect(0, 0, 200, 30 - info.ascent)) == 0);
    CHECK(CountInk(port, MakeRect(0, 30 + info.descent, 200, 60)) == 0);
}

TEST_CASE("DrawChar: the control characters of the system font show their signs, the others nothing")
{
    for (const unsigned char sign : { 0x11, 0x12, 0x13, 0x14, 0xF0 }) {
        TestPort port(40, 40);
        MoveTo(10, 25);
        DrawChar(sign);
        CHECK(CharWidth(sign) > 4);
        CHECK(CountInk(port, MakeRect(0, 0, 40, 40)) > 8);
    }
    TestPort port(40, 40);
    MoveTo(10, 25);
    DrawChar(0x10);
    CHECK(CharWidth(0x10) == 0);
    CHECK(CountInk(port, MakeRect(0, 0, 40, 40)) == 0);
}

TEST_CASE("SizeOfStandIn: the system font's is smaller, except where letters would not be legible")
{
    CHECK(SizeOfStandIn(0, 13) == 12);
    CHECK(SizeOfStandIn(0, 12) == 11);
    CHECK(SizeOfStandIn(0, 9) == 9);
    CHECK(SizeOfStandIn(0, 6) == 6);
    CHECK(SizeOfStandIn(4, 12) == 12);
    CHECK(SizeOfStandIn(kNoFamily, 12) == 12);
}

TEST_CASE("TextWidth: the sum of CharWidth and where MeasureText ends")
{
    TestPort port;
    const char text[] = "Wave \xA5 \x8E";
    short locations[sizeof text];
    MeasureText(sizeof text - 1, text, locations);
    int sum = 0;
    for (size_t i = 0; i < sizeof text - 1; ++i) {
        CHECK(locations[i] == sum);
        sum += CharWidth((unsigned char)text[i]);
    }
    CHECK(TextWidth(text, 0, sizeof text - 1) == sum);
    CHECK(locations[sizeof text - 1] == sum);
    CHECK(TextWidth(text, 1, 2) == locations[3] - locations[1]);
    CHECK(TextWidth(text, 0, -3) == 0);
    CHECK(TextWidth(nullptr, 0, 3) == 0);
}

TEST_CASE("SpaceExtra: widens spaces, fractions adding up")
{
    TestPort port;
    const short plain = StringWidth(Pascal("a b c d"));
    SpaceExtra(0x18000);
    CHECK(StringWidth(Pascal("a b c d")) == plain + 4);
    MoveTo(0, 20);
    DrawString(Pascal("a b c d"));
    Point pen;
    GetPen(&pen);
    CHECK(pen.h == plain + 4);
}

TEST_CASE("TextFace: styles change widths as published, underline draws below the baseline")
{
    TestPort port(100, 40);
    const short plain = StringWidth(Pascal("mmm"));
    TextFace(condense);
    CHECK(StringWidth(Pascal("mmm")) == plain - 3);
    TextFace(extend);
    CHECK(StringWidth(Pascal("mmm")) == plain + 3);
    TextFace(outline);
    CHECK(StringWidth(Pascal("mmm")) == plain + 3);
    TextFace(shadow);
    CHECK(StringWidth(Pascal("mmm")) == plain + 6);
    TextFace(underline);
    CHECK(StringWidth(Pascal("mmm")) == plain);
    MoveTo(10, 20);
    DrawString(Pascal("mmm"));
    CHECK(CountInk(port, MakeRect(10, 21, 10 + plain, 22)) == plain);
}

TEST_CASE("TextMode: srcOr leaves the background, srcCopy draws it, srcXor twice restores")
{
    const Rect all = MakeRect(0, 0, 100, 40);
    const RGBColor blue = { 0, 0, 0xFFFF }, yellow = { 0xFFFF, 0xFFFF, 0 };
    TestPort port(100, 40);
    RGBBackColor(&blue);
    EraseRect(&all);
    RGBBackColor(&yellow);
    MoveTo(10, 20);
    DrawString(Pascal("il"));
    CHECK(port.At(10, 25) == 0x0000FF);
    TextMode(srcXor);
    std::vector<uint32_t> before;
    for (int i = 0; i < 100 * 40; ++i)
        before.push_back(port.At(i % 100, i / 100));
    MoveTo(10, 20);
    DrawString(Pascal("Xor"));
    CHECK(Differences(port, [&](int h, int v) { return before[(size_t)(v * 100 + h)]; }) > 0);
    MoveTo(10, 20);
    DrawString(Pascal("Xor"));
    CHECK(Differences(port, [&](int h, int v) { return before[(size_t)(v * 100 + h)]; }) == 0);
    TextMode(srcCopy);
    MoveTo(10, 20);
    FontInfo info;
    GetFontInfo(&info);
    DrawString(Pascal("il"));
    CHECK(port.At(10, 20 - info.ascent) == 0xFFFF00);
    CHECK(port.At(10, 20 + info.descent - 1) == 0xFFFF00);
    CHECK(port.At(10, 20 + info.descent) == 0x0000FF);
}

TEST_CASE("TextMode: grayishTextOr draws nothing darker than half-way to the background")
{
    TestPort port(100, 40);
    TextMode(grayishTextOr);
    MoveTo(10, 20);
    DrawString(Pascal("MMM"));
    uint32_t darkest = 0xFFFFFF;
    for (int i = 0; i < 100 * 40; ++i)
        darkest = std::min(darkest, port.At(i % 100, i / 100));
    CHECK(darkest >= 0x7F7F7F);
    CHECK(darkest <= 0x808080);
}

TEST_CASE("DrawString: clipped text is the whole text's pixels within the clip, in every mode")
{
    for (short mode = srcCopy; mode <= notSrcBic; ++mode) {
        TestPort whole(120, 40);
        TextMode(mode);
        MoveTo(5, 25);
        DrawString(Pascal("Clipping"));
        TestPort part(120, 40);
        TextMode(mode);
        RgnHandle clip = NewRgn(), hole = NewRgn();
        SetRectRgn(clip, 10, 18, 60, 24);
        SetRectRgn(hole, 20, 20, 30, 22);
        DiffRgn(clip, hole, clip);
        SetClip(clip);
        MoveTo(5, 25);
        DrawString(Pascal("Clipping"));
        CHECK(Differences(part, [&](int h, int v) {
                  return PtInRgn({ (short)v, (short)h }, clip) ? whole.At(h, v) : 0xFFFFFFu;
              }) == 0);
        DisposeRgn(clip);
        DisposeRgn(hole);
    }
}

TEST_CASE("GetFNum: classic names have their published numbers in any case; unknown ones 0")
{
    short number = -5;
    GetFNum(Pascal("monaco"), &number);
    CHECK(number == kFontIDMonaco);
    GetFNum(Pascal("Times"), &number);
    CHECK(number == kFontIDTimes);
    GetFNum(Pascal("Geneva"), &number);
    CHECK(number == kFontIDGeneva);
    GetFNum(Pascal("No Such Family"), &number);
    CHECK(number == 0);
    CHECK(FMGetFontFamilyFromName(Pascal("No Such Family")) == kInvalidFontFamily);
    Str255 name;
    GetFontName(kFontIDCourier, name);
    CHECK(name[0] == 7);
    CHECK(std::memcmp(name + 1, "Courier", 7) == 0);
    CHECK(FMGetFontFamilyName(2999, name) == kFMInvalidFontFamilyErr);
    CHECK(name[0] == 0);
}

TEST_CASE("GetFNum: an installed family has a number of its own, and back")
{
    const SInt16 number = FamilyNamed("DejaVu Serif");
    CHECK(number >= 1024);
    CHECK(NameOfFamily(number) == "DejaVu Serif");
}

TEST_CASE("TextFont: Monaco is of one width; sizes scale; senseless numbers still draw")
{
    TestPort port;
    TextFont(kFontIDMonaco);
    CHECK(CharWidth('i') == CharWidth('W'));
    TextFont(systemFont);
    CHECK(CharWidth('i') < CharWidth('W'));
    TextSize(24);
    const short large = CharWidth('W');
    TextSize(12);
    CHECK(large > CharWidth('W') + 5);
    TextFont(-20000);
    TextSize(32767);
    CHECK(CharWidth('W') > 0);
    TextSize(-4);
    MoveTo(0, 20);
    DrawString(Pascal("x"));
    CHECK(CountInk(port, MakeRect(0, 0, 40, 30)) > 0);
}

TEST_CASE("TruncString: shortens to the width with an ellipsis at the end or in the middle")
{
    TestPort port;
    Str255 text;
    std::memcpy(text, Pascal("A rather long title"), 20);
    const short full = StringWidth(text);
    CHECK(TruncString(full, text, truncEnd) == notTruncated);
    CHECK(text[0] == 19);
    CHECK(TruncString((short)(full / 2), text, truncEnd) == truncated);
    CHECK(StringWidth(text) <= full / 2);
    CHECK(text[text[0]] == 0xC9);
    std::memcpy(text, Pascal("A rather long title"), 20);
    CHECK(TruncString((short)(full * 2 / 3), text, truncMiddle) == truncated);
    CHECK(StringWidth(text) <= full * 2 / 3);
    CHECK(text[1] == 'A');
    CHECK(text[text[0]] == 'e');
    CHECK(TruncString(1, text, truncEnd) == truncErr);
}

TEST_CASE("DrawUtf8: the same pixels as Mac Roman bytes, and other scripts have widths")
{
    TestPort bytes(150, 40);
    MoveTo(5, 25);
    DrawString(Pascal("Caf\x8E \xA5"));
    TestPort utf8(150, 40);
    MoveTo(5, 25);
    DrawUtf8({}, "Caf\u00E9 \u2022");
    CHECK(Differences(utf8, [&](int h, int v) { return bytes.At(h, v); }) == 0);
    CHECK(WidthOfUtf8({}, "\u0416") > 3);
    CHECK(WidthOfUtf8({}, "\xFF\xC0") > 0);
    CHECK(Utf8ThatFits({}, "\u0416\u0416\u0416", WidthOfUtf8({}, "\u0416\u0416") + 1) == 4);
}

TEST_CASE("DrawJustified: the spaces take all of the slop, whatever part of it each one gets")
{
    const TestPort port;
    char text[] = "a b c d";
    const Point one = { 1, 1 };
    for (const int slop : { 10, 1, 7, -1, -4, 0 }) {
        MoveTo(0, 20);
        DrawJustified(text, 7, slop << 16, onlyStyleRun, one, one);
        Point pen;
        GetPen(&pen);
        CHECK(pen.h == TextWidth(text, 0, 7) + slop);
    }
}
