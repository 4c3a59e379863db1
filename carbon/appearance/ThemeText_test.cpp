// Theme text: dimensions, wrapping, justification, truncation, fonts.
#include "appearance/TestPort.h"

#include <Carbon/Fonts.h>
#include <Carbon/MacErrors.h>
#include <Carbon/Script.h>
#include <Carbon/TextEdit.h>

#include <doctest/doctest.h>

#include <cstring>
#include <string>

using namespace lampblack::appearance;

namespace {

constexpr ThemeFontID kAllFonts[] = { kThemeSystemFont,
                                      kThemeSmallSystemFont,
                                      kThemeSmallEmphasizedSystemFont,
                                      kThemeViewsFont,
                                      kThemeEmphasizedSystemFont,
                                      kThemeApplicationFont,
                                      kThemeLabelFont,
                                      kThemeSystemFontDetail,
                                      kThemeSystemFontDetailEmphasized,
                                      kThemeMenuTitleFont,
                                      kThemeMenuItemFont,
                                      kThemeMenuItemMarkFont,
                                      kThemeMenuItemCmdKeyFont,
                                      kThemeWindowTitleFont,
                                      kThemePushButtonFont,
                                      kThemeUtilityWindowTitleFont,
                                      kThemeAlertHeaderFont,
                                      kThemeToolbarFont,
                                      kThemeMiniSystemFont,
                                      kThemeCurrentPortFont };

class String {
public:
    String(const char* utf8) : fRef(CFStringCreateMutable(nullptr, 0))
    {
        CFStringAppendCString(fRef, utf8, kCFStringEncodingUTF8);
    }
    ~String() { CFRelease(fRef); }
    String(const String&) = delete;
    String& operator=(const String&) = delete;
    operator CFMutableStringRef() const { return fRef; }
    std::string Utf8() const
    {
        char text[2000];
        return CFStringGetCString(fRef, text, sizeof text, kCFStringEncodingUTF8) ? text : "(too long)";
    }

private:
    CFMutableStringRef fRef;
};

Point SizeOf(const char* utf8, ThemeFontID font = kThemeSystemFont, int width = 0)
{
    const String string(utf8);
    Point bounds = { -7, (short)width };
    CHECK(GetThemeTextDimensions(string, font, kThemeStateActive, width > 0, &bounds, nullptr) == noErr);
    return bounds;
}

void DrawBox(const char* utf8, const Rect& box, SInt16 just = teFlushDefault, bool wraps = false)
{
    const String string(utf8);
    CHECK(DrawThemeTextBox(string, kThemeSystemFont, kThemeStateActive, wraps, &box, just, nullptr) == noErr);
}

} // namespace

TEST_CASE("GetThemeTextDimensions: as wide as DrawString makes the same text in the same font")
{
    const TestPort port;
    const char text[] = "\023Gypsum, lampblack!!";
    for (const ThemeFontID font : kAllFonts) {
        CAPTURE(font);
        REQUIRE(UseThemeFont(font, smSystemScript) == noErr);
        const short width = StringWidth((ConstStr255Param)text);
        FontInfo info;
        GetFontInfo(&info);
        const String string(text + 1);
        Point bounds = { 0, 0 };
        SInt16 baseline = 0;
        CHECK(GetThemeTextDimensions(string, font, kThemeStateActive, false, &bounds, &baseline) == noErr);
        CHECK(bounds.h == width);
        CHECK(bounds.v == info.ascent + info.descent);
        CHECK(baseline == -info.descent);
    }
}

TEST_CASE("GetThemeTextDimensions: returns and the width to wrap at make lines")
{
    const TestPort port;
    const Point one = SizeOf("Soot");
    CHECK(SizeOf("Soot\rSoot").v == 2 * one.v);
    CHECK(SizeOf("Soot\r\nSoot\n").v == 3 * one.v);
    CHECK(SizeOf("Soot\rSoot").h == one.h);
    CHECK(SizeOf("").v == one.v);
    CHECK(SizeOf("").h == 0);
    CHECK(SizeOf("Soot Soot Soot", kThemeSystemFont, one.h).v == 3 * one.v);
    CHECK(SizeOf("Soot Soot Soot", kThemeSystemFont, one.h).h == one.h);
    CHECK(SizeOf("Soot Soot Soot", kThemeSystemFont, 1000).v == one.v);
    CHECK(SizeOf("SootSootSoot", kThemeSystemFont, one.h).v >= 3 * one.v); // within a word
    CHECK(SizeOf("Soot", kThemeSystemFont, 1).v == 4 * one.v);
    CHECK(SizeOf("Soot-Soot", kThemeSystemFont, one.h + 8).v == 2 * one.v); // behind a hyphen
}

