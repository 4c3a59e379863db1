// Exporters: what comes out is read again by the importers.
#include "ImageWriter.h"
#include "TestImages.h"

#include <Carbon/QDOffscreen.h>

#include <sys/stat.h>
#include <unistd.h>

using namespace lampblack;
using namespace lampblack::images;

namespace {

// A world that shows the test image.
struct ImageWorld {
    explicit ImageWorld(short inDepth = 32)
    {
        const Rect bounds = MakeRect(0, 0, kWidth, kHeight);
        REQUIRE(NewGWorld(&world, inDepth, &bounds, nullptr, nullptr, 0) == noErr);
        const TestImporter importer("plain.png");
        CHECK(GraphicsImportSetGWorld(importer, world, nullptr) == noErr);
        CHECK(GraphicsImportDraw(importer) == noErr);
    }
    ~ImageWorld() { DisposeGWorld(world); }
    ImageWorld(const ImageWorld&) = delete;

    GWorldPtr world = nullptr;
};

struct TestExporter {
    explicit TestExporter(OSType inSubType)
    {
        REQUIRE(OpenADefaultComponent('grex', inSubType, &exporter) == noErr);
    }
    ~TestExporter() { CloseComponent(exporter); }
    TestExporter(const TestExporter&) = delete;
    operator ComponentInstance() const { return exporter; }

    ComponentInstance exporter = nullptr;
};

// How far what is drawn of the bytes is from the test image.
int DistanceOf(OSType inSubType, const std::string& inBytes)
{
    const TestPort port;
    const TestImporter importer(inSubType, inBytes);
    CHECK(GraphicsImportDraw(importer) == noErr);
    return DistanceFrom(port);
}

std::string Exported(GWorldPtr inWorld, OSType inSubType, CodecQ inQuality = codecNormalQuality)
{
    const TestExporter exporter(inSubType);
    const TestHandle out("");
    CHECK(GraphicsExportSetInputGWorld(exporter, inWorld) == noErr);
    CHECK(GraphicsExportSetOutputHandle(exporter, out) == noErr);
    if (inSubType == 'JPEG')
        CHECK(GraphicsExportSetCompressionQuality(exporter, inQuality) == noErr);
    UInt32 size = 0;
    CHECK(GraphicsExportDoExport(exporter, &size) == noErr);
    CHECK(size == out.Bytes().size());
    return out.Bytes();
}

} // namespace

TEST_CASE("GraphicsExportDoExport: a world as PNG is exact, as JPEG near")
{
    const ImageWorld world;
    CHECK(DistanceOf('PNGf', Exported(world.world, 'PNGf')) == 0);
    CHECK(DistanceOf('JPEG', Exported(world.world, 'JPEG', codecLosslessQuality)) <= 4);
    CHECK(DistanceOf('JPEG', Exported(world.world, 'JPEG')) <= 40);
}

TEST_CASE("GraphicsExportSetCompressionQuality: more is larger and nearer; the scale of libjpeg")
{
    const ImageWorld world;
    size_t last = 0;
    for (const CodecQ quality : { codecMinQuality, codecNormalQuality, codecLosslessQuality }) {
        const size_t size = Exported(world.world, 'JPEG', quality).size();
        CHECK(size > last);
        last = size;
    }
    CHECK(JpegQualityOf(codecMinQuality) == 25);
    CHECK(JpegQualityOf(codecLowQuality) == 50);
    CHECK(JpegQualityOf(codecNormalQuality) == 75);
    CHECK(JpegQualityOf(codecHighQuality) == 87);
    CHECK(JpegQualityOf(codecMaxQuality) == 99);
    CHECK(JpegQualityOf(codecLosslessQuality) == 100);
    const TestExporter jpeg('JPEG'), png('PNGf');
    CodecQ quality = 0;
    CHECK(GraphicsExportGetCompressionQuality(jpeg, &quality) == noErr);
    CHECK(quality == codecNormalQuality);
    CHECK(GraphicsExportSetCompressionQuality(jpeg, 1025) == paramErr);
    CHECK(GraphicsExportSetCompressionQuality(png, 512) == badComponentSelector);
    CHECK(GraphicsExportGetCompressionQuality(png, &quality) == badComponentSelector);
}

