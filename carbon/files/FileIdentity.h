// By what a file or folder of the host is known to be the same as before, unchanged.
#ifndef LAMPBLACK_FILES_FILEIDENTITY_H
#define LAMPBLACK_FILES_FILEIDENTITY_H

#include <cstdint>
#include <filesystem>
#include <string>
#include <sys/stat.h>

namespace lampblack::files {

struct FileIdentity {
    bool exists = false;
    uint64_t device = 0, inode = 0;
    int64_t size = 0, modified = 0, changed = 0; // times in nanoseconds; zero of an empty file, which is as
                                                 // it was if it is still empty

    FileIdentity() = default;
    explicit FileIdentity(const struct stat&);
    static FileIdentity At(const std::string&);
    static FileIdentity At(const std::filesystem::path& inPath) { return At(inPath.native()); }
    static FileIdentity Of(int inFile);

    // Without the times, which are zero. A file system may give a file whose times were asked for new ones with
    // its next change, and other files as well; to flush a change then writes the times, too.
    static FileIdentity PlaceAt(const std::string&, uint16_t* outMode = nullptr, bool inOfLink = false);
    static FileIdentity PlaceOf(int inFile);

    // What is at the path now, to be compared with this: times that do not count are not asked for.
    FileIdentity AgainAt(const std::string&) const;

    bool operator==(const FileIdentity&) const = default;

    // Whether a change after this moment will show in the times. A file system's clock advances in steps: a
    // change within one step of an earlier one leaves the times as they were.
    bool WouldShowChange() const;
};

} // namespace lampblack::files

#endif