TEST_CASE("DrawThemeTextBox: the pixels of DrawString at the same place, and the pen stays")
{
    TestPort themed, drawn;
    SetPort(drawn.Ref());
    UseThemeFont(kThemeSystemFont, smSystemScript);
    FontInfo info;
    GetFontInfo(&info);
    MoveTo(10, (short)(20 + info.ascent));
    DrawString((ConstStr255Param) "\012Lamp black");
    SetPort(themed.Ref());
    MoveTo(3, 4);
    DrawBox("Lamp black", MakeRect(10, 20, 150, 30));
    CHECK(themed.Pixels() == drawn.Pixels());
    Point pen;
    GetPen(&pen);
    CHECK(pen.h == 3);
    CHECK(pen.v == 4);
}

TEST_CASE("DrawThemeTextBox: justified to the left, the middle and the right")
{
    const Rect box = MakeRect(20, 10, 150, 20);
    const int width = SizeOf("Soot").h;
    for (const SInt16 just : { teFlushDefault, teFlushLeft, teCenter, teFlushRight }) {
        const TestPort port;
        DrawBox("Soot", box, just);
        const Rect ink = port.Drawn();
        const int start = just == teCenter ? 20 + (150 - width) / 2 : just == teFlushRight ? 170 - width : 20;
        CAPTURE(just);
        CHECK(std::abs(ink.left - start) <= 2);
        CHECK(std::abs(ink.right - (start + width)) <= 2);
    }
}

TEST_CASE("DrawThemeTextBox: wraps within the box and leaves out lines that begin below it")
{
    const TestPort port;
    const Point one = SizeOf("Soot");
    const Rect box = MakeRect(20, 10, one.h + 2, 2 * one.v);
    DrawBox("Soot Soot Soot Soot", box, teFlushLeft, true);
    const Rect ink = port.Drawn();
    CHECK(IsWithin(ink, box));
    CHECK(HeightOf(ink) > one.v);
    const TestPort single;
    DrawBox("Soot Soot Soot Soot", box, teFlushLeft, false);
    CHECK(single.Drawn().right > box.right);
    CHECK(HeightOf(single.Drawn()) < one.v);
}

TEST_CASE("DrawThemeTextBox: the text colour of the port, in every state")
{
    for (const ThemeDrawState state : { kThemeStateInactive, kThemeStateActive, kThemeStatePressed }) {
        const TestPort port;
        const RGBColor red = { 0xFFFF, 0, 0 };
        RGBForeColor(&red);
        const String string("Soot");
        const Rect box = MakeRect(5, 5, 100, 20);
        DrawThemeTextBox(string, kThemeSystemFont, state, false, &box, teFlushLeft, nullptr);
        for (const uint32_t pixel : port.Pixels())
            CHECK((pixel >> 16 & 0xFF) == 0xFF);
        CHECK(!IsEmpty(port.Drawn()));
    }
}

TEST_CASE("DrawThemeTextBox: other scripts wrap and stay within the box")
{
    const TestPort port;
    const Rect box = MakeRect(20, 10, 90, 60);
    DrawBox("\u05E9\u05DC\u05D5\u05DD \u05E9\u05DC\u05D5\u05DD \u05E9\u05DC\u05D5\u05DD "
            "\u05E9\u05DC\u05D5\u05DD",
            box, teFlushRight, true);
    const Rect ink = port.Drawn();
    CHECK(HeightOf(ink) > 18);
    CHECK(ink.left >= box.left - 1);
    CHECK(ink.right <= box.right + 1);
}

TEST_CASE("TruncateThemeText: an ellipsis at the end or in the middle, only when it has to be")
{
    const TestPort port;
    const char text[] = "A rather long title of nothing";
    const int full = SizeOf(text).h;
    Boolean truncated = 9;
    const String whole(text);
    CHECK(TruncateThemeText(whole, kThemeSystemFont, kThemeStateActive, (SInt16)full, truncEnd, &truncated) ==
          noErr);
    CHECK(!truncated);
    CHECK(whole.Utf8() == text);
    for (const TruncCode where : { truncEnd, truncMiddle })
        for (int width = 15; width < full; width += 23) {
            const String string(text);
            CHECK(TruncateThemeText(string, kThemeSystemFont, kThemeStateActive, (SInt16)width, where,
                                    &truncated) == noErr);
            CHECK(truncated);
            const std::string shorter = string.Utf8();
            CAPTURE(shorter);
            CHECK(SizeOf(shorter.c_str()).h <= width);
            CHECK(SizeOf(shorter.c_str()).h > width - 20);
            const size_t place = shorter.find("\u2026");
            REQUIRE(place != shorter.npos);
            CHECK((place + 3 == shorter.size()) == (where == truncEnd || width < 30));
        }
    const String narrow(text);
    CHECK(TruncateThemeText(narrow, kThemeSystemFont, kThemeStateActive, 1, truncEnd, &truncated) == noErr);
    CHECK(narrow.Utf8() == "");
}

