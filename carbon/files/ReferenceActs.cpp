// Acts by reference: making, deleting, moving, renaming, exchanging, setting catalog information.
#include "Dates.h"
#include "Durable.h"
#include "FileReferences.h"
#include "ItemChanges.h"
#include "UnicodeNames.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <new>
#include <sys/stat.h>

using namespace lampblack::files;

namespace {

constexpr UInt16 kPermissionBits = 07777;

OSErr SetAccessDate(const FSCatalogInfo& inInfo, const Item& inItem)
{
    const timespec times[2] = { TimeOfUTCDate(inInfo.accessDate), { 0, UTIME_OMIT } };
    const int result = utimensat(AT_FDCWD, PathOf(inItem).c_str(), times, AT_SYMLINK_NOFOLLOW);
    return result == 0 ? (OSErr)noErr : ErrorOfHost(errno);
}

OSErr SetDates(FSCatalogInfoBitmap inWhich, const FSCatalogInfo& inInfo, const Item& inItem)
{
    const timespec created = TimeOfUTCDate(inInfo.createDate);
    const timespec modified = TimeOfUTCDate(inInfo.contentModDate);
    NewDates dates;
    if (inWhich & kFSCatInfoCreateDate)
        dates.created = &created;
    if (inWhich & kFSCatInfoContentMod)
        dates.modified = &modified;
    OSErr error = dates.created || dates.modified ? SetItemDates(inItem, dates) : (OSErr)noErr;
    if (error == noErr && (inWhich & kFSCatInfoAccessDate))
        error = SetAccessDate(inInfo, inItem);
    return error;
}

OSErr SetFinderInfo(FSCatalogInfoBitmap inWhich, const FSCatalogInfo& inInfo, const Item& inItem)
{
    const void* info = inWhich & kFSCatInfoFinderInfo ? inInfo.finderInfo : nullptr;
    const void* extended = inWhich & kFSCatInfoFinderXInfo ? inInfo.extFinderInfo : nullptr;
    return info || extended ? SetItemInfo(inItem, info, extended) : (OSErr)noErr;
}

OSErr SetPermissions(FSCatalogInfoBitmap inWhich, const FSCatalogInfo& inInfo, const Item& inItem)
{
    FSPermissionInfo permissions;
    std::memcpy(&permissions, inInfo.permissions, sizeof permissions);
    if (!(inWhich & kFSCatInfoPermissions) || inItem.isLink)
        return noErr;
    const int result = chmod(PathOf(inItem).c_str(), permissions.mode & kPermissionBits);
    return result == 0 ? (OSErr)noErr : ErrorOfHost(errno);
}

bool IsSettable(FSCatalogInfoBitmap inWhich, const FSCatalogInfo* inInfo)
{
    return (inWhich & ~(FSCatalogInfoBitmap)kFSCatInfoSettableInfo) == 0 && (!inWhich || inInfo);
}

// inInfo may be null when nothing is to be set. The lock comes last: a locked file takes nothing else.
OSErr SetInfo(FSCatalogInfoBitmap inWhich, const FSCatalogInfo* inInfo, const Item& inItem)
{
    if (!inWhich)
        return noErr;
    OSErr error = SetFinderInfo(inWhich, *inInfo, inItem);
    if (error == noErr)
        error = SetDates(inWhich, *inInfo, inItem);
    if (error == noErr)
        error = SetPermissions(inWhich, *inInfo, inItem);
    if (error == noErr && (inWhich & kFSCatInfoNodeFlags) && !inItem.isFolder)
        error = SetItemLock(inItem, inInfo->nodeFlags & kFSNodeLockedMask);
    return error;
}

// The place for a new item: what no name in the folder is the same as.
OSErr FindNewPlace(const FSRef* inParent, UniCharCount inLength, const UniChar* inName, Item* outItem)
{
    Item parent;
    OSErr error = FolderOfRef(inParent, &parent);
    if (error == noErr)
        error = LookUpUnicode(NodeOf(parent), inLength, inName, outItem);
    if (error == noErr)
        return dupFNErr;
    return error == fnfErr ? (OSErr)noErr : error;
}

void GiveResults(const Item& inItem, FSRef* outRef, FSSpec* outSpec)
{
    if (outRef)
        MakeRef(inItem, outRef);
    if (outSpec)
        MakeSpec(inItem, outSpec);
}

// A file is made with its Finder information, so that no other program sees it without.
OSErr MakeFile(FSCatalogInfoBitmap inWhich, const FSCatalogInfo* inInfo, Item* ioItem)
{
    FInfo info = {};
    FXInfo extended = {};
    if (inWhich & kFSCatInfoFinderInfo)
        std::memcpy(&info, inInfo->finderInfo, sizeof info);
    if (inWhich & kFSCatInfoFinderXInfo)
        std::memcpy(&extended, inInfo->extFinderInfo, sizeof extended);
    const OSErr error = CreateFileItem(ioItem, info, extended);
    constexpr FSCatalogInfoBitmap kDone = kFSCatInfoFinderInfo | kFSCatInfoFinderXInfo;
    return error != noErr ? error : SetInfo(inWhich & ~kDone, inInfo, *ioItem);
}

OSErr MakeFolder(FSCatalogInfoBitmap inWhich, const FSCatalogInfo* inInfo, Item* ioItem)
{
    const OSErr error = CreateFolderItem(ioItem);
    return error != noErr ? error : SetInfo(inWhich, inInfo, *ioItem);
}

OSErr MakeNamed(OSErr (*inMake)(FSCatalogInfoBitmap, const FSCatalogInfo*, Item*), const FSRef* inParent,
                UniCharCount inLength, const UniChar* inName, FSCatalogInfoBitmap inWhich,
                const FSCatalogInfo* inInfo, Item* outItem)
{
    OSErr error = IsSettable(inWhich, inInfo) ? noErr : paramErr;
    error = error == noErr ? FindNewPlace(inParent, inLength, inName, outItem) : error;
    return error == noErr ? inMake(inWhich, inInfo, outItem) : error;
}

} // namespace

