// The chain: opening and closing files, and the handles of the resources in them.
#include "ResourceFile.h"

#include "Flippers.h"
#include "ManagerState.h"

#include <Host.h>
#include <files/OpenFiles.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <unistd.h>

namespace lampblack::resources {

ForkCache& KnownForks()
{
    static auto& cache = *new ForkCache;
    return cache;
}

SInt16 ResourceChain::Open(const files::Item& inItem, bool inResourceFork, int inPermission, OSErr* outError)
{
    *outError = noErr;
    if (const ResourceFile* open = FindReusable(inItem, inResourceFork, inPermission))
        return open->refNum;
    auto file = std::make_unique<ResourceFile>();
    file->item = inItem;
    file->path = files::PathTextOf(inItem);
    file->isResourceFork = inResourceFork;
    *outError = OpenFork(inPermission, file.get());
    if (*outError != noErr)
        return 0;
    file->map.Open(&file->image->Fork());
    file->areas = file->image->Fork().Areas();
    files::OpenFile open;
    open.item = inItem;
    open.isResourceFork = inResourceFork;
    open.isWritable = file->home != nullptr;
    open.logicalSize = (SInt64)file->image->Size();
    file->refNum = files::AddOpenFile(open);
    if (file->refNum == 0) {
        *outError = tmfoErr;
        return 0;
    }
    fFiles.insert(fFiles.begin(), std::move(file));
    MakeCurrent(0);
    return fFiles.front()->refNum;
}

OSErr ResourceChain::OpenFork(int inPermission, ResourceFile* ioFile)
{
    ioFile->mayWriteLater = inPermission == kWhenChanged;
    if (inPermission == fsRdPerm || inPermission == kWhenChanged)
        return OpenForReading(ioFile);
    const OSErr error = OpenForWriting(ioFile);
    const bool mayRead =
        inPermission == fsCurPerm && (error == permErr || error == wPrErr || error == wrPermErr ||
                                      error == opWrErr || error == mapReadErr);
    return mayRead ? OpenForReading(ioFile) : error;
}

namespace {

bool IsOf(const ResourceFile& inFile, const files::Item& inItem, bool inResourceFork)
{
    return inFile.isResourceFork == inResourceFork && inFile.item.parent == inItem.parent &&
           inFile.item.hostName == inItem.hostName;
}

// What the host said of an item when its name was resolved, a moment ago, if that is enough to know it again.
const files::FileIdentity* SeenJustNow(const files::Item& inItem)
{
    const bool isEmptyFile =
        inItem.seen.exists && inItem.seen.size == 0 && !inItem.isLink && !inItem.isFolder;
    return isEmptyFile ? &inItem.seen : nullptr;
}

OSErr Parse(ForkImage& ioImage)
{
    if (ioImage.Size() == 0)
        return eofErr;
    return ioImage.Parse() ? mapReadErr : noErr;
}

// What a home is told of the time before.
files::KnownForks BeforeIn(const files::LocatedForks* inLocated, const ForkImage* inImage)
{
    if (!inLocated || !inImage)
        return {};
    return { inLocated, inImage->IsWhole() ? inImage->Contents() : Bytes() };
}

// The fork in memory that was found and is wanted wholly; null when it cannot be read.
std::shared_ptr<ForkImage> WholeImage(const files::ForkHome& inHome, const files::LocatedForks& inForks,
                                      bool inHasPlace, bool inResourceFork)
{
    if (inHasPlace)
        return ForkImage::OfPlace(inHome.Place());
    files::LocatedForks forks = inForks;
    return ForkImage::Copied(forks, inResourceFork);
}

} // namespace

void ResourceFile::LetImageGo()
{
    if (holdsImage)
        image->LetGo();
    holdsImage = false;
}

OSErr ResourceChain::OpenForReading(ResourceFile* ioFile)
{
    const files::FileIdentity* seen = SeenJustNow(ioFile->item);
    const KnownFork* known = KnownForks().Find(ioFile->path, ioFile->isResourceFork);
    if (known && ForkCache::IsCurrent(*known->located, ioFile->path, seen) && known->image->Hold()) {
        ioFile->located = known->located;
        ioFile->image = known->image;
        ioFile->isSettled = ioFile->holdsImage = true;
        return Parse(*ioFile->image);
    }
    const int64_t start = FileTimeNow();
    const auto delivery = ioFile->isResourceFork ? files::Delivery::Places : files::Delivery::Bytes;
    files::LocatedForks forks = files::LocateForks(ioFile->path, files::Wanted::ResourceForkOnly, delivery);
    OSErr error = files::ErrorOfSearch(forks);
    if (error != noErr)
        return error;
    ioFile->image = ForkImage::Of(forks, ioFile->isResourceFork);
    if (!ioFile->image)
        return mapReadErr;
    ioFile->holdsImage = true;
    ioFile->located = ForkCache::Stripped(forks, ioFile->path);
    ioFile->isSettled = ForkCache::IsSettled(*ioFile->located, start, {});
    error = Parse(*ioFile->image);
    if (error == noErr && ioFile->isSettled)
        KnownForks().Keep({ ioFile->path, ioFile->isResourceFork, ioFile->located, ioFile->image });
    return error;
}

// Takes the lock first and looks then: what another process wrote before is seen.
OSErr ResourceChain::OpenForWriting(ResourceFile* ioFile)
{
    using files::ForkHome;
    KnownFork known = KnownForks().Take(ioFile->path, ioFile->isResourceFork);
    bool holds = false;
    const int64_t start = FileTimeNow();
    const auto which = ioFile->isResourceFork ? ForkHome::Fork::Resource : ForkHome::Fork::Data;
    OSErr error = ForkHome::Open(ioFile->path, &ioFile->home, which,
                                 BeforeIn(known.located.get(), known.image.get()), &holds);
    if (error != noErr)
        return error;
    ForkHome& home = *ioFile->home;
    if (holds) {
        ioFile->located = std::move(known.located);
        ioFile->isSettled = ioFile->hasPlace = true;
        ioFile->image = known.image->IsWhole() ? std::move(known.image) : ForkImage::OfPlace(home.Place());
    } else {
        const files::LocatedForks& forks = home.Forks();
        const files::ForkPlace place = home.Place();
        const bool isAtHome = !ioFile->isResourceFork || forks.resourcePath == home.HomePath();
        ioFile->hasPlace = isAtHome && place.file >= 0;
        ioFile->image = WholeImage(home, forks, ioFile->hasPlace, ioFile->isResourceFork);
        ioFile->located = ForkCache::Stripped(forks, home.Path());
        ioFile->isSettled = ForkCache::IsSettled(*ioFile->located, start, home.HomePath());
    }
    ioFile->generation = home.Generation();
    error = ioFile->image ? Parse(*ioFile->image) : (OSErr)mapReadErr;
    if (error == noErr && !ioFile->image->IsSound())
        error = mapReadErr;
    if (error != noErr)
        ioFile->home.reset();
    return error;
}

// A file that is open already answers its number where that serves as well.
const ResourceFile* ResourceChain::FindReusable(const files::Item& inItem, bool inResourceFork,
                                                int inPermission) const
{
    if (inPermission != fsRdPerm && inPermission != fsCurPerm)
        return nullptr;
    for (const auto& file : fFiles) {
        if (!IsOf(*file, inItem, inResourceFork))
            continue;
        const bool serves = inPermission == fsCurPerm
                                ? file->home || file->mayWriteLater
                                : !file->home && !file->map.HasChanges() &&
                                      ForkCache::IsCurrent(*file->located, file->path, SeenJustNow(inItem));
        if (serves)
            return file.get();
    }
    return nullptr;
}

const ResourceFile* ResourceChain::FindItem(const files::Item& inItem, bool inResourceFork) const
{
    for (const auto& file : fFiles)
        if (IsOf(*file, inItem, inResourceFork))
            return file.get();
    return nullptr;
}

ResourceFile* ResourceChain::Find(SInt16 inRefNum) const
{
    for (const auto& file : fFiles)
        if (file->refNum == inRefNum)
            return file.get();
    return nullptr;
}

void ResourceChain::MakeCurrent(size_t inIndex)
{
    fCurrent = inIndex;
    ResourceFile* file = inIndex < fFiles.size() ? fFiles[inIndex].get() : nullptr;
    gFront = file ? ChainFront{ file, file->loaded.View(), file->refNum } : ChainFront();
}

bool ResourceChain::SetCurrent(SInt16 inRefNum)
{
    size_t index = 0;
    while (index < fFiles.size() && fFiles[index]->refNum != inRefNum)
        ++index;
    if (index == fFiles.size() && inRefNum != kSystemResFile)
        return false;
    ++gChainChanges;
    MakeCurrent(index);
    return true;
}

OSErr ResourceChain::Close(SInt16 inRefNum)
{
    const auto found = std::find_if(fFiles.begin(), fFiles.end(),
                                    [&](const auto& file) { return file->refNum == inRefNum; });
    if (found == fFiles.end())
        return resFNotFound;
    const OSErr error = UpdateFile(found->get());
    ++gChainChanges;
    // The handles go with the file. Each forgets itself in the list that is being walked.
    const std::vector<Handle> handles = (*found)->handles;
    for (const Handle handle : handles)
        if (handle)
            DisposeHandle(handle);
    LeaveHome(found->get());
    // The file behind the closed one becomes current when the closed one was; else the current file stays.
    const size_t index = (size_t)(found - fFiles.begin());
    fFiles.erase(found);
    MakeCurrent(fCurrent - (fCurrent > index ? 1 : 0));
    files::RemoveOpenFile(inRefNum);
    return error;
}

// What was written here is known, and needs not be read again as long as nobody else writes it.
void LeaveHome(ResourceFile* ioFile)
{
    if (!ioFile->home)
        return;
    const files::ForkHome& home = *ioFile->home;
    const files::ForkPlace place = home.Place();
    const bool isKnown = ioFile->isSettled && ioFile->hasPlace && place.file >= 0 && !ioFile->mustRewrite &&
                         ioFile->image->IsWhole() && ioFile->located->resourcePath == home.HomePath() &&
                         place.length == ioFile->image->Size();
    if (isKnown) {
        auto located = std::make_shared<files::LocatedForks>(*ioFile->located);
        for (auto& file : located->lookedAt)
            if (file.path == home.HomePath().native())
                file.identity = home.LastIdentity();
            else if (file.path == home.Path().native() && ioFile->ownIdentity)
                file.identity = *ioFile->ownIdentity;
        located->resourceOffset = place.offset;
        located->resourceSize = place.length;
        KnownForks().Keep({ ioFile->path, ioFile->isResourceFork, std::move(located), ioFile->image });
    }
    ioFile->home.reset();
}

Resource ResourceChain::ResourceOf(Handle inHandle) const
{
    const memory::HandleBlock* block = memory::FindHandle(inHandle);
    return block ? Resource{ (ResourceFile*)block->keeper, block->item } : Resource();
}

void ResourceFile::Unlist(memory::HandleBlock* ioBlock)
{
    const ResourceInfo info = map.Info(ioBlock->item);
    loaded.Erase(info.type, info.id);
    ioBlock->isListed = false;
}

void ResourceChain::Disposed(Handle inHandle)
{
    const Resource resource = ResourceOf(inHandle);
    if (!resource)
        return;
    if (resource.IsChanged()) {
        ResourceMap& map = resource.file->map;
        if (map.IsInFile(resource.entry))
            map.SetChanged(resource.entry, false);
        else
            map.Remove(resource.entry); // it was never in the file
    }
    resources::Forget(memory::FindHandle(inHandle));
}

Handle ResourceChain::HandleOf(ResourceFile* inFile, uint32_t inEntry, bool inLoad, OSErr* outError)
{
    const Handle handle = inEntry < inFile->handles.size() ? inFile->handles[inEntry] : nullptr;
    if (!handle)
        return NewHandleOf(inFile, inEntry, inLoad, outError);
    *outError = inLoad && !*handle ? Load(handle) : (OSErr)noErr;
    return *outError == noErr ? handle : nullptr;
}

Handle ResourceChain::NewHandleOf(ResourceFile* inFile, uint32_t inEntry, bool inLoad, OSErr* outError)
{
    inFile->MakeRoomFor(inEntry);
    memory::HandleBlock* block = memory::gHandles.New();
    memory::SetError(*outError = block ? noErr : memFullErr);
    if (!block)
        return nullptr;
    Bind(block, inFile, inEntry);
    *outError = inLoad ? LoadInto(block, { inFile, inEntry }) : (OSErr)noErr;
    if (*outError == noErr)
        return (Handle)block;
    memory::DisposeBlock(block);
    return nullptr;
}

OSErr ResourceChain::Load(Handle inHandle)
{
    const Resource resource = ResourceOf(inHandle);
    if (!resource)
        return resNotFound;
    return *inHandle ? (OSErr)noErr : LoadInto(memory::FindHandle(inHandle), resource);
}

namespace {

// A locked handle gets no data, as the Memory Manager has it.
OSErr GiveRoom(memory::HandleBlock* ioBlock, size_t inSize)
{
    OSErr error = noErr;
    if (ioBlock->state & kHandleLockedMask)
        error = memLockedErr;
    else if (inSize > (size_t)memory::kLargestBlock || !memory::GiveData(ioBlock, (Size)inSize))
        error = memFullErr;
    memory::SetError(error);
    return error;
}

} // namespace

OSErr ResourceChain::LoadInto(memory::HandleBlock* ioBlock, const Resource& inResource)
{
    StoredResource stored;
    const ResourceMap& map = inResource.file->map;
    if (!map.StoredOf(inResource.entry, &stored))
        return eofErr;
    const OSErr error = GiveRoom(ioBlock, stored.data.length);
    if (error != noErr)
        return error;
    if (!map.Read(stored.data.offset, stored.data.length, ioBlock->data)) {
        EmptyHandle((Handle)ioBlock);
        return eofErr;
    }
    const OSStatus flipped = FlipLoaded(stored.type, stored.id, ioBlock->data, stored.data.length);
    if (flipped != noErr) {
        EmptyHandle((Handle)ioBlock);
        return (OSErr)flipped;
    }
    if (stored.attributes & resPurgeable)
        ioBlock->state |= kHandlePurgeableMask;
    if (stored.attributes & resLocked)
        ioBlock->state |= kHandleLockedMask;
    return noErr;
}

namespace {

// In place of the map and the data that are read: the whole fork, as the home has it.
bool ReadWholly(files::ForkHome& ioHome, ResourceFile* ioFile)
{
    const bool hasPlace = ioFile->located->resourcePath == ioHome.HomePath() && ioHome.Place().file >= 0;
    const auto whole = WholeImage(ioHome, ioHome.Forks(), hasPlace, ioFile->isResourceFork);
    if (!whole || whole->Size() < ioFile->image->Size() || !whole->IsSound())
        return false;
    if (ioFile->map.IsEdited())
        ioFile->map.Rebase(whole->Contents(), ioFile->areas.dataOffset, ioFile->areas.dataLength);
    else
        ioFile->map.Open(&whole->Fork());
    ioFile->LetImageGo();
    ioFile->image = whole;
    return true;
}

} // namespace

// The application's file was opened for reading, so that many may run at once; it is written if nobody wrote
// it since.
OSErr EnsureWritable(ResourceFile* ioFile)
{
    using files::ForkHome;
    if (ioFile->home)
        return noErr;
    if (!ioFile->mayWriteLater)
        return wrPermErr;
    if (ioFile->image->IsWhole() && !ioFile->image->IsSound())
        return mapReadErr;
    std::unique_ptr<ForkHome> home;
    bool holds = false;
    const OSErr error = ForkHome::Open(ioFile->path, &home, ForkHome::Fork::Resource,
                                       BeforeIn(ioFile->located.get(), ioFile->image.get()), &holds);
    if (error != noErr)
        return error;
    if (!holds)
        return opWrErr;
    if (!ioFile->image->IsWhole() && !ReadWholly(*home, ioFile))
        return mapReadErr;
    ioFile->home = std::move(home);
    if (files::OpenFile* open = files::FindOpenFile(ioFile->refNum))
        open->isWritable = true;
    ioFile->hasPlace = ioFile->located->resourcePath == ioFile->home->HomePath();
    ioFile->generation = ioFile->home->Generation();
    return noErr;
}

namespace {

// The application's file lies beside its executable: NAME.rsrc, or else any form that goes with NAME.
void OpenApplicationFile(ResourceChain& ioChain)
{
    const std::filesystem::path application = host::CurrentSettings().application;
    OSErr error;
    files::Item item;
    if (files::ItemAtPath(application.native() + ".rsrc", &item) || files::ItemAtPath(application, &item))
        ioChain.Open(item, true, ResourceChain::kWhenChanged, &error);
}

pid_t gOwner = 0;

// At the end of the process every file is updated; not in a child that came of a fork.
void UpdateAll()
{
    if (getpid() != gOwner)
        return;
    for (const auto& file : Chain().Files())
        UpdateFile(file.get());
}

} // namespace

ResourceChain* gChain = nullptr;
constinit ChainFront gFront;

ResourceChain& MakeChain()
{
    gChain = new ResourceChain; // never destroyed: handles outlive static objects
    gOwner = getpid();
    std::atexit(UpdateAll);
    memory::SetHandleWatcher(
        { [](Handle handle) { Chain().Disposed(handle); },
          [](memory::HandleBlock* block) { ((ResourceFile*)block->keeper)->ForgetLoaded(block); },
          MayPurgeResource });
    OpenApplicationFile(*gChain);
    return *gChain;
}

} // namespace lampblack::resources
