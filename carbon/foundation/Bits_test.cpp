// Halves of long integers, and single bits.
#include <Carbon/ToolUtils.h>

#include <doctest/doctest.h>

TEST_CASE("HiWord, LoWord: the halves with their signs")
{
    CHECK(HiWord(0x00810003) == 0x81);
    CHECK(LoWord(0x00810003) == 3);
    CHECK(HiWord(-1) == -1);
    CHECK(LoWord(0x0001FFFE) == -2);
}

TEST_CASE("BitTst, BitSet, BitClr: bit 0 is the highest of the first byte; null has none")
{
    UInt8 bytes[2] = { 0x80, 0x01 };
    CHECK(BitTst(bytes, 0));
    CHECK_FALSE(BitTst(bytes, 1));
    CHECK(BitTst(bytes, 15));
    BitSet(bytes, 7);
    BitClr(bytes, 0);
    BitClr(bytes, 15);
    CHECK(bytes[0] == 1);
    CHECK(bytes[1] == 0);
    CHECK_FALSE(BitTst(nullptr, 0));
    BitSet(nullptr, 0);
    BitClr(nullptr, 0);
}

TEST_CASE("BitAnd, BitOr, BitXor, BitNot, BitShift: as their operators, the shift within 32 bits")
{
    CHECK(BitAnd(6, 3) == 2);
    CHECK(BitOr(6, 3) == 7);
    CHECK(BitXor(6, 3) == 5);
    CHECK(BitNot(0) == -1);
    CHECK(BitShift(1, 4) == 16);
    CHECK(BitShift(16, -4) == 1);
    CHECK((UInt32)BitShift(1, 31) == 0x80000000u);
    CHECK(BitShift((long)0x80000000u, -31) == 1);
    CHECK(BitShift(5, 32) == 5);
}
