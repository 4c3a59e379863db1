// Facts about files: sizes, dates, existence, volumes, versions.
#include "prefs/FileHelpers.h"

#include "prefs/ApplicationResources.h"
#include "prefs/FileRecords.h"

using lampblack::prefs::CatalogRecord;
using lampblack::prefs::CopyName;

namespace {

constexpr ResType kVersionType = 'vers';

bool IsFilled(const FSSpec* inSpec)
{
    return inSpec && inSpec->name[0] != 0 && inSpec->vRefNum != 0 && inSpec->parID != 0;
}

OSErr GetDates(SInt16 inVRefNum, SInt32 inDirID, ConstStr255Param inName, SInt64* outCreated,
               SInt64* outModified)
{
    CatalogRecord record(inVRefNum, inDirID, inName);
    const OSErr err = record.Get();
    if (err == noErr && outCreated)
        *outCreated = record.fBlock.hFileInfo.ioFlCrDat;
    if (err == noErr && outModified)
        *outModified = record.fBlock.hFileInfo.ioFlMdDat;
    return err;
}

OSErr ReadVersion(SInt16 inID, NumVersion* outVersion)
{
    const Handle resource = Get1Resource(kVersionType, inID);
    if (!resource)
        return resNotFound;
    const bool isWhole = GetHandleSize(resource) >= static_cast<Size>(sizeof *outVersion);
    if (isWhole)
        std::memcpy(outVersion, *resource, sizeof *outVersion);
    ReleaseResource(resource);
    return isWhole ? noErr : resNotFound;
}

} // namespace

OSStatus GetFileSize(SInt16 inVRefNum, SInt32 inDirID, ConstStr255Param inName, UInt32* outDataSize,
                     UInt32* outResourceSize)
{
    Str255 name;
    CopyName(inName, name);
    HParamBlockRec block = {};
    block.fileParam.ioNamePtr = name;
    block.fileParam.ioVRefNum = inVRefNum;
    block.fileParam.ioDirID = inDirID;
    const OSErr err = PBHGetFInfoSync(&block);
    if (err == noErr && outDataSize)
        *outDataSize = static_cast<UInt32>(block.fileParam.ioFlLgLen);
    if (err == noErr && outResourceSize)
        *outResourceSize = static_cast<UInt32>(block.fileParam.ioFlRLgLen);
    return err;
}

OSStatus FSpGetFileSize(const FSSpec* inSpec, UInt32* outDataSize, UInt32* outResourceSize)
{
    if (!inSpec)
        return paramErr;
    FSSpec spec = *inSpec;
    const OSStatus err = FSpNormalize(&spec);
    return err == noErr ? GetFileSize(spec.vRefNum, spec.parID, spec.name, outDataSize, outResourceSize)
                        : err;
}

OSStatus GetLongCreateDateTime(SInt16 inVRefNum, SInt32 inDirID, ConstStr255Param inName, SInt64* outDate)
{
    if (!outDate)
        return paramErr;
    *outDate = 0;
    return GetDates(inVRefNum, inDirID, inName, outDate, nullptr);
}

OSStatus GetLongModDateTime(SInt16 inVRefNum, SInt32 inDirID, ConstStr255Param inName, SInt64* outDate)
{
    if (!outDate)
        return paramErr;
    *outDate = 0;
    return GetDates(inVRefNum, inDirID, inName, nullptr, outDate);
}

OSStatus FSSetLongDateTime(SInt16 inVRefNum, SInt32 inDirID, ConstStr255Param inName, SInt64 inDate)
{
    CatalogRecord record(inVRefNum, inDirID, inName);
    const bool isDirectoryItself = record.fName[0] == 0;
    const OSErr err = record.Get();
    if (err != noErr)
        return err;
    HFileInfo& info = record.fBlock.hFileInfo;
    info.ioFlCrDat = info.ioFlMdDat = static_cast<UInt32>(inDate); // a folder's dates have the same places
    info.ioDirID = isDirectoryItself ? record.fBlock.dirInfo.ioDrParID : inDirID;
    return PBSetCatInfoSync(&record.fBlock);
}

OSStatus FSpGetLongCreateDateTime(const FSSpec* inSpec, SInt64* outDate)
{
    return inSpec ? GetLongCreateDateTime(inSpec->vRefNum, inSpec->parID, inSpec->name, outDate)
                  : OSStatus{ paramErr };
}

OSStatus FSpGetLongModDateTime(const FSSpec* inSpec, SInt64* outDate)
{
    return inSpec ? GetLongModDateTime(inSpec->vRefNum, inSpec->parID, inSpec->name, outDate)
                  : OSStatus{ paramErr };
}

OSStatus FSpSetLongDateTime(const FSSpec* inSpec, SInt64 inDate)
{
    return inSpec ? FSSetLongDateTime(inSpec->vRefNum, inSpec->parID, inSpec->name, inDate)
                  : OSStatus{ paramErr };
}

Boolean FSpExists(const FSSpec* inSpec)
{
    FInfo info;
    return IsFilled(inSpec) && FSpGetFInfo(inSpec, &info) == noErr;
}

OSStatus FSpIsDirectory(const FSSpec* inSpec, Boolean* outIsDirectory, SInt32* outDirID)
{
    if (!IsFilled(inSpec) || !outIsDirectory)
        return paramErr;
    SInt32 directory = fsRtParID; // kept: of a volume, not that of its root
    OSErr err = noErr;
    *outIsDirectory = inSpec->parID == fsRtParID;
    if (!*outIsDirectory) {
        CatalogRecord record(inSpec->vRefNum, inSpec->parID, inSpec->name);
        err = record.Get();
        *outIsDirectory = err == noErr && record.IsDirectory();
        directory = record.fBlock.dirInfo.ioDrDirID;
    }
    if (*outIsDirectory && outDirID)
        *outDirID = directory;
    return err;
}

SInt32 FSpGetFileID(const FSSpec* inSpec)
{
    return inSpec ? inSpec->parID : 0;
}

OSStatus FSpGetVersion(const FSSpec* inSpec, SInt16 inID, NumVersion* outVersion)
{
    if (!inSpec || !outVersion)
        return paramErr;
    const SInt16 saved = CurResFile();
    const SInt16 file = FSpOpenResFile(inSpec, fsRdPerm);
    OSErr err = ResError();
    if (file != kResFileNotOpened) {
        err = ReadVersion(inID, outVersion);
        CloseResFile(file);
    }
    UseResFile(saved);
    return err;
}

OSStatus GetVolumeInfoNoName(ConstStr255Param inPath, SInt16 inVRefNum, HParamBlockRec* outBlock)
{
    if (!outBlock)
        return paramErr;
    Str255 path;
    CopyName(inPath, path);
    outBlock->volumeParam.ioVRefNum = inVRefNum;
    outBlock->volumeParam.ioNamePtr = inPath ? path : nullptr;
    outBlock->volumeParam.ioVolIndex = inPath ? -1 : 0;
    const OSErr err = PBHGetVInfoSync(outBlock);
    outBlock->volumeParam.ioNamePtr = nullptr;
    return err;
}

OSStatus DetermineVRefNum(ConstStr255Param inPath, SInt16 inVRefNum, SInt16* outVRefNum)
{
    if (!outVRefNum)
        return paramErr;
    HParamBlockRec block = {};
    const OSStatus err = GetVolumeInfoNoName(inPath, inVRefNum, &block);
    if (err == noErr)
        *outVRefNum = block.volumeParam.ioVRefNum;
    return err;
}
