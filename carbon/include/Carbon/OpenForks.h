// The File Manager's calls on open forks: opening, reading, writing, sizes, positions. Part of Files.h; begin
// at FSpOpenDF.
#include <Carbon/Files.h> // which includes this in turn, and so comes first

#ifndef LAMPBLACK_CARBON_OPENFORKS_H
#define LAMPBLACK_CARBON_OPENFORKS_H

// Where a read, a write or SetFPos begins, and what may be added to that in a parameter block. In newline
// mode the high byte is the character that ends the read. The wishes about caches are taken and change
// nothing.
enum {
    fsAtMark = 0,
    fsFromStart = 1,
    fsFromLEOF = 2,
    fsFromMark = 3,
    pleaseCacheBit = 4,
    pleaseCacheMask = 0x0010,
    noCacheBit = 5,
    noCacheMask = 0x0020,
    rdVerifyBit = 6,
    rdVerifyMask = 0x0040,
    rdVerify = 64,
    newLineBit = 7,
    newLineMask = 0x0080,
    newLineCharMask = 0xFF00
};

LAMPBLACK_BEGIN_C

// FSpOpenDF and the calls like it open the data fork, FSpOpenRF and its kin the resource fork, wherever the
// host keeps it. A fork has one writer at most, in this process or in another, and any number of readers
// besides; with fsRdWrShPerm several share writing. fsCurPerm writes when that is possible and reads
// otherwise. fsWrPerm may read too.
//
// What is written into a data fork is in the file at once. What is written into a resource fork is kept apart
// until FSClose, PBFlushFile, FSFlushFork or FlushVol, which put it in place whole and durably or report why
// not and leave the old fork.
//
// A symbolic link is followed, within its volume.
//
// Errors:     fnfErr  no such file, or a folder; permErr  the file is locked or may not be read or written;
//             opWrErr  another writer has it: when it is one of this process, *refNum is its number;
//             tmfoErr; wPrErr; dirNFErr, nsvErr, bdNamErr; paramErr  a permission that is none, null.
OSErr FSpOpenDF(const FSSpec* spec, SInt8 permission, FSIORefNum* refNum);
OSErr FSpOpenRF(const FSSpec* spec, SInt8 permission, FSIORefNum* refNum);
OSErr HOpen(FSVolumeRefNum vRefNum, SInt32 dirID, ConstStr255Param fileName, SInt8 permission,
            FSIORefNum* refNum);
OSErr HOpenDF(FSVolumeRefNum vRefNum, SInt32 dirID, ConstStr255Param fileName, SInt8 permission,
              FSIORefNum* refNum);
OSErr HOpenRF(FSVolumeRefNum vRefNum, SInt32 dirID, ConstStr255Param fileName, SInt8 permission,
              FSIORefNum* refNum);
OSErr FSOpen(ConstStr255Param fileName, FSVolumeRefNum vRefNum, FSIORefNum* refNum); // with fsCurPerm

// FSClose
//
// The number is not in use afterwards, whatever is answered. Errors: rfNumErr, fnOpnErr; and, when what was
// written into a resource fork could not be put in place, dskFulErr, ioErr, wPrErr, permErr.
OSErr FSClose(FSIORefNum refNum);

// FSRead, FSWrite
//
// From the mark on, which moves by what was done; *count becomes that number of bytes. Buffers are read into
// and written from directly.
//
// Errors:     eofErr  the fork ended first; dskFulErr  and *count of the bytes were written;
//             wrPermErr  not open for writing; paramErr  a negative count, null; fileBoundsErr  beyond 2 GB;
//             rfNumErr, or fnOpnErr for a number that was in use once; ioErr.
OSErr FSRead(FSIORefNum refNum, SInt32* count, void* buffPtr);
OSErr FSWrite(FSIORefNum refNum, SInt32* count, const void* buffPtr);

// GetEOF, SetEOF, Allocate, AllocContig, GetFPos, SetFPos
//
// A mark beyond a new end is moved to it. Bytes between an old and a new end are zero. Allocate makes sure of
// room for *count more bytes without moving the end.
//
// Errors:     rfNumErr, fnOpnErr; fileBoundsErr  a number that does not fit into the result;
//             paramErr  a negative size, null; dskFulErr, wrPermErr. SetFPos: posErr  before the start, the
//             mark stays; eofErr  beyond the end, the mark is at the end.
OSErr GetEOF(FSIORefNum refNum, SInt32* logEOF);
OSErr SetEOF(FSIORefNum refNum, SInt32 logEOF);
OSErr Allocate(FSIORefNum refNum, SInt32* count);
OSErr AllocContig(FSVolumeRefNum refNum, SInt32* count);
OSErr GetFPos(FSIORefNum refNum, SInt32* filePos);
OSErr SetFPos(FSIORefNum refNum, SInt16 posMode, SInt32 posOff);

// FlushVol
//
// Everything written to files of the volume in this process is on the disk afterwards. The volume is named by
// volName or, when that is null or empty, vRefNum. Errors: nsvErr; as FSClose.
OSErr FlushVol(ConstStr63Param volName, FSVolumeRefNum vRefNum);

