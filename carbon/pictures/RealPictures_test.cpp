// Pictures that others made. They lie beside the source folder where the developers keep them and are no
// part of it; without them these tests say so and pass.
#include "TestPictures.h"

#include <doctest/doctest.h>
#include <png.h>
#include <resources/Container.h>
#include <resources/ResourceFork.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

using namespace lampblack::pictures;
using namespace lampblack::resources;

namespace {

const std::filesystem::path kFolder =
    std::filesystem::path(LAMPBLACK_SOURCE_DIR).parent_path() / "shared/data/real";

struct Row {
    std::string file, id, judgement; // how another reader fared
    int width = 0, height = 0;
    std::string Name() const
    {
        std::string name = file + "." + id;
        for (char& c : name)
            c = c == '/' || c == ' ' ? '_' : c;
        return name;
    }
};

std::vector<Row> Rows()
{
    std::vector<Row> rows;
    std::ifstream table(kFolder / "PICTS.tsv");
    std::string line;
    std::getline(table, line);
    while (std::getline(table, line)) {
        std::vector<std::string> cells;
        std::stringstream stream(line);
        for (std::string cell; std::getline(stream, cell, '\t');)
            cells.push_back(cell);
        cells.resize(20);
        rows.push_back(
            { cells[0], cells[1], cells[15], std::atoi(cells[9].c_str()), std::atoi(cells[10].c_str()) });
    }
    if (rows.empty())
        MESSAGE("skipped: no real pictures at " << kFolder.string());
    return rows;
}

std::vector<uint8_t> FileBytes(const std::filesystem::path& inPath)
{
    std::ifstream file(inPath, std::ios::binary);
    return { std::istreambuf_iterator<char>(file), {} };
}

// The picture of a row, out of its resource file or picture file.
std::vector<uint8_t> PictureOf(const Row& inRow)
{
    if (inRow.id.empty()) {
        const std::vector<uint8_t> bytes = FileBytes(kFolder / "public" / inRow.file);
        const lampblack::foundation::Bytes picture = PictureInFile(bytes);
        return { picture.begin(), picture.end() };
    }
    const LocatedForks forks = LocateForks(kFolder / "public" / inRow.file);
    ResourceFork fork;
    lampblack::foundation::Bytes data;
    if (fork.Open(forks.resourceFork) != nullptr)
        return {};
    const ResourceRef ref = fork.Find('PICT', (SInt16)std::atoi(inRow.id.c_str()));
    if (!ref || !fork.Data(ref, &data))
        return {};
    return { data.begin(), data.end() };
}

void SavePng(const std::string& inPath, const std::vector<uint32_t>& inColors, int inWidth, int inHeight)
{
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.width = (png_uint_32)inWidth;
    image.height = (png_uint_32)inHeight;
    image.format = PNG_FORMAT_RGB;
    std::vector<uint8_t> bytes;
    for (const uint32_t color : inColors)
        bytes.insert(bytes.end(), { (uint8_t)(color >> 16), (uint8_t)(color >> 8), (uint8_t)color });
    png_image_write_to_file(&image, inPath.c_str(), 0, bytes.data(), 0, nullptr);
}

// What the other reader makes of a picture: red, green and blue in 16 bits each. Empty when it is not
// installed.
std::vector<uint8_t> ReadByOther(const std::vector<uint8_t>& inPicture)
{
    const std::string path = std::string(LAMPBLACK_BINARY_DIR) + "/other.pict";
    std::ofstream file(path, std::ios::binary);
    const std::vector<char> header(kPictureFileHeader);
    file.write(header.data(), (std::streamsize)header.size());
    file.write(reinterpret_cast<const char*>(inPicture.data()), (std::streamsize)inPicture.size());
    file.close();
    std::vector<uint8_t> bytes;
    FILE* pipe = popen(
        ("convert 'pict:" + path + "' -depth 16 -endian MSB -alpha off rgb:- 2>/dev/null").c_str(), "r");
    char buffer[65536];
    while (const size_t count = pipe ? fread(buffer, 1, sizeof buffer, pipe) : 0)
        bytes.insert(bytes.end(), buffer, buffer + count);
    if (pipe)
        pclose(pipe);
    return bytes;
}

// Eight bits of sixteen, as our own colours are made of those of tables.
uint32_t ColorAt(const std::vector<uint8_t>& inOther, size_t inPixel)
{
    const uint8_t* at = inOther.data() + inPixel * 6;
    return (uint32_t)(at[0] << 16 | at[2] << 8 | at[4]);
}

int DifferencesFrom(const std::vector<uint8_t>& inOther, const std::vector<uint32_t>& inColors)
{
    int count = 0;
    for (size_t i = 0; i < inColors.size(); ++i)
        count += inColors[i] != ColorAt(inOther, i);
    return count;
}

} // namespace

