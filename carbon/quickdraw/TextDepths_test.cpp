// Text in pixels of every depth and in every mode, beside slow formulas.
#include "Arithmetic.h"
#include "PortRecord.h"

#include <Carbon/Fonts.h>
#include <Carbon/QDOffscreen.h>
#include <Carbon/Quickdraw.h>

#include <doctest/doctest.h>

#include <map>
#include <set>
#include <vector>

using namespace lampblack::quickdraw;

namespace {

constexpr short kWidth = 90, kHeight = 30;
constexpr uint32_t kWhite = 0xFFFFFF;

class World {
public:
    explicit World(short depth)
    {
        const Rect bounds = { 0, 0, kHeight, kWidth };
        REQUIRE(NewGWorld(&fWorld, depth, &bounds, nullptr, nullptr, 0) == noErr);
        SetGWorld(fWorld, nullptr);
        EraseRect(&bounds);
    }
    ~World() { DisposeGWorld(fWorld); }
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    std::vector<uint32_t> Colors() const { return Read(ReadColors); }
    std::vector<uint32_t> Pixels() const { return Read(ReadPixels); }

private:
    template <class Reader>
    std::vector<uint32_t> Read(Reader reader) const
    {
        std::vector<uint32_t> all((size_t)kWidth * kHeight);
        const Surface& surface = FindPort(fWorld)->Pixels();
        for (int v = 0; v < kHeight; ++v)
            reader(surface, v, 0, kWidth, all.data() + (size_t)v * kWidth);
        return all;
    }

    GWorldPtr fWorld = nullptr;
};

void DrawSample(SInt16 mode = srcOr)
{
    TextMode(mode);
    MoveTo(5, 20);
    DrawText("Soot & gum", 0, 10);
}

std::vector<uint32_t> Sample(short depth, SInt16 mode = srcOr)
{
    const World world(depth);
    DrawSample(mode);
    return world.Colors();
}

int Darkness(uint32_t color)
{
    return 255 - (int)(color >> 8 & 0xFF);
}

int Distance(uint32_t a, uint32_t b)
{
    int most = 0;
    for (int shift = 0; shift < 24; shift += 8)
        most = std::max(most, std::abs((int)(a >> shift & 0xFF) - (int)(b >> shift & 0xFF)));
    return most;
}

// How much of the ink of one picture is where the other has some, too.
double Overlap(const std::vector<uint32_t>& some, const std::vector<uint32_t>& other)
{
    double common = 0, all = 0;
    for (size_t i = 0; i < some.size(); ++i) {
        all += Darkness(some[i]);
        common += std::min(Darkness(some[i]), Darkness(other[i]));
    }
    return common / all;
}

const RGBColor kRed = { 0xFFFF, 0, 0 }, kBlue = { 0, 0, 0xFFFF }, kYellow = { 0xFFFF, 0xFFFF, 0 },
               kGray = { 0x8000, 0x8000, 0x8000 };

// What the arithmetic of a mode says of one pixel.
uint32_t Operated(short mode, uint32_t source, uint32_t destination)
{
    ArithmeticRowOf(mode)(&source, &destination, 1, { PixelOf(kGray), PixelOf(kYellow), 0 });
    return destination;
}

} // namespace

TEST_CASE("DrawText: depths 16 and 8 show what depth 32 shows, as near as they can")
{
    const std::vector<uint32_t> whole = Sample(32);
    const std::vector<uint32_t> words = Sample(16), indexes = Sample(8);
    for (size_t i = 0; i < whole.size(); ++i) {
        CHECK(Distance(whole[i], words[i]) <= 8 + 7); // the low 3 bits of a channel, of both colours mixed
        CHECK(Distance(whole[i], indexes[i]) <= 17);  // greys are that far apart
    }
}

TEST_CASE("DrawText: depths 4 and 2 have the greys of their tables, depth 1 has black and white alone")
{
    const std::vector<uint32_t> whole = Sample(32);
    for (const short depth : { 4, 2, 1 }) {
        const std::vector<uint32_t> drawn = Sample(depth);
        const std::set<uint32_t> colors(drawn.begin(), drawn.end());
        CAPTURE(depth);
        CHECK(colors.count(0) == 1);
        CHECK(colors.count(kWhite) == 1);
        CHECK((colors.size() > 2) == (depth > 1));
        CHECK(Overlap(drawn, whole) > (depth > 1 ? 0.8 : 0.6));
    }
}