// The same with parameter blocks. ioPosMode and ioPosOffset say where PBRead and PBWrite begin; ioPosOffset
// is the mark afterwards; ioMisc is the end for PBGetEOF and PBSetEOF. The asynchronous forms are done when
// they return, and call ioCompletion before that.
OSErr PBHOpenSync(HParmBlkPtr paramBlock);
OSErr PBHOpenDFSync(HParmBlkPtr paramBlock);
OSErr PBHOpenRFSync(HParmBlkPtr paramBlock);
OSErr PBCloseSync(ParmBlkPtr paramBlock);
OSErr PBReadSync(ParmBlkPtr paramBlock);
OSErr PBWriteSync(ParmBlkPtr paramBlock);
OSErr PBGetEOFSync(ParmBlkPtr paramBlock);
OSErr PBSetEOFSync(ParmBlkPtr paramBlock);
OSErr PBGetFPosSync(ParmBlkPtr paramBlock);
OSErr PBSetFPosSync(ParmBlkPtr paramBlock);
OSErr PBAllocateSync(ParmBlkPtr paramBlock);
OSErr PBAllocContigSync(ParmBlkPtr paramBlock);
OSErr PBFlushFileSync(ParmBlkPtr paramBlock);
OSErr PBFlushVolSync(ParmBlkPtr paramBlock);
OSErr PBReadAsync(ParmBlkPtr paramBlock);
OSErr PBWriteAsync(ParmBlkPtr paramBlock);
OSErr PBCloseAsync(ParmBlkPtr paramBlock);
OSErr PBFlushFileAsync(ParmBlkPtr paramBlock);
OSErr PBFlushVolAsync(ParmBlkPtr paramBlock);

// FSOpenFork and the calls on the number it gives
//
// As above with 64-bit offsets; the numbers are of one kind. A file always has both forks, empty perhaps:
// FSCreateFork makes sure of one, FSDeleteFork empties it.
//
// Errors:     as above, and errFSBadForkName  neither fork has that name; notAFileErr  a folder;
//             errFSBadFSRef; errFSBadForkRef  for a number not in use; errFSBadPosMode; errFSForkExists
//             FSCreateFork of a fork that has bytes; fBsyErr  FSDeleteFork of an open one.
OSErr FSCreateFork(const FSRef* ref, UniCharCount forkNameLength, const UniChar* forkName);
OSErr FSDeleteFork(const FSRef* ref, UniCharCount forkNameLength, const UniChar* forkName);
OSErr FSOpenFork(const FSRef* ref, UniCharCount forkNameLength, const UniChar* forkName, SInt8 permissions,
                 FSIORefNum* forkRefNum);
OSErr FSReadFork(FSIORefNum forkRefNum, UInt16 positionMode, SInt64 positionOffset, ByteCount requestCount,
                 void* buffer, ByteCount* actualCount); // actualCount may be null
OSErr FSWriteFork(FSIORefNum forkRefNum, UInt16 positionMode, SInt64 positionOffset, ByteCount requestCount,
                  const void* buffer, ByteCount* actualCount); // actualCount may be null
OSErr FSGetForkPosition(FSIORefNum forkRefNum, SInt64* position);
OSErr FSSetForkPosition(FSIORefNum forkRefNum, UInt16 positionMode, SInt64 positionOffset);
OSErr FSGetForkSize(FSIORefNum forkRefNum, SInt64* forkSize);
OSErr FSSetForkSize(FSIORefNum forkRefNum, UInt16 positionMode, SInt64 positionOffset);
OSErr FSFlushFork(FSIORefNum forkRefNum);
OSErr FSCloseFork(FSIORefNum forkRefNum);

LAMPBLACK_END_C

// For callers that keep counts and IDs in a long: only a pointer to one picks these.
template <class Long, class Call>
inline OSErr LampblackThroughSInt32(Long* ioValue, Call inCall)
{
    if (*ioValue != (SInt32)*ioValue)
        return paramErr;
    SInt32 value = (SInt32)*ioValue;
    const OSErr error = inCall(&value);
    *ioValue = value;
    return error;
}

#define LAMPBLACK_IF_LONG LAMPBLACK_IF_TYPE(Long, long)

LAMPBLACK_IF_LONG inline OSErr FSRead(FSIORefNum refNum, Long* count, void* buffPtr)
{
    return LampblackThroughSInt32(count, [&](SInt32* value) { return FSRead(refNum, value, buffPtr); });
}

LAMPBLACK_IF_LONG inline OSErr FSWrite(FSIORefNum refNum, Long* count, const void* buffPtr)
{
    return LampblackThroughSInt32(count, [&](SInt32* value) { return FSWrite(refNum, value, buffPtr); });
}

LAMPBLACK_IF_LONG inline OSErr Allocate(FSIORefNum refNum, Long* count)
{
    return LampblackThroughSInt32(count, [&](SInt32* value) { return Allocate(refNum, value); });
}

LAMPBLACK_IF_LONG inline OSErr GetEOF(FSIORefNum refNum, Long* logEOF)
{
    *logEOF = 0;
    return LampblackThroughSInt32(logEOF, [&](SInt32* value) { return GetEOF(refNum, value); });
}

LAMPBLACK_IF_LONG inline OSErr GetFPos(FSIORefNum refNum, Long* filePos)
{
    *filePos = 0;
    return LampblackThroughSInt32(filePos, [&](SInt32* value) { return GetFPos(refNum, value); });
}

#endif
