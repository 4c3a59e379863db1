// The bytes of a fork in memory with the index of its map, and a cache of those of files that were open a
// moment ago.
//
// A small fork is copied. Of a large one that is only read the map is copied, and its data are read from the
// file when they are asked for: nothing is mapped, so that no other program can pull bytes from under this
// process by making a file shorter. Meanwhile the file is held open under the reader's lock: writers put
// another file in its place and leave this one's bytes as they are. A fork that is written is copied wholly.
#ifndef LAMPBLACK_RESOURCES_FORKIMAGE_H
#define LAMPBLACK_RESOURCES_FORKIMAGE_H

#include "ResourceFork.h"

#include <files/ForkHome.h>
#include <files/ForkLocator.h>

#include <memory>
#include <optional>

namespace lampblack::resources {

class ForkImage : private DataReader {
public:
    ForkImage() = default;
    ForkImage(const ForkImage&) = delete;

    // The resource fork that was found, or the data fork, for reading; it is held. Null: it cannot be read
    // any more, or is far larger than a fork can be.
    static std::shared_ptr<ForkImage> Of(files::LocatedForks&, bool inResourceFork);

    // Wholly in memory. Null: the same.
    static std::shared_ptr<ForkImage> OfPlace(const files::ForkPlace&);
    static std::shared_ptr<ForkImage> Copied(files::LocatedForks&, bool inResourceFork);
    static std::shared_ptr<ForkImage> OfBytes(std::vector<uint8_t>&&);

    size_t Size() const { return fSize; }
    bool IsWhole() const { return fIsWhole; }
    Bytes Contents() const { return fCopy; } // of one that is wholly in memory

    // Whoever reads data holds the image; a file that is let go is opened again by the next. False: it is not
    // the file any more.
    bool Hold();
    void LetGo();

    // Null, or what is wrong with the map. The fork is parsed once.
    const char* Parse();
    const ResourceFork& Fork() const { return fFork; }
    bool IsSound(); // nothing at all is damaged

    // Changes bytes of a copy; the map has to be parsed again then.
    void Patch(uint32_t inOffset, Bytes);

private:
    struct Source;
    bool CopyAll(const Source&);
    const char* ParseMap();
    bool Read(size_t inOffset, size_t inCount, void* outBytes) const override;

    bool fIsWhole = true;
    size_t fSize = 0;
    std::vector<uint8_t> fCopy; // all of it, or header and map

    // Of one that is read.
    std::string fPath;
    files::FileIdentity fIdentity;
    SInt64 fOffset = 0; // in that file
    files::Descriptor fFile;
    int fHolders = 0;

    ResourceFork fFork;
    bool fIsParsed = false;
    const char* fProblem = nullptr;
    std::optional<bool> fIsSound;
};

// Where a fork was found, and its bytes.
struct KnownFork {
    std::string path;
    bool isResourceFork = true;
    std::shared_ptr<const files::LocatedForks> located; // without the bytes
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
    const KnownFork* Find(const std::string& inPath, bool inResourceFork) const;
    KnownFork Take(const std::string& inPath, bool inResourceFork); // without an image when there is none
    void Keep(KnownFork);

    // The file of the path itself was just seen, and empty; null: it was not.
    static bool IsCurrent(const files::LocatedForks&, const std::string& inPath,
                          const files::FileIdentity* inSeen);

    // Whether all that was looked at had been as it was for a while when that was: a file that changes twice
    // within a tick of its file system's clock looks as if it had once. inOwn, which may be empty, is left
    // out.
    static bool IsSettled(const files::LocatedForks&, int64_t inLookedAt, const std::string& inOwn);

    // What a look for the resource fork alone depends on.
    static std::shared_ptr<const files::LocatedForks> Stripped(const files::LocatedForks&,
                                                               const std::string& inPath);

private:
    std::vector<KnownFork> fForks; // the one used last comes last
};

} // namespace lampblack::resources

#endif