TEST_CASE("GraphicsExportDoExport: worlds of other depths, and a pixel map")
{
    const ImageWorld sixteen(16), eight(8);
    CHECK(DistanceOf('PNGf', Exported(sixteen.world, 'PNGf')) <= 16);
    CHECK(DistanceOf('PNGf', Exported(eight.world, 'PNGf')) <= 64);
    const ImageWorld world;
    const TestExporter exporter('PNGf');
    const TestHandle out("");
    CHECK(GraphicsExportSetInputPixmap(exporter, GetGWorldPixMap(world.world)) == noErr);
    CHECK(GraphicsExportSetOutputHandle(exporter, out) == noErr);
    CHECK(GraphicsExportDoExport(exporter, nullptr) == noErr);
    CHECK(DistanceOf('PNGf', out.Bytes()) == 0);
}

TEST_CASE("GraphicsExportSetInputPicture: a picture is drawn on white")
{
    const TestPort port;
    const Rect frame = MakeRect(10, 10, 10 + kWidth, 10 + kHeight), half = MakeRect(10, 10, 18, 10 + kHeight);
    const PicHandle picture = OpenPicture(&frame);
    const RGBColor blue = { 0, 0, 0xFFFF };
    RGBForeColor(&blue);
    PaintRect(&half);
    ClosePicture();
    const TestExporter exporter('PNGf');
    const TestHandle out("");
    CHECK(GraphicsExportSetInputPicture(exporter, picture) == noErr);
    CHECK(GraphicsExportSetOutputHandle(exporter, out) == noErr);
    CHECK(GraphicsExportDoExport(exporter, nullptr) == noErr);
    const TestPort drawn;
    const TestImporter importer('PNGf', out.Bytes());
    Rect bounds = {};
    CHECK(GraphicsImportGetNaturalBounds(importer, &bounds) == noErr);
    CHECK(bounds.right == kWidth);
    CHECK(bounds.bottom == kHeight);
    CHECK(GraphicsImportDraw(importer) == noErr);
    CHECK(drawn.At(0, 0) == 0x0000FF);
    CHECK(drawn.At(7, 11) == 0x0000FF);
    CHECK(drawn.At(8, 0) == 0xFFFFFF);
    KillPicture(picture);
    CHECK(GraphicsExportDoExport(exporter, nullptr) == paramErr);
}

TEST_CASE("GraphicsExportSetOutputFile: a new file with type and creator, and an old one replaced")
{
    const TestFolder folder;
    const ImageWorld world;
    const TestExporter exporter('JPEG');
    const FSSpec spec = folder.Spec("out");
    CHECK(GraphicsExportSetInputGWorld(exporter, world.world) == noErr);
    CHECK(GraphicsExportSetOutputFile(exporter, &spec) == noErr);
    UInt32 size = 0;
    CHECK(GraphicsExportDoExport(exporter, &size) == noErr);
    CHECK(folder.Data("out").size() == size);
    CHECK(DistanceOf('JPEG', folder.Data("out")) <= 40);
    FInfo info = {};
    CHECK(FSpGetFInfo(&spec, &info) == noErr);
    CHECK(info.fdType == (OSType)'JPEG');
    CHECK(info.fdCreator == (OSType)'ogle');

    CHECK(GraphicsExportSetOutputFileTypeAndCreator(exporter, 'Pict', 'Test') == noErr);
    CHECK(GraphicsExportSetCompressionQuality(exporter, codecMinQuality) == noErr);
    UInt32 smaller = 0;
    CHECK(GraphicsExportDoExport(exporter, &smaller) == noErr);
    CHECK(smaller < size);
    CHECK(folder.Data("out").size() == smaller);
    CHECK(FSpGetFInfo(&spec, &info) == noErr);
    CHECK(info.fdType == (OSType)'Pict');
    CHECK(info.fdCreator == (OSType)'Test');
    CHECK(folder.Names() == "._out out");
}

