#include "NumberText.h"

#include "MacText.h"

#include <algorithm>
#include <cstdio>

namespace lampblack::rsrc {

namespace {

using Look = Field::Look;

uint64_t Masked(const Field& inField, int64_t inValue)
{
    return (uint64_t)inValue & (((uint64_t)1 << inField.bits) - 1);
}

bool IsOneBit(uint64_t inValue)
{
    return inValue != 0 && (inValue & (inValue - 1)) == 0;
}

// Names that each stand for one bit, at least three of them, besides ones for no bit and for all.
bool NamesBits(const Field& inField)
{
    uint64_t all = 0;
    int bits = 0;
    for (const Constant& constant : inField.constants)
        if (const uint64_t value = Masked(inField, constant.value); IsOneBit(value)) {
            ++bits;
            all |= value;
        }
    return bits >= 3 && std::all_of(inField.constants.begin(), inField.constants.end(), [&](const auto& one) {
               const uint64_t value = Masked(inField, one.value);
               return value == 0 || IsOneBit(value) || (value & ~all) == 0;
           });
}

// "bold + italic"; empty when a bit has no name.
std::string BitNames(const Field& inField, uint64_t inRaw)
{
    std::string text;
    for (const Constant& constant : inField.constants) {
        const uint64_t value = Masked(inField, constant.value);
        if (!IsOneBit(value) || !(inRaw & value))
            continue;
        text += (text.empty() ? "" : " + ") + constant.name;
        inRaw &= ~value;
    }
    return inRaw ? "" : text;
}

std::string HexText(const Field& inField, uint64_t inRaw)
{
    char text[24];
    std::snprintf(text, sizeof text, "0x%0*llX", (inField.bits + 3) / 4, (unsigned long long)inRaw);
    return inRaw == 0 ? "0" : text;
}

std::string BinaryText(const Field& inField, uint64_t inRaw)
{
    std::string text = "0b";
    for (int bit = inField.bits - 1; bit >= 0; --bit)
        text += inRaw >> bit & 1 ? '1' : '0';
    return text;
}

bool IsPrintable(uint64_t inRaw)
{
    for (int shift = 24; shift >= 0; shift -= 8)
        if ((uint8_t)(inRaw >> shift) < 0x20)
            return false;
    return true;
}

std::string PlainText(const Field& inField, uint64_t inRaw)
{
    if (inField.bits == 1)
        return inRaw ? "true" : "false";
    switch (inField.look) {
    case Look::Hex: return HexText(inField, inRaw);
    case Look::Binary: return BinaryText(inField, inRaw);
    case Look::Literal:
        return inField.bits == 32 && IsPrintable(inRaw) ? QuotedCode((OSType)inRaw) : HexText(inField, inRaw);
    default: break;
    }
    const bool isNegative = inField.isSigned && inRaw >> (inField.bits - 1) & 1;
    return std::to_string(isNegative ? (int64_t)inRaw - ((int64_t)1 << inField.bits) : (int64_t)inRaw);
}

} // namespace

std::string NumberText(const Field& inField, uint64_t inRaw, bool* outExplains)
{
    *outExplains = true;
    for (const Constant& constant : inField.constants)
        if (Masked(inField, constant.value) == inRaw)
            return constant.name;
    if (NamesBits(inField))
        if (const std::string names = BitNames(inField, inRaw); !names.empty())
            return names;
    *outExplains = false;
    return PlainText(inField, inRaw);
}

} // namespace lampblack::rsrc
