// A picture of everything, written as a PNG file to be looked at: quickdraw_test -tc="Test card*" with
// LAMPBLACK_TESTCARD naming the file. Without it the picture is drawn and only asked to be no blank.
#include "TestPort.h"
#include "TextEngine.h"

#include <Carbon/Fonts.h>

#include <png.h>

#include <cstring>

using namespace lampblack::quickdraw;

static bool Save(const PixelView& view, const char* path)
{
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.width = (png_uint_32)view.rowPixels;
    image.height = (png_uint_32)(view.bounds.bottom - view.bounds.top);
    image.format = PNG_FORMAT_BGRA; // little-endian words; the empty byte is made opaque
    std::vector<uint32_t> opaque(view.base, view.base + (size_t)image.width * image.height);
    for (uint32_t& pixel : opaque)
        pixel |= 0xFF000000;
    return png_image_write_to_file(&image, path, 0, opaque.data(), 0, nullptr) != 0;
}

static void Say(short h, short v, const char* text)
{
    MoveTo(h, v);
    DrawText(text, 0, (short)std::strlen(text));
}

static void DrawShapes(short top)
{
    static constexpr Pattern stripes = { { 0x11, 0x22, 0x44, 0x88, 0x11, 0x22, 0x44, 0x88 } };
    using Draw = void (*)(const Rect&);
    static constexpr Draw kDraws[] = {
        [](const Rect& r) { FrameRect(&r); },
        [](const Rect& r) { FrameOval(&r); },
        [](const Rect& r) { FrameRoundRect(&r, 20, 20); },
        [](const Rect& r) { FrameArc(&r, 30, 250); },
        [](const Rect& r) { PaintRect(&r); },
        [](const Rect& r) { PaintOval(&r); },
        [](const Rect& r) { PaintRoundRect(&r, 20, 20); },
        [](const Rect& r) { PaintArc(&r, 30, 250); },
        [](const Rect& r) { FillOval(&r, &stripes); },
        [](const Rect& r) { InvertRoundRect(&r, 30, 10); },
    };
    for (size_t i = 0; i < std::size(kDraws); ++i) {
        const int left = 10 + (int)i * 62;
        PenNormal();
        if (i < 4)
            PenSize((short)(1 + i), (short)(1 + i));
        ForeColor(i % 3 == 0 ? redColor : i % 3 == 1 ? blueColor : blackColor);
        kDraws[i](MakeRect(left, top, left + 54, top + 40));
    }
    PenNormal();
    ForeColor(blackColor);
}

static void DrawFan(short h, short v)
{
    for (short i = 0; i <= 10; ++i) {
        PenSize((short)(1 + i / 4), (short)(1 + i / 4));
        MoveTo(h, v);
        LineTo((short)(h + 100), (short)(v - 50 + i * 10));
        MoveTo(h, v);
        LineTo((short)(h - 50 + i * 10), (short)(v + 60));
    }
    PenNormal();
}

static void DrawFonts(short top)
{
    static constexpr short kFonts[] = { systemFont,   kFontIDNewYork,   kFontIDGeneva, kFontIDMonaco,
                                        kFontIDTimes, kFontIDHelvetica, kFontIDCourier };
    short v = top;
    for (const short font : kFonts) {
        TextFont(font);
        TextSize(12);
        TextFace(normal);
        Say(10, v, "Sphinx of black quartz \xA5 \x8E\x9F\xC9 ");
        static constexpr Style kFaces[] = { bold, italic, underline, outline, shadow, condense, extend };
        for (const Style face : kFaces) {
            TextFace(face);
            DrawText("judge ", 0, 6);
        }
        v += 18;
    }
    TextFont(systemFont);
    TextFace(normal);
    short h = 10;
    for (const short size : { 9, 10, 13, 18, 24, 36 }) {
        TextSize(size);
        Say(h, (short)(v + 24), "Quartz ");
        Point pen;
        GetPen(&pen);
        h = pen.h;
    }
    TextSize(12);
}

static void DrawModes(short top)
{
    const Rect band = MakeRect(10, top, 630, top + 24);
    const RGBColor sand = { 0xE000, 0xC000, 0x8000 }, green = { 0, 0x6000, 0 };
    RGBForeColor(&sand);
    PaintRect(&band);
    RGBForeColor(&green);
    short h = 14;
    for (short mode : { 0, 1, 2, 3, 4, 5, 6, 7, 49 }) {
        TextMode(mode);
        Say(h, (short)(top + 17), "mode");
        h += 66;
    }
    TextMode(srcOr);
    ForeColor(blackColor);
}

TEST_CASE("Test card: everything at once")
{
    TestPort port(640, 420);
    DrawShapes(10);
    DrawFan(60, 120);
    RgnHandle region = NewRgn();
    OpenRgn();
    const Rect ring = MakeRect(200, 70, 300, 170), hole = MakeRect(225, 95, 275, 145);
    FrameOval(&ring);
    FrameRoundRect(&hole, 16, 16);
    CloseRgn(region);
    Pattern gray;
    FillRgn(region, GetQDGlobalsGray(&gray));
    FrameRgn(region);
    DisposeRgn(region);
    const Rect from = MakeRect(10, 10, 135, 60), to = MakeRect(330, 70, 580, 170);
    CopyBits(GetPortBitMapForCopyBits(port.port), GetPortBitMapForCopyBits(port.port), &from, &to, srcCopy,
             nullptr);
    DrawFonts(205);
    DrawModes(380);
    int ink = 0;
    for (int v = 0; v < 420; ++v)
        for (int h = 0; h < 640; ++h)
            ink += port.At(h, v) != 0xFFFFFF;
    CHECK(ink > 20000);
    if (const char* path = std::getenv("LAMPBLACK_TESTCARD"))
        CHECK(Save(PortPixels(port.port), path));
}
