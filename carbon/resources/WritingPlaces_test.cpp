// Which host file a change is written to, who may write at a time, and how.
#include "WritingFixture.h"

#include <FreshProcess.h>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <random>
#include <sys/resource.h>
#include <sys/stat.h>

using namespace lampblack;
using namespace lampblack::writing;
using resources::ForkBuilder;

TEST_CASE("FSpOpenResFile: a second writer is opWrErr, a reader beside it reads what is on the disk")
{
    WritableFile file;
    const SInt16 current = CurResFile();
    CHECK(file.Open("File") == -1);
    CHECK(ResError() == opWrErr);
    CHECK(CurResFile() == current);
    CHECK(file.Open("File", fsCurPerm) == file.refNum);
    AddText("not yet", 'TEXT', 50);
    const SInt16 reader = file.Open("File", fsRdPerm);
    REQUIRE(reader > 0);
    CHECK(reader != file.refNum);
    CHECK(Get1Resource('TEXT', 50) == nullptr);
    CHECK(TextOf(Get1Resource('TEXT', 1)) == "one");
    CHECK(file.Open("File", fsRdPerm) == reader);
    UpdateResFile(file.refNum);
    CHECK(ResError() == noErr);
    CHECK(Get1Resource('TEXT', 50) == nullptr);
    const SInt16 second = file.Open("File", fsRdPerm);
    CHECK(second != reader);
    CHECK(TextOf(Get1Resource('TEXT', 50)) == "not yet");
    CHECK(TextOf(Get1Resource('TEXT', 1)) == "one");
    CloseResFile(second);
    CloseResFile(reader);
}

TEST_CASE("FSpOpenResFile: a file that may not be written is permErr for writing and opens with fsCurPerm")
{
    WritableFile file;
    CloseResFile(file.refNum);
    chmod((file.Path() / "File").c_str(), 0444);
    CHECK(file.Open("File") == -1);
    CHECK(ResError() == permErr);
    file.refNum = file.Open("File", fsCurPerm);
    REQUIRE(file.refNum > 0);
    AddText("x", 'TEXT', 9);
    CHECK(ResError() == wrPermErr);
}

TEST_CASE("FSpOpenResFile: a damaged resource is no matter for reading and mapReadErr for writing")
{
    const Place place;
    ForkBuilder builder;
    builder.Add({ 'TEXT', 1, 0, false, "", { (const uint8_t*)"one", 3 } });
    builder.Add({ 'TEXT', 2, 0, false, "", { (const uint8_t*)"two", 3 } });
    std::vector<uint8_t> fork;
    REQUIRE(builder.Build(&fork) == nullptr);
    fork[256] = 0x7F;
    const std::string bytes(fork.begin(), fork.end());
    place.Write("Bad", bytes);
    CHECK(place.Open("Bad") == -1);
    CHECK(ResError() == mapReadErr);
    const SInt16 file = place.Open("Bad", fsCurPerm);
    CHECK(file > 0);
    CHECK(TextOf(Get1Resource('TEXT', 2)) == "two");
    AddText("x", 'TEXT', 3);
    CHECK(ResError() == wrPermErr);
    CloseResFile(file);
    CHECK(ReadFile(place.Path() / "Bad") == bytes);
}

namespace {

// One resource changed, one added, one taken out, with the file in the form it has.
void ChangeThree(const Place& inPlace, const char* inName)
{
    const SInt16 file = inPlace.Open(inName);
    REQUIRE(file > 0);
    AddText("added", 'newt', 1);
    CloseResFile(file);
    REQUIRE(ResError() == noErr);
}

std::vector<uint8_t> SampleFork()
{
    ForkBuilder builder;
    builder.Add({ 'TEXT', 1, 0, true, "first", { (const uint8_t*)"one", 3 } });
    std::vector<uint8_t> fork;
    REQUIRE(builder.Build(&fork) == nullptr);
    fork[20] = 0x5A; // within the reserved bytes
    return fork;
}

std::string Seed(const std::string& inName)
{
    return ReadFile(std::filesystem::path(LAMPBLACK_SOURCE_DIR) / "tests/fuzz/corpus/ResourceFile" / inName);
}

} // namespace

