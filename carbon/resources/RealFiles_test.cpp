// Files that others made, long ago and with other tools. They lie beside the source folder where the
// developers keep them and are no part of it; without them these tests say so and pass.
#include <resources/Container.h>
#include <resources/ResourceFork.h>

#include <doctest/doctest.h>
#include <foundation/MacRoman.h>
#include <fstream>
#include <map>
#include <resources/Flippers.h>
#include <sstream>

using namespace lampblack::resources;

namespace {

const std::filesystem::path kFolder =
    std::filesystem::path(LAMPBLACK_SOURCE_DIR).parent_path() / "shared/data/real";

struct Row {
    std::string file, form;
    std::map<std::string, size_t> types; // UTF-8 names
    bool isClean = false;
};

std::vector<std::string> Cells(const std::string& inLine)
{
    std::vector<std::string> cells;
    std::stringstream stream(inLine);
    for (std::string cell; std::getline(stream, cell, '|');)
        cells.push_back(cell.size() >= 2 ? cell.substr(1, cell.size() - 2) : cell);
    return cells;
}

// "DLOG 1, snd  2": the type may end in a blank.
std::map<std::string, size_t> Types(const std::string& inText)
{
    std::map<std::string, size_t> types;
    for (size_t start = 0; start < inText.size() && inText != "-";) {
        const size_t end = std::min(inText.find(", ", start), inText.size());
        const std::string entry = inText.substr(start, end - start);
        const size_t space = entry.rfind(' ');
        types[entry.substr(0, space)] = std::stoul(entry.substr(space + 1));
        start = end + 2;
    }
    return types;
}

// The table of what is known of each file.
std::vector<Row> Table()
{
    std::vector<Row> rows;
    std::ifstream readme(kFolder / "README.md");
    for (std::string line; std::getline(readme, line);) {
        const std::vector<std::string> cells = Cells(line);
        const bool isRow = cells.size() >= 9 && (cells[7] == "yes" || cells[7] == "NO");
        if (isRow && cells[4] != "bare PICT file")
            rows.push_back({ cells[1], cells[4], Types(cells[6]), cells[7] == "yes" });
    }
    if (rows.empty())
        MESSAGE("skipped: no real files at " << kFolder.string());
    return rows;
}

std::map<std::string, size_t> CountTypes(const ResourceFork& inFork)
{
    std::map<std::string, size_t> types;
    for (size_t i = 0; i < inFork.TypeCount(); ++i) {
        const OSType type = __builtin_bswap32(inFork.TypeAt(i));
        types[lampblack::foundation::Utf8FromMacRoman({ (const char*)&type, 4 })] += inFork.CountAtType(i);
    }
    return types;
}

// A name in the table is cut at a zero byte or a blank as its writer printed it; compare the counts then.
size_t Sum(const std::map<std::string, size_t>& inTypes)
{
    size_t sum = 0;
    for (const auto& [type, count] : inTypes)
        sum += count;
    return sum;
}

} // namespace

TEST_CASE("Real files: each clean one opens without complaint and holds what the table says")
{
    for (const Row& row : Table()) {
        if (!row.isClean)
            continue;
        CAPTURE(row.file);
        const LocatedForks forks = LocateForks(kFolder / "public" / row.file);
        CHECK(forks.problems.empty());
        CHECK(std::string(row.form).rfind(std::string(FormName(forks.form)), 0) == 0);
        ResourceFork fork;
        CHECK(fork.Open(forks.resourceFork) == nullptr);
        CHECK(fork.Check().empty());
        CHECK(Sum(CountTypes(fork)) == Sum(row.types));
        CHECK(CountTypes(fork) == row.types);
    }
}

TEST_CASE("Real files: each damaged one is found out")
{
    for (const Row& row : Table()) {
        if (row.isClean)
            continue;
        CAPTURE(row.file);
        const LocatedForks forks = LocateForks(kFolder / "public" / row.file);
        ResourceFork fork;
        const bool isRefused = fork.Open(forks.resourceFork) != nullptr;
        CHECK((isRefused || !fork.Check().empty() || !forks.problems.empty()));
    }
}

TEST_CASE("Real files: what is flipped there and back is as it was, and a rebuilt fork holds the same")
{
    for (const Row& row : Table()) {
        CAPTURE(row.file);
        const LocatedForks forks = LocateForks(kFolder / "public" / row.file);
        ResourceFork fork;
        if (fork.Open(forks.resourceFork))
            continue;
        ForkBuilder builder;
        fork.ForEach([&](ResourceRef ref) {
            const ResourceInfo info = fork.Info(ref);
            Bytes data;
            if (!fork.Data(ref, &data))
                return;
            builder.Add({ info.type, info.id, info.attributes, info.hasName, std::string(info.name), data });
            const CoreEndianFlipProc flip = StandardFlipper(info.type);
            if (!flip)
                return;
            std::vector<uint8_t> copy(data.begin(), data.end());
            flip('rsrc', info.type, info.id, copy.data(), copy.size(), false, nullptr);
            flip('rsrc', info.type, info.id, copy.data(), copy.size(), true, nullptr);
            REQUIRE(std::equal(copy.begin(), copy.end(), data.begin()));
        });
        std::vector<uint8_t> bytes;
        REQUIRE(builder.Build(&bytes) == nullptr);
        ResourceFork again;
        REQUIRE(again.Open(bytes) == nullptr);
        CHECK(again.ResourceCount() == builder.Entries().size());
        for (const ForkEntry& entry : builder.Entries())
            REQUIRE((bool)again.Find(entry.type, entry.id));
    }
}
