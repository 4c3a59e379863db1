// Alias files: links of the host and files with a record, alone and in chains.
#include <Carbon/Aliases.h>
#include <Carbon/MacMemory.h>

#include "ResourceFork.h"

#include <doctest/doctest.h>
#include <files/CatalogFixture.h>
#include <files/ForkHome.h>
#include <fstream>
#include <iterator>
#include <vector>

using namespace lampblack;
using files::CatalogFolder;
using files::TextOf;

namespace {

struct Outcome {
    OSErr error = noErr;
    std::string path; // of what the FSSpec names afterwards
    bool isFolder = false, wasAliased = false;
};

Outcome ResolveNamed(const CatalogFolder& inScratch, std::string_view inName, bool inChains = true)
{
    FSSpec spec = inScratch.Spec(inName);
    Boolean isFolder = 2, wasAliased = 2;
    Outcome outcome;
    outcome.error = ResolveAliasFile(&spec, inChains, &isFolder, &wasAliased);
    outcome.isFolder = isFolder == 1;
    outcome.wasAliased = wasAliased == 1;
    CHECK((isFolder <= 1 && wasAliased <= 1));
    files::Item item;
    if (files::Resolve(spec, &item) == noErr)
        outcome.path = PathOf(item).string();
    return outcome;
}

// A file of the Finder's that stands for another.
void WriteAliasFile(const CatalogFolder& inScratch, const std::string& inName,
                    const std::vector<uint8_t>& inRecord)
{
    resources::ForkBuilder builder;
    builder.Add({ rAliasType, 0, 0, false, "", files::Bytes(inRecord) });
    std::vector<uint8_t> fork;
    REQUIRE(builder.Build(&fork) == nullptr);
    const FInfo info = { 'adrp', 'MACS', kIsAlias, { 0, 0 }, 0 };
    REQUIRE(files::CreateFile(inScratch.Path() / inName, info, {}, fork) == noErr);
}

std::vector<uint8_t> RecordOf(const FSSpec* inFrom, const FSSpec& inTarget)
{
    AliasHandle alias = nullptr;
    REQUIRE(NewAlias(inFrom, &inTarget, &alias) == noErr);
    std::vector<uint8_t> bytes((uint8_t*)*alias, (uint8_t*)*alias + GetHandleSize((Handle)alias));
    DisposeHandle((Handle)alias);
    return bytes;
}

} // namespace

TEST_CASE("ResolveAliasFile: files and folders that are none stay; missing ones are fnfErr")
{
    CatalogFolder scratch;
    scratch.Write("File");
    scratch.MakeFolder("Folder");
    Outcome outcome = ResolveNamed(scratch, "File");
    CHECK(outcome.error == noErr);
    CHECK_FALSE(outcome.wasAliased);
    CHECK_FALSE(outcome.isFolder);
    outcome = ResolveNamed(scratch, "Folder");
    CHECK(outcome.error == noErr);
    CHECK_FALSE(outcome.wasAliased);
    CHECK(outcome.isFolder);
    CHECK(ResolveNamed(scratch, "Missing").error == fnfErr);
    Boolean flag;
    CHECK(ResolveAliasFile(nullptr, true, &flag, &flag) == paramErr);
    CHECK(FSResolveAliasFile(nullptr, true, &flag, &flag) == paramErr);
    FSSpec spec = scratch.Spec("File");
    CHECK(ResolveAliasFile(&spec, true, nullptr, nullptr) == noErr);
}

TEST_CASE("ResolveAliasFile: links, one step or all; a link up its own folder is resolved like any other")
{
    CatalogFolder scratch;
    scratch.Write("Folder/File");
    std::filesystem::create_symlink("Folder", scratch.Path() / "One");
    std::filesystem::create_symlink(scratch.Path() / "One", scratch.Path() / "Two");
    std::filesystem::create_symlink("One/File", scratch.Path() / "Inner");
    std::filesystem::create_symlink("..", scratch.Path() / "Folder/Up");
    Outcome outcome = ResolveNamed(scratch, "Two");
    CHECK(outcome.error == noErr);
    CHECK(outcome.wasAliased);
    CHECK(outcome.isFolder);
    CHECK(outcome.path == (scratch.Path() / "Folder").string());
    outcome = ResolveNamed(scratch, "Two", false);
    CHECK(outcome.error == noErr);
    CHECK(outcome.path == (scratch.Path() / "One").string());
    CHECK_FALSE(outcome.isFolder);
    CHECK(ResolveNamed(scratch, "Inner").path == (scratch.Path() / "Folder/File").string());
    CHECK(ResolveNamed(scratch, ":Folder:Up").path == scratch.Path().string());
}

TEST_CASE("ResolveAliasFile: a link to nowhere, to itself or in a circle is fnfErr, and the FSSpec stays")
{
    CatalogFolder scratch;
    std::filesystem::create_symlink("nowhere", scratch.Path() / "Dangling");
    std::filesystem::create_symlink("no/where", scratch.Path() / "Deeper");
    std::filesystem::create_symlink("Self", scratch.Path() / "Self");
    std::filesystem::create_symlink("Self/File", scratch.Path() / "Through");
    std::filesystem::create_symlink("Pong", scratch.Path() / "Ping");
    std::filesystem::create_symlink("Ping", scratch.Path() / "Pong");
    for (const char* name : { "Dangling", "Deeper", "Self", "Through", "Ping", "Pong" }) {
        CAPTURE(name);
        const Outcome outcome = ResolveNamed(scratch, name);
        CHECK(outcome.error == fnfErr);
        CHECK(outcome.path == (scratch.Path() / name).string());
        CHECK_FALSE(outcome.isFolder);
    }
    for (int i = 0; i < 100; ++i)
        std::filesystem::create_symlink("Chain " + std::to_string(i + 1),
                                        scratch.Path() / ("Chain " + std::to_string(i)));
    CHECK(ResolveNamed(scratch, "Chain 0").error == fnfErr);
}

