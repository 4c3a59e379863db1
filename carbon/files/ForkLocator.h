// Where the parts of a host file are kept: its resource fork and Finder information may lie in the file
// itself or beside it, in several forms. Begin at LocateForks.
#ifndef LAMPBLACK_FILES_FORKLOCATOR_H
#define LAMPBLACK_FILES_FORKLOCATOR_H

#include <files/Container.h>
#include <files/Durable.h>
#include <files/FileIdentity.h>

#include <filesystem>
#include <memory>
#include <string>
#include <sys/stat.h>

namespace lampblack::files {

// Byte ranges, far behind the end of any file, that are locked (as open file descriptions hold locks): who
// writes a file holds the first alone, who reads one in place shares the second for as long.
enum : int64_t { kWriterLock = INT64_C(1) << 60, kReaderLock = kWriterLock + 1 };

bool TakeReaderLock(int inFile); // false: the file system has no locks

// A file's bytes, read only, let go with the last copy. A small file is copied at once, a large one mapped
// when its contents are asked for: a file that is replaced by renaming another over it keeps its old bytes
// here, and nobody may shorten one that is mapped. What is held open or mapped is read under the reader's
// lock: a writer who finds it does not write in place.
class MappedFile {
public:
    MappedFile() = default;

    // False, with errno set, when it cannot be opened and read, or is no ordinary file. An empty file has no
    // bytes.
    bool Open(const std::filesystem::path&);
    Bytes Contents() const;
    FileIdentity Identity() const;

    // In two steps: after the first, Front answers the first bytes, as many as are wanted or there are; after
    // the second, Contents is complete.
    bool OpenToLook(const std::filesystem::path&);
    Bytes Front(size_t inWanted);
    bool Load();

    // Gives up the open file, under whose lock its bytes stay as they are; none when it was copied wholly, or
    // could not be locked.
    Descriptor TakeHeldFile();

private:
    struct Mapping;
    std::shared_ptr<Mapping> fMapping;
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
    size_t resourceSize = 0;            // of the resource fork, also when its bytes were not asked for
    Form form = Form::None;             // of the file that holds the resource fork
    std::filesystem::path resourcePath; // that file: the named one, or one beside it
    bool isResourceFormSound = true;
    SInt64 resourceOffset = -1; // of the fork in that file; -1 when it lies there encoded

    bool hasFinderInfo = false;
    FInfo finderInfo = {};
    FXInfo extendedFinderInfo = {};
    std::filesystem::path finderPath;

    Bytes dataFork; // the file's bytes, or the data fork within MacBinary, AppleSingle or BinHex
    size_t dataSize = 0;
    std::vector<std::string> problems; // of every form that was looked at

    // Each file that was looked at, or for.
    struct LookedAt {
        std::string path;
        FileIdentity identity;
    };
    std::vector<LookedAt> lookedAt;

    // Of the file that holds the resource fork, when the place was asked for.
    MappedFile resourceFile;

    std::vector<MappedFile> mappings;
    std::vector<std::shared_ptr<const Container>> containers; // they hold what was decoded
};

// LocateForks
//
// Looks, in this order, at: the file when it is valid MacBinary; the sidecar "._name"; "__MACOSX/.../._name"
// in each folder above; "name.rsrc"; "%name"; ".AppleDouble/name"; the file when it is itself a resource
// file, AppleSingle, AppleDouble or BinHex. All are decided by content. The resource fork is the first that
// is not empty, the Finder information the first that is not all zero. What is wanted ends the search.
//
// Who asks for places gets no bytes where place and size of a fork tell as much; then nothing is mapped, and
// a large file hardly read. Forks that lie encoded, or within a damaged container, come as bytes all the
// same.
enum class Wanted : uint8_t { Both, ResourceForkOnly };
enum class Delivery : uint8_t { Bytes, Places };
LocatedForks LocateForks(const std::filesystem::path&, Wanted = Wanted::Both, Delivery = Delivery::Bytes);

// Whether all of it could be looked at. Who writes, or says that there is nothing, asks first: what cannot be
// read may be all that there is. Errors: fnfErr  no such file, or a folder; else as ErrorOfHost.
OSErr ErrorOfSearch(const LocatedForks&);

} // namespace lampblack::files

#endif