TEST_CASE("DrawText: where a table has nothing between two colours, no third colour is used")
{
    const World world(4);
    RGBForeColor(&kBlue);
    RGBBackColor(&kRed);
    const Rect all = { 0, 0, kHeight, kWidth };
    EraseRect(&all);
    const uint32_t back = world.Colors()[0];
    DrawSample();
    std::set<uint32_t> colors;
    for (const uint32_t color : world.Colors())
        colors.insert(color);
    CHECK(colors.count(back) == 1);
    CHECK(colors.size() == 2);
}

TEST_CASE("DrawText: the pen moves alike at every depth")
{
    std::set<short> ends;
    for (const short depth : { 1, 2, 4, 8, 16, 32 }) {
        const World world(depth);
        DrawSample();
        Point pen;
        GetPen(&pen);
        ends.insert(pen.h);
    }
    CHECK(ends.size() == 1);
}

TEST_CASE("TextMode: srcXor and notSrcXor twice restore every pixel at every depth")
{
    for (const short depth : { 1, 2, 4, 8, 16, 32 })
        for (const short mode : std::vector<short>{ srcXor, notSrcXor, (short)srcXor + (short)mask }) {
            const World world(depth);
            DrawSample(srcOr);
            const std::vector<uint32_t> before = world.Pixels();
            MoveTo(3, 2);
            DrawSample(mode);
            CAPTURE(depth);
            CAPTURE(mode);
            CHECK(world.Pixels() != before);
            DrawSample(mode);
            CHECK(world.Pixels() == before);
        }
}

TEST_CASE("TextMode: srcBic draws the background colour, srcCopy both, the not- forms exchange them")
{
    for (const short depth : { 1, 8, 16, 32 }) {
        CAPTURE(depth);
        const Rect all = { 0, 0, kHeight, kWidth };
        const World world(depth);
        PaintRect(&all);
        DrawSample(srcBic);
        const std::vector<uint32_t> cleared = world.Colors();
        EraseRect(&all);
        DrawSample(notSrcCopy);
        const std::vector<uint32_t> exchanged = world.Colors();
        EraseRect(&all);
        DrawSample(srcCopy);
        const std::vector<uint32_t> copied = world.Colors();
        const short right = (short)(5 + TextWidth("Soot & gum", 0, 10));
        FontInfo info;
        GetFontInfo(&info);
        for (int v = 20 - info.ascent; v < 20 + info.descent; ++v)
            for (int h = 5; h < right; ++h) {
                const size_t i = (size_t)(v * kWidth + h);
                CHECK(Distance(cleared[i], exchanged[i]) <= 17); // greys are that far apart
                CHECK(Distance(copied[i] ^ kWhite, exchanged[i]) <= 17);
            }
    }
}

TEST_CASE("TextMode: mask confines srcCopy to the glyphs")
{
    for (const short depth : { 1, 2, 4, 8, 16, 32 }) {
        CAPTURE(depth);
        CHECK(Sample(depth, (SInt16)mask) == Sample(depth, srcOr));
    }
}

TEST_CASE("TextMode: arithmetic modes work on the whole text box, with mask on the glyphs alone")
{
    for (const short mode : { blend, addPin, addOver, subPin, adMax, subOver, adMin }) {
        const World world(32);
        const Rect all = { 0, 0, kHeight, kWidth };
        RGBForeColor(&kGray);
        PaintRect(&all);
        RGBForeColor(&kRed);
        RGBBackColor(&kYellow);
        OpColor(&kGray);
        const uint32_t ground = PixelOf(kGray);
        TextFont(kFontIDGeneva);
        TextSize(18); // large enough for pixels that are covered all over
        DrawSample((SInt16)(mode + mask));
        std::map<uint32_t, int> counts;
        for (const uint32_t color : world.Colors())
            ++counts[color];
        CAPTURE(mode);
        CHECK(counts[ground] > kWidth * kHeight / 3); // the background of the text is untouched
        if (Operated(mode, PixelOf(kRed), ground) != ground)
            CHECK(counts[Operated(mode, PixelOf(kRed), ground)] > 10);
        RGBForeColor(&kGray);
        PaintRect(&all);
        RGBForeColor(&kRed);
        DrawSample(mode);
        const std::vector<uint32_t> colors = world.Colors();
        CHECK(colors[20 * kWidth + 5] == Operated(mode, PixelOf(kYellow), ground)); // left of the S
        CHECK(colors[0] == ground);
    }
}

