#include "MaskedRows.h"
#include "Vectors.h"

#include <doctest/doctest.h>

#include <cstring>
#include <memory>
#include <random>
#include <vector>

using namespace lampblack::quickdraw;

namespace {

constexpr int kDepths[] = { 8, 16, 32 };

// Bytes in a block of the heap that is no longer than they are, so that a sanitizer sees every step aside.
class Block {
public:
    Block(std::mt19937& ioRandom, ptrdiff_t inSize) : fSize((size_t)inSize), fBytes(new uint8_t[fSize])
    {
        for (size_t i = 0; i < fSize; ++i)
            fBytes[i] = (uint8_t)ioRandom();
    }
    Block(const Block& other) : fSize(other.fSize), fBytes(new uint8_t[fSize])
    {
        std::memcpy(fBytes.get(), other.fBytes.get(), fSize);
    }
    bool operator==(const Block& other) const
    {
        return fSize == other.fSize && std::memcmp(fBytes.get(), other.fBytes.get(), fSize) == 0;
    }
    uint8_t* At(ptrdiff_t inOffset) const { return fBytes.get() + inOffset; }

private:
    size_t fSize;
    std::unique_ptr<uint8_t[]> fBytes;
};

// Rows of one mask, in which long runs of equal bits come as well as any.
struct Case {
    Case(std::mt19937& ioRandom, int inDepth, int inColumns, int inBit)
        : columns(inColumns),
          rows(1 + (int)(ioRandom() % 4)),
          bit(inBit),
          pixel(inDepth / 8),
          lead((ptrdiff_t)(ioRandom() % 3) * pixel),
          rowBytes((columns + (int)(ioRandom() % 4)) * pixel + lead),
          maskRowBytes((bit + columns + 7) / 8 + (int)(ioRandom() % 3)),
          mask(ioRandom, (rows - 1) * maskRowBytes + (bit + columns + 7) / 8),
          source(ioRandom, (rows - 1) * rowBytes + lead + columns * pixel),
          destination(ioRandom, (rows - 1) * rowBytes + lead + columns * pixel)
    {
        const ptrdiff_t maskBytes = (rows - 1) * maskRowBytes + (bit + columns + 7) / 8;
        if (ioRandom() % 4 == 0)
            std::memset(mask.At(0), ioRandom() % 2 ? 0xFF : 0, (size_t)maskBytes);
        else if (ioRandom() % 2)
            std::memset(mask.At(maskBytes / 3), ioRandom() % 2 ? 0xFF : 0,
                        (size_t)(maskBytes - maskBytes / 3));
    }

    Block Picked(PickProc inPick) const
    {
        Block result = destination;
        inPick({ mask.At(0), bit, source.At(lead), result.At(lead), maskRowBytes, rowBytes, rowBytes, columns,
                 rows });
        return result;
    }

    int columns, rows, bit;
    ptrdiff_t pixel, lead, rowBytes, maskRowBytes;
    Block mask, source, destination;
};

template <class Test>
void WithVectorsOfAllLengths(Test test)
{
    for (const int kinds : { 2, 1, 0 }) {
        gMayUseAvx512 = kinds > 1;
        gMayUseAvx2 = kinds > 0;
        test();
    }
    gMayUseAvx512 = gMayUseAvx2 = true;
}

bool IsPlain(std::mt19937& ioRandom, int inDepth, int inColumns, int inBit)
{
    const Case some(ioRandom, inDepth, inColumns, inBit);
    return some.Picked(FastestPick(inDepth)) == some.Picked(PlainPick(inDepth));
}

} // namespace

TEST_CASE("Picking by mask bits: every width from every bit at every depth is what the plain loop gives")
{
    std::mt19937 random(41);
    WithVectorsOfAllLengths([&] {
        for (const int depth : kDepths)
            for (int columns = 1; columns <= 140; ++columns)
                for (int bit = 0; bit < 8; ++bit)
                    for (int i = 0; i < 3; ++i) {
                        CAPTURE(depth);
                        CAPTURE(columns);
                        CAPTURE(bit);
                        REQUIRE(IsPlain(random, depth, columns, bit + 8 * (i % 2)));
                    }
    });
}

TEST_CASE("Picking by mask bits: the plain loop copies exactly the pixels whose bit is set")
{
    const uint8_t mask[] = { 0xA1, 0x80 }, from[] = { 1, 2, 3, 4, 5, 6, 7, 8, 9, 10 };
    uint8_t to[10] = {};
    PlainPick(8)({ mask, 0, from, to, 0, 0, 0, 10, 1 });
    const uint8_t expected[] = { 1, 0, 3, 0, 0, 0, 0, 8, 9, 0 };
    CHECK(std::memcmp(to, expected, sizeof to) == 0);
}

TEST_CASE("Picking by mask bits: no rows change nothing")
{
    uint8_t to = 5;
    for (const int depth : kDepths)
        FastestPick(depth)({ &to, 0, &to, &to, 1, 1, 1, 0, 0 });
    CHECK(to == 5);
}
