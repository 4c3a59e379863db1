// Open files and their reference numbers. The Resource Manager takes numbers here for the forks it reads, so
// that PBGetFCBInfo can say which file a number belongs to; the numbers that FSOpen and its kin give stand
// for an OpenFork besides. Begin at AddOpenFile, or at OpenItem.
#ifndef LAMPBLACK_FILES_OPENFILES_H
#define LAMPBLACK_FILES_OPENFILES_H

#include "Catalog.h"
#include "OpenFork.h"

#include <functional>

namespace lampblack::files {

struct OpenFile {
    Item item;
    bool isResourceFork = false;
    bool isWritable = false;
    SInt64 logicalSize = 0; // where there is no fork below
    SInt64 mark = 0;
    SInt16 refNum = 0;
    std::shared_ptr<OpenFork> fork; // null: a number of the Resource Manager, which reads and writes itself
    bool sharesWriting = false;
    bool hasWritten = false;
    int opener = 0; // the process
};

// The number given to an open file; 0 when there are too many. A number is not soon used again.
SInt16 AddOpenFile(OpenFile);
void RemoveOpenFile(SInt16 inRefNum);

// Null when the number is not in use. The pointer holds until a file is opened or closed.
OpenFile* FindOpenFile(SInt16 inRefNum);

// What is wrong with a number that is not in use: fnOpnErr when it once was, else rfNumErr.
OSErr ErrorOfNumber(SInt16 inRefNum);

// The nth open file of a volume (0: of all), 1 being the first; null: fewer are open.
const OpenFile* NthOpenFile(SInt16 inVolume, SInt16 inIndex);

SInt64 SizeOf(const OpenFile&);

// Whether any fork of an item is open.
bool IsOpen(const Item&, bool inResourceFork);

// The open file that may write a fork of an item; null: none in this process.
const OpenFile* WriterOf(const Item&, bool inResourceFork);

void ForEachOpenFile(const std::function<void(OpenFile&)>&);

// An item has another name or folder, or two have each other's: open files follow, also those within a
// folder.
void OpenFilesMoved(const Item& inFrom, const Item& inTo);
void OpenFilesExchanged(const Item&, const Item&);

// OpenItem, CloseFile
//
// Open a fork of an item with a published permission, and give the number back. The number of the writer that
// is in the way is in *outRefNum on opWrErr, when it is one of this process.
OSErr OpenItem(const Item&, bool inResourceFork, SInt8 inPermission, SInt16* outRefNum);
OSErr CloseFile(SInt16 inRefNum);

// Reads and writes from a place, a mode and an offset of SetFPos, and moves the mark. A null buffer is an
// error unless nothing is to be done. Errors: as FSReadFork, FSWriteFork.
OSErr ReadFile(OpenFile*, UInt16 inMode, SInt64 inOffset, size_t inCount, void* outBytes, size_t* outDone);
OSErr WriteFile(OpenFile*, UInt16 inMode, SInt64 inOffset, size_t inCount, const void* inBytes,
                size_t* outDone);
OSErr PlaceIn(const OpenFile&, UInt16 inMode, SInt64 inOffset, SInt64* outPlace);
OSErr SetMark(OpenFile*, UInt16 inMode, SInt64 inOffset);
OSErr SetEnd(OpenFile*, SInt64 inSize);
OSErr ReserveIn(OpenFile*, SInt64 inBytes);
OSErr FlushFile(OpenFile*);

// Everything of a volume that was written here goes to the disk. Answers the first error and flushes all the
// same.
OSErr FlushFilesOf(SInt16 inVolume);

} // namespace lampblack::files

#endif