TEST_CASE("Real pictures: each one plays to its end, with the frame that the table says")
{
    const char* folder = std::getenv("LAMPBLACK_PICTURES"); // where to leave what was drawn
    for (const Row& row : Rows()) {
        const std::string name = row.Name();
        CAPTURE(name);
        const std::vector<uint8_t> picture = PictureOf(row);
        REQUIRE(!picture.empty());
        const Rect frame = FrameOf(picture);
        CHECK(frame.right - frame.left == row.width);
        CHECK(frame.bottom - frame.top == row.height);
        if (row.width <= 0 || row.height <= 0)
            continue;
        const int shrunk = row.width > 4000 ? 4 : 1; // no pixel map is wider
        TestWorld world(row.width / shrunk, row.height / shrunk);
        CHECK(PlayAt(picture, world.bounds) == noErr);
        if (folder)
            SavePng(std::string(folder) + "/" + name + ".png", world.Colors(), world.bounds.right,
                    world.bounds.bottom);
    }
}

TEST_CASE("Real pictures: where another reader is exact the pixels are its own")
{
    int compared = 0;
    for (const Row& row : Rows()) {
        if (row.judgement != "exact")
            continue;
        const std::string name = row.Name();
        CAPTURE(name);
        const std::vector<uint8_t> picture = PictureOf(row);
        const std::vector<uint8_t> other = ReadByOther(picture);
        if (other.empty())
            continue;
        TestWorld world(row.width, row.height);
        PlayAt(picture, world.bounds);
        REQUIRE(other.size() == (size_t)(row.width * row.height * 6));
        CHECK(DifferencesFrom(other, world.Colors()) == 0);
        ++compared;
    }
    MESSAGE(compared << " pictures compared with another reader");
}

// Of channels of 5 bits that reader leaves the lowest three of 8 clear.
TEST_CASE("Recorded pictures: another reader sees the same pixels")
{
    for (const int depth : { 1, 2, 4, 8, 16, 32 }) {
        CAPTURE(depth);
        TestWorld world(40, 31, depth);
        const Rect spot = MakeRect(4, 5, 30, 20);
        const RGBColor red = { 0xFFFF, 0, 0 }, black = { 0, 0, 0 };
        RGBForeColor(&red);
        PaintOval(&spot);
        RGBForeColor(&black);
        FrameRect(&world.bounds);
        const PicHandle picture = OpenPicture(&world.bounds);
        CopyBits(world.Bits(), world.Bits(), &world.bounds, &world.bounds, srcCopy, nullptr);
        ClosePicture();
        const std::vector<uint8_t> other = ReadByOther(BytesOf(picture));
        KillPicture(picture);
        if (other.empty()) {
            MESSAGE("skipped: no other reader");
            return;
        }
        REQUIRE(other.size() == 40 * 31 * 6);
        int differences = 0;
        const std::vector<uint32_t> colors = world.Colors();
        for (size_t i = 0; i < colors.size(); ++i)
            differences += ((colors[i] ^ ColorAt(other, i)) & (depth == 16 ? 0xF8F8F8 : 0xFFFFFF)) != 0;
        CHECK(differences == 0);
    }
}
