// Forks: what is built reads back, and what strangers made is believed only as far as it holds.
#include <resources/ResourceFork.h>

#include <doctest/doctest.h>
#include <random>

using namespace lampblack::resources;

namespace {

constexpr UInt8 kPurgeable = 0x20;

Bytes BytesOf(std::string_view inText)
{
    return Bytes((const uint8_t*)inText.data(), inText.size());
}

std::string TextOf(const ResourceFork& inFork, ResourceRef inRef)
{
    Bytes data;
    CHECK(inFork.Data(inRef, &data));
    return std::string((const char*)data.data(), data.size());
}

std::vector<uint8_t> Build(const std::vector<ForkEntry>& inEntries, UInt16 inAttributes = 0)
{
    ForkBuilder builder;
    builder.SetAttributes(inAttributes);
    for (const ForkEntry& entry : inEntries)
        builder.Add(entry);
    std::vector<uint8_t> bytes;
    REQUIRE(builder.Build(&bytes) == nullptr);
    return bytes;
}

ForkEntry Entry(OSType inType, SInt16 inID, std::string_view inText)
{
    return { inType, inID, 0, false, "", BytesOf(inText) };
}

ForkEntry Named(OSType inType, SInt16 inID, std::string inName, std::string_view inText)
{
    return { inType, inID, 0, true, std::move(inName), BytesOf(inText) };
}

size_t MapOf(const std::vector<uint8_t>& inFork)
{
    return (size_t)(inFork[4] << 24 | inFork[5] << 16 | inFork[6] << 8 | inFork[7]);
}

} // namespace

TEST_CASE("ResourceFork: types, IDs, names and attributes come back in the order they were added")
{
    const std::vector<uint8_t> bytes = Build({ { 'snd ', -5, kPurgeable, true, "caf\x8E", BytesOf("one") },
                                               Entry('TEXT', 300, "two"),
                                               Entry('snd ', 7, ""),
                                               Named('TEXT', 2, "", "four") },
                                             0x0080);
    ResourceFork fork;
    REQUIRE(fork.Open(bytes) == nullptr);
    CHECK(fork.Attributes() == 0x0080);
    CHECK(fork.TypeCount() == 2);
    CHECK(fork.TypeAt(0) == 'snd ');
    CHECK(fork.TypeAt(1) == 'TEXT');
    CHECK(fork.TypeAt(2) == 0);
    CHECK(fork.CountOf('TEXT') == 2);
    CHECK(fork.CountOf('none') == 0);
    const ResourceInfo first = fork.Info(fork.At('snd ', 0));
    CHECK(first.id == -5);
    CHECK(first.name == "caf\x8E");
    CHECK(first.attributes == kPurgeable);
    CHECK(TextOf(fork, fork.Find('snd ', -5)) == "one");
    CHECK(TextOf(fork, fork.Find('snd ', 7)) == "");
    CHECK(TextOf(fork, fork.At('TEXT', 1)) == "four");
    CHECK(fork.Info(fork.At('TEXT', 1)).hasName);
    CHECK_FALSE(fork.Info(fork.At('TEXT', 0)).hasName);
    CHECK_FALSE((bool)fork.Find('TEXT', 3));
    CHECK_FALSE((bool)fork.At('TEXT', 2));
    CHECK(fork.Check().empty());
}

TEST_CASE("ResourceFork: of equal types and IDs, and of equal names, the first in the file counts")
{
    const std::vector<uint8_t> bytes =
        Build({ Named('TEXT', 1, "Name", "first"), Named('TEXT', 1, "name", "second"),
                Named('TEXT', 2, "B", "b") });
    ResourceFork fork;
    REQUIRE(fork.Open(bytes) == nullptr);
    CHECK(TextOf(fork, fork.Find('TEXT', 1)) == "first");
    CHECK(TextOf(fork, fork.FindNamed('TEXT', "NAME")) == "first");
    CHECK(TextOf(fork, fork.At('TEXT', 1)) == "second");
    CHECK_FALSE((bool)fork.FindNamed('TEXT', "Nam"));
    CHECK_FALSE((bool)fork.FindNamed('STR ', "Name"));
}

