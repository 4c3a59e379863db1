#include "PackBits.h"

#include <Carbon/Quickdraw.h>
#include <quickdraw/Vectors.h>

#include <doctest/doctest.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <memory>
#include <random>

#include <sys/mman.h>
#include <unistd.h>

using namespace lampblack::pictures;

namespace {

// Byte by byte, as the format says it.
std::vector<uint8_t> SlowlyUnpacked(const std::vector<uint8_t>& packets, size_t room)
{
    std::vector<uint8_t> out;
    for (size_t i = 0; i < packets.size() && out.size() < room;) {
        const int n = (int8_t)packets[i++];
        if (n >= 0)
            for (int k = 0; k <= n && i < packets.size() && out.size() < room; ++k)
                out.push_back(packets[i++]);
        else if (n != -128 && i < packets.size()) {
            for (int k = 0; k < 1 - n && out.size() < room; ++k)
                out.push_back(packets[i]);
            ++i;
        }
    }
    return out;
}

// Word by word.
std::vector<uint16_t> SlowlyUnpackedWords(const std::vector<uint8_t>& packets, size_t room)
{
    std::vector<uint16_t> out;
    const auto isWhole = [&](size_t i) { return i + 1 < packets.size(); };
    const auto wordAt = [&](size_t i) { return (uint16_t)(packets[i] << 8 | packets[i + 1]); };
    for (size_t i = 0; i < packets.size() && out.size() < room;) {
        const int n = (int8_t)packets[i++];
        if (n >= 0)
            for (int k = 0; k <= n && isWhole(i) && out.size() < room; ++k, i += 2)
                out.push_back(wordAt(i));
        else if (n != -128 && isWhole(i)) {
            for (int k = 0; k < 1 - n && out.size() < room; ++k)
                out.push_back(wordAt(i));
            i += 2;
        }
        if (n != -128 && !isWhole(i)) // a byte that is left is no packet
            break;
    }
    return out;
}

std::vector<uint8_t> RandomRow(std::mt19937& random, size_t size)
{
    std::vector<uint8_t> row;
    while (row.size() < size)
        row.insert(row.end(), random() % 3 == 0 ? random() % 200 + 1 : 1, (uint8_t)(random() % 7));
    row.resize(size);
    return row;
}

// Bytes that are packets of all kinds and lengths, or any bytes at all.
std::vector<uint8_t> RandomPackets(std::mt19937& random)
{
    std::vector<uint8_t> packets(random() % (random() % 2 ? 60 : 900));
    const unsigned kind = random() % 4;
    for (uint8_t& byte : packets)
        byte = (uint8_t)(kind == 0   ? random()
                         : kind == 1 ? random() % 20
                         : kind == 2 ? 256 - random() % 40
                                     : random() % 2 * 120 + random() % 30);
    return packets;
}

// Memory as long as it is asked for and no longer, so that a sanitizer sees every step aside.
template <class Unit>
std::unique_ptr<Unit[]> ExactBlock(size_t count)
{
    std::unique_ptr<Unit[]> block(new Unit[count]);
    std::fill_n(block.get(), count, (Unit)0xA5A5);
    return block;
}

std::unique_ptr<uint8_t[]> ExactCopy(const std::vector<uint8_t>& bytes, size_t more = 0)
{
    std::unique_ptr<uint8_t[]> block = ExactBlock<uint8_t>(bytes.size() + more);
    std::copy(bytes.begin(), bytes.end(), block.get());
    return block;
}

template <class Unit>
using Unpacker = size_t (*)(const Packets&, Unit*, size_t);

// Packets with some bytes behind them, into room with its slack: what was asked for is there and no more.
template <class Unit>
bool IsUnpacked(std::mt19937& random, const std::vector<uint8_t>& packets, size_t room,
                const std::vector<Unit>& expected, Unpacker<Unit> unpack)
{
    const size_t more = random() % 3 ? 0 : random() % 400;
    const auto from = ExactCopy(packets, more);
    const auto to = ExactBlock<Unit>(room + kUnpackSlack);
    const uint8_t* end = from.get() + packets.size();
    const size_t done = unpack({ from.get(), end, end + more }, to.get(), room);
    return done == expected.size() && std::equal(expected.begin(), expected.end(), to.get());
}

template <class Test>
void WithVectorsOfAllLengths(Test test)
{
    for (const bool mayUseAvx2 : { true, false }) {
        lampblack::quickdraw::gMayUseAvx2 = mayUseAvx2;
        test();
    }
    lampblack::quickdraw::gMayUseAvx2 = true;
}

} // namespace

