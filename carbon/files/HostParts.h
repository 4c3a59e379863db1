// The host files that hold parts of another file: which there are, and where they go when it is moved.
#ifndef LAMPBLACK_FILES_HOSTPARTS_H
#define LAMPBLACK_FILES_HOSTPARTS_H

#include <Carbon/Files.h>

#include <filesystem>
#include <vector>

namespace lampblack::files {

// The files beside one (or in "__MACOSX", ".AppleDouble") that hold its resource fork or Finder information
// now, or would if others went; by content, not by name alone. Of a link or folder the sidecar. Errors: what
// kept one from being read.
OSErr PartsBeside(const std::filesystem::path&, std::vector<std::filesystem::path>* outParts);

// The parts of a file that shall have another name: each has both names in between, so that the old file and
// the new one would have it. Drop takes the old names away; the destructor takes the new ones, unless they
// were to be kept.
class PartsOnTheMove {
public:
    // Errors: dupFNErr  the new name of a part that is listed as a file is taken; else of the host.
    OSErr Link(const std::filesystem::path& inFrom, const std::filesystem::path& inTo);
    void Keep(); // the new names stay
    void Drop(); // and the old ones go
    ~PartsOnTheMove();

private:
    OSErr LinkOne(const std::filesystem::path& inOld, const std::filesystem::path& inNew);

    std::vector<std::filesystem::path> fOld, fNew;
    std::filesystem::path fFolder; // that was made for them; empty: none
};

// Deletes the files beside one that would show a resource fork now that its sidecar has an empty one: an
// empty fork does not hide the next form. What they know of the Finder must be in the sidecar already.
OSErr RemoveOtherForks(const std::filesystem::path&);

// Deletes what holds a part of nothing: the file is gone. What has no form of a part stays.
void RemoveLeftPart(const std::filesystem::path&);
void RemoveLeftParts(const std::filesystem::path& inFolder);

} // namespace lampblack::files

#endif
