// The application's resource file and the 'CTL#' flipper.
#include "prefs/ApplicationResources.h"

#include <cstdio>
#include <utility>

#include "prefs/FileHelpers.h"
#include "util/ProcessHelpers.h"

namespace {

SInt16 fgApplicationResFile = -1;
bool fgIsInitialized = false;
SInt16 fgCurrentResourceFileID = 0;

bool IsFileOfCreator(SInt16 inVRefNum, SInt16 inRefNum, OSType inCreator)
{
    FSSpec spec;
    FInfo info;
    if (ResolveFileID(inVRefNum, inRefNum, &spec) != noErr || FSpGetFInfo(&spec, &info) != noErr)
        return false;
    // A file that says nothing of its creator belongs to an application that has none.
    return (info.fdCreator ? info.fdCreator : OSType{ kUnknownType }) == inCreator;
}

SInt16 FindResourceFileOfCreator(SInt16 inVRefNum, OSType inCreator)
{
    SInt16 refNum = 0;
    OSErr err = GetTopResourceFile(&refNum);
    while (err == noErr && refNum != 0) {
        if (IsFileOfCreator(inVRefNum, refNum, inCreator))
            return refNum;
        err = GetNextResourceFile(refNum, &refNum);
    }
    return 0;
}

OSStatus SetResult(OSErr inResult)
{
    LMSetResErr(inResult);
    return inResult;
}

// Why a look-up found nothing.
OSErr MissingReason()
{
    OSErr err = ResError();
    if (err == noErr)
        err = MemError();
    return err != noErr ? err : static_cast<OSErr>(resNotFound);
}

} // namespace

StResFile::StResFile(SInt16 inRefNum) : fSaved(CurResFile())
{
    if (inRefNum != -1 && inRefNum != fSaved)
        UseResFile(inRefNum);
}

StResFile::~StResFile()
{
    if (fSaved != -1)
        UseResFile(fSaved);
}

OSStatus InitResourceHelpers()
{
    if (!fgIsInitialized) {
        fgIsInitialized = true;
        fgApplicationResFile = GetCurrentResourceFileID();
    }
    if (CoreEndianInstallFlipper(kCoreEndianResourceManagerDomain, 'CTL#', flipCustomResources, nullptr) !=
        noErr)
        std::puts("Error installing byteswapper");
    return noErr;
}

SInt16 GetCurrentResourceFileID()
{
    if (fgCurrentResourceFileID != 0)
        return fgCurrentResourceFileID;
    OSType signature = 0;
    FSSpec application;
    if (GetCurrentSignature(&signature) == noErr && GetCurrentFSSpec(&application) == noErr)
        fgCurrentResourceFileID = FindResourceFileOfCreator(application.vRefNum, signature);
    return fgCurrentResourceFileID;
}

SInt16 GetApplicationResFile()
{
    return fgApplicationResFile;
}

Handle GetApplicationResource(OSType inType, SInt16 inID)
{
    if (fgApplicationResFile == -1) {
        LMSetResErr(fnfErr);
        return nullptr;
    }
    Handle resource = nullptr;
    OSErr err = noErr;
    {
        const StResFile file(fgApplicationResFile);
        resource = Get1Resource(inType, inID);
        if (!resource)
            err = MissingReason();
    }
    LMSetResErr(err);
    return resource;
}

OSStatus AddApplicationResource(Handle inData, OSType inType, SInt16 inID, ConstStr255Param inName)
{
    if (fgApplicationResFile == -1)
        return SetResult(fnfErr);
    OSErr err = noErr;
    {
        const StResFile file(fgApplicationResFile);
        AddResource(inData, inType, inID, inName);
        err = ResError();
        if (err == noErr)
            UpdateResFile(fgApplicationResFile);
    }
    return SetResult(err);
}

OSStatus CopyApplicationResource(OSType inType, SInt16 inID, ConstStr255Param inName)
{
    const Handle resource = GetApplicationResource(inType, inID);
    if (!resource)
        return SetResult(ResError() != noErr ? ResError() : static_cast<SInt16>(resNotFound));
    DetachResource(resource);
    AddResource(resource, inType, inID, inName);
    const OSErr err = ResError();
    if (err == noErr)
        WriteResource(resource);
    return SetResult(err);
}

OSStatus RemoveResourceByID(OSType inType, SInt16 inID)
{
    SetResLoad(false);
    const Handle resource = Get1Resource(inType, inID);
    const OSErr missing = ResError();
    SetResLoad(true);
    if (!resource)
        return SetResult(missing == memFullErr ? memFullErr : noErr);
    RemoveResource(resource);
    const OSErr err = ResError();
    if (err == noErr)
        DisposeHandle(resource);
    else
        ReleaseResource(resource);
    UpdateResFile(CurResFile());
    return SetResult(err);
}

OSStatus flipCustomResources(OSType inDomain, OSType inType, SInt16 inID, void* ioData, ByteCount inSize,
                             Boolean inCurrentlyNative, void* inRefCon)
{
    if (inType != 'CTL#')
        return handlerNotFoundErr;
    return flipCTLHashResource(inDomain, inType, inID, ioData, inSize, inCurrentlyNative, inRefCon);
}

OSStatus flipCTLHashResource(OSType, OSType, SInt16, void* ioData, ByteCount inSize,
                             Boolean inCurrentlyNative, void*)
{
    if (inCurrentlyNative || !ioData)
        return noErr;
    UInt8* const bytes = static_cast<UInt8*>(ioData);
    for (ByteCount word = 0; word < inSize / 2; ++word)
        std::swap(bytes[2 * word], bytes[2 * word + 1]);
    return noErr;
}
