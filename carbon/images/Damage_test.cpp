// Data that ends early, headers that promise too much, and whatever else a file may hold.
#include "ImageReader.h"
#include "TestImages.h"

#include <random>

using namespace lampblack::images;

namespace {

const std::string kAll[] = { "plain.jpg", "progressive.jpg", "halved.jpg", "grey.jpg",    "cmyk.jpg",
                             "plain.png", "interlaced.png",  "grey16.png", "palette.png", "alpha.png",
                             "plain.gif", "interlaced.gif",  "offset.gif", "lzw.tif",     "big.tif",
                             "alpha.tif", "fax.tif",         "plain.bmp",  "rle.bmp",     "down.bmp",
                             "plain.tga", "rle.tga",         "alpha.tga" };

// Bytes at a place replaced.
std::string With(std::string inBytes, size_t inAt, const std::string& inNew)
{
    return inBytes.replace(inAt, inNew.size(), inNew);
}

ComponentResult BoundsError(OSType inSubType, const std::string& inBytes)
{
    const TestImporter importer(inSubType, inBytes);
    Rect bounds = {};
    return GraphicsImportGetNaturalBounds(importer, &bounds);
}

ComponentResult DrawError(OSType inSubType, const std::string& inBytes)
{
    const TestImporter importer(inSubType, inBytes);
    return GraphicsImportDraw(importer);
}

std::string FourBytes(uint32_t inValue)
{
    return { (char)(inValue >> 24), (char)(inValue >> 16), (char)(inValue >> 8), (char)inValue };
}

} // namespace

TEST_CASE("GraphicsImportDraw: data cut off anywhere is drawn as far as it goes, or is an error")
{
    const TestPort port;
    for (const std::string& name : kAll) {
        CAPTURE(name);
        const std::string bytes = TestBytes(name);
        for (size_t length = 0; length < bytes.size(); ++length) {
            const ComponentResult error = DrawError(SubTypeOf(name), bytes.substr(0, length));
            const bool isPublished = error == noErr || error == codecBadDataErr || error == memFullErr;
            CHECK(isPublished);
        }
    }
}

TEST_CASE("GraphicsImportDraw: bytes changed by chance")
{
    const TestPort port;
    std::mt19937 random(1904);
    for (const std::string& name : kAll) {
        CAPTURE(name);
        for (int round = 0; round < 150; ++round) {
            std::string bytes = TestBytes(name);
            for (int change = 0; change < 3; ++change)
                bytes[random() % bytes.size()] = (char)random();
            const ComponentResult error = DrawError(SubTypeOf(name), bytes);
            const bool isPublished = error == noErr || error == codecBadDataErr || error == memFullErr;
            CHECK(isPublished);
        }
    }
}

TEST_CASE("GraphicsImportDraw: of a PNG that ends half-way the rows that are there are drawn")
{
    // The library takes 8 KB at a time; what is left of the last piece is not looked at.
    const TestPort port(64, 64);
    const TestImporter importer('PNGf', TestBytes("noise.png").substr(0, 9000));
    CHECK(GraphicsImportDraw(importer) == codecBadDataErr);
    CHECK(port.At(0, 0) != 0x00FFFFFF);
    CHECK(port.At(0, 63) == 0x00FFFFFF);
}

TEST_CASE("GraphicsImportDraw: of a JPEG that ends half-way the rows that are there are drawn")
{
    const std::string cut = TestBytes("noise.jpg").substr(0, TestBytes("noise.jpg").size() / 4);
    for (const std::string end : { "", "\xFF\xD9" }) { // with an end mark, too
        const TestPort port(64, 64);
        const TestImporter importer('JPEG', cut + end);
        CHECK(GraphicsImportDraw(importer) == codecBadDataErr);
        CHECK(port.At(0, 0) != 0x00FFFFFF);
        CHECK(port.At(0, 63) == 0x00FFFFFF);
    }
}

TEST_CASE("GraphicsImportDraw: of a GIF that ends half-way the rows that are there are drawn")
{
    const TestPort port;
    const TestImporter importer('GIFf', TestBytes("plain.gif").substr(0, 900));
    CHECK(GraphicsImportDraw(importer) == codecBadDataErr);
    CHECK(port.At(0, 0) == ColorAt(0, 0));
    CHECK(port.At(15, 0) == ColorAt(15, 0));
    CHECK(port.At(15, 11) == 0x00FFFFFF);
}

