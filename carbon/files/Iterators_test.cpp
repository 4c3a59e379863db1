// Iterators: the entries of a folder and of all below it, many at a call.
#include "CatalogFixture.h"

#include <vector>

using namespace lampblack::files;

namespace {

FSIterator Open(const FSRef& inFolder, FSIteratorFlags inFlags)
{
    FSIterator iterator = nullptr;
    CHECK(FSOpenIterator(&inFolder, inFlags, &iterator) == noErr);
    return iterator;
}

// All names, asked for a few at a time.
std::vector<std::string> NamesOf(FSIterator inIterator, ItemCount inAtATime)
{
    std::vector<std::string> names;
    OSErr error = noErr;
    while (error == noErr) {
        FSSpec specs[8];
        ItemCount count = 0;
        error =
            FSGetCatalogInfoBulk(inIterator, inAtATime, &count, nullptr, 0, nullptr, nullptr, specs, nullptr);
        for (ItemCount i = 0; i < count; ++i)
            names.push_back(TextOf(specs[i].name));
    }
    CHECK(error == errFSNoMoreItems);
    return names;
}

std::vector<std::string> Walk(const FSRef& inFolder, FSIteratorFlags inFlags, ItemCount inAtATime = 3)
{
    const FSIterator iterator = Open(inFolder, inFlags);
    const std::vector<std::string> names = NamesOf(iterator, inAtATime);
    CHECK(FSCloseIterator(iterator) == noErr);
    return names;
}

using Names = std::vector<std::string>;

} // namespace

TEST_CASE("FSGetCatalogInfoBulk: a folder, and all below it with each folder right before its entries")
{
    CatalogFolder scratch;
    scratch.Write("b/two");
    scratch.Write("b/One");
    scratch.MakeFolder("b/c");
    scratch.Write("a");
    scratch.Write("z");
    scratch.Write("._z");
    const FSRef folder = scratch.OwnRef();
    for (ItemCount atATime : { 1, 2, 3, 6, 7 }) {
        CAPTURE(atATime);
        CHECK(Walk(folder, kFSIterateFlat, atATime) == Names{ "a", "b", "z" });
        CHECK(Walk(folder, kFSIterateSubtree, atATime) == Names{ "a", "b", "c", "One", "two", "z" });
    }
    scratch.MakeFolder("empty");
    CHECK(Walk(scratch.Ref("empty"), kFSIterateSubtree).empty());
}

TEST_CASE("FSGetCatalogInfoBulk: every result of each entry")
{
    CatalogFolder scratch;
    scratch.Write("File", "12345");
    scratch.MakeFolder("Folder");
    const FSIterator iterator = Open(scratch.OwnRef(), kFSIterateFlat);
    FSCatalogInfo infos[2] = {};
    FSRef refs[2];
    FSSpec specs[2];
    HFSUniStr255 names[2];
    ItemCount count = 99;
    Boolean changed = true;
    REQUIRE(FSGetCatalogInfoBulk(iterator, 2, &count, &changed, kFSCatInfoGettableInfo, infos, refs, specs,
                                 names) == noErr);
    CHECK(count == 2);
    CHECK_FALSE(changed);
    CHECK(+infos[0].dataLogicalSize == 5);
    CHECK((infos[1].nodeFlags & kFSNodeIsDirectoryMask) != 0);
    CHECK(PathOfRef(refs[0]) == (scratch.Path() / "File").string());
    CHECK(TextOf(specs[1].name) == "Folder");
    CHECK(names[1].length == 6);
    CHECK(FSGetCatalogInfoBulk(iterator, 2, &count, &changed, 0, nullptr, nullptr, nullptr, nullptr) ==
          errFSNoMoreItems);
    CHECK(count == 0);
    CHECK(FSCloseIterator(iterator) == noErr);
}

TEST_CASE("FSGetCatalogInfoBulk: links are told and never followed, so that a walk ends")
{
    CatalogFolder scratch;
    scratch.Write("Folder/File");
    std::filesystem::create_symlink("..", scratch.Path() / "Folder/Up");
    std::filesystem::create_symlink(".", scratch.Path() / "Folder/Here");
    std::filesystem::create_symlink("/", scratch.Path() / "Root");
    CHECK(Walk(scratch.OwnRef(), kFSIterateSubtree) == Names{ "Folder", "File", "Here", "Up", "Root" });
}

TEST_CASE("FSGetCatalogInfoBulk: what is deleted on the way is passed over, and each entry comes once")
{
    CatalogFolder scratch;
    for (int i = 0; i < 6; ++i)
        scratch.Write("File " + std::to_string(i));
    const FSIterator iterator = Open(scratch.OwnRef(), kFSIterateFlat | kFSIterateDelete);
    FSRef refs[3];
    ItemCount count = 0;
    Boolean changed = false;
    REQUIRE(FSGetCatalogInfoBulk(iterator, 3, &count, nullptr, 0, nullptr, refs, nullptr, nullptr) == noErr);
    for (const FSRef& ref : refs)
        CHECK(FSDeleteObject(&ref) == noErr);
    std::filesystem::remove(scratch.Path() / "File 4");
    scratch.Write("A new one");
    FSSpec specs[8];
    CHECK(FSGetCatalogInfoBulk(iterator, 8, &count, &changed, 0, nullptr, nullptr, specs, nullptr) ==
          errFSNoMoreItems);
    REQUIRE(count == 2);
    CHECK(changed);
    CHECK(TextOf(specs[0].name) == "File 3");
    CHECK(TextOf(specs[1].name) == "File 5");
    CHECK(FSCloseIterator(iterator) == noErr);
}

TEST_CASE("FSOpenIterator, FSCloseIterator, FSGetCatalogInfoBulk: bad arguments")
{
    CatalogFolder scratch;
    scratch.Write("File");
    const FSRef folder = scratch.OwnRef(), file = scratch.Ref("File");
    FSIterator iterator = (FSIterator)&scratch;
    ItemCount count = 7;
    CHECK(FSOpenIterator(&folder, 4, &iterator) == errFSBadIteratorFlags);
    CHECK(iterator == nullptr);
    CHECK(FSOpenIterator(&file, 0, &iterator) == errFSNotAFolder);
    CHECK(FSOpenIterator(nullptr, 0, &iterator) == paramErr);
    CHECK(FSOpenIterator(&folder, 0, nullptr) == paramErr);
    const FSIterator foreign = (FSIterator)&scratch;
    CHECK(FSCloseIterator(foreign) == errFSIteratorNotFound);
    CHECK(FSCloseIterator(nullptr) == paramErr);
    CHECK(FSGetCatalogInfoBulk(foreign, 1, &count, nullptr, 0, nullptr, nullptr, nullptr, nullptr) ==
          errFSIteratorNotFound);
    CHECK(count == 0);
    iterator = Open(folder, 0);
    CHECK(FSGetCatalogInfoBulk(iterator, 0, &count, nullptr, 0, nullptr, nullptr, nullptr, nullptr) ==
          errFSBadItemCount);
    CHECK(FSGetCatalogInfoBulk(iterator, 1, nullptr, nullptr, 0, nullptr, nullptr, nullptr, nullptr) ==
          paramErr);
    FSCatalogInfo info;
    CHECK(FSGetCatalogInfoBulk(iterator, 1, &count, nullptr, 0x80000000, &info, nullptr, nullptr, nullptr) ==
          paramErr);
    CHECK(FSCloseIterator(iterator) == noErr);
    CHECK(FSCloseIterator(iterator) == errFSIteratorNotFound);
}
