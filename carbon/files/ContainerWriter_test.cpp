// What is written is what the descriptions of the forms say, byte by byte, and reads again.
#include <files/ContainerWriter.h>

#include <algorithm>
#include <doctest/doctest.h>

using namespace lampblack::files;
using lampblack::foundation::ReadBE16;
using lampblack::foundation::ReadBE32;

namespace {

std::vector<uint8_t> FromText(const std::string& inText)
{
    return { inText.begin(), inText.end() };
}

// A small fork that is one: the empty map of 30 bytes.
std::vector<uint8_t> EmptyFork()
{
    std::vector<uint8_t> fork(286);
    fork[2] = 1;           // data at 256
    fork[6] = 1;           // map at 256
    fork[15] = 30;         // its length
    fork[256 + 25] = 28;   // type list
    fork[256 + 27] = 30;   // name list
    fork[256 + 28] = 0xFF; // no types
    fork[256 + 29] = 0xFF;
    return fork;
}

struct Sample {
    std::vector<uint8_t> data = FromText("data"), fork = EmptyFork();
    FileParts parts;
    Sample()
    {
        parts.name = "Name";
        parts.finderInfo = { 'TEXT', 'lamp', 0x1234, { 5, -6 }, 7 };
        parts.extendedFinderInfo.fdScript = 3;
        parts.extendedFinderInfo.fdXFlags = 4;
        parts.dataFork = data;
        parts.resourceFork = fork;
        parts.dates = { 3029529601u, 3029529600u + 100 };
    }
};

void CheckCommon(const Container& inContainer, const FileParts& inParts)
{
    CHECK(inContainer.problems.empty());
    CHECK(std::ranges::equal(inContainer.resourceFork, inParts.resourceFork));
    CHECK(+inContainer.finderInfo.fdType == +inParts.finderInfo.fdType);
    CHECK(+inContainer.finderInfo.fdCreator == +inParts.finderInfo.fdCreator);
    CHECK(+inContainer.finderInfo.fdFlags == +inParts.finderInfo.fdFlags);
}

std::string TextOf(const std::vector<uint8_t>& inBytes)
{
    return std::string(inBytes.begin(), inBytes.end());
}

} // namespace

TEST_CASE("WriteAppleDouble: exactly two entries, Finder information first")
{
    const Sample sample;
    const std::vector<uint8_t> bytes = WriteAppleDouble(sample.parts);
    CHECK(ReadBE32(bytes, 0) == 0x00051607);
    CHECK(ReadBE32(bytes, 4) == 0x00020000);
    CHECK(ReadBE16(bytes, 24) == 2);
    CHECK(ReadBE32(bytes, 26) == 9);
    CHECK(ReadBE32(bytes, 30) == 50);
    CHECK(ReadBE32(bytes, 34) == 32);
    CHECK(ReadBE32(bytes, 38) == 2);
    CHECK(ReadBE32(bytes, 42) == 82);
    CHECK(ReadBE32(bytes, 46) == sample.fork.size());
    CHECK(bytes.size() == 82 + sample.fork.size());
    const Container container = ReadContainer(bytes);
    CHECK(container.form == Form::AppleDouble);
    CheckCommon(container, sample.parts);
    CHECK(+container.finderInfo.fdLocation.h == -6);
    CHECK(container.extendedFinderInfo.fdXFlags == 4);
}

TEST_CASE("WriteAppleSingle: name, dates, Finder information and both forks")
{
    const Sample sample;
    const std::vector<uint8_t> bytes = WriteAppleSingle(sample.parts);
    const Container container = ReadContainer(bytes);
    CHECK(container.form == Form::AppleSingle);
    CheckCommon(container, sample.parts);
    CHECK(container.name == "Name");
    CHECK(std::ranges::equal(container.dataFork, sample.data));
    CHECK(container.dates.created == sample.parts.dates.created);
    CHECK(container.dates.modified == sample.parts.dates.modified);
}

TEST_CASE("WriteMacBinary: version III with its signature and check sum, blocks of 128")
{
    const Sample sample;
    const std::vector<uint8_t> bytes = WriteMacBinary(sample.parts);
    CHECK(bytes.size() == 128 + 128 + 384);
    CHECK(ReadBE32(bytes, 102) == 'mBIN');
    CHECK(bytes[122] == 130);
    CHECK(bytes[123] == 129);
    CHECK(bytes[73] == 0x12);
    CHECK(bytes[101] == 0x34);
    CHECK(IsMacBinary(bytes));
    const Container container = ReadContainer(bytes);
    CHECK(container.form == Form::MacBinary);
    CheckCommon(container, sample.parts);
    CHECK(container.name == "Name");
    CHECK(std::ranges::equal(container.dataFork, sample.data));
    CHECK(container.dates.modified == sample.parts.dates.modified);
    CHECK(container.extendedFinderInfo.fdScript == 3);
}

TEST_CASE("WriteMacBinary: a file without a name, and one with too long a name")
{
    Sample sample;
    sample.parts.name = "";
    CHECK(ReadContainer(WriteMacBinary(sample.parts)).name == "untitled");
    sample.parts.name = std::string(100, 'x');
    CHECK(ReadContainer(WriteMacBinary(sample.parts)).name == std::string(63, 'x'));
}

TEST_CASE("WriteMacBinary: a name that looks like the magic number of AppleDouble")
{
    Sample sample;
    sample.parts.name = "\x16\x07xyz";
    const std::vector<uint8_t> bytes = WriteMacBinary(sample.parts);
    CHECK(ReadBE32(bytes, 0) == 0x00051607);
    CHECK(ReadContainer(bytes).form == Form::MacBinary);
}

TEST_CASE("WriteBinHex: the introduction, lines of 64, and a colon at both ends")
{
    const Sample sample;
    const std::string text = TextOf(WriteBinHex(sample.parts));
    const std::string introduction = "(This file must be converted with BinHex 4.0)\n\n:";
    REQUIRE(text.starts_with(introduction));
    CHECK(text.ends_with(":\n"));
    const size_t first = introduction.size() - 1;
    CHECK(text.find('\n', first) == first + 64);
}

TEST_CASE("WriteBinHex: runs of every length and the run mark itself come back")
{
    Sample sample;
    sample.data.clear();
    for (size_t run = 1; run < 300; ++run)
        sample.data.insert(sample.data.end(), run, (uint8_t)(run % 3 ? 0x90 : run));
    for (int byte = 0; byte < 256; ++byte)
        sample.data.insert(sample.data.end(), 2, (uint8_t)byte);
    sample.parts.dataFork = sample.data;
    const std::vector<uint8_t> bytes = WriteBinHex(sample.parts);
    CHECK(bytes.size() < sample.data.size());
    const Container container = ReadContainer(bytes);
    CHECK(container.form == Form::BinHex);
    CheckCommon(container, sample.parts);
    CHECK(std::ranges::equal(container.dataFork, sample.data));
}

TEST_CASE("every form: empty forks")
{
    FileParts parts;
    for (const auto& bytes : { WriteAppleSingle(parts), WriteMacBinary(parts), WriteBinHex(parts) }) {
        const Container container = ReadContainer(bytes);
        CHECK(container.hasDataFork);
        CHECK(container.hasResourceFork);
        CHECK(container.dataFork.empty());
        CHECK(container.resourceFork.empty());
        CHECK(container.problems.empty());
    }
}
