// One open exporter.
#include "Exporter.h"

#include "ImageFile.h"
#include "ImageReader.h"
#include "ImageWriter.h"
#include "PortState.h"

#include <Carbon/MacMemory.h>

#include <pictures/Playback.h>
#include <quickdraw/PortRecord.h>

#include <cstring>
#include <new>

namespace lampblack::images {

namespace {

constexpr struct {
    OSType subType;
    OSStatus (*encode)(PixelRows&, CodecQ, ByteSink*);
} kWriters[] = {
    { kQTFileTypeJPEG, EncodeJpeg },
    { kQTFileTypePNG, EncodePng },
};

// A world that holds a picture, drawn on white.
class StPictureWorld {
public:
    [[nodiscard]] explicit StPictureWorld(const Rect& inFrame)
        : fError(NewGWorld(&fWorld, 32, &inFrame, nullptr, nullptr, 0))
    {
    }
    ~StPictureWorld() { DisposeGWorld(fWorld); }
    StPictureWorld(const StPictureWorld&) = delete;
    StPictureWorld& operator=(const StPictureWorld&) = delete;

    GWorldPtr World() const { return fWorld; }
    OSStatus Error() const { return fError == cNoMemErr ? (OSStatus)memFullErr : fError; }

    OSStatus Draw(foundation::Bytes inPicture, const Rect& inFrame) const
    {
        const StPortState state;
        SetGWorld(fWorld, nullptr);
        EraseRect(&inFrame);
        return pictures::PlayPicture(inPicture, inFrame);
    }

private:
    GWorldPtr fWorld = nullptr;
    QDErr fError;
};

foundation::Bytes BytesOf(PicHandle inPicture)
{
    const auto handle = reinterpret_cast<Handle>(inPicture);
    if (!handle || !IsHandleValid(handle) || !*handle)
        return {};
    return { reinterpret_cast<const uint8_t*>(*handle), (size_t)GetHandleSize(handle) };
}

} // namespace

OSStatus CheckOutputHandle(Handle inHandle)
{
    if (!inHandle)
        return nilHandleErr;
    return IsHandleValid(inHandle) ? noErr : memWZErr;
}

FileKind Exporter::DefaultKind() const
{
    return { fSubType, kImageCreator };
}

OSStatus Exporter::EncodePort(CGrafPtr inPort, ByteSink* outBytes) const
{
    const quickdraw::PortRecord* port = quickdraw::FindPort(inPort);
    if (!port || !port->fSurface.base)
        return paramErr;
    const quickdraw::Box part =
        quickdraw::Intersection(quickdraw::BoxOf(port->fBounds), quickdraw::BoxOf(port->fSurface.bounds));
    if (quickdraw::IsEmpty(part))
        return paramErr;
    PixelRows rows(port->fSurface, quickdraw::RectOf(part));
    for (const auto& writer : kWriters)
        if (writer.subType == fSubType)
            return writer.encode(rows, fQuality, outBytes);
    return paramErr;
}

OSStatus Exporter::EncodePicture(ByteSink* outBytes) const
{
    const foundation::Bytes bytes = BytesOf(fPicture);
    const Rect frame = pictures::FrameOf(bytes);
    if (!pictures::IsPicture(bytes) || quickdraw::IsEmpty(frame))
        return paramErr;
    if ((int64_t)(frame.right - frame.left) * (frame.bottom - frame.top) > kMaxPixels)
        return memFullErr;
    const StPictureWorld world(frame);
    OSStatus error = world.Error();
    if (!error)
        error = world.Draw(bytes, frame);
    return error ? error : EncodePort(world.World(), outBytes);
}

OSStatus Exporter::Encode(ByteSink* outBytes) const
{
    switch (fInput) {
    case Input::None: return dataNoDataRef;
    case Input::Picture: return EncodePicture(outBytes);
    case Input::World: return EncodePort(fWorld, outBytes);
    case Input::Map: break;
    }
    return EncodePort(quickdraw::ReferenceOf(quickdraw::FindPort(fMap)), outBytes);
}

OSStatus Exporter::Deliver(foundation::Bytes inBytes) const
{
    if (fOutput == Output::File) {
        const FileKind kind = fKind.value_or(DefaultKind());
        return WriteImageFile(fFile, kind.type, kind.creator, inBytes);
    }
    if (const OSStatus error = CheckOutputHandle(fHandle))
        return error;
    return PtrToXHand(inBytes.data(), fHandle, (long)inBytes.size());
}

OSStatus Exporter::Export(size_t* outSize)
{
    *outSize = 0;
    if (fInput == Input::None || fOutput == Output::None)
        return dataNoDataRef;
    ByteSink bytes;
    OSStatus error = noErr;
    try {
        error = Encode(&bytes);
    } catch (const std::bad_alloc&) {
        error = memFullErr;
    }
    if (!error)
        error = Deliver(bytes.All());
    if (!error)
        *outSize = bytes.All().size();
    return error;
}

} // namespace lampblack::images
