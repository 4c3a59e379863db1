// Text encodings: bytes to UTF-16 and back. Begin at FindEncoding.
#ifndef LAMPBLACK_FOUNDATION_ENCODINGS_H
#define LAMPBLACK_FOUNDATION_ENCODINGS_H

#include "BigEndian.h"

#include <Carbon/CFString.h>

#include <optional>
#include <string>
#include <string_view>

namespace lampblack::foundation {

struct Encoding {
    enum class Form : uint8_t { Bytes, Utf8, Utf16, Utf32 };
    enum class Order : uint8_t { Native, Big, Little };

    CFStringEncoding id;
    Form form;
    Order order = Order::Native;
    int mostBytes; // for one UTF-16 unit

    // Of the forms of one byte a character: the character of a byte, kNone where there is none, and back.
    static constexpr char16_t kNone = 0xFFFF;
    char16_t (*fromByte)(UInt8) = nullptr;
    bool (*toByte)(char32_t, UInt8*) = nullptr;

    // Whether a zero byte ends a text of it, and a length byte counts its characters or parts of them.
    bool IsEightBit() const { return form == Form::Bytes || form == Form::Utf8; }
};

const Encoding* FindEncoding(CFStringEncoding); // null for one that is unknown

// No value when the bytes are no text of this encoding. External bytes may begin with a byte-order mark.
std::optional<std::u16string> Decode(const Encoding&, Bytes, bool inExternal = false);

struct Encoded {
    size_t units = 0; // of UTF-16, that were converted
    size_t bytes = 0; // that they took
};

// Converts whole characters until the buffer is full or, without a lossByte, the encoding lacks one. A null
// buffer has room for all of them. External UTF-16 and UTF-32 in native order get a byte-order mark.
Encoded Encode(const Encoding&, std::u16string_view, UInt8 inLossByte, bool inExternal, UInt8* outBytes,
               size_t inRoom);

} // namespace lampblack::foundation

#endif