TEST_CASE("ResolveAliasFile: a file with a record, also in a chain with links and another record")
{
    CatalogFolder scratch;
    scratch.Write("Folder/File");
    const FSSpec file = scratch.Spec(":Folder:File"), folder = scratch.Spec("Folder");
    WriteAliasFile(scratch, "To file", RecordOf(nullptr, file));
    WriteAliasFile(scratch, "To folder", RecordOf(nullptr, folder));
    std::filesystem::create_symlink("To file", scratch.Path() / "Link");
    const FSSpec link = scratch.Spec("Link");
    WriteAliasFile(scratch, "To link", RecordOf(nullptr, link));
    Outcome outcome = ResolveNamed(scratch, "To file");
    CHECK(outcome.error == noErr);
    CHECK(outcome.wasAliased);
    CHECK_FALSE(outcome.isFolder);
    CHECK(outcome.path == (scratch.Path() / "Folder/File").string());
    CHECK(ResolveNamed(scratch, "To folder").isFolder);
    CHECK(ResolveNamed(scratch, "To link").path == (scratch.Path() / "Folder/File").string());
    CHECK(ResolveNamed(scratch, "To link", false).path == (scratch.Path() / "Link").string());
}

TEST_CASE("ResolveAliasFile: a record's way from the alias file leads there after both were copied elsewhere")
{
    CatalogFolder scratch;
    scratch.Write("Game/Data/Level");
    scratch.Write("Game/Alias"); // its place is what counts
    const FSSpec from = scratch.Spec(":Game:Alias"), target = scratch.Spec(":Game:Data:Level");
    const std::vector<uint8_t> record = RecordOf(&from, target);
    scratch.Write("Copy/Data/Level");
    WriteAliasFile(scratch, "Copy/Alias", record);
    std::filesystem::remove_all(scratch.Path() / "Game");
    CHECK(ResolveNamed(scratch, ":Copy:Alias").path == (scratch.Path() / "Copy/Data/Level").string());
}

TEST_CASE("ResolveAliasFile: records that lead nowhere, to themselves, that are damaged or missing")
{
    CatalogFolder scratch;
    scratch.Write("File");
    scratch.Write("Self");
    const FSSpec file = scratch.Spec("File"), self = scratch.Spec("Self");
    const std::vector<uint8_t> toFile = RecordOf(nullptr, file), toSelf = RecordOf(nullptr, self);
    std::filesystem::remove(scratch.Path() / "File");
    std::filesystem::remove(scratch.Path() / "Self");
    WriteAliasFile(scratch, "Dead", toFile);
    WriteAliasFile(scratch, "Self", toSelf);
    WriteAliasFile(scratch, "Damaged", { 1, 2, 3 });
    const FInfo info = { 'adrp', 'MACS', kIsAlias, { 0, 0 }, 0 };
    REQUIRE(files::CreateFile(scratch.Path() / "Bare", info, {}, {}) == noErr);
    CHECK(ResolveNamed(scratch, "Dead").error == fnfErr);
    CHECK(ResolveNamed(scratch, "Self").error == fnfErr);
    CHECK(ResolveNamed(scratch, "Damaged").error == paramErr);
    CHECK(ResolveNamed(scratch, "Bare").error == resNotFound);
}

TEST_CASE("FSResolveAliasFile, FSIsAliasFile, IsAliasFile")
{
    CatalogFolder scratch;
    scratch.Write("Folder/File");
    std::filesystem::create_symlink("Folder", scratch.Path() / "Link");
    std::filesystem::create_symlink("nowhere", scratch.Path() / "Dangling");
    const FSSpec file = scratch.Spec(":Folder:File");
    WriteAliasFile(scratch, "Record", RecordOf(nullptr, file));
    FSRef ref = scratch.Ref("Link");
    const FSRef folder = scratch.Ref("Folder");
    Boolean isAlias = 2, isFolder = 2;
    CHECK(FSIsAliasFile(&ref, &isAlias, &isFolder) == noErr);
    CHECK(isAlias == 1);
    CHECK(isFolder == 1);
    CHECK(FSResolveAliasFile(&ref, true, &isFolder, &isAlias) == noErr);
    CHECK(FSCompareFSRefs(&ref, &folder) == noErr);
    CHECK(FSIsAliasFile(&ref, &isAlias, &isFolder) == noErr);
    CHECK(isAlias == 0);
    CHECK(isFolder == 1);
    FSSpec spec = scratch.Spec("Record");
    CHECK(IsAliasFile(&spec, &isAlias, &isFolder) == noErr);
    CHECK(isAlias == 1);
    CHECK(isFolder == 0);
    spec = scratch.Spec("Dangling");
    CHECK(IsAliasFile(&spec, &isAlias, &isFolder) == noErr);
    CHECK(isAlias == 1);
    CHECK(isFolder == 0);
    CHECK(IsAliasFile(&file, &isAlias, &isFolder) == noErr);
    CHECK(isAlias == 0);
    spec = scratch.Spec("Missing");
    CHECK(IsAliasFile(&spec, &isAlias, &isFolder) == fnfErr);
    CHECK(IsAliasFile(nullptr, &isAlias, &isFolder) == paramErr);
    CHECK(IsAliasFile(&spec, nullptr, &isFolder) == paramErr);
    CHECK(FSIsAliasFile(nullptr, &isAlias, &isFolder) == paramErr);
}