OSErr FSSetCatalogInfo(const FSRef* ref, FSCatalogInfoBitmap whichInfo, const FSCatalogInfo* catalogInfo)
try {
    Item item;
    const OSErr error = ItemOfRef(ref, &item);
    if (error != noErr)
        return error;
    const bool isSettable = catalogInfo && IsSettable(whichInfo, catalogInfo);
    return isSettable ? SetInfo(whichInfo, catalogInfo, item) : (OSErr)paramErr;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSCreateFileUnicode(const FSRef* parentRef, UniCharCount nameLength, const UniChar* name,
                          FSCatalogInfoBitmap whichInfo, const FSCatalogInfo* catalogInfo, FSRef* newRef,
                          FSSpec* newSpec)
try {
    Item item;
    const OSErr error = MakeNamed(MakeFile, parentRef, nameLength, name, whichInfo, catalogInfo, &item);
    if (error == noErr)
        GiveResults(item, newRef, newSpec);
    return error;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSCreateDirectoryUnicode(const FSRef* parentRef, UniCharCount nameLength, const UniChar* name,
                               FSCatalogInfoBitmap whichInfo, const FSCatalogInfo* catalogInfo, FSRef* newRef,
                               FSSpec* newSpec, UInt32* newDirID)
try {
    Item item;
    const OSErr error = MakeNamed(MakeFolder, parentRef, nameLength, name, whichInfo, catalogInfo, &item);
    if (error != noErr)
        return error;
    GiveResults(item, newRef, newSpec);
    if (newDirID)
        *newDirID = (UInt32)NodeOf(item).id;
    return noErr;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSDeleteObject(const FSRef* ref)
try {
    Item item;
    const OSErr error = ItemOfRef(ref, &item);
    return error != noErr ? error : DeleteItem(item);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSMoveObject(const FSRef* ref, const FSRef* destDirectory, FSRef* newRef)
try {
    Item item, folder, moved;
    OSErr error = ItemOfRef(ref, &item);
    if (error == noErr)
        error = FolderOfRef(destDirectory, &folder);
    if (error == noErr)
        error = MoveItem(item, NodeOf(folder), &moved);
    if (error == noErr)
        GiveResults(moved, newRef, nullptr);
    return error;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSRenameUnicode(const FSRef* ref, UniCharCount nameLength, const UniChar* name, TextEncoding,
                      FSRef* newRef)
try {
    Item item, renamed;
    std::string hostName;
    OSErr error = ItemOfRef(ref, &item);
    if (error == noErr)
        error = HostNameOfUnicode(nameLength, name, &hostName);
    if (error == noErr)
        error = RenameItem(item, hostName, &renamed);
    if (error == noErr)
        GiveResults(renamed, newRef, nullptr);
    return error;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSExchangeObjects(const FSRef* ref, const FSRef* destRef)
try {
    Item item, other;
    OSErr error = ItemOfRef(ref, &item);
    if (error == noErr)
        error = ItemOfRef(destRef, &other);
    return error != noErr ? error : ExchangeItems(item, other);
} catch (const std::bad_alloc&) {
    return memFullErr;
}