TEST_CASE("CloseResFile: a bare fork stays one, its reserved bytes too, and gets no sidecar")
{
    const Place place;
    const std::vector<uint8_t> fork = SampleFork();
    place.Write("Raw", std::string(fork.begin(), fork.end()));
    ChangeThree(place, "Raw");
    const files::LocatedForks forks = files::LocateForks(place.Path() / "Raw");
    CHECK(forks.form == files::Form::RawFork);
    CHECK(forks.resourceFork[20] == 0x5A);
    CHECK(place.OnDisk("Raw", 'newt', 1) == "added");
    CHECK(place.OnDisk("Raw", 'TEXT', 1) == "one");
    CHECK_FALSE(std::filesystem::exists(place.Path() / "._Raw"));
}

TEST_CASE("CloseResFile: MacBinary, AppleSingle and BinHex are unwrapped; AppleDouble stays one")
{
    for (const char* seed : { "macbinary2", "applesingle", "binhex", "appledouble" }) {
        CAPTURE(seed);
        const Place place;
        place.Write("File", Seed(seed));
        const files::LocatedForks before = files::LocateForks(place.Path() / "File");
        const std::string data((const char*)before.dataFork.data(), before.dataFork.size());
        const OSType creator = before.finderInfo.fdCreator;
        REQUIRE(before.hasResourceFork);
        ChangeThree(place, "File");
        const files::LocatedForks after = files::LocateForks(place.Path() / "File");
        const bool wasDouble = std::string(seed) == "appledouble";
        CHECK(after.resourcePath.filename() == (wasDouble ? "File" : "._File"));
        CHECK(after.form == files::Form::AppleDouble);
        CHECK(+after.finderInfo.fdCreator == creator);
        CHECK(place.OnDisk("File", 'newt', 1) == "added");
        if (!wasDouble)
            CHECK(ReadFile(place.Path() / "File") == data);
        ChangeThree(place, "File"); // and once more, now that it is plain
    }
}

TEST_CASE("CloseResFile: a fork found elsewhere goes into the sidecar, and what it was found in stays")
{
    for (const char* name : { "File.rsrc", "%File", ".AppleDouble/File", "__MACOSX/._File" }) {
        CAPTURE(name);
        const Place place;
        place.Write("File", "data");
        place.Write(name, Seed("appledouble"));
        const std::string before = ReadFile(place.Path() / name);
        ChangeThree(place, "File");
        CHECK(ReadFile(place.Path() / name) == before);
        CHECK(files::LocateForks(place.Path() / "File").resourcePath.filename() == "._File");
        CHECK(place.OnDisk("File", 'newt', 1) == "added");
        CHECK(+files::LocateForks(place.Path() / "File").finderInfo.fdCreator == 'lamp');
    }
}

TEST_CASE("CloseResFile: after a write the same file opened again is as it was left, cached or not")
{
    WritableFile file;
    for (int i = 0; i < 20; ++i) {
        const Handle handle = Get1Resource('TEXT', 1);
        SetText(handle, "value " + std::to_string(i));
        ChangedResource(handle);
        file.Reopen(fsRdPerm);
        CHECK(TextOf(Get1Resource('TEXT', 1)) == "value " + std::to_string(i));
        CHECK(file.OnDisk('TEXT', 1) == "value " + std::to_string(i));
        file.Reopen();
    }
}

TEST_CASE("FSpOpenResFile: what another program wrote in place of the file is seen")
{
    const Place place;
    const std::vector<uint8_t> fork = SampleFork();
    std::string bytes(fork.begin(), fork.end());
    place.Write("File", bytes);
    SInt16 file = place.Open("File", fsRdPerm);
    CHECK(TextOf(Get1Resource('TEXT', 1)) == "one");
    CloseResFile(file);
    bytes[260] = 'O';
    place.Write("File", bytes);
    file = place.Open("File", fsRdPerm);
    CHECK(TextOf(Get1Resource('TEXT', 1)) == "One");
    CloseResFile(file);
}

