// The table of loaded resources: by itself, and as Get1Resource uses it.
#include "LoadedTable.h"
#include "WritingFixture.h"

#include <map>
#include <random>

using namespace lampblack;
using namespace lampblack::writing;
using resources::LoadedTable;

TEST_CASE("LoadedTable: agrees with a plain map through random insertions and erasures")
{
    std::mt19937 random(5);
    std::map<std::pair<OSType, SInt16>, Handle> reference;
    LoadedTable table;
    static Ptr masters[64];
    for (int i = 0; i < 20000; ++i) {
        const OSType type = random() % 3 ? 'TEXT' : 0;
        const SInt16 id = (SInt16)(random() % 100);
        if (random() % 3) {
            reference[{ type, id }] = &masters[i % 64];
            table.Insert(type, id, &masters[i % 64]);
        } else {
            reference.erase({ type, id });
            table.Erase(type, id);
        }
        REQUIRE(table.IsEmpty() == reference.empty());
    }
    for (const OSType type : { (OSType)'TEXT', (OSType)0 })
        for (SInt16 id = -5; id < 105; ++id) {
            const auto found = reference.find({ type, id });
            REQUIRE(table.Find(type, id) == (found == reference.end() ? nullptr : found->second));
        }
    table.Clear();
    CHECK(table.Find('TEXT', 1) == nullptr);
}

TEST_CASE("Get1Resource: a resource that was found before and is emptied is loaded anew")
{
    WritableFile file;
    file.Reopen(fsRdPerm);
    const Handle handle = Get1Resource('TEXT', 1);
    REQUIRE(Get1Resource('TEXT', 1) == handle);
    REQUIRE(Get1Resource('TEXT', 1) == handle);
    EmptyHandle(handle);
    SetResLoad(false);
    CHECK(Get1Resource('TEXT', 1) == handle);
    CHECK(*handle == nullptr);
    SetResLoad(true);
    CHECK(TextOf(Get1Resource('TEXT', 1)) == "one");
    CHECK(*handle != nullptr);
}

TEST_CASE("Get1Resource: what was released, detached, removed or numbered otherwise is not found again")
{
    WritableFile file;
    const auto look = [](SInt16 id) {
        Get1Resource('TEXT', id);
        return Get1Resource('TEXT', id);
    };
    file.Reopen();
    const Handle released = look(1);
    ReleaseResource(released);
    CHECK_FALSE(IsHandleValid(released));
    CHECK(TextOf(look(1)) == "one");

    const Handle detached = look(1);
    DetachResource(detached);
    const Handle again = look(1);
    CHECK(again != detached);
    CHECK(TextOf(again) == "one");
    DisposeHandle(detached);

    const Handle renumbered = look(2);
    SetResInfo(renumbered, 20, nullptr);
    CHECK(Get1Resource('TEXT', 2) == nullptr);
    CHECK(ResError() == resNotFound);
    CHECK(Get1Resource('TEXT', 20) == renumbered);

    const Handle removed = look(3);
    RemoveResource(removed);
    CHECK(Get1Resource('TEXT', 3) == nullptr);
    DisposeHandle(removed);
}

TEST_CASE("Get1Resource: of two resources with one ID the first is found, and the second once that is gone")
{
    WritableFile file;
    AddText("second", 'TEXT', 1);
    UpdateResFile(file.refNum);
    file.Reopen();
    CHECK(TextOf(Get1Resource('TEXT', 1)) == "one");
    const Handle first = Get1Resource('TEXT', 1);
    CHECK(TextOf(first) == "one");
    RemoveResource(first);
    DisposeHandle(first);
    CHECK(TextOf(Get1Resource('TEXT', 1)) == "second");
    CHECK(TextOf(Get1Resource('TEXT', 1)) == "second");
}

TEST_CASE("Get1Resource: looks in the current file, whatever another one has loaded")
{
    WritableFile file;
    file.Create("Other");
    const SInt16 other = file.Place::Open("Other");
    AddText("other's", 'TEXT', 1);
    for (int i = 0; i < 3; ++i) {
        UseResFile(file.refNum);
        CHECK(TextOf(Get1Resource('TEXT', 1)) == "one");
        UseResFile(other);
        CHECK(TextOf(Get1Resource('TEXT', 1)) == "other's");
    }
    CloseResFile(other);
}
