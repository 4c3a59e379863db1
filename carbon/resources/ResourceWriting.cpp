// Entries that add, change, remove and write resources.
#include "ManagerState.h"
#include "ResourceFile.h"

#include <foundation/BigEndian.h>
#include <memory/HandleBlock.h>

#include <algorithm>
#include <cstring>
#include <new>

using namespace lampblack;
using namespace lampblack::resources;

namespace {

// Work that may run out of memory, as the error of the call.
template <typename Work>
void Guarded(Work&& inWork)
{
    ++gChainEdits;
    try {
        SetResourceError(inWork());
    } catch (const std::bad_alloc&) {
        SetResourceError(memFullErr);
    }
}

bool IsProtected(const Resource& inResource)
{
    return inResource.Info().attributes & resProtected;
}

OSErr CheckUnprotected(const Resource& inResource)
{
    if (!inResource)
        return resNotFound;
    return IsProtected(inResource) ? resAttrErr : noErr;
}

// Whether a resource may be changed.
OSErr CheckChange(const Resource& inResource)
{
    const OSErr error = CheckUnprotected(inResource);
    return error == noErr ? EnsureWritable(inResource.file) : error;
}

std::string_view NameOf(ConstStr255Param inName)
{
    return inName ? std::string_view((const char*)inName + 1, inName[0]) : std::string_view();
}

OSErr Add(Handle inData, ResType inType, SInt16 inID, ConstStr255Param inName)
{
    ResourceChain& chain = Chain();
    if (!IsHandleValid(inData) || !*inData || chain.ResourceOf(inData))
        return addResFailed;
    ResourceFile* file = chain.Current();
    if (!file)
        return resFNotFound;
    const OSErr error = EnsureWritable(file);
    if (error != noErr)
        return error;
    const uint32_t entry = file->map.Add(inType, inID, NameOf(inName));
    if (entry == kNoEntry)
        return addResFailed;
    try {
        chain.Bind(memory::FindHandle(inData), file, entry);
    } catch (const std::bad_alloc&) {
        file->map.Remove(entry);
        throw;
    }
    return noErr;
}

OSErr Remove(Handle inHandle)
{
    const Resource resource = Chain().ResourceOf(inHandle);
    if (!resource)
        return resNotFound;
    if (IsProtected(resource) || resource.file != Chain().Current())
        return rmvResFailed;
    const OSErr error = EnsureWritable(resource.file);
    if (error != noErr)
        return error;
    resource.file->map.Remove(resource.entry);
    Forget(memory::FindHandle(inHandle));
    HClrRBit(inHandle);
    return noErr;
}

// The data of a resource as the file has them; of one that was never written, as its handle has them.
std::vector<uint8_t> DataInFile(const Resource& inResource)
{
    DataPlace place;
    const ResourceMap& map = inResource.file->map;
    map.PlaceOf(inResource.entry, &place);
    std::vector<uint8_t> data(place.length);
    if (!map.Read(place.offset, place.length, data.data()))
        data.clear();
    return data;
}

OSErr WritePart(Handle inHandle, long inOffset, const void* inBytes, long inCount)
{
    const Resource resource = Chain().ResourceOf(inHandle);
    OSErr error = CheckChange(resource);
    if (error == noErr && !inBytes && inCount > 0)
        error = paramErr;
    if (error != noErr)
        return error;
    std::vector<uint8_t> data = DataInFile(resource);
    const size_t size = data.size();
    if (inOffset < 0 || inCount < 0 || (size_t)inOffset > size || inCount > memory::kLargestBlock - inOffset)
        return inputOutOfBounds;
    const size_t end = (size_t)inOffset + (size_t)inCount;
    data.resize(std::max(size, end));
    if (inCount > 0)
        std::memcpy(data.data() + inOffset, inBytes, (size_t)inCount);
    error = WriteBytes(resource.file, resource.entry, std::move(data));
    if (error != noErr)
        return error;
    return end > size ? writingPastEnd : *inHandle ? resourceInMemory : noErr;
}

OSErr Resize(Handle inHandle, long inSize)
{
    const Resource resource = Chain().ResourceOf(inHandle);
    const OSErr error = CheckChange(resource);
    if (error != noErr)
        return error;
    if (inSize < 0 || inSize > memory::kLargestBlock)
        return inputOutOfBounds;
    std::vector<uint8_t> data = DataInFile(resource);
    data.resize((size_t)inSize);
    return WriteBytes(resource.file, resource.entry, std::move(data));
}

bool gWritesPurged = false;

} // namespace

// A handle that is marked as changed is written before it is purged, or stays.
bool lampblack::resources::MayPurgeResource(Handle inHandle)
{
    const Resource resource = Chain().ResourceOf(inHandle);
    if (!resource || !resource.IsChanged())
        return true;
    return gWritesPurged && UpdateOne(resource.file, resource.entry) == noErr;
}

void AddResource(Handle theData, ResType theType, SInt16 theID, ConstStr255Param name)
try {
    Guarded([&] { return Add(theData, theType, theID, name); });
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
}

void RemoveResource(Handle theResource)
try {
    Guarded([&] { return Remove(theResource); });
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
}

void ChangedResource(Handle theResource)
try {
    Guarded([&] {
        const Resource resource = Chain().ResourceOf(theResource);
        const OSErr error = CheckChange(resource);
        if (error == noErr)
            resource.file->map.SetChanged(resource.entry, true);
        return error;
    });
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
}

void WriteResource(Handle theResource)
try {
    Guarded([&]() -> OSErr {
        const Resource resource = Chain().ResourceOf(theResource);
        const OSErr error = CheckUnprotected(resource);
        return error == noErr ? UpdateOne(resource.file, resource.entry) : error;
    });
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
}

void SetResInfo(Handle theResource, SInt16 theID, ConstStr255Param name)
try {
    Guarded([&]() -> OSErr {
        const Resource resource = Chain().ResourceOf(theResource);
        if (const OSErr error = CheckUnprotected(resource); error != noErr)
            return error;
        const std::string_view newName = NameOf(name);
        resource.file->loaded.Clear();
        gFront.LookAtTable();
        resource.file->map.SetInfo(resource.entry, theID, !newName.empty(), newName);
        return noErr;
    });
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
}

// The bit resChanged is set and cleared with the others, as published.
void SetResAttrs(Handle theResource, SInt16 attrs)
try {
    Guarded([&]() -> OSErr {
        const Resource resource = Chain().ResourceOf(theResource);
        if (!resource)
            return resNotFound;
        ResourceMap& map = resource.file->map;
        const bool isChanged = attrs & resChanged;
        const OSErr error = isChanged && !resource.IsChanged() ? EnsureWritable(resource.file) : (OSErr)noErr;
        if (error != noErr)
            return error;
        const bool mustStay = !isChanged && !map.IsInFile(resource.entry); // never written
        map.SetAttributes(resource.entry, (UInt8)attrs);
        map.SetChanged(resource.entry, isChanged || (mustStay && resource.IsChanged()));
        return noErr;
    });
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
}

void SetResPurge(Boolean install)
{
    Chain();
    gWritesPurged = install;
    SetResourceError(noErr);
}

void WritePartialResource(Handle theResource, long offset, const void* buffer, long count)
try {
    Guarded([&] { return WritePart(theResource, offset, buffer, count); });
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
}

void SetResourceSize(Handle theResource, long newSize)
try {
    Guarded([&] { return Resize(theResource, newSize); });
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
}
