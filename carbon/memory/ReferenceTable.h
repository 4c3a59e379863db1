// Which references are alive. Every public entry asks a ReferenceTable before it touches a record, so that a
// null, disposed or foreign reference is an error and never a fault.
//
//     ReferenceTable<WindowRecord>& Windows() { static ReferenceTable<WindowRecord> table; return table; }
//
//     WindowRecord* record = Windows().New(bounds);     // owns it; `record` serves as the opaque reference
//     WindowRecord* record = Windows().Find(inWindow);  // null unless alive
//     Windows().Delete(record);
//
// New and Delete keep the storage of the records disposed of last for a while, so that a stale reference does
// not soon become a live one again. Add and Remove serve whoever owns the storage himself.
#ifndef LAMPBLACK_MEMORY_REFERENCETABLE_H
#define LAMPBLACK_MEMORY_REFERENCETABLE_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <utility>
#include <vector>

namespace lampblack::memory {

// A set of addresses: open addressing, linear probing, no tombstones. A look-up is a multiplication and,
// mostly, one load.
class AddressSet {
public:
    bool Contains(const void* inAddress) const
    {
        return inAddress && !fSlots.empty() && fSlots[SlotOf(inAddress)] == inAddress;
    }

    void Insert(const void* inAddress)
    {
        if (!inAddress || Contains(inAddress))
            return;
        if ((fCount + 1) * 2 > fSlots.size())
            Grow();
        fSlots[SlotOf(inAddress)] = inAddress;
        ++fCount;
    }

    bool Erase(const void* inAddress)
    {
        if (!Contains(inAddress))
            return false;
        CloseGap(SlotOf(inAddress));
        --fCount;
        return true;
    }

    size_t Count() const { return fCount; }

    // The addresses as they are now, in no order. A copy, so that the set may change while they are visited.
    std::vector<const void*> All() const
    {
        std::vector<const void*> all;
        all.reserve(fCount);
        for (const void* address : fSlots)
            if (address)
                all.push_back(address);
        return all;
    }

private:
    size_t Mask() const { return fSlots.size() - 1; }

    size_t HomeOf(const void* inAddress) const
    {
        const uint64_t key = (uint64_t)(uintptr_t)inAddress;
        return (size_t)((key * 0x9E3779B97F4A7C15u) >> 32) & Mask();
    }

    // Where the address is, or the empty slot where it would go.
    size_t SlotOf(const void* inAddress) const
    {
        size_t slot = HomeOf(inAddress);
        while (fSlots[slot] && fSlots[slot] != inAddress)
            slot = (slot + 1) & Mask();
        return slot;
    }

    // Moves back whatever a probe would no longer reach across the hole.
    void CloseGap(size_t inHole)
    {
        for (size_t next = (inHole + 1) & Mask(); fSlots[next]; next = (next + 1) & Mask()) {
            const size_t distance = (next - HomeOf(fSlots[next])) & Mask();
            if (distance < ((next - inHole) & Mask()))
                continue;
            fSlots[inHole] = fSlots[next];
            inHole = next;
        }
        fSlots[inHole] = nullptr;
    }

    void Grow()
    {
        std::vector<const void*> old(fSlots.empty() ? 16 : fSlots.size() * 2);
        old.swap(fSlots);
        for (const void* address : old)
            if (address)
                fSlots[SlotOf(address)] = address;
    }

    std::vector<const void*> fSlots;
    size_t fCount = 0;
};

template <class Record>
class ReferenceTable {
public:
    ReferenceTable() = default;
    ReferenceTable(const ReferenceTable&) = delete;
    ReferenceTable& operator=(const ReferenceTable&) = delete;

    ~ReferenceTable()
    {
        for (Record* record : fOwned)
            if (Find(record))
                std::destroy_at(record);
        for (Record* record : fOwned)
            ::operator delete(record, std::align_val_t(alignof(Record)));
    }

    // The live record behind a reference of any type, or null.
    template <class Reference>
    Record* Find(Reference* inReference) const
    {
        const void* address = (const void*)inReference;
        return fLive.Contains(address) ? const_cast<Record*>(static_cast<const Record*>(address)) : nullptr;
    }

    template <class... Arguments>
    Record* New(Arguments&&... inArguments)
    {
        void* storage = TakeStorage();
        Record* record = new (storage) Record(std::forward<Arguments>(inArguments)...);
        fLive.Insert(record);
        return record;
    }

    // Ends a record that New made. A reference that is not alive is left alone.
    void Delete(Record* inRecord)
    {
        if (!fLive.Erase(inRecord))
            return;
        std::destroy_at(inRecord);
        fFree.push_back(inRecord);
    }

    // For records in storage of the caller's own.
    void Add(Record* inRecord) { fLive.Insert(inRecord); }
    bool Remove(Record* inRecord) { return fLive.Erase(inRecord); }

    size_t Count() const { return fLive.Count(); }

    // Calls inVisit(Record*) for each record that is still alive when its turn comes; it may add and delete.
    template <class Visitor>
    void ForEach(Visitor&& inVisit)
    {
        for (const void* address : fLive.All())
            if (Record* record = Find(address))
                inVisit(record);
    }

private:
    static constexpr size_t kQuarantine = 256; // disposed records whose addresses are not yet used again

    // Everything that allocates is done before the record exists, so that New is whole or nothing.
    void* TakeStorage()
    {
        if (fFree.size() - fNextFree > kQuarantine) {
            void* storage = fFree[fNextFree++];
            if (fNextFree > kQuarantine) {
                fFree.erase(fFree.begin(), fFree.begin() + (ptrdiff_t)fNextFree);
                fNextFree = 0;
            }
            return storage;
        }
        const size_t most = fOwned.size() + 1 + kQuarantine + 1; // what Delete may ever come to hold
        if (fFree.capacity() < most)
            fFree.reserve(2 * most);
        fOwned.push_back(nullptr);
        fOwned.back() = (Record*)::operator new(sizeof(Record), std::align_val_t(alignof(Record)));
        return fOwned.back();
    }

    AddressSet fLive;
    std::vector<Record*> fOwned; // all storage that New ever took
    std::vector<Record*> fFree;  // disposed of, oldest first, from fNextFree on
    size_t fNextFree = 0;
};

} // namespace lampblack::memory

#endif
