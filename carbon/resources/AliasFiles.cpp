// Alias files: symbolic links of the host, and files with a record in 'alis' 0 of their resource fork.
#include <Carbon/Aliases.h>

#include "ResourceFork.h"

#include <files/AliasTargets.h>
#include <files/FileReferences.h>
#include <files/ItemFacts.h>

#include <algorithm>
#include <new>
#include <vector>

using namespace lampblack;
using namespace lampblack::resources;
using files::Item;

namespace {

constexpr size_t kLongestChain = 64;

// Types of the Finder's alias files that stand for folders, volumes and the like.
constexpr OSType kFolderAliasTypes[] = { 'fdrp', 'hdsk', 'srvr', 'faex', 'famn', 'fact', 'faps', 'fash',
                                         'faet', 'fast', 'fapf', 'fapn', 'fadr', 'trsh', 'fasy', 'famf' };

bool IsAliasRecordFile(const Item& inItem)
{
    return !inItem.isLink && !inItem.isFolder && (files::FinderInfoOf(inItem).fdFlags & kIsAlias);
}

OSErr ReadRecord(const Item& inItem, files::AliasContents* outContents)
{
    const files::LocatedForks forks = files::LocateForks(PathOf(inItem));
    ResourceFork fork;
    if (forks.resourceFork.empty() || fork.Open(forks.resourceFork))
        return resNotFound;
    ResourceRef record = fork.Find(rAliasType, 0);
    record = record ? record : fork.At(rAliasType, 0);
    Bytes bytes;
    if (!record || !fork.Data(record, &bytes))
        return resNotFound;
    return files::ReadAlias(bytes, outContents) ? noErr : paramErr;
}

// What an alias file or link stands for, one step on; *outWasAliased is false for any other item.
OSErr ResolveOnce(const Item& inItem, bool inNumbersFirst, Item* outTarget, bool* outWasAliased)
{
    *outWasAliased = inItem.isLink;
    if (inItem.isLink)
        return files::FollowOneLink(inItem, outTarget) ? noErr : fnfErr;
    *outWasAliased = IsAliasRecordFile(inItem);
    if (!*outWasAliased)
        return noErr;
    files::AliasContents contents;
    const OSErr error = ReadRecord(inItem, &contents);
    return error != noErr ? error : files::FindTarget(contents, &inItem, inNumbersFirst, outTarget, nullptr);
}

// A chain that leads back to itself has no end: fnfErr, as for one that leads nowhere.
OSErr ResolveChain(bool inAll, bool inNumbersFirst, Item* ioItem, bool* outWasAliased)
{
    *outWasAliased = false;
    std::vector<files::Folder> seen;
    Item item = *ioItem;
    for (;;) {
        Item target;
        bool isAlias = false;
        const OSErr error = ResolveOnce(item, inNumbersFirst, &target, &isAlias);
        if (error != noErr)
            return error;
        if (!isAlias)
            break;
        *outWasAliased = true;
        seen.push_back(NodeOf(item));
        item = target;
        if (std::find(seen.begin(), seen.end(), NodeOf(item)) != seen.end() || seen.size() > kLongestChain)
            return fnfErr;
        if (!inAll)
            break;
    }
    *ioItem = item;
    return noErr;
}

struct Answer {
    Boolean* targetIsFolder; // either may be null
    Boolean* wasAliased;
};

OSErr Resolve(OSErr inFound, bool inAll, UInt32 inFlags, const Answer& inAnswer, Item* ioItem)
{
    bool wasAliased = false;
    OSErr error = inFound;
    if (error == noErr)
        error = ResolveChain(inAll, inFlags & kResolveAliasTryFileIDFirst, ioItem, &wasAliased);
    if (inAnswer.targetIsFolder)
        *inAnswer.targetIsFolder = error == noErr && ioItem->isFolder;
    if (inAnswer.wasAliased)
        *inAnswer.wasAliased = wasAliased;
    return error;
}

bool StandsForFolder(const Item& inItem)
{
    Item target;
    if (inItem.isLink)
        return files::FollowLinks(inItem, &target) && target.isFolder;
    const OSType type = files::FinderInfoOf(inItem).fdType;
    const auto* last = std::end(kFolderAliasTypes);
    return std::find(std::begin(kFolderAliasTypes), last, type) != last;
}

OSErr IsAlias(OSErr inFound, const Item& inItem, Boolean* outIsAlias, Boolean* outIsFolder)
{
    if (!outIsAlias || !outIsFolder)
        return paramErr;
    *outIsAlias = *outIsFolder = false;
    if (inFound != noErr)
        return inFound;
    *outIsAlias = inItem.isLink || IsAliasRecordFile(inItem);
    *outIsFolder = *outIsAlias ? StandsForFolder(inItem) : inItem.isFolder;
    return noErr;
}

} // namespace

OSErr ResolveAliasFileWithMountFlags(FSSpec* theSpec, Boolean resolveAliasChains, Boolean* targetIsFolder,
                                     Boolean* wasAliased, UInt32 mountFlags)
try {
    Item item;
    const OSErr found = theSpec ? files::Resolve(*theSpec, &item) : (OSErr)paramErr;
    const OSErr error = Resolve(found, resolveAliasChains, mountFlags, { targetIsFolder, wasAliased }, &item);
    if (error == noErr)
        MakeSpec(item, theSpec);
    return error;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSResolveAliasFileWithMountFlags(FSRef* theRef, Boolean resolveAliasChains, Boolean* targetIsFolder,
                                       Boolean* wasAliased, UInt32 mountFlags)
try {
    Item item;
    const OSErr found = files::ItemOfRef(theRef, &item);
    const OSErr error = Resolve(found, resolveAliasChains, mountFlags, { targetIsFolder, wasAliased }, &item);
    if (error == noErr)
        files::MakeRef(item, theRef);
    return error;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr ResolveAliasFile(FSSpec* theSpec, Boolean resolveAliasChains, Boolean* targetIsFolder,
                       Boolean* wasAliased)
{
    return ResolveAliasFileWithMountFlags(theSpec, resolveAliasChains, targetIsFolder, wasAliased, 0);
}

OSErr FSResolveAliasFile(FSRef* theRef, Boolean resolveAliasChains, Boolean* targetIsFolder,
                         Boolean* wasAliased)
{
    return FSResolveAliasFileWithMountFlags(theRef, resolveAliasChains, targetIsFolder, wasAliased, 0);
}

OSErr IsAliasFile(const FSSpec* fileFSSpec, Boolean* aliasFileFlag, Boolean* folderFlag)
try {
    Item item;
    const OSErr found = fileFSSpec ? files::Resolve(*fileFSSpec, &item) : (OSErr)paramErr;
    return IsAlias(found, item, aliasFileFlag, folderFlag);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSIsAliasFile(const FSRef* fileRef, Boolean* aliasFileFlag, Boolean* folderFlag)
try {
    Item item;
    const OSErr found = files::ItemOfRef(fileRef, &item);
    return IsAlias(found, item, aliasFileFlag, folderFlag);
} catch (const std::bad_alloc&) {
    return memFullErr;
}
