// Regions as bytes, and from bit maps.
#include "RegionBits.h"
#include "RegionBytes.h"
#include "TestPort.h"

#include <Carbon/MacErrors.h>
#include <Carbon/MacMemory.h>

using namespace lampblack::quickdraw;

using ByteList = std::vector<uint8_t>;

static ByteList Words(std::initializer_list<int> words)
{
    ByteList bytes;
    for (const int word : words) {
        bytes.push_back((uint8_t)(word >> 8));
        bytes.push_back((uint8_t)word);
    }
    return bytes;
}

static Region RandomRegion(std::mt19937& ioRandom, int inSide, int inCount)
{
    Region region;
    for (int i = 0; i < inCount; ++i) {
        const int left = (int)(ioRandom() % (unsigned)inSide), top = (int)(ioRandom() % (unsigned)inSide);
        const Region piece(
            Box{ left, top, left + 1 + (int)(ioRandom() % 9), top + 1 + (int)(ioRandom() % 9) });
        region.Xor(region, piece);
    }
    region.Offset(-inSide / 2, -inSide / 2);
    return region;
}

TEST_CASE("RegionBytes: a rectangle is its size and its bounds; the empty region ten bytes of them")
{
    CHECK(RegionBytes(Region(MakeRect(-3, 2, 40, 32767))) == Words({ 10, 2, -3, 32767, 40 }));
    CHECK(RegionBytes(Region()) == Words({ 10, 0, 0, 0, 0 }));
}

TEST_CASE("RegionBytes: each row names only where it differs from the one above")
{
    Region region(MakeRect(0, 0, 10, 4));
    region.Union(Box{ 0, 4, 6, 8 });
    CHECK(RegionBytes(region) == Words({ 36, 0, 0, 8, 10,  // size and bounds
                                         0, 0, 10, 0x7FFF, // from 0 to 10
                                         4, 6, 10, 0x7FFF, // now to 6
                                         8, 0, 6, 0x7FFF, 0x7FFF }));
}

TEST_CASE("ReadRegionBytes: reads what RegionBytes wrote, and tells its length")
{
    std::mt19937 random(21);
    for (int round = 0; round < 100; ++round) {
        const Region region = RandomRegion(random, 60, round);
        ByteList bytes = RegionBytes(region);
        const size_t size = bytes.size();
        bytes.insert(bytes.end(), { 1, 2, 3 });
        Region read(MakeRect(1, 2, 3, 4));
        size_t used = 0;
        REQUIRE(ReadRegionBytes(bytes, &read, &used));
        CHECK(read == region);
        CHECK(used == size);
    }
}

TEST_CASE("ReadRegionBytes: a size that is odd, too small or beyond the bytes is no region")
{
    Region region(MakeRect(1, 2, 3, 4));
    const Region before = region;
    for (const int size : { 0, 9, 11, 12, 0xFFFF })
        CHECK(!ReadRegionBytes(Words({ size, 0, 0, 5, 5 }), &region, nullptr));
    CHECK(!ReadRegionBytes({}, &region, nullptr));
    CHECK(!ReadRegionBytes(ByteList{ 0, 10, 0 }, &region, nullptr));
    CHECK(region == before);
}

TEST_CASE("ReadRegionBytes: rows that do not descend are no region")
{
    Region region;
    CHECK(!ReadRegionBytes(
        Words({ 36, 0, 0, 8, 10, 4, 0, 10, 0x7FFF, 4, 6, 10, 0x7FFF, 8, 0, 6, 0x7FFF, 0x7FFF }), &region,
        nullptr));
}

TEST_CASE("ReadRegionBytes: what is left open ends at the bounds, and nothing passes them")
{
    Region region;
    REQUIRE(ReadRegionBytes(Words({ 16, 0, 0, 8, 10, 2, 3, 0x7FFF }), &region, nullptr));
    CHECK(region == Region(MakeRect(3, 2, 10, 8)));
    REQUIRE(ReadRegionBytes(Words({ 18, 0, 0, 8, 10, -5, -100, 100, 0x7FFF }), &region, nullptr));
    CHECK(region == Region(MakeRect(0, 0, 10, 8)));
    REQUIRE(
        ReadRegionBytes(Words({ 14, 0, 0, 8, 10, 2, 3 }), &region, nullptr)); // even the marks are missing
    CHECK(region == Region(MakeRect(3, 2, 10, 8)));
}

TEST_CASE("ReadRegionBytes: empty bounds hold nothing, whatever the rows say")
{
    Region region(MakeRect(1, 2, 3, 4));
    REQUIRE(ReadRegionBytes(Words({ 20, 5, 5, 5, 9, 2, 3, 8, 0x7FFF, 0x7FFF }), &region, nullptr));
    CHECK(region.IsEmpty());
}

TEST_CASE("ReadRegionBytes: few bytes that mean millions of rectangles are refused")
{
    ByteList bytes = Words({ 0, -32768, -32768, 32766, 32766, -32768 });
    const auto put = [&](int word) {
        bytes.push_back((uint8_t)(word >> 8));
        bytes.push_back((uint8_t)word);
    };
    for (int column = 0; column < 16000; ++column)
        put(2 * column);
    put(0x7FFF);
    for (int row = 0; bytes.size() + 12 < 0xFFFE; ++row) {
        put(row);
        put(-10);
        put(-9);
        put(0x7FFF);
    }
    bytes[0] = (uint8_t)(bytes.size() >> 8);
    bytes[1] = (uint8_t)bytes.size();
    Region region;
    CHECK(!ReadRegionBytes(bytes, &region, nullptr));
}

