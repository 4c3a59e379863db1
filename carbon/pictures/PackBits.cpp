#include "PackBits.h"

#include <Carbon/Quickdraw.h>
#include <quickdraw/Vectors.h>

#include <algorithm>
#include <cstring>

namespace lampblack::pictures {

static constexpr int kMaxPacket = (int)kUnpackSlack;
static constexpr int kNothing = -128;

namespace {

// A place in the packets, and where their units go to.
template <class Unit>
struct Place {
    const uint8_t* from;
    Unit* to;
};

// Where the packets, the memory that may be read, and the room for units end.
template <class Unit>
struct Ends {
    const uint8_t *packets, *readable;
    Unit* room;
};

// For what may read bytes that nobody asked for and does not use them.
#define LAMPBLACK_READS_ON __attribute__((no_sanitize("address")))

LAMPBLACK_READS_ON inline void Read(const uint8_t* inAt, uint8_t* outUnit)
{
    *outUnit = *inAt;
}
LAMPBLACK_READS_ON inline void Read(const uint8_t* inAt, uint16_t* outUnit) // big-endian
{
    *outUnit = (uint16_t)(inAt[0] << 8 | inAt[1]);
}

// Without a branch, which compilers would like to have here.
inline ptrdiff_t IfNegative(ptrdiff_t inTest, ptrdiff_t inThen, ptrdiff_t inElse)
{
#ifdef __x86_64__
    __asm__("testq %1, %1\n\tcmovsq %2, %0" : "+r"(inElse) : "r"(inTest), "r"(inThen) : "cc");
    return inElse;
#else
    return inTest < 0 ? inThen : inElse;
#endif
}

// The packets' units in parts of 32 bytes, made of vectors of any length.
template <class Unit, int kVectorBytes>
struct Parts {
    static constexpr int kUnits = 32 / (int)sizeof(Unit), kVector = kVectorBytes / (int)sizeof(Unit);
    typedef Unit Vector __attribute__((vector_size(kVectorBytes)));

