// Storage of handles: how a block gets, keeps and loses its bytes.
#include "Blocks.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace lampblack::memory {
namespace {

HandleWatcher gWatcher;

} // namespace

void SetHandleWatcher(const HandleWatcher& inWatcher)
{
    gWatcher = inWatcher;
}

HandleBlock* NewBlock(Size inSize)
{
    HandleBlock* block = gHandles.New();
    if (!block || GiveData(block, inSize))
        return block;
    gHandles.Delete(block);
    return nullptr;
}

bool GiveData(HandleBlock* ioBlock, Size inSize)
{
    const Ptr data = PlaceFor(ioBlock, inSize);
    if (data)
        Adopt(ioBlock, data, inSize, inSize);
    return data;
}

void DisposeBlock(HandleBlock* inBlock)
{
    if (inBlock->keeper && gWatcher.disposed)
        gWatcher.disposed((Handle)inBlock);
    FreeData(inBlock);
    gHandles.Delete(inBlock);
}

void* Allocate(Size inSize)
{
    if (inSize < 0 || inSize > kLargestBlock)
        return nullptr;
    const size_t bytes = std::max<size_t>((size_t)inSize, 1);
    if (void* storage = std::malloc(bytes))
        return storage;
    PurgeAll();
    return std::malloc(bytes);
}

bool Resize(HandleBlock* ioBlock, Size inSize)
{
    if (inSize < 0 || inSize > kLargestBlock)
        return false;
    const Size leastKept = ioBlock->HoldsFew() ? 0 : ioBlock->capacity / 4;
    if (ioBlock->data && inSize <= ioBlock->capacity && inSize >= leastKept) {
        SetSize(ioBlock, inSize);
        return true;
    }
    // A block that has grown once will grow again: room to spare keeps a loop of small appends linear.
    const bool grows = ioBlock->data && inSize > ioBlock->size;
    const Size capacity = grows ? std::min(kLargestBlock, inSize + inSize / 2) : inSize;
    return Refit(ioBlock, inSize, capacity) || Refit(ioBlock, inSize, inSize);
}

bool Refit(HandleBlock* ioBlock, Size inSize, Size inCapacity)
{
    const Ptr data = PlaceFor(ioBlock, inCapacity);
    if (!data)
        return false;
    if (data == ioBlock->data) {
        SetSize(ioBlock, inSize);
        return true;
    }
    if (ioBlock->data)
        std::memcpy(data, ioBlock->data, (size_t)std::min<Size>(ioBlock->size, inSize));
    FreeData(ioBlock);
    Adopt(ioBlock, data, inSize, inCapacity);
    return true;
}

void Release(HandleBlock* ioBlock)
{
    const bool isHeardOf = ioBlock->data && ioBlock->keeper && gWatcher.emptied;
    FreeData(ioBlock);
    ioBlock->data = nullptr;
    ioBlock->size = ioBlock->capacity = 0;
    if (isHeardOf)
        gWatcher.emptied(ioBlock);
}

Size PurgeAll()
{
    Size freed = 0;
    gHandles.ForEach([&](HandleBlock* block) {
        const UInt8 bits = block->state & (kHandleLockedMask | kHandlePurgeableMask);
        if (bits != kHandlePurgeableMask)
            return;
        if (block->keeper && gWatcher.mayPurge && !gWatcher.mayPurge((Handle)block))
            return;
        freed += block->size;
        Release(block);
    });
    return freed;
}

} // namespace lampblack::memory
