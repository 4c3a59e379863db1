// Whole forks: into and out of handles, and from file to file.
#include "prefs/FileHelpers.h"

namespace {

constexpr Size kLargeBuffer = 0x80000, kSmallBuffer = 0x20000;
constexpr SInt16 kNotOpen = 0;

OSErr OpenFork(const FSSpec* inSpec, bool inIsResourceFork, SInt8 inPermission, SInt16* outRefNum)
{
    return inIsResourceFork ? FSpOpenRF(inSpec, inPermission, outRefNum)
                            : FSpOpenDF(inSpec, inPermission, outRefNum);
}

Handle NewCopyBuffer(OSErr* outErr)
{
    Handle buffer = NewHandle(kLargeBuffer);
    if (!buffer)
        buffer = NewHandle(kSmallBuffer);
    *outErr = noErr;
    if (!buffer)
        *outErr = MemError() != noErr ? MemError() : static_cast<OSErr>(memFullErr);
    return buffer;
}

// The size to read is set once and then is what the last read brought: kept, reads only shrink at the end.
OSErr CopyBytes(SInt16 inSource, SInt16 inDestination, SInt32 inLength, Handle inBuffer)
{
    SInt32 count = static_cast<SInt32>(GetHandleSize(inBuffer));
    OSErr err = noErr;
    for (SInt32 left = inLength; left > 0 && err == noErr; left -= count) {
        err = FSRead(inSource, &count, *inBuffer);
        if ((err != noErr && err != eofErr) || count == 0)
            break; // nothing more: the source has become shorter
        err = FSWrite(inDestination, &count, *inBuffer);
    }
    return err;
}

OSErr CopyThroughBuffer(SInt16 inSource, SInt16 inDestination, SInt32 inLength)
{
    OSErr err;
    const Handle buffer = NewCopyBuffer(&err);
    if (!buffer)
        return err;
    HLock(buffer);
    err = SetEOF(inDestination, inLength);
    if (err == noErr)
        err = SetFPos(inDestination, fsFromStart, 0);
    if (err == noErr)
        err = CopyBytes(inSource, inDestination, inLength, buffer);
    DisposeHandle(buffer);
    return err;
}

OSErr ReadFork(SInt16 inRefNum, SInt32 inLength, Handle inData)
{
    HLock(inData);
    const OSErr err = FSRead(inRefNum, &inLength, *inData);
    HUnlock(inData);
    return err;
}

} // namespace

OSStatus FSReadHandle(SInt16 inRefNum, Handle* outData)
{
    if (!outData)
        return paramErr;
    *outData = nullptr;
    SInt32 length = 0;
    OSErr err = GetEOF(inRefNum, &length);
    if (err != noErr)
        return err;
    const Handle data = NewHandle(length);
    if (!data)
        return MemError();
    err = ReadFork(inRefNum, length, data);
    if (err == noErr)
        *outData = data;
    else
        DisposeHandle(data);
    return err;
}

OSStatus FSpReadDF(const FSSpec* inSpec, Handle* outData)
{
    if (!inSpec || !outData)
        return paramErr;
    *outData = nullptr;
    SInt16 file = kNotOpen;
    OSStatus err = FSpOpenDF(inSpec, fsRdPerm, &file);
    if (err != noErr)
        return err;
    err = FSReadHandle(file, outData);
    FSClose(file);
    return err;
}

OSStatus FSWriteHandle(SInt16 inRefNum, Handle inData)
{
    if (!inData)
        return paramErr;
    SInt32 length = static_cast<SInt32>(GetHandleSize(inData));
    OSErr err = SetEOF(inRefNum, length);
    if (err == noErr)
        err = SetFPos(inRefNum, fsFromStart, 0);
    if (err != noErr)
        return err;
    const SInt8 state = HGetState(inData);
    HLock(inData);
    err = FSWrite(inRefNum, &length, *inData);
    HSetState(inData, state);
    return err;
}

OSStatus FSpWriteDF(const FSSpec* inSpec, Handle inData)
{
    if (!inSpec || !inData)
        return paramErr;
    SInt16 file = kNotOpen;
    OSStatus err = FSpOpenDF(inSpec, fsRdWrPerm, &file);
    if (err != noErr)
        return err;
    err = FSWriteHandle(file, inData);
    FSClose(file);
    FlushVol(nullptr, inSpec->vRefNum);
    return err;
}

OSStatus FSpCreateFile(const FSSpec* inSpec, OSType inCreator, OSType inType)
{
    if (!inSpec)
        return paramErr;
    OSErr err = FSpCreate(inSpec, inCreator, inType, smSystemScript);
    if (err != noErr && err != dupFNErr)
        return err;
    FSpCreateResFile(inSpec, inCreator, inType, smSystemScript);
    err = ResError();
    if (err != noErr && err != dupFNErr)
        return err;
    FInfo info;
    err = FSpGetFInfo(inSpec, &info);
    if (err != noErr || (info.fdCreator == inCreator && info.fdType == inType))
        return err;
    info.fdCreator = inCreator;
    info.fdType = inType;
    return FSpSetFInfo(inSpec, &info);
}

OSStatus FSpCopyFile(const FSSpec* inSource, const FSSpec* inDestination)
{
    if (!inSource || !inDestination)
        return paramErr;
    FInfo info;
    OSStatus err = FSpGetFInfo(inSource, &info);
    if (err == noErr)
        err = FSpCreateFile(inDestination, info.fdCreator, info.fdType);
    return err == noErr ? FSpCopyForks(inSource, inDestination) : err;
}

OSStatus FSpCopyForks(const FSSpec* inSource, const FSSpec* inDestination)
{
    const OSStatus err = FSpCopyFork(inSource, inDestination, false);
    return err == noErr ? FSpCopyFork(inSource, inDestination, true) : err;
}

OSStatus FSpCopyFork(const FSSpec* inSource, const FSSpec* inDestination, Boolean inResourceFork)
{
    if (!inSource || !inDestination)
        return paramErr;
    SInt16 source = kNotOpen, destination = kNotOpen;
    SInt32 length = 0;
    OSErr err = OpenFork(inSource, inResourceFork, fsRdPerm, &source);
    if (err != noErr)
        return err;
    err = GetEOF(source, &length);
    if (err == noErr && length > 0) { // kept: an empty fork changes nothing
        err = OpenFork(inDestination, inResourceFork, fsWrPerm, &destination);
        if (err == noErr) {
            err = CopyThroughBuffer(source, destination, length);
            FSClose(destination);
        }
    }
    FSClose(source);
    return err;
}
