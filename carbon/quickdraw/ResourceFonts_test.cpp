// Fonts that resource files bring, by the published calls.
#include "TestFontFile.h"
#include "TestPort.h"

#include <Carbon/Fonts.h>

#include <fstream>
#include <iterator>

using namespace lampblack::quickdraw;

namespace {

std::vector<uint8_t> InstalledOutlines()
{
    std::ifstream file("/usr/share/fonts/truetype/liberation/LiberationMono-Regular.ttf", std::ios::binary);
    return std::vector<uint8_t>(std::istreambuf_iterator<char>(file), {});
}

short NumberOf(const char* name)
{
    short number = -1;
    GetFNum(PascalText(name), &number);
    return number;
}

} // namespace

TEST_CASE("TextFont: a family of the resource file is drawn by its bitmaps, pixel by pixel")
{
    const FontFile file;
    FontFile::AddSmallFamily(2500, "Lamp");
    CHECK(NumberOf("LAMP") == 2500);
    Str255 name;
    GetFontName(2500, name);
    CHECK(std::memcmp(name, "\4Lamp", 5) == 0);
    TestPort port;
    TextFont(2500);
    TextSize(4);
    CHECK(CharWidth('A') == 4);
    FontInfo info;
    GetFontInfo(&info);
    CHECK(info.ascent == 3);
    CHECK(info.leading == 1);
    MoveTo(10, 10);
    DrawText("AC", 0, 2);
    const std::string rows[] = { "#######", "#.##...", "#.##...", "...####" }; // the C hangs over
    CHECK(BlackDifferences(port, [&](int h, int v) {
              return h >= 10 && h < 17 && v >= 7 && v < 11 && rows[v - 7][(size_t)h - 10] == '#';
          }) == 0);
    Point pen;
    GetPen(&pen);
    CHECK(pen.h == 19);
}

TEST_CASE("TextSize: bitmaps are scaled to other sizes; RealFont tells which are there")
{
    const FontFile file;
    FontFile::AddSmallFamily(2500, "Lamp");
    TestPort port;
    TextFont(2500);
    TextSize(8);
    CHECK(CharWidth('A') == 8);
    TextSize(6);
    CHECK(CharWidth('A') == 6);
    CHECK(RealFont(2500, 4));
    CHECK(!RealFont(2500, 8));
    CHECK(!RealFont(2500, 0));
    CHECK(RealFont(kFontIDGeneva, 31));
    CHECK(!IsOutline({ 1, 1 }, { 1, 1 }));
    TextFont(kFontIDGeneva);
    CHECK(IsOutline({ 1, 1 }, { 1, 1 }));
}

TEST_CASE("CloseResFile: its fonts are gone at once, also for a port that has drawn with them")
{
    TestPort port;
    FontFile file;
    FontFile::AddSmallFamily(2500, "Lamp");
    TextFont(2500);
    TextSize(4);
    REQUIRE(CharWidth('A') == 4);
    file.Close();
    CHECK(CharWidth('A') != 4);
    CHECK(NumberOf("Lamp") == 0);
    MoveTo(5, 20);
    DrawText("AC", 0, 2);
    const FontFile again;
    FontFile::AddSmallFamily(2500, "Lamp");
    CHECK(CharWidth('A') == 4);
}

TEST_CASE("UseResFile: fonts are those from the current file on")
{
    TestPort port;
    const FontFile below("below");
    const FontFile fonts("fonts");
    FontFile::AddSmallFamily(2500, "Lamp");
    TextFont(2500);
    TextSize(4);
    CHECK(CharWidth('A') == 4);
    UseResFile(below.RefNum());
    CHECK(CharWidth('A') != 4);
    UseResFile(fonts.RefNum());
    CHECK(CharWidth('A') == 4);
}

TEST_CASE("ChangedResource: a font that is changed is read anew")
{
    const FontFile file;
    FontFile::AddSmallFamily(2500, "Lamp");
    TestPort port;
    TextFont(2500);
    TextSize(4);
    REQUIRE(CharWidth('A') == 4);
    TestFont wider = SmallFont();
    wider.glyphs[0].advance = 7;
    const std::vector<uint8_t> bytes = wider.Bytes();
    const Handle strike = Get1Resource('NFNT', 1000);
    REQUIRE(GetHandleSize(strike) == (Size)bytes.size());
    std::memcpy(*strike, bytes.data(), bytes.size());
    ChangedResource(strike);
    CHECK(CharWidth('A') == 7);
}

TEST_CASE("TextFont: a family of old is known by the IDs of its 'FONT' resources")
{
    const FontFile file;
    FontFile::Add('FONT', 200 * 128, { 0 }, "Old");
    FontFile::Add('FONT', 200 * 128 + 4, SmallFont().Bytes());
    CHECK(NumberOf("old") == 200);
    Str255 name;
    GetFontName(200, name);
    CHECK(std::memcmp(name, "\3Old", 4) == 0);
    TestPort port;
    TextFont(200);
    TextSize(4);
    CHECK(CharWidth('C') == 5);
    CHECK(RealFont(200, 4));
    CHECK(!RealFont(200, 12));
}

TEST_CASE("TextFont: outlines of an 'sfnt' are drawn as those of an installed file; bitmaps come before them")
{
    const std::vector<uint8_t> outlines = InstalledOutlines();
    REQUIRE(!outlines.empty());
    const FontFile file;
    FontFile::Add('sfnt', 3000, outlines);
    FontFile::Add('NFNT', 1000, SmallFont().Bytes());
    FontFile::Add('FOND', 2600, FamilyBytes({ { 0, normal, 3000 }, { 10, normal, 1000 } }), "Outlined");
    TestPort port(100, 40), installed(100, 40);
    SetPort(port.port);
    TextFont(2600);
    TextSize(20);
    MoveTo(5, 25);
    DrawText("Lamp \x8E", 0, 6);
    SetPort(installed.port);
    TextFont(kFontIDCourier);
    TextSize(20);
    MoveTo(5, 25);
    DrawText("Lamp \x8E", 0, 6);
    CHECK(Differences(port, [&](int h, int v) { return installed.At(h, v); }) == 0);
    SetPort(port.port);
    TextSize(10);
    CHECK(CharWidth('A') == 4);
    SetOutlinePreferred(true);
    CHECK(GetOutlinePreferred());
    CHECK(CharWidth('A') == 6);
    SetOutlinePreferred(false);
    CHECK(CharWidth('A') == 4);
}

TEST_CASE("TextFont: a family whose fonts are damaged or missing falls back to one that can be read")
{
    const FontFile file;
    std::vector<uint8_t> cut = SmallFont().Bytes();
    cut.resize(cut.size() / 2);
    FontFile::Add('NFNT', 1001, cut);
    FontFile::Add('NFNT', 1000, SmallFont().Bytes());
    FontFile::Add('sfnt', 3000, { 0, 1, 0, 0, 255, 255, 1, 2, 3 });
    FontFile::Add('FOND', 2500,
                  FamilyBytes({ { 8, normal, 1001 }, { 0, normal, 3000 }, { 4, normal, 1000 } }), "Lamp");
    FontFile::Add('FOND', 2501, { 1, 2, 3 }, "Broken");
    TestPort port;
    TextFont(2500);
    TextSize(8);
    CHECK(CharWidth('A') == 8); // the bitmaps of 4, doubled
    TextFont(2501);
    CHECK(CharWidth('A') > 0);
    MoveTo(5, 20);
    DrawText("A", 0, 1);
}
