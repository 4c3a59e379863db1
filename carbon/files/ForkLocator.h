// Where the parts of a host file are kept: its resource fork and Finder information may lie in the file
// itself or beside it, in several forms. Begin at LocateForks.
#ifndef LAMPBLACK_FILES_FORKLOCATOR_H
#define LAMPBLACK_FILES_FORKLOCATOR_H

#include <files/Container.h>

#include <filesystem>
#include <memory>
#include <string>

namespace lampblack::files {

// A file's bytes, mapped and read only, unmapped with the last copy. A file that is replaced by renaming
// another over it keeps its old bytes here; nobody may shorten a file that is mapped.
class MappedFile {
public:
    MappedFile() = default;

    // False, with errno set, when it cannot be opened, or is no ordinary file. An empty file has no bytes.
    bool Open(const std::filesystem::path&);
    Bytes Contents() const;

private:
    struct Mapping;
    std::shared_ptr<const Mapping> fMapping;
};

// The parts of one file, with the mappings they lie in; copies share them.
struct LocatedForks {
    bool exists = false; // the file itself is there and can be read
    int openError = 0;   // errno when it is not

    bool hasResourceFork = false;
    Bytes resourceFork;
    Form form = Form::None;             // of the file that holds the resource fork
    std::filesystem::path resourcePath; // that file: the named one, or one beside it

    bool hasFinderInfo = false;
    FInfo finderInfo = {};
    FXInfo extendedFinderInfo = {};
    std::filesystem::path finderPath;

    Bytes dataFork; // the file's bytes, or the data fork within MacBinary, AppleSingle or BinHex
    std::vector<std::string> problems; // of every form that was looked at

    std::vector<MappedFile> mappings;
    std::vector<std::shared_ptr<const Container>> containers; // they hold what was decoded
};

// LocateForks
//
// Looks, in this order, at: the file when it is valid MacBinary; the sidecar "._name"; "__MACOSX/.../._name"
// in each folder above; "name.rsrc"; "%name"; ".AppleDouble/name"; the file when it is itself a resource
// file, AppleSingle, AppleDouble or BinHex. All are decided by content. The resource fork is the first that
// is not empty, the Finder information the first that is not all zero.
LocatedForks LocateForks(const std::filesystem::path&);

} // namespace lampblack::files

#endif
