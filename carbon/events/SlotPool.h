// Records that are checked on every use. A reference is no address but a number: below, the place of the
// record's slot in the pool, above, how often the slot was used. The live reference stands in the slot, so
// that asking whether one is alive takes a mask, an addition and one comparison; and a stale one stays dead
// until its slot has been used four thousand million times.
//
//     struct Timer : Slot { ... };
//     SlotPool<Timer, EventLoopTimerRef, 1 << 20> pool;
//     Timer* timer = pool.Take();                      // null when all are taken
//     EventLoopTimerRef reference = pool.ReferenceTo(timer);
//     Timer* same = pool.Find(reference);              // null unless alive
//     pool.GiveBack(timer);
//
// A record is constructed when its slot is first used and then stays constructed; whoever takes one sets it
// up. What is no reference of this pool, whatever its bits, finds nothing.
#ifndef LAMPBLACK_EVENTS_SLOTPOOL_H
#define LAMPBLACK_EVENTS_SLOTPOOL_H

#include <bit>
#include <cstddef>
#include <cstdint>
#include <new>

#include <sys/mman.h>

#if defined(__SANITIZE_ADDRESS__)
#define LAMPBLACK_EVENTS_LEAK_CHECKED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define LAMPBLACK_EVENTS_LEAK_CHECKED 1
#endif
#endif
#ifdef LAMPBLACK_EVENTS_LEAK_CHECKED
#include <sanitizer/lsan_interface.h>
#endif

namespace lampblack::events {

// Of a slot in use, its reference. Of a free one, its next reference plus one slot, which would be a
// reference to its neighbour; 0 of a slot that was never used.
struct Slot {
    uint64_t tag = 0;
    Slot* nextFree = nullptr;
};

template <class Record, class Reference, size_t kCapacity>
class SlotPool {
public:
    constexpr SlotPool() = default;
    SlotPool(const SlotPool&) = delete;
    SlotPool& operator=(const SlotPool&) = delete;

    Record* Find(Reference inReference) const
    {
        const uint64_t key = (uint64_t)(uintptr_t)inReference;
        Slot* slot = (Slot*)((char*)gBase + (key & gMask));
        return slot->tag == key ? static_cast<Record*>(slot) : nullptr;
    }

    Reference ReferenceTo(const Record* inRecord) const { return (Reference)(uintptr_t)inRecord->tag; }

    bool HasFree() const { return gFree; }

    Record* Take()
    {
        Slot* slot = gFree;
        if (!slot) [[unlikely]]
            if (!(slot = NewSlot()))
                return nullptr;
        gFree = slot->nextFree;
        slot->tag -= kSlotSize;
        return static_cast<Record*>(slot);
    }

    void GiveBack(Record* inRecord)
    {
        inRecord->tag += kUse + kSlotSize;
        inRecord->nextFree = gFree;
        gFree = inRecord;
    }

private:
    static constexpr size_t kSlotSize = std::bit_ceil(sizeof(Record));
    static constexpr uint64_t kUse = uint64_t{ 1 } << 32;      // one use in a reference
    static constexpr uint64_t kFirstUse = uint64_t{ 1 } << 63; // a bit that no address has
    static_assert(std::has_single_bit(kCapacity) && kCapacity * kSlotSize <= kUse, "room for the place");

    // Where every reference leads before the first record is made: two slots with the tags of no record.
    static inline constinit Slot gNothing[kSlotSize / sizeof(Slot) + 1] = { { kSlotSize, nullptr } };

    // As many slots as the machine has addresses for.
    static void* Map(size_t* ioSize)
    {
        for (; *ioSize >= 256 * kSlotSize; *ioSize /= 2) {
            void* storage = mmap(nullptr, *ioSize, PROT_READ | PROT_WRITE,
                                 MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
            if (storage != MAP_FAILED)
                return storage;
        }
        return nullptr;
    }

    // The addresses are reserved at once, and cost no memory until they are used. Where no record is yet
    // there are zeros, the tag of nothing. The first slot is nobody's: null and small numbers lead there.
    bool Reserve()
    {
        size_t size = kCapacity * kSlotSize;
#ifdef LAMPBLACK_EVENTS_LEAK_CHECKED
        size /= 16; // the checker reads all of it to see what the records own
#endif
        void* storage = Map(&size);
        if (!storage)
            return false;
        madvise(storage, size, MADV_NOHUGEPAGE); // a huge page for ten records is too much
#ifdef LAMPBLACK_EVENTS_LEAK_CHECKED
        __lsan_register_root_region(storage, size);
#endif
        gBase = new (storage) Slot{ kSlotSize, nullptr };
        gMask = size - kSlotSize;
        gUsed = kSlotSize;
        return true;
    }

    [[gnu::noinline]] Slot* NewSlot()
    {
        if ((!gUsed && !Reserve()) || gUsed > gMask)
            return nullptr;
        Record* record = new ((void*)((char*)gBase + gUsed)) Record;
        record->tag = kFirstUse + gUsed + kSlotSize;
        gUsed += kSlotSize;
        return record;
    }

    // Static, so that each is found without asking where the pool is; there is one pool of a kind.
    static inline constinit Slot* gBase = gNothing;
    static inline constinit uint64_t gMask = kSlotSize; // of the place in a reference
    static inline constinit Slot* gFree = nullptr;
    static inline constinit uint64_t gUsed = 0; // bytes
};

} // namespace lampblack::events

#endif
