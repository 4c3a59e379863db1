// Aliases: records that find a file again after it was renamed or moved, and files that stand for others.
// Begin at ResolveAliasFile or FSNewAlias.
//
// A symbolic link of the host counts as an alias file. So does a file with kIsAlias among its Finder flags
// and a record in 'alis' 0 of its resource fork. Records have the published layout, big-endian throughout,
// and may be kept in resources as they are; docs/formats/alis.md describes it.
#ifndef LAMPBLACK_CARBON_ALIASES_H
#define LAMPBLACK_CARBON_ALIASES_H

#include <Carbon/Files.h>
#include <Carbon/MacTypes.h>

// The bytes in front: an OSType of the application's own and the record's length, both big-endian. Ask
// GetAliasUserType and GetAliasSize.
struct AliasRecord {
    UInt8 hidden[6];
};
typedef struct AliasRecord AliasRecord;
typedef AliasRecord* AliasPtr;
typedef AliasPtr* AliasHandle;

enum { rAliasType = 'alis' };

// What GetAliasInfo is asked for: above 0 the folders upward, 1 being the parent.
typedef SInt16 AliasInfoType;
enum { asiZoneName = -3, asiServerName = -2, asiVolumeName = -1, asiAliasName = 0, asiParentName = 1 };

// Mount flags.
enum { kResolveAliasFileNoUI = 0x00000001, kResolveAliasTryFileIDFirst = 0x00000002 };

LAMPBLACK_BEGIN_C

// FSNewAlias, NewAlias
//
// A record that leads to the target, which must be there. fromFile may be null; when it is not, the record
// also holds the way from it to the target, so that both can move together.
//
// Ownership:  *inAlias is the caller's; release it with DisposeHandle.
// Errors:     those of FSMakeFSSpec; errFSBadFSRef; memFullErr; paramErr.
OSErr FSNewAlias(const FSRef* fromFile, const FSRef* target, AliasHandle* inAlias);
OSErr FSNewAliasMinimal(const FSRef* target, AliasHandle* inAlias);
OSErr NewAlias(const FSSpec* fromFile, const FSSpec* target, AliasHandle* alias);
OSErr NewAliasMinimal(const FSSpec* target, AliasHandle* alias);

// A record from a Mac Roman full path ("Disk:folder:file"), which need not lead anywhere. Zone and server
// names may be null and are not kept. Errors: bdNamErr no full path; memFullErr; paramErr.
OSErr NewAliasMinimalFromFullPath(SInt16 fullPathLength, const void* fullPath, ConstStr32Param zoneName,
                                  ConstStr31Param serverName, AliasHandle* alias);

// FSResolveAlias, ResolveAlias
//
// What the record leads to: by the way from fromFile when one is given and the record has it, else by the
// path kept, else by the folders' names on the volume kept. *wasChanged says that the record was brought up
// to date because its target was found elsewhere.
//
// Errors:     fnfErr  the folder is there, the target is not (ResolveAlias fills in *target all the same);
//             dirNFErr  not even the folder; nsvErr  no such volume; paramErr  null, or not a record.
OSErr FSResolveAlias(const FSRef* fromFile, AliasHandle alias, FSRef* target, Boolean* wasChanged);
OSErr ResolveAlias(const FSSpec* fromFile, AliasHandle alias, FSSpec* target, Boolean* wasChanged);
OSErr FSResolveAliasWithMountFlags(const FSRef* fromFile, AliasHandle inAlias, FSRef* outTarget,
                                   Boolean* wasChanged, UInt32 mountFlags);
OSErr ResolveAliasWithMountFlags(const FSSpec* fromFile, AliasHandle alias, FSSpec* target,
                                 Boolean* wasChanged, UInt32 mountFlags);

// ResolveAliasFile, FSResolveAliasFile
//
// When the file is an alias file or a link, puts in its place what it leads to; with resolveAliasChains
// until that is none. Any other file or folder is left as it is, and *wasAliased is false. On an error
// *theSpec is unchanged.
//
// Errors:     fnfErr  a link or chain that leads nowhere, or back to itself; dirNFErr, nsvErr  as
//             ResolveAlias; resNotFound  an alias file without its record; paramErr  null, or a record that
//             is damaged.
OSErr ResolveAliasFile(FSSpec* theSpec, Boolean resolveAliasChains, Boolean* targetIsFolder,
                       Boolean* wasAliased);
OSErr FSResolveAliasFile(FSRef* theRef, Boolean resolveAliasChains, Boolean* targetIsFolder,
                         Boolean* wasAliased);
OSErr ResolveAliasFileWithMountFlags(FSSpec* theSpec, Boolean resolveAliasChains, Boolean* targetIsFolder,
                                     Boolean* wasAliased, UInt32 mountFlags);
OSErr FSResolveAliasFileWithMountFlags(FSRef* theRef, Boolean resolveAliasChains, Boolean* targetIsFolder,
                                       Boolean* wasAliased, UInt32 mountFlags);

// Whether it is an alias file or a link, and whether it stands for a folder, as far as that is seen without
// resolving it. Errors: those of FSMakeFSSpec, errFSBadFSRef, paramErr.
OSErr IsAliasFile(const FSSpec* fileFSSpec, Boolean* aliasFileFlag, Boolean* folderFlag);
OSErr FSIsAliasFile(const FSRef* fileRef, Boolean* aliasFileFlag, Boolean* folderFlag);

// FSUpdateAlias, UpdateAlias
//
// Makes the record anew for a target. *wasChanged says whether it came out otherwise. Errors: as
// FSNewAlias.
OSErr FSUpdateAlias(const FSRef* fromFile, const FSRef* target, AliasHandle alias, Boolean* wasChanged);
OSErr UpdateAlias(const FSSpec* fromFile, const FSSpec* target, AliasHandle alias, Boolean* wasChanged);

// A name kept in the record, without looking for the target; empty where there is none. theString is a
// Str63. Errors: paramErr.
OSErr GetAliasInfo(AliasHandle alias, AliasInfoType index, Str63 theString);

// Length and application's type of a record; 0 for what is not one.
Size GetAliasSize(AliasHandle alias);
Size GetAliasSizeFromPtr(const AliasRecord* alias);
OSType GetAliasUserType(AliasHandle alias);
OSType GetAliasUserTypeFromPtr(const AliasRecord* alias);
void SetAliasUserType(AliasHandle alias, OSType userType);
void SetAliasUserTypeWithPtr(AliasPtr alias, OSType userType);

LAMPBLACK_END_C

#endif
