// The Resource Manager: the chain of open resource files and the resources in them. Begin at GetResource.
//
// The application's own file is the one beside its executable (NAME.rsrc); it is opened on the first call and
// is the current file then. Every call sets ResError.
//
// BYTE ORDER. Files hold big-endian data. When a resource is loaded, the types that callers read as records
// are turned into native order; the handle then holds native data while the file stays as it is. These are
// turned:
//
//     'DLOG' 'ALRT' 'WIND'   every Rect, short and long, and the position word behind the title when it is
//     there 'DITL'                 the count, and of each item its handle field and Rect; resource IDs of
//     icon, picture
//                            and control items; the words of a help item
//     'CNTL'                 every Rect, short and long
//     'MBAR'                 every word
//     'STR#'                 the count
//     'CURS'                 all 34 words: a row of pixels is then one short, its leftmost pixel the high bit
//     'clut' 'wctb' 'cctb' 'dctb' 'actb'   the ColorTable record: seed, flags, size, and each entry's four
//     words 'styl'                 the style scrap: the count and each run
//
// A record that is cut off is turned as far as its fields are complete. Everything else is delivered as the
// file has it, big-endian: 'MENU', 'PICT', 'ICN#', 'icl8', 'cicn', 'ppat', 'PAT#', 'snd ', 'vers', 'ictb',
// 'mctb', 'dlgx', 'FOND' and so on; so are all other types unless a flipper is installed for them
// (CoreEndian.h).
#ifndef LAMPBLACK_CARBON_RESOURCES_H
#define LAMPBLACK_CARBON_RESOURCES_H

#include <Carbon/CoreEndian.h>
#include <Carbon/Files.h>
#include <Carbon/MacErrors.h>
#include <Carbon/MacMemory.h>
#include <Carbon/MacTypes.h>

typedef SInt16 ResFileRefNum;
typedef SInt16 ResourceIndex;
typedef SInt16 ResourceCount;
typedef SInt16 ResID;
typedef SInt16 ResAttributes;
typedef SInt16 ResFileAttributes;

// Attributes of a resource.
enum { resSysHeap = 64, resPurgeable = 32, resLocked = 16, resProtected = 8, resPreload = 4, resChanged = 2 };

// Attributes of a resource file.
enum { mapReadOnly = 128, mapCompact = 64, mapChanged = 32 };

enum { kResFileNotOpened = -1, kSystemResFile = 0 };

LAMPBLACK_BEGIN_C

SInt16 ResError(void);
SInt16 LMGetResErr(void);
void LMSetResErr(SInt16 value);

// The chain. Files are searched from the current one to those opened before it.
SInt16 CurResFile(void);

// UseResFile: kSystemResFile names the end of the chain, where nothing is found. Errors: resFNotFound.
void UseResFile(SInt16 refNum);
SInt16 HomeResFile(Handle theResource); // -1 and resNotFound when it is not a resource

// GetTopResourceFile, GetNextResourceFile
//
// The file opened last, and the one searched after a file; *outRefNum is 0 at the end of the chain.
OSErr GetTopResourceFile(SInt16* refNum);
OSErr GetNextResourceFile(SInt16 curRefNum, SInt16* nextRefNum);

// FSpOpenResFile, FSOpenResFile, FSOpenResourceFile, HOpenResFile, OpenResFile
//
// Open the resource fork of a file in whatever form it is kept, put it on top of the chain and make it the
// current file. fsRdPerm opens for reading; fsCurPerm for writing where that is possible, else for reading;
// all others for writing. A file that is open answers its first reference number, and the current file stays,
// when it is opened for reading again and is as it was then, or when it is open for writing and opened with
// fsCurPerm. Beside a writer, in this process or another, a file may be opened for reading: that reads what
// is on the disk.
//
// Errors:     -1 is answered, and ResError is fnfErr  no such file, dirNFErr, nsvErr;
//             eofErr  the file has no resource fork, or one of no bytes; mapReadErr  a fork that is no
//             resource map, or is damaged (for writing, any damage counts); permErr  the file cannot be read,
//             or not be written; wPrErr  read-only file system; opWrErr  somebody has it open for writing:
//             this process, or another, which is waited for about a second; tmfoErr  too many open files.
SInt16 FSpOpenResFile(const FSSpec* spec, SignedByte permission);
SInt16 FSOpenResFile(const FSRef* ref, SInt8 permission);
// FSOpenResourceFile: the fork's name is that of the resource fork ("RESOURCE_FORK"), or the empty name of
// the data fork, which must then hold a resource map itself.
OSErr FSOpenResourceFile(const FSRef* ref, UniCharCount forkNameLength, const UniChar* forkName,
                         SInt8 permissions, SInt16* refNum);