    // One unit all over.
    LAMPBLACK_READS_ON __attribute__((always_inline)) static inline void Repeat(const uint8_t* inUnit,
                                                                                int inCount, Unit* out)
    {
        Unit unit;
        Read(inUnit, &unit);
        const Vector run = Vector{} + unit;
        for (int i = 0; i < inCount; i += kVector)
            std::memcpy(out + i, &run, sizeof run);
    }
    // What follows a count, or one unit all over if the count is negative.
    LAMPBLACK_READS_ON __attribute__((always_inline)) static inline void
    Put(ptrdiff_t inN, const uint8_t* inUnits, int inCount, Unit* out)
    {
        Unit unit;
        Read(inUnits, &unit);
        const Vector isRun = Vector{} + (Unit)(inN >> 63), run = (Vector{} + unit) & isRun;
        for (int i = 0; i < inCount; i += kVector) {
            Vector plain;
            std::memcpy(&plain, inUnits + (size_t)i * sizeof(Unit), sizeof plain);
            if (sizeof(Unit) == 2)
                plain = plain << 8 | plain >> 8;
            plain = (plain & ~isRun) | run;
            std::memcpy(out + i, &plain, sizeof plain);
        }
    }
};

} // namespace

// Two packets at a time if the first one is a run, since then it is known where the second one begins before
// the first one's count is. Neither the kind of a packet nor its length makes a branch, since both come as if by
// chance: each writes a whole part, of which the next overwrites what is too much, and only long ones write
// more. Goes as far as parts may be read and answers where it is. The last packets, which may reach beyond the
// ends, begin where *outLast says. Writes as many as kUnpackSlack units behind the room.
template <class Unit, int kVectorBytes>
LAMPBLACK_READS_ON __attribute__((always_inline)) static inline Place<Unit>
UnpackPairs(Place<Unit> at, const Ends<Unit>& inEnds, Place<Unit>* outLast)
{
    using P = Parts<Unit, kVectorBytes>;
    constexpr ptrdiff_t kUnit = sizeof(Unit), kRun = 1 + kUnit, kLongest = 1 + kMaxPacket * kUnit;
    const ptrdiff_t readable = std::max<ptrdiff_t>(inEnds.readable - at.from - kRun - P::kUnits * kUnit, 0);
    const uint8_t* const stop = at.from + std::min(readable, inEnds.packets - at.from);
    Place<Unit> last = at;
    while (at.from < stop && at.to < inEnds.room) {
        const ptrdiff_t first = (int8_t)at.from[0], second = (int8_t)at.from[kRun], isRun = first >> 63;
        const ptrdiff_t length = isRun & (1 - first);
        P::Repeat(at.from + 1, P::kUnits, at.to);
        if (length > P::kUnits) [[unlikely]] {
            if (first == kNothing) {
                ++at.from;
                continue;
            }
            P::Repeat(at.from + 1, kMaxPacket, at.to);
        }
        last = at;
        at.to += length;
        if (at.to >= inEnds.room) {
            at.from += kRun;
            break;
        }
        const uint8_t* const packet = at.from + (isRun & kRun);
        const ptrdiff_t n = IfNegative(first, second, first);
        const ptrdiff_t count = 1 + ((n ^ n >> 63) - (n >> 63));
        P::Put(n, packet + 1, P::kUnits, at.to);
        if (count > P::kUnits) [[unlikely]] {
            const bool isNothing = n == kNothing;
            if (isNothing || inEnds.readable - packet < kLongest) {
                at.from = packet + isNothing;
                if (isNothing)
                    continue;
                break;
            }
            P::Put(n, packet + 1, kMaxPacket, at.to);
        }
        at.from += IfNegative(first, kRun + 1 + kUnit * (1 + IfNegative(second, 0, second)),
                              1 + kUnit * (1 + first));
        at.to += count;
    }
    *outLast = last;
    return at;
}

template <class Unit>
LAMPBLACK_READS_ON LAMPBLACK_AVX2 static Place<Unit> UnpackWithAvx2(Place<Unit> at, const Ends<Unit>& inEnds,
                                                                    Place<Unit>* outLast)
{
    return UnpackPairs<Unit, 32>(at, inEnds, outLast);
}

template <class Unit>
LAMPBLACK_READS_ON static Place<Unit> UnpackParts(Place<Unit> at, const Ends<Unit>& inEnds,
                                                  Place<Unit>* outLast)
{
    return quickdraw::HasAvx2() ? UnpackWithAvx2(at, inEnds, outLast)
                                : UnpackPairs<Unit, 16>(at, inEnds, outLast);
}

// One packet, cut at both ends.
template <class Unit>
static Place<Unit> UnpackOne(Place<Unit> at, const Ends<Unit>& inEnds)
{
    const int n = (int8_t)*at.from++;
    const size_t units = (size_t)(inEnds.packets - at.from) / sizeof(Unit),
                 room = (size_t)(inEnds.room - at.to);
    if (n == kNothing)
        return at;
    if (units == 0)
        return { inEnds.packets, at.to };
    if (n < 0) {
        const size_t count = std::min((size_t)(1 - n), room);
        Unit repeated;
        Read(at.from, &repeated);
        std::fill_n(at.to, count, repeated);
        return { at.from + sizeof(Unit), at.to + count };
    }
    const size_t count = std::min({ (size_t)n + 1, units, room });
    for (size_t i = 0; i < count; ++i)
        Read(at.from + i * sizeof(Unit), at.to + i);
    return { at.from + count * sizeof(Unit), at.to + count };
}

// As far as packets and room reach; there must be slack behind the room.
template <class Unit>
static Place<Unit> UnpackWithSlack(Place<Unit> at, const Ends<Unit>& inEnds)
{
    Place<Unit> last;
    at = UnpackParts(at, inEnds, &last);
    if (at.from > inEnds.packets || at.to > inEnds.room)
        at = last;
    while (at.from < inEnds.packets && at.to < inEnds.room)
        at = UnpackOne(at, inEnds);
    return at;
}

size_t UnpackBytes(const Packets& inPackets, uint8_t* out, size_t inRoom)
{
    const Ends<uint8_t> ends = { inPackets.end, inPackets.readable, out + inRoom };
    return (size_t)(UnpackWithSlack<uint8_t>({ inPackets.begin, out }, ends).to - out);
}

size_t UnpackWords(const Packets& inPackets, uint16_t* out, size_t inRoom)
{
    const Ends<uint16_t> ends = { inPackets.end, inPackets.readable, out + inRoom };
    return (size_t)(UnpackWithSlack<uint16_t>({ inPackets.begin, out }, ends).to - out);
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

namespace {

constexpr ptrdiff_t kPage = 4096;
constexpr ptrdiff_t kFarAway = 1 << 20; // the source is trusted
constexpr ptrdiff_t kAside = 1024;      // rows as long as that are unpacked aside, where there is slack
constexpr auto kSlack = (ptrdiff_t)kUnpackSlack;

// What is not known to be readable is read only within the page of what was asked for, where nothing can fail.
// Whole parts go before inPartsEnd, behind which there is slack, and nothing is left behind inRoomEnd.
Place<uint8_t> UnpackPages(Place<uint8_t> at, uint8_t* inPartsEnd, uint8_t* inRoomEnd)
{
    while (at.to < inPartsEnd) {
        const ptrdiff_t inPage = kPage - (ptrdiff_t)(reinterpret_cast<uintptr_t>(at.from) & (kPage - 1));
        Place<uint8_t> last;
        at = UnpackParts<uint8_t>(at, { at.from + kFarAway, at.from + inPage, inPartsEnd }, &last);
        if (at.to > inRoomEnd)
            at = last;
        if (at.to < inPartsEnd)
            at = UnpackOne<uint8_t>(at, { at.from + kFarAway, nullptr, inRoomEnd });
    }
    return at;
}

} // namespace

void UnpackBits(Ptr* srcPtr, Ptr* dstPtr, short dstBytes)
{
    if (!srcPtr || !dstPtr || !*srcPtr || !*dstPtr || dstBytes <= 0)
        return;
    Place<uint8_t> at = { reinterpret_cast<const uint8_t*>(*srcPtr), reinterpret_cast<uint8_t*>(*dstPtr) };
    uint8_t* const end = at.to + dstBytes;
    if (dstBytes > kAside)
        at = UnpackPages(at, end - kSlack, end);
    const ptrdiff_t rest = end - at.to;
    uint8_t aside[kAside + kSlack];
    at.from = UnpackPages({ at.from, aside }, aside + rest, aside + rest).from;
    std::memcpy(at.to, aside, (size_t)rest);
    *srcPtr = reinterpret_cast<Ptr>(const_cast<uint8_t*>(at.from));
    *dstPtr = reinterpret_cast<Ptr>(end);
}