TEST_CASE("PackBits: runs and plain bytes take the packets that the format gives them")
{
    unsigned char row[] = { 1, 2, 2, 3, 7, 7, 7, 7, 9 }, packed[32] = {};
    Ptr from = reinterpret_cast<Ptr>(row), to = reinterpret_cast<Ptr>(packed);
    PackBits(&from, &to, sizeof row);
    const unsigned char expected[] = { 3, 1, 2, 2, 3, 0xFD, 7, 0, 9 };
    CHECK(to - reinterpret_cast<Ptr>(packed) == sizeof expected);
    CHECK(std::memcmp(packed, expected, sizeof expected) == 0);
    CHECK(from == reinterpret_cast<Ptr>(row) + sizeof row);
}

TEST_CASE("PackBits: what is packed unpacks to itself and never grows by more than a byte in 128")
{
    std::mt19937 random(7);
    for (int i = 0; i < 2000; ++i) {
        const std::vector<uint8_t> row = RandomRow(random, random() % 3000 + 1);
        std::vector<uint8_t> packets;
        PackBytes(row, packets);
        CHECK(packets.size() <= row.size() + (row.size() + 127) / 128);
        CHECK(SlowlyUnpacked(packets, row.size()) == row);
        CHECK(IsUnpacked(random, packets, row.size(), row, UnpackBytes));
    }
}

TEST_CASE("UnpackBytes: any bytes in any room give what reading one by one gives")
{
    std::mt19937 random(8);
    WithVectorsOfAllLengths([&] {
        for (int i = 0; i < 20000; ++i) {
            const std::vector<uint8_t> packets = RandomPackets(random);
            const size_t room = random() % (random() % 2 ? 100 : 2000);
            REQUIRE(IsUnpacked(random, packets, room, SlowlyUnpacked(packets, room), UnpackBytes));
        }
    });
}

TEST_CASE("UnpackWords: any bytes in any room give what reading one by one gives")
{
    std::mt19937 random(11);
    WithVectorsOfAllLengths([&] {
        for (int i = 0; i < 20000; ++i) {
            const std::vector<uint8_t> packets = RandomPackets(random);
            const size_t room = random() % (random() % 2 ? 100 : 2000);
            REQUIRE(IsUnpacked(random, packets, room, SlowlyUnpackedWords(packets, room), UnpackWords));
        }
    });
}

TEST_CASE("UnpackBytes, UnpackWords: packets cut at every place, into room cut at every place")
{
    std::mt19937 random(12);
    const std::vector<uint8_t> whole = { 3, 1,  2, 3, 4,    0xFD, 9, 9, 0x80, 0xC0, 7,
                                         7, 40, 5, 6, 0x81, 8,    8, 0, 1,    2 };
    WithVectorsOfAllLengths([&] {
        for (size_t length = 0; length <= whole.size(); ++length)
            for (size_t room = 0; room < 300; ++room) {
                const std::vector<uint8_t> cut(whole.begin(), whole.begin() + (ptrdiff_t)length);
                REQUIRE(IsUnpacked(random, cut, room, SlowlyUnpacked(cut, room), UnpackBytes));
                REQUIRE(IsUnpacked(random, cut, room, SlowlyUnpackedWords(cut, room), UnpackWords));
            }
    });
}

