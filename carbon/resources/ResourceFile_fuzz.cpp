// Any bytes as a resource file: the container is told, the fork opened, every resource walked, flipped to
// native order and back, and what was read is built anew and must read the same.
#include "Container.h"
#include "Flippers.h"
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
    WalkFork(container.resourceFork);
    ReadContainer(container.dataFork); // one within the other
    return 0;
}
