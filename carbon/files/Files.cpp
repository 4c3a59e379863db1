// Entries on FSSpecs and FSRefs: they check their arguments and ask the catalog.
#include <Carbon/Files.h>

#include "FileReferences.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <random>

using namespace lampblack::files;

namespace lampblack::files {

namespace {

// What stands in an FSRef. The cookie tells a reference of this process from foreign bytes.
struct RefContents {
    uint64_t cookie;
    SInt32 node;
    SInt16 volume;
};

uint64_t Cookie()
{
    static const uint64_t cookie = std::random_device()() | (uint64_t)std::random_device()() << 32 | 1;
    return cookie;
}

} // namespace

void MakeRef(const Item& inItem, FSRef* outRef)
{
    const Folder node = NodeOf(inItem);
    RefContents contents = {};
    contents.cookie = Cookie();
    contents.node = node.id;
    contents.volume = node.volume;
    *outRef = {};
    std::memcpy(outRef->hidden, &contents, sizeof contents);
}

OSErr ItemOfRef(const FSRef* inRef, Item* outItem)
{
    RefContents contents = {};
    if (!inRef)
        return paramErr;
    std::memcpy(&contents, inRef->hidden, sizeof contents);
    if (contents.cookie != Cookie() || contents.volume >= 0)
        return errFSBadFSRef;
    return ItemWithID({ contents.volume, contents.node }, outItem) ? noErr : fnfErr;
}

OSErr FolderOfRef(const FSRef* inRef, Item* outItem)
{
    Item item;
    const OSErr error = ItemOfRef(inRef, &item);
    if (error != noErr)
        return error;
    return FollowLinks(item, outItem) && outItem->isFolder ? noErr : errFSNotAFolder;
}

} // namespace lampblack::files

OSErr FSMakeFSSpec(SInt16 vRefNum, SInt32 dirID, ConstStr255Param fileName, FSSpec* spec)
try {
    if (!spec)
        return paramErr;
    Item item;
    const OSErr error = Resolve(vRefNum, dirID, fileName, &item);
    if (error == noErr || error == fnfErr)
        MakeSpec(item, spec);
    return error;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSpMakeFSRef(const FSSpec* source, FSRef* newRef)
try {
    if (!source || !newRef)
        return paramErr;
    Item item;
    const OSErr error = Resolve(*source, &item);
    if (error == noErr)
        MakeRef(item, newRef);
    return error;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSStatus FSPathMakeRef(const UInt8* path, FSRef* ref, Boolean* isDirectory)
try {
    if (!path || !*path || !ref)
        return paramErr;
    Item item;
    if (!ItemAtPath((const char*)path, &item))
        return fnfErr;
    MakeRef(item, ref);
    if (isDirectory)
        *isDirectory = item.isFolder;
    return noErr;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSStatus FSRefMakePath(const FSRef* ref, UInt8* path, UInt32 pathBufferSize)
try {
    if (!path)
        return paramErr;
    Item item;
    const OSErr error = ItemOfRef(ref, &item);
    if (error != noErr)
        return error;
    const std::string text = PathOf(item).native();
    if (text.size() + 1 > pathBufferSize)
        return pathTooLongErr;
    std::memcpy(path, text.c_str(), text.size() + 1);
    return noErr;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSCompareFSRefs(const FSRef* ref1, const FSRef* ref2)
try {
    Item first, second;
    OSErr error = ItemOfRef(ref1, &first);
    error = error != noErr ? error : ItemOfRef(ref2, &second);
    if (error != noErr)
        return error;
    if (first.parent.volume != second.parent.volume)
        return diffVolErr;
    return NodeOf(first) == NodeOf(second) ? noErr : errFSRefsDifferent;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSGetDataForkName(HFSUniStr255* dataForkName)
{
    if (!dataForkName)
        return paramErr;
    *dataForkName = {};
    return noErr;
}

OSErr FSGetResourceForkName(HFSUniStr255* resourceForkName)
try {
    constexpr std::u16string_view kName = u"RESOURCE_FORK";
    if (!resourceForkName)
        return paramErr;
    *resourceForkName = {};
    resourceForkName->length = (UInt16)kName.size();
    std::copy(kName.begin(), kName.end(), resourceForkName->unicode);
    return noErr;
} catch (const std::bad_alloc&) {
    return memFullErr;
}