TEST_CASE("RegionBytes: nothing for a region whose size 16 bits cannot say")
{
    std::vector<Box> boxes;
    for (int v = 0; v < 300; ++v)
        for (int h = 0; h < 100; ++h)
            boxes.push_back({ 3 * h + v % 2, v, 3 * h + v % 2 + 1, v + 1 });
    CHECK(RegionBytes(Region(boxes)).empty());
}

// A bit map of random runs.
struct RandomBits {
    RandomBits(std::mt19937& ioRandom, int inWidth, int inHeight)
        : rowBytes((inWidth + 15) / 16 * 2), bytes((size_t)rowBytes * (size_t)inHeight)
    {
        for (uint8_t& byte : bytes)
            byte = ioRandom() % 3 ? (uint8_t)(ioRandom() % 2 * 255) : (uint8_t)ioRandom();
        map = { reinterpret_cast<Ptr>(bytes.data()), (short)rowBytes,
                MakeRect(-7, 11, -7 + inWidth, 11 + inHeight) };
    }
    bool At(int h, int v) const
    {
        const size_t column = (size_t)(h - map.bounds.left);
        return bytes[(size_t)(v - map.bounds.top) * (size_t)rowBytes + column / 8] >> (7 - column % 8) & 1;
    }
    int rowBytes;
    ByteList bytes;
    BitMap map;
};

TEST_CASE("BitMapToRegion: the region has the set bits, and no others")
{
    std::mt19937 random(4);
    RgnHandle region = NewRgn();
    int wrong = 0;
    for (const int width : { 1, 7, 8, 31, 32, 33, 64, 100 }) {
        const RandomBits bits(random, width, 9);
        REQUIRE(BitMapToRegion(region, &bits.map) == noErr);
        for (int v = 0; v < 40; ++v)
            for (int h = -20; h < 120; ++h) {
                const bool expected = IsInside(bits.map.bounds, h, v) && bits.At(h, v);
                wrong += PtInRgn({ (short)v, (short)h }, region) != expected;
            }
    }
    CHECK(wrong == 0);
    DisposeRgn(region);
}

TEST_CASE("BitMapToRegion: each error leaves the region alone, and QDError repeats it")
{
    std::mt19937 random(4);
    RandomBits bits(random, 32, 8);
    RgnHandle region = NewRgn(), before = NewRgn();
    SetRectRgn(region, 1, 2, 3, 4);
    CopyRgn(region, before);
    CHECK(BitMapToRegion(nullptr, &bits.map) == paramErr);
    CHECK(BitMapToRegion(region, nullptr) == paramErr);
    bits.map.bounds.right = 500; // more than a row has
    CHECK(BitMapToRegion(region, &bits.map) == paramErr);
    CHECK(QDError() == paramErr);
    PixMap deep = {};
    deep.baseAddr = bits.map.baseAddr;
    deep.rowBytes = (short)0x8004;
    deep.pixelSize = 8;
    CHECK(BitMapToRegion(region, reinterpret_cast<BitMap*>(&deep)) == pixMapTooDeepErr);
    CHECK(QDError() == pixMapTooDeepErr);
    BitMap screen; // the screen's pixels, whose record is no longer than a bit map's
    GetQDGlobalsScreenBits(&screen);
    CHECK(BitMapToRegion(region, &screen) == pixMapTooDeepErr);
    ByteList dots((size_t)(2000 / 8 * 400), 0x55);
    for (size_t row = 0; row < 400; row += 2)
        std::fill_n(dots.begin() + (ptrdiff_t)(row * 250), 250, 0);
    const BitMap many = { reinterpret_cast<Ptr>(dots.data()), 250, MakeRect(0, 0, 2000, 400) };
    CHECK(BitMapToRegion(region, &many) == rgnTooBigErr);
    CHECK(EqualRgn(region, before));
    bits.map.bounds = MakeRect(0, 0, 0, 8);
    CHECK(BitMapToRegion(region, &bits.map) == noErr);
    CHECK(EmptyRgn(region));
    DisposeRgn(region);
    DisposeRgn(before);
}

TEST_CASE("RgnToHandle, HandleToRgn: a region goes there and back; what is none changes nothing")
{
    RgnHandle region = NewRgn(), again = NewRgn(), hole = NewRgn();
    SetRectRgn(region, -10, 0, 20, 20);
    SetRectRgn(hole, 0, 5, 5, 10);
    DiffRgn(region, hole, region);
    Handle bytes = NewHandle(0);
    RgnToHandle(region, bytes);
    CHECK(QDError() == noErr);
    CHECK(GetHandleSize(bytes) > 10);
    HandleToRgn(bytes, again);
    CHECK(EqualRgn(region, again));
    SetHandleSize(bytes, 9);
    HandleToRgn(bytes, again);
    CHECK(QDError() == paramErr);
    CHECK(EqualRgn(region, again));
    RgnToHandle(nullptr, bytes);
    CHECK(QDError() == paramErr);
    RgnToHandle(region, nullptr);
    CHECK(QDError() == paramErr);
    DisposeHandle(bytes);
    DisposeRgn(region);
    DisposeRgn(again);
    DisposeRgn(hole);
}

TEST_CASE("RegionOfBits: more than a million rectangles are refused before they take memory")
{
    const ByteList dots(512 * 4096, 0x55);
    ByteList shifted = dots;
    for (size_t row = 0; row < 4096; row += 2)
        std::fill_n(shifted.begin() + (ptrdiff_t)(row * 512), 512, 0xAA);
    Region region;
    CHECK(!RegionOfBits(shifted.data(), 512, MakeRect(0, 0, 4096, 4096), &region));
    CHECK(RegionOfBits(dots.data(), 512, MakeRect(0, 0, 4096, 4096), &region)); // equal rows are one band
    CHECK(region.Boxes().size() == 2048);
}
