// Worlds with a memory fallback, images into worlds and pictures, and questions
// to ports.
#include "graphics/OffscreenWorlds.h"

#include "graphics/StateSavers.h"
#include "util/SystemChecks.h"

namespace {

constexpr Size kWorldOverhead = 32000; // bytes, beside the pixels
constexpr CodecQ kDrawingQuality = 1023;
constexpr Fixed k72DotsPerInch = 0x00480000;
constexpr short kExtendedPicture = -2;

int WidthOf(const Rect& inRect)
{
    return inRect.right - inRect.left;
}

int HeightOf(const Rect& inRect)
{
    return inRect.bottom - inRect.top;
}

Size EstimatedBytes(const Rect& inBounds, SInt16 inDepth)
{
    const Size depth = inDepth == 0 ? 32 : inDepth;
    return (Size)WidthOf(inBounds) * HeightOf(inBounds) * depth / 8 + kWorldOverhead;
}

GWorldFlags FlagsForMemory(const Rect& inBounds, SInt16 inDepth, GWorldFlags inFlags)
{
    if (HasAqua())
        inFlags &= ~(GWorldFlags)useTempMem;
    if (!(inFlags & useTempMem) && !HasEnoughMemory(EstimatedBytes(inBounds, inDepth)))
        inFlags |= useTempMem;
    return inFlags;
}

// A component that is closed on every path.
class StComponent {
public:
    explicit StComponent(ComponentInstance inComponent) : fComponent(inComponent) {}
    ~StComponent() { CloseComponent(fComponent); }
    StComponent(const StComponent&) = delete;
    StComponent& operator=(const StComponent&) = delete;

private:
    ComponentInstance fComponent;
};

// What the importer draws, whatever it answers, is what the world shows.
void DrawInto(GWorldPtr ioWorld, GraphicsImportComponent inImporter, const Rect& inBounds)
{
    const PixMapHandle pixels = GetGWorldPixMap(ioWorld);
    LockPixels(pixels);
    GraphicsImportSetQuality(inImporter, kDrawingQuality);
    GraphicsImportSetGWorld(inImporter, ioWorld, nullptr);
    GraphicsImportSetBoundsRect(inImporter, &inBounds);
    GraphicsImportDraw(inImporter);
    UnlockPixels(pixels);
}

OSErr PictureOf(GraphicsImportComponent inImporter, PicHandle* outPicture)
{
    const ComponentResult error = GraphicsImportSetQuality(inImporter, kDrawingQuality);
    return (OSErr)(error ? error : GraphicsImportGetAsPicture(inImporter, outPicture));
}

OSErr ExportTo(GraphicsExportComponent inExporter, Handle outData)
{
    const ComponentResult error = GraphicsExportSetOutputHandle(inExporter, outData);
    return (OSErr)(error ? error : GraphicsExportDoExport(inExporter, nullptr));
}

} // namespace

OSErr NewGWorldEnhanced(GWorldPtr* outWorld, SInt16 inDepth, const Rect* inBounds, CTabHandle inTable,
                        GDHandle inDevice, GWorldFlags inFlags)
{
    if (!outWorld)
        return paramErr;
    *outWorld = nullptr;
    if (!inBounds || WidthOf(*inBounds) < 1 || HeightOf(*inBounds) < 1)
        return paramErr;
    const OSErr error = NewGWorld(outWorld, inDepth, inBounds, inTable, inDevice,
                                  FlagsForMemory(*inBounds, inDepth, inFlags));
    if (!*outWorld)
        return error ? error : (OSErr)paramErr;
    if (error) {
        DisposeGWorld(*outWorld);
        *outWorld = nullptr;
    }
    return error;
}

OSErr NewGWorldFromFile(const FSSpec* inFile, GWorldPtr* outWorld, SInt16 inDepth)
{
    if (!inFile || !outWorld)
        return paramErr;
    *outWorld = nullptr;
    const StGWorldSaver saver;
    GraphicsImportComponent importer = nullptr;
    OSErr error = GetGraphicsImporterForFile(inFile, &importer);
    if (error)
        return error;
    const StComponent component(importer);
    Rect bounds;
    error = (OSErr)GraphicsImportGetNaturalBounds(importer, &bounds);
    if (!error)
        error = NewGWorldEnhanced(outWorld, inDepth, &bounds, nullptr, nullptr, useTempMem);
    if (!error)
        DrawInto(*outWorld, importer, bounds);
    return error;
}

