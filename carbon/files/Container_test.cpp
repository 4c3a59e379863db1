// The container forms, built here byte by byte.
#include <files/Container.h>

#include <cstdlib>
#include <doctest/doctest.h>
#include <fstream>
#include <iterator>
#include <random>

using namespace lampblack::files;

namespace {

// The seeds of the fuzz target are one small file of each form.
std::vector<uint8_t> Seed(const std::string& inName)
{
    std::ifstream file(LAMPBLACK_SOURCE_DIR "/tests/fuzz/corpus/ResourceFile/" + inName, std::ios::binary);
    std::vector<uint8_t> bytes(std::istreambuf_iterator<char>(file), {});
    REQUIRE_FALSE(bytes.empty());
    return bytes;
}

std::string Text(Bytes inBytes)
{
    return std::string((const char*)inBytes.data(), inBytes.size());
}

} // namespace

TEST_CASE("ReadContainer: each form is told by its content and gives its parts")
{
    const struct {
        const char* seed;
        Form form;
        const char* name;
        const char* data;
    } cases[] = {
        { "raw-small", Form::RawFork, "", "" },
        { "appledouble", Form::AppleDouble, "", "" },
        { "applesingle", Form::AppleSingle, "Name", "data" },
        { "macbinary1", Form::MacBinary, "Read Me", "text" },
        { "macbinary2", Form::MacBinary, "Read Me", "text" },
        { "macbinary3", Form::MacBinary, "Read Me", "text" },
        { "binhex", Form::BinHex, "File", "text\x90\x90\x90\x90\x90 90" },
        { "binhex-noname", Form::BinHex, "", "" },
    };
    for (const auto& expected : cases) {
        CAPTURE(expected.seed);
        const std::vector<uint8_t> bytes = Seed(expected.seed);
        const Container container = ReadContainer(bytes);
        CHECK(container.form == expected.form);
        CHECK(container.name == expected.name);
        CHECK(Text(container.dataFork) == expected.data);
        CHECK(IsRawFork(container.resourceFork));
        CHECK(container.problems.empty());
    }
}

TEST_CASE("ReadContainer: Finder information of each form")
{
    const std::vector<uint8_t> appleDouble = Seed("appledouble"), macBinary = Seed("macbinary2");
    const FInfo apple = ReadContainer(appleDouble).finderInfo;
    CHECK(apple.fdType == 'APPL');
    CHECK(apple.fdCreator == 'lamp');
    CHECK(apple.fdFlags == 0x0100);
    CHECK(apple.fdLocation.v == 1);
    CHECK(apple.fdLocation.h == 2);
    const FInfo binary = ReadContainer(macBinary).finderInfo;
    CHECK(binary.fdType == 'TEXT');
    CHECK(binary.fdCreator == 'lamp');
    CHECK(binary.fdFlags == 0x0104); // the low byte stands apart from the high one
}

TEST_CASE("ReadContainer: damage is told, and the parts that are whole are delivered")
{
    const std::vector<uint8_t> cut = Seed("applesingle-cut"), badSum = Seed("binhex-badsum");
    const Container apple = ReadContainer(cut);
    CHECK(apple.problems.size() == 1);
    CHECK(apple.hasFinderInfo);
    CHECK_FALSE(apple.hasResourceFork);
    const Container hex = ReadContainer(badSum);
    CHECK(hex.problems.size() == 1);
    CHECK(Text(hex.dataFork) == "d");
}

TEST_CASE("IsMacBinary: a wrong check sum, and a version I that does not account for its file, are none")
{
    std::vector<uint8_t> bytes = Seed("macbinary2");
    CHECK(IsMacBinary(bytes));
    bytes[70] ^= 1;
    CHECK_FALSE(IsMacBinary(bytes));
    bytes = Seed("macbinary1");
    CHECK(IsMacBinary(bytes));
    bytes.resize(bytes.size() + 512);
    CHECK_FALSE(IsMacBinary(bytes));
    CHECK_FALSE(IsMacBinary(std::vector<uint8_t>(512)));
    CHECK_FALSE(IsMacBinary({}));
}

TEST_CASE("ReadContainer: every seed cut at every length answers, and a cut fork is none")
{
    for (const char* seed :
         { "raw-rich", "appledouble", "applesingle", "macbinary1", "macbinary3", "binhex" }) {
        const std::vector<uint8_t> bytes = Seed(seed);
        for (size_t length = 0; length < bytes.size(); ++length) {
            const std::vector<uint8_t> cut(bytes.begin(), bytes.begin() + (ptrdiff_t)length);
            const Container container = ReadContainer(cut);
            const bool isCutRaw = container.form == Form::RawFork;
            REQUIRE_FALSE(isCutRaw);
        }
    }
}

