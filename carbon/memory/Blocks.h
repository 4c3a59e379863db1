// What the files of this folder share: the allocation of blocks, and the error of the last call.
#ifndef LAMPBLACK_MEMORY_BLOCKS_H
#define LAMPBLACK_MEMORY_BLOCKS_H

#include "HandleBlock.h"

namespace lampblack::memory {

// Storage from malloc, after purging what is purgeable if need be; null when the size is absurd or memory is
// out.
void* Allocate(Size);

// Gives a block inSize bytes, keeping what fits; false when that cannot be. A locked block's caller asks
// first.
bool Resize(HandleBlock*, Size inSize);
bool Refit(HandleBlock*, Size inSize, Size inCapacity);

// Takes a block's bytes away; the handle stays.
void Release(HandleBlock*);

// Releases all that is purgeable and unlocked. Answers how many bytes that were.
Size PurgeAll();

void TellOfDisposal(HandleBlock*);

extern constinit OSErr gError; // what MemError answers
inline void SetError(OSErr inError)
{
    gError = inError;
}

} // namespace lampblack::memory

#endif
