// Files that others made, long ago and with other tools. They lie beside the source folder where the
// developers keep them and are no part of it; without them these tests say so and pass.
#include "Workshop.h"

#include <doctest/doctest.h>

#include <resources/Container.h>
#include <resources/ResourceFork.h>

#include <algorithm>
#include <set>

using namespace lampblack::rsrc;

namespace {

const std::filesystem::path kFolder =
    std::filesystem::path(LAMPBLACK_SOURCE_DIR).parent_path() / "shared/data/real/public";

std::vector<std::filesystem::path> RealFiles()
{
    std::set<std::filesystem::path> files;
    std::error_code missing;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(kFolder, missing))
        if (entry.is_regular_file())
            files.insert(entry.path());
    if (files.empty())
        MESSAGE("no real files beside the source folder; nothing is tested");
    return { files.begin(), files.end() };
}

// The resources of a file that can be read as a whole; nothing of a damaged one.
std::vector<Resource> SoundResources(const std::filesystem::path& inPath)
{
    std::vector<Resource> resources;
    std::vector<std::string> problems;
    const auto forks = lampblack::resources::LocateForks(inPath);
    if (forks.hasResourceFork && !forks.resourceFork.empty() && forks.problems.empty())
        ReadFork(forks.resourceFork, &resources, &problems);
    return problems.empty() ? resources : std::vector<Resource>();
}

bool IsSame(const Resource& inLeft, const Resource& inRight)
{
    return inLeft.SameKey(inRight) && inLeft.attributes == inRight.attributes &&
           inLeft.hasName == inRight.hasName && inLeft.name == inRight.name && inLeft.data == inRight.data;
}

void CheckSame(const std::filesystem::path& inExpected, const std::string& inActual)
{
    const std::vector<Resource> expected = SoundResources(inExpected), actual = SoundResources(inActual);
    REQUIRE(actual.size() == expected.size());
    for (size_t i = 0; i < actual.size(); ++i) {
        CAPTURE(KeyText(expected[i].type, expected[i].id));
        REQUIRE(IsSame(actual[i], expected[i]));
    }
}

} // namespace

TEST_CASE("dump, build: every resource of every real file comes back")
{
    size_t count = 0;
    for (const std::filesystem::path& file : RealFiles()) {
        if (SoundResources(file).empty())
            continue;
        CAPTURE(file.string());
        Workshop shop;
        const std::string text = shop.Path("a.r"), fork = shop.Path("a.rsrc");
        REQUIRE(Run({ "dump", file.string(), "-o", text }).code == 0);
        const Outcome built = Run({ "build", text, "-o", fork });
        CHECK(built.errors.empty());
        REQUIRE(built.code == 0);
        CheckSame(file, fork);
        ++count;
    }
    CHECK((count == 0 || count > 20));
}

TEST_CASE("convert: every real file through every form keeps its resources and its data")
{
    for (const std::filesystem::path& file : RealFiles()) {
        if (SoundResources(file).empty())
            continue;
        CAPTURE(file.string());
        Workshop shop;
        REQUIRE(Run({ "convert", file.string(), "--to", "applesingle", "-o", shop.Path("a") }).code == 0);
        REQUIRE(Run({ "convert", shop.Path("a"), "--to", "macbinary", "-o", shop.Path("b") }).code == 0);
        REQUIRE(Run({ "convert", shop.Path("b"), "--to", "binhex", "-o", shop.Path("c") }).code == 0);
        REQUIRE(Run({ "convert", shop.Path("c"), "--to", "appledouble", "-o", shop.Path("._d") }).code == 0);
        CheckSame(file, shop.Path("d"));
        const auto first = lampblack::resources::LocateForks(shop.Path("a"));
        const auto last = lampblack::resources::LocateForks(shop.Path("d"));
        REQUIRE(std::ranges::equal(first.dataFork, last.dataFork));
        REQUIRE(std::ranges::equal(first.resourceFork, last.resourceFork));
        CHECK(+last.finderInfo.fdType == +first.finderInfo.fdType);
        CHECK(+last.finderInfo.fdCreator == +first.finderInfo.fdCreator);
        CHECK(+last.finderInfo.fdFlags == +first.finderInfo.fdFlags);
    }
}

TEST_CASE("check: tells the damaged ones of the real files")
{
    if (RealFiles().empty())
        return;
    const Outcome checked = Run({ "check", kFolder.string() });
    CHECK(checked.code == 1);
    for (const char* damaged : { "Old_Stuff.cr-to-lf", "asearch.PPC.cut", "descore.README.shrunk" })
        CHECK(checked.output.find(damaged) != std::string::npos);
    CHECK(checked.output.find("has turned its returns into line feeds") != std::string::npos);
    CHECK(checked.output.find("General.rsrc") == std::string::npos);
}
