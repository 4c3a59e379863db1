// Image files read and written by components: graphics importers and exporters. Begin with
// GetGraphicsImporterForFile, or open an exporter with OpenADefaultComponent('grex', 'JPEG', &exporter);
// close both with CloseComponent.
//
// Importers: 'JPEG', 'PNGf', 'GIFf', 'TIFF', 'BMPf', 'TPIC' (Targa), 'PICT' (picture files). Of a file with
// several images the first is drawn. Exporters: 'JPEG', 'PNGf'.
//
// Every call answers badComponentInstance for an instance that is NULL, closed or none, badComponentSelector
// for one of another kind, and paramErr for a NULL argument that has no meaning; the calls name what else
// there is.
#ifndef LAMPBLACK_CARBON_IMAGECOMPRESSION_H
#define LAMPBLACK_CARBON_IMAGECOMPRESSION_H

#include <Carbon/Components.h>
#include <Carbon/Files.h>
#include <Carbon/QDPictures.h>
#include <Carbon/Quickdraw.h>

typedef ComponentInstance GraphicsImportComponent;
typedef ComponentInstance GraphicsExportComponent;

enum { GraphicsImporterComponentType = 'grip', GraphicsExporterComponentType = 'grex' };

// Subtypes of importers and exporters.
enum {
    kQTFileTypeJPEG = 'JPEG',
    kQTFileTypePNG = 'PNGf',
    kQTFileTypeGIF = 'GIFf',
    kQTFileTypeTIFF = 'TIFF',
    kQTFileTypeBMP = 'BMPf',
    kQTFileTypeTargaImage = 'TPIC',
    kQTFileTypePicture = 'PICT'
};

// How the data of an image description is compressed.
typedef OSType CodecType;
enum {
    kJPEGCodecType = 'jpeg',
    kPNGCodecType = 'png ',
    kGIFCodecType = 'gif ',
    kTIFFCodecType = 'tiff',
    kBMPCodecType = 'WRLE',
    kTargaCodecType = 'tga ',
    kQuickDrawCodecType = 'qdrw'
};

typedef UInt32 CodecQ;
enum {
    codecMinQuality = 0x000,
    codecLowQuality = 0x100,
    codecNormalQuality = 0x200,
    codecHighQuality = 0x300,
    codecMaxQuality = 0x3FF,
    codecLosslessQuality = 0x400
};

// Beside the transfer modes of QuickDraw: draw what has an alpha channel over what is there.
enum { graphicsModeStraightAlpha = 256 };

enum {
    graphicsImporterDrawsAllPixels = 0,
    graphicsImporterDoesntDrawAllPixels = 1,
    graphicsImporterDontKnowIfDrawAllPixels = 2
};

// Types of data references: a handle that holds an alias, and one that holds the handle of the data.
enum { AliasDataHandlerSubType = 'alis', HandleDataHandlerSubType = 'hndl' };

#pragma pack(push, 2)
struct ImageDescription {
    SInt32 idSize;
    CodecType cType;
    SInt32 resvd1;
    SInt16 resvd2;
    SInt16 dataRefIndex;
    SInt16 version;
    SInt16 revisionLevel;
    SInt32 vendor;
    UInt32 temporalQuality;
    UInt32 spatialQuality;
    SInt16 width;
    SInt16 height;
    Fixed hRes; // pixels per inch
    Fixed vRes;
    SInt32 dataSize;
    SInt16 frameCount;
    Str31 name;
    SInt16 depth; // 1 to 8 with a colour table, 24, 32 with alpha; 40 for eight bits of grey
    SInt16 clutID;
};
#pragma pack(pop)
typedef struct ImageDescription ImageDescription;
typedef ImageDescription* ImageDescriptionPtr;
typedef ImageDescriptionPtr* ImageDescriptionHandle;
static_assert(sizeof(ImageDescription) == 86, "the published size");

LAMPBLACK_BEGIN_C

// Importers
// --------------------------------------------------------------------------------------------------

