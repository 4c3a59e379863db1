// Listings: what is found by a Macintosh name, in which order names come, what a listing keeps.
#include "CatalogFixture.h"
#include "Listing.h"

#include <foundation/MacRoman.h>
#include <set>

using namespace lampblack;
using namespace lampblack::files;

TEST_CASE("Listing::Named: for each letter of Mac Roman those that are equal but for capitals, and no others")
{
    CatalogFolder scratch;
    std::vector<std::string> letters;
    for (int byte = 1; byte < 256; ++byte)
        if (byte != ':')
            letters.push_back("x" + std::string(1, (char)byte));
    for (const std::string& letter : letters)
        scratch.Write(HostNameOf(letter));
    const Listing listing(scratch.Path());
    REQUIRE(listing.Names().size() == letters.size());
    for (const std::string& letter : letters) {
        std::set<std::string> found, expected;
        for (const ListedName& name : listing.Named(letter))
            found.insert(std::string(name.macName));
        for (const std::string& other : letters)
            if (foundation::EqualIgnoringCase(letter, other))
                expected.insert(other);
        CAPTURE((int)(UInt8)letter[1]);
        CHECK(found == expected);
    }
}

TEST_CASE("Listing: one that somebody holds stays as it is; a folder that cannot be read has no names")
{
    CatalogFolder scratch;
    for (int i = 0; i < 1000; ++i)
        scratch.Write("A name of which there are many " + std::to_string(i));
    const auto held = ListingOf(scratch.Path());
    std::filesystem::remove_all(scratch.Path());
    CHECK(held->Names().size() == 1000);
    CHECK(held->Names().front().isShort);
    CHECK(held->Names().front().hostName.starts_with("A name of which"));
    CHECK(ListingOf(scratch.Path())->Names().empty());
    CHECK(CountNamesIn(scratch.Path()) == 0);
    for (int i = 0; i < 20; ++i) // more than are remembered
        CHECK(NamesIn(scratch.MakeFolder("Folder " + std::to_string(i))).empty());
    CHECK(ListingOf(scratch.Path())->Names().size() == 20);
}
