// The calls of graphics importers.
#include "ImageFile.h"
#include "ImagePicture.h"
#include "Instances.h"
#include "PortState.h"

#include <Carbon/MacMemory.h>

#include <quickdraw/PortRecord.h>

#include <cctype>
#include <cstring>

using namespace lampblack;
using namespace lampblack::images;

namespace lampblack::images {

namespace {

// Most calls: find the importer, then act.
#define LAMPBLACK_IMPORTER(name, instance)                                                                   \
    ComponentResult error = noErr;                                                                           \
    Importer* const name = FindImporter(instance, &error);                                                   \
    if (!name)                                                                                               \
    return error

ImageDescription Describe(OSType inSubType, const ImageFacts& inFacts, size_t inSize)
{
    ImageDescription description = {};
    description.idSize = sizeof description;
    const Codec& codec = CodecOf(inSubType);
    description.cType = codec.type;
    description.name[0] = (unsigned char)codec.name.size();
    std::memcpy(description.name + 1, codec.name.data(), codec.name.size());
    description.version = 1;
    description.spatialQuality = codecNormalQuality;
    description.width = (SInt16)inFacts.width;
    description.height = (SInt16)inFacts.height;
    description.hRes = inFacts.hRes;
    description.vRes = inFacts.vRes;
    description.dataSize = (SInt32)inSize;
    description.frameCount = 1;
    description.depth = inFacts.depth;
    description.clutID = -1;
    return description;
}

// Targa files say what they are by their name or type, or in their last bytes, which few have.
bool IsNamedTarga(const FSSpec& inFile)
{
    FInfo info = {};
    if (FSpGetFInfo(&inFile, &info) == noErr && info.fdType == kQTFileTypeTargaImage)
        return true;
    const int length = inFile.name[0];
    if (length < 4 || inFile.name[length - 3] != '.')
        return false;
    const auto isLetter = [&](int place, char letter) { return std::tolower(inFile.name[place]) == letter; };
    return isLetter(length - 2, 't') && isLetter(length - 1, 'g') && isLetter(length, 'a');
}

OSErr OpenFor(OSType inSubType, ComponentInstance* outInstance, Importer** outImporter)
{
    if (inSubType == 0)
        return cantFindHandler;
    *outInstance = OpenInstance(GraphicsImporterComponentType, inSubType);
    if (!*outInstance)
        return memFullErr;
    ComponentResult error = noErr;
    *outImporter = FindImporter(*outInstance, &error);
    return noErr;
}

OSErr KeepOrClose(OSStatus inError, ComponentInstance* ioInstance)
{
    if (inError && *ioInstance) {
        CloseComponent(*ioInstance);
        *ioInstance = nullptr;
    }
    return (OSErr)inError;
}

OSErr ImporterForFile(const FSSpec& inFile, ComponentInstance* outInstance)
{
    std::vector<uint8_t> start;
    if (const OSStatus error = ReadFile(inFile, kIdentifyingBytes, &start))
        return (OSErr)error;
    OSType subType = IdentifyImage(start);
    if (subType == 0 && MayBeTarga(start) && IsNamedTarga(inFile))
        subType = kQTFileTypeTargaImage;
    Importer* importer = nullptr;
    const OSErr error = OpenFor(subType, outInstance, &importer);
    return error ? error : KeepOrClose(importer->SetFile(inFile), outInstance);
}

OSErr ImporterForHandle(Handle inHandle, ComponentInstance* outInstance)
{
    const Bytes bytes(reinterpret_cast<const uint8_t*>(*inHandle), (size_t)GetHandleSize(inHandle));
    Importer* importer = nullptr;
    const OSErr error = OpenFor(IdentifyImage(bytes), outInstance, &importer);
    return error ? error : KeepOrClose(importer->SetHandle(inHandle), outInstance);
}

bool IsMode(SInt32 inMode)
{
    const SInt32 plain = inMode & ~ditherCopy;
    return (plain >= srcCopy && plain <= notSrcBic) || (plain >= blend && plain <= adMin) ||
           inMode == graphicsModeStraightAlpha;
}

} // namespace

} // namespace lampblack::images

