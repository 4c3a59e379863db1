// Worlds with a memory fallback, images into worlds and pictures, JPEG and back.
#include <doctest/doctest.h>
#include <lampblack/host.h>
#include <lampblack/lampblack.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <vector>

#include "CallLog.h"
#include "ScratchFolder.h"

LAMPBLACK_WATCH(Boolean, LockPixels, (PixMapHandle pm), (pm))
LAMPBLACK_WATCH(void, UnlockPixels, (PixMapHandle pm), (pm))
LAMPBLACK_WATCH(void, SetPortWindowPort, (WindowRef window), (window))
LAMPBLACK_WATCH(void, SetGWorld, (CGrafPtr port, GDHandle device), (port, device))
LAMPBLACK_WATCH(ComponentResult, GraphicsImportGetNaturalBounds, (GraphicsImportComponent ci, Rect* bounds),
                (ci, bounds))
LAMPBLACK_WATCH(ComponentResult, GraphicsImportSetGWorld,
                (GraphicsImportComponent ci, CGrafPtr port, GDHandle gd), (ci, port, gd))
LAMPBLACK_WATCH(ComponentResult, GraphicsImportSetBoundsRect,
                (GraphicsImportComponent ci, const Rect* bounds), (ci, bounds))
LAMPBLACK_WATCH(ComponentResult, GraphicsImportDraw, (GraphicsImportComponent ci), (ci))
LAMPBLACK_WATCH(ComponentResult, GraphicsImportGetAsPicture, (GraphicsImportComponent ci, PicHandle* picture),
                (ci, picture))
LAMPBLACK_WATCH(ComponentResult, GraphicsExportSetInputPicture,
                (GraphicsExportComponent ci, PicHandle picture), (ci, picture))
LAMPBLACK_WATCH(ComponentResult, GraphicsExportSetOutputHandle, (GraphicsExportComponent ci, Handle h),
                (ci, h))
LAMPBLACK_WATCH(ComponentResult, GraphicsExportDoExport, (GraphicsExportComponent ci, UInt32* size),
                (ci, size))
LAMPBLACK_WATCH(OSErr, CloseComponent, (ComponentInstance ci), (ci))
LAMPBLACK_WATCH(ComponentResult, GraphicsExportSetCompressionQuality,
                (GraphicsExportComponent ci, CodecQ quality), (ci, quality))

