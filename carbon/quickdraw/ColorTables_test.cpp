// Colour tables: the standard ones, 'clut' resources, nearest colours and the current device.
#include "ColorTables.h"
#include "TestWorld.h"

#include <Carbon/MacErrors.h>
#include <Carbon/MacMemory.h>

using namespace lampblack::quickdraw;

namespace {

struct Table {
    explicit Table(short id) : handle(GetCTable(id)) {}
    ~Table() { DisposeCTable(handle); }
    uint32_t At(int index) const { return PixelOf((**handle).ctTable[index].rgb); }

    CTabHandle handle;
};

int Distance(uint32_t a, uint32_t b)
{
    int sum = 0;
    for (int shift = 0; shift < 24; shift += 8) {
        const int difference = (int)(a >> shift & 0xFF) - (int)(b >> shift & 0xFF);
        sum += difference * difference;
    }
    return sum;
}

int NearestOf(const ColorSpace& space, uint32_t color)
{
    int best = 0;
    for (int i = 1; i < space.Count(); ++i)
        if (Distance(space.At(i), color) < Distance(space.At(best), color))
            best = i;
    return best;
}

int Wrong(const ColorSpace& space, std::mt19937& random, int count)
{
    int wrong = 0;
    for (int i = 0; i < count; ++i) {
        const uint32_t color =
            i % 3 ? (uint32_t)random() & 0xFFFFFF : space.At((int)(random() % 256)) ^ (random() & 0x030303);
        wrong += space.IndexOf(color) != NearestOf(space, color);
    }
    return wrong;
}

} // namespace

TEST_CASE("GetCTable: the standard tables go from white to black")
{
    for (const int depth : { 1, 2, 4, 8 }) {
        const Table colors((short)depth), grays((short)(depth + 32));
        const int last = (1 << depth) - 1;
        REQUIRE(colors.handle);
        CHECK((**colors.handle).ctSeed == depth);
        CHECK((**colors.handle).ctSize == last);
        CHECK((**colors.handle).ctTable[last].value == last);
        CHECK(colors.At(0) == 0xFFFFFF);
        CHECK(colors.At(last) == 0);
        CHECK((**grays.handle).ctSize == last);
        CHECK(grays.At(0) == 0xFFFFFF);
        CHECK(grays.At(last) == 0);
    }
    CHECK(Table(36).At(1) == 0xEEEEEE);
    CHECK(Table(40).At(1) == 0xFEFEFE);
}

TEST_CASE("GetCTable: the 256 colours are a cube of six levels and four ramps")
{
    const Table table(8);
    CHECK(table.At(1) == 0xFFFFCC);
    CHECK(table.At(35) == 0xFF0000);
    CHECK(table.At(36) == 0xCCFFFF);
    CHECK(table.At(214) == 0x000033);
    CHECK(table.At(215) == 0xEE0000);
    CHECK(table.At(225) == 0x00EE00);
    CHECK(table.At(244) == 0x000011);
    CHECK(table.At(254) == 0x111111);
    CHECK(Table(4).At(3) == 0xDD0806);
}

TEST_CASE("GetCTable: tables with the highlight colour have it, 127 has the eight old colours")
{
    const RGBColor highlight = { 0x1234, 0x5678, 0x9ABC };
    RGBColor old;
    LMGetHiliteRGB(&old);
    LMSetHiliteRGB(&highlight);
    for (const short id : { 66, 68, 72 }) {
        const Table table(id);
        int found = 0;
        for (int i = 0; i <= (**table.handle).ctSize; ++i)
            found += table.At(i) == 0x12569A;
        CHECK(found == 1);
        CHECK(table.At(0) == 0xFFFFFF);
        CHECK(table.At((**table.handle).ctSize) == 0);
    }
    LMSetHiliteRGB(&old);
    CHECK((**Table(127).handle).ctSize == 7);
    CHECK(Table(127).At(3) == 0xDD0806);
}

