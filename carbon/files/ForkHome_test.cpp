// The home of a fork: where changes go, what they keep, and who may make them.
#include "AppleDouble.h"
#include "ForkHome.h"
#include "HostLocks.h"

#include <ScratchFolder.h>
#include <chrono>
#include <csignal>
#include <cstring>
#include <doctest/doctest.h>
#include <fcntl.h>
#include <foundation/BigEndian.h>
#include <iterator>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace lampblack::files;
using lampblack::foundation::BigEndianWriter;

namespace {

Bytes BytesOf(const std::string& inText)
{
    return { (const uint8_t*)inText.data(), inText.size() };
}

std::string TextOf(Bytes inBytes)
{
    return std::string(inBytes.begin(), inBytes.end());
}

std::string ReadFile(const std::filesystem::path& inPath)
{
    std::ifstream stream(inPath, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

FInfo InfoOf(OSType inType)
{
    FInfo info = {};
    info.fdType = inType;
    info.fdCreator = 'test';
    return info;
}

struct Part {
    uint32_t kind;
    std::string bytes;
};

std::string Double(const std::vector<Part>& inParts)
{
    BigEndianWriter writer;
    writer.U32(0x00051607);
    writer.U32(0x00020000);
    writer.Write(BytesOf("Mac OS X        "));
    writer.U16((uint16_t)inParts.size());
    size_t offset = 26 + inParts.size() * 12;
    for (const Part& part : inParts) {
        writer.U32(part.kind);
        writer.U32((uint32_t)offset);
        writer.U32((uint32_t)part.bytes.size());
        offset += part.bytes.size();
    }
    for (const Part& part : inParts)
        writer.Write(BytesOf(part.bytes));
    return std::string(writer.Data().begin(), writer.Data().end());
}

struct Home : ScratchFolder {
    std::filesystem::path file = Path() / "File";
    std::filesystem::path sidecar = Path() / "._File";

    std::string Fork() const { return TextOf(LocateForks(file).resourceFork); }
    OSType Type() const { return LocateForks(file).finderInfo.fdType; }
    size_t Count() const { return (size_t)std::distance(std::filesystem::directory_iterator(Path()), {}); }

    OSErr ReplaceFork(const std::string& inText) const
    {
        std::unique_ptr<ForkHome> home;
        const Bytes bytes = BytesOf(inText);
        const OSErr error = ForkHome::Open(file, &home);
        return error == noErr ? home->Replace({ &bytes, nullptr, nullptr }) : error;
    }
};

} // namespace

TEST_CASE("ForkHome: the first change makes a sidecar of exactly two entries, information first")
{
    const Home home;
    home.Write("File", "data");
    REQUIRE(home.ReplaceFork("fork") == noErr);
    CHECK(ReadFile(home.file) == "data");
    CHECK(ReadFile(home.sidecar).size() == 82 + 4);
    const std::string bytes = ReadFile(home.sidecar);
    CHECK(bytes.substr(24, 26) ==
          std::string("\0\2\0\0\0\x09\0\0\0\x32\0\0\0\x20\0\0\0\2\0\0\0\x52\0\0\0\4", 26));
    CHECK(home.Fork() == "fork");
    REQUIRE(home.ReplaceFork("a longer fork") == noErr);
    CHECK(home.Fork() == "a longer fork");
    CHECK(home.Count() == 2);
}

TEST_CASE("ForkHome::Open: when nothing is written, no sidecar stays; what elsewhere is known is not hidden "
          "meanwhile")
{
    const Home home;
    home.Write("File", "data");
    home.Write("%File",
               Double({ { 9, std::string("TEXTttxt") + std::string(24, '\0') }, { 2, "elsewhere" } }));
    {
        std::unique_ptr<ForkHome> open;
        REQUIRE(ForkHome::Open(home.file, &open) == noErr);
        CHECK(ForkHome::IsOpenHere(home.file));
        CHECK(TextOf(open->Forks().resourceFork) == "elsewhere");
        CHECK(home.Fork() == "elsewhere");
        CHECK(home.Type() == 'TEXT');
    }
    CHECK_FALSE(ForkHome::IsOpenHere(home.file));
    CHECK_FALSE(std::filesystem::exists(home.sidecar));
    REQUIRE(home.ReplaceFork("mine") == noErr);
    CHECK(home.Fork() == "mine");
    CHECK(home.Type() == 'TEXT');
}

TEST_CASE(
    "ForkHome: entries of other kinds and what follows the information stay byte for byte, at its place")
{
    const Home home;
    home.Write("File", "data");
    const std::string longInfo =
        std::string("TEXTttxt") + std::string(24, '\1') + std::string("\0\0ATTR and so on", 16);
    home.Write("._File",
               Double({ { 9, longInfo }, { 4, "a comment" }, { 2, "old fork" }, { 77, "unknown" } }));
    REQUIRE(home.ReplaceFork("new") == noErr);
    FInfo info = InfoOf('new!');
    REQUIRE(SetFinderInfo(home.file, &info, nullptr) == noErr);
    const std::string bytes = ReadFile(home.sidecar);
    CHECK(bytes.substr(8, 16) == "Mac OS X        ");
    CHECK(bytes.find("a comment") != std::string::npos);
    CHECK(bytes.find("unknown") != std::string::npos);
    CHECK(bytes.find("ATTR and so on") - bytes.find("new!test") == longInfo.find("ATTR and so on"));
    CHECK(bytes.find("new!test") == 26 + 4 * 12);
    CHECK(bytes.find(std::string(16, '\1')) != std::string::npos); // the other half of the information
    CHECK(home.Fork() == "new");
    CHECK(bytes.substr(bytes.size() - 3) == "new"); // the fork comes last
    CHECK(ReadContainer(BytesOf(bytes)).problems.empty());
}

TEST_CASE(
    "SetFinderInfo: in place where the sidecar has it, made where there is none, also beside a bare fork")
{
    const Home home;
    home.Write("File", "data");
    FInfo info = InfoOf('one ');
    REQUIRE(SetFinderInfo(home.file, &info, nullptr) == noErr);
    CHECK(home.Type() == 'one ');
    const auto before = FileIdentity::At(home.sidecar).inode;
    info = InfoOf('two ');
    FXInfo extended = {};
    extended.fdComment = 7;
    REQUIRE(SetFinderInfo(home.file, &info, &extended) == noErr);
    CHECK(FileIdentity::At(home.sidecar).inode == before);
    REQUIRE(SetFinderInfo(home.file, nullptr, &extended) == noErr);
    CHECK(home.Type() == 'two ');
    CHECK(LocateForks(home.file).extendedFinderInfo.fdComment == 7);
    CHECK(SetFinderInfo(home.Path() / "absent", &info, nullptr) == fnfErr);
    CHECK(SetFinderInfo(home.Path(), &info, nullptr) == fnfErr);
    std::string raw(286, '\0');
    raw[2] = raw[6] = 1;
    raw[15] = 30;
    raw[256 + 25] = 28;
    raw[256 + 27] = 30;
    raw[256 + 28] = raw[256 + 29] = '\xFF';
    home.Write("Raw", raw);
    REQUIRE(SetFinderInfo(home.Path() / "Raw", &info, nullptr) == noErr);
    CHECK(ReadFile(home.Path() / "Raw") == raw);
    CHECK(LocateForks(home.Path() / "Raw").form == Form::RawFork);
    CHECK(+LocateForks(home.Path() / "Raw").finderInfo.fdType == 'two ');
}

TEST_CASE(
    "SetFinderInfo: while the fork is open for writing, and what was there before is kept by its next change")
{
    const Home home;
    home.Write("File", "data");
    REQUIRE(home.ReplaceFork("fork") == noErr);
    std::unique_ptr<ForkHome> open;
    REQUIRE(ForkHome::Open(home.file, &open) == noErr);
    const FInfo info = InfoOf('TEXT');
    REQUIRE(SetFinderInfo(home.file, &info, nullptr) == noErr);
    const std::string text = "other";
    const Bytes bytes = BytesOf(text);
    REQUIRE(open->Replace({ &bytes, nullptr, nullptr }) == noErr);
    CHECK(home.Type() == 'TEXT');
    CHECK(home.Fork() == "other");
}

TEST_CASE("ForkHome::Open: a second writer of the process is refused at once; each failure has its error")
{
    const Home home;
    home.Write("File", "data");
    std::unique_ptr<ForkHome> first, second;
    REQUIRE(ForkHome::Open(home.file, &first) == noErr);
    const auto start = std::chrono::steady_clock::now();
    CHECK(ForkHome::Open(home.file, &second) == opWrErr);
    CHECK(std::chrono::steady_clock::now() - start < std::chrono::milliseconds(200));
    first.reset();
    CHECK(ForkHome::Open(home.file, &second) == noErr);
    second.reset();
    CHECK(ForkHome::Open(home.Path() / "absent", &second) == fnfErr);
    CHECK(ForkHome::Open(home.Path(), &second) == fnfErr);
    std::filesystem::permissions(home.file, std::filesystem::perms::owner_read);
    CHECK(ForkHome::Open(home.file, &second) == permErr);
}

TEST_CASE("ForkHome::Open: a damaged container that holds the fork is mapReadErr and stays; other damage is "
          "kept aside")
{
    const Home home;
    home.Write("File", "data");
    std::string damaged = Double({ { 9, std::string(32, '\1') }, { 2, "fork" }, { 8, "dates" } });
    damaged[26 + 24 + 8] = 0x7F; // the dates run past the end
    home.Write("._File", damaged);
    std::unique_ptr<ForkHome> open;
    CHECK(ForkHome::Open(home.file, &open) == mapReadErr);
    CHECK(ReadFile(home.sidecar) == damaged);
    home.Write("._File", "no container at all");
    REQUIRE(home.ReplaceFork("fork") == noErr);
    CHECK(home.Fork() == "fork");
    CHECK(ReadFile(home.Path() / "._File.damaged") == "no container at all");
}

TEST_CASE("ForkHome::Open: without a fork, who wants the one that there is gets an error and moves nothing")
{
    const Home home;
    home.Write("File", "data");
    std::unique_ptr<ForkHome> open;
    const auto answer = [&] { return ForkHome::Open(home.file, &open, ForkHome::Fork::Resource); };
    CHECK(answer() == eofErr);
    CHECK_FALSE(std::filesystem::exists(home.sidecar));
    home.Write("._File", "");
    CHECK(answer() == eofErr);
    home.Write("._File", Double({ { 9, std::string(32, '\1') } }));
    CHECK(answer() == eofErr);
    for (const std::string& damaged :
         { std::string("no container at all"), Double({ { 2, "fork" } }).substr(0, 40) }) {
        home.Write("._File", damaged);
        CHECK(answer() == mapReadErr);
        CHECK(ReadFile(home.sidecar) == damaged);
    }
    // Also when it was sound a moment ago.
    home.Write("._File", Double({ { 2, "fork" } }));
    const LocatedForks known = LocateForks(home.file);
    home.Write("._File", "no container at all");
    CHECK(ForkHome::Open(home.file, &open, ForkHome::Fork::Resource, { &known, {} }) == mapReadErr);
    CHECK(ReadFile(home.sidecar) == "no container at all");
}

TEST_CASE("ForkHome: a link whose sidecar lies beside it alone is the home itself")
{
    const Home home;
    home.Write("Real/File", "data");
    std::filesystem::create_symlink(home.Path() / "Real/File", home.file);
    home.Write("._File", Double({ { 2, "fork" } }));
    REQUIRE(home.ReplaceFork("other") == noErr);
    CHECK(home.Fork() == "other");
    CHECK_FALSE(std::filesystem::exists(home.Path() / "Real/._File"));
}

TEST_CASE("ForkHome: through a symbolic link the fork of the file itself is meant")
{
    const Home home;
    home.Write("Real/File", "data");
    std::filesystem::create_symlink(home.Path() / "Real/File", home.file);
    REQUIRE(home.ReplaceFork("fork") == noErr);
    CHECK(TextOf(LocateForks(home.Path() / "Real/File").resourceFork) == "fork");
    CHECK(std::filesystem::is_symlink(home.file));
}

TEST_CASE(
    "ForkHome::Replace: the mode of the file that is replaced stays, and a new sidecar has that of its file")
{
    const Home home;
    home.Write("File", "data");
    std::filesystem::permissions(home.file, (std::filesystem::perms)0640);
    REQUIRE(home.ReplaceFork("fork") == noErr);
    CHECK(std::filesystem::status(home.sidecar).permissions() == (std::filesystem::perms)0640);
    std::filesystem::permissions(home.sidecar, (std::filesystem::perms)0604);
    REQUIRE(home.ReplaceFork("again") == noErr);
    CHECK(std::filesystem::status(home.sidecar).permissions() == (std::filesystem::perms)0604);
}

TEST_CASE("ForkHome::Replace: no room on the disk is dskFulErr, and all is as it was")
{
    const Home home;
    home.Write("File", "data");
    REQUIRE(home.ReplaceFork("fork") == noErr);
    rlimit old;
    getrlimit(RLIMIT_FSIZE, &old);
    const rlimit small = { 1000, old.rlim_max };
    std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &small);
    const OSErr error = home.ReplaceFork(std::string(5000, 'x'));
    setrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, SIG_DFL);
    CHECK(error == dskFulErr);
    CHECK(home.Fork() == "fork");
    CHECK(home.Count() == 2);
    CHECK(home.ReplaceFork("fits") == noErr);
}

