// The calls on pictures.
#include "PictureRecorder.h"
#include "Playback.h"

#include <Carbon/MacErrors.h>
#include <Carbon/MacMemory.h>
#include <Carbon/Resources.h>
#include <quickdraw/PortRecord.h>

using namespace lampblack::pictures;
using namespace lampblack::quickdraw;

namespace lampblack::pictures {

// The bytes of a live picture; empty for any other reference.
static Bytes BytesOf(PicHandle inPicture)
{
    const Handle handle = reinterpret_cast<Handle>(inPicture);
    if (!IsHandleValid(handle) || !*handle || GetHandleSize(handle) < (Size)sizeof(Picture))
        return {};
    return { reinterpret_cast<const uint8_t*>(*handle), (size_t)GetHandleSize(handle) };
}

static bool IsBeginning(const Rect& inFrame, const PortRecord* inPort)
{
    return inPort && !inPort->fRecorder && !IsEmpty(inFrame);
}

} // namespace lampblack::pictures

PicHandle OpenPicture(const Rect* picFrame)
{
    PortRecord* port = CurrentPort();
    if (!picFrame || !IsBeginning(*picFrame, port))
        return nullptr;
    return PictureRecorder::Open(*port, { *picFrame, *picFrame, false, 0, 0 });
}

PicHandle OpenCPicture(const OpenCPicParams* newHeader)
{
    PortRecord* port = CurrentPort();
    if (!newHeader || !IsBeginning(newHeader->srcRect, port))
        return nullptr;
    const OpenCPicParams& header = *newHeader;
    return PictureRecorder::Open(*port, { FrameAt72(header.srcRect, header.hRes, header.vRes), header.srcRect,
                                          true, header.hRes, header.vRes });
}

void ClosePicture(void)
{
    if (PortRecord* port = CurrentPort())
        PictureRecorder::Close(*port);
}

void KillPicture(PicHandle myPicture)
{
    PictureRecorder::Abandon(myPicture);
    DisposeHandle(reinterpret_cast<Handle>(myPicture));
}

void PicComment(short kind, short dataSize, Handle dataHandle)
{
    PortRecord* port = CurrentPort();
    Recorder* recorder = RecorderOf(port);
    if (!recorder || dataSize < 0)
        return;
    if (dataSize == 0)
        return recorder->Comment(*port, kind, {});
    if (!IsHandleValid(dataHandle) || !*dataHandle || GetHandleSize(dataHandle) < dataSize)
        return;
    recorder->Comment(*port, kind, { reinterpret_cast<const uint8_t*>(*dataHandle), (size_t)dataSize });
}

void DrawPicture(PicHandle myPicture, const Rect* dstRect)
{
    const Bytes picture = BytesOf(myPicture);
    if (picture.empty() || !dstRect)
        return SetQDError(paramErr);
    SetQDError(PlayPicture(picture, *dstRect));
}

PicHandle GetPicture(short pictureID)
{
    return reinterpret_cast<PicHandle>(GetResource('PICT', pictureID));
}

Rect* QDGetPictureBounds(PicHandle picH, Rect* outRect)
{
    if (outRect)
        *outRect = FrameOf(BytesOf(picH));
    return outRect;
}

Boolean IsPortPictureBeingDefined(CGrafPtr port)
{
    const PortRecord* record = FindPort(port);
    return record && record->fRecorder;
}
