// Files of images, written whole or not at all.
#include "ImageFile.h"

#include <Carbon/ImageCompression.h>
#include <Carbon/MacMemory.h>

#include <files/Durable.h>
#include <files/ItemChanges.h>
#include <pictures/Playback.h>

#include <new>
#include <sys/stat.h>

namespace lampblack::images {

using foundation::Bytes;

namespace {

// Whether the file may be written now: not locked, and not open for writing.
OSErr CheckWritable(const FSSpec& inFile)
{
    FSIORefNum number = 0;
    const OSErr error = FSpOpenDF(&inFile, fsRdWrPerm, &number);
    return error ? error : FSClose(number);
}

OSErr ReplaceFile(const FSSpec& inFile, files::Item inItem, OSType inType, OSType inCreator, Bytes inBytes)
{
    if (!files::FollowLinks(inItem, &inItem))
        return fnfErr;
    if (const OSErr error = CheckWritable(inFile))
        return error;
    FInfo info = {};
    FSpGetFInfo(&inFile, &info);
    info.fdType = inType;
    info.fdCreator = inCreator;
    struct stat status;
    const std::filesystem::path path = files::PathOf(inItem);
    files::Replacement replacement;
    OSErr error = replacement.Begin(path, ::stat(path.c_str(), &status) == 0 ? &status : nullptr);
    if (!error)
        error = files::WriteAll(replacement.File(), inBytes, 0);
    if (!error)
        error = replacement.PutInPlace();
    return error ? error : files::SetItemInfo(inItem, &info, nullptr);
}

OSErr MakeFile(files::Item inItem, OSType inType, OSType inCreator, Bytes inBytes)
{
    FInfo info = {};
    info.fdType = inType;
    info.fdCreator = inCreator;
    files::Replacement replacement;
    OSErr error = replacement.Begin(files::PathOf(inItem), nullptr);
    if (!error)
        error = files::WriteAll(replacement.File(), inBytes, 0);
    if (!error)
        error = files::CreateFileItem(&inItem, info, {});
    if (error)
        return error;
    error = replacement.PutInPlace();
    if (error)
        files::DeleteItem(inItem);
    return error;
}

} // namespace

OSStatus WriteImageFile(const FSSpec& inFile, OSType inType, OSType inCreator, Bytes inBytes)
{
    files::Item item;
    const OSErr error = files::Resolve(inFile, &item);
    if (error && error != fnfErr)
        return error;
    return item.exists ? ReplaceFile(inFile, item, inType, inCreator, inBytes)
                       : MakeFile(item, inType, inCreator, inBytes);
}

OSStatus WritePictureFile(const FSSpec& inFile, PicHandle inPicture)
{
    const auto handle = reinterpret_cast<Handle>(inPicture);
    const Bytes picture(reinterpret_cast<const uint8_t*>(*handle), (size_t)GetHandleSize(handle));
    try {
        foundation::BigEndianWriter file;
        file.Zeros(pictures::kPictureFileHeader);
        file.Write(picture);
        return WriteImageFile(inFile, kQTFileTypePicture, kImageCreator, file.Data());
    } catch (const std::bad_alloc&) {
        return memFullErr;
    }
}

} // namespace lampblack::images