TEST_CASE("ForkHome::Open: what is known beforehand holds while no file that was looked at has changed")
{
    const Home home;
    home.Write("File", "data");
    REQUIRE(home.ReplaceFork("fork") == noErr);
    const LocatedForks known = LocateForks(home.file, Wanted::ResourceForkOnly);
    std::unique_ptr<ForkHome> open;
    bool holds = false;
    REQUIRE(ForkHome::Open(home.file, &open, ForkHome::Fork::NewResource, { &known, {} }, &holds) == noErr);
    CHECK(holds);
    open.reset();
    std::filesystem::remove(home.sidecar);
    REQUIRE(ForkHome::Open(home.file, &open, ForkHome::Fork::NewResource, { &known, {} }, &holds) == noErr);
    CHECK_FALSE(holds);
    CHECK(open->Forks().resourceFork.empty());
    open.reset();
    REQUIRE(home.ReplaceFork("other") == noErr);
    REQUIRE(ForkHome::Open(home.file, &open, ForkHome::Fork::NewResource, { &known, {} }, &holds) == noErr);
    CHECK_FALSE(holds);
    CHECK(TextOf(open->Forks().resourceFork) == "other");
}

TEST_CASE("ForkHome::Open: a fork that is known is compared, whatever the times of its file")
{
    const Home home;
    home.Write("File", "data");
    REQUIRE(home.ReplaceFork("fork") == noErr);
    LocatedForks known = LocateForks(home.file, Wanted::ResourceForkOnly);
    for (LocatedForks::LookedAt& file : known.lookedAt)
        if (file.path == home.sidecar)
            file.identity = FileIdentity::PlaceAt(home.sidecar.native());
    const std::string fork = "fork";
    const auto holdsFor = [&](const std::string& before) {
        std::unique_ptr<ForkHome> open;
        bool holds = false;
        REQUIRE(ForkHome::Open(home.file, &open, ForkHome::Fork::Resource, { &known, BytesOf(before) },
                               &holds) == noErr);
        CHECK(TextOf(open->Forks().resourceFork) == TextOf(LocateForks(home.file).resourceFork));
        return holds;
    };
    CHECK(holdsFor("fork"));
    CHECK_FALSE(holdsFor("forks"));
    CHECK_FALSE(holdsFor("fort"));
    CHECK_FALSE(holdsFor("")); // then the times count, which are not known
    REQUIRE(home.ReplaceFork("fort") == noErr);
    CHECK_FALSE(holdsFor("fork"));
    CHECK(holdsFor("fort"));
    home.Write("File", "other data");
    CHECK_FALSE(holdsFor("fort")); // another file that was looked at has changed
}