TEST_CASE("GetCTable: a number without a table is NULL, and QDError says it")
{
    for (const short id : { 0, 3, 16, 32, 65, 96, -1, 30000 }) {
        CHECK(GetCTable(id) == nullptr);
        CHECK(QDError() == cResErr);
    }
}

TEST_CASE("DisposeCTable: what is no table is left alone")
{
    int foreign = 0;
    DisposeCTable(nullptr);
    DisposeCTable(reinterpret_cast<CTabHandle>(&foreign));
    const CTabHandle table = GetCTable(4);
    DisposeCTable(table);
    DisposeCTable(table);
    CTabChanged(table);
    CHECK(SeedOf(table) == 0);
}

TEST_CASE("GetCTSeed: is above those of standard tables and never the same")
{
    const SInt32 seed = GetCTSeed();
    CHECK(seed > minSeed);
    CHECK(GetCTSeed() != seed);
}

TEST_CASE("IndexOf: is the first of the nearest entries, as a slow search finds it")
{
    std::mt19937 random(5);
    for (const int depth : { 1, 2, 4, 8 })
        CHECK(Wrong(StandardColors(depth), random, 20000) == 0);
    for (int round = 0; round < 6; ++round) {
        RGBColor colors[256];
        const int count = 1 + (int)(random() % 256);
        const bool isNarrow = round % 2; // many entries in one corner
        for (RGBColor& color : colors)
            color = WideColor((uint32_t)random() & (isNarrow ? 0x0F0F0F : 0xFFFFFF));
        const ColorSpace space(colors, count, 2000);
        CHECK(Wrong(space, random, 10000) == 0);
    }
    CHECK(ColorSpace(nullptr, 0, 0).IndexOf(0x123456) == 0);
}

TEST_CASE("SpaceOf: values say the indexes, except in tables of devices")
{
    const CTabHandle table = GetCTable(2);
    (**table).ctTable[0].value = 3;
    (**table).ctTable[3].value = 0;
    CHECK(SpaceOf(table)->At(0) == 0);
    CHECK(SpaceOf(table)->At(3) == 0xFFFFFF);
    (**table).ctFlags = (short)0x8000;
    CHECK(SpaceOf(table)->At(0) == 0xFFFFFF);
    DisposeCTable(table);
    CHECK(SpaceOf(table) == nullptr);
}

TEST_CASE("SpaceOf: a table that says more entries than its handle holds has those that are there")
{
    const CTabHandle table = GetCTable(1);
    (**table).ctSize = 32767;
    CHECK(SpaceOf(table)->Count() == 2);
    (**table).ctSize = -5;
    CHECK(SpaceOf(table)->Count() == 0);
    DisposeCTable(table);
}

TEST_CASE("SpaceOf: tables of equal colours share one space")
{
    std::mt19937 random(8);
    const CTabHandle one = RandomTable(random, 8);
    CHECK(SpaceOf(one) == SpaceOf(one));
    (**one).ctTable[7].rgb.red ^= 0xFFFF; // even without a new seed
    const SpacePointer changed = SpaceOf(one);
    CHECK(changed->Exact(7).red == (**one).ctTable[7].rgb.red);
    DisposeCTable(one);
}

TEST_CASE("Color2Index: speaks of the current device")
{
    const RGBColor red = { 0xFFFF, 0, 0 }, odd = { 0x1234, 0x5678, 0x9ABC };
    RGBColor color;
    {
        const TestWorld world(8);
        CHECK(Color2Index(&red) == 35);
        Index2Color(35, &color);
        CHECK(color.red == 0xFFFF);
        CHECK(RealColor(&red));
        CHECK_FALSE(RealColor(&odd));
    }
    {
        const TestWorld world(16);
        CHECK(Color2Index(&red) == 0x7C00);
        Index2Color(0x001F, &color);
        CHECK(color.blue == 0xFFFF);
        CHECK_FALSE(RealColor(&odd));
    }
    SetGDevice(GetMainDevice());
    CHECK(Color2Index(&odd) == 0x12569A);
    CHECK(RealColor(&odd));
    CHECK(Color2Index(nullptr) == 0);
    InvertColor(&color);
    CHECK(color.blue == 0);
}

