// Taking an AppleDouble apart and laying it out anew.
#include "AppleDouble.h"

#include <algorithm>
#include <cstring>

namespace lampblack::files {

using foundation::BigEndianReader;
using foundation::Fits;
using foundation::ReadBE16;
using foundation::ReadBE32;
using foundation::Slice;
using foundation::StoreBE16;
using foundation::StoreBE32;

namespace {

constexpr uint32_t kMagic = 0x00051607, kVersion2 = 0x00020000;
constexpr uint32_t kResourceForkEntry = 2, kFinderInfoEntry = 9;
constexpr size_t kHeader = 26, kEntry = 12, kHomeSystem = 8, kHomeSystemLength = 16;

struct Part {
    uint32_t kind = 0;
    size_t offset = 0; // where it was, then where it will be
    Bytes bytes;
};

bool IsDouble(Bytes inBytes)
{
    return inBytes.size() >= kHeader && ReadBE32(inBytes, 0) == kMagic;
}

// The parts that are taken over, in the order of the table; Finder information first.
std::vector<Part> PartsOf(Bytes inOld)
{
    std::vector<Part> parts(1);
    parts[0].kind = kFinderInfoEntry;
    const size_t count = IsDouble(inOld) ? ReadBE16(inOld, 24) : 0;
    for (size_t i = 0; i < count && Fits(kHeader + i * kEntry, kEntry, inOld.size()); ++i) {
        const size_t at = kHeader + i * kEntry;
        const Part part = { ReadBE32(inOld, at), ReadBE32(inOld, at + 4),
                            Slice(inOld, ReadBE32(inOld, at + 4), ReadBE32(inOld, at + 8)) };
        if (part.kind == kFinderInfoEntry)
            parts[0] = part;
        else if (part.kind != kResourceForkEntry)
            parts.push_back(part);
    }
    return parts;
}

void PutEntry(std::vector<uint8_t>* ioFront, size_t inIndex, uint32_t inKind, size_t inOffset,
              size_t inLength)
{
    uint8_t* entry = ioFront->data() + kHeader + inIndex * kEntry;
    StoreBE32(entry, inKind);
    StoreBE32(entry + 4, (uint32_t)inOffset);
    StoreBE32(entry + 8, (uint32_t)inLength);
}

} // namespace

DoublePlan PlanDouble(Bytes inOld, const FinderBytes& inFinder, uint32_t inForkLength)
{
    std::vector<Part> parts = PartsOf(inOld);
    DoublePlan plan;
    std::vector<uint8_t>& front = plan.front;
    front.resize(kHeader + (parts.size() + 1) * kEntry);
    StoreBE32(front.data(), kMagic);
    StoreBE32(front.data() + 4, kVersion2);
    if (IsDouble(inOld))
        std::copy_n(inOld.begin() + kHomeSystem, kHomeSystemLength, front.begin() + kHomeSystem);
    StoreBE16(front.data() + 24, (uint16_t)(parts.size() + 1));
    for (size_t i = 0; i < parts.size(); ++i) {
        const Part& part = parts[i];
        const bool isFinder = i == 0;
        const size_t length = std::max(part.bytes.size(), isFinder ? inFinder.size() : 0);
        const bool staysPut = isFinder && part.bytes.size() > inFinder.size();
        const size_t offset =
            staysPut ? std::max(front.size(), std::min(part.offset, front.size() + 4096)) : front.size();
        front.resize(offset + length);
        std::copy(part.bytes.begin(), part.bytes.end(), front.begin() + (ptrdiff_t)offset);
        if (isFinder)
            std::copy(inFinder.begin(), inFinder.end(), front.begin() + (ptrdiff_t)offset);
        PutEntry(&front, i, part.kind, offset, length);
    }
    PutEntry(&front, parts.size(), kResourceForkEntry, front.size(), inForkLength);
    return plan;
}

std::optional<size_t> FinderPlace(Bytes inDouble)
{
    const Part finder = PartsOf(inDouble)[0];
    if (finder.bytes.size() < sizeof(FinderBytes))
        return {};
    return finder.offset;
}

FinderBytes ToFinderBytes(const FInfo& inInfo, const FXInfo& inExtended)
{
    FinderBytes bytes;
    FinderInfoToBytes(inInfo, bytes.data());
    ExtendedInfoToBytes(inExtended, bytes.data() + 16);
    return bytes;
}

} // namespace lampblack::files