TEST_CASE("TruncateThemeText: never between a letter and its accent")
{
    const TestPort port;
    const std::string accented = "e\u0301e\u0301e\u0301e\u0301e\u0301e\u0301e\u0301e\u0301";
    for (int width = 16; width < SizeOf(accented.c_str()).h; width += 3) {
        const String string(accented.c_str());
        Boolean truncated;
        TruncateThemeText(string, kThemeSystemFont, kThemeStateActive, (SInt16)width, truncEnd, &truncated);
        const std::string shorter = string.Utf8();
        CHECK((shorter.size() - 3) % 3 == 0);
    }
}

TEST_CASE("GetThemeFont: what UseThemeFont sets, for every font")
{
    const TestPort port;
    for (const ThemeFontID font : kAllFonts) {
        Str255 name;
        SInt16 size = 0;
        Style style = 0;
        CAPTURE(font);
        CHECK(UseThemeFont(font, smSystemScript) == noErr);
        CHECK(GetThemeFont(font, smSystemScript, name, &size, &style) == noErr);
        short number = -1;
        GetFNum(name, &number);
        CHECK(number == GetPortTextFont(port.Ref()));
        CHECK(size == GetPortTextSize(port.Ref()));
        CHECK(style == GetPortTextFace(port.Ref()));
    }
}

TEST_CASE("Theme text: bad strings, fonts and pointers are paramErr and change nothing")
{
    const TestPort port;
    const String string("Soot");
    const Rect box = MakeRect(5, 5, 100, 20);
    Point bounds = { 1, 2 };
    Boolean truncated = 7;
    Rect outset;
    const auto released = CFStringCreateMutable(nullptr, 0);
    CFRelease(released);
    for (const CFMutableStringRef bad : { (CFMutableStringRef) nullptr, released }) {
        CHECK(DrawThemeTextBox(bad, kThemeSystemFont, 1, false, &box, 0, nullptr) == paramErr);
        CHECK(GetThemeTextDimensions(bad, kThemeSystemFont, 1, false, &bounds, nullptr) == paramErr);
        CHECK(TruncateThemeText(bad, kThemeSystemFont, 1, 10, truncEnd, &truncated) == paramErr);
    }
    CHECK(DrawThemeTextBox(string, 4711, 1, false, &box, 0, nullptr) == paramErr);
    CHECK(DrawThemeTextBox(string, kThemeSystemFont, 1, false, nullptr, 0, nullptr) == paramErr);
    CHECK(GetThemeTextDimensions(string, 4711, 1, false, &bounds, nullptr) == paramErr);
    CHECK(GetThemeTextDimensions(string, kThemeSystemFont, 1, false, nullptr, nullptr) == paramErr);
    CHECK(TruncateThemeText(string, 4711, 1, 10, truncEnd, &truncated) == paramErr);
    CHECK(TruncateThemeText(string, kThemeSystemFont, 1, 10, truncEnd, nullptr) == paramErr);
    const auto constant = (CFMutableStringRef)CFSTR("A constant title that is long");
    CHECK(TruncateThemeText(constant, kThemeSystemFont, 1, 20, truncEnd, &truncated) == paramErr);
    CHECK(GetThemeTextShadowOutset(4711, 1, &outset) == paramErr);
    CHECK(GetThemeTextShadowOutset(kThemeSystemFont, 1, nullptr) == paramErr);
    CHECK(GetThemeTextShadowOutset(kThemeSystemFont, 1, &outset) == noErr);
    CHECK(IsSame(outset, { 0, 0, 0, 0 }));
    CHECK(bounds.h == 2);
    CHECK(truncated == 7);
    CHECK(IsEmpty(port.Drawn()));
    SetPort(nullptr);
    CHECK(DrawThemeTextBox(string, kThemeSystemFont, 1, false, &box, 0, nullptr) == noErr);
}