OSErr GetGraphicsImporterForFile(const FSSpec* theFile, ComponentInstance* gi)
{
    if (gi)
        *gi = nullptr;
    return theFile && gi ? ImporterForFile(*theFile, gi) : (OSErr)paramErr;
}

OSErr GetGraphicsImporterForDataRef(Handle dataRef, OSType dataRefType, ComponentInstance* gi)
{
    if (gi)
        *gi = nullptr;
    if (!gi)
        return paramErr;
    ReferredData data;
    if (const OSStatus error = ResolveDataReference(dataRef, dataRefType, &data))
        return (OSErr)error;
    return data.isFile ? ImporterForFile(data.file, gi) : ImporterForHandle(data.handle, gi);
}

ComponentResult GraphicsImportSetDataFile(GraphicsImportComponent ci, const FSSpec* theFile)
{
    LAMPBLACK_IMPORTER(importer, ci);
    return theFile ? importer->SetFile(*theFile) : (ComponentResult)paramErr;
}

ComponentResult GraphicsImportSetDataHandle(GraphicsImportComponent ci, Handle h)
{
    LAMPBLACK_IMPORTER(importer, ci);
    return importer->SetHandle(h);
}

ComponentResult GraphicsImportSetDataReference(GraphicsImportComponent ci, Handle dataRef, OSType dataReType)
{
    LAMPBLACK_IMPORTER(importer, ci);
    ReferredData data;
    error = ResolveDataReference(dataRef, dataReType, &data);
    if (error)
        return error;
    return data.isFile ? importer->SetFile(data.file) : importer->SetHandle(data.handle);
}

ComponentResult GraphicsImportGetDataFile(GraphicsImportComponent ci, FSSpec* theFile)
{
    LAMPBLACK_IMPORTER(importer, ci);
    if (!theFile)
        return paramErr;
    const FSSpec* file = importer->Source().File();
    if (file)
        *theFile = *file;
    return file ? noErr : dataNoDataRef;
}

ComponentResult GraphicsImportGetDataHandle(GraphicsImportComponent ci, Handle* h)
{
    LAMPBLACK_IMPORTER(importer, ci);
    if (!h)
        return paramErr;
    *h = importer->Source().DataHandle();
    return *h ? noErr : dataNoDataRef;
}

ComponentResult GraphicsImportValidate(GraphicsImportComponent ci, Boolean* valid)
{
    LAMPBLACK_IMPORTER(importer, ci);
    if (!valid)
        return paramErr;
    ImageFacts facts;
    error = importer->GetFacts(&facts);
    *valid = error == noErr;
    return error == codecBadDataErr ? (ComponentResult)noErr : error;
}

ComponentResult GraphicsImportGetNaturalBounds(GraphicsImportComponent ci, Rect* naturalBounds)
{
    LAMPBLACK_IMPORTER(importer, ci);
    if (!naturalBounds)
        return paramErr;
    ImageFacts facts;
    error = importer->GetFacts(&facts);
    *naturalBounds = { 0, 0, (short)facts.height, (short)facts.width };
    return error;
}

ComponentResult GraphicsImportGetImageDescription(GraphicsImportComponent ci, ImageDescriptionHandle* desc)
{
    LAMPBLACK_IMPORTER(importer, ci);
    if (!desc)
        return paramErr;
    *desc = nullptr;
    ImageFacts facts;
    Bytes bytes;
    error = importer->GetFacts(&facts);
    if (!error)
        error = importer->GetImageBytes(&bytes);
    if (error)
        return error;
    const ImageDescription description = Describe(importer->SubType(), facts, bytes.size());
    return PtrToHand(&description, reinterpret_cast<Handle*>(desc), sizeof description);
}

