// One open importer: its data, where and how it draws them. Begin with Importer.
#ifndef LAMPBLACK_IMAGES_IMPORTER_H
#define LAMPBLACK_IMAGES_IMPORTER_H

#include "Drawing.h"
#include "ImageReader.h"
#include "ImageSource.h"

#include <optional>

namespace lampblack::images {

class Importer {
public:
    explicit Importer(OSType inSubType) : fSubType(inSubType) {}

    OSType SubType() const { return fSubType; }
    bool IsPicture() const { return fSubType == kQTFileTypePicture; }

    OSStatus SetFile(const FSSpec&);
    OSStatus SetHandle(Handle);
    const ImageSource& Source() const { return fSource; }

    // What the header says, read when it is first needed. Errors: as the calls that read the header.
    OSStatus GetFacts(ImageFacts* outFacts);

    // Errors: those of reading the data.
    OSStatus GetBytes(Bytes* outBytes) { return fSource.GetBytes(outBytes); }

    // The compressed image within the data: of a picture file, the picture.
    OSStatus GetImageBytes(Bytes* outBytes);

    // A reader of the image; not of a picture.
    OSStatus Open(ImageReaderPtr* outReader);

    // Draws into the current port, which is valid.
    OSStatus DrawInCurrentPort();

    // Where the image comes to, and how.
    OSStatus GetPlacement(Placement* outPlacement);

    // What the application set; what it did not set is the image's own.
    std::optional<Rect> fBounds, fPart;
    std::optional<quickdraw::Region> fClip;
    std::optional<SInt32> fMode;
    RGBColor fOpColor = { 0, 0, 0 };
    CodecQ fQuality = codecNormalQuality;
    CGrafPtr fPort = nullptr;
    GDHandle fDevice = nullptr;

private:
    void Forget();
    OSStatus ReadPictureHeader();
    OSStatus DrawPictureFile(const Placement&);
    OSStatus DrawAsPicture(const Placement&);

    OSType fSubType;
    ImageSource fSource;
    std::optional<ImageFacts> fFacts;
};

} // namespace lampblack::images

#endif
