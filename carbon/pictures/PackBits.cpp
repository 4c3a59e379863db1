#include "PackBits.h"

#include <Carbon/Quickdraw.h>

#include <algorithm>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace lampblack::pictures {

static constexpr int kMaxPacket = 128; // units that one packet stands for

#ifdef __SSE2__
// Each packet is written in blocks of 16 bytes, a copy or the one byte that repeats. The kind of packet
// chooses by a mask and not by a branch, since kinds come as if by chance. Blocks are written whole: what is
// too much is overwritten by the next packet. Answers where it stopped, short of the ends.
static const uint8_t* UnpackFast(const Packets& inPackets, uint8_t*& ioAt, const uint8_t* inRoomEnd)
{
    static constexpr uint8_t kNothing[kMaxPacket] = {}; // in place of what follows a run
    const uint8_t* from = inPackets.begin;
    uint8_t* to = ioAt;
    while (inPackets.end - from > 1) {
        const int n = (int8_t)from[0];
        const int isRun = n >> 31; // all bits or none
        const int used = n == -128 ? 1 : 2 + (n & ~isRun);
        const int count = n == -128 ? 0 : 1 + ((n ^ isRun) - isRun);
        const int written = (count + 15) & ~15;
        if (inPackets.end - from < used || inPackets.readable - from < used + 15 || inRoomEnd - to < written)
            break;
        const uint8_t* plain = isRun ? kNothing : from + 1;
        const __m128i run = _mm_and_si128(_mm_set1_epi32(isRun), _mm_set1_epi8((char)from[1]));
        for (int i = 0; i < count; i += 16) {
            const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(plain + i));
            _mm_storeu_si128(reinterpret_cast<__m128i*>(to + i), _mm_or_si128(run, block));
        }
        from += used;
        to += count;
    }
    ioAt = to;
    return from;
}
#else
static const uint8_t* UnpackFast(const Packets& inPackets, uint8_t*&, const uint8_t*)
{
    return inPackets.begin;
}
#endif

// The same packet by packet, up to both ends.
static const uint8_t* UnpackRest(const uint8_t* inFrom, const uint8_t* inEnd, uint8_t*& ioAt,
                                 const uint8_t* inRoomEnd)
{
    while (inEnd - inFrom > 1 && ioAt < inRoomEnd) {
        const int n = (int8_t)*inFrom++;
        if (n == -128)
            continue;
        const auto room = (size_t)(inRoomEnd - ioAt);
        if (n < 0) {
            const size_t count = std::min((size_t)(1 - n), room);
            std::memset(ioAt, *inFrom++, count);
            ioAt += count;
        } else {
            const size_t count = std::min({ (size_t)(n + 1), room, (size_t)(inEnd - inFrom) });
            std::memcpy(ioAt, inFrom, count);
            inFrom += count;
            ioAt += count;
        }
    }
    return inFrom;
}

size_t UnpackBytes(const Packets& inPackets, uint8_t* out, size_t inRoom)
{
    uint8_t* to = out;
    const uint8_t* rest = UnpackFast(inPackets, to, out + inRoom);
    UnpackRest(rest, inPackets.end, to, out + inRoom);
    return (size_t)(to - out);
}

static uint16_t WordAt(const uint8_t* inAt)
{
    return (uint16_t)(inAt[0] << 8 | inAt[1]);
}

size_t UnpackWords(const Packets& inPackets, uint16_t* out, size_t inRoom)
{
    const uint8_t* from = inPackets.begin;
    size_t done = 0;
    while (inPackets.end - from > 2 && done < inRoom) {
        const int n = (int8_t)*from++;
        if (n == -128)
            continue;
        const size_t wanted = std::min((size_t)(n < 0 ? 1 - n : n + 1), inRoom - done);
        if (n < 0) {
            std::fill_n(out + done, wanted, WordAt(from));
            from += 2;
            done += wanted;
            continue;
        }
        const size_t count = std::min(wanted, (size_t)(inPackets.end - from) / 2);
        for (size_t i = 0; i < count; ++i)
            out[done + i] = WordAt(from + 2 * i);
        from += 2 * count;
        done += count;
    }
    return done;
}