SInt16 HOpenResFile(SInt16 vRefNum, SInt32 dirID, ConstStr255Param fileName, SInt8 permission);
SInt16 OpenResFile(ConstStr255Param fileName);

// Whether the resource fork of a file is open, and its number; inChain, which may be null as refNum may, is
// set alike: every open file is in the chain.
Boolean FSResourceFileAlreadyOpen(const FSRef* resourceFileRef, Boolean* inChain, SInt16* refNum);

// FSpCreateResFile, HCreateResFile, CreateResFile, FSCreateResFile, FSCreateResourceFile,
// FSCreateResourceFork
//
// Make a file with an empty resource map, or give one that has no resource fork an empty map. A file that is
// there keeps its type and creator. The script is not kept. FSCreateResFile and FSCreateResourceFile make new
// files only and take type and creator from catalogInfo, if whichInfo says kFSCatInfoFinderInfo. Whatever may
// be null: name's file info, newRef, newSpec. Fork names are those of FSOpenResourceFile.
//
// Errors:     dupFNErr  it has a resource fork that is not empty (FSCreate...: the file is there);
//             fnfErr, dirNFErr, nsvErr, bdNamErr, errFSBadForkName, errFSBadFSRef; dskFulErr, permErr,
//             wPrErr.
void FSpCreateResFile(const FSSpec* spec, OSType creator, OSType fileType, ScriptCode scriptTag);
void HCreateResFile(SInt16 vRefNum, SInt32 dirID, ConstStr255Param fileName);
void CreateResFile(ConstStr255Param fileName);
void FSCreateResFile(const FSRef* parentRef, UniCharCount nameLength, const UniChar* name,
                     FSCatalogInfoBitmap whichInfo, const FSCatalogInfo* catalogInfo, FSRef* newRef,
                     FSSpec* newSpec);
OSErr FSCreateResourceFile(const FSRef* parentRef, UniCharCount nameLength, const UniChar* name,
                           FSCatalogInfoBitmap whichInfo, const FSCatalogInfo* catalogInfo,
                           UniCharCount forkNameLength, const UniChar* forkName, FSRef* newRef,
                           FSSpec* newSpec);
OSErr FSCreateResourceFork(const FSRef* ref, UniCharCount forkNameLength, const UniChar* forkName,
                           UInt32 flags);

// CloseResFile
//
// Updates the file as UpdateResFile does and releases its resources; their handles are dead afterwards. When
// the update fails the file is closed all the same, and holds what it held. Errors: resFNotFound; those of
// UpdateResFile.
void CloseResFile(SInt16 refNum);

// UpdateResFile
//
// Writes everything that was added, changed or removed, and the map. The file holds the whole old state or
// the whole new one at every instant, and the new one is on the disk when this returns. A file whose
// attribute mapReadOnly was set by SetResFileAttrs is left as it is, without an error. At the end of the
// process every file is updated.
//
// Errors:     resFNotFound; dskFulErr, wPrErr, permErr, ioErr: the file is as it was, and all that was
//             changed is still marked so, so that another call may succeed; addResFailed  the format cannot
//             hold it all (16 MB of data, 64 KB of names); what a flipper answers.
void UpdateResFile(SInt16 refNum);

// mapReadOnly is answered for a file that is open for reading only, mapChanged while something has to be
// written. mapCompact makes the next update leave no free space within the file. Errors: resFNotFound.
SInt16 GetResFileAttrs(SInt16 refNum);
void SetResFileAttrs(SInt16 refNum, SInt16 attrs);

// GetResource and the calls like it
//
// Answer one handle for one resource as long as it is loaded, loading it unless SetResLoad(false). "1"
// searches only the current file. Names are compared without regard to case. When a type and ID stand twice
// in one file, the first counts.
//
// Ownership:  the Resource Manager owns the handle: ReleaseResource ends it, DetachResource hands it over.
// Errors:     null, and ResError is resNotFound; also memFullErr, eofErr for data cut off, or a flipper's
//             error.
Handle GetResource(ResType theType, SInt16 theID);
Handle Get1Resource(ResType theType, SInt16 theID);
Handle GetNamedResource(ResType theType, ConstStr255Param name);
Handle Get1NamedResource(ResType theType, ConstStr255Param name);
Handle GetIndResource(ResType theType, SInt16 index);
Handle Get1IndResource(ResType theType, SInt16 index);
Handle RGetResource(ResType theType, SInt16 theID);

