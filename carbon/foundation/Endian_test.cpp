#include <Carbon/Endian.h>

#include <doctest/doctest.h>

TEST_CASE("Endian: to and from big-endian the bytes change places, to and from little-endian they stay")
{
    CHECK(Endian16_Swap(0x1234) == 0x3412);
    CHECK(Endian32_Swap(0x12345678) == 0x78563412);
    CHECK(Endian64_Swap(0x0123456789ABCDEF) == 0xEFCDAB8967452301);
    CHECK(EndianS16_BtoN(0x0080) == -0x8000);
    CHECK(EndianS16_NtoB(-2) == (SInt16)0xFEFF);
    CHECK(EndianS32_BtoN(0x00000080) == (SInt32)0x80000000);
    CHECK(EndianS64_LtoB(1) == (SInt64)1 << 56);
    CHECK(EndianU16_LtoN(0x1234) == 0x1234);
    CHECK(EndianU32_NtoL(0x12345678) == 0x12345678);
    CHECK(EndianU64_BtoL(0xFF) == 0xFF00000000000000);
}

TEST_CASE("Endian: there and back is where it was")
{
    const SInt64 values[] = { 0, 1, -1, 0x123456789ABCDEF, INT64_MIN };
    for (const SInt64 value : values) {
        CHECK(EndianS16_BtoN(EndianS16_NtoB((SInt16)value)) == (SInt16)value);
        CHECK(EndianU32_LtoB(EndianU32_BtoL((UInt32)value)) == (UInt32)value);
        CHECK(EndianS64_NtoB(EndianS64_BtoN(value)) == value);
    }
}
