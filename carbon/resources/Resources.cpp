// Entries that find, count and number resources.
#include <Carbon/Resources.h>

#include "Flippers.h"
#include "ManagerState.h"
#include "RecentLoads.h"
#include "ResourceFile.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <unordered_set>

using namespace lampblack::resources;

namespace lampblack::resources {
namespace {

bool gLoad = true;

// A resource and the file it was found in; file is null when there is none.
struct Found {
    ResourceFile* file = nullptr;
    uint32_t entry = kNoEntry;
};

// The files that a call searches: from the current one to the oldest, or the current one alone.
template <class Look>
Found Search(bool inCurrentOnly, Look&& inLook)
{
    const ResourceChain& chain = Chain();
    const auto& files = chain.Files();
    const size_t start = chain.CurrentIndex();
    const size_t end = inCurrentOnly ? std::min(start + 1, files.size()) : files.size();
    for (size_t i = start; i < end; ++i)
        if (const uint32_t entry = inLook(files[i]->map); entry != kNoEntry)
            return { files[i].get(), entry };
    return {};
}

Handle HandleOf(const Found& inFound)
{
    OSErr error = resNotFound;
    Handle handle = inFound.file ? Chain().HandleOf(inFound.file, inFound.entry, gLoad, &error) : nullptr;
    SetResourceError(error);
    return handle;
}

Handle GetByName(bool inCurrentOnly, ResType inType, ConstStr255Param inName)
{
    if (!inName)
        return HandleOf({});
    const std::string_view name((const char*)inName + 1, inName[0]);
    return HandleOf(
        Search(inCurrentOnly, [&](const ResourceMap& map) { return map.FindNamed(inType, name); }));
}

// A resource that was found by type and ID. What is asked for a second time while it is loaded will be asked for
// again: the table of the current file remembers it.
Handle HandleOfFound(const Found& inFound, ResType inType, SInt16 inID)
{
    ResourceFile* file = inFound.file;
    const Handle handle =
        file && inFound.entry < file->handles.size() ? file->handles[inFound.entry] : nullptr;
    if (!handle || !*handle)
        return HandleOf(inFound);
    if (file == gFront.file && file->loaded.Insert(inType, inID, handle)) {
        memory::FindHandle(handle)->isListed = true;
        gFront.LookAtTable();
    }
    SetResourceError(noErr);
    return handle;
}

RecentLoads gRecentLoads;

// What was just found by type and ID, and loaded.
void Remember(const Found& inFound, ResType inType, SInt16 inID)
{
    StoredResource stored;
    const uint8_t* bytes = nullptr;
    if (IsUnflipped(inType) && inFound.file->map.StoredInMemory(inFound.entry, &stored, &bytes))
        gRecentLoads.Keep({ inFound.file, bytes, 0, (uint32_t)stored.data.length, inFound.entry, inType, inID,
                            stored.attributes });
}

[[gnu::noinline]] Handle FindAndGet(bool inCurrentOnly, ResType inType, SInt16 inID)
try {
    if (const Handle handle = gFront.loaded.Find(inType, inID)) {
        SetResourceError(noErr);
        return handle;
    }
    const auto look = [&](const ResourceMap& map) { return map.Find(inType, inID); };
    const Found found = Search(inCurrentOnly, look);
    const Handle handle = HandleOfFound(found, inType, inID);
    if (handle && *handle && found.file == gFront.file)
        Remember(found, inType, inID);
    return handle;
} catch (const std::bad_alloc&) {
    gFront.LookAtTable(); // which may have grown before
    SetResourceError(memFullErr);
    return nullptr;
}

// The next copy of what was taken away after it had been loaded; else it is to be found.
[[gnu::noinline]] Handle LoadOrFind(bool inCurrentOnly, ResType inType, SInt16 inID)
{
    ResourceFile* file = gFront.file;
    const RecentLoad* load = gRecentLoads.Find(file, inType, inID);
    const bool isWanted = load && gLoad && load->entry < file->handles.size() && !file->handles[load->entry];
    memory::HandleBlock* block = isWanted ? memory::gHandles.New() : nullptr;
    if (!block)
        return FindAndGet(inCurrentOnly, inType, inID);
    if (!load->LoadInto(block)) {
        memory::DisposeBlock(block);
        return FindAndGet(inCurrentOnly, inType, inID);
    }
    file->Keep(block, load->entry);
    memory::SetError(noErr);
    SetResourceError(noErr);
    return (Handle)block;
}

// The usual case, a resource of the current file that is loaded already, takes the short way.
inline Handle GetByID(bool inCurrentOnly, ResType inType, SInt16 inID)
{
    if (const Handle handle = gFront.loaded.FindAtHome(inType, inID)) {
        SetResourceError(noErr);
        return handle;
    }
    return LoadOrFind(inCurrentOnly, inType, inID);
}

SInt16 ClampCount(size_t inCount)
{
    return (SInt16)std::min<size_t>(inCount, 0x7FFF);
}

size_t CountInChain(ResType inType)
{
    size_t count = 0;
    for (const auto& file : Chain().Files())
        count += file->map.CountOf(inType);
    return count;
}

// The types in all files, each once, in the order in which they are met from the top of the chain.
std::vector<OSType> TypesInChain()
{
    std::vector<OSType> types;
    std::unordered_set<OSType> seen;
    for (const auto& file : Chain().Files())
        for (size_t i = 0; i < file->map.TypeCount(); ++i)
            if (seen.insert(file->map.TypeAt(i)).second)
                types.push_back(file->map.TypeAt(i));
    return types;
}

bool IsInUse(bool inCurrentOnly, ResType inType, SInt16 inID)
{
    const auto& files = Chain().Files();
    return std::any_of(files.begin(), files.end(), [&](const auto& file) {
        return (!inCurrentOnly || file.get() == Chain().Current()) &&
               file->map.Find(inType, inID) != kNoEntry;
    });
}

// IDs up to 127 belong to the system.
SInt16 UnusedID(bool inCurrentOnly, ResType inType)
{
    SetResourceError(noErr);
    for (int id = 128; id <= 0x7FFF; ++id)
        if (!IsInUse(inCurrentOnly, inType, (SInt16)id))
            return (SInt16)id;
    SetResourceError(addResFailed);
    return 0;
}

void CopyPascal(StringPtr outString, const uint8_t* inText, size_t inLength)
{
    outString[0] = (unsigned char)inLength;
    std::memcpy(outString + 1, inText, inLength);
}

// The nth string of a 'STR#', 1 being the first; a string that passes the end is cut there.
void CopyNthString(Bytes inList, SInt16 inIndex, StringPtr outString)
{
    uint16_t count = 0;
    if (inList.size() >= 2)
        std::memcpy(&count, inList.data(), 2); // in native order, as every 'STR#' in a handle
    if (inIndex < 1 || inIndex > count)
        return;
    size_t at = 2;
    for (SInt16 i = 1; i < inIndex && at < inList.size(); ++i)
        at += 1u + inList[at];
    if (at < inList.size())
        CopyPascal(outString, inList.data() + at + 1, std::min<size_t>(inList[at], inList.size() - at - 1));
}

} // namespace

constinit OSErr gResourceError = noErr;

} // namespace lampblack::resources

