// The bytes of a resource fork: read in place with an index, and built anew. Pure: knows no file and no
// handle.
//
//     ResourceFork fork;
//     if (const char* problem = fork.Open(bytes)) ...      // null: the map is sound
//     if (const ResourceRef ref = fork.Find('STR#', 128))
//         Bytes data; fork.Data(ref, &data);               // false: the data are cut off
//
// Of a large fork the map alone may be in memory (OpenMap): data are read from where they lie, by a
// DataReader.
//
// Counts and offsets come from strangers. Open trusts none: type list and reference lists must lie within the
// map and the map within the fork, and a map of N bytes holds at most N / 12 references. What costs reading
// all of the file, the place of each resource's data, is checked when the resource is asked for, or by Check.
// Layout: Inside Macintosh, More Macintosh Toolbox, chapter 1, "Resource File Format".
#ifndef LAMPBLACK_RESOURCES_RESOURCEFORK_H
#define LAMPBLACK_RESOURCES_RESOURCEFORK_H

#include <foundation/BigEndian.h>

#include <string>
#include <string_view>
#include <vector>

namespace lampblack::resources {

using foundation::Bytes;

// A resource of an open fork: the place of its reference. Stays valid as long as the fork's bytes.
struct ResourceRef {
    uint32_t offset = 0; // of the 12-byte reference, from the start of the fork; never 0 for one that exists
    uint16_t typeIndex = 0;

    explicit operator bool() const { return offset != 0; }
    bool operator==(const ResourceRef&) const = default;
};

// What the map says of a resource.
struct ResourceInfo {
    OSType type = 0;
    SInt16 id = 0;
    UInt8 attributes = 0;
    bool hasName = false;
    std::string_view name;   // Mac Roman, in place
    uint32_t dataOffset = 0; // of the length word, from the start of the data area
};

// Reads bytes of a fork that do not lie in memory.
class DataReader {
public:
    virtual ~DataReader() = default;
    // From the start of the fork. False: not all of them are there any more.
    virtual bool Read(size_t inOffset, size_t inCount, void* outBytes) const = 0;
};

// Where data lie in a fork, from its start.
struct DataPlace {
    size_t offset = 0, length = 0;
};

// What loading a resource needs to know.
struct StoredResource {
    OSType type = 0;
    SInt16 id = 0;
    UInt8 attributes = 0;
    DataPlace data;
};

class ResourceFork {
public:
    // Open
    //
    // Reads the map. The bytes must outlive this object and stay as they are. Answers null, or in a few words
    // what is wrong; then the fork is as empty.
    const char* Open(Bytes inFork);

    // The same with the map alone. inHeader are the first 16 bytes; MapPlace says where the map is that they
    // tell of, or nothing of what can be none. The reader must last as long.
    static DataPlace MapPlace(Bytes inHeader, size_t inForkSize);
    const char* OpenMap(Bytes inHeader, Bytes inMap, size_t inForkSize, const DataReader*);

    UInt16 Attributes() const { return fAttributes; }

    // Where the areas lie, from the start of the fork.
    struct Shape {
        uint32_t dataOffset = 0, dataLength = 0, mapOffset = 0, mapLength = 0;
    };
    Shape Areas() const;
    Bytes AllBytes() const { return fBytes; } // none when the map alone is in memory
    const DataReader* Reader() const { return fReader; }

    // Types in the order of the file.
    size_t TypeCount() const { return fTypes.size(); }
    OSType TypeAt(size_t inIndex) const { return inIndex < fTypes.size() ? fTypes[inIndex].type : 0; }
    size_t ResourceCount() const { return fCount; }

    // Resources of one type, in the order of the file. Index 0 is the first.
    size_t CountOf(OSType inType) const;
    ResourceRef At(OSType inType, size_t inIndex) const;
    ResourceRef AtType(size_t inTypeIndex, size_t inIndex) const;
    size_t CountAtType(size_t inTypeIndex) const;

    // The first in the file of that type and ID, or of that name without regard to case; false when there is
    // none.
    ResourceRef Find(OSType inType, SInt16 inID) const;
    ResourceRef FindNamed(OSType inType, std::string_view inMacRomanName) const;

    ResourceInfo Info(ResourceRef) const;

    // A number of its own for each resource, below ResourceCount.
    size_t Ordinal(ResourceRef) const;
    static constexpr uint32_t kNoOrdinal = 0xFFFFFFFF;
    uint32_t FindOrdinal(OSType inType, SInt16 inID) const;
    ResourceRef WithOrdinal(size_t inOrdinal) const;

