// Worlds with a memory fallback, images into worlds and pictures, JPEG and back.
#include <doctest/doctest.h>
#include <lampblack/host.h>
#include <lampblack/lampblack.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <set>
#include <vector>

#include "CallLog.h"
#include "ScratchFolder.h"

LAMPBLACK_WATCH(Boolean, LockPixels, (PixMapHandle pm), (pm))
LAMPBLACK_WATCH(void, UnlockPixels, (PixMapHandle pm), (pm))
LAMPBLACK_WATCH(OSErr, GetGraphicsImporterForFile, (const FSSpec* file, ComponentInstance* importer),
                (file, importer))
LAMPBLACK_WATCH(ComponentResult, GraphicsImportGetNaturalBounds, (GraphicsImportComponent ci, Rect* bounds),
                (ci, bounds))
LAMPBLACK_WATCH(ComponentResult, GraphicsImportSetGWorld,
                (GraphicsImportComponent ci, CGrafPtr port, GDHandle gd), (ci, port, gd))
LAMPBLACK_WATCH(ComponentResult, GraphicsImportSetBoundsRect,
                (GraphicsImportComponent ci, const Rect* bounds), (ci, bounds))
LAMPBLACK_WATCH(ComponentResult, GraphicsImportDraw, (GraphicsImportComponent ci), (ci))
LAMPBLACK_WATCH(ComponentResult, GraphicsImportSetDataHandle, (GraphicsImportComponent ci, Handle h), (ci, h))
LAMPBLACK_WATCH(ComponentResult, GraphicsImportGetAsPicture, (GraphicsImportComponent ci, PicHandle* picture),
                (ci, picture))
LAMPBLACK_WATCH(ComponentResult, GraphicsExportSetInputPicture,
                (GraphicsExportComponent ci, PicHandle picture), (ci, picture))
LAMPBLACK_WATCH(ComponentResult, GraphicsExportSetOutputHandle, (GraphicsExportComponent ci, Handle h),
                (ci, h))
LAMPBLACK_WATCH(ComponentResult, GraphicsExportDoExport, (GraphicsExportComponent ci, UInt32* size),
                (ci, size))
LAMPBLACK_WATCH(OSErr, CloseComponent, (ComponentInstance ci), (ci))
LAMPBLACK_WATCH(OSErr, OpenADefaultComponent, (OSType type, OSType subType, ComponentInstance* ci),
                (type, subType, ci))

namespace {

struct WorldRequest {
    int count = 0;
    short depth = 0;
    GWorldFlags flags = 0;
} gRequest;
OSErr gWorldError = noErr; // reported beside the world that was made
CodecQ gQuality = 0;
std::set<Handle> gHandles;

constexpr Rect kBounds = { 0, 0, 30, 40 };
constexpr RGBColor kRed = { 0xFFFF, 0, 0 }, kBlue = { 0, 0, 0xFFFF };

// Left half red, right half blue.
struct World {
    explicit World(short inDepth = 32)
    {
        REQUIRE(NewGWorld(&fWorld, inDepth, &kBounds, nullptr, nullptr, 0) == noErr);
        const StGWorldSaver saver(fWorld, nullptr);
        const Rect left = { 0, 0, 30, 20 }, right = { 0, 20, 30, 40 };
        RGBForeColor(&kRed);
        PaintRect(&left);
        RGBForeColor(&kBlue);
        PaintRect(&right);
        ForeColor(blackColor);
    }
    explicit World(GWorldPtr inWorld) : fWorld(inWorld) {}
    ~World() { DisposeGWorld(fWorld); }
    World(const World&) = delete;
    World& operator=(const World&) = delete;
    operator GWorldPtr() const { return fWorld; }
    RGBColor At(short h, short v) const
    {
        const StGWorldSaver saver(fWorld, nullptr);
        RGBColor color;
        GetCPixel(h, v, &color);
        return color;
    }
    GWorldPtr fWorld = nullptr;
};

bool IsNear(const RGBColor& a, const RGBColor& b, int inTolerance = 0x0800)
{
    return std::abs(a.red - b.red) <= inTolerance && std::abs(a.green - b.green) <= inTolerance &&
           std::abs(a.blue - b.blue) <= inTolerance;
}

// Draws the picture at its own size into a new world.
std::vector<RGBColor> PixelsOf(PicHandle inPicture)
{
    GWorldPtr made = nullptr;
    REQUIRE(NewGWorld(&made, 32, &kBounds, nullptr, nullptr, 0) == noErr);
    const World world(made);
    const StGWorldSaver saver(world, nullptr);
    EraseRect(&kBounds);
    DrawPicture(inPicture, &kBounds);
    std::vector<RGBColor> pixels;
    for (short v = 0; v < 30; ++v)
        for (short h = 0; h < 40; ++h)
            GetCPixel(h, v, &pixels.emplace_back());
    return pixels;
}

// A file of the host with these bytes.
FSSpec SpecOfFile(const std::filesystem::path& inPath, const void* inBytes, size_t inCount)
{
    std::ofstream(inPath, std::ios::binary)
        .write(static_cast<const char*>(inBytes), (std::streamsize)inCount);
    FSRef reference;
    FSSpec spec;
    REQUIRE(FSPathMakeRef(reinterpret_cast<const UInt8*>(inPath.c_str()), &reference, nullptr) == noErr);
    REQUIRE(FSGetCatalogInfo(&reference, kFSCatInfoNone, nullptr, nullptr, &spec, nullptr) == noErr);
    return spec;
}

Handle JpegOfTestWorld()
{
    const World world;
    const PicHandle picture = GWorldToPicture(world, srcCopy);
    REQUIRE(picture);
    Handle jpeg = nullptr;
    REQUIRE(ConvertPictureToJPEG(picture, &jpeg) == noErr);
    KillPicture(picture);
    return jpeg;
}

struct StFailure {
    StFailure(const char* inName, short inError) { CallLog::gFailures[inName] = inError; }
    ~StFailure() { CallLog::gFailures.clear(); }
};

} // namespace

