// How the next state of a fork is written: in place, by bytes that go where nothing lives and one small write
// that makes them count, or as a whole. Pure: knows no file. Begin at PlanUpdate.
//
// A fork that is written as a whole is laid out as header, 240 reserved bytes, data with free space behind
// them, the map, and room for a second one. An update puts new data into free space and the new map into the
// other place, and then the header's 16 bytes name that. Of one resource whose map entry does not change
// otherwise, only the word with the place of its data is written. Either lies within one sector, and so is
// written all or not at all; at every instant the fork is a valid one, with the map within it and behind the
// data.
#ifndef LAMPBLACK_RESOURCES_FORKPLAN_H
#define LAMPBLACK_RESOURCES_FORKPLAN_H

#include "FreeSpace.h"

namespace lampblack::resources {

// Data of one resource, as they are to be in the file.
struct NewData {
    uint32_t entry = kNoEntry;
    std::vector<uint8_t> bytes;
};

struct Patch {
    uint32_t offset = 0; // from the start of the fork
    std::vector<uint8_t> bytes;
};

struct ForkPlan {
    // In place: first these, flushed, then the one that makes them count.
    std::vector<Patch> preparations;
    Patch commit;

    // As a whole: these bytes, then zeros.
    std::vector<uint8_t> whole;
    size_t room = 0;

    // What the map's records say afterwards.
    struct Moved {
        uint32_t entry, data, length;
    };
    std::vector<Moved> moved;
    std::vector<std::pair<uint32_t, uint32_t>> references; // entry and place; empty: all stay
    ResourceFork::Shape areas;
};

struct PlanInput {
    Bytes fork;                // as it is in the file
    ResourceFork::Shape areas; // of it
    const ResourceMap::Edits* map;
    const std::vector<NewData>* newData;
    SInt64 fileOffset = 82; // of the fork within its host file: decides what lies in one sector
};

// Whether a record is in the file once the update is: it has data there, or gets them.
bool IsWritten(const MapEntry&, bool inHasNewData);

// PlanInPlace
//
// False when there is no room for it. What is taken of the free space belongs to the plan.
bool PlanInPlace(const PlanInput&, FreeSpace* ioSpace, ForkPlan* outPlan);

// PlanWhole
//
// Answers null, or which limit of the format the resources pass. Nothing is left free when inIsCompact.
const char* PlanWhole(const PlanInput&, bool inIsCompact, ForkPlan* outPlan);

// Makes the records say what the plan has written, and gives free what is no longer used; a null inSpace
// needs none.
void TakeOver(const ForkPlan&, ResourceMap::Edits* ioMap, FreeSpace* ioSpace);

} // namespace lampblack::resources

#endif
