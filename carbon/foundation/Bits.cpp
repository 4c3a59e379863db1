// Halves of long integers, and single bits.
#include <Carbon/ToolUtils.h>

namespace {

UInt8 MaskOf(long inBit)
{
    return (UInt8)(0x80 >> (inBit & 7));
}

} // namespace

SInt16 HiWord(SInt32 x)
{
    return (SInt16)(x >> 16);
}

SInt16 LoWord(SInt32 x)
{
    return (SInt16)x;
}

Boolean BitTst(const void* bytePtr, long bitNum)
{
    return bytePtr && (((const UInt8*)bytePtr)[bitNum >> 3] & MaskOf(bitNum)) != 0;
}

void BitSet(void* bytePtr, long bitNum)
{
    if (bytePtr)
        ((UInt8*)bytePtr)[bitNum >> 3] |= MaskOf(bitNum);
}

void BitClr(void* bytePtr, long bitNum)
{
    if (bytePtr)
        ((UInt8*)bytePtr)[bitNum >> 3] &= (UInt8)~MaskOf(bitNum);
}

long BitAnd(long value1, long value2)
{
    return value1 & value2;
}

long BitOr(long value1, long value2)
{
    return value1 | value2;
}

long BitXor(long value1, long value2)
{
    return value1 ^ value2;
}

long BitNot(long value)
{
    return ~value;
}

long BitShift(long value, short count)
{
    const UInt32 bits = (UInt32)value;
    const int distance = count % 32;
    return (SInt32)(distance >= 0 ? bits << distance : bits >> -distance);
}
