// Finding importers and giving them data.
#include "TestImages.h"

#include <Carbon/Aliases.h>

using namespace lampblack;
using namespace lampblack::images;

namespace {

OSType SubTypeOfInstance(ComponentInstance inInstance)
{
    ImageDescriptionHandle description = nullptr;
    if (GraphicsImportGetImageDescription(inInstance, &description))
        return 0;
    const OSType type = (*description)->cType;
    DisposeHandle(reinterpret_cast<Handle>(description));
    return type;
}

} // namespace

TEST_CASE("GetGraphicsImporterForFile: the content decides, whatever the name says")
{
    const TestFolder folder;
    const struct {
        std::string name;
        OSType codec;
    } expected[] = { { "plain.jpg", 'jpeg' }, { "plain.png", 'png ' }, { "plain.gif", 'gif ' },
                     { "lzw.tif", 'tiff' },   { "big.tif", 'tiff' },   { "plain.bmp", 'WRLE' } };
    for (const auto& each : expected) {
        CAPTURE(each.name);
        folder.Write("image.txt", TestBytes(each.name));
        const FSSpec spec = folder.Spec("image.txt");
        ComponentInstance importer = nullptr;
        REQUIRE(GetGraphicsImporterForFile(&spec, &importer) == noErr);
        CHECK(SubTypeOfInstance(importer) == each.codec);
        const TestPort port;
        CHECK(GraphicsImportDraw(importer) == noErr);
        CHECK(DistanceFrom(port) <= 8);
        CHECK(CloseComponent(importer) == noErr);
    }
}

TEST_CASE("GetGraphicsImporterForFile: a Targa file is known by its name or its type")
{
    const TestFolder folder;
    folder.Write("image.TGA", TestBytes("plain.tga"));
    folder.Write("image", TestBytes("plain.tga"));
    FSSpec spec = folder.Spec("image.TGA");
    ComponentInstance importer = nullptr;
    CHECK(GetGraphicsImporterForFile(&spec, &importer) == noErr);
    CHECK(SubTypeOfInstance(importer) == (OSType)'tga ');
    CHECK(CloseComponent(importer) == noErr);
    spec = folder.Spec("image");
    CHECK(GetGraphicsImporterForFile(&spec, &importer) == cantFindHandler);
    FInfo info = {};
    info.fdType = 'TPIC';
    CHECK(FSpSetFInfo(&spec, &info) == noErr);
    CHECK(GetGraphicsImporterForFile(&spec, &importer) == noErr);
    CHECK(CloseComponent(importer) == noErr);
}

TEST_CASE("GetGraphicsImporterForFile: no image, an empty file, no file, null")
{
    const TestFolder folder;
    folder.Write("text", "This is no image, and never was one: 0123456789 0123456789 0123456789.");
    folder.Write("empty");
    ComponentInstance importer = reinterpret_cast<ComponentInstance>(&importer);
    for (const std::string name : { "text", "empty" }) {
        const FSSpec spec = folder.Spec(name);
        CHECK(GetGraphicsImporterForFile(&spec, &importer) == cantFindHandler);
        CHECK(importer == nullptr);
    }
    const FSSpec missing = folder.Spec("missing");
    CHECK(GetGraphicsImporterForFile(&missing, &importer) == fnfErr);
    CHECK(importer == nullptr);
    CHECK(GetGraphicsImporterForFile(nullptr, &importer) == paramErr);
    CHECK(GetGraphicsImporterForFile(&missing, nullptr) == paramErr);
}

TEST_CASE("GetGraphicsImporterForDataRef: a handle's data, and an alias")
{
    const TestPort port;
    const TestHandle data(TestBytes("plain.png"));
    const Handle inner = data;
    const TestHandle reference(std::string(reinterpret_cast<const char*>(&inner), sizeof inner));
    ComponentInstance importer = nullptr;
    CHECK(GetGraphicsImporterForDataRef(reference, 'hndl', &importer) == noErr);
    CHECK(GraphicsImportDraw(importer) == noErr);
    CHECK(DistanceFrom(port) == 0);
    CHECK(CloseComponent(importer) == noErr);

    const TestFolder folder;
    folder.Write("image", TestBytes("plain.gif"));
    const FSSpec spec = folder.Spec("image");
    AliasHandle alias = nullptr;
    REQUIRE(NewAlias(nullptr, &spec, &alias) == noErr);
    CHECK(GetGraphicsImporterForDataRef(reinterpret_cast<Handle>(alias), 'alis', &importer) == noErr);
    CHECK(SubTypeOfInstance(importer) == (OSType)'gif ');
    CHECK(GraphicsImportSetDataReference(importer, reference, 'hndl') == noErr);
    Rect bounds = {};
    CHECK(GraphicsImportGetNaturalBounds(importer, &bounds) == codecBadDataErr); // a PNG for a GIF importer
    CHECK(CloseComponent(importer) == noErr);
    DisposeHandle(reinterpret_cast<Handle>(alias));
}

