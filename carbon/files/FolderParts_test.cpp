// What folders say of the names of parts in them, and what is seen of a change.
#include "CatalogFixture.h"
#include "FolderParts.h"
#include "ForkLocator.h"

#include <unistd.h>

using namespace lampblack;
using namespace lampblack::files;

namespace {

// Asked about often enough to be remembered.
bool MayHave(const CatalogFolder& inFolder, const char* inName)
{
    FolderParts first(inFolder.Path());
    FolderParts second(inFolder.Path());
    return FolderParts(inFolder.Path()).MayHave(inName);
}

void Settle()
{
    usleep(60000);
}

} // namespace

TEST_CASE("FolderParts: says what is there, in whatever capitals, and after a while what is not")
{
    CatalogFolder scratch;
    for (const char* name : { "A", "._A", "b.RSRC", "%C", "plain" })
        scratch.Write(name);
    CHECK(MayHave(scratch, "._B")); // the folder changed just now: nobody knows
    Settle();
    for (const char* name : { "._A", "._a", "b.rsrc", "B.rsrc", "%C", "%c" })
        CHECK(MayHave(scratch, name));
    for (const char* name : { "._B", "A.rsrc", "%A", "__MACOSX", ".AppleDouble" })
        CHECK_FALSE(MayHave(scratch, name));
    scratch.Write("._B");
    CHECK(MayHave(scratch, "._B"));
    Settle();
    CHECK(MayHave(scratch, "._B"));
    unlink((scratch.Path() / "._B").c_str());
    Settle();
    CHECK_FALSE(MayHave(scratch, "._B"));
}

TEST_CASE("FolderParts: letters beyond ASCII may be the same as others")
{
    CatalogFolder scratch;
    scratch.Write("._A");
    Settle();
    CHECK(MayHave(scratch, "._\xC3\xA4"));
    scratch.Write("._\xC3\x84");
    Settle();
    CHECK(MayHave(scratch, "._anything"));
}

TEST_CASE("FolderParts: a folder that is gone, or cannot be read, says nothing for certain")
{
    CatalogFolder scratch;
    std::filesystem::remove_all(scratch.Path());
    CHECK(MayHave(scratch, "._A"));
}

TEST_CASE("LocateForks: by places the same forks are found as by bytes, also when they come later")
{
    CatalogFolder scratch;
    const auto path = scratch.Path() / "File";
    scratch.Write("File");
    Settle();
    for (int i = 0; i < 3; ++i)
        CHECK_FALSE(LocateForks(path, Wanted::Both, Delivery::Places).hasResourceFork);
    std::filesystem::copy_file(LAMPBLACK_SOURCE_DIR "/tests/fuzz/corpus/ResourceFile/appledouble",
                               scratch.Path() / "._File");
    for (int i = 0; i < 3; ++i) {
        const LocatedForks places = LocateForks(path, Wanted::Both, Delivery::Places);
        const LocatedForks bytes = LocateForks(path);
        CHECK(places.hasResourceFork);
        CHECK(places.resourceSize == bytes.resourceFork.size());
        CHECK(places.resourceOffset == bytes.resourceOffset);
        CHECK(places.resourcePath == bytes.resourcePath);
        CHECK(+places.finderInfo.fdType == +bytes.finderInfo.fdType);
        CHECK(places.dataSize == bytes.dataFork.size());
        Settle();
    }
}
