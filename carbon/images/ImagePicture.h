// Pictures made of images.
#ifndef LAMPBLACK_IMAGES_IMAGEPICTURE_H
#define LAMPBLACK_IMAGES_IMAGEPICTURE_H

#include "Importer.h"

namespace lampblack::images {

// A picture that draws what the importer draws. Errors: as GraphicsImportGetAsPicture.
OSStatus MakePicture(Importer&, PicHandle* outPicture);

} // namespace lampblack::images

#endif
