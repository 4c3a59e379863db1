// The table of loaded resources: by itself, and as Get1Resource uses it.
#include "LoadedTable.h"
#include "WritingFixture.h"

#include <Carbon/CoreEndian.h>

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

TEST_CASE(
    "LoadedTable: what is listed is found; IDs too far apart are not, nor what was erased before it grew")
{
    LoadedTable table;
    static Ptr masters[2];
    const auto typeOf = [](int i) { return (OSType)(i % 97); };
    const auto idOf = [](int i) { return (SInt16)(i * 211); };
    std::vector<bool> isListed;
    for (int i = 0; i < 3000; ++i) {
        isListed.push_back(table.Insert(typeOf(i), idOf(i), &masters[i % 2]) && i % 3 != 0);
        if (i % 3 == 0)
            table.Erase(typeOf(i), idOf(i));
    }
    for (int i = 0; i < 3000; ++i) {
        REQUIRE(table.Find(typeOf(i), idOf(i)) == (isListed[(size_t)i] ? &masters[i % 2] : nullptr));
        REQUIRE(table.Find(typeOf(i) + 97, idOf(i)) == nullptr);
    }
    CHECK(std::count(isListed.begin(), isListed.end(), true) > 97);
    CHECK(std::count(isListed.begin(), isListed.end(), true) < 1900);
}

TEST_CASE("LoadedTable: IDs in a row are all listed, upwards and downwards, to either end")
{
    LoadedTable table;
    static Ptr master;
    for (int id = 0; id <= 0x7FFF; ++id) {
        REQUIRE(table.Insert('up  ', (SInt16)id, &master));
        REQUIRE(table.Insert('down', (SInt16)(-id - 1), &master));
        REQUIRE(table.Insert('both', (SInt16)(id % 2 ? -id / 2 - 1 : id / 2), &master));
    }
    for (int id = 0; id <= 0x7FFF; ++id) {
        REQUIRE(table.Find('up  ', (SInt16)id) == &master);
        REQUIRE(table.Find('up  ', (SInt16)(-id - 1)) == nullptr);
        REQUIRE(table.Find('down', (SInt16)(-id - 1)) == &master);
        REQUIRE(table.Find('down', (SInt16)id) == nullptr);
    }
    CHECK(table.Find('both', 0x3FFF) == &master);
    CHECK(table.Find('both', -0x4000) == &master);
    LoadedTable last;
    CHECK(last.Insert('last', 0x7FFF, &master));
    CHECK(last.Find('last', 0x7FFF) == &master);
    CHECK(last.Find('last', -0x8000) == nullptr);
}

TEST_CASE("GetResource: what is loaded is found through the chain, from the current file on")
{
    WritableFile file;
    file.Create("Other");
    const SInt16 other = file.Place::Open("Other");
    AddText("other's", 'TEXT', 1);
    for (int i = 0; i < 3; ++i) {
        UseResFile(other);
        CHECK(TextOf(GetResource('TEXT', 1)) == "other's");
        CHECK(TextOf(GetResource('TEXT', 2)) == "two");
        CHECK(ResError() == noErr);
        CHECK(Get1Resource('TEXT', 2) == nullptr);
        CHECK(ResError() == resNotFound);
        UseResFile(file.refNum);
        CHECK(TextOf(GetResource('TEXT', 1)) == "one");
    }
    UseResFile(other);
    const Handle below = GetResource('TEXT', 2);
    REQUIRE(GetResource('TEXT', 2) == below);
    AddText("above", 'TEXT', 2);
    CHECK(TextOf(GetResource('TEXT', 2)) == "above");
    UseResFile(file.refNum);
    CHECK(GetResource('TEXT', 2) == below);
    CloseResFile(other);
    CHECK(GetResource('TEXT', 2) == below);
}

TEST_CASE("Get1Resource: what was loaded in a file that is closed is not found when it is open again")
{
    WritableFile file;
    const Handle before = Get1Resource('TEXT', 1);
    REQUIRE(Get1Resource('TEXT', 1) == before);
    REQUIRE(Get1Resource('TEXT', 1) == before);
    file.Reopen();
    CHECK_FALSE(IsHandleValid(before));
    const Handle after = Get1Resource('TEXT', 1);
    CHECK(after != before);
    CHECK(TextOf(after) == "one");
}

