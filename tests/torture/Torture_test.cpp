// Nothing is ever lost: each write is stopped at every system call, made to fail at every call that can, cut
// short, robbed of its memory, left without room and without power. Afterwards the whole old or the whole new
// state stands, and a caller who was told of success finds the new one.
#include "Allocations.h"
#include "FreshProcess.h"
#include "PowerLoss.h"
#include "Scenario.h"
#include "ScratchFolder.h"
#include "Tracer.h"

#include <csignal>
#include <doctest/doctest.h>
#include <fcntl.h>
#include <new>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>

using namespace torture;
namespace fs = std::filesystem;

namespace {

constexpr int kThrew = 99;

// A scenario in a folder of its own, whose old state is made once.
class Bench {
public:
    explicit Bench(const Scenario& inScenario) : fScenario(inScenario)
    {
        fs::create_directories(fBefore);
        InFreshProcess([&] { return fScenario.prepare(fBefore), 0; });
        setenv("XDG_CONFIG_HOME", fFolder.c_str(), 1);
        Restore();
    }

    const fs::path& Folder() const { return fFolder; }

    void Restore()
    {
        fs::remove_all(fFolder);
        fs::copy(fBefore, fFolder, fs::copy_options::recursive);
    }

    int Act() const
    {
        try {
            return fScenario.act(fFolder);
        } catch (const std::bad_alloc&) {
            return kThrew;
        }
    }

    Found Look() const
    {
        return (Found)InFreshProcess([&] { return (int)fScenario.look(fFolder); });
    }

    // That nothing keeps the next writer from its work.
    void CheckNextWriter() const
    {
        const bool isNew = Look() == Found::New;
        const int result = InFreshProcess([&] { return Act(); });
        if (!isNew)
            CHECK(result == 0);
        CHECK(Look() == Found::New);
    }

private:
    const Scenario& fScenario;
    ScratchFolder fScratch;
    fs::path fBefore = fScratch.Path() / "before", fFolder = fScratch.Path() / "now";
};

void CheckAfter(const Bench& inBench, int inResult)
{
    const Found found = inBench.Look();
    CHECK(inResult != kThrew);
    CHECK(found != Found::Neither);
    if (inResult == 0)
        CHECK(found == Found::New);
}

bool CanTrace(const Bench& inBench)
{
    const bool can = RunTraced([] { return 0; }, {}).traced;
    if (!can)
        MESSAGE("skipped: this machine lets no process trace another");
    return can && fs::exists(inBench.Folder());
}

void TryEveryCall(Fault::Kind inKind)
{
    for (const Scenario& scenario : Scenarios()) {
        CAPTURE(std::string(scenario.name));
        Bench bench(scenario);
        if (!CanTrace(bench))
            return;
        const int calls = RunTraced([&] { return bench.Act(); }, {}).calls;
        REQUIRE(calls > 3);
        for (int at = 1; at <= calls; ++at) {
            bench.Restore();
            const Run run = RunTraced([&] { return bench.Act(); }, { inKind, at });
            if (!run.reached)
                continue;
            CAPTURE(at);
            CAPTURE(run.call);
            CHECK(run.killed == (inKind == Fault::Kind::Kill));
            CheckAfter(bench, run.killed ? -1 : run.result);
            bench.CheckNextWriter();
        }
    }
}

} // namespace

TEST_CASE("Every scenario: undisturbed, it goes from the old state to the new one")
{
    for (const Scenario& scenario : Scenarios()) {
        CAPTURE(std::string(scenario.name));
        Bench bench(scenario);
        CHECK(bench.Look() == Found::Old);
        CHECK(InFreshProcess([&] { return bench.Act(); }) == 0);
        CHECK(bench.Look() == Found::New);
    }
}

TEST_CASE("A kill at any system call leaves the whole old or the whole new state")
{
    TryEveryCall(Fault::Kind::Kill);
}

TEST_CASE("A failure of any system call is told to the caller, and nothing is lost")
{
    TryEveryCall(Fault::Kind::Fail);
}

TEST_CASE("A write that is cut short is carried on")
{
    TryEveryCall(Fault::Kind::ShortWrite);
}

