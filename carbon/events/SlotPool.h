// Records that are checked on every use: a reference is a record's address with the record's generation in
// its low bits, so that asking whether it is alive takes a subtraction and two comparisons, and a reference
// to a record that was given back stays dead until its slot has been used again some dozens of times.
//
//     struct Timer : Slot<Timer> { ... };
//     SlotPool<Timer, EventLoopTimerRef, 1 << 20> pool;
//     Timer* timer = pool.Take();                      // null when all are taken
//     EventLoopTimerRef reference = pool.ReferenceTo(timer);
//     Timer* same = pool.Find(reference);              // null unless alive
//     pool.GiveBack(timer);
//
// A record is constructed when its slot is first used and then stays constructed; whoever takes one sets it
// up.
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

template <class Record>
struct Slot {
    static constexpr uint32_t kDead = 0xFFFFFFFF;

    uint32_t tag = kDead;    // the low bits of the live reference
    uint32_t generation = 0; // of the next reference
    Record* nextFree = nullptr;
};

template <class Record, class Reference, size_t kCapacity>
class SlotPool {
public:
    // The addresses are reserved at once, and cost no memory until they are used.
    SlotPool()
    {
        void* storage = mmap(nullptr, kCapacity * kSlotSize, PROT_READ | PROT_WRITE,
                             MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
        if (storage == MAP_FAILED)
            return;
        madvise(storage, kCapacity * kSlotSize, MADV_NOHUGEPAGE); // a huge page for ten timers is too much
        fBase = (uintptr_t)storage;
        fReserved = kCapacity;
#ifdef LAMPBLACK_EVENTS_LEAK_CHECKED
        fReserved = kCapacity / 16; // the checker reads all of it to see what the records own
        __lsan_register_root_region(storage, fReserved * kSlotSize);
#endif
    }
    SlotPool(const SlotPool&) = delete;
    SlotPool& operator=(const SlotPool&) = delete;

    Record* Find(Reference inReference) const
    {
        const uintptr_t offset = (uintptr_t)inReference - fBase;
        if (offset >= fUsedBytes)
            return nullptr;
        Record* record = (Record*)(fBase + (offset & ~kMask));
        return record->tag == (offset & kMask) ? record : nullptr;
    }

    Reference ReferenceTo(const Record* inRecord) const
    {
        return (Reference)((uintptr_t)inRecord + inRecord->tag);
    }

    Record* Take()
    {
        Record* record = fFree ? fFree : NewSlot();
        if (!record) [[unlikely]]
            return nullptr;
        fFree = record->nextFree;
        record->tag = record->generation++ & kMask;
        ++fAlive;
        return record;
    }

    void GiveBack(Record* inRecord)
    {
        inRecord->tag = Record::kDead;
        inRecord->nextFree = fFree;
        fFree = inRecord;
        --fAlive;
    }

    size_t Alive() const
    {
        return fAlive;
    }

private:
    static constexpr size_t kSlotSize = std::bit_ceil(sizeof(Record));
    static constexpr uintptr_t kMask = kSlotSize - 1;
    static_assert(kSlotSize >= 64 && kSlotSize <= 4096, "room for generations; slots lie on their own size");

    [[gnu::noinline]] Record* NewSlot()
    {
        if (fUsedBytes == fReserved * kSlotSize)
            return nullptr;
        Record* record = new ((void*)(fBase + fUsedBytes)) Record;
        fUsedBytes += kSlotSize;
        return record;
    }

    uintptr_t fBase = 0;
    size_t fReserved = 0;
    uintptr_t fUsedBytes = 0;
    Record* fFree = nullptr;
    size_t fAlive = 0;
};

} // namespace lampblack::events

#endif
