// The catalog of the File Manager: what volumes, folders and files say of themselves, by number, by name
// and by reference, one after another or many at once. Part of Files.h; begin at PBGetCatInfoSync.
//
// Names in an FSSpec or a Pascal string are the short ones that Files.h tells of; names in Unicode are
// whole. A host's name that is no UTF-8 shows U+FFFD for each byte that does not fit and is found by that
// name, too.
#include <Carbon/Files.h> // which includes this in turn, and so comes first

#ifndef LAMPBLACK_CARBON_FILECATALOG_H
#define LAMPBLACK_CARBON_FILECATALOG_H

#pragma pack(push, 2)

// Finder information of a folder.
struct DInfo {
    Rect frRect;
    UInt16 frFlags;
    Point frLocation;
    SInt16 frView;
};
typedef struct DInfo DInfo;

struct DXInfo {
    Point frScroll;
    SInt32 frOpenChain;
    SInt8 frScript;
    SInt8 frXFlags;
    SInt16 frComment;
    SInt32 frPutAway;
};
typedef struct DXInfo DXInfo;

// The same bytes by the names that go with FSCatalogInfo.
struct FileInfo {
    OSType fileType;
    OSType fileCreator;
    UInt16 finderFlags;
    Point location;
    UInt16 reservedField;
};
typedef struct FileInfo FileInfo;

struct ExtendedFileInfo {
    SInt16 reserved1[4];
    UInt16 extendedFinderFlags;
    SInt16 reserved2;
    SInt32 putAwayFolderID;
};
typedef struct ExtendedFileInfo ExtendedFileInfo;

struct FolderInfo {
    Rect windowBounds;
    UInt16 finderFlags;
    Point location;
    UInt16 reservedField;
};
typedef struct FolderInfo FolderInfo;

struct ExtendedFolderInfo {
    Point scrollPosition;
    SInt32 reserved1;
    UInt16 extendedFinderFlags;
    SInt16 reserved2;
    SInt32 putAwayFolderID;
};
typedef struct ExtendedFolderInfo ExtendedFolderInfo;

struct HFileInfo {
    LAMPBLACK_PARAMETER_BLOCK_HEAD;
    SInt16 ioFRefNum;
    SInt8 ioFVersNum;
    SInt8 filler1;
    SInt16 ioFDirIndex;
    SInt8 ioFlAttrib;
    SInt8 ioACUser;
    FInfo ioFlFndrInfo;
    SInt32 ioDirID; // in: the folder; out: the file's own ID
    UInt16 ioFlStBlk;
    SInt32 ioFlLgLen;
    SInt32 ioFlPyLen;
    UInt16 ioFlRStBlk;
    SInt32 ioFlRLgLen;
    SInt32 ioFlRPyLen;
    UInt32 ioFlCrDat;
    UInt32 ioFlMdDat;
    UInt32 ioFlBkDat;
    FXInfo ioFlXFndrInfo;
    SInt32 ioFlParID;
    SInt32 ioFlClpSiz;
};
typedef struct HFileInfo HFileInfo;

struct DirInfo {
    LAMPBLACK_PARAMETER_BLOCK_HEAD;
    SInt16 ioFRefNum;
    SInt8 ioFVersNum;
    SInt8 filler1;
    SInt16 ioFDirIndex;
    SInt8 ioFlAttrib;
    SInt8 ioACUser;
    DInfo ioDrUsrWds;
    SInt32 ioDrDirID;
    UInt16 ioDrNmFls;
    SInt16 filler3[9];
    UInt32 ioDrCrDat;
    UInt32 ioDrMdDat;
    UInt32 ioDrBkDat;
    DXInfo ioDrFndrInfo;
    SInt32 ioDrParID;
};
typedef struct DirInfo DirInfo;

union CInfoPBRec {
    HFileInfo hFileInfo;
    DirInfo dirInfo;
};
typedef union CInfoPBRec CInfoPBRec;
typedef CInfoPBRec* CInfoPBPtr;

// The default directory.
struct WDPBRec {
    LAMPBLACK_PARAMETER_BLOCK_HEAD;
    SInt16 filler1;
    SInt16 ioWDIndex;
    SInt32 ioWDProcID;
    SInt16 ioWDVRefNum;
    SInt16 filler2[7];
    SInt32 ioWDDirID;
};
typedef struct WDPBRec WDPBRec;
typedef WDPBRec* WDPBPtr;