namespace {

struct WorldRequest {
    int count = 0;
    short depth = 0;
    GWorldFlags flags = 0;
    Rect bounds = { 0, 0, 0, 0 };
    CTabHandle table = nullptr;
    GDHandle device = nullptr;
} gRequest;
OSErr gWorldError = noErr;    // reported beside the world that was made
OSErr gImporterError = noErr; // reported beside the importer that was found
GWorldPtr gMade = nullptr;
bool gMakesNoWorld = false; // and reports no error
OpenCPicParams gPictureParameters;
struct CopyBitsCall {
    const BitMap *from, *to;
    Rect fromRect, toRect;
    short mode;
    RgnHandle mask;
} gCopy;
OSType gComponentType = 0, gComponentSubType = 0;
Handle gImportedData = nullptr;
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

// A world of 32 bits keeps eight bits of a colour's sixteen.
bool IsShown(const RGBColor& inPixel, const RGBColor& inColor)
{
    return inPixel.red >> 8 == inColor.red >> 8 && inPixel.green >> 8 == inColor.green >> 8 &&
           inPixel.blue >> 8 == inColor.blue >> 8;
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

FSSpec SpecOfBackdrop() // 640 by 480 pixels
{
    FSRef reference;
    FSSpec spec;
    const std::string path = LAMPBLACK_SOURCE_DIR "/examples/gallery/backdrop.jpg";
    REQUIRE(FSPathMakeRef(reinterpret_cast<const UInt8*>(path.c_str()), &reference, nullptr) == noErr);
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
    gRequest = { gRequest.count + 1, depth, flags, *bounds, table, device };
    if (gMakesNoWorld)
        return noErr;
    const QDErr error = Next<decltype(NewGWorld)>("NewGWorld")(world, depth, bounds, table, device,
                                                               flags & ~(GWorldFlags)useTempMem);
    gMade = *world;
    return error ? error : gWorldError;
}

LAMPBLACK_INTERPOSE OSErr GetGraphicsImporterForFile(const FSSpec* file, ComponentInstance* importer)
{
    const CallLog::StCall call("GetGraphicsImporterForFile");
    const OSErr error =
        Next<decltype(GetGraphicsImporterForFile)>("GetGraphicsImporterForFile")(file, importer);
    return error ? error : gImporterError;
}

LAMPBLACK_INTERPOSE PicHandle OpenCPicture(const OpenCPicParams* parameters)
{
    const CallLog::StCall call("OpenCPicture");
    gPictureParameters = *parameters;
    if (CallLog::gFailures.contains("OpenCPicture"))
        return nullptr;
    return Next<decltype(OpenCPicture)>("OpenCPicture")(parameters);
}

LAMPBLACK_INTERPOSE void CopyBits(const BitMap* from, const BitMap* to, const Rect* fromRect,
                                  const Rect* toRect, short mode, RgnHandle mask)
{
    const CallLog::StCall call("CopyBits");
    gCopy = { from, to, *fromRect, *toRect, mode, mask };
    Next<decltype(CopyBits)>("CopyBits")(from, to, fromRect, toRect, mode, mask);
}

LAMPBLACK_INTERPOSE OSErr OpenADefaultComponent(OSType type, OSType subType, ComponentInstance* ci)
{
    const CallLog::StCall call("OpenADefaultComponent");
    gComponentType = type;
    gComponentSubType = subType;
    if (CallLog::gFailures.contains("OpenADefaultComponent"))
        return CallLog::gFailures["OpenADefaultComponent"];
    return Next<decltype(OpenADefaultComponent)>("OpenADefaultComponent")(type, subType, ci);
}

LAMPBLACK_INTERPOSE ComponentResult GraphicsImportSetDataHandle(GraphicsImportComponent ci, Handle data)
{
    const CallLog::StCall call("GraphicsImportSetDataHandle");
    gImportedData = data;
    if (CallLog::gFailures.contains("GraphicsImportSetDataHandle"))
        return CallLog::gFailures["GraphicsImportSetDataHandle"];
    return Next<decltype(GraphicsImportSetDataHandle)>("GraphicsImportSetDataHandle")(ci, data);
}

LAMPBLACK_INTERPOSE ComponentResult GraphicsImportSetQuality(GraphicsImportComponent ci, CodecQ quality)
{
    const CallLog::StCall call("GraphicsImportSetQuality");
    gQuality = quality;
    if (CallLog::gFailures.contains("GraphicsImportSetQuality"))
        return CallLog::gFailures["GraphicsImportSetQuality"];
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

TEST_CASE("NewGWorldEnhanced: depth, bounds, table and device are NewGWorld's own")
{
    const CTabHandle table = GetCTable(34); // four levels of grey
    REQUIRE(table);
    const Rect bounds = { 5, 7, 15, 37 };
    GWorldPtr made = nullptr;
    CHECK(NewGWorldEnhanced(&made, 2, &bounds, table, nullptr, 0) == noErr);
    const World world(made);
    CHECK(gRequest.depth == 2);
    CHECK(gRequest.table == table);
    CHECK(EqualRect(&gRequest.bounds, &bounds));
    GWorldPtr other = nullptr;
    CHECK(NewGWorldEnhanced(&other, 0, &bounds, nullptr, GetMainDevice(), noNewDevice) == noErr);
    const World second(other);
    CHECK(gRequest.depth == 0);
    CHECK(gRequest.device == GetMainDevice());
    CHECK(gRequest.flags == (GWorldFlags)noNewDevice);
    DisposeCTable(table);
}

TEST_CASE("NewGWorldEnhanced: no world and no error is paramErr")
{
    gMakesNoWorld = true;
    GWorldPtr world = reinterpret_cast<GWorldPtr>(1);
    CHECK(NewGWorldEnhanced(&world, 32, &kBounds, nullptr, nullptr, 0) == paramErr);
    gMakesNoWorld = false;
    CHECK(world == nullptr);
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
    CHECK(!IsValidPort(gMade));
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
    {
        const CallLog log;
        SetGWorldWindow(window);
        CHECK(log.Calls() == "SetPortWindowPort SetGWorld");
    }
    CGrafPtr port = nullptr;
    GDHandle device = nullptr;
    GetGWorld(&port, &device);
    CHECK(port == GetWindowPort(window));
    CHECK(device == GetMainDevice());
    ReleaseWindow(window);
}

TEST_CASE("GWorldToPicture: plays back the same pixels, and the caller's world stays current")
{
    for (const short depth : { 1, 2, 4, 8, 16, 32 }) {
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
                same = same && IsShown(pixels[(size_t)(v * 40 + h)], world.At(h, v));
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

TEST_CASE("GWorldToPicture: records a copy onto itself at 72 dots per inch, of the port's bounds")
{
    const Rect bounds = { 5, 7, 15, 37 };
    GWorldPtr made = nullptr;
    REQUIRE(NewGWorld(&made, 32, &bounds, nullptr, nullptr, 0) == noErr);
    const World world(made);
    const PicHandle picture = GWorldToPicture(world, srcOr);
    CHECK(EqualRect(&gPictureParameters.srcRect, &bounds));
    CHECK(gPictureParameters.hRes == 0x00480000);
    CHECK(gPictureParameters.vRes == 0x00480000);
    CHECK(gPictureParameters.version == -2);
    CHECK(gPictureParameters.reserved1 == 0);
    CHECK(gPictureParameters.reserved2 == 0);
    CHECK(gCopy.from == GetPortBitMapForCopyBits(world));
    CHECK(gCopy.to == gCopy.from);
    CHECK(EqualRect(&gCopy.fromRect, &bounds));
    CHECK(EqualRect(&gCopy.toRect, &bounds));
    CHECK(gCopy.mode == srcOr);
    CHECK(gCopy.mask == nullptr);
    KillPicture(picture);
}

TEST_CASE("GWorldToPicture: the mode is the picture's, and the world's pixels stay as they are")
{
    const World world;
    const PicHandle picture = GWorldToPicture(world, notSrcCopy);
    CHECK(EqualRGB(world.At(8, 15), kRed));
    CHECK(EqualRGB(world.At(32, 15), kBlue));
    const std::vector<RGBColor> pixels = PixelsOf(picture);
    CHECK(EqualRGB(pixels[15 * 40 + 8], { 0, 0xFFFF, 0xFFFF }));
    CHECK(EqualRGB(pixels[15 * 40 + 32], { 0xFFFF, 0xFFFF, 0 }));
    KillPicture(picture);
}

TEST_CASE("GWorldToPicture: a picture that does not open is none; the world is as before")
{
    const World world, current;
    SetGWorld(current, nullptr);
    {
        const StFailure failure("OpenCPicture", memFullErr);
        CHECK(GWorldToPicture(world, srcCopy) == nullptr);
    }
    CHECK((GetPixelsState(GetGWorldPixMap(world)) & pixelsLocked) == 0);
    CGrafPtr port = nullptr;
    GetPort(&port);
    CHECK(port == current);
    SetGWorld(nullptr, nullptr);
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
    {
        const CallLog log;
        REQUIRE(ConvertJPEGToPicture(jpeg, &picture) == noErr);
        CHECK(log.Calls() == "OpenADefaultComponent GraphicsImportSetDataHandle GraphicsImportSetQuality "
                             "GraphicsImportGetAsPicture CloseComponent");
    }
    CHECK(gComponentType == 'grip');
    CHECK(gComponentSubType == 'JPEG');
    CHECK(gImportedData == jpeg);
    CHECK(gQuality == 1023);
    CHECK(IsHandleValid(jpeg));
    const std::vector<RGBColor> pixels = PixelsOf(picture);
    CHECK(IsNear(pixels[15 * 40 + 8], kRed));
    CHECK(IsNear(pixels[15 * 40 + 32], kBlue));
    KillPicture(picture);
    DisposeHandle(jpeg);
}

TEST_CASE("ConvertPictureToJPEG: asks the exporter of JPEG, in its own quality, and closes it")
{
    const World world;
    const PicHandle picture = GWorldToPicture(world, srcCopy);
    const CallLog log;
    Handle jpeg = nullptr;
    CHECK(ConvertPictureToJPEG(picture, &jpeg) == noErr);
    CHECK(log.Calls() == "OpenADefaultComponent GraphicsExportSetInputPicture GraphicsExportSetOutputHandle "
                         "GraphicsExportDoExport CloseComponent");
    CHECK(gComponentType == 'grex');
    CHECK(gComponentSubType == 'JPEG');
    CHECK(IsHandleValid(reinterpret_cast<Handle>(picture)));
    DisposeHandle(jpeg);
    KillPicture(picture);
}

TEST_CASE("ConvertJPEGToPicture: the step that fails is the last, and the importer is closed")
{
    struct Step {
        const char *name, *calls;
    };
    const Handle jpeg = JpegOfTestWorld();
    for (const Step& step :
         { Step{ "GraphicsImportSetDataHandle",
                 "OpenADefaultComponent GraphicsImportSetDataHandle CloseComponent" },
           Step{ "GraphicsImportSetQuality",
                 "OpenADefaultComponent GraphicsImportSetDataHandle GraphicsImportSetQuality "
                 "CloseComponent" },
           Step{ "GraphicsImportGetAsPicture",
                 "OpenADefaultComponent GraphicsImportSetDataHandle GraphicsImportSetQuality "
                 "GraphicsImportGetAsPicture CloseComponent" } }) {
        const StFailure failure(step.name, -8961);
        const CallLog log;
        PicHandle picture = reinterpret_cast<PicHandle>(1);
        CHECK(ConvertJPEGToPicture(jpeg, &picture) == -8961);
        CHECK(picture == nullptr);
        CHECK(log.Calls() == step.calls);
    }
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
        CHECK(log.Calls() == "GetGraphicsImporterForFile GraphicsImportGetNaturalBounds LockPixels "
                             "GraphicsImportSetQuality GraphicsImportSetGWorld GraphicsImportSetBoundsRect "
                             "GraphicsImportDraw UnlockPixels "
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
        CHECK(log.Calls().ends_with("CloseComponent SetGWorld"));
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

TEST_CASE("NewGWorldFromFile: what drawing the image answers does not count")
{
    const FSSpec spec = SpecOfBackdrop();
    for (const char* step : { "GraphicsImportSetQuality", "GraphicsImportSetGWorld",
                              "GraphicsImportSetBoundsRect", "GraphicsImportDraw" }) {
        CAPTURE(std::string(step));
        const StFailure failure(step, -8961);
        GWorldPtr made = nullptr;
        CHECK(NewGWorldFromFile(&spec, &made, 32) == noErr);
        const World world(made);
        CHECK(GetPortWidth(world) == 640);
        CHECK((GetPixelsState(GetGWorldPixMap(world)) & pixelsLocked) == 0);
    }
}

TEST_CASE("NewPictureFromFile: the first error is the answer, beside an importer too, which is closed")
{
    const FSSpec spec = SpecOfBackdrop();
    PicHandle picture = reinterpret_cast<PicHandle>(1);
    {
        gImporterError = -2048;
        const CallLog log;
        CHECK(NewPictureFromFile(&spec, &picture) == -2048);
        CHECK(picture == nullptr);
        CHECK(log.Calls() == "GetGraphicsImporterForFile CloseComponent");
        gImporterError = noErr;
    }
    const StFailure failure("GraphicsImportSetQuality", -8961);
    CHECK(NewPictureFromFile(&spec, &picture) == -8961);
    CHECK(picture == nullptr);
}
