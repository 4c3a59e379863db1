// What volumes say of themselves: PBHGetVInfo, PBXGetVolInfo, FSGetVolumeInfo, PBHGetVolParms.
#include "Dates.h"
#include "FileReferences.h"
#include "ItemFacts.h"
#include "Listing.h"
#include "OpenFiles.h"
#include "ParameterBlock.h"
#include "UnicodeNames.h"

#include <foundation/MacRoman.h>

#include <algorithm>
#include <cstring>
#include <new>
#include <sys/statvfs.h>

using namespace lampblack;
using namespace lampblack::files;

namespace {

constexpr UInt16 kSignature = 0x4244, kExtendedSignature = 0x482B; // 'BD' and 'H+'
constexpr UInt64 kOldLimit = 0x7FFFFFFF;                           // the most that callers of old take
constexpr UInt16 kFirstBitMapBlock = 3, kFirstBlock = 16;          // where they are on a disk of that format
constexpr SInt16 kDriver = -33;

struct VolumeFacts {
    const Volume& volume;
    UInt64 total = 0, free = 0; // bytes
    UInt32 block = kAllocationBlock;
    UInt32 nodes = 0;              // files and folders, which the host counts together
    UInt32 folders = 0, files = 0; // at the root
    bool isReadOnly = false, isDefault = false, hasOpenFiles = false;
    timespec created = {}, modified = {};
};

UInt32 Cap32(UInt64 inCount)
{
    return (UInt32)std::min<UInt64>(inCount, 0xFFFFFFFF);
}

void AskHost(const std::filesystem::path& inRoot, VolumeFacts* outFacts)
{
    struct statvfs status;
    if (statvfs(inRoot.c_str(), &status) != 0)
        return;
    outFacts->total = (UInt64)status.f_blocks * status.f_frsize;
    outFacts->free = (UInt64)status.f_bavail * status.f_frsize;
    outFacts->block = Cap32(status.f_frsize);
    outFacts->nodes = Cap32(status.f_files - std::min(status.f_ffree, status.f_files));
    outFacts->isReadOnly = status.f_flag & ST_RDONLY;
}

void CountRoot(const std::filesystem::path& inRoot, VolumeFacts* outFacts)
{
    struct stat status;
    const auto listing = ListingOf(inRoot);
    for (const ListedName& name : listing->Names()) {
        const bool isFolder =
            lstat((inRoot / name.hostName).c_str(), &status) == 0 && S_ISDIR(status.st_mode);
        ++(isFolder ? outFacts->folders : outFacts->files);
    }
}

VolumeFacts FactsOf(const Volume& inVolume)
{
    VolumeFacts facts = { inVolume };
    AskHost(inVolume.path, &facts);
    CountRoot(inVolume.path, &facts);
    facts.isDefault = DefaultFolder().volume == inVolume.refNum;
    facts.hasOpenFiles = NthOpenFile(inVolume.refNum, 1);
    const Item root = { { inVolume.refNum, fsRtParID }, "", inVolume.name, true, true };
    ItemFacts rootFacts(root);
    if (rootFacts.Look() == noErr) {
        facts.created = rootFacts.Created();
        facts.modified = rootFacts.Modified();
    }
    return facts;
}

UInt16 FlagsOf(const VolumeFacts& inFacts)
{
    int flags = inFacts.isReadOnly ? kFSVolFlagHardwareLockedMask : 0;
    flags |= inFacts.isDefault ? kFSVolFlagDefaultVolumeMask : 0;
    flags |= inFacts.hasOpenFiles ? kFSVolFlagFilesOpenMask : 0;
    return (UInt16)flags;
}

UInt16 DriveOf(const Volume& inVolume)
{
    return (UInt16)-inVolume.refNum;
}

// Block size and counts with which 16 bits reach as far as possible, but no farther than the old limit.
template <class Block>
void FillOldSizes(const VolumeFacts& inFacts, Block* outBlock)
{
    const UInt64 total = std::min(inFacts.total, kOldLimit), free = std::min(inFacts.free, kOldLimit);
    UInt64 size = std::clamp<UInt64>(inFacts.block, 512, 0x8000);
    while (total / size > 0xFFFF)
        size *= 2;
    outBlock->ioVAlBlkSiz = (UInt32)size;
    outBlock->ioVClpSiz = (UInt32)size * 4;
    outBlock->ioVNmAlBlks = (UInt16)(total / size);
    outBlock->ioVFrBlk = (UInt16)(free / size);
}

// What HVolumeParam and XVolumeParam have in common.
template <class Block>
void FillBlock(const VolumeFacts& inFacts, Block* outBlock)
{
    FillOldSizes(inFacts, outBlock);
    outBlock->ioVCrDate = LocalDateOf(inFacts.created);
    outBlock->ioVLsMod = LocalDateOf(inFacts.modified);
    outBlock->ioVAtrb = (SInt16)FlagsOf(inFacts);
    outBlock->ioVNmFls = (UInt16)std::min<UInt32>(inFacts.files, 0xFFFF);
    outBlock->ioVBitMap = kFirstBitMapBlock;
    outBlock->ioAllocPtr = 0;
    outBlock->ioAlBlSt = kFirstBlock;
    outBlock->ioVNxtCNID = (UInt32)NextNodeID();
    outBlock->ioVSigWord = kSignature;
    outBlock->ioVDrvInfo = (SInt16)DriveOf(inFacts.volume);
    outBlock->ioVDRefNum = kDriver;
    outBlock->ioVFSID = 0;
    outBlock->ioVBkUp = 0;
    outBlock->ioVSeqNum = 0;
    outBlock->ioVWrCnt = 0;
    outBlock->ioVFilCnt = inFacts.nodes - std::min(inFacts.nodes, inFacts.folders);
    outBlock->ioVDirCnt = inFacts.folders;
    std::memset(outBlock->ioVFndrInfo, 0, sizeof outBlock->ioVFndrInfo);
    outBlock->ioVRefNum = inFacts.volume.refNum;
    if (outBlock->ioNamePtr)
        foundation::PascalFromMacRoman(inFacts.volume.name, outBlock->ioNamePtr, 27);
}

const Volume* NthVolume(size_t inIndex)
{
    return inIndex <= Volumes().size() ? &Volumes()[inIndex - 1] : nullptr;
}

const Volume* AskedFor(SInt16 inIndex, ConstStr255Param inName, SInt16 inRefNum)
{
    if (inIndex > 0)
        return NthVolume((size_t)inIndex);
    return inIndex < 0 ? VolumeOfName(inName, inRefNum) : FindVolume(inRefNum);
}

OSErr GetVolumeInfo(HVolumeParam* ioBlock)
{
    const Volume* volume = AskedFor(ioBlock->ioVolIndex, ioBlock->ioNamePtr, ioBlock->ioVRefNum);
    if (!volume)
        return nsvErr;
    FillBlock(FactsOf(*volume), ioBlock);
    return noErr;
}

OSErr GetExtendedInfo(XVolumeParam* ioBlock)
{
    const Volume* volume = AskedFor(ioBlock->ioVolIndex, ioBlock->ioNamePtr, ioBlock->ioVRefNum);
    if (!volume)
        return nsvErr;
    const VolumeFacts facts = FactsOf(*volume);
    FillBlock(facts, ioBlock);
    ioBlock->ioVSigWord = kExtendedSignature;
    ioBlock->ioVAlBlkSiz = facts.block;
    ioBlock->ioVClpSiz = facts.block * 4;
    ioBlock->ioVTotalBytes = facts.total;
    ioBlock->ioVFreeBytes = facts.free;
    return noErr;
}

void FillDates(FSVolumeInfoBitmap inWhich, const VolumeFacts& inFacts, FSVolumeInfo* outInfo)
{
    if (inWhich & kFSVolInfoCreateDate)
        outInfo->createDate = UTCDateOf(inFacts.created);
    if (inWhich & kFSVolInfoModDate)
        outInfo->modifyDate = UTCDateOf(inFacts.modified);
    if (inWhich & kFSVolInfoBackupDate)
        outInfo->backupDate = {};
    if (inWhich & kFSVolInfoCheckedDate)
        outInfo->checkedDate = {};
}

void FillSizes(FSVolumeInfoBitmap inWhich, const VolumeFacts& inFacts, FSVolumeInfo* outInfo)
{
    if (inWhich & kFSVolInfoFileCount)
        outInfo->fileCount = inFacts.nodes - std::min(inFacts.nodes, inFacts.folders);
    if (inWhich & kFSVolInfoDirCount)
        outInfo->folderCount = inFacts.folders;
    if (inWhich & kFSVolInfoSizes) {
        outInfo->totalBytes = inFacts.total;
        outInfo->freeBytes = inFacts.free;
    }
    if (inWhich & kFSVolInfoBlocks) {
        outInfo->blockSize = inFacts.block;
        outInfo->totalBlocks = Cap32(inFacts.total / inFacts.block);
        outInfo->freeBlocks = Cap32(inFacts.free / inFacts.block);
    }
    if (inWhich & kFSVolInfoNextAlloc)
        outInfo->nextAllocation = 0;
    if (inWhich & kFSVolInfoRsrcClump)
        outInfo->rsrcClumpSize = inFacts.block * 4;
    if (inWhich & kFSVolInfoDataClump)
        outInfo->dataClumpSize = inFacts.block * 4;
}

void FillRest(FSVolumeInfoBitmap inWhich, const VolumeFacts& inFacts, FSVolumeInfo* outInfo)
{
    if (inWhich & kFSVolInfoNextID)
        outInfo->nextCatalogID = (UInt32)NextNodeID();
    if (inWhich & kFSVolInfoFinderInfo)
        std::memset(outInfo->finderInfo, 0, sizeof outInfo->finderInfo);
    if (inWhich & kFSVolInfoFlags)
        outInfo->flags = FlagsOf(inFacts);
    if (inWhich & kFSVolInfoFSInfo) {
        outInfo->filesystemID = 0;
        outInfo->signature = kExtendedSignature;
    }
    if (inWhich & kFSVolInfoDriveInfo) {
        outInfo->driveNumber = DriveOf(inFacts.volume);
        outInfo->driverRefNum = kDriver;
    }
}

OSErr GetVolParms(HIOParam* ioBlock)
{
    if (!ioBlock->ioBuffer || ioBlock->ioReqCount < 0)
        return paramErr;
    if (!VolumeOfName(ioBlock->ioNamePtr, ioBlock->ioVRefNum))
        return nsvErr;
    GetVolParmsInfoBuffer info = {};
    info.vMVersion = 4;
    info.vMAttrib = (SInt32)(1u << bLimitFCBs | 1u << bNoBootBlks);
    info.vMMaxNameLength = 31;
    ioBlock->ioActCount = std::min(ioBlock->ioReqCount, (SInt32)sizeof info);
    std::memcpy(ioBlock->ioBuffer, &info, (size_t)ioBlock->ioActCount);
    return noErr;
}

} // namespace