struct XVolumeParam {
    LAMPBLACK_PARAMETER_BLOCK_HEAD;
    UInt32 ioXVersion; // 0
    SInt16 ioVolIndex;
    UInt32 ioVCrDate;
    UInt32 ioVLsMod;
    SInt16 ioVAtrb;
    UInt16 ioVNmFls;
    UInt16 ioVBitMap;
    UInt16 ioAllocPtr;
    UInt16 ioVNmAlBlks;
    UInt32 ioVAlBlkSiz;
    UInt32 ioVClpSiz;
    UInt16 ioAlBlSt;
    UInt32 ioVNxtCNID;
    UInt16 ioVFrBlk;
    UInt16 ioVSigWord;
    SInt16 ioVDrvInfo;
    SInt16 ioVDRefNum;
    SInt16 ioVFSID;
    UInt32 ioVBkUp;
    UInt16 ioVSeqNum;
    UInt32 ioVWrCnt;
    UInt32 ioVFilCnt;
    UInt32 ioVDirCnt;
    SInt32 ioVFndrInfo[8];
    UInt64 ioVTotalBytes;
    UInt64 ioVFreeBytes;
};
typedef struct XVolumeParam XVolumeParam;
typedef XVolumeParam* XVolumeParamPtr;

struct FSVolumeInfo {
    UTCDateTime createDate;
    UTCDateTime modifyDate;
    UTCDateTime backupDate;
    UTCDateTime checkedDate;
    UInt32 fileCount;
    UInt32 folderCount;
    UInt64 totalBytes;
    UInt64 freeBytes;
    UInt32 blockSize;
    UInt32 totalBlocks;
    UInt32 freeBlocks;
    UInt32 nextAllocation;
    UInt32 rsrcClumpSize;
    UInt32 dataClumpSize;
    UInt32 nextCatalogID;
    UInt8 finderInfo[32];
    UInt16 flags;
    UInt16 filesystemID;
    UInt16 signature;
    UInt16 driveNumber;
    FSIORefNum driverRefNum;
};
typedef struct FSVolumeInfo FSVolumeInfo;
typedef UInt32 FSVolumeInfoBitmap;

#pragma pack(pop)

static_assert(sizeof(FileInfo) == 16 && sizeof(ExtendedFileInfo) == 16 && sizeof(FolderInfo) == 16 &&
                  sizeof(ExtendedFolderInfo) == 16,
              "the published sizes");
static_assert(sizeof(DInfo) == 16 && sizeof(DXInfo) == 16 && sizeof(FSVolumeInfo) == 126,
              "the published sizes");

// ioFlAttrib
enum {
    kioFlAttribLockedBit = 0,
    kioFlAttribLockedMask = 0x01,
    kioFlAttribResOpenBit = 2,
    kioFlAttribResOpenMask = 0x04,
    kioFlAttribDataOpenBit = 3,
    kioFlAttribDataOpenMask = 0x08,
    kioFlAttribDirBit = 4,
    kioFlAttribDirMask = 0x10,
    ioDirFlg = 4,
    ioDirMask = 0x10,
    kioFlAttribCopyProtBit = 6,
    kioFlAttribCopyProtMask = 0x40,
    kioFlAttribFileOpenBit = 7,
    kioFlAttribFileOpenMask = 0x80
};

// ioVAtrb
enum {
    kioVAtrbDefaultVolumeBit = 5,
    kioVAtrbDefaultVolumeMask = 0x0020,
    kioVAtrbFilesOpenBit = 6,
    kioVAtrbFilesOpenMask = 0x0040,
    kioVAtrbHardwareLockedBit = 7,
    kioVAtrbHardwareLockedMask = 0x0080,
    kioVAtrbSoftwareLockedBit = 15,
    kioVAtrbSoftwareLockedMask = 0x8000
};

// Which fields of FSVolumeInfo are wanted.
enum {
    kFSVolInfoNone = 0,
    kFSVolInfoCreateDate = 0x0001,
    kFSVolInfoModDate = 0x0002,
    kFSVolInfoBackupDate = 0x0004,
    kFSVolInfoCheckedDate = 0x0008,
    kFSVolInfoFileCount = 0x0010,
    kFSVolInfoDirCount = 0x0020,
    kFSVolInfoSizes = 0x0040,
    kFSVolInfoBlocks = 0x0080,
    kFSVolInfoNextAlloc = 0x0100,
    kFSVolInfoRsrcClump = 0x0200,
    kFSVolInfoDataClump = 0x0400,
    kFSVolInfoNextID = 0x0800,
    kFSVolInfoFinderInfo = 0x1000,
    kFSVolInfoFlags = 0x2000,
    kFSVolInfoFSInfo = 0x4000,
    kFSVolInfoDriveInfo = 0x8000,
    kFSVolInfoGettableInfo = 0xFFFF
};

