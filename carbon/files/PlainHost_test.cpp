// File systems that know neither files without a name nor renaming where nothing is, as many on networks and
// sticks: what is made and replaced has a temporary name there.
#include "Durable.h"
#include "ForkHome.h"
#include "HostLocks.h"
#include "TestFolder.h"

#include <Interpose.h>
#include <cerrno>
#include <cstdarg>
#include <doctest/doctest.h>
#include <fcntl.h>
#include <fstream>
#include <sys/wait.h>
#include <unistd.h>

using namespace lampblack::files;

namespace {

bool gIsPlain = false;
bool gHasLinks = true;

struct PlainHost : lampblack::TestFolder {
    PlainHost() { gIsPlain = true; }
    ~PlainHost()
    {
        gIsPlain = false;
        gHasLinks = true;
    }

    std::filesystem::path file = Path() / "File";

    void Write(const std::string& inName, const std::string& inText) const
    {
        std::ofstream(Path() / inName, std::ios::binary) << inText;
    }
    std::string Read(const std::string& inName) const
    {
        std::ifstream stream(Path() / inName, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(stream), {});
    }
    size_t Count() const { return (size_t)std::distance(std::filesystem::directory_iterator(Path()), {}); }

    // The only file that is neither the target nor beside it.
    std::string Temporary() const
    {
        for (const auto& entry : std::filesystem::directory_iterator(Path()))
            if (entry.path().filename().native().starts_with("._lampblack-"))
                return entry.path().filename().native();
        return "";
    }
};

Bytes BytesOf(const std::string& inText)
{
    return { (const uint8_t*)inText.data(), inText.size() };
}

// Whether all of so many processes end well, each of which does the work with its number.
template <typename Work>
bool AllSucceed(int inProcesses, Work&& inWork)
{
    int gate[2];
    REQUIRE(pipe(gate) == 0);
    std::vector<pid_t> children;
    for (int number = 0; number < inProcesses; ++number) {
        children.push_back(fork());
        if (children.back() != 0)
            continue;
        char byte;
        close(gate[1]);
        _exit(read(gate[0], &byte, 1) == 0 && inWork(number) ? 0 : 1);
    }
    close(gate[1]); // which lets them all go
    close(gate[0]);
    bool succeed = true;
    for (const pid_t child : children) {
        int status = 1;
        succeed &= waitpid(child, &status, 0) == child && status == 0;
    }
    return succeed;
}

} // namespace

LAMPBLACK_INTERPOSE int open(const char* path, int flags, ...)
{
    va_list list;
    va_start(list, flags);
    const int mode = va_arg(list, int);
    va_end(list);
    if (gIsPlain && (flags & O_TMPFILE) == O_TMPFILE) {
        errno = EOPNOTSUPP;
        return -1;
    }
    return Next<int(const char*, int, ...)>("open")(path, flags, mode);
}

LAMPBLACK_INTERPOSE int renameat2(int from, const char* old, int to, const char* name, unsigned flags)
{
    if (gIsPlain && flags != 0) {
        errno = EINVAL;
        return -1;
    }
    return Next<int(int, const char*, int, const char*, unsigned)>("renameat2")(from, old, to, name, flags);
}

LAMPBLACK_INTERPOSE int link(const char* old, const char* name)
{
    if (!gHasLinks) {
        errno = EPERM;
        return -1;
    }
    return Next<int(const char*, const char*)>("link")(old, name);
}

TEST_CASE("Replacement on a plain host: made where nothing is, in place of a file, or not at all")
{
    const PlainHost host;
    for (const bool hasLinks : { true, false }) {
        gHasLinks = hasLinks;
        std::filesystem::remove(host.file);
        Replacement first;
        REQUIRE(first.Begin(host.file, nullptr) == noErr);
        REQUIRE(WriteAll(first.File(), BytesOf("first"), 0) == noErr);
        CHECK(host.Count() == 1);
        CHECK(first.PutWhereNothingIs() == noErr);
        CHECK(host.Read("File") == "first");
        {
            Replacement second;
            REQUIRE(second.Begin(host.file, nullptr) == noErr);
            CHECK(second.PutWhereNothingIs() == dupFNErr);
            CHECK(host.Read("File") == "first");
        }
        Replacement third;
        REQUIRE(third.Begin(host.file, nullptr) == noErr);
        REQUIRE(WriteAll(third.File(), BytesOf("third"), 0) == noErr);
        CHECK(third.PutInPlace() == noErr);
        CHECK(host.Read("File") == "third");
        CHECK(host.Count() == 1);
    }
}

