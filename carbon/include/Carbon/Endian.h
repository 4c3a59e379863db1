// Numbers of one byte order as numbers of another: B is big-endian, L little-endian, N native, which is
// little-endian here. Begin at EndianS16_BtoN, which answers a big-endian SInt16 as this machine has it.
#ifndef LAMPBLACK_CARBON_ENDIAN_H
#define LAMPBLACK_CARBON_ENDIAN_H

#include <Carbon/MacTypes.h>

// The bytes in the opposite order.
constexpr UInt16 Endian16_Swap(UInt16 value)
{
    return __builtin_bswap16(value);
}
constexpr UInt32 Endian32_Swap(UInt32 value)
{
    return __builtin_bswap32(value);
}
constexpr UInt64 Endian64_Swap(UInt64 value)
{
    return __builtin_bswap64(value);
}

constexpr SInt16 EndianS16_BtoN(SInt16 value)
{
    return (SInt16)Endian16_Swap((UInt16)value);
}
constexpr SInt16 EndianS16_NtoB(SInt16 value)
{
    return (SInt16)Endian16_Swap((UInt16)value);
}
constexpr SInt16 EndianS16_BtoL(SInt16 value)
{
    return (SInt16)Endian16_Swap((UInt16)value);
}
constexpr SInt16 EndianS16_LtoB(SInt16 value)
{
    return (SInt16)Endian16_Swap((UInt16)value);
}
constexpr SInt16 EndianS16_LtoN(SInt16 value)
{
    return value;
}
constexpr SInt16 EndianS16_NtoL(SInt16 value)
{
    return value;
}

constexpr UInt16 EndianU16_BtoN(UInt16 value)
{
    return Endian16_Swap(value);
}
constexpr UInt16 EndianU16_NtoB(UInt16 value)
{
    return Endian16_Swap(value);
}
constexpr UInt16 EndianU16_BtoL(UInt16 value)
{
    return Endian16_Swap(value);
}
constexpr UInt16 EndianU16_LtoB(UInt16 value)
{
    return Endian16_Swap(value);
}
constexpr UInt16 EndianU16_LtoN(UInt16 value)
{
    return value;
}
constexpr UInt16 EndianU16_NtoL(UInt16 value)
{
    return value;
}

constexpr SInt32 EndianS32_BtoN(SInt32 value)
{
    return (SInt32)Endian32_Swap((UInt32)value);
}
constexpr SInt32 EndianS32_NtoB(SInt32 value)
{
    return (SInt32)Endian32_Swap((UInt32)value);
}
constexpr SInt32 EndianS32_BtoL(SInt32 value)
{
    return (SInt32)Endian32_Swap((UInt32)value);
}
constexpr SInt32 EndianS32_LtoB(SInt32 value)
{
    return (SInt32)Endian32_Swap((UInt32)value);
}
constexpr SInt32 EndianS32_LtoN(SInt32 value)
{
    return value;
}
constexpr SInt32 EndianS32_NtoL(SInt32 value)
{
    return value;
}

constexpr UInt32 EndianU32_BtoN(UInt32 value)
{
    return Endian32_Swap(value);
}
constexpr UInt32 EndianU32_NtoB(UInt32 value)
{
    return Endian32_Swap(value);
}
constexpr UInt32 EndianU32_BtoL(UInt32 value)
{
    return Endian32_Swap(value);
}
constexpr UInt32 EndianU32_LtoB(UInt32 value)
{
    return Endian32_Swap(value);
}
constexpr UInt32 EndianU32_LtoN(UInt32 value)
{
    return value;
}
constexpr UInt32 EndianU32_NtoL(UInt32 value)
{
    return value;
}

constexpr SInt64 EndianS64_BtoN(SInt64 value)
{
    return (SInt64)Endian64_Swap((UInt64)value);
}
constexpr SInt64 EndianS64_NtoB(SInt64 value)
{
    return (SInt64)Endian64_Swap((UInt64)value);
}
constexpr SInt64 EndianS64_BtoL(SInt64 value)
{
    return (SInt64)Endian64_Swap((UInt64)value);
}
constexpr SInt64 EndianS64_LtoB(SInt64 value)
{
    return (SInt64)Endian64_Swap((UInt64)value);
}
constexpr SInt64 EndianS64_LtoN(SInt64 value)
{
    return value;
}
constexpr SInt64 EndianS64_NtoL(SInt64 value)
{
    return value;
}

constexpr UInt64 EndianU64_BtoN(UInt64 value)
{
    return Endian64_Swap(value);
}
constexpr UInt64 EndianU64_NtoB(UInt64 value)
{
    return Endian64_Swap(value);
}
constexpr UInt64 EndianU64_BtoL(UInt64 value)
{
    return Endian64_Swap(value);
}
constexpr UInt64 EndianU64_LtoB(UInt64 value)
{
    return Endian64_Swap(value);
}
constexpr UInt64 EndianU64_LtoN(UInt64 value)
{
    return value;
}
constexpr UInt64 EndianU64_NtoL(UInt64 value)
{
    return value;
}

#endif