// Flags of FSVolumeInfo.
enum {
    kFSVolFlagDefaultVolumeBit = 5,
    kFSVolFlagDefaultVolumeMask = 0x0020,
    kFSVolFlagFilesOpenBit = 6,
    kFSVolFlagFilesOpenMask = 0x0040,
    kFSVolFlagHardwareLockedBit = 7,
    kFSVolFlagHardwareLockedMask = 0x0080,
    kFSVolFlagSoftwareLockedBit = 15,
    kFSVolFlagSoftwareLockedMask = 0x8000
};

typedef struct OpaqueFSIterator* FSIterator;
typedef OptionBits FSIteratorFlags;
enum {
    kFSIterateFlat = 0,    // the entries of the container
    kFSIterateSubtree = 1, // and all below: a folder right before what is in it
    kFSIterateDelete = 2,  // what is returned may be deleted, moved or renamed on the way
    kFSIterateReserved = 0xFFFFFFFC
};

LAMPBLACK_BEGIN_C

// PBGetCatInfoSync
//
// What the catalog knows of one file or folder. ioFDirIndex says which: above 0 the nth entry of the folder
// ioVRefNum, ioDirID; 0 what ioNamePtr means there (as FSMakeFSSpec reads it); below 0, or 0 with a null or
// empty name, the folder ioDirID itself. Bit 4 of ioFlAttrib tells which record of the union was filled in.
// With an index unlike 0 a non-null ioNamePtr receives the name, a Str31.
//
// Order:      entries come in the order of their names: capitals do not count, accented letters stand
//             behind plain ones. One listing serves all indices until the folder changes.
// Links:      a symbolic link is a file of type 'slnk' with kIsAlias set, whatever it points at;
//             ResolveAliasFile says where it leads. So a walk never runs in a circle.
// Units:      dates are local seconds since 1904; lengths above 2 GB show as 0x7FFFFFFF. The backup date is
//             0: the host keeps none.
// Errors:     fnfErr  no such file, or fewer entries than the index; dirNFErr, nsvErr, bdNamErr, paramErr.
OSErr PBGetCatInfoSync(CInfoPBPtr paramBlock);

// As PBGetCatInfoSync, for files alone: above 0 the index counts files only, and a name that means a folder
// is fnfErr. Errors: as there.
OSErr PBHGetFInfoSync(HParmBlkPtr paramBlock);

// FSMakeFSSpec of ioVRefNum, fileParam.ioDirID and ioNamePtr, into the FSSpec at ioParam.ioMisc.
OSErr PBMakeFSSpecSync(HParmBlkPtr paramBlock);

// PBHGetVInfoSync
//
// What a volume says of itself. ioVolIndex says which: above 0 the nth volume; 0 the volume ioVRefNum (a
// reference or drive number, 0 the default volume); below 0 the volume that the name at ioNamePtr begins
// with ("Disk:" or "Disk:folder:file"), or ioVRefNum where that is no full path. A non-null ioNamePtr
// receives the name, a Str27.
//
// Units:      counts and sizes are cut where a 16-bit number of blocks of 16 bits times ioVAlBlkSiz ends:
//             blocks grow first, as on a volume of that size, up to where free and total space show as just
//             under 2 GB. PBXGetVolInfoSync has the true sizes.
// Errors:     nsvErr  no such volume; paramErr.
OSErr PBHGetVInfoSync(HParmBlkPtr paramBlock);
OSErr PBXGetVolInfoSync(XVolumeParamPtr paramBlock);

// A volume by drive number or reference: name (a Str27), reference and free bytes, at most 2 GB less a
// byte. Any result may be null. Errors: nsvErr.
OSErr GetVInfo(SInt16 drvNum, StringPtr volName, SInt16* vRefNum, SInt32* freeBytes);

// The volume of an open file. Errors: rfNumErr; paramErr.
OSErr GetVRefNum(SInt16 fileRefNum, SInt16* vRefNum);

// The default volume and directory; see HGetVol. GetVol and SetVol know of the volume alone: SetVol makes
// its root the default directory.
OSErr GetVol(StringPtr volName, SInt16* vRefNum);
OSErr SetVol(ConstStr63Param volName, SInt16 vRefNum);
OSErr PBHGetVolSync(WDPBPtr paramBlock);
OSErr PBHSetVolSync(WDPBPtr paramBlock);

// FSGetVolumeInfo
//
// A volume by reference, or with volumeIndex above 0 the nth one. Any result may be null.
//
// Errors:     nsvErr  none; paramErr  a field that is not gettable.
OSErr FSGetVolumeInfo(FSVolumeRefNum volume, ItemCount volumeIndex, FSVolumeRefNum* actualVolume,
                      FSVolumeInfoBitmap whichInfo, FSVolumeInfo* info, HFSUniStr255* volumeName,
                      FSRef* rootDirectory);

