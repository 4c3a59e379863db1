// Every format and its variants, drawn and compared with what the files were made of.
#include "TestImages.h"

using namespace lampblack::images;

namespace {

constexpr uint32_t kWhite = 0x00FFFFFF;

uint32_t GreyAt(int x, int y)
{
    return GreyOf(ColorAt(x, y));
}

// The image over white, with an alpha of 50 %: 127 or 128 of 255.
uint32_t HalfAt(int x, int y)
{
    uint32_t half = 0;
    for (int shift = 0; shift < 24; shift += 8)
        half |= (((ColorAt(x, y) >> shift & 0xFF) + 255) / 2) << shift;
    return half;
}

int DrawnDistance(const std::string& inName, uint32_t (*inColor)(int, int) = ColorAt)
{
    const TestPort port;
    const TestImporter importer(inName);
    CHECK(GraphicsImportDraw(importer) == noErr);
    CHECK(port.At(kWidth, 0) == kWhite);
    CHECK(port.At(0, kHeight) == kWhite);
    return DistanceFrom(port, inColor);
}

} // namespace

TEST_CASE("GraphicsImportDraw: formats without loss are exact")
{
    for (const std::string name : { "plain.png", "interlaced.png", "plain.gif", "interlaced.gif", "lzw.tif",
                                    "big.tif", "plain.bmp", "rle.bmp", "down.bmp", "plain.tga", "rle.tga" }) {
        CAPTURE(name);
        CHECK(DrawnDistance(name) == 0);
    }
}

TEST_CASE("GraphicsImportDraw: JPEG is near, in one scan or several, with colour halved, and as inks")
{
    CHECK(DrawnDistance("plain.jpg") <= 8);
    CHECK(DrawnDistance("progressive.jpg") <= 8);
    CHECK(DrawnDistance("halved.jpg") <= 24);
    CHECK(DrawnDistance("cmyk.jpg") <= 12);
}

TEST_CASE("GraphicsImportDraw: grey JPEG and PNG of 16 bits")
{
    CHECK(DrawnDistance("grey.jpg", GreyAt) <= 4);
    CHECK(DrawnDistance("grey16.png", GreyAt) <= 1);
}

TEST_CASE("GraphicsImportDraw: half-transparent pixels mix with what is there")
{
    for (const std::string name : { "alpha.png", "alpha.tif", "alpha.tga" }) {
        CAPTURE(name);
        CHECK(DrawnDistance(name, HalfAt) <= 1);
    }
}

TEST_CASE("GraphicsImportDraw: the transparent colour of a palette keeps what is there")
{
    const auto onWhite = [](int x, int y) { return x == 0 && y == 0 ? kWhite : ColorAt(x, y); };
    CHECK(DrawnDistance("palette.png", onWhite) == 0);
}

TEST_CASE("GraphicsImportDraw: a GIF's frame is placed on its canvas, and the rest keeps what is there")
{
    const auto placed = [](int x, int y) {
        const bool isInside = x >= 4 && x < 12 && y >= 3 && y < 9;
        return isInside && (x != 4 || y != 3) ? ColorAt(x - 4, y - 3) : kWhite;
    };
    CHECK(DrawnDistance("offset.gif", placed) == 0);
}

TEST_CASE("GraphicsImportDraw: a fax is black and white")
{
    const auto isEither = [](const TestPort& port) {
        int black = 0, other = 0;
        for (int y = 0; y < kHeight; ++y)
            for (int x = 0; x < kWidth; ++x) {
                black += port.At(x, y) == 0;
                other += port.At(x, y) != 0 && port.At(x, y) != kWhite;
            }
        return black > 20 && black < kWidth * kHeight && other == 0;
    };
    const TestPort port;
    const TestImporter importer("fax.tif");
    CHECK(GraphicsImportDraw(importer) == noErr);
    CHECK(isEither(port));
    CHECK(port.At(0, 0) == 0);
    CHECK(port.At(15, 11) == kWhite);
}