TEST_CASE("UnpackBits: rows of all lengths come back into memory of just their size")
{
    std::mt19937 random(9);
    WithVectorsOfAllLengths([&] {
        for (int i = 0; i < 1500; ++i) {
            const size_t size = i < 1400 ? (size_t)i + 1 : random() % 32767 + 1;
            const std::vector<uint8_t> row = RandomRow(random, size);
            std::vector<uint8_t> packets;
            PackBytes(row, packets);
            const auto source = ExactCopy(packets), out = ExactBlock<uint8_t>(size);
            Ptr from = reinterpret_cast<Ptr>(source.get()), to = reinterpret_cast<Ptr>(out.get());
            UnpackBits(&from, &to, (short)size);
            REQUIRE(std::equal(row.begin(), row.end(), out.get()));
            CHECK(from == reinterpret_cast<Ptr>(source.get() + packets.size()));
            CHECK(to == reinterpret_cast<Ptr>(out.get() + size));
        }
    });
}

TEST_CASE("UnpackBits: packets that reach beyond the room are cut there")
{
    unsigned char packed[] = { 9, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 0xF7, 5 }, out[14] = {};
    Ptr from = reinterpret_cast<Ptr>(packed), to = reinterpret_cast<Ptr>(out);
    UnpackBits(&from, &to, 4);
    CHECK(from == reinterpret_cast<Ptr>(packed) + 5);
    CHECK(to == reinterpret_cast<Ptr>(out) + 4);
    from = reinterpret_cast<Ptr>(packed), to = reinterpret_cast<Ptr>(out);
    UnpackBits(&from, &to, 12);
    CHECK(from == reinterpret_cast<Ptr>(packed) + sizeof packed);
    const unsigned char expected[] = { 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 5, 5, 0, 0 };
    CHECK(std::memcmp(out, expected, sizeof out) == 0);
}

TEST_CASE("UnpackBits: nothing is read in the page behind the packets")
{
    const size_t page = (size_t)sysconf(_SC_PAGESIZE);
    auto* pages = static_cast<uint8_t*>(
        mmap(nullptr, 2 * page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
    REQUIRE(pages != MAP_FAILED);
    REQUIRE(mprotect(pages + page, page, PROT_NONE) == 0);
    std::mt19937 random(13);
    for (int i = 0; i < 500; ++i) {
        const std::vector<uint8_t> row = RandomRow(random, random() % 1500 + 1);
        std::vector<uint8_t> packets, out(row.size());
        PackBytes(row, packets);
        uint8_t* const source =
            std::copy(packets.rbegin(), packets.rend(), std::reverse_iterator(pages + page)).base();
        Ptr from = reinterpret_cast<Ptr>(source), to = reinterpret_cast<Ptr>(out.data());
        UnpackBits(&from, &to, (short)row.size());
        REQUIRE(out == row);
    }
    munmap(pages, 2 * page);
}

TEST_CASE("UnpackBits: null pointers and no room change nothing")
{
    unsigned char byte = 5;
    Ptr at = reinterpret_cast<Ptr>(&byte), none = nullptr;
    UnpackBits(nullptr, &at, 1);
    UnpackBits(&at, nullptr, 1);
    UnpackBits(&none, &at, 1);
    UnpackBits(&at, &at, 0);
    PackBits(&at, &at, -1);
    CHECK(byte == 5);
    CHECK(at == reinterpret_cast<Ptr>(&byte));
}

TEST_CASE("PackWords: words come back in native order")
{
    std::mt19937 random(10);
    for (int i = 0; i < 500; ++i) {
        std::vector<uint16_t> row(random() % 700 + 1);
        for (size_t k = 0; k < row.size(); ++k)
            row[k] = k && random() % 2 ? row[k - 1] : (uint16_t)random();
        std::vector<uint8_t> packets;
        PackWords(row, packets);
        CHECK(IsUnpacked(random, packets, row.size(), row, UnpackWords));
    }
}
