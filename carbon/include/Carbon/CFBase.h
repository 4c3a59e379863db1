// References that count their owners: strings, and every later type of that family. Begin at CFRetain and
// CFRelease. A call whose name holds Create or Copy gives the caller a reference to release; one whose name
// holds Get does not.
//
// A null, released or foreign reference is answered with the neutral result that the call names and is never
// touched. Main thread only.
#ifndef LAMPBLACK_CARBON_CFBASE_H
#define LAMPBLACK_CARBON_CFBASE_H

#include <Carbon/MacTypes.h>

typedef signed long CFIndex;
typedef unsigned long CFTypeID;
typedef unsigned long CFHashCode;
typedef unsigned long CFOptionFlags;
typedef const void* CFTypeRef;

enum { kCFNotFound = -1 };

enum CFComparisonResult : CFIndex {
    kCFCompareLessThan = -1,
    kCFCompareEqualTo = 0,
    kCFCompareGreaterThan = 1
};

struct CFRange {
    CFIndex location;
    CFIndex length;
};
typedef struct CFRange CFRange;

static inline CFRange CFRangeMake(CFIndex loc, CFIndex len)
{
    CFRange range = { loc, len };
    return range;
}

LAMPBLACK_BEGIN_C

// Every object comes from malloc whatever allocator is named; NULL is the default one. As the deallocator of
// a "NoCopy" call, kCFAllocatorNull leaves the caller's bytes alone and the others free() them.
extern const CFAllocatorRef kCFAllocatorDefault;
extern const CFAllocatorRef kCFAllocatorSystemDefault;
extern const CFAllocatorRef kCFAllocatorMalloc;
extern const CFAllocatorRef kCFAllocatorNull;

CFTypeRef CFRetain(CFTypeRef cf); // answers cf; NULL when it is not alive
void CFRelease(CFTypeRef cf);     // the last owner's release ends the object

CFIndex CFGetRetainCount(CFTypeRef cf); // 0 when it is not alive; a constant's is the largest CFIndex
CFTypeID CFGetTypeID(CFTypeRef cf);     // 0 when it is not alive
Boolean CFEqual(CFTypeRef cf1, CFTypeRef cf2);
CFHashCode CFHash(CFTypeRef cf); // equal objects have equal codes

void CFShow(CFTypeRef obj); // one line to standard error, for debugging

LAMPBLACK_END_C

#endif