OSErr NewPictureFromFile(const FSSpec* inFile, PicHandle* outPicture)
{
    if (!inFile || !outPicture)
        return paramErr;
    *outPicture = nullptr;
    GraphicsImportComponent importer = nullptr;
    const OSErr error = GetGraphicsImporterForFile(inFile, &importer);
    if (!importer)
        return error;
    const StComponent component(importer);
    return error ? error : PictureOf(importer, outPicture);
}

PicHandle GWorldToPicture(GWorldPtr inWorld, SInt16 inMode)
{
    const StGWorldSaver saver;
    SetGWorld(inWorld, nullptr);
    const PixMapHandle pixels = GetGWorldPixMap(inWorld);
    const bool wasLocked = (GetPixelsState(pixels) & pixelsLocked) != 0;
    LockPixels(pixels);
    Rect bounds;
    GetPortBounds(inWorld, &bounds);
    const OpenCPicParams parameters = { bounds, k72DotsPerInch, k72DotsPerInch, kExtendedPicture, 0, 0 };
    const PicHandle picture = OpenCPicture(&parameters);
    if (picture) {
        const BitMap* bits = GetPortBitMapForCopyBits(inWorld);
        CopyBits(bits, bits, &bounds, &bounds, inMode, nullptr);
        ClosePicture();
    }
    if (!wasLocked)
        UnlockPixels(pixels);
    return picture;
}

OSErr ConvertJPEGToPicture(Handle inJPEG, PicHandle* outPicture)
{
    if (!outPicture)
        return paramErr;
    *outPicture = nullptr;
    GraphicsImportComponent importer = nullptr;
    OSErr error = OpenADefaultComponent(GraphicsImporterComponentType, kQTFileTypeJPEG, &importer);
    if (error)
        return error;
    const StComponent component(importer);
    error = (OSErr)GraphicsImportSetDataHandle(importer, inJPEG);
    return error ? error : PictureOf(importer, outPicture);
}

OSErr ConvertPictureToJPEG(PicHandle inPicture, Handle* outJPEG)
{
    if (!outJPEG)
        return paramErr;
    *outJPEG = nullptr;
    GraphicsExportComponent exporter = nullptr;
    OSErr error = OpenADefaultComponent(GraphicsExporterComponentType, kQTFileTypeJPEG, &exporter);
    if (error)
        return error;
    const StComponent component(exporter);
    error = (OSErr)GraphicsExportSetInputPicture(exporter, inPicture);
    if (error)
        return error;
    const Handle data = NewHandle(0);
    if (!data)
        return MemError();
    error = ExportTo(exporter, data);
    if (error)
        DisposeHandle(data);
    else
        *outJPEG = data;
    return error;
}

SInt16 GetGWorldBitDepth(GWorldPtr inWorld)
{
    const PixMapHandle pixels = inWorld ? GetGWorldPixMap(inWorld) : nullptr;
    return pixels ? (**pixels).pixelSize : (SInt16)0;
}

Rect* GetGWorldPortBounds(GWorldPtr inWorld, Rect* outBounds)
{
    return GetPortBounds(inWorld, outBounds);
}

SInt16 GetPortWidth(CGrafPtr inPort)
{
    Rect bounds;
    return (SInt16)WidthOf(*GetPortBounds(inPort, &bounds));
}

SInt16 GetPortHeight(CGrafPtr inPort)
{
    Rect bounds;
    return (SInt16)HeightOf(*GetPortBounds(inPort, &bounds));
}

Rect GetQDGlobalScreenBitsBounds()
{
    BitMap screen;
    return GetQDGlobalsScreenBits(&screen)->bounds;
}

void SetGWorldWindow(WindowRef inWindow)
{
    SetPortWindowPort(inWindow);
    SetGWorld(GetWindowPort(inWindow), nullptr);
}
