// Pictures made of images: a picture file is the picture; the data of JPEG files, and of images with
// transparent parts, which pixels in a picture cannot have, is put into the picture as it is; all else is
// recorded, so that whoever plays it needs no decoder.
#include "ImagePicture.h"

#include "PortState.h"

#include <Carbon/MacMemory.h>

#include <pictures/CompressedImages.h>
#include <quickdraw/PortRecord.h>

#include <cstring>
#include <new>

namespace lampblack::images {

namespace {

using foundation::BigEndianWriter;

constexpr Fixed kOne = 0x00010000;
constexpr uint32_t kUnitOfMatrix = 0x40000000; // the matrix's last element has 30 bits of fraction
constexpr Fixed k72 = 72 << 16;

void WriteRect(BigEndianWriter* ioOut, const Rect& r)
{
    for (const short edge : { r.top, r.left, r.bottom, r.right })
        ioOut->U16((uint16_t)edge);
}

// Size, frame, version 2, the extended header, and a clip region that is the frame.
void WriteStart(BigEndianWriter* ioOut, const Rect& inFrame)
{
    ioOut->U16(0);
    WriteRect(ioOut, inFrame);
    ioOut->U32(0x001102FF);
    ioOut->U16(0x0C00);
    ioOut->U32(0xFFFE0000);
    ioOut->U32(k72);
    ioOut->U32(k72);
    WriteRect(ioOut, inFrame);
    ioOut->U32(0);
    ioOut->U16(0x0001);
    ioOut->U16(10);
    WriteRect(ioOut, inFrame);
}

void WriteDescription(BigEndianWriter* ioOut, OSType inSubType, const ImageFacts& inFacts, size_t inSize)
{
    const Codec& codec = CodecOf(inSubType);
    ioOut->U32(sizeof(ImageDescription));
    ioOut->U32(codec.type);
    ioOut->Zeros(8);  // reserved, and the index of a data reference
    ioOut->U16(1);    // version
    ioOut->Zeros(10); // revision, vendor, temporal quality
    ioOut->U32(codecNormalQuality);
    ioOut->U16((uint16_t)inFacts.width);
    ioOut->U16((uint16_t)inFacts.height);
    ioOut->U32((uint32_t)inFacts.hRes);
    ioOut->U32((uint32_t)inFacts.vRes);
    ioOut->U32((uint32_t)inSize);
    ioOut->U16(1); // one frame
    ioOut->Pascal(codec.name);
    ioOut->Zeros(31 - codec.name.size());
    ioOut->U16((uint16_t)inFacts.depth);
    ioOut->U16(0xFFFF); // no colour table
}

void WriteMatrix(BigEndianWriter* ioOut, const Rect& inFrame, const ImageFacts& inFacts)
{
    const auto scale = [](int to, int from) { return (uint32_t)((int64_t)to * kOne / from); };
    ioOut->U32(scale(inFrame.right - inFrame.left, inFacts.width));
    ioOut->Zeros(12);
    ioOut->U32(scale(inFrame.bottom - inFrame.top, inFacts.height));
    ioOut->Zeros(4);
    ioOut->U32((uint32_t)inFrame.left << 16);
    ioOut->U32((uint32_t)inFrame.top << 16);
    ioOut->U32(kUnitOfMatrix);
}

void WriteCompressed(BigEndianWriter* ioOut, OSType inSubType, const Placement& inPlace,
                     const ImageFacts& inFacts, Bytes inData)
{
    constexpr size_t kFixedPart = 68;
    const size_t size = kFixedPart + sizeof(ImageDescription) + inData.size();
    ioOut->U16(0x8200);
    ioOut->U32((uint32_t)size);
    ioOut->U16(0); // version
    WriteMatrix(ioOut, inPlace.bounds, inFacts);
    ioOut->Zeros(12); // no matte
    ioOut->U16((uint16_t)inPlace.mode);
    WriteRect(ioOut, { 0, 0, (short)inFacts.height, (short)inFacts.width });
    ioOut->U32(codecHighQuality);
    ioOut->U32(0); // no mask
    WriteDescription(ioOut, inSubType, inFacts, inData.size());
    ioOut->Write(inData);
    ioOut->Zeros(size & 1);
    ioOut->U16(0x00FF);
}

OSStatus ToPicture(Bytes inBytes, PicHandle* outPicture)
{
    Handle handle = nullptr;
    const OSErr error = PtrToHand(inBytes.data(), &handle, (long)inBytes.size());
    *outPicture = reinterpret_cast<PicHandle>(handle);
    return error;
}

OSStatus CompressedPicture(Importer& inImporter, const Placement& inPlace, PicHandle* outPicture)
{
    ImageFacts facts;
    Bytes data;
    OSStatus error = inImporter.GetFacts(&facts);
    if (!error)
        error = inImporter.GetBytes(&data);
    if (error)
        return error;
    try {
        BigEndianWriter out;
        out.Data().reserve(data.size() + 512);
        WriteStart(&out, inPlace.bounds);
        WriteCompressed(&out, inImporter.SubType(), inPlace, facts, data);
        foundation::StoreBE16(out.Data().data(), (uint16_t)out.Size());
        return ToPicture(out.Data(), outPicture);
    } catch (const std::bad_alloc&) {
        return memFullErr;
    }
}

// Draws into a port without pixels while a picture is open in it.
OSStatus RecordedPicture(Importer& inImporter, const Rect& inFrame, PicHandle* outPicture)
{
    const StPortState state;
    const CGrafPtr port = CreateNewPort();
    if (!port)
        return memFullErr;
    SetGWorld(port, nullptr);
    ClipRect(&inFrame);
    const OpenCPicParams params = { inFrame, k72, k72, -2, 0, 0 };
    *outPicture = OpenCPicture(&params);
    OSStatus error = *outPicture ? inImporter.DrawInCurrentPort() : (OSStatus)memFullErr;
    if (*outPicture) {
        ClosePicture();
        error = error ? error : (OSStatus)QDError();
    }
    DisposePort(port);
    if (error && *outPicture) {
        KillPicture(*outPicture);
        *outPicture = nullptr;
    }
    return error;
}

bool IsWhole(const Placement& inPlace, const ImageFacts& inFacts)
{
    const Rect natural = { 0, 0, (short)inFacts.height, (short)inFacts.width };
    return EqualRect(&inPlace.part, &natural) && !inPlace.clip;
}

bool IsAtHome(const Placement& inPlace)
{
    return EqualRect(&inPlace.part, &inPlace.bounds);
}

} // namespace

OSStatus MakePicture(Importer& ioImporter, PicHandle* outPicture)
{
    Placement place;
    ImageFacts facts;
    OSStatus error = ioImporter.GetPlacement(&place);
    if (!error)
        error = ioImporter.GetFacts(&facts);
    if (error)
        return error;
    if (IsWhole(place, facts) && ioImporter.IsPicture() && IsAtHome(place)) {
        Bytes picture;
        error = ioImporter.GetImageBytes(&picture);
        return error ? error : ToPicture(picture, outPicture);
    }
    const bool isCopied = (place.mode & ~ditherCopy) == srcCopy && ioImporter.SubType() == kQTFileTypeJPEG;
    const bool isMixed = place.mode == graphicsModeStraightAlpha && facts.hasAlpha;
    if (IsWhole(place, facts) && (isCopied || isMixed))
        return CompressedPicture(ioImporter, place, outPicture);
    return RecordedPicture(ioImporter, PlaceOf(place, facts.width, facts.height), outPicture);
}

} // namespace lampblack::images
