// What is known of one file or folder: the host's status, and, when asked for, what its forks and Finder
// information say. Begin at ItemFacts::Look.
//
// A symbolic link is told of itself and never followed: a file without forks, of type 'slnk' and creator
// 'rhap', with kIsAlias among its Finder flags.
#ifndef LAMPBLACK_FILES_ITEMFACTS_H
#define LAMPBLACK_FILES_ITEMFACTS_H

#include "Catalog.h"
#include "ForkLocator.h"

#include <optional>
#include <sys/stat.h>

namespace lampblack::files {

class ItemFacts {
public:
    explicit ItemFacts(const Item& inItem) : fItem(inItem), fPath(PathOf(inItem)) {}

    // Asks the host. Errors: fnfErr.
    OSErr Look();

    const Item& TheItem() const { return fItem; }
    const struct statx& Status() const { return fStatus; }

    // Finder information as it is stored, 16 bytes of big-endian fields; zero where there is none. Of a
    // folder it is that of its sidecar.
    void FinderBytes(UInt8* outSixteen);
    void ExtendedBytes(UInt8* outSixteen);

    UInt64 DataSize();
    UInt64 ResourceSize();
    UInt32 Valence() const; // entries of a folder

    // The creation date is the one kept with the forks, else that of the host, which is never after the
    // modification.
    timespec Created();
    timespec Modified() const;

    // Bits of ioFlAttrib, which are those of nodeFlags as well.
    UInt8 Attributes() const;

private:
    const LocatedForks& Forks();
    void ReadFolderInfo();

    const Item& fItem;
    std::filesystem::path fPath;
    struct statx fStatus = {};
    std::optional<LocatedForks> fForks;
};

// FSpGetFInfo and its kin. A folder has none.
FInfo FinderInfoOf(const Item&);

// Bytes on the disk, in whole blocks.
UInt64 PhysicalSize(UInt64 inLogicalSize);
constexpr SInt32 kAllocationBlock = 4096;

} // namespace lampblack::files

#endif
