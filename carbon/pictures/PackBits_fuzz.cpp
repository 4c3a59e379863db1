// Any bytes as packets of bytes and of words, in blocks of their exact size: what comes out is what reading
// packet by packet gives. The first two bytes say how much room there is, the third which vectors are used.
#include "PackBits.h"

#include <quickdraw/Vectors.h>

#include <algorithm>
#include <memory>

using namespace lampblack;
using namespace lampblack::pictures;

namespace {

template <class Unit>
Unit UnitAt(const uint8_t* inAt)
{
    return sizeof(Unit) == 1 ? (Unit)inAt[0] : (Unit)(inAt[0] << 8 | inAt[1]);
}

template <class Unit>
std::vector<Unit> SlowlyUnpacked(const uint8_t* inAt, const uint8_t* inEnd, size_t inRoom)
{
    std::vector<Unit> out;
    while (inEnd - inAt > (ptrdiff_t)sizeof(Unit) && out.size() < inRoom) {
        const int n = (int8_t)*inAt++;
        if (n == -128)
            continue;
        const size_t count = n < 0 ? 1 : std::min((size_t)n + 1, (size_t)(inEnd - inAt) / sizeof(Unit));
        for (size_t i = 0; i < count && out.size() < inRoom; ++i, inAt += sizeof(Unit))
            out.insert(out.end(), n < 0 ? std::min((size_t)(1 - n), inRoom - out.size()) : 1,
                       UnitAt<Unit>(inAt));
    }
    return out;
}

template <class Unit>
void Check(std::span<const uint8_t> inPackets, size_t inRoom,
           size_t (*inUnpack)(const Packets&, Unit*, size_t))
{
    const std::unique_ptr<uint8_t[]> packets(new uint8_t[inPackets.size()]);
    const std::unique_ptr<Unit[]> out(new Unit[inRoom + kUnpackSlack]);
    std::copy(inPackets.begin(), inPackets.end(), packets.get());
    const uint8_t* const end = packets.get() + inPackets.size();
    const size_t count = inUnpack({ packets.get(), end, end }, out.get(), inRoom);
    const std::vector<Unit> expected = SlowlyUnpacked<Unit>(packets.get(), end, inRoom);
    if (count != expected.size() || !std::equal(expected.begin(), expected.end(), out.get()))
        __builtin_trap();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* inData, size_t inSize)
{
    if (inSize < 3)
        return 0;
    const size_t room = (size_t)(inData[0] << 8 | inData[1]) % 4096;
    quickdraw::gMayUseAvx2 = inData[2] & 1;
    Check<uint8_t>({ inData + 3, inSize - 3 }, room, UnpackBytes);
    Check<uint16_t>({ inData + 3, inSize - 3 }, room, UnpackWords);
    return 0;
}
