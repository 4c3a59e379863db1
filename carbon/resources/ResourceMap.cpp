// The map as records that can be changed.
#include "ResourceMap.h"

#include <foundation/MacRoman.h>

#include <algorithm>
#include <cstring>

namespace lampblack::resources {

using foundation::Fits;

namespace {

constexpr UInt8 kChangedBit = 2;
constexpr size_t kLargest16 = 0xFFFF;

uint64_t KeyOf(OSType inType, SInt16 inID)
{
    return (uint64_t)inType << 16 | (uint16_t)inID;
}

} // namespace

void ResourceMap::Open(const ResourceFork* inFork)
{
    const ResourceFork::Shape areas = inFork->Areas();
    ++gMapEpoch;
    fFork = inFork;
    fEdits.reset();
    fReader = inFork->Reader();
    fBytes = inFork->AllBytes();
    fDataOffset = areas.dataOffset;
    fDataLength = areas.dataLength;
}

ResourceMap::Edits& ResourceMap::Edit()
{
    ++gMapEpoch;
    if (fEdits)
        return *fEdits;
    auto edits = std::make_unique<Edits>();
    const ResourceFork& fork = *fFork;
    edits->attributes = fork.Attributes();
    edits->entries.reserve(fork.ResourceCount());
    edits->index.reserve(fork.ResourceCount());
    for (size_t t = 0; t < fork.TypeCount(); ++t) {
        edits->types.push_back({ fork.TypeAt(t), {} });
        for (size_t i = 0; i < fork.CountAtType(t); ++i) {
            const ResourceRef ref = fork.AtType(t, i);
            const ResourceInfo info = fork.Info(ref);
            DataPlace data;
            const bool isThere = fork.PlaceOf(ref, &data);
            MapEntry entry = { info.type,
                               info.id,
                               info.attributes,
                               info.hasName,
                               false,
                               false,
                               fork.HandleField(ref),
                               isThere ? info.dataOffset : kNotWritten,
                               (uint32_t)data.length,
                               ref.offset,
                               std::string(info.name) };
            const uint32_t number = (uint32_t)edits->entries.size();
            edits->nameBytes += entry.hasName ? 1 + entry.name.size() : 0;
            edits->hasDuplicates |= !edits->index.emplace(KeyOf(entry.type, entry.id), number).second;
            edits->types.back().entries.push_back(number);
            edits->entries.push_back(std::move(entry));
        }
    }
    edits->liveCount = edits->entries.size();
    fEdits = std::move(edits);
    return *fEdits;
}

void ResourceMap::Rebase(Bytes inFork, uint32_t inDataOffset, uint32_t inDataLength)
{
    ++gMapEpoch;
    fBytes = inFork;
    fReader = nullptr;
    fDataOffset = inDataOffset;
    fDataLength = inDataLength;
}

UInt16 ResourceMap::Attributes() const
{
    return fEdits ? fEdits->attributes : fFork->Attributes();
}

size_t ResourceMap::TypeCount() const
{
    return fEdits ? fEdits->types.size() : fFork->TypeCount();
}

OSType ResourceMap::TypeAt(size_t inIndex) const
{
    if (!fEdits)
        return fFork->TypeAt(inIndex);
    return inIndex < fEdits->types.size() ? fEdits->types[inIndex].type : 0;
}

const MapType* ResourceMap::TypeOf(OSType inType) const
{
    for (const MapType& type : fEdits->types)
        if (type.type == inType)
            return &type;
    return nullptr;
}

MapType* ResourceMap::TypeOf(OSType inType)
{
    return const_cast<MapType*>(((const ResourceMap*)this)->TypeOf(inType));
}

size_t ResourceMap::CountOf(OSType inType) const
{
    if (!fEdits)
        return fFork->CountOf(inType);
    const MapType* type = TypeOf(inType);
    return type ? type->entries.size() : 0;
}

size_t ResourceMap::EntryCount() const
{
    return fEdits ? fEdits->entries.size() : fFork->ResourceCount();
}

uint32_t ResourceMap::FindRecord(OSType inType, SInt16 inID) const
{
    const auto found = fEdits->index.find(KeyOf(inType, inID));
    return found == fEdits->index.end() ? kNoEntry : found->second;
}

uint32_t ResourceMap::FindNamed(OSType inType, std::string_view inName) const
{
    if (!fEdits) {
        const ResourceRef ref = fFork->FindNamed(inType, inName);
        return ref ? (uint32_t)fFork->Ordinal(ref) : kNoEntry;
    }
    const MapType* type = TypeOf(inType);
    for (const uint32_t number : type ? type->entries : std::vector<uint32_t>()) {
        const MapEntry& entry = fEdits->entries[number];
        if (entry.hasName && foundation::EqualIgnoringCase(entry.name, inName))
            return number;
    }
    return kNoEntry;
}

uint32_t ResourceMap::At(OSType inType, size_t inIndex) const
{
    if (!fEdits) {
        const ResourceRef ref = fFork->At(inType, inIndex);
        return ref ? (uint32_t)fFork->Ordinal(ref) : kNoEntry;
    }
    const MapType* type = TypeOf(inType);
    return type && inIndex < type->entries.size() ? type->entries[inIndex] : kNoEntry;
}

ResourceInfo ResourceMap::Info(uint32_t inEntry) const
{
    ResourceInfo info;
    if (!fEdits) {
        info = fFork->Info(fFork->WithOrdinal(inEntry));
    } else if (inEntry < fEdits->entries.size()) {
        const MapEntry& entry = fEdits->entries[inEntry];
        info = { entry.type, entry.id, entry.attributes, entry.hasName, entry.name, entry.data };
    }
    info.attributes &= (UInt8)~kChangedBit;
    return info;
}

bool ResourceMap::IsRecordChanged(uint32_t inEntry) const
{
    return inEntry < fEdits->entries.size() && fEdits->entries[inEntry].isChanged;
}

bool ResourceMap::PlaceOf(uint32_t inEntry, DataPlace* outPlace) const
{
    *outPlace = {};
    if (!fEdits)
        return fFork->PlaceOf(fFork->WithOrdinal(inEntry), outPlace);
    const MapEntry& entry = fEdits->entries[inEntry];
    if (entry.data == kNotWritten || !Fits((size_t)entry.data + 4, entry.length, fDataLength))
        return false;
    *outPlace = { fDataOffset + entry.data + 4, entry.length };
    return true;
}

bool ResourceMap::StoredOf(uint32_t inEntry, StoredResource* outStored) const
{
    if (!fEdits)
        return fFork->StoredOf(fFork->WithOrdinal(inEntry), outStored);
    const MapEntry& entry = fEdits->entries[inEntry];
    outStored->type = entry.type;
    outStored->id = entry.id;
    outStored->attributes = entry.attributes;
    return PlaceOf(inEntry, &outStored->data);
}

bool ResourceMap::StoredInMemory(uint32_t inEntry, StoredResource* outStored, const uint8_t** outBytes) const
{
    if (fReader || !StoredOf(inEntry, outStored))
        return false;
    *outBytes = fBytes.data() + outStored->data.offset;
    return Fits(outStored->data.offset, outStored->data.length, fBytes.size());
}

bool ResourceMap::IsInFile(uint32_t inEntry) const
{
    DataPlace ignored;
    return PlaceOf(inEntry, &ignored);
}

bool ResourceMap::Read(size_t inOffset, size_t inCount, void* outBytes) const
{
    if (fReader)
        return fReader->Read(inOffset, inCount, outBytes);
    if (!Fits(inOffset, inCount, fBytes.size()))
        return false;
    if (inCount > 0)
        std::memcpy(outBytes, fBytes.data() + inOffset, inCount);
    return true;
}

namespace {

// Whether the format still holds one more name and one more reference: offsets of lists and names are 16-bit.
bool HasRoom(const ResourceMap::Edits& inEdits, OSType inType, size_t inNameBytes)
{
    const size_t names = inEdits.nameBytes + inNameBytes;
    bool isNewType = true;
    size_t lists = 0, last = 0;
    for (const MapType& type : inEdits.types) {
        const size_t count = type.entries.size() + (type.type == inType ? 1 : 0);
        isNewType &= type.type != inType;
        if (count > kLargest16 + 1)
            return false;
        last = lists;
        lists += count * 12;
    }
    last = isNewType ? lists : last;
    const size_t types = 28 + 2 + (inEdits.types.size() + 1) * 8;
    const bool namesBehind = types + lists + 12 <= kLargest16;
    return names <= kLargest16 && types + last + (namesBehind ? 0 : names) <= kLargest16;
}

} // namespace

uint32_t ResourceMap::Add(OSType inType, SInt16 inID, std::string_view inName)
{
    Edits& edits = Edit();
    const std::string_view name = inName.substr(0, 255);
    if (!HasRoom(edits, inType, name.empty() ? 0 : 1 + name.size()))
        return kNoEntry;
    MapEntry entry;
    entry.type = inType;
    entry.id = inID;
    entry.hasName = !name.empty();
    entry.name = name;
    entry.isChanged = true;
    // What can fail for want of memory comes first.
    const uint32_t number = (uint32_t)edits.entries.size();
    edits.entries.reserve(number == edits.entries.capacity() ? number * 2 + 8 : number);
    if (!TypeOf(inType))
        edits.types.push_back({ inType, {} });
    std::vector<uint32_t>& members = TypeOf(inType)->entries;
    if (members.size() == members.capacity())
        members.reserve(members.size() * 2 + 4);
    edits.hasDuplicates |= !edits.index.emplace(KeyOf(inType, inID), number).second;
    members.push_back(number);
    edits.entries.push_back(std::move(entry));
    edits.nameBytes += name.empty() ? 0 : 1 + name.size();
    ++edits.liveCount;
    ++edits.changedCount;
    edits.isStale = true;
    return number;
}

// After an ID was given up: the next resource that has it counts, if there is one.
void ResourceMap::IndexAgain(OSType inType, SInt16 inID)
{
    fEdits->index.erase(KeyOf(inType, inID));
    const MapType* type = fEdits->hasDuplicates ? TypeOf(inType) : nullptr;
    for (const uint32_t number : type ? type->entries : std::vector<uint32_t>()) {
        if (fEdits->entries[number].id != inID)
            continue;
        fEdits->index[KeyOf(inType, inID)] = number;
        return;
    }
}

void ResourceMap::Remove(uint32_t inEntry)
{
    Edits& edits = Edit();
    MapEntry& entry = edits.entries[inEntry];
    if (entry.isRemoved)
        return;
    SetChanged(inEntry, false);
    entry.isRemoved = true;
    --edits.liveCount;
    edits.nameBytes -= entry.hasName ? 1 + entry.name.size() : 0;
    // A hostile map may have a type twice.
    auto type = edits.types.begin();
    auto member = type->entries.end();
    for (; type != edits.types.end(); ++type) {
        member = type->type == entry.type ? std::find(type->entries.begin(), type->entries.end(), inEntry)
                                          : type->entries.end();
        if (member != type->entries.end())
            break;
    }
    type->entries.erase(member);
    const auto indexed = edits.index.find(KeyOf(entry.type, entry.id));
    if (indexed != edits.index.end() && indexed->second == inEntry)
        IndexAgain(entry.type, entry.id);
    if (type->entries.empty())
        edits.types.erase(type);
    // One that never was in the file leaves nothing to write.
    edits.isStale = true;
    edits.mustWrite |= entry.data != kNotWritten;
}

void ResourceMap::SetInfo(uint32_t inEntry, SInt16 inID, bool inSetsName, std::string_view inName)
{
    Edits& edits = Edit();
    MapEntry& entry = edits.entries[inEntry];
    std::string name(inName.substr(0, 255));
    edits.isStale = true;
    if (inSetsName) {
        edits.nameBytes -= entry.hasName ? 1 + entry.name.size() : 0;
        entry.name = std::move(name);
        entry.hasName = true;
        edits.nameBytes += 1 + entry.name.size();
    }
    if (inID == entry.id)
        return;
    const SInt16 old = entry.id;
    entry.id = inID;
    if (edits.index[KeyOf(entry.type, old)] == inEntry)
        IndexAgain(entry.type, old);
    const bool isNew = edits.index.emplace(KeyOf(entry.type, inID), inEntry).second;
    edits.hasDuplicates |= !isNew;
    if (!isNew)
        IndexAgain(entry.type, inID);
}

void ResourceMap::SetAttributes(uint32_t inEntry, UInt8 inAttributes)
{
    Edits& edits = Edit();
    MapEntry& entry = edits.entries[inEntry];
    const UInt8 kept = (UInt8)(inAttributes & ~kChangedBit);
    if ((entry.attributes & ~kChangedBit) != kept) {
        entry.attributes = kept;
        edits.isStale = true;
    }
}

void ResourceMap::SetChanged(uint32_t inEntry, bool inIsChanged)
{
    if (!fEdits && !inIsChanged)
        return;
    MapEntry& entry = Edit().entries[inEntry];
    if (entry.isChanged == inIsChanged)
        return;
    entry.isChanged = inIsChanged;
    fEdits->changedCount += inIsChanged ? 1 : (size_t)-1;
}

void ResourceMap::SetMapAttributes(UInt16 inAttributes)
{
    Edits& edits = Edit();
    edits.isStale |= edits.attributes != inAttributes;
    edits.attributes = inAttributes;
}

void ResourceMap::MustBeWritten()
{
    Edit().isStale = true;
    fEdits->mustWrite = true;
}

bool ResourceMap::HasChanges() const
{
    return fEdits && (fEdits->mustWrite || fEdits->changedCount > 0);
}

} // namespace lampblack::resources
