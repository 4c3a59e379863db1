// Entries that change what is in folders: they say which item is meant and ask ItemChanges.h.
#include "Dates.h"
#include "ItemChanges.h"
#include "ItemFacts.h"
#include "ParameterBlock.h"

#include <foundation/MacRoman.h>

#include <cstring>
#include <new>

using namespace lampblack::files;

namespace {

// A name is needed: without one the folder itself would be meant.
OSErr Find(const FSSpec* inSpec, Item* outItem)
{
    if (!inSpec)
        return paramErr;
    return inSpec->name[0] == 0 && inSpec->parID != fsRtParID ? (OSErr)bdNamErr : Resolve(*inSpec, outItem);
}

OSErr Find(FSVolumeRefNum inVolume, SInt32 inDirectory, ConstStr255Param inName, Item* outItem)
{
    if (!inName)
        return paramErr;
    return inName[0] == 0 ? (OSErr)bdNamErr : Resolve(inVolume, inDirectory, inName, outItem);
}

// What is to get another name or place. A folder may be meant by its ID alone, but the default directory, where
// the application lies, is not meant by nothing at all.
OSErr FindToMove(FSVolumeRefNum inVolume, SInt32 inDirectory, ConstStr255Param inName, Item* outItem)
{
    const bool isNothing = inDirectory == 0 && (!inName || inName[0] == 0);
    return isNothing ? (OSErr)bdNamErr : Resolve(inVolume, inDirectory, inName, outItem);
}

// As published: a script code with its high bit set; the system's own and Roman need none.
FXInfo ExtendedInfoFor(ScriptCode inScript)
{
    FXInfo info = {};
    if (inScript > 0 && inScript < 0x80)
        info.fdScript = (SInt8)(0x80 | inScript);
    return info;
}

OSErr Create(OSErr inFound, Item& ioItem, OSType inCreator, OSType inType, ScriptCode inScript = 0)
{
    if (inFound != noErr && inFound != fnfErr)
        return inFound;
    const FInfo info = { inType, inCreator, 0, { 0, 0 }, 0 };
    return CreateFileItem(&ioItem, info, ExtendedInfoFor(inScript));
}

OSErr CreateFolder(OSErr inFound, Item& ioItem, SInt32* outID)
{
    if (outID)
        *outID = 0;
    if (inFound != noErr && inFound != fnfErr)
        return inFound;
    const OSErr error = CreateFolderItem(&ioItem);
    if (error == noErr && outID)
        *outID = NodeOf(ioItem).id;
    return error;
}

OSErr Rename(OSErr inFound, const Item& inItem, ConstStr255Param inNewName)
{
    std::string hostName;
    const bool isSame = inNewName && inFound == noErr &&
                        inItem.macName == std::string_view((const char*)inNewName + 1, inNewName[0]);
    OSErr error = inFound == noErr ? CheckNewName(inNewName, &hostName) : inFound;
    error = error == noErr ? RenameItem(inItem, isSame ? inItem.hostName : hostName) : error;
    return error;
}

// The folder that a name means in a folder; an empty name is the folder.
OSErr Move(OSErr inFound, const Item& inItem, SInt32 inDirectory, ConstStr255Param inName)
{
    Item folder;
    OSErr error = inFound == noErr ? Resolve(inItem.parent.volume, inDirectory, inName, &folder) : inFound;
    if (inFound == noErr && error == fnfErr)
        return dirNFErr;
    if (error != noErr)
        return error;
    return folder.isFolder ? MoveItem(inItem, NodeOf(folder)) : (OSErr)badMovErr;
}

OSErr GetInfo(OSErr inFound, const Item& inItem, FInfo* outInfo)
{
    if (inFound != noErr)
        return inFound;
    if (inItem.isFolder)
        return fnfErr;
    *outInfo = FinderInfoOf(inItem);
    return noErr;
}

OSErr SetInfo(OSErr inFound, const Item& inItem, const FInfo* inInfo)
{
    if (inFound != noErr)
        return inFound;
    return inItem.isFolder ? (OSErr)fnfErr : SetItemInfo(inItem, inInfo, nullptr);
}

OSErr SetLock(OSErr inFound, const Item& inItem, bool inIsLocked)
{
    return inFound == noErr ? SetItemLock(inItem, inIsLocked) : inFound;
}

// Local dates; 0 is none.
OSErr SetDates(const Item& inItem, UInt32 inCreated, UInt32 inModified)
{
    const timespec created = TimeOfLocalDate(inCreated), modified = TimeOfLocalDate(inModified);
    return SetItemDates(inItem, { inCreated ? &created : nullptr, inModified ? &modified : nullptr });
}

} // namespace

