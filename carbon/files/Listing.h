// The names in a folder of the host, in the order in which the catalog counts them. Begin at ListingOf.
#ifndef LAMPBLACK_FILES_LISTING_H
#define LAMPBLACK_FILES_LISTING_H

#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace lampblack::files {

struct ListedName {
    std::string_view hostName;
    std::string_view macName; // as MacNameOf says
    std::string_view key;     // what names are compared and ordered by, the same in any capitals
    bool isShort;             // macName is only a short form
    unsigned char kind;       // DT_DIR and the like, DT_UNKNOWN when the host does not say
};

class Listing {
public:
    // Reads the folder; empty when that cannot be done.
    explicit Listing(const std::filesystem::path& inFolder);
    Listing(const Listing&) = delete; // the names lie in it

    // All that is listed, by key and then by the host's bytes.
    const std::vector<ListedName>& Names() const { return fNames; }

    // Those with a Macintosh name, capitals or not.
    std::span<const ListedName> Named(std::string_view inMacName) const;

private:
    void Add(std::string_view inHostName, unsigned char inKind);
    std::string_view Keep(std::string_view inText);

    std::vector<ListedName> fNames;
    std::vector<std::unique_ptr<char[]>> fBlocks; // of text; the last is being filled
    size_t fFree = 0;                             // of the last
};

// ListingOf
//
// The listing of a folder, read again only when the folder has changed since: the few folders asked for last
// are remembered. A listing that somebody holds stays as it is.
std::shared_ptr<const Listing> ListingOf(const std::filesystem::path& inFolder);

// How many names are listed in a folder, which is not remembered.
size_t CountNamesIn(const std::filesystem::path& inFolder);

} // namespace lampblack::files

#endif