TEST_CASE("UpdateResFile: one that does not fit the format is addResFailed, the file and the marks stay")
{
    WritableFile file;
    AddResource(NewHandleClear(15 << 20), 'huge', 1, nullptr);
    AddResource(NewHandleClear(15 << 20), 'huge', 2, nullptr);
    AddResource(NewHandleClear(100), 'tiny', 1, nullptr);
    UpdateResFile(file.refNum);
    CHECK(ResError() == addResFailed);
    CHECK(file.OnDisk('TEXT', 1) == "one");
    CHECK(file.OnDisk('huge', 1) == "(none)");
    const Handle second = Get1Resource('huge', 2);
    RemoveResource(second);
    DisposeHandle(second);
    UpdateResFile(file.refNum);
    CHECK(ResError() == noErr);
    CHECK(file.OnDisk('huge', 1).size() == 15u << 20);
    const SInt16 reader = file.Open("File", fsRdPerm); // more than is copied
    CHECK(GetHandleSize(Get1Resource('huge', 1)) == 15 << 20);
    UseResFile(file.refNum);
    AddText("beside a reader", 'TEXT', 60);
    UpdateResFile(file.refNum);
    CHECK(ResError() == noErr);
    UseResFile(reader);
    CHECK(TextOf(Get1Resource('TEXT', 1)) == "one");
    CHECK(Get1Resource('TEXT', 60) == nullptr);
    CloseResFile(reader);
    UseResFile(file.refNum);
    for (int i = 0; i < 5; ++i) {
        const Handle handle = Get1Resource('TEXT', 60);
        SetText(handle, "in place " + std::to_string(i));
        ChangedResource(handle);
        UpdateResFile(file.refNum);
        CHECK(file.OnDisk('TEXT', 60) == "in place " + std::to_string(i));
    }
    CHECK(file.OnDisk('huge', 1).size() == 15u << 20);
}

TEST_CASE(
    "UpdateResFile: no room on the disk is dskFulErr; the file is as it was, and a later update succeeds")
{
    WritableFile file;
    const std::string before = ReadFile(file.Path() / "._File");
    AddText(std::string(200000, 'x'), 'TEXT', 30);
    const Handle one = Get1Resource('TEXT', 1);
    SetText(one, "ONE");
    ChangedResource(one);
    rlimit old;
    getrlimit(RLIMIT_FSIZE, &old);
    const rlimit small = { 65536, old.rlim_max };
    std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &small);
    UpdateResFile(file.refNum);
    const OSErr error = ResError();
    WriteResource(Get1Resource('TEXT', 30));
    const OSErr second = ResError();
    setrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, SIG_DFL);
    CHECK(error == dskFulErr);
    CHECK(second == dskFulErr);
    CHECK(ReadFile(file.Path() / "._File") == before);
    CHECK(std::distance(std::filesystem::directory_iterator(file.Path()), {}) == 2); // nothing is left about
    CHECK(GetResAttrs(one) == resChanged);
    UpdateResFile(file.refNum);
    CHECK(ResError() == noErr);
    CHECK(file.OnDisk('TEXT', 1) == "ONE");
    CHECK(file.OnDisk('TEXT', 30).size() == 200000);
}

TEST_CASE("UpdateResFile: small changes are written where the file lies, many times over")
{
    WritableFile file;
    struct stat first = {}, last = {};
    stat((file.Path() / "._File").c_str(), &first);
    std::mt19937 random(7);
    for (int i = 0; i < 200; ++i) {
        const Handle handle = Get1Resource('TEXT', (SInt16)(1 + i % 3));
        SetText(handle, std::string(1 + random() % 40, (char)('a' + i % 26)));
        ChangedResource(handle);
        WriteResource(handle);
        REQUIRE(ResError() == noErr);
        REQUIRE(file.OnDisk('TEXT', (SInt16)(1 + i % 3)) == TextOf(handle));
    }
    stat((file.Path() / "._File").c_str(), &last);
    CHECK(first.st_ino == last.st_ino);
    CHECK(first.st_size == last.st_size);
}

TEST_CASE(
    "UpdateResFile: when another program put a file in the place of the open one, opWrErr, and theirs stays")
{
    WritableFile file;
    file.Write("other", "theirs");
    std::filesystem::rename(file.Path() / "other", file.Path() / "._File");
    AddText("lost otherwise", 'TEXT', 9);
    UpdateResFile(file.refNum);
    CHECK(ResError() == opWrErr);
    CHECK(ReadFile(file.Path() / "._File") == "theirs");
}

