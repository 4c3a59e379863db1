// Each type belongs to a kin; a value goes through the widest member of its kin.
#include "events/Coercions.h"

#include "foundation/MacRoman.h"

#include <Carbon/CarbonEvents.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <string>

namespace lampblack::events {

namespace {

enum class Kin { None, Boolean, Signed, Unsigned, Real, Point, Rectangle, Text, Pointer };

struct TypeInfo {
    EventParamType type;
    Kin kin;
    UInt8 size; // 0: any
};

constexpr TypeInfo kTypes[] = {
    { typeBoolean, Kin::Boolean, 1 },
    { typeSInt16, Kin::Signed, 2 },
    { typeUInt16, Kin::Unsigned, 2 },
    { typeSInt32, Kin::Signed, 4 },
    { typeUInt32, Kin::Unsigned, 4 },
    { typeSInt64, Kin::Signed, 8 },
    { typeUInt64, Kin::Unsigned, 8 },
    { typeType, Kin::Unsigned, 4 },
    { typeEnumerated, Kin::Unsigned, 4 },
    { typeMouseButton, Kin::Unsigned, 2 },
    { typeMouseWheelAxis, Kin::Unsigned, 2 },
    { typeWindowPartCode, Kin::Signed, 2 },
    { typeWindowDefPartCode, Kin::Signed, 2 },
    { typeControlPartCode, Kin::Signed, 2 },
    { typeMenuItemIndex, Kin::Unsigned, 2 },
    { typeMenuCommand, Kin::Unsigned, 4 },
    { typeMenuTrackingMode, Kin::Unsigned, 4 },
    { typeIEEE32BitFloatingPoint, Kin::Real, 4 },
    { typeIEEE64BitFloatingPoint, Kin::Real, 8 },
    { typeQDPoint, Kin::Point, sizeof(Point) },
    { typeHIPoint, Kin::Point, sizeof(HIPoint) },
    { typeQDRectangle, Kin::Rectangle, sizeof(Rect) },
    { typeHIRect, Kin::Rectangle, sizeof(HIRect) },
    { typeChar, Kin::Text, 0 },
    { typeUnicodeText, Kin::Text, 0 },
    { typeUTF8Text, Kin::Text, 0 },
    { typePtr, Kin::Pointer, sizeof(void*) },
    { typeVoidPtr, Kin::Pointer, sizeof(void*) },
};

const TypeInfo* InfoOf(EventParamType inType)
{
    for (const TypeInfo& info : kTypes)
        if (info.type == inType)
            return &info;
    return nullptr;
}

bool IsNumber(Kin inKin)
{
    return inKin >= Kin::Boolean && inKin <= Kin::Real;
}

template <class Value>
Value As(const UInt8* inData)
{
    Value value;
    memcpy(&value, inData, sizeof value);
    return value;
}

// A number as it was set: the sign is part of the kin, so that 64 bits of either sign fit.
struct Number {
    Kin kin;
    SInt64 integer = 0; // Unsigned: its bits
    double real = 0;
};

Number ReadNumber(const TypeInfo& inType, const UInt8* inData)
{
    if (inType.kin == Kin::Real)
        return { Kin::Real, 0, inType.size == 4 ? As<float>(inData) : As<double>(inData) };
    if (inType.kin == Kin::Boolean)
        return { Kin::Signed, *inData != 0, 0 };
    const bool isSigned = inType.kin == Kin::Signed;
    switch (inType.size) {
    case 2: return { inType.kin, isSigned ? As<SInt16>(inData) : As<UInt16>(inData), 0 };
    case 4: return { inType.kin, isSigned ? SInt64{ As<SInt32>(inData) } : As<UInt32>(inData), 0 };
    default: return { inType.kin, As<SInt64>(inData), 0 };
    }
}

double RealOf(const Number& inNumber)
{
    if (inNumber.kin == Kin::Real)
        return inNumber.real;
    return inNumber.kin == Kin::Unsigned ? (double)(UInt64)inNumber.integer : (double)inNumber.integer;
}

// Rounds reals to the nearest integer; answers false where that has no 64 bits of the wanted sign.
bool IntegerOf(const Number& inNumber, bool inSigned, SInt64* outInteger)
{
    if (inNumber.kin == Kin::Real) {
        const double real = std::round(inNumber.real);
        const double limit = inSigned ? 0x1p63 : 0x1p64;
        if (!(real >= (inSigned ? -0x1p63 : 0) && real < limit))
            return false;
        *outInteger = inSigned ? (SInt64)real : (SInt64)(UInt64)real;
        return true;
    }
    *outInteger = inNumber.integer;
    return inNumber.integer >= 0 || inSigned == (inNumber.kin == Kin::Signed);
}

bool Fits(SInt64 inInteger, const TypeInfo& inType)
{
    if (inType.size == 8)
        return true;
    const int bits = inType.size * 8;
    if (inType.kin == Kin::Unsigned)
        return (UInt64)inInteger >> bits == 0;
    const SInt64 limit = SInt64{ 1 } << (bits - 1);
    return inInteger >= -limit && inInteger < limit;
}

struct Bytes {
    UInt8 bytes[sizeof(HIRect)];
    size_t size = 0;

