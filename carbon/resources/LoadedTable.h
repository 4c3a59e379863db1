// Handles by type and ID: it holds no more than handles of resources that are loaded, so that a look-up that finds
// one is one probe and needs nothing else.
//
// Eight neighbouring IDs share a slot, in which each has its place: of resources that are numbered in a row, the
// usual case, there are few slots, that lie close together and are found at the first try. Open addressing, linear
// probing; a slot whose handles are all gone stays until the table grows.
#ifndef LAMPBLACK_RESOURCES_LOADEDTABLE_H
#define LAMPBLACK_RESOURCES_LOADEDTABLE_H

#include <Carbon/MacTypes.h>

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace lampblack::resources {

// What a look-up reads of a table.
struct LoadedView {
    static constexpr size_t kSlotSize = 8;
    static constexpr uint64_t kNoGroup = ~(uint64_t)0;
    static constexpr uint64_t kNothing[2] = { kNoGroup, kNoGroup };

    const uint64_t* groups = kNothing; // which IDs of which type have the slot
    const Handle* handles = nullptr;   // kSlotSize of each slot; null: not loaded
    int shift = 63;                    // 64 less the bits of a slot's number

    static uint64_t GroupOf(OSType inType, SInt16 inID)
    {
        return (uint64_t)inType << 13 | (uint16_t)inID / kSlotSize;
    }
    static size_t PlaceOf(SInt16 inID) { return (uint16_t)inID % kSlotSize; } // in its slot
    // The upper bits: they spread runs of groups evenly.
    size_t HomeOf(uint64_t inGroup) const { return (size_t)((inGroup * 0x9E3779B97F4A7C15u) >> shift); }

    // The group's slot, or the empty one where it would be.
    size_t SlotOf(uint64_t inGroup) const
    {
        size_t slot = HomeOf(inGroup);
        while (groups[slot] != inGroup && groups[slot] != kNoGroup)
            slot = (slot + 1) & (((size_t)1 << (64 - shift)) - 1);
        return slot;
    }

    Handle Find(OSType inType, SInt16 inID) const
    {
        const uint64_t group = GroupOf(inType, inID);
        const size_t slot = SlotOf(group);
        return groups[slot] == group ? handles[slot * kSlotSize + PlaceOf(inID)] : nullptr;
    }

    // Looks no farther than the first slot, where most are.
    Handle FindAtHome(OSType inType, SInt16 inID) const
    {
        const uint64_t group = GroupOf(inType, inID);
        const size_t slot = HomeOf(group);
        return groups[slot] == group ? handles[slot * kSlotSize + PlaceOf(inID)] : nullptr;
    }
};

class LoadedTable {
public:
    LoadedTable() = default;
    LoadedTable(const LoadedTable&) = delete;

    const LoadedView& View() const { return fView; } // lasts as long as the table
    bool IsEmpty() const { return fCount == 0; }
    Handle Find(OSType inType, SInt16 inID) const { return fView.Find(inType, inID); }

    void Insert(OSType inType, SInt16 inID, Handle inHandle)
    {
        const uint64_t group = LoadedView::GroupOf(inType, inID);
        if (fGroups.empty() || fGroups[fView.SlotOf(group)] != group)
            MakeRoom();
        const size_t slot = fView.SlotOf(group);
        fSlotCount += fGroups[slot] == group ? 0 : 1;
        fGroups[slot] = group;
        Handle& place = PlaceIn(slot, inID);
        fCount += place ? 0 : 1;
        place = inHandle;
    }

    void Erase(OSType inType, SInt16 inID)
    {
        if (!Find(inType, inID))
            return;
        PlaceIn(fView.SlotOf(LoadedView::GroupOf(inType, inID)), inID) = nullptr;
        --fCount;
    }

    void Clear()
    {
        fView = {};
        fGroups.clear();
        fHandles.clear();
        fSlotCount = fCount = 0;
    }

private:
    static constexpr size_t kSlotSize = LoadedView::kSlotSize;

    Handle& PlaceIn(size_t inSlot, SInt16 inID)
    {
        return fHandles[inSlot * kSlotSize + LoadedView::PlaceOf(inID)];
    }

    static bool HasHandles(const Handle* inSlot)
    {
        return std::any_of(inSlot, inSlot + kSlotSize, [](Handle handle) { return handle != nullptr; });
    }

    // For one more group; at most half of the slots are taken.
    void MakeRoom()
    {
        if ((fSlotCount + 1) * 2 > fGroups.size())
            Rebuild();
    }

    void Rebuild()
    {
        size_t live = 1;
        for (size_t slot = 0; slot < fGroups.size(); ++slot)
            live += HasHandles(&fHandles[slot * kSlotSize]) ? 1 : 0;
        std::vector<uint64_t> groups(std::bit_ceil(live * 3), LoadedView::kNoGroup);
        std::vector<Handle> handles(groups.size() * kSlotSize);
        const LoadedView view = { groups.data(), handles.data(), 64 - std::countr_zero(groups.size()) };
        for (size_t slot = 0; slot < fGroups.size(); ++slot) {
            const Handle* old = &fHandles[slot * kSlotSize];
            if (!HasHandles(old))
                continue;
            const size_t place = view.SlotOf(fGroups[slot]);
            groups[place] = fGroups[slot];
            std::copy_n(old, kSlotSize, &handles[place * kSlotSize]);
        }
        fGroups.swap(groups);
        fHandles.swap(handles);
        fView = view;
        fSlotCount = live - 1;
    }

    LoadedView fView; // of the two vectors
    std::vector<uint64_t> fGroups;
    std::vector<Handle> fHandles;
    size_t fSlotCount = 0, fCount = 0;
};

} // namespace lampblack::resources

#endif