// GetGraphicsImporterForFile, GetGraphicsImporterForDataRef
//
// Open the importer that can read the data, by what is in it; only a Targa file, which has no mark of its
// own, is also known by its file type 'TPIC' or a name that ends in ".tga".
//
// Ownership:  the caller's; release it with CloseComponent.
// Errors:     cantFindHandler  no importer reads this; those of opening and reading the file; invalidDataRef
//             a data reference of another type, or a broken one; memFullErr. *gi is NULL then.
OSErr GetGraphicsImporterForFile(const FSSpec* theFile, ComponentInstance* gi);
OSErr GetGraphicsImporterForDataRef(Handle dataRef, OSType dataRefType, ComponentInstance* gi);

// GraphicsImportSetDataFile, SetDataHandle, SetDataReference
//
// Say what to read, and set bounds, source rectangle, clip and mode back to the image's own. A file is opened
// here and read when the image is first asked for; a handle stays the caller's and must not be changed or
// disposed while the importer may read it.
//
// Errors:     those of opening the file; nilHandleErr, memWZErr  a handle that is none; invalidDataRef.
ComponentResult GraphicsImportSetDataFile(GraphicsImportComponent ci, const FSSpec* theFile);
ComponentResult GraphicsImportSetDataHandle(GraphicsImportComponent ci, Handle h);
ComponentResult GraphicsImportSetDataReference(GraphicsImportComponent ci, Handle dataRef, OSType dataReType);

// What was set; of the other kind of source: dataNoDataRef.
ComponentResult GraphicsImportGetDataFile(GraphicsImportComponent ci, FSSpec* theFile);
ComponentResult GraphicsImportGetDataHandle(GraphicsImportComponent ci, Handle* h);

// GraphicsImportValidate
//
// Whether the data is of the importer's format, as far as its header tells.
ComponentResult GraphicsImportValidate(GraphicsImportComponent ci, Boolean* valid);

// The calls that follow read the image's header if they need it.
//
// Errors:     dataNoDataRef  no data was set; codecBadDataErr  not of this format, or damaged; memFullErr  an
//             image of more than 67 million pixels, or with a side beyond 32767; those of reading the file;
//             of a handle that is gone: nilHandleErr, memWZErr; cantOpenHandler  the library that decodes it
//             is not installed.

ComponentResult GraphicsImportGetNaturalBounds(GraphicsImportComponent ci, Rect* naturalBounds); // at (0,0)

// The caller owns *desc.
ComponentResult GraphicsImportGetImageDescription(GraphicsImportComponent ci, ImageDescriptionHandle* desc);

// Where in the data the compressed image is, and a piece of the data; eofErr beyond its end.
ComponentResult GraphicsImportGetDataOffsetAndSize(GraphicsImportComponent ci, UInt32* offset, UInt32* size);
ComponentResult GraphicsImportReadData(GraphicsImportComponent ci, void* dataPtr, UInt32 dataOffset,
                                       UInt32 dataSize);

ComponentResult GraphicsImportGetImageCount(GraphicsImportComponent ci, UInt32* imageCount);

// Whether drawing sets every pixel of the bounds; an image with transparent parts does not.
ComponentResult GraphicsImportDoesDrawAllPixels(GraphicsImportComponent ci, short* drawsAllPixels);

// The rectangle that the natural bounds are drawn to, the natural bounds themselves at first. paramErr:
// empty.
ComponentResult GraphicsImportSetBoundsRect(GraphicsImportComponent ci, const Rect* bounds);
ComponentResult GraphicsImportGetBoundsRect(GraphicsImportComponent ci, Rect* bounds);

// The part of the image to draw; it comes to where it would be with all the rest. NULL: all. invalidRect: not
// within the natural bounds, or empty.
ComponentResult GraphicsImportSetSourceRect(GraphicsImportComponent ci, const Rect* sourceRect);
ComponentResult GraphicsImportGetSourceRect(GraphicsImportComponent ci, Rect* sourceRect);

// GraphicsImportSetClip
//
// Drawing happens only within clipRgn, in the coordinates of the destination; NULL: no clip. The region is
// copied. GraphicsImportGetClip makes a new region, NULL for no clip, which the caller disposes of.
ComponentResult GraphicsImportSetClip(GraphicsImportComponent ci, RgnHandle clipRgn);
ComponentResult GraphicsImportGetClip(GraphicsImportComponent ci, RgnHandle* clipRgn);

