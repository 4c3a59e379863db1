// The run-length coding of pixel rows, by bytes or by 16-bit words. A packet is a count byte n and what it
// says: 0 to 127, n + 1 units follow as they are; -1 to -127, one unit stands for 1 - n; -128 for nothing.
#ifndef LAMPBLACK_PICTURES_PACKBITS_H
#define LAMPBLACK_PICTURES_PACKBITS_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace lampblack::pictures {

// Packets, and how far memory behind them may be read besides: rows are packed one behind the other.
struct Packets {
    const uint8_t* begin;
    const uint8_t* end;
    const uint8_t* readable; // end or beyond
};

// How many units of memory there must be behind the room that is unpacked into.
inline constexpr size_t kUnpackSlack = 128;

// Unpacks until the packets or the room are at their end, and answers how many units are written. A packet
// that reaches past either is cut. What is beyond the answer, the slack included, may be changed.
size_t UnpackBytes(const Packets&, uint8_t* out, size_t room);
size_t UnpackWords(const Packets&, uint16_t* out, size_t room); // big-endian words, written in native order

// Appends the packets of a row: equal units from three on (two, for words) become a run.
void PackBytes(std::span<const uint8_t> row, std::vector<uint8_t>& ioPackets);
void PackWords(std::span<const uint16_t> row, std::vector<uint8_t>& ioPackets);

} // namespace lampblack::pictures

#endif