TEST_CASE("GraphicsImportDraw: what follows the pixels of a GIF's frame is no frame")
{
    const TestPort port;
    std::string bytes = TestBytes("plain.gif");
    bytes.back() = ',';
    CHECK(DrawError('GIFf', bytes + std::string(200, '\xFF')) == noErr);
    CHECK(DistanceFrom(port) == 0);
}

TEST_CASE("GraphicsImportGetNaturalBounds: a JPEG without its end mark is whole")
{
    const TestPort port;
    const std::string bytes = TestBytes("plain.jpg");
    CHECK(DrawError('JPEG', bytes.substr(0, bytes.size() - 2)) == noErr);
    CHECK(DistanceFrom(port) <= 8);
}

TEST_CASE("GraphicsImportGetNaturalBounds: huge sizes are memFullErr before any memory is taken")
{
    const std::string png = TestBytes("plain.png"), gif = TestBytes("plain.gif");
    CHECK(BoundsError('PNGf', With(png, 16, FourBytes(0x7FFFFFFF) + FourBytes(0x7FFFFFFF))) == memFullErr);
    CHECK(BoundsError('PNGf', With(png, 16, FourBytes(20000) + FourBytes(20000))) == memFullErr);
    CHECK(BoundsError('PNGf', With(png, 16, FourBytes(40000) + FourBytes(1))) == memFullErr);
    CHECK(BoundsError('GIFf', With(gif, 6, "\xFF\x7F\xFF\x7F")) == memFullErr);
    CHECK(BoundsError('BMPf', With(TestBytes("plain.bmp"), 18, "\xFF\xFF\xFF\x7F\xFF\xFF\xFF\x7F")) ==
          memFullErr);
    CHECK(BoundsError('TPIC', With(TestBytes("plain.tga"), 12, "\xFF\xFF\xFF\xFF")) == memFullErr);
    const std::string jpeg = TestBytes("plain.jpg");
    const size_t frame = jpeg.find("\xFF\xC0");
    REQUIRE(frame != std::string::npos);
    CHECK(BoundsError('JPEG', With(jpeg, frame + 5, "\xFF\xDC\xFF\xDC")) == memFullErr);
    CHECK(BoundsError('TIFF', With(TestBytes("big.tif"), TestBytes("big.tif").find({ 1, 0, 0, 3 }) + 8,
                                   "\xFF\xFF\xFF\xFF")) != noErr);
}

TEST_CASE("GraphicsImportGetNaturalBounds: a size of zero is codecBadDataErr")
{
    CHECK(BoundsError('PNGf', With(TestBytes("plain.png"), 16, FourBytes(0))) == codecBadDataErr);
    CHECK(BoundsError('BMPf', With(TestBytes("plain.bmp"), 18, FourBytes(0))) == codecBadDataErr);
    CHECK(BoundsError('TPIC', With(TestBytes("plain.tga"), 12, std::string(2, 0))) == codecBadDataErr);
}

TEST_CASE("GraphicsImportGetNaturalBounds: a BMP of the least height")
{
    CHECK(BoundsError('BMPf', With(TestBytes("plain.bmp"), 22, std::string("\0\0\0\x80", 4))) == memFullErr);
}

TEST_CASE("GraphicsImportDraw: a progressive JPEG with a thousand scans is refused")
{
    const TestPort port;
    const std::string bytes = TestBytes("progressive.jpg");
    const size_t scan = bytes.rfind("\xFF\xDA"), end = bytes.size() - 2;
    std::string many = bytes.substr(0, end);
    for (int i = 0; i < 1000; ++i)
        many += bytes.substr(scan, end - scan);
    CHECK(DrawError('JPEG', many + bytes.substr(end)) == codecBadDataErr);
}

TEST_CASE("IdentifyImage: marks, and nothing for less")
{
    const auto identify = [](const std::string& bytes) {
        return IdentifyImage({ reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size() });
    };
    CHECK(identify("") == 0);
    CHECK(identify("\xFF\xD8") == 0);
    CHECK(identify("GIF88a") == 0);
    CHECK(identify("BM and some more text than that") == 0);
    CHECK(identify(TestBytes("plain.tga")) == 0);
    for (const std::string& name : kAll)
        if (SubTypeOf(name) != 'TPIC')
            CHECK(identify(TestBytes(name)) == SubTypeOf(name));
}