TEST_CASE("TextMode: hilite exchanges the background and the highlight colour where glyphs are")
{
    const World world(32);
    RGBColor lit;
    LMGetHiliteRGB(&lit);
    DrawSample(hilite);
    std::set<uint32_t> colors;
    for (const uint32_t color : world.Colors())
        colors.insert(color);
    CHECK(colors == std::set<uint32_t>{ kWhite, PixelOf(lit) });
}

TEST_CASE("TextMode: hilite twice restores every pixel at every depth, whatever the two colours are")
{
    const RGBColor back = { 0xF3F3, 0xE5E5, 0xD9D9 }, light = { 0xB5B5, 0x7373, 0xFBFB };
    for (const short depth : { 1, 2, 4, 8, 16, 32 }) {
        CAPTURE(depth);
        const World world(depth);
        const Rect all = { 0, 0, kHeight, kWidth };
        RGBBackColor(&back);
        HiliteColor(&light);
        EraseRect(&all);
        const auto before = world.Colors();
        DrawSample(hilite);
        CHECK(world.Colors() != before);
        DrawSample(hilite);
        CHECK(world.Colors() == before);
    }
}

TEST_CASE("TextMode: grayishTextOr is grey where there is grey, and every second pixel where there is none")
{
    for (const short depth : { 4, 8, 16, 32 }) {
        const std::vector<uint32_t> drawn = Sample(depth, grayishTextOr);
        int darkest = 0;
        for (const uint32_t color : drawn)
            darkest = std::max(darkest, Darkness(color));
        CAPTURE(depth);
        CHECK(darkest >= 0x60);
        CHECK(darkest <= 0xA0);
    }
    const std::vector<uint32_t> drawn = Sample(1, grayishTextOr), full = Sample(1);
    int black = 0;
    for (int v = 0; v < kHeight; ++v)
        for (int h = 0; h < kWidth; ++h) {
            const size_t i = (size_t)(v * kWidth + h);
            CHECK(drawn[i] == ((v + h) % 2 == 0 ? full[i] : kWhite));
            black += drawn[i] == 0;
        }
    CHECK(black > 20);
}

TEST_CASE("DrawText: clipped text is the whole text within the clip, at every depth and in every mode")
{
    for (const short depth : { 1, 2, 4, 8, 16, 32 })
        for (const short mode :
             std::vector<short>{ srcCopy, srcOr, srcXor, srcBic, notSrcCopy, notSrcOr, notSrcXor, notSrcBic,
                                 blend, addOver, adMin, transparent, grayishTextOr, hilite }) {
            const World world(depth);
            DrawSample(mode);
            const std::vector<uint32_t> whole = world.Pixels();
            const Rect all = { 0, 0, kHeight, kWidth }, part = { 12, 20, 22, 61 };
            EraseRect(&all);
            const std::vector<uint32_t> empty = world.Pixels();
            ClipRect(&part);
            DrawSample(mode);
            const std::vector<uint32_t> clipped = world.Pixels();
            int wrong = 0;
            for (int v = 0; v < kHeight; ++v)
                for (int h = 0; h < kWidth; ++h) {
                    const size_t i = (size_t)(v * kWidth + h);
                    wrong += clipped[i] != (PtInRect({ (short)v, (short)h }, &part) ? whole[i] : empty[i]);
                }
            CAPTURE(depth);
            CAPTURE(mode);
            CHECK(wrong == 0);
        }
}
