// The chain: opening and closing files, and the handles of the resources in them.
#include "ResourceFile.h"

#include "Flippers.h"

#include <Host.h>
#include <files/OpenFiles.h>
#include <memory/HandleBlock.h>

#include <algorithm>
#include <cerrno>

namespace lampblack::resources {

SInt16 ResourceChain::Open(const files::Item& inItem, bool inResourceFork, OSErr* outError)
{
    *outError = noErr;
    if (const ResourceFile* open = FindItem(inItem, inResourceFork))
        return open->refNum;
    auto file = std::make_unique<ResourceFile>();
    *outError = ReadFork(inItem, inResourceFork, file.get());
    if (*outError != noErr)
        return 0;
    files::OpenFile open;
    open.item = inItem;
    open.isResourceFork = inResourceFork;
    open.logicalSize = (SInt64)(inResourceFork ? file->forks.resourceFork : file->forks.dataFork).size();
    file->refNum = files::AddOpenFile(open);
    if (file->refNum == 0)
        *outError = tmfoErr;
    else
        fFiles.insert(fFiles.begin(), std::move(file));
    fCurrent = *outError == noErr ? 0 : fCurrent;
    return *outError == noErr ? fFiles.front()->refNum : (SInt16)0;
}

OSErr ResourceChain::ReadFork(const files::Item& inItem, bool inResourceFork, ResourceFile* ioFile)
{
    ioFile->item = inItem;
    ioFile->isResourceFork = inResourceFork;
    ioFile->forks = files::LocateForks(files::PathOf(inItem));
    if (!ioFile->forks.exists)
        return ioFile->forks.openError == EACCES ? permErr : fnfErr;
    const Bytes fork = inResourceFork ? ioFile->forks.resourceFork : ioFile->forks.dataFork;
    if (fork.empty())
        return eofErr;
    return ioFile->fork.Open(fork) ? mapReadErr : noErr;
}

ResourceFile* ResourceChain::FindItem(const files::Item& inItem, bool inResourceFork) const
{
    for (const auto& file : fFiles)
        if (file->isResourceFork == inResourceFork && file->item.parent == inItem.parent &&
            file->item.hostName == inItem.hostName)
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

void ResourceChain::SetCurrent(SInt16 inRefNum)
{
    fCurrent = 0;
    while (fCurrent < fFiles.size() && fFiles[fCurrent]->refNum != inRefNum)
        ++fCurrent;
}

bool ResourceChain::Close(SInt16 inRefNum)
{
    const auto found = std::find_if(fFiles.begin(), fFiles.end(),
                                    [&](const auto& file) { return file->refNum == inRefNum; });
    if (found == fFiles.end())
        return false;
    // The handles go with the file. Each forgets itself in the list that is being walked.
    const std::vector<Handle> handles = (*found)->handles;
    for (const Handle handle : handles)
        if (handle)
            DisposeHandle(handle);
    // The file behind the closed one becomes current when the closed one was; else the current file stays.
    const size_t index = (size_t)(found - fFiles.begin());
    fFiles.erase(found);
    fCurrent -= fCurrent > index ? 1 : 0;
    files::RemoveOpenFile(inRefNum);
    return true;
}

const Resource* ResourceChain::ResourceOf(Handle inHandle) const
{
    const auto found = fResources.find(inHandle);
    return found == fResources.end() ? nullptr : &found->second;
}

void ResourceChain::Forget(Handle inHandle)
{
    const auto found = fResources.find(inHandle);
    if (found == fResources.end())
        return;
    const Resource& resource = found->second;
    resource.file->handles[resource.file->fork.Ordinal(resource.ref)] = nullptr;
    fResources.erase(found);
    memory::WatchHandle(inHandle, false);
}

Handle ResourceChain::HandleOf(ResourceFile* inFile, ResourceRef inRef, bool inLoad, OSErr* outError)
{
    if (inFile->handles.empty())
        inFile->handles.resize(inFile->fork.ResourceCount());
    const size_t ordinal = inFile->fork.Ordinal(inRef);
    if (const Handle handle = inFile->handles[ordinal]) {
        *outError = inLoad && !*handle ? Load(handle) : (OSErr)noErr;
        return *outError == noErr ? handle : nullptr;
    }
    const Handle handle = NewEmptyHandle();
    HSetRBit(handle);
    memory::WatchHandle(handle, true);
    fResources.insert({ handle, { inFile, inRef } });
    inFile->handles[ordinal] = handle;
    *outError = inLoad ? Load(handle) : (OSErr)noErr;
    if (*outError == noErr)
        return handle;
    DisposeHandle(handle);
    return nullptr;
}

OSErr ResourceChain::Load(Handle inHandle)
{
    const Resource* resource = ResourceOf(inHandle);
    if (!resource)
        return resNotFound;
    return *inHandle ? (OSErr)noErr : LoadInto(inHandle, *resource);
}

OSErr ResourceChain::LoadInto(Handle inHandle, const Resource& inResource)
{
    Bytes data;
    if (!inResource.file->fork.Data(inResource.ref, &data))
        return eofErr;
    const OSErr memory = PtrToXHand(data.data(), inHandle, (long)data.size());
    if (memory != noErr)
        return memory;
    const ResourceInfo info = inResource.Info();
    const OSStatus flipped = FlipLoaded(info.type, info.id, *inHandle, data.size());
    if (flipped != noErr) {
        EmptyHandle(inHandle);
        return (OSErr)flipped;
    }
    if (info.attributes & resPurgeable)
        HPurge(inHandle);
    if (info.attributes & resLocked)
        HLock(inHandle);
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
        ioChain.Open(item, true, &error);
}

} // namespace

ResourceChain& Chain()
{
    static ResourceChain* chain = nullptr;
    if (!chain) {
        chain = new ResourceChain; // never destroyed: handles outlive static objects
        memory::SetDisposalHook([](Handle handle) { Chain().Forget(handle); });
        OpenApplicationFile(*chain);
    }
    return *chain;
}

} // namespace lampblack::resources
