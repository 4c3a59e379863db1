// Open resource files and the resources that have handles: the state of the Resource Manager. Begin at Chain.
#ifndef LAMPBLACK_RESOURCES_RESOURCEFILE_H
#define LAMPBLACK_RESOURCES_RESOURCEFILE_H

#include "ResourceFork.h"

#include <Carbon/Resources.h>
#include <files/Catalog.h>
#include <files/ForkLocator.h>

#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace lampblack::resources {

struct ResourceFile {
    SInt16 refNum = 0;
    files::Item item;           // the file that was opened
    bool isResourceFork = true; // false: the map lies in the data fork
    files::LocatedForks forks;  // holds the mapping that `fork` reads
    ResourceFork fork;
    std::vector<Handle> handles; // by ordinal; null: not asked for yet. Empty until the first is asked for.
};

// A resource that has a handle.
struct Resource {
    ResourceFile* file;
    ResourceRef ref;

    ResourceInfo Info() const { return file->fork.Info(ref); }
};

// ResourceChain
//
// The files, the one opened last in front, and which of them is current.
class ResourceChain {
public:
    // Opens a fork of an item and makes it current; answers 0 and the error when it cannot be.
    SInt16 Open(const files::Item&, bool inResourceFork, OSErr* outError);
    bool Close(SInt16 inRefNum);

    const std::vector<std::unique_ptr<ResourceFile>>& Files() const { return fFiles; }
    ResourceFile* Find(SInt16 inRefNum) const;

    // Where searching begins; Files().size() when nothing is to be found.
    size_t CurrentIndex() const { return fCurrent; }
    ResourceFile* Current() const { return fCurrent < fFiles.size() ? fFiles[fCurrent].get() : nullptr; }
    void SetCurrent(SInt16 inRefNum);

    // The resource behind a handle; null when it is none.
    const Resource* ResourceOf(Handle) const;

    // The handle of a resource, made if there is none; loaded when `inLoad`. Null on error.
    Handle HandleOf(ResourceFile*, ResourceRef, bool inLoad, OSErr* outError);

    // Reads the data of a resource into its handle, if that is empty.
    OSErr Load(Handle);

    // Forgets that a handle is a resource's.
    void Forget(Handle);

private:
    OSErr ReadFork(const files::Item&, bool inResourceFork, ResourceFile* ioFile);
    ResourceFile* FindItem(const files::Item&, bool inResourceFork) const;
    OSErr LoadInto(Handle, const Resource&);

    std::vector<std::unique_ptr<ResourceFile>> fFiles;
    size_t fCurrent = 0;
    std::unordered_map<Handle, Resource> fResources;
};

// The chain of this process; the application's file is opened on the first call.
ResourceChain& Chain();

} // namespace lampblack::resources

#endif