SInt16 ResError(void)
{
    return gResourceError;
}
SInt16 LMGetResErr(void)
{
    return gResourceError;
}
void LMSetResErr(SInt16 value)
{
    gResourceError = value;
}

Handle GetResource(ResType theType, SInt16 theID)
{
    return GetByID(false, theType, theID);
}
Handle Get1Resource(ResType theType, SInt16 theID)
{
    return GetByID(true, theType, theID);
}
Handle RGetResource(ResType theType, SInt16 theID)
{
    return GetByID(false, theType, theID);
}

Handle GetNamedResource(ResType theType, ConstStr255Param name)
try {
    return GetByName(false, theType, name);
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
    return nullptr;
}
Handle Get1NamedResource(ResType theType, ConstStr255Param name)
try {
    return GetByName(true, theType, name);
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
    return nullptr;
}

// Every open file counts here, whichever is current.
Handle GetIndResource(ResType theType, SInt16 index)
try {
    size_t left = index > 0 ? (size_t)index - 1 : (size_t)-1;
    for (const auto& file : Chain().Files()) {
        const size_t count = file->map.CountOf(theType);
        if (left < count)
            return HandleOf({ file.get(), file->map.At(theType, left) });
        left -= count;
    }
    return HandleOf({});
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
    return nullptr;
}

Handle Get1IndResource(ResType theType, SInt16 index)
try {
    ResourceFile* file = Chain().Current();
    if (!file || index < 1 || (size_t)index > file->map.CountOf(theType))
        return HandleOf({});
    return HandleOf({ file, file->map.At(theType, (size_t)index - 1) });
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
    return nullptr;
}

SInt16 CountResources(ResType theType)
try {
    SetResourceError(noErr);
    return ClampCount(CountInChain(theType));
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
    return 0;
}

SInt16 Count1Resources(ResType theType)
try {
    SetResourceError(noErr);
    const ResourceFile* file = Chain().Current();
    return file ? ClampCount(file->map.CountOf(theType)) : (SInt16)0;
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
    return 0;
}

SInt16 CountTypes(void)
try {
    SetResourceError(noErr);
    return ClampCount(TypesInChain().size());
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
    return 0;
}

SInt16 Count1Types(void)
try {
    SetResourceError(noErr);
    const ResourceFile* file = Chain().Current();
    return file ? ClampCount(file->map.TypeCount()) : (SInt16)0;
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
    return 0;
}

void GetIndType(ResType* theType, SInt16 itemIndex)
try {
    const std::vector<OSType> types = TypesInChain();
    const bool isThere = itemIndex >= 1 && (size_t)itemIndex <= types.size();
    SetResourceError(theType ? noErr : paramErr);
    if (theType)
        *theType = isThere ? types[(size_t)itemIndex - 1] : 0;
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
}

void Get1IndType(ResType* theType, SInt16 itemIndex)
try {
    const ResourceFile* file = Chain().Current();
    SetResourceError(theType ? noErr : paramErr);
    if (theType)
        *theType = file && itemIndex >= 1 ? file->map.TypeAt((size_t)itemIndex - 1) : 0;
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
}

SInt16 UniqueID(ResType theType)
try {
    return UnusedID(false, theType);
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
    return 0;
}
SInt16 Unique1ID(ResType theType)
try {
    return UnusedID(true, theType);
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
    return 0;
}

void SetResLoad(Boolean load)
{
    gLoad = load;
    SetResourceError(noErr);
}

StringHandle GetString(SInt16 stringID)
{
    return (StringHandle)(void*)GetResource('STR ', stringID);
}

void GetIndString(Str255 theString, SInt16 strListID, SInt16 index)
try {
    if (!theString) {
        SetResourceError(paramErr);
        return;
    }
    theString[0] = 0;
    const Handle list = GetResource('STR#', strListID);
    OSErr error = ResError();
    if (list && !*list)
        error = SetResourceError(Chain().Load(list));
    if (list && error == noErr)
        CopyNthString(Bytes((const uint8_t*)*list, (size_t)GetHandleSize(list)), index, theString);
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
}
