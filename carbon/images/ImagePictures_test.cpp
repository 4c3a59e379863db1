// Pictures of images, picture files, and images within pictures.
#include "TestImages.h"

using namespace lampblack;
using namespace lampblack::images;

namespace {

struct TestPicture {
    explicit TestPicture(ComponentInstance inImporter)
    {
        REQUIRE(GraphicsImportGetAsPicture(inImporter, &picture) == noErr);
    }
    ~TestPicture() { KillPicture(picture); }
    TestPicture(const TestPicture&) = delete;

    Size Length() const { return GetHandleSize(reinterpret_cast<Handle>(picture)); }
    std::string Bytes() const
    {
        return std::string(reinterpret_cast<const char*>(*picture), (size_t)Length());
    }

    PicHandle picture = nullptr;
};

// How many pixels of the port the picture of an image draws differently from the image itself.
int PictureDifferences(const std::string& inName)
{
    const TestImporter importer(inName);
    const TestPort direct;
    CHECK(GraphicsImportDraw(importer) == noErr);
    const TestPicture picture(importer);
    const TestPort port;
    const Rect frame = MakeRect(0, 0, kWidth, kHeight);
    Rect bounds = {};
    CHECK(EqualRect(QDGetPictureBounds(picture.picture, &bounds), &frame));
    DrawPicture(picture.picture, &frame);
    CHECK(QDError() == noErr);
    return quickdraw::Differences(port, [&](int h, int v) { return direct.At(h, v); });
}

} // namespace

TEST_CASE("GraphicsImportGetAsPicture: the picture draws what the importer draws")
{
    for (const std::string name :
         { "plain.jpg", "progressive.jpg", "grey.jpg", "cmyk.jpg", "plain.png", "interlaced.png",
           "palette.png", "alpha.png", "plain.gif", "offset.gif", "lzw.tif", "plain.bmp", "rle.tga" }) {
        CAPTURE(name);
        CHECK(PictureDifferences(name) == 0);
    }
}

TEST_CASE("GraphicsImportGetAsPicture: JPEG data is in the picture as it is")
{
    const std::string bytes = TestBytes("plain.jpg");
    const TestImporter importer("plain.jpg");
    const TestPicture picture(importer);
    CHECK(picture.Bytes().find(bytes) != std::string::npos);
    CHECK(picture.Length() < (Size)bytes.size() + 300);
}

TEST_CASE("GraphicsImportGetAsPicture: transparent parts show what is behind the picture when it is drawn")
{
    for (const std::string name : { "alpha.png", "palette.png", "offset.gif", "alpha.tif", "alpha.tga" }) {
        CAPTURE(name);
        const Rect all = MakeRect(0, 0, 40, 30), frame = MakeRect(0, 0, kWidth, kHeight);
        const RGBColor blue = { 0, 0, 0xFFFF };
        const TestImporter importer(name);
        const TestPort direct;
        RGBForeColor(&blue);
        PaintRect(&all);
        CHECK(GraphicsImportDraw(importer) == noErr);
        const TestPicture picture(importer);
        const TestPort port;
        RGBForeColor(&blue);
        PaintRect(&all);
        DrawPicture(picture.picture, &frame);
        CHECK(quickdraw::Differences(port, [&](int h, int v) { return direct.At(h, v); }) == 0);
    }
}

TEST_CASE("GraphicsImportGetAsPicture: the frame is the bounds rectangle")
{
    for (const std::string name : { "plain.jpg", "plain.png" }) {
        CAPTURE(name);
        const TestImporter importer(name);
        const Rect bounds = MakeRect(4, 6, 4 + 2 * kWidth, 6 + 2 * kHeight);
        CHECK(GraphicsImportSetBoundsRect(importer, &bounds) == noErr);
        const TestPort direct;
        CHECK(GraphicsImportDraw(importer) == noErr);
        const TestPicture picture(importer);
        Rect frame = {};
        CHECK(EqualRect(QDGetPictureBounds(picture.picture, &frame), &bounds));
        const TestPort port;
        DrawPicture(picture.picture, &bounds);
        CHECK(quickdraw::Differences(port, [&](int h, int v) { return direct.At(h, v); }) == 0);
    }
}

TEST_CASE("GraphicsImportGetAsPicture: damaged data leaves no picture")
{
    const std::string bytes = TestBytes("noise.png");
    const TestImporter importer('PNGf', bytes.substr(0, bytes.size() / 2));
    PicHandle picture = reinterpret_cast<PicHandle>(&picture);
    CHECK(GraphicsImportGetAsPicture(importer, &picture) == codecBadDataErr);
    CHECK(picture == nullptr);
}

