// Fonts of files that others made, long ago and with other tools. They lie beside the source folder where the
// developers keep them; without them these tests say so and pass.
#include "BitmapFont.h"
#include "FontFaces.h"
#include "FontFamilyRecord.h"

#include <Carbon/Fonts.h>
#include <Carbon/QDOffscreen.h>
#include <Carbon/Resources.h>

#include <golden/Golden.h>
#include <resources/Container.h>
#include <resources/ResourceFork.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

using namespace lampblack;
using namespace lampblack::quickdraw;

namespace {

const std::filesystem::path kFolder =
    std::filesystem::path(LAMPBLACK_SOURCE_DIR).parent_path() / "shared/data/real/public";

struct Count {
    int bitmaps = 0, glyphs = 0, outlines = 0, families = 0, lost = 0;
};

bool HasFont(const resources::ResourceFork& fork, const FontAssociation& one)
{
    if (one.IsOutline())
        return (bool)fork.Find('sfnt', one.id);
    return (bool)fork.Find('NFNT', one.id) || (bool)fork.Find('FONT', one.id);
}

void CountBitmaps(std::span<const uint8_t> data, Count* out)
{
    BitmapFont font;
    if (!font.Read(data))
        return;
    ++out->bitmaps;
    for (int c = 0; c < 256; ++c)
        out->glyphs += font.GlyphOf((uint8_t)c).width > 0;
}

Count CountFonts(const char* name)
{
    std::ifstream file(kFolder / name, std::ios::binary);
    const std::vector<uint8_t> bytes{ std::istreambuf_iterator<char>(file), {} };
    const resources::Container container = resources::ReadContainer(bytes);
    resources::ResourceFork fork;
    Count count;
    if (fork.Open(container.resourceFork) != nullptr && fork.Open(bytes) != nullptr)
        return count;
    fork.ForEach([&](resources::ResourceRef ref) {
        const resources::ResourceInfo info = fork.Info(ref);
        resources::Bytes data;
        if (!fork.Data(ref, &data))
            return;
        if (info.type == 'NFNT' || (info.type == 'FONT' && !data.empty()))
            CountBitmaps(data, &count);
        if (info.type == 'sfnt')
            count.outlines += FontFace::Open(std::vector<uint8_t>(data.begin(), data.end())) != nullptr;
        if (info.type != 'FOND')
            return;
        ++count.families;
        for (const FontAssociation& one : ReadFontFamily(data))
            count.lost += !HasFont(fork, one);
    });
    return count;
}

} // namespace

TEST_CASE("Real fonts: every strike and outline is read, and families lead to them")
{
    if (!std::filesystem::exists(kFolder)) {
        MESSAGE("skipped: no real files at " << kFolder.string());
        return;
    }
    struct Expected {
        const char* file;
        int bitmaps, outlines, families;
        int lost = 0; // fonts that a family names and that are not there
    };
    for (const Expected& expected :
         { Expected{ "nethack/NHrsrc.hqx", 6, 0, 3, 2 }, Expected{ "macssh/telnet.rsrc", 12, 0, 5 },
           Expected{ "pararena2/Pararena.project.rsrc.bin", 1, 0, 1 },
           Expected{ "angband/Angband.rsrc.hqx", 1, 0, 1 }, Expected{ "boe/BOEScen.rsrc", 0, 1, 1 } }) {
        const std::string file = expected.file;
        CAPTURE(file);
        const Count count = CountFonts(expected.file);
        CHECK(count.bitmaps == expected.bitmaps);
        CHECK(count.glyphs >= 90 * expected.bitmaps);
        CHECK(count.outlines == expected.outlines);
        CHECK(count.families == expected.families);
        CHECK(count.lost == expected.lost);
    }
}

TEST_CASE("Real fonts: text in every family of the open file shows, and is measured as it is drawn")
{
    if (!std::filesystem::exists(kFolder)) {
        MESSAGE("skipped: no real files at " << kFolder.string());
        return;
    }
    const Rect bounds = { 0, 0, 420, 600 };
    GWorldPtr world = nullptr;
    REQUIRE(NewGWorld(&world, 8, &bounds, nullptr, nullptr, 0) == noErr);
    SetGWorld(world, nullptr);
    EraseRect(&bounds);
    short v = 4;
    for (const char* name :
         { "nethack/NHrsrc.hqx", "macssh/telnet.rsrc", "pararena2/Pararena.project.rsrc.bin",
           "angband/Angband.rsrc.hqx", "boe/BOEScen.rsrc" }) {
        FSRef ref;
        const std::string path = (kFolder / name).string();
        REQUIRE(FSPathMakeRef((const UInt8*)path.c_str(), &ref, nullptr) == noErr);
        const SInt16 file = FSOpenResFile(&ref, fsRdPerm);
        REQUIRE(file > 0);
        for (SInt16 index = 1; index <= Count1Resources('FOND'); ++index) {
            SInt16 family = 0;
            ResType type;
            Str255 familyName;
            GetResInfo(Get1IndResource('FOND', index), &family, &type, familyName);
            TextFont(family);
            short h = 4;
            v = (short)(v + 30);
            for (const short size : { 9, 12, 18 }) {
                TextSize(size);
                MoveTo(h, v);
                DrawText("Lamp @ 123 \x8E", 0, 12);
                Point pen;
                GetPen(&pen);
                CAPTURE(path);
                CAPTURE(family);
                CHECK(pen.h - h == TextWidth("Lamp @ 123 \x8E", 0, 12));
                CHECK(pen.h - h > 30);
                h = (short)(pen.h + 16);
            }
        }
        CloseResFile(file);
    }
    const golden::Picture picture = golden::PictureOf(world);
    size_t ink = 0;
    for (const uint32_t color : picture.colors)
        ink += color != 0xFFFFFF;
    CHECK(ink > 3000);
    if (const char* folder = std::getenv("LAMPBLACK_TEXTCARD"))
        CHECK(golden::SavePng(picture, std::string(folder) + "/real-fonts.png"));
    DisposeGWorld(world);
}