// GraphicsImportSetGWorld
//
// Where to draw; a NULL port is whichever port is current when the image is drawn.
//
// Errors:     paramErr  a port that is none.
ComponentResult GraphicsImportSetGWorld(GraphicsImportComponent ci, CGrafPtr port, GDHandle gd);
ComponentResult GraphicsImportGetGWorld(GraphicsImportComponent ci, CGrafPtr* port, GDHandle* gd);

// GraphicsImportSetGraphicsMode
//
// The transfer mode; opColor, which may be NULL, is the colour that mode `transparent` leaves out and the
// weight of `blend`. At first it is graphicsModeStraightAlpha for an image that has transparent parts, which
// then keep what is there, and ditherCopy for all others. In any other mode alpha is not looked at.
ComponentResult GraphicsImportSetGraphicsMode(GraphicsImportComponent ci, SInt32 graphicsMode,
                                              const RGBColor* opColor);
ComponentResult GraphicsImportGetGraphicsMode(GraphicsImportComponent ci, SInt32* graphicsMode,
                                              RGBColor* opColor);

// How well to decode: below codecNormalQuality, which is the setting at first, JPEG data is decoded faster
// and a little less exactly; all else is exact at any quality.
ComponentResult GraphicsImportSetQuality(GraphicsImportComponent ci, CodecQ quality);
ComponentResult GraphicsImportGetQuality(GraphicsImportComponent ci, CodecQ* quality);

// GraphicsImportDraw
//
// Draws the image. A smaller bounds rectangle averages the pixels, a larger one repeats them; indexed
// destinations are dithered as the mode says. The colours of the port do not matter.
//
// Errors:     as above; paramErr  no valid port; codecBadDataErr  also when the data ends early or is damaged
//             half-way: what could be decoded is drawn.
ComponentResult GraphicsImportDraw(GraphicsImportComponent ci);

// GraphicsImportGetAsPicture, GraphicsImportSaveAsPicture
//
// Make a picture that draws what GraphicsImportDraw would draw; its frame is the bounds rectangle. It holds
// the data of JPEG files, and of images with transparent parts, as it is, and all else as packed pixels.
// GraphicsImportSaveAsPicture writes it as a file of type
// 'PICT', whole or not at all.
//
// Ownership:  the caller owns *picture; release it with KillPicture.
// Errors:     as above, and those of making the file.
ComponentResult GraphicsImportGetAsPicture(GraphicsImportComponent ci, PicHandle* picture);
ComponentResult GraphicsImportSaveAsPicture(GraphicsImportComponent ci, const FSSpec* fss,
                                            ScriptCode scriptTag);

// Exporters
// --------------------------------------------------------------------------------------------------

// What to write. The input stays the caller's and is read by GraphicsExportDoExport. The getters answer
// dataNoDataRef for an input of another kind.
ComponentResult GraphicsExportSetInputPicture(GraphicsExportComponent ci, PicHandle picture);
ComponentResult GraphicsExportGetInputPicture(GraphicsExportComponent ci, PicHandle* picture);
ComponentResult GraphicsExportSetInputGWorld(GraphicsExportComponent ci, GWorldPtr gworld);
ComponentResult GraphicsExportGetInputGWorld(GraphicsExportComponent ci, GWorldPtr* gworld);
ComponentResult GraphicsExportSetInputPixmap(GraphicsExportComponent ci, PixMapHandle pixmap);
ComponentResult GraphicsExportGetInputPixmap(GraphicsExportComponent ci, PixMapHandle* pixmap);

// Where to write: a handle, whose size will be that of the image file, or a file, which is made or replaced.
ComponentResult GraphicsExportSetOutputHandle(GraphicsExportComponent ci, Handle h);
ComponentResult GraphicsExportGetOutputHandle(GraphicsExportComponent ci, Handle* h);
ComponentResult GraphicsExportSetOutputFile(GraphicsExportComponent ci, const FSSpec* theFile);
ComponentResult GraphicsExportGetOutputFile(GraphicsExportComponent ci, FSSpec* theFile);