TEST_CASE("Get1Resource, DetachResource: again and again, each time a handle of its own with the file's data")
{
    WritableFile file;
    file.Reopen(fsRdPerm);
    for (int i = 0; i < 1000; ++i) {
        const Handle handle = Get1Resource('TEXT', 3);
        REQUIRE(TextOf(handle) == "three");
        REQUIRE(HGetState(handle) == (SInt8)kHandleIsResourceMask);
        DetachResource(handle);
        REQUIRE(ResError() == noErr);
        REQUIRE(HGetState(handle) == 0);
        REQUIRE(HomeResFile(handle) == -1);
        SetText(handle, "mine");
        DisposeHandle(handle);
    }
}

namespace {

// The text of a resource that is asked for, taken away and thrown away.
std::string Take(OSType inType, SInt16 inID)
{
    const Handle handle = Get1Resource(inType, inID);
    if (!handle)
        return "none";
    const std::string text = TextOf(handle);
    DetachResource(handle);
    DisposeHandle(handle);
    return text;
}

} // namespace

TEST_CASE("Get1Resource: what was taken away comes as the file has it by now")
{
    WritableFile file;
    file.Reopen(fsRdPerm);
    for (const char* text : { "one", "one", "another", "longer than what fits into a few bytes" }) {
        if (Take('TEXT', 1) != text) {
            file.Reopen();
            const Handle handle = Get1Resource('TEXT', 1);
            SetText(handle, text);
            ChangedResource(handle);
            WriteResource(handle);
            ReleaseResource(handle);
            CHECK(Take('TEXT', 1) == text);
            file.Reopen(fsRdPerm);
        }
        CHECK(Take('TEXT', 1) == text);
        CHECK(Take('TEXT', 1) == text);
        CHECK(ResError() == noErr);
        CHECK(MemError() == noErr);
    }
    file.Reopen();
    CHECK(Take('TEXT', 3) == "three");
    CHECK(Take('TEXT', 3) == "three");
    SetResInfo(Get1Resource('TEXT', 3), 4, nullptr);
    CHECK(Take('TEXT', 3) == "none");
    CHECK(Take('TEXT', 4) == "three");
    RemoveResource(Get1Resource('TEXT', 4));
    CHECK(Take('TEXT', 4) == "none");
}

TEST_CASE("Get1Resource: what was taken away comes from the current file, or not at all")
{
    WritableFile file;
    file.Create("Other");
    const SInt16 other = file.Place::Open("Other");
    AddText("other's", 'TEXT', 1);
    UpdateResFile(other);
    for (int i = 0; i < 3; ++i) {
        UseResFile(file.refNum);
        CHECK(Take('TEXT', 1) == "one");
        CHECK(Take('TEXT', 2) == "two");
        UseResFile(other);
        CHECK(Take('TEXT', 1) == "other's");
        CHECK(Take('TEXT', 2) == "none");
        CHECK(ResError() == resNotFound);
    }
    CloseResFile(other);
    CHECK(Take('TEXT', 1) == "one");
}

TEST_CASE("Get1Resource: what was taken away has its attributes again, and is not loaded against SetResLoad")
{
    WritableFile file;
    SetResAttrs(Get1Resource('TEXT', 1), resPurgeable | resLocked | resChanged);
    UpdateResFile(file.refNum);
    file.Reopen(fsRdPerm);
    for (int i = 0; i < 3; ++i) {
        const Handle handle = Get1Resource('TEXT', 1);
        CHECK((UInt8)HGetState(handle) == (kHandleIsResourceMask | kHandlePurgeableMask | kHandleLockedMask));
        CHECK(HomeResFile(handle) == file.refNum);
        CHECK(Get1Resource('TEXT', 1) == handle);
        DetachResource(handle);
        DisposeHandle(handle);
    }
    SetResLoad(false);
    const Handle empty = Get1Resource('TEXT', 1);
    SetResLoad(true);
    REQUIRE(empty != nullptr);
    CHECK(*empty == nullptr);
    CHECK(Get1Resource('TEXT', 1) == empty);
    CHECK(TextOf(empty) == "one");
}

TEST_CASE("Get1Resource: a flipper that is installed later flips a type that had none")
{
    WritableFile file;
    AddText("abcd", 'Late', 1);
    UpdateResFile(file.refNum);
    file.Reopen(fsRdPerm);
    CHECK(TextOf(Get1Resource('Late', 1)) == "abcd");
    const CoreEndianFlipProc flip = [](OSType, OSType, SInt16, void* data, ByteCount size, Boolean,
                                       void*) -> OSStatus {
        std::reverse((char*)data, (char*)data + size);
        return noErr;
    };
    REQUIRE(CoreEndianInstallFlipper(kCoreEndianResourceManagerDomain, 'Late', flip, nullptr) == noErr);
    ReleaseResource(Get1Resource('Late', 1));
    CHECK(TextOf(Get1Resource('Late', 1)) == "dcba");
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
