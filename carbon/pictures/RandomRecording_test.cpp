// Whatever is drawn at random is the same pixels when it was recorded and is played.
#include "TestPictures.h"

#include <Carbon/Fonts.h>
#include <doctest/doctest.h>

#include <random>

using namespace lampblack::pictures;

namespace {

constexpr int kWidth = 96, kHeight = 80;

class Artist {
public:
    explicit Artist(unsigned seed, const TestWorld& source, bool hasPixels = true)
        : fRandom(seed), fSource(source), fHasPixels(hasPixels)
    {
        fRegion = NewRgn();
        fPixels = NewPixPat();
        const RGBColor color = Color();
        MakeRGBPat(fPixels, &color);
    }
    ~Artist()
    {
        DisposeRgn(fRegion);
        DisposePixPat(fPixels);
    }
    Artist(const Artist&) = delete;
    Artist& operator=(const Artist&) = delete;

    void Draw()
    {
        for (int i = 0; i < 24; ++i) {
            ChangeState();
            DrawOne();
        }
        const Pattern white = {};
        BackPat(&white); // before the pixel pattern goes
        PenNormal();
        SetOrigin(0, 0);
        const Rect all = MakeRect(-32767, -32767, 32767, 32767);
        ClipRect(&all);
    }

private:
    int Number(int least, int most) { return (int)(least + (int)(fRandom() % (unsigned)(most - least + 1))); }
    RGBColor Color()
    {
        return { (UInt16)(Number(0, 255) * 257), (UInt16)(Number(0, 255) * 257),
                 (UInt16)(Number(0, 255) * 257) };
    }
    Rect Place()
    {
        const int left = Number(-10, kWidth - 5), top = Number(-10, kHeight - 5);
        return MakeRect(left, top, left + Number(1, 60), top + Number(1, 60));
    }
    Pattern Bits()
    {
        Pattern pattern;
        for (UInt8& row : pattern.pat)
            row = (UInt8)Number(0, 255);
        return pattern;
    }

    void ChangeState()
    {
        const RGBColor color = Color();
        const Pattern pattern = Bits();
        static constexpr short kModes[] = { patCopy, patOr,  patXor, patBic,  notPatCopy,  notPatOr, blend,
                                            addPin,  addMax, adMin,  subOver, transparent, hilite };
        switch (Number(0, 11)) {
        case 0: return RGBForeColor(&color);
        case 1: return RGBBackColor(&color);
        case 2: return PenPat(&pattern);
        case 3: return BackPat(&pattern);
        case 4: return PenSize((short)Number(0, 6), (short)Number(0, 6));
        case 5: return PenMode(kModes[Number(0, 12)]);
        case 6: return !fHasPixels ? PenNormal() : Number(0, 1) ? PenPixPat(fPixels) : BackPixPat(fPixels);
        case 7: return ChangeText();
        case 8: return OpColor(&color);
        case 9: return ChangeClip();
        case 10: return SetOrigin((short)Number(-9, 9), (short)Number(-9, 9));
        default: return HiliteColor(&color);
        }
    }
    void ChangeText()
    {
        TextFont(Number(0, 1) ? kFontIDTimes : kFontIDGeneva);
        TextSize((short)Number(6, 30));
        TextFace((StyleParameter)Number(0, 127));
        TextMode((short)Number(0, 7));
        SpaceExtra(Number(-2, 2) << 15);
        CharExtra(Number(-2, 2) << 15);
    }
    void ChangeClip()
    {
        const Rect rect = Place(), all = MakeRect(-200, -200, 300, 300);
        ClipRect(&all);
        if (Number(0, 2) == 0)
            return;
        OpenRgn();
        FrameOval(&rect);
        CloseRgn(fRegion);
        if (!EmptyRgn(fRegion))
            SetClip(fRegion);
    }