TEST_CASE("ResourceFork: a fork without resources is sound")
{
    const std::vector<uint8_t> bytes = Build({});
    CHECK(bytes.size() == 286);
    ResourceFork fork;
    CHECK(fork.Open(bytes) == nullptr);
    CHECK(fork.ResourceCount() == 0);
    CHECK_FALSE((bool)fork.Find('TEXT', 1));
}

TEST_CASE("ResourceFork::Open: cut at any length it is refused, and every bad count and offset too")
{
    const std::vector<uint8_t> bytes = Build({ Named('TEXT', 1, "n", "first"), Entry('STR ', 2, "second") });
    ResourceFork fork;
    for (size_t length = 0; length < bytes.size(); ++length)
        REQUIRE(fork.Open(Bytes(bytes).first(length)) != nullptr);
    REQUIRE(fork.Open(bytes) == nullptr);
    const size_t map = MapOf(bytes);
    // Map offset, data length, map length, type list, type count, reference count, reference list.
    for (const size_t place : { (size_t)4, (size_t)8, (size_t)12, map + 24, map + 28, map + 34, map + 36 }) {
        CAPTURE(place - map);
        std::vector<uint8_t> bad = bytes;
        bad[place] = 0x7F;
        CHECK(fork.Open(bad) != nullptr);
        CHECK(fork.TypeCount() == 0);
    }
}

TEST_CASE("ResourceFork::Data: a length that passes the end is refused for that resource alone")
{
    std::vector<uint8_t> bytes = Build({ Entry('TEXT', 1, "first"), Entry('TEXT', 2, "second") });
    bytes[256] = 0x7F;
    ResourceFork fork;
    REQUIRE(fork.Open(bytes) == nullptr);
    Bytes data;
    CHECK_FALSE(fork.Data(fork.Find('TEXT', 1), &data));
    CHECK(data.empty());
    CHECK(TextOf(fork, fork.Find('TEXT', 2)) == "second");
    CHECK(fork.Check().size() == 1);
    CHECK_FALSE(fork.Data({}, &data));
}

TEST_CASE("ResourceFork::Info: a name that passes the end of the map is no name")
{
    std::vector<uint8_t> bytes = Build({ Named('TEXT', 1, "name", "x") });
    bytes[bytes.size() - 5] = 200;
    ResourceFork fork;
    REQUIRE(fork.Open(bytes) == nullptr);
    CHECK_FALSE(fork.Info(fork.At('TEXT', 0)).hasName);
    CHECK(fork.Check().size() == 1);
}

TEST_CASE("ResourceFork: 10,000 resources are all found by ID; the names stand before so many references")
{
    std::vector<ForkEntry> entries;
    for (int i = 0; i < 10000; ++i)
        entries.push_back(Entry('many', (SInt16)(i * 3), "abc"));
    entries.push_back(Named('last', 1, "name", "z"));
    std::swap(entries.front(), entries.back());
    const std::vector<uint8_t> bytes = Build(entries);
    ResourceFork fork;
    REQUIRE(fork.Open(bytes) == nullptr);
    CHECK(fork.ResourceCount() == 10001);
    for (const ForkEntry& entry : entries)
        REQUIRE(fork.Info(fork.Find(entry.type, entry.id)).id == entry.id);
    CHECK(fork.Info(fork.Find('last', 1)).name == "name");
    CHECK_FALSE((bool)fork.Find('many', 1));
}

TEST_CASE("ForkBuilder::Build: says which limit is passed")
{
    const std::string large(1 << 23, 'x');
    ForkBuilder tooLarge, tooManyNames, longName;
    for (int i = 0; i < 3; ++i)
        tooLarge.Add(Entry('data', (SInt16)i, large));
    for (int i = 0; i < 300; ++i)
        tooManyNames.Add(Named('data', (SInt16)i, std::string(255, 'n'), ""));
    longName.Add(Named('data', 1, std::string(256, 'n'), ""));
    std::vector<uint8_t> bytes;
    for (const ForkBuilder* builder : { &tooLarge, &tooManyNames, &longName }) {
        CHECK(builder->Build(&bytes) != nullptr);
        CHECK(bytes.empty());
    }
}