template <typename Unit>
static size_t RunAt(std::span<const Unit> inRow, size_t inAt)
{
    const size_t end = std::min(inRow.size(), inAt + kMaxPacket);
    size_t at = inAt + 1;
    while (at < end && inRow[at] == inRow[inAt])
        ++at;
    return at - inAt;
}

static void Append(std::vector<uint8_t>& ioPackets, std::span<const uint8_t> inUnits)
{
    ioPackets.insert(ioPackets.end(), inUnits.begin(), inUnits.end());
}

static void Append(std::vector<uint8_t>& ioPackets, std::span<const uint16_t> inUnits)
{
    for (const uint16_t unit : inUnits) {
        ioPackets.push_back((uint8_t)(unit >> 8));
        ioPackets.push_back((uint8_t)unit);
    }
}

// Where the units that are written as they are end: at the next run that is worth a packet of its own.
template <typename Unit>
static size_t EndOfPlain(std::span<const Unit> inRow, size_t inAt, size_t inWorth)
{
    const size_t end = std::min(inRow.size(), inAt + kMaxPacket);
    for (size_t at = inAt; at < end;) {
        const size_t run = RunAt(inRow, at);
        if (run >= inWorth)
            return at;
        at += run;
    }
    return end;
}

template <typename Unit>
static void Pack(std::span<const Unit> inRow, size_t inWorth, std::vector<uint8_t>& ioPackets)
{
    for (size_t at = 0; at < inRow.size();) {
        const size_t run = RunAt(inRow, at);
        if (run >= inWorth) {
            ioPackets.push_back((uint8_t)(1 - (int)run));
            Append(ioPackets, inRow.subspan(at, 1));
            at += run;
            continue;
        }
        const size_t end = EndOfPlain(inRow, at, inWorth);
        ioPackets.push_back((uint8_t)(end - at - 1));
        Append(ioPackets, inRow.subspan(at, end - at));
        at = end;
    }
}

void PackBytes(std::span<const uint8_t> inRow, std::vector<uint8_t>& ioPackets)
{
    Pack(inRow, 3, ioPackets);
}

void PackWords(std::span<const uint16_t> inRow, std::vector<uint8_t>& ioPackets)
{
    Pack(inRow, 2, ioPackets);
}

} // namespace lampblack::pictures

using namespace lampblack::pictures;

void PackBits(Ptr* srcPtr, Ptr* dstPtr, short srcBytes)
{
    if (!srcPtr || !dstPtr || !*srcPtr || !*dstPtr || srcBytes <= 0)
        return;
    static std::vector<uint8_t> packets; // keeps its room from call to call
    packets.clear();
    PackBytes({ reinterpret_cast<const uint8_t*>(*srcPtr), (size_t)srcBytes }, packets);
    std::memcpy(*dstPtr, packets.data(), packets.size());
    *srcPtr += srcBytes;
    *dstPtr += packets.size();
}

// A packet fills at most 128 bytes of the room and takes two bytes or more, so that as long as the room lacks
// a thousand bytes, the source goes on for sixteen.
void UnpackBits(Ptr* srcPtr, Ptr* dstPtr, short dstBytes)
{
    static constexpr int kGoesOn = 8 * kMaxPacket;
    static constexpr int kFarAway = 1 << 20;
    if (!srcPtr || !dstPtr || !*srcPtr || !*dstPtr || dstBytes <= 0)
        return;
    const auto* from = reinterpret_cast<const uint8_t*>(*srcPtr);
    auto* to = reinterpret_cast<uint8_t*>(*dstPtr);
    const uint8_t* const roomEnd = to + dstBytes;
    const uint8_t* const trusted = from + kFarAway;
    if (dstBytes > kGoesOn)
        from = UnpackFast({ from, trusted, trusted }, to, roomEnd - kGoesOn);
    from = UnpackRest(from, trusted, to, roomEnd);
    *srcPtr = reinterpret_cast<Ptr>(const_cast<uint8_t*>(from));
    *dstPtr = reinterpret_cast<Ptr>(to);
}
