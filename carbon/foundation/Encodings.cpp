// The encodings are few and small enough for tables; the upper half of Windows Latin 1 is the one of the
// Unicode Consortium's mapping file, with the controls of ISO Latin 1 where it has no character.
#include "Encodings.h"

#include "MacRoman.h"

#include <algorithm>
#include <limits>

namespace lampblack::foundation {
namespace {

using Form = Encoding::Form;
using Order = Encoding::Order;

constexpr char16_t kWindows[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

char16_t FromLatin1(UInt8 inByte)
{
    return inByte;
}

bool ToLatin1(char32_t inCharacter, UInt8* outByte)
{
    *outByte = (UInt8)inCharacter;
    return inCharacter < 256;
}

char16_t FromAscii(UInt8 inByte)
{
    return inByte < 128 ? inByte : Encoding::kNone;
}

bool ToAscii(char32_t inCharacter, UInt8* outByte)
{
    *outByte = (UInt8)inCharacter;
    return inCharacter < 128;
}

char16_t FromWindows(UInt8 inByte)
{
    return inByte >= 0x80 && inByte < 0xA0 ? kWindows[inByte - 0x80] : inByte;
}

bool ToWindows(char32_t inCharacter, UInt8* outByte)
{
    const char16_t* found = std::find(kWindows, kWindows + 32, inCharacter);
    if (found != kWindows + 32) {
        *outByte = (UInt8)(0x80 + (found - kWindows));
        return true;
    }
    return ToLatin1(inCharacter, outByte) && (inCharacter < 0x80 || inCharacter >= 0xA0);
}

char16_t FromMacRoman(UInt8 inByte)
{
    return MacRomanToUnicode(inByte);
}

constexpr Encoding kEncodings[] = {
    { kCFStringEncodingMacRoman, Form::Bytes, Order::Native, 1, FromMacRoman, UnicodeToMacRoman },
    { kCFStringEncodingWindowsLatin1, Form::Bytes, Order::Native, 1, FromWindows, ToWindows },
    { kCFStringEncodingISOLatin1, Form::Bytes, Order::Native, 1, FromLatin1, ToLatin1 },
    { kCFStringEncodingASCII, Form::Bytes, Order::Native, 1, FromAscii, ToAscii },
    { kCFStringEncodingUTF8, Form::Utf8, Order::Native, 3 },
    { kCFStringEncodingUTF16, Form::Utf16, Order::Native, 2 },
    { kCFStringEncodingUTF16BE, Form::Utf16, Order::Big, 2 },
    { kCFStringEncodingUTF16LE, Form::Utf16, Order::Little, 2 },
    { kCFStringEncodingUTF32, Form::Utf32, Order::Native, 4 },
    { kCFStringEncodingUTF32BE, Form::Utf32, Order::Big, 4 },
    { kCFStringEncodingUTF32LE, Form::Utf32, Order::Little, 4 },
};

bool IsSurrogate(char32_t inCharacter)
{
    return inCharacter >= 0xD800 && inCharacter < 0xE000;
}

void AppendCharacter(std::u16string& ioText, char32_t inCharacter)
{
    if (inCharacter < 0x10000) {
        ioText.push_back((char16_t)inCharacter);
        return;
    }
    ioText.push_back((char16_t)(0xD7C0 + (inCharacter >> 10)));
    ioText.push_back((char16_t)(0xDC00 | (inCharacter & 0x3FF)));
}

std::optional<std::u16string> DecodeBytes(const Encoding& inEncoding, Bytes inBytes)
{
    std::u16string text(inBytes.size(), 0);
    for (size_t i = 0; i < inBytes.size(); ++i) {
        text[i] = inEncoding.fromByte(inBytes[i]);
        if (text[i] == Encoding::kNone)
            return std::nullopt;
    }
    return text;
}

std::optional<std::u16string> DecodeUtf8(Bytes inBytes, bool inExternal)
{
    std::string_view bytes((const char*)inBytes.data(), inBytes.size());
    if (inExternal && bytes.starts_with("\xEF\xBB\xBF"))
        bytes.remove_prefix(3);
    if (!IsValidUtf8(bytes))
        return std::nullopt;
    return Utf16FromUtf8(bytes);
}

char32_t LoadUnit(const uint8_t* inAt, size_t inSize, bool inBig)
{
    const char32_t value = inSize == 2 ? LoadBE16(inAt) : LoadBE32(inAt);
    if (inBig)
        return value;
    return inSize == 2 ? __builtin_bswap16((uint16_t)value) : __builtin_bswap32(value);
}

// The order of external bytes is that of their mark, which is taken off, else big-endian.
bool TakeByteOrder(const Encoding& inEncoding, size_t inUnit, Bytes& ioBytes)
{
    if (inEncoding.order != Order::Native)
        return inEncoding.order == Order::Big;
    for (const bool big : { true, false })
        if (ioBytes.size() >= inUnit && LoadUnit(ioBytes.data(), inUnit, big) == 0xFEFF) {
            ioBytes = ioBytes.subspan(inUnit);
            return big;
        }
    return true;
}

std::optional<std::u16string> DecodeUnits(const Encoding& inEncoding, Bytes inBytes, bool inExternal)
{
    const size_t unit = inEncoding.form == Form::Utf16 ? 2 : 4;
    if (inBytes.size() % unit != 0)
        return std::nullopt;
    const bool big = inExternal ? TakeByteOrder(inEncoding, unit, inBytes) : inEncoding.order == Order::Big;
    std::u16string text;
    text.reserve(inBytes.size() / unit);
    for (size_t offset = 0; offset < inBytes.size(); offset += unit) {
        const char32_t value = LoadUnit(inBytes.data() + offset, unit, big);
        if (unit == 4 && (value > 0x10FFFF || IsSurrogate(value)))
            return std::nullopt;
        AppendCharacter(text, value);
    }
    return text;
}

// Writes into a buffer as long as there is room in it.
class Output {
public:
    Output(UInt8* outBytes, size_t inRoom)
        : fBytes(outBytes), fRoom(outBytes ? inRoom : std::numeric_limits<size_t>::max())
    {
    }

    bool Put(std::string_view inBytes)
    {
        if (inBytes.size() > fRoom - fUsed)
            return false;
        if (fBytes)
            std::memcpy(fBytes + fUsed, inBytes.data(), inBytes.size());
        fUsed += inBytes.size();
        return true;
    }

    size_t Used() const { return fUsed; }

private:
    UInt8* fBytes;
    size_t fRoom;
    size_t fUsed = 0;
};

// One character in an encoding; empty when it lacks the character.
class Writer {
public:
    explicit Writer(const Encoding& inEncoding) : fEncoding(inEncoding) {}

    std::string_view Bytes(char32_t inCharacter)
    {
        fText.clear();
        if (fEncoding.form == Form::Bytes)
            PutByte(inCharacter);
        else if (fEncoding.form == Form::Utf16)
            PutUtf16(inCharacter);
        else if (!IsSurrogate(inCharacter) && fEncoding.form == Form::Utf8)
            AppendUtf8(fText, inCharacter);
        else if (!IsSurrogate(inCharacter))
            PutUnit(inCharacter, 4);
        return fText;
    }

private:
    void PutByte(char32_t inCharacter)
    {
        UInt8 byte;
        if (fEncoding.toByte(inCharacter, &byte))
            fText.push_back((char)byte);
    }

    void PutUtf16(char32_t inCharacter)
    {
        std::u16string units;
        AppendCharacter(units, inCharacter);
        for (const char16_t unit : units)
            PutUnit(unit, 2);
    }

    void PutUnit(char32_t inUnit, int inSize)
    {
        for (int i = 0; i < inSize; ++i) {
            const int shift = 8 * (fEncoding.order == Order::Big ? inSize - 1 - i : i);
            fText.push_back((char)(inUnit >> shift));
        }
    }

    const Encoding& fEncoding;
    std::string fText;
};

// The character at a place of UTF-16 text, which advances; an unpaired surrogate is answered as it is.
char32_t NextCharacter(std::u16string_view inText, size_t* ioIndex)
{
    const char32_t unit = inText[(*ioIndex)++];
    const bool isPair =
        (unit & 0xFC00) == 0xD800 && *ioIndex < inText.size() && (inText[*ioIndex] & 0xFC00) == 0xDC00;
    return isPair ? 0x10000 + ((unit - 0xD800) << 10) + (inText[(*ioIndex)++] - 0xDC00u) : unit;
}

// As above, but a letter and its mark are the one letter when that has a byte.
char32_t NextLetter(const Encoding& inEncoding, std::u16string_view inText, size_t* ioIndex)
{
    const char32_t character = NextCharacter(inText, ioIndex);
    if (inEncoding.form != Form::Bytes || *ioIndex == inText.size() || inText[*ioIndex] < 0x300)
        return character;
    const char32_t composed = ComposeAccent(character, inText[*ioIndex]);
    UInt8 byte;
    if (!composed || !inEncoding.toByte(composed, &byte))
        return character;
    ++*ioIndex;
    return composed;
}

} // namespace

const Encoding* FindEncoding(CFStringEncoding inID)
{
    for (const Encoding& encoding : kEncodings)
        if (encoding.id == inID)
            return &encoding;
    return nullptr;
}

std::optional<std::u16string> Decode(const Encoding& inEncoding, Bytes inBytes, bool inExternal)
{
    if (inEncoding.form == Form::Bytes)
        return DecodeBytes(inEncoding, inBytes);
    if (inEncoding.form == Form::Utf8)
        return DecodeUtf8(inBytes, inExternal);
    return DecodeUnits(inEncoding, inBytes, inExternal);
}

Encoded Encode(const Encoding& inEncoding, std::u16string_view inText, UInt8 inLossByte, bool inExternal,
               UInt8* outBytes, size_t inRoom)
{
    Output output(outBytes, inRoom);
    Writer writer(inEncoding);
    const bool isMarked = inExternal && !inEncoding.IsEightBit() && inEncoding.order == Order::Native;
    size_t converted = 0;
    bool fits = !isMarked || output.Put(writer.Bytes(0xFEFF));
    while (fits && converted < inText.size()) {
        size_t next = converted;
        std::string_view bytes = writer.Bytes(NextLetter(inEncoding, inText, &next));
        if (bytes.empty() && !inLossByte)
            break;
        if (bytes.empty())
            bytes = inEncoding.form == Form::Bytes ? std::string_view((const char*)&inLossByte, 1)
                                                   : writer.Bytes(inLossByte);
        fits = output.Put(bytes);
        if (fits)
            converted = next;
    }
    return { converted, output.Used() };
}

} // namespace lampblack::foundation
