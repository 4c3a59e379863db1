// Where an importer's data come from.
#include "ImageSource.h"

#include <Carbon/Aliases.h>
#include <Carbon/ImageCompression.h>
#include <Carbon/MacMemory.h>

#include <algorithm>
#include <cstring>
#include <new>

namespace lampblack::images {

namespace {

class StOpenFile {
public:
    explicit StOpenFile(const FSSpec& inFile) : fError(FSpOpenDF(&inFile, fsRdPerm, &fNumber)) {}
    ~StOpenFile()
    {
        if (!fError)
            FSClose(fNumber);
    }
    StOpenFile(const StOpenFile&) = delete;
    StOpenFile& operator=(const StOpenFile&) = delete;
    OSErr Error() const { return fError; }
    FSIORefNum Number() const { return fNumber; }

private:
    FSIORefNum fNumber = 0;
    OSErr fError;
};

OSStatus CheckHandle(Handle inHandle)
{
    if (!inHandle)
        return nilHandleErr;
    if (!IsHandleValid(inHandle))
        return memWZErr;
    return *inHandle ? noErr : nilHandleErr;
}

} // namespace

OSStatus ReadFile(const FSSpec& inFile, size_t inMost, std::vector<uint8_t>* outBytes)
{
    const StOpenFile file(inFile);
    SInt32 size = 0;
    OSErr error = file.Error();
    if (!error)
        error = GetEOF(file.Number(), &size);
    if (error)
        return error == fileBoundsErr ? (OSStatus)memFullErr : error;
    if ((size_t)size > kMaxFileBytes && inMost > kMaxFileBytes)
        return memFullErr;
    size = (SInt32)std::min((size_t)size, inMost);
    try {
        outBytes->resize((size_t)size);
    } catch (const std::bad_alloc&) {
        return memFullErr;
    }
    error = size ? FSRead(file.Number(), &size, outBytes->data()) : (OSErr)noErr;
    if (error == eofErr) { // somebody made it shorter
        outBytes->resize((size_t)size);
        error = noErr;
    }
    return error;
}

OSStatus ResolveDataReference(Handle inReference, OSType inType, ReferredData* outData)
{
    if (CheckHandle(inReference))
        return invalidDataRef;
    if (inType == AliasDataHandlerSubType) {
        Boolean wasChanged = false;
        outData->isFile = true;
        const OSErr error =
            ResolveAlias(nullptr, reinterpret_cast<AliasHandle>(inReference), &outData->file, &wasChanged);
        return error == paramErr ? (OSStatus)invalidDataRef : error;
    }
    if (inType != HandleDataHandlerSubType || GetHandleSize(inReference) < (Size)sizeof(Handle))
        return invalidDataRef;
    std::memcpy(&outData->handle, *inReference, sizeof(Handle));
    return CheckHandle(outData->handle) ? (OSStatus)invalidDataRef : (OSStatus)noErr;
}

OSStatus ImageSource::SetFile(const FSSpec& inFile)
{
    const StOpenFile file(inFile);
    if (file.Error())
        return file.Error();
    *this = {};
    fKind = Kind::File;
    fFile = inFile;
    return noErr;
}

OSStatus ImageSource::SetHandle(Handle inHandle)
{
    if (const OSStatus error = CheckHandle(inHandle))
        return error;
    *this = {};
    fKind = Kind::Handle;
    fHandle = inHandle;
    return noErr;
}

OSStatus ImageSource::GetBytes(Bytes* outBytes)
{
    if (fKind == Kind::None)
        return dataNoDataRef;
    if (fKind == Kind::Handle) {
        if (const OSStatus error = CheckHandle(fHandle))
            return error;
        *outBytes = { reinterpret_cast<const uint8_t*>(*fHandle), (size_t)GetHandleSize(fHandle) };
        return noErr;
    }
    if (!fIsRead)
        if (const OSStatus error = ReadFile(fFile, kMaxFileBytes + 1, &fBytes))
            return error;
    fIsRead = true;
    *outBytes = fBytes;
    return noErr;
}

} // namespace lampblack::images