TEST_CASE("IsRawFork: counts that the map cannot hold are refused")
{
    std::vector<uint8_t> bytes = Seed("raw-small");
    CHECK(IsRawFork(bytes));
    const size_t map = bytes[6] * 256u + bytes[7];
    std::vector<uint8_t> manyTypes = bytes, manyReferences = bytes;
    manyTypes[map + 29] = 200;
    CHECK_FALSE(IsRawFork(manyTypes));
    manyReferences[map + 35] = 200;
    CHECK_FALSE(IsRawFork(manyReferences));
}

TEST_CASE("FinderInfoToBytes: comes back")
{
    const FInfo info = { 'TEXT', 0x8E8F9091, 0x4000, { -1, 300 }, -2 };
    const FXInfo extended = { 1, { 2, 3, 4 }, 5, -6, 7, -8 };
    uint8_t bytes[32];
    FinderInfoToBytes(info, bytes);
    ExtendedInfoToBytes(extended, bytes + 16);
    uint8_t again[32];
    FinderInfoToBytes(FinderInfoFromBytes(bytes), again);
    ExtendedInfoToBytes(ExtendedInfoFromBytes(bytes + 16), again + 16);
    CHECK(std::equal(bytes, bytes + 32, again));
    CHECK(bytes[0] == 'T');
    CHECK(bytes[8] == 0x40);
}

namespace {

Bytes Part(Bytes inFile, FrontParts::Place inPlace)
{
    return inFile.subspan(inPlace.offset, inPlace.length);
}

// Whether the front was enough. Then it has said the same as the whole file.
bool FrontAgrees(Bytes inFile)
{
    Container front;
    FrontParts places;
    const auto look = [&](size_t wanted) { return inFile.first(std::min(wanted, inFile.size())); };
    if (!ReadFront(look, inFile.size(), &front, &places))
        return false;
    const Container whole = ReadContainer(inFile);
    REQUIRE(front.form == whole.form);
    REQUIRE(whole.problems.empty());
    REQUIRE(front.hasResourceFork == whole.hasResourceFork);
    REQUIRE(front.hasDataFork == whole.hasDataFork);
    REQUIRE(front.hasFinderInfo == whole.hasFinderInfo);
    REQUIRE(+front.finderInfo.fdType == +whole.finderInfo.fdType);
    REQUIRE(+front.extendedFinderInfo.fdPutAway == +whole.extendedFinderInfo.fdPutAway);
    REQUIRE(front.name == whole.name);
    REQUIRE(front.dates.created == whole.dates.created);
    REQUIRE(Text(Part(inFile, places.resourceFork)) == Text(whole.resourceFork));
    REQUIRE(Text(Part(inFile, places.dataFork)) == Text(whole.dataFork));
    return true;
}

} // namespace

TEST_CASE("ReadFront: says the same as the whole file, or that it cannot say")
{
    CHECK(FrontAgrees(Seed("appledouble")));

    CHECK(FrontAgrees(std::vector<uint8_t>(100000, 'x')));
    CHECK(FrontAgrees({}));
    for (const char* seed : { "raw-small", "macbinary1", "macbinary3", "binhex", "applesingle-cut" })
        CHECK_FALSE(FrontAgrees(Seed(seed)));
    std::mt19937 random(3);
    int said = 0;
    for (const char* seed : { "raw-rich", "appledouble", "applesingle", "macbinary2", "binhex" })
        for (int i = 0; i < 4000; ++i) {
            std::vector<uint8_t> bytes = Seed(seed);
            for (unsigned change = random() % 4; change > 0; --change)
                bytes[random() % std::min<size_t>(bytes.size(), 160)] = (uint8_t)random();
            bytes.resize(random() % 5 ? bytes.size() : random() % (bytes.size() + 1));
            said += FrontAgrees(bytes) ? 1 : 0;
        }
    CHECK(said > 1000);
}

TEST_CASE("ReadFront: a text that announces BinHex far behind its beginning is looked at wholly")
{
    const std::string line = "(This file must be converted with BinHex 4.0)\r:";
    for (const size_t start : { (size_t)600, 16384 - line.size(), (size_t)16380, (size_t)20000 }) {
        std::string text(30000, ' ');
        text.replace(start, line.size(), line);
        const Bytes bytes((const uint8_t*)text.data(), text.size());
        CHECK(FrontAgrees(bytes) == (start + line.size() > 16384));
    }
}