TEST_CASE("GetSubTable: values become indexes of the other table")
{
    const CTabHandle small = GetCTable(4), large = GetCTable(8);
    GetSubTable(small, 4, large);
    CHECK((**small).ctTable[0].value == 0);
    CHECK((**small).ctTable[15].value == 255);
    int foreign = 0;
    GetSubTable(nullptr, 4, large);
    GetSubTable(small, 4, reinterpret_cast<CTabHandle>(&foreign));
    CHECK((**small).ctTable[15].value == 255);
    DisposeCTable(small);
    DisposeCTable(large);
}

TEST_CASE("SetEntries: changes the table of an indexed device, within its bounds")
{
    const TestWorld world(4);
    const SInt32 seed = (**world.Table()).ctSeed;
    ColorSpec two[2] = { { 9, { 1, 2, 3 } }, { 2, { 4, 5, 6 } } };
    SetEntries(14, 1, two);
    CHECK(QDError() == noErr);
    CHECK((**world.Table()).ctTable[15].rgb.green == 5);
    CHECK((**world.Table()).ctSeed != seed);
    SetEntries(-1, 1, two);
    CHECK((**world.Table()).ctTable[9].rgb.blue == 3);
    SetEntries(15, 1, two);
    CHECK(QDError() == cRangeErr);
    two[1].value = 16;
    SetEntries(-1, 1, two);
    CHECK(QDError() == cRangeErr);
    SetEntries(0, 0, nullptr);
    CHECK(QDError() == cRangeErr);
    SetGDevice(GetMainDevice());
    SetEntries(0, 0, two);
    CHECK(QDError() == cDevErr);
}

TEST_CASE("SaveEntries: entries that were saved come back")
{
    const TestWorld world(4);
    const CTabHandle saved = GetCTable(2);
    struct {
        short size, data[3];
    } selection = { 2, { 1, 7, 99 } };
    const RGBColor seventh = (**world.Table()).ctTable[7].rgb;
    SaveEntries(nullptr, saved, reinterpret_cast<ReqListRec*>(&selection));
    CHECK(selection.data[2] == colReqErr);
    CHECK((**saved).ctTable[1].rgb.red == seventh.red);
    (**world.Table()).ctTable[7].rgb = { 0, 0, 0 };
    RestoreEntries(saved, nullptr, reinterpret_cast<ReqListRec*>(&selection));
    CHECK((**world.Table()).ctTable[7].rgb.red == seventh.red);
    SaveEntries(nullptr, saved, nullptr);
    CHECK(QDError() == paramErr);
    DisposeCTable(saved);
}

TEST_CASE("ReadTable: bytes that are cut off or promise too much are no table")
{
    const std::vector<uint8_t> two = { 0,    0,    0,    9,    0, 0, 0,    1,    0,    0,    0xFF, 0xFF,
                                       0xFF, 0xFF, 0xFF, 0xFF, 0, 1, 0x12, 0x34, 0x56, 0x78, 0x9A, 0xBC };
    lampblack::foundation::BigEndianReader whole(two);
    const std::optional<TableEntries> table = ReadTable(whole);
    REQUIRE(table);
    CHECK(table->entries.size() == 2);
    CHECK(table->entries[1].rgb.red == 0x1234);
    CHECK(whole.Remaining() == 0);
    for (size_t length = 0; length < two.size(); ++length) {
        lampblack::foundation::BigEndianReader part(two.data(), length);
        CHECK_FALSE(ReadTable(part));
    }
    std::vector<uint8_t> large(8 + 257 * 8);
    large[6] = 1; // 257 entries
    lampblack::foundation::BigEndianReader reader(large);
    CHECK_FALSE(ReadTable(reader));
}
