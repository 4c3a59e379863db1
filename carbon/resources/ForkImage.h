// The bytes of a fork in memory with the index of its map, and a cache of those of files that were open a
// moment ago.
//
// Below a megabyte the bytes are copied, so that no other program can pull a mapping from under them; a
// larger fork is mapped, and whoever makes its file shorter in place ends this process. The writers here
// never do.
#ifndef LAMPBLACK_RESOURCES_FORKIMAGE_H
#define LAMPBLACK_RESOURCES_FORKIMAGE_H

#include "ResourceFork.h"

#include <files/ForkHome.h>
#include <files/ForkLocator.h>

#include <memory>
#include <optional>

namespace lampblack::resources {

class ForkImage {
public:
    ForkImage() = default;
    ForkImage(const ForkImage&) = delete;
    ~ForkImage();

    // The fork that was found, or the other one; of the file that is held for writing.
    static std::shared_ptr<ForkImage> Of(const files::LocatedForks&, bool inResourceFork);
    static std::shared_ptr<ForkImage> OfPlace(const files::ForkPlace&);
    static std::shared_ptr<ForkImage> OfBytes(std::vector<uint8_t>&&);

    Bytes Contents() const { return fBytes; }
    bool IsCopy() const { return !fMapped && fHeld.mappings.empty(); }

    // Null, or what is wrong with the map. The fork is parsed once.
    const char* Parse();
    const ResourceFork& Fork() const { return fFork; }
    bool IsSound(); // nothing at all is damaged

    // Changes bytes of a copy; the map has to be parsed again then.
    void Patch(uint32_t inOffset, Bytes);

private:
    std::vector<uint8_t> fCopy;
    files::LocatedForks fHeld; // the mapping the bytes lie in
    void* fMapped = nullptr;
    size_t fMappedSize = 0;
    Bytes fBytes;
    ResourceFork fFork;
    bool fIsParsed = false;
    const char* fProblem = nullptr;
    std::optional<bool> fIsSound;
};

// Where a fork was found, and its bytes.
struct KnownFork {
    std::filesystem::path path;
    bool isResourceFork = true;
    files::LocatedForks located; // without the bytes
    std::shared_ptr<ForkImage> image;
};

// Now, as files' times are counted.
int64_t FileTimeNow();

// ForkCache
//
// The forks of the files last closed or read. What is found here holds if every file that was looked at is as
// it was: IsCurrent asks the host.
class ForkCache {
public:
    const KnownFork* Find(const std::filesystem::path&, bool inResourceFork) const;
    KnownFork Take(const std::filesystem::path&, bool inResourceFork); // without an image when there is none
    void Keep(KnownFork);

    static bool IsCurrent(const files::LocatedForks&);

    // Whether all that was looked at had been as it was for a while when that was: a file that changes twice
    // within a tick of its file system's clock looks as if it had once. inOwn, which may be empty, is left
    // out.
    static bool IsSettled(const files::LocatedForks&, int64_t inLookedAt, const std::filesystem::path& inOwn);

    // What a look for the resource fork alone depends on.
    static files::LocatedForks Stripped(const files::LocatedForks&, const std::filesystem::path&);

private:
    std::vector<KnownFork> fForks; // the one used last comes last
};

} // namespace lampblack::resources

#endif
