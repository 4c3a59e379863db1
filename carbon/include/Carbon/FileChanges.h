// The File Manager's calls that change what is in folders: making, removing, renaming, moving, Finder
// information, locks. Part of Files.h; begin at FSpCreate.
#include <Carbon/Files.h> // which includes this in turn, and so comes first

#ifndef LAMPBLACK_CARBON_FILECHANGES_H
#define LAMPBLACK_CARBON_FILECHANGES_H

#include <Carbon/OpenForks.h>

#pragma pack(push, 2)

// A move to another folder.
struct CMovePBRec {
    LAMPBLACK_PARAMETER_BLOCK_HEAD;
    SInt32 filler1;
    StringPtr ioNewName; // the folder to move into; null or empty: ioNewDirID is that folder
    SInt32 filler2;
    SInt32 ioNewDirID;
    SInt32 filler3[2];
    SInt32 ioDirID;
};
typedef struct CMovePBRec CMovePBRec;
typedef CMovePBRec* CMovePBPtr;

typedef union CInfoPBRec* CInfoPBPtr; // FileCatalog.h

#pragma pack(pop)

LAMPBLACK_BEGIN_C

// Both parts of a file go together, and in an order that leaves the old pair or the new one whenever the
// machine stops. A symbolic link is itself renamed, moved and deleted; what is written through it goes where
// it leads.
//
// Errors:     fnfErr, dirNFErr, nsvErr; bdNamErr  empty, longer than 31, with a ':', or a name that the host
//             uses for the parts of files ("._name"); dupFNErr  the name is taken, in whatever capitals;
//             fLckdErr  locked; dskFulErr, dirFulErr, wPrErr, permErr  as the host says; paramErr  null.
OSErr FSpCreate(const FSSpec* spec, OSType creator, OSType fileType, ScriptCode scriptTag);
OSErr HCreate(FSVolumeRefNum vRefNum, SInt32 dirID, ConstStr255Param fileName, OSType creator,
              OSType fileType);
OSErr PBHCreateSync(HParmBlkPtr paramBlock);
OSErr FSpDirCreate(const FSSpec* spec, ScriptCode scriptTag, SInt32* createdDirID);
OSErr DirCreate(FSVolumeRefNum vRefNum, SInt32 parentDirID, ConstStr255Param directoryName,
                SInt32* createdDirID);
OSErr PBDirCreateSync(HParmBlkPtr paramBlock); // ioDirID becomes the new folder's

// A file or an empty folder. Errors: fBsyErr  a fork is open, or the folder is not empty.
OSErr FSpDelete(const FSSpec* spec);
OSErr HDelete(FSVolumeRefNum vRefNum, SInt32 dirID, ConstStr255Param fileName);
OSErr PBHDeleteSync(HParmBlkPtr paramBlock);

// Errors: fBsyErr  a resource fork that is being written, of the file or in the folder.
OSErr FSpRename(const FSSpec* spec, ConstStr255Param newName);
OSErr HRename(FSVolumeRefNum vRefNum, SInt32 dirID, ConstStr255Param oldName, ConstStr255Param newName);
OSErr PBHRenameSync(HParmBlkPtr paramBlock); // ioMisc is the new name

// To another folder of the same volume. newName and dest name that folder. Errors: also badMovErr  into
// itself, or to what is no folder; diffVolErr  dest is on another volume, or the host keeps the two folders
// on two disks.
OSErr FSpCatMove(const FSSpec* source, const FSSpec* dest);
OSErr CatMove(FSVolumeRefNum vRefNum, SInt32 dirID, ConstStr255Param oldName, SInt32 newDirID,
              ConstStr255Param newName);
OSErr PBCatMoveSync(CMovePBPtr paramBlock);

// FSpExchangeFiles
//
// The two files change their contents, both forks; names and Finder information stay where they are.
//
// Errors:     sameFileErr; notAFileErr  a folder; diffVolErr; fBsyErr  a resource fork that is being written.
OSErr FSpExchangeFiles(const FSSpec* source, const FSSpec* dest);

// FINDER INFORMATION, DATES, LOCKS
//
// Kept in the sidecar "._name", or in the file itself when that is an AppleDouble; other containers are taken
// apart by the first change. The PB forms set the dates too: ioFlCrDat and ioFlMdDat, local seconds since
// 1904; 0 leaves a date as it is, and the backup date is not kept. A locked file is one that nobody may
// write. The creation date of a file whose resource fork is open for writing can be set only where one was
// set before: else opWrErr.
OSErr HGetFInfo(FSVolumeRefNum vRefNum, SInt32 dirID, ConstStr255Param fileName, FInfo* fndrInfo);
OSErr FSpSetFInfo(const FSSpec* spec, const FInfo* fndrInfo);
OSErr HSetFInfo(FSVolumeRefNum vRefNum, SInt32 dirID, ConstStr255Param fileName, const FInfo* fndrInfo);
OSErr PBHSetFInfoSync(HParmBlkPtr paramBlock);
OSErr PBSetCatInfoSync(CInfoPBPtr paramBlock); // a folder's, too; without a name the folder ioDrDirID itself
OSErr FSpSetFLock(const FSSpec* spec);
OSErr FSpRstFLock(const FSSpec* spec);
OSErr HSetFLock(FSVolumeRefNum vRefNum, SInt32 dirID, ConstStr255Param fileName);
OSErr HRstFLock(FSVolumeRefNum vRefNum, SInt32 dirID, ConstStr255Param fileName);
OSErr PBHSetFLockSync(HParmBlkPtr paramBlock);
OSErr PBHRstFLockSync(HParmBlkPtr paramBlock);

LAMPBLACK_END_C

LAMPBLACK_IF_LONG inline OSErr FSpDirCreate(const FSSpec* spec, ScriptCode scriptTag, Long* createdDirID)
{
    *createdDirID = 0;
    return LampblackThroughSInt32(createdDirID,
                                  [&](SInt32* value) { return FSpDirCreate(spec, scriptTag, value); });
}

LAMPBLACK_IF_LONG inline OSErr DirCreate(FSVolumeRefNum vRefNum, SInt32 parentDirID,
                                         ConstStr255Param directoryName, Long* createdDirID)
{
    *createdDirID = 0;
    return LampblackThroughSInt32(
        createdDirID, [&](SInt32* value) { return DirCreate(vRefNum, parentDirID, directoryName, value); });
}

LAMPBLACK_IF_LONG inline OSErr HGetVol(StringPtr volName, SInt16* vRefNum, Long* dirID)
{
    *dirID = 0;
    return LampblackThroughSInt32(dirID, [&](SInt32* value) { return HGetVol(volName, vRefNum, value); });
}

#endif
