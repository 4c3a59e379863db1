// What was loaded of late, and how: an application that takes a resource away each time it has asked for it, as
// readers of preferences do, is given the next copy without a search.
//
// An entry counts as long as no map has changed, no file has been opened or closed and no flipper has come: each of
// these begins a new epoch.
#ifndef LAMPBLACK_RESOURCES_RECENTLOADS_H
#define LAMPBLACK_RESOURCES_RECENTLOADS_H

#include "ResourceMap.h"

#include <Carbon/Resources.h>
#include <memory/HandleBlock.h>

#include <cstring>

namespace lampblack::resources {

struct ResourceFile;

struct RecentLoad {
    const ResourceFile* file = nullptr;
    const uint8_t* bytes = nullptr; // in native order
    unsigned epoch = 0;             // never 0 of what counts
    uint32_t length = 0;
    uint32_t entry = 0;
    OSType type = 0;
    SInt16 id = 0;
    UInt8 attributes = 0;

    // Gives an empty handle the data. False without memory.
    bool LoadInto(memory::HandleBlock* ioBlock) const
    {
        if (!memory::GiveData(ioBlock, (Size)length))
            return false;
        // Most are numbers.
        if (length == 4)
            std::memcpy(ioBlock->data, bytes, 4);
        else
            std::memcpy(ioBlock->data, bytes, length);
        ioBlock->state |= (UInt8)((attributes & resPurgeable ? kHandlePurgeableMask : 0) |
                                  (attributes & resLocked ? kHandleLockedMask : 0));
        return true;
    }
};

class RecentLoads {
public:
    // What the type and ID led to in the file; null: it is not known any more.
    const RecentLoad* Find(const ResourceFile* inFile, OSType inType, SInt16 inID) const
    {
        const RecentLoad& load = fLoads[PlaceOf(inType, inID)];
        const bool counts =
            load.file == inFile && load.type == inType && load.id == inID && load.epoch == gMapEpoch;
        return counts ? &load : nullptr;
    }

    void Keep(const RecentLoad& inLoad)
    {
        RecentLoad& load = fLoads[PlaceOf(inLoad.type, inLoad.id)];
        load = inLoad;
        load.epoch = gMapEpoch;
    }

private:
    static constexpr size_t kCount = 256;
    static size_t PlaceOf(OSType inType, SInt16 inID)
    {
        return ((inType * 0x9E3779B1u >> 16) + (uint16_t)inID) % kCount;
    }

    RecentLoad fLoads[kCount];
};

} // namespace lampblack::resources

#endif
