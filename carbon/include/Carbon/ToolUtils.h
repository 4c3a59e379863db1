// Halves of long integers (what MenuSelect, GrowWindow and DeltaPoint answer) and single bits.
#ifndef LAMPBLACK_CARBON_TOOLUTILS_H
#define LAMPBLACK_CARBON_TOOLUTILS_H

#include <Carbon/MacTypes.h>

LAMPBLACK_BEGIN_C

SInt16 HiWord(SInt32 x);
SInt16 LoWord(SInt32 x);

// BitTst, BitSet, BitClr
//
// One bit of bytes. Units: bit 0 is the highest bit of the first byte. A null pointer has no bits.
Boolean BitTst(const void* bytePtr, long bitNum);
void BitSet(void* bytePtr, long bitNum);
void BitClr(void* bytePtr, long bitNum);

long BitAnd(long value1, long value2);
long BitOr(long value1, long value2);
long BitXor(long value1, long value2);
long BitNot(long value);
// To the left for a positive count, to the right for a negative one, within 32 bits; zeros come in. The count
// is taken modulo 32.
long BitShift(long value, short count);

LAMPBLACK_END_C

#endif