TEST_CASE("GraphicsExportSetOutputFile: what cannot be written stays as it was")
{
    const TestFolder folder;
    const ImageWorld world;
    const TestExporter exporter('PNGf');
    folder.Write("out", "as it was");
    const FSSpec spec = folder.Spec("out");
    CHECK(GraphicsExportSetInputGWorld(exporter, world.world) == noErr);
    CHECK(GraphicsExportSetOutputFile(exporter, &spec) == noErr);
    CHECK(FSpSetFLock(&spec) == noErr);
    const ComponentResult locked = GraphicsExportDoExport(exporter, nullptr);
    CHECK((locked == permErr || locked == fLckdErr));
    CHECK(FSpRstFLock(&spec) == noErr);
    FSIORefNum open = 0;
    CHECK(FSpOpenDF(&spec, fsRdWrPerm, &open) == noErr);
    CHECK(GraphicsExportDoExport(exporter, nullptr) == opWrErr);
    CHECK(FSClose(open) == noErr);
    CHECK(folder.Bytes("out") == "as it was");
    folder.MakeFolder("folder");
    const FSSpec inside = folder.Spec("folder");
    CHECK(GraphicsExportSetOutputFile(exporter, &inside) == noErr);
    CHECK(GraphicsExportDoExport(exporter, nullptr) != noErr);
    CHECK(std::filesystem::is_directory(folder.Path() / "folder"));
}

TEST_CASE("GraphicsExportDoExport: nothing set, and what is gone since")
{
    const TestExporter exporter('JPEG');
    UInt32 size = 9;
    CHECK(GraphicsExportDoExport(exporter, &size) == dataNoDataRef);
    CHECK(size == 0);
    {
        const ImageWorld world;
        CHECK(GraphicsExportSetInputGWorld(exporter, world.world) == noErr);
        CHECK(GraphicsExportDoExport(exporter, nullptr) == dataNoDataRef); // no output
    }
    {
        const TestHandle out("as it was");
        CHECK(GraphicsExportSetOutputHandle(exporter, out) == noErr);
        CHECK(GraphicsExportDoExport(exporter, nullptr) == paramErr); // the world is gone
        CHECK(out.Bytes() == "as it was");
    }
    const ImageWorld world;
    CHECK(GraphicsExportSetInputGWorld(exporter, world.world) == noErr);
    CHECK(GraphicsExportDoExport(exporter, nullptr) == memWZErr); // the handle is gone
}

TEST_CASE("Exporters: bad arguments, and getters of the other kind")
{
    const TestExporter exporter('PNGf');
    CHECK(GraphicsExportSetInputPicture(exporter, nullptr) == paramErr);
    CHECK(GraphicsExportSetInputGWorld(exporter, nullptr) == paramErr);
    CHECK(GraphicsExportSetInputPixmap(exporter, nullptr) == paramErr);
    CHECK(GraphicsExportSetOutputHandle(exporter, nullptr) == nilHandleErr);
    CHECK(GraphicsExportSetOutputFile(exporter, nullptr) == paramErr);
    const ImageWorld world;
    CHECK(GraphicsExportSetInputGWorld(exporter, world.world) == noErr);
    GWorldPtr set = nullptr;
    PicHandle picture = nullptr;
    CHECK(GraphicsExportGetInputGWorld(exporter, &set) == noErr);
    CHECK(set == world.world);
    CHECK(GraphicsExportGetInputGWorld(exporter, nullptr) == paramErr);
    CHECK(GraphicsExportGetInputPicture(exporter, &picture) == dataNoDataRef);
    OSType type = 0, creator = 0;
    CHECK(GraphicsExportGetDefaultFileTypeAndCreator(exporter, &type, &creator) == noErr);
    CHECK(type == (OSType)'PNGf');
    CHECK(GraphicsExportSetOutputFileTypeAndCreator(exporter, 'abcd', 'efgh') == noErr);
    CHECK(GraphicsExportGetOutputFileTypeAndCreator(exporter, &type, nullptr) == noErr);
    CHECK(type == (OSType)'abcd');
}
