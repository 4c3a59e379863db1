// Icon families: packing, elements, suites made of them.
#include "icons/Family.h"
#include "icons/TestIcons.h"

#include <random>

using namespace lampblack::icons;

namespace {

constexpr Kind kSmallDirect = { 1, Data::Direct };
constexpr Kind kThumbnailDirect = { 4, Data::Direct };

// Runs and noise in turns; the unused byte of each pixel is 0.
ByteList RandomPixels(Kind inKind, std::mt19937& ioRandom)
{
    ByteList plain(inKind.Bytes(), 0);
    for (size_t channel = 1; channel <= 3; ++channel)
        for (size_t i = 0; i < plain.size() / 4;) {
            const bool isRun = ioRandom() % 2;
            const auto value = (uint8_t)ioRandom();
            for (size_t end = std::min(plain.size() / 4, i + 1 + ioRandom() % 200); i < end; ++i)
                plain[i * 4 + channel] = isRun ? value : (uint8_t)ioRandom();
        }
    return plain;
}

IconFamilyHandle NewFamily()
{
    return reinterpret_cast<IconFamilyHandle>(HandleOf({ 'i', 'c', 'n', 's', 0, 0, 0, 8 }));
}

} // namespace

TEST_CASE("PackElement: unpacks to what it was, with runs and noise of every length")
{
    std::mt19937 random(51);
    for (int round = 0; round < 40; ++round)
        for (const Kind kind : { kSmallDirect, kThumbnailDirect }) {
            const ByteList plain = RandomPixels(kind, random);
            CHECK(UnpackElement(kind, PackElement(kind, plain)) == plain);
        }
}

TEST_CASE("UnpackElement: runs and copies as published; what ends early is nothing")
{
    ByteList packed;
    for (int channel = 0; channel < 3; ++channel)
        packed.insert(packed.end(), { 0xFF, (uint8_t)(channel + 1), 0xFA, 9, 0, 7 }); // 130, 125, one
    const ByteList plain = UnpackElement(kSmallDirect, packed);
    REQUIRE(plain.size() == 1024);
    CHECK(ByteList(plain.begin(), plain.begin() + 4) == ByteList{ 0, 1, 2, 3 });
    CHECK(plain[130 * 4 + 1] == 9);
    CHECK(plain[255 * 4 + 3] == 7);
    for (size_t size = 0; size < packed.size(); ++size)
        CHECK(UnpackElement(kSmallDirect, Bytes(packed).first(size)).empty());
    packed[2] = 0xFF; // five too many
    CHECK(UnpackElement(kSmallDirect, packed).empty());
}

TEST_CASE("ReadFamily: what is no family is refused at every length")
{
    Members members;
    members.data[Kind{ 1, Data::Eight }.Place()] = ByteList(256, 5);
    members.data[Kind{ 1, Data::Bits }.Place()] = ByteList(64, 0xFF);
    const ByteList family = FamilyOf(members);
    REQUIRE(ReadFamily(family).has_value());
    CHECK(ReadFamily(family)->At({ 1, Data::Eight }).size() == 256);
    for (size_t size = 0; size < family.size(); ++size)
        CHECK(!ReadFamily(Bytes(family).first(size)).has_value());
    ByteList bad = family;
    bad[12 + 3] = 4; // an element smaller than its header
    CHECK(!ReadFamily(bad).has_value());
    bad = family;
    bad[12] = 0x7F; // or beyond the family
    CHECK(!ReadFamily(bad).has_value());
}

TEST_CASE("SetIconFamilyData, GetIconFamilyData: plain data go in and come out; a second time replaces")
{
    std::mt19937 random(53);
    const IconFamilyHandle family = NewFamily();
    const Handle first = HandleOf(RandomPixels(kSmallDirect, random)),
                 second = HandleOf(RandomPixels(kSmallDirect, random)), read = NewHandle(0),
                 tooShort = HandleOf(ByteList(1023));
    CHECK(SetIconFamilyData(family, 'is32', first) == noErr);
    CHECK(SetIconFamilyData(family, 'is32', second) == noErr);
    CHECK(GetIconFamilyData(family, 'is32', read) == noErr);
    REQUIRE(GetHandleSize(read) == 1024);
    CHECK(std::memcmp(*read, *second, 1024) == 0);
    CHECK(GetIconFamilyData(family, 'il32', read) == noIconDataAvailableErr);
    CHECK(SetIconFamilyData(family, 'is32', tooShort) == paramErr);
    CHECK(SetIconFamilyData(nullptr, 'is32', first) == paramErr);
    CHECK(GetIconFamilyData(family, 'is32', nullptr) == paramErr);
    CHECK(SetIconFamilyData(family, 'is32', nullptr) == noErr); // takes it away
    CHECK(GetIconFamilyData(family, 'is32', read) == noIconDataAvailableErr);
    CHECK(GetHandleSize(reinterpret_cast<Handle>(family)) == 8);
    for (const Handle each : { first, second, read, tooShort, reinterpret_cast<Handle>(family) })
        DisposeHandle(each);
}

TEST_CASE("IconSuiteToIconFamily, IconFamilyToIconSuite: there and back, what the selector names")
{
    IconSuiteRef suite = nullptr, again = nullptr;
    NewIconSuite(&suite);
    AddIconToSuite(HandleOf(ByteList(1024, kRedIndex)), suite, 'icl8');
    AddIconToSuite(HandleOf(HalfMasked(16, 16, 0xFF)), suite, 'ics#');
    IconFamilyHandle family = nullptr;
    REQUIRE(IconSuiteToIconFamily(suite, kSelectorAllAvailableData, &family) == noErr);
    REQUIRE(IconFamilyToIconSuite(family, kSelectorAllLargeData, &again) == noErr);
    Handle data = nullptr;
    CHECK(GetIconFromSuite(&data, again, 'icl8') == noErr);
    CHECK(GetHandleSize(data) == 1024);
    CHECK(GetIconFromSuite(&data, again, 'ics#') == paramErr);
    CHECK(IconFamilyToIconSuite(nullptr, kSelectorAllLargeData, &again) == paramErr);
    CHECK(again == nullptr);
    CHECK(IconSuiteToIconFamily(nullptr, kSelectorAllLargeData, &family) == paramErr);
    DisposeIconSuite(suite, true);
}
