// FSGetCatalogInfo: each field asked for, from the host's status of the file and from its forks.
#include "CatalogInfo.h"

#include "Dates.h"
#include "FileReferences.h"
#include "ItemFacts.h"
#include "UnicodeNames.h"

#include <foundation/BigEndian.h>

#include <cstring>
#include <new>
#include <unistd.h>

using namespace lampblack;
using namespace lampblack::files;

namespace {

constexpr UInt32 kMacRomanHint = 0;

UTCDateTime DateOf(const statx_timestamp& inTime)
{
    return UTCDateOf({ (time_t)inTime.tv_sec, (long)inTime.tv_nsec });
}

void FillPlace(FSCatalogInfoBitmap inWhich, ItemFacts& ioFacts, FSCatalogInfo* outInfo)
{
    const Item& item = ioFacts.TheItem();
    if (inWhich & kFSCatInfoNodeFlags)
        outInfo->nodeFlags = ioFacts.Attributes();
    if (inWhich & kFSCatInfoVolume)
        outInfo->volume = item.parent.volume;
    if (inWhich & kFSCatInfoParentDirID)
        outInfo->parentDirID = (UInt32)item.parent.id;
    if (inWhich & kFSCatInfoNodeID)
        outInfo->nodeID = (UInt32)NodeOf(item).id;
    if (inWhich & kFSCatInfoValence)
        outInfo->valence = ioFacts.Valence();
    if (inWhich & kFSCatInfoTextEncoding)
        outInfo->textEncodingHint = kMacRomanHint;
    if (inWhich & kFSCatInfoSharingFlags)
        outInfo->sharingFlags = 0; // nothing is shared from here
    if (inWhich & kFSCatInfoUserPrivs)
        outInfo->userPrivileges = 0; // no access is denied by a server
}

void FillDates(FSCatalogInfoBitmap inWhich, ItemFacts& ioFacts, FSCatalogInfo* outInfo)
{
    const struct statx& status = ioFacts.Status();
    if (inWhich & kFSCatInfoCreateDate)
        outInfo->createDate = UTCDateOf(ioFacts.Created());
    if (inWhich & kFSCatInfoContentMod)
        outInfo->contentModDate = UTCDateOf(ioFacts.Modified());
    if (inWhich & kFSCatInfoAttrMod)
        outInfo->attributeModDate = DateOf(status.stx_ctime);
    if (inWhich & kFSCatInfoAccessDate)
        outInfo->accessDate = DateOf(status.stx_atime);
    if (inWhich & kFSCatInfoBackupDate)
        outInfo->backupDate = {};
}

UInt8 UserAccess(const Item& inItem)
{
    const std::filesystem::path path = PathOf(inItem);
    const auto bit = [&](int mode) { return access(path.c_str(), mode) == 0 ? mode : 0; };
    return (UInt8)(bit(R_OK) | bit(W_OK) | bit(X_OK));
}

void FillPermissions(ItemFacts& ioFacts, FSCatalogInfo* outInfo)
{
    FSPermissionInfo permissions = {};
    permissions.userID = ioFacts.Status().stx_uid;
    permissions.groupID = ioFacts.Status().stx_gid;
    permissions.mode = ioFacts.Status().stx_mode;
    permissions.userAccess = UserAccess(ioFacts.TheItem());
    std::memcpy(outInfo->permissions, &permissions, sizeof permissions);
}

void FlipWords(UInt8* ioBytes, size_t inCount)
{
    for (size_t i = 0; i < inCount; ++i)
        foundation::Flip16(ioBytes + 2 * i);
}

// In native order: an FInfo of a file, a DInfo of a folder, whose fields are eight words.
void FillFinderInfo(ItemFacts& ioFacts, UInt8* outSixteen)
{
    ioFacts.FinderBytes(outSixteen);
    if (ioFacts.TheItem().isFolder)
        return FlipWords(outSixteen, 8);
    const FInfo info = FinderInfoFromBytes(outSixteen);
    std::memcpy(outSixteen, &info, sizeof info);
}

// An FXInfo or a DXInfo: they differ in the first eight bytes, which are four words or a point and a number.
void FillExtendedInfo(ItemFacts& ioFacts, UInt8* outSixteen)
{
    UInt8 bytes[16];
    ioFacts.ExtendedBytes(bytes);
    const FXInfo info = ExtendedInfoFromBytes(bytes);
    std::memcpy(outSixteen, &info, sizeof info);
    if (!ioFacts.TheItem().isFolder)
        return;
    std::memcpy(outSixteen, bytes, 8);
    FlipWords(outSixteen, 2);
    foundation::Flip32(outSixteen + 4);
}

void FillForks(FSCatalogInfoBitmap inWhich, ItemFacts& ioFacts, FSCatalogInfo* outInfo)
{
    if (inWhich & kFSCatInfoFinderInfo)
        FillFinderInfo(ioFacts, outInfo->finderInfo);
    if (inWhich & kFSCatInfoFinderXInfo)
        FillExtendedInfo(ioFacts, outInfo->extFinderInfo);
    if (inWhich & kFSCatInfoDataSizes) {
        outInfo->dataLogicalSize = ioFacts.DataSize();
        outInfo->dataPhysicalSize = PhysicalSize(ioFacts.DataSize());
    }
    if (inWhich & kFSCatInfoRsrcSizes) {
        outInfo->rsrcLogicalSize = ioFacts.ResourceSize();
        outInfo->rsrcPhysicalSize = PhysicalSize(ioFacts.ResourceSize());
    }
}

void FillParent(const Item& inItem, FSRef* outParent)
{
    Item parent;
    *outParent = {};
    if (inItem.parent.id != fsRtParID && ItemWithID(inItem.parent, &parent))
        MakeRef(parent, outParent);
}

} // namespace

OSErr lampblack::files::FillCatalogInfo(FSCatalogInfoBitmap inWhich, const Item& inItem,
                                        FSCatalogInfo* outInfo)
{
    ItemFacts facts(inItem);
    const OSErr error = facts.Look();
    if (error != noErr)
        return error;
    FillPlace(inWhich, facts, outInfo);
    FillDates(inWhich, facts, outInfo);
    if (inWhich & kFSCatInfoPermissions)
        FillPermissions(facts, outInfo);
    FillForks(inWhich, facts, outInfo);
    return noErr;
}

OSErr FSGetCatalogInfo(const FSRef* ref, FSCatalogInfoBitmap whichInfo, FSCatalogInfo* catalogInfo,
                       HFSUniStr255* outName, FSSpec* fsSpec, FSRef* parentRef)
try {
    Item item;
    OSErr error = ItemOfRef(ref, &item);
    if (error == noErr && (whichInfo & ~(FSCatalogInfoBitmap)kFSCatInfoGettableInfo))
        error = paramErr;
    if (error == noErr && catalogInfo)
        error = FillCatalogInfo(whichInfo, item, catalogInfo);
    if (error != noErr)
        return error;
    if (outName)
        *outName = UnicodeNameOf(item);
    if (fsSpec)
        MakeSpec(item, fsSpec);
    if (parentRef)
        FillParent(item, parentRef);
    return noErr;
} catch (const std::bad_alloc&) {
    return memFullErr;
}