ComponentResult GraphicsImportGetDataOffsetAndSize(GraphicsImportComponent ci, UInt32* offset, UInt32* size)
{
    LAMPBLACK_IMPORTER(importer, ci);
    if (!offset || !size)
        return paramErr;
    Bytes all, image;
    error = importer->GetBytes(&all);
    if (!error)
        error = importer->GetImageBytes(&image);
    *offset = error ? 0 : (UInt32)(image.data() - all.data());
    *size = (UInt32)image.size();
    return error;
}

ComponentResult GraphicsImportReadData(GraphicsImportComponent ci, void* dataPtr, UInt32 dataOffset,
                                       UInt32 dataSize)
{
    LAMPBLACK_IMPORTER(importer, ci);
    if (!dataPtr)
        return paramErr;
    Bytes bytes;
    error = importer->GetBytes(&bytes);
    if (error)
        return error;
    if (!foundation::Fits(dataOffset, dataSize, bytes.size()))
        return eofErr;
    std::memcpy(dataPtr, bytes.data() + dataOffset, dataSize);
    return noErr;
}

ComponentResult GraphicsImportGetImageCount(GraphicsImportComponent ci, UInt32* imageCount)
{
    LAMPBLACK_IMPORTER(importer, ci);
    if (!imageCount)
        return paramErr;
    ImageFacts facts;
    error = importer->GetFacts(&facts);
    *imageCount = error ? 0 : 1;
    return error;
}

ComponentResult GraphicsImportDoesDrawAllPixels(GraphicsImportComponent ci, short* drawsAllPixels)
{
    LAMPBLACK_IMPORTER(importer, ci);
    if (!drawsAllPixels)
        return paramErr;
    ImageFacts facts;
    error = importer->GetFacts(&facts);
    *drawsAllPixels = error || importer->IsPicture() ? graphicsImporterDontKnowIfDrawAllPixels
                      : facts.hasAlpha               ? graphicsImporterDoesntDrawAllPixels
                                                     : graphicsImporterDrawsAllPixels;
    return error;
}

ComponentResult GraphicsImportSetBoundsRect(GraphicsImportComponent ci, const Rect* bounds)
{
    LAMPBLACK_IMPORTER(importer, ci);
    if (!bounds || quickdraw::IsEmpty(*bounds))
        return paramErr;
    importer->fBounds = *bounds;
    return noErr;
}

ComponentResult GraphicsImportGetBoundsRect(GraphicsImportComponent ci, Rect* bounds)
{
    LAMPBLACK_IMPORTER(importer, ci);
    if (!bounds)
        return paramErr;
    Placement place = {};
    error = importer->GetPlacement(&place);
    *bounds = place.bounds;
    return error;
}

ComponentResult GraphicsImportSetSourceRect(GraphicsImportComponent ci, const Rect* sourceRect)
{
    LAMPBLACK_IMPORTER(importer, ci);
    importer->fPart.reset();
    ImageFacts facts;
    error = sourceRect ? importer->GetFacts(&facts) : (OSStatus)noErr;
    if (!sourceRect || error)
        return error;
    if (quickdraw::IsEmpty(*sourceRect) || sourceRect->left < 0 || sourceRect->top < 0 ||
        sourceRect->right > facts.width || sourceRect->bottom > facts.height)
        return invalidRect;
    importer->fPart = *sourceRect;
    return noErr;
}

ComponentResult GraphicsImportGetSourceRect(GraphicsImportComponent ci, Rect* sourceRect)
{
    LAMPBLACK_IMPORTER(importer, ci);
    if (!sourceRect)
        return paramErr;
    Placement place = {};
    error = importer->GetPlacement(&place);
    *sourceRect = place.part;
    return error;
}

