// Where an importer's data come from: a file, read once, or a handle of the application's own.
#ifndef LAMPBLACK_IMAGES_IMAGESOURCE_H
#define LAMPBLACK_IMAGES_IMAGESOURCE_H

#include <Carbon/Files.h>
#include <foundation/BigEndian.h>

#include <vector>

namespace lampblack::images {

using foundation::Bytes;

// The bytes of a file, inMost at most, of its data fork. Errors: those of opening and reading; memFullErr
// above 512 MB.
OSStatus ReadFile(const FSSpec&, size_t inMost, std::vector<uint8_t>* outBytes);
inline constexpr size_t kMaxFileBytes = size_t(1) << 29;

// A file or handle from a data reference. Errors: invalidDataRef; those of resolving an alias.
struct ReferredData {
    bool isFile = false;
    FSSpec file;
    Handle handle = nullptr;
};
OSStatus ResolveDataReference(Handle inReference, OSType inType, ReferredData* outData);

class ImageSource {
public:
    // Errors: those of opening the file; nilHandleErr, memWZErr.
    OSStatus SetFile(const FSSpec&);
    OSStatus SetHandle(Handle);

    const FSSpec* File() const { return fKind == Kind::File ? &fFile : nullptr; }
    Handle DataHandle() const { return fKind == Kind::Handle ? fHandle : nullptr; }

    // All bytes; they last until the source is changed, those of a handle as long as it is not touched.
    // Errors: dataNoDataRef  nothing was set; else as ReadFile and SetHandle.
    OSStatus GetBytes(Bytes* outBytes);

private:
    enum class Kind : uint8_t { None, File, Handle };

    Kind fKind = Kind::None;
    bool fIsRead = false;
    FSSpec fFile = {};
    Handle fHandle = nullptr;
    std::vector<uint8_t> fBytes; // of a file that was read
};

} // namespace lampblack::images

#endif
