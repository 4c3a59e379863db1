// Laying out maps and forks.
#include "ForkPlan.h"

#include <algorithm>
#include <cstring>

namespace lampblack::resources {

using foundation::StoreBE16;
using foundation::StoreBE32;

namespace {

constexpr size_t kHeader = 16, kReservedEnd = 256, kLongestReserved = 4096;
constexpr size_t kMapHeader = 28, kTypeLength = 8, kReferenceLength = 12;
constexpr size_t kLargest16 = 0xFFFF, kLargestData = 1u << 24, kLargestFork = 0x7FFFFFFF;
constexpr size_t kSector = 512;
constexpr size_t kLeastSlack = 256, kMostSlack = 65536;
constexpr UInt16 kFileBits = 0xFF9F; // all but mapCompact and mapChanged, which are of the moment

// A map and where the references stand in it.
struct BuiltMap {
    std::vector<uint8_t> bytes;
    std::vector<std::pair<uint32_t, uint32_t>> references; // entry and place in the map
};

struct TypeLayout {
    OSType type;
    std::vector<uint32_t> entries;
    size_t firstReference; // from the start of the type list
};

class MapBuilder {
public:
    MapBuilder(const PlanInput& inInput, const std::vector<uint32_t>& inData) : fInput(inInput), fData(inData)
    {
    }

    const char* Build(BuiltMap* outMap)
    {
        CollectTypes();
        if (const char* problem = LayOut())
            return problem;
        outMap->bytes.assign(fNameList + fNameBytes, 0);
        if (fNamesFirst)
            outMap->bytes.resize(fNameList + fNameBytes + fReferenceBytes);
        WriteHeader(outMap->bytes.data());
        WriteTypes(outMap);
        return nullptr;
    }

private:
    void CollectTypes();
    const char* LayOut();
    void WriteHeader(uint8_t* outMap) const;
    void WriteTypes(BuiltMap* outMap);

