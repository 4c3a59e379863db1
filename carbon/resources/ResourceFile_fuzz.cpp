// Any bytes as a resource file: the container is told, the fork opened, every resource walked, flipped to
// native order and back, and what was read is built anew and must read the same. A sound fork is changed,
// too, in place and as a whole: until the last write it reads as it was, and then as it was meant.
#include "Container.h"
#include "Flippers.h"
#include "ForkPlan.h"
#include "ResourceFork.h"

#include <algorithm>
#include <cstdlib>

using namespace lampblack::resources;

namespace {

void Require(bool inHolds)
{
    if (!inHolds)
        std::abort();
}

bool IsSame(Bytes inLeft, Bytes inRight)
{
    return std::equal(inLeft.begin(), inLeft.end(), inRight.begin(), inRight.end());
}

// On a block of its own exact size, so that a sanitizer sees a step past its end.
void FlipThereAndBack(const ResourceInfo& inInfo, Bytes inData)
{
    const CoreEndianFlipProc flip = StandardFlipper(inInfo.type);
    if (!flip)
        return;
    std::vector<uint8_t> copy(inData.begin(), inData.end());
    flip(kCoreEndianResourceManagerDomain, inInfo.type, inInfo.id, copy.data(), copy.size(), false, nullptr);
    flip(kCoreEndianResourceManagerDomain, inInfo.type, inInfo.id, copy.data(), copy.size(), true, nullptr);
    Require(IsSame(copy, inData));
}

void Visit(const ResourceFork& inFork, ResourceRef inRef, ForkBuilder* ioBuilder)
{
    const ResourceInfo info = inFork.Info(inRef);
    Require(inFork.Ordinal(inRef) < inFork.ResourceCount());
    Require((bool)inFork.Find(info.type, info.id));
    Bytes data;
    if (!inFork.Data(inRef, &data))
        return;
    FlipThereAndBack(info, data);
    ioBuilder->Add({ info.type, info.id, info.attributes, info.hasName, std::string(info.name), data });
}

void CheckRebuilt(const ForkBuilder& inBuilder)
{
    std::vector<uint8_t> bytes;
    if (inBuilder.Build(&bytes))
        return; // past a limit of the format
    ResourceFork fork;
    Require(fork.Open(bytes) == nullptr);
    Require(fork.ResourceCount() == inBuilder.Entries().size());
    Require(fork.Check().empty());
    for (const ForkEntry& entry : inBuilder.Entries())
        Require((bool)fork.Find(entry.type, entry.id));
}

// What a fork holds, in its order.
struct Held {
    ResourceInfo info;
    std::string name;
    std::vector<uint8_t> data;

