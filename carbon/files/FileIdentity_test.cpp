// By what a file is known to be as it was, and what its file system's times tell.
#include "ChangeTimes.h"
#include "FileIdentity.h"

#include <ScratchFolder.h>
#include <doctest/doctest.h>
#include <fcntl.h>
#include <fstream>
#include <unistd.h>

using namespace lampblack::files;

namespace {

struct Folder : ScratchFolder {
    std::string file = (Path() / "File").native();

    void Write(const std::string& inText) const { std::ofstream(file, std::ios::binary) << inText; }
    void SetTime(time_t inSeconds) const
    {
        const timespec times[2] = { { inSeconds, 0 }, { inSeconds, 0 } };
        REQUIRE(utimensat(AT_FDCWD, file.c_str(), times, 0) == 0);
    }
};

} // namespace

TEST_CASE("FileIdentity: an empty file is as it was whatever its times; another is not")
{
    const Folder folder;
    folder.Write("");
    const FileIdentity empty = FileIdentity::At(folder.file);
    CHECK(empty.exists);
    CHECK(empty == FileIdentity::PlaceAt(folder.file));
    folder.SetTime(1000000000);
    CHECK(FileIdentity::At(folder.file) == empty);
    CHECK(empty.AgainAt(folder.file) == empty);
    folder.Write("a");
    CHECK_FALSE(empty.AgainAt(folder.file) == empty);
    const FileIdentity full = FileIdentity::At(folder.file);
    CHECK(full.AgainAt(folder.file) == full);
    folder.SetTime(1000000000);
    CHECK_FALSE(full.AgainAt(folder.file) == full);
    CHECK_FALSE(full == FileIdentity::PlaceAt(folder.file));
    std::filesystem::remove(folder.file);
    CHECK_FALSE(empty.AgainAt(folder.file) == empty);
    CHECK_FALSE(full.AgainAt(folder.file) == full);
    CHECK(FileIdentity().AgainAt(folder.file) == FileIdentity());
}

TEST_CASE("FileIdentity::PlaceAt: a link itself, or what it leads to")
{
    const Folder folder;
    folder.Write("text");
    const std::string link = (folder.Path() / "Link").native();
    std::filesystem::create_symlink("File", link);
    uint16_t mode = 0;
    CHECK(FileIdentity::PlaceAt(link, &mode, true).exists);
    CHECK(S_ISLNK(mode));
    CHECK(FileIdentity::PlaceAt(link, &mode) == FileIdentity::PlaceAt(folder.file));
    CHECK(S_ISREG(mode));
    CHECK(FileIdentity::PlaceAt(folder.file).size == 4);
    CHECK_FALSE(FileIdentity::PlaceAt(folder.file + "s").exists);
}

TEST_CASE(
    "ShowsEachChange: what it says holds for a thousand changes in a row, and needs a folder for its trial")
{
    const Folder folder;
    folder.Write("text");
    const int file = open(folder.file.c_str(), O_RDWR | O_CLOEXEC);
    REQUIRE(file >= 0);
    const uint64_t device = FileIdentity::Of(file).device;
    const bool shows = ShowsEachChange(device, folder.Path());
    CHECK(IsKnownToShowEachChange(device) == shows);
    CHECK(ShowsEachChange(device, "/no such folder") == shows); // it is known by now
    int alike = 0;
    FileIdentity before = FileIdentity::Of(file);
    for (int i = 0; i < 1000; ++i) {
        REQUIRE(pwrite(file, "x", 1, 0) == 1);
        const FileIdentity after = FileIdentity::Of(file);
        alike += after == before;
        before = after;
    }
    CHECK((alike == 0 || !shows));
    close(file);
    CHECK_FALSE(ShowsEachChange(0, folder.Path())); // there is no such device
    CHECK_FALSE(IsKnownToShowEachChange(0));
}