TEST_CASE("ForkHome::LastIdentity: the times of a file are asked for when its fork is too long to compare")
{
    const Home home;
    home.Write("File", "data");
    REQUIRE(home.ReplaceFork("fork") == noErr);
    std::unique_ptr<ForkHome> open;
    REQUIRE(ForkHome::Open(home.file, &open) == noErr);
    CHECK(open->LastIdentity() == FileIdentity::PlaceAt(home.sidecar.native()));
    const std::string large(100000, 'x');
    const Bytes bytes = BytesOf(large);
    REQUIRE(open->Replace({ &bytes, nullptr, nullptr }) == noErr);
    CHECK(open->LastIdentity() == FileIdentity::At(home.sidecar));
    CHECK(open->LastIdentity().modified != 0);
}

TEST_CASE("ForkHome::HasNoReaders: not while a large file is read in place")
{
    const Home home;
    home.Write("File", "data");
    REQUIRE(home.ReplaceFork(std::string(100000, 'x')) == noErr);
    std::unique_ptr<ForkHome> open;
    REQUIRE(ForkHome::Open(home.file, &open) == noErr);
    CHECK(open->HasNoReaders());
    {
        const LocatedForks reader = LocateForks(home.file);
        CHECK_FALSE(open->HasNoReaders());
    }
    CHECK(open->HasNoReaders());
    CHECK(open->Place().length == 100000);
    CHECK(open->Place().offset == 82);
}

