// The map of an open resource file. As long as nothing is changed it is that of the fork's bytes, read in
// place; the first change makes records of it. Pure: knows no file and no handle. Begin at ResourceMap::Find.
//
// Resources go by numbers of their own that last as long as the map is open: the first are those of the file
// in its order, the others follow as they are added.
#ifndef LAMPBLACK_RESOURCES_RESOURCEMAP_H
#define LAMPBLACK_RESOURCES_RESOURCEMAP_H

#include "ResourceFork.h"

#include <memory>
#include <unordered_map>

namespace lampblack::resources {

constexpr uint32_t kNoEntry = 0xFFFFFFFF;
constexpr uint32_t kNotWritten = 0xFFFFFFFF;

// Grows whenever what a map says may have changed, or the place of the bytes that it leads to. Never 0.
inline constinit unsigned gMapEpoch = 1;

struct MapEntry {
    OSType type = 0;
    SInt16 id = 0;
    UInt8 attributes = 0; // as in the file, whatever its bits
    bool hasName = false;
    bool isChanged = false; // what the handle holds is to be written
    bool isRemoved = false;
    uint32_t handleField = 0;    // four bytes of the reference that nobody reads
    uint32_t data = kNotWritten; // of the length word, from the start of the data area
    uint32_t length = 0;         // of the data in the file
    uint32_t reference = 0;      // from the start of the fork; 0: none there
    std::string name;
};

struct MapType {
    OSType type;
    std::vector<uint32_t> entries;
};

class ResourceMap {
public:
    ~ResourceMap() { ++gMapEpoch; }

    // The fork must outlive this object or the next Open.
    void Open(const ResourceFork*);

    UInt16 Attributes() const;
    size_t TypeCount() const;
    OSType TypeAt(size_t inIndex) const;
    size_t CountOf(OSType) const;
    size_t EntryCount() const; // the numbers of entries are below it

    uint32_t Find(OSType inType, SInt16 inID) const
    {
        static_assert(kNoEntry == ResourceFork::kNoOrdinal);
        return fEdits ? FindRecord(inType, inID) : fFork->FindOrdinal(inType, inID);
    }
    uint32_t FindNamed(OSType, std::string_view inMacRomanName) const;
    uint32_t At(OSType, size_t inIndex) const; // 0 is the first

    // Attributes are those of the file, without bit 1.
    ResourceInfo Info(uint32_t inEntry) const;
    bool IsChanged(uint32_t inEntry) const { return fEdits && IsRecordChanged(inEntry); }

    // Where the data are in the fork. False when they pass its end, or were never written.
    bool PlaceOf(uint32_t inEntry, DataPlace* outPlace) const;
    bool IsInFile(uint32_t inEntry) const;
    bool StoredOf(uint32_t inEntry, StoredResource*) const; // false: as PlaceOf
    // The same, and where the data lie in memory; false also of what is read.
    bool StoredInMemory(uint32_t inEntry, StoredResource*, const uint8_t** outBytes) const;

    // Bytes of the fork; false when they cannot be read any more.
    bool Read(size_t inOffset, size_t inCount, void* outBytes) const;

    // Changing. IsEdited says that there are records; the calls below make them.
    bool IsEdited() const { return fEdits != nullptr; }
    uint32_t Add(OSType, SInt16 inID, std::string_view inName); // kNoEntry: the format cannot hold it
    void Remove(uint32_t inEntry);
    void SetInfo(uint32_t inEntry, SInt16 inID, bool inSetsName, std::string_view inName);
    void SetAttributes(uint32_t inEntry, UInt8);
    void SetChanged(uint32_t inEntry, bool);
    void SetMapAttributes(UInt16);
    void MustBeWritten(); // the map, though nothing of it may have changed

    bool HasChanges() const;                                      // anything to write
    bool IsMapStale() const { return fEdits && fEdits->isStale; } // the file's map differs

    // For those who write it.
    struct Edits {
        std::vector<MapEntry> entries;
        std::vector<MapType> types;
        std::unordered_map<uint64_t, uint32_t> index;
        UInt16 attributes = 0;
        size_t nameBytes = 0, liveCount = 0, changedCount = 0;
        bool hasDuplicates = false;
        bool isStale = false, mustWrite = false;
    };
    Edits& Edit();
    const Edits* Records() const { return fEdits.get(); }

    // The fork's bytes are others now; entries tell where their data are.
    void Rebase(Bytes inFork, uint32_t inDataOffset, uint32_t inDataLength);

private:
    uint32_t FindRecord(OSType, SInt16 inID) const;
    bool IsRecordChanged(uint32_t inEntry) const;
    void IndexAgain(OSType, SInt16 inID);
    MapType* TypeOf(OSType);
    const MapType* TypeOf(OSType) const;

    const ResourceFork* fFork = nullptr;
    std::unique_ptr<Edits> fEdits;
    Bytes fBytes; // the fork; none when it is read
    const DataReader* fReader = nullptr;
    size_t fDataOffset = 0, fDataLength = 0;
};

} // namespace lampblack::resources

#endif
