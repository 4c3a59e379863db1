// Resources drawn as pixels with alpha.
#include "PngFile.h"
#include "Rendering.h"

#include <ScratchFolder.h>

#include <doctest/doctest.h>

#include <cstring>

using namespace lampblack::render;

namespace {

// A resource file of the test's own that is open, and the last of the chain.
class Resources {
public:
    Resources()
    {
        FSRef folder;
        FSSpec inside;
        REQUIRE(FSPathMakeRef(reinterpret_cast<const UInt8*>(fFolder.Path().c_str()), &folder, nullptr) ==
                noErr);
        FSCatalogInfo info;
        REQUIRE(FSGetCatalogInfo(&folder, kFSCatInfoNodeID, &info, nullptr, &inside, nullptr) == noErr);
        const unsigned char name[] = { 4, 'f', 'i', 'l', 'e' };
        FSMakeFSSpec(inside.vRefNum, (SInt32)info.nodeID, name, &fSpec);
        FSpCreateResFile(&fSpec, 'LBts', 'rsrc', 0);
        fFile = FSpOpenResFile(&fSpec, fsRdWrPerm);
        REQUIRE(fFile != -1);
    }
    ~Resources() { CloseResFile(fFile); }

    void Add(ResType inType, const std::vector<unsigned char>& inBytes) const
    {
        const Handle handle = NewHandle((Size)inBytes.size());
        std::memcpy(*handle, inBytes.data(), inBytes.size());
        AddResource(handle, inType, 128, nullptr);
        REQUIRE(ResError() == noErr);
    }
    const std::filesystem::path& Path() const { return fFolder.Path(); }

private:
    ScratchFolder fFolder;
    FSSpec fSpec;
    short fFile = -1;
};

uint32_t At(const Image& inImage, int h, int v)
{
    return inImage.pixels[(size_t)v * (size_t)inImage.width + (size_t)h];
}

// Rows of 16 pixels, all set from bit to bit.
std::vector<unsigned char> Rows(int inCount, unsigned inBits)
{
    std::vector<unsigned char> rows;
    for (int i = 0; i < inCount; ++i) {
        rows.push_back((unsigned char)(inBits >> 8));
        rows.push_back((unsigned char)inBits);
    }
    return rows;
}

// In the order of this machine, as records are in memory.
std::vector<unsigned char> Numbers(std::initializer_list<short> inNumbers, const std::string& inEnd)
{
    std::vector<unsigned char> bytes(inNumbers.size() * sizeof(short));
    std::memcpy(bytes.data(), inNumbers.begin(), bytes.size());
    bytes.insert(bytes.end(), inEnd.begin(), inEnd.end());
    return bytes;
}

} // namespace

TEST_CASE("Render: a cursor is transparent outside its mask")
{
    const Resources resources;
    std::vector<unsigned char> cursor = Rows(16, 0xF000);
    const std::vector<unsigned char> mask = Rows(16, 0xFF00);
    cursor.insert(cursor.end(), mask.begin(), mask.end());
    cursor.insert(cursor.end(), 4, 0);
    resources.Add('CURS', cursor);
    Image image;
    REQUIRE(Render('CURS', 128, &image) == noErr);
    CHECK(image.width == 16);
    CHECK(image.height == 16);
    CHECK(At(image, 2, 8) == 0xFF000000);
    CHECK(At(image, 6, 8) == 0xFFFFFFFF);
    CHECK(At(image, 12, 8) == 0);
}

TEST_CASE("Render: a small icon of a family has the mask of its black-and-white one")
{
    const Resources resources;
    std::vector<unsigned char> icon = Rows(16, 0xF000);
    const std::vector<unsigned char> mask = Rows(16, 0xFF00);
    icon.insert(icon.end(), mask.begin(), mask.end());
    resources.Add('ics#', icon);
    Image image;
    REQUIRE(Render('ics#', 128, &image) == noErr);
    CHECK(image.width == 16);
    CHECK(At(image, 2, 8) == 0xFF000000);
    CHECK(At(image, 6, 8) == 0xFFFFFFFF);
    CHECK(At(image, 12, 8) == 0);
}

TEST_CASE("Render: small icons lie one below the other, patterns fill a sheet")
{
    const Resources resources;
    resources.Add('SICN', Rows(32, 0x8000));
    resources.Add('PAT ', { 0xFF, 0, 0xFF, 0, 0xFF, 0, 0xFF, 0 });
    Image image;
    REQUIRE(Render('SICN', 128, &image) == noErr);
    CHECK(image.height == 32);
    CHECK(At(image, 0, 20) == 0xFF000000);
    CHECK(At(image, 1, 20) == 0xFFFFFFFF);
    REQUIRE(Render('PAT ', 128, &image) == noErr);
    CHECK(image.width == 64);
    CHECK(At(image, 60, 0) == 0xFF000000);
    CHECK(At(image, 60, 1) == 0xFFFFFFFF);
}