TEST_CASE(
    "CreateFile: file and sidecar; a name that is taken is dupFNErr, a sidecar without a file is replaced")
{
    const Home home;
    home.Write("._File", Double({ { 9, std::string(32, '\1') }, { 2, "of an earlier file" } }));
    const std::string fork = "fork";
    REQUIRE(CreateFile(home.file, InfoOf('TEXT'), {}, BytesOf(fork)) == noErr);
    CHECK(ReadFile(home.file).empty());
    CHECK(home.Fork() == "fork");
    CHECK(home.Type() == 'TEXT');
    const std::string before = ReadFile(home.sidecar);
    CHECK(CreateFile(home.file, InfoOf('none'), {}) == dupFNErr);
    CHECK(ReadFile(home.sidecar) == before);
    CHECK(CreateFile(home.Path() / "none/File", InfoOf('none'), {}) == fnfErr);
    home.Write("._Other", "a hidden file of the user's");
    REQUIRE(CreateFile(home.Path() / "Other", InfoOf('TEXT'), {}) == noErr);
    CHECK(ReadFile(home.Path() / "._Other.damaged") == "a hidden file of the user's");
}

namespace {

// Runs one of the skipped cases below in a process of its own, with the file's path.
pid_t StartPart(const char* inCase, const std::filesystem::path& inFile)
{
    const pid_t child = fork();
    if (child != 0)
        return child;
    setenv("LAMPBLACK_TEST_FILE", inFile.c_str(), 1);
    const int quiet = open("/dev/null", O_WRONLY);
    dup2(quiet, 1);
    execl("/proc/self/exe", "files_test", "--no-skip", (std::string("--test-case=") + inCase).c_str(),
          (char*)nullptr);
    _exit(1);
}

void WaitFor(const std::filesystem::path& inPath)
{
    for (int i = 0; i < 5000 && !std::filesystem::exists(inPath); ++i)
        usleep(1000);
    REQUIRE(std::filesystem::exists(inPath));
}

int StatusOf(pid_t inChild)
{
    int status = -1;
    waitpid(inChild, &status, 0);
    return status;
}

} // namespace

