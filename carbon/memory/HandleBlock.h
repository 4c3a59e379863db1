// The record behind a Handle, for the Memory Manager itself and for the floors that keep handles of their own
// alive: the Resource Manager is told when one of its handles goes.
#ifndef LAMPBLACK_MEMORY_HANDLEBLOCK_H
#define LAMPBLACK_MEMORY_HANDLEBLOCK_H

#include <Carbon/MacMemory.h>
#include <memory/ReferenceTable.h>

#include <cstdlib>

namespace lampblack::memory {

// No block is larger: sizes stay within what a 32-bit count of the published records can say.
inline constexpr Size kLargestBlock = 0x7FFFFFE0;

// A Handle is the address of `data`, which is why it stands first.
struct HandleBlock {
    Ptr data = nullptr; // null: an empty handle, or one whose data were purged
    Size size = 0;
    Size capacity = 0;
    UInt8 state = 0;        // kHandleLockedMask and so on
    bool isWatched = false; // the hook wants to hear of its end

    ~HandleBlock() { std::free(data); }
};

ReferenceTable<HandleBlock>& Handles();

// The block behind a handle. Null, and *outError (which may be null) is nilHandleErr or memWZErr, unless
// alive.
HandleBlock* FindHandle(Handle, OSErr* outError = nullptr);

// The hook is called with each watched handle before it is disposed of, whatever its state byte says by then
// (an application may change that). There is one hook.
void SetDisposalHook(void (*inHook)(Handle));
void WatchHandle(Handle, bool inWatch);

// Asked before a watched handle is purged for want of memory, or by PurgeMem: false keeps it. There is one
// hook, and it may neither make nor dispose of handles.
void SetPurgeHook(bool (*inHook)(Handle));

} // namespace lampblack::memory

#endif
