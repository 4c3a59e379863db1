// The modification date of a file whose resource fork, which lies beside it, is written.
#include "WritingFixture.h"

#include <fcntl.h>
#include <sys/stat.h>

using namespace lampblack::writing;

namespace {

constexpr time_t kLongAgo = 1000000000; // 2001

// A file with data, and a resource fork beside it that is open for writing; nothing is to be written. The file was
// modified long ago.
struct OldFile : WritableFile {
    OldFile()
    {
        std::ofstream(Host(), std::ios::binary) << "data";
        CloseResFile(refNum);
        SetTime();
        refNum = Place::Open("File");
        REQUIRE(refNum > 0);
    }

    std::filesystem::path Host() const { return Path() / "File"; }

    void SetTime() const
    {
        const timespec times[2] = { { kLongAgo, 0 }, { kLongAgo, 0 } };
        REQUIRE(utimensat(AT_FDCWD, Host().c_str(), times, 0) == 0);
    }

    // Seconds since 1904, in local time, as an application sees it.
    UInt32 Date() const
    {
        const FSSpec spec = Spec("File");
        CInfoPBRec block = {};
        Str255 name;
        std::copy(spec.name, spec.name + spec.name[0] + 1, name);
        block.hFileInfo.ioNamePtr = name;
        block.hFileInfo.ioVRefNum = spec.vRefNum;
        block.hFileInfo.ioDirID = spec.parID;
        REQUIRE(PBGetCatInfoSync(&block) == noErr);
        return block.hFileInfo.ioFlMdDat;
    }

    // How many seconds ago the file was modified.
    double Age() const
    {
        struct stat status = {};
        REQUIRE(stat(Host().c_str(), &status) == 0);
        timespec now;
        clock_gettime(CLOCK_REALTIME, &now);
        return std::difftime(now.tv_sec, status.st_mtim.tv_sec);
    }

    void Change() const
    {
        const Handle handle = Get1Resource('TEXT', 1);
        SetText(handle, "other");
        ChangedResource(handle);
        REQUIRE(ResError() == noErr);
    }
};

} // namespace

TEST_CASE("UpdateResFile: the file of a fork that lies beside it is modified now, and keeps its data")
{
    const OldFile file;
    const UInt32 before = file.Date();
    file.Change();
    CHECK(file.Date() == before);
    UpdateResFile(file.refNum);
    REQUIRE(ResError() == noErr);
    CHECK(file.OnDisk('TEXT', 1) == "other");
    CHECK(file.Date() > before);
    CHECK(file.Age() < 100);
    CHECK(ReadFile(file.Host()) == "data");
}

TEST_CASE("CloseResFile: the file of a fork that lies beside it is modified when changes are written")
{
    OldFile file;
    const UInt32 before = file.Date();
    file.Change();
    CloseResFile(file.refNum);
    CHECK(ResError() == noErr);
    CHECK(file.OnDisk('TEXT', 1) == "other");
    CHECK(file.Date() > before);
    CHECK(file.Age() < 100);
    file.refNum = 0;
}

TEST_CASE("CloseResFile: the file is modified when WriteResource wrote into its fork")
{
    OldFile file;
    const UInt32 before = file.Date();
    file.Change();
    WriteResource(Get1Resource('TEXT', 1));
    REQUIRE(ResError() == noErr);
    CloseResFile(file.refNum);
    CHECK(file.Date() > before);
    CHECK(file.Age() < 100);
    file.refNum = 0;
}

TEST_CASE("UpdateResFile, CloseResFile: without changes the file's modification date stays")
{
    OldFile file;
    const UInt32 before = file.Date();
    Get1Resource('TEXT', 1);
    UpdateResFile(file.refNum);
    CHECK(file.Date() == before);
    CloseResFile(file.refNum);
    CHECK(file.Date() == before);
    CHECK(file.Age() > 100);
    file.refNum = 0;
}
