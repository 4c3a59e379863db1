// Helpers over the File Manager: creating, copying, comparing, dates, sizes and names of files, whole forks
// in a handle. Files from drags and descriptors are in FileDescriptors.h, menus of files in FolderMenus.h.
//
// Every call answers paramErr for a null pointer that it needs, and else what the File Manager answers.
#ifndef LAMPBLACK_PREFS_FILEHELPERS_H
#define LAMPBLACK_PREFS_FILEHELPERS_H

#include <Carbon/Carbon.h>

#include "util/Visibility.h"

LAMPBLACK_BEGIN

// --- Whole forks

// FSReadHandle, FSpReadDF
//
// A new handle with as many bytes as the fork has, read from the mark of an open fork or from the start of a
// file's data fork.
// Ownership: the caller's. Null on any error.
OSStatus FSReadHandle(SInt16 inRefNum, Handle* outData);
OSStatus FSpReadDF(const FSSpec* inSpec, Handle* outData);

// FSWriteHandle, FSpWriteDF
//
// Make a fork's bytes those of a handle. The handle stays the caller's.
OSStatus FSWriteHandle(SInt16 inRefNum, Handle inData);
OSStatus FSpWriteDF(const FSSpec* inSpec, Handle inData);

// --- Creating and copying

// FSpCreateFile
//
// Makes a file with an empty resource fork; one that is there keeps its forks and gets the creator and type.
OSStatus FSpCreateFile(const FSSpec* inSpec, OSType inCreator, OSType inType);

// FSpCopyFile
//
// Copies a file with its creator, type and forks; the destination may be there.
OSStatus FSpCopyFile(const FSSpec* inSource, const FSSpec* inDestination);

// FSpCopyForks, FSpCopyFork
//
// Make the destination's forks, or one of them, equal to the source's. An empty fork of the source leaves
// the destination's as it was: kept.
// Errors:     memFullErr  no buffer of at least 128 KB.
OSStatus FSpCopyForks(const FSSpec* inSource, const FSSpec* inDestination);
OSStatus FSpCopyFork(const FSSpec* inSource, const FSSpec* inDestination, Boolean inResourceFork);

// --- Facts

// Logical sizes of the two forks in bytes; either may be null.
OSStatus GetFileSize(SInt16 inVRefNum, SInt32 inDirID, ConstStr255Param inName, UInt32* outDataSize,
                     UInt32* outResourceSize);
OSStatus FSpGetFileSize(const FSSpec* inSpec, UInt32* outDataSize, UInt32* outResourceSize);

// Dates of a file, or of the directory itself when the name is null or empty.
// Units: seconds since midnight, 1 January 1904, local time, 32 bits of them. The setter sets both dates.
OSStatus GetLongCreateDateTime(SInt16 inVRefNum, SInt32 inDirID, ConstStr255Param inName, SInt64* outDate);
OSStatus GetLongModDateTime(SInt16 inVRefNum, SInt32 inDirID, ConstStr255Param inName, SInt64* outDate);
OSStatus FSSetLongDateTime(SInt16 inVRefNum, SInt32 inDirID, ConstStr255Param inName, SInt64 inDate);
OSStatus FSpGetLongCreateDateTime(const FSSpec* inSpec, SInt64* outDate);
OSStatus FSpGetLongModDateTime(const FSSpec* inSpec, SInt64* outDate);
OSStatus FSpSetLongDateTime(const FSSpec* inSpec, SInt64 inDate);

// Whether there is such a file; a folder does not count, nor does an FSSpec without volume, directory or
// name.
Boolean FSpExists(const FSSpec* inSpec);

// FSpIsDirectory
//
// Whether it is a folder, and its directory ID (which may be null). A volume answers true and the ID 1.
// Errors:     paramErr for an FSSpec without volume, directory or name.
OSStatus FSpIsDirectory(const FSSpec* inSpec, Boolean* outIsDirectory, SInt32* outDirID);

// Whether both name the same place; false when either cannot be made out.
Boolean EqualFSSpec(const FSSpec* inA, const FSSpec* inB);

// The ID of the folder that the file is in: kept, applications store it as the file's.
SInt32 FSpGetFileID(const FSSpec* inSpec);

// The number in a file's 'vers' resource.
// Errors: resNotFound.
OSStatus FSpGetVersion(const FSSpec* inSpec, SInt16 inID, NumVersion* outVersion);

// A volume's facts by path name, or by reference when that is null; the block's name pointer is null after
// it.
OSStatus GetVolumeInfoNoName(ConstStr255Param inPath, SInt16 inVRefNum, HParamBlockRec* outBlock);
OSStatus DetermineVRefNum(ConstStr255Param inPath, SInt16 inVRefNum, SInt16* outVRefNum);

// --- Names and places

// ResolveFileID
//
// The file behind an open file's reference number, as an FSSpec on the given volume.
// Errors: rfNumErr for a reference that is not open, else what FSMakeFSSpec answers.
OSStatus ResolveFileID(SInt16 inVRefNum, SInt16 inRefNum, FSSpec* outSpec);

// The FSSpec as FSMakeFSSpec makes it of its own fields, whatever the error.
OSStatus FSpNormalize(FSSpec* ioSpec);

// What an alias file points at, through any number of them; another file stays as it is.
OSStatus FSpResolveAliasFile(FSSpec* ioSpec);

// GetFullPathname
//
// "Volume:Folder:File".
// Errors: -1410 when it would pass 255 bytes; the last part of it is there then.
OSStatus GetFullPathname(FSSpec* ioSpec, StringPtr outPath);

// The Unicode name of a file in Mac Roman, as a Pascal string, cut at the buffer's size. On systems before
// 9.0 the FSSpec's own name, and paramErr for an FSRef.
OSStatus FSpGetLongFilename(const FSSpec* inSpec, StringPtr outName, UInt32 inSize);
OSStatus FSGetLongFilename(const FSRef* inRef, StringPtr outName, UInt32 inSize);

// A Unicode name in Mac Roman, as a Pascal or C string.
// Errors: paramErr when it is none.
OSStatus GetUnicodeName(const HFSUniStr255* inName, unsigned char* outName, UInt32 inSize);
OSStatus GetUnicodeName(const HFSUniStr255* inName, char* outName, UInt32 inSize);

// Puts a prefix in front of a string, cut at 255 bytes.
void PStringInsert(StringPtr ioText, ConstStr255Param inPrefix);

LAMPBLACK_END

#endif
