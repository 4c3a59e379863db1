// The Memory Manager: relocatable blocks (handles), pointers, and the error that the last call left.
// Begin at NewHandle. Every call sets MemError; a null, disposed or foreign reference is an error there.
#ifndef LAMPBLACK_CARBON_MACMEMORY_H
#define LAMPBLACK_CARBON_MACMEMORY_H

#include <Carbon/MacErrors.h>
#include <Carbon/MacTypes.h>

// Bits of the state byte of HGetState.
enum {
    kHandleIsResourceBit = 5,
    kHandlePurgeableBit = 6,
    kHandleLockedBit = 7,
    kHandleIsResourceMask = 0x20,
    kHandlePurgeableMask = 0x40,
    kHandleLockedMask = 0x80
};

LAMPBLACK_BEGIN_C

// NewHandle, NewHandleClear, NewEmptyHandle, TempNewHandle
//
// Make a relocatable block. A block of 0 bytes has a data pointer; an empty handle has none until
// ReallocateHandle. The contents of NewHandle are undefined.
//
// Ownership:  the caller owns the result; release it with DisposeHandle.
// Errors:     memFullErr  a negative size, one above 2 GB, or no memory, even after purging what is
//             purgeable.
Handle NewHandle(Size byteCount);
Handle NewHandleClear(Size byteCount);
Handle NewEmptyHandle(void);
Handle TempNewHandle(Size logicalSize, OSErr* resultCode);

// Errors of everything below that takes a handle: nilHandleErr for a null or (where data is needed) purged
// handle, memWZErr for one that is disposed or was never a handle.
void DisposeHandle(Handle h);

Size GetHandleSize(Handle h); // 0 for an empty handle, without error

// SetHandleSize
//
// Grows or shrinks a block, which may move; added bytes are undefined.
//
// Errors:     memLockedErr  the block is locked and cannot grow where it is.
void SetHandleSize(Handle h, Size newSize);

void HLock(Handle h);
void HUnlock(Handle h);
void HPurge(Handle h);
void HNoPurge(Handle h);
void HSetRBit(Handle h);
void HClrRBit(Handle h);
SInt8 HGetState(Handle h);
void HSetState(Handle h, SInt8 flags);

// Blocks move only when they are resized, so that moving one aside has nothing left to do but to check it.
void MoveHHi(Handle h);
void HLockHi(Handle h);

// EmptyHandle, ReallocateHandle
//
// Release the data of a block and keep its handle; give it data anew, of undefined contents.
//
// Errors:     memPurErr   EmptyHandle of a locked block.
//             memLockedErr ReallocateHandle of a locked block.
void EmptyHandle(Handle h);
void ReallocateHandle(Handle h, Size byteCount);

// RecoverHandle
//
// The handle whose data begins at p. Errors: memBCErr  no handle's data does.
Handle RecoverHandle(Ptr p);

Boolean IsHandleValid(Handle h);
Boolean IsPointerValid(Ptr p);

// HandToHand replaces *theHndl by a handle of a copy, unlocked and not purgeable. PtrToXHand makes an
// existing handle's data a copy of the bytes; HandAndHand and PtrAndHand append to hand2.
OSErr HandToHand(Handle* theHndl);
OSErr PtrToHand(const void* srcPtr, Handle* dstHndl, long size);
OSErr PtrToXHand(const void* srcPtr, Handle dstHndl, long size);
OSErr HandAndHand(Handle hand1, Handle hand2);
OSErr PtrAndHand(const void* ptr1, Handle hand2, long size);

// Errors: memFullErr as for handles; memWZErr for a pointer that is not one of NewPtr's.
Ptr NewPtr(Size byteCount);
Ptr NewPtrClear(Size byteCount);
void DisposePtr(Ptr p);
Size GetPtrSize(Ptr p);
void SetPtrSize(Ptr p,
                Size newSize); // a pointer's block grows only into the slack behind it: else memFullErr

// Copy and clear; source and destination may overlap. A null pointer or a count of 0 or less does nothing.
void BlockMove(const void* srcPtr, void* destPtr, Size byteCount);
void BlockMoveData(const void* srcPtr, void* destPtr, Size byteCount);
void BlockMoveUncached(const void* srcPtr, void* destPtr, Size byteCount);
void BlockMoveDataUncached(const void* srcPtr, void* destPtr, Size byteCount);
void BlockZero(void* destPtr, Size byteCount);
void BlockZeroUncached(void* destPtr, Size byteCount);

// The result of the last Memory Manager call.
OSErr MemError(void);
SInt16 LMGetMemErr(void);
void LMSetMemErr(SInt16 value);

// What can be had, in bytes, capped at the largest block there can be (2 GB).
long FreeMem(void);
Size MaxBlock(void);
Size MaxMem(Size* grow);                    // purges; *grow, which may be null, is set to 0
void PurgeSpace(long* total, long* contig); // either may be null
void PurgeMem(Size cbNeeded);   // empties every purgeable, unlocked block; memFullErr if too little
Size CompactMem(Size cbNeeded); // the largest block there is
long TempFreeMem(void);
Size TempMaxMem(Size* grow);

// Munger
//
// Searches a block from an offset for bytes and replaces them. With ptr1 null, len1 bytes at the offset are
// replaced (all to the end when len1 is negative); with len1 0, ptr2's bytes are inserted; with ptr2 null
// nothing is replaced; with len2 0, what was found is deleted. If the rest of the block from the offset on
// equals only the beginning of what is sought, that rest is replaced.
//
// Returns the offset behind the replacement, or of what was found when ptr2 is null; negative when not found.
long Munger(Handle h, long offset, const void* ptr1, long len1, const void* ptr2, long len2);

LAMPBLACK_END_C

#endif