SInt16 CountResources(ResType theType);
SInt16 Count1Resources(ResType theType);
SInt16 CountTypes(void);
SInt16 Count1Types(void);
void GetIndType(ResType* theType, SInt16 itemIndex); // 0 when there is no such type
void Get1IndType(ResType* theType, SInt16 itemIndex);

// An ID above 127 that no resource of the type has, in the chain or in the current file.
SInt16 UniqueID(ResType theType);
SInt16 Unique1ID(ResType theType);

void SetResLoad(Boolean load);
void LoadResource(Handle theResource);

// ReleaseResource does nothing to a resource that is changed and not yet written. DetachResource makes an
// ordinary handle of a resource's. Errors: resNotFound  not a resource's handle; resAttrErr  DetachResource
// of a changed one.
void ReleaseResource(Handle theResource);
void DetachResource(Handle theResource);

// AddResource
//
// Makes a handle a resource of the current file, marked as changed. The handle itself becomes the resource's.
// A name that is null or empty is no name. Whether the ID is in use is not looked at: of two, the first in
// the file counts.
//
// Errors:     addResFailed  a null, disposed or empty handle, one that is a resource's, or one resource more
//             than the format holds; resFNotFound  no current file; wrPermErr  it is open for reading only.
void AddResource(Handle theData, ResType theType, SInt16 theID, ConstStr255Param name);

// ChangedResource marks a resource, so that the next update writes the handle's data and what SetResInfo and
// SetResAttrs changed. Until then the handle is not purged. Errors: resNotFound; resAttrErr  resProtected;
// wrPermErr.
void ChangedResource(Handle theResource);

// WriteResource
//
// Writes one resource, if it is marked as changed, and the map; data of others that are changed stay to be
// written. What became of the data in the handle and in the file is as for UpdateResFile. A purged handle
// writes nothing.
//
// Errors:     resNotFound; resAttrErr  resProtected; wrPermErr; those of UpdateResFile.
void WriteResource(Handle theResource);

// RemoveResource takes a resource out of the current file's map; its handle is an ordinary one afterwards and
// the caller's. Errors: resNotFound; rmvResFailed  resProtected, or a resource of another file; wrPermErr.
void RemoveResource(Handle theResource);

// Any result may be null. Errors: resNotFound  not a resource's handle.
void GetResInfo(Handle theResource, SInt16* theID, ResType* theType, Str255 name);
SInt16 GetResAttrs(Handle theResource);

// SetResInfo, SetResAttrs: in memory at once, and in the file with the next map that is written;
// ChangedResource makes sure that one is. A null or empty name leaves the name. The attributes of the handle
// (locked, purgeable) are those it was loaded with. Errors: resNotFound; resAttrErr  SetResInfo of a
// protected resource.
void SetResInfo(Handle theResource, SInt16 theID, ConstStr255Param name);
void SetResAttrs(Handle theResource, SInt16 attrs);

// With true, purging a handle that is marked as changed first writes it; otherwise it is not purged.
void SetResPurge(Boolean install);

long GetResourceSizeOnDisk(Handle theResource); // -1 on error; 0 for one that was never written
long GetMaxResourceSize(Handle theResource);

// ReadPartialResource
//
// Copies bytes of the resource as the file has them (no flipper is called), loaded or not.
//
// Errors:     inputOutOfBounds  the range passes the end: what lies inside is copied.
//             resourceInMemory  the resource is loaded: the bytes still come from the file.
void ReadPartialResource(Handle theResource, long offset, void* buffer, long count);

// WritePartialResource, SetResourceSize
//
// Write bytes into the resource as the file has it (no flipper is called), and make it shorter, or longer by
// zeros, in the file; both at once and durably. The handle is left as it is.
//
// Errors:     resNotFound; resAttrErr  resProtected; wrPermErr; inputOutOfBounds  a negative offset, count or
//             size, or an offset behind the end; writingPastEnd  the range passed the end: the resource was
//             made longer and all is written; resourceInMemory  the resource is loaded: the bytes were
//             written all the same.
void WritePartialResource(Handle theResource, long offset, const void* buffer, long count);
void SetResourceSize(Handle theResource, long newSize);

// 'STR ' and 'STR#'. GetString answers the resource's handle; GetIndString an empty string when there is
// none.
StringHandle GetString(SInt16 stringID);
void GetIndString(Str255 theString, SInt16 strListID, SInt16 index);

LAMPBLACK_END_C

#endif
