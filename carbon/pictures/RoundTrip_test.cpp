// What was recorded draws the same pixels again.
#include "TestPictures.h"

#include <Carbon/Fonts.h>
#include <doctest/doctest.h>

#include <cstring>
#include <functional>

using namespace lampblack::pictures;

namespace {

constexpr int kDepths[] = { 1, 2, 4, 8, 16, 32 };

// Records a drawing in a world of a depth, plays it in another one and draws it directly in a third.
int DifferencesOf(int depth, const std::function<void()>& draw)
{
    const Rect frame = MakeRect(0, 0, 96, 80);
    TestWorld recorded(96, 80, depth);
    const PicHandle picture = OpenPicture(&frame);
    REQUIRE(picture != nullptr);
    draw();
    ClosePicture();
    CHECK(QDError() == noErr);
    CHECK(recorded.CountBlack() == 0); // the pen was hidden
    TestWorld played(96, 80, depth), drawn(96, 80, depth);
    played.Use();
    DrawPicture(picture, &frame);
    CHECK(QDError() == noErr);
    KillPicture(picture);
    drawn.Use();
    draw();
    CHECK(drawn.Colors() != std::vector<uint32_t>(96 * 80, 0xFFFFFF));
    return Differences(played, drawn);
}

void SetColors(const RGBColor& fore, const RGBColor& back)
{
    RGBForeColor(&fore);
    RGBBackColor(&back);
}

const RGBColor kRed = { 0xFFFF, 0, 0 }, kBlue = { 0, 0, 0xFFFF }, kSand = { 0xC000, 0xB000, 0x8000 };

void DrawShapes()
{
    Pattern gray;
    GetQDGlobalsGray(&gray);
    SetColors(kRed, kSand);
    PenSize(3, 2);
    Rect r = MakeRect(5, 5, 40, 30);
    FrameRect(&r);
    PenPat(&gray);
    PaintOval(&r);
    PenNormal();
    OffsetRect(&r, 40, 0);
    EraseRoundRect(&r, 12, 9);
    FrameRoundRect(&r, 12, 9);
    SetColors(kBlue, kSand);
    OffsetRect(&r, 0, 35);
    FillArc(&r, 30, 250, &gray);
    FrameArc(&r, 30, 250);
    InvertRect(&r);
    OffsetRect(&r, -40, 0);
    PaintArc(&r, 200, 100);
    FillRect(&r, &gray);
    FillOval(&r, &gray);
    EraseOval(&r);
    InvertOval(&r);
}

void DrawLinesAndPolygons()
{
    SetColors(kBlue, kSand);
    MoveTo(3, 3);
    LineTo(90, 70);
    Line(-200 + 120, 5);
    PenSize(4, 4);
    MoveTo(10, 60);
    LineTo(12, 10);
    PenMode(patXor);
    LineTo(80, 20);
    PenNormal();
    const PolyHandle polygon = OpenPoly();
    MoveTo(20, 10);
    LineTo(80, 40);
    LineTo(30, 70);
    LineTo(20, 10);
    ClosePoly();
    PaintPoly(polygon);
    SetColors(kRed, kSand);
    OffsetPoly(polygon, 5, 5);
    FramePoly(polygon);
    InvertPoly(polygon);
    KillPoly(polygon);
}

void DrawRegions()
{
    SetColors(kRed, kSand);
    const RgnHandle region = NewRgn(), hole = NewRgn(), before = NewRgn();
    GetClip(before);
    SetRectRgn(region, 10, 10, 70, 60);
    SetRectRgn(hole, 30, 20, 50, 50);
    DiffRgn(region, hole, region);
    PaintRgn(region);
    FrameRgn(region);
    OffsetRgn(region, 15, 12);
    SetClip(region);
    const Rect all = MakeRect(0, 0, 96, 80);
    InvertRect(&all);
    SetClip(before);
    OffsetRgn(region, -20, 4);
    EraseRgn(region);
    DisposeRgn(region);
    DisposeRgn(hole);
    DisposeRgn(before);
}

void DrawTexts()
{
    TextFont(20);
    TextSize(14);
    MoveTo(4, 20);
    DrawString((ConstStr255Param) "\005Hello");
    DrawString((ConstStr255Param) "\005 you ");
    TextFace(bold | italic);
    MoveTo(4, 40);
    DrawString((ConstStr255Param) "\004Bold");
    TextMode(srcXor);
    TextFace(normal);
    SpaceExtra(0x30000);
    MoveTo(10, 44);
    DrawString((ConstStr255Param) "\005a b c");
}

} // namespace

