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

size_t LengthOf(const Part& inPart)
{
    return std::max(inPart.bytes.size(), inPart.kind == kFinderInfoEntry ? sizeof(FinderBytes) : 0);
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
    const std::vector<Part> parts = PartsOf(inOld);
    std::vector<size_t> offsets;
    size_t end = kHeader + (parts.size() + 1) * kEntry;
    for (const Part& part : parts) {
        const bool staysPut = &part == &parts[0] && part.bytes.size() > inFinder.size();
        offsets.push_back(staysPut ? std::max(end, std::min(part.offset, end + 4096)) : end);
        end = offsets.back() + LengthOf(part);
    }
    DoublePlan plan;
    std::vector<uint8_t>& front = plan.front;
    front.resize(end);
    StoreBE32(front.data(), kMagic);
    StoreBE32(front.data() + 4, kVersion2);
    if (IsDouble(inOld))
        std::memcpy(front.data() + kHomeSystem, inOld.data() + kHomeSystem, kHomeSystemLength);
    StoreBE16(front.data() + 24, (uint16_t)(parts.size() + 1));
    for (size_t i = 0; i < parts.size(); ++i) {
        if (!parts[i].bytes.empty())
            std::memcpy(front.data() + offsets[i], parts[i].bytes.data(), parts[i].bytes.size());
        PutEntry(&front, i, parts[i].kind, offsets[i], LengthOf(parts[i]));
    }
    std::memcpy(front.data() + offsets[0], inFinder.data(), inFinder.size());
    PutEntry(&front, parts.size(), kResourceForkEntry, end, inForkLength);
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
