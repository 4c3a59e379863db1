// Entries on handles: they check their arguments, call HandleBlock.cpp, and leave MemError.
#include "Blocks.h"

#include <algorithm>
#include <cstring>

using namespace lampblack::memory;

namespace {

// The block behind a handle; the error of the call is set either way.
HandleBlock* Checked(Handle inHandle)
{
    OSErr error;
    HandleBlock* block = FindHandle(inHandle, &error);
    SetError(error);
    return block;
}

// The same, for calls that need data.
HandleBlock* CheckedWithData(Handle inHandle)
{
    HandleBlock* block = Checked(inHandle);
    if (block && !block->data)
        SetError(nilHandleErr);
    return block && block->data ? block : nullptr;
}

Handle NewHandleOf(Size inSize)
{
    HandleBlock* block = NewBlock(inSize);
    SetError(block ? noErr : memFullErr);
    return (Handle)block;
}

void ChangeState(Handle inHandle, UInt8 inSet, UInt8 inClear)
{
    if (HandleBlock* block = Checked(inHandle))
        block->state = (UInt8)((block->state & ~inClear) | inSet);
}

// Appends bytes to a block. They may lie in the block itself, which moves when it grows.
OSErr Append(const void* inBytes, HandleBlock* ioBlock, Size inCount)
{
    const Size old = ioBlock->data ? ioBlock->size : 0;
    if (inCount < 0 || old > kLargestBlock - inCount)
        return memFullErr;
    if ((ioBlock->state & kHandleLockedMask) && old + inCount > ioBlock->capacity)
        return memLockedErr;
    const char* source = (const char*)inBytes;
    const bool isInside = ioBlock->data && source >= ioBlock->data && source < ioBlock->data + old;
    const Size place = isInside ? source - ioBlock->data : 0;
    if (isInside && inCount > old - place)
        return paramErr;
    if (!Resize(ioBlock, old + inCount))
        return memFullErr;
    if (inCount > 0)
        std::memcpy(ioBlock->data + old, isInside ? ioBlock->data + place : source, (size_t)inCount);
    return noErr;
}

// Puts bytes into a locked block, which stays where it is. They may lie in it.
OSErr Overwrite(HandleBlock* ioBlock, const void* inBytes, Size inSize)
{
    if (inSize < 0 || inSize > ioBlock->capacity)
        return inSize < 0 ? memFullErr : memLockedErr;
    SetSize(ioBlock, std::max<Size>(ioBlock->size, inSize));
    if (inSize > 0)
        std::memmove(ioBlock->data, inBytes, (size_t)inSize);
    SetSize(ioBlock, inSize);
    return noErr;
}

OSErr Remember(OSErr inError)
{
    SetError(inError);
    return inError;
}

} // namespace

Handle NewHandle(Size byteCount)
{
    return NewHandleOf(byteCount);
}

Handle NewHandleClear(Size byteCount)
{
    const Handle handle = NewHandleOf(byteCount);
    if (handle && byteCount > 0)
        std::memset(*handle, 0, (size_t)byteCount);
    return handle;
}

Handle NewEmptyHandle(void)
{
    HandleBlock* block = gHandles.New();
    SetError(block ? noErr : memFullErr);
    return (Handle)block;
}

Handle TempNewHandle(Size logicalSize, OSErr* resultCode)
{
    Handle handle = NewHandleOf(logicalSize);
    if (resultCode)
        *resultCode = MemError();
    return handle;
}

void DisposeHandle(Handle h)
{
    HandleBlock* block = Checked(h);
    if (!block)
        return;
    DisposeBlock(block);
    SetError(noErr);
}

Size GetHandleSize(Handle h)
{
    const HandleBlock* block = Checked(h);
    return block ? block->size : 0;
}

void SetHandleSize(Handle h, Size newSize)
{
    HandleBlock* block = CheckedWithData(h);
    if (!block)
        return;
    if ((block->state & kHandleLockedMask) && newSize <= block->capacity && newSize >= 0)
        SetSize(block, newSize);
    else if (block->state & kHandleLockedMask)
        SetError(newSize < 0 || newSize > kLargestBlock ? memFullErr : memLockedErr);
    else if (!Resize(block, newSize))
        SetError(memFullErr);
}