TEST_CASE("DrawPicture: recorded shapes are the same pixels at every depth")
{
    for (const int depth : kDepths) {
        CAPTURE(depth);
        CHECK(DifferencesOf(depth, DrawShapes) == 0);
    }
}

TEST_CASE("DrawPicture: recorded lines and polygons are the same pixels at every depth")
{
    for (const int depth : kDepths) {
        CAPTURE(depth);
        CHECK(DifferencesOf(depth, DrawLinesAndPolygons) == 0);
    }
}

TEST_CASE("DrawPicture: recorded regions and clip regions are the same pixels at every depth")
{
    for (const int depth : kDepths) {
        CAPTURE(depth);
        CHECK(DifferencesOf(depth, DrawRegions) == 0);
    }
}

TEST_CASE("DrawPicture: recorded text is the same pixels at every depth")
{
    for (const int depth : kDepths) {
        CAPTURE(depth);
        CHECK(DifferencesOf(depth, DrawTexts) == 0);
    }
}

TEST_CASE("DrawPicture: pixels copied from every depth to every depth are the same")
{
    for (const int from : kDepths)
        for (const int to : kDepths) {
            CAPTURE(from);
            CAPTURE(to);
            TestWorld source(37, 29, from);
            DrawShapes();
            const Rect part = MakeRect(3, 2, 34, 28), place = MakeRect(11, 7, 42, 33),
                       wide = MakeRect(5, 40, 90, 75);
            CHECK(DifferencesOf(to, [&] {
                      CopyBits(source.Bits(), GetPortBitMapForCopyBits(GetQDGlobalsThePort()), &part, &place,
                               srcCopy, nullptr);
                      CopyBits(source.Bits(), GetPortBitMapForCopyBits(GetQDGlobalsThePort()), &part, &wide,
                               srcOr, nullptr);
                  }) == 0);
        }
}

TEST_CASE("DrawPicture: copied pixels go through their mask region")
{
    TestWorld source(40, 40);
    SetColors(kRed, kSand);
    PaintRect(&source.bounds);
    const RgnHandle mask = NewRgn();
    OpenRgn();
    const Rect oval = MakeRect(10, 10, 40, 40);
    FrameOval(&oval);
    CloseRgn(mask);
    CHECK(DifferencesOf(32, [&] {
              const Rect to = MakeRect(5, 5, 45, 45);
              CopyBits(source.Bits(), GetPortBitMapForCopyBits(GetQDGlobalsThePort()), &source.bounds, &to,
                       srcCopy, mask);
          }) == 0);
    DisposeRgn(mask);
}

TEST_CASE("DrawPicture: narrow images, whose rows are not packed, are the same")
{
    for (const int depth : kDepths)
        for (int width = 1; width <= 5; ++width) {
            CAPTURE(depth);
            CAPTURE(width);
            TestWorld source(width, 9, depth);
            const Rect dot = MakeRect(0, 2, 1, 6);
            PaintRect(&dot);
            CHECK(DifferencesOf(32, [&] {
                      const Rect to = MakeRect(7, 7, 7 + width, 16);
                      CopyBits(source.Bits(), GetPortBitMapForCopyBits(GetQDGlobalsThePort()), &source.bounds,
                               &to, srcCopy, nullptr);
                  }) == 0);
        }
}

TEST_CASE("DrawPicture: pixel patterns of pens, backgrounds and fills are the same")
{
    const PixPatHandle pattern = NewPixPat();
    MakeRGBPat(pattern, &kSand);
    CHECK(DifferencesOf(32, [&] {
              Rect r = MakeRect(3, 3, 60, 40);
              PenPixPat(pattern);
              PaintRect(&r);
              PenNormal();
              OffsetRect(&r, 20, 20);
              FillCOval(&r, pattern);
              BackPixPat(pattern);
              OffsetRect(&r, 10, 10);
              EraseRect(&r);
              Pattern white = {};
              BackPat(&white);
          }) == 0);
    DisposePixPat(pattern);
}

TEST_CASE("DrawPicture: what was drawn after SetOrigin comes to the same place")
{
    CHECK(DifferencesOf(32, [] {
              Rect r = MakeRect(3, 3, 30, 20);
              PaintRect(&r);
              SetOrigin(-20, -30);
              FrameOval(&r);
              SetOrigin(0, 0);
              OffsetRect(&r, 50, 40);
              PaintRect(&r);
          }) == 0);
}

