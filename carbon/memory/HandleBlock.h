// The record behind a Handle, for the Memory Manager itself and for the floor that keeps handles of its own
// alive: the Resource Manager is told when one of its handles goes, or its data.
//
//     if (HandleBlock* block = FindHandle(handle)) ...      // null unless alive
//
// All records lie in one stretch of addresses, so that whether a reference is one of them is seen without a
// look-up, and the record itself says whether it is alive.
#ifndef LAMPBLACK_MEMORY_HANDLEBLOCK_H
#define LAMPBLACK_MEMORY_HANDLEBLOCK_H

#include <Carbon/MacMemory.h>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <new>

namespace lampblack::memory {

// No block is larger: sizes stay within what a 32-bit count of the published records can say.
inline constexpr Size kLargestBlock = 0x7FFFFFE0;

// A Handle is the address of `data`, which is why it stands first. Few bytes lie in the record itself: for most
// handles that live for a moment, a value of a resource for instance, nothing is allocated.
struct alignas(64) HandleBlock {
    static constexpr Size kFew = 32;

    Ptr data = nullptr;     // null: an empty handle, or one whose data were purged
    void* keeper = nullptr; // whose handle it is, for the watcher; null: nobody watches it
    SInt32 size = 0;
    SInt32 capacity = 0;
    UInt32 item = 0; // which of the keeper's; of a record that is not alive, the next free one
    UInt8 state = 0; // kHandleLockedMask and so on
    bool isAlive = false;
    bool isListed = false; // for the keeper's own use
    alignas(16) char few[kFew];

    HandleBlock() {} // the bytes of `few` are left as they are

    bool HoldsFew() const { return data == few; }
};
static_assert(sizeof(HandleBlock) == 64);

// The records of all handles. An address is not given out again until a few hundred others have been, so that
// a stale reference does not soon become a live one.
class HandleTable {
public:
    HandleBlock* Find(void* inReference) const
    {
        // What is no multiple of a record's size becomes a huge number.
        const uint64_t distance = (uint64_t)((uintptr_t)inReference - (uintptr_t)fBlocks);
        if (std::rotr(distance, std::countr_zero(sizeof(HandleBlock))) >= fUsed)
            return nullptr;
        HandleBlock* block = (HandleBlock*)inReference;
        return block->isAlive ? block : nullptr;
    }

    HandleBlock* New() // null without memory
    {
        const bool mayReuse = fFreeCount > kQuarantine;
        if (!mayReuse && fUsed == fBacked && !Grow())
            return nullptr;
        HandleBlock* block = new (mayReuse ? TakeFree() : fBlocks + fUsed++) HandleBlock;
        block->isAlive = true;
        ++fCount;
        return block;
    }

    // Its bytes have been given back.
    void Delete(HandleBlock* inBlock)
    {
        const UInt32 index = (UInt32)(inBlock - fBlocks);
        new (inBlock) HandleBlock;
        (fFreeCount ? fBlocks[fNewestFree].item : fOldestFree) = index;
        fNewestFree = index;
        ++fFreeCount;
        --fCount;
    }

    size_t Count() const { return fCount; }

    // Calls inVisit(HandleBlock*) for each that is alive when its turn comes; it may make and delete others.
    template <class Visitor>
    void ForEach(Visitor&& inVisit)
    {
        for (size_t i = 0; i < fUsed; ++i)
            if (fBlocks[i].isAlive)
                inVisit(fBlocks + i);
    }

private:
    static constexpr size_t kQuarantine = 256; // disposed records whose addresses are not yet used again

    HandleBlock* TakeFree()
    {
        HandleBlock* block = fBlocks + fOldestFree;
        fOldestFree = block->item;
        --fFreeCount;
        return block;
    }
    bool Grow();

    HandleBlock* fBlocks =
        nullptr; // addresses for fReserved; the memory of fBacked; fUsed were ever given out
    size_t fReserved = 0, fBacked = 0, fUsed = 0;
    size_t fCount = 0, fFreeCount = 0;
    UInt32 fOldestFree = 0, fNewestFree = 0;
};

[[gnu::visibility("hidden")]] extern constinit HandleTable gHandles;

// The block behind a handle. Null, and *outError (which may be null) is nilHandleErr or memWZErr, unless
// alive.
inline HandleBlock* FindHandle(Handle inHandle, OSErr* outError = nullptr)
{
    HandleBlock* block = gHandles.Find(inHandle);
    if (outError)
        *outError = block ? (OSErr)noErr : inHandle ? (OSErr)memWZErr : (OSErr)nilHandleErr;
    return block;
}

// NewBlock, GiveData, DisposeBlock
//
// What NewHandle, ReallocateHandle and DisposeHandle do with a handle that is known to be alive, for the keeper
// of handles: no error is set. NewBlock answers null, and GiveData false, without memory or for a size that is
// none. GiveData wants a block without data.
HandleBlock* NewBlock(Size);
bool GiveData(HandleBlock*, Size);
void DisposeBlock(HandleBlock*);

[[gnu::visibility("hidden")]] extern constinit OSErr gError; // what MemError answers
inline void SetError(OSErr inError)
{
    gError = inError;
}

// Who keeps handles of its own hears of what happens to them. There is one, and it sets keeper and item of
// each block.
struct HandleWatcher {
    void (*disposed)(Handle) = nullptr;      // before it is disposed of
    void (*emptied)(HandleBlock*) = nullptr; // its data are gone, the handle stays; may not fail
    // Asked before it is purged for want of memory, or by PurgeMem: false keeps it. It may neither make nor
    // dispose of handles.
    bool (*mayPurge)(Handle) = nullptr;
};
void SetHandleWatcher(const HandleWatcher&);

} // namespace lampblack::memory

#endif
