// The calls of graphics exporters.
#include "Instances.h"

using namespace lampblack;
using namespace lampblack::images;

namespace {

// All calls: find the exporter, then act.
#define LAMPBLACK_EXPORTER(name, instance)                                                                   \
    ComponentResult error = noErr;                                                                           \
    Exporter* const name = FindExporter(instance, &error);                                                   \
    if (!name)                                                                                               \
    return error

// A getter of one kind of input or output.
template <class Value>
ComponentResult Give(bool inIsOfThatKind, const Value& inValue, Value* outValue)
{
    if (!outValue)
        return paramErr;
    if (!inIsOfThatKind)
        return dataNoDataRef;
    *outValue = inValue;
    return noErr;
}

ComponentResult GiveKind(const FileKind& inKind, OSType* outType, OSType* outCreator)
{
    if (outType)
        *outType = inKind.type;
    if (outCreator)
        *outCreator = inKind.creator;
    return noErr;
}

} // namespace

ComponentResult GraphicsExportSetInputPicture(GraphicsExportComponent ci, PicHandle picture)
{
    LAMPBLACK_EXPORTER(exporter, ci);
    if (!picture)
        return paramErr;
    exporter->fInput = Exporter::Input::Picture;
    exporter->fPicture = picture;
    return noErr;
}

ComponentResult GraphicsExportGetInputPicture(GraphicsExportComponent ci, PicHandle* picture)
{
    LAMPBLACK_EXPORTER(exporter, ci);
    return Give(exporter->fInput == Exporter::Input::Picture, exporter->fPicture, picture);
}

ComponentResult GraphicsExportSetInputGWorld(GraphicsExportComponent ci, GWorldPtr gworld)
{
    LAMPBLACK_EXPORTER(exporter, ci);
    if (!IsValidPort(gworld))
        return paramErr;
    exporter->fInput = Exporter::Input::World;
    exporter->fWorld = gworld;
    return noErr;
}

ComponentResult GraphicsExportGetInputGWorld(GraphicsExportComponent ci, GWorldPtr* gworld)
{
    LAMPBLACK_EXPORTER(exporter, ci);
    return Give(exporter->fInput == Exporter::Input::World, exporter->fWorld, gworld);
}

ComponentResult GraphicsExportSetInputPixmap(GraphicsExportComponent ci, PixMapHandle pixmap)
{
    LAMPBLACK_EXPORTER(exporter, ci);
    if (!GetPixBaseAddr(pixmap))
        return paramErr;
    exporter->fInput = Exporter::Input::Map;
    exporter->fMap = pixmap;
    return noErr;
}

ComponentResult GraphicsExportGetInputPixmap(GraphicsExportComponent ci, PixMapHandle* pixmap)
{
    LAMPBLACK_EXPORTER(exporter, ci);
    return Give(exporter->fInput == Exporter::Input::Map, exporter->fMap, pixmap);
}

ComponentResult GraphicsExportSetOutputHandle(GraphicsExportComponent ci, Handle h)
{
    LAMPBLACK_EXPORTER(exporter, ci);
    error = CheckOutputHandle(h);
    if (error)
        return error;
    exporter->fOutput = Exporter::Output::Handle;
    exporter->fHandle = h;
    return noErr;
}

ComponentResult GraphicsExportGetOutputHandle(GraphicsExportComponent ci, Handle* h)
{
    LAMPBLACK_EXPORTER(exporter, ci);
    return Give(exporter->fOutput == Exporter::Output::Handle, exporter->fHandle, h);
}

ComponentResult GraphicsExportSetOutputFile(GraphicsExportComponent ci, const FSSpec* theFile)
{
    LAMPBLACK_EXPORTER(exporter, ci);
    if (!theFile)
        return paramErr;
    exporter->fOutput = Exporter::Output::File;
    exporter->fFile = *theFile;
    return noErr;
}

ComponentResult GraphicsExportGetOutputFile(GraphicsExportComponent ci, FSSpec* theFile)
{
    LAMPBLACK_EXPORTER(exporter, ci);
    return Give(exporter->fOutput == Exporter::Output::File, exporter->fFile, theFile);
}

ComponentResult GraphicsExportSetOutputFileTypeAndCreator(GraphicsExportComponent ci, OSType fileType,
                                                          OSType fileCreator)
{
    LAMPBLACK_EXPORTER(exporter, ci);
    exporter->fKind = { fileType, fileCreator };
    return noErr;
}

ComponentResult GraphicsExportGetOutputFileTypeAndCreator(GraphicsExportComponent ci, OSType* fileType,
                                                          OSType* fileCreator)
{
    LAMPBLACK_EXPORTER(exporter, ci);
    return GiveKind(exporter->fKind.value_or(exporter->DefaultKind()), fileType, fileCreator);
}

ComponentResult GraphicsExportGetDefaultFileTypeAndCreator(GraphicsExportComponent ci, OSType* fileType,
                                                           OSType* fileCreator)
{
    LAMPBLACK_EXPORTER(exporter, ci);
    return GiveKind(exporter->DefaultKind(), fileType, fileCreator);
}

ComponentResult GraphicsExportSetCompressionQuality(GraphicsExportComponent ci, CodecQ spatialQuality)
{
    LAMPBLACK_EXPORTER(exporter, ci);
    if (exporter->SubType() != kQTFileTypeJPEG)
        return badComponentSelector;
    if (spatialQuality > codecLosslessQuality)
        return paramErr;
    exporter->fQuality = spatialQuality;
    return noErr;
}

ComponentResult GraphicsExportGetCompressionQuality(GraphicsExportComponent ci, CodecQ* spatialQuality)
{
    LAMPBLACK_EXPORTER(exporter, ci);
    if (exporter->SubType() != kQTFileTypeJPEG)
        return badComponentSelector;
    return Give(true, exporter->fQuality, spatialQuality);
}

ComponentResult GraphicsExportDoExport(GraphicsExportComponent ci, UInt32* actualSizeWritten)
{
    LAMPBLACK_EXPORTER(exporter, ci);
    size_t size = 0;
    error = exporter->Export(&size);
    if (actualSizeWritten)
        *actualSizeWritten = (UInt32)size;
    return error;
}