    bool operator==(const Held& inOther) const
    {
        return info.type == inOther.info.type && info.id == inOther.info.id &&
               info.attributes == inOther.info.attributes && info.hasName == inOther.info.hasName &&
               name == inOther.name && data == inOther.data;
    }
};

std::vector<Held> HeldIn(Bytes inFork)
{
    ResourceFork fork;
    Require(fork.Open(inFork) == nullptr && fork.IsSound());
    std::vector<Held> held;
    fork.ForEach([&](ResourceRef ref) {
        Bytes data;
        Require(fork.Data(ref, &data));
        const ResourceInfo info = fork.Info(ref);
        held.push_back({ info, std::string(info.name), { data.begin(), data.end() } });
    });
    return held;
}

void Apply(const Patch& inPatch, std::vector<uint8_t>* ioFork)
{
    Require(inPatch.offset + inPatch.bytes.size() <= ioFork->size());
    std::copy(inPatch.bytes.begin(), inPatch.bytes.end(), ioFork->begin() + inPatch.offset);
}

// The fork that the plan makes.
std::vector<uint8_t> Carry(const ForkPlan& inPlan, bool inPlace, Bytes inFork,
                           const std::vector<Held>& inBefore)
{
    std::vector<uint8_t> fork(inFork.begin(), inFork.end());
    if (!inPlace) {
        fork = inPlan.whole;
        fork.resize(fork.size() + inPlan.room);
        return fork;
    }
    for (const Patch& patch : inPlan.preparations)
        Apply(patch, &fork);
    Require(HeldIn(fork) == inBefore);
    Apply(inPlan.commit, &fork);
    return fork;
}

// One round of changes: the first resource replaced, the last removed, one added, all by what the bytes say.
void Change(std::vector<uint8_t>* ioFork, unsigned inHow)
{
    ResourceFork fork;
    Require(fork.Open(*ioFork) == nullptr);
    const std::vector<Held> before = HeldIn(*ioFork);
    ResourceMap map;
    map.Open(&fork);
    map.Edit();
    std::vector<Held> wanted = before;
    std::vector<NewData> data;
    if (!before.empty() && (inHow & 1)) {
        wanted[0].data.assign(inHow % 40, (uint8_t)inHow);
        data.push_back({ 0, wanted[0].data });
    }
    if (before.size() > 1 && (inHow & 2)) {
        map.Remove((uint32_t)before.size() - 1);
        wanted.pop_back();
    }
    if (inHow & 4) {
        const uint32_t added = map.Add(0xFEEDF00D, (SInt16)inHow, "added");
        Held held = { {}, "added", { 1, 2, 3 } };
        held.info.type = 0xFEEDF00D;
        held.info.id = (SInt16)inHow;
        held.info.hasName = true;
        if (added != kNoEntry) {
            data.push_back({ added, held.data });
            size_t place = 0; // behind the last of its type
            for (size_t i = 0; i < wanted.size(); ++i)
                place = wanted[i].info.type == held.info.type ? i + 1 : place;
            wanted.insert(place ? wanted.begin() + (ptrdiff_t)place : wanted.end(), held);
        }
    }
    PlanInput input = { *ioFork, fork.Areas(), &map.Edit(), &data, (SInt64)(inHow % 512) };
    const ResourceFork::Shape areas = input.areas;
    const bool isApart = areas.mapOffset >= (size_t)areas.dataOffset + areas.dataLength ||
                         areas.dataOffset >= (size_t)areas.mapOffset + areas.mapLength;
    ForkPlan plan;
    FreeSpace space(map.Edit(), areas.dataLength);
    const bool inPlace = isApart && PlanInPlace(input, &space, &plan);
    if (!inPlace && PlanWhole(input, inHow & 8, &plan))
        return; // past a limit of the format
    std::vector<uint8_t> changed = Carry(plan, inPlace, *ioFork, before);
    std::vector<Held> now = HeldIn(changed);
    // A type that stands twice in the map is kept so, and what is added goes to the first.
    if (inHow & 4)
        Require(now.size() == wanted.size());
    else
        Require(now == wanted);
    TakeOver(plan, &map.Edit(), space.IsShared() ? nullptr : &space);
    *ioFork = std::move(changed);
}

void ChangeFork(Bytes inFork)
{
    ResourceFork fork;
    if (fork.Open(inFork) || !fork.IsSound())
        return;
    size_t size = 0;
    fork.ForEach([&](ResourceRef ref) {
        Bytes data;
        fork.Data(ref, &data);
        size += data.size() + 300;
    });
    if (size > (1u << 18))
        return;
    std::vector<uint8_t> changed(inFork.begin(), inFork.end());
    for (unsigned round = 0; round < 4; ++round)
        Change(&changed, changed[(round * 37) % changed.size()] + round * 3);
}

void WalkFork(Bytes inFork)
{
    ResourceFork fork;
    if (fork.Open(inFork))
        return;
    fork.Check();
    ForkBuilder builder;
    size_t total = 0;
    fork.ForEach([&](ResourceRef ref) {
        // Hostile references may all share one long resource: walking it once a reference is work without
        // end.
        total += fork.Info(ref).name.size() + 12;
        if (total < (1u << 20))
            Visit(fork, ref, &builder);
    });
    size_t size = 0;
    for (const ForkEntry& entry : builder.Entries())
        size += entry.data.size();
    if (size < (4u << 20))
        CheckRebuilt(builder);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* inData, size_t inSize)
{
    const Bytes bytes(inData, inSize);
    const Container container = ReadContainer(bytes);
    WalkFork(bytes);
    ChangeFork(bytes);
    WalkFork(container.resourceFork);
    ChangeFork(container.resourceFork);
    ReadContainer(container.dataFork); // one within the other
    return 0;
}
