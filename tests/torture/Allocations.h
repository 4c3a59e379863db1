// An allocator that fails when it is told to. Linked into a program, it stands in front of malloc for the
// libraries too.
#ifndef LAMPBLACK_TESTS_TORTURE_ALLOCATIONS_H
#define LAMPBLACK_TESTS_TORTURE_ALLOCATIONS_H

namespace torture {

// The nth allocation from now on fails, once; 0: none does.
void FailAllocation(int inNth);

// Whether it came to that, and how many allocations there were since.
bool AllocationFailed();
int AllocationsSoFar();

// False under a sanitizer, which has an allocator of its own.
bool CanFailAllocations();

} // namespace torture

#endif