TEST_CASE("GetGraphicsImporterForDataRef: broken references are invalidDataRef")
{
    const TestHandle shorter("abc"), foreign("abcdefgh");
    ComponentInstance importer = nullptr;
    CHECK(GetGraphicsImporterForDataRef(nullptr, 'hndl', &importer) == invalidDataRef);
    CHECK(GetGraphicsImporterForDataRef(shorter, 'hndl', &importer) == invalidDataRef);
    CHECK(GetGraphicsImporterForDataRef(foreign, 'hndl', &importer) == invalidDataRef);
    CHECK(GetGraphicsImporterForDataRef(foreign, 'alis', &importer) == invalidDataRef);
    CHECK(GetGraphicsImporterForDataRef(foreign, 'url ', &importer) == invalidDataRef);
    CHECK(importer == nullptr);
}

TEST_CASE("GraphicsImportSetDataFile: the file is opened at once and read later")
{
    const TestFolder folder;
    folder.Write("one", TestBytes("plain.png"));
    const FSSpec spec = folder.Spec("one"), missing = folder.Spec("missing");
    const ComponentInstance importer = OpenDefaultComponent('grip', 'PNGf');
    FSSpec found = {};
    CHECK(GraphicsImportGetDataFile(importer, &found) == dataNoDataRef);
    CHECK(GraphicsImportSetDataFile(importer, &missing) == fnfErr);
    CHECK(GraphicsImportSetDataFile(importer, nullptr) == paramErr);
    CHECK(GraphicsImportSetDataFile(importer, &spec) == noErr);
    CHECK(GraphicsImportGetDataFile(importer, &found) == noErr);
    CHECK(std::memcmp(&found, &spec, sizeof found) == 0);
    Handle handle = nullptr;
    CHECK(GraphicsImportGetDataHandle(importer, &handle) == dataNoDataRef);
    CHECK(FSpDelete(&spec) == noErr);
    Rect bounds = {};
    CHECK(GraphicsImportGetNaturalBounds(importer, &bounds) == fnfErr);
    CHECK(CloseComponent(importer) == noErr);
}

TEST_CASE("GraphicsImportSetDataHandle: null, disposed and empty handles")
{
    const ComponentInstance importer = OpenDefaultComponent('grip', 'PNGf');
    const Handle gone = NewHandle(4);
    DisposeHandle(gone);
    CHECK(GraphicsImportSetDataHandle(importer, nullptr) == nilHandleErr);
    CHECK(GraphicsImportSetDataHandle(importer, gone) == memWZErr);
    Rect bounds = {};
    CHECK(GraphicsImportGetNaturalBounds(importer, &bounds) == dataNoDataRef);
    const Handle empty = NewHandle(0);
    CHECK(GraphicsImportSetDataHandle(importer, empty) == noErr);
    CHECK(GraphicsImportGetNaturalBounds(importer, &bounds) == codecBadDataErr);
    DisposeHandle(empty);
    CHECK(GraphicsImportGetNaturalBounds(importer, &bounds) == memWZErr);
    CHECK(GraphicsImportDraw(importer) != noErr);
    CHECK(CloseComponent(importer) == noErr);
}

TEST_CASE(
    "GraphicsImportSetDataHandle: data that changed after its header was read is not drawn past its rows")
{
    const TestPort port;
    const TestImporter importer("plain.png");
    Rect bounds = {};
    CHECK(GraphicsImportGetNaturalBounds(importer, &bounds) == noErr);
    // The same image, two pixels narrower: the header's checksum is told to match.
    std::string bytes = importer.data.Bytes();
    const TestHandle other(TestBytes("offset.gif"));
    CHECK(PtrToXHand(*(Handle)other, importer.data, GetHandleSize(other)) == noErr);
    CHECK(GraphicsImportDraw(importer) == codecBadDataErr);
}

TEST_CASE("GraphicsImportValidate: the header tells")
{
    const TestImporter importer("plain.png");
    Boolean valid = false;
    CHECK(GraphicsImportValidate(importer, &valid) == noErr);
    CHECK(valid);
    const TestImporter wrong('JPEG', TestBytes("plain.png"));
    CHECK(GraphicsImportValidate(wrong, &valid) == noErr);
    CHECK(!valid);
    CHECK(GraphicsImportValidate(wrong, nullptr) == paramErr);
}

TEST_CASE("Importers: null results are paramErr")
{
    const TestImporter importer("plain.png");
    CHECK(GraphicsImportGetNaturalBounds(importer, nullptr) == paramErr);
    CHECK(GraphicsImportGetBoundsRect(importer, nullptr) == paramErr);
    CHECK(GraphicsImportGetSourceRect(importer, nullptr) == paramErr);
    CHECK(GraphicsImportGetImageDescription(importer, nullptr) == paramErr);
    CHECK(GraphicsImportGetQuality(importer, nullptr) == paramErr);
    CHECK(GraphicsImportGetClip(importer, nullptr) == paramErr);
    CHECK(GraphicsImportGetAsPicture(importer, nullptr) == paramErr);
    CHECK(GraphicsImportSaveAsPicture(importer, nullptr, 0) == paramErr);
}