LAMPBLACK_INTERPOSE QDErr NewGWorld(GWorldPtr* world, short depth, const Rect* bounds, CTabHandle table,
                                    GDHandle device, GWorldFlags flags)
{
    gRequest = { gRequest.count + 1, depth, flags };
    const QDErr error = Next<decltype(NewGWorld)>("NewGWorld")(world, depth, bounds, table, device,
                                                               flags & ~(GWorldFlags)useTempMem);
    return error ? error : gWorldError;
}

LAMPBLACK_INTERPOSE ComponentResult GraphicsImportSetQuality(GraphicsImportComponent ci, CodecQ quality)
{
    gQuality = quality;
    return Next<decltype(GraphicsImportSetQuality)>("GraphicsImportSetQuality")(ci, quality);
}

LAMPBLACK_INTERPOSE Handle NewHandle(Size size)
{
    const Handle handle = Next<decltype(NewHandle)>("NewHandle")(size);
    gHandles.insert(handle);
    return handle;
}

LAMPBLACK_INTERPOSE void DisposeHandle(Handle handle)
{
    gHandles.erase(handle);
    Next<decltype(DisposeHandle)>("DisposeHandle")(handle);
}

TEST_CASE("NewGWorldEnhanced: bounds without a pixel are paramErr, without asking the platform")
{
    gRequest = {};
    for (const Rect& bounds : { Rect{ 0, 0, 10, 0 }, Rect{ 0, 0, 0, 10 }, Rect{ 5, 5, 4, 10 } }) {
        GWorldPtr world = reinterpret_cast<GWorldPtr>(1);
        CHECK(NewGWorldEnhanced(&world, 32, &bounds, nullptr, nullptr, 0) == paramErr);
        CHECK(world == nullptr);
    }
    CHECK(NewGWorldEnhanced(nullptr, 32, &kBounds, nullptr, nullptr, 0) == paramErr);
    CHECK(gRequest.count == 0);
}

TEST_CASE("NewGWorldEnhanced: with Aqua temporary memory is never asked for")
{
    GWorldPtr made = nullptr;
    CHECK(NewGWorldEnhanced(&made, 16, &kBounds, nullptr, nullptr, useTempMem | keepLocal) == noErr);
    const World world(made);
    CHECK(gRequest.depth == 16);
    CHECK(gRequest.flags == (GWorldFlags)keepLocal);
    CHECK(GetGWorldBitDepth(world) == 16);
}

TEST_CASE("NewGWorldEnhanced: a world that came with an error is disposed of, the error is the answer")
{
    gWorldError = cNoMemErr;
    GWorldPtr world = reinterpret_cast<GWorldPtr>(1);
    CHECK(NewGWorldEnhanced(&world, 32, &kBounds, nullptr, nullptr, 0) == cNoMemErr);
    CHECK(world == nullptr);
    gWorldError = noErr;
    CHECK(NewGWorldEnhanced(&world, 3, &kBounds, nullptr, nullptr, 0) == cDepthErr);
    CHECK(world == nullptr);
}

TEST_CASE("GetGWorldBitDepth: 0 for none")
{
    CHECK(GetGWorldBitDepth(nullptr) == 0);
    for (const short depth : { 1, 2, 4, 8, 16, 32 })
        CHECK(GetGWorldBitDepth(World(depth)) == depth);
}