// The file type and creator that a file gets; by default those of the format.
ComponentResult GraphicsExportSetOutputFileTypeAndCreator(GraphicsExportComponent ci, OSType fileType,
                                                          OSType fileCreator);
ComponentResult GraphicsExportGetOutputFileTypeAndCreator(GraphicsExportComponent ci, OSType* fileType,
                                                          OSType* fileCreator);
ComponentResult GraphicsExportGetDefaultFileTypeAndCreator(GraphicsExportComponent ci, OSType* fileType,
                                                           OSType* fileCreator);

// GraphicsExportSetCompressionQuality
//
// Of JPEG only (elsewhere badComponentSelector); codecNormalQuality by default. 0, 256, 512, 768 and 1024 are
// 25, 50, 75, 88 and 100 of libjpeg's scale, and linear between; from codecHighQuality on, colour is kept at
// full resolution. paramErr: above codecLosslessQuality.
ComponentResult GraphicsExportSetCompressionQuality(GraphicsExportComponent ci, CodecQ spatialQuality);
ComponentResult GraphicsExportGetCompressionQuality(GraphicsExportComponent ci, CodecQ* spatialQuality);

// GraphicsExportDoExport
//
// Writes the image. A picture is drawn on white at its frame's size. A file is written whole or not at all.
// *actualSizeWritten, which may be NULL, gets the size in bytes.
//
// Errors:     in this order: dataNoDataRef  no input or no output was set; those of an input that is gone or
//             empty: paramErr; memFullErr  an input of more than 67 million pixels; cantOpenHandler  the
//             library is not installed; then those of growing the handle or making the file.
ComponentResult GraphicsExportDoExport(GraphicsExportComponent ci, UInt32* actualSizeWritten);

LAMPBLACK_END_C

// For sources that keep what is 32 bits wide in a long, as it was when they were written.
LAMPBLACK_IF_TYPE(ULong, unsigned long)
inline ComponentResult GraphicsImportGetDataOffsetAndSize(GraphicsImportComponent ci, ULong* offset,
                                                          ULong* size)
{
    UInt32 offset32 = 0, size32 = 0;
    const ComponentResult result = GraphicsImportGetDataOffsetAndSize(ci, &offset32, &size32);
    *offset = offset32;
    *size = size32;
    return result;
}

LAMPBLACK_IF_TYPE(ULong, unsigned long)
inline ComponentResult GraphicsImportGetImageCount(GraphicsImportComponent ci, ULong* imageCount)
{
    UInt32 count = 0;
    const ComponentResult result = GraphicsImportGetImageCount(ci, &count);
    *imageCount = count;
    return result;
}

LAMPBLACK_IF_TYPE(Long, long)
inline ComponentResult GraphicsImportGetGraphicsMode(GraphicsImportComponent ci, Long* graphicsMode,
                                                     RGBColor* opColor)
{
    SInt32 mode = 0;
    const ComponentResult result = GraphicsImportGetGraphicsMode(ci, &mode, opColor);
    *graphicsMode = mode;
    return result;
}

LAMPBLACK_IF_TYPE(ULong, unsigned long)
inline ComponentResult GraphicsImportGetQuality(GraphicsImportComponent ci, ULong* quality)
{
    CodecQ value = 0;
    const ComponentResult result = GraphicsImportGetQuality(ci, &value);
    *quality = value;
    return result;
}

LAMPBLACK_IF_TYPE(ULong, unsigned long)
inline ComponentResult GraphicsExportGetCompressionQuality(GraphicsExportComponent ci, ULong* quality)
{
    CodecQ value = 0;
    const ComponentResult result = GraphicsExportGetCompressionQuality(ci, &value);
    *quality = value;
    return result;
}

LAMPBLACK_IF_TYPE(ULong, unsigned long)
inline ComponentResult GraphicsExportDoExport(GraphicsExportComponent ci, ULong* actualSizeWritten)
{
    UInt32 size = 0;
    const ComponentResult result = GraphicsExportDoExport(ci, &size);
    *actualSizeWritten = size;
    return result;
}

#endif
