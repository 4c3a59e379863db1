// UTF-8 as the machine speaks it, into the UTF-16 of the managers.
#ifndef LAMPBLACK_HOST_UNICODE_H
#define LAMPBLACK_HOST_UNICODE_H

#include <string_view>

namespace lampblack::host {

// Takes the first code point off the text, which must not be empty; U+FFFD for bytes that are not UTF-8.
inline char32_t NextCodePoint(std::string_view& ioText)
{
    const auto byte = [&](size_t i) { return static_cast<unsigned char>(ioText[i]); };
    const unsigned first = byte(0);
    const size_t length = first < 0x80   ? 1
                          : first < 0xC2 ? 0
                          : first < 0xE0 ? 2
                          : first < 0xF0 ? 3
                          : first < 0xF5 ? 4
                                         : 0;
    char32_t point = length == 1 ? first : first & (0x7Fu >> length);
    bool good = length != 0 && length <= ioText.size();
    for (size_t i = 1; good && i < length; ++i) {
        good = (byte(i) & 0xC0) == 0x80;
        point = point << 6 | (byte(i) & 0x3F);
    }
    const bool shortest = length < 3 || point >= (length == 3 ? 0x800u : 0x10000u);
    good = good && shortest && point < 0x110000 && (point < 0xD800 || point > 0xDFFF);
    ioText.remove_prefix(good ? length : 1);
    return good ? point : 0xFFFD;
}

// Appends to an array of inCapacity units; answers the new length, unchanged when there is no room.
template <class Unit>
int AppendUtf16(Unit* ioText, int inLength, int inCapacity, char32_t inPoint)
{
    const int units = inPoint < 0x10000 ? 1 : 2;
    if (inLength + units > inCapacity)
        return inLength;
    if (units == 1) {
        ioText[inLength] = static_cast<Unit>(inPoint);
    } else {
        ioText[inLength] = static_cast<Unit>(0xD800 + ((inPoint - 0x10000) >> 10));
        ioText[inLength + 1] = static_cast<Unit>(0xDC00 + (inPoint & 0x3FF));
    }
    return inLength + units;
}

} // namespace lampblack::host

#endif
