// Which names in a folder may be those of parts of files: sidecars and their like. Whoever looks for the
// parts of one file after another asks the folder once instead of the host for each name.
#ifndef LAMPBLACK_FILES_FOLDERPARTS_H
#define LAMPBLACK_FILES_FOLDERPARTS_H

#include <string>
#include <string_view>

namespace lampblack::files {

// FolderParts
//
// Of one folder, as it is at this moment: the constructor asks the host for the folder's times. A folder is
// read when it is asked about again and has not changed since, and for a while.
class FolderParts {
public:
    explicit FolderParts(const std::string& inFolder);

    // False: nothing in the folder has that name, in whatever capitals. The name is one of a part: "._name",
    // "name.rsrc", "%name", "__MACOSX", ".AppleDouble".
    bool MayHave(std::string_view inName) const;

private:
    const struct KnownParts* fKnown = nullptr; // null: nothing is known. Lasts until the next is made
};

} // namespace lampblack::files

#endif