// FSMakeFSRefUnicode
//
// A reference to what has a name in a folder: the name exactly, else the same letters composed otherwise or
// with other capitals. A '/' in it is a ':' on the host.
//
// Errors:     errFSMissingName  null or empty; errFSNameTooLong  above 255 units; bdNamErr  a ':' or a
//             zero in it, or "." or ".."; errFSNotAFolder  parentRef is a file; fnfErr; errFSBadFSRef;
//             paramErr.
OSErr FSMakeFSRefUnicode(const FSRef* parentRef, UniCharCount nameLength, const UniChar* name,
                         TextEncoding textEncodingHint, FSRef* newRef);

// FSOpenIterator, FSGetCatalogInfoBulk, FSCloseIterator
//
// The entries of a folder, many at a call, in the order of PBGetCatInfoSync. The iterator keeps the listing
// of when a folder was begun: entries that were deleted since are passed over, and none comes twice. Links
// are not followed. Any result but actualObjects may be null; each of the others has room for
// maximumObjects.
//
// Errors:     FSOpenIterator: errFSNotAFolder  the container is a file; errFSBadIteratorFlags;
//             errFSBadFSRef; paramErr. Bulk: errFSNoMoreItems  nothing is left, *actualObjects may be above
//             0 all the same; errFSBadItemCount  maximumObjects is 0; errFSIteratorNotFound  not an open
//             iterator; paramErr.
OSErr FSOpenIterator(const FSRef* container, FSIteratorFlags iteratorFlags, FSIterator* iterator);
OSErr FSCloseIterator(FSIterator iterator);
OSErr FSGetCatalogInfoBulk(FSIterator iterator, ItemCount maximumObjects, ItemCount* actualObjects,
                           Boolean* containerChanged, FSCatalogInfoBitmap whichInfo,
                           FSCatalogInfo* catalogInfos, FSRef* refs, FSSpec* specs, HFSUniStr255* names);

// FSSetCatalogInfo
//
// Sets dates, Finder information, the lock (bit 0 of nodeFlags) and the mode of permissions. Of the dates
// the host keeps creation, content modification and access; the two others and the text encoding are taken
// and change nothing. Errors: paramErr null, or a field that is none of kFSCatInfoSettableInfo;
// errFSBadFSRef; fnfErr; what the write meets (wPrErr, permErr, dskFulErr, ioErr).
OSErr FSSetCatalogInfo(const FSRef* ref, FSCatalogInfoBitmap whichInfo, const FSCatalogInfo* catalogInfo);

// FSCreateFileUnicode, FSCreateDirectoryUnicode
//
// Make an empty file or folder and set what whichInfo says of it, or nothing (null catalogInfo is fine
// then). Results may be null.
//
// Errors:     dupFNErr  something has that name; errors of FSMakeFSRefUnicode for the name; what the write
//             meets.
OSErr FSCreateFileUnicode(const FSRef* parentRef, UniCharCount nameLength, const UniChar* name,
                          FSCatalogInfoBitmap whichInfo, const FSCatalogInfo* catalogInfo, FSRef* newRef,
                          FSSpec* newSpec);
OSErr FSCreateDirectoryUnicode(const FSRef* parentRef, UniCharCount nameLength, const UniChar* name,
                               FSCatalogInfoBitmap whichInfo, const FSCatalogInfo* catalogInfo, FSRef* newRef,
                               FSSpec* newSpec, UInt32* newDirID);

// FSDeleteObject, FSMoveObject, FSRenameUnicode, FSExchangeObjects
//
// The acts of FSpDelete, FSpCatMove, FSpRename and FSpExchangeFiles by reference. A reference stays with
// what it named when that is moved or renamed. newRef may be null.
//
// Errors:     fBsyErr  open, or a folder that is not empty; dupFNErr; diffVolErr; badMovErr  a folder into
//             itself; fLckdErr; errFSNotAFolder; errFSBadFSRef; those of FSMakeFSRefUnicode for a name.
OSErr FSDeleteObject(const FSRef* ref);
OSErr FSMoveObject(const FSRef* ref, const FSRef* destDirectory, FSRef* newRef);
OSErr FSRenameUnicode(const FSRef* ref, UniCharCount nameLength, const UniChar* name,
                      TextEncoding textEncodingHint, FSRef* newRef);
OSErr FSExchangeObjects(const FSRef* ref, const FSRef* destRef);

LAMPBLACK_END_C

#endif
