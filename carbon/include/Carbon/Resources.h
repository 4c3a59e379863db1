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
// current file. A file that is open already answers its first reference number; the current file stays.
//
// Errors:     -1 is answered, and ResError is fnfErr  no such file, dirNFErr, nsvErr;
//             eofErr  the file has no resource fork, or one of no bytes; mapReadErr  a fork that is no
//             resource map, or is damaged; permErr  the file cannot be read; tmfoErr  too many open files.
SInt16 FSpOpenResFile(const FSSpec* spec, SignedByte permission);
SInt16 FSOpenResFile(const FSRef* ref, SInt8 permission);
// FSOpenResourceFile: the fork's name is that of the resource fork ("RESOURCE_FORK"), or the empty name of
// the data fork, which must then hold a resource map itself.
OSErr FSOpenResourceFile(const FSRef* ref, UniCharCount forkNameLength, const UniChar* forkName,
                         SInt8 permissions, SInt16* refNum);
SInt16 HOpenResFile(SInt16 vRefNum, SInt32 dirID, ConstStr255Param fileName, SInt8 permission);
SInt16 OpenResFile(ConstStr255Param fileName);

// CloseResFile
//
// Releases the file's resources; their handles are dead afterwards. Errors: resFNotFound.
void CloseResFile(SInt16 refNum);

SInt16 GetResFileAttrs(SInt16 refNum); // Errors: resFNotFound

// GetResource and the calls like it
//
// Answer one handle for one resource as long as it is loaded, loading it unless SetResLoad(false). "1"
// searches only the current file. Names are compared without regard to case. When a type and ID stand twice
// in one file, the first counts.
//
// Ownership:  the Resource Manager owns the handle: ReleaseResource ends it, DetachResource hands it over.
// Errors:     null, and ResError is resNotFound; also memFullErr, eofErr for data cut off, or a flipper's
// error.
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
void ReleaseResource(Handle theResource);
void DetachResource(Handle theResource);

// Any result may be null. Errors: resNotFound  not a resource's handle.
void GetResInfo(Handle theResource, SInt16* theID, ResType* theType, Str255 name);
SInt16 GetResAttrs(Handle theResource);
long GetResourceSizeOnDisk(Handle theResource); // -1 on error
long GetMaxResourceSize(Handle theResource);

// ReadPartialResource
//
// Copies bytes of the resource as the file has them (no flipper is called), loaded or not.
//
// Errors:     inputOutOfBounds  the range passes the end: what lies inside is copied.
//             resourceInMemory  the resource is loaded: the bytes still come from the file.
void ReadPartialResource(Handle theResource, long offset, void* buffer, long count);

// 'STR ' and 'STR#'. GetString answers the resource's handle; GetIndString an empty string when there is
// none.
StringHandle GetString(SInt16 stringID);
void GetIndString(Str255 theString, SInt16 strListID, SInt16 index);

LAMPBLACK_END_C

#endif
