// Files of images, written whole or not at all.
#ifndef LAMPBLACK_IMAGES_IMAGEFILE_H
#define LAMPBLACK_IMAGES_IMAGEFILE_H

#include <Carbon/Files.h>
#include <Carbon/Quickdraw.h>
#include <foundation/BigEndian.h>

namespace lampblack::images {

inline constexpr OSType kImageCreator = 'ogle'; // who opened images on the original system

// WriteImageFile
//
// Makes the file, or replaces its data fork, and gives it type and creator.
//
// Errors:     those of FSMakeFSSpec, but for fnfErr; those of opening an existing file for writing;
//             dskFulErr, wPrErr, permErr, ioErr  as the host says: then an old file is as it was, and a new
//             one is not there.
OSStatus WriteImageFile(const FSSpec&, OSType inType, OSType inCreator, foundation::Bytes);

// A picture with the 512 bytes that picture files begin with.
OSStatus WritePictureFile(const FSSpec&, PicHandle);

} // namespace lampblack::images

#endif