TEST_CASE("GraphicsImportGetNaturalBounds: every test image is 16 by 12, at the origin")
{
    for (const std::string name :
         { "plain.jpg", "plain.png", "offset.gif", "lzw.tif", "down.bmp", "rle.tga" }) {
        CAPTURE(name);
        const TestImporter importer(name);
        Rect bounds = { 1, 1, 1, 1 };
        CHECK(GraphicsImportGetNaturalBounds(importer, &bounds) == noErr);
        const Rect expected = MakeRect(0, 0, kWidth, kHeight);
        CHECK(EqualRect(&bounds, &expected));
    }
}

TEST_CASE("GraphicsImportGetImageDescription: codec, size, depth, name and length of the data")
{
    const struct {
        std::string name;
        OSType codec;
        short depth;
    } expected[] = { { "plain.jpg", 'jpeg', 24 },  { "grey.jpg", 'jpeg', 40 }, { "alpha.png", 'png ', 32 },
                     { "grey16.png", 'png ', 40 }, { "plain.gif", 'gif ', 8 }, { "lzw.tif", 'tiff', 24 },
                     { "rle.bmp", 'WRLE', 8 },     { "alpha.tga", 'tga ', 32 } };
    for (const auto& each : expected) {
        CAPTURE(each.name);
        const TestImporter importer(each.name);
        ImageDescriptionHandle description = nullptr;
        REQUIRE(GraphicsImportGetImageDescription(importer, &description) == noErr);
        CHECK((*description)->idSize == 86);
        CHECK((*description)->cType == each.codec);
        CHECK((*description)->width == kWidth);
        CHECK((*description)->height == kHeight);
        CHECK((*description)->depth == each.depth);
        CHECK((*description)->frameCount == 1);
        CHECK((*description)->hRes == 72 << 16);
        CHECK((*description)->name[0] > 0);
        CHECK((*description)->dataSize == (SInt32)TestBytes(each.name).size());
        DisposeHandle(reinterpret_cast<Handle>(description));
    }
}

TEST_CASE("GraphicsImportDoesDrawAllPixels: images with transparent parts do not")
{
    const auto drawsAll = [](const std::string& inName) {
        const TestImporter importer(inName);
        short answer = -1;
        CHECK(GraphicsImportDoesDrawAllPixels(importer, &answer) == noErr);
        return answer;
    };
    CHECK(drawsAll("plain.jpg") == graphicsImporterDrawsAllPixels);
    CHECK(drawsAll("plain.gif") == graphicsImporterDrawsAllPixels);
    CHECK(drawsAll("offset.gif") == graphicsImporterDoesntDrawAllPixels);
    CHECK(drawsAll("palette.png") == graphicsImporterDoesntDrawAllPixels);
}

TEST_CASE("GraphicsImportGetImageCount, GetDataOffsetAndSize, ReadData: one image, which is all of the data")
{
    const std::string bytes = TestBytes("plain.png");
    const TestImporter importer("plain.png");
    UInt32 count = 0, offset = 9, size = 0;
    CHECK(GraphicsImportGetImageCount(importer, &count) == noErr);
    CHECK(count == 1);
    CHECK(GraphicsImportGetDataOffsetAndSize(importer, &offset, &size) == noErr);
    CHECK(offset == 0);
    CHECK(size == bytes.size());
    char piece[4] = {};
    CHECK(GraphicsImportReadData(importer, piece, 0, 4) == noErr);
    CHECK(std::string(piece, 4) == bytes.substr(0, 4));
    CHECK(GraphicsImportReadData(importer, piece, size - 3, 4) == eofErr);
    CHECK(GraphicsImportReadData(importer, piece, 0xFFFFFFFF, 4) == eofErr);
    CHECK(GraphicsImportReadData(importer, nullptr, 0, 4) == paramErr);
}