TEST_CASE("A failed allocation is told to the caller, and nothing is lost")
{
    if (!CanFailAllocations()) {
        MESSAGE("skipped: a sanitizer allocates here");
        return;
    }
    for (const Scenario& scenario : Scenarios()) {
        CAPTURE(std::string(scenario.name));
        Bench bench(scenario);
        for (int nth = 1;; ++nth) {
            bench.Restore();
            constexpr int kNotReached = 1000;
            const int result = InFreshProcess([&] {
                FailAllocation(nth);
                const int answer = bench.Act();
                const bool reached = AllocationFailed();
                FailAllocation(0);
                return reached ? answer : kNotReached + answer;
            });
            if (result >= kNotReached)
                break;
            CAPTURE(nth);
            CHECK(result >= 0);
            CheckAfter(bench, result);
        }
    }
}

TEST_CASE("Without power at any moment, what was flushed stands")
{
    for (const Scenario& scenario : Scenarios()) {
        CAPTURE(std::string(scenario.name));
        Bench bench(scenario);
        if (!CanTrace(bench))
            return;
        PowerLoss loss(bench.Folder());
        const Run run = RunTraced([&] { return bench.Act(); }, {}, bench.Folder());
        CHECK(run.result == 0);
        CHECK(!run.acts.empty());
        loss.Visit(run.acts, [&](const Disk& disk, bool finished) {
            WriteDisk(disk, bench.Folder());
            const Found found = bench.Look();
            CHECK(found != Found::Neither);
            if (finished)
                CHECK(found == Found::New);
        });
    }
}

TEST_CASE("Without room for the file, the caller is told, and the old state stands")
{
    for (const Scenario& scenario : Scenarios()) {
        CAPTURE(std::string(scenario.name));
        Bench bench(scenario);
        for (rlim_t room : { 0, 100, 4096, 40'000 }) {
            bench.Restore();
            CAPTURE(room);
            const int result = InFreshProcess([&] {
                signal(SIGXFSZ, SIG_IGN);
                const rlimit limit = { room, room };
                setrlimit(RLIMIT_FSIZE, &limit);
                return bench.Act();
            });
            CheckAfter(bench, result);
            bench.CheckNextWriter();
        }
    }
}

TEST_CASE("A disk that is full: the caller is told, and the old state stands")
{
    for (const Scenario& scenario : Scenarios()) {
        CAPTURE(std::string(scenario.name));
        Bench bench(scenario);
        constexpr int kNoDisk = 50;
        const int verdict = InFreshProcess([&] {
            // A small disk of this process's own; an ordinary user gets one in a namespace of users.
            if (unshare(CLONE_NEWNS | (geteuid() == 0 ? 0 : CLONE_NEWUSER)) != 0 ||
                mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
                return kNoDisk;
            const fs::path disk = bench.Folder().parent_path() / "disk";
            fs::create_directories(disk);
            if (mount("tmpfs", disk.c_str(), "tmpfs", 0, "size=600k") != 0)
                return kNoDisk;
            fs::copy(bench.Folder(), disk / "now", fs::copy_options::recursive);
            const int filler = open((disk / "filler").c_str(), O_WRONLY | O_CREAT, 0600);
            const std::string page(4096, 'f');
            while (write(filler, page.data(), page.size()) > 0)
                ;
            close(filler);
            const int result = InFreshProcess([&] { return scenario.act(disk / "now"); });
            const auto found = (Found)InFreshProcess([&] { return (int)scenario.look(disk / "now"); });
            if (found == Found::Neither || (result == 0 && found != Found::New))
                return 1;
            fs::remove(disk / "filler");
            const int again = InFreshProcess([&] { return scenario.act(disk / "now"); });
            const auto then = (Found)InFreshProcess([&] { return (int)scenario.look(disk / "now"); });
            return (again == 0 || found == Found::New) && then == Found::New ? 0 : 2;
        });
        if (verdict == kNoDisk) {
            MESSAGE("skipped: no disk of its own can be had here");
            return;
        }
        CHECK(verdict == 0);
    }
}
