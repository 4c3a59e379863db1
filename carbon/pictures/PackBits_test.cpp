#include "PackBits.h"

#include <Carbon/Quickdraw.h>

#include <doctest/doctest.h>

#include <cstring>
#include <random>

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

std::vector<uint8_t> RandomRow(std::mt19937& random, size_t size)
{
    std::vector<uint8_t> row;
    while (row.size() < size)
        row.insert(row.end(), random() % 3 == 0 ? random() % 200 + 1 : 1, (uint8_t)(random() % 7));
    row.resize(size);
    return row;
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
        std::vector<uint8_t> out(row.size());
        CHECK(
            UnpackBytes({ packets.data(), packets.data() + packets.size(), packets.data() + packets.size() },
                        out.data(), out.size()) == row.size());
        CHECK(out == row);
    }
}

TEST_CASE("UnpackBytes: any bytes in any room give what reading one by one gives")
{
    std::mt19937 random(8);
    for (int i = 0; i < 5000; ++i) {
        std::vector<uint8_t> packets(random() % 600);
        for (uint8_t& byte : packets)
            byte = (uint8_t)(random() % 4 ? random() % 20 : random());
        std::vector<uint8_t> out(random() % 2000 + 1);
        const uint8_t* end = packets.data() + packets.size();
        const size_t done = UnpackBytes({ packets.data(), end, end }, out.data(), out.size());
        const std::vector<uint8_t> expected = SlowlyUnpacked(packets, out.size());
        CHECK(done == expected.size());
        CHECK(std::equal(expected.begin(), expected.end(), out.begin()));
    }
}

TEST_CASE("UnpackBits: long and short rows come back, and both pointers move behind them")
{
    std::mt19937 random(9);
    for (const int size : { 1, 2, 127, 128, 129, 640, 1024, 1025, 2000, 32767 }) {
        const std::vector<uint8_t> row = RandomRow(random, (size_t)size);
        std::vector<uint8_t> packets;
        PackBytes(row, packets);
        std::vector<uint8_t> out((size_t)size);
        Ptr from = reinterpret_cast<Ptr>(packets.data()), to = reinterpret_cast<Ptr>(out.data());
        UnpackBits(&from, &to, (short)size);
        CHECK(out == row);
        CHECK(from == reinterpret_cast<Ptr>(packets.data() + packets.size()));
        CHECK(to == reinterpret_cast<Ptr>(out.data() + out.size()));
    }
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
        std::vector<uint16_t> out(row.size());
        const uint8_t* end = packets.data() + packets.size();
        CHECK(UnpackWords({ packets.data(), end, end }, out.data(), out.size()) == row.size());
        CHECK(out == row);
    }
}