    UInt32 HandleField(ResourceRef) const; // four bytes of the reference that nobody reads

    // The resource's data where they lie. Answers false, with outData empty, when they pass the end; always
    // when the map alone is in memory.
    bool Data(ResourceRef, Bytes* outData) const;
    bool PlaceOf(ResourceRef, DataPlace* outPlace) const; // with either
    bool StoredOf(ResourceRef, StoredResource*) const;    // false: as PlaceOf

    // Calls inVisit(ResourceRef) for every resource in the order of the file.
    template <class Visitor>
    void ForEach(Visitor&& inVisit) const
    {
        for (size_t type = 0; type < fTypes.size(); ++type)
            for (size_t i = 0; i < fTypes[type].count; ++i)
                inVisit(AtType(type, i));
    }

    // Check
    //
    // Looks at every resource and answers what is wrong with them, one sentence each; nothing for a sound
    // fork.
    std::vector<std::string> Check() const;
    bool IsSound() const; // whether Check finds nothing

private:
    struct TypeEntry {
        OSType type;
        uint32_t count;
        uint32_t firstReference; // from the start of the fork
        uint32_t firstOrdinal;
    };
    // One resource in the hash table, by its ordinal and one; 0 is an empty slot.
    struct Slot {
        uint32_t entry;
        uint16_t typeIndex;
        uint16_t id;
    };

    const char* ReadHeader(Bytes inHeader);
    bool LengthAt(size_t inDataOffset, uint32_t* outLength) const;
    const uint8_t* Reference(ResourceRef) const;
    const char* ReadTypes();
    void BuildIndex();
    size_t SlotOf(OSType inType, uint16_t inID) const;
    size_t IndexOfType(OSType inType) const;

    Bytes fBytes; // all, or none
    const DataReader* fReader = nullptr;
    size_t fSize = 0;
    Bytes fMap;
    uint32_t fDataOffset = 0, fDataLength = 0;
    uint32_t fMapOffset = 0, fMapLength = 0;
    uint32_t fTypeList = 0; // from the start of the map
    uint32_t fNameList = 0;
    UInt16 fAttributes = 0;
    size_t fCount = 0;
    std::vector<TypeEntry> fTypes;
    std::vector<Slot> fSlots;
};

// Four neighbouring IDs, the usual case, take neighbouring slots; whatever runs of IDs the types have, the
// groups are spread over the whole table.
inline size_t ResourceFork::SlotOf(OSType inType, uint16_t inID) const
{
    const uint64_t group = ((uint64_t)inType << 14 | inID >> 2) * 0x9E3779B97F4A7C15u;
    const size_t mask = fSlots.size() - 1;
    for (size_t at = ((size_t)(group >> 32) * 4 + (inID & 3)) & mask;; at = (at + 1) & mask) {
        const Slot& slot = fSlots[at];
        if (slot.entry == 0 || (slot.id == inID && fTypes[slot.typeIndex].type == inType))
            return at;
    }
}

inline uint32_t ResourceFork::FindOrdinal(OSType inType, SInt16 inID) const
{
    if (fSlots.empty())
        return kNoOrdinal;
    return fSlots[SlotOf(inType, (uint16_t)inID)].entry - 1; // an empty slot's 0 becomes kNoOrdinal
}

// One resource to put into a fork.
struct ForkEntry {
    OSType type = 0;
    SInt16 id = 0;
    UInt8 attributes = 0;
    bool hasName = false;
    std::string name; // Mac Roman, at most 255 bytes
    Bytes data;       // must stay until Build
};

// ForkBuilder
//
// Makes the bytes of a fork: types in the order of their first entries, the resources of each in the order
// they were added, data in the order added. Nothing is sorted, merged or dropped.
class ForkBuilder {
public:
    void SetAttributes(UInt16 inAttributes) { fAttributes = inAttributes; }
    void Add(ForkEntry inEntry) { fEntries.push_back(std::move(inEntry)); }
    const std::vector<ForkEntry>& Entries() const { return fEntries; }

    // Answers null and fills outFork, or says which limit of the format the entries pass (16 MB of data, 64
    // KB of names, reference lists that begin within 64 KB, 65,536 resources of a type).
    const char* Build(std::vector<uint8_t>* outFork) const;

private:
    std::vector<ForkEntry> fEntries;
    UInt16 fAttributes = 0;
};

} // namespace lampblack::resources

#endif
