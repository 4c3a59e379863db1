// One open importer.
#include "Importer.h"

#include "ImagePicture.h"

#include <pictures/Playback.h>
#include <quickdraw/Recorder.h>

namespace lampblack::images {

// What was set for one image means nothing for the next.
void Importer::Forget()
{
    fFacts.reset();
    fBounds.reset();
    fPart.reset();
    fClip.reset();
    fMode.reset();
}

OSStatus Importer::SetFile(const FSSpec& inFile)
{
    const OSStatus error = fSource.SetFile(inFile);
    if (!error)
        Forget();
    return error;
}

OSStatus Importer::SetHandle(Handle inHandle)
{
    const OSStatus error = fSource.SetHandle(inHandle);
    if (!error)
        Forget();
    return error;
}

OSStatus Importer::GetImageBytes(Bytes* outBytes)
{
    const OSStatus error = GetBytes(outBytes);
    if (error || !IsPicture())
        return error;
    *outBytes = pictures::PictureInFile(*outBytes);
    return outBytes->empty() ? (OSStatus)codecBadDataErr : (OSStatus)noErr;
}

OSStatus Importer::ReadPictureHeader()
{
    Bytes picture;
    if (const OSStatus error = GetImageBytes(&picture))
        return error;
    const Rect frame = pictures::FrameOf(picture);
    ImageFacts facts;
    facts.width = frame.right - frame.left;
    facts.height = frame.bottom - frame.top;
    if (facts.width <= 0 || facts.height <= 0)
        return codecBadDataErr;
    if (facts.width > kMaxSide || facts.height > kMaxSide)
        return memFullErr;
    fFacts = facts;
    return noErr;
}

OSStatus Importer::GetFacts(ImageFacts* outFacts)
{
    OSStatus error = noErr;
    if (!fFacts && IsPicture())
        error = ReadPictureHeader();
    else if (!fFacts) {
        ImageReaderPtr reader;
        error = Open(&reader);
        if (!error)
            fFacts = reader->Facts();
    }
    if (!error)
        *outFacts = *fFacts;
    return error;
}

OSStatus Importer::Open(ImageReaderPtr* outReader)
{
    Bytes bytes;
    const OSStatus error = GetBytes(&bytes);
    return error ? error : OpenImage(fSubType, bytes, fQuality, outReader);
}

OSStatus Importer::GetPlacement(Placement* outPlacement)
{
    ImageFacts facts;
    if (const OSStatus error = GetFacts(&facts))
        return error;
    const Rect natural = { 0, 0, (short)facts.height, (short)facts.width };
    outPlacement->bounds = fBounds.value_or(natural);
    outPlacement->part = fPart.value_or(natural);
    // An image with transparent parts is a sprite or a logo: applications of the time expected what is
    // behind it to stay.
    outPlacement->mode =
        fMode.value_or(facts.hasAlpha ? (SInt32)graphicsModeStraightAlpha : (SInt32)ditherCopy);
    outPlacement->opColor = fOpColor;
    outPlacement->clip = fClip ? &*fClip : nullptr;
    return noErr;
}

OSStatus Importer::DrawPictureFile(const Placement& inPlace)
{
    ImageFacts facts;
    Bytes picture;
    OSStatus error = GetFacts(&facts);
    if (!error)
        error = GetImageBytes(&picture);
    if (error)
        return error;
    Placement place = inPlace;
    quickdraw::Region clip(PlaceOf(inPlace, facts.width, facts.height));
    if (inPlace.clip)
        clip.Intersect(clip, *inPlace.clip);
    place.clip = &clip;
    const StCopyState state(place);
    return pictures::PlayPicture(picture, inPlace.bounds);
}

// Whether an open picture shall take the image with its alpha, which CopyBits does not tell it of.
static bool IsRecordedWhole(const Placement& inPlace, const ImageFacts& inFacts)
{
    const Rect natural = { 0, 0, (short)inFacts.height, (short)inFacts.width };
    return quickdraw::RecorderOf(quickdraw::CurrentPort()) && inFacts.hasAlpha &&
           inPlace.mode == graphicsModeStraightAlpha && !inPlace.clip && EqualRect(&inPlace.part, &natural) &&
           inPlace.bounds.right - inPlace.bounds.left >= inFacts.width &&
           inPlace.bounds.bottom - inPlace.bounds.top >= inFacts.height;
}

OSStatus Importer::DrawAsPicture(const Placement& inPlace)
{
    PicHandle picture = nullptr;
    OSStatus error = MakePicture(*this, &picture);
    if (!error) {
        DrawPicture(picture, &inPlace.bounds);
        error = QDError();
    }
    KillPicture(picture);
    return error;
}

OSStatus Importer::DrawInCurrentPort()
{
    Placement place;
    ImageFacts facts;
    OSStatus failure = GetPlacement(&place);
    if (!failure)
        failure = GetFacts(&facts);
    if (failure)
        return failure;
    if (IsPicture())
        return DrawPictureFile(place);
    if (IsRecordedWhole(place, facts))
        return DrawAsPicture(place);
    ImageReaderPtr reader;
    const OSStatus error = Open(&reader);
    return error ? error : DrawImage(*reader, place);
}

} // namespace lampblack::images