OSErr FSpCreate(const FSSpec* spec, OSType creator, OSType fileType, ScriptCode scriptTag)
try {
    Item item;
    return Create(Find(spec, &item), item, creator, fileType, scriptTag);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr HCreate(FSVolumeRefNum vRefNum, SInt32 dirID, ConstStr255Param fileName, OSType creator,
              OSType fileType)
try {
    Item item;
    return Create(Find(vRefNum, dirID, fileName, &item), item, creator, fileType);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSpDirCreate(const FSSpec* spec, ScriptCode, SInt32* createdDirID)
try {
    Item item;
    return CreateFolder(Find(spec, &item), item, createdDirID);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr DirCreate(FSVolumeRefNum vRefNum, SInt32 parentDirID, ConstStr255Param directoryName,
                SInt32* createdDirID)
try {
    Item item;
    return CreateFolder(Find(vRefNum, parentDirID, directoryName, &item), item, createdDirID);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSpDelete(const FSSpec* spec)
try {
    Item item;
    const OSErr error = Find(spec, &item);
    return error == noErr ? DeleteItem(item) : error;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr HDelete(FSVolumeRefNum vRefNum, SInt32 dirID, ConstStr255Param fileName)
try {
    Item item;
    const OSErr error = Resolve(vRefNum, dirID, fileName, &item);
    return error == noErr ? DeleteItem(item) : error;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSpRename(const FSSpec* spec, ConstStr255Param newName)
try {
    Item item;
    return Rename(Find(spec, &item), item, newName);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr HRename(FSVolumeRefNum vRefNum, SInt32 dirID, ConstStr255Param oldName, ConstStr255Param newName)
try {
    Item item;
    return Rename(FindToMove(vRefNum, dirID, oldName, &item), item, newName);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSpCatMove(const FSSpec* source, const FSSpec* dest)
try {
    Item item, folder;
    OSErr error = Find(source, &item);
    if (error != noErr)
        return error;
    error = Find(dest, &folder);
    if (error != noErr)
        return error == fnfErr ? (OSErr)dirNFErr : error;
    return folder.isFolder ? MoveItem(item, NodeOf(folder)) : (OSErr)badMovErr;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr CatMove(FSVolumeRefNum vRefNum, SInt32 dirID, ConstStr255Param oldName, SInt32 newDirID,
              ConstStr255Param newName)
try {
    Item item;
    return Move(FindToMove(vRefNum, dirID, oldName, &item), item, newDirID, newName);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSpExchangeFiles(const FSSpec* source, const FSSpec* dest)
try {
    Item item, other;
    OSErr error = Find(source, &item);
    error = error == noErr ? Find(dest, &other) : error;
    return error == noErr ? ExchangeItems(item, other) : error;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSpGetFInfo(const FSSpec* spec, FInfo* fndrInfo)
try {
    Item item;
    return fndrInfo ? GetInfo(Find(spec, &item), item, fndrInfo) : (OSErr)paramErr;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr HGetFInfo(FSVolumeRefNum vRefNum, SInt32 dirID, ConstStr255Param fileName, FInfo* fndrInfo)
try {
    Item item;
    return fndrInfo ? GetInfo(Resolve(vRefNum, dirID, fileName, &item), item, fndrInfo) : (OSErr)paramErr;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSpSetFInfo(const FSSpec* spec, const FInfo* fndrInfo)
try {
    Item item;
    return fndrInfo ? SetInfo(Find(spec, &item), item, fndrInfo) : (OSErr)paramErr;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr HSetFInfo(FSVolumeRefNum vRefNum, SInt32 dirID, ConstStr255Param fileName, const FInfo* fndrInfo)
try {
    Item item;
    return fndrInfo ? SetInfo(Resolve(vRefNum, dirID, fileName, &item), item, fndrInfo) : (OSErr)paramErr;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSpSetFLock(const FSSpec* spec)
try {
    Item item;
    return SetLock(Find(spec, &item), item, true);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSpRstFLock(const FSSpec* spec)
try {
    Item item;
    return SetLock(Find(spec, &item), item, false);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr HSetFLock(FSVolumeRefNum vRefNum, SInt32 dirID, ConstStr255Param fileName)
try {
    Item item;
    return SetLock(Resolve(vRefNum, dirID, fileName, &item), item, true);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr HRstFLock(FSVolumeRefNum vRefNum, SInt32 dirID, ConstStr255Param fileName)
try {
    Item item;
    return SetLock(Resolve(vRefNum, dirID, fileName, &item), item, false);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr PBHCreateSync(HParmBlkPtr paramBlock)
try {
    if (!paramBlock)
        return paramErr;
    HFileParam& block = paramBlock->fileParam;
    return Finish(block, HCreate(block.ioVRefNum, block.ioDirID, block.ioNamePtr, 0, 0));
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr PBDirCreateSync(HParmBlkPtr paramBlock)
try {
    if (!paramBlock)
        return paramErr;
    HFileParam& block = paramBlock->fileParam;
    SInt32 created = 0;
    const OSErr error = DirCreate(block.ioVRefNum, block.ioDirID, block.ioNamePtr, &created);
    if (error == noErr)
        block.ioDirID = created;
    return Finish(block, error);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr PBHDeleteSync(HParmBlkPtr paramBlock)
try {
    if (!paramBlock)
        return paramErr;
    HFileParam& block = paramBlock->fileParam;
    return Finish(block, HDelete(block.ioVRefNum, block.ioDirID, block.ioNamePtr));
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr PBHRenameSync(HParmBlkPtr paramBlock)
try {
    if (!paramBlock)
        return paramErr;
    HFileParam& block = paramBlock->fileParam; // ioMisc and ioDirID lie in different records of the union
    const auto newName = (ConstStr255Param)paramBlock->ioParam.ioMisc;
    return Finish(block, HRename(block.ioVRefNum, block.ioDirID, block.ioNamePtr, newName));
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr PBCatMoveSync(CMovePBPtr paramBlock)
try {
    if (!paramBlock)
        return paramErr;
    CMovePBRec& block = *paramBlock;
    return Finish(
        block, CatMove(block.ioVRefNum, block.ioDirID, block.ioNamePtr, block.ioNewDirID, block.ioNewName));
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr PBHSetFLockSync(HParmBlkPtr paramBlock)
try {
    if (!paramBlock)
        return paramErr;
    HFileParam& block = paramBlock->fileParam;
    return Finish(block, HSetFLock(block.ioVRefNum, block.ioDirID, block.ioNamePtr));
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr PBHRstFLockSync(HParmBlkPtr paramBlock)
try {
    if (!paramBlock)
        return paramErr;
    HFileParam& block = paramBlock->fileParam;
    return Finish(block, HRstFLock(block.ioVRefNum, block.ioDirID, block.ioNamePtr));
} catch (const std::bad_alloc&) {
    return memFullErr;
}

namespace {

OSErr SetFileInfo(const HFileParam& inBlock)
{
    Item item;
    const FInfo info = inBlock.ioFlFndrInfo;
    OSErr error = Resolve(inBlock.ioVRefNum, inBlock.ioDirID, inBlock.ioNamePtr, &item);
    error = SetInfo(error, item, &info);
    return error == noErr ? SetDates(item, inBlock.ioFlCrDat, inBlock.ioFlMdDat) : error;
}

OSErr SetCatInfo(const CInfoPBRec& inBlock)
{
    const HFileInfo& file = inBlock.hFileInfo;
    const DirInfo& folder = inBlock.dirInfo;
    Item item;
    OSErr error = Resolve(file.ioVRefNum, file.ioDirID, file.ioNamePtr, &item);
    if (error != noErr)
        return error;
    error = item.isFolder ? SetItemInfo(item, &folder.ioDrUsrWds, &folder.ioDrFndrInfo)
                          : SetItemInfo(item, &file.ioFlFndrInfo, &file.ioFlXFndrInfo);
    if (error != noErr)
        return error;
    return item.isFolder ? SetDates(item, folder.ioDrCrDat, folder.ioDrMdDat)
                         : SetDates(item, file.ioFlCrDat, file.ioFlMdDat);
}

} // namespace

OSErr PBHSetFInfoSync(HParmBlkPtr paramBlock)
try {
    return paramBlock ? Finish(paramBlock->fileParam, SetFileInfo(paramBlock->fileParam)) : (OSErr)paramErr;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr PBSetCatInfoSync(CInfoPBPtr paramBlock)
try {
    return paramBlock ? Finish(paramBlock->hFileInfo, SetCatInfo(*paramBlock)) : (OSErr)paramErr;
} catch (const std::bad_alloc&) {
    return memFullErr;
}
