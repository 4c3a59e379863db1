// Making the bytes of a fork.
#include "ResourceFork.h"

#include <algorithm>
#include <cstring>
#include <unordered_map>

namespace lampblack::resources {

using foundation::StoreBE16;
using foundation::StoreBE32;

namespace {

constexpr size_t kDataStart = 256; // the header, then 240 bytes kept for the system and the application
constexpr size_t kMapHeaderLength = 28;
constexpr size_t kTypeLength = 8, kReferenceLength = 12;
constexpr size_t kLargestData = 1u << 24, kLargest16 = 0xFFFF;

struct TypeGroup {
    OSType type;
    std::vector<size_t> entries; // indices, in the order added
    size_t firstReference = 0;   // from the start of the type list
};

std::vector<TypeGroup> GroupByType(const std::vector<ForkEntry>& inEntries)
{
    std::vector<TypeGroup> groups;
    std::unordered_map<OSType, size_t> places;
    for (size_t i = 0; i < inEntries.size(); ++i) {
        const auto [place, isNew] = places.try_emplace(inEntries[i].type, groups.size());
        if (isNew)
            groups.push_back({ inEntries[i].type, {}, 0 });
        groups[place->second].entries.push_back(i);
    }
    return groups;
}

// Where everything goes.
struct Layout {
    std::vector<TypeGroup> groups;
    std::vector<size_t> dataOffsets; // by entry, from the start of the data
    std::vector<size_t> nameOffsets; // by entry, from the start of the name list; kLargest16: no name
    size_t dataLength = 0, namesLength = 0, typesLength = 0, referencesLength = 0;
    bool namesFirst = false; // names between types and references

    size_t NamesStart() const { return kMapHeaderLength + typesLength + (namesFirst ? 0 : referencesLength); }
    size_t MapLength() const { return kMapHeaderLength + typesLength + referencesLength + namesLength; }
};

const char* LayOutBodies(const std::vector<ForkEntry>& inEntries, Layout* outLayout)
{
    for (const ForkEntry& entry : inEntries) {
        outLayout->dataOffsets.push_back(outLayout->dataLength);
        outLayout->nameOffsets.push_back(entry.hasName ? outLayout->namesLength : kLargest16);
        if (entry.name.size() > 255)
            return "a name is longer than 255 bytes";
        if (outLayout->dataLength >= kLargestData)
            return "the resources are larger than 16 MB";
        if (entry.hasName && outLayout->namesLength >= kLargest16)
            return "the names are longer than 64 KB";
        outLayout->dataLength += 4 + entry.data.size();
        outLayout->namesLength += entry.hasName ? 1 + entry.name.size() : 0;
    }
    return outLayout->dataLength > 0x7FFFFFFF ? "the resources are larger than 16 MB" : nullptr;
}

// Offsets of name list and reference lists are 16-bit numbers. Where references are too many for the names to
// stand behind them, the names stand before them.
const char* LayOutMap(Layout* ioLayout)
{
    size_t count = 0;
    for (const TypeGroup& group : ioLayout->groups) {
        count += group.entries.size();
        if (group.entries.size() > kLargest16 + 1)
            return "a type has more than 65,536 resources";
    }
    if (ioLayout->groups.size() > kLargest16)
        return "there are more than 65,535 types";
    ioLayout->typesLength = 2 + ioLayout->groups.size() * kTypeLength;
    ioLayout->referencesLength = count * kReferenceLength;
    ioLayout->namesFirst = ioLayout->NamesStart() > kLargest16;
    size_t place = ioLayout->typesLength + (ioLayout->namesFirst ? ioLayout->namesLength : 0);
    for (TypeGroup& group : ioLayout->groups) {
        if (place > kLargest16)
            return "the references do not fit into the map";
        group.firstReference = place;
        place += group.entries.size() * kReferenceLength;
    }
    return ioLayout->NamesStart() > kLargest16 ? "there are too many types" : nullptr;
}

void WriteHeader(const Layout& inLayout, uint8_t* outFork)
{
    StoreBE32(outFork, kDataStart);
    StoreBE32(outFork + 4, (uint32_t)(kDataStart + inLayout.dataLength));
    StoreBE32(outFork + 8, (uint32_t)inLayout.dataLength);
    StoreBE32(outFork + 12, (uint32_t)inLayout.MapLength());
}

void WriteBodies(const std::vector<ForkEntry>& inEntries, const Layout& inLayout, uint8_t* outFork)
{
    uint8_t* names = outFork + kDataStart + inLayout.dataLength + inLayout.NamesStart();
    for (size_t i = 0; i < inEntries.size(); ++i) {
        const ForkEntry& entry = inEntries[i];
        uint8_t* data = outFork + kDataStart + inLayout.dataOffsets[i];
        StoreBE32(data, (uint32_t)entry.data.size());
        std::copy(entry.data.begin(), entry.data.end(), data + 4);
        if (!entry.hasName)
            continue;
        uint8_t* name = names + inLayout.nameOffsets[i];
        *name = (uint8_t)entry.name.size();
        std::copy(entry.name.begin(), entry.name.end(), name + 1);
    }
}

void WriteReferences(const std::vector<ForkEntry>& inEntries, const Layout& inLayout,
                     const TypeGroup& inGroup, uint8_t* outTypeList)
{
    uint8_t* reference = outTypeList + inGroup.firstReference;
    for (const size_t i : inGroup.entries) {
        StoreBE16(reference, (uint16_t)inEntries[i].id);
        StoreBE16(reference + 2, (uint16_t)inLayout.nameOffsets[i]);
        StoreBE32(reference + 4, (uint32_t)inLayout.dataOffsets[i]);
        reference[4] = inEntries[i].attributes;
        reference += kReferenceLength;
    }
}

void WriteMap(const std::vector<ForkEntry>& inEntries, const Layout& inLayout, UInt16 inAttributes,
              uint8_t* outMap)
{
    StoreBE16(outMap + 22, inAttributes);
    StoreBE16(outMap + 24, kMapHeaderLength);
    StoreBE16(outMap + 26, (uint16_t)inLayout.NamesStart());
    uint8_t* typeList = outMap + kMapHeaderLength;
    StoreBE16(typeList, (uint16_t)(inLayout.groups.size() - 1));
    uint8_t* type = typeList + 2;
    for (const TypeGroup& group : inLayout.groups) {
        StoreBE32(type, group.type);
        StoreBE16(type + 4, (uint16_t)(group.entries.size() - 1));
        StoreBE16(type + 6, (uint16_t)group.firstReference);
        WriteReferences(inEntries, inLayout, group, typeList);
        type += kTypeLength;
    }
}

} // namespace

const char* ForkBuilder::Build(std::vector<uint8_t>* outFork) const
{
    outFork->clear();
    Layout layout;
    layout.groups = GroupByType(fEntries);
    const char* problem = LayOutBodies(fEntries, &layout);
    problem = problem ? problem : LayOutMap(&layout);
    if (problem)
        return problem;
    outFork->resize(kDataStart + layout.dataLength + layout.MapLength());
    uint8_t* fork = outFork->data();
    WriteHeader(layout, fork);
    std::memcpy(fork + kDataStart + layout.dataLength, fork, 16); // the map begins with a copy of the header
    WriteBodies(fEntries, layout, fork);
    WriteMap(fEntries, layout, fAttributes, fork + kDataStart + layout.dataLength);
    return nullptr;
}

} // namespace lampblack::resources
