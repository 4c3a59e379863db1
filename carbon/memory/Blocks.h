// What the files of this folder share: the allocation of blocks.
#ifndef LAMPBLACK_MEMORY_BLOCKS_H
#define LAMPBLACK_MEMORY_BLOCKS_H

#include "HandleBlock.h"

#include <algorithm>
#include <cstdlib>

#if defined(__SANITIZE_ADDRESS__)
#define LAMPBLACK_POISONS 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define LAMPBLACK_POISONS 1
#endif
#endif
#ifdef LAMPBLACK_POISONS
#include <sanitizer/asan_interface.h>
#endif

namespace lampblack::memory {

// Storage from malloc, after purging what is purgeable if need be; null when the size is absurd or memory is
// out.
void* Allocate(Size);

// Tells the sanitizer how many of the bytes in a record may be touched, as it knows of those from malloc.
inline void ShowFew([[maybe_unused]] HandleBlock* inBlock, [[maybe_unused]] Size inCount)
{
#ifdef LAMPBLACK_POISONS
    ASAN_UNPOISON_MEMORY_REGION(inBlock->few, (size_t)inCount);
    ASAN_POISON_MEMORY_REGION(inBlock->few + inCount, (size_t)(HandleBlock::kFew - inCount));
#endif
}

// Within the capacity.
inline void SetSize(HandleBlock* ioBlock, Size inSize)
{
    ioBlock->size = (SInt32)inSize;
    if (ioBlock->HoldsFew())
        ShowFew(ioBlock, inSize);
}

// Where a block's next data go: into its record, or else allocated; null as Allocate. The block's present data
// stay until Adopt, but for those in the record, which are the next ones then, too.
inline Ptr PlaceFor(HandleBlock* ioBlock, Size inSize)
{
    if ((size_t)inSize > (size_t)HandleBlock::kFew)
        return (Ptr)Allocate(inSize);
    ShowFew(ioBlock, ioBlock->HoldsFew() ? std::max<Size>(ioBlock->size, inSize) : inSize);
    return ioBlock->few;
}

inline void FreeData(HandleBlock* ioBlock)
{
    if (ioBlock->HoldsFew())
        ShowFew(ioBlock, 0);
    else if (ioBlock->data)
        std::free(ioBlock->data);
}

// Makes a place that was found the block's data, which has none.
inline void Adopt(HandleBlock* ioBlock, Ptr inData, Size inSize, Size inCapacity)
{
    ioBlock->data = inData;
    ioBlock->capacity = (SInt32)(inData == ioBlock->few ? HandleBlock::kFew : inCapacity);
    SetSize(ioBlock, inSize);
}

// Gives a block inSize bytes, keeping what fits; false when that cannot be. A locked block's caller asks
// first.
bool Resize(HandleBlock*, Size inSize);
bool Refit(HandleBlock*, Size inSize, Size inCapacity);

// Takes a block's bytes away; the handle stays.
void Release(HandleBlock*);

// Releases all that is purgeable and unlocked. Answers how many bytes that were.
Size PurgeAll();

} // namespace lampblack::memory

#endif
