// Handles by type and ID: open addressing, linear probing, no tombstones. It holds no more than handles of
// resources that are loaded, so that a look-up that finds one is one probe and needs nothing else.
#ifndef LAMPBLACK_RESOURCES_LOADEDTABLE_H
#define LAMPBLACK_RESOURCES_LOADEDTABLE_H

#include <Carbon/MacTypes.h>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace lampblack::resources {

class LoadedTable {
public:
    bool IsEmpty() const { return fCount == 0; }

    Handle Find(OSType inType, SInt16 inID) const
    {
        if (fCount == 0)
            return nullptr;
        return fSlots[SlotOf(KeyOf(inType, inID))].handle;
    }

    void Insert(OSType inType, SInt16 inID, Handle inHandle)
    {
        if ((fCount + 1) * 3 > fSlots.size() * 2)
            Grow();
        Slot& slot = fSlots[SlotOf(KeyOf(inType, inID))];
        fCount += slot.handle ? 0 : 1;
        slot = { KeyOf(inType, inID), inHandle };
    }

    void Erase(OSType inType, SInt16 inID)
    {
        const size_t slot = fCount ? SlotOf(KeyOf(inType, inID)) : 0;
        if (fCount == 0 || !fSlots[slot].handle)
            return;
        CloseGap(slot);
        --fCount;
    }

    void Clear()
    {
        fSlots.clear();
        fCount = 0;
    }

private:
    struct Slot {
        uint64_t key = 0;
        Handle handle = nullptr; // null: the slot is empty
    };

    static uint64_t KeyOf(OSType inType, SInt16 inID) { return (uint64_t)inType << 16 | (uint16_t)inID; }
    size_t Mask() const { return fSlots.size() - 1; }
    // The upper bits: they spread runs of IDs evenly.
    size_t HomeOf(uint64_t inKey) const { return (size_t)((inKey * 0x9E3779B97F4A7C15u) >> fShift); }

    size_t SlotOf(uint64_t inKey) const
    {
        const Slot* slots = fSlots.data();
        const size_t mask = Mask();
        size_t at = HomeOf(inKey);
        while (slots[at].handle && slots[at].key != inKey)
            at = (at + 1) & mask;
        return at;
    }

    // Moves back whatever a probe would no longer reach across the hole.
    void CloseGap(size_t inHole)
    {
        for (size_t next = (inHole + 1) & Mask(); fSlots[next].handle; next = (next + 1) & Mask()) {
            const size_t distance = (next - HomeOf(fSlots[next].key)) & Mask();
            if (distance < ((next - inHole) & Mask()))
                continue;
            fSlots[inHole] = fSlots[next];
            inHole = next;
        }
        fSlots[inHole] = {};
    }

    void Grow()
    {
        std::vector<Slot> old(fSlots.empty() ? 16 : fSlots.size() * 2);
        old.swap(fSlots);
        fShift = 64 - std::countr_zero(fSlots.size());
        for (const Slot& slot : old)
            if (slot.handle)
                fSlots[SlotOf(slot.key)] = slot;
    }

    std::vector<Slot> fSlots;
    size_t fCount = 0;
    int fShift = 63; // 64 less the bits of a slot's number
};

} // namespace lampblack::resources

#endif