TEST_CASE("DrawPicture: a picture drawn while another one is open is part of that one")
{
    const Rect frame = MakeRect(0, 0, 30, 30), spot = MakeRect(5, 5, 20, 20);
    TestWorld world(30, 30);
    const PicHandle inner = OpenPicture(&frame);
    PaintRect(&spot);
    ClosePicture();
    const PicHandle outer = OpenPicture(&frame);
    DrawPicture(inner, &frame);
    ClosePicture();
    KillPicture(inner);
    CHECK(world.CountBlack() == 0);
    DrawPicture(outer, &frame);
    CHECK(world.CountBlack() == 15 * 15);
    KillPicture(outer);
}

TEST_CASE("OpenCPicture: a picture made at twice the resolution is half as large, and plays in its own size")
{
    const OpenCPicParams params = { MakeRect(0, 0, 60, 40), 0x00900000, 0x00900000, -2, 0, 0 };
    TestWorld world(60, 40);
    const PicHandle picture = OpenCPicture(&params);
    const Rect left = MakeRect(0, 0, 30, 40);
    PaintRect(&left);
    ClosePicture();
    Rect frame;
    QDGetPictureBounds(picture, &frame);
    CHECK(frame.right == 30);
    CHECK(frame.bottom == 20);
    DrawPicture(picture, &params.srcRect);
    CHECK(world.CountBlack() == 30 * 40);
    EraseRect(&world.bounds);
    DrawPicture(picture, &frame);
    CHECK(world.CountBlack() == 15 * 20);
    KillPicture(picture);
}

TEST_CASE("DrawPicture: a text of more than 255 letters is recorded in parts that join")
{
    std::string text(400, 'i');
    CHECK(DifferencesOf(32, [&] {
              TextSize(9);
              MoveTo(-700, 30);
              DrawText(text.data(), 0, 400);
          }) == 0);
}

TEST_CASE("DrawPicture: an image of several bands is scaled as in one piece")
{
    TestWorld source(2000, 1300); // more than 8 MB
    const PixMapHandle map = GetGWorldPixMap(source.world);
    const int rowBytes = (**map).rowBytes & 0x3FFF;
    for (int v = 0; v < 1300; ++v)
        for (int h = 0; h < 2000; ++h) {
            const uint32_t color = (uint32_t)(h * 0x010307 + v * 0x0B0501) & 0xFFFFFF;
            std::memcpy(GetPixBaseAddr(map) + (ptrdiff_t)v * rowBytes + h * 4, &color, 4);
        }
    const Rect small = MakeRect(1, 2, 90, 77), large = MakeRect(-900, -700, 3000, 1900);
    for (const Rect& to : { small, large })
        for (const short mode : { srcCopy, ditherCopy })
            CHECK(DifferencesOf(32, [&] {
                      CopyBits(source.Bits(), GetPortBitMapForCopyBits(GetQDGlobalsThePort()), &source.bounds,
                               &to, mode, nullptr);
                  }) == 0);
}

TEST_CASE("DrawPicture: text that was stretched, justified and set apart is the same at every depth")
{
    for (const int depth : kDepths) {
        CAPTURE(depth);
        CHECK(DifferencesOf(depth, [] {
                  TextFont(kFontIDTimes);
                  TextSize(14);
                  const Point numer = { 3, 2 }, denom = { 2, 3 }, one = { 1, 1 };
                  MoveTo(4, 20);
                  StdText(7, "stretch", numer, denom);
                  char text[] = "a few words";
                  MoveTo(4, 40);
                  DrawJustified(text, 11, 10 << 16, onlyStyleRun, one, one);
                  CharExtra(0x10000);
                  MoveTo(4, 60);
                  DrawString((ConstStr255Param) "\014set apart by");
                  TextSize(9);
                  CharExtra(-0x8000);
                  MoveTo(4, 75);
                  DrawString((ConstStr255Param) "\014set together");
              }) == 0);
    }
}

TEST_CASE("DrawPicture: text in every mode, with the colours that the modes look at")
{
    static constexpr short kModes[] = { srcCopy,  srcOr,     srcXor,    srcBic,         notSrcCopy,
                                        notSrcOr, notSrcXor, notSrcBic, grayishTextOr,  blend,
                                        addPin,   addOver,   subPin,    transparent,    addMax,
                                        subOver,  adMin,     hilite,    srcCopy + mask, blend + mask };
    for (const int depth : kDepths)
        for (const short mode : kModes) {
            CAPTURE(depth);
            CAPTURE(mode);
            CHECK(DifferencesOf(depth, [mode] {
                      const RGBColor weight = { 0x4000, 0x8000, 0xE000 }, lime = { 0x8000, 0xFFFF, 0 };
                      const Rect ground = MakeRect(0, 0, 50, 80), dot = MakeRect(90, 0, 96, 5);
                      PaintRect(&dot); // black at every depth
                      SetColors(kSand, kBlue);
                      PaintRect(&ground);
                      OpColor(&weight);
                      HiliteColor(&lime);
                      SetColors(kRed, kSand);
                      TextSize(24);
                      TextFace(bold);
                      TextMode(mode);
                      MoveTo(3, 50);
                      DrawString((ConstStr255Param) "\005Lamps");
                  }) == 0);
        }
}

