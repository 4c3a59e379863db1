// Text that is justified, stretched, set apart or made of outlines, in pictures of others and in our own.
#include "TestPictures.h"

#include <Carbon/Fonts.h>
#include <quickdraw/TestFontFile.h>

#include <doctest/doctest.h>

#include <fstream>

using namespace lampblack::pictures;
using lampblack::quickdraw::FamilyBytes;
using lampblack::quickdraw::FontFile;
using lampblack::quickdraw::SmallFont;

namespace {

const Rect kFrame = { 0, 0, 60, 200 };
constexpr Point kOne = { 1, 1 };

// Spacing between characters, and what the spaces of a line share: whole pixels here.
MadePicture& Justify(MadePicture& made, int between, int shared)
{
    return made.Op(0x2D, { 8, between, 0, shared, 0 });
}

MadePicture Settings()
{
    MadePicture made(kFrame);
    made.Op(0x03, { kFontIDTimes }).Op(0x0D, { 14 });
    return made;
}

void UseSettings()
{
    TextFont(kFontIDTimes);
    TextSize(14);
}

// What a picture shows, against a drawing with the same settings.
template <class Draw>
int DifferencesFrom(const MadePicture& made, Draw draw)
{
    const TestWorld drawn(200, 60);
    UseSettings();
    draw();
    CHECK(drawn.CountBlack() > 10);
    const TestWorld played(200, 60);
    CHECK(PlayHere(made.End()) == noErr);
    return Differences(played, drawn);
}

void Justified(const std::string& text, Fixed slop)
{
    DrawJustified(const_cast<char*>(text.data()), (long)text.size(), slop, onlyStyleRun, kOne, kOne);
}

} // namespace

TEST_CASE("DrawPicture: the spaces of a line share what a justification gives them")
{
    MadePicture made = Settings();
    Justify(made, 0, 30).Op(0x28, { 20, 10 }).Text("one two three four");
    CHECK(DifferencesFrom(made, [] {
              MoveTo(10, 20);
              Justified("one two three four", 30 << 16);
          }) == 0);
}

TEST_CASE("DrawPicture: texts on one baseline are one line; a justification holds until the next one")
{
    MadePicture made = Settings();
    Justify(made, 0, 9).Op(0x28, { 20, 10 }).Text("a b").Op(0x1A, { 0, 0, 0 });
    made.Op(0x29).Bytes({ 60 }).Text(" c d");
    made.Op(0x28, { 40, 10 }).Text("a b c");
    Justify(made, 0, 0).Op(0x28, { 55, 10 }).Text("a b c");
    CHECK(DifferencesFrom(made, [] {
              MoveTo(10, 20);
              Justified("a b", 3 << 16);
              MoveTo(70, 20);
              Justified(" c d", 6 << 16);
              MoveTo(10, 40);
              Justified("a b c", 9 << 16);
              MoveTo(10, 55);
              Justified("a b c", 0);
          }) == 0);
}

TEST_CASE("DrawPicture: the spacing of a justification is added to every character")
{
    MadePicture made = Settings();
    made.Op(0x06, { 2, 0 });
    Justify(made, 3, 0).Op(0x28, { 20, 10 }).Text("wide words");
    CHECK(DifferencesFrom(made, [] {
              SpaceExtra(5 << 16);
              CharExtra(3 << 16);
              MoveTo(10, 20);
              DrawString((ConstStr255Param) "\012wide words");
          }) == 0);
}

TEST_CASE("DrawPicture: a justification that is too short, and one of a line without spaces, change nothing")
{
    MadePicture made = Settings();
    made.Op(0x2D, { 4, 9, 0 }).Op(0x28, { 20, 10 }).Text("a b");
    Justify(made, 0, 50).Op(0x28, { 40, 10 }).Text("abc");
    CHECK(DifferencesFrom(made, [] {
              MoveTo(10, 20);
              DrawString((ConstStr255Param) "\003a b");
              MoveTo(10, 40);
              DrawString((ConstStr255Param) "\003abc");
          }) == 0);
}

TEST_CASE("DrawPicture: the glyph state chooses outlines for the picture, and only for it")
{
    std::ifstream sans("/usr/share/fonts/truetype/liberation/LiberationMono-Regular.ttf", std::ios::binary);
    const std::vector<uint8_t> outlines(std::istreambuf_iterator<char>(sans), {});
    REQUIRE(!outlines.empty());
    const FontFile file;
    FontFile::Add('sfnt', 3000, outlines);
    FontFile::Add('NFNT', 1000, SmallFont().Bytes());
    FontFile::Add('FOND', 2600, FamilyBytes({ { 0, normal, 3000 }, { 10, normal, 1000 } }), "Outlined");
    for (const bool preferred : { false, true }) {
        const TestWorld drawn(200, 60);
        SetOutlinePreferred(preferred);
        TextFont(2600);
        TextSize(10);
        MoveTo(10, 20);
        DrawString((ConstStr255Param) "\004ABBA");
        SetOutlinePreferred(!preferred);
        MadePicture made(kFrame);
        made.Op(0x2E, { 4 }).Bytes({ preferred, 0, 0, 0 }).Op(0x03, { 2600 }).Op(0x0D, { 10 });
        made.Op(0x28, { 20, 10 }).Text("ABBA");
        const TestWorld played(200, 60);
        CHECK(PlayHere(made.End()) == noErr);
        CHECK(Differences(played, drawn) == 0);
        CHECK(GetOutlinePreferred() == !preferred);
    }
    SetOutlinePreferred(false);
}

TEST_CASE("OpenPicture: whether outlines are preferred is recorded with the first text and when it changes")
{
    const TestWorld world(200, 60);
    const PicHandle picture = OpenPicture(&kFrame);
    MoveTo(10, 20);
    DrawChar('a');
    SetOutlinePreferred(true);
    DrawChar('b');
    SetOutlinePreferred(false);
    ClosePicture();
    const std::vector<uint8_t> bytes = BytesOf(picture);
    const std::string all(bytes.begin(), bytes.end());
    const std::string no({ 0, 0x2E, 0, 4, 0, 0, 0, 0 }), yes({ 0, 0x2E, 0, 4, 1, 0, 0, 0 });
    CHECK(all.find(no) < all.find(yes));
    CHECK(all.find(yes) != std::string::npos);
    KillPicture(picture);
}
