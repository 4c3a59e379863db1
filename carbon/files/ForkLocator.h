// Where the parts of a host file are kept: its resource fork and Finder information may lie in the file
// itself or beside it, in several forms. Begin at LocateForks.
#ifndef LAMPBLACK_FILES_FORKLOCATOR_H
#define LAMPBLACK_FILES_FORKLOCATOR_H

#include <files/Container.h>

#include <filesystem>
#include <memory>
#include <string>
#include <sys/stat.h>

namespace lampblack::files {

// By what a host file is known to be the same as before, unchanged.
struct FileIdentity {
    bool exists = false;
    uint64_t device = 0, inode = 0;
    int64_t size = 0, modified = 0, changed = 0; // times in nanoseconds

    FileIdentity() = default;
    explicit FileIdentity(const struct stat&);
    static FileIdentity At(const std::filesystem::path&);
    static FileIdentity Of(int inFile);
    bool operator==(const FileIdentity&) const = default;
};

// Byte ranges, far behind the end of any file, that are locked (as open file descriptions hold locks): who
// writes a file holds the first alone, who reads one in place shares the second for as long.
enum : int64_t { kWriterLock = INT64_C(1) << 60, kReaderLock = kWriterLock + 1 };

// A file's bytes, read only, let go with the last copy. A small file is copied, a large one mapped: a file
// that is replaced by renaming another over it keeps its old bytes here, and nobody may shorten one that is
// mapped. As long as it is mapped the reader's lock is held: a writer who finds it does not write in place.
class MappedFile {
public:
    MappedFile() = default;

    // False, with errno set, when it cannot be opened, or is no ordinary file. An empty file has no bytes.
    bool Open(const std::filesystem::path&);
    Bytes Contents() const;
    FileIdentity Identity() const;

private:
    struct Mapping;
    std::shared_ptr<const Mapping> fMapping;
};

// The parts of one file, with the mappings they lie in; copies share them.
struct LocatedForks {
    bool exists = false;       // the file itself is there and can be read
    int openError = 0;         // errno when it is not
    int besideError = 0;       // errno of a file beside it that is there and cannot be read: nobody knows
                               // what it holds
    Form ownForm = Form::None; // what the file itself is
    bool isOwnFormSound = true;

    bool hasResourceFork = false;
    Bytes resourceFork;
    Form form = Form::None;             // of the file that holds the resource fork
    std::filesystem::path resourcePath; // that file: the named one, or one beside it
    bool isResourceFormSound = true;
    SInt64 resourceOffset = -1; // of the fork in that file; -1 when it lies there encoded

    bool hasFinderInfo = false;
    FInfo finderInfo = {};
    FXInfo extendedFinderInfo = {};
    std::filesystem::path finderPath;

    Bytes dataFork; // the file's bytes, or the data fork within MacBinary, AppleSingle or BinHex
    std::vector<std::string> problems; // of every form that was looked at

    // Each file that was looked at, or for.
    struct LookedAt {
        std::filesystem::path path;
        FileIdentity identity;
    };
    std::vector<LookedAt> lookedAt;

    std::vector<MappedFile> mappings;
    std::vector<std::shared_ptr<const Container>> containers; // they hold what was decoded
};

// LocateForks
//
// Looks, in this order, at: the file when it is valid MacBinary; the sidecar "._name"; "__MACOSX/.../._name"
// in each folder above; "name.rsrc"; "%name"; ".AppleDouble/name"; the file when it is itself a resource
// file, AppleSingle, AppleDouble or BinHex. All are decided by content. The resource fork is the first that
// is not empty, the Finder information the first that is not all zero. What is wanted ends the search.
enum class Wanted : uint8_t { Both, ResourceForkOnly };
LocatedForks LocateForks(const std::filesystem::path&, Wanted = Wanted::Both);

// Whether all of it could be looked at. Who writes, or says that there is nothing, asks first: what cannot be
// read may be all that there is. Errors: fnfErr  no such file, or a folder; else as ErrorOfHost.
OSErr ErrorOfSearch(const LocatedForks&);

} // namespace lampblack::files

#endif