    void DrawOne()
    {
        const Rect r = Place();
        const short a = (short)Number(-400, 400), b = (short)Number(-400, 400);
        const int verb = Number(0, 5);
        switch (Number(0, 9)) {
        case 0: return Verb(verb, FrameRect, PaintRect, EraseRect, InvertRect, FillRect, FillCRect, &r);
        case 1: return Verb(verb, FrameOval, PaintOval, EraseOval, InvertOval, FillOval, FillCOval, &r);
        case 2:
            return Verb(verb, FrameRoundRect, PaintRoundRect, EraseRoundRect, InvertRoundRect, FillRoundRect,
                        FillCRoundRect, &r, (short)Number(0, 30), (short)Number(0, 30));
        case 3: return Verb(verb, FrameArc, PaintArc, EraseArc, InvertArc, FillArc, FillCArc, &r, a, b);
        case 4: return DrawPolygon(verb, r);
        case 5: return DrawRegion(verb, r);
        case 6: return DrawLines(r);
        case 7: return DrawText(r);
        case 8: return Copy(r);
        default: return CopyThroughMask(r);
        }
    }
    template <class Frame, class Fill, class FillC, class... Shape>
    void Verb(int verb, Frame frame, Frame paint, Frame erase, Frame invert, Fill fill, FillC fillC,
              Shape... shape)
    {
        const Pattern pattern = Bits();
        if (verb < 4)
            return (verb == 0 ? frame : verb == 1 ? paint : verb == 2 ? erase : invert)(shape...);
        verb == 4 || !fHasPixels ? fill(shape..., &pattern) : fillC(shape..., fPixels);
    }
    void DrawPolygon(int verb, const Rect& r)
    {
        const PolyHandle polygon = OpenPoly();
        MoveTo(r.left, r.top);
        for (int i = 0; i < 5; ++i)
            LineTo((short)Number(r.left, r.right), (short)Number(r.top, r.bottom));
        ClosePoly();
        Verb(verb, FramePoly, PaintPoly, ErasePoly, InvertPoly, FillPoly, FillCPoly, polygon);
        KillPoly(polygon);
    }
    void DrawRegion(int verb, const Rect& r)
    {
        const Rect other = Place();
        OpenRgn();
        FrameOval(&r);
        FrameRect(&other);
        CloseRgn(fRegion);
        Verb(verb, FrameRgn, PaintRgn, EraseRgn, InvertRgn, FillRgn, FillCRgn, fRegion);
    }
    void DrawLines(const Rect& r)
    {
        MoveTo(r.left, r.top);
        LineTo(r.right, r.bottom);
        Line((short)Number(-20, 20), (short)Number(-300, 20));
    }
    void DrawText(const Rect& r)
    {
        MoveTo(r.left, r.bottom);
        const Point numer = { (short)Number(1, 3), (short)Number(1, 3) },
                    denom = { (short)Number(1, 3), (short)Number(1, 3) };
        char text[] = "Lamp black ink";
        if (Number(0, 1))
            DrawString((ConstStr255Param) "\012a few word");
        else
            DrawJustified(text, 14, Number(-5, 20) << 16, onlyStyleRun, numer, denom);
        DrawChar((CharParameter)Number(33, 126));
    }
    void Copy(const Rect& r)
    {
        static constexpr short kModes[] = { srcCopy, srcOr,       srcXor, srcBic,  notSrcCopy, notSrcOr,
                                            blend,   transparent, addPin, addOver, subPin,     ditherCopy };
        Rect from = MakeRect(2, 3, Number(4, 37), Number(5, 29));
        Rect to = r;
        if (Number(0, 1))
            to = MakeRect(r.left, r.top, r.left + from.right - from.left, r.top + from.bottom - from.top);
        OpenRgn();
        FrameOval(&to);
        CloseRgn(fRegion);
        CopyBits(fSource.Bits(), GetPortBitMapForCopyBits(GetQDGlobalsThePort()), &from, &to,
                 kModes[Number(0, 11)], Number(0, 2) || EmptyRgn(fRegion) ? nullptr : fRegion);
    }
    void CopyThroughMask(const Rect& r)
    {
        static const UInt16 rows[16] = { 0xFF00, 0x8001, 0x1234, 0xFFFF, 0x0FF0, 0xAAAA, 0x0F0F, 0x1111,
                                         0xFF00, 0x8001, 0x1234, 0xFFFF, 0x0FF0, 0xAAAA, 0x0F0F, 0x1111 };
        BitMap mask = {};
        mask.baseAddr = (Ptr)rows;
        mask.rowBytes = 2;
        mask.bounds = MakeRect(0, 0, 16, 16);
        const Rect from = MakeRect(1, 1, 30, 25);
        CopyMask(fSource.Bits(), &mask, GetPortBitMapForCopyBits(GetQDGlobalsThePort()), &from, &mask.bounds,
                 &r);
    }

    std::mt19937 fRandom;
    const TestWorld& fSource;
    bool fHasPixels; // patterns of pixels stay at the origin
    RgnHandle fRegion;
    PixPatHandle fPixels;
};

} // namespace

TEST_CASE("DrawPicture: a hundred random recordings are the same pixels as the drawings, here and elsewhere")
{
    static constexpr int kDepths[] = { 1, 2, 4, 8, 16, 32 };
    const Rect frame = MakeRect(0, 0, kWidth, kHeight), there = MakeRect(13, 7, 13 + kWidth, 7 + kHeight);
    for (unsigned seed = 0; seed < 102; ++seed) {
        CAPTURE(seed);
        const int depth = kDepths[seed % 6];
        TestWorld source(37, 29, kDepths[seed / 6 % 6]);
        const Rect dot = MakeRect(5, 5, 20, 20);
        PaintOval(&dot);
        TestWorld recorded(kWidth, kHeight, depth);
        const PicHandle picture = OpenPicture(&frame);
        REQUIRE(picture != nullptr);
        Artist(seed, source).Draw();
        ClosePicture();
        TestWorld drawn(kWidth, kHeight, depth), played(kWidth, kHeight, depth);
        drawn.Use();
        Artist(seed, source).Draw();
        played.Use();
        DrawPicture(picture, &frame);
        CHECK(QDError() == noErr);
        CHECK(Differences(played, drawn) == 0);
        TestWorld moved(kWidth, kHeight, depth);
        SetOrigin(there.left, there.top);
        DrawPicture(picture, &there);
        SetOrigin(0, 0);
        CHECK(Differences(moved, drawn) == 0);
        KillPicture(picture);
    }
}

TEST_CASE(
    "DrawPicture: random pictures that are played elsewhere while one is recorded are the same in that one")
{
    const Rect frame = MakeRect(0, 0, kWidth, kHeight), there = MakeRect(5, 3, 5 + kWidth, 3 + kHeight);
    const TestWorld source(37, 29);
    for (unsigned seed = 500; seed < 540; ++seed) {
        CAPTURE(seed);
        const TestWorld drawn(kWidth, kHeight), played(kWidth, kHeight);
        const PicHandle inner = OpenPicture(&frame);
        Artist(seed, source, false).Draw();
        ClosePicture();
        const PicHandle outer = OpenPicture(&frame);
        DrawPicture(inner, &there);
        ClosePicture();
        DrawPicture(outer, &frame);
        drawn.Use();
        DrawPicture(inner, &there);
        CHECK(Differences(played, drawn) == 0);
        KillPicture(inner);
        KillPicture(outer);
    }
}
