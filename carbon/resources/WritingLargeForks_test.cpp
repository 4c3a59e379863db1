// Forks too large to be copied: read when asked for, by this process while others write.
#include "WritingFixture.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace lampblack;
using namespace lampblack::writing;
using resources::ForkBuilder;

namespace {

constexpr size_t kLength = 300000;

std::string Letters(char inLetter, size_t inLength = kLength)
{
    return std::string(inLength, inLetter);
}

// A file of three resources, 1 to 3, that are "aa…", "bb…" and "cc…".
struct LargeFile : Place {
    LargeFile()
    {
        Create("File");
        const SInt16 refNum = Open("File");
        for (const SInt16 id : { 1, 2, 3 })
            AddText(Letters((char)('a' + id - 1)), 'data', id);
        CloseResFile(refNum);
        REQUIRE(ResError() == noErr);
        REQUIRE(utimensat(AT_FDCWD, Sidecar().c_str(), nullptr, 0) == 0); // nobody knows what was written
    }
    std::filesystem::path Sidecar() const { return Path() / "._File"; }
};

} // namespace

TEST_CASE("Get1Resource: a file that another program makes shorter while it is open ends in eofErr")
{
    const LargeFile place;
    const SInt16 file = place.Open("File", fsRdPerm);
    REQUIRE(file > 0);
    REQUIRE(truncate(place.Sidecar().c_str(), 400000) == 0);
    CHECK(TextOf(Get1Resource('data', 1)) == Letters('a'));
    CHECK(Get1Resource('data', 2) == nullptr);
    CHECK(ResError() == eofErr);
    CHECK(Get1Resource('data', 3) == nullptr);
    CHECK(ResError() == eofErr);
    SetResLoad(false);
    const Handle third = Get1Resource('data', 3);
    SetResLoad(true);
    REQUIRE(third != nullptr);
    char byte;
    ReadPartialResource(third, 0, &byte, 1);
    CHECK(ResError() == eofErr);
    CHECK(GetResourceSizeOnDisk(third) == -1);
    CHECK(ResError() == eofErr);
    CloseResFile(file);
    const SInt16 again = place.Open("File", fsRdPerm);
    CHECK(again == -1);
    CHECK(ResError() != noErr);
}

TEST_CASE("FSpOpenResFile: a large file that was made shorter is not opened, for reading or writing")
{
    for (const SignedByte permission : { fsRdPerm, fsRdWrPerm }) {
        const LargeFile place;
        REQUIRE(truncate(place.Sidecar().c_str(), 100000) == 0);
        CHECK(place.Open("File", permission) == -1);
        CHECK(ResError() != noErr);
    }
}

TEST_CASE("WriteResource: who reads a large file keeps the state it opened")
{
    const LargeFile place;
    const SInt16 reader = place.Open("File", fsRdPerm);
    const SInt16 writer = place.Open("File");
    REQUIRE(writer > 0);
    for (int i = 0; i < 3; ++i) {
        const Handle second = Get1Resource('data', 2);
        SetText(second, Letters((char)('x' + i)));
        ChangedResource(second);
        WriteResource(second);
        CHECK(ResError() == noErr);
    }
    UseResFile(reader);
    CHECK(TextOf(Get1Resource('data', 2)) == Letters('b'));
    CHECK(TextOf(Get1Resource('data', 3)) == Letters('c'));
    CloseResFile(reader);
    CloseResFile(writer);
    CHECK(place.OnDisk("File", 'data', 2) == Letters('z'));
}

TEST_CASE("FSpOpenResFile: a large file that is opened again unchanged, and changed, gives what it holds")
{
    const LargeFile place;
    usleep(50000);
    for (int i = 0; i < 3; ++i) {
        const SInt16 file = place.Open("File", fsRdPerm);
        CHECK(TextOf(Get1Resource('data', 3)) == Letters('c'));
        CloseResFile(file);
    }
    const SInt16 writer = place.Open("File");
    const Handle third = Get1Resource('data', 3);
    SetText(third, "short");
    ChangedResource(third);
    CloseResFile(writer);
    const SInt16 file = place.Open("File", fsRdPerm);
    CHECK(TextOf(Get1Resource('data', 3)) == "short");
    CHECK(TextOf(Get1Resource('data', 1)) == Letters('a'));
    CloseResFile(file);
}

TEST_CASE("ReadPartialResource: of a large resource the part alone is read")
{
    const LargeFile place;
    const SInt16 file = place.Open("File", fsRdPerm);
    SetResLoad(false);
    const Handle second = Get1Resource('data', 2);
    SetResLoad(true);
    char part[4] = {};
    ReadPartialResource(second, (long)kLength - 2, part, 4);
    CHECK(ResError() == inputOutOfBounds);
    CHECK(std::string(part) == "bb");
    CHECK(*second == nullptr);
    CHECK(GetResourceSizeOnDisk(second) == (long)kLength);
    CloseResFile(file);
}

TEST_CASE("SetResInfo: in a large file that is only read, resources are found by their new numbers")
{
    const LargeFile place;
    const SInt16 file = place.Open("File", fsRdPerm);
    SetResLoad(false);
    SetResInfo(Get1Resource('data', 2), 20, nullptr);
    SetResLoad(true);
    CHECK(TextOf(Get1Resource('data', 20)) == Letters('b'));
    CHECK(TextOf(Get1Resource('data', 3)) == Letters('c'));
    CloseResFile(file);
}

TEST_CASE("FSpOpenResFile: large forks in a file of their own are read the same way")
{
    const Place place;
    ForkBuilder builder;
    const std::string first = Letters('p'), second = Letters('q');
    builder.Add({ 'data', 1, 0, false, "", { (const uint8_t*)first.data(), first.size() } });
    builder.Add({ 'data', 2, 0, false, "", { (const uint8_t*)second.data(), second.size() } });
    std::vector<uint8_t> fork;
    REQUIRE(builder.Build(&fork) == nullptr);
    std::ofstream(place.Path() / "Raw", std::ios::binary).write((const char*)fork.data(), (long)fork.size());
    const SInt16 raw = place.Open("Raw", fsRdPerm);
    CHECK(TextOf(Get1Resource('data', 2)) == second);
    REQUIRE(truncate((place.Path() / "Raw").c_str(), 1000) == 0);
    CHECK(Get1Resource('data', 1) == nullptr);
    CHECK(ResError() == eofErr);
    CloseResFile(raw);
}
