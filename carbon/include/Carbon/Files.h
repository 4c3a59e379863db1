// The File Manager: volumes, directories, FSSpecs and FSRefs, Finder information.
// Begin at FSMakeFSSpec.
//
// A volume is a folder of the host; volume -1 is the whole of the host's file system. Names are Mac Roman, at
// most 31 bytes: a ':' in the name of a host file is a '/' here, and a name that is too long or has other
// letters gets a short form of its own, the same each time ("Longer than thirty#1C0A94F2.txt"). Names are
// compared without regard to case when no file has the name exactly.
//
// Directory IDs are stable while the process lives. Volume and directory 0 mean the default directory, which
// at first is the folder of the application.
#ifndef LAMPBLACK_CARBON_FILES_H
#define LAMPBLACK_CARBON_FILES_H

#include <Carbon/MacErrors.h>
#include <Carbon/MacTypes.h>

typedef SInt16 FSVolumeRefNum;
typedef SInt16 FSIORefNum;
typedef UInt32 FSCatalogInfoBitmap;
typedef UInt32 TextEncoding;

enum { fsRtParID = 1, fsRtDirID = 2, kFSInvalidVolumeRefNum = 0 };

// Permissions to open with.
enum { fsCurPerm = 0, fsRdPerm = 1, fsWrPerm = 2, fsRdWrPerm = 3, fsRdWrShPerm = 4 };

// Finder flags.
enum {
    kIsOnDesk = 0x0001,
    kColor = 0x000E,
    kIsShared = 0x0040,
    kHasNoINITs = 0x0080,
    kHasBeenInited = 0x0100,
    kHasCustomIcon = 0x0400,
    kIsStationery = 0x0800,
    kNameLocked = 0x1000,
    kHasBundle = 0x2000,
    kIsInvisible = 0x4000,
    kIsAlias = 0x8000
};

#pragma pack(push, 2)

// A file or folder by volume, parent directory and name; it need not exist.
struct FSSpec {
    SInt16 vRefNum;
    SInt32 parID;
    Str63 name;
};
typedef struct FSSpec FSSpec;
typedef FSSpec* FSSpecPtr;
typedef FSSpecPtr* FSSpecHandle;
typedef FSSpecPtr FSSpecArrayPtr;

// A file or folder that exists. Its bytes are nobody's business; compare two with FSCompareFSRefs.
struct FSRef {
    UInt8 hidden[80];
};
typedef struct FSRef FSRef;
typedef FSRef* FSRefPtr;

struct FInfo {
    OSType fdType;
    OSType fdCreator;
    UInt16 fdFlags;
    Point fdLocation;
    SInt16 fdFldr;
};
typedef struct FInfo FInfo;

struct FXInfo {
    SInt16 fdIconID;
    SInt16 fdReserved[3];
    SInt8 fdScript;
    SInt8 fdXFlags;
    SInt16 fdComment;
    SInt32 fdPutAway;
};
typedef struct FXInfo FXInfo;

struct HFSUniStr255 {
    UInt16 length; // UTF-16 units
    UniChar unicode[255];
};
typedef struct HFSUniStr255 HFSUniStr255;
typedef const HFSUniStr255* ConstHFSUniStr255Param;

// Seconds since midnight, 1 January 1904, UTC: 48 bits, then 1/65536ths.
struct UTCDateTime {
    UInt16 highSeconds;
    UInt32 lowSeconds;
    UInt16 fraction;
};
typedef struct UTCDateTime UTCDateTime;

struct FSPermissionInfo {
    UInt32 userID;
    UInt32 groupID;
    UInt8 reserved1;
    UInt8 userAccess;
    UInt16 mode;
    UInt32 reserved2;
};
typedef struct FSPermissionInfo FSPermissionInfo;

