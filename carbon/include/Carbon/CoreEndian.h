// Byte order: integers turned from big-endian to native and back, and the flippers that the Resource Manager
// calls for the types that are read as records. Begin at CoreEndianInstallFlipper.
#ifndef LAMPBLACK_CARBON_COREENDIAN_H
#define LAMPBLACK_CARBON_COREENDIAN_H

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

inline UInt16 Endian16_Swap(UInt16 inValue)
{
    return __builtin_bswap16(inValue);
}
inline UInt32 Endian32_Swap(UInt32 inValue)
{
    return __builtin_bswap32(inValue);
}
inline UInt64 Endian64_Swap(UInt64 inValue)
{
    return __builtin_bswap64(inValue);
}

inline SInt16 EndianS16_BtoN(SInt16 inValue)
{
    return (SInt16)__builtin_bswap16((UInt16)inValue);
}
inline SInt16 EndianS16_NtoB(SInt16 inValue)
{
    return (SInt16)__builtin_bswap16((UInt16)inValue);
}
inline UInt16 EndianU16_BtoN(UInt16 inValue)
{
    return __builtin_bswap16(inValue);
}
inline UInt16 EndianU16_NtoB(UInt16 inValue)
{
    return __builtin_bswap16(inValue);
}
inline SInt32 EndianS32_BtoN(SInt32 inValue)
{
    return (SInt32)__builtin_bswap32((UInt32)inValue);
}
inline SInt32 EndianS32_NtoB(SInt32 inValue)
{
    return (SInt32)__builtin_bswap32((UInt32)inValue);
}
inline UInt32 EndianU32_BtoN(UInt32 inValue)
{
    return __builtin_bswap32(inValue);
}
inline UInt32 EndianU32_NtoB(UInt32 inValue)
{
    return __builtin_bswap32(inValue);
}
inline UInt64 EndianU64_BtoN(UInt64 inValue)
{
    return __builtin_bswap64(inValue);
}
inline UInt64 EndianU64_NtoB(UInt64 inValue)
{
    return __builtin_bswap64(inValue);
}
inline SInt16 EndianS16_LtoN(SInt16 inValue)
{
    return inValue;
}
inline UInt16 EndianU16_LtoN(UInt16 inValue)
{
    return inValue;
}
inline SInt32 EndianS32_LtoN(SInt32 inValue)
{
    return inValue;
}
inline UInt32 EndianU32_LtoN(UInt32 inValue)
{
    return inValue;
}

#endif