TEST_CASE("GraphicsImportSaveAsPicture: the file is a picture file that the importer of pictures draws")
{
    const TestFolder folder;
    const FSSpec spec = folder.Spec("picture");
    const TestImporter importer("plain.png");
    CHECK(GraphicsImportSaveAsPicture(importer, &spec, 0) == noErr);
    FInfo info = {};
    CHECK(FSpGetFInfo(&spec, &info) == noErr);
    CHECK(info.fdType == (OSType)'PICT');

    ComponentInstance reader = nullptr;
    REQUIRE(GetGraphicsImporterForFile(&spec, &reader) == noErr);
    Rect bounds = {};
    CHECK(GraphicsImportGetNaturalBounds(reader, &bounds) == noErr);
    const Rect natural = MakeRect(0, 0, kWidth, kHeight);
    CHECK(EqualRect(&bounds, &natural));
    const TestPort port;
    CHECK(GraphicsImportDraw(reader) == noErr);
    CHECK(DistanceFrom(port) == 0);
    UInt32 offset = 0, size = 0;
    CHECK(GraphicsImportGetDataOffsetAndSize(reader, &offset, &size) == noErr);
    CHECK(offset == 512);
    CHECK(size == folder.Data("picture").size() - 512);
    const TestPicture same(reader);
    CHECK(same.Bytes() == folder.Data("picture").substr(512));
    CHECK(CloseComponent(reader) == noErr);
}

TEST_CASE("GraphicsImportDraw: a part of a picture file, in a rectangle of another size, under a clip")
{
    const TestFolder folder;
    const FSSpec spec = folder.Spec("picture");
    {
        const TestImporter importer("plain.png");
        CHECK(GraphicsImportSaveAsPicture(importer, &spec, 0) == noErr);
    }
    ComponentInstance importer = nullptr;
    REQUIRE(GetGraphicsImporterForFile(&spec, &importer) == noErr);
    const Rect bounds = MakeRect(0, 0, 2 * kWidth, 2 * kHeight), part = MakeRect(0, 0, 8, kHeight);
    CHECK(GraphicsImportSetBoundsRect(importer, &bounds) == noErr);
    CHECK(GraphicsImportSetSourceRect(importer, &part) == noErr);
    const TestPort port;
    CHECK(GraphicsImportDraw(importer) == noErr);
    CHECK(quickdraw::Differences(
              port, [](int h, int v) { return h < 16 && v < 24 ? ColorAt(h / 2, v / 2) : 0x00FFFFFF; }) == 0);
    CHECK(CloseComponent(importer) == noErr);
}

TEST_CASE("GraphicsImportDraw: a picture file without a picture is codecBadDataErr")
{
    const TestPort port;
    const TestImporter importer('PICT', std::string(600, '\0'));
    CHECK(GraphicsImportDraw(importer) == codecBadDataErr);
    const TestImporter shorter('PICT', std::string(100, '\0'));
    CHECK(GraphicsImportDraw(shorter) == codecBadDataErr);
}

TEST_CASE("GraphicsImportDraw: in an open picture the image is recorded")
{
    const TestImporter importer("plain.png");
    const Rect frame = MakeRect(0, 0, 40, 30), place = MakeRect(3, 2, 3 + kWidth, 2 + kHeight);
    const TestPort recording;
    CHECK(GraphicsImportSetBoundsRect(importer, &place) == noErr);
    const PicHandle picture = OpenPicture(&frame);
    CHECK(GraphicsImportDraw(importer) == noErr);
    ClosePicture();
    const TestPort port;
    DrawPicture(picture, &frame);
    CHECK(quickdraw::Differences(port, [&](int h, int v) {
              return quickdraw::IsInside(place, h, v) ? ColorAt(h - 3, v - 2) : 0x00FFFFFF;
          }) == 0);
    KillPicture(picture);
}

TEST_CASE("GraphicsImportDraw: in an open picture an image with alpha stays one that covers in part")
{
    const Rect place = MakeRect(3, 2, 35, 26), frame = MakeRect(0, 0, 40, 40);
    const RGBColor green = { 0, 0xFFFF, 0 };
    const TestImporter importer("alpha.png");
    CHECK(GraphicsImportSetBoundsRect(importer, &place) == noErr);
    const TestPort drawn(40, 40), played(40, 40);
    SetPort(played.port);
    const PicHandle picture = OpenPicture(&frame);
    CHECK(GraphicsImportDraw(importer) == noErr);
    ClosePicture();
    for (const TestPort* port : { &drawn, &played }) {
        SetPort(port->port);
        RGBForeColor(&green); // behind the image when it is drawn, not when it was recorded
        PaintRect(&frame);
    }
    SetPort(drawn.port);
    CHECK(GraphicsImportDraw(importer) == noErr);
    SetPort(played.port);
    DrawPicture(picture, &frame);
    int largest = 0;
    for (int v = 0; v < 40; ++v)
        for (int h = 0; h < 40; ++h)
            largest = std::max(largest, Distance(played.At(h, v), drawn.At(h, v)));
    CHECK(largest <= 1);
    CHECK(played.At(10, 10) != 0x00FF00);
    KillPicture(picture);
}