struct FSCatalogInfo {
    UInt16 nodeFlags;
    FSVolumeRefNum volume;
    UInt32 parentDirID;
    UInt32 nodeID;
    UInt8 sharingFlags;
    UInt8 userPrivileges;
    UInt8 reserved1;
    UInt8 reserved2;
    UTCDateTime createDate;
    UTCDateTime contentModDate;
    UTCDateTime attributeModDate;
    UTCDateTime accessDate;
    UTCDateTime backupDate; // zero: the host keeps none
    UInt32 permissions[4];  // an FSPermissionInfo
    UInt8 finderInfo[16];   // an FInfo, in native order
    UInt8 extFinderInfo[16];
    UInt64 dataLogicalSize;
    UInt64 dataPhysicalSize;
    UInt64 rsrcLogicalSize;
    UInt64 rsrcPhysicalSize;
    UInt32 valence; // entries of a folder
    TextEncoding textEncodingHint;
};
typedef struct FSCatalogInfo FSCatalogInfo;

typedef struct QElem* QElemPtr;
struct QElem {
    QElemPtr qLink;
    SInt16 qType;
    SInt16 qData[1];
};
typedef struct QElem QElem;

typedef union ParamBlockRec* ParmBlkPtr;
typedef union HParamBlockRec* HParmBlkPtr;
typedef void (*IOCompletionProcPtr)(ParmBlkPtr paramBlock);
typedef IOCompletionProcPtr IOCompletionUPP;

// The head that all parameter blocks share.
#define LAMPBLACK_PARAMETER_BLOCK_HEAD                                                                       \
    QElemPtr qLink;                                                                                          \
    SInt16 qType;                                                                                            \
    SInt16 ioTrap;                                                                                           \
    Ptr ioCmdAddr;                                                                                           \
    IOCompletionUPP ioCompletion;                                                                            \
    volatile OSErr ioResult;                                                                                 \
    StringPtr ioNamePtr;                                                                                     \
    SInt16 ioVRefNum

struct HIOParam {
    LAMPBLACK_PARAMETER_BLOCK_HEAD;
    SInt16 ioRefNum;
    SInt8 ioVersNum;
    SInt8 ioPermssn;
    Ptr ioMisc;
    Ptr ioBuffer;
    SInt32 ioReqCount;
    SInt32 ioActCount;
    SInt16 ioPosMode;
    SInt32 ioPosOffset;
};
typedef struct HIOParam HIOParam;

// The blocks of calls on open files, laid out like those of the calls with a directory.
typedef struct HIOParam IOParam;
union ParamBlockRec {
    IOParam ioParam;
};
typedef union ParamBlockRec ParamBlockRec;

struct HFileParam {
    LAMPBLACK_PARAMETER_BLOCK_HEAD;
    SInt16 ioFRefNum;
    SInt8 ioFVersNum;
    SInt8 filler1;
    SInt16 ioFDirIndex;
    SInt8 ioFlAttrib;
    SInt8 ioFlVersNum;
    FInfo ioFlFndrInfo;
    SInt32 ioDirID;
    UInt16 ioFlStBlk;
    SInt32 ioFlLgLen;
    SInt32 ioFlPyLen;
    UInt16 ioFlRStBlk;
    SInt32 ioFlRLgLen;
    SInt32 ioFlRPyLen;
    UInt32 ioFlCrDat;
    UInt32 ioFlMdDat;
};
typedef struct HFileParam HFileParam;

struct HVolumeParam {
    LAMPBLACK_PARAMETER_BLOCK_HEAD;
    SInt32 filler2;
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
};
typedef struct HVolumeParam HVolumeParam;

union HParamBlockRec {
    HIOParam ioParam;
    HFileParam fileParam;
    HVolumeParam volumeParam;
};
typedef union HParamBlockRec HParamBlockRec;

