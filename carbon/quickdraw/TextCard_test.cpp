// Pictures of text in installed fonts, to be looked at: with LAMPBLACK_TEXTCARD naming a folder they are left
// there as PNG files. What they show depends on the fonts of the machine, so that they are only asked to be
// no blanks here.
#include "TestPort.h"
#include "TextEngine.h"

#include <Carbon/Fonts.h>
#include <Carbon/QDOffscreen.h>

#include <golden/Golden.h>

#include <cstdlib>
#include <cstring>

using namespace lampblack;
using namespace lampblack::quickdraw;

namespace {

constexpr short kWidth = 560;

void Say(short h, short v, const char* text)
{
    MoveTo(h, v);
    DrawText(text, 0, (short)std::strlen(text));
}

void DrawStyles(short top)
{
    static constexpr Style kStyles[] = { normal,
                                         bold,
                                         italic,
                                         underline,
                                         outline,
                                         shadow,
                                         condense,
                                         extend,
                                         bold | italic,
                                         bold | outline,
                                         bold | shadow | underline };
    short v = top;
    for (const Style style : kStyles) {
        TextFace(style);
        short h = 6;
        for (const short font : { systemFont, kFontIDGeneva, kFontIDTimes, kFontIDCourier }) {
            TextFont(font);
            TextSize(font == kFontIDGeneva ? 9 : 12);
            Say(h, v, "Gypsum (soot), joy");
            h = (short)(h + 138);
        }
        v = (short)(v + 18);
    }
    TextFace(normal);
}

void DrawScripts(short top)
{
    static constexpr const char* kTexts[] = { "caf\u0065\u0301 n\u0303 a\u0308\u0323",
                                              "\u05E9\u05DC\u05D5\u05DD",
                                              "\u0633\u0644\u0627\u0645 \u0639\u0644\u064A\u0643\u0645",
                                              "\u0928\u092E\u0938\u094D\u0924\u0947",
                                              "\u65E5\u672C\u8A9E",
                                              "\u0416\u03A9 abc \u05D0\u05D1 xyz",
                                              "\u2318\u2713 \U0001F600" };
    short h = 6;
    for (const char* text : kTexts) {
        MoveTo(h, top);
        DrawUtf8({ kFontIDGeneva, 14, normal }, text);
        Point pen;
        GetPen(&pen);
        h = (short)(pen.h + 14);
    }
}

void DrawModes(short top)
{
    const RGBColor sand = { 0xE000, 0xC000, 0x8000 }, green = { 0, 0x6000, 0 };
    const Rect band = { (short)(top - 18), 0, (short)(top + 8), kWidth };
    RGBForeColor(&sand);
    PaintRect(&band);
    RGBForeColor(&green);
    short h = 6;
    for (const short mode : { (short)srcCopy, (short)srcOr, (short)srcXor, (short)srcBic, (short)notSrcCopy,
                              (short)blend, (short)addOver, (short)grayishTextOr, (short)mask }) {
        TextMode(mode);
        Say(h, top, "Lamp");
        h = (short)(h + 60);
    }
    TextMode(srcOr);
    ForeColor(blackColor);
}

} // namespace

TEST_CASE("Text card: styles, scripts and modes at every depth")
{
    for (const short depth : { 1, 2, 4, 8, 16, 32 }) {
        const Rect bounds = { 0, 0, 270, kWidth };
        GWorldPtr world = nullptr;
        REQUIRE(NewGWorld(&world, depth, &bounds, nullptr, nullptr, 0) == noErr);
        SetGWorld(world, nullptr);
        EraseRect(&bounds);
        DrawStyles(16);
        DrawScripts(222);
        DrawModes(254);
        const golden::Picture picture = golden::PictureOf(world);
        size_t ink = 0;
        for (const uint32_t color : picture.colors)
            ink += color != 0xFFFFFF;
        CHECK(ink > 15000);
        if (const char* folder = std::getenv("LAMPBLACK_TEXTCARD"))
            CHECK(golden::SavePng(picture, std::string(folder) + "/text." + std::to_string(depth) + ".png"));
        DisposeGWorld(world);
    }
}