TEST_CASE("GetGWorldPortBounds, GetPortWidth, GetPortHeight: of the port bounds")
{
    const Rect bounds = { 5, 7, 15, 37 };
    GWorldPtr made = nullptr;
    REQUIRE(NewGWorld(&made, 32, &bounds, nullptr, nullptr, 0) == noErr);
    const World world(made);
    Rect answer;
    CHECK(GetGWorldPortBounds(world, &answer) == &answer);
    CHECK(EqualRect(&answer, &bounds));
    CHECK(GetPortWidth(world) == 30);
    CHECK(GetPortHeight(world) == 10);
    CHECK(GetPortWidth(nullptr) == 0);
}

TEST_CASE("GetQDGlobalScreenBitsBounds: the main screen")
{
    const Rect screen = GetQDGlobalScreenBitsBounds(), device = (**GetMainDevice()).gdRect;
    CHECK(EqualRect(&screen, &device));
}

TEST_CASE("SetGWorldWindow: the window's port is current")
{
    WindowRef window = nullptr;
    const Rect bounds = { 100, 100, 200, 300 };
    REQUIRE(CreateNewWindow(kDocumentWindowClass, kWindowStandardDocumentAttributes, &bounds, &window) ==
            noErr);
    SetGWorld(nullptr, nullptr);
    SetGWorldWindow(window);
    CGrafPtr port = nullptr;
    GDHandle device = nullptr;
    GetGWorld(&port, &device);
    CHECK(port == GetWindowPort(window));
    CHECK(device == GetMainDevice());
    ReleaseWindow(window);
}

TEST_CASE("GWorldToPicture: plays back the same pixels, and the caller's world stays current")
{
    for (const short depth : { 1, 8, 16, 32 }) {
        CAPTURE(depth);
        const World world(depth), current;
        SetGWorld(current, nullptr);
        const PicHandle picture = GWorldToPicture(world, srcCopy);
        REQUIRE(picture);
        Rect frame;
        CHECK(EqualRect(QDGetPictureBounds(picture, &frame), &kBounds));
        CGrafPtr port = nullptr;
        GetPort(&port);
        CHECK(port == current);
        const std::vector<RGBColor> pixels = PixelsOf(picture);
        bool same = true;
        for (short v = 0; v < 30; ++v)
            for (short h = 0; h < 40; ++h)
                same = same && EqualRGB(pixels[(size_t)(v * 40 + h)], world.At(h, v));
        CHECK(same);
        KillPicture(picture);
        SetGWorld(nullptr, nullptr);
    }
}

TEST_CASE("GWorldToPicture: pixels that the caller had locked stay locked, others do not")
{
    const World world;
    const PixMapHandle pixels = GetGWorldPixMap(world);
    KillPicture(GWorldToPicture(world, srcCopy));
    CHECK((GetPixelsState(pixels) & pixelsLocked) == 0);
    LockPixels(pixels);
    KillPicture(GWorldToPicture(world, srcCopy));
    CHECK((GetPixelsState(pixels) & pixelsLocked) != 0);
}

TEST_CASE("GWorldToPicture: of no world there is no picture")
{
    SetGWorld(nullptr, nullptr);
    CHECK(GWorldToPicture(nullptr, srcCopy) == nullptr);
}

TEST_CASE("ConvertPictureToJPEG, ConvertJPEGToPicture: there and back, nearly the same pixels")
{
    const Handle jpeg = JpegOfTestWorld();
    REQUIRE(jpeg);
    REQUIRE(GetHandleSize(jpeg) > 100);
    CHECK((UInt8)(*jpeg)[0] == 0xFF);
    CHECK((UInt8)(*jpeg)[1] == 0xD8);
    PicHandle picture = nullptr;
    gQuality = 0;
    REQUIRE(ConvertJPEGToPicture(jpeg, &picture) == noErr);
    CHECK(gQuality == 1023);
    CHECK(IsHandleValid(jpeg));
    const std::vector<RGBColor> pixels = PixelsOf(picture);
    CHECK(IsNear(pixels[15 * 40 + 8], kRed));
    CHECK(IsNear(pixels[15 * 40 + 32], kBlue));
    KillPicture(picture);
    DisposeHandle(jpeg);
}

TEST_CASE("ConvertPictureToJPEG: leaves no handle behind when a step fails, and closes the exporter")
{
    const World world;
    const PicHandle picture = GWorldToPicture(world, srcCopy);
    for (const char* step :
         { "GraphicsExportSetInputPicture", "GraphicsExportSetOutputHandle", "GraphicsExportDoExport" }) {
        CAPTURE(std::string(step));
        const StFailure failure(step, -2041);
        const std::set<Handle> before = gHandles;
        const CallLog log;
        Handle jpeg = reinterpret_cast<Handle>(1);
        CHECK(ConvertPictureToJPEG(picture, &jpeg) == -2041);
        CHECK(jpeg == nullptr);
        CHECK(gHandles == before);
        CHECK(log.Calls().ends_with("CloseComponent"));
    }
    KillPicture(picture);
}

