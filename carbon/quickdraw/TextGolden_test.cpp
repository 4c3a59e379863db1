// Pictures of text in a bitmap font of our own, so that they are the same everywhere.
#include "TestFontFile.h"

#include <Carbon/QDOffscreen.h>
#include <Carbon/Quickdraw.h>

#include <golden/Golden.h>

using namespace lampblack;
using namespace lampblack::quickdraw;

namespace {

constexpr short kFamily = 2500;

// Letters of three rows and a fourth below the baseline: enough to see a word.
TestFont WordFont()
{
    TestFont font;
    font.first = 'a';
    font.ascent = 3;
    font.glyphs = {
        { { ".##.", "#.#.", ".###", "...." }, 0, 5 }, { { "#...", "###.", "###.", "...." }, 0, 5 },
        { { ".##.", "#...", ".##.", "...." }, 0, 5 }, { { "..#.", ".##.", ".###", "...." }, 0, 5 },
        { { "###.", "##..", "###.", "...." }, 0, 5 }, { { ".##.", "###.", ".#..", ".#.." }, 0, 5 },
        { { ".##.", "#.#.", ".##.", "##.." }, 0, 5 }, { { "#.#", "#.#", "###", "..." }, 0, 4 }
    };
    return font;
}

class World {
public:
    World(short depth, short width, short height)
    {
        const Rect bounds = { 0, 0, height, width };
        REQUIRE(NewGWorld(&fWorld, depth, &bounds, nullptr, nullptr, 0) == noErr);
        SetGWorld(fWorld, nullptr);
        EraseRect(&bounds);
        TextFont(kFamily);
    }
    ~World() { DisposeGWorld(fWorld); }
    World(const World&) = delete;
    World& operator=(const World&) = delete;
    CGrafPtr Port() const { return fWorld; }

private:
    GWorldPtr fWorld = nullptr;
};

class Fonts {
public:
    Fonts()
    {
        FontFile::Add('NFNT', 1000, WordFont().Bytes());
        FontFile::Add('FOND', kFamily, FamilyBytes({ { 4, normal, 1000 } }), "Words");
    }

private:
    FontFile fFile;
};

void DrawAt(short h, short v)
{
    MoveTo(h, v);
    DrawText("gabcdef", 0, 7);
}

} // namespace

TEST_CASE("Golden: the styles, alone and together, at the size of the bitmaps and three times that")
{
    const Fonts fonts;
    const World world(32, 220, 190);
    static constexpr Style kStyles[] = { normal,
                                         bold,
                                         italic,
                                         underline,
                                         outline,
                                         shadow,
                                         condense,
                                         extend,
                                         bold | italic,
                                         bold | underline,
                                         italic | underline,
                                         bold | outline,
                                         italic | shadow,
                                         bold | shadow | underline };
    short v = 12;
    for (const Style style : kStyles) {
        TextFace(style);
        TextSize(4);
        DrawAt(4, v);
        TextSize(12);
        DrawAt(70, v);
        v = (short)(v + 13);
    }
    CHECK(golden::MatchesGolden(world.Port(), "quickdraw/text-styles"));
}

TEST_CASE("Golden: the modes over a striped ground, at depths 1, 4, 8, 16 and 32")
{
    const Fonts fonts;
    static constexpr short kModes[] = { srcCopy,  srcOr,         srcXor,      srcBic,       notSrcCopy,
                                        notSrcOr, notSrcXor,     notSrcBic,   blend,        addPin,
                                        addOver,  subPin,        transparent, adMax,        subOver,
                                        adMin,    grayishTextOr, hilite,      mask | blend, mask };
    const RGBColor stripe = { 0xCCCC, 0x6666, 0 }, fore = { 0, 0, 0x9999 }, back = { 0xFFFF, 0xFFFF, 0x9999 };
    const RGBColor half = { 0x8000, 0x8000, 0x8000 };
    for (const short depth : { 1, 4, 8, 16, 32 }) {
        const World world(depth, 170, 160);
        RGBForeColor(&stripe);
        for (short h = 0; h < 170; h = (short)(h + 24)) {
            const Rect bar = { 0, h, 160, (short)(h + 12) };
            PaintRect(&bar);
        }
        RGBForeColor(&fore);
        RGBBackColor(&back);
        OpColor(&half);
        TextSize(8);
        short place = 0;
        for (const short mode : kModes) {
            TextMode(mode);
            DrawAt((short)(4 + place / 10 * 85), (short)(12 + place % 10 * 15));
            ++place;
        }
        CHECK(golden::MatchesGolden(world.Port(), "quickdraw/text-modes." + std::to_string(depth)));
    }
}
