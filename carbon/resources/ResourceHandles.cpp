// Entries on the handle of a resource: loading, releasing, and what is known of it.
#include "ManagerState.h"
#include "ResourceFile.h"

#include <foundation/MacRoman.h>

#include <algorithm>
#include <cstring>
#include <new>

using namespace lampblack;
using namespace lampblack::resources;

namespace {

// The resource behind a handle, or null and the error of the call.
Resource Checked(Handle inHandle)
{
    const Resource resource = Chain().ResourceOf(inHandle);
    SetResourceError(resource ? noErr : resNotFound);
    return resource;
}

long SizeOnDisk(Handle inHandle)
{
    const Resource resource = Checked(inHandle);
    DataPlace place;
    if (!resource)
        return -1;
    if (resource.file->map.PlaceOf(resource.entry, &place))
        return (long)place.length;
    if (resource.IsChanged())
        return 0; // it was added and never written
    SetResourceError(eofErr);
    return -1;
}

} // namespace

void LoadResource(Handle theResource)
try {
    if (Checked(theResource))
        SetResourceError(Chain().Load(theResource));
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
}

void ReleaseResource(Handle theResource)
try {
    const Resource resource = Checked(theResource);
    if (resource && !resource.IsChanged())
        DisposeHandle(theResource); // which makes the chain forget it
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
}

void DetachResource(Handle theResource)
try {
    memory::HandleBlock* block = memory::FindHandle(theResource);
    if (!block || !block->keeper) {
        SetResourceError(resNotFound);
        return;
    }
    if (((ResourceFile*)block->keeper)->IsChanged(block->item)) {
        SetResourceError(resAttrErr);
        return;
    }
    Forget(block);
    block->state &= (UInt8)~kHandleIsResourceMask;
    memory::SetError(noErr);
    SetResourceError(noErr);
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
}

void GetResInfo(Handle theResource, SInt16* theID, ResType* theType, Str255 name)
try {
    const Resource resource = Checked(theResource);
    if (!resource)
        return;
    const ResourceInfo info = resource.Info();
    if (theID)
        *theID = info.id;
    if (theType)
        *theType = info.type;
    if (name)
        foundation::PascalFromMacRoman(info.name, name);
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
}

SInt16 GetResAttrs(Handle theResource)
try {
    const Resource resource = Checked(theResource);
    if (!resource)
        return 0;
    return (SInt16)(resource.Info().attributes | (resource.IsChanged() ? resChanged : 0));
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
    return 0;
}

long GetResourceSizeOnDisk(Handle theResource)
try {
    return SizeOnDisk(theResource);
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
    return 0;
}

long GetMaxResourceSize(Handle theResource)
try {
    return SizeOnDisk(theResource);
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
    return 0;
}

void ReadPartialResource(Handle theResource, long offset, void* buffer, long count)
try {
    const Resource resource = Checked(theResource);
    if (!resource)
        return;
    DataPlace place;
    const ResourceMap& map = resource.file->map;
    if (!buffer || offset < 0 || count < 0) {
        SetResourceError(paramErr);
        return;
    }
    const bool isThere = map.PlaceOf(resource.entry, &place);
    const size_t start = std::min((size_t)offset, place.length);
    const size_t length = std::min((size_t)count, place.length - start);
    if (!isThere || !map.Read(place.offset + start, length, buffer)) {
        SetResourceError(eofErr);
        return;
    }
    const bool isOut = length < (size_t)count || (size_t)offset > place.length;
    SetResourceError(isOut ? inputOutOfBounds : *theResource ? resourceInMemory : noErr);
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
}