TEST_CASE("Replacement on a plain host: two for one file have names of their own; the later one stays")
{
    const PlainHost host;
    Replacement one, other;
    REQUIRE(one.Begin(host.file, nullptr) == noErr);
    REQUIRE(WriteAll(one.File(), BytesOf("one"), 0) == noErr);
    REQUIRE(other.Begin(host.file, nullptr) == noErr);
    CHECK(host.Count() == 2);
    CHECK(one.PutInPlace() == noErr);
    CHECK(host.Read("File") == "one");
    REQUIRE(WriteAll(other.File(), BytesOf("other"), 0) == noErr);
    CHECK(other.PutInPlace() == noErr);
    CHECK(host.Read("File") == "other");
    CHECK(host.Count() == 1);
}

TEST_CASE("Replacement: what a crash left behind is cleared away by the next, what somebody holds is not")
{
    const PlainHost host;
    std::string name;
    {
        Replacement file;
        REQUIRE(file.Begin(host.file, nullptr) == noErr);
        name = host.Temporary();
    }
    CHECK(host.Count() == 0);
    for (const bool isPlain : { true, false }) {
        CAPTURE(isPlain);
        gIsPlain = isPlain;
        host.Write(name, "left behind");
        Replacement file;
        REQUIRE(file.Begin(host.file, nullptr) == noErr);
        CHECK(file.PutInPlace() == noErr);
        CHECK(host.Count() == 1);

        host.Write(name, "held");
        const Descriptor holder(open((host.Path() / name).c_str(), O_RDWR | O_CLOEXEC));
        REQUIRE(TryLock(holder.Get(), kTemporaryLock));
        Replacement next;
        REQUIRE(next.Begin(host.file, nullptr) == noErr);
        CHECK(next.PutInPlace() == noErr);
        CHECK(host.Read(name) == "held");
        CHECK(host.Count() == 2);
        std::filesystem::remove(host.Path() / name);
    }
}

TEST_CASE("CreateFile on a plain host: of processes that make the same files each finds its own, or "
          "another's whole")
{
    const PlainHost host;
    constexpr int kProcesses = 4, kFiles = 30;
    CHECK(AllSucceed(kProcesses, [&](int number) {
        FInfo info = {};
        info.fdType = (OSType)('pr00' + number);
        bool isWell = true;
        for (int i = 0; i < kFiles; ++i) {
            const auto path = host.file.native() + std::to_string(i);
            const OSErr error = CreateFile(path, info, {});
            isWell &= error == noErr || error == dupFNErr;
            const LocatedForks forks = LocateForks(path);
            isWell &= error != noErr || (forks.hasFinderInfo && forks.finderInfo.fdType == info.fdType);
        }
        return isWell;
    }));
    CHECK(host.Count() == 2 * kFiles);
}

TEST_CASE("KeepAside on a plain host: a name that is taken is not used")
{
    const PlainHost host;
    for (const bool hasLinks : { true, false }) {
        gHasLinks = hasLinks;
        host.Write("File", "damaged");
        host.Write("File.damaged", "earlier");
        std::filesystem::remove(host.Path() / "File.damaged-2");
        CHECK(KeepAside(host.file) == noErr);
        CHECK(host.Read("File.damaged") == "earlier");
        CHECK(host.Read("File.damaged-2") == "damaged");
        CHECK_FALSE(std::filesystem::exists(host.file));
    }
}

TEST_CASE("FSpRename on a plain host: files and folders, and never over something")
{
    const PlainHost host;
    for (const bool hasLinks : { true, false }) {
        gHasLinks = hasLinks;
        host.Write("Old", "old");
        host.Write("Taken", "taken");
        std::filesystem::create_directory(host.Path() / "Folder");
        const FSSpec old = host.Spec("Old"), folder = host.Spec("Folder");
        CHECK(FSpRename(&old, lampblack::PascalName("Taken")) == dupFNErr);
        CHECK(host.Read("Taken") == "taken");
        CHECK(FSpRename(&folder, lampblack::PascalName("Taken")) == dupFNErr);
        CHECK(FSpRename(&old, lampblack::PascalName("New")) == noErr);
        CHECK(FSpRename(&folder, lampblack::PascalName("New Folder")) == noErr);
        CHECK(host.Names() == "New New Folder Taken");
        CHECK(host.Read("New") == "old");
        for (const char* name : { "New", "New Folder", "Taken" })
            std::filesystem::remove(host.Path() / name);
    }
}
