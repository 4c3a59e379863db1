// Open resource files and the resources that have handles: the state of the Resource Manager. Begin at Chain.
#ifndef LAMPBLACK_RESOURCES_RESOURCEFILE_H
#define LAMPBLACK_RESOURCES_RESOURCEFILE_H

#include "ChainChanges.h"
#include "ForkImage.h"
#include "ForkPlan.h"
#include "LoadedTable.h"
#include "ResourceMap.h"

#include <Carbon/Resources.h>
#include <files/Catalog.h>
#include <memory/HandleBlock.h>

#include <memory>
#include <optional>
#include <vector>

namespace lampblack::resources {

struct ResourceFile {
    SInt16 refNum = 0;
    unsigned opening = ++gChainChanges; // no other file was opened as this one
    files::Item item;                   // the file that was opened
    std::string path;
    bool isResourceFork = true;                         // false: the map lies in the data fork
    std::shared_ptr<const files::LocatedForks> located; // as the fork was found; without its bytes
    std::shared_ptr<ForkImage> image;
    bool holdsImage = false; // and lets it go at the end
    ResourceMap map;
    std::vector<Handle> handles; // by entry; null: not asked for yet. Grows as they are asked for.
    LoadedTable loaded;          // of these, some that are loaded: each what Find of its type and ID leads to

    // Writing.
    std::unique_ptr<files::ForkHome> home; // null: open for reading
    bool mayWriteLater = false; // the application's own file: the first change opens it for writing
    bool isFrozen = false;      // mapReadOnly was set: nothing is written, and nobody told
    bool isCompact = false;     // mapCompact was set: the next update leaves no free space
    bool mustRewrite = false;   // a write in place failed half way
    bool isSettled = false;     // what was found may be kept in the cache
    bool hasPlace = false;      // the fork is where the home writes it
    unsigned generation = 0;    // of the home, when the image was made
    bool hasWritten = false;    // since the file's own time was set, which shows it
    std::optional<files::FileIdentity> ownIdentity; // of the file, once that was set
    ResourceFork::Shape areas;                      // of the fork as it is in the file
    std::optional<FreeSpace> space;

    ResourceFile() = default;
    ResourceFile(const ResourceFile&) = delete;
    ~ResourceFile() { LetImageGo(); }
    void LetImageGo();

    bool IsChanged(uint32_t inEntry) const { return map.IsChanged(inEntry); }
    void ForgetLoaded(memory::HandleBlock* ioBlock)
    {
        if (ioBlock->isListed)
            Unlist(ioBlock);
    }
    void Unlist(memory::HandleBlock*);

    void MakeRoomFor(uint32_t inEntry)
    {
        if (handles.size() <= inEntry)
            handles.resize(std::max<size_t>(map.EntryCount(), inEntry + 1));
    }
    void Keep(memory::HandleBlock* ioBlock, uint32_t inEntry) // for which there is room
    {
        handles[inEntry] = (Handle)ioBlock;
        ioBlock->state |= kHandleIsResourceMask;
        ioBlock->keeper = this;
        ioBlock->item = inEntry;
    }
};

// A handle of a resource is that no longer.
inline void Forget(memory::HandleBlock* ioBlock)
{
    ResourceFile& file = *(ResourceFile*)ioBlock->keeper;
    file.ForgetLoaded(ioBlock);
    file.handles[ioBlock->item] = nullptr;
    ioBlock->keeper = nullptr;
}

// What the calls that are made most often need of the chain.
struct ChainFront {
    ResourceFile* file = nullptr;   // the current one, if there is one
    LoadedView loaded;              // of it
    SInt16 refNum = kSystemResFile; // its number

    // After a change of the table.
    void LookAtTable() { loaded = file ? file->loaded.View() : LoadedView(); }
};
[[gnu::visibility("hidden")]] extern constinit ChainFront gFront;

// A resource that has a handle.
struct Resource {
    ResourceFile* file = nullptr; // null: the handle is no resource's
    uint32_t entry = 0;