    template <class Value>
    void Write(const Value& inValue)
    {
        memcpy(bytes, &inValue, sizeof inValue);
        size = sizeof inValue;
    }
};

bool WriteNumber(const Number& inNumber, const TypeInfo& inType, Bytes* outBytes)
{
    if (inType.kin == Kin::Real) {
        if (inType.size == 4)
            outBytes->Write((float)RealOf(inNumber));
        else
            outBytes->Write(RealOf(inNumber));
        return true;
    }
    if (inType.kin == Kin::Boolean) {
        outBytes->Write((Boolean)(RealOf(inNumber) != 0));
        return true;
    }
    SInt64 integer = 0;
    if (!IntegerOf(inNumber, inType.kin == Kin::Signed, &integer) || !Fits(integer, inType))
        return false;
    memcpy(outBytes->bytes, &integer, inType.size); // little-endian: the low bytes are first
    outBytes->size = inType.size;
    return true;
}

short ShortOf(double inValue)
{
    constexpr double low = std::numeric_limits<short>::min(), high = std::numeric_limits<short>::max();
    return inValue >= low ? (short)std::fmin(std::floor(inValue), high) : (short)low;
}

void WritePoint(const Found& inValue, EventParamType inTo, Bytes* outBytes)
{
    if (inTo == typeHIPoint) {
        const Point point = As<Point>(inValue.data);
        outBytes->Write(HIPoint{ (CGFloat)point.h, (CGFloat)point.v });
    } else {
        const HIPoint point = As<HIPoint>(inValue.data);
        outBytes->Write(Point{ ShortOf(point.y), ShortOf(point.x) });
    }
}

void WriteRectangle(const Found& inValue, EventParamType inTo, Bytes* outBytes)
{
    if (inTo == typeHIRect) {
        const Rect r = As<Rect>(inValue.data);
        outBytes->Write(HIRect{ { (CGFloat)r.left, (CGFloat)r.top },
                                { (CGFloat)(r.right - r.left), (CGFloat)(r.bottom - r.top) } });
    } else {
        const HIRect r = As<HIRect>(inValue.data);
        outBytes->Write(Rect{ ShortOf(r.origin.y), ShortOf(r.origin.x), ShortOf(r.origin.y + r.size.height),
                              ShortOf(r.origin.x + r.size.width) });
    }
}

std::string Utf8Of(const Found& inValue)
{
    const char* text = reinterpret_cast<const char*>(inValue.data);
    if (inValue.type == typeChar)
        return foundation::Utf8FromMacRoman({ text, inValue.size });
    if (inValue.type == typeUTF8Text)
        return { text, inValue.size };
    std::u16string units(inValue.size / 2, 0);
    memcpy(units.data(), inValue.data, units.size() * 2);
    return foundation::Utf8FromUtf16(units);
}

OSStatus Deliver(const void* inBytes, size_t inSize, size_t inBufferSize, void* outData, size_t* outSize)
{
    *outSize = inSize;
    const size_t count = inBufferSize < inSize ? inBufferSize : inSize;
    if (outData && count)
        memcpy(outData, inBytes, count);
    return noErr;
}

OSStatus CoerceText(const Found& inValue, EventParamType inTo, size_t inBufferSize, void* outData,
                    size_t* outSize)
{
    const std::string utf8 = Utf8Of(inValue);
    if (inTo == typeUTF8Text)
        return Deliver(utf8.data(), utf8.size(), inBufferSize, outData, outSize);
    if (inTo == typeChar) {
        const std::string roman = foundation::MacRomanFromUtf8(utf8);
        return Deliver(roman.data(), roman.size(), inBufferSize, outData, outSize);
    }
    const std::u16string units = foundation::Utf16FromUtf8(utf8);
    return Deliver(units.data(), units.size() * 2, inBufferSize, outData, outSize);
}

bool Convert(const Found& inValue, const TypeInfo& inFrom, const TypeInfo& inTo, Bytes* outBytes)
{
    if (IsNumber(inFrom.kin))
        return IsNumber(inTo.kin) && WriteNumber(ReadNumber(inFrom, inValue.data), inTo, outBytes);
    if (inFrom.kin != inTo.kin)
        return false;
    switch (inFrom.kin) {
    case Kin::Point: WritePoint(inValue, inTo.type, outBytes); return true;
    case Kin::Rectangle: WriteRectangle(inValue, inTo.type, outBytes); return true;
    case Kin::Pointer: outBytes->Write(As<void*>(inValue.data)); return true;
    default: return false;
    }
}

} // namespace

OSStatus Coerce(const Found& inValue, EventParamType inTo, size_t inBufferSize, void* outData,
                size_t* outSize)
{
    const TypeInfo* from = InfoOf(inValue.type);
    const TypeInfo* to = InfoOf(inTo);
    if (!from || !to)
        return errAECoercionFail;
    if (from->kin == Kin::Text && to->kin == Kin::Text)
        return CoerceText(inValue, inTo, inBufferSize, outData, outSize);
    Bytes bytes;
    if (!from->size || inValue.size != from->size || !Convert(inValue, *from, *to, &bytes))
        return errAECoercionFail;
    return Deliver(bytes.bytes, bytes.size, inBufferSize, outData, outSize);
}

} // namespace lampblack::events
