// The flippers that the Resource Manager calls for the types that are read as records. Begin at
// CoreEndianInstallFlipper; numbers by themselves are turned over in Endian.h.
#ifndef LAMPBLACK_CARBON_COREENDIAN_H
#define LAMPBLACK_CARBON_COREENDIAN_H

#include <Carbon/Endian.h>
#include <Carbon/MacErrors.h>
#include <Carbon/MacTypes.h>

enum {
    kCoreEndianResourceManagerDomain = 0x72737263,  // 'rsrc'
    kCoreEndianAppleEventManagerDomain = 0x61657674 // 'aevt'
};

// CoreEndianFlipProc
//
// Flips dataLen bytes in place: from native to big-endian when currentlyNative is true, else the other way.
// id is the resource's. An error leaves the data as it was before the call.
typedef OSStatus (*CoreEndianFlipProc)(OSType dataDomain, OSType dataType, SInt16 id, void* dataPtr,
                                       ByteCount dataSize, Boolean currentlyNative, void* refcon);

LAMPBLACK_BEGIN_C

// CoreEndianInstallFlipper
//
// Has the flipper called for each resource of the type that is loaded from now on. The last one installed for
// a type is the one that is called, before the platform's own.
//
// Errors:     paramErr  a null flipper.
OSStatus CoreEndianInstallFlipper(OSType dataDomain, OSType dataType, CoreEndianFlipProc proc, void* refcon);

// Either result may be null. Errors: handlerNotFoundErr.
OSStatus CoreEndianGetFlipper(OSType dataDomain, OSType dataType, CoreEndianFlipProc* proc, void** refcon);

// Errors: handlerNotFoundErr, paramErr for null data, else what the flipper answers.
OSStatus CoreEndianFlipData(OSType dataDomain, OSType dataType, SInt16 id, void* data, ByteCount dataLen,
                            Boolean currentlyNative);

LAMPBLACK_END_C

#endif