OSErr PBHGetVInfoSync(HParmBlkPtr paramBlock)
try {
    if (!paramBlock)
        return paramErr;
    return Finish(paramBlock->volumeParam, GetVolumeInfo(&paramBlock->volumeParam));
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr PBXGetVolInfoSync(XVolumeParamPtr paramBlock)
try {
    if (!paramBlock)
        return paramErr;
    return Finish(*paramBlock, GetExtendedInfo(paramBlock));
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr GetVInfo(SInt16 drvNum, StringPtr volName, SInt16* vRefNum, SInt32* freeBytes)
try {
    const Volume* volume = FindVolume(drvNum);
    if (!volume)
        return nsvErr;
    if (volName)
        foundation::PascalFromMacRoman(volume->name, volName, 27);
    if (vRefNum)
        *vRefNum = volume->refNum;
    if (freeBytes)
        *freeBytes = (SInt32)std::min(FactsOf(*volume).free, kOldLimit);
    return noErr;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSGetVolumeInfo(FSVolumeRefNum volume, ItemCount volumeIndex, FSVolumeRefNum* actualVolume,
                      FSVolumeInfoBitmap whichInfo, FSVolumeInfo* info, HFSUniStr255* volumeName,
                      FSRef* rootDirectory)
try {
    if (whichInfo & ~(FSVolumeInfoBitmap)kFSVolInfoGettableInfo)
        return paramErr;
    const Volume* found = volumeIndex ? NthVolume(volumeIndex) : FindVolume(volume);
    Item root;
    if (!found || !ItemWithID({ found->refNum, fsRtDirID }, &root))
        return nsvErr;
    if (actualVolume)
        *actualVolume = found->refNum;
    if (info && whichInfo) {
        const VolumeFacts facts = FactsOf(*found);
        FillDates(whichInfo, facts, info);
        FillSizes(whichInfo, facts, info);
        FillRest(whichInfo, facts, info);
    }
    if (volumeName)
        *volumeName = UnicodeNameOf(root);
    if (rootDirectory)
        MakeRef(root, rootDirectory);
    return noErr;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr PBHGetVolParmsSync(HParmBlkPtr paramBlock)
try {
    if (!paramBlock)
        return paramErr;
    return Finish(paramBlock->ioParam, GetVolParms(&paramBlock->ioParam));
} catch (const std::bad_alloc&) {
    return memFullErr;
}