TEST_CASE("Render: a picture that is wider than any world is drawn whole")
{
    const Resources resources;
    // The frame, version 1, a rectangle from 3,990 to 4,010 painted, the end.
    const int width = 5000, left = 3990, right = 4010;
    resources.Add('PICT', { 0, 0,    0, 0, 0,         0,           0, 4, width >> 8, width & 0xFF, 0x11,
                            1, 0x31, 0, 1, left >> 8, left & 0xFF, 0, 3, right >> 8, right & 0xFF, 0xFF });
    Image image;
    REQUIRE(Render('PICT', 128, &image) == noErr);
    CHECK(image.width == width);
    CHECK(image.height == 4);
    int black = 0;
    for (const uint32_t pixel : image.pixels)
        black += pixel == 0xFF000000;
    CHECK(black == 20 * 2);
    CHECK(At(image, left, 1) == 0xFF000000);
    CHECK(At(image, right - 1, 2) == 0xFF000000);
}

TEST_CASE("Render: a family is drawn in its largest size")
{
    const Resources resources;
    std::vector<unsigned char> family = { 'i', 'c', 'n', 's', 0, 0, 1, 16, 'I', 'C', 'N', '#', 0, 0, 1, 8 };
    for (const int edge : { 16, 24 }) // the icon, and its mask
        for (int row = 0; row < 32; ++row)
            for (int byte = 0; byte < 4; ++byte)
                family.push_back(byte * 8 < edge ? 0xFF : 0);
    resources.Add('icns', family);
    Image image;
    REQUIRE(Render('icns', 128, &image) == noErr);
    CHECK(image.width == 32);
    CHECK(image.height == 32);
    CHECK(At(image, 8, 8) == 0xFF000000);
    CHECK(At(image, 20, 8) == 0xFFFFFFFF);
    CHECK(At(image, 28, 8) == 0);
}

TEST_CASE("Render: a dialog is drawn with its items, and with the frame of its window around them")
{
    const Resources resources;
    // Bounds, a plain box, visible, no close box, reference, item list, no title.
    resources.Add('DLOG', Numbers({ 50, 60, 110, 160, 2, 1, 0, 0, 0, 128, 0 }, ""));
    // One button, named OK.
    resources.Add('DITL', Numbers({ 0, 0, 0, 30, 20, 50, 80 }, "\4\2OK"));
    Image image;
    REQUIRE(Render('DLOG', 128, &image) == noErr);
    CHECK(image.width >= 100);
    CHECK(image.width < 120);
    CHECK(image.height >= 60);
    const uint32_t ground = At(image, image.width - 20, 20);
    CHECK((ground >> 24) == 0xFF);
    int other = 0;
    for (int h = 22; h < 78; ++h)
        other += At(image, h, image.height - 20) != ground;
    CHECK(other > 40); // the button
}

TEST_CASE("Render: what is not there, not known or damaged is an error")
{
    const Resources resources;
    Image image;
    CHECK(Render('PICT', 999, &image) == resNotFound);
    CHECK(Render('snd ', 128, &image) == paramErr);
    for (const ResType type :
         { 'PICT', 'cicn', 'ICON', 'ICN#', 'icl8', 'CURS', 'crsr', 'ppat', 'PAT ', 'SICN', 'icns', 'DLOG' }) {
        resources.Add(type, { 0, 1, 2 });
        CAPTURE(type);
        CHECK(Render(type, 128, &image) != noErr);
    }
}

TEST_CASE("WritePng, RenderFile: a file that is read back as it was written; what cannot be written says why")
{
    const Resources resources;
    const Image image = { 2, 1, { 0xFFFF0000, 0xFF0000FF } };
    const std::filesystem::path path = resources.Path() / "out.png";
    CHECK(WritePng(image, path) == "");
    CHECK(WritePng(image, resources.Path() / "missing" / "out.png") != "");
    FSRef file;
    FSSpec spec;
    REQUIRE(FSPathMakeRef(reinterpret_cast<const UInt8*>(path.c_str()), &file, nullptr) == noErr);
    REQUIRE(FSGetCatalogInfo(&file, kFSCatInfoNone, nullptr, nullptr, &spec, nullptr) == noErr);
    Image back;
    REQUIRE(RenderFile(spec, &back) == noErr);
    CHECK(back.pixels == image.pixels);
}
