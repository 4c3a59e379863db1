// FSIterators: the entries of a folder, or of all folders below it, many at a call.
#include "CatalogInfo.h"
#include "FileReferences.h"
#include "Listing.h"
#include "UnicodeNames.h"

#include <algorithm>
#include <memory>
#include <new>
#include <set>
#include <sys/stat.h>
#include <vector>

using namespace lampblack::files;

namespace {

using HostFolder = std::pair<dev_t, ino_t>;

// One folder on the way down, with what was in it when it was begun.
struct Level {
    Folder folder;
    std::filesystem::path path;
    std::shared_ptr<const Listing> listing;
    HostFolder host;
    size_t next = 0;
};

struct Iterator {
    Folder container;
    bool isSubtree = false;
    timespec changed = {};           // the container's, when it was last looked at
    std::vector<Level> levels;       // the container first; empty when all was told
    std::set<HostFolder> inProgress; // folders that the levels stand for
};

std::vector<std::unique_ptr<Iterator>>& Iterators()
{
    static auto& iterators = *new std::vector<std::unique_ptr<Iterator>>;
    return iterators;
}

auto Find(FSIterator inIterator)
{
    return std::find_if(Iterators().begin(), Iterators().end(),
                        [&](const auto& one) { return (FSIterator)one.get() == inIterator; });
}

bool HostFolderOf(const std::filesystem::path& inPath, HostFolder* outFolder)
{
    struct stat status;
    if (stat(inPath.c_str(), &status) != 0)
        return false;
    *outFolder = { status.st_dev, status.st_ino };
    return true;
}

// A folder that is being walked already, as the host may have it by a mount, is not entered again.
void Enter(Iterator* ioIterator, Folder inFolder)
{
    const std::filesystem::path path = PathOf(inFolder);
    HostFolder folder;
    if (HostFolderOf(path, &folder) && ioIterator->inProgress.insert(folder).second)
        ioIterator->levels.push_back({ inFolder, path, ListingOf(path), folder });
}

void Leave(Iterator* ioIterator)
{
    ioIterator->inProgress.erase(ioIterator->levels.back().host);
    ioIterator->levels.pop_back();
}

// The next item that is still there; false at the end.
bool TakeNext(Iterator* ioIterator, Item* outItem)
{
    while (!ioIterator->levels.empty()) {
        Level& level = ioIterator->levels.back();
        if (level.next >= level.listing->Names().size()) {
            Leave(ioIterator);
            continue;
        }
        const ListedName& name = level.listing->Names()[level.next++];
        *outItem = { level.folder, std::string(name.hostName), std::string(name.macName) };
        if (!LookAtHost(outItem))
            continue;
        if (ioIterator->isSubtree && outItem->isFolder)
            Enter(ioIterator, NodeOf(*outItem));
        return true;
    }
    return false;
}

bool DidChange(Iterator* ioIterator)
{
    struct stat status;
    if (stat(PathOf(ioIterator->container).c_str(), &status) != 0)
        return true;
    const timespec before = ioIterator->changed;
    ioIterator->changed = status.st_mtim;
    return before.tv_sec != status.st_mtim.tv_sec || before.tv_nsec != status.st_mtim.tv_nsec;
}

// Where the results of one call go; any may be null.
struct Results {
    FSCatalogInfoBitmap which;
    FSCatalogInfo* infos;
    FSRef* refs;
    FSSpec* specs;
    HFSUniStr255* names;
};

OSErr Store(const Results& inResults, ItemCount inIndex, const Item& inItem)
{
    if (inResults.infos) {
        const OSErr error = FillCatalogInfo(inResults.which, inItem, inResults.infos + inIndex);
        if (error != noErr)
            return error;
    }
    if (inResults.refs)
        MakeRef(inItem, inResults.refs + inIndex);
    if (inResults.specs)
        MakeSpec(inItem, inResults.specs + inIndex);
    if (inResults.names)
        inResults.names[inIndex] = UnicodeNameOf(inItem);
    return noErr;
}

} // namespace

OSErr FSOpenIterator(const FSRef* container, FSIteratorFlags iteratorFlags, FSIterator* iterator)
try {
    if (!iterator)
        return paramErr;
    *iterator = nullptr;
    if (iteratorFlags & kFSIterateReserved)
        return errFSBadIteratorFlags;
    Item folder;
    const OSErr error = FolderOfRef(container, &folder);
    if (error != noErr)
        return error;
    auto made = std::make_unique<Iterator>();
    made->container = NodeOf(folder);
    made->isSubtree = iteratorFlags & kFSIterateSubtree;
    DidChange(made.get());
    Enter(made.get(), made->container);
    *iterator = (FSIterator)made.get();
    Iterators().push_back(std::move(made));
    return noErr;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSCloseIterator(FSIterator iterator)
try {
    const auto found = Find(iterator);
    if (!iterator || found == Iterators().end())
        return iterator ? errFSIteratorNotFound : paramErr;
    Iterators().erase(found);
    return noErr;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSGetCatalogInfoBulk(FSIterator iterator, ItemCount maximumObjects, ItemCount* actualObjects,
                           Boolean* containerChanged, FSCatalogInfoBitmap whichInfo,
                           FSCatalogInfo* catalogInfos, FSRef* refs, FSSpec* specs, HFSUniStr255* names)
try {
    if (!iterator || !actualObjects)
        return paramErr;
    *actualObjects = 0;
    const auto found = Find(iterator);
    if (found == Iterators().end())
        return errFSIteratorNotFound;
    if (maximumObjects == 0)
        return errFSBadItemCount;
    if (whichInfo & ~(FSCatalogInfoBitmap)kFSCatInfoGettableInfo)
        return paramErr;
    const Results results = { whichInfo, catalogInfos, refs, specs, names };
    Item item;
    while (*actualObjects < maximumObjects && TakeNext(found->get(), &item))
        if (Store(results, *actualObjects, item) == noErr)
            ++*actualObjects;
    if (containerChanged)
        *containerChanged = DidChange(found->get());
    return *actualObjects < maximumObjects ? errFSNoMoreItems : noErr;
} catch (const std::bad_alloc&) {
    return memFullErr;
}
