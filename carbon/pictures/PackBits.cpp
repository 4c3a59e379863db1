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
// What is not known to be readable is read only within the page of what was asked for, where nothing can
// fail.
static bool MayRead(const Packets& inPackets, const uint8_t* inFrom, ptrdiff_t inCount)
{
    static constexpr uintptr_t kPage = 4096;
    if (inPackets.readable)
        return inPackets.readable - inFrom >= inCount;
    return (reinterpret_cast<uintptr_t>(inFrom) & (kPage - 1)) <= kPage - (uintptr_t)inCount;
}

// Reads bytes behind the source that are not used.
#define LAMPBLACK_READS_ON __attribute__((no_sanitize("address")))

// One block of 16 bytes: what follows the count byte, or the byte that repeats, as the mask says.
LAMPBLACK_READS_ON static inline void PutBlock(const uint8_t* inPlain, __m128i inIsRun, __m128i inRun,
                                               uint8_t* out)
{
    const __m128i plain = _mm_loadu_si128(reinterpret_cast<const __m128i*>(inPlain));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), _mm_or_si128(inRun, _mm_andnot_si128(inIsRun, plain)));
}

// Neither the kind of packet nor its length makes a branch, since both come as if by chance: every packet
// writes four blocks, of which the next packet overwrites what is too much. Answers where it stopped: at a
// longer packet, or short of an end.
LAMPBLACK_READS_ON static const uint8_t* UnpackFast(const Packets& inPackets, uint8_t*& ioAt,
                                                    const uint8_t* inRoomEnd)
{
    static constexpr ptrdiff_t kBlocks = 64;
    const uint8_t* from = inPackets.begin;
    uint8_t* to = ioAt;
    while (inPackets.end - from > kBlocks && inRoomEnd - to >= kBlocks &&
           MayRead(inPackets, from, kBlocks + 1)) {
        const int n = (int8_t)from[0];
        const int isRun = n >> 31; // all bits or none
        const int count = 1 + ((n ^ isRun) - isRun);
        if (count > kBlocks)
            break;
        const __m128i mask = _mm_set1_epi32(isRun);
        const __m128i run = _mm_and_si128(mask, _mm_set1_epi8((char)from[1]));
        for (int i = 0; i < kBlocks; i += 16)
            PutBlock(from + 1 + i, mask, run, to + i);
        from += 2 + (n & ~isRun);
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

// One packet, cut at both ends.
static const uint8_t* UnpackOne(const uint8_t* inFrom, const uint8_t* inEnd, uint8_t*& ioAt,
                                const uint8_t* inRoomEnd)
{
    const int n = (int8_t)*inFrom++;
    if (n == -128 || inFrom == inEnd)
        return inFrom;
    const auto room = (size_t)(inRoomEnd - ioAt);
    if (n < 0) {
        const size_t count = std::min((size_t)(1 - n), room);
        std::memset(ioAt, *inFrom, count);
        ioAt += count;
        return inFrom + 1;
    }
    const size_t count = std::min({ (size_t)(n + 1), room, (size_t)(inEnd - inFrom) });
    std::memcpy(ioAt, inFrom, count);
    ioAt += count;
    return inFrom + count;
}

size_t UnpackBytes(const Packets& inPackets, uint8_t* out, size_t inRoom)
{
    uint8_t* to = out;
    const uint8_t* const roomEnd = out + inRoom;
    const uint8_t* from = inPackets.begin;
    while (inPackets.end - from > 1 && to < roomEnd) {
        from = UnpackFast({ from, inPackets.end, inPackets.readable }, to, roomEnd);
        if (inPackets.end - from > 1 && to < roomEnd)
            from = UnpackOne(from, inPackets.end, to, roomEnd);
    }
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

// Packet by packet where the fast way stops: at the end of a page, and of the room.
void UnpackBits(Ptr* srcPtr, Ptr* dstPtr, short dstBytes)
{
    static constexpr int kFarAway = 1 << 20; // the source is trusted
    if (!srcPtr || !dstPtr || !*srcPtr || !*dstPtr || dstBytes <= 0)
        return;
    const auto* from = reinterpret_cast<const uint8_t*>(*srcPtr);
    auto* to = reinterpret_cast<uint8_t*>(*dstPtr);
    const uint8_t* const roomEnd = to + dstBytes;
    while (to < roomEnd) {
        from = UnpackFast({ from, from + kFarAway, nullptr }, to, roomEnd);
        if (to < roomEnd)
            from = UnpackOne(from, from + kFarAway, to, roomEnd);
    }
    *srcPtr = reinterpret_cast<Ptr>(const_cast<uint8_t*>(from));
    *dstPtr = reinterpret_cast<Ptr>(to);
}