TEST_CASE(
    "ConvertPictureToJPEG, ConvertJPEGToPicture: without a component, or with bad input, there is an error")
{
    Handle jpeg = reinterpret_cast<Handle>(1);
    PicHandle picture = reinterpret_cast<PicHandle>(1);
    CHECK(ConvertPictureToJPEG(nullptr, &jpeg) != noErr);
    CHECK(jpeg == nullptr);
    CHECK(ConvertJPEGToPicture(nullptr, &picture) != noErr);
    CHECK(picture == nullptr);
    CHECK(ConvertPictureToJPEG(nullptr, nullptr) == paramErr);
    CHECK(ConvertJPEGToPicture(nullptr, nullptr) == paramErr);
    const StFailure failure("OpenADefaultComponent", -3003);
    CHECK(ConvertPictureToJPEG(nullptr, &jpeg) == -3003);
    CHECK(ConvertJPEGToPicture(nullptr, &picture) == -3003);
}

TEST_CASE("ConvertJPEGToPicture: garbage is an error and no picture")
{
    const Handle garbage = NewHandleClear(500);
    PicHandle picture = reinterpret_cast<PicHandle>(1);
    CHECK(ConvertJPEGToPicture(garbage, &picture) != noErr);
    CHECK(picture == nullptr);
    DisposeHandle(garbage);
}

TEST_CASE("NewGWorldFromFile, NewPictureFromFile: an image file in a world of its size, and in a picture")
{
    const Handle jpeg = JpegOfTestWorld();
    const ScratchFolder folder;
    const FSSpec spec = SpecOfFile(folder.Path() / "image.jpg", *jpeg, (size_t)GetHandleSize(jpeg));
    DisposeHandle(jpeg);
    for (const short depth : { 8, 16, 32 }) {
        CAPTURE(depth);
        GWorldPtr made = nullptr;
        gQuality = 0;
        const CallLog log;
        REQUIRE(NewGWorldFromFile(&spec, &made, depth) == noErr);
        CHECK(log.Calls() ==
              "GetGraphicsImporterForFile GraphicsImportGetNaturalBounds LockPixels "
              "GraphicsImportSetGWorld GraphicsImportSetBoundsRect GraphicsImportDraw UnlockPixels "
              "CloseComponent");
        CHECK(gQuality == 1023);
        const World world(made);
        CHECK(GetGWorldBitDepth(world) == depth);
        CHECK(GetPortWidth(world) == 40);
        CHECK(GetPortHeight(world) == 30);
        CHECK(IsNear(world.At(8, 15), kRed, 0x2000));
        CHECK(IsNear(world.At(32, 15), kBlue, 0x2000));
    }
    PicHandle picture = nullptr;
    REQUIRE(NewPictureFromFile(&spec, &picture) == noErr);
    CHECK(IsNear(PixelsOf(picture)[15 * 40 + 8], kRed));
    KillPicture(picture);
}

TEST_CASE(
    "NewGWorldFromFile, NewPictureFromFile: failures leave null, the importer closed and the world as it was")
{
    const Handle jpeg = JpegOfTestWorld();
    const ScratchFolder folder;
    const FSSpec spec = SpecOfFile(folder.Path() / "image.jpg", *jpeg, (size_t)GetHandleSize(jpeg));
    DisposeHandle(jpeg);
    const World current;
    SetGWorld(current, nullptr);
    GWorldPtr world = reinterpret_cast<GWorldPtr>(1);
    PicHandle picture = reinterpret_cast<PicHandle>(1);
    CHECK(NewGWorldFromFile(&spec, &world, 3) == cDepthErr);
    CHECK(world == nullptr);
    {
        const StFailure failure("GraphicsImportGetNaturalBounds", -8961);
        const CallLog log;
        CHECK(NewGWorldFromFile(&spec, &world, 32) == -8961);
        CHECK(log.Calls().ends_with("CloseComponent"));
    }
    {
        const StFailure failure("GraphicsImportGetAsPicture", -8961);
        const CallLog log;
        CHECK(NewPictureFromFile(&spec, &picture) == -8961);
        CHECK(picture == nullptr);
        CHECK(log.Calls().ends_with("CloseComponent"));
    }
    const FSSpec text = SpecOfFile(folder.Path() / "text", "no image", 8);
    CHECK(NewGWorldFromFile(&text, &world, 32) != noErr);
    CHECK(NewPictureFromFile(&text, &picture) != noErr);
    CHECK(NewPictureFromFile(nullptr, &picture) == paramErr);
    CHECK(NewPictureFromFile(&spec, nullptr) == paramErr);
    CHECK(NewGWorldFromFile(nullptr, &world, 32) == paramErr);
    CGrafPtr port = nullptr;
    GetPort(&port);
    CHECK(port == current);
    SetGWorld(nullptr, nullptr);
}
