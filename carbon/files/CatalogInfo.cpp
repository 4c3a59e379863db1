// FSGetCatalogInfo: each field asked for, from the host's status of the file and from its forks.
#include "FileReferences.h"
#include "ForkLocator.h"
#include "OpenFiles.h"

#include <foundation/MacRoman.h>

#include <algorithm>
#include <cstring>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

using namespace lampblack::files;

namespace {

constexpr UInt64 kBlock = 4096;
constexpr int64_t kSecondsTo1970 = 2082844800; // from midnight, 1 January 1904
constexpr UInt32 kMacRomanHint = 0;

// What is asked about; the forks are looked for only once, and only when a field needs them.
struct Question {
    const Item& item;
    struct statx status = {};
    std::optional<LocatedForks> forks;

    const LocatedForks& Forks()
    {
        if (!forks)
            forks = item.isFolder ? LocatedForks() : LocateForks(PathOf(item));
        return *forks;
    }
};

UTCDateTime DateOf(const statx_timestamp& inTime)
{
    const uint64_t seconds = (uint64_t)(inTime.tv_sec + kSecondsTo1970);
    const uint64_t fraction = ((uint64_t)inTime.tv_nsec << 16) / 1000000000u;
    return { (UInt16)(seconds >> 32), (UInt32)seconds, (UInt16)fraction };
}

UInt16 NodeFlags(const Item& inItem)
{
    UInt16 flags = inItem.isFolder ? kFSNodeIsDirectoryMask : 0;
    if (access(PathOf(inItem).c_str(), W_OK) != 0)
        flags |= kFSNodeLockedMask;
    if (IsOpen(inItem, true))
        flags |= kFSNodeResOpenMask | kFSNodeForkOpenMask;
    if (IsOpen(inItem, false))
        flags |= kFSNodeDataOpenMask | kFSNodeForkOpenMask;
    return flags;
}

UInt64 PhysicalSize(UInt64 inSize)
{
    return (inSize + kBlock - 1) / kBlock * kBlock;
}

void FillPlace(FSCatalogInfoBitmap inWhich, Question& ioQuestion, FSCatalogInfo* outInfo)
{
    const Item& item = ioQuestion.item;
    if (inWhich & kFSCatInfoNodeFlags)
        outInfo->nodeFlags = NodeFlags(item);
    if (inWhich & kFSCatInfoVolume)
        outInfo->volume = item.parent.volume;
    if (inWhich & kFSCatInfoParentDirID)
        outInfo->parentDirID = (UInt32)item.parent.id;
    if (inWhich & kFSCatInfoNodeID)
        outInfo->nodeID = (UInt32)NodeOf(item).id;
    if (inWhich & kFSCatInfoValence)
        outInfo->valence = item.isFolder ? (UInt32)NamesIn(PathOf(item)).size() : 0;
    if (inWhich & kFSCatInfoTextEncoding)
        outInfo->textEncodingHint = kMacRomanHint;
    if (inWhich & kFSCatInfoSharingFlags)
        outInfo->sharingFlags = 0; // nothing is shared from here
    if (inWhich & kFSCatInfoUserPrivs)
        outInfo->userPrivileges = 0; // no access is denied by a server
}

void FillDates(FSCatalogInfoBitmap inWhich, Question& ioQuestion, FSCatalogInfo* outInfo)
{
    const struct statx& status = ioQuestion.status;
    const bool hasBirth = status.stx_mask & STATX_BTIME;
    if (inWhich & kFSCatInfoCreateDate)
        outInfo->createDate = DateOf(hasBirth ? status.stx_btime : status.stx_mtime);
    if (inWhich & kFSCatInfoContentMod)
        outInfo->contentModDate = DateOf(status.stx_mtime);
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

void FillPermissions(Question& ioQuestion, FSCatalogInfo* outInfo)
{
    FSPermissionInfo permissions = {};
    permissions.userID = ioQuestion.status.stx_uid;
    permissions.groupID = ioQuestion.status.stx_gid;
    permissions.mode = ioQuestion.status.stx_mode;
    permissions.userAccess = UserAccess(ioQuestion.item);
    std::memcpy(outInfo->permissions, &permissions, sizeof permissions);
}

void FillForks(FSCatalogInfoBitmap inWhich, Question& ioQuestion, FSCatalogInfo* outInfo)
{
    if (inWhich & kFSCatInfoFinderInfo)
        std::memcpy(outInfo->finderInfo, &ioQuestion.Forks().finderInfo, sizeof(FInfo));
    if (inWhich & kFSCatInfoFinderXInfo)
        std::memcpy(outInfo->extFinderInfo, &ioQuestion.Forks().extendedFinderInfo, sizeof(FXInfo));
    if (inWhich & kFSCatInfoDataSizes) {
        outInfo->dataLogicalSize = ioQuestion.Forks().dataFork.size();
        outInfo->dataPhysicalSize = PhysicalSize(outInfo->dataLogicalSize);
    }
    if (inWhich & kFSCatInfoRsrcSizes) {
        outInfo->rsrcLogicalSize = ioQuestion.Forks().resourceFork.size();
        outInfo->rsrcPhysicalSize = PhysicalSize(outInfo->rsrcLogicalSize);
    }
}

OSErr FillInfo(FSCatalogInfoBitmap inWhich, const Item& inItem, FSCatalogInfo* outInfo)
{
    Question question = { inItem, {}, {} };
    if (statx(AT_FDCWD, PathOf(inItem).c_str(), 0, STATX_BASIC_STATS | STATX_BTIME, &question.status) != 0)
        return fnfErr;
    FillPlace(inWhich, question, outInfo);
    FillDates(inWhich, question, outInfo);
    if (inWhich & kFSCatInfoPermissions)
        FillPermissions(question, outInfo);
    FillForks(inWhich, question, outInfo);
    return noErr;
}

// The name in full: no length of 31 and no Mac Roman here.
void FillName(const Item& inItem, HFSUniStr255* outName)
{
    std::string name =
        inItem.hostName.empty() ? lampblack::foundation::Utf8FromMacRoman(inItem.macName) : inItem.hostName;
    std::replace(name.begin(), name.end(), ':', '/');
    const std::u16string text = lampblack::foundation::Utf16FromUtf8(name);
    *outName = {};
    outName->length = (UInt16)std::min<size_t>(text.size(), 255);
    std::copy_n(text.begin(), outName->length, outName->unicode);
}

void FillParent(const Item& inItem, FSRef* outParent)
{
    Item parent;
    *outParent = {};
    if (inItem.parent.id != fsRtParID && ItemWithID(inItem.parent, &parent))
        MakeRef(parent, outParent);
}

} // namespace

OSErr FSGetCatalogInfo(const FSRef* ref, FSCatalogInfoBitmap whichInfo, FSCatalogInfo* catalogInfo,
                       HFSUniStr255* outName, FSSpec* fsSpec, FSRef* parentRef)
{
    Item item;
    OSErr error = ItemOfRef(ref, &item);
    if (error == noErr && (whichInfo & ~(FSCatalogInfoBitmap)kFSCatInfoGettableInfo))
        error = paramErr;
    if (error == noErr && catalogInfo)
        error = FillInfo(whichInfo, item, catalogInfo);
    if (error != noErr)
        return error;
    if (outName)
        FillName(item, outName);
    if (fsSpec)
        MakeSpec(item, fsSpec);
    if (parentRef)
        FillParent(item, parentRef);
    return noErr;
}