void HLock(Handle h)
{
    ChangeState(h, kHandleLockedMask, 0);
}
void HUnlock(Handle h)
{
    ChangeState(h, 0, kHandleLockedMask);
}
void HPurge(Handle h)
{
    ChangeState(h, kHandlePurgeableMask, 0);
}
void HNoPurge(Handle h)
{
    ChangeState(h, 0, kHandlePurgeableMask);
}
void HSetRBit(Handle h)
{
    ChangeState(h, kHandleIsResourceMask, 0);
}
void HClrRBit(Handle h)
{
    ChangeState(h, 0, kHandleIsResourceMask);
}

SInt8 HGetState(Handle h)
{
    const HandleBlock* block = Checked(h);
    return block ? (SInt8)block->state : 0;
}

void HSetState(Handle h, SInt8 flags)
{
    constexpr UInt8 kAll = kHandleLockedMask | kHandlePurgeableMask | kHandleIsResourceMask;
    ChangeState(h, (UInt8)flags & kAll, kAll);
}

void MoveHHi(Handle h)
{
    const HandleBlock* block = CheckedWithData(h);
    if (block && (block->state & kHandleLockedMask))
        SetError(memLockedErr);
}

void HLockHi(Handle h)
{
    if (CheckedWithData(h))
        HLock(h);
}

void EmptyHandle(Handle h)
{
    HandleBlock* block = Checked(h);
    if (!block)
        return;
    if (block->state & kHandleLockedMask)
        SetError(memPurErr);
    else
        Release(block);
}

void ReallocateHandle(Handle h, Size byteCount)
{
    HandleBlock* block = Checked(h);
    if (!block)
        return;
    if (block->state & kHandleLockedMask) {
        SetError(memLockedErr);
        return;
    }
    const Ptr data = PlaceFor(block, byteCount);
    SetError(data ? noErr : memFullErr);
    if (!data)
        return;
    Release(block);
    Adopt(block, data, byteCount, byteCount);
}

Handle RecoverHandle(Ptr p)
{
    Handle found = nullptr;
    gHandles.ForEach([&](HandleBlock* block) {
        if (p && block->data == p)
            found = (Handle)block;
    });
    SetError(found ? noErr : memBCErr);
    return found;
}

Boolean IsHandleValid(Handle h)
{
    return gHandles.Find(h) != nullptr;
}

OSErr HandToHand(Handle* theHndl)
{
    if (!theHndl)
        return Remember(paramErr);
    const HandleBlock* source = CheckedWithData(*theHndl);
    if (!source)
        return MemError();
    const Handle copy = NewHandleOf(source->size);
    if (!copy)
        return MemError();
    if (!source->data) { // purged to make room for the copy
        DisposeHandle(copy);
        return Remember(nilHandleErr);
    }
    std::memcpy(*copy, source->data, (size_t)source->size);
    *theHndl = copy;
    return noErr;
}

OSErr PtrToHand(const void* srcPtr, Handle* dstHndl, long size)
{
    if (!dstHndl || (!srcPtr && size > 0))
        return Remember(paramErr);
    *dstHndl = NewHandleOf(size);
    if (*dstHndl && size > 0)
        std::memcpy(**dstHndl, srcPtr, (size_t)size);
    return MemError();
}

OSErr PtrToXHand(const void* srcPtr, Handle dstHndl, long size)
{
    HandleBlock* block = Checked(dstHndl);
    if (!block)
        return MemError();
    if (!srcPtr && size > 0)
        return Remember(paramErr);
    if (block->state & kHandleLockedMask)
        return Remember(Overwrite(block, srcPtr, size));
    // The source may be the block's own data: it is copied before that is given up.
    const Ptr data = PlaceFor(block, size);
    if (!data)
        return Remember(memFullErr);
    if (size > 0)
        std::memmove(data, srcPtr, (size_t)size);
    Release(block);
    Adopt(block, data, size, size);
    return noErr;
}

OSErr HandAndHand(Handle hand1, Handle hand2)
{
    const HandleBlock* source = CheckedWithData(hand1);
    if (!source)
        return MemError();
    HandleBlock* destination = Checked(hand2);
    return destination ? Remember(Append(source->data, destination, source->size)) : MemError();
}

OSErr PtrAndHand(const void* ptr1, Handle hand2, long size)
{
    HandleBlock* destination = Checked(hand2);
    if (!destination)
        return MemError();
    return Remember(!ptr1 && size > 0 ? (OSErr)paramErr : Append(ptr1, destination, size));
}
