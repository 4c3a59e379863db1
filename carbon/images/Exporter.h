// One open exporter: what it writes, and where. Begin with Exporter::Export.
#ifndef LAMPBLACK_IMAGES_EXPORTER_H
#define LAMPBLACK_IMAGES_EXPORTER_H

#include "ByteSink.h"

#include <Carbon/ImageCompression.h>

#include <optional>

namespace lampblack::images {

struct FileKind {
    OSType type, creator;
};

class Exporter {
public:
    enum class Input : uint8_t { None, Picture, World, Map };
    enum class Output : uint8_t { None, Handle, File };

    explicit Exporter(OSType inSubType) : fSubType(inSubType) {}

    OSType SubType() const { return fSubType; }
    FileKind DefaultKind() const;

    // Writes the image. Errors: as GraphicsExportDoExport.
    OSStatus Export(size_t* outSize);

    Input fInput = Input::None;
    PicHandle fPicture = nullptr;
    GWorldPtr fWorld = nullptr;
    PixMapHandle fMap = nullptr;

    Output fOutput = Output::None;
    Handle fHandle = nullptr;
    FSSpec fFile = {};
    std::optional<FileKind> fKind;

    CodecQ fQuality = codecNormalQuality;

private:
    OSStatus Encode(ByteSink* outBytes) const;
    OSStatus EncodePicture(ByteSink* outBytes) const;
    OSStatus EncodePort(CGrafPtr, ByteSink* outBytes) const;
    OSStatus Deliver(foundation::Bytes) const;

    OSType fSubType;
};

// Whether an output handle can be written. Errors: nilHandleErr, memWZErr.
OSStatus CheckOutputHandle(Handle);

} // namespace lampblack::images

#endif
