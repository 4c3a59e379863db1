// Non-relocatable blocks, the copying and clearing of bytes, the last error, and what memory there is.
#include "Blocks.h"
#include "ReferenceTable.h"

#include <Host.h>

#include <algorithm>
#include <cstring>
#include <new>
#include <unistd.h>

using namespace lampblack::memory;

namespace {

// What stands before the bytes that NewPtr hands out.
struct alignas(16) PointerHeader {
    Size size;
    Size capacity;
};

AddressSet& Pointers()
{
    static auto& set = *new AddressSet; // see gHandles
    return set;
}

PointerHeader* Checked(Ptr inPointer)
{
    const bool isLive = Pointers().Contains(inPointer);
    SetError(isLive ? noErr : memWZErr);
    return isLive ? (PointerHeader*)(void*)inPointer - 1 : nullptr;
}

Ptr NewPointer(Size inSize, bool inClear)
{
    const Size header = sizeof(PointerHeader);
    const bool isSane = inSize >= 0 && inSize <= kLargestBlock - header - 15;
    const Size capacity = isSane ? (inSize + 15) & ~(Size)15 : 0;
    PointerHeader* block = isSane ? (PointerHeader*)Allocate(header + capacity) : nullptr;
    SetError(block ? noErr : memFullErr);
    if (!block)
        return nullptr;
    *block = { inSize, capacity };
    Ptr data = (Ptr)(block + 1);
    if (inClear)
        std::memset(data, 0, (size_t)capacity);
    try {
        lampblack::host::Machine(); // is chosen with the first call
        Pointers().Insert(data);
    } catch (const std::bad_alloc&) {
        std::free(block);
        SetError(memFullErr);
        return nullptr;
    }
    return data;
}

long AvailableMemory()
{
    const long pages = sysconf(_SC_AVPHYS_PAGES), pageSize = sysconf(_SC_PAGESIZE);
    const bool isKnown = pages > 0 && pageSize > 0;
    return isKnown ? (long)std::min<int64_t>((int64_t)pages * pageSize, kLargestBlock) : (long)kLargestBlock;
}

} // namespace

namespace lampblack::memory {

constinit OSErr gError = noErr;

} // namespace lampblack::memory

Ptr NewPtr(Size byteCount)
{
    return NewPointer(byteCount, false);
}

Ptr NewPtrClear(Size byteCount)
{
    return NewPointer(byteCount, true);
}

void DisposePtr(Ptr p)
{
    PointerHeader* block = Checked(p);
    if (!block)
        return;
    Pointers().Erase(p);
    std::free(block);
}

Size GetPtrSize(Ptr p)
{
    const PointerHeader* block = Checked(p);
    return block ? block->size : 0;
}

void SetPtrSize(Ptr p, Size newSize)
{
    PointerHeader* block = Checked(p);
    if (!block)
        return;
    if (newSize < 0 || newSize > block->capacity)
        SetError(memFullErr);
    else
        block->size = newSize;
}

Boolean IsPointerValid(Ptr p)
{
    return Pointers().Contains(p);
}

void BlockMove(const void* srcPtr, void* destPtr, Size byteCount)
{
    if (srcPtr && destPtr && byteCount > 0)
        std::memmove(destPtr, srcPtr, (size_t)byteCount);
    SetError(noErr);
}

void BlockMoveData(const void* srcPtr, void* destPtr, Size byteCount)
{
    BlockMove(srcPtr, destPtr, byteCount);
}

void BlockMoveUncached(const void* srcPtr, void* destPtr, Size byteCount)
{
    BlockMove(srcPtr, destPtr, byteCount);
}

void BlockMoveDataUncached(const void* srcPtr, void* destPtr, Size byteCount)
{
    BlockMove(srcPtr, destPtr, byteCount);
}

void BlockZero(void* destPtr, Size byteCount)
{
    if (destPtr && byteCount > 0)
        std::memset(destPtr, 0, (size_t)byteCount);
    SetError(noErr);
}

void BlockZeroUncached(void* destPtr, Size byteCount)
{
    BlockZero(destPtr, byteCount);
}

OSErr MemError(void)
{
    return gError;
}

SInt16 LMGetMemErr(void)
{
    return gError;
}

void LMSetMemErr(SInt16 value)
{
    gError = value;
}

long FreeMem(void)
{
    SetError(noErr);
    return AvailableMemory();
}

Size MaxBlock(void)
{
    return FreeMem();
}

Size MaxMem(Size* grow)
{
    PurgeAll();
    if (grow)
        *grow = 0;
    return FreeMem();
}

void PurgeSpace(long* total, long* contig)
{
    const long available = FreeMem();
    if (total)
        *total = available;
    if (contig)
        *contig = available;
}

void PurgeMem(Size cbNeeded)
{
    const bool wasThere = AvailableMemory() >= cbNeeded;
    PurgeAll();
    SetError(wasThere || AvailableMemory() >= cbNeeded ? noErr : memFullErr);
}

Size CompactMem(Size)
{
    return FreeMem();
}

long TempFreeMem(void)
{
    return FreeMem();
}

Size TempMaxMem(Size* grow)
{
    return MaxMem(grow);
}
