// Reading a fork in place: the checks of the map, its index, and looking resources up.
#include "ResourceFork.h"

#include <foundation/MacRoman.h>

#include <algorithm>
#include <bit>

namespace lampblack::resources {

using foundation::Fits;
using foundation::LoadBE16;
using foundation::LoadBE32;
using foundation::ReadBE16;
using foundation::ReadBE32;

namespace {

constexpr size_t kHeaderLength = 16;
constexpr size_t kMapHeaderLength = 28;
constexpr size_t kTypeLength = 8;
constexpr size_t kReferenceLength = 12;
constexpr size_t kNoType = (size_t)-1;
// Lists and names begin within 64 KB, and a list has at most 65,536 references: nothing lies farther on.
constexpr size_t kLongestMap = 1u << 20;

} // namespace

const char* ResourceFork::Open(Bytes inFork)
{
    const Bytes header = inFork.first(std::min(inFork.size(), kHeaderLength));
    const DataPlace map = MapPlace(header, inFork.size());
    const char* problem =
        OpenMap(header, foundation::Slice(inFork, map.offset, map.length), inFork.size(), nullptr);
    fBytes = problem ? Bytes() : inFork;
    return problem;
}

DataPlace ResourceFork::MapPlace(Bytes inHeader, size_t inForkSize)
{
    if (inHeader.size() < kHeaderLength)
        return {};
    const uint32_t offset = LoadBE32(&inHeader[4]), length = LoadBE32(&inHeader[12]);
    return Fits(offset, length, inForkSize) ? DataPlace{ offset, std::min<size_t>(length, kLongestMap) }
                                            : DataPlace();
}

const char* ResourceFork::OpenMap(Bytes inHeader, Bytes inMap, size_t inForkSize, const DataReader* inReader)
{
    *this = ResourceFork();
    fSize = inForkSize;
    fMap = inMap;
    fReader = inReader;
    const char* problem = ReadHeader(inHeader);
    problem = problem ? problem : ReadTypes();
    if (problem)
        *this = ResourceFork();
    else
        BuildIndex();
    return problem;
}

const char* ResourceFork::ReadHeader(Bytes inHeader)
{
    if (inHeader.empty())
        return "the fork is empty";
    if (inHeader.size() < kHeaderLength)
        return "the header is cut off";
    fDataOffset = LoadBE32(&inHeader[0]);
    fMapOffset = LoadBE32(&inHeader[4]);
    fDataLength = LoadBE32(&inHeader[8]);
    fMapLength = LoadBE32(&inHeader[12]);
    if (!Fits(fMapOffset, fMapLength, fSize) || fMapOffset < kHeaderLength)
        return "the map does not lie within the fork";
    if (!Fits(fDataOffset, fDataLength, fSize) || fDataOffset < kHeaderLength)
        return "the data do not lie within the fork";
    if (fMapLength < kMapHeaderLength + 2 || fMap.size() < std::min<size_t>(fMapLength, kLongestMap))
        return "the map is too short";
    fAttributes = LoadBE16(&fMap[22]);
    fTypeList = LoadBE16(&fMap[24]);
    fNameList = LoadBE16(&fMap[26]);
    return fTypeList < kMapHeaderLength ? "the type list lies in the map's header" : nullptr;
}

const char* ResourceFork::ReadTypes()
{
    const Bytes map = fMap;
    if (!Fits(fTypeList, 2, map.size()))
        return "the type list does not lie within the map";
    const size_t count = (uint16_t)(LoadBE16(&map[fTypeList]) + 1); // 0xFFFF: no types
    if (!Fits(fTypeList + 2, count * kTypeLength, map.size()))
        return "the type list does not lie within the map";
    fTypes.reserve(count);
    for (size_t i = 0; i < count; ++i) {
        const uint8_t* entry = &map[fTypeList + 2 + i * kTypeLength];
        const uint32_t references = LoadBE16(entry + 4) + 1u, first = fTypeList + LoadBE16(entry + 6);
        const uint32_t firstOrdinal = (uint32_t)fCount;
        fCount += references;
        if (fCount > map.size() / kReferenceLength)
            return "the map counts more resources than it can hold";
        if (!Fits(first, references * kReferenceLength, map.size()))
            return "a reference list does not lie within the map";
        fTypes.push_back({ LoadBE32(entry), references, fMapOffset + first, firstOrdinal });
    }
    return nullptr;
}

void ResourceFork::BuildIndex()
{
    if (fCount == 0)
        return;
    fSlots.resize(std::bit_ceil(fCount + fCount / 2 + 1));
    for (size_t index = 0; index < fTypes.size(); ++index) {
        const TypeEntry& type = fTypes[index];
        const uint8_t* reference = &fMap[type.firstReference - fMapOffset];
        for (uint32_t i = 0; i < type.count; ++i, reference += kReferenceLength) {
            const uint16_t id = LoadBE16(reference);
            Slot& slot = fSlots[SlotOf(type.type, id)];
            if (slot.entry == 0)
                slot = { type.firstOrdinal + i + 1, (uint16_t)index, id };
        }
    }
}

ResourceRef ResourceFork::Find(OSType inType, SInt16 inID) const
{
    const uint32_t entry = FindOrdinal(inType, inID);
    if (entry == kNoOrdinal)
        return {};
    const Slot& slot = fSlots[SlotOf(inType, (uint16_t)inID)];
    const TypeEntry& type = fTypes[slot.typeIndex];
    return { type.firstReference + (entry - type.firstOrdinal) * (uint32_t)kReferenceLength, slot.typeIndex };
}

size_t ResourceFork::IndexOfType(OSType inType) const
{
    for (size_t i = 0; i < fTypes.size(); ++i)
        if (fTypes[i].type == inType)
            return i;
    return kNoType;
}

size_t ResourceFork::CountOf(OSType inType) const
{
    return CountAtType(IndexOfType(inType));
}

size_t ResourceFork::CountAtType(size_t inTypeIndex) const
{
    return inTypeIndex < fTypes.size() ? fTypes[inTypeIndex].count : 0;
}

ResourceRef ResourceFork::At(OSType inType, size_t inIndex) const
{
    return AtType(IndexOfType(inType), inIndex);
}

ResourceRef ResourceFork::AtType(size_t inTypeIndex, size_t inIndex) const
{
    if (inIndex >= CountAtType(inTypeIndex))
        return {};
    const uint32_t offset = fTypes[inTypeIndex].firstReference + (uint32_t)(inIndex * kReferenceLength);
    return { offset, (uint16_t)inTypeIndex };
}

ResourceRef ResourceFork::FindNamed(OSType inType, std::string_view inMacRomanName) const
{
    const size_t type = IndexOfType(inType);
    for (size_t i = 0; i < CountAtType(type); ++i) {
        const ResourceRef ref = AtType(type, i);
        const ResourceInfo info = Info(ref);
        if (info.hasName && foundation::EqualIgnoringCase(info.name, inMacRomanName))
            return ref;
    }
    return {};
}

const uint8_t* ResourceFork::Reference(ResourceRef inRef) const
{
    const bool isThere = inRef && inRef.typeIndex < fTypes.size() && inRef.offset >= fMapOffset &&
                         Fits(inRef.offset - fMapOffset, kReferenceLength, fMap.size());
    return isThere ? &fMap[inRef.offset - fMapOffset] : nullptr;
}

UInt32 ResourceFork::HandleField(ResourceRef inRef) const
{
    const uint8_t* reference = Reference(inRef);
    return reference ? LoadBE32(reference + 8) : 0;
}

ResourceInfo ResourceFork::Info(ResourceRef inRef) const
{
    ResourceInfo info;
    const uint8_t* reference = Reference(inRef);
    if (!reference)
        return info;
    info.type = fTypes[inRef.typeIndex].type;
    info.id = (SInt16)LoadBE16(reference);
    info.attributes = reference[4];
    info.dataOffset = LoadBE32(reference + 4) & 0xFFFFFF;
    const uint16_t nameOffset = LoadBE16(reference + 2);
    if (nameOffset == 0xFFFF)
        return info;
    // A name that passes the end of the map is no name.
    foundation::BigEndianReader reader(fMap, (size_t)fNameList + nameOffset);
    info.name = reader.ReadPascal();
    info.hasName = reader.Ok();
    return info;
}

size_t ResourceFork::Ordinal(ResourceRef inRef) const
{
    const TypeEntry& type = fTypes[inRef.typeIndex];
    return type.firstOrdinal + (inRef.offset - type.firstReference) / kReferenceLength;
}

ResourceRef ResourceFork::WithOrdinal(size_t inOrdinal) const
{
    if (inOrdinal >= fCount)
        return {};
    const auto behind =
        std::upper_bound(fTypes.begin(), fTypes.end(), inOrdinal,
                         [](size_t ordinal, const TypeEntry& type) { return ordinal < type.firstOrdinal; });
    const size_t type = (size_t)(behind - fTypes.begin()) - 1;
    return AtType(type, inOrdinal - fTypes[type].firstOrdinal);
}

ResourceFork::Shape ResourceFork::Areas() const
{
    return { fDataOffset, fDataLength, fMapOffset, fMapLength };
}

// The word in front of the data.
bool ResourceFork::LengthAt(size_t inDataOffset, uint32_t* outLength) const
{
    uint8_t word[4];
    const size_t place = fDataOffset + inDataOffset;
    if (!Fits(inDataOffset, 4, fDataLength) ||
        (fBytes.empty() && !(fReader && fReader->Read(place, 4, word))))
        return false;
    *outLength = LoadBE32(fBytes.empty() ? word : &fBytes[place]);
    return Fits(inDataOffset + 4, *outLength, fDataLength);
}

bool ResourceFork::PlaceOf(ResourceRef inRef, DataPlace* outPlace) const
{
    const uint8_t* reference = Reference(inRef);
    const size_t offset = reference ? LoadBE32(reference + 4) & 0xFFFFFF : 0;
    uint32_t length = 0;
    *outPlace = {};
    if (!reference || !LengthAt(offset, &length))
        return false;
    *outPlace = { fDataOffset + offset + 4, length };
    return true;
}

bool ResourceFork::StoredOf(ResourceRef inRef, StoredResource* outStored) const
{
    if (!PlaceOf(inRef, &outStored->data))
        return false;
    const uint8_t* reference = Reference(inRef);
    outStored->type = fTypes[inRef.typeIndex].type;
    outStored->id = (SInt16)LoadBE16(reference);
    outStored->attributes = reference[4];
    return true;
}

bool ResourceFork::Data(ResourceRef inRef, Bytes* outData) const
{
    DataPlace place;
    *outData = Bytes();
    if (fBytes.empty() || !PlaceOf(inRef, &place))
        return false;
    *outData = fBytes.subspan(place.offset, place.length);
    return true;
}

bool ResourceFork::IsSound() const
{
    for (const TypeEntry& type : fTypes) {
        const uint8_t* reference = &fMap[type.firstReference - fMapOffset];
        for (uint32_t i = 0; i < type.count; ++i, reference += kReferenceLength) {
            uint32_t length;
            if (!LengthAt(LoadBE32(reference + 4) & 0xFFFFFF, &length))
                return false;
            const uint16_t nameOffset = LoadBE16(reference + 2);
            const size_t name = (size_t)fNameList + nameOffset;
            if (nameOffset != 0xFFFF && (name >= fMap.size() || !Fits(name + 1, fMap[name], fMap.size())))
                return false;
        }
    }
    return true;
}

std::vector<std::string> ResourceFork::Check() const
{
    std::vector<std::string> problems;
    ForEach([&](ResourceRef ref) {
        const ResourceInfo info = Info(ref);
        const OSType type = __builtin_bswap32(info.type);
        const std::string name =
            foundation::Utf8FromMacRoman({ (const char*)&type, 4 }) + " " + std::to_string(info.id);
        DataPlace place;
        if (!PlaceOf(ref, &place))
            problems.push_back(name + ": the data run past the end of the fork");
        if (!info.hasName && LoadBE16(Reference(ref) + 2) != 0xFFFF)
            problems.push_back(name + ": the name runs past the end of the map");
    });
    return problems;
}

} // namespace lampblack::resources