// An open file.
struct FCBPBRec {
    LAMPBLACK_PARAMETER_BLOCK_HEAD;
    SInt16 ioRefNum;
    SInt16 filler;
    SInt16 ioFCBIndx; // 0: the file ioRefNum; else the nth open file of volume ioVRefNum (0: of any)
    SInt16 filler1;
    SInt32 ioFCBFlNm; // the file's ID
    SInt16 ioFCBFlags;
    UInt16 ioFCBStBlk;
    SInt32 ioFCBEOF;
    SInt32 ioFCBPLen;
    SInt32 ioFCBCrPs; // the mark
    SInt16 ioFCBVRefNum;
    SInt32 ioFCBClpSiz;
    SInt32 ioFCBParID;
};
typedef struct FCBPBRec FCBPBRec;
typedef FCBPBRec* FCBPBPtr;

struct GetVolParmsInfoBuffer {
    SInt16 vMVersion;
    SInt32 vMAttrib;
    Handle vMLocalHand;
    SInt32 vMServerAdr;
    SInt32 vMVolumeGrade;
    SInt16 vMForeignPrivID;
    SInt32 vMExtendedAttributes;
    void* vMDeviceID;
    UniCharCount vMMaxNameLength;
};
typedef struct GetVolParmsInfoBuffer GetVolParmsInfoBuffer;

#pragma pack(pop)

static_assert(sizeof(FSSpec) == 70 && sizeof(FSRef) == 80 && sizeof(FInfo) == 16 && sizeof(FXInfo) == 16,
              "the published sizes");
static_assert(sizeof(HFSUniStr255) == 512 && sizeof(FSCatalogInfo) == 144 && sizeof(FSPermissionInfo) == 16,
              "the published sizes");

// Which fields of FSCatalogInfo are wanted.
enum {
    kFSCatInfoNone = 0,
    kFSCatInfoTextEncoding = 0x00000001,
    kFSCatInfoNodeFlags = 0x00000002,
    kFSCatInfoVolume = 0x00000004,
    kFSCatInfoParentDirID = 0x00000008,
    kFSCatInfoNodeID = 0x00000010,
    kFSCatInfoCreateDate = 0x00000020,
    kFSCatInfoContentMod = 0x00000040,
    kFSCatInfoAttrMod = 0x00000080,
    kFSCatInfoAccessDate = 0x00000100,
    kFSCatInfoBackupDate = 0x00000200,
    kFSCatInfoPermissions = 0x00000400,
    kFSCatInfoFinderInfo = 0x00000800,
    kFSCatInfoFinderXInfo = 0x00001000,
    kFSCatInfoValence = 0x00002000,
    kFSCatInfoDataSizes = 0x00004000,
    kFSCatInfoRsrcSizes = 0x00008000,
    kFSCatInfoSharingFlags = 0x00010000,
    kFSCatInfoUserPrivs = 0x00020000,
    kFSCatInfoAllDates = 0x000003E0,
    kFSCatInfoGettableInfo = 0x0003FFFF,
    kFSCatInfoSettableInfo = 0x00001FE3,
    kFSCatInfoReserved = 0xFFFC0000
};

// Node flags.
enum {
    kFSNodeLockedBit = 0,
    kFSNodeLockedMask = 0x0001,
    kFSNodeResOpenBit = 2,
    kFSNodeResOpenMask = 0x0004,
    kFSNodeDataOpenBit = 3,
    kFSNodeDataOpenMask = 0x0008,
    kFSNodeIsDirectoryBit = 4,
    kFSNodeIsDirectoryMask = 0x0010,
    kFSNodeForkOpenBit = 7,
    kFSNodeForkOpenMask = 0x0080
};

// vMAttrib
enum {
    bLimitFCBs = 31,  // set here
    bNoBootBlks = 19, // set here
    bHasExtFSVol = 16,
    bHasOpenDeny = 15,
    bHasCopyFile = 14,
    bHasMoveRename = 13,
    bHasDesktopMgr = 12,
    bHasShortName = 11,
    bHasFolderLock = 10,
    bHasCatSearch = 7,
    bHasFileIDs = 6
};