    explicit operator bool() const { return file; }
    ResourceInfo Info() const { return file->map.Info(entry); }
    bool IsChanged() const { return file->map.IsChanged(entry); }
};

// ResourceChain
//
// The files, the one opened last in front, and which of them is current.
class ResourceChain {
public:
    // Opens a fork of an item and makes it current; answers 0 and the error when it cannot be. inPermission
    // is one of the published ones, or kWhenChanged: for reading until something is changed.
    enum { kWhenChanged = 100 };
    SInt16 Open(const files::Item&, bool inResourceFork, int inPermission, OSErr* outError);

    // Writes what is to be written and closes; the error is that of the writing, or resFNotFound.
    OSErr Close(SInt16 inRefNum);

    const std::vector<std::unique_ptr<ResourceFile>>& Files() const { return fFiles; }
    ResourceFile* Find(SInt16 inRefNum) const;
    const ResourceFile* FindItem(const files::Item&, bool inResourceFork) const;

    // Where searching begins; Files().size() when nothing is to be found.
    size_t CurrentIndex() const { return fCurrent; }
    ResourceFile* Current() const { return gFront.file; }
    bool SetCurrent(SInt16 inRefNum); // false: no such file; 0 is the end of the chain

    // The resource behind a handle, if it is one's.
    Resource ResourceOf(Handle) const;

    // The handle of a resource, made if there is none; loaded when `inLoad`. Null on error.
    Handle HandleOf(ResourceFile*, uint32_t inEntry, bool inLoad, OSErr* outError);
    // Makes a handle that is none the resource's.
    static void Bind(memory::HandleBlock* ioBlock, ResourceFile* ioFile, uint32_t inEntry)
    {
        ioFile->MakeRoomFor(inEntry);
        ioFile->Keep(ioBlock, inEntry);
    }

    // Reads the data of a resource into its handle, if that is empty.
    OSErr Load(Handle);

    // A resource's handle is about to go, and what was changed with it.
    void Disposed(Handle);

private:
    OSErr OpenForReading(ResourceFile* ioFile);
    OSErr OpenForWriting(ResourceFile* ioFile);
    OSErr OpenFork(int inPermission, ResourceFile* ioFile);
    const ResourceFile* FindReusable(const files::Item&, bool inResourceFork, int inPermission) const;
    OSErr LoadInto(memory::HandleBlock*, const Resource&);
    Handle NewHandleOf(ResourceFile*, uint32_t inEntry, bool inLoad, OSErr* outError);
    void MakeCurrent(size_t inIndex);

    std::vector<std::unique_ptr<ResourceFile>> fFiles;
    size_t fCurrent = 0;
};

// The chain of this process; the application's file is opened on the first call.
[[gnu::visibility("hidden")]] extern ResourceChain* gChain;
ResourceChain& MakeChain();
inline ResourceChain& Chain()
{
    return gChain ? *gChain : MakeChain();
}

ForkCache& KnownForks();

// EnsureWritable
//
// Errors:     wrPermErr  the file is open for reading only; of the application's own file also what opening
//             it for writing answers.
OSErr EnsureWritable(ResourceFile*);

// UpdateFile writes all changes, UpdateOne those of one resource. Errors: those of UpdateResFile.
OSErr UpdateFile(ResourceFile*);
OSErr UpdateOne(ResourceFile*, uint32_t inEntry);

// The file has changed, though the host may see only its sidecar change: its time is set. An update and
// closing do that.
void NoteModification(ResourceFile*);

// Writes the data of one resource as they are given, whatever is in its handle.
OSErr WriteBytes(ResourceFile*, uint32_t inEntry, std::vector<uint8_t>&& inBytes);

// The files that are open for writing give their locks back and leave what a cache may know of them.
void LeaveHome(ResourceFile*);

} // namespace lampblack::resources

#endif
