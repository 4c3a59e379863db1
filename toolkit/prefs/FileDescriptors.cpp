// Files that arrive in descriptors and drags.
#include "prefs/FileDescriptors.h"

namespace {

// Kept: of old, the answer for an item without a file.
constexpr OSErr kNoFileErr = cantGetFlavorErr;

// A descriptor's data as a type, coerced when it is of another.
OSErr ReadDescriptor(const AEDesc* inDescriptor, DescType inType, void* outData, Size inSize)
{
    if (inDescriptor->descriptorType == inType)
        return AEGetDescData(inDescriptor, outData, inSize);
    AEDesc coerced = { typeNull, nullptr };
    OSErr err = AECoerceDesc(inDescriptor, inType, &coerced);
    if (err == noErr)
        err = AEGetDescData(&coerced, outData, inSize);
    AEDisposeDesc(&coerced);
    return err;
}

bool HasFlavor(DragRef inDrag, DragItemRef inItem, FlavorType inFlavor)
{
    FlavorFlags flags = 0;
    return GetFlavorFlags(inDrag, inItem, inFlavor, &flags) == noErr;
}

template <typename Value>
OSErr ReadFlavor(DragRef inDrag, DragItemRef inItem, FlavorType inFlavor, Value* outValue)
{
    Size size = sizeof *outValue;
    *outValue = {};
    return GetFlavorData(inDrag, inItem, inFlavor, outValue, &size, 0);
}

OSErr ReadPromise(DragRef inDrag, DragItemRef inItem, FSSpec* outSpec, OSType* outFileType)
{
    PromiseHFSFlavor promise;
    const OSErr err = ReadFlavor(inDrag, inItem, kDragFlavorTypePromiseHFS, &promise);
    if (err != noErr)
        return err;
    if (promise.promisedFlavor != kDragPromisedFlavorFindFile)
        return kNoFileErr;
    *outFileType = promise.fileType;
    return ReadFlavor(inDrag, inItem, kDragPromisedFlavorFindFile, outSpec);
}

} // namespace

OSStatus GetFSSpecFromAEDesc(const AEDesc* inDescriptor, FSSpec* outSpec)
{
    if (!inDescriptor || !outSpec)
        return paramErr;
    return ReadDescriptor(inDescriptor, typeFSS, outSpec, sizeof *outSpec);
}

OSStatus GetFSSRefFromAEDesc(const AEDesc* inDescriptor, FSRef* outRef)
{
    if (!inDescriptor || !outRef)
        return paramErr;
    if (ReadDescriptor(inDescriptor, typeFSRef, outRef, sizeof *outRef) == noErr)
        return noErr;
    FSSpec spec;
    const OSStatus err = GetFSSpecFromAEDesc(inDescriptor, &spec);
    return err == noErr ? FSpMakeFSRef(&spec, outRef) : err;
}

OSStatus GetDragItemFileInfo(DragRef inDrag, DragItemRef inItem, FSSpec* outSpec, OSType* outFileType)
{
    if (!outSpec || !outFileType)
        return paramErr;
    if (HasFlavor(inDrag, inItem, kDragFlavorTypePromiseHFS))
        return ReadPromise(inDrag, inItem, outSpec, outFileType);
    if (!HasFlavor(inDrag, inItem, kDragFlavorTypeHFS))
        return kNoFileErr;
    HFSFlavor file;
    const OSErr err = ReadFlavor(inDrag, inItem, kDragFlavorTypeHFS, &file);
    if (err != noErr)
        return err;
    *outSpec = file.fileSpec;
    *outFileType = file.fileType;
    return noErr;
}