LAMPBLACK_BEGIN_C

// FSMakeFSSpec
//
// Makes an FSSpec of what a name means in a directory: a plain name, a partial path (":folder:name",
// "::" goes up), a full path ("Volume:folder:name", which ignores the directory), or an empty name for the
// directory itself. The volume itself has the parent fsRtParID.
//
// Errors:     fnfErr  nothing has that name there; *spec is filled all the same;
//             dirNFErr  the directory, or one on the path, is not there; nsvErr  no such volume;
//             bdNamErr  a name that no file can have, of more than 31 bytes for instance; paramErr  null
//             spec.
OSErr FSMakeFSSpec(SInt16 vRefNum, SInt32 dirID, ConstStr255Param fileName, FSSpec* spec);

// FSpGetFInfo
//
// The file's type, creator and flags, from wherever they are kept beside or in the file; zeros when nowhere.
//
// Errors:     fnfErr  no such file, or a folder; else those of FSMakeFSSpec.
OSErr FSpGetFInfo(const FSSpec* spec, FInfo* fndrInfo);

// Errors: those of FSMakeFSSpec.
OSErr FSpMakeFSRef(const FSSpec* source, FSRef* newRef);

// A host path in UTF-8, absolute or relative to the working directory; links are followed. isDirectory may be
// null. Errors: fnfErr, paramErr.
OSStatus FSPathMakeRef(const UInt8* path, FSRef* ref, Boolean* isDirectory);

// Errors: errFSBadFSRef, fnfErr when it is gone, pathTooLongErr.
OSStatus FSRefMakePath(const FSRef* ref, UInt8* path, UInt32 pathBufferSize);

// FSGetCatalogInfo
//
// Any result may be null. Catalog info is answered for the fields asked for. The parent of a volume's root is
// not a reference that exists: parentRef is zeroed then.
//
// Errors:     errFSBadFSRef; fnfErr  gone; paramErr  a field that is none of kFSCatInfoGettableInfo.
OSErr FSGetCatalogInfo(const FSRef* ref, FSCatalogInfoBitmap whichInfo, FSCatalogInfo* catalogInfo,
                       HFSUniStr255* outName, FSSpec* fsSpec, FSRef* parentRef);

// noErr when both name the same file; else errFSRefsDifferent, diffVolErr or errFSBadFSRef.
OSErr FSCompareFSRefs(const FSRef* ref1, const FSRef* ref2);

// The names of the two forks: empty, and "RESOURCE_FORK".
OSErr FSGetDataForkName(HFSUniStr255* dataForkName);
OSErr FSGetResourceForkName(HFSUniStr255* resourceForkName);

// The default directory. HGetVol's volName may be null. HSetVol with a null or empty name sets the directory;
// with a name, what it means there, which must be a folder. Errors: nsvErr, dirNFErr, bdNamErr.
OSErr HGetVol(StringPtr volName, SInt16* vRefNum, SInt32* dirID);
OSErr HSetVol(ConstStr63Param volName, SInt16 vRefNum, SInt32 dirID);

// An open file by its reference number, or the open files one after another. ioNamePtr may be null.
//
// Errors:     rfNumErr  no such number; fnOpnErr  fewer files are open; nsvErr.
OSErr PBGetFCBInfoSync(FCBPBPtr paramBlock);

// PBHGetVolParmsSync
//
// Fills ioReqCount bytes at ioBuffer with a GetVolParmsInfoBuffer, or as much of one as fits, and sets
// ioActCount. The volume is named by ioNamePtr or, when that is null or empty, ioVRefNum. Errors: nsvErr,
// paramErr.
OSErr PBHGetVolParmsSync(HParmBlkPtr paramBlock);

LAMPBLACK_END_C

// The rest of the File Manager.
#include <Carbon/FileCatalog.h>
#include <Carbon/FileChanges.h>
#include <Carbon/OpenForks.h>

#endif