TEST_CASE("DrawPicture: pixels copied in every mode, with the colours that the modes look at")
{
    static constexpr short kModes[] = { srcCopy,     srcOr,     srcXor,  srcBic, notSrcCopy, notSrcOr,
                                        notSrcXor,   notSrcBic, blend,   addPin, addOver,    subPin,
                                        transparent, addMax,    subOver, adMin,  hilite,     ditherCopy };
    for (const int depth : kDepths)
        for (const short mode : kModes) {
            CAPTURE(depth);
            CAPTURE(mode);
            TestWorld source(37, 29, 8);
            DrawShapes();
            CHECK(DifferencesOf(depth, [&] {
                      const RGBColor weight = { 0x4000, 0x8000, 0xE000 }, lime = { 0x8000, 0xFFFF, 0 };
                      const Rect ground = MakeRect(0, 0, 30, 80), to = MakeRect(10, 10, 80, 60),
                                 dot = MakeRect(90, 0, 96, 5);
                      PaintRect(&dot); // black at every depth
                      SetColors(kSand, kBlue);
                      PaintRect(&ground);
                      OpColor(&weight);
                      HiliteColor(&lime);
                      SetColors(kRed, kSand);
                      CopyBits(source.Bits(), GetPortBitMapForCopyBits(GetQDGlobalsThePort()), &source.bounds,
                               &to, mode, nullptr);
                  }) == 0);
        }
}

TEST_CASE("DrawPicture: pixels copied through a mask of bits are the same, scaled and not")
{
    TestWorld source(40, 40), mask(40, 40, 1);
    const Rect oval = MakeRect(4, 4, 36, 30), line = MakeRect(0, 20, 40, 22);
    PaintOval(&oval);
    InvertRect(&line);
    source.Use();
    DrawShapes();
    for (const int depth : kDepths)
        for (const Rect& to : { MakeRect(5, 5, 45, 45), MakeRect(-10, 7, 90, 75) }) {
            CAPTURE(depth);
            CHECK(DifferencesOf(depth, [&] {
                      CopyMask(source.Bits(), mask.Bits(), GetPortBitMapForCopyBits(GetQDGlobalsThePort()),
                               &source.bounds, &mask.bounds, &to);
                  }) == 0);
        }
}

TEST_CASE("OpenPicture: a mask of greys leaves a copy of what it lets through by half or more")
{
    TestWorld source(40, 40), mask(40, 40);
    const Rect dark = MakeRect(0, 0, 10, 40), light = MakeRect(10, 0, 20, 40);
    SetColors({ 0x4000, 0x4000, 0x4000 }, kSand);
    PaintRect(&dark);
    SetColors({ 0xA000, 0xA000, 0xA000 }, kSand);
    PaintRect(&light);
    source.Use();
    SetColors(kRed, kSand);
    PaintRect(&source.bounds);
    TestWorld played(40, 40);
    const PicHandle picture = OpenPicture(&played.bounds);
    CopyDeepMask(source.Bits(), mask.Bits(), played.Bits(), &source.bounds, &mask.bounds, &played.bounds,
                 srcCopy, nullptr);
    ClosePicture();
    DrawPicture(picture, &played.bounds);
    CHECK(played.At(5, 20) == 0xFF0000);
    CHECK(played.IsWhite(15, 20));
    CHECK(played.IsWhite(30, 20));
    KillPicture(picture);
}

TEST_CASE("PicComment: the comments of a picture go over to one that is open while it is played")
{
    const Rect frame = MakeRect(0, 0, 30, 30);
    TestWorld world(30, 30);
    MadePicture made(frame);
    made.Op(0xA0, { 130 }).Op(0xA1, { 100, 3 }).Bytes({ 'a', 'b', 'c' });
    const PicHandle picture = OpenPicture(&frame);
    CHECK(PlayHere(made.End()) == noErr);
    ClosePicture();
    const std::vector<uint8_t> bytes = BytesOf(picture);
    const std::string all(bytes.begin(), bytes.end());
    CHECK(all.find(std::string({ 0, (char)0xA0, 0, (char)130 })) != std::string::npos);
    CHECK(all.find(std::string({ 0, (char)0xA1, 0, 100, 0, 3, 'a', 'b', 'c' })) != std::string::npos);
    KillPicture(picture);
}
