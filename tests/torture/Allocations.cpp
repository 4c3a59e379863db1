#include "Allocations.h"

#include <cerrno>
#include <cstddef>
#include <cstdlib>

#if defined(__SANITIZE_ADDRESS__)
#define LAMPBLACK_OWN_ALLOCATOR 0
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define LAMPBLACK_OWN_ALLOCATOR 0
#endif
#endif
#ifndef LAMPBLACK_OWN_ALLOCATOR
#define LAMPBLACK_OWN_ALLOCATOR 1
#endif

namespace {

int gFailAt = 0, gCount = 0;
bool gFailed = false;

bool MayAllocate()
{
    if (gFailAt == 0)
        return true;
    if (++gCount != gFailAt)
        return true;
    gFailed = true;
    errno = ENOMEM;
    return false;
}

} // namespace

namespace torture {

void FailAllocation(int inNth)
{
    gFailAt = inNth;
    gCount = 0;
    gFailed = false;
}

bool AllocationFailed()
{
    return gFailed;
}

int AllocationsSoFar()
{
    return gCount;
}

bool CanFailAllocations()
{
    return LAMPBLACK_OWN_ALLOCATOR && MayAllocate();
}

} // namespace torture

#if LAMPBLACK_OWN_ALLOCATOR
// The C library's allocator under the names it keeps for this purpose.
extern "C" void* __libc_malloc(size_t);
extern "C" void* __libc_calloc(size_t, size_t);
extern "C" void* __libc_realloc(void*, size_t);
extern "C" void* __libc_memalign(size_t, size_t);

extern "C" void* malloc(size_t inSize)
{
    return MayAllocate() ? __libc_malloc(inSize) : nullptr;
}

extern "C" void* calloc(size_t inCount, size_t inSize)
{
    return MayAllocate() ? __libc_calloc(inCount, inSize) : nullptr;
}

extern "C" void* realloc(void* inBlock, size_t inSize)
{
    return MayAllocate() ? __libc_realloc(inBlock, inSize) : nullptr;
}

extern "C" void* aligned_alloc(size_t inAlignment, size_t inSize)
{
    return MayAllocate() ? __libc_memalign(inAlignment, inSize) : nullptr;
}

extern "C" int posix_memalign(void** outBlock, size_t inAlignment, size_t inSize)
{
    if (!MayAllocate())
        return ENOMEM;
    *outBlock = __libc_memalign(inAlignment, inSize);
    return *outBlock ? 0 : ENOMEM;
}
#endif
