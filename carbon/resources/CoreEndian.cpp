// Which flipper is called for which type: the ones that were installed, then the platform's own.
#include "Flippers.h"
#include "ResourceMap.h"

#include <map>

namespace lampblack::resources {
namespace {

struct Flipper {
    CoreEndianFlipProc proc = nullptr;
    void* refcon = nullptr;
};

std::map<std::pair<OSType, OSType>, Flipper>& Installed()
{
    static std::map<std::pair<OSType, OSType>, Flipper> flippers;
    return flippers;
}

// Types that were found to have no flipper, each at a place of its own; a type is one more than 0. Most resources
// are loaded as they are.
constexpr size_t kUnflippedSize = 64;
uint64_t gUnflipped[kUnflippedSize];

uint64_t& UnflippedPlace(OSType inType)
{
    return gUnflipped[(inType * 0x9E3779B1u) >> 26];
}

Flipper FindFlipper(OSType inDomain, OSType inType)
{
    const auto found = Installed().find({ inDomain, inType });
    if (found != Installed().end())
        return found->second;
    return { inDomain == kCoreEndianResourceManagerDomain ? StandardFlipper(inType) : nullptr, nullptr };
}

} // namespace

bool IsUnflipped(OSType inType)
{
    uint64_t& unflipped = UnflippedPlace(inType);
    if (unflipped == (uint64_t)inType + 1)
        return true;
    if (FindFlipper(kCoreEndianResourceManagerDomain, inType).proc)
        return false;
    unflipped = (uint64_t)inType + 1;
    return true;
}

namespace {

OSStatus Flip(OSType inType, SInt16 inID, void* ioData, size_t inSize, bool inNative)
{
    if (IsUnflipped(inType))
        return noErr;
    const Flipper flipper = FindFlipper(kCoreEndianResourceManagerDomain, inType);
    return flipper.proc(kCoreEndianResourceManagerDomain, inType, inID, ioData, inSize, inNative,
                        flipper.refcon);
}

} // namespace

OSStatus FlipLoaded(OSType inType, SInt16 inID, void* ioData, size_t inSize)
{
    return Flip(inType, inID, ioData, inSize, false);
}

OSStatus FlipStored(OSType inType, SInt16 inID, void* ioData, size_t inSize)
{
    return Flip(inType, inID, ioData, inSize, true);
}

} // namespace lampblack::resources

using namespace lampblack::resources;

OSStatus CoreEndianInstallFlipper(OSType dataDomain, OSType dataType, CoreEndianFlipProc proc, void* refcon)
{
    if (!proc)
        return paramErr;
    Installed()[{ dataDomain, dataType }] = { proc, refcon };
    UnflippedPlace(dataType) = 0;
    ++gMapEpoch;
    return noErr;
}

OSStatus CoreEndianGetFlipper(OSType dataDomain, OSType dataType, CoreEndianFlipProc* proc, void** refcon)
{
    const Flipper flipper = FindFlipper(dataDomain, dataType);
    if (!flipper.proc)
        return handlerNotFoundErr;
    if (proc)
        *proc = flipper.proc;
    if (refcon)
        *refcon = flipper.refcon;
    return noErr;
}

OSStatus CoreEndianFlipData(OSType dataDomain, OSType dataType, SInt16 id, void* data, ByteCount dataLen,
                            Boolean currentlyNative)
{
    if (!data && dataLen > 0)
        return paramErr;
    const Flipper flipper = FindFlipper(dataDomain, dataType);
    if (!flipper.proc)
        return handlerNotFoundErr;
    return flipper.proc(dataDomain, dataType, id, data, dataLen, currentlyNative, flipper.refcon);
}