ComponentResult GraphicsImportSetClip(GraphicsImportComponent ci, RgnHandle clipRgn)
{
    LAMPBLACK_IMPORTER(importer, ci);
    const quickdraw::Region* region = quickdraw::FindRegion(clipRgn);
    if (clipRgn && !region)
        return paramErr;
    importer->fClip.reset();
    if (region)
        importer->fClip = *region;
    return noErr;
}

ComponentResult GraphicsImportGetClip(GraphicsImportComponent ci, RgnHandle* clipRgn)
{
    LAMPBLACK_IMPORTER(importer, ci);
    if (!clipRgn)
        return paramErr;
    *clipRgn = importer->fClip ? NewRgn() : nullptr;
    if (*clipRgn)
        *quickdraw::FindRegion(*clipRgn) = *importer->fClip;
    return noErr;
}

ComponentResult GraphicsImportSetGWorld(GraphicsImportComponent ci, CGrafPtr port, GDHandle gd)
{
    LAMPBLACK_IMPORTER(importer, ci);
    if (port && !IsValidPort(port))
        return paramErr;
    importer->fPort = port;
    importer->fDevice = gd;
    return noErr;
}

ComponentResult GraphicsImportGetGWorld(GraphicsImportComponent ci, CGrafPtr* port, GDHandle* gd)
{
    LAMPBLACK_IMPORTER(importer, ci);
    if (port)
        *port = importer->fPort;
    if (gd)
        *gd = importer->fDevice;
    return noErr;
}

ComponentResult GraphicsImportSetGraphicsMode(GraphicsImportComponent ci, SInt32 graphicsMode,
                                              const RGBColor* opColor)
{
    LAMPBLACK_IMPORTER(importer, ci);
    if (!IsMode(graphicsMode))
        return paramErr;
    importer->fMode = graphicsMode;
    if (opColor)
        importer->fOpColor = *opColor;
    return noErr;
}

ComponentResult GraphicsImportGetGraphicsMode(GraphicsImportComponent ci, SInt32* graphicsMode,
                                              RGBColor* opColor)
{
    LAMPBLACK_IMPORTER(importer, ci);
    Placement place = {};
    error = importer->GetPlacement(&place);
    if (error)
        return error;
    if (graphicsMode)
        *graphicsMode = place.mode;
    if (opColor)
        *opColor = place.opColor;
    return noErr;
}

ComponentResult GraphicsImportSetQuality(GraphicsImportComponent ci, CodecQ quality)
{
    LAMPBLACK_IMPORTER(importer, ci);
    if (quality > codecLosslessQuality)
        return paramErr;
    importer->fQuality = quality;
    return noErr;
}

ComponentResult GraphicsImportGetQuality(GraphicsImportComponent ci, CodecQ* quality)
{
    LAMPBLACK_IMPORTER(importer, ci);
    if (!quality)
        return paramErr;
    *quality = importer->fQuality;
    return noErr;
}

ComponentResult GraphicsImportDraw(GraphicsImportComponent ci)
{
    LAMPBLACK_IMPORTER(importer, ci);
    const StPortState state;
    if (importer->fPort)
        SetGWorld(importer->fPort, importer->fDevice);
    return quickdraw::CurrentPort() ? importer->DrawInCurrentPort() : (OSStatus)paramErr;
}

ComponentResult GraphicsImportGetAsPicture(GraphicsImportComponent ci, PicHandle* picture)
{
    LAMPBLACK_IMPORTER(importer, ci);
    if (!picture)
        return paramErr;
    *picture = nullptr;
    return MakePicture(*importer, picture);
}

ComponentResult GraphicsImportSaveAsPicture(GraphicsImportComponent ci, const FSSpec* fss, ScriptCode)
{
    LAMPBLACK_IMPORTER(importer, ci);
    if (!fss)
        return paramErr;
    PicHandle picture = nullptr;
    error = MakePicture(*importer, &picture);
    if (!error)
        error = WritePictureFile(*fss, picture);
    KillPicture(picture);
    return error;
}
