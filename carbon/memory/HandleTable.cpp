// Where the records of handles lie: addresses are reserved once, and get memory as they are needed.
#include "Blocks.h"

#include <Host.h>

#include <algorithm>
#include <new>
#include <sys/mman.h>
#include <sys/resource.h>

#ifdef LAMPBLACK_POISONS
#include <sanitizer/lsan_interface.h>
#endif

namespace lampblack::memory {
namespace {

constexpr size_t kMostReserved = (size_t)1 << 32, kLeastReserved = (size_t)1 << 20; // bytes
constexpr size_t kStep = (size_t)1 << 18;

// A sixteenth of the addresses that a limited process may have.
size_t WantedAddresses()
{
    rlimit limit;
    if (getrlimit(RLIMIT_AS, &limit) != 0 || limit.rlim_cur == RLIM_INFINITY)
        return kMostReserved;
    return std::clamp<size_t>(limit.rlim_cur / 16 & ~(kStep - 1), kLeastReserved, kMostReserved);
}

// The data of handles are found through their records: whoever looks for leaks has to know of those.
void ShowToLeakChecker([[maybe_unused]] const void* inBegin, [[maybe_unused]] size_t inSize)
{
#ifdef LAMPBLACK_POISONS
    __lsan_register_root_region(inBegin, inSize);
#endif
}

// The machine is the one that was asked for before the first call; this may be that.
bool ChooseMachine()
try {
    host::Machine();
    return true;
} catch (const std::bad_alloc&) {
    return false;
}

} // namespace

constinit HandleTable gHandles; // handles are disposed of by destructors that run as late as any

bool HandleTable::Grow()
{
    if (!ChooseMachine())
        return false;
    constexpr int kFlags = MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE;
    for (size_t size = WantedAddresses(); !fBlocks && size >= kLeastReserved; size /= 2) {
        void* addresses = mmap(nullptr, size, PROT_NONE, kFlags, -1, 0);
        if (addresses == MAP_FAILED)
            continue;
        fBlocks = (HandleBlock*)addresses;
        fReserved = size / kStep * (kStep / sizeof(HandleBlock));
    }
    HandleBlock* next = fBlocks + fBacked;
    if (fBacked == fReserved || mprotect(next, kStep, PROT_READ | PROT_WRITE) != 0)
        return false;
    ShowToLeakChecker(next, kStep);
    fBacked += kStep / sizeof(HandleBlock);
    return true;
}

} // namespace lampblack::memory