TEST_CASE("ChangedResource: the application's own file is opened for writing then, and written")
{
    const SInt16 result = (SInt16)InFreshProcess([] {
        SInt16 top = 0, next = 0;
        GetTopResourceFile(&top);
        while (GetNextResourceFile(top, &next) == noErr && next != 0)
            top = next;
        UseResFile(top);
        const Handle handle = Get1Resource('TEXT', 128);
        if (!handle)
            return 2; // no such file, when this case runs alone
        (*handle)[0] = 'A';
        ChangedResource(handle);
        if (ResError() != noErr)
            return (int)ResError();
        UpdateResFile(top);
        FCBPBRec block = {};
        block.ioRefNum = top;
        PBGetFCBInfoSync(&block);
        return ResError() == noErr && (block.ioFCBFlags & 0x0100) ? 1 : (int)ResError();
    });
    CHECK((result == 1 || result == 2));
}

TEST_CASE("FSpOpenResFile: two processes that each write an entry of their own lose neither")
{
    const Place place;
    place.Create("File");
    constexpr int kTurns = 25;
    const auto work = [&](SInt16 base) {
        for (SInt16 i = 0; i < kTurns; ++i) {
            const SInt16 file = place.Open("File");
            if (file < 0)
                return (int)ResError();
            AddText("from " + std::to_string(base + i), 'TEXT', (SInt16)(base + i));
            CloseResFile(file);
            if (ResError() != noErr)
                return (int)ResError();
        }
        return 0;
    };
    int ends[2];
    REQUIRE(pipe(ends) == 0);
    const pid_t child = fork();
    if (child == 0) {
        const int result = work(1000);
        _exit(write(ends[1], &result, sizeof result) == sizeof result ? 0 : 1);
    }
    const int own = work(2000);
    int other = -1;
    CHECK(read(ends[0], &other, sizeof other) == sizeof other);
    close(ends[0]);
    close(ends[1]);
    waitpid(child, nullptr, 0);
    CHECK(own == 0);
    CHECK(other == 0);
    const SInt16 file = place.Open("File", fsRdPerm);
    CHECK(Count1Resources('TEXT') == 2 * kTurns);
    for (SInt16 i = 0; i < kTurns; ++i) {
        CHECK(TextOf(Get1Resource('TEXT', (SInt16)(1000 + i))) == "from " + std::to_string(1000 + i));
        CHECK(TextOf(Get1Resource('TEXT', (SInt16)(2000 + i))) == "from " + std::to_string(2000 + i));
    }
    CloseResFile(file);
}

TEST_CASE("FSpOpenResFile: open for writing in another process is opWrErr after a second; reading works")
{
    WritableFile file;
    const int result = InFreshProcess([&] {
        const auto start = std::chrono::steady_clock::now();
        const bool failed =
            file.Open("File") == -1; // the same process by its table, the lock is the parent's
        const OSErr error = ResError();
        const bool reads = file.Open("File", fsRdPerm) > 0;
        const auto took = std::chrono::steady_clock::now() - start;
        return failed && error == opWrErr && reads && took < std::chrono::seconds(3) ? 1 : 0;
    });
    CHECK(result == 1);
}

// Run by the case below in a process of its own: it adds a resource and ends without closing.
TEST_CASE("Exit: the part of the process that ends" * doctest::skip())
{
    const char* path = std::getenv("LAMPBLACK_TEST_FILE");
    FSRef ref = {};
    REQUIRE((path && FSPathMakeRef((const UInt8*)path, &ref, nullptr) == noErr));
    REQUIRE(FSOpenResFile(&ref, fsRdWrPerm) > 0);
    AddText("written at the end", 'TEXT', 1);
}

TEST_CASE("Exit: what was changed is written when the process ends")
{
    const Place place;
    place.Create("File");
    const pid_t child = fork();
    if (child == 0) {
        setenv("LAMPBLACK_TEST_FILE", (place.Path() / "File").c_str(), 1);
        const int quiet = open("/dev/null", O_WRONLY);
        dup2(quiet, 1);
        execl("/proc/self/exe", "resources_test", "--no-skip", "--test-case=Exit: the part*", (char*)nullptr);
        _exit(1);
    }
    int status = -1;
    waitpid(child, &status, 0);
    CHECK(status == 0);
    CHECK(place.OnDisk("File", 'TEXT', 1) == "written at the end");
}