TEST_CASE("Two processes: the part that holds the lock" * doctest::skip())
{
    const char* path = std::getenv("LAMPBLACK_TEST_FILE");
    REQUIRE(path != nullptr);
    const std::filesystem::path file = path;
    std::unique_ptr<ForkHome> home;
    REQUIRE(ForkHome::Open(file, &home) == noErr);
    const std::string text = "held";
    const Bytes bytes = BytesOf(text);
    REQUIRE(home->Replace({ &bytes, nullptr, nullptr }) == noErr);
    std::ofstream(file.parent_path() / "ready").put('x');
    for (int i = 0; i < 5000 && !std::filesystem::exists(file.parent_path() / "done"); ++i)
        usleep(1000);
}

TEST_CASE("Two processes: the part that makes files" * doctest::skip())
{
    const char* path = std::getenv("LAMPBLACK_TEST_FILE");
    REQUIRE(path != nullptr);
    for (int i = 0; i < 50; ++i) {
        const OSErr error = CreateFile(std::string(path) + std::to_string(i), InfoOf('thEM'), {});
        REQUIRE((error == noErr || error == dupFNErr));
    }
}

TEST_CASE("Two processes: a lock that another holds is waited for, for about a second, then opWrErr; then it "
          "is had")
{
    const Home home;
    home.Write("File", "data");
    const pid_t child = StartPart("Two processes: the part that holds*", home.file);
    WaitFor(home.Path() / "ready");
    std::unique_ptr<ForkHome> open;
    const auto start = std::chrono::steady_clock::now();
    CHECK(ForkHome::Open(home.file, &open) == opWrErr);
    const auto took = std::chrono::steady_clock::now() - start;
    CHECK(took > std::chrono::milliseconds(700));
    CHECK(took < std::chrono::milliseconds(3000));
    CHECK(home.Fork() == "held");
    const FInfo info = InfoOf('TEXT');
    CHECK(SetFinderInfo(home.file, &info, nullptr) == noErr);
    home.Write("done");
    CHECK(ForkHome::Open(home.file, &open) == noErr); // within the second
    CHECK(TextOf(open->Forks().resourceFork) == "held");
    CHECK(home.Type() == 'TEXT');
    CHECK(StatusOf(child) == 0);
}

TEST_CASE("Two processes: each makes the same files; each file has its maker's information")
{
    const Home home;
    const pid_t child = StartPart("Two processes: the part that makes*", home.file);
    for (int i = 0; i < 50; ++i) {
        const OSErr error = CreateFile(home.file.native() + std::to_string(i), InfoOf('mine'), {});
        CHECK((error == noErr || error == dupFNErr));
        if (error == noErr)
            CHECK(+LocateForks(home.file.native() + std::to_string(i)).finderInfo.fdType == 'mine');
    }
    CHECK(StatusOf(child) == 0);
    CHECK(home.Count() == 100);
}