    const PlanInput& fInput;
    const std::vector<uint32_t>& fData; // by entry: where its data will be; kNotWritten: left out
    std::vector<TypeLayout> fTypes;
    size_t fReferenceBytes = 0, fNameBytes = 0, fNameList = 0;
    bool fNamesFirst = false;
};

void MapBuilder::CollectTypes()
{
    for (const MapType& type : fInput.map->types) {
        TypeLayout layout = { type.type, {}, 0 };
        layout.entries.reserve(type.entries.size());
        for (const uint32_t number : type.entries) {
            if (fData[number] == kNotWritten)
                continue;
            const MapEntry& entry = fInput.map->entries[number];
            layout.entries.push_back(number);
            fNameBytes += entry.hasName ? 1 + entry.name.size() : 0;
        }
        fReferenceBytes += layout.entries.size() * kReferenceLength;
        if (!layout.entries.empty())
            fTypes.push_back(std::move(layout));
    }
}

// Where references are too many for the names to stand behind them, the names stand before them.
const char* MapBuilder::LayOut()
{
    const size_t typeBytes = 2 + fTypes.size() * kTypeLength;
    fNamesFirst = kMapHeader + typeBytes + fReferenceBytes > kLargest16;
    fNameList = kMapHeader + typeBytes + (fNamesFirst ? 0 : fReferenceBytes);
    if (fTypes.size() > kLargest16 || fNameList > kLargest16)
        return "there are too many types";
    if (fNameBytes > kLargest16)
        return "the names are longer than 64 KB";
    size_t place = typeBytes + (fNamesFirst ? fNameBytes : 0);
    for (TypeLayout& type : fTypes) {
        if (place > kLargest16)
            return "the references do not fit into the map";
        if (type.entries.size() > kLargest16 + 1)
            return "a type has more than 65,536 resources";
        type.firstReference = place;
        place += type.entries.size() * kReferenceLength;
    }
    return nullptr;
}

// Six bytes that belong to whoever has the map in memory are kept as they were.
void MapBuilder::WriteHeader(uint8_t* outMap) const
{
    if (fInput.areas.mapLength >= kMapHeader)
        std::memcpy(outMap + kHeader, &fInput.fork[fInput.areas.mapOffset + kHeader], 6);
    StoreBE16(outMap + 22, fInput.map->attributes & kFileBits);
    StoreBE16(outMap + 24, kMapHeader);
    StoreBE16(outMap + 26, (uint16_t)fNameList);
    StoreBE16(outMap + kMapHeader, (uint16_t)(fTypes.size() - 1));
}

void MapBuilder::WriteTypes(BuiltMap* outMap)
{
    uint8_t* map = outMap->bytes.data();
    uint8_t* typeEntry = map + kMapHeader + 2;
    size_t nameAt = 0;
    for (const TypeLayout& type : fTypes) {
        StoreBE32(typeEntry, type.type);
        StoreBE16(typeEntry + 4, (uint16_t)(type.entries.size() - 1));
        StoreBE16(typeEntry + 6, (uint16_t)type.firstReference);
        typeEntry += kTypeLength;
        size_t at = kMapHeader + type.firstReference;
        for (const uint32_t number : type.entries) {
            const MapEntry& entry = fInput.map->entries[number];
            StoreBE16(map + at, (uint16_t)entry.id);
            StoreBE16(map + at + 2, entry.hasName ? (uint16_t)nameAt : (uint16_t)kLargest16);
            StoreBE32(map + at + 4, (uint32_t)entry.attributes << 24 | fData[number]);
            StoreBE32(map + at + 8, entry.handleField);
            outMap->references.push_back({ number, (uint32_t)at });
            at += kReferenceLength;
            if (!entry.hasName)
                continue;
            map[fNameList + nameAt] = (uint8_t)entry.name.size();
            std::copy(entry.name.begin(), entry.name.end(), map + fNameList + nameAt + 1);
            nameAt += 1 + entry.name.size();
        }
    }
}

std::vector<uint8_t> HeaderOf(const ResourceFork::Shape& inAreas)
{
    std::vector<uint8_t> header(kHeader);
    StoreBE32(header.data(), inAreas.dataOffset);
    StoreBE32(header.data() + 4, inAreas.mapOffset);
    StoreBE32(header.data() + 8, inAreas.dataLength);
    StoreBE32(header.data() + 12, inAreas.mapLength);
    return header;
}

// References begin two bytes off a multiple of four in a map; the map is put so that their words do not
// straddle sectors.
uint32_t AlignMap(size_t inOffset, SInt64 inFileOffset)
{
    while (((SInt64)inOffset + inFileOffset) % 4 != 2)
        ++inOffset;
    return (uint32_t)inOffset;
}

size_t GrowthOf(size_t inMapLength)
{
    return inMapLength / 8 + 64;
}

// Where each record's data will be; new data not yet.
std::vector<uint32_t> DataPlaces(const PlanInput& inInput)
{
    std::vector<uint32_t> places;
    places.reserve(inInput.map->entries.size());
    for (const MapEntry& entry : inInput.map->entries)
        places.push_back(entry.isRemoved ? kNotWritten : entry.data);
    return places;
}

bool IsOneSector(SInt64 inPlace, size_t inLength)
{
    return inPlace % (SInt64)kSector + (SInt64)inLength <= (SInt64)kSector;
}

std::vector<uint8_t> WithLength(const std::vector<uint8_t>& inData)
{
    std::vector<uint8_t> bytes(4 + inData.size());
    StoreBE32(bytes.data(), (uint32_t)inData.size());
    std::copy(inData.begin(), inData.end(), bytes.begin() + 4);
    return bytes;
}

bool TakeSpace(const PlanInput& inInput, FreeSpace* ioSpace, ForkPlan* outPlan)
{
    for (const NewData& data : *inInput.newData) {
        const std::optional<uint32_t> place = ioSpace->Take(4 + (uint32_t)data.bytes.size());
        if (!place)
            return false;
        outPlan->moved.push_back({ data.entry, *place, (uint32_t)data.bytes.size() });
        if (*place >= kLargestData)
            return false;
        outPlan->preparations.push_back({ inInput.areas.dataOffset + *place, WithLength(data.bytes) });
    }
    return true;
}

// The word of one reference, when nothing else of the map changes.
bool PlanWord(const PlanInput& inInput, ForkPlan* outPlan)
{
    if (outPlan->moved.size() != 1)
        return false;
    const ForkPlan::Moved& moved = outPlan->moved[0];
    const MapEntry& entry = inInput.map->entries[moved.entry];
    const uint32_t place = entry.reference + 4;
    if (entry.reference == 0 || !IsOneSector(inInput.fileOffset + place, 4))
        return false;
    outPlan->commit = { place, std::vector<uint8_t>(4) };
    StoreBE32(outPlan->commit.bytes.data(), (uint32_t)entry.attributes << 24 | moved.data);
    outPlan->areas = inInput.areas;
    return true;
}

// A place for a map beside the one that counts: behind the data, before or after that one. Of room behind it
// the end is taken, so that the next may grow as well.
std::optional<uint32_t> OtherPlace(const PlanInput& inInput, size_t inLength)
{
    const ResourceFork::Shape& areas = inInput.areas;
    const size_t dataEnd = (size_t)areas.dataOffset + areas.dataLength;
    const size_t mapEnd = (size_t)areas.mapOffset + areas.mapLength, end = inInput.fork.size();
    if (areas.mapOffset < dataEnd)
        return {};
    const size_t before = AlignMap(dataEnd, inInput.fileOffset);
    if (before + inLength <= areas.mapOffset)
        return before;
    const size_t wanted = inLength + GrowthOf(inLength) + 4;
    const size_t start = end >= mapEnd + wanted ? end - wanted : mapEnd;
    const size_t behind = AlignMap(start, inInput.fileOffset);
    if (behind + inLength <= end)
        return behind;
    return {};
}

bool PlanMap(const PlanInput& inInput, ForkPlan* outPlan)
{
    std::vector<uint32_t> places = DataPlaces(inInput);
    for (const ForkPlan::Moved& moved : outPlan->moved)
        places[moved.entry] = moved.data;
    BuiltMap map;
    if (!IsOneSector(inInput.fileOffset, kHeader) || MapBuilder(inInput, places).Build(&map))
        return false;
    const std::optional<uint32_t> place = OtherPlace(inInput, map.bytes.size());
    if (!place)
        return false;
    outPlan->areas = inInput.areas;
    outPlan->areas.mapOffset = *place;
    outPlan->areas.mapLength = (uint32_t)map.bytes.size();
    outPlan->commit = { 0, HeaderOf(outPlan->areas) };
    std::copy(outPlan->commit.bytes.begin(), outPlan->commit.bytes.end(), map.bytes.begin());
    for (auto& [entry, offset] : map.references)
        offset += *place;
    outPlan->references = std::move(map.references);
    outPlan->preparations.push_back({ *place, std::move(map.bytes) });
    return true;
}

} // namespace

bool IsWritten(const MapEntry& inEntry, bool inHasNewData)
{
    return !inEntry.isRemoved && (inHasNewData || inEntry.data != kNotWritten);
}

bool PlanInPlace(const PlanInput& inInput, FreeSpace* ioSpace, ForkPlan* outPlan)
{
    *outPlan = ForkPlan();
    const bool isPlanned =
        TakeSpace(inInput, ioSpace, outPlan) &&
        ((!inInput.map->isStale && PlanWord(inInput, outPlan)) || PlanMap(inInput, outPlan));
    if (isPlanned)
        return true;
    for (const ForkPlan::Moved& moved : outPlan->moved)
        ioSpace->Give(moved.data, 4 + moved.length);
    *outPlan = ForkPlan();
    return false;
}

namespace {

// The data that stay, in the order in which they lie; what several resources share is written once.
struct Keeper {
    uint32_t oldPlace, entry;
    bool operator<(const Keeper& inOther) const { return oldPlace < inOther.oldPlace; }
};

std::vector<Keeper> KeepersOf(const PlanInput& inInput, const std::vector<uint32_t>& inPlaces)
{
    std::vector<Keeper> keepers;
    keepers.reserve(inPlaces.size());
    for (uint32_t number = 0; number < inPlaces.size(); ++number)
        if (inPlaces[number] != kNotWritten)
            keepers.push_back({ inPlaces[number], number });
    std::stable_sort(keepers.begin(), keepers.end());
    (void)inInput;
    return keepers;
}

// Header and reserved bytes as they were.
std::vector<uint8_t> Front(const PlanInput& inInput)
{
    const size_t old = std::min({ (size_t)inInput.areas.dataOffset, (size_t)inInput.areas.mapOffset,
                                  kLongestReserved, inInput.fork.size() });
    std::vector<uint8_t> front(std::max(old, kReservedEnd));
    std::copy(inInput.fork.begin() + kHeader, inInput.fork.begin() + (ptrdiff_t)std::max(old, kHeader),
              front.begin() + kHeader);
    return front;
}

void Append(Bytes inBytes, std::vector<uint8_t>* ioWhole)
{
    ioWhole->insert(ioWhole->end(), inBytes.begin(), inBytes.end());
}

const char* AppendData(const PlanInput& inInput, std::vector<uint32_t>* ioPlaces, ForkPlan* outPlan)
{
    std::vector<uint8_t>& whole = outPlan->whole;
    const size_t start = whole.size();
    std::vector<uint32_t> places = *ioPlaces;
    for (const NewData& data : *inInput.newData)
        places[data.entry] = kNotWritten;
    uint32_t lastOld = kNotWritten, lastNew = 0;
    for (const Keeper& keeper : KeepersOf(inInput, places)) {
        const MapEntry& entry = inInput.map->entries[keeper.entry];
        if (keeper.oldPlace != lastOld) {
            lastOld = keeper.oldPlace;
            lastNew = (uint32_t)(whole.size() - start);
            Append(inInput.fork.subspan(inInput.areas.dataOffset + lastOld, 4 + entry.length), &whole);
        }
        if (lastNew >= kLargestData || whole.size() > kLargestFork)
            return "the resources are larger than 16 MB";
        outPlan->moved.push_back({ keeper.entry, lastNew, entry.length });
    }
    for (const NewData& data : *inInput.newData) {
        const size_t place = whole.size() - start;
        if (place >= kLargestData || place + data.bytes.size() > kLargestFork)
            return "the resources are larger than 16 MB";
        outPlan->moved.push_back({ data.entry, (uint32_t)place, (uint32_t)data.bytes.size() });
        const std::vector<uint8_t> bytes = WithLength(data.bytes);
        Append(bytes, &whole);
    }
    for (const ForkPlan::Moved& moved : outPlan->moved)
        (*ioPlaces)[moved.entry] = moved.data;
    return nullptr;
}

// Room for the next changes: an eighth of the data, and enough for the largest of what was just written,
// unless that is large.
size_t SlackFor(const PlanInput& inInput, size_t inDataLength)
{
    size_t largest = 0;
    for (const NewData& data : *inInput.newData)
        largest = std::max(largest, data.bytes.size() + 4);
    const size_t slack = std::clamp(inDataLength / 8, kLeastSlack, kMostSlack);
    return largest <= kMostSlack ? std::max(slack, largest) : slack;
}

} // namespace

const char* PlanWhole(const PlanInput& inInput, bool inIsCompact, ForkPlan* outPlan)
{
    *outPlan = ForkPlan();
    std::vector<uint8_t>& whole = outPlan->whole;
    whole = Front(inInput);
    ResourceFork::Shape& areas = outPlan->areas;
    areas.dataOffset = (uint32_t)whole.size();
    std::vector<uint32_t> places = DataPlaces(inInput);
    const char* problem = AppendData(inInput, &places, outPlan);
    BuiltMap map;
    problem = problem ? problem : MapBuilder(inInput, places).Build(&map);
    if (problem)
        return problem;
    const size_t dataLength = whole.size() - areas.dataOffset;
    whole.resize(whole.size() + (inIsCompact ? 0 : SlackFor(inInput, dataLength)));
    areas.dataLength = (uint32_t)(whole.size() - areas.dataOffset);
    areas.mapOffset = inIsCompact ? (uint32_t)whole.size() : AlignMap(whole.size(), inInput.fileOffset);
    areas.mapLength = (uint32_t)map.bytes.size();
    whole.resize(areas.mapOffset);
    const std::vector<uint8_t> header = HeaderOf(areas);
    std::copy(header.begin(), header.end(), whole.begin());
    std::copy(header.begin(), header.end(), map.bytes.begin());
    Append(map.bytes, &whole);
    outPlan->room = inIsCompact ? 0 : map.bytes.size() + 2 * GrowthOf(map.bytes.size()) + 8;
    for (auto& [entry, offset] : map.references)
        offset += areas.mapOffset;
    outPlan->references = std::move(map.references);
    return nullptr;
}

void TakeOver(const ForkPlan& inPlan, ResourceMap::Edits* ioMap, FreeSpace* ioSpace)
{
    const auto give = [&](const MapEntry& entry) {
        if (ioSpace && entry.data != kNotWritten)
            ioSpace->Give(entry.data, 4 + entry.length);
    };
    for (const ForkPlan::Moved& moved : inPlan.moved) {
        MapEntry& entry = ioMap->entries[moved.entry];
        give(entry);
        entry.data = moved.data;
        entry.length = moved.length;
    }
    if (inPlan.references.empty() && inPlan.commit.offset != 0)
        return; // one word: all else stays
    for (MapEntry& entry : ioMap->entries) {
        entry.reference = 0;
        if (!entry.isRemoved)
            continue;
        give(entry);
        entry.data = kNotWritten;
    }
    for (const auto& [entry, place] : inPlan.references)
        ioMap->entries[entry].reference = place;
    ioMap->isStale = ioMap->mustWrite = false;
}

} // namespace lampblack::resources
